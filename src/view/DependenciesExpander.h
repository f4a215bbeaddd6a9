#pragma once

#include "repository/Dependency.h"
#include "view/ExpansionContext.h"

#include <optional>
#include <unordered_map>

class TQXItem;
class TQXTreeNode;

// The Dependencies view's expansion of one node: the node's placeholder is
// replaced by what its item calls (TopDown) or what calls it (BottomUp), at
// the view-by level, and every new child that can be expanded in turn gets a
// placeholder of its own. A child that repeats an item of its path is marked
// and left without one.
class TQXDependenciesExpander {
public:
    explicit TQXDependenciesExpander(TQXExpansionContext& context);

    // A node expanded before, or refused by the expansion limits, is left as
    // it is (refused nodes are collapsed). Errors of the call lookup and of
    // the data access are not caught.
    void Expand(TQXTreeNode* node);

private:
    // What a node lists in the Code view: the entries it calls or is called
    // from (role E), its own lines of code (role L), and the counter N added
    // to their images so that successive levels alternate.
    struct Roles {
        bool Entries = true;
        bool Lines = false;
        int N = 0;
    };

    bool RefusedByLimits(const TQXTreeNode* node);
    Roles RolesOf(const TQXTreeNode* node) const;

    bool AddAttributesAtOnce(TQXTreeNode* node, const TQXItem& item);
    void AddAttributes(TQXTreeNode* node, const TDependencies& calls);
    std::unordered_map<qint32, std::optional<qint32>> FileColumns(const TDependencies& calls,
                                                                  int column);
    void AddPackages(TQXTreeNode* node, const TDependencies& calls);
    void AddPackageOfCurrentRecord(TQXTreeNode* node);
    void AddLines(TQXTreeNode* node, const TQXItem& item, int levelN);
    bool MakesCallInto(const TQXItem& entry, const TQXItem& line);
    void Finish(TQXTreeNode* node, const Roles& roles);

    TQXExpansionContext& FContext;
    const TQXViewSettings& FSettings;
    int FDirection; // the settings' direction number
};
