// The view driver on a real repository: settings through the view's controls,
// failures the view only showed turned into errors, the limit question asked
// through its UI services, and opening nodes breadth first up to a node cap.
// Opening by depth and by path is checked through korvane-cli.
#include "support/CliEstate.h"

#include "driver/ViewDriver.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "view/View.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
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

    void settingsGoThroughTheControls() {
        TQXViewDriver driver(FRepo.Location());
        TQXView& view = driver.View();
        TQXViewSettings settings = Objects(TQXViewType::Dependencies, QStringLiteral(" 007"));
        settings.Direction = TQXDirection::BottomUp;
        settings.Level = TQXLevel::Entry;
        driver.Apply(settings);
        QVERIFY(view.rbDependencies->isChecked());
        QVERIFY(view.rbBottomUp->isChecked());
        QCOMPARE(view.cbViewBy->currentText(), QString("Entry"));
        QCOMPARE(view.tbRootItemLimit->text(), QString("7")); // checked as on leaving the box
        QVERIFY(view.cbOption->isHidden());

        // Choosing Entry checks the option box; the settings say otherwise.
        settings.Direction = TQXDirection::TopDown;
        driver.Apply(settings);
        QVERIFY(!view.cbOption->isHidden());
        QVERIFY(!view.cbOption->isChecked());
        settings.Option = true;
        driver.Apply(settings);
        QVERIFY(view.cbOption->isChecked());
        QCOMPARE(view.lblUserHint->text(),
                 QString("View: Entrys in order of execution, call TO other Entry(s)"));

        settings.LimitText = QStringLiteral("many");
        QVERIFY_THROWS_EXCEPTION(EQXError, driver.Apply(settings));
    }

    void failuresTheViewOnlyShowedAreThrown() {
        QVERIFY_THROWS_EXCEPTION(EQXError, TQXViewDriver(QDir::temp().filePath("none.kvdb")));
        TQXViewDriver driver(NotARepositoryFile());
        try {
            driver.Refresh();
            QFAIL("a file that is no repository was refreshed");
        } catch (const EQXError& e) {
            QVERIFY2(e.Message().startsWith("AssignDBPointers failed: "), qPrintable(e.Message()));
        }
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

        // Without a filter dialog to show, Yes lists on to the limit marker.
        TQXViewDriver driver(FRepo.Location());
        driver.AnswerYes(true);
        driver.Apply(Objects(TQXViewType::Distribution, QStringLiteral("2")));
        driver.Refresh();
        QCOMPARE(driver.Tree().RootCount(), 3);
        QVERIFY(driver.Tree().Root(0)->Text().startsWith(QStringLiteral("  *** RootItem Limit")));
    }

    void refreshAndOpenBreadthFirstToTheCap() {
        TQXViewDriver driver(FRepo.Location());
        driver.Apply(Objects(TQXViewType::Dependencies));
        const qint64 before = driver.RoundTrips();
        driver.Refresh();
        QVERIFY(driver.RoundTrips() > before);
        QCOMPARE(driver.Tree().RootCount(), 5);
        QVERIFY(driver.ExpandToDepth(10));
        // The roots BETA and MAIN are opened before BETA's callee, then the
        // cap of 7 nodes stops it.
        driver.Refresh();
        QVERIFY(!driver.ExpandToDepth(10, 7));
        QCOMPARE(driver.Tree().NodeCount(), 7);
        QVERIFY(TQXTreeControl::HasPlaceholder(driver.Tree().Root(0)->FirstChild()));
    }
};

QTEST_MAIN(TestViewDriver)
#include "tst_ViewDriver.moc"
