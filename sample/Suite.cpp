// The banking and insurance suite: customer accounts, payments, claims and
// policy administration, as COBOL programs with their copy members, BMS maps,
// the nightly job and the account load module. Copy 0 is the demo; each
// further copy is a region's variant with its own names, applications and
// packages, larger programs, and calls into the copy before it.

#include "CobolProgram.h"
#include "Estate.h"
#include "EstateCodes.h"

using namespace estate;

namespace sample {
namespace {

// Random streams: one per file of a copy, so that files do not shift each
// other's numbers.
quint64 Stream(const TSuiteCopy& copy, int file) {
    return quint64(copy.index) * 100 + quint64(file);
}

QString Directory(const TSuiteCopy& copy, const char* area, const char* kind) {
    const QString region =
        copy.index == 0 ? QStringLiteral("HEAD-OFFICE")
                        : QStringLiteral("REGION-%1").arg(copy.index, 3, 10, QLatin1Char('0'));
    return QStringLiteral("D:\\ESTATE\\%1\\%2\\%3")
        .arg(region, QLatin1String(area), QLatin1String(kind));
}

QString Key(const char* kind, const QString& name) {
    return QLatin1String(kind) + QLatin1Char(':') + name;
}

TObjectInfo ProgramInfo(const QString& name, qint32 inPackage = 0) {
    TObjectInfo info;
    info.name = name;
    info.identifier = name;
    info.type = QStringLiteral("COBOL Program");
    info.icon = icon::Program;
    info.inPackage = inPackage;
    return info;
}

TObjectInfo SubObjectInfo(const QString& name, const QString& type, int objectIcon,
                          qint32 inPackage = 0) {
    TObjectInfo info;
    info.name = name;
    info.identifier = name;
    info.type = type;
    info.icon = objectIcon;
    info.inPackage = inPackage;
    return info;
}

// --- Copy members ----------------------------------------------------------

TCopybook CustRec(const TEstate& estate, const TSuiteCopy& copy) {
    TCopybook book;
    book.name = copy.Name(QStringLiteral("CUSTREC"));
    book.member = estate.Find(Key("CPY", book.name));
    book.fields = {{1, book.name, {}},
                   {5, QStringLiteral("CUST-ID"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("CUST-NAME"), QStringLiteral("X(30)")},
                   {5, QStringLiteral("CUST-ADDRESS"), QStringLiteral("X(60)")},
                   {5, QStringLiteral("CUST-STATUS"), QStringLiteral("X(1)")},
                   {5, QStringLiteral("CUST-OPEN-DATE"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("CUST-BALANCE"), QStringLiteral("S9(11)V99 COMP-3")}};
    return book;
}

// The record is named DATE-PARMS, not after its copy member, so a use
// qualified by it does not count as qualified by the declaring object.
TCopybook DateParm(const TEstate& estate, const TSuiteCopy& copy) {
    TCopybook book;
    book.name = copy.Name(QStringLiteral("DATEPARM"));
    book.member = estate.Find(Key("CPY", book.name));
    book.fields = {{1, QStringLiteral("DATE-PARMS"), {}},
                   {5, QStringLiteral("DP-FUNCTION"), QStringLiteral("X(2)")},
                   {5, QStringLiteral("DP-DATE-IN"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("DP-DATE-OUT"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("DP-DAYS"), QStringLiteral("S9(5) COMP-3")},
                   {5, QStringLiteral("DP-RETURN-CODE"), QStringLiteral("9(2)")}};
    return book;
}

TCopybook PayRec(const TEstate& estate, const TSuiteCopy& copy) {
    TCopybook book;
    book.name = copy.Name(QStringLiteral("PAYREC"));
    book.member = estate.Find(Key("CPY", book.name));
    book.fields = {{1, book.name, {}},
                   {5, QStringLiteral("PAY-ID"), QStringLiteral("9(10)")},
                   {5, QStringLiteral("PAY-ACCT-NO"), QStringLiteral("X(10)")},
                   {5, QStringLiteral("PAY-AMOUNT"), QStringLiteral("S9(11)V99 COMP-3")},
                   {5, QStringLiteral("PAY-FEE"), QStringLiteral("S9(7)V99 COMP-3")},
                   {5, QStringLiteral("PAY-NET"), QStringLiteral("S9(11)V99 COMP-3")},
                   {5, QStringLiteral("PAY-VALUE-DATE"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("PAY-STATUS"), QStringLiteral("X(1)")}};
    return book;
}

TCopybook ErrFlds(const TEstate& estate, const TSuiteCopy& copy) {
    TCopybook book;
    book.name = copy.Name(QStringLiteral("ERRFLDS"));
    book.member = estate.Find(Key("CPY", book.name));
    book.fields = {{1, QStringLiteral("ERR-FIELDS"), {}},
                   {5, QStringLiteral("ERR-PROGRAM"), QStringLiteral("X(8)")},
                   {5, QStringLiteral("ERR-PARAGRAPH"), QStringLiteral("X(30)")},
                   {5, QStringLiteral("ERR-MESSAGE"), QStringLiteral("X(60)")},
                   {5, QStringLiteral("ERR-COUNT"), QStringLiteral("9(4) COMP")}};
    return book;
}

TCopybook ErrHndl(const TEstate& estate, const TSuiteCopy& copy) {
    TCopybook book;
    book.name = copy.Name(QStringLiteral("ERRHNDL"));
    book.member = estate.Find(Key("CPY", book.name));
    book.paragraphs = {{QStringLiteral("9900-ABEND-ROUTINE"),
                        {QStringLiteral("DISPLAY 'ABEND IN ' [ERR-PROGRAM] ' AT ' [ERR-PARAGRAPH]"),
                         QStringLiteral("PERFORM [>9910-LOG-ERROR]"),
                         QStringLiteral("MOVE 16 TO RETURN-CODE"), QStringLiteral("GOBACK.")}},
                       {QStringLiteral("9910-LOG-ERROR"),
                        {QStringLiteral("ADD 1 TO [ERR-COUNT]"),
                         QStringLiteral("DISPLAY [ERR-PROGRAM] ': ' [ERR-MESSAGE].")}}};
    return book;
}

TCopybook PolRec(const TEstate& estate, const TSuiteCopy& copy) {
    TCopybook book;
    book.name = copy.Name(QStringLiteral("POLREC"));
    book.member = estate.Find(Key("CPY", book.name));
    book.fields = {{1, book.name, {}},
                   {5, QStringLiteral("POL-NUMBER"), QStringLiteral("X(12)")},
                   {5, QStringLiteral("POL-HOLDER-ID"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("POL-PRODUCT"), QStringLiteral("X(4)")},
                   {5, QStringLiteral("POL-PREMIUM"), QStringLiteral("S9(7)V99 COMP-3")},
                   {5, QStringLiteral("POL-SUM-INSURED"), QStringLiteral("S9(11)V99 COMP-3")},
                   {5, QStringLiteral("POL-START-DATE"), QStringLiteral("9(8)")},
                   {5, QStringLiteral("POL-STATUS"), QStringLiteral("X(1)")}};
    return book;
}

void WriteCopyMember(TEstate& estate, const TSuiteCopy& copy, const TCopybook& book, int stream) {
    TRandom random = estate.Random(Stream(copy, stream));
    TSourceFile file(estate.Writer(), book.member.file, lang::Copybook);
    TCobolProgram member(estate, file, random,
                         SubObjectInfo(book.name, QStringLiteral("Copy Member"), icon::CopyMember));
    member.Comment(QStringLiteral("COPY MEMBER ") + book.name);
    member.DeclarationSection(section::WorkingStorage);
    for (const TCopyField& field : book.fields)
        member.Decl(field.level, field.name, field.picture);
    QStringList names;
    for (const auto& paragraph : book.paragraphs)
        names << paragraph.first;
    member.Paragraphs(names);
    for (const auto& [name, statements] : book.paragraphs) {
        member.Paragraph(name);
        for (const QString& statement : statements) {
            if (statement.startsWith(QLatin1String("PERFORM [>")))
                member.Perform(
                    statement.section(QLatin1Char('>'), 1).section(QLatin1Char(']'), 0, 0));
            else
                member.Stmt(statement);
        }
    }
}

// --- Programs -------------------------------------------------------------------

struct TProgramFile {
    TSourceFile file;
    TRandom random;
    TCobolProgram program;

    TProgramFile(TEstate& estate, const TSuiteCopy& copy, int stream, const QString& base,
                 qint32 inPackage = 0)
        : file(estate.Writer(), estate.Find(Key("PGM", copy.Name(base))).file, lang::Cobol),
          random(estate.Random(Stream(copy, stream))),
          program(estate, file, random, ProgramInfo(copy.Name(base), inPackage)) {}
};

int ExtraParagraphs(const TSuiteCopy& copy, TRandom& random) {
    return random.Range(copy.extraParagraphsMin, copy.extraParagraphsMax);
}

// Programs with DATE-PARMS may call the date utility of their own copy and,
// in a regional copy, that of the copy before it.
std::vector<TCallable> DateCallables(const TEstate& estate, const TSuiteCopy& copy,
                                     bool ownCopy = true) {
    std::vector<TCallable> callables;
    const QString argument = QStringLiteral("DATE-PARMS");
    if (ownCopy) {
        const QString name = copy.Name(QStringLiteral("DATEUTIL"));
        callables.push_back({name, estate.Find(Key("PGM", name)), argument});
    }
    if (copy.index > 0) {
        const QString previous = QStringLiteral("DATEUTIL") + TSuiteCopy::SuffixOf(copy.index - 1);
        callables.push_back({previous, estate.Find(Key("PGM", previous)), argument});
    }
    return callables;
}

void WriteCustMaint(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 1, QStringLiteral("CUSTMAINT"), copy.loadModulePackage);
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("CUSTOMER MAINTENANCE - CICS TRANSACTION CM01"));
    p.Line(QStringLiteral("ENVIRONMENT DIVISION."));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-PROGRAM-NAME"), QStringLiteral("X(8)"),
           QLatin1Char('\'') + p.Name() + QLatin1Char('\''));
    p.Decl(1, QStringLiteral("WS-WORK"));
    p.Decl(5, QStringLiteral("WS-CUST-ID"), QStringLiteral("9(8)"));
    p.Decl(5, QStringLiteral("WS-RESP"), QStringLiteral("S9(8) COMP"));
    p.Decl(5, QStringLiteral("WS-ACCOUNT-AGE"), QStringLiteral("S9(5) COMP-3"));
    p.Decl(5, QStringLiteral("WS-BALANCE"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(5, QStringLiteral("WS-CUST-STATUS"), QStringLiteral("X(1)"));
    p.Decl(5, QStringLiteral("WS-MESSAGE"), QStringLiteral("X(60)"));
    p.BeginSubObject(SubObjectInfo(QStringLiteral("WORK-AREAS"), QStringLiteral("Record"),
                                   icon::ObjectInFile, copy.loadModulePackage));
    p.Decl(1, QStringLiteral("WORK-AREAS"));
    p.Decl(5, QStringLiteral("WA-SAVE-BALANCE"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(5, QStringLiteral("WA-SCREEN-MODE"), QStringLiteral("X(1)"), QStringLiteral("'D'"));
    p.Decl(5, QStringLiteral("WA-RETRY-COUNT"), QStringLiteral("9(2)"), QStringLiteral("ZERO"));
    p.EndSubObject();
    const TCopybook custRec = CustRec(estate, copy);
    p.Copy(custRec);
    p.Copy(DateParm(estate, copy));
    p.Copy(ErrFlds(estate, copy));
    p.Section(QStringLiteral("LINKAGE SECTION"), section::Linkage);
    p.Decl(1, QStringLiteral("DFHCOMMAREA"), QStringLiteral("X(100)"));

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-RECEIVE-MAP"),
                             QStringLiteral("2000-PROCESS"), QStringLiteral("2100-CHECK-DATES"),
                             QStringLiteral("2200-UPDATE-ACCOUNT"), QStringLiteral("8000-SEND-MAP"),
                             QStringLiteral("8100-SEND-LIST")} +
                 rules);
    p.Procedure(QStringLiteral("DFHCOMMAREA"));
    p.Copy(ErrHndl(estate, copy));
    const QString record = custRec.name;
    const QString mapSet = copy.Name(QStringLiteral("CUSTSET"));
    const TTarget detailMap = estate.Find(Key("MAP", copy.Name(QStringLiteral("CUSTM1"))));
    const TTarget listMap = estate.Find(Key("MAP", copy.Name(QStringLiteral("CUSTM2"))));

    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-RECEIVE-MAP"));
    p.Perform(QStringLiteral("2000-PROCESS"));
    p.Perform(QStringLiteral("8000-SEND-MAP"));
    p.Stmt(QStringLiteral("EXEC CICS RETURN TRANSID('CM01') END-EXEC."));

    p.Paragraph(QStringLiteral("1000-RECEIVE-MAP"));
    p.Stmt(QStringLiteral("EXEC CICS RECEIVE MAP([>'%1']) MAPSET('%2')")
               .arg(copy.Name(QStringLiteral("CUSTM1")), mapSet),
           detailMap);
    p.Stmt(QStringLiteral("     RESP([WS-RESP]) END-EXEC"));
    p.Stmt(QStringLiteral("IF [WS-RESP] NOT = ZERO"));
    p.BeginBlock();
    p.Stmt(QStringLiteral("MOVE 'RECEIVE FAILED' TO [ERR-MESSAGE]"));
    p.Perform(QStringLiteral("9900-ABEND-ROUTINE"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("MOVE [CUST-ID OF %1] TO [WS-CUST-ID].").arg(record));

    p.Paragraph(QStringLiteral("2000-PROCESS"));
    p.Stmt(QStringLiteral("EXEC CICS READ FILE('CUSTFILE') INTO([%1])").arg(record));
    p.Stmt(QStringLiteral("     RIDFLD([WS-CUST-ID]) RESP([WS-RESP]) END-EXEC"));
    p.Stmt(QStringLiteral("MOVE [CUST-BALANCE OF %1] TO [WA-SAVE-BALANCE]").arg(record));
    p.Stmt(QStringLiteral("MOVE [CUST-STATUS OF %1] TO [WS-CUST-STATUS]").arg(record));
    p.Perform(QStringLiteral("2100-CHECK-DATES"));
    p.Stmt(QStringLiteral("IF [WS-ACCOUNT-AGE] > 30"));
    p.BeginBlock();
    p.Perform(QStringLiteral("2200-UPDATE-ACCOUNT"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF."));

    p.Paragraph(QStringLiteral("2100-CHECK-DATES"));
    p.Stmt(QStringLiteral("MOVE 'AD' TO [DP-FUNCTION]"));
    p.Stmt(QStringLiteral("MOVE [CUST-OPEN-DATE OF %1] TO [DP-DATE-IN]").arg(record));
    p.Call(copy.Name(QStringLiteral("DATEUTIL")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("DATEUTIL")))),
           {QStringLiteral("DATE-PARMS")});
    p.Stmt(QStringLiteral("MOVE [DP-DAYS] TO [WS-ACCOUNT-AGE]."));

    p.Paragraph(QStringLiteral("2200-UPDATE-ACCOUNT"));
    p.Stmt(QStringLiteral("COMPUTE [WS-BALANCE] = [WA-SAVE-BALANCE] + [CUST-BALANCE]"));
    p.Call(copy.Name(QStringLiteral("ACCT")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("ACCT")))), {record});
    p.Stmt(QStringLiteral("MOVE [WS-BALANCE] TO [CUST-BALANCE OF %1].").arg(record));

    p.Paragraph(QStringLiteral("8000-SEND-MAP"));
    p.Stmt(QStringLiteral("MOVE [CUST-NAME OF %1] TO [WS-MESSAGE]").arg(record));
    p.Stmt(QStringLiteral("EXEC CICS SEND MAP([>'%1']) MAPSET('%2')")
               .arg(copy.Name(QStringLiteral("CUSTM1")), mapSet),
           detailMap);
    p.Stmt(QStringLiteral("     FROM([WS-MESSAGE]) ERASE END-EXEC."));

    p.Paragraph(QStringLiteral("8100-SEND-LIST"));
    p.Stmt(QStringLiteral("EXEC CICS SEND MAP([>'%1']) MAPSET('%2')")
               .arg(copy.Name(QStringLiteral("CUSTM2")), mapSet),
           listMap);
    p.Stmt(QStringLiteral("     ERASE END-EXEC."));

    p.Rules(rules, DateCallables(estate, copy));
    p.End();
}

void WriteAcct(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 2, QStringLiteral("ACCT"), copy.loadModulePackage);
    TCobolProgram& p = f.program;
    const TTarget accounts = estate.Find(QStringLiteral("TAB:ACCOUNTS"));
    p.Header(QStringLiteral("ACCOUNT ACCESS MODULE - CALLED BY CUSTMAINT AND ACCTUPD"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-ACCT-NO"), QStringLiteral("X(10)"));
    p.Decl(1, QStringLiteral("WS-ACCT-TYPE"), QStringLiteral("X(2)"));
    p.Decl(1, QStringLiteral("WS-BALANCE"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-SQLCODE"), QStringLiteral("S9(9) COMP"));
    p.Stmt(QStringLiteral("EXEC SQL INCLUDE SQLCA END-EXEC."));
    p.Section(QStringLiteral("LINKAGE SECTION"), section::Linkage);
    const TCopybook custRec = CustRec(estate, copy);
    p.Copy(custRec);
    const QString record = custRec.name;

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-READ-ACCOUNT"),
                             QStringLiteral("2000-UPDATE-BALANCE")} +
                 rules);
    p.Procedure(record);
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Stmt(QStringLiteral("MOVE [CUST-ID OF %1] TO [WS-ACCT-NO]").arg(record));
    p.Perform(QStringLiteral("1000-READ-ACCOUNT"));
    p.Stmt(QStringLiteral("IF [CUST-STATUS OF %1] = 'A'").arg(record));
    p.BeginBlock();
    p.Perform(QStringLiteral("2000-UPDATE-BALANCE"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-READ-ACCOUNT"));
    p.Stmt(QStringLiteral("EXEC SQL"));
    TSourceRow select(
        TCobolProgram::AreaB(QStringLiteral("    SELECT [ACCOUNTS.BALANCE], [ACCOUNTS.ACCT_TYPE]")),
        TSourceRow::Flows::None);
    const qint32 selectRow = p.Emit(select);
    TSourceRow into(
        TCobolProgram::AreaB(QStringLiteral("      INTO :[WS-BALANCE], :[WS-ACCT-TYPE]")),
        TSourceRow::Flows::None);
    const qint32 intoRow = p.Emit(into);
    f.file.Flow(selectRow, select.Variable(0), intoRow, into.Variable(0));
    f.file.Flow(selectRow, select.Variable(1), intoRow, into.Variable(1));
    p.Stmt(QStringLiteral("      FROM [>ACCOUNTS]"), accounts);
    p.Stmt(QStringLiteral("     WHERE [ACCOUNTS.ACCT_NO] = :[WS-ACCT-NO]"));
    p.Stmt(QStringLiteral("END-EXEC"));
    p.Stmt(QStringLiteral("MOVE [WS-BALANCE] TO [CUST-BALANCE OF %1].").arg(record));

    p.Paragraph(QStringLiteral("2000-UPDATE-BALANCE"));
    p.Stmt(QStringLiteral("ADD [ACCT-INTEREST] TO [WS-BALANCE]"));
    p.Stmt(QStringLiteral("IF [WS-BALANCE] > [ACCT-LIMIT]"));
    p.Stmt(QStringLiteral("    MOVE [ACCT-LIMIT] TO [WS-BALANCE]"));
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("EXEC SQL UPDATE [>ACCOUNTS]"), accounts);
    TSourceRow set(
        TCobolProgram::AreaB(QStringLiteral("    SET [ACCOUNTS.BALANCE] = :[WS-BALANCE]")),
        TSourceRow::Flows::Assignment);
    p.Emit(set);
    p.Stmt(QStringLiteral("    WHERE [ACCOUNTS.ACCT_NO] = :[WS-ACCT-NO]"));
    p.Stmt(QStringLiteral("END-EXEC."));

    p.Rules(rules, {});
    p.End();
}

void WriteAcctLayout(TEstate& estate, const TSuiteCopy& copy) {
    // The account program's record layout lives in a file of its own with the
    // same base name; its enclosing object is the program in ACCT.CBL.
    TRandom random = estate.Random(Stream(copy, 3));
    TSourceFile file(
        estate.Writer(),
        estate.Find(Key("FILE", copy.Name(QStringLiteral("ACCT")) + QStringLiteral(".CPY"))).file,
        lang::Copybook);
    TObjectInfo info =
        SubObjectInfo(QStringLiteral("ACCT-LAYOUT"), QStringLiteral("Record Layout"), icon::Record);
    info.parent = copy.Name(QStringLiteral("ACCT"));
    TCobolProgram layout(estate, file, random, info);
    layout.Comment(QStringLiteral("ACCOUNT RECORD LAYOUT FOR ") + info.parent);
    layout.DeclarationSection(section::WorkingStorage);
    layout.Decl(1, QStringLiteral("ACCT-LAYOUT"));
    layout.Decl(5, QStringLiteral("ACCT-NO"), QStringLiteral("X(10)"));
    layout.Decl(5, QStringLiteral("ACCT-TYPE"), QStringLiteral("X(2)"));
    layout.Decl(5, QStringLiteral("ACCT-INTEREST"), QStringLiteral("S9(7)V99 COMP-3"));
    layout.Decl(5, QStringLiteral("ACCT-LIMIT"), QStringLiteral("S9(11)V99 COMP-3"));
}

void WriteAcctUpd(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 4, QStringLiteral("ACCTUPD"), copy.loadModulePackage);
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("NIGHTLY ACCOUNT UPDATE - BATCH"));
    p.Line(QStringLiteral("ENVIRONMENT DIVISION."));
    p.Line(QStringLiteral("INPUT-OUTPUT SECTION."));
    p.Line(QStringLiteral("FILE-CONTROL."));
    p.Stmt(QStringLiteral("SELECT CUSTMAST ASSIGN TO CUSTMAST"));
    p.Stmt(QStringLiteral("    ORGANIZATION IS INDEXED ACCESS MODE IS SEQUENTIAL"));
    p.Stmt(QStringLiteral("    RECORD KEY IS CM-CUST-ID."));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("FILE SECTION"), section::FileSection);
    const qint32 dataset = p.BeginSubObject(
        SubObjectInfo(QStringLiteral("CUSTMAST"), QStringLiteral("VSAM Dataset"), icon::Dataset));
    p.Line(QStringLiteral("FD  CUSTMAST."));
    p.Decl(1, QStringLiteral("CM-RECORD"));
    p.Decl(5, QStringLiteral("CM-CUST-ID"), QStringLiteral("9(8)"));
    p.Decl(5, QStringLiteral("CM-DATA"), QStringLiteral("X(192)"));
    p.EndSubObject();
    const TTarget master{f.file.Id(), dataset, 0};
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-EOF"), QStringLiteral("X(1)"), QStringLiteral("'N'"));
    p.Decl(1, QStringLiteral("WS-COUNTERS"));
    p.Decl(5, QStringLiteral("WS-READ-COUNT"), QStringLiteral("9(7) COMP-3"));
    p.Decl(5, QStringLiteral("WS-UPDATE-COUNT"), QStringLiteral("9(7) COMP-3"));
    p.Decl(5, QStringLiteral("WS-TODAY"), QStringLiteral("9(8)"));
    p.Decl(5, QStringLiteral("WS-LILIAN"), QStringLiteral("S9(9) COMP"));
    p.Decl(1, QStringLiteral("WS-SAVED-CUST"));
    p.Decl(5, QStringLiteral("CUST-STATUS"), QStringLiteral("X(1)"));
    p.Decl(5, QStringLiteral("CUST-NAME"), QStringLiteral("X(30)"));
    const TCopybook custRec = CustRec(estate, copy);
    p.Copy(custRec);
    p.Copy(DateParm(estate, copy));
    // The SQL communication area is supplied by the precompiler: an object of
    // this file without source of its own.
    const qint32 sqlca = p.BeginSubObject(SubObjectInfo(
        QStringLiteral("SQLCA"), QStringLiteral("SQL Communication Area"), icon::ObjectInFileAlt));
    p.EndSubObject();
    p.Stmt(QStringLiteral("EXEC SQL INCLUDE [>SQLCA] END-EXEC."), TTarget{f.file.Id(), sqlca, 0});
    const QString record = custRec.name;

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-INIT"),
                             QStringLiteral("2000-READ-NEXT"), QStringLiteral("2100-APPLY-UPDATE"),
                             QStringLiteral("9000-TERMINATE")} +
                 rules);
    p.Procedure();
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-INIT"));
    p.Perform(QStringLiteral("2000-READ-NEXT"), QStringLiteral(" UNTIL [WS-EOF] = 'Y'"));
    p.Perform(QStringLiteral("9000-TERMINATE"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-INIT"));
    p.Stmt(QStringLiteral("OPEN INPUT [>CUSTMAST]"), master);
    p.Stmt(QStringLiteral("MOVE ZERO TO [WS-READ-COUNT] [WS-UPDATE-COUNT]"));
    p.Stmt(QStringLiteral("ACCEPT [WS-TODAY] FROM DATE YYYYMMDD"));
    p.Call(QStringLiteral("DATECONV"), estate.Find(QStringLiteral("FUN:DATECONV")),
           {QStringLiteral("WS-TODAY"), QStringLiteral("WS-LILIAN")}, QStringLiteral("."));

    p.Paragraph(QStringLiteral("2000-READ-NEXT"));
    p.Stmt(QStringLiteral("READ [>CUSTMAST] INTO [%1]").arg(record), master);
    p.Stmt(QStringLiteral("    AT END MOVE 'Y' TO [WS-EOF]"));
    p.Stmt(QStringLiteral("    NOT AT END PERFORM [>2100-APPLY-UPDATE]"),
           p.ParagraphTarget(QStringLiteral("2100-APPLY-UPDATE")));
    p.Stmt(QStringLiteral("END-READ."));

    p.Paragraph(QStringLiteral("2100-APPLY-UPDATE"));
    p.Stmt(QStringLiteral("ADD 1 TO [WS-READ-COUNT]"));
    p.Stmt(QStringLiteral("IF [CUST-STATUS IN WS-SAVED-CUST] = 'C'"));
    p.Stmt(QStringLiteral("    DISPLAY 'CLOSED: ' [CUST-NAME IN WS-SAVED-CUST]"));
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("MOVE [%1] TO [WS-SAVED-CUST]").arg(record));
    p.Call(copy.Name(QStringLiteral("ACCT")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("ACCT")))), {record});
    p.Stmt(QStringLiteral("MOVE [CUST-OPEN-DATE OF %1] TO [DP-DATE-IN]").arg(record));
    p.Call(copy.Name(QStringLiteral("DATEUTIL")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("DATEUTIL")))),
           {QStringLiteral("DATE-PARMS")});
    p.Stmt(QStringLiteral("ADD 1 TO [WS-UPDATE-COUNT]."));

