// The view window: construction, connection, the refresh cycle with its
// marker nodes and popup rule, expansion dispatch, and the destructor; the
// view settings: the hint table, radio buttons, combo box and menu check
// marks in step, the option box rules, and the root-item limit box.
#include "host/BaseFunctions.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "support/Failure.h"
#include "support/NullDataAccess.h"
#include "support/TreeTexts.h"
#include "view/View.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace {

// Data access for the view: tables without records except what a test says,
// call counters, and scripted failures.
class FakeDataAccess final : public NullDataAccess {
public:
    // What the repository holds: QXFILE answers SelectRecords with this.
    bool HasFiles = true;
    // Failures: GetTableRef of this table, CloseTables, SelectRecords.
    QString FailTable;
    bool FailCloseTables = false;
    bool FailSelect = false;
    // Runs inside every SelectRecords, to look at the view mid-refresh.
    std::function<void(const QString& table)> OnSelect;

    int CloseTablesCalls = 0;
    int EndRefreshCalls = 0;
    QStringList Selected; // "TABLE:where" per SelectRecords

    void CloseTables(QObject*, bool flag) override {
        ++CloseTablesCalls;
        if (!flag)
            throw EQXError(QStringLiteral("CloseTables expects true"));
        if (FailCloseTables)
            throw EQXError(QStringLiteral("connection lost"));
    }
    TQXTableRef GetTableRef(const QString& name) override {
        if (name == FailTable)
            throw EQXError(QStringLiteral("no such table: ") + name);
        auto& table = FTables[name];
        if (!table)
            table = std::make_unique<NullDataSet>(name);
        return table.get();
    }
    TQXFieldRef GetFieldRef(TQXTableRef table, const QString& column) override {
        auto& field = FFields[table->TableName() + QLatin1Char('.') + column];
        if (!field)
            field = std::make_unique<TQXField>(TQXField{table, column, 0});
        return field.get();
    }
    bool SelectRecords(TQXTableRef table, const QString& where) override {
        if (!table)
            throw EQXError(QStringLiteral("table not bound"));
        Selected << table->TableName() + QLatin1Char(':') + where;
        if (OnSelect)
            OnSelect(table->TableName());
        if (FailSelect)
            throw EQXError(QStringLiteral("database is locked"));
        return table->TableName() == QLatin1String("QXFILE") && HasFiles;
    }
    void EndRefresh(bool flag1, bool flag2) override {
        if (flag1 && !flag2)
            ++EndRefreshCalls;
    }

private:
    std::map<QString, std::unique_ptr<NullDataSet>> FTables;
    std::map<QString, std::unique_ptr<TQXField>> FFields;
};

// What a view needs around it: scripted UI services and the host's base
// functions with one connection "Estate" served by a FakeDataAccess.
struct ViewFixture {
    // How the next connection behaves.
    bool HasFiles = true;
    QString FailTable;
    QString ConnectError;

    TQXScriptedUIServices Ui;
    TQXBaseFunctions Host;
    FakeDataAccess* Fake = nullptr; // owned by Host once connected

    ViewFixture() {
        Host.SetConnection(QStringLiteral("Estate"), QStringLiteral("/data/estate.kvdb"));
        Host.SetDataAccessFactory(
            [this](const QString&) -> std::unique_ptr<TQXDataAccessInterface> {
                if (!ConnectError.isEmpty())
                    throw EQXError(ConnectError);
                auto fake = std::make_unique<FakeDataAccess>();
                fake->HasFiles = HasFiles;
                fake->FailTable = FailTable;
                Fake = fake.get();
                return fake;
            });
    }

    template <typename View = TQXView>
    std::unique_ptr<View> MakeView(const QString& connection = QStringLiteral("Estate")) {
        return std::make_unique<View>(nullptr, 1, &Host, QStringLiteral("View 1"), connection,
                                      QString());
    }
};

// The checked items among the view menu's type, direction and level items.
QStringList CheckedItems(const TQXView& view) {
    QStringList checked;
    for (const char* name :
         {"Distribution1", "Dependencies1", "TopDown1", "BottomUp1", "System1", "Computer1",
          "Application1", "Package1", "Object1", "Entry1", "Code1", "Data1"})
        if (view.mnuView.FindItem(name)->isChecked())
            checked << name;
    return checked;
}

const QString EmptyMarker = "  *** Source Database is empty, choose Tools/Load on the Main Menu "
                            "to load the Database ***";
const QString LoadAdvice = "  *** Choose Tools/Load on the Main Menu to assign System(s), "
                           "Computer(s) and Application(s) and reload the Database ***";
