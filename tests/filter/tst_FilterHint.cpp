// The question a view asks when a level shows as many root items as the
// limit allows, asked through the UI services of a view on a real repository.
#include "driver/ViewDriver.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "support/TestRepository.h"
#include "view/View.h"

#include <QRadioButton>
#include <QtTest>

class TestFilterHint : public QObject {
    Q_OBJECT

    TestRepository FRepo;

    QStringList QuestionsFor(const QString& limit, bool filterOn) {
        TQXViewDriver driver(FRepo.Location());
        TQXViewSettings settings;
        settings.LimitText = limit;
        driver.Apply(settings);
        if (filterOn)
            driver.View().rbFilterOn->click();
        driver.Refresh();
        return driver.Ui().Questions();
    }

private slots:
    void initTestCase() {
        FRepo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName",
                     {{1, 1, "SYSTEM1"}, {2, 1, "SYSTEM2"}, {3, 1, "SYSTEM3"}});
        FRepo.Insert("QXFILE", "QXFileID, QXSystemID", {{1, 1}, {2, 2}, {3, 3}});
    }

    void askedOnceWhenTheLimitIsReached() {
        const QString question = "This View contains more than %1 RootItems,\r"
                                 "do You want to %2?";
        QCOMPARE(QuestionsFor("2", false), QStringList{question.arg("2", "use Filter")});
        // Exactly as many root items as the limit: still asked, once.
        QCOMPARE(QuestionsFor("3", false), QStringList{question.arg("3", "use Filter")});
        QVERIFY(QuestionsFor("4", false).isEmpty());
        // A filter without conditions is offered for change.
        QCOMPARE(QuestionsFor("2", true), QStringList{question.arg("2", "change the Filter")});
    }

    void answeringYesStillListsUpToTheLimit() {
        TQXViewDriver driver(FRepo.Location());
        driver.AnswerYes(true);
        TQXViewSettings settings;
        settings.LimitText = QStringLiteral("2");
        driver.Apply(settings);
        driver.Refresh();
        // Without a filter dialog to show, the listing goes on to the limit marker.
        QCOMPARE(driver.Tree().RootCount(), 3);
        QVERIFY(driver.Tree().Root(0)->Text().startsWith(QStringLiteral("  *** RootItem Limit")));
    }
};

QTEST_MAIN(TestFilterHint)
#include "tst_FilterHint.moc"
