#pragma once

#include "platform/TreeControl.h"

// Suspends the tree's painting for its lifetime: BeginUpdate on
// construction, EndUpdate on destruction, also when an exception leaves the
// scope.
class TQXTreeUpdate {
public:
    explicit TQXTreeUpdate(TQXTreeControl& tree) : FTree(tree) { FTree.BeginUpdate(); }
    ~TQXTreeUpdate() { FTree.EndUpdate(); }

    TQXTreeUpdate(const TQXTreeUpdate&) = delete;
    TQXTreeUpdate& operator=(const TQXTreeUpdate&) = delete;

private:
    TQXTreeControl& FTree;
};
