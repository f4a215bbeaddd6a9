// The Dependencies view's expansion of one node: what the node calls, or
// what calls it.
#include "view/DependenciesExpander.h"
#include "view/View.h"

TQXExpansionContext TQXView::ExpansionContext(TQXRecordReader& records,
                                              const TQXViewSettings& settings) {
    return TQXExpansionContext{records,
                               *tvMain,
                               *this,
                               settings,
                               FExpandLimits,
                               FReadPath,
                               FReadPath == TQXReadPath::SetBased ? &FFileNames : nullptr};
}

void TQXView::ShowDependencies(TQXTreeNode* node, const TQXViewSettings& settings) {
    if (FDataAccess == nullptr)
        return; // not connected: nothing to read
    TQXRecordReader records(*FDataAccess, FTables);
    TQXExpansionContext context = ExpansionContext(records, settings);
    TQXDependenciesExpander(context).Expand(node);
}