    p.Paragraph(QStringLiteral("9000-TERMINATE"));
    p.Stmt(QStringLiteral("CLOSE [>CUSTMAST]"), master);
    p.Stmt(QStringLiteral("DISPLAY 'RECORDS READ:    ' [WS-READ-COUNT]"));
    p.Stmt(QStringLiteral("DISPLAY 'RECORDS UPDATED: ' [WS-UPDATE-COUNT]."));

    p.Rules(rules, DateCallables(estate, copy));
    p.End();
}

void WriteDateUtil(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 5, QStringLiteral("DATEUTIL"));
    TCobolProgram& p = f.program;
    const TTarget dateConv = estate.Find(QStringLiteral("FUN:DATECONV"));
    p.Header(QStringLiteral("DATE UTILITIES - DAYS BETWEEN DATES, DATE VALIDATION"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-DATE-WORK"), QStringLiteral("9(8)"));
    p.Decl(1, QStringLiteral("WS-TODAY-NUM"), QStringLiteral("9(8)"));
    p.Decl(1, QStringLiteral("WS-LILIAN-IN"), QStringLiteral("S9(9) COMP"));
    p.Decl(1, QStringLiteral("WS-LILIAN-TODAY"), QStringLiteral("S9(9) COMP"));
    p.Decl(1, QStringLiteral("WS-SAVED-PARMS"), QStringLiteral("X(30)"));
    p.Section(QStringLiteral("LINKAGE SECTION"), section::Linkage);
    p.Copy(DateParm(estate, copy));

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-DAYS-BETWEEN"),
                             QStringLiteral("2000-VALIDATE-DATE")} +
                 rules);
    p.Procedure(QStringLiteral("DATE-PARMS"));
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Stmt(QStringLiteral("EVALUATE [DP-FUNCTION]"));
    p.Stmt(QStringLiteral("    WHEN 'AD' PERFORM [>1000-DAYS-BETWEEN]"),
           p.ParagraphTarget(QStringLiteral("1000-DAYS-BETWEEN")));
    p.Stmt(QStringLiteral("    WHEN 'VD' PERFORM [>2000-VALIDATE-DATE]"),
           p.ParagraphTarget(QStringLiteral("2000-VALIDATE-DATE")));
    p.Stmt(QStringLiteral("    WHEN OTHER MOVE 99 TO [DP-RETURN-CODE]"));
    p.Stmt(QStringLiteral("END-EVALUATE"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-DAYS-BETWEEN"));
    p.Stmt(QStringLiteral("MOVE [DATE-PARMS] TO [WS-SAVED-PARMS]"));
    p.Stmt(QStringLiteral("MOVE [DP-DATE-IN] TO [WS-DATE-WORK]"));
    p.Call(QStringLiteral("DATECONV"), dateConv,
           {QStringLiteral("WS-DATE-WORK"), QStringLiteral("WS-LILIAN-IN")});
    p.Stmt(QStringLiteral("ACCEPT [WS-TODAY-NUM] FROM DATE YYYYMMDD"));
    p.Call(QStringLiteral("DATECONV"), dateConv,
           {QStringLiteral("WS-TODAY-NUM"), QStringLiteral("WS-LILIAN-TODAY")});
    p.Stmt(QStringLiteral("COMPUTE [DP-DAYS] = [WS-LILIAN-TODAY] - [WS-LILIAN-IN]"));
    p.Stmt(QStringLiteral("MOVE ZERO TO [DP-RETURN-CODE]."));

    p.Paragraph(QStringLiteral("2000-VALIDATE-DATE"));
    p.Stmt(QStringLiteral("IF [DP-DATE-IN] < 19000101"));
    p.Stmt(QStringLiteral("    MOVE 8 TO [DP-RETURN-CODE]"));
    p.Stmt(QStringLiteral("ELSE"));
    p.Stmt(QStringLiteral("    MOVE [DP-DATE-IN] TO [DP-DATE-OUT]"));
    p.Stmt(QStringLiteral("END-IF."));

    p.Rules(rules, DateCallables(estate, copy, false));
    p.End();
}

void WritePayCalc(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 6, QStringLiteral("PAYCALC"));
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("PAYMENT CALCULATION - FEES, NET AMOUNT, VALUE DATE"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-PROGRAM-NAME"), QStringLiteral("X(8)"),
           QLatin1Char('\'') + p.Name() + QLatin1Char('\''));
    p.Decl(1, QStringLiteral("WS-TOTALS"));
    p.Decl(5, QStringLiteral("WS-TOTAL-GROSS"), QStringLiteral("S9(13)V99 COMP-3"));
    p.Decl(5, QStringLiteral("WS-TOTAL-FEES"), QStringLiteral("S9(13)V99 COMP-3"));
    p.Decl(5, QStringLiteral("WS-TOTAL-NET"), QStringLiteral("S9(13)V99 COMP-3"));
    p.Decl(5, QStringLiteral("WS-PAY-COUNT"), QStringLiteral("9(7) COMP-3"));
    p.Decl(1, QStringLiteral("WS-FEE-RATE"), QStringLiteral("9V9(4)"), QStringLiteral("0.0125"));
    p.BeginSubObject(
        SubObjectInfo(QStringLiteral("WORK-AREAS"), QStringLiteral("Record"), icon::ObjectInFile));
    p.Decl(1, QStringLiteral("WORK-AREAS"));
    p.Decl(5, QStringLiteral("WA-FEE"), QStringLiteral("S9(7)V99 COMP-3"));
    p.Decl(5, QStringLiteral("WA-ROUNDED"), QStringLiteral("S9(11) COMP-3"));
    p.Decl(5, QStringLiteral("WA-CURRENCY"), QStringLiteral("X(3)"), QStringLiteral("'EUR'"));
    p.EndSubObject();
    const TCopybook payRec = PayRec(estate, copy);
    p.Copy(payRec);
    p.Copy(DateParm(estate, copy));
    p.Copy(ErrFlds(estate, copy));
    // The contained rounding program follows the outer program's paragraphs.
    const QString roundingName = copy.Name(QStringLiteral("PAYROUND"));
    const qint32 rounding = f.file.ReserveObjectID(roundingName);

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-CALC-FEE"),
                             QStringLiteral("2000-CALC-NET"), QStringLiteral("4000-POST")} +
                 rules);
    p.Procedure();
    p.Copy(ErrHndl(estate, copy));
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-CALC-FEE"));
    p.Perform(QStringLiteral("2000-CALC-NET"));
    p.Perform(QStringLiteral("4000-POST"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-CALC-FEE"));
    p.Stmt(QStringLiteral("COMPUTE [WA-FEE] ROUNDED = [PAY-AMOUNT] * [WS-FEE-RATE]"));
    p.Stmt(QStringLiteral("IF [WA-FEE] < 1"));
    p.Stmt(QStringLiteral("    MOVE 1 TO [WA-FEE]"));
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("MOVE [WA-FEE] TO [PAY-FEE OF %1]").arg(payRec.name));
    p.Stmt(QStringLiteral("ADD [PAY-FEE] TO [WS-TOTAL-FEES]."));

    p.Paragraph(QStringLiteral("2000-CALC-NET"));
    p.Stmt(QStringLiteral("COMPUTE [PAY-NET] = [PAY-AMOUNT] - [PAY-FEE]"));
    p.Call(roundingName, TTarget{f.file.Id(), rounding, 0},
           {QStringLiteral("PAY-NET"), QStringLiteral("WA-ROUNDED")});
    p.Stmt(QStringLiteral("ADD [PAY-AMOUNT] TO [WS-TOTAL-GROSS]"));
    p.Stmt(QStringLiteral("ADD [PAY-NET] TO [WS-TOTAL-NET]"));
    p.Stmt(QStringLiteral("MOVE [PAY-VALUE-DATE OF %1] TO [DP-DATE-IN]").arg(payRec.name));
    p.Stmt(QStringLiteral("MOVE 'VD' TO [DP-FUNCTION]"));
    p.Call(copy.Name(QStringLiteral("DATEUTIL")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("DATEUTIL")))),
           {QStringLiteral("DATE-PARMS")});
    p.Stmt(QStringLiteral("IF [DP-RETURN-CODE] NOT = ZERO"));
    p.BeginBlock();
    p.Stmt(QStringLiteral("MOVE 'INVALID VALUE DATE' TO [ERR-MESSAGE]"));
    p.Perform(QStringLiteral("9910-LOG-ERROR"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF."));

    p.Paragraph(QStringLiteral("4000-POST"));
    p.Call(copy.Name(QStringLiteral("PAYPOST")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("PAYPOST")))), {payRec.name});
    p.Stmt(QStringLiteral("ADD 1 TO [WS-PAY-COUNT]."));

    p.Rules(rules, DateCallables(estate, copy));

    TObjectInfo nested =
        SubObjectInfo(roundingName, QStringLiteral("Nested Program"), icon::NestedProgram);
    nested.id = rounding;
    nested.parent = p.Name();
    f.file.AddObject(nested);
    f.file.At(rounding, 0);
    const QString areaA = QStringLiteral("       ");
    f.file.Emit(areaA + QStringLiteral("IDENTIFICATION DIVISION."), TSourceRow::Flows::None);
    f.file.Emit(areaA + QStringLiteral("PROGRAM-ID. ") + roundingName + QLatin1Char('.'),
                TSourceRow::Flows::None);
    f.file.Emit(areaA + QStringLiteral("DATA DIVISION."), TSourceRow::Flows::None);
    f.file.Emit(areaA + QStringLiteral("LINKAGE SECTION."), TSourceRow::Flows::None);
    f.file.Emit(TSourceRow(areaA + QStringLiteral("01  [!LK-AMOUNT:PIC S9(11)V99 COMP-3]    PIC "
                                                  "S9(11)V99 COMP-3."),
                           TSourceRow::Flows::None, section::Linkage, 1));
    f.file.Emit(TSourceRow(areaA + QStringLiteral("01  [!LK-ROUNDED:PIC S9(11) COMP-3]      PIC "
                                                  "S9(11) COMP-3."),
                           TSourceRow::Flows::None, section::Linkage, 1));
    f.file.Emit(areaA + QStringLiteral("PROCEDURE DIVISION USING LK-AMOUNT LK-ROUNDED."),
                TSourceRow::Flows::None);
    f.file.AddEntry(rounding, 1, QStringLiteral("0000-ROUND"), roundingName);
    f.file.At(rounding, 1);
    f.file.Emit(areaA + QStringLiteral("0000-ROUND."), TSourceRow::Flows::None);
    f.file.Emit(TCobolProgram::AreaB(QStringLiteral("COMPUTE [LK-ROUNDED] ROUNDED = [LK-AMOUNT]")),
                TSourceRow::Flows::Cobol);
    f.file.Emit(TCobolProgram::AreaB(QStringLiteral("GOBACK.")), TSourceRow::Flows::None);
    f.file.At(rounding, 0);
    f.file.Emit(areaA + QStringLiteral("END PROGRAM ") + roundingName + QLatin1Char('.'),
                TSourceRow::Flows::None);
    p.End();
}

