// The estate's single pieces around the suite: the general ledger (a COBOL
// posting program and Java classes with inheritance), the VisualAge Generator
// claim entry on a workstation, the bank and insurance databases, the date
// conversion routine, a test driver and a forgotten conversion program.
// The COBOL programs' and Java classes' texts are in sample/estate/landscape.

#include "CobolProgram.h"
#include "Estate.h"
#include "EstateCodes.h"
#include "SourceWriters.h"

#include <memory>
#include <vector>

using namespace estate;

namespace sample {
namespace {

constexpr quint64 LandscapeStream = 1'000'000'000;

// --- Java classes ---------------------------------------------------------------

// Inheritance: ReversalPosting -> Posting -> LedgerEntry; SavingsAccount ->
// Account; InterimStatement -> Account.Statement; BonusInterestRule ->
// InterestRule, found through Account's file; FxPosting -> CurrencyAmount and
// TaxStatement -> Reporting.Statement, both missing; LegacyAdapter and
// LegacyBridge inherit from each other.
const char* const JavaClasses[] = {
    "LedgerEntry",    "Posting",          "ReversalPosting",   "FxPosting",    "Account",
    "SavingsAccount", "InterimStatement", "BonusInterestRule", "TaxStatement", "LegacyAdapter",
    "LegacyBridge",   "Postable",         "Auditable",         "LedgerService"};

QString JavaDirectory() {
    return QStringLiteral("D:\\ESTATE\\GROUP\\LEDGER\\JAVA\\com\\korvane\\ledger");
}

QString JavaFile(const char* name) {
    return QLatin1String(name) + QStringLiteral(".java");
}

TEstateText JavaText(const char* name) {
    return TEstateText::Load(QStringLiteral("landscape/java/") + JavaFile(name));
}

void PlanLedgerJava(TEstate& estate, const TLandscape& landscape) {
    for (const char* name : JavaClasses) {
        const qint32 file =
            estate.AddFile(JavaFile(name), JavaDirectory(), lang::Java, landscape.ledgerJava);
        estate.Define(QStringLiteral("FILE:") + JavaFile(name), TTarget{file, 0, 0});
        PlanJava(estate, file, JavaText(name));
    }
    const qint32 packageFile = estate.AddFile(QStringLiteral("package-info.java"), JavaDirectory(),
                                              lang::Java, landscape.ledgerJava);
    estate.Define(QStringLiteral("FILE:package-info.java"), TTarget{packageFile, 0, 0});
}

void WriteLedgerJava(TEstate& estate, const TLandscape& landscape) {
    const qint32 packageFile = estate.Find(QStringLiteral("FILE:package-info.java")).file;
    for (const char* name : JavaClasses)
        WriteJava(estate, estate.Find(QStringLiteral("FILE:") + JavaFile(name)).file,
                  JavaText(name), landscape.ledgerPackage, packageFile);
}

// --- VisualAge Generator ----------------------------------------------------------

void WriteClaimEntry(TEstate& estate) {
    const TTarget map = estate.Find(QStringLiteral("MAP:CLAIMENTRY"));
    TSourceFile file(estate.Writer(), map.file, lang::VisualAgeGenerator);
    TObjectInfo mapInfo;
    mapInfo.name = QStringLiteral("CLAIMENTRY");
    mapInfo.identifier = mapInfo.name;
    mapInfo.type = QStringLiteral("VAGen Map");
    mapInfo.icon = icon::ScreenMap;
    file.AddObject(mapInfo);
    TObjectInfo programInfo;
    programInfo.name = QStringLiteral("CLAIMVP");
    programInfo.identifier = programInfo.name;
    programInfo.type = QStringLiteral("VAGen Program");
    programInfo.icon = icon::Program;
    const qint32 program = file.AddObject(programInfo);

    // A constant field's text is the row after its definition; a variable
    // field's name comes last, after row, column and bytes.
    auto line = [&](const QString& text, int sectionType = section::MapField) {
        return file.Emit(TSourceRow(text, TSourceRow::Flows::Cobol, sectionType));
    };
    file.At(map.object);
    line(QStringLiteral(":map name=CLAIMENTRY group=CLMGRP size=24 80."));
    auto constant = [&](int row, int column, const QString& text) {
        line(QStringLiteral(":cfield row=%1 column=%2 bytes=%3")
                 .arg(row)
                 .arg(column)
                 .arg(text.size()));
        line(QLatin1Char('.') + text);
    };
    auto variable = [&](int row, int column, int bytes, const QString& name) {
        line(QStringLiteral(":vfield row=%1 column=%2 bytes=%3 name=[!%4:CHA(%3)]")
                 .arg(row)
                 .arg(column)
                 .arg(bytes)
                 .arg(name));
    };
    constant(1, 25, QStringLiteral("KORVANE INSURANCE - CLAIM ENTRY"));
    constant(3, 2, QStringLiteral("CLAIM NUMBER :"));
    variable(3, 20, 10, QStringLiteral("CLAIMNO"));
    constant(5, 2, QStringLiteral("POLICY NUMBER:"));
    variable(5, 20, 12, QStringLiteral("POLNO"));
    constant(7, 2, QStringLiteral("LOSS DATE    :"));
    variable(7, 20, 8, QStringLiteral("LOSSDATE"));
    constant(9, 2, QStringLiteral("AMOUNT       :"));
    variable(9, 20, 13, QStringLiteral("CLMAMT"));
    variable(23, 2, 78, QStringLiteral("MSGTEXT"));
    line(QStringLiteral(":emap."));

    file.At(program);
    line(QStringLiteral(":program name=CLAIMVP type=MAIN."), section::WorkingStorage);
    line(QStringLiteral(":record name=CLAIM-AREA type=WORKSTOR."), section::WorkingStorage);
    line(QStringLiteral("  :item name=[!CA-CLAIM-NO:NUM(10)]."), section::WorkingStorage);
    line(QStringLiteral("  :item name=[!CA-AMOUNT:NUM(13,2)]."), section::WorkingStorage);
    line(QStringLiteral(":erecord."), section::WorkingStorage);
    file.AddEntry(program, 1, QStringLiteral("MAIN-LOGIC"), programInfo.identifier);
    file.AddEntry(program, 2, QStringLiteral("VALIDATE-CLAIM"), programInfo.identifier);
    file.At(program, 1);
    line(QStringLiteral(":function name=MAIN-LOGIC."));
    TSourceRow converse(QStringLiteral("  CONVERSE [>CLAIMENTRY];"), TSourceRow::Flows::None);
    converse.Call(0, map);
    file.Emit(converse);
    line(QStringLiteral("  MOVE [CLAIMENTRY.CLAIMNO] TO [CA-CLAIM-NO];"));
    line(QStringLiteral("  MOVE [CLAIMENTRY.CLMAMT] TO [CA-AMOUNT];"));
    TSourceRow validate(QStringLiteral("  [>VALIDATE-CLAIM]();"), TSourceRow::Flows::None);
    validate.Call(0, TTarget{file.Id(), program, 2});
    file.Emit(validate);
    TSourceRow call(QStringLiteral("  CALL [>CLAIMREG] [&CLAIM-AREA];"), TSourceRow::Flows::None);
    call.Call(0, estate.Find(QStringLiteral("PGM:CLAIMREG")));
    file.Emit(call);
    line(QStringLiteral(":efunction."));
    file.At(program, 2);
    line(QStringLiteral(":function name=VALIDATE-CLAIM."));
    line(QStringLiteral("  IF [CLAIMENTRY.CLMAMT] > 100000;"));
    line(QStringLiteral("    MOVE 'AMOUNT NEEDS APPROVAL' TO [CLAIMENTRY.MSGTEXT];"));
    line(QStringLiteral("  END;"));
    line(QStringLiteral(":efunction."));
    file.At(program);
    line(QStringLiteral(":eprogram."));
}

// --- Databases and the date routine ---------------------------------------------

struct TColumn {
    const char* name;
    const char* type;
};

void WriteTables(TEstate& estate, const char* fileKey,
                 const std::vector<std::pair<const char*, std::vector<TColumn>>>& tables) {
    TSourceFile file(estate.Writer(), estate.Find(QLatin1String(fileKey)).file, lang::SqlDdl);
    for (const auto& [name, columns] : tables) {
        TObjectInfo info;
        info.name = QLatin1String(name);
        info.identifier = info.name;
        info.type = QStringLiteral("DB2 Table");
        info.icon = icon::Table;
        const qint32 table = file.AddObject(info);
        file.At(table);
        file.Emit(QStringLiteral("CREATE TABLE ") + info.name + QStringLiteral(" ("),
                  TSourceRow::Flows::None);
        for (const TColumn& column : columns) {
            const QString columnName = QLatin1String(column.name);
            const QString type = QLatin1String(column.type);
            file.Emit(
                TSourceRow(QStringLiteral("    [!%1:%2]").arg(columnName, type) +
                               QString(qMax(1, 16 - int(columnName.size())), QLatin1Char(' ')) +
                               type.leftJustified(15) + QStringLiteral("NOT NULL,"),
                           TSourceRow::Flows::None, section::Column));
        }
        file.Emit(QStringLiteral("    PRIMARY KEY (%1)").arg(QLatin1String(columns.front().name)),
                  TSourceRow::Flows::None);
        file.Emit(QStringLiteral(");"), TSourceRow::Flows::None);
    }
}

void WriteDateConv(TEstate& estate) {
    const TTarget routine = estate.Find(QStringLiteral("FUN:DATECONV"));
    TSourceFile file(estate.Writer(), routine.file, lang::Assembler);
    TObjectInfo info;
    info.name = QStringLiteral("DATECONV");
    info.identifier = info.name;
    info.type = QStringLiteral("Assembler Function");
    info.icon = icon::Function;
    file.AddObject(info);
    file.At(routine.object);
    file.Emit(QStringLiteral("DATECONV CSECT"), TSourceRow::Flows::None);
    file.Comment(QStringLiteral("* CONVERTS A YYYYMMDD DATE INTO A LILIAN DAY NUMBER"));
    for (const char* line :
         {"         STM   14,12,12(13)", "         BALR  12,0", "         USING *,12",
          "         LM    2,3,0(1)", "         PACK  WORK,0(8,2)", "         CVB   4,WORK",
          "         S     4,=F'1721425'", "         ST    4,0(3)", "         LM    14,12,12(13)",
          "         SR    15,15", "         BR    14", "WORK     DS    D",
          "         END   DATECONV"})
        file.Emit(QString(QLatin1String(line)), TSourceRow::Flows::None);
}

// --- COBOL programs outside the suite -------------------------------------

void WriteProgram(TEstate& estate, const TCopyLibrary& library, const QString& name,
                  quint64 stream) {
    const TTarget self = estate.Find(QStringLiteral("PGM:") + name);
    TSourceFile file(estate.Writer(), self.file, lang::Cobol);
    TRandom random = estate.Random(LandscapeStream + stream);
    TObjectInfo info;
    info.name = name;
    info.type = QStringLiteral("COBOL Program");
    info.icon = icon::Program;
    TCobolProgram(estate, file, random, info, library)
        .WriteProgram(
            TEstateText::Load(QStringLiteral("landscape/") + name + QStringLiteral(".cbl")),
            TRules{});
}

} // namespace

void PlanLandscape(TEstate& estate, TLandscape& landscape) {
    landscape.ledgerPackage = estate.NewPackageID();
    const qint32 ledger = estate.AddFile(QStringLiteral("GLPOST.CBL"),
                                         QStringLiteral("D:\\ESTATE\\GROUP\\LEDGER\\COBOL"),
                                         lang::Cobol, landscape.ledgerCobol);
    estate.Define(QStringLiteral("PGM:GLPOST"), TTarget{ledger, 1, 0});
    PlanLedgerJava(estate, landscape);
    const qint32 claims =
        estate.AddFile(QStringLiteral("CLAIMS.ESF"), QStringLiteral("C:\\VAGEN\\CLAIMS"),
                       lang::VisualAgeGenerator, landscape.claimsWorkstation);
    estate.Define(QStringLiteral("MAP:CLAIMENTRY"), TTarget{claims, 1, 0});
    const qint32 bank = estate.AddFile(QStringLiteral("BANKDB.DDL"),
                                       QStringLiteral("D:\\ESTATE\\HEAD-OFFICE\\DATABASE"),
                                       lang::SqlDdl, landscape.bankData);
    estate.Define(QStringLiteral("FILE:BANKDB.DDL"), TTarget{bank, 0, 0});
    estate.Define(QStringLiteral("TAB:ACCOUNTS"), TTarget{bank, 1, 0});
    estate.Define(QStringLiteral("TAB:PAYMENTS"), TTarget{bank, 2, 0});
    const qint32 insurance = estate.AddFile(QStringLiteral("INSURDB.DDL"),
                                            QStringLiteral("D:\\ESTATE\\HEAD-OFFICE\\DATABASE"),
                                            lang::SqlDdl, landscape.insuranceData);
    estate.Define(QStringLiteral("FILE:INSURDB.DDL"), TTarget{insurance, 0, 0});
    estate.Define(QStringLiteral("TAB:POLICY"), TTarget{insurance, 1, 0});
    estate.Define(QStringLiteral("TAB:CLAIM"), TTarget{insurance, 2, 0});
    const qint32 routine = estate.AddFile(QStringLiteral("DATECONV.ASM"),
                                          QStringLiteral("D:\\ESTATE\\HEAD-OFFICE\\ASM"),
                                          lang::Assembler, landscape.dateRoutine);
    estate.Define(QStringLiteral("FUN:DATECONV"), TTarget{routine, 1, 0});
    const qint32 driver = estate.AddFile(QStringLiteral("TESTDRV.CBL"),
                                         QStringLiteral("D:\\ESTATE\\DEVELOPMENT\\COBOL"),
                                         lang::Cobol, landscape.testDriver);
    estate.Define(QStringLiteral("PGM:TESTDRV"), TTarget{driver, 1, 0});
    const qint32 conversion =
        estate.AddFile(QStringLiteral("OLDCONV.CBL"), QStringLiteral("D:\\ESTATE\\UNSORTED"),
                       lang::Cobol, TAssignment{});
    estate.Define(QStringLiteral("PGM:OLDCONV"), TTarget{conversion, 1, 0});
}

void WriteLandscape(TEstate& estate, const TLandscape& landscape) {
    // The COBOL programs copy the demo's members.
    const TCopyLibrary library = SuiteCopyLibrary(estate, TSuiteCopy{});
    WriteProgram(estate, library, QStringLiteral("GLPOST"), 1);
    WriteLedgerJava(estate, landscape);
    WriteClaimEntry(estate);
    WriteTables(estate, "FILE:BANKDB.DDL",
                {{"ACCOUNTS",
                  {{"ACCT_NO", "CHAR(10)"},
                   {"CUST_ID", "INTEGER"},
                   {"ACCT_TYPE", "CHAR(2)"},
                   {"BALANCE", "DECIMAL(13,2)"},
                   {"OPENED", "DATE"}}},
                 {"PAYMENTS",
                  {{"PAY_ID", "DECIMAL(10)"},
                   {"ACCT_NO", "CHAR(10)"},
                   {"AMOUNT", "DECIMAL(13,2)"},
                   {"VALUE_DATE", "DATE"}}}});
    WriteTables(estate, "FILE:INSURDB.DDL",
                {{"POLICY",
                  {{"POLICY_NO", "CHAR(12)"},
                   {"HOLDER_ID", "INTEGER"},
                   {"PRODUCT", "CHAR(4)"},
                   {"PREMIUM", "DECIMAL(9,2)"},
                   {"SUM_INSURED", "DECIMAL(13,2)"},
                   {"STATUS", "CHAR(1)"},
                   {"START_DATE", "DATE"}}},
                 {"CLAIM",
                  {{"CLAIM_NO", "DECIMAL(10)"},
                   {"POLICY_NO", "CHAR(12)"},
                   {"LOSS_DATE", "DATE"},
                   {"RESERVE", "DECIMAL(13,2)"},
                   {"STATUS", "CHAR(1)"}}}});
    WriteDateConv(estate);
    WriteProgram(estate, library, QStringLiteral("TESTDRV"), 2);
    WriteProgram(estate, library, QStringLiteral("OLDCONV"), 3);
}

} // namespace sample