const QString MissingMarker = "  *** Missing Database connection, Choose "
                              "Tools/Settings/Source Databases to correct the settings ***";

// A view whose filter dialog reports a number of conditions.
class FilteredView final : public TQXView {
public:
    using TQXView::TQXView;
    int Conditions = 0;

protected:
    int FilterConditionCount() const override { return Conditions; }
};

void SetViewBy(TQXView& view, bool dependencies, bool topDown, const QString& level) {
    (dependencies ? view.rbDependencies : view.rbDistribution)->setChecked(true);
    (topDown ? view.rbTopDown : view.rbBottomUp)->setChecked(true);
    view.cbViewBy->setCurrentIndex(view.cbViewBy->findText(level));
}

} // namespace

class TestViewWindow : public QObject {
    Q_OBJECT

    // A fixture and a view of connection "Estate", fresh for every case.
    std::optional<ViewFixture> F;
    std::unique_ptr<TQXView> FView;

private slots:
    void init() {
        F.emplace();
        FView = F->MakeView();
    }
    void cleanup() {
        FView.reset();
        F.reset();
    }

    void constructionShowsTheDefaultsAndMergesTheMenus() {
        F->Host.SetTreeFont("DejaVu Sans Mono", 13);
        const auto view = F->MakeView();
        const TQXViewSettings settings = view->Settings();
        QVERIFY(!settings.IsDependencies() && settings.IsTopDown() && !settings.FilterOn);
        QCOMPARE(settings.Level, TQXLevel::System);
        QCOMPARE(settings.LimitText, QString("100"));
        QVERIFY(view->cbOption->isHidden() && view->lblOption->isHidden());
        QCOMPARE(view->lblUserHint->text(), QString("View: System contains"));
        QCOMPARE(view->tvMain->font().family(), QString("DejaVu Sans Mono"));
        QCOMPARE(view->tvMain->font().pointSize(), 13);
        QVERIFY(!view->AskBeforeClosing());
        QCOMPARE(CheckedItems(*view), (QStringList{"Distribution1", "TopDown1", "System1"}));
        QStringList menus;
        for (const QMenu* menu : view->mnuView.Menus())
            menus << menu->objectName();
        QCOMPARE(menus, QStringList({"File1", "Edit1", "View1", "Filter1", "Tracks1", "Window1"}));
        QVERIFY(!view->mnuView.FindItem("AutoCompleteTrack1")->isEnabled());
        QVERIFY(!view->mnuView.FindItem("AddTrack1")->isEnabled());
        const QString error =
            FailureOf([] { TQXView(nullptr, 1, nullptr, "View 1", "Estate", ""); }).Message;
        QVERIFY2(error.startsWith("TQXView.Create: ") && error.endsWith('\r'), qPrintable(error));
    }

    void popupItemsFollowTheHostsWindows() {
        auto enabled = [](const TQXView& view) {
            QStringList names;
            for (const char* name :
                 {"AddtoWorkList1", "AddtoWorkListAs1", "Editor1", "AddTracktoDiagram1"})
                if (view.pmnuView->findChild<QAction*>(name)->isEnabled())
                    names << name;
            return names;
        };
        QCOMPARE(enabled(*F->MakeView()), QStringList());
        F->Host.RegisterWindow("WorkList", {});
        QCOMPARE(enabled(*F->MakeView()),
                 QStringList({"AddtoWorkList1", "AddtoWorkListAs1", "Editor1"}));
        F->Host.RegisterWindow("Diagram", {});
        QCOMPARE(enabled(*F->MakeView()).last(), QString("AddTracktoDiagram1"));
    }

    // A failed connection shows its reason and a marker, a later notice can
    // connect, and a view without a connection asks for one.
    void connecting() {
        F->ConnectError = "unable to open database file";
        FView->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(F->Ui.Messages(),
                 QStringList({"Could not connect to Database Estate\rError: unable to open "
                              "database file\rChoose another Source Database"}));
        QCOMPARE(RootTexts(*FView->tvMain), QStringList({MissingMarker}));
        QCOMPARE(FView->tvMain->PopupMenu(), nullptr);
        QVERIFY(!FView->windowTitle().startsWith("Korvane - "));

        // A later notice can connect.
        F->ConnectError.clear();
        FView->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(FView->windowTitle(), QString("Korvane - View 1 on Estate"));
        QCOMPARE(FView->tvMain->Root(0)->Text(), QString("  *** No Hits on System ***"));

        const auto view = F->MakeView(QString());
        F->Ui.QueueChoice(QString("Estate"));
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(F->Ui.Questions(), QStringList({"Source Databases"}));
        QCOMPARE(view->ConnectionName(), QString("Estate"));
        QCOMPARE(view->DataAccess(), F->Fake);
        QCOMPARE(view->Tables().BoundCount(), 74);
    }

