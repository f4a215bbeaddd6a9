// The view settings: radio buttons, combo box and menu check marks kept in
// step, the option box, the hint line, and the root-item limit box.
#include "view/View.h"

#include "platform/TreeControl.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

const QString ClickRefreshMarker =
    QStringLiteral("  *** Click Refresh or choose View/Refresh on the Main Menu for Result ***");

} // namespace

TQXViewSettings TQXView::Settings() const {
    TQXViewSettings settings;
    settings.Type =
        rbDependencies->isChecked() ? TQXViewType::Dependencies : TQXViewType::Distribution;
    settings.Direction = rbTopDown->isChecked() ? TQXDirection::TopDown : TQXDirection::BottomUp;
    settings.Level = level::FromName(cbViewBy->currentText()).value_or(TQXLevel::System);
    settings.FilterOn = rbFilterOn->isChecked();
    settings.LimitText = tbRootItemLimit->text();
    settings.Option = cbOption->isChecked();
    return settings;
}

void TQXView::ApplyOptionRule(bool fromMenu, std::optional<bool> check) {
    const std::optional<QString> caption = Settings().OptionCaption(fromMenu);
    if (!caption) {
        cbOption->hide();
        lblOption->hide();
        return;
    }
    lblOption->setText(*caption);
    cbOption->show();
    if (check)
        cbOption->setChecked(*check);
    lblOption->show();
}

void TQXView::ViewTypeChanged(QObject* sender) {
    SyncMenuItems();

    // Choosing Entry in the box checks the option, choosing Object unchecks it.
    const TQXLevel level = Settings().Level;
    std::optional<bool> check;
    if (sender == cbViewBy)
        check = level == TQXLevel::Entry;
    ApplyOptionRule(false, check);

    SetUserHint();
    DropTracks();
    cbRefreshView->setFocus();
    const TQXViewSettings settings = Settings();
    const std::vector<TQXRootVariable> roots = RootVariables();
    if (settings.IsDependencies() && settings.Level == TQXLevel::Data && !roots.empty()) {
        AddRootVariables(roots); // opened again in the new direction
        return;
    }
    tvMain->Clear();
    AddMarker(ClickRefreshMarker);
}

void TQXView::DropTracks() {
    for (int i = 0; i < static_cast<int>(FTracks.size()); ++i)
        delete mnuView.FindItem(QStringLiteral("Track") + QString::number(i));
    FTracks.clear();
}

void TQXView::MenuChoice(QAction* item) {
    const QString name = item->objectName();
    struct Pair {
        const char* Item;
        const char* Partner;
        QRadioButton* Button;
    };
    const Pair pairs[] = {{"Dependencies1", "Distribution1", rbDependencies},
                          {"Distribution1", "Dependencies1", rbDistribution},
                          {"TopDown1", "BottomUp1", rbTopDown},
                          {"BottomUp1", "TopDown1", rbBottomUp}};
    bool isPair = false;
    for (const Pair& pair : pairs) {
        if (name != QLatin1String(pair.Item))
            continue;
        isPair = true;
        if (!item->isChecked()) {
            if (QAction* partner = mnuView.FindItem(QLatin1String(pair.Partner)))
                partner->setChecked(false);
            item->setChecked(true);
            pair.Button->setChecked(true); // runs ViewTypeChanged
        }
    }

    if (!isPair && !item->isChecked()) {
        const QString chosen = name.chopped(1);
        int chosenIndex = -1;
        for (int i = 0; i < cbViewBy->count(); ++i) {
            const QString entry = cbViewBy->itemText(i);
            if (entry == chosen) {
                chosenIndex = i;
            } else if (QAction* other = mnuView.FindItem(entry + QLatin1Char('1'))) {
                other->setChecked(false);
            }
        }
        if (chosenIndex >= 0) {
            item->setChecked(true);
            cbViewBy->setCurrentIndex(chosenIndex); // no change notice: the tree stays
        }
    }

    // Choosing the shown level's item checks the option.
    const TQXLevel level = Settings().Level;
    const bool chosen = name == level::Name(level) + QLatin1Char('1');
    ApplyOptionRule(true, chosen ? std::optional<bool>(true) : std::nullopt);
    SetUserHint();
}

void TQXView::SyncMenuItems() {
    const std::pair<const char*, QRadioButton*> items[] = {{"Dependencies1", rbDependencies},
                                                           {"Distribution1", rbDistribution},
                                                           {"TopDown1", rbTopDown},
                                                           {"BottomUp1", rbBottomUp}};
    for (const auto& [name, button] : items) {
        QAction* item = mnuView.FindItem(QLatin1String(name));
        if (item && item->isChecked() != button->isChecked())
            item->setChecked(button->isChecked());
    }
    for (int i = 0; i < cbViewBy->count(); ++i)
        if (QAction* item = mnuView.FindItem(cbViewBy->itemText(i) + QLatin1Char('1')))
            item->setChecked(i == cbViewBy->currentIndex());
}

void TQXView::SetUserHint() {
    lblUserHint->setText(QStringLiteral("View: ") + Settings().UserHint());
}

void TQXView::tbLimitChange() {
    if (FCheckingLimit)
        return;
    FCheckingLimit = true;
    struct Reset {
        bool& Flag;
        ~Reset() { Flag = false; }
    } reset{FCheckingLimit};

    TQXUIServices& ui = TQXUIServices::Current();
    const std::optional<int> value = ParseLimit(tbRootItemLimit->text());
    if (!value) {
        ui.ShowMessage(LimitError(tbRootItemLimit->text()));
        tbRootItemLimit->setFocus();
        return;
    }
    tbRootItemLimit->setText(QString::number(*value));
    if (*value < 1) {
        ui.ShowMessage(QStringLiteral("Limit must be greater than 0"));
        tbRootItemLimit->setFocus();
    }
}

void TQXView::cbRefreshViewClick() {
    RefreshCurrentView();
}
