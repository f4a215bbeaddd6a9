// An Object node opened TopDown in the Distribution view: its contents, the
// inherited source of its ancestors with names shown once, a missing
// ancestor, and inheritance cycles.
#include "FakeViewOperations.h"
#include "support/ViewRepositoryFixture.h"
#include "view/DistributionExpander.h"
#include "view/ExpansionContext.h"

#include <QtTest>

namespace {

// PAYROLL (1,1 in PAY.CBL) uses its hidden part (1,2) but not (1,3); its
// sub-objects sit in PAY.CBL and PAY.CPY (OTHER.CPY does not count). It
// inherits BASE, found under LIB; BASE inherits ROOT, found only in LIB's
// file; ROOT inherits an object that is not loaded. CYCA and CYCB inherit
// each other, SELF inherits itself, ORPHAN an unknown object.
void BuildEstate(TestRepository& repo) {
    repo.Insert("QXFILE", "QXFileID, QXFileName",
                {{1, "PAY.CBL"}, {2, "pay.cpy"}, {3, "LIB.CBL"}, {4, "OTHER.CPY"}, {5, "CYC.CBL"}});
    repo.Insert("QXOBJECT",
                "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, QXObjectType, QXIcon, "
                "QXSubObjectParentName, QXObjectInherits, QXInheritsParentName",
                {{1, 1, "PAYROLL", "PAYROLL", "Copy", 54, "", "BASE", "LIB"},
                 {1, 2, "PAYROLL", "PAYROLL", "Copy", -1, "", "", ""},
                 {1, 3, "PAYROLL", "PAYROLL", "Copy", -1, "", "", ""},
                 {2, 1, "PAYSUB", "PAYSUB", "Copy", 50, "PAYROLL", "", ""},
                 {1, 4, "PAYEMPTY", "PAYEMPTY", "Copy", 50, "PAYROLL", "", ""},
                 {4, 1, "OTHERSUB", "OTHERSUB", "Copy", 52, "PAYROLL", "", ""},
                 {3, 1, "LIB", "LIB", "Copy", 52, "", "", ""},
                 {3, 2, "BASE", "BASE", "Copy", 54, "LIB", "ROOT", "LIB"},
                 {3, 3, "ROOT", "ROOT", "Copy", 20, "", "GONE", "NOWHERE"},
                 {5, 1, "CYCA", "CYCA", "Copy", 20, "", "CYCB", ""},
                 {5, 2, "CYCB", "CYCB", "Copy", 20, "", "CYCA", ""},
                 {5, 3, "SELF", "SELF", "Copy", 20, "", "SELF", ""},
                 {5, 4, "ORPHAN", "ORPHAN", "Copy", 20, "", "GONE", ""}});
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID",
                {{1, 2, 0, 1, 1, 0}});
    // INNER is declared inside an entry: not an object-level variable.
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord, QXWordType, "
                "QXObjectIdentifier",
                {{1, 2, 0, 1, 1, "HVAR", 1011, "PIC 9"},
                 {1, 3, 0, 1, 1, "UNUSED", 1011, "PIC 9"},
                 {1, 1, 0, 1, 1, "X", 1011, "PIC 9"},
                 {1, 1, 0, 2, 1, "X", 1011, "PIC 9"},
                 {1, 1, 1, 3, 1, "INNER", 1011, "PIC 9"},
                 {3, 2, 0, 1, 1, "X", 1011, "PIC 9"},
                 {3, 2, 0, 2, 1, "Y", 1011, "PIC 9"},
                 {3, 3, 0, 1, 1, "Y", 1011, "PIC 9"},
                 {3, 3, 0, 2, 1, "Z", 1011, "PIC 9"}});
    // ROOT (icon 20) lists no lines.
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXRowID, QXRow",
                {{1, 1, 1, "PAY LINE"}, {3, 2, 1, "BASE LINE"}, {3, 3, 1, "ROOT LINE"}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "MAIN"},
                 {1, 1, 2, "CALC"},
                 {1, 2, 1, "HENTRY"},
                 {1, 3, 1, "UNUSEDENTRY"},
                 {2, 1, 1, "SUBENTRY"},
                 {3, 2, 1, "MAIN"},
                 {3, 2, 2, "INIT"},
                 {3, 3, 1, "INIT"},
                 {3, 3, 2, "FINISH"},
                 {5, 1, 1, "E1"},
                 {5, 2, 1, "E2"},
                 {5, 3, 1, "E3"}});
}

} // namespace

