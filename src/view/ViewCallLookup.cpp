// The view's call lookup: the calls of one item, kept in FDependencies.
#include "view/CallLookup.h"
#include "view/View.h"

#include <QCheckBox>

bool TQXView::GetDependencies(const TQXItem& item, int direction, bool stopAtFirst) {
    return TQXCallLookup(*FDataAccess, FTables, this)
        .GetDependencies(item, direction, stopAtFirst, cbOption->isChecked(), FDependencies);
}
