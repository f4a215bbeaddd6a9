// The root-item filter: the filter dialog of the connection, the where texts
// its conditions give the listing of root items, the limit question, the
// filter commands, and a filter handed in by the host for one item.
#include "filter/FilterActivation.h"
#include "filter/FilterDialog.h"
#include "filter/FilterSelections.h"
#include "host/ItemSender.h"
#include "platform/ErrorDisplay.h"
#include "platform/UIServices.h"
#include "view/View.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <utility>

namespace {

const QString Changed = QStringLiteral("Changed");

} // namespace

void TQXView::ReplaceFilterDialog(bool build) {
    delete std::exchange(FFilter, nullptr);
    if (build && FDataAccess)
        FFilter = new TQXFilter(this, *FDataAccess); // owned by the view as its child
}

void TQXView::ConnectFilterCommands() {
    connect(cbSetFilter, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { SetFilter1Click(); }); });
    connect(mnuView.FindItem(QStringLiteral("SetFilter1")), &QAction::triggered, this,
            [this] { RunReportingErrors([this] { SetFilter1Click(); }); });
    connect(mnuView.FindItem(QStringLiteral("ClearFilter1")), &QAction::triggered, this,
            [this] { RunReportingErrors([this] { ClearFilter1Click(); }); });
}

int TQXView::FilterConditionCount() const {
    return FFilter ? FFilter->WhereClause().Count() : 0;
}

bool TQXView::SetFilter() {
    TQXRecordReader records(*FDataAccess, FTables);
    const bool filtered = FFilter && rbFilterOn->isChecked();
    const TQXWhereClause none;
    const TQXRootFilter filter =
        SelectFiltered(records, Settings().Level, filtered ? FFilter->WhereClause() : none,
                       filtered && FFilter->CaseSensitive());
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

// When a level shows as many root items as the limit allows and no filter
// condition narrows it, the user is offered the filter dialog; choosing it
// ends the listing.
bool TQXView::HintAboutFilter(int count) {
    const std::optional<int> limit = ParseLimit(tbRootItemLimit->text());
    if (!limit || count != *limit || (!rbFilterOff->isChecked() && FilterConditionCount() > 0))
        return false;
    const QString question =
        QStringLiteral("This View contains more than ") + tbRootItemLimit->text() +
        QStringLiteral(" RootItems,") + QChar(13) +
        (rbFilterOn->isChecked() ? QStringLiteral("do You want to change the Filter?")
                                 : QStringLiteral("do You want to use Filter?"));
    if (!TQXUIServices::Current().Ask(question))
        return false;
    SetFilter1Click();
    return true;
}

void TQXView::SetFilter1Click() {
    if (!FFilter)
        return; // not connected
    FFilter->InitFilter(cbViewBy->currentText());
    FFilter->ShowModal();
    const QString result = FFilter->Result();
    if (result.isEmpty())
        return;
    if (result == Changed) {
        rbFilterOff->setChecked(false);
        rbFilterOn->setChecked(true);
    }
    RefreshCurrentView();
}

void TQXView::ClearFilter1Click() {
    if (!FFilter)
        return;
    FFilter->cbClearClick();
    RefreshCurrentView();
}

void TQXView::ActivateFilter(QObject* item, const QString& viewText) {
    const auto* sender = qobject_cast<TQXItemSender*>(item);
    if (!sender || !FFilter)
        return;
    TQXRecordReader records(*FDataAccess, FTables);
    const QString level = ActivateFilterFor(*FFilter, records, sender->Item());
    if (level.isEmpty())
        return; // nothing found: the settings stay

    (viewText.contains(QLatin1String("Distribution")) ? rbDistribution : rbDependencies)
        ->setChecked(true);
    (viewText.contains(QLatin1String("TopDown")) ? rbTopDown : rbBottomUp)->setChecked(true);
    rbFilterOff->setChecked(false);
    rbFilterOn->setChecked(true);
    cbViewBy->setCurrentIndex(cbViewBy->findText(level));
    SyncMenuItems();
    // Entry checks the option box, Object unchecks it, where they have one.
    ApplyOptionRule(false, level == QLatin1String("Entry"));
    SetUserHint();
}