void WritePayPost(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 7, QStringLiteral("PAYPOST"));
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("PAYMENT POSTING - RECORDS PAYMENTS, HANDS OVER TO THE LEDGER"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-GL-PROGRAM"), QStringLiteral("X(8)"), QStringLiteral("'GLPOST'"));
    p.Decl(1, QStringLiteral("WS-SQLCODE"), QStringLiteral("S9(9) COMP"));
    p.Decl(1, QStringLiteral("WS-POSTED"), QStringLiteral("9(7) COMP-3"));
    p.Decl(1, QStringLiteral("WS-AMOUNT"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-ACCT"), QStringLiteral("X(10)"));
    p.Copy(DateParm(estate, copy));
    p.Section(QStringLiteral("LINKAGE SECTION"), section::Linkage);
    const TCopybook payRec = PayRec(estate, copy);
    p.Copy(payRec);

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-INSERT-PAYMENT"),
                             QStringLiteral("2000-HAND-OVER")} +
                 rules);
    p.Procedure(payRec.name);
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-INSERT-PAYMENT"));
    p.Perform(QStringLiteral("2000-HAND-OVER"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-INSERT-PAYMENT"));
    p.Stmt(QStringLiteral("MOVE [PAY-NET OF %1] TO [WS-AMOUNT]").arg(payRec.name));
    p.Stmt(QStringLiteral("MOVE [PAY-ACCT-NO] TO [WS-ACCT]"));
    p.Stmt(QStringLiteral("EXEC SQL"));
    p.Stmt(QStringLiteral("    INSERT INTO [>PAYMENTS]"),
           estate.Find(QStringLiteral("TAB:PAYMENTS")));
    TSourceRow columns(TCobolProgram::AreaB(QStringLiteral(
                           "         ([PAYMENTS.PAY_ID], [PAYMENTS.ACCT_NO], [PAYMENTS.AMOUNT])")),
                       TSourceRow::Flows::None);
    const qint32 columnsRow = p.Emit(columns);
    TSourceRow values(
        TCobolProgram::AreaB(QStringLiteral("    VALUES (:[PAY-ID], :[WS-ACCT], :[WS-AMOUNT])")),
        TSourceRow::Flows::None);
    const qint32 valuesRow = p.Emit(values);
    for (int i = 0; i < 3; ++i)
        f.file.Flow(valuesRow, values.Variable(i), columnsRow, columns.Variable(i));
    p.Stmt(QStringLiteral("END-EXEC"));
    p.Stmt(QStringLiteral("ADD 1 TO [WS-POSTED]."));

    p.Paragraph(QStringLiteral("2000-HAND-OVER"));
    // The program name is in a variable: the parser's guess is the ledger.
    const TTarget ledger = estate.Find(QStringLiteral("PGM:GLPOST"));
    p.Stmt(QStringLiteral("CALL [>WS-GL-PROGRAM] USING [&%1].").arg(payRec.name), ledger, -1, 0);

    p.Rules(rules, DateCallables(estate, copy));
    p.End();
}

void WriteClaimReg(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 8, QStringLiteral("CLAIMREG"));
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("CLAIM REGISTRATION - CICS TRANSACTION CL01"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-RESP"), QStringLiteral("S9(8) COMP"));
    p.Decl(1, QStringLiteral("WS-CLAIM-NO"), QStringLiteral("9(10)"));
    p.Decl(1, QStringLiteral("WS-RESERVE"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-DAYS-SINCE-LOSS"), QStringLiteral("S9(5) COMP-3"));
    p.Decl(1, QStringLiteral("CLAIM-AREA"));
    p.Decl(5, QStringLiteral("CA-CLAIM-NO"), QStringLiteral("9(10)"));
    p.Decl(5, QStringLiteral("CA-POLICY-NO"), QStringLiteral("X(12)"));
    p.Decl(5, QStringLiteral("CA-LOSS-DATE"), QStringLiteral("9(8)"));
    p.Decl(5, QStringLiteral("CA-AMOUNT"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(5, QStringLiteral("CA-STATUS"), QStringLiteral("X(1)"));
    p.Decl(5, QStringLiteral("CA-INSTALMENTS"), QStringLiteral("9(2)"));
    const TCopybook polRec = PolRec(estate, copy);
    p.Copy(polRec);
    p.Copy(DateParm(estate, copy));
    p.Copy(ErrFlds(estate, copy));

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-RECEIVE"),
                             QStringLiteral("2000-REGISTER"), QStringLiteral("8000-SEND")} +
                 rules);
    p.Procedure();
    p.Copy(ErrHndl(estate, copy));
    const QString map = copy.Name(QStringLiteral("CLMM1"));
    const QString mapSet = copy.Name(QStringLiteral("CLMSET"));
    const TTarget claimMap = estate.Find(Key("MAP", map));

    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-RECEIVE"));
    p.Perform(QStringLiteral("2000-REGISTER"));
    p.Perform(QStringLiteral("8000-SEND"));
    p.Stmt(QStringLiteral("EXEC CICS RETURN TRANSID('CL01') END-EXEC."));

    p.Paragraph(QStringLiteral("1000-RECEIVE"));
    p.Stmt(QStringLiteral("EXEC CICS RECEIVE MAP([>'%1']) MAPSET('%2')").arg(map, mapSet),
           claimMap);
    p.Stmt(QStringLiteral("     RESP([WS-RESP]) END-EXEC"));
    p.Stmt(QStringLiteral("MOVE [WS-CLAIM-NO] TO [CA-CLAIM-NO]."));

    p.Paragraph(QStringLiteral("2000-REGISTER"));
    p.Stmt(QStringLiteral("MOVE [CA-POLICY-NO] TO [POL-NUMBER OF %1]").arg(polRec.name));
    p.Call(copy.Name(QStringLiteral("POLICYDB")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("POLICYDB")))), {polRec.name});
    p.Stmt(QStringLiteral("IF [POL-STATUS OF %1] NOT = 'A'").arg(polRec.name));
    p.BeginBlock();
    p.Stmt(QStringLiteral("MOVE 'POLICY NOT ACTIVE' TO [ERR-MESSAGE]"));
    p.Perform(QStringLiteral("9900-ABEND-ROUTINE"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("MOVE [CA-LOSS-DATE] TO [DP-DATE-IN]"));
    p.Stmt(QStringLiteral("MOVE 'AD' TO [DP-FUNCTION]"));
    p.Call(copy.Name(QStringLiteral("DATEUTIL")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("DATEUTIL")))),
           {QStringLiteral("DATE-PARMS")});
    p.Stmt(QStringLiteral("MOVE [DP-DAYS] TO [WS-DAYS-SINCE-LOSS]"));
    p.Stmt(QStringLiteral("COMPUTE [WS-RESERVE] ROUNDED = [CA-AMOUNT] * 1.1"));
    p.Stmt(QStringLiteral("EXEC SQL"));
    p.Stmt(QStringLiteral("    INSERT INTO [>CLAIM]"), estate.Find(QStringLiteral("TAB:CLAIM")));
    TSourceRow columns(TCobolProgram::AreaB(QStringLiteral(
                           "         ([CLAIM.CLAIM_NO], [CLAIM.POLICY_NO], [CLAIM.RESERVE])")),
                       TSourceRow::Flows::None);
    const qint32 columnsRow = p.Emit(columns);
    TSourceRow values(TCobolProgram::AreaB(QStringLiteral(
                          "    VALUES (:[CA-CLAIM-NO], :[CA-POLICY-NO], :[WS-RESERVE])")),
                      TSourceRow::Flows::None);
    const qint32 valuesRow = p.Emit(values);
    for (int i = 0; i < 3; ++i)
        f.file.Flow(valuesRow, values.Variable(i), columnsRow, columns.Variable(i));
    p.Stmt(QStringLiteral("END-EXEC"));
    p.Call(copy.Name(QStringLiteral("CLAIMPAY")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("CLAIMPAY")))),
           {QStringLiteral("CLAIM-AREA")}, QStringLiteral("."));

    p.Paragraph(QStringLiteral("8000-SEND"));
    p.Stmt(QStringLiteral("EXEC CICS SEND MAP([>'%1']) MAPSET('%2')").arg(map, mapSet), claimMap);
    p.Stmt(QStringLiteral("     ERASE END-EXEC."));

    p.Rules(rules, DateCallables(estate, copy));
    p.End();
}

