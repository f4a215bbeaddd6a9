// The view's call lookup: the calls of one item, kept in FDependencies.
#include "view/CallLookup.h"
#include "view/View.h"

#include <QCheckBox>

bool TQXView::GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst) {
    return TQXCallLookup(*FDataAccess, FTables, FCallCache, FReadPath)
        .GetDependencies(item, direction, stopAtFirst, cbOption->isChecked(), FDependencies);
}

void TQXView::PrepareHasDependencies(const std::vector<const TQXItem*>& items,
                                     TQXDirection direction) {
    TQXCallLookup(*FDataAccess, FTables, FCallCache, FReadPath)
        .PrepareObjectTests(items, direction, cbOption->isChecked());
}

bool TQXView::HasDependencies(const TQXItem& item, TQXDirection direction) {
    return TQXCallLookup(*FDataAccess, FTables, FCallCache, FReadPath)
        .HasDependencies(item, direction, cbOption->isChecked(), FDependencies);
}
