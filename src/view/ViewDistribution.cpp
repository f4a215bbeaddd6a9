// The Distribution view's expansion of one node: what the node contains, or
// what it is part of.
#include "view/DistributionExpander.h"
#include "view/View.h"

void TQXView::ShowDistribution(TQXTreeNode* node, const TQXViewSettings& settings) {
    if (FDataAccess == nullptr)
        return; // not connected: nothing to read
    TQXRecordReader records(*FDataAccess, FTables);
    TQXExpansionContext context = ExpansionContext(records, settings);
    TQXDistributionExpander(context).Expand(node);
}