void WriteClaimPay(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 9, QStringLiteral("CLAIMPAY"));
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("CLAIM PAYMENT SCHEDULE - INSTALMENTS AND RE-REGISTRATION"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-INSTALMENT"), QStringLiteral("S9(9)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-PAID"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-TOTAL"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-INDEX"), QStringLiteral("9(2)"));
    p.Decl(1, QStringLiteral("WS-STATUS"), QStringLiteral("X(1)"));
    p.Copy(DateParm(estate, copy));
    p.Section(QStringLiteral("LINKAGE SECTION"), section::Linkage);
    p.Decl(1, QStringLiteral("CLAIM-AREA"));
    p.Decl(5, QStringLiteral("CA-CLAIM-NO"), QStringLiteral("9(10)"));
    p.Decl(5, QStringLiteral("CA-POLICY-NO"), QStringLiteral("X(12)"));
    p.Decl(5, QStringLiteral("CA-LOSS-DATE"), QStringLiteral("9(8)"));
    p.Decl(5, QStringLiteral("CA-AMOUNT"), QStringLiteral("S9(11)V99 COMP-3"));
    p.Decl(5, QStringLiteral("CA-STATUS"), QStringLiteral("X(1)"));
    p.Decl(5, QStringLiteral("CA-INSTALMENTS"), QStringLiteral("9(2)"));

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-SCHEDULE"),
                             QStringLiteral("1100-SUM-INSTALMENTS")} +
                 rules);
    p.Procedure(QStringLiteral("CLAIM-AREA"));
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-SCHEDULE"));
    p.Stmt(QStringLiteral("IF [CA-STATUS] = 'R'"));
    // A claim sent back for re-registration: the two programs call each other.
    p.BeginBlock();
    p.Call(copy.Name(QStringLiteral("CLAIMREG")),
           estate.Find(Key("PGM", copy.Name(QStringLiteral("CLAIMREG")))),
           {QStringLiteral("CLAIM-AREA")});
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-SCHEDULE"));
    p.Stmt(QStringLiteral("MOVE ZERO TO [WS-TOTAL]"));
    p.Stmt(QStringLiteral("MOVE 1 TO [WS-INDEX]"));
    p.Stmt(QStringLiteral("COMPUTE [WS-INSTALMENT] ROUNDED = [CA-AMOUNT] / [CA-INSTALMENTS]"));
    p.Perform(QStringLiteral("1100-SUM-INSTALMENTS"), QStringLiteral("."));

    // Sums the instalments by performing itself until all are counted.
    p.Paragraph(QStringLiteral("1100-SUM-INSTALMENTS"));
    p.Stmt(QStringLiteral("ADD [WS-INSTALMENT] TO [WS-TOTAL]"));
    p.Stmt(QStringLiteral("ADD 1 TO [WS-INDEX]"));
    p.Stmt(QStringLiteral("IF [WS-INDEX] NOT > [CA-INSTALMENTS]"));
    p.BeginBlock();
    p.Perform(QStringLiteral("1100-SUM-INSTALMENTS"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("MOVE [WS-TOTAL] TO [WS-PAID]."));

    p.Rules(rules, DateCallables(estate, copy));
    p.End();
}

