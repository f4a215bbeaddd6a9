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

bool Checked(const TQXView& view, const char* item) {
    return view.mnuView.FindItem(item)->isChecked();
}

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
            {false, true, "Package", false, "Package contains"},
            {false, true, "System", true, "System contains"},
            {false, false, "Code", false, "Line of Code is part of"},
            {false, false, "Data", false, "Variable Declaration is part of" + green},
            {false, false, "System", false, "System"},
            {false, false, "Entry", true, "Entry is part of"},
            {true, true, "Entry", true, "Entrys in order of execution, call TO other Entry(s)"},
            {true, true, "Entry", false, "Entry uses Entry(s)"},
            {true, true, "Object", true, "Object uses Object(s), in order of use"},
            {true, true, "Object", false, "Object uses Object(s)"},
            {true, true, "Code", true,
             "Lines of Code in order of execution, call TO other Entry(s)"},
            {true, true, "Data", false,
             "Dataflow TO other Variable(s) and Line of Code where flow is executed" + green},
            {true, true, "Application", false, "Application uses Application(s)"},
            {true, false, "Code", false,
             "Lines of Code in order of execution, called FROM other Entry(s)"},
            {true, false, "Data", false,
             "Dataflow FROM other Variable(s) and Line of Code where flow is executed" + green},
            {true, false, "Entry", true, "Entry is used by Entry(s)"},
            {true, false, "System", false, "System is used by System(s)"},
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

    void radioButtonsUpdateMenusHintAndTree() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->tvMain->AddRoot("PAYCALC");
        QTest::mouseClick(view->rbDependencies, Qt::LeftButton);
        QVERIFY(Checked(*view, "Dependencies1"));
        QVERIFY(!Checked(*view, "Distribution1"));
        QCOMPARE(view->lblUserHint->text(), QString("View: System uses System(s)"));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({ClickRefresh}));
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);

        QTest::mouseClick(view->rbBottomUp, Qt::LeftButton);
        QVERIFY(Checked(*view, "BottomUp1"));
        QVERIFY(!Checked(*view, "TopDown1"));
        QCOMPARE(view->lblUserHint->text(), QString("View: System is used by System(s)"));
    }

    void menuChoiceOfTypeOrDirectionChecksTheRadioButton() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->tvMain->AddRoot("PAYCALC");
        view->mnuView.FindItem("Dependencies1")->trigger();
        QVERIFY(view->rbDependencies->isChecked());
        QVERIFY(Checked(*view, "Dependencies1"));
        QVERIFY(!Checked(*view, "Distribution1"));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({ClickRefresh}));

        // Choosing the checked item again changes nothing.
        view->tvMain->Clear();
        view->mnuView.FindItem("Dependencies1")->trigger();
        QVERIFY(Checked(*view, "Dependencies1"));
        QVERIFY(view->rbDependencies->isChecked());
        QCOMPARE(view->tvMain->RootCount(), 0);

        view->mnuView.FindItem("BottomUp1")->trigger();
        QVERIFY(view->rbBottomUp->isChecked());
        QVERIFY(!Checked(*view, "TopDown1"));
        QCOMPARE(view->lblUserHint->text(), QString("View: System is used by System(s)"));
    }

    void menuChoiceOfLevelLeavesTheTree() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->tvMain->AddRoot("PAYCALC");
        view->mnuView.FindItem("Entry1")->trigger();
        QCOMPARE(view->cbViewBy->currentText(), QString("Entry"));
        QCOMPARE(view->lblUserHint->text(), QString("View: Entry contains"));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({"PAYCALC"}));
        QVERIFY(Checked(*view, "Entry1"));
        for (const char* other :
             {"System1", "Computer1", "Application1", "Package1", "Object1", "Code1", "Data1"})
            QVERIFY2(!Checked(*view, other), other);
        view->mnuView.FindItem("Entry1")->trigger(); // already checked: stays so
        QVERIFY(Checked(*view, "Entry1"));
        QCOMPARE(view->cbViewBy->currentText(), QString("Entry"));
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
        QVERIFY(Checked(*view, "Entry1"));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({ClickRefresh}));

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

    void menuChoiceSetsTheOptionBox() {
        ViewFixture f;
        const auto view = f.MakeView();
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

    void syncFollowsTheControls() {
        ViewFixture f;
        const auto view = f.MakeView();
        for (QObject* control : std::initializer_list<QObject*>{view->rbDependencies,
                                                                view->rbBottomUp, view->cbViewBy})
            control->blockSignals(true);
        view->rbDependencies->setChecked(true);
        view->rbBottomUp->setChecked(true);
        view->cbViewBy->setCurrentIndex(6);
        QVERIFY(Checked(*view, "Distribution1"));
        view->SyncMenuItems();
        QVERIFY(Checked(*view, "Dependencies1"));
        QVERIFY(!Checked(*view, "Distribution1"));
        QVERIFY(Checked(*view, "BottomUp1"));
        QVERIFY(!Checked(*view, "TopDown1"));
        QVERIFY(Checked(*view, "Code1"));
        QVERIFY(!Checked(*view, "System1"));
    }

    void limitBoxIsCheckedWhenLeft_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("message");
        QTest::newRow("leading zeros") << "007"
                                       << "7"
                                       << "";
        QTest::newRow("blanks") << " 250"
                                << "250"
                                << "";
        QTest::newRow("not a number") << "abc"
                                      << "abc"
                                      << "'abc' is not a valid integer value";
        QTest::newRow("fraction") << "1.5"
                                  << "1.5"
                                  << "'1.5' is not a valid integer value";
        QTest::newRow("zero") << "000"
                              << "0"
                              << "Limit must be greater than 0";
        QTest::newRow("negative") << "-5"
                                  << "-5"
                                  << "Limit must be greater than 0";
    }
    void limitBoxIsCheckedWhenLeft() {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(QString, message);
        ViewFixture f;
        const auto view = f.MakeView();
        view->cbRefreshView->setFocus();
        view->tbRootItemLimit->setText(typed);
        QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(view->tbRootItemLimit, &leave);
        QCOMPARE(view->tbRootItemLimit->text(), shown);
        QCOMPARE(f.Ui.Messages(), message.isEmpty() ? QStringList() : QStringList({message}));
        // A rejected limit takes the focus back.
        QCOMPARE(view->focusWidget() == view->tbRootItemLimit, !message.isEmpty());
    }

    void switchingWindowsDoesNotLeaveTheLimitBox() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->tbRootItemLimit->setText("x");
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(view->tbRootItemLimit, &away);
        QVERIFY(f.Ui.Messages().isEmpty());
    }
};

QTEST_MAIN(TestViewSettings)
#include "tst_ViewSettings.moc"
