// The Distribution view's expansion of one node: what the node contains, or
// what it is part of.
#include "view/DistributionExpander.h"
#include "view/ExpansionContext.h"
#include "view/RecordReader.h"
#include "view/View.h"

void TQXView::ShowDistribution(TQXTreeNode* node, int direction) {
    if (FDataAccess == nullptr)
        return; // not connected: nothing to read
    TQXRecordReader records(*FDataAccess, FTables);
    TQXExpansionContext context = ExpansionContext(records);
    TQXDistributionExpander(context).Expand(node, direction);
}
