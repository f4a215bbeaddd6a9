// The view settings: the hint table, radio buttons, combo box and menu
// check marks in step, the option box rules, and the root-item limit box.
#include "ViewFixture.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

namespace {

const QString ClickRefresh =
    "  *** Click Refresh or choose View/Refresh on the Main Menu for Result ***";

void SetViewBy(TQXView& view, bool dependencies, bool topDown, const QString& level) {
    (dependencies ? view.rbDependencies : view.rbDistribution)->setChecked(true);
    (topDown ? view.rbTopDown : view.rbBottomUp)->setChecked(true);
    view.cbViewBy->setCurrentIndex(view.cbViewBy->findText(level));
}

} // namespace

class TestViewSettings : public QObject {
    Q_OBJECT

private slots:
    void hintTable() {
        const QString green = " (persistent storage has green icons)";
        const struct {
            bool Dependencies, TopDown;
            const char* Level;
            bool Option;
            QString Hint;
        } rows[] = {
            {false, true, "Code", false, "Lines of Code (execution order can not be trusted)"},
            {false, true, "Data", false, "Variable Declarations" + green},
            {false, true, "System", true, "System contains"},
            {false, false, "Code", false, "Line of Code is part of"},
            {false, false, "Data", false, "Variable Declaration is part of" + green},
            {false, false, "System", false, "System"},
            {false, false, "Entry", true, "Entry is part of"},
            {true, true, "Code", true,
             "Lines of Code in order of execution, call TO other Entry(s)"},
            {true, true, "Data", false,
             "Dataflow TO other Variable(s) and Line of Code where flow is executed" + green},
            {true, true, "Application", false, "Application uses Application(s)"},
            {true, false, "Code", false,
             "Lines of Code in order of execution, called FROM other Entry(s)"},
            {true, false, "Entry", true, "Entry is used by Entry(s)"},
            {true, false, "Data", false,
             "Dataflow FROM other Variable(s) and Line of Code where flow is executed" + green},
        };
        ViewFixture f;
        const auto view = f.MakeView();
        for (const auto& row : rows) {
            SetViewBy(*view, row.Dependencies, row.TopDown, row.Level);
            view->cbOption->setChecked(row.Option);
            view->SetUserHint();
            QCOMPARE(view->lblUserHint->text(), "View: " + row.Hint);
        }
    }

