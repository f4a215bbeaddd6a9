// The data-access contract over both databases: selections and cursors,
// locating within a selection, query results standing in for tables,
// quoting, writes and errors.
#include "repository/Errors.h"
#include "repository/TableHandleSet.h"
#include "repository/WhereText.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"

#include <QSqlQuery>
#include <QtTest>

#include <memory>

using Backend = TestRepository::Backend;

class TestSqlDataAccess : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestRepository> FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;

    SqlDataAccess& Access() {
        if (!FAccess)
            FAccess = std::make_unique<SqlDataAccess>(FRepo->Location());
        return *FAccess;
    }
    TQXTableRef Table(const char* name) { return Access().GetTableRef(QLatin1String(name)); }
    TQXFieldRef Field(const char* table, const char* column) {
        return Access().GetFieldRef(Table(table), QLatin1String(column));
    }
    int Int(const char* table, const char* column) {
        return VariantToInt(Access().GetFieldValue(Table(table), Field(table, column)));
    }
    QString Text(const char* table, const char* column) {
        return VariantToText(Access().GetFieldValue(Table(table), Field(table, column)));
    }
    QList<int> Walk(const char* table, const char* column, const QString& where) {
        QList<int> seen;
        if (!Access().SelectRecords(Table(table), where))
            return seen;
        do
            seen << Int(table, column);
        while (Access().NextRecord(Table(table)));
        return seen;
    }
    // Files 1..n, in a load order that differs from id order; system 1 for
    // odd ids, 2 for even ones.
    void InsertFiles(int n) {
        QList<QVariantList> rows;
        for (int i = n; i >= 1; --i)
            rows << QVariantList{i, i % 2 == 1 ? 1 : 2, QStringLiteral("F%1.CBL").arg(i)};
        FRepo->Insert("QXFILE", "QXFileID, QXSystemID, QXFileName", rows);
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }
    // A fresh repository on the backend of the current data row.
    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
        FRepo = std::make_unique<TestRepository>(TestRepository::CurrentBackend());
    }
    void cleanup() {
        FAccess.reset();
        FRepo.reset();
    }

    void selectionsWalkInRecordOrderAcrossBatches() {
        InsertFiles(300);
        QList<int> expected;
        for (int i = 300; i >= 1; --i)
            expected << i;
        QCOMPARE(Walk("QXFILE", "QXFileID", QString()), expected);
        // A where text with an alternative keeps its meaning inside the selection.
        QCOMPARE(Walk("QXFILE", "QXFileID", QStringLiteral("QXFileID = 3 OR QXFileID = 250")),
                 (QList<int>{250, 3}));
        // After the end the last record stays current and NextRecord keeps answering false.
        QVERIFY(!Access().NextRecord(Table("QXFILE")));
        QCOMPARE(Int("QXFILE", "QXFileID"), 3);
        // An empty table answers false, and reading it fails rather than inventing a value.
        QVERIFY(!Access().SelectRecords(Table("QXROW"), QString()));
        QVERIFY_THROWS_EXCEPTION(EQXError, Int("QXROW", "QXRowID"));
    }

    void oneSelectionPerTableReference() {
        InsertFiles(10);
        FRepo->Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType", {{1, 1}, {2, 1}});
        QCOMPARE(Table("QXFILE"), Access().GetTableRef(QStringLiteral("qxfile")));
        // An outer loop over one table keeps its place while another table is selected.
        QList<int> seen;
        QVERIFY(Access().SelectRecords(Table("QXATTRIBUTE"), QString()));
        do {
            seen << Int("QXATTRIBUTE", "QXAttributeID");
            QVERIFY(Access().SelectRecords(Table("QXFILE"), QStringLiteral("QXSystemID = ") +
                                                                where::Number(seen.last())));
        } while (Access().NextRecord(Table("QXATTRIBUTE")));
        QCOMPARE(seen, (QList<int>{1, 2}));
        // A second selection on the same reference replaces the first for every caller.
        QVERIFY(Access().SelectRecords(Table("QXFILE"), QStringLiteral("QXFileID = 4")));
        QCOMPARE(Int("QXFILE", "QXSystemID"), 2);
        QVERIFY(!Access().NextRecord(Table("QXFILE")));
    }

    void locateSearchesOnlyTheCurrentSelection() {
        InsertFiles(60);
        FRepo->Insert("QXOBJECT", "QXFileID, QXObjectID, QXIcon",
                      {{7, 1, 21}, {7, 2, 22}, {7, 3, 23}});
        auto* file = Table("QXFILE");
        QVERIFY(Access().SelectRecords(file, QStringLiteral("QXSystemID = 1")));
        // Enough lookups that later ones go through the selection's index:
        // the answers must not change when that happens.
        for (int round = 0; round < 3; ++round) {
            for (int id = 1; id <= 60; ++id) {
                const bool found = Access().LocateRecord(file, QStringLiteral("QXFileID"), {id}, 1);
                QCOMPARE(found, id % 2 == 1);
                if (found)
                    QCOMPARE(Text("QXFILE", "QXFileName"), QStringLiteral("F%1.CBL").arg(id));
            }
            QVERIFY(!Access().LocateRecord(file, QStringLiteral("QXSystemID"), {2}, 1));
        }
        // A failed locate leaves the current record where it was.
        QVERIFY(Access().LocateRecord(file, QStringLiteral("QXFileID"), {9}, 1));
        QVERIFY(!Access().LocateRecord(file, QStringLiteral("QXFileID"), {10}, 1));
        QCOMPARE(Int("QXFILE", "QXFileID"), 9);
        // The walk continues after the located record, in record order.
        QVERIFY(Access().NextRecord(file));
        QCOMPARE(Int("QXFILE", "QXFileID"), 7);

        auto* object = Table("QXOBJECT");
        QVERIFY(Access().SelectRecords(object, QString()));
        QVERIFY(Access().LocateRecord(object, QStringLiteral("QXFileID;QXObjectID"), {7, 2}, 1));
        QCOMPARE(Int("QXOBJECT", "QXIcon"), 22);
        QVERIFY(!Access().LocateRecord(object, QStringLiteral("QXFileID;QXObjectID"), {2, 7}, 1));
        QVERIFY_THROWS_EXCEPTION(
            EQXError, Access().LocateRecord(object, QStringLiteral("QXFileID;QXObjectID"), {7}, 1));
    }

    void locateNextWalksRecordsWithTheSameKeys() {
        InsertFiles(40); // 20 files of system 1, 20 of system 2
        auto* file = Table("QXFILE");
        for (int round = 0; round < 2; ++round) { // the second round runs through the index
            QVERIFY(Access().SelectRecords(file, QStringLiteral("QXFileID > 30")));
            QList<int> ids;
            for (bool found = Access().LocateRecord(file, QStringLiteral("QXSystemID"), {2}, 1);
                 found;
                 found = Access().LocateNextRecord(file, QStringLiteral("QXSystemID"), {2}, 1))
                ids << Int("QXFILE", "QXFileID");
            QCOMPARE(ids, (QList<int>{40, 38, 36, 34, 32}));
            for (int i = 0; i < 30; ++i)
                Access().LocateRecord(file, QStringLiteral("QXSystemID"), {1}, 1);
        }
    }

    // Read ahead, a locate finds what it would find without: the first record
    // of the key in record order within the current selection, nothing for a
    // key outside it; a new selection forgets what was read.
    void readAheadFindsWhatLocateFinds() {
        InsertFiles(20);
        auto* file = Table("QXFILE");
        QVERIFY(Access().SelectRecords(file, QStringLiteral("QXSystemID = 2")));
        QCOMPARE(Access().PeekKeys(file, QStringLiteral("QXFileID;QXSystemID"), 3),
                 (QList<QVariantList>{{20, 2}, {18, 2}, {16, 2}}));
        const QString key = QStringLiteral("QXFileID");
        Access().PrepareLocate(file, key, {{6}, {7}, {12}, {99}});
        const qint64 before = Access().RoundTrips();
        QVERIFY(Access().LocateRecord(file, key, {6}, 1));
        QCOMPARE(Text("QXFILE", "QXFileName"), QStringLiteral("F6.CBL"));
        QVERIFY(!Access().LocateRecord(file, key, {7}, 1)); // system 1: not selected
        QVERIFY(!Access().LocateRecord(file, key, {99}, 1));
        QVERIFY(Access().LocateRecord(file, key, {12}, 1));
        QCOMPARE(Access().RoundTrips(), before);
        // Of several records with the key, the first; the next still follows.
        QVERIFY(Access().SelectRecords(file, QString()));
        Access().PrepareLocate(file, QStringLiteral("QXSystemID"), {{2}});
        QVERIFY(Access().LocateRecord(file, QStringLiteral("QXSystemID"), {2}, 1));
        QCOMPARE(Int("QXFILE", "QXFileID"), 20);
        QVERIFY(Access().LocateNextRecord(file, QStringLiteral("QXSystemID"), {2}, 1));
        QCOMPARE(Int("QXFILE", "QXFileID"), 18);
        QVERIFY(Access().SelectRecords(file, QStringLiteral("QXSystemID = 1")));
        QVERIFY(!Access().LocateRecord(file, key, {6}, 1));
        QVERIFY(Access().LocateRecord(file, key, {7}, 1));
    }

    void locateInALargeSelectionReadsItsKeysOnce() {
        // More records than an index keeps whole: only their keys are read.
        QList<QVariantList> rows;
        for (int i = 0; i < 9000; ++i)
            rows << QVariantList{1 + i / 50, 1 + i % 50, i % 7};
        FRepo->Insert("QXOBJECT", "QXFileID, QXObjectID, QXIcon", rows);
        auto* object = Table("QXOBJECT");
        const QString key = QStringLiteral("QXFileID;QXObjectID");
        const auto lookUp = [&] {
            for (int round = 0; round < 60; ++round) { // the later ones through the index
                const int file = 1 + round * 7 % 200, id = 1 + round * 11 % 60;
                const bool there = file <= 180 && id <= 50;
                QCOMPARE(Access().LocateRecord(object, key, {file, id}, 1), there);
                if (there)
                    QCOMPARE(Int("QXOBJECT", "QXIcon"), ((file - 1) * 50 + id - 1) % 7);
                QVERIFY(Access().LocateRecord(object, QStringLiteral("QXIcon"), {round % 7}, 1));
                QCOMPARE(Int("QXOBJECT", "QXObjectID"), 1 + round % 7);
            }
        };
        QVERIFY(Access().SelectRecords(object, QString()));
        lookUp();
        // Records with the same key come in record order.
        QList<int> ids;
        for (bool found = Access().LocateRecord(object, QStringLiteral("QXIcon"), {3}, 1);
             found && ids.size() < 3;
             found = Access().LocateNextRecord(object, QStringLiteral("QXIcon"), {3}, 1))
            ids << Int("QXOBJECT", "QXObjectID");
        QCOMPARE(ids, (QList<int>{4, 11, 18}));
        // Beyond 32 bits, a key is not taken for the one its low bits name.
        const qint64 high = (qint64(1) << 32) + 5;
        QVERIFY(!Access().LocateRecord(object, key, {2, high}, 1));
        if (TestRepository::CurrentBackend() != Backend::SQLite)
            return;
        FRepo->Exec("UPDATE QXOBJECT SET QXObjectID = 4294967301 WHERE QXFileID = 3 AND "
                    "QXObjectID = 5");
        QVERIFY(Access().SelectRecords(object, QString()));
        lookUp();
        QVERIFY(Access().LocateRecord(object, key, {3, high}, 1));
        QCOMPARE(Int("QXOBJECT", "QXIcon"), 104 % 7);
        QVERIFY(!Access().LocateRecord(object, key, {3, 5}, 1));
        // A text in an integer column: the keys are read again, as values of their own type.
        FRepo->Exec("UPDATE QXOBJECT SET QXObjectID = 'x' WHERE QXFileID = 2 AND QXObjectID = 5");
        QVERIFY(Access().SelectRecords(object, QString()));
        lookUp();
        QVERIFY(Access().LocateRecord(object, key, {2, QStringLiteral("x")}, 1));
        QCOMPARE(Int("QXOBJECT", "QXIcon"), 54 % 7);
        QVERIFY(!Access().LocateRecord(object, key, {2, 5}, 1));
    }

    void queryResultStandsInForItsTable() {
        FRepo->Insert(
            "QXDEPENDENCIES",
            "QXFileID, QXObjectID, QXInheritsFileID, QXFromFileID, QXFromObjectID, "
            "QXFromRowID",
            {{9, 3, -1, 1, 1, 3}, {9, 2, -1, 1, 1, 2}, {9, 1, -1, 1, 1, 1}, {8, 0, 0, 2, 0, 0}});
        const QStringList sql{
            QStringLiteral("SELECT QXFileID, QXObjectID, QXEntryID, QXInheritsFileID, "
                           "QXInheritsObjectID, QXFromFileID, QXFromObjectID, QXFromEntryID, "
                           "QXFromRowID, QXFromWordID FROM QXDEPENDENCIES WHERE "),
            QStringLiteral("QXFromFileID = 1"),
            QStringLiteral(" ORDER BY QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID, "
                           "QXFromWordID")};
        auto query = Access().OpenQuery(this, sql, 0);
        // Every reference of the handle set binds; the query is read through them.
        TQXTableHandleSet handles;
        AssignDBPointers(Access(), handles);
        QCOMPARE(handles.BoundCount(), 74);
        QCOMPARE(handles.Table(qx::Table::QXOBJECT)->TableName(), QStringLiteral("QXOBJECT"));
        QCOMPARE(Access().GetFieldName(handles.Table(qx::Table::QXWORD),
                                       handles.Field(qx::Table::QXWORD, qx::QXWORD::QXWordType)),
                 QStringLiteral("QXWordType"));
        auto value = [&](int column) {
            return VariantToInt(Access().GetFieldValue(
                query.get(), handles.Field(qx::Table::QXDEPENDENCIES, column)));
        };
        QList<int> rows;
        do {
            QCOMPARE(value(qx::QXDEPENDENCIES::QXFileID), 9);
            QCOMPARE(value(qx::QXDEPENDENCIES::QXInheritsFileID), -1);
            rows << value(qx::QXDEPENDENCIES::QXFromRowID);
        } while (Access().NextRecord(query.get()));
        QCOMPARE(rows, (QList<int>{1, 2, 3}));
        // Read directly, by position in the select list.
        query->First();
        QCOMPARE(query->FieldValue(8).toInt(), 1);
        QCOMPARE(query->FieldCount(), 10);
        int count = 0;
        for (query->First(); !query->Eof(); query->Next())
            ++count;
        QCOMPARE(count, 3);
    }

    void whereTextsQuoteTextsAndMeanTheSameOnBothDatabases() {
        const QString hostile = QStringLiteral("O'BRIEN'); DELETE FROM QXOBJECT; --");
        FRepo->Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName",
                      {{1, 1, hostile}, {1, 2, "O"}});
        QCOMPARE(where::TextEquals("QXObjectName", hostile),
                 QStringLiteral("QXObjectName = 'O''BRIEN''); DELETE FROM QXOBJECT; --'"));
        QCOMPARE(Walk("QXOBJECT", "QXObjectID", where::TextEquals("QXObjectName", hostile)),
                 (QList<int>{1}));
        QCOMPARE(FRepo->Count(QStringLiteral("QXOBJECT")), 2);
        // The same where texts mean the same on both databases.
        FRepo->Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName",
                      {{1, 3, "PAYCALC"}, {1, 4, "paycalc2"}, {2, -3, "X"}});
        QCOMPARE(Walk("QXOBJECT", "QXObjectID", QStringLiteral("QXObjectName LIKE 'PAY%'")),
                 (QList<int>{3}));
        QCOMPARE(
            Walk("QXOBJECT", "QXObjectID",
                 where::Upper(QStringLiteral("QXObjectName")) + QStringLiteral(" LIKE 'PAY%'")),
            (QList<int>{3, 4}));
        // Mixed-case identifiers, negative ids and IN lists.
        QCOMPARE(Walk("QXOBJECT", "QXObjectID", where::Keys({{"QXFileID", 2}, {"QXObjectId", -3}})),
                 (QList<int>{-3}));
        QCOMPARE(
            Walk("QXOBJECT", "QXObjectID", where::In("QXObjectID", {2, -3}, QStringLiteral(", "))),
            (QList<int>{2, -3}));
    }

    void writesGoThroughToTheDatabase() {
        FRepo->Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeName",
                      {{5, "CICS@PROD"}, {6, "BATCH"}});
        auto* attribute = Table("QXATTRIBUTE");
        QVERIFY(Access().SelectRecords(attribute, QStringLiteral("QXAttributeID = 5")));
        Access().SetFieldValue(attribute, Field("QXATTRIBUTE", "QXAttributeName"),
                               QStringLiteral("IMS@TEST"));
        Access().SetFieldValue(attribute, Field("QXATTRIBUTE", "QXIcon"), 4);
        QCOMPARE(Text("QXATTRIBUTE", "QXAttributeName"), QStringLiteral("IMS@TEST"));
        QCOMPARE(FRepo->Count(QStringLiteral("QXATTRIBUTE"),
                              QStringLiteral("QXAttributeName = 'IMS@TEST' AND QXIcon = 4")),
                 1);
        Access().DeleteRecords(attribute, QStringLiteral("QXAttributeID = 6"), 0);
        QCOMPARE(FRepo->Count(QStringLiteral("QXATTRIBUTE")), 1);
        QVERIFY(!Access().LocateRecord(attribute, QStringLiteral("QXAttributeID"), {6}, 1));
    }

    void smallSelectionsAreReadOncePerRefresh() {
        FRepo->Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeName", {{5, "BATCH"}});
        auto* attribute = Table("QXATTRIBUTE");
        const QString where = QStringLiteral("QXAttributeID = 5");
        QVERIFY(Access().SelectRecords(attribute, where));
        QVERIFY(!Access().SelectRecords(attribute, QStringLiteral("QXAttributeID = 6")));
        const qint64 trips = Access().RoundTrips();
        QVERIFY(Access().SelectRecords(attribute, where));
        QVERIFY(!Access().SelectRecords(attribute, QStringLiteral("QXAttributeID = 6")));
        QCOMPARE(Access().RoundTrips(), trips);
        // A write through the data-access object is seen at once.
        QVERIFY(Access().SelectRecords(attribute, where));
        Access().SetFieldValue(attribute, Field("QXATTRIBUTE", "QXAttributeName"),
                               QStringLiteral("ONLINE"));
        QVERIFY(Access().SelectRecords(attribute, where));
        QCOMPARE(Text("QXATTRIBUTE", "QXAttributeName"), QStringLiteral("ONLINE"));
        // Another writer's change is seen from the next refresh on.
        FRepo->Exec(QStringLiteral("UPDATE QXATTRIBUTE SET QXAttributeName = 'IMS'"));
        Access().EndRefresh(true, false);
        QVERIFY(Access().SelectRecords(attribute, where));
        QCOMPARE(Text("QXATTRIBUTE", "QXAttributeName"), QStringLiteral("IMS"));
    }

    void failuresCarryTheDatabasesMessage() {
        InsertFiles(3);
        auto expectError = [](auto&& call, const QString& part) {
            try {
                call();
                QFAIL("no exception");
            } catch (const EQXError& e) {
                QVERIFY2(e.Message().contains(part, Qt::CaseInsensitive), qPrintable(e.Message()));
            }
        };
        expectError(
            [&] { Access().SelectRecords(Table("QXFILE"), QStringLiteral("QXNoSuch = 1")); },
            QStringLiteral("QXNoSuch"));
        expectError(
            [&] { Access().SelectRecords(Table("QXFILE"), QStringLiteral("QXFileID = = 1")); },
            QStringLiteral("syntax"));
        expectError([&] { Table("QXMISSING"); }, QStringLiteral("QXMISSING"));
        expectError([&] { Field("QXFILE", "QXNoColumn"); }, QStringLiteral("QXNoColumn"));
        expectError(
            [&] {
                Access().OpenQuery(nullptr,
                                   {QStringLiteral("SELECT nonsense FROM QXFILE WHERE "),
                                    QStringLiteral("1 = 1"), QString()},
                                   0);
            },
            QStringLiteral("nonsense"));
        expectError([&] { SqlDataAccess missing(QStringLiteral("/nonexistent/estate.kvdb")); },
                    QStringLiteral("not found"));
    }

    void aLostConnectionRaisesInsteadOfAnsweringEmpty() {
        InsertFiles(3);
        auto* file = Table("QXFILE");
        QVERIFY(Access().SelectRecords(file, QString()));
        QFETCH_GLOBAL(int, backend);
        if (backend == int(Backend::PostgreSQL)) {
            QSqlQuery pid(Access().Database());
            QVERIFY(pid.exec(QStringLiteral("SELECT pg_backend_pid()")) && pid.next());
            FRepo->Exec(
                QStringLiteral("SELECT pg_terminate_backend(%1)").arg(pid.value(0).toInt()));
        } else {
            Access().Database().close();
        }
        QVERIFY_THROWS_EXCEPTION(EQXError,
                                 Access().SelectRecords(file, QStringLiteral("QXFileID = 1")));
    }
};

QTEST_GUILESS_MAIN(TestSqlDataAccess)
#include "tst_SqlDataAccess.moc"