void WritePolicyDb(TEstate& estate, const TSuiteCopy& copy) {
    TProgramFile f(estate, copy, 10, QStringLiteral("POLICYDB"));
    TCobolProgram& p = f.program;
    p.Header(QStringLiteral("POLICY DATABASE ACCESS - READ AND CHECK POLICIES"));
    p.Line(QStringLiteral("DATA DIVISION."));
    p.Section(QStringLiteral("WORKING-STORAGE SECTION"), section::WorkingStorage);
    p.Decl(1, QStringLiteral("WS-SQLCODE"), QStringLiteral("S9(9) COMP"));
    p.Decl(1, QStringLiteral("WS-PREMIUM"), QStringLiteral("S9(7)V99 COMP-3"));
    p.Decl(1, QStringLiteral("WS-LIMIT"), QStringLiteral("S9(7)V99 COMP-3"),
           QStringLiteral("10000"));
    p.Decl(1, QStringLiteral("WS-FLAG"), QStringLiteral("X(1)"));
    p.Copy(DateParm(estate, copy));
    p.Section(QStringLiteral("LINKAGE SECTION"), section::Linkage);
    const TCopybook polRec = PolRec(estate, copy);
    p.Copy(polRec);

    const QStringList rules = p.RuleNames(ExtraParagraphs(copy, f.random));
    p.Paragraphs(QStringList{QStringLiteral("0000-MAIN"), QStringLiteral("1000-READ-POLICY"),
                             QStringLiteral("2000-CHECK-PREMIUM")} +
                 rules);
    p.Procedure(polRec.name);
    p.Paragraph(QStringLiteral("0000-MAIN"), true);
    p.Perform(QStringLiteral("1000-READ-POLICY"));
    p.Stmt(QStringLiteral("IF [WS-SQLCODE] = ZERO"));
    p.BeginBlock();
    p.Perform(QStringLiteral("2000-CHECK-PREMIUM"));
    p.EndBlock();
    p.Stmt(QStringLiteral("END-IF"));
    p.Stmt(QStringLiteral("GOBACK."));

    p.Paragraph(QStringLiteral("1000-READ-POLICY"));
    p.Stmt(QStringLiteral("EXEC SQL"));
    TSourceRow select(TCobolProgram::AreaB(QStringLiteral(
                          "    SELECT [POLICY.PREMIUM], [POLICY.STATUS], [POLICY.SUM_INSURED]")),
                      TSourceRow::Flows::None);
    const qint32 selectRow = p.Emit(select);
    TSourceRow into(TCobolProgram::AreaB(QStringLiteral(
                        "      INTO :[POL-PREMIUM], :[POL-STATUS], :[POL-SUM-INSURED]")),
                    TSourceRow::Flows::None);
    const qint32 intoRow = p.Emit(into);
    for (int i = 0; i < 3; ++i)
        f.file.Flow(selectRow, select.Variable(i), intoRow, into.Variable(i));
    p.Stmt(QStringLiteral("      FROM [>POLICY]"), estate.Find(QStringLiteral("TAB:POLICY")));
    p.Stmt(QStringLiteral("     WHERE [POLICY.POLICY_NO] = :[POL-NUMBER]"));
    p.Stmt(QStringLiteral("END-EXEC"));
    p.Stmt(QStringLiteral("MOVE SQLCODE TO [WS-SQLCODE]."));

    p.Paragraph(QStringLiteral("2000-CHECK-PREMIUM"));
    p.Stmt(QStringLiteral("MOVE [POL-PREMIUM OF %1] TO [WS-PREMIUM]").arg(polRec.name));
    p.Stmt(QStringLiteral("IF [WS-PREMIUM] > [WS-LIMIT]"));
    p.Stmt(QStringLiteral("    MOVE 'H' TO [WS-FLAG]"));
    p.Stmt(QStringLiteral("END-IF."));

    p.Rules(rules, DateCallables(estate, copy));
    p.End();
}

