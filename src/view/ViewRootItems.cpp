// The root items of the chosen level.
#include "view/View.h"

#include "repository/RecordReader.h"
#include "view/RootItemLister.h"

void TQXView::ShowRootItems(const TQXViewSettings& settings) {
    TQXRecordReader records(*FDataAccess, FTables);
    TQXRootItemLister(records, *tvMain, *this, FReadPath).Show(settings);
}
