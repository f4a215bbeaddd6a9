// Root items of every level on purpose-built estates: the limit, membership
// in the filtered selections, texts and icons, record order of lines, and
// which root nodes can be expanded.
#include "FakeViewOperations.h"
#include "repository/Errors.h"
#include "support/ViewRepositoryFixture.h"
#include "view/CallLookup.h"
#include "view/RootItemLister.h"

#include <QtTest>

namespace {

// Systems 1 (ACCOUNTS) and 2 (CLAIMS) with files; system 3 (ARCHIVE) without.
// Computers 4 (HOST@DC1) and 5 (icon 49, type 2, shown among applications);
// application 6 (ONLINE). File 1 ACCT.CBL (system 1, computer 4, application
// 6), file 2 CLAIM.CBL (system 2, computer 5), file 3 COMMON.CPY (no grouping).
void BuildEstate(TestRepository& repo) {
    auto attribute = [&](int id, int type, const char* name, int icon) {
        repo.Insert("QXATTRIBUTE", {{"QXAttributeID", id},
                                    {"QXAttributeType", type},
                                    {"QXAttributeName", name},
                                    {"QXIcon", icon}});
    };
    attribute(1, 1, "ACCOUNTS", 1);
    attribute(2, 1, "CLAIMS", 1);
    attribute(3, 1, "ARCHIVE", 1);
    attribute(4, 2, "HOST@DC1", 2);
    attribute(5, 2, "GATEWAY", 49);
    attribute(6, 3, "ONLINE", 9);
    repo.Insert("QXFILE", {{"QXFileID", 1},
                           {"QXSystemID", 1},
                           {"QXComputerID", 4},
                           {"QXApplicationID", 6},
                           {"QXFileName", "ACCT.CBL"}});
    repo.Insert(
        "QXFILE",
        {{"QXFileID", 2}, {"QXSystemID", 2}, {"QXComputerID", 5}, {"QXFileName", "CLAIM.CBL"}});
    repo.Insert("QXFILE", {{"QXFileID", 3}, {"QXFileName", "COMMON.CPY"}});
    auto object = [&](int file, int id, const char* name, int icon, const char* type) {
        repo.Insert("QXOBJECT", {{"QXFileID", file},
                                 {"QXObjectID", id},
                                 {"QXObjectName", name},
                                 {"QXObjectIdentifier", name},
                                 {"QXIcon", icon},
                                 {"QXObjectType", type}});
    };
    object(1, 1, "ACCTUPD", 52, "Program");
    object(1, 2, "ACCTREC", -1, "Copy");  // hidden part
    object(1, 3, "ACCTFILE", 50, "File"); // shown in its file, has entries
    object(2, 1, "CLAIMREG", 22, "Copy"); // keeps icon 22 BottomUp
    object(3, 1, "EMPTY", 50, "File");    // shown in its file, nothing inside
    repo.Insert("QXENTRY",
                {{"QXFileID", 1}, {"QXObjectID", 1}, {"QXEntryID", 1}, {"QXEntryName", "MAIN"}});
    repo.Insert("QXENTRY",
                {{"QXFileID", 1}, {"QXObjectID", 1}, {"QXEntryID", 2}, {"QXEntryName", "CALC"}});
    repo.Insert("QXENTRY",
                {{"QXFileID", 1}, {"QXObjectID", 3}, {"QXEntryID", 1}, {"QXEntryName", "OPEN"}});
    // Rows loaded out of alphabetical order; one outside any entry.
    auto row = [&](int file, int object, int entry, int id, const char* text) {
        repo.Insert("QXROW", {{"QXFileID", file},
                              {"QXObjectID", object},
                              {"QXEntryID", entry},
                              {"QXRowID", id},
                              {"QXRow", text}});
    };
    row(1, 1, 1, 1, "PERFORM CALC");
    row(1, 1, 2, 2, "COMPUTE TOTAL = A + B");
    row(1, 1, 0, 3, "01 WS-TOTAL PIC 9(7)");
    auto word = [&](int file, int object, int entry, int rowID, int id, const char* text,
                    const char* type) {
        repo.Insert("QXWORD", {{"QXFileID", file},
                               {"QXObjectID", object},
                               {"QXEntryID", entry},
                               {"QXRowID", rowID},
                               {"QXWordID", id},
                               {"QXWord", text},
                               {"QXWordType", 1011},
                               {"QXObjectIdentifier", type}});
    };
    word(1, 1, 0, 3, 1, "WS-TOTAL", "PIC 9(7)");
    word(1, 1, 2, 2, 1, "TOTAL", "PIC 9(5)");
    word(1, 3, 0, 4, 1, "ACCT-KEY", "PIC X(8)"); // persistent storage object? icon 50: no
    word(2, 1, 9, 1, 1, "ORPHAN", "PIC X");      // its entry is not loaded: dropped
    // Packages: 10 (file 7, members ACCTUPD and CLAIMREG), listed once.
    repo.Insert("QXPACKAGE", {{"QXFileID", 7},
                              {"QXPackageID", 10},
                              {"QXPackageName", "PKGACCT"},
                              {"QXObjectFileID", 1},
                              {"QXObjectID", 1}});
    repo.Insert("QXPACKAGE", {{"QXFileID", 7},
                              {"QXPackageID", 10},
                              {"QXPackageName", "PKGACCT"},
                              {"QXObjectFileID", 2},
                              {"QXObjectID", 1}});
    repo.Insert("QXFILE", {{"QXFileID", 7}, {"QXFileName", "PKGACCT.PKG"}});
    // ACCTUPD.MAIN calls CLAIMREG; nothing calls ACCTUPD.
    repo.Insert("QXDEPENDENCIES", {{"QXFileID", 2},
                                   {"QXObjectID", 1},
                                   {"QXFromFileID", 1},
                                   {"QXFromObjectID", 1},
                                   {"QXFromEntryID", 1},
                                   {"QXFromRowID", 1}});
}

struct Node {
    QString text;
    int image;
    bool expandable;
};

} // namespace

