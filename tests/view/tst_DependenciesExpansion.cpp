// Dependencies expansion on a purpose-built estate: entry steps, the order
// and texts of inherited and uncertain calls, hidden-part icons, recursion,
// the Code view's images by depth, and the grouping levels.
#include "ViewRepositoryFixture.h"

#include <QtTest>

namespace {

// Systems ACCOUNTS (1: files 1 PAY.CBL and 5 PGM.CBL), AUDIT (2: file 3
// CUST.DAT) and BILLING (3: file 2 LIB.CBL). MAIN.START calls ZETA twice,
// ALPHA's entries INIT and ZAP, BETA, BASE.RUN and MIXIN through ALPHA's
// inheritance, and CUSTFILE uncertainly; ZETA calls BETA, BETA calls MAIN.
// ICONS calls two hidden parts, one of which calls ZETA. PGM's entries
// MAIN -> CALC -> PRINT perform each other. Packages PKGLIB (BETA, BASE) and
// APKG (BETA) hold called objects, PKGMAIN holds MAIN.
void BuildEstate(TestRepository& repo) {
    repo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName, QXIcon",
                {{1, 1, "ACCOUNTS", 1}, {2, 1, "AUDIT", 3}, {3, 1, "BILLING", 5}});
    repo.Insert("QXFILE", "QXFileID, QXFileName, QXSystemID, QXComputerID, QXApplicationID",
                {{1, "PAY.CBL", 1, 11, 21},
                 {2, "LIB.CBL", 3, 13, 23},
                 {3, "CUST.DAT", 2, 12, 22},
                 {5, "PGM.CBL", 1, 11, 21}});
    repo.Insert("QXOBJECT",
                "QXFileID, QXObjectID, QXObjectName, QXObjectType, QXIcon, QXObjectIdentifier, "
                "QXSubObjectParentName",
                {{1, 1, "MAIN", "Program", 20, "", ""},
                 {1, 2, "ZETA", "Program", 20, "", ""},
                 {1, 3, "ALPHA", "Class", 30, "", "MAIN"},
                 {1, 4, "ICONS", "Program", 20, "", ""},
                 {2, 1, "BETA", "Class", 30, "", ""},
                 {2, 2, "BASE", "Class", 30, "", ""},
                 {2, 3, "MIXIN", "Class", 32, "", ""},
                 {2, 5, "COPYA", "Copy", -1, "COPYA", ""},
                 {2, 6, "COPYA", "Copy", -1, "COPYA", ""}, // a second hidden one: passed over
                 {2, 7, "COPYB", "Copy", -1, "COPYB", ""},
                 {3, 1, "CUSTFILE", "File", 50, "", ""},
                 {3, 2, "COPYA", "Copy", 40, "COPYA", ""},
                 {5, 1, "PGM", "Program", 20, "", ""}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "START"},
                 {1, 3, 1, "INIT"},
                 {1, 3, 2, "ZAP"},
                 {2, 2, 1, "RUN"},
                 {3, 1, 1, "READ"},
                 {5, 1, 1, "MAIN"},
                 {5, 1, 2, "CALC"},
                 {5, 1, 3, "PRINT"}});
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow, QXCall",
                {{5, 1, 1, 1, "PERFORM CALC", 1},
                 {5, 1, 1, 2, "DISPLAY X", 0},
                 {5, 1, 2, 3, "PERFORM PRINT", 1},
                 {5, 1, 2, 4, "ADD 1 TO X", 0},
                 {5, 1, 3, 5, "CALL 'LOG'", 1}});
    // Loaded out of calling order.
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID, "
                "QXFromRowID, QXInheritsFileID, QXInheritsObjectID",
                {{1, 2, 0, 1, 1, 1, 70, 0, 0}, // MAIN calls ZETA again
                 {2, 3, 0, 1, 1, 1, 50, 1, 3},
                 {1, 3, 1, 1, 1, 1, 20, 0, 0},
                 {1, 3, 2, 1, 1, 1, 25, 0, 0},
                 {3, 1, 0, 1, 1, 1, 60, -1, 0},
                 {2, 2, 1, 1, 1, 1, 30, 1, 3},
                 {1, 2, 0, 1, 1, 1, 10, 0, 0},
                 {2, 1, 0, 1, 1, 1, 40, 0, 0},
                 {2, 1, 0, 1, 2, 0, 100, 0, 0},
                 {1, 1, 0, 2, 1, 0, 200, 0, 0},
                 {2, 2, 1, 3, 1, 1, 300, 2, 1},
                 {2, 5, 0, 1, 4, 0, 400, 0, 0},
                 {2, 7, 0, 1, 4, 0, 410, 0, 0},
                 {5, 1, 2, 5, 1, 1, 1, 0, 0},
                 {5, 1, 3, 5, 1, 2, 3, 0, 0},
                 {1, 2, 0, 2, 5, 0, 500, 0, 0}});
    repo.Insert("QXPACKAGE",
                "QXFileID, QXPackageID, QXPackageName, QXObjectName, QXObjectFileID, QXObjectID",
                {{6, 60, "PKGMAIN", "MAIN", 1, 1},
                 {9, 90, "PKGLIB", "BASE", 2, 2},
                 {9, 90, "PKGLIB", "BETA", 2, 1},
                 {7, 70, "APKG", "BETA", 2, 1}});
}

} // namespace

