// Data flows on purpose-built estates. The lookup: which uses of a variable
// count, the line and variable records they give in both directions, where
// the other variable's declaration is found, and the failures. The Data
// view: the scopes of a root variable, the variables and lines below them,
// their pictures and placeholders, and how a variable reaches the view.
#include "driver/ViewDriver.h"
#include "host/BaseFunctions.h"
#include "host/Items.h"
#include "platform/ScriptedUIServices.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"
#include "support/TreeTexts.h"
#include "view/DataFlowLookup.h"
#include "view/View.h"

#include <QRadioButton>
#include <QTemporaryDir>

#include <QtTest>

namespace {

constexpr int Cobol = 20100;
constexpr int FileScoped = 30005;
constexpr int OddScope = 30007;
constexpr int Use = 1012;
constexpr int Decl = 1011;
constexpr int Of = 10;

struct Word {
    int file, object, entry, row, word;
    QString text;
    int type = 0;
    int section = 0;
    QString identifier = QStringLiteral("");
};

// PAYCALC (1,1) uses AMOUNT, declared in the copy member PAYREC (2,1), in
// entry 1. It calls SUBPGM (3,1) and includes EMPREC (4,1). File 5 holds two
// job steps of a language whose variables are known in the whole file; it
// includes PROCLIB (6,1).
void BuildEstate(TestRepository& repo) {
    repo.Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, QXIcon",
                {{1, 1, "PAYCALC", "PAYCALC", 52},
                 {1, 2, "PAYPRINT", "PAYPRINT", 52},
                 {2, 1, "PAYREC", "PAYREC", 22},
                 {3, 1, "SUBPGM", "SUBPGM", 52},
                 {4, 1, "EMPREC", "EMPREC", 22},
                 {5, 1, "JOBA", "JOBA", 41},
                 {5, 2, "JOBB", "JOBB", 41},
                 {6, 1, "PROCLIB", "PROCLIB", 43}});
    const QList<Word> words = {
        {1, 1, 1, 10, 1, "MOVE"},
        {1, 1, 1, 10, 2, "AMOUNT", Use},
        {1, 1, 1, 10, 3, "TO"},
        {1, 1, 1, 10, 4, "TOTAL", Use},
        {1, 1, 1, 20, 1, "ADD"},
        {1, 1, 1, 20, 2, "AMOUNT", Use},
        {1, 1, 1, 20, 3, "TO"},
        {1, 1, 1, 20, 4, "TOTAL", Use},
        // Qualified by another record: not this variable.
        {1, 1, 1, 30, 1, "MOVE"},
        {1, 1, 1, 30, 2, "OTHER"},
        {1, 1, 1, 30, 3, "OF", Of},
        {1, 1, 1, 30, 4, "AMOUNT", Use},
        {1, 1, 1, 30, 5, "TO"},
        {1, 1, 1, 30, 6, "TOTAL", Use},
        // Qualified by its own record; the qualifier holds for the rest of the line.
        {1, 1, 1, 35, 1, "MOVE"},
        {1, 1, 1, 35, 2, "PAYREC"},
        {1, 1, 1, 35, 3, "OF", Of},
        {1, 1, 1, 35, 4, "AMOUNT", Use},
        {1, 1, 1, 35, 5, "TO"},
        {1, 1, 1, 35, 6, "COUNTER", Use},
        // Call arguments: one call without a dependency, one with.
        {1, 1, 1, 38, 1, "CALL"},
        {1, 1, 1, 38, 2, "'NOTLOADED'"},
        {1, 1, 1, 38, 3, "USING"},
        {1, 1, 1, 38, 4, "AMOUNT", Use, 24},
        {1, 1, 1, 40, 1, "CALL"},
        {1, 1, 1, 40, 2, "'SUBPGM'"},
        {1, 1, 1, 40, 3, "USING"},
        {1, 1, 1, 40, 4, "AMOUNT", Use, 24},
        {1, 1, 1, 60, 2, "AMOUNT", Use},
        {1, 1, 1, 60, 4, "NOWHERE", Use},
        {1, 1, 1, 70, 2, "AMOUNT", Use}, // its flow's line is not loaded
        {1, 1, 1, 80, 2, "AMOUNT", Use},
        {1, 1, 1, 80, 4, "PAYREC", Use},
        {1, 1, 1, 90, 2, "AMOUNT", Use},
        {1, 1, 1, 90, 4, "EMPNAME", Use},
        {1, 1, 1, 95, 2, "AMOUNT", Use},
        {1, 1, 1, 95, 4, "EMPREC", Use},
        {1, 1, 1, 100, 2, "BASEPAY", Use},
        {1, 1, 1, 100, 4, "AMOUNT", Use},
        // Another object of the file: outside an object-scoped variable's reach.
        {1, 2, 1, 110, 1, "AMOUNT", Use},
        {1, 2, 1, 110, 2, "TOTAL", Use},
        // Declarations: TOTAL outside, inside entry 1 and inside entry 2.
        {1, 1, 0, 2, 1, "TOTAL", Decl, 0, "PIC 9(9)"},
        {1, 1, 1, 50, 1, "TOTAL", Decl, 0, "PIC 9(9) COMP"},
        {1, 1, 2, 55, 1, "TOTAL", Decl, 0, "PIC X"},
        {1, 1, 0, 7, 1, "BASEPAY", Decl, 0, "PIC 9(7)"},
        {2, 1, 0, 1, 1, "AMOUNT", Decl, 0, "PIC 9(7)V99"},
        {2, 1, 0, 2, 1, "COUNTER", Decl, 0, "PIC 9(3)"},
        {2, 1, 0, 3, 1, "COUNTER", Decl, 0, "PIC 9(5)"},
        {3, 1, 0, 5, 1, "AMOUNT", Decl, 0, "PIC S9(7)V99"},
        {4, 1, 0, 1, 1, "EMPNAME", Decl, 0, "PIC X(30)"},
        {4, 1, 0, 2, 1, "AMOUNT", Decl, 0, "PIC 9(5)"},
        // File-scoped: DDIN used in JOBB, DDOUT declared in JOBA, DDLIB in PROCLIB.
        {5, 2, 0, 10, 1, "DDIN", Use},
        {5, 2, 0, 10, 2, "DDOUT", Use},
        {5, 2, 0, 20, 1, "DDIN", Use},
        {5, 2, 0, 20, 2, "DDLIB", Use},
        {5, 1, 0, 2, 1, "DDOUT", Decl, 0, "DD"},
        {5, 1, 0, 3, 1, "DDIN", Decl, 0, "DD"},
        {6, 1, 0, 1, 1, "DDLIB", Decl, 0, "DSN"},
    };
    QList<QVariantList> rows;
    for (const Word& w : words)
        rows << QVariantList{
            w.file, w.object, w.entry,   w.row,        w.word,
            w.text, w.type,   w.section, w.identifier, w.file >= 5 ? FileScoped : Cobol};
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord, QXWordType, "
                "QXSectionType, QXObjectIdentifier, QXLanguageID",
                rows);
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow",
                {{1, 1, 1, 10, "  MOVE AMOUNT TO TOTAL. "},
                 {1, 1, 1, 20, "ADD AMOUNT TO TOTAL."},
                 {1, 1, 1, 35, "MOVE PAYREC OF AMOUNT TO COUNTER."},
                 {1, 1, 1, 38, "CALL 'NOTLOADED' USING AMOUNT."},
                 {1, 1, 1, 40, "CALL 'SUBPGM' USING AMOUNT."},
                 {1, 1, 1, 60, "MOVE AMOUNT TO NOWHERE."},
                 {1, 1, 1, 80, "MOVE AMOUNT TO PAYREC."},
                 {1, 1, 1, 90, "MOVE AMOUNT TO EMPNAME."},
                 {1, 1, 1, 95, "MOVE AMOUNT TO EMPREC."},
                 {1, 1, 1, 100, "MOVE BASEPAY TO AMOUNT."},
                 {5, 2, 0, 10, "COPY DDIN TO DDOUT"},
                 {5, 2, 0, 20, "COPY DDIN TO DDLIB"}});
    repo.Insert("QXDATAFLOW",
                "QXFromFileID, QXFromRowID, QXFromWordID, QXFileID, QXRowID, QXWordID",
                {{1, 10, 2, 1, 10, 4},
                 {1, 20, 2, 1, 20, 4},
                 {1, 30, 4, 1, 30, 6},
                 {1, 35, 4, 1, 35, 6},
                 {1, 60, 2, 1, 60, 4},
                 {1, 70, 2, 1, 71, 4},
                 {1, 80, 2, 1, 80, 4},
                 {1, 90, 2, 1, 90, 4},
                 {1, 95, 2, 1, 95, 4},
                 {1, 100, 2, 1, 100, 4},
                 {1, 110, 1, 1, 110, 2},
                 {5, 10, 1, 5, 10, 2},
                 {5, 20, 1, 5, 20, 2}});
    // The call at row 40: the last call before the argument names SUBPGM.
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID, "
                "QXFromRowID, QXFromWordID",
                {{8, 8, 0, 1, 1, 1, 40, 1},
                 {3, 1, 0, 1, 1, 1, 40, 2},
                 {3, 9, 0, 1, 1, 1, 40, 4},
                 {4, 1, 0, 1, 1, 0, 3, 0}, // PAYCALC includes EMPREC
                 {6, 1, 0, 5, 2, 0, 1, 0}, // JOBB's file includes PROCLIB
                 {2, 1, 0, 1, 1, 0, 4, 0}, // PAYCALC, PAYPRINT and SUBPGM include PAYREC
                 {2, 1, 0, 1, 2, 0, 5, 0},
                 {2, 1, 0, 3, 1, 0, 6, 0},
                 {5, 1, 0, 5, 2, 0, 7, 0}}); // JOBB runs JOBA
    repo.Insert("QXFILE", "QXFileID, QXFileName",
                {{1, "PAY.CBL"},
                 {2, "PAYREC.CPY"},
                 {3, "SUB.CBL"},
                 {4, "EMPREC.CPY"},
                 {5, "JOBS.JCL"},
                 {6, "PROCLIB"}});
}

