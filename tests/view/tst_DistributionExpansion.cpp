// The Distribution expansion on a purpose-built estate: the children of each
// kind of node in both directions, which of them can be opened further,
// their order, and that a node is expanded only once; an object's contents
// with the inherited source of its ancestors, names shown once, a missing
// ancestor and inheritance cycles.
#include "ViewRepositoryFixture.h"

#include <QtTest>

namespace {

// System 1 NORTH; computers 2 HOST1 and 3 GATEWAY (icon 49); applications
// 4 BILLING and 5 ORDERS. Files ACCT.CBL, ACCT.CPY and BATCH.PKG belong to
// BILLING, ORD.CBL to ORDERS, TOOLS.CBL only to HOST1, GATE.CBL to GATEWAY.
void BuildEstate(TestRepository& repo) {
    repo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName, QXIcon",
                {{1, 1, "NORTH", 1},
                 {2, 2, "HOST1", 2},
                 {3, 2, "GATEWAY", 49},
                 {4, 3, "BILLING", 9},
                 {5, 3, "ORDERS", 9}});
    repo.Insert("QXFILE", "QXFileID, QXFileName, QXSystemID, QXComputerID, QXApplicationID",
                {{1, "ACCT.CBL", 1, 2, 4},
                 {2, "ACCT.CPY", 1, 2, 4},
                 {3, "ORD.CBL", 1, 2, 5},
                 {4, "TOOLS.CBL", 1, 2, 0},
                 {5, "GATE.CBL", 1, 3, 0},
                 {6, "BATCH.PKG", 1, 2, 4}});
    // ACCT (1,2) is a hidden part of ACCT (1,1); GHOST has no visible object;
    // ACCTREC's enclosing object ACCT is in ACCT.CBL.
    repo.Insert("QXOBJECT",
                "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, QXObjectType, QXIcon, "
                "QXSubObjectParentName, QXInPackage",
                {{1, 1, "ACCT", "ACCT", "Program", 52, "", 1},
                 {1, 2, "ACCT", "ACCT", "Copy", -1, "", 0},
                 {1, 3, "ACCTSUB", "ACCTSUB", "Copy", 54, "ACCT", 0},
                 {1, 4, "ACCTFILE", "ACCTFILE", "Copy", 50, "", 0},
                 {2, 1, "ACCTREC", "ACCTREC", "Copy", 54, "ACCT", 0},
                 {3, 1, "ORDMAIN", "ORDMAIN", "Program", 52, "", 0},
                 {3, 2, "GHOST", "GHOST", "Copy", -1, "", 0},
                 {4, 1, "TOOLPGM", "TOOLPGM", "Program", 52, "", 0},
                 {5, 1, "GATEPGM", "GATEPGM", "Program", 52, "", 0}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "MAIN"}, {1, 2, 1, "HIDDEN"}, {3, 2, 1, "HAUNT"}});
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow",
                {{1, 1, 1, 1, "MOVE 1 TO ZED"}, {1, 1, 1, 2, "ADD 1 TO ALPHA"}});
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord, QXWordType, "
                "QXObjectIdentifier",
                {{1, 1, 1, 1, 1, "ZED", 1011, "PIC X"}, {1, 1, 1, 2, 1, "ALPHA", 1011, "PIC X"}});
    // Package 10 in BATCH.PKG: ACCT, ACCTFILE (icon 50) and a member never loaded.
    repo.Insert("QXPACKAGE",
                "QXFileID, QXPackageID, QXPackageName, QXObjectName, QXObjectFileID, QXObjectID",
                {{6, 10, "BATCHPKG", "ACCT", 1, 1},
                 {6, 10, "BATCHPKG", "LOSTPGM", 9, 9},
                 {6, 10, "BATCHPKG", "ACCTFILE", 1, 4}});
}

