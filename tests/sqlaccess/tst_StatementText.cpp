// Text from the repository goes into statements as data: percent signs with
// digits, quotes and non-ASCII letters in names select exactly their records,
// on both databases.
#include "repository/Errors.h"
#include "repository/WhereText.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"

#include <QtTest>

#include <memory>

using Backend = TestRepository::Backend;

namespace {
const QStringList Names{"CLAIM%3PAY.CBL", "A%1B%2C.CPY", "%2%1.CBL", "O'NEIL%3.CBL",
                        "ACCTü%1.CPY",    "PLAIN.CBL",   "100%.CBL", "X_%3_Y.CBL"};
} // namespace

class TestStatementText : public QObject {
    Q_OBJECT

private slots:
    void namesSelectTheirOwnRecords_data() {
        QTest::addColumn<int>("backend");
        QTest::newRow("sqlite") << int(Backend::SQLite);
        QTest::newRow("postgresql") << int(Backend::PostgreSQL);
    }
    void namesSelectTheirOwnRecords() {
        QFETCH(int, backend);
        if (backend == int(Backend::PostgreSQL) && !TestRepository::PostgreSQLAvailable())
            QSKIP("no PostgreSQL server");
        TestRepository repo{Backend(backend)};
        QList<QVariantList> rows;
        for (int i = 0; i < Names.size(); ++i)
            rows.append({i + 1, Names[i]});
        repo.Insert("QXFILE", "QXFileID, QXFileName", rows);
        SqlDataAccess access(repo.Location());
        TQXTableRef files = access.GetTableRef(QStringLiteral("QXFILE"));
        TQXFieldRef id = access.GetFieldRef(files, QStringLiteral("QXFileID"));
        TQXFieldRef name = access.GetFieldRef(files, QStringLiteral("QXFileName"));

        for (int i = 0; i < Names.size(); ++i) {
            // Selected by its name: the one record, read in a batch.
            QVERIFY2(access.SelectRecords(files, where::TextEquals("QXFileName", Names[i])),
                     qPrintable(Names[i]));
            QCOMPARE(VariantToInt(access.GetFieldValue(files, id)), i + 1);
            QVERIFY(!access.NextRecord(files));
        }
        // Located by its name in the whole table, often enough to use the
        // index of the selection's keys as well as the database.
        QVERIFY(access.SelectRecords(files, QString()));
        for (int round = 0; round < 8; ++round)
            for (int i = 0; i < Names.size(); ++i) {
                QVERIFY(access.LocateRecord(files, QStringLiteral("QXFileName"), {Names[i]}, 1));
                QCOMPARE(VariantToText(access.GetFieldValue(files, name)), Names[i]);
            }
        // A write of such a text reads back unchanged.
        QVERIFY(access.SelectRecords(files, where::TextEquals("QXFileName", "PLAIN.CBL")));
        access.SetFieldValue(files, name, QStringLiteral("NEW%1%2'.CBL"));
        QVERIFY(access.SelectRecords(files, where::TextEquals("QXFileName", "NEW%1%2'.CBL")));
        QCOMPARE(VariantToInt(access.GetFieldValue(files, id)), Names.indexOf("PLAIN.CBL") + 1);
    }
};

QTEST_MAIN(TestStatementText)
#include "tst_StatementText.moc"
