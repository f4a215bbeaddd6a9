// The root-item filter as the listing of root items sees it.
#include "filter/UnfilteredSelections.h"
#include "platform/UIServices.h"
#include "view/View.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

bool TQXView::SetFilter() {
    TQXRecordReader records(*FDataAccess, FTables);
    const TQXRootFilter filter = SelectUnfiltered(records, Settings().Level);
    FObjectFilter = filter.ObjectCondition;
    FEntryFilter = filter.EntryCondition;
    FRowFilter = filter.RowCondition;
    FWordFilter = filter.WordCondition;
    return filter.PackageCondition;
}

TQXRootFilter TQXView::FilterRootItems() {
    const bool packageCondition = SetFilter();
    return TQXRootFilter{packageCondition, FObjectFilter, FEntryFilter, FRowFilter, FWordFilter};
}

// When a level shows as many root items as the limit allows, the user is
// offered the filter. Without a filter dialog to show, the listing goes on.
bool TQXView::HintAboutFilter(int count) {
    const std::optional<int> limit = ParseLimit(tbRootItemLimit->text());
    if (!limit || count != *limit || (!rbFilterOff->isChecked() && FilterConditionCount() > 0))
        return false;
    const QString question =
        QStringLiteral("This View contains more than ") + tbRootItemLimit->text() +
        QStringLiteral(" RootItems,") + QChar(13) +
        (rbFilterOn->isChecked() ? QStringLiteral("do You want to change the Filter?")
                                 : QStringLiteral("do You want to use Filter?"));
    TQXUIServices::Current().Ask(question);
    return false;
}
