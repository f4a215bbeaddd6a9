// The Distribution view's expansion of one node: what the node contains, or
// what it is part of.
#include "view/View.h"

void TQXView::ShowDistribution(TQXTreeNode* node, int direction) {
    Q_UNUSED(node);
    Q_UNUSED(direction);
    // Until the expansion is in place a node opens unchanged.
}