// Files 11 to 15. PAYROLL (11,1 in PAY.CBL) uses its hidden part (11,2) but not (11,3); its
// sub-objects sit in PAY.CBL and PAY.CPY (OTHER.CPY does not count). It
// inherits BASE, found under LIB; BASE inherits ROOT, found only in LIB's
// file; ROOT inherits an object that is not loaded. CYCA and CYCB inherit
// each other, SELF inherits itself, ORPHAN an unknown object.
void BuildInheritance(TestRepository& repo) {
    repo.Insert(
        "QXFILE", "QXFileID, QXFileName",
        {{11, "PAY.CBL"}, {12, "pay.cpy"}, {13, "LIB.CBL"}, {14, "OTHER.CPY"}, {15, "CYC.CBL"}});
    repo.Insert("QXOBJECT",
                "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, QXObjectType, QXIcon, "
                "QXSubObjectParentName, QXObjectInherits, QXInheritsParentName",
                {{11, 1, "PAYROLL", "PAYROLL", "Copy", 54, "", "BASE", "LIB"},
                 {11, 2, "PAYROLL", "PAYROLL", "Copy", -1, "", "", ""},
                 {11, 3, "PAYROLL", "PAYROLL", "Copy", -1, "", "", ""},
                 {12, 1, "PAYSUB", "PAYSUB", "Copy", 50, "PAYROLL", "", ""},
                 {11, 4, "PAYEMPTY", "PAYEMPTY", "Copy", 50, "PAYROLL", "", ""},
                 {14, 1, "OTHERSUB", "OTHERSUB", "Copy", 52, "PAYROLL", "", ""},
                 {13, 1, "LIB", "LIB", "Copy", 52, "", "", ""},
                 {13, 2, "BASE", "BASE", "Copy", 54, "LIB", "ROOT", "LIB"},
                 {13, 3, "ROOT", "ROOT", "Copy", 20, "", "GONE", "NOWHERE"},
                 {15, 1, "CYCA", "CYCA", "Copy", 20, "", "CYCB", ""},
                 {15, 2, "CYCB", "CYCB", "Copy", 20, "", "CYCA", ""},
                 {15, 3, "SELF", "SELF", "Copy", 20, "", "SELF", ""},
                 {15, 4, "ORPHAN", "ORPHAN", "Copy", 20, "", "GONE", ""}});
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID",
                {{11, 2, 0, 11, 1, 0}});
    // INNER is declared inside an entry: not an object-level variable.
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord, QXWordType, "
                "QXObjectIdentifier",
                {{11, 2, 0, 1, 1, "HVAR", 1011, "PIC 9"},
                 {11, 3, 0, 1, 1, "UNUSED", 1011, "PIC 9"},
                 {11, 1, 0, 1, 1, "X", 1011, "PIC 9"},
                 {11, 1, 0, 2, 1, "X", 1011, "PIC 9"},
                 {11, 1, 1, 3, 1, "INNER", 1011, "PIC 9"},
                 {13, 2, 0, 1, 1, "X", 1011, "PIC 9"},
                 {13, 2, 0, 2, 1, "Y", 1011, "PIC 9"},
                 {13, 3, 0, 1, 1, "Y", 1011, "PIC 9"},
                 {13, 3, 0, 2, 1, "Z", 1011, "PIC 9"}});
    // ROOT (icon 20) lists no lines.
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXRowID, QXRow",
                {{11, 1, 1, "PAY LINE"}, {13, 2, 1, "BASE LINE"}, {13, 3, 1, "ROOT LINE"}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{11, 1, 1, "MAIN"},
                 {11, 1, 2, "CALC"},
                 {11, 2, 1, "HENTRY"},
                 {11, 3, 1, "UNUSEDENTRY"},
                 {12, 1, 1, "SUBENTRY"},
                 {13, 2, 1, "MAIN"},
                 {13, 2, 2, "INIT"},
                 {13, 3, 1, "INIT"},
                 {13, 3, 2, "FINISH"},
                 {15, 1, 1, "E1"},
                 {15, 2, 1, "E2"},
                 {15, 3, 1, "E3"}});
}

} // namespace

class TestDistributionExpansion : public QObject, protected ViewRepositoryFixture {
    Q_OBJECT

    TQXLevel FLevel = TQXLevel::Object;

    TQXTreeNode* Root(std::unique_ptr<TQXItem> item, int image = 2, TQXTreeNode* parent = nullptr) {
        return AddClosed(std::move(item), image, parent);
    }
    QStringList Expand(TQXTreeNode* node, int direction) {
        return ChildTexts(Opened(node, SettingsFor(FLevel, direction == 0)));
    }

private slots:
    void initTestCase() {
        BuildEstate(FRepo);
        BuildInheritance(FRepo);
        OpenRepository();
    }
    void init() {
        FTree->Clear();
        FLevel = TQXLevel::Object;
    }

    void packageMembersByName() {
        TQXTreeNode* package = Root(TQXItem::ForPackage(6, 10), 12);
        // ACCTFILE (icon 50) is not shown; the lost member keeps its name.
        QCOMPARE(Expand(package, 0),
                 (QStringList{"ACCT [Program]", "LOSTPGM [source not loaded]"}));
        TQXTreeNode* lost = package->Child(1);
        QCOMPARE(Images(package), (QList<int>{52, -1}));
        QCOMPARE(Expandable(package), (QList<int>{1, 1}));
        QCOMPARE(ItemId(lost), QString("0,0,0,0,0,0,0,0,0"));
        QVERIFY(Expand(lost, 0).isEmpty());
        // BottomUp a package shows the application of its file.
        QCOMPARE(Expand(Root(TQXItem::ForPackage(6, 10), 13), 1), QStringList{"BILLING"});
    }