// --- Screen maps ------------------------------------------------------------------

// One BMS macro row: label (a map field's name is a declaration, a map's or
// map set's name a plain name), macro and operands as one word sequence.
qint32 Macro(TSourceFile& file, const QString& label, int labelType, const QString& macro,
             const QString& operands, const QString& fieldType = QString()) {
    QString text;
    if (label.isEmpty())
        text = QString(9, QLatin1Char(' '));
    else if (labelType == word::Declaration)
        text = QStringLiteral("[!%1:%2]").arg(label, fieldType) +
               QString(qMax(1, 9 - int(label.size())), QLatin1Char(' '));
    else
        text = QStringLiteral("[>%1]").arg(label) +
               QString(qMax(1, 9 - int(label.size())), QLatin1Char(' '));
    text += macro.leftJustified(6) + QLatin1Char(' ') + operands;
    return file.Emit(TSourceRow(text, TSourceRow::Flows::None, section::MapField, 0));
}

qint32 Field(TSourceFile& file, const QString& label, const QString& operands, int length) {
    return Macro(file, label, word::Declaration, QStringLiteral("DFHMDF"), operands,
                 QStringLiteral("X(%1)").arg(length));
}

void WriteCustSet(TEstate& estate, const TSuiteCopy& copy) {
    const QString setName = copy.Name(QStringLiteral("CUSTSET"));
    TSourceFile file(estate.Writer(),
                     estate.Find(Key("FILE", setName + QStringLiteral(".BMS"))).file, lang::Bms);
    TObjectInfo set = SubObjectInfo(setName, QStringLiteral("BMS Mapset"), icon::OtherObject);
    const qint32 setId = file.AddObject(set);
    TObjectInfo detail = SubObjectInfo(copy.Name(QStringLiteral("CUSTM1")),
                                       QStringLiteral("BMS Map"), icon::ScreenMap);
    detail.parent = setName;
    const qint32 detailId = file.AddObject(detail);
    TObjectInfo list = SubObjectInfo(copy.Name(QStringLiteral("CUSTM2")), QStringLiteral("BMS Map"),
                                     icon::ScreenMap);
    list.parent = setName;
    const qint32 listId = file.AddObject(list);

    file.At(setId);
    Macro(file, setName, word::Name, QStringLiteral("DFHMSD"),
          QStringLiteral("TYPE=&SYSPARM,MODE=INOUT,LANG=COBOL,CTRL=FREEKB,TIOAPFX=YES"));
    file.At(detailId);
    Macro(file, detail.name, word::Name, QStringLiteral("DFHMDI"),
          QStringLiteral("SIZE=(24,80),LINE=1,COLUMN=1"));
    Field(file, {},
          QStringLiteral("POS=(1,25),LENGTH=31,INITIAL='KORVANE BANK - CUSTOMER DETAILS',"
                         "ATTRB=(ASKIP,BRT)"),
          31);
    Field(file, {}, QStringLiteral("POS=(3,2),LENGTH=15,INITIAL='CUSTOMER NUMBER',ATTRB=ASKIP"),
          15);
    Field(file, QStringLiteral("CUSTNO"),
          QStringLiteral("POS=(3,20),LENGTH=8,ATTRB=(UNPROT,NUM,IC)"), 8);
    Field(file, {}, QStringLiteral("POS=(3,29),LENGTH=1,ATTRB=ASKIP"), 1);
    Field(file, {}, QStringLiteral("POS=(5,2),LENGTH=15,INITIAL='NAME',ATTRB=ASKIP"), 15);
    Field(file, QStringLiteral("CUSTNAM"), QStringLiteral("POS=(5,20),LENGTH=30,ATTRB=UNPROT"), 30);
    Field(file, {}, QStringLiteral("POS=(7,2),LENGTH=15,INITIAL='STATUS',ATTRB=ASKIP"), 15);
    Field(file, QStringLiteral("CUSTST"), QStringLiteral("POS=(7,20),LENGTH=1,ATTRB=UNPROT"), 1);
    Field(file, {}, QStringLiteral("POS=(9,2),LENGTH=15,INITIAL='BALANCE',ATTRB=ASKIP"), 15);
    Field(file, QStringLiteral("CUSTBAL"),
          QStringLiteral("POS=(9,20),LENGTH=18,PICOUT='ZZ,ZZZ,ZZZ,ZZ9.99-',ATTRB=(ASKIP,BRT)"), 18);
    Field(file, QStringLiteral("MSGLINE"),
          QStringLiteral("POS=(23,2),LENGTH=78,INITIAL='ENTER CUSTOMER NUMBER AND PRESS ENTER',"
                         "ATTRB=(ASKIP,BRT)"),
          78);
    file.At(listId);
    Macro(file, list.name, word::Name, QStringLiteral("DFHMDI"),
          QStringLiteral("SIZE=(24,80),LINE=1,COLUMN=1"));
    Field(file, {},
          QStringLiteral("POS=(1,28),LENGTH=24,INITIAL='KORVANE BANK - CUSTOMERS',"
                         "ATTRB=(ASKIP,BRT)"),
          24);
    Field(file, {}, QStringLiteral("POS=(3,2),LENGTH=40,INITIAL='NUMBER   NAME',ATTRB=ASKIP"), 40);
    for (int line = 1; line <= 3; ++line) {
        Field(file, QStringLiteral("LSTNO%1").arg(line),
              QStringLiteral("POS=(%1,2),LENGTH=8,ATTRB=ASKIP").arg(4 + line), 8);
        Field(file, QStringLiteral("LSTNAM%1").arg(line),
              QStringLiteral("POS=(%1,11),LENGTH=30,ATTRB=ASKIP").arg(4 + line), 30);
    }
    file.At(setId);
    Macro(file, {}, word::Name, QStringLiteral("DFHMSD"), QStringLiteral("TYPE=FINAL"));
    file.Emit(QStringLiteral("         END"), TSourceRow::Flows::None);
}