// One line per record: lines with their text, variable, qualifier, group
// and position; variables with their declaration.
QStringList Summary(const TDataFlows& list) {
    QStringList lines;
    auto ids = [](std::initializer_list<qint32> values) {
        QStringList parts;
        for (qint32 v : values)
            parts << QString::number(v);
        return parts.join('.');
    };
    for (const TDataFlow& f : list) {
        if (f.IsRow)
            lines << QStringLiteral("L %1 | %2/%3 g%4 @%5")
                         .arg(f.Text, f.VariableName, f.ParentName, QString::number(f.Group),
                              ids({f.FileID, f.ObjectID, f.EntryID, f.RowID}));
        else
            lines << QStringLiteral("V %1/%2 '%3' icon %4 own %5 @%6 g%7")
                         .arg(f.VariableName, f.ParentName, f.Text, QString::number(f.Icon),
                              ids({f.OwnerFileID, f.OwnerObjectID, f.OwnerEntryID}),
                              ids({f.FileID, f.ObjectID, f.EntryID, f.RowID, f.WordID}),
                              QString::number(f.Group));
    }
    return lines;
}

// The children of a node: text, picture and whether it can be opened.
QStringList Shape(const TQXTreeNode* node) {
    QStringList lines;
    for (const TQXTreeNode* child : ChildNodes(node))
        lines << child->Text() + QStringLiteral(" | ") + QString::number(child->ImageIndex()) +
                     (TQXTreeControl::HasPlaceholder(child) ? QStringLiteral(" +") : QString());
    return lines;
}

