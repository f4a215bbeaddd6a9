// The root items of the chosen level.
#include "view/View.h"

#include "view/RecordReader.h"
#include "view/RootItemLister.h"

#include <QLineEdit>

void TQXView::ShowRootItems(int direction, int kind) {
    TQXRecordReader records(*FDataAccess, FTables);
    TQXRootItemLister::Hooks hooks{[this] {
                                       const bool packageCondition = SetFilter();
                                       return TQXRootFilter{packageCondition, FObjectFilter,
                                                            FEntryFilter, FRowFilter, FWordFilter};
                                   },
                                   [this](int count) { return HintAboutFilter(count); },
                                   [this](const TQXItem& item, int itemDirection) {
                                       return GetDependencies(item, itemDirection, true);
                                   }};
    TQXRootItemLister(records, *tvMain, std::move(hooks))
        .Show(direction, kind, Level(), tbRootItemLimit->text());
}