    void bindingFailureIsShownAndTheViewGoesOn() {
        F->FailTable = "QXROW";
        FView->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(F->Ui.Messages(), QStringList({"AssignDBPointers failed: no such table: QXROW"}));
        // QXFILE (6 columns), QXOBJECT (11) and QXENTRY (5) were bound before.
        QCOMPARE(FView->Tables().BoundCount(), 3 + 6 + 11 + 5);
        // The refresh itself then fails on an unbound table; that failure is
        // dropped, and the refresh does not end as a completed one.
        QCOMPARE(F->Fake->EndRefreshCalls, 0);
    }

    void tablesAreClosedBeforeReconnectingAndAtTheEnd() {
        auto view = F->MakeView();
        view->ConnectToDB();
        QCOMPARE(F->Fake->CloseTablesCalls, 0);
        view->ConnectToDB();
        QCOMPARE(F->Fake->CloseTablesCalls, 1);
        QCOMPARE(view->DataAccess(), F->Fake); // the host's object for the name
        view.reset();
        QCOMPARE(F->Fake->CloseTablesCalls, 2);

        auto failing = F->MakeView();
        failing->ConnectToDB();
        F->Fake->FailCloseTables = true;
        failing.reset(); // the error is ignored
        QCOMPARE(F->Fake->CloseTablesCalls, 3);
        QVERIFY(F->Ui.Errors().isEmpty());
    }

    // The marker nodes a refresh without root items leaves, and what it read.
    void markers_data() {
        QTest::addColumn<bool>("hasFiles");
        QTest::addColumn<bool>("dependencies");
        QTest::addColumn<QString>("level");
        QTest::addColumn<QStringList>("roots");
        QTest::addColumn<bool>("filterOn");
        QTest::addColumn<int>("conditions");
        auto row = [](const QString& name, bool hasFiles, bool dependencies, const QString& level,
                      const QStringList& roots, bool filterOn = false, int conditions = 0) {
            QTest::newRow(qPrintable(name))
                << hasFiles << dependencies << level << roots << filterOn << conditions;
        };
        const QString none = "  *** No Hits on %1 ***";
        const QString filtered = "  *** No Hits with current Filter Settings ***";
        row("empty, Distribution System", false, false, "System", {EmptyMarker});
        row("empty, Dependencies Data", false, true, "Data", {EmptyMarker});
        row("empty, Distribution Code", false, false, "Code", {EmptyMarker});
        for (const QString level : {"System", "Computer", "Application"})
            row(level, true, false, level, {none.arg(level), QString(), LoadAdvice});
        row("Dependencies Application", true, true, "Application",
            {none.arg("Application"), QString(), LoadAdvice});
        for (const QString level : {"Package", "Object", "Entry", "Code", "Data"})
            row(level, true, false, level, {none.arg(level)});
        row("Dependencies Code", true, true, "Code", {none.arg("Code")});
        row("Dependencies Data", true, true, "Data",
            {"  *** Dependencies for Data is not available in this version of Korvane ***"});
        row("filter on, with conditions", true, false, "Object", {filtered}, true, 2);
        row("filter on, empty where clause", true, false, "Object", {none.arg("Object")}, true, 0);
        row("filter off, with conditions", true, false, "Object", {none.arg("Object")}, false, 2);
    }
    void markers() {
        QFETCH(bool, hasFiles);
        QFETCH(bool, dependencies);
        QFETCH(QString, level);
        QFETCH(QStringList, roots);
        QFETCH(bool, filterOn);
        QFETCH(int, conditions);
        F->HasFiles = hasFiles;
        const auto view = F->MakeView<FilteredView>();
        view->Conditions = conditions;
        view->rbFilterOn->setChecked(filterOn);
        view->rbDependencies->setChecked(dependencies);
        view->cbViewBy->setCurrentIndex(view->cbViewBy->findText(level));
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(RootTexts(*view->tvMain), roots);
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
        QVERIFY(F->Ui.Messages().isEmpty());
        QCOMPARE(F->Fake->EndRefreshCalls, 1);
        // An empty repository, or Dependencies for Data: no root items are
        // looked for, QXFILE is the only table read.
        if (!hasFiles || (dependencies && level == "Data"))
            QCOMPARE(F->Fake->Selected, QStringList({"QXFILE:"}));
    }