class TestDependenciesExpansion : public QObject, protected ViewRepositoryFixture {
    Q_OBJECT

    TQXViewSettings FSettings = SettingsFor(TQXLevel::Object, true, TQXViewType::Dependencies);
    TQXExpandLimits FLimits;

    // An expandable root node of an empty tree, in a view of that level.
    TQXTreeNode* Root(const QString& level, std::unique_ptr<TQXItem> item, bool option = false) {
        FTree->Clear();
        FSettings.Level = *level::FromName(level);
        FSettings.Option = option;
        return AddClosed(std::move(item), 0, nullptr, level);
    }
    TQXTreeNode* Open(TQXTreeNode* node, int direction = 0) {
        FSettings.Direction = direction == 0 ? TQXDirection::TopDown : TQXDirection::BottomUp;
        return Opened(node, FSettings, FLimits);
    }
    // Opens the child with that text.
    TQXTreeNode* Open(TQXTreeNode* node, const QString& child, int direction = 0) {
        for (int i = 0; i < node->ChildCount(); ++i)
            if (node->Child(i)->Text() == child)
                return Open(node->Child(i), direction);
        qFatal("no child %s", qPrintable(child));
    }

private slots:
    void initTestCase() {
        BuildEstate(FRepo);
        OpenRepository();
    }
    void init() { FLimits = {}; }

    // A node is expanded once, and a call back to any node of its path ends it.
    void aNodeIsExpandedOnceAndRecursionEndsThePath() {
        TQXTreeNode* main = Open(Root("Object", TQXItem::ForObject(1, 1)));
        const QStringList first = ChildTexts(main);
        QCOMPARE(first.size(), 6);
        QCOMPARE(ChildTexts(Open(main)), first);
        // Only children that call something get a placeholder.
        QCOMPARE(Expandable(main), (QList<int>{0, 0, 0, 1, 1, 1}));
        TQXTreeNode* beta = Open(Open(main, "ZETA [Program]"), "BETA [Class]");
        QCOMPARE(ChildTexts(beta), QStringList{"MAIN [Program] !!! Recursive Track from here !!!"});
        QCOMPARE(Expandable(beta), QList<int>{0});
        // The Data view only drops the placeholder.
        QCOMPARE(Open(Root("Data", TQXItem::ForObject(1, 1)))->ChildCount(), 0);
    }

    void limitsRefuseNodesThroughTheTree() {
        const QMetaObject::Connection expansion =
            connect(FTree.get(), &TQXTreeControl::NodeExpanded, this,
                    [this](TQXTreeNode* node) { Open(node); });
        TQXTreeNode* main = Root("Object", TQXItem::ForObject(1, 1));
        FLimits = {.FileID = 1, .ObjectID = 4};
        main->SetExpanded(true);
        QVERIFY(!main->Expanded());
        QCOMPARE(main->ChildCount(), 0);
        QVERIFY(TQXTreeControl::HasPlaceholder(main));
        FLimits.ObjectID = 1;
        main->SetExpanded(true);
        QCOMPARE(main->ChildCount(), 6);
        // Within a package: BETA is a member of PKGLIB, MAIN is not.
        FLimits = {.PackageID = 90};
        main = Root("Object", TQXItem::ForObject(1, 1));
        main->SetExpanded(true);
        QCOMPARE(main->ChildCount(), 0);
        TQXTreeNode* beta = Root("Object", TQXItem::ForObject(2, 1));
        beta->SetExpanded(true);
        QCOMPARE(ChildTexts(beta), QStringList{"MAIN [Program]"});
        disconnect(expansion);
    }

    void inheritedCallsFollowTheirChild() {
        const QString base = "    BASE [Inherited from ALPHA, therefore possible call]";
        const QString mixin = "    MIXIN [Inherited from ALPHA, therefore possible call]";
        const QString unsure =
            "    CUSTFILE in CUST.DAT [File] [Parser unshure, therefore possible call]";
        QCOMPARE(
            ChildTexts(Open(Root("Object", TQXItem::ForObject(1, 1)))),
            (QStringList{"ALPHA [Class]", base, mixin, "BETA [Class]", "ZETA [Program]", unsure}));
        TQXTreeNode* main = Open(Root("Object", TQXItem::ForObject(1, 1), true));
        QCOMPARE(ChildTexts(main), (QStringList{"ZETA [Program]", "ALPHA [Class]", base, mixin,
                                                "BETA [Class]", unsure}));
        QCOMPARE(Images(main), (QList<int>{20, 30, 30, 32, 30, 50}));
        // Entries: the inheriting name is the sub-object's full name; the
        // inherited entry follows the first child of its object only.
        QCOMPARE(
            ChildTexts(Open(Root("Entry", TQXItem::ForEntry(1, 1, 1)))),
            (QStringList{"INIT [ALPHA]",
                         "    RUN [BASE]    [Inherited from MAIN.ALPHA, therefore possible call]",
                         "ZAP [ALPHA]"}));
    }

