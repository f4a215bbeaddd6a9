// The estate's single pieces around the suite: the general ledger (a COBOL
// posting program and Java classes with inheritance), the VisualAge Generator
// claim entry on a workstation, the bank and insurance databases, the date
// conversion routine, a test driver and a forgotten conversion program. The
// texts are in sample/estate/landscape.

#include "CobolProgram.h"
#include "Estate.h"
#include "EstateCodes.h"
#include "SourceWriters.h"

using namespace estate;

namespace sample {
namespace {

constexpr quint64 LandscapeStream = 1'000'000'000;

enum class Part { Program, Java, JavaPackage, GeneratorSource, Tables, Assembler };

// The files in the order they are planned and written.
struct TLandscapeFile {
    const char* name;
    const char* text; // under estate/landscape; none for the Java package file
    const char* directory;
    int language;
    TAssignment TLandscape::*assignment; // none for an unassigned file
    Part part;
};

const char* const LedgerJava = "D:\\ESTATE\\GROUP\\LEDGER\\JAVA\\com\\korvane\\ledger";

// Inheritance among the Java classes: ReversalPosting -> Posting ->
// LedgerEntry; SavingsAccount -> Account; InterimStatement ->
// Account.Statement; BonusInterestRule -> InterestRule, found through
// Account's file; FxPosting -> CurrencyAmount and TaxStatement ->
// Reporting.Statement, both missing; LegacyAdapter and LegacyBridge inherit
// from each other.
const TLandscapeFile LandscapeFiles[] = {
    {"GLPOST.CBL", "GLPOST.cbl", "D:\\ESTATE\\GROUP\\LEDGER\\COBOL", lang::Cobol,
     &TLandscape::ledgerCobol, Part::Program},
    {"LedgerEntry.java", "java/LedgerEntry.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"Posting.java", "java/Posting.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"ReversalPosting.java", "java/ReversalPosting.java", LedgerJava, lang::Java,
     &TLandscape::ledgerJava, Part::Java},
    {"FxPosting.java", "java/FxPosting.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"Account.java", "java/Account.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"SavingsAccount.java", "java/SavingsAccount.java", LedgerJava, lang::Java,
     &TLandscape::ledgerJava, Part::Java},
    {"InterimStatement.java", "java/InterimStatement.java", LedgerJava, lang::Java,
     &TLandscape::ledgerJava, Part::Java},
    {"BonusInterestRule.java", "java/BonusInterestRule.java", LedgerJava, lang::Java,
     &TLandscape::ledgerJava, Part::Java},
    {"TaxStatement.java", "java/TaxStatement.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"LegacyAdapter.java", "java/LegacyAdapter.java", LedgerJava, lang::Java,
     &TLandscape::ledgerJava, Part::Java},
    {"LegacyBridge.java", "java/LegacyBridge.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"Postable.java", "java/Postable.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"Auditable.java", "java/Auditable.java", LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::Java},
    {"LedgerService.java", "java/LedgerService.java", LedgerJava, lang::Java,
     &TLandscape::ledgerJava, Part::Java},
    {"package-info.java", nullptr, LedgerJava, lang::Java, &TLandscape::ledgerJava,
     Part::JavaPackage},
    {"CLAIMS.ESF", "CLAIMS.esf", "C:\\VAGEN\\CLAIMS", lang::VisualAgeGenerator,
     &TLandscape::claimsWorkstation, Part::GeneratorSource},
    {"BANKDB.DDL", "BANKDB.sql", "D:\\ESTATE\\HEAD-OFFICE\\DATABASE", lang::SqlDdl,
     &TLandscape::bankData, Part::Tables},
    {"INSURDB.DDL", "INSURDB.sql", "D:\\ESTATE\\HEAD-OFFICE\\DATABASE", lang::SqlDdl,
     &TLandscape::insuranceData, Part::Tables},
    {"DATECONV.ASM", "DATECONV.asm", "D:\\ESTATE\\HEAD-OFFICE\\ASM", lang::Assembler,
     &TLandscape::dateRoutine, Part::Assembler},
    {"TESTDRV.CBL", "TESTDRV.cbl", "D:\\ESTATE\\DEVELOPMENT\\COBOL", lang::Cobol,
     &TLandscape::testDriver, Part::Program},
    {"OLDCONV.CBL", "OLDCONV.cbl", "D:\\ESTATE\\UNSORTED", lang::Cobol, nullptr, Part::Program},
};

TEstateText Text(const TLandscapeFile& def) {
    return TEstateText::Load(QStringLiteral("landscape/") + QLatin1String(def.text));
}

QString FileKey(const TLandscapeFile& def) {
    return QStringLiteral("FILE:") + QLatin1String(def.name);
}

} // namespace

void PlanLandscape(TEstate& estate, TLandscape& landscape) {
    landscape.ledgerPackage = estate.NewPackageID();
    for (const TLandscapeFile& def : LandscapeFiles) {
        const qint32 id =
            estate.AddFile(QLatin1String(def.name), QLatin1String(def.directory), def.language,
                           def.assignment ? landscape.*def.assignment : TAssignment{});
        estate.Define(FileKey(def), TTarget{id, 0, 0});
        switch (def.part) {
        case Part::Program:
            estate.Define(QStringLiteral("PGM:") +
                              QString::fromLatin1(def.name).section(QLatin1Char('.'), 0, 0),
                          TTarget{id, 1, 0});
            break;
        case Part::Java:
            PlanJava(estate, id, Text(def));
            break;
        case Part::JavaPackage:
            break;
        case Part::GeneratorSource:
            PlanGeneratorSource(estate, id, Text(def));
            break;
        case Part::Tables:
            PlanTables(estate, id, Text(def));
            break;
        case Part::Assembler:
            PlanAssembler(estate, id, Text(def));
            break;
        }
    }
}

void WriteLandscape(TEstate& estate, const TLandscape& landscape) {
    // The COBOL programs copy the demo's members.
    const TCopyLibrary library = SuiteCopyLibrary(estate, TSuiteCopy{});
    const qint32 packageFile = estate.Find(QStringLiteral("FILE:package-info.java")).file;
    quint64 programs = 0;
    for (const TLandscapeFile& def : LandscapeFiles) {
        const qint32 id = estate.Find(FileKey(def)).file;
        switch (def.part) {
        case Part::Program: {
            TSourceFile file(estate.Writer(), id, def.language);
            TRandom random = estate.Random(LandscapeStream + ++programs);
            TObjectInfo info;
            info.name = QString::fromLatin1(def.name).section(QLatin1Char('.'), 0, 0);
            info.type = QStringLiteral("COBOL Program");
            info.icon = icon::Program;
            TCobolProgram(estate, file, random, info, library).WriteProgram(Text(def), TRules{});
            break;
        }
        case Part::Java:
            WriteJava(estate, id, Text(def), landscape.ledgerPackage, packageFile);
            break;
        case Part::JavaPackage:
            break;
        case Part::GeneratorSource:
            WriteGeneratorSource(estate, id, Text(def));
            break;
        case Part::Tables:
            WriteTables(estate, id, Text(def));
            break;
        case Part::Assembler:
            WriteAssembler(estate, id, Text(def));
            break;
        }
    }
}

} // namespace sample
