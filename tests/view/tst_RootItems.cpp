// Root items of every level on purpose-built estates: the limit, membership
// in the filtered selections, texts and icons, record order of lines, and
// which root nodes can be expanded.
#include "ViewRepositoryFixture.h"
#include "driver/ViewDriver.h"
#include "repository/Errors.h"
#include "view/CallLookup.h"
#include "view/RootItemLister.h"
#include "view/View.h"

#include <QtTest>

namespace {

// Systems 1 (ACCOUNTS) and 2 (CLAIMS) with files; system 3 (ARCHIVE) without.
// Computers 4 (HOST@DC1) and 5 (icon 49, type 2, shown among applications);
// application 6 (ONLINE). File 1 ACCT.CBL (system 1, computer 4, application
// 6), file 2 CLAIM.CBL (system 2, computer 5), file 3 COMMON.CPY (no grouping).
void BuildEstate(TestRepository& repo) {
    repo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName, QXIcon",
                {{1, 1, "ACCOUNTS", 1},
                 {2, 1, "CLAIMS", 1},
                 {3, 1, "ARCHIVE", 1},
                 {4, 2, "HOST@DC1", 2},
                 {5, 2, "GATEWAY", 49},
                 {6, 3, "ONLINE", 9}});
    repo.Insert("QXFILE", "QXFileID, QXSystemID, QXComputerID, QXApplicationID, QXFileName",
                {{1, 1, 4, 6, "ACCT.CBL"},
                 {2, 2, 5, 0, "CLAIM.CBL"},
                 {3, 0, 0, 0, "COMMON.CPY"},
                 {7, 0, 0, 0, "PKGACCT.PKG"},
                 {8, 0, 0, 0, "PKGLONE.PKG"},
                 {9, 0, 0, 0, "PKGFILE.PKG"},
                 {10, 0, 0, 0, "PKGMIX.PKG"}});
    // The hidden part ACCTREC is never listed; ACCTFILE and EMPTY (icon 50)
    // show their file, ACCTFILE has entries; CLAIMREG keeps icon 22 BottomUp.
    repo.Insert("QXOBJECT",
                "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, QXIcon, QXObjectType",
                {{1, 1, "ACCTUPD", "ACCTUPD", 52, "Program"},
                 {1, 2, "ACCTREC", "ACCTREC", -1, "Copy"},
                 {1, 3, "ACCTFILE", "ACCTFILE", 50, "File"},
                 {2, 1, "CLAIMREG", "CLAIMREG", 22, "Copy"},
                 {3, 1, "EMPTY", "EMPTY", 50, "File"}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "MAIN"}, {1, 1, 2, "CALC"}, {1, 3, 1, "OPEN"}});
    // Rows loaded out of alphabetical order; one outside any entry.
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow",
                {{1, 1, 1, 1, "PERFORM CALC"},
                 {1, 1, 2, 2, "COMPUTE TOTAL = A + B"},
                 {1, 1, 0, 3, "01 WS-TOTAL PIC 9(7)"}});
    // ORPHAN's entry is not loaded: it is dropped.
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord, QXWordType, "
                "QXObjectIdentifier",
                {{1, 1, 0, 3, 1, "WS-TOTAL", 1011, "PIC 9(7)"},
                 {1, 1, 2, 2, 1, "TOTAL", 1011, "PIC 9(5)"},
                 {1, 3, 0, 4, 1, "ACCT-KEY", 1011, "PIC X(8)"},
                 {2, 1, 9, 1, 1, "ORPHAN", 1011, "PIC X"}});
    // Package 10 (file 7, members ACCTUPD and CLAIMREG), listed once;
    // package 11 (file 8) holds CLAIMREG alone, package 12 (file 9) the
    // whole file ACCT.CBL. Package 13 is CLAIM.CBL's own; package 14 starts
    // with its own file, which makes it a package of that file alone.
    repo.Insert("QXPACKAGE", "QXFileID, QXPackageID, QXPackageName, QXObjectFileID, QXObjectID",
                {{7, 10, "PKGACCT", 1, 1},
                 {7, 10, "PKGACCT", 2, 1},
                 {8, 11, "PKGLONE", 2, 1},
                 {9, 12, "PKGFILE", 1, 0},
                 {2, 13, "PKGSELF", 2, 1},
                 {10, 14, "PKGMIX", 10, 0},
                 {10, 14, "PKGMIX", 1, 1}});
    // ACCTUPD.MAIN calls CLAIMREG as a whole, ACCTUPD.CALC calls
    // ACCTFILE.OPEN, which calls an object that is not loaded; nothing calls
    // ACCTUPD.
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID, "
                "QXFromRowID",
                {{2, 1, 0, 1, 1, 1, 1}, {1, 3, 1, 1, 1, 2, 2}, {5, 1, 0, 1, 3, 1, 4}});
}

} // namespace

