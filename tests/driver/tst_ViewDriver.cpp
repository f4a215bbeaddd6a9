// The view driver on a real repository: settings through the view's controls,
// failures the view only showed turned into errors, the limit question asked
// through its UI services, and opening nodes breadth first up to a node cap.
// Opening by depth and by path is checked through korvane-cli. Driven to the
// bottom, every view of the demo estate is the same on SQLite and PostgreSQL.
#include "SampleEstate.h"
#include "support/CliEstate.h"
#include "support/EveryView.h"
#include "support/Failure.h"

#include "driver/ViewDriver.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "sqlaccess/RepositorySchema.h"
#include "view/View.h"

#include <QRadioButton>
#include <QtTest>

namespace {

TQXViewSettings Objects(TQXViewType type, const QString& limit = QStringLiteral("100")) {
    TQXViewSettings settings;
    settings.Type = type;
    settings.Level = TQXLevel::Object;
    settings.LimitText = limit;
    return settings;
}

void FillWithDemo(TestRepository& repo) {
    QSqlDatabase db = repo.Db();
    RepositorySchema::DropTables(db);
    BuildSampleEstate(db, SampleEstateOptions{});
}

} // namespace

class TestViewDriver : public QObject {
    Q_OBJECT

    TestRepository FRepo;

    // The questions a refresh of the five objects asks.
    QStringList QuestionsFor(const QString& limit, bool filterOn) {
        TQXViewDriver driver(FRepo.Location());
        driver.Apply(Objects(TQXViewType::Distribution, limit));
        if (filterOn)
            driver.View().rbFilterOn->click();
        driver.Refresh();
        return driver.Ui().Questions();
    }

private slots:
    void initTestCase() { BuildCliEstate(FRepo); }

    // The controls' rules apply first; then the settings have the last word.
    void settingsGoThroughTheControls() {
        TQXViewDriver driver(FRepo.Location());
        TQXViewSettings settings = Objects(TQXViewType::Dependencies, QStringLiteral(" 007"));
        settings.Level = TQXLevel::Entry; // checks the option box
        driver.Apply(settings);
        QCOMPARE(driver.View().Settings().LimitText, QString("7")); // as on leaving the box
        QVERIFY(!driver.View().Settings().Option);
        settings.Option = true;
        driver.Apply(settings);
        QVERIFY(driver.View().Settings().Option);
        settings.Direction = TQXDirection::BottomUp;
        driver.Apply(settings);
        QVERIFY(!driver.View().Settings().IsTopDown());
        settings.LimitText = QStringLiteral("many");
        QVERIFY_THROWS_EXCEPTION(EQXError, driver.Apply(settings));
    }

    void failuresTheViewOnlyShowedAreThrown() {
        QVERIFY_THROWS_EXCEPTION(EQXError, TQXViewDriver(QDir::temp().filePath("none.kvdb")));
        TQXViewDriver driver(NotARepositoryFile());
        const QString error = FailureOf([&] { driver.Refresh(); }).Message;
        QVERIFY2(error.startsWith("AssignDBPointers failed: "), qPrintable(error));
    }

    // Asked once when a level shows as many root items as the limit allows.
    void limitQuestion() {
        const QString question = "This View contains more than %1 RootItems,\r"
                                 "do You want to %2?";
        QCOMPARE(QuestionsFor("2", false), QStringList{question.arg("2", "use Filter")});
        QCOMPARE(QuestionsFor("5", false), QStringList{question.arg("5", "use Filter")});
        QVERIFY(QuestionsFor("6", false).isEmpty());
        // A filter without conditions is offered for change.
        QCOMPARE(QuestionsFor("2", true), QStringList{question.arg("2", "change the Filter")});

        // Yes shows the filter dialog; cancelled, it leaves the root items
        // listed so far, without the limit marker.
        TQXViewDriver driver(FRepo.Location());
        driver.AnswerYes(true);
        driver.Apply(Objects(TQXViewType::Distribution, QStringLiteral("2")));
        driver.Refresh();
        QCOMPARE(driver.Ui().Dialogs(), QStringList{"RootItem Filter"});
        QCOMPARE(RootTexts(driver.Tree()), QStringList({"MAIN [Program]", "ZETA [Program]"}));
    }

    void refreshAndOpenBreadthFirstToTheCap() {
        TQXViewDriver driver(FRepo.Location());
        driver.Apply(Objects(TQXViewType::Dependencies));
        const qint64 before = driver.RoundTrips();
        driver.Refresh();
        QVERIFY(driver.RoundTrips() > before);
        QCOMPARE(driver.Tree().RootCount(), 5);
        // The roots BETA and MAIN are opened before BETA's callee, then the
        // cap of 7 nodes stops it.
        QVERIFY(!driver.ExpandToDepth(10, 7));
        QCOMPARE(driver.Tree().NodeCount(), 7);
        QVERIFY(TQXTreeControl::HasPlaceholder(driver.Tree().Root(0)->FirstChild()));
    }

    // The same where texts must mean the same on both databases.
    void everyViewOfTheDemoIsTheSameOnBothDatabases() {
        if (!TestRepository::PostgreSQLAvailable())
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
        TestRepository sqlite(TestRepository::Backend::SQLite);
        TestRepository postgres(TestRepository::Backend::PostgreSQL);
        FillWithDemo(sqlite);
        FillWithDemo(postgres);
        for (const TQXViewSettings& settings : EveryView()) {
            const QStringList dump = Dump(FullyOpened(sqlite.Location(), settings)->Tree());
            QVERIFY2(!dump.isEmpty() &&
                         dump == Dump(FullyOpened(postgres.Location(), settings)->Tree()),
                     qPrintable(Describe(settings)));
        }
    }
};

QTEST_MAIN(TestViewDriver)
#include "tst_ViewDriver.moc"
