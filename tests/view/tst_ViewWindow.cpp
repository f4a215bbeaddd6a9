// The view window: construction, connection, the refresh cycle with its
// marker nodes and popup rule, expansion dispatch, and the destructor.
#include "ViewFixture.h"

#include "host/FormRegistry.h"
#include "repository/Errors.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QtTest>

namespace {

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

QStringList MenuNames(const TQXMainMenu& menu) {
    QStringList names;
    for (const QMenu* m : menu.Menus())
        names << m->objectName();
    return names;
}

void ChooseLevel(TQXView& view, const QString& level) {
    view.cbViewBy->setCurrentIndex(view.cbViewBy->findText(level));
}

} // namespace

class TestViewWindow : public QObject {
    Q_OBJECT

private slots:
    void constructionShowsTheDefaults() {
        ViewFixture f;
        f.Host.SetTreeFont("DejaVu Sans Mono", 13);
        const auto view = f.MakeView();
        QCOMPARE(view->gbViewType->title(), QString(" View Type: "));
        QCOMPARE(view->gbTrackDirection->title(), QString(" View Track Direction: "));
        QCOMPARE(view->gbViewBy->title(), QString(" View By: "));
        QCOMPARE(view->gbRootItemFilter->title(), QString(" RootItem Filter: "));
        QCOMPARE(view->gbRootItemLimit->title(), QString(" RootItem Limit: "));
        QVERIFY(view->rbDistribution->isChecked());
        QVERIFY(view->rbTopDown->isChecked());
        QVERIFY(view->rbFilterOff->isChecked());
        QStringList levels;
        for (int i = 0; i < view->cbViewBy->count(); ++i)
            levels << view->cbViewBy->itemText(i);
        QCOMPARE(levels, QStringList({"System", "Computer", "Application", "Package", "Object",
                                      "Entry", "Code", "Data"}));
        QCOMPARE(view->Settings().Level, TQXLevel::System);
        QCOMPARE(view->tbRootItemLimit->text(), QString("100"));
        QVERIFY(view->cbOption->isHidden());
        QVERIFY(view->lblOption->isHidden());
        QVERIFY(!view->cbOption->isChecked());
        QCOMPARE(view->cbRefreshView->text(), QString("Refresh"));
        QCOMPARE(view->lblUserHint->text(), QString("View: System contains"));
        QVERIFY(view->lblUserHint->font().bold());
        QCOMPARE(view->tvMain->RootCount(), 0);
        QCOMPARE(view->tvMain->findChild<QTreeView*>()->indentation(), 19);
        QCOMPARE(view->tvMain->findChild<QTreeView*>()->selectionMode(),
                 QAbstractItemView::ExtendedSelection);
        QCOMPARE(view->tvMain->font().family(), QString("DejaVu Sans Mono"));
        QCOMPARE(view->tvMain->font().pointSize(), 13);
        QVERIFY(!view->AskBeforeClosing());
        QCOMPARE(view->imgIcons, view->ImageList());
        QVERIFY(view->mnuView.FindItem("Distribution1")->isChecked());
        QVERIFY(view->mnuView.FindItem("TopDown1")->isChecked());
        QVERIFY(view->mnuView.FindItem("System1")->isChecked());
        QVERIFY(!view->mnuView.FindItem("Entry1")->isChecked());
    }

    void viewMenuIsMergedWithTheBaseMenu() {
        ViewFixture f;
        const auto view = f.MakeView();
        QCOMPARE(MenuNames(view->mnuView),
                 QStringList({"File1", "Edit1", "View1", "Filter1", "Tracks1", "Window1"}));
        QCOMPARE(&view->FormMenu(), &view->mnuView);
        for (const char* name : {"View1", "Filter1", "Tracks1", "Refresh1", "SetFilter1",
                                 "ClearFilter1", "AutoCompleteTrack1", "AddTrack1", "N7"})
            QCOMPARE(TQXMainMenu::GroupIndex(view->mnuView.FindItem(name)), 40);
        QCOMPARE(TQXMainMenu::GroupIndex(view->mnuView.FindItem("Dependencies1")), 41);
        QCOMPARE(TQXMainMenu::GroupIndex(view->mnuView.FindItem("BottomUp1")), 42);
        QCOMPARE(TQXMainMenu::GroupIndex(view->mnuView.FindItem("Data1")), 43);
        QVERIFY(!view->mnuView.FindItem("AutoCompleteTrack1")->isEnabled());
        QVERIFY(!view->mnuView.FindItem("AddTrack1")->isEnabled());
        QCOMPARE(view->mnuView.FindItem("Refresh1")->text(), QString("Refresh"));
    }

