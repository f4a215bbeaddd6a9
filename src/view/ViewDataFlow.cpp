// The view's data flow lookup: the flows of one variable, kept in FDataFlows.
#include "host/FormInterface.h"
#include "view/DataFlowLookup.h"
#include "view/View.h"

bool TQXView::GetDataFlow(const TQXDataItem& item, int direction, bool checkOnly) {
    return TQXDataFlowLookup(*DataAccess(), FTables, *BaseFunctions(), FLanguageDefinition)
        .GetDataFlow(item, direction, checkOnly, FDataFlows);
}
