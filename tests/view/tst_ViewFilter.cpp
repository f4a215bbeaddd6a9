// The root-item filter in the view, on SQLite and PostgreSQL: the limit
// question with both answers, the dialog from the button and the menu,
// refreshes narrowed by names and by attributes (also to no hits), Clear,
// and a filter handed in by the host for a system, an object shown in its
// file, an entry, a row and a word.
#include "driver/ViewDriver.h"
#include "filter/FilterDialog.h"
#include "host/ItemSender.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "support/TestRepository.h"
#include "support/TreeTexts.h"
#include "view/View.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

namespace {

void BuildEstate(TestRepository& repo) {
    repo.Insert(
        "QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName, QXIcon",
        {{1, 1, "ACCOUNTS", 1}, {2, 1, "CLAIMS", 1}, {4, 2, "HOST", 2}, {6, 3, "ONLINE", 9}});
    repo.Insert("QXFILE", "QXFileID, QXSystemID, QXComputerID, QXApplicationID, QXFileName",
                {{1, 1, 4, 6, "ACCT.CBL"}, {2, 2, 0, 0, "CLAIM.CBL"}, {3, 1, 0, 0, "SCREENS.MAP"}});
    repo.Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName, QXObjectType, QXIcon",
                {{1, 1, "ACCTUPD", "Program", 52},
                 {1, 2, "ACCTCALC", "Program", 52},
                 {2, 1, "CLAIMREG", "Copy", 22},
                 {3, 1, "MAP1", "Map", 50}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "MAIN"}, {1, 1, 2, "CALC"}});
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow",
                {{1, 1, 1, 1, "PERFORM CALC"}, {1, 1, 2, 2, "ADD 1 TO TOTAL"}});
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord, QXWordType, "
                "QXObjectIdentifier",
                {{1, 1, 2, 2, 1, "TOTAL", 1011, "PIC 9"}, {1, 1, 1, 1, 2, "KEY", 1011, "PIC X"}});
}

// "Objects Name equals ACCTUPD AND" for each row of the dialog.
QStringList Rows(const TQXFilter& filter) {
    QStringList rows;
    for (int i = 0; i < filter.RowCount(); ++i) {
        const TQXQueryRow* row = filter.GetQueryRow(i);
        rows << row->cbAttribute->currentText() + ' ' + row->cbOperator->currentText() + ' ' +
                    row->cbValue->currentText() +
                    (row->rbAnd->isChecked()  ? " AND"
                     : row->rbOr->isChecked() ? " OR"
                                              : "");
    }
    return rows;
}

// A dialog script: the first row as given, then Apply.
std::function<void(QDialog&)> Apply(int attribute, int op, const QString& value) {
    return [=](QDialog& dialog) {
        auto& filter = static_cast<TQXFilter&>(dialog);
        TQXQueryRow* row = filter.GetQueryRow(0);
        row->cbAttribute->setCurrentIndex(attribute);
        row->cbOperator->setCurrentIndex(op);
        row->cbValue->setEditText(value);
        filter.cbApply->click();
    };
}

} // namespace

class TestViewFilter : public QObject {
    Q_OBJECT

    std::unique_ptr<TestRepository> FRepo;