class TestRootItems : public QObject, protected ViewRepositoryFixture {
    Q_OBJECT

    int FStopAt = -1;
    TQXRootFilter FConditions;

    // Lists the root items with the filter off and returns the root nodes.
    QList<TQXTreeNode*> List(const QString& level, int direction = 0, int kind = 1,
                             const QString& limit = QStringLiteral("100")) {
        FTree->Clear();
        FakeViewOperations view(*FAccess, FTables);
        view.Level = *level::FromName(level);
        view.StopAt = FStopAt;
        view.Conditions = FConditions;
        TQXViewSettings settings =
            SettingsFor(view.Level, direction == 0,
                        kind == 0 ? TQXViewType::Dependencies : TQXViewType::Distribution);
        settings.LimitText = limit;
        TQXRootItemLister(*FRecords, *FTree, view).Show(settings);
        return RootNodes(*FTree);
    }

private slots:
    void initTestCase() {
        BuildEstate(FRepo);
        OpenRepository();
    }
    void init() {
        FStopAt = -1;
        FConditions = {};
    }

    void groupingsNeedAFileOfTheirOwnAndTheLimitMarkerComesFirst() {
        // ARCHIVE has no file; the limit is not reached with exactly two.
        QList<TQXTreeNode*> nodes = List("System", 0, 1, "2");
        QCOMPARE(Texts(nodes), (QStringList{"ACCOUNTS", "CLAIMS"}));
        QCOMPARE(ItemId(nodes[0]), QString("0,1,0,0,0,0,0,0,0"));
        // Distribution BottomUp: a system is where the containment ends.
        QCOMPARE(Expandable(List("System", 1)), (QList<int>{0, 0}));
        QCOMPARE(Expandable(List("Computer", 1)).first(), 1);
        // A computer among the applications is a computer item.
        nodes = List("Application");
        QCOMPARE(Texts(nodes), (QStringList{"GATEWAY", "ONLINE"}));
        QCOMPARE(Images(nodes), (QList<int>{49, 9}));
        QCOMPARE(ItemId(nodes[0]), QString("0,0,5,0,0,0,0,0,0"));
        QCOMPARE(ItemId(nodes[1]), QString("0,0,0,6,0,0,0,0,0"));
        // The limit marker, with the limit as typed, precedes the first hits.
        nodes = List("System", 0, 1, "01");
        QCOMPARE(
            Texts(nodes),
            (QStringList{"  *** RootItem Limit reached, only the first 01 hits in the database "
                         "showed ***",
                         "ACCOUNTS"}));
        QCOMPARE(Expandable(nodes).first(), 0);
        QVERIFY_THROWS_EXCEPTION(EQXError, List("System", 0, 1, "ten"));
    }

    void objectsPackagesAndEntries() {
        QList<TQXTreeNode*> nodes = List("Object");
        QCOMPARE(Texts(nodes), (QStringList{"ACCTFILE in ACCT.CBL [File]", "ACCTUPD [Program]",
                                            "CLAIMREG [Copy]", "EMPTY in COMMON.CPY [File]"}));
        // An object shown in its file opens only when it holds something.
        QCOMPARE(Expandable(nodes), (QList<int>{1, 1, 1, 0}));
        QCOMPARE(Images(List("Object", 1)).mid(0, 3), (QList<int>{51, 53, 22}));
        nodes = List("Package", 1);
        QCOMPARE(Texts(nodes), (QStringList{"PKGACCT", "PKGFILE", "PKGLONE", "PKGMIX", "PKGSELF"}));
        QCOMPARE(Images(nodes), (QList<int>{13, 13, 13, 13, 13}));
        QCOMPARE(ItemId(nodes[0]), QString("7,0,0,0,10,0,0,0,0"));
        nodes = List("Entry", 1);
        QCOMPARE(Texts(nodes),
                 (QStringList{"CALC [ACCTUPD]", "MAIN [ACCTUPD]", "OPEN [ACCTFILE in ACCT.CBL]"}));
        QCOMPARE(Images(nodes).first(), 32);
        QCOMPARE(ItemId(nodes[1]), QString("1,0,0,0,0,1,1,0,0"));
    }

