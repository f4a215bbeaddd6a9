// The Dependencies view's expansion of one node: what the node calls, or
// what calls it.
#include "view/DependenciesExpander.h"
#include "view/ExpansionContext.h"
#include "view/RecordReader.h"
#include "view/View.h"

#include <QCheckBox>

TQXExpansionContext TQXView::ExpansionContext(TQXRecordReader& records) {
    return TQXExpansionContext{records,
                               *tvMain,
                               [this](const TQXItem& item, int direction, bool stopAtFirst) {
                                   return GetDependencies(item, direction, stopAtFirst);
                               },
                               FDependencies,
                               Level(),
                               cbOption->isChecked(),
                               FExpandFileID,
                               FExpandPackageID,
                               FExpandObjectID};
}

void TQXView::ShowDependencies(TQXTreeNode* node, int direction) {
    if (FDataAccess == nullptr)
        return; // not connected: nothing to read
    TQXRecordReader records(*FDataAccess, FTables);
    TQXExpansionContext context = ExpansionContext(records);
    TQXDependenciesExpander(context).Expand(node, direction);
}