class TestRootItems : public QObject, protected ViewRepositoryFixture {
    Q_OBJECT

    int FStopAt = -1;

    // Lists the root items with the filter off and returns the root nodes.
    QList<Node> List(const QString& level, int direction = 0, int kind = 1,
                     const QString& limit = QStringLiteral("100")) {
        FTree->Clear();
        FakeViewOperations view(*FAccess, FTables);
        view.Level = *level::FromName(level);
        view.StopAt = FStopAt;
        TQXViewSettings settings =
            SettingsFor(view.Level, direction == 0 ? TQXDirection::TopDown : TQXDirection::BottomUp,
                        kind == 0 ? TQXViewType::Dependencies : TQXViewType::Distribution);
        settings.LimitText = limit;
        TQXRootItemLister(*FRecords, *FTree, view).Show(settings);
        QList<Node> nodes;
        for (int i = 0; i < FTree->RootCount(); ++i)
            nodes << Node{FTree->Root(i)->Text(), FTree->Root(i)->ImageIndex(),
                          FTree->Root(i)->ChildCount() > 0};
        return nodes;
    }
    QStringList Texts(const QList<Node>& nodes) {
        QStringList texts;
        for (const Node& node : nodes)
            texts << node.text;
        return texts;
    }
    const TQXItem* ItemAt(int root) { return FTree->Root(root)->ItemAs<TQXItem>(); }

private slots:
    void initTestCase() {
        BuildEstate(FRepo);
        OpenRepository();
    }
    void init() { FStopAt = -1; }

    void attributesNeedAFileOfTheirOwn() {
        // ARCHIVE has no file; the limit is not reached with exactly two.
        QCOMPARE(Texts(List("System", 0, 1, "2")), (QStringList{"ACCOUNTS", "CLAIMS"}));
        QCOMPARE(ItemAt(0)->SystemID, 1);
        QCOMPARE(ItemAt(0)->FileID, 0);
        // Distribution BottomUp: a system is where the containment ends.
        QVERIFY(!List("System", 1)[0].expandable);
        QVERIFY(List("Computer", 1)[0].expandable);
    }

    void theLimitMarkerPrecedesTheFirstHits() {
        const QList<Node> nodes = List("System", 0, 1, "01");
        QCOMPARE(
            Texts(nodes),
            (QStringList{"  *** RootItem Limit reached, only the first 01 hits in the database "
                         "showed ***",
                         "ACCOUNTS"}));
        QVERIFY(!nodes[0].expandable);
        QVERIFY_THROWS_EXCEPTION(EQXError, List("System", 0, 1, "ten"));
    }

    void aComputerAmongApplicationsIsAComputerItem() {
        const QList<Node> nodes = List("Application");
        QCOMPARE(Texts(nodes), (QStringList{"GATEWAY", "ONLINE"}));
        QCOMPARE(nodes[0].image, 49);
        QCOMPARE(ItemAt(0)->ComputerID, 5);
        QCOMPARE(ItemAt(0)->ApplicationID, 0);
        QCOMPARE(ItemAt(1)->ApplicationID, 6);
    }

