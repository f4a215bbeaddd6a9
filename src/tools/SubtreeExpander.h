#pragma once

class TQXProgress;
class TQXTreeNode;

// Opens a node and every node below it, as "Expand All" does: each node is
// expanded through the tree (so the view's expansion runs for every node
// that waits for its children), and the walk goes on into the new children
// until no reachable node is left closed. A node the expansion leaves closed
// (refused by the view's limits) is not entered. Every node opened is
// reported to the progress, which may cancel the walk; what was opened
// until then stays open.
class TQXSubtreeExpander {
public:
    struct Result {
        int Opened = 0; // nodes whose children were read
        bool Cancelled = false;
    };

    static Result Expand(TQXTreeNode* node, TQXProgress& progress);
};