    void applicationContents() {
        TQXTreeNode* billing = Root(TQXItem::ForApplication(4), 9);
        // Sorted; no object of another application, in a package, hidden or icon 50.
        QCOMPARE(Expand(billing, 0), (QStringList{"ACCTREC [Copy]", "ACCTSUB [Copy]", "BATCHPKG"}));
        QCOMPARE(Images(billing).last(), 12);
        QCOMPARE(ItemId(billing->Child(2)), QString("6,0,0,0,10,0,0,0,0"));
        QCOMPARE(Expandable(billing), (QList<int>{1, 1, 1}));
        // A computer shown among applications lists the objects of its files.
        QCOMPARE(Expand(Root(TQXItem::ForComputer(3), 49), 0), QStringList{"GATEPGM [Program]"});
        QCOMPARE(Expand(Root(TQXItem::ForComputer(3), 49), 1), QStringList{"NORTH"});
    }

    void containersOfObjects() {
        QCOMPARE(Expand(Root(TQXItem::ForObject(1, 1)), 1), QStringList{"BATCHPKG"});
        QCOMPARE(Expand(Root(TQXItem::ForObject(3, 1)), 1), QStringList{"ORDERS"});
        // Without an application, only a computer with icon 49 is shown.
        TQXTreeNode* gate = Root(TQXItem::ForObject(5, 1));
        QCOMPARE(Expand(gate, 1), QStringList{"GATEWAY"});
        QCOMPARE(Images(gate), QList<int>{49});
        QVERIFY(Expand(Root(TQXItem::ForObject(4, 1)), 1).isEmpty());
        // A sub-object's enclosing object, in a sibling file with the same
        // base name, with the object's own icon.
        TQXTreeNode* record = Root(TQXItem::ForObject(2, 1));
        QCOMPARE(Expand(record, 1), QStringList{"ACCT [Program]"});
        QCOMPARE(Images(record), QList<int>{52});
        QCOMPARE(ItemId(record->Child(0)), QString("1,0,0,0,0,1,0,0,0"));
        QCOMPARE(Expand(Root(TQXItem::ForObject(1, 3)), 1), QStringList{"ACCT [Program]"});
        // A hidden part's container is its visible object; without one there is none.
        TQXTreeNode* hidden = Root(TQXItem::ForEntry(1, 2, 1));
        QCOMPARE(Expand(hidden, 1), QStringList{"ACCT [Program]"});
        QCOMPARE(Images(hidden), QList<int>{53});
        QCOMPARE(ItemId(hidden->Child(0)), QString("1,0,0,0,0,1,0,0,0"));
        QVERIFY(Expand(Root(TQXItem::ForEntry(3, 2, 1)), 1).isEmpty());
    }

    void attributesListedOnce() {
        QCOMPARE(Expand(Root(TQXItem::ForComputer(2)), 0), (QStringList{"BILLING", "ORDERS"}));
        TQXTreeNode* north = Root(TQXItem::ForSystem(1), 1);
        QCOMPARE(Expand(north, 0), (QStringList{"GATEWAY", "HOST1"}));
        QCOMPARE(ItemId(north->Child(0)), QString("0,0,3,0,0,0,0,0,0"));
        QVERIFY(Expand(Root(TQXItem::ForSystem(1), 1), 1).isEmpty());
        // BottomUp the containment ends at the system: nothing to open there.
        TQXTreeNode* host = Root(TQXItem::ForComputer(2));
        QCOMPARE(Expand(host, 1), QStringList{"NORTH"});
        QCOMPARE(Expandable(host), QList<int>{0});
        TQXTreeNode* billing = Root(TQXItem::ForApplication(4), 9);
        QCOMPARE(Expand(billing, 1), QStringList{"HOST1"});
        QCOMPARE(Expandable(billing), QList<int>{1});
    }

