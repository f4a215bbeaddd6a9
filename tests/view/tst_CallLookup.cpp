// Call lookup on a purpose-built estate: which calls are kept for each kind
// of item in both directions, their order, and how failures are reported.
#include "repository/Errors.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/Failure.h"
#include "support/TestRepository.h"
#include "view/CallLookup.h"

#include <QtTest>

namespace {

// File 1 (system 1): PAYCALC (object 1, entries 1 MAIN and 2 CALC) and
// RATES (object 2, entry 1). File 2 (system 1): ACCTUPD (object 1, icon
// 52) and AUDIT (object 2). File 3 (system 2, computer 5, application 6):
// CUSTMAINT (object 1). File 4: system 3 only. File 9 is a package file
// (package 70); package 80 has members (1,1) and (1,2).
void BuildEstate(TestRepository& repo) {
    repo.Insert("QXFILE", "QXFileID, QXSystemID, QXComputerID, QXApplicationID",
                {{1, 1, 0, 0}, {2, 1, 0, 0}, {3, 2, 5, 6}, {4, 3, 0, 0}, {9, 0, 0, 0}});
    repo.Insert("QXOBJECT", "QXFileID, QXObjectID, QXIcon",
                {{1, 1, 20}, {1, 2, 20}, {2, 1, 52}, {2, 2, 20}, {3, 1, 20}});
    repo.Insert("QXPACKAGE", "QXFileID, QXPackageID, QXObjectFileID, QXObjectID",
                {{9, 70, 9, 0}, {9, 70, 1, 0}, {5, 80, 1, 1}, {5, 80, 1, 2}});
    // Calls, loaded out of calling order: the target (file, object, entry),
    // the caller (file, object, entry, row), what it inherits through.
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID, "
                "QXFromRowID, QXInheritsFileID, QXInheritsObjectID",
                {{2, 2, 0, 1, 1, 2, 30, 0, 0},   // PAYCALC.CALC -> AUDIT (whole object, icon 20)
                 {2, 1, 0, 1, 1, 1, 20, 0, 0},   // PAYCALC.MAIN -> ACCTUPD (whole object, icon 52)
                 {1, 1, 2, 1, 1, 1, 10, 0, 0},   // PAYCALC.MAIN -> own entry CALC
                 {3, 1, 1, 1, 1, 1, 15, -1, 0},  // PAYCALC.MAIN -> CUSTMAINT entry, uncertain
                 {8, 8, 0, 1, 1, 2, 40, 0, 0},   // PAYCALC.CALC -> an object not loaded
                 {1, 1, 2, 1, 1, 2, 35, 0, 0},   // PAYCALC.CALC -> itself (recursion)
                 {1, 2, 1, 1, 1, 1, 25, 6, 4},   // PAYCALC.MAIN -> RATES, through inheritance
                 {3, 1, 0, 9, 0, 0, 1, 0, 0},    // package file 9 -> CUSTMAINT
                 {9, 0, 0, 9, 0, 0, 2, 0, 0},    // package file 9 -> itself
                 {1, 1, 1, 3, 1, 1, 5, 0, 0},    // CUSTMAINT -> PAYCALC.MAIN
                 {4, 1, 0, 2, 2, 0, 50, 0, 0}}); // AUDIT -> file 4 (system 3, no computer)
}

QList<int> FromRows(const TDependencies& list) {
    QList<int> rows;
    for (const TDependency& d : list)
        rows << d.FromRowID;
    return rows;
}

} // namespace

class TestCallLookup : public QObject {
    Q_OBJECT

    TestRepository FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;
    TQXTableHandleSet FTables;
    TQXCallLookup::Cache FCache;
    std::unique_ptr<TQXCallLookup> FLookup;
    TDependencies FList;

    QList<int> Rows(const TQXItem& item, int direction, bool option = false) {
        FLookup->GetDependencies(item,
                                 direction == 0 ? TQXDirection::TopDown : TQXDirection::BottomUp,
                                 false, option, FList);
        return FromRows(FList);
    }

private slots:
    void initTestCase() {
        BuildEstate(FRepo);
        FAccess = std::make_unique<SqlDataAccess>(FRepo.Location());
        AssignDBPointers(*FAccess, FTables);
        FLookup = std::make_unique<TQXCallLookup>(*FAccess, FTables, FCache);
    }

    void anObjectsCallsInCallingOrderAndFailures() {
        const TQXItem paycalc(1, 0, 0, 0, 0, 1, 0, 0, 0);
        QCOMPARE(Rows(paycalc, 0), (QList<int>{15, 20, 25, 30, 40}));
        const TDependency& inherited = FList[2];
        QCOMPARE((QList<int>{inherited.FileID, inherited.ObjectID, inherited.EntryID,
                             inherited.InheritsFileID, inherited.InheritsObjectID,
                             inherited.FromFileID}),
                 (QList<int>{1, 2, 1, 6, 4, 1}));
        QCOMPARE(FList[0].InheritsFileID, -1);
        // Calls into its own entries only with the option box checked.
        QCOMPARE(Rows(paycalc, 0, true), (QList<int>{10, 15, 20, 25, 30, 35, 40}));
        // BottomUp drops internal calls whatever the option box says.
        QCOMPARE(Rows(paycalc, 1, true), (QList<int>{5}));
        QCOMPARE(FList[0].FileID, 3);
        QCOMPARE(FList[0].EntryID, 1);
        // A failing lookup names the operation.
        TQXTableHandleSet unbound;
        TQXCallLookup::Cache cache;
        TQXCallLookup lookup(*FAccess, unbound, cache);
        const QString error =
            FailureOf([&] {
                lookup.GetDependencies(paycalc, TQXDirection::BottomUp, false, false, FList);
            }).Message;
        QVERIFY2(error.startsWith("TQXView.GetDependencies: ") && error.endsWith('\r'),
                 qPrintable(error));
    }