    // A refresh notice for another connection is ignored; every refresh gives
    // the popup back and clears the tree first.
    void refreshNoticesAndThePopup() {
        FView->RefreshContent(nullptr, nullptr, QString());
        FakeDataAccess other;
        FView->RefreshContent(&other, nullptr, QString());
        QCOMPARE(F->Fake->EndRefreshCalls, 1);
        QVERIFY(other.Selected.isEmpty());
        QMenu* popupDuringRefresh = nullptr;
        bool treeClearedFirst = false;
        F->Fake->OnSelect = [&](const QString&) {
            popupDuringRefresh = FView->tvMain->PopupMenu();
            treeClearedFirst = FView->tvMain->RootCount() == 0;
        };
        FView->RefreshContent(F->Fake, nullptr, QString());
        QCOMPARE(F->Fake->EndRefreshCalls, 2);
        QCOMPARE(popupDuringRefresh, FView->pmnuView);
        QVERIFY(treeClearedFirst);
        QCOMPARE(FView->tvMain->PopupMenu(), nullptr); // markers only
    }

    void refreshFailuresAreQuietForTheHostOnly() {
        FView->cbRefreshView->click(); // before any connection
        QCOMPARE(F->Ui.Errors(), QStringList({"No Source Database connected"}));
        FView->ConnectToDB();
        F->Fake->FailSelect = true;
        FView->RefreshContent(F->Fake, nullptr, QString()); // dropped silently
        QCOMPARE(F->Ui.Errors().size(), 1);
        QVERIFY(F->Ui.Messages().isEmpty());
        FView->cbRefreshView->click(); // reaches the error display
        QCOMPARE(F->Ui.Errors().last(), QString("database is locked"));
        // The brackets closed on the way out.
        QCOMPARE(F->Ui.ScreenCursor(), Qt::ArrowCursor);
        QVERIFY(F->Ui.CursorLog().contains(Qt::WaitCursor));
        QVERIFY(!FView->tvMain->Updating());
        QVERIFY(FView->tvMain->updatesEnabled());
        QCOMPARE(F->Fake->EndRefreshCalls, 0);
    }

    void expansionDispatchRunsInsideTheBrackets() {
        for (bool dependencies : {false, true}) {
            FView->rbDependencies->setChecked(dependencies); // empties the tree
            TQXTreeNode* node = FView->tvMain->AddRoot("PAYCALC");
            FView->tvMain->AddPlaceholder(node);
            F->Ui.ClearLog();
            FView->NodeExpanded(node);
            QCOMPARE(F->Ui.CursorLog(), (QList<Qt::CursorShape>{Qt::WaitCursor, Qt::ArrowCursor}));
            QVERIFY(FView->tvMain->updatesEnabled());
        }
    }