TQXTreeNode* ChildNamed(const TQXTreeNode* node, const QString& text) {
    for (TQXTreeNode* child : ChildNodes(node))
        if (child->Text() == text)
            return child;
    return nullptr;
}

} // namespace

class TestDataFlow : public QObject {
    Q_OBJECT

    TQXScriptedUIServices FUi;
    TQXBaseFunctions FHost;
    std::unique_ptr<TestRepository> FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;
    TQXTableHandleSet FTables;
    QPointer<TQXLanguageDefinition> FDefinition;
    TDataFlows FList;

    bool Lookup(const TQXDataItem& item, int direction, bool checkOnly = false) {
        FList.assign(1, TDataFlow{}); // every call starts from an empty list
        return TQXDataFlowLookup(*FAccess, FTables, FHost, FDefinition)
            .GetDataFlow(item, direction, checkOnly, FList);
    }
    static TQXDataItem Amount(int entryID = 0, int language = Cobol) {
        return TQXDataItem("AMOUNT", "PAYREC", 1, 1, 0, 2, 1, entryID, 1, 1, language);
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }

    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
        FHost.SetLanguageDefinition({FileScoped, "FILELANG", 5});
        FHost.SetLanguageDefinition({OddScope, "ODDLANG", 7});
        FRepo = std::make_unique<TestRepository>(TestRepository::CurrentBackend());
        BuildEstate(*FRepo);
        FAccess = std::make_unique<SqlDataAccess>(FRepo->Location());
        AssignDBPointers(*FAccess, FTables);
        FUi.ClearLog();
    }

    void whereTheValueGoes() {
        QVERIFY(Lookup(Amount(), 0));
        QCOMPARE(Summary(FList),
                 QStringList({
                     "L MOVE AMOUNT TO TOTAL. [PAYCALC] | TOTAL/ g0 @1.1.1.10",
                     "V TOTAL/PAYCALC 'PIC 9(9) COMP' icon 52 own 1.1.0 @1.1.1.50.1 g0",
                     "L ADD AMOUNT TO TOTAL. [PAYCALC] | TOTAL/ g0 @1.1.1.20",
                     "L MOVE PAYREC OF AMOUNT TO COUNTER. [PAYCALC] | COUNTER/PAYREC g3 @1.1.1.35",
                     "V COUNTER/PAYREC 'PIC 9(5)' icon 22 own 1.1.0 @2.1.0.3.1 g3",
                     "L CALL 'NOTLOADED' USING AMOUNT. [PAYCALC] | / g-1 @1.1.1.38",
                     "L CALL 'SUBPGM' USING AMOUNT. [PAYCALC] | AMOUNT/ g6 @1.1.1.40",
                     "V AMOUNT/SUBPGM 'PIC S9(7)V99' icon 52 own 3.1.0 @3.1.0.5.1 g6",
                     "L MOVE AMOUNT TO NOWHERE. [PAYCALC] | / g-1 @1.1.1.60",
                     "L Source missing for called object | / g-1 @0.0.0.0",
                     "L MOVE AMOUNT TO PAYREC. [PAYCALC] | AMOUNT/PAYREC g10 @1.1.1.80",
                     "V AMOUNT/PAYREC 'PIC 9(7)V99' icon 22 own 1.1.0 @2.1.0.1.1 g10",
                     "L MOVE AMOUNT TO EMPNAME. [PAYCALC] | EMPNAME/ g12 @1.1.1.90",
                     "V EMPNAME/EMPREC 'PIC X(30)' icon 22 own 1.1.0 @4.1.0.1.1 g12",
                     "L MOVE AMOUNT TO EMPREC. [PAYCALC] | EMPREC/ g14 @1.1.1.95",
                     "V AMOUNT/EMPREC 'PIC 9(5)' icon 22 own 1.1.0 @4.1.0.2.1 g14",
                 }));
        // A test call answers at the first flow and keeps no list.
        QVERIFY(Lookup(Amount(), 0, true));
        QVERIFY(FList.empty());
        QVERIFY(FUi.Messages().isEmpty());
    }

    void whereTheValueComesFrom() {
        QVERIFY(Lookup(Amount(), 1));
        // The flow into PAYREC reaches AMOUNT again: its line joins that group.
        QCOMPARE(Summary(FList),
                 QStringList({
                     "L CALL 'NOTLOADED' USING AMOUNT. [PAYCALC] | / g-1 @1.1.1.38",
                     "L CALL 'SUBPGM' USING AMOUNT. [PAYCALC] | AMOUNT/ g1 @1.1.1.40",
                     "V AMOUNT/SUBPGM 'PIC S9(7)V99' icon 52 own 3.1.0 @3.1.0.5.1 g1",
                     "L MOVE AMOUNT TO PAYREC. [PAYCALC] | AMOUNT/ g1 @1.1.1.80",
                     "L MOVE BASEPAY TO AMOUNT. [PAYCALC] | BASEPAY/ g4 @1.1.1.100",
                     "V BASEPAY/PAYCALC 'PIC 9(7)' icon 52 own 1.1.0 @1.1.0.7.1 g4",
                 }));
        // Used only where no flow starts, and not used at all.
        const TQXDataItem total("TOTAL", "", 1, 1, 0, 1, 1, 0, 2, 1, Cobol);
        QVERIFY(!Lookup(total, 0));
        QVERIFY(FList.empty());
        QVERIFY(Lookup(total, 1, true));
        QVERIFY(!Lookup(TQXDataItem("NOSUCH", "", 1, 1, 0, 1, 1, 0, 2, 1, Cobol), 0));
        QVERIFY(FList.empty());
    }

    void fileScopeAndFailures() {
        // Known in the whole file: used in JOBB, declared in JOBA and in
        // PROCLIB, which another object of the file includes.
        const TQXDataItem ddin("DDIN", "", 5, 1, 0, 5, 1, 0, 1, 1, FileScoped);
        QVERIFY(Lookup(ddin, 0));
        QCOMPARE(Summary(FList), QStringList({
                                     "L COPY DDIN TO DDOUT [JOBB] | DDOUT/ g0 @5.2.0.10",
                                     "V DDOUT/JOBA 'DD' icon 41 own 5.1.0 @5.1.0.2.1 g0",
                                     "L COPY DDIN TO DDLIB [JOBB] | DDLIB/ g2 @5.2.0.20",
                                     "V DDLIB/PROCLIB 'DSN' icon 43 own 5.1.0 @6.1.0.1.1 g2",
                                 }));
        QVERIFY(FUi.Messages().isEmpty());

        QVERIFY(!Lookup(Amount(0, 99999), 0));
        QVERIFY(FList.empty());
        QVERIFY(!Lookup(Amount(0, OddScope), 0));
        QVERIFY(FList.empty());
        QCOMPARE(FUi.Messages(), QStringList({"Error: LanguageDefinition not found",
                                              "Error: Scope in LanguageDefinition not supported"}));
        // Inside an entry the scope is the entry, whatever the language says.
        QVERIFY(Lookup(Amount(1, OddScope), 0, true));
        QCOMPARE(FUi.Messages().size(), 2);
    }
    // ---------------------------------------------------------- the Data view

    std::unique_ptr<TQXViewDriver> Driver() {
        auto driver = std::make_unique<TQXViewDriver>(FRepo->Location());
        driver->BaseFunctions().SetLanguageDefinition({FileScoped, "FILELANG", 5});
        return driver;
    }

    void rootVariableOpensIntoItsScopes() {
        auto d = Driver();
        QCOMPARE(d->ShowVariable("PAYREC", "AMOUNT"), QString());
        TQXTreeNode* root = d->Tree().Root(0);
        QCOMPARE(RootTexts(d->Tree()), QStringList{" AMOUNT as PIC 9(7)V99 [PAYREC]"});
        QCOMPARE(root->ImageIndex(), 35);
        d->Expand(root);
        // SUBPGM uses its own AMOUNT nowhere: its scope goes. PAYREC, where
        // the variable is declared, holds no use of it.
        QCOMPARE(Shape(root),
                 QStringList({"As used in PAYCALC | 35 +", "As used in PAYPRINT | 35 +"}));
        // BottomUp the roots stay; PAYPRINT's use receives no value.
        d->View().rbBottomUp->click();
        root = d->Tree().Root(0);
        d->Expand(root);
        QCOMPARE(Shape(root), QStringList{"As used in PAYCALC | 35 +"});

        // Known in the whole file: JOBB, in JOBA's file, is no other scope,
        // and the declaring scope holds the flows.
        d->View().rbTopDown->click();
        QCOMPARE(d->ShowVariable("JOBA", "DDIN"), QString());
        root = d->Tree().Root(0);
        d->Expand(root);
        QCOMPARE(Shape(root), QStringList{"As used in Declaration Scope | 35 +"});
        d->Expand(root->Child(0));
        QCOMPARE(Shape(root->Child(0)),
                 QStringList({" DDOUT as DD [JOBA] | 37 +", "COPY DDIN TO DDOUT [JOBB] | 0",
                              " DDLIB as DSN [PROCLIB] | 47 +", "COPY DDIN TO DDLIB [JOBB] | 0"}));

        QVERIFY(d->ShowVariable("JOBA", "NOSUCH").contains("declares no variable NOSUCH"));
        QVERIFY(d->ShowVariable("NOPE", "DDIN").contains("no object named NOPE"));
    }

    void deeperVariablesListFlowsAndLines() {
        auto d = Driver();
        d->ShowVariable("PAYREC", "AMOUNT");
        d->Expand(d->Tree().Root(0));
        TQXTreeNode* paycalc = ChildNamed(d->Tree().Root(0), "As used in PAYCALC");
        d->Expand(paycalc);
        // Each variable is followed by its lines; lines are leaves, and the
        // variable of the scope above is not opened again.
        QCOMPARE(Shape(paycalc), QStringList({
                                     " TOTAL as PIC 9(9) COMP [PAYCALC] | 37 +",
                                     "MOVE AMOUNT TO TOTAL. [PAYCALC] | 0",
                                     "ADD AMOUNT TO TOTAL. [PAYCALC] | 0",
                                     " COUNTER as PIC 9(5) [PAYREC] | 37 +",
                                     "MOVE PAYREC OF AMOUNT TO COUNTER. [PAYCALC] | 0",
                                     " AMOUNT as PIC S9(7)V99 [SUBPGM] | 37 +",
                                     "CALL 'SUBPGM' USING AMOUNT. [PAYCALC] | 0",
                                     " AMOUNT as PIC 9(7)V99 [PAYREC] | 37",
                                     "MOVE AMOUNT TO PAYREC. [PAYCALC] | 0",
                                     " EMPNAME as PIC X(30) [EMPREC] | 37 +",
                                     "MOVE AMOUNT TO EMPNAME. [PAYCALC] | 0",
                                     " AMOUNT as PIC 9(5) [EMPREC] | 37 +",
                                     "MOVE AMOUNT TO EMPREC. [PAYCALC] | 0",
                                     "--- Other rows of interest --- | -1",
                                     "CALL 'NOTLOADED' USING AMOUNT. [PAYCALC] | 0",
                                     "MOVE AMOUNT TO NOWHERE. [PAYCALC] | 0",
                                     "Source missing for called object | 0",
                                 }));
        QCOMPARE(paycalc->ImageIndex(), 35);

        d->View().rbBottomUp->click();
        d->Expand(d->Tree().Root(0));
        paycalc = ChildNamed(d->Tree().Root(0), "As used in PAYCALC");
        d->Expand(paycalc);
        QCOMPARE(Shape(paycalc), QStringList({
                                     " AMOUNT as PIC S9(7)V99 [SUBPGM] | 35 +",
                                     "CALL 'SUBPGM' USING AMOUNT. [PAYCALC] | 0",
                                     "MOVE AMOUNT TO PAYREC. [PAYCALC] | 0",
                                     " BASEPAY as PIC 9(7) [PAYCALC] | 35 +",
                                     "MOVE BASEPAY TO AMOUNT. [PAYCALC] | 0",
                                     "--- Other rows of interest --- | -1",
                                     "CALL 'NOTLOADED' USING AMOUNT. [PAYCALC] | 0",
                                 }));
        QCOMPARE(paycalc->ImageIndex(), 38); // it found where its value comes from
    }

    void variablesReachTheView() {
        auto d = Driver();
        TQXItems handed;
        QString command;
        d->BaseFunctions().RegisterWindow(
            "View", [&](const QString&, const TQXItems& items, const QString& c, QString&) {
                handed = items;
                command = c;
            });
        // A variable of the Data view keeps its scope.
        d->ShowVariable("PAYREC", "AMOUNT");
        d->Expand(d->Tree().Root(0));
        TQXTreeNode* paycalc = ChildNamed(d->Tree().Root(0), "As used in PAYCALC");
        d->Expand(paycalc);
        TQXTreeNode* empname = ChildNamed(paycalc, " EMPNAME as PIC X(30) [EMPREC]");
        d->Tree().SetSelection({empname});
        d->View().ShowDataFlow1Click(nullptr);
        QCOMPARE(command, QStringLiteral("Show Data Flow"));
        QCOMPARE(handed.Count(), 1);
        QCOMPARE(handed.At(0).Text, QStringLiteral(" EMPNAME as PIC X(30) [EMPREC]"));
        QCOMPARE(handed.At(0).Icon, 35);
        QCOMPARE(handed.At(0).Data->GetItemID(), empname->Item()->GetItemID());

        {
            auto other = Driver();
            other->Connect();
            QString error;
            other->View().ReceiveItems(handed, command, error);
            QCOMPARE(error, QString());
            QCOMPARE(RootTexts(other->Tree()), QStringList{" EMPNAME as PIC X(30) [EMPREC]"});
            QCOMPARE(other->View().Settings().Level, TQXLevel::Data);
            QVERIFY(other->View().Settings().IsDependencies() &&
                    other->View().Settings().IsTopDown());
        }

        // A declaration listed among an object's contents is looked up where
        // it is declared; a use is no variable to show.
        d->Tree().Clear();
        d->Tree().SetSelection({d->Tree().AddRoot("EMPNAME", TQXItem::ForWord(4, 1, 0, 1, 1))});
        d->View().ShowDataFlow1Click(nullptr);
        QCOMPARE(handed.At(0).Data->GetItemID(),
                 TQXDataItem("EMPNAME", "EMPREC", 4, 1, 0, 4, 1, 0, 1, 1, Cobol).GetItemID());
        d->Tree().SetSelection({d->Tree().AddRoot("use", TQXItem::ForWord(1, 1, 1, 10, 2))});
        d->View().ShowDataFlow1Click(nullptr);
        QVERIFY(d->Ui().Messages().last().contains("not a variable"));

        // A view document keeps the root variable; reopened, it opens alike.
        QTemporaryDir dir;
        const QString file = dir.filePath("amount.kvv");
        d->ShowVariable("PAYREC", "AMOUNT");
        d->SaveDocument(file);
        d->Expand(d->Tree().Root(0));
        auto reopened = Driver();
        reopened->OpenDocument(file);
        reopened->Expand(reopened->Tree().Root(0));
        QCOMPARE(Shape(reopened->Tree().Root(0)), Shape(d->Tree().Root(0)));
        QCOMPARE(reopened->Tree().Root(0)->Item()->GetItemID(),
                 d->Tree().Root(0)->Item()->GetItemID());
    }
};

QTEST_MAIN(TestDataFlow)
#include "tst_DataFlow.moc"