void WriteClmSet(TEstate& estate, const TSuiteCopy& copy) {
    const QString setName = copy.Name(QStringLiteral("CLMSET"));
    TSourceFile file(estate.Writer(),
                     estate.Find(Key("FILE", setName + QStringLiteral(".BMS"))).file, lang::Bms);
    const qint32 setId =
        file.AddObject(SubObjectInfo(setName, QStringLiteral("BMS Mapset"), icon::OtherObject));
    TObjectInfo map = SubObjectInfo(copy.Name(QStringLiteral("CLMM1")), QStringLiteral("BMS Map"),
                                    icon::ScreenMap);
    map.parent = setName;
    const qint32 mapId = file.AddObject(map);
    file.At(setId);
    Macro(file, setName, word::Name, QStringLiteral("DFHMSD"),
          QStringLiteral("TYPE=&SYSPARM,MODE=INOUT,LANG=COBOL,TIOAPFX=YES"));
    file.At(mapId);
    Macro(file, map.name, word::Name, QStringLiteral("DFHMDI"),
          QStringLiteral("SIZE=(24,80),LINE=1,COLUMN=1"));
    Field(file, {},
          QStringLiteral("POS=(1,24),LENGTH=33,INITIAL='KORVANE INSURANCE - REGISTER CLAIM',"
                         "ATTRB=(ASKIP,BRT)"),
          33);
    Field(file, {}, QStringLiteral("POS=(3,2),LENGTH=12,INITIAL='CLAIM NUMBER',ATTRB=ASKIP"), 12);
    Field(file, QStringLiteral("CLAIMNO"),
          QStringLiteral("POS=(3,20),LENGTH=10,ATTRB=(UNPROT,NUM,IC)"), 10);
    Field(file, {}, QStringLiteral("POS=(5,2),LENGTH=13,INITIAL='POLICY NUMBER',ATTRB=ASKIP"), 13);
    Field(file, QStringLiteral("POLNO"), QStringLiteral("POS=(5,20),LENGTH=12,ATTRB=UNPROT"), 12);
    Field(file, {}, QStringLiteral("POS=(7,2),LENGTH=9,INITIAL='LOSS DATE',ATTRB=ASKIP"), 9);
    Field(file, QStringLiteral("LOSSDT"), QStringLiteral("POS=(7,20),LENGTH=8,ATTRB=(UNPROT,NUM)"),
          8);
    Field(file, {}, QStringLiteral("POS=(9,2),LENGTH=6,INITIAL='AMOUNT',ATTRB=ASKIP"), 6);
    Field(file, QStringLiteral("CLMAMT"),
          QStringLiteral("POS=(9,20),LENGTH=15,PICOUT='ZZZ,ZZZ,ZZ9.99',ATTRB=UNPROT"), 15);
    Field(file, QStringLiteral("MSGLINE"),
          QStringLiteral("POS=(23,2),LENGTH=78,INITIAL='PF3 = EXIT  ENTER = REGISTER',ATTRB=ASKIP"),
          78);
    file.At(setId);
    Macro(file, {}, word::Name, QStringLiteral("DFHMSD"), QStringLiteral("TYPE=FINAL"));
    file.Emit(QStringLiteral("         END"), TSourceRow::Flows::None);
}

// --- Jobs and packages ----------------------------------------------------