    void hintTable() {
        const struct {
            bool Dependencies, TopDown;
            const char* Level;
            bool Option;
            QString Hint;
        } rows[] = {
            {false, true, "Code", false, "Lines of Code (execution order can not be trusted)"},
            {false, true, "Data", false,
             "Variable Declarations (persistent storage has green icons)"},
            {false, true, "System", true, "System contains"},
            {false, false, "Code", false, "Line of Code is part of"},
            {false, false, "System", false, "System"},
            {false, false, "Entry", true, "Entry is part of"},
            {true, true, "Code", true,
             "Lines of Code in order of execution, call TO other Entry(s)"},
            {true, true, "Application", false, "Application uses Application(s)"},
            {true, true, "Object", false, "Object uses Object(s)"},
            {true, false, "Code", false,
             "Lines of Code in order of execution, called FROM other Entry(s)"},
            {true, false, "Entry", true, "Entry is used by Entry(s)"},
        };
        for (const auto& row : rows) {
            SetViewBy(*FView, row.Dependencies, row.TopDown, row.Level);
            FView->cbOption->setChecked(row.Option);
            FView->SetUserHint();
            QCOMPARE(FView->lblUserHint->text(), "View: " + row.Hint);
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
        auto choose = [&](QRadioButton* button, const char* item) {
            FView->tvMain->Clear();
            FView->tvMain->AddRoot("PAYCALC");
            if (byMenu)
                FView->mnuView.FindItem(item)->trigger();
            else
                QTest::mouseClick(button, Qt::LeftButton);
        };
        choose(FView->rbDependencies, "Dependencies1");
        QVERIFY(FView->rbDependencies->isChecked());
        QCOMPARE(CheckedItems(*FView), (QStringList{"Dependencies1", "TopDown1", "System1"}));
        QCOMPARE(FView->lblUserHint->text(), QString("View: System uses System(s)"));
        QCOMPARE(
            RootTexts(*FView->tvMain),
            QStringList(
                {"  *** Click Refresh or choose View/Refresh on the Main Menu for Result ***"}));
        QCOMPARE(FView->tvMain->PopupMenu(), nullptr);
        // Choosing the checked one again changes nothing.
        choose(FView->rbDependencies, "Dependencies1");
        QCOMPARE(CheckedItems(*FView), (QStringList{"Dependencies1", "TopDown1", "System1"}));
        QCOMPARE(RootTexts(*FView->tvMain), QStringList({"PAYCALC"}));

        choose(FView->rbBottomUp, "BottomUp1");
        QVERIFY(FView->rbBottomUp->isChecked());
        QCOMPARE(CheckedItems(*FView), (QStringList{"Dependencies1", "BottomUp1", "System1"}));
        QCOMPARE(FView->lblUserHint->text(), QString("View: System is used by System(s)"));
    }

    // A level chosen from the menu leaves the tree and checks the option box
    // where it is shown.
    void menuChoiceOfLevel() {
        FView->tvMain->AddRoot("PAYCALC");
        for (int twice = 0; twice < 2; ++twice) { // the second time it is checked already
            FView->mnuView.FindItem("Entry1")->trigger();
            QCOMPARE(FView->cbViewBy->currentText(), QString("Entry"));
            QCOMPARE(CheckedItems(*FView), (QStringList{"Distribution1", "TopDown1", "Entry1"}));
        }
        QCOMPARE(FView->lblUserHint->text(), QString("View: Entry contains"));
        QCOMPARE(RootTexts(*FView->tvMain), QStringList({"PAYCALC"}));
        QVERIFY(FView->cbOption->isHidden());

        SetViewBy(*FView, true, true, "System");
        FView->mnuView.FindItem("Object1")->trigger();
        QVERIFY(FView->cbOption->isChecked());
        QCOMPARE(FView->lblOption->text(), QString("Show Object sequentially"));
        QCOMPARE(FView->lblUserHint->text(),
                 QString("View: Object uses Object(s), in order of use"));

        FView->cbOption->setChecked(false);
        FView->mnuView.FindItem("Entry1")->trigger();
        QVERIFY(FView->cbOption->isChecked());

        // A type item leaves the box as it is.
        FView->cbOption->setChecked(false);
        FView->mnuView.FindItem("TopDown1")->trigger();
        QVERIFY(!FView->cbOption->isChecked());
        QVERIFY(FView->cbOption->isVisibleTo(FView.get()));
    }

    void comboChoiceSetsTheOptionBox() {
        SetViewBy(*FView, true, true, "Object");
        FView->cbViewBy->setFocus();
        QTest::keyClick(FView->cbViewBy, Qt::Key_Down); // the user picks Entry
        QCOMPARE(FView->Settings().Level, TQXLevel::Entry);
        QVERIFY(FView->cbOption->isChecked());
        QCOMPARE(FView->lblOption->text(), QString("Show Entrys sequentially"));
        QCOMPARE(CheckedItems(*FView), (QStringList{"Dependencies1", "TopDown1", "Entry1"}));

        QTest::keyClick(FView->cbViewBy, Qt::Key_Up); // back to Object
        QVERIFY(!FView->cbOption->isChecked());
        QCOMPARE(FView->lblOption->text(), QString("Show Objects sequentially"));

        // A click on the option box keeps what the user chose.
        FView->cbOption->click();
        QVERIFY(FView->cbOption->isChecked());
        QCOMPARE(FView->lblUserHint->text(),
                 QString("View: Object uses Object(s), in order of use"));

        QTest::mouseClick(FView->rbBottomUp, Qt::LeftButton);
        QVERIFY(FView->cbOption->isHidden());
        QVERIFY(FView->lblOption->isHidden());
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
        FView->cbRefreshView->setFocus();
        FView->tbRootItemLimit->setText(typed);
        QFocusEvent leave(QEvent::FocusOut,
                          switchingWindows ? Qt::ActiveWindowFocusReason : Qt::TabFocusReason);
        QApplication::sendEvent(FView->tbRootItemLimit, &leave);
        QCOMPARE(FView->tbRootItemLimit->text(), shown);
        QCOMPARE(F->Ui.Messages(), message.isEmpty() ? QStringList() : QStringList({message}));
        // A rejected limit takes the focus back.
        QCOMPARE(FView->focusWidget() == FView->tbRootItemLimit, !message.isEmpty());
    }
};

QTEST_MAIN(TestViewWindow)
#include "tst_ViewWindow.moc"