    // A type or direction chosen by radio button or menu item checks the
    // other, sets the hint and asks for a refresh.
    void typeAndDirectionKeepButtonsAndMenuInStep_data() {
        QTest::addColumn<bool>("byMenu");
        QTest::newRow("radio buttons") << false;
        QTest::newRow("menu") << true;
    }
    void typeAndDirectionKeepButtonsAndMenuInStep() {
        QFETCH(bool, byMenu);
        ViewFixture f;
        const auto view = f.MakeView();
        auto choose = [&](QRadioButton* button, const char* item) {
            view->tvMain->Clear();
            view->tvMain->AddRoot("PAYCALC");
            if (byMenu)
                view->mnuView.FindItem(item)->trigger();
            else
                QTest::mouseClick(button, Qt::LeftButton);
        };
        choose(view->rbDependencies, "Dependencies1");
        QVERIFY(view->rbDependencies->isChecked());
        QCOMPARE(CheckedItems(*view), (QStringList{"Dependencies1", "TopDown1", "System1"}));
        QCOMPARE(view->lblUserHint->text(), QString("View: System uses System(s)"));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({ClickRefresh}));
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
        // Choosing the checked one again changes nothing.
        choose(view->rbDependencies, "Dependencies1");
        QCOMPARE(CheckedItems(*view), (QStringList{"Dependencies1", "TopDown1", "System1"}));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({"PAYCALC"}));

        choose(view->rbBottomUp, "BottomUp1");
        QVERIFY(view->rbBottomUp->isChecked());
        QCOMPARE(CheckedItems(*view), (QStringList{"Dependencies1", "BottomUp1", "System1"}));
        QCOMPARE(view->lblUserHint->text(), QString("View: System is used by System(s)"));
    }

    // A level chosen from the menu leaves the tree and checks the option box
    // where it is shown.
    void menuChoiceOfLevel() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->tvMain->AddRoot("PAYCALC");
        for (int twice = 0; twice < 2; ++twice) { // the second time it is checked already
            view->mnuView.FindItem("Entry1")->trigger();
            QCOMPARE(view->cbViewBy->currentText(), QString("Entry"));
            QCOMPARE(CheckedItems(*view), (QStringList{"Distribution1", "TopDown1", "Entry1"}));
        }
        QCOMPARE(view->lblUserHint->text(), QString("View: Entry contains"));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({"PAYCALC"}));
        QVERIFY(view->cbOption->isHidden());

        SetViewBy(*view, true, true, "System");
        view->mnuView.FindItem("Object1")->trigger();
        QVERIFY(view->cbOption->isVisibleTo(view.get()));
        QVERIFY(view->cbOption->isChecked());
        QCOMPARE(view->lblOption->text(), QString("Show Object sequentially"));
        QCOMPARE(view->lblUserHint->text(),
                 QString("View: Object uses Object(s), in order of use"));

        view->cbOption->setChecked(false);
        view->mnuView.FindItem("Entry1")->trigger();
        QVERIFY(view->cbOption->isChecked());
        QCOMPARE(view->lblOption->text(), QString("Show Entrys sequentially"));

        // A type item leaves the box as it is.
        view->cbOption->setChecked(false);
        view->mnuView.FindItem("TopDown1")->trigger();
        QVERIFY(!view->cbOption->isChecked());
        QVERIFY(view->cbOption->isVisibleTo(view.get()));

        view->mnuView.FindItem("Code1")->trigger();
        QVERIFY(view->cbOption->isHidden());
    }

    void comboChoiceSetsTheOptionBox() {
        ViewFixture f;
        const auto view = f.MakeView();
        SetViewBy(*view, true, true, "Object");
        view->cbViewBy->setFocus();
        QTest::keyClick(view->cbViewBy, Qt::Key_Down); // the user picks Entry
        QCOMPARE(view->Settings().Level, TQXLevel::Entry);
        QVERIFY(view->cbOption->isVisibleTo(view.get()));
        QVERIFY(view->cbOption->isChecked());
        QCOMPARE(view->lblOption->text(), QString("Show Entrys sequentially"));
        QCOMPARE(view->lblUserHint->text(),
                 QString("View: Entrys in order of execution, call TO other Entry(s)"));
        QCOMPARE(CheckedItems(*view), (QStringList{"Dependencies1", "TopDown1", "Entry1"}));

        QTest::keyClick(view->cbViewBy, Qt::Key_Up); // back to Object
        QVERIFY(view->cbOption->isVisibleTo(view.get()));
        QVERIFY(!view->cbOption->isChecked());
        QCOMPARE(view->lblOption->text(), QString("Show Objects sequentially"));
        QCOMPARE(view->lblUserHint->text(), QString("View: Object uses Object(s)"));

        // A click on the option box keeps what the user chose.
        view->cbOption->click();
        QVERIFY(view->cbOption->isChecked());
        QCOMPARE(view->lblUserHint->text(),
                 QString("View: Object uses Object(s), in order of use"));

        QTest::mouseClick(view->rbBottomUp, Qt::LeftButton);
        QVERIFY(view->cbOption->isHidden());
        QVERIFY(view->lblOption->isHidden());
    }

    void syncFollowsTheControls() {
        ViewFixture f;
        const auto view = f.MakeView();
        QCOMPARE(CheckedItems(*view), (QStringList{"Distribution1", "TopDown1", "System1"}));
        for (QObject* control : std::initializer_list<QObject*>{view->rbDependencies,
                                                                view->rbBottomUp, view->cbViewBy})
            control->blockSignals(true);
        view->rbDependencies->setChecked(true);
        view->rbBottomUp->setChecked(true);
        view->cbViewBy->setCurrentIndex(6);
        QCOMPARE(CheckedItems(*view), (QStringList{"Distribution1", "TopDown1", "System1"}));
        view->SyncMenuItems();
        QCOMPARE(CheckedItems(*view), (QStringList{"Dependencies1", "BottomUp1", "Code1"}));
    }

    // Switching windows does not leave the box: nothing is checked then.
    void limitBoxIsCheckedWhenLeft_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("switchingWindows");
        auto row = [](const char* name, const char* typed, const char* shown, const char* message,
                      bool switchingWindows = false) {
            QTest::newRow(name) << QString(typed) << QString(shown) << QString(message)
                                << switchingWindows;
        };
        row("fraction", "1.5", "1.5", "'1.5' is not a valid integer value");
        row("zero", "000", "0", "Limit must be greater than 0");
        row("negative", "-5", "-5", "Limit must be greater than 0");
        row("switching windows", "x", "x", "", true);
    }
    void limitBoxIsCheckedWhenLeft() {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(QString, message);
        QFETCH(bool, switchingWindows);
        ViewFixture f;
        const auto view = f.MakeView();
        view->cbRefreshView->setFocus();
        view->tbRootItemLimit->setText(typed);
        QFocusEvent leave(QEvent::FocusOut,
                          switchingWindows ? Qt::ActiveWindowFocusReason : Qt::TabFocusReason);
        QApplication::sendEvent(view->tbRootItemLimit, &leave);
        QCOMPARE(view->tbRootItemLimit->text(), shown);
        QCOMPARE(f.Ui.Messages(), message.isEmpty() ? QStringList() : QStringList({message}));
        // A rejected limit takes the focus back.
        QCOMPARE(view->focusWidget() == view->tbRootItemLimit, !message.isEmpty());
    }
};

QTEST_MAIN(TestViewSettings)
#include "tst_ViewSettings.moc"
