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

// Text to integer as the limit box reads it: optional blanks and sign
// before decimal digits; anything else is not an integer.
int StrToInt(const QString& text) {
    const QString trimmed = text.trimmed();
    bool ok = false;
    const int value = trimmed.toInt(&ok, 10);
    if (!ok || trimmed.isEmpty())
        throw EQXError(QLatin1Char('\'') + text + QStringLiteral("' is not a valid integer value"));
    return value;
}

} // namespace

QString TQXView::Level() const {
    return cbViewBy->currentText();
}

bool TQXView::IsDependencies() const {
    return rbDependencies->isChecked();
}

int TQXView::Direction() const {
    return rbTopDown->isChecked() ? 0 : 1;
}

void TQXView::ShowOption(const QString& caption, std::optional<bool> check) {
    lblOption->setText(caption);
    cbOption->show();
    if (check)
        cbOption->setChecked(*check);
    lblOption->show();
}

void TQXView::HideOption() {
    cbOption->hide();
    lblOption->hide();
}

void TQXView::ViewTypeChanged(QObject* sender) {
    SyncMenuItems();

    const QString level = Level();
    const bool dependenciesTopDown = IsDependencies() && Direction() == 0;
    const bool fromCombo = sender == cbViewBy;
    if (level == QLatin1String("Entry") && dependenciesTopDown)
        ShowOption(QStringLiteral("Show Entrys sequentially"),
                   fromCombo ? std::optional<bool>(true) : std::nullopt);
    else if (level == QLatin1String("Object") && dependenciesTopDown)
        ShowOption(QStringLiteral("Show Objects sequentially"),
                   fromCombo ? std::optional<bool>(false) : std::nullopt);
    else
        HideOption();

    SetUserHint();
    DropTracks();
    cbRefreshView->setFocus();
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

    const QString level = Level();
    const bool dependenciesTopDown = IsDependencies() && Direction() == 0;
    if (level == QLatin1String("Entry") && dependenciesTopDown) {
        ShowOption(QStringLiteral("Show Entrys sequentially"),
                   name == QLatin1String("Entry1") ? std::optional<bool>(true) : std::nullopt);
    } else if (level == QLatin1String("Object") && dependenciesTopDown) {
        ShowOption(QStringLiteral("Show Object sequentially"),
                   name == QLatin1String("Object1") ? std::optional<bool>(true) : std::nullopt);
    } else {
        HideOption();
    }
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
    const QString level = Level();
    const bool code = level == QLatin1String("Code");
    const bool data = level == QLatin1String("Data");
    QString hint;
    if (!IsDependencies()) {
        if (Direction() == 0) {
            if (code)
                hint = QStringLiteral("Lines of Code (execution order can not be trusted)");
            else if (data)
                hint = QStringLiteral("Variable Declarations (persistent storage has green icons)");
            else
                hint = level + QStringLiteral(" contains");
        } else {
            if (code)
                hint = QStringLiteral("Line of Code is part of");
            else if (data)
                hint = QStringLiteral(
                    "Variable Declaration is part of (persistent storage has green icons)");
            else if (level == QLatin1String("System"))
                hint = QStringLiteral("System");
            else
                hint = level + QStringLiteral(" is part of");
        }
    } else if (Direction() == 0) {
        const bool option = cbOption->isChecked();
        if (level == QLatin1String("Entry") && option)
            hint = QStringLiteral("Entrys in order of execution, call TO other Entry(s)");
        else if (level == QLatin1String("Object") && option)
            hint = QStringLiteral("Object uses Object(s), in order of use");
        else if (code)
            hint = QStringLiteral("Lines of Code in order of execution, call TO other Entry(s)");
        else if (data)
            hint = QStringLiteral("Dataflow TO other Variable(s) and Line of Code where flow is "
                                  "executed (persistent storage has green icons)");
        else
            hint = level + QStringLiteral(" uses ") + level + QStringLiteral("(s)");
    } else {
        if (code)
            hint =
                QStringLiteral("Lines of Code in order of execution, called FROM other Entry(s)");
        else if (data)
            hint = QStringLiteral("Dataflow FROM other Variable(s) and Line of Code where flow is "
                                  "executed (persistent storage has green icons)");
        else
            hint = level + QStringLiteral(" is used by ") + level + QStringLiteral("(s)");
    }
    lblUserHint->setText(QStringLiteral("View: ") + hint);
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
    try {
        const int value = StrToInt(tbRootItemLimit->text());
        tbRootItemLimit->setText(QString::number(value));
        if (value < 1) {
            ui.ShowMessage(QStringLiteral("Limit must be greater than 0"));
            tbRootItemLimit->setFocus();
        }
    } catch (const EQXError& e) {
        ui.ShowMessage(e.Message());
        tbRootItemLimit->setFocus();
    }
}

void TQXView::cbRefreshViewClick() {
    RefreshCurrentView();
}
