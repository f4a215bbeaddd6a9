// The same where texts must mean the same on SQLite and PostgreSQL: every
// view of the demo estate, opened to the bottom, is identical on both.
#include "SampleEstate.h"
#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "sqlaccess/RepositorySchema.h"
#include "support/TestRepository.h"
#include "support/TreeTexts.h"

#include <QtTest>

namespace {

// Every node with its depth, text, image and item, depth first.
QStringList Dump(TQXTreeControl& tree) {
    QStringList lines;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = TQXTreeControl::NextNode(node))
        lines << QString::number(node->Level()) + '|' + node->Text() + '|' +
                     QString::number(node->ImageIndex()) + '|' + ItemId(node);
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
        for (TQXViewType type : {TQXViewType::Distribution, TQXViewType::Dependencies})
            for (TQXDirection direction : {TQXDirection::TopDown, TQXDirection::BottomUp})
                for (const QString& level : level::Names()) {
                    TQXViewSettings settings;
                    settings.Type = type;
                    settings.Direction = direction;
                    settings.Level = *level::FromName(level);
                    QStringList dumps[2];
                    int i = 0;
                    for (TestRepository* repo : {&sqlite, &postgres}) {
                        TQXViewDriver driver(repo->Location());
                        driver.Apply(settings);
                        driver.Refresh();
                        QVERIFY(driver.ExpandToDepth(1000, 20000));
                        dumps[i++] = Dump(driver.Tree());
                    }
                    QVERIFY2(!dumps[0].isEmpty() && dumps[0] == dumps[1],
                             qPrintable(settings.UserHint()));
                    ++views;
                }
        QCOMPARE(views, 32);
    }
};

QTEST_MAIN(TestBothDatabases)
#include "tst_BothDatabases.moc"