    std::unique_ptr<TQXViewDriver> Objects(const QString& limit) {
        auto driver = std::make_unique<TQXViewDriver>(FRepo->Location());
        TQXViewSettings settings;
        settings.Level = TQXLevel::Object;
        settings.LimitText = limit;
        driver->Apply(settings);
        return driver;
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }
    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL is not available");
        FRepo = std::make_unique<TestRepository>(TestRepository::CurrentBackend());
        BuildEstate(*FRepo);
    }
    void cleanup() { FRepo.reset(); }

    // No lists on to the limit marker; Yes shows the dialog, and what it
    // applies is listed at once, with the filter switched on.
    void limitQuestionAndDialog() {
        auto driver = Objects("2");
        driver->Refresh();
        QCOMPARE(
            driver->Ui().Questions(),
            QStringList{"This View contains more than 2 RootItems,\rdo You want to use Filter?"});
        QCOMPARE(driver->Tree().RootCount(), 3);

        driver->Ui().QueueAnswer(true);
        driver->Ui().QueueDialog(Apply(4, 2, "acct")); // Objects Name begins with
        driver->Refresh();
        QCOMPARE(RootTexts(driver->Tree()),
                 QStringList({"ACCTCALC [Program]", "ACCTUPD [Program]"}));
        QVERIFY(driver->View().rbFilterOn->isChecked());
        QCOMPARE(driver->Ui().Questions().size(), 2); // a filter in force is not offered again

        // The button and the menu show the same dialog; Cancel changes nothing.
        driver->View().cbSetFilter->click();
        driver->Ui().QueueDialog(Apply(0, 0, "CLAIMS")); // Systems Name equals
        driver->View().mnuView.FindItem("SetFilter1")->trigger();
        QCOMPARE(driver->Ui().Dialogs().size(), 3);
        QCOMPARE(RootTexts(driver->Tree()), QStringList{"CLAIMREG [Copy]"});
        driver->Ui().QueueDialog(Apply(1, 0, "NONE")); // Computers Name equals
        driver->View().cbSetFilter->click();
        QCOMPARE(RootTexts(driver->Tree()),
                 QStringList{"  *** No Hits with current Filter Settings ***"});

        // Clear leaves the filter on, without conditions.
        driver->View().mnuView.FindItem("ClearFilter1")->trigger();
        QVERIFY(driver->View().rbFilterOn->isChecked());
        QCOMPARE(driver->Tree().RootCount(), 3);
        QCOMPARE(driver->Ui().Questions().constLast(),
                 "This View contains more than 2 RootItems,\rdo You want to change the Filter?");
        QVERIFY(driver->Ui().Errors().isEmpty());
    }

    // The host hands in an item: one case-sensitive "equals" row per level it
    // carries, joined by AND, the view set to the deepest level and the text.
    void filterHandedIn_data() {
        QTest::addColumn<QString>("viewText");
        QTest::addColumn<QList<int>>(
            "ids"); // file system computer application package object entry row word
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("level");
        QTest::addColumn<QStringList>("roots");
        QTest::newRow("system") << "Distribution TopDown" << QList<int>{0, 1, 0, 0, 0, 0, 0, 0, 0}
                                << QStringList{"Systems Name equals ACCOUNTS"} << "System"
                                << QStringList{"ACCOUNTS"};
        QTest::newRow("object in its file")
            << "Dependencies BottomUp" << QList<int>{3, 0, 0, 0, 0, 1, 0, 0, 0}
            << QStringList{"Objects Name equals MAP1 AND", "Files Name equals SCREENS.MAP"}
            << "Object" << QStringList{"MAP1 in SCREENS.MAP [Map]"};
        QTest::newRow("entry") << "Dependencies TopDown" << QList<int>{1, 1, 4, 6, 0, 1, 1, 0, 0}
                               << QStringList{"Systems Name equals ACCOUNTS AND",
                                              "Computers Name equals HOST AND",
                                              "Applications Name equals ONLINE AND",
                                              "Objects Name equals ACCTUPD AND",
                                              "Entrys Name equals MAIN"}
                               << "Entry" << QStringList{"MAIN [ACCTUPD]"};
        QTest::newRow("row") << "Distribution TopDown" << QList<int>{1, 0, 0, 0, 0, 1, 1, 1, 0}
                             << QStringList{"Objects Name equals ACCTUPD AND",
                                            "Entrys Name equals MAIN AND",
                                            "Line of Code equals PERFORM CALC"}
                             << "Code" << QStringList{"PERFORM CALC [ACCTUPD.MAIN]"};
        QTest::newRow("word") << "Distribution" << QList<int>{1, 0, 0, 0, 0, 1, 2, 2, 1}
                              << QStringList{"Objects Name equals ACCTUPD AND",
                                             "Entrys Name equals CALC AND",
                                             "Variables Name equals TOTAL"}
                              << "Data" << QStringList{" TOTAL as PIC 9 [ACCTUPD.CALC]"};
        QTest::newRow("nothing found")
            << "Dependencies" << QList<int>{9, 0, 0, 0, 0, 9, 0, 0, 0} << QStringList{} << "System"
            << QStringList{"ACCOUNTS", "CLAIMS"};
    }
    void filterHandedIn() {
        QFETCH(QString, viewText);
        QFETCH(QList<int>, ids);
        QFETCH(QStringList, rows);
        QFETCH(QString, level);
        QFETCH(QStringList, roots);
        TQXViewDriver driver(FRepo->Location());
        TQXView& view = driver.View();
        TQXItemSender sender(
            TQXItem(ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7], ids[8]));
        view.RefreshContent(nullptr, &sender, viewText);
        QVERIFY(driver.Ui().Errors().isEmpty() && !view.HostRefreshFailed());
        QCOMPARE(Rows(*view.Filter()), rows);
        QCOMPARE(view.Filter()->WhereClause().Count(), rows.size());
        QCOMPARE(view.cbViewBy->currentText(), level);
        QCOMPARE(RootTexts(driver.Tree()), roots);
        if (rows.isEmpty()) {
            QVERIFY(view.rbFilterOff->isChecked() && view.rbDistribution->isChecked());
            return;
        }
        QVERIFY(view.Filter()->CaseSensitive() && view.rbFilterOn->isChecked());
        QCOMPARE(view.rbDistribution->isChecked(), viewText.contains("Distribution"));
        QCOMPARE(view.rbTopDown->isChecked(), viewText.contains("TopDown"));
        QCOMPARE(view.mnuView.FindItem(level + "1")->isChecked(), true);
        const bool option = level == "Entry" && viewText == "Dependencies TopDown";
        QCOMPARE(!view.cbOption->isHidden(), option);
        QCOMPARE(view.cbOption->isChecked(), option);
    }
};

QTEST_MAIN(TestViewFilter)
#include "tst_ViewFilter.moc"