// The nightly job stream is a package of its own: the job and its in-stream
// procedure. Steps are the entries.
void WriteNightlyJob(TEstate& estate, const TSuiteCopy& copy) {
    const QString jobName = copy.Name(QStringLiteral("NIGHTBAT"));
    const QString procName = copy.Name(QStringLiteral("POSTPROC"));
    TSourceFile file(estate.Writer(),
                     estate.Find(Key("FILE", jobName + QStringLiteral(".JCL"))).file, lang::Jcl);
    const QString packageName = copy.Name(QStringLiteral("NIGHTLY-BATCH"));
    const qint32 job = file.AddObject(
        SubObjectInfo(jobName, QStringLiteral("JCL Job"), icon::OtherObject, copy.batchPackage));
    const qint32 proc = file.AddObject(SubObjectInfo(procName, QStringLiteral("JCL Procedure"),
                                                     icon::OtherObject, copy.batchPackage));
    estate.Writer().Package(file.Id(), copy.batchPackage, packageName, jobName, file.Id(), job);
    estate.Writer().Package(file.Id(), copy.batchPackage, packageName, procName, file.Id(), proc);
    auto program = [&](const char* base) {
        return estate.Find(Key("PGM", copy.Name(QLatin1String(base))));
    };
    auto step = [&](qint32 object, qint32 entry, const QString& name, const QString& exec,
                    const TTarget& target) {
        file.AddEntry(object, entry, name, object == job ? jobName : procName);
        file.At(object, entry);
        TSourceRow row(QStringLiteral("//") + name.leftJustified(8) + QStringLiteral(" EXEC ") +
                           exec,
                       TSourceRow::Flows::None);
        row.Call(0, target);
        file.Emit(row);
    };

    file.At(job);
    file.Emit(QStringLiteral("//%1 JOB (ACCT),'NIGHTLY BATCH',CLASS=A,MSGCLASS=X")
                  .arg(jobName.leftJustified(8)),
              TSourceRow::Flows::None);
    file.Comment(QStringLiteral("//* NIGHTLY ACCOUNT UPDATE AND PAYMENT RUN"));
    file.At(proc);
    file.Emit(QStringLiteral("//%1 PROC").arg(procName.leftJustified(8)), TSourceRow::Flows::None);
    step(proc, 1, QStringLiteral("POST010"),
         QStringLiteral("PGM=[>%1]").arg(copy.Name(QStringLiteral("PAYPOST"))), program("PAYPOST"));
    file.Emit(QStringLiteral("//PAYLOG   DD SYSOUT=*"), TSourceRow::Flows::None);
    file.At(proc);
    file.Emit(QStringLiteral("//         PEND"), TSourceRow::Flows::None);
    step(job, 1, QStringLiteral("STEP010"),
         QStringLiteral("PGM=[>%1]").arg(copy.Name(QStringLiteral("ACCTUPD"))), program("ACCTUPD"));
    file.Emit(QStringLiteral("//CUSTMAST DD DSN=PROD.CUST.MASTER,DISP=SHR"),
              TSourceRow::Flows::None);
    step(job, 2, QStringLiteral("STEP020"),
         QStringLiteral("PGM=[>%1]").arg(copy.Name(QStringLiteral("PAYCALC"))), program("PAYCALC"));
    file.Emit(QStringLiteral("//PAYIN    DD DSN=PROD.PAYMENTS.DAILY,DISP=SHR"),
              TSourceRow::Flows::None);
    step(job, 3, QStringLiteral("STEP030"), QStringLiteral("[>%1]").arg(procName),
         TTarget{file.Id(), proc, 0});
}

// The account load module: a package of member objects spread over several
// files, one of which was never loaded.
void WriteLoadModule(TEstate& estate, const TSuiteCopy& copy) {
    const QString name = copy.Name(QStringLiteral("ACCTLOAD"));
    const qint32 file = estate.Find(Key("FILE", name + QStringLiteral(".LNK"))).file;
    for (const char* base : {"CUSTMAINT", "ACCTUPD", "ACCT"}) {
        const QString member = copy.Name(QLatin1String(base));
        const TTarget target = estate.Find(Key("PGM", member));
        estate.Writer().Package(file, copy.loadModulePackage, name, member, target.file,
                                target.object);
    }
    const TTarget custMaint = estate.Find(Key("PGM", copy.Name(QStringLiteral("CUSTMAINT"))));
    estate.Writer().Package(file, copy.loadModulePackage, name, QStringLiteral("WORK-AREAS"),
                            custMaint.file, 2);
    estate.Writer().Package(file, copy.loadModulePackage, name,
                            copy.Name(QStringLiteral("ACCTARCH")), 0, 0);
}

} // namespace

TCopybook DemoPaymentRecord(const TEstate& estate) {
    return PayRec(estate, TSuiteCopy{});
}

void PlanSuite(TEstate& estate, TSuiteCopy& copy) {
    copy.loadModulePackage = estate.NewPackageID();
    copy.batchPackage = estate.NewPackageID();
    auto file = [&](const char* base, const char* extension, const char* area, const char* kind,
                    int language, const TAssignment& assignment) {
        const QString name =
            copy.Name(QLatin1String(base)) + QLatin1Char('.') + QLatin1String(extension);
        const qint32 id = estate.AddFile(name, Directory(copy, area, kind), language, assignment);
        estate.Define(Key("FILE", name), TTarget{id, 0, 0});
        return id;
    };
    auto program = [&](const char* base, const char* area, const TAssignment& assignment) {
        const qint32 id = file(base, "CBL", area, "COBOL", lang::Cobol, assignment);
        estate.Define(Key("PGM", copy.Name(QLatin1String(base))), TTarget{id, 1, 0});
    };
    auto member = [&](const char* base, const char* area, const TAssignment& assignment) {
        const qint32 id = file(base, "CPY", area, "COPYLIB", lang::Copybook, assignment);
        estate.Define(Key("CPY", copy.Name(QLatin1String(base))), TTarget{id, 1, 0});
    };

    program("CUSTMAINT", "ACCOUNTS", copy.accounts);
    program("ACCT", "ACCOUNTS", copy.accounts);
    file("ACCT", "CPY", "ACCOUNTS", "COBOL", lang::Copybook, copy.accounts);
    program("ACCTUPD", "ACCOUNTS", copy.accounts);
    member("CUSTREC", "ACCOUNTS", copy.accounts);
    const qint32 custSet = file("CUSTSET", "BMS", "ACCOUNTS", "MAPS", lang::Bms, copy.accounts);
    estate.Define(Key("MAP", copy.Name(QStringLiteral("CUSTM1"))), TTarget{custSet, 2, 0});
    estate.Define(Key("MAP", copy.Name(QStringLiteral("CUSTM2"))), TTarget{custSet, 3, 0});
    file("ACCTLOAD", "LNK", "ACCOUNTS", "LINKLIB", lang::LinkEdit, copy.accounts);

    program("DATEUTIL", "PAYMENTS", copy.payments);
    program("PAYCALC", "PAYMENTS", copy.payments);
    program("PAYPOST", "PAYMENTS", copy.payments);
    member("PAYREC", "PAYMENTS", copy.payments);
    member("DATEPARM", "PAYMENTS", copy.payments);
    member("ERRFLDS", "PAYMENTS", copy.payments);
    member("ERRHNDL", "PAYMENTS", copy.payments);
    file("NIGHTBAT", "JCL", "PAYMENTS", "JCL", lang::Jcl, copy.payments);

    program("CLAIMREG", "CLAIMS", copy.claims);
    program("CLAIMPAY", "CLAIMS", copy.claims);
    const qint32 clmSet = file("CLMSET", "BMS", "CLAIMS", "MAPS", lang::Bms, copy.claims);
    estate.Define(Key("MAP", copy.Name(QStringLiteral("CLMM1"))), TTarget{clmSet, 2, 0});

    program("POLICYDB", "POLICIES", copy.policies);
    member("POLREC", "POLICIES", copy.policies);
}

void WriteSuite(TEstate& estate, const TSuiteCopy& copy) {
    WriteCustMaint(estate, copy);
    WriteAcct(estate, copy);
    WriteAcctLayout(estate, copy);
    WriteAcctUpd(estate, copy);
    WriteCopyMember(estate, copy, CustRec(estate, copy), 11);
    WriteCustSet(estate, copy);
    WriteLoadModule(estate, copy);
    WriteDateUtil(estate, copy);
    WritePayCalc(estate, copy);
    WritePayPost(estate, copy);
    WriteCopyMember(estate, copy, PayRec(estate, copy), 12);
    WriteCopyMember(estate, copy, DateParm(estate, copy), 13);
    WriteCopyMember(estate, copy, ErrFlds(estate, copy), 14);
    WriteCopyMember(estate, copy, ErrHndl(estate, copy), 15);
    WriteNightlyJob(estate, copy);
    WriteClaimReg(estate, copy);
    WriteClaimPay(estate, copy);
    WriteClmSet(estate, copy);
    WritePolicyDb(estate, copy);
    WriteCopyMember(estate, copy, PolRec(estate, copy), 16);
}

} // namespace sample