class TestObjectContents : public QObject, protected ViewRepositoryFixture {
    Q_OBJECT

    // Opens an object root node TopDown.
    TQXTreeNode* Open(qint32 fileID, qint32 objectID, int image) {
        TQXTreeNode* node =
            AddClosed(std::make_unique<TQXItem>(fileID, 0, 0, 0, 0, objectID, 0, 0, 0), image);
        FakeViewOperations view(*FAccess, FTables);
        TQXExpansionContext context{*FRecords, *FTree, view, SettingsFor(TQXLevel::Object), {}};
        TQXDistributionExpander(context).Expand(node);
        return node;
    }
    // The children that can be opened further.
    static QStringList OpenableChildren(const TQXTreeNode* node) {
        QStringList texts;
        for (int i = 0; i < node->ChildCount(); ++i)
            if (TQXTreeControl::HasPlaceholder(node->Child(i)))
                texts << node->Child(i)->Text();
        return texts;
    }

private slots:
    void initTestCase() {
        BuildEstate(FRepo);
        OpenRepository();
    }
    void init() { FTree->Clear(); }

    void inheritedSourceFollowsTheObject() {
        const TQXTreeNode* payroll = Open(1, 1, 54);
        QCOMPARE(
            ChildTexts(payroll),
            (QStringList{"PAYSUB [Copy]", "PAYEMPTY [Copy]", " HVAR as PIC 9 [PAYROLL]",
                         " X as PIC 9 [PAYROLL]", " X as PIC 9 [PAYROLL]", "PAY LINE",
                         "MAIN [PAYROLL]", "CALC [PAYROLL]", "HENTRY [PAYROLL]",
                         "--- Inherited source [BASE] ---", " Y as PIC 9 [BASE]", "BASE LINE",
                         "INIT [BASE]", "--- Inherited source [ROOT] ---", " Z as PIC 9 [ROOT]",
                         "FINISH [ROOT]", "--- Inherited source [NOWHERE.GONE] is missing ---"}));
        // Only entries and sub-objects with something inside open further.
        QCOMPARE(OpenableChildren(payroll),
                 (QStringList{"PAYSUB [Copy]", "MAIN [PAYROLL]", "CALC [PAYROLL]",
                              "HENTRY [PAYROLL]", "INIT [BASE]", "FINISH [ROOT]"}));
        QCOMPARE(payroll->Child(2)->ImageIndex(), 35);
        const TQXTreeNode* heading = payroll->Child(9);
        QCOMPARE(heading->ImageIndex(), -1);
        QCOMPARE(ItemId(heading), QString("0,0,0,0,0,0,0,-1,0"));
    }

    void inheritanceEnds() {
        // A cycle stops before an object is listed a second time.
        QCOMPARE(ChildTexts(Open(5, 1, 43)),
                 (QStringList{"E1 [CYCA]", "--- Inherited source [CYCB] ---", "E2 [CYCB]"}));
        QCOMPARE(ChildTexts(Open(5, 3, 43)), QStringList{"E3 [SELF]"});
        QCOMPARE(ChildTexts(Open(5, 4, 43)),
                 QStringList{"--- Inherited source [GONE] is missing ---"});
        // Variables of objects shown with icon 20 or 43 get icon 45.
        const TQXTreeNode* root = Open(3, 3, 20);
        QCOMPARE(root->Child(0)->Text(), QStringLiteral(" Y as PIC 9 [ROOT]"));
        QCOMPARE(root->Child(0)->ImageIndex(), 45);
    }
};

QTEST_MAIN(TestObjectContents)
#include "tst_ObjectContents.moc"