    void bottomUpInheritedAndUncertainCallersAndHiddenParts() {
        TQXTreeNode* base = Open(Root("Object", TQXItem::ForObject(2, 2)), 1);
        QCOMPARE(ChildTexts(base),
                 (QStringList{"MAIN [MAIN inherits from ALPHA, therefore possible caller]",
                              "CUSTFILE [CUSTFILE in CUST.DAT inherits from BETA, therefore "
                              "possible caller]"}));
        QCOMPARE(Images(base), (QList<int>{21, 51}));
        QCOMPARE(ChildTexts(Open(Root("Object", TQXItem::ForObject(3, 1)), 1)),
                 QStringList{"    MAIN [Program] [Parser unshure, therefore possible caller]"});
        TQXTreeNode* run = Open(Root("Entry", TQXItem::ForEntry(2, 2, 1)), 1);
        QCOMPARE(
            ChildTexts(run),
            (QStringList{"START [MAIN]    [MAIN inherits from ALPHA, therefore possible caller]",
                         "READ [CUSTFILE]    [CUSTFILE in CUST.DAT inherits from BETA, "
                         "therefore possible caller]"}));
        QCOMPARE(Images(run), (QList<int>{32, 32}));
        // Hidden parts take the icon of their visible namesake.
        TQXTreeNode* icons = Open(Root("Object", TQXItem::ForObject(1, 4)));
        QCOMPARE(ChildTexts(icons), (QStringList{"COPYA [Copy]", "COPYB [Copy]"}));
        QCOMPARE(Images(icons), (QList<int>{40, -1}));
        TQXTreeNode* zeta = Open(Root("Object", TQXItem::ForObject(1, 2)), 1);
        QCOMPARE(ChildTexts(zeta), (QStringList{"COPYA [Copy]", "MAIN [Program]"}));
        QCOMPARE(Images(zeta), (QList<int>{41, 21}));
    }

    void codeViewImagesAlternateByDepth() {
        // TopDown: entries list lines (d even), lines list called entries (d odd).
        TQXTreeNode* node = Open(Root("Code", TQXItem::ForEntry(5, 1, 1)));
        QCOMPARE(ChildTexts(node), (QStringList{"PERFORM CALC", "DISPLAY X"}));
        QCOMPARE(Images(node), (QList<int>{25, 0}));
        QCOMPARE(Expandable(node), (QList<int>{1, 0}));
        node = Open(node, "PERFORM CALC");
        QCOMPARE(Images(node), QList<int>{31});
        node = Open(node, "CALC [PGM]");
        QCOMPARE(Images(node), (QList<int>{24, 0}));
        node = Open(node, "PERFORM PRINT");
        QCOMPARE(Images(node), QList<int>{30});
        QCOMPARE(Expandable(node), QList<int>{1});
        node = Open(node, "PRINT [PGM]");
        QCOMPARE(Images(node), QList<int>{25});
        // BottomUp: callers first, then the lines; the line calling the
        // entry above gets 27 + the depth's parity.
        node = Open(Root("Code", TQXItem::ForEntry(5, 1, 3)), 1);
        QCOMPARE(ChildTexts(node), (QStringList{"CALC [PGM]", "CALL 'LOG'"}));
        QCOMPARE(Images(node), (QList<int>{34, 0}));
        QCOMPARE(Expandable(node), (QList<int>{1, 0}));
        node = Open(node, "CALC [PGM]", 1);
        QCOMPARE(ChildTexts(node), (QStringList{"MAIN [PGM]", "PERFORM PRINT", "ADD 1 TO X"}));
        QCOMPARE(Images(node), (QList<int>{33, 28, 0}));
        node = Open(node, "MAIN [PGM]", 1);
        QCOMPARE(Images(node), (QList<int>{27, 0}));
    }

    void groupingsAreListedOnceAndSorted() {
        TQXTreeNode* accounts = Open(Root("System", TQXItem::ForSystem(1)));
        QCOMPARE(ChildTexts(accounts), (QStringList{"AUDIT", "BILLING"}));
        QCOMPARE(Images(accounts), (QList<int>{3, 5}));
        QCOMPARE(ItemId(accounts->Child(0)), QString("0,2,0,0,0,0,0,0,0"));
        // Packages of the called objects, found through their names.
        TQXTreeNode* pkgmain = Open(Root("Package", TQXItem::ForPackage(6, 60)));
        QCOMPARE(ChildTexts(pkgmain), (QStringList{"APKG", "PKGLIB"}));
        QCOMPARE(Images(pkgmain), (QList<int>{12, 12}));
        QCOMPARE(ItemId(pkgmain->Child(1)), QString("9,0,0,0,90,0,0,0,0"));
        // BETA calls MAIN: its packages are the callers.
        QCOMPARE(Images(Open(Root("Package", TQXItem::ForPackage(6, 60)), 1)),
                 (QList<int>{13, 13}));
    }
};

QTEST_MAIN(TestDependenciesExpansion)
#include "tst_DependenciesExpansion.moc"