    void objectsAndEntries() {
        QList<Node> nodes = List("Object");
        // The hidden part is never listed; icon 50 shows its file.
        QCOMPARE(Texts(nodes), (QStringList{"ACCTFILE in ACCT.CBL [File]", "ACCTUPD [Program]",
                                            "CLAIMREG [Copy]", "EMPTY in COMMON.CPY [File]"}));
        // An object shown in its file opens only when it holds something.
        QVERIFY(nodes[0].expandable);
        QVERIFY(!nodes[3].expandable);
        QVERIFY(nodes[1].expandable);
        nodes = List("Object", 1);
        QCOMPARE(nodes[0].image, 51);
        QCOMPARE(nodes[1].image, 53);
        QCOMPARE(nodes[2].image, 22);
        nodes = List("Entry", 1);
        QCOMPARE(Texts(nodes),
                 (QStringList{"CALC [ACCTUPD]", "MAIN [ACCTUPD]", "OPEN [ACCTFILE in ACCT.CBL]"}));
        QCOMPARE(nodes[0].image, 32);
        QCOMPARE(ItemAt(1)->EntryID, 1);
        QCOMPARE(ItemAt(1)->RowID, 0);
    }

    void packagesAreListedOnce() {
        const QList<Node> nodes = List("Package", 1);
        QCOMPARE(Texts(nodes), (QStringList{"PKGACCT"}));
        QCOMPARE(nodes[0].image, 13);
        QCOMPARE(ItemAt(0)->PackageID, 10);
        QCOMPARE(ItemAt(0)->FileID, 7);
    }

    void linesStayInRecordOrder() {
        const QList<Node> nodes = List("Code");
        QCOMPARE(Texts(nodes),
                 (QStringList{"PERFORM CALC [ACCTUPD.MAIN]", "COMPUTE TOTAL = A + B [ACCTUPD.CALC]",
                              "01 WS-TOTAL PIC 9(7) [ACCTUPD]"}));
        QCOMPARE(ItemAt(1)->EntryID, 2);
        QCOMPARE(ItemAt(1)->RowID, 2);
        QVERIFY(!nodes[0].expandable); // a line holds nothing in Distribution TopDown
        QVERIFY(List("Code", 1)[0].expandable);
    }

    void variablesWithAndWithoutEntry() {
        const QList<Node> nodes = List("Data");
        QCOMPARE(Texts(nodes), (QStringList{" ACCT-KEY as PIC X(8) [ACCTFILE]",
                                            " TOTAL as PIC 9(5) [ACCTUPD.CALC]",
                                            " WS-TOTAL as PIC 9(7) [ACCTUPD]"}));
        QCOMPARE(nodes[0].image, 35);
        QVERIFY(!nodes[0].expandable);
        QVERIFY(List("Data", 1)[0].expandable);
        QCOMPARE(ItemAt(2)->WordID, 1);
    }

    void dependenciesRootItemsOpenOnlyWhenThereAreCalls() {
        QList<Node> nodes = List("Object", 0, 0);
        QCOMPARE(nodes[1].text, QStringLiteral("ACCTUPD [Program]"));
        QVERIFY(nodes[1].expandable); // calls CLAIMREG
        QVERIFY(!nodes[2].expandable);
        nodes = List("Object", 1, 0);
        QVERIFY(!nodes[1].expandable); // nobody calls ACCTUPD
        QVERIFY(nodes[2].expandable);
        // Dependencies by Code lists entries, each expandable.
        nodes = List("Code", 0, 0);
        QCOMPARE(Texts(nodes),
                 (QStringList{"CALC [ACCTUPD]", "MAIN [ACCTUPD]", "OPEN [ACCTFILE in ACCT.CBL]"}));
        for (const Node& node : nodes)
            QVERIFY(node.expandable);
    }

    void aStopFromTheFilterHintLeavesTheListAsItIs() {
        FStopAt = 2;
        const QList<Node> nodes = List("Object");
        QCOMPARE(Texts(nodes), (QStringList{"ACCTUPD [Program]", "ACCTFILE in ACCT.CBL [File]"}));
        QVERIFY(!nodes[0].expandable);
    }
};

QTEST_MAIN(TestRootItems)
#include "tst_RootItems.moc"