    void popupItemsFollowTheHostsWindows() {
        ViewFixture f;
        auto enabled = [](const TQXView& view) {
            QStringList names;
            for (const char* name :
                 {"AddtoWorkList1", "AddtoWorkListAs1", "Editor1", "AddTracktoDiagram1"})
                if (view.pmnuView->findChild<QAction*>(name)->isEnabled())
                    names << name;
            return names;
        };
        QCOMPARE(enabled(*f.MakeView()), QStringList());
        f.Host.RegisterWindow("WorkList", {});
        QCOMPARE(enabled(*f.MakeView()),
                 QStringList({"AddtoWorkList1", "AddtoWorkListAs1", "Editor1"}));
        f.Host.RegisterWindow("Diagram", {});
        QCOMPARE(enabled(*f.MakeView()).last(), QString("AddTracktoDiagram1"));
    }

    void creationFailuresCarryThePrefix() {
        try {
            TQXView view(nullptr, 1, nullptr, "View 1", "Estate", "");
            QFAIL("a view without base functions");
        } catch (const EQXError& e) {
            QVERIFY2(e.Message().startsWith("TQXView.Create: "), qPrintable(e.Message()));
            QVERIFY(e.Message().endsWith(QChar('\r')));
        }
    }

    void hostCreatesTheViewByName() {
        ViewFixture f;
        const auto form =
            TQXFormRegistry::Create("TQXView", nullptr, 2, &f.Host, "View 2", "Estate", "");
        QVERIFY(qobject_cast<TQXView*>(form.get()));
        QCOMPARE(form->DocumentName(), QString("View 2"));
    }

    void connectionFailureShowsMessageAndMarker() {
        ViewFixture f;
        f.ConnectError = "unable to open database file";
        const auto view = f.MakeView();
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(f.Ui.Messages(),
                 QStringList({"Could not connect to Database Estate\rError: unable to open "
                              "database file\rChoose another Source Database"}));
        QCOMPARE(RootTexts(*view->tvMain), QStringList({MissingMarker}));
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
        QVERIFY(!view->windowTitle().startsWith("Korvane - "));

        // A later notice can connect.
        f.ConnectError.clear();
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(view->windowTitle(), QString("Korvane - View 1 on Estate"));
        QCOMPARE(view->tvMain->Root(0)->Text(), QString("  *** No Hits on System ***"));
    }

    void aViewWithoutConnectionAsksForOne() {
        ViewFixture f;
        const auto view = f.MakeView(QString());
        f.Ui.QueueChoice(QString("Estate"));
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(f.Ui.Questions(), QStringList({"Source Databases"}));
        QCOMPARE(view->ConnectionName(), QString("Estate"));
        QCOMPARE(view->DataAccess(), f.Fake);
        QCOMPARE(view->Tables().BoundCount(), 74);
    }

    void bindingFailureIsShownAndTheViewGoesOn() {
        ViewFixture f;
        f.FailTable = "QXROW";
        const auto view = f.MakeView();
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(f.Ui.Messages(), QStringList({"AssignDBPointers failed: no such table: QXROW"}));
        // QXFILE (6 columns), QXOBJECT (11) and QXENTRY (5) were bound before.
        QCOMPARE(view->Tables().BoundCount(), 3 + 6 + 11 + 5);
        // The refresh itself then fails on an unbound table; that failure is
        // dropped, and the refresh does not end as a completed one.
        QCOMPARE(f.Fake->EndRefreshCalls, 0);
    }

