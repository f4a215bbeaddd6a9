// The same where texts must mean the same on SQLite and PostgreSQL: every
// view of the demo estate, opened to the bottom, is identical on both.
#include "SampleEstate.h"
#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "sqlaccess/RepositorySchema.h"
#include "support/TestRepository.h"

#include <QtTest>

namespace {

// Every node with its depth, text, image and item, depth first.
QStringList Dump(TQXTreeControl& tree) {
    QStringList lines;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = TQXTreeControl::NextNode(node))
        lines << QStringLiteral("%1|%2|%3|%4")
                     .arg(node->Level())
                     .arg(node->Text())
                     .arg(node->ImageIndex())
                     .arg(node->Item() ? node->Item()->GetItemID() : QString());
    return lines;
}

void FillWithDemo(TestRepository& repo) {
    QSqlDatabase db = repo.Db();
    RepositorySchema::DropTables(db);
    BuildSampleEstate(db, SampleEstateOptions{});
}

} // namespace

class TestBothDatabases : public QObject {
    Q_OBJECT

private slots:
    void everyViewOfTheDemoIsTheSame() {
        if (!TestRepository::PostgreSQLAvailable())
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
        TestRepository sqlite(TestRepository::Backend::SQLite);
        TestRepository postgres(TestRepository::Backend::PostgreSQL);
        FillWithDemo(sqlite);
        FillWithDemo(postgres);
        int views = 0;
        for (bool dependencies : {false, true})
            for (int direction : {0, 1})
                for (const char* level : {"System", "Computer", "Application", "Package", "Object",
                                          "Entry", "Code", "Data"}) {
                    TQXViewSettings settings;
                    settings.Type =
                        dependencies ? TQXViewType::Dependencies : TQXViewType::Distribution;
                    settings.Direction =
                        direction == 0 ? TQXDirection::TopDown : TQXDirection::BottomUp;
                    settings.Level = *level::FromName(QLatin1String(level));
                    QStringList dumps[2];
                    int i = 0;
                    for (TestRepository* repo : {&sqlite, &postgres}) {
                        TQXViewDriver driver(repo->Location());
                        driver.Apply(settings);
                        driver.Refresh();
                        QVERIFY(driver.ExpandToDepth(1000, 20000));
                        dumps[i++] = Dump(driver.Tree());
                    }
                    QVERIFY2(dumps[0] == dumps[1],
                             qPrintable(QStringLiteral("%1 %2 %3")
                                            .arg(dependencies ? "Dependencies" : "Distribution")
                                            .arg(direction)
                                            .arg(level)));
                    QVERIFY(!dumps[0].isEmpty());
                    ++views;
                }
        QCOMPARE(views, 32);
    }
};

QTEST_MAIN(TestBothDatabases)
#include "tst_BothDatabases.moc"