    void rootLinesAndEntries() {
        FLevel = TQXLevel::Code;
        TQXTreeNode* line = Root(TQXItem::ForRow(1, 1, 1, 2), 0);
        QCOMPARE(Expand(line, 1), QStringList{"MAIN [ACCT]"});
        QCOMPARE(Images(line), QList<int>{32});
        QVERIFY(Expand(Root(TQXItem::ForRow(1, 1, 1, 2), 0), 0).isEmpty());
        // A line of a hidden part outside entries shows the visible object.
        QCOMPARE(Expand(Root(TQXItem::ForRow(1, 2, 0, 5), 0), 1), QStringList{"ACCT [Program]"});
        // An entry lists its variables, then its lines, in record order.
        FLevel = TQXLevel::Entry;
        TQXTreeNode* main = Root(TQXItem::ForEntry(1, 1, 1), 29);
        QCOMPARE(Expand(main, 0), (QStringList{" ZED as PIC X", " ALPHA as PIC X", "MOVE 1 TO ZED",
                                               "ADD 1 TO ALPHA"}));
        QCOMPARE(Images(main).first(), 35);
        QCOMPARE(Expandable(main), (QList<int>{0, 0, 0, 0}));
    }

    // A node is expanded once, and an item repeated on its path ends it.
    void aNodeIsExpandedOnceAndARepeatedItemEndsThePath() {
        TQXTreeNode* orders = Root(TQXItem::ForApplication(5), 9);
        TQXTreeNode* program = Root(TQXItem::ForObject(3, 1), 53, orders);
        QCOMPARE(Expand(program, 1), QStringList{"ORDERS !!! Recursive Track from here !!!"});
        QCOMPARE(Expandable(program), QList<int>{0});
        TQXTreeNode* free = Root(TQXItem::ForObject(3, 1), 53);
        QCOMPARE(Expand(free, 1), QStringList{"ORDERS"});
        QCOMPARE(Expandable(free), QList<int>{1});
        TQXTreeNode* billing = Root(TQXItem::ForApplication(4), 9);
        Expand(billing, 0);
        QCOMPARE(Expand(billing, 0).size(), 3);
        // Opened through the tree itself; collapsing keeps the children.
        connect(FTree.get(), &TQXTreeControl::NodeExpanded, this,
                [this](TQXTreeNode* node) { Expand(node, 0); });
        TQXTreeNode* host = Root(TQXItem::ForComputer(2));
        for (bool expanded : {true, false, true}) {
            host->SetExpanded(expanded);
            QCOMPARE(host->ChildCount(), 2);
        }
        FTree->disconnect(this);
    }

    void inheritedSourceFollowsTheObject() {
        TQXTreeNode* payroll = Root(TQXItem::ForObject(11, 1), 54);
        QCOMPARE(
            Expand(payroll, 0),
            (QStringList{"PAYSUB [Copy]", "PAYEMPTY [Copy]", " HVAR as PIC 9 [PAYROLL]",
                         " X as PIC 9 [PAYROLL]", " X as PIC 9 [PAYROLL]", "PAY LINE",
                         "MAIN [PAYROLL]", "CALC [PAYROLL]", "HENTRY [PAYROLL]",
                         "--- Inherited source [BASE] ---", " Y as PIC 9 [BASE]", "BASE LINE",
                         "INIT [BASE]", "--- Inherited source [ROOT] ---", " Z as PIC 9 [ROOT]",
                         "FINISH [ROOT]", "--- Inherited source [NOWHERE.GONE] is missing ---"}));
        // Only entries and sub-objects with something inside open further.
        QCOMPARE(Expandable(payroll),
                 (QList<int>{1, 0, 0, 0, 0, 0, 1, 1, 1, 0, 0, 0, 1, 0, 0, 1, 0}));
        QCOMPARE(Images(payroll).at(2), 35);
        QCOMPARE(Images(payroll).at(9), -1);
        QCOMPARE(ItemId(payroll->Child(9)), QString("0,0,0,0,0,0,0,-1,0"));
    }

    void inheritanceEnds() {
        // A cycle stops before an object is listed a second time.
        QCOMPARE(Expand(Root(TQXItem::ForObject(15, 1), 43), 0),
                 (QStringList{"E1 [CYCA]", "--- Inherited source [CYCB] ---", "E2 [CYCB]"}));
        QCOMPARE(Expand(Root(TQXItem::ForObject(15, 3), 43), 0), QStringList{"E3 [SELF]"});
        QCOMPARE(Expand(Root(TQXItem::ForObject(15, 4), 43), 0),
                 QStringList{"--- Inherited source [GONE] is missing ---"});
        // Variables of objects shown with icon 20 or 43 get icon 45.
        TQXTreeNode* root = Root(TQXItem::ForObject(13, 3), 20);
        QCOMPARE(Expand(root, 0).first(), QStringLiteral(" Y as PIC 9 [ROOT]"));
        QCOMPARE(Images(root).first(), 45);
    }
};

QTEST_MAIN(TestDistributionExpansion)
#include "tst_DistributionExpansion.moc"