    void linesInRecordOrderAndVariables() {
        QList<TQXTreeNode*> nodes = List("Code");
        QCOMPARE(Texts(nodes),
                 (QStringList{"PERFORM CALC [ACCTUPD.MAIN]", "COMPUTE TOTAL = A + B [ACCTUPD.CALC]",
                              "01 WS-TOTAL PIC 9(7) [ACCTUPD]"}));
        QCOMPARE(ItemId(nodes[1]), QString("1,0,0,0,0,1,2,2,0"));
        // A line holds nothing in Distribution TopDown.
        QCOMPARE(Expandable(nodes), (QList<int>{0, 0, 0}));
        QCOMPARE(Expandable(List("Code", 1)).first(), 1);
        nodes = List("Data");
        QCOMPARE(Texts(nodes), (QStringList{" ACCT-KEY as PIC X(8) [ACCTFILE]",
                                            " TOTAL as PIC 9(5) [ACCTUPD.CALC]",
                                            " WS-TOTAL as PIC 9(7) [ACCTUPD]"}));
        QCOMPARE(Images(nodes).first(), 35);
        QCOMPARE(Expandable(nodes).first(), 0);
        QCOMPARE(ItemId(nodes[2]), QString("1,0,0,0,0,1,0,3,1"));
        QCOMPARE(Expandable(List("Data", 1)).first(), 1);
    }

    void dependenciesRootItemsOpenOnlyWhenThereAreCalls() {
        // ACCTUPD calls CLAIMREG and ACCTFILE, ACCTFILE an object not loaded;
        // nobody calls ACCTUPD.
        QCOMPARE(Texts(List("Object", 0, 0)).at(1), QStringLiteral("ACCTUPD [Program]"));
        QCOMPARE(Expandable(List("Object", 0, 0)), (QList<int>{1, 1, 0, 0}));
        QCOMPARE(Expandable(List("Object", 1, 0)), (QList<int>{1, 0, 1, 0}));
        // Dependencies by Code lists entries, each expandable.
        const QList<TQXTreeNode*> nodes = List("Code", 0, 0);
        QCOMPARE(Texts(nodes),
                 (QStringList{"CALC [ACCTUPD]", "MAIN [ACCTUPD]", "OPEN [ACCTFILE in ACCT.CBL]"}));
        QCOMPARE(Expandable(nodes), (QList<int>{1, 1, 1}));

        // The root nodes of the Dependencies view in the window's own view,
        // on both read paths: "text:expandable" each.
        auto shown = [&](TQXLevel level, bool topDown) {
            QStringList roots;
            for (TQXReadPath path : {TQXReadPath::SetBased, TQXReadPath::Reference}) {
                TQXViewDriver driver(FRepo.Location());
                driver.View().SetReadPath(path);
                driver.Apply(SettingsFor(level, topDown, TQXViewType::Dependencies));
                driver.Refresh();
                QStringList these;
                for (const TQXTreeNode* node : RootNodes(driver.Tree()))
                    these << node->Text() + ':' +
                                 QString::number(TQXTreeControl::HasPlaceholder(node) ? 1 : 0);
                if (!roots.isEmpty() && roots != these)
                    return QStringList{"paths differ"};
                roots = these;
            }
            return roots;
        };
        // An entry opens for a call into an entry, or of a whole object shown
        // with icon 52 or not loaded; BottomUp for a call from elsewhere.
        QCOMPARE(shown(TQXLevel::Entry, true), (QStringList{"CALC [ACCTUPD]:1", "MAIN [ACCTUPD]:0",
                                                            "OPEN [ACCTFILE in ACCT.CBL]:1"}));
        QCOMPARE(shown(TQXLevel::Entry, false), (QStringList{"CALC [ACCTUPD]:0", "MAIN [ACCTUPD]:0",
                                                             "OPEN [ACCTFILE in ACCT.CBL]:1"}));
        // A package opens when a call crosses its border: of an object
        // member into no member, of a whole file into another file.
        QCOMPARE(shown(TQXLevel::Package, true),
                 (QStringList{"PKGACCT:1", "PKGFILE:1", "PKGLONE:0", "PKGMIX:0", "PKGSELF:0"}));
        QCOMPARE(shown(TQXLevel::Package, false),
                 (QStringList{"PKGACCT:0", "PKGFILE:1", "PKGLONE:1", "PKGMIX:0", "PKGSELF:1"}));
    }

    // A condition of the filter keeps its meaning next to the object's keys.
    void filterConditionsNarrowTheEntriesOfEachObject() {
        FConditions.ObjectCondition = "QXIcon <> 22";
        FConditions.EntryCondition = "QXEntryName = 'MAIN' OR QXEntryName = 'OPEN'";
        QCOMPARE(Texts(List("Entry")),
                 (QStringList{"MAIN [ACCTUPD]", "OPEN [ACCTFILE in ACCT.CBL]"}));
    }

    void aStopFromTheFilterHintLeavesTheListAsItIs() {
        FStopAt = 2;
        const QList<TQXTreeNode*> nodes = List("Object");
        QCOMPARE(Texts(nodes), (QStringList{"ACCTUPD [Program]", "ACCTFILE in ACCT.CBL [File]"}));
        QCOMPARE(Expandable(nodes).first(), 0);
    }
};

QTEST_MAIN(TestRootItems)
#include "tst_RootItems.moc"