    void reconnectingClosesTheTablesFirst() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->ConnectToDB();
        QCOMPARE(f.Fake->CloseTablesCalls, 0);
        view->ConnectToDB();
        QCOMPARE(f.Fake->CloseTablesCalls, 1);
        QCOMPARE(view->DataAccess(), f.Fake); // the host's object for the name
    }

    void emptyRepositoryShowsOnlyItsMarker_data() {
        QTest::addColumn<bool>("dependencies");
        QTest::addColumn<QString>("level");
        QTest::newRow("Distribution System") << false << "System";
        QTest::newRow("Dependencies Data") << true << "Data";
        QTest::newRow("Distribution Code") << false << "Code";
    }
    void emptyRepositoryShowsOnlyItsMarker() {
        QFETCH(bool, dependencies);
        QFETCH(QString, level);
        ViewFixture f;
        f.HasFiles = false;
        const auto view = f.MakeView();
        view->rbDependencies->setChecked(dependencies);
        ChooseLevel(*view, level);
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(RootTexts(*view->tvMain), QStringList({EmptyMarker}));
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
        QCOMPARE(f.Fake->Selected, QStringList({"QXFILE:"}));
        QCOMPARE(f.Fake->EndRefreshCalls, 1);
    }

    void noHitsMarkers_data() {
        QTest::addColumn<bool>("dependencies");
        QTest::addColumn<QString>("level");
        QTest::addColumn<QStringList>("roots");
        const QString none = "  *** No Hits on %1 ***";
        for (const char* level : {"System", "Computer", "Application"})
            QTest::addRow("%s", level)
                << false << level << QStringList({none.arg(level), QString(), LoadAdvice});
        QTest::newRow("Dependencies Application")
            << true << "Application"
            << QStringList({none.arg("Application"), QString(), LoadAdvice});
        for (const char* level : {"Package", "Object", "Entry", "Code", "Data"})
            QTest::addRow("%s", level) << false << level << QStringList({none.arg(level)});
        QTest::newRow("Dependencies Code") << true << "Code" << QStringList({none.arg("Code")});
    }
    void noHitsMarkers() {
        QFETCH(bool, dependencies);
        QFETCH(QString, level);
        QFETCH(QStringList, roots);
        ViewFixture f;
        const auto view = f.MakeView();
        view->rbDependencies->setChecked(dependencies);
        ChooseLevel(*view, level);
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(RootTexts(*view->tvMain), roots);
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
        QVERIFY(f.Ui.Messages().isEmpty());
    }

    void dependenciesForDataHasItsOwnMarker() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->rbDependencies->setChecked(true);
        ChooseLevel(*view, "Data");
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(RootTexts(*view->tvMain),
                 QStringList({"  *** Dependencies for Data is not available in this version of "
                              "Korvane ***"}));
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
        // No root items are looked for: QXFILE is the only table read.
        QCOMPARE(f.Fake->Selected, QStringList({"QXFILE:"}));
    }

    void filterMarkerNeedsAFilterWithConditions_data() {
        QTest::addColumn<bool>("filterOn");
        QTest::addColumn<int>("conditions");
        QTest::addColumn<QString>("first");
        const QString filterMarker = "  *** No Hits with current Filter Settings ***";
        const QString noHits = "  *** No Hits on Object ***";
        QTest::newRow("on, with conditions") << true << 2 << filterMarker;
        QTest::newRow("on, empty where clause") << true << 0 << noHits;
        QTest::newRow("off, with conditions") << false << 2 << noHits;
    }
    void filterMarkerNeedsAFilterWithConditions() {
        QFETCH(bool, filterOn);
        QFETCH(int, conditions);
        QFETCH(QString, first);
        ViewFixture f;
        const auto view = f.MakeView<FilteredView>();
        view->Conditions = conditions;
        view->rbFilterOn->setChecked(filterOn);
        ChooseLevel(*view, "Object");
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(RootTexts(*view->tvMain), QStringList({first}));
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
    }

    void everyRefreshGivesThePopupBackFirst() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->RefreshContent(nullptr, nullptr, QString());
        QCOMPARE(view->tvMain->PopupMenu(), nullptr); // markers only
        QMenu* popupDuringRefresh = nullptr;
        bool treeClearedFirst = false;
        f.Fake->OnSelect = [&](const QString&) {
            popupDuringRefresh = view->tvMain->PopupMenu();
            treeClearedFirst = view->tvMain->RootCount() == 0;
        };
        view->cbRefreshView->click();
        QCOMPARE(popupDuringRefresh, view->pmnuView);
        QVERIFY(treeClearedFirst);
        QCOMPARE(view->tvMain->PopupMenu(), nullptr);
    }

    void refreshNoticesForOtherConnectionsAreIgnored() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->RefreshContent(nullptr, nullptr, QString());
        FakeDataAccess other;
        view->RefreshContent(&other, nullptr, QString());
        QCOMPARE(f.Fake->EndRefreshCalls, 1);
        QVERIFY(other.Selected.isEmpty());
        view->RefreshContent(f.Fake, nullptr, QString());
        QCOMPARE(f.Fake->EndRefreshCalls, 2);
    }

    void refreshFailuresAreQuietForTheHostOnly() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->ConnectToDB();
        f.Fake->FailSelect = true;
        view->RefreshContent(f.Fake, nullptr, QString()); // dropped silently
        QVERIFY(f.Ui.Errors().isEmpty());
        QVERIFY(f.Ui.Messages().isEmpty());
        view->cbRefreshView->click(); // reaches the error display
        QCOMPARE(f.Ui.Errors(), QStringList({"database is locked"}));
        // The brackets closed on the way out.
        QCOMPARE(f.Ui.ScreenCursor(), Qt::ArrowCursor);
        QVERIFY(f.Ui.CursorLog().contains(Qt::WaitCursor));
        QVERIFY(!view->tvMain->Updating());
        QVERIFY(view->tvMain->updatesEnabled());
        QCOMPARE(f.Fake->EndRefreshCalls, 0);
    }

    void refreshBeforeAnyConnectionIsAnError() {
        ViewFixture f;
        const auto view = f.MakeView();
        view->cbRefreshView->click();
        QCOMPARE(f.Ui.Errors(), QStringList({"No Source Database connected"}));
    }

    void expansionDispatchRunsInsideTheBrackets() {
        ViewFixture f;
        const auto view = f.MakeView();
        for (bool dependencies : {false, true}) {
            view->rbDependencies->setChecked(dependencies); // empties the tree
            TQXTreeNode* node = view->tvMain->AddRoot("PAYCALC");
            view->tvMain->AddPlaceholder(node);
            f.Ui.ClearLog();
            view->NodeExpanded(node);
            QCOMPARE(f.Ui.CursorLog(), (QList<Qt::CursorShape>{Qt::WaitCursor, Qt::ArrowCursor}));
            QVERIFY(view->tvMain->updatesEnabled());
        }
    }

    void destructorClosesTheTables() {
        ViewFixture f;
        auto view = f.MakeView();
        view->ConnectToDB();
        view.reset();
        QCOMPARE(f.Fake->CloseTablesCalls, 1);

        auto failing = f.MakeView();
        failing->ConnectToDB();
        f.Fake->FailCloseTables = true;
        failing.reset(); // the error is ignored
        QCOMPARE(f.Fake->CloseTablesCalls, 2);
        QVERIFY(f.Ui.Errors().isEmpty());
    }

    void aRealRepository() {
        TestRepository repository;
        TQXScriptedUIServices ui;
        TQXBaseFunctions host;
        host.SetConnection("Estate", repository.Location());
        TQXView view(nullptr, 1, &host, "View 1", "Estate", "");
        view.RefreshContent(nullptr, nullptr, QString());
        QVERIFY(dynamic_cast<SqlDataAccess*>(view.DataAccess()));
        QCOMPARE(RootTexts(*view.tvMain), QStringList({EmptyMarker}));
        repository.Insert("QXFILE", "QXFileID, QXFileName", {{1, "PAYCALC.CBL"}});
        view.RefreshContent(view.DataAccess(), nullptr, QString());
        QCOMPARE(view.tvMain->Root(0)->Text(), QString("  *** No Hits on System ***"));
        QVERIFY(ui.Messages().isEmpty());
    }
};

QTEST_MAIN(TestViewWindow)
#include "tst_ViewWindow.moc"
