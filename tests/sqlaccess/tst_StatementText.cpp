// Text from the repository goes into statements as data: percent signs with
// digits, quotes and non-ASCII letters in names select exactly their records,
// Upper( and LIKE prefixes read every letter as the view does, and a NUL
// finds nothing, on both databases.
#include "repository/Errors.h"
#include "repository/WhereText.h"
#include "sqlaccess/SqlDataAccess.h"
#include "sqlaccess/SqlStatement.h"
#include "support/TestRepository.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

#include <memory>

using Backend = TestRepository::Backend;

namespace {
const QStringList Names{"CLAIM%3PAY.CBL", "A%1B%2C.CPY", "%2%1.CBL",
                        "O'NEIL%3.CBL",   "ACCTü%1.CPY", "PLAIN.CBL",
                        "100%.CBL",       "X_%3_Y.CBL",  "PAY"};

// File names whose base names are alike but for case, wildcards and escapes.
const QStringList BaseNames{"ACCTü.CPY",  "acctÜ.CBL",  "ACCTU.CBL",     "AC_T.CPY",   "ACCT.CBL",
                            "STRAßE.CPY", "straße.cbl", "STRASSE.CPY",   "ıNFO.CPY",   "INFO.CBL",
                            "100%.CBL",   "100X.CBL",   "B\\S.CPY",      "B\\\\S.CBL", "BS.CBL",
                            "漢字.CPY",   "漢字.CBL",   "\u200fRTL.CPY", "RTL.CBL",    "NODOT"};

void InsertFiles(TestRepository& repo, const QStringList& names) {
    QList<QVariantList> rows;
    for (int i = 0; i < names.size(); ++i)
        rows.append({i + 1, names[i]});
    repo.Insert("QXFILE", "QXFileID, QXFileName", rows);
}

QStringList Column(QSqlDatabase db, const QString& sql) {
    QSqlQuery query(db);
    if (!query.exec(sql))
        throw EQXError(query.lastError().text());
    QStringList values;
    while (query.next())
        values << query.value(0).toString();
    values.sort();
    return values;
}
} // namespace

class TestStatementText : public QObject {
    Q_OBJECT

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }
    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
    }

    void namesSelectTheirOwnRecords() {
        QFETCH_GLOBAL(int, backend);
        TestRepository repo{Backend(backend)};
        InsertFiles(repo, Names);
        // A NUL cannot be written into a statement (and PostgreSQL cannot
        // store it): a value holding one finds nothing, neither its own record
        // nor the one named like its part before the NUL.
        const QString nul = QStringLiteral("PAY") + QChar(0) + QStringLiteral("X.CBL");
        if (backend == int(Backend::SQLite))
            repo.Insert("QXFILE", "QXFileID, QXFileName", {{100, nul}});
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
        QVERIFY(!access.SelectRecords(files, where::TextEquals("QXFileName", nul)));
        QVERIFY(!access.SelectRecords(files, "Upper(QXFileName) LIKE " + where::LikePrefix(nul)));
        QVERIFY(access.SelectRecords(files, QString()));
        QVERIFY(!access.LocateRecord(files, QStringLiteral("QXFileName"), {nul}, 1));
        QCOMPARE(SqlLiteral(nul), QStringLiteral("NULL"));
    }

    // A base name found through "Upper(QXFileName) LIKE" finds exactly the
    // names that begin with it once upper-cased as the view does: every
    // letter folded, "ß" kept, "_", "%" and "\\" taken as they stand.
    void upperAndPrefixesMatchTheViewsFolding() {
        QFETCH_GLOBAL(int, backend);
        TestRepository repo{Backend(backend)};
        InsertFiles(repo, BaseNames);
        QSqlDatabase db = repo.Db();

        QStringList folded;
        for (const QString& name : BaseNames)
            folded << where::UpperCase(name);
        folded.sort();
        QCOMPARE(Column(db, "SELECT Upper(QXFileName) FROM QXFILE"), folded);
        QCOMPARE(Column(db, "SELECT CASE WHEN Upper(NULL) IS NULL THEN 'null' END"),
                 QStringList{"null"});
        if (backend == int(Backend::SQLite)) // bytes that are not UTF-8 stay as they are
            QCOMPARE(Column(db, "SELECT hex(Upper(CAST(X'61C3FF' AS TEXT)))"),
                     QStringList{"41C3FF"});

        for (const QString& name : BaseNames) {
            const qsizetype dot = name.indexOf('.');
            const QString base = where::UpperCase(name.left(dot + 1));
            QStringList expected;
            for (const QString& other : BaseNames)
                if (where::UpperCase(other).startsWith(base))
                    expected << other;
            expected.sort();
            QCOMPARE(Column(db, "SELECT QXFileName FROM QXFILE WHERE " +
                                    where::Upper("QXFileName") + " LIKE " +
                                    where::LikePrefix(base)),
                     expected);
        }
        const QList<std::pair<QString, QStringList>> examples{
            {"AcctÜ.", {"ACCTü.CPY", "acctÜ.CBL"}},
            {"AC_T.", {"AC_T.CPY"}},
            {"Straße.", {"STRAßE.CPY", "straße.cbl"}},
            {"B\\S.", {"B\\S.CPY"}}};
        for (const auto& [prefix, names] : examples)
            QCOMPARE(Column(db, "SELECT QXFileName FROM QXFILE WHERE Upper(QXFileName) LIKE " +
                                    where::LikePrefix(where::UpperCase(prefix))),
                     names);
    }
};

QTEST_MAIN(TestStatementText)
#include "tst_StatementText.moc"