    void anEntryKeepsWholeObjectCallsOnlyForIcon52OrMissingObjects() {
        const TQXItem calc(1, 0, 0, 0, 0, 1, 2, 0, 0);
        QCOMPARE(Rows(calc, 0), (QList<int>{35, 40})); // AUDIT (icon 20) left out
        QCOMPARE(Rows(TQXItem(1, 0, 0, 0, 0, 1, 1, 0, 0), 0), (QList<int>{10, 15, 20, 25}));
        // BottomUp on an entry drops its recursive calls to itself.
        QCOMPARE(Rows(calc, 1), (QList<int>{10}));
        // A line of code looks up its own calls only.
        QCOMPARE(Rows(TQXItem(1, 0, 0, 0, 0, 1, 1, 20, 0), 0), (QList<int>{20}));
    }

    void groupingsLeaveOutCallsWithinTheirOwnFiles() {
        const TQXItem system1(0, 1, 0, 0, 0, 0, 0, 0, 0);
        // PAYCALC -> CUSTMAINT leaves system 1 and the missing file 8 is no
        // file of it; file 4 has another system but shares the item's
        // computer id 0, so AUDIT's call to it counts as staying inside.
        QCOMPARE(Rows(system1, 0), (QList<int>{15, 40}));
        QCOMPARE(Rows(system1, 1), (QList<int>{5}));
        QVERIFY(Rows(TQXItem(0, 77, 0, 0, 0, 0, 0, 0, 0), 0).isEmpty()); // a system without files
    }

    void packages() {
        // A package that is a file of its own: one source, calls into itself left out.
        QCOMPARE(Rows(TQXItem(9, 0, 0, 0, 70, 0, 0, 0, 0), 0), (QList<int>{1}));
        QCOMPARE(FList[0].PackageFileID, 3);
        // Members: calls between members left out; calls of both members follow each other.
        const TQXItem members(5, 0, 0, 0, 80, 0, 0, 0, 0);
        QCOMPARE(Rows(members, 0), (QList<int>{15, 20, 30, 40}));
        QCOMPARE(FList[0].PackageFileID, 0);
        QCOMPARE(Rows(members, 1), (QList<int>{5}));
        QVERIFY(Rows(TQXItem(5, 0, 0, 0, 81, 0, 0, 0, 0), 0).isEmpty()); // an unknown package
    }

    // A repository whose file ids are all 0: each file of a system is a
    // starting point, and every call leaves from each of them. What does not
    // change is read once, however many files, calls and root items.
    void repeatedStartingPointsAreReadOnce() {
        TestRepository repo;
        repo.Exec("DROP INDEX QXFILE_ID"); // as a loader without keys would leave it
        QList<QVariantList> files, calls;
        for (int i = 0; i < 30; ++i) {
            files.append({0, 1, QStringLiteral("F%1.CBL").arg(i)});
            calls.append({5, 0, 0, 0, 0, i}); // to a file that is not loaded
        }
        repo.Insert("QXFILE", "QXFileID, QXSystemID, QXFileName", files);
        repo.Insert("QXDEPENDENCIES",
                    "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromRowID",
                    calls);
        SqlDataAccess access(repo.Location());
        TQXTableHandleSet tables;
        AssignDBPointers(access, tables);
        TQXCallLookup::Cache cache;
        TQXCallLookup lookup(access, tables, cache);
        const TQXItem system(0, 1, 0, 0, 0, 0, 0, 0, 0);
        const qint64 before = access.RoundTrips();
        QVERIFY(lookup.GetDependencies(system, TQXDirection::TopDown, false, false, FList));
        QCOMPARE(FList.size(), size_t(30 * 30)); // every call once per starting point
        const qint64 first = access.RoundTrips() - before;
        QVERIFY2(first < 10, qPrintable(QString::number(first)));
        // Stopping at the first call keeps exactly one.
        QVERIFY(lookup.GetDependencies(system, TQXDirection::TopDown, true, false, FList));
        QCOMPARE(FList.size(), size_t(1));
        // Whether any call leaves, and the files: not the calls.
        QVERIFY(access.RoundTrips() - before - first < 4);
        cache.Clear();
        QVERIFY(lookup.GetDependencies(system, TQXDirection::TopDown, false, false, FList));
        QCOMPARE(FList.size(), size_t(30 * 30));
        QCOMPARE(FList.back().FromRowID, 29);
    }
};

QTEST_GUILESS_MAIN(TestCallLookup)
#include "tst_CallLookup.moc"
