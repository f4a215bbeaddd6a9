// The banking and insurance suite: customer accounts, payments, claims and
// policy administration, as COBOL programs with their copy members, BMS maps,
// the nightly job and the account load module. Copy 0 is the demo; each
// further copy is a region's variant with its own names, applications and
// packages, larger programs, and calls into the copy before it. The texts
// are in sample/estate/suite.

#include "CobolProgram.h"
#include "Estate.h"
#include "EstateCodes.h"
#include "SourceWriters.h"

using namespace estate;

namespace sample {
namespace {

enum class Part { Program, Member, Layout, MapSet, LoadModule, JobStream };

// The programs the generated rules of a program may call: the date utility
// of its own copy and that of the copy before, or only the latter.
enum class DateCalls { None, OwnAndPrevious, Previous };

// The files of a suite copy, in the order they are planned and written.
struct TSuiteFile {
    const char* base; // of the names of the file, its text and its program or member
    const char* extension;
    TAssignment TSuiteCopy::*assignment;
    const char* area;
    const char* kind;
    int language;
    Part part;
    int stream = 0; // a program's random stream
    bool inLoadModule = false;
    DateCalls dateCalls = DateCalls::None;
};

const TSuiteFile SuiteFiles[] = {
    {"CUSTMAINT", "CBL", &TSuiteCopy::accounts, "ACCOUNTS", "COBOL", lang::Cobol, Part::Program, 1,
     true, DateCalls::OwnAndPrevious},
    {"ACCT", "CBL", &TSuiteCopy::accounts, "ACCOUNTS", "COBOL", lang::Cobol, Part::Program, 2,
     true},
    {"ACCT", "CPY", &TSuiteCopy::accounts, "ACCOUNTS", "COBOL", lang::Copybook, Part::Layout},
    {"ACCTUPD", "CBL", &TSuiteCopy::accounts, "ACCOUNTS", "COBOL", lang::Cobol, Part::Program, 4,
     true, DateCalls::OwnAndPrevious},
    {"CUSTREC", "CPY", &TSuiteCopy::accounts, "ACCOUNTS", "COPYLIB", lang::Copybook, Part::Member},
    {"CUSTSET", "BMS", &TSuiteCopy::accounts, "ACCOUNTS", "MAPS", lang::Bms, Part::MapSet},
    {"ACCTLOAD", "LNK", &TSuiteCopy::accounts, "ACCOUNTS", "LINKLIB", lang::LinkEdit,
     Part::LoadModule},
    {"DATEUTIL", "CBL", &TSuiteCopy::payments, "PAYMENTS", "COBOL", lang::Cobol, Part::Program, 5,
     false, DateCalls::Previous},
    {"PAYCALC", "CBL", &TSuiteCopy::payments, "PAYMENTS", "COBOL", lang::Cobol, Part::Program, 6,
     false, DateCalls::OwnAndPrevious},
    {"PAYPOST", "CBL", &TSuiteCopy::payments, "PAYMENTS", "COBOL", lang::Cobol, Part::Program, 7,
     false, DateCalls::OwnAndPrevious},
    {"PAYREC", "CPY", &TSuiteCopy::payments, "PAYMENTS", "COPYLIB", lang::Copybook, Part::Member},
    {"DATEPARM", "CPY", &TSuiteCopy::payments, "PAYMENTS", "COPYLIB", lang::Copybook, Part::Member},
    {"ERRFLDS", "CPY", &TSuiteCopy::payments, "PAYMENTS", "COPYLIB", lang::Copybook, Part::Member},
    {"ERRHNDL", "CPY", &TSuiteCopy::payments, "PAYMENTS", "COPYLIB", lang::Copybook, Part::Member},
    {"NIGHTBAT", "JCL", &TSuiteCopy::payments, "PAYMENTS", "JCL", lang::Jcl, Part::JobStream},
    {"CLAIMREG", "CBL", &TSuiteCopy::claims, "CLAIMS", "COBOL", lang::Cobol, Part::Program, 8,
     false, DateCalls::OwnAndPrevious},
    {"CLAIMPAY", "CBL", &TSuiteCopy::claims, "CLAIMS", "COBOL", lang::Cobol, Part::Program, 9,
     false, DateCalls::OwnAndPrevious},
    {"CLMSET", "BMS", &TSuiteCopy::claims, "CLAIMS", "MAPS", lang::Bms, Part::MapSet},
    {"POLICYDB", "CBL", &TSuiteCopy::policies, "POLICIES", "COBOL", lang::Cobol, Part::Program, 10,
     false, DateCalls::OwnAndPrevious},
    {"POLREC", "CPY", &TSuiteCopy::policies, "POLICIES", "COPYLIB", lang::Copybook, Part::Member},
};

QString FileName(const TSuiteCopy& copy, const TSuiteFile& def) {
    return copy.Name(QLatin1String(def.base)) + QLatin1Char('.') + QLatin1String(def.extension);
}

TEstateText Text(const TSuiteCopy& copy, const TSuiteFile& def) {
    return TEstateText::Load(QStringLiteral("suite/") + QLatin1String(def.base) + QLatin1Char('.') +
                                 QString::fromLatin1(def.extension).toLower(),
                             copy.suffix);
}

QString Directory(const TSuiteCopy& copy, const TSuiteFile& def) {
    const QString region =
        copy.index == 0 ? QStringLiteral("HEAD-OFFICE")
                        : QStringLiteral("REGION-%1").arg(copy.index, 3, 10, QLatin1Char('0'));
    return QStringLiteral("D:\\ESTATE\\%1\\%2\\%3")
        .arg(region, QLatin1String(def.area), QLatin1String(def.kind));
}

QString Key(const char* kind, const QString& name) {
    return QLatin1String(kind) + QLatin1Char(':') + name;
}

std::vector<TCallable> DateCallables(const TEstate& estate, const TSuiteCopy& copy,
                                     DateCalls calls) {
    std::vector<TCallable> callables;
    const QString argument = QStringLiteral("DATE-PARMS");
    if (calls == DateCalls::OwnAndPrevious) {
        const QString name = copy.Name(QStringLiteral("DATEUTIL"));
        callables.push_back({name, estate.Find(Key("PGM", name)), argument});
    }
    if (calls != DateCalls::None && copy.index > 0) {
        const QString previous = QStringLiteral("DATEUTIL") + TSuiteCopy::SuffixOf(copy.index - 1);
        callables.push_back({previous, estate.Find(Key("PGM", previous)), argument});
    }
    return callables;
}

// The account load module: a package of member objects spread over several
// files, one of which was never loaded.
void WriteLoadModule(TEstate& estate, const TSuiteCopy& copy, qint32 file) {
    const QString name = copy.Name(QStringLiteral("ACCTLOAD"));
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

void WriteFile(TEstate& estate, const TSuiteCopy& copy, const TSuiteFile& def,
               const TCopyLibrary& library) {
    const QString name = copy.Name(QLatin1String(def.base));
    const qint32 id = estate.Find(Key("FILE", FileName(copy, def))).file;
    TSourceFile file(estate.Writer(), id, def.language);
    TRandom random = estate.Random(quint64(copy.index) * 100 + quint64(def.stream));
    switch (def.part) {
    case Part::Program: {
        TObjectInfo info = TObjectInfo::Named(name, "COBOL Program", icon::Program,
                                              def.inLoadModule ? copy.loadModulePackage : 0);
        TCobolProgram(estate, file, random, info, library)
            .WriteProgram(Text(copy, def), TRules{copy.extraParagraphsMin, copy.extraParagraphsMax,
                                                  DateCallables(estate, copy, def.dateCalls)});
        break;
    }
    case Part::Member:
        TCobolProgram(estate, file, random,
                      TObjectInfo::Named(name, "Copy Member", icon::CopyMember), library)
            .WriteMember(library.constFind(name)->text);
        break;
    case Part::Layout: {
        // The account program's record layout lives in a file of its own with
        // the same base name; its enclosing object is the program.
        TObjectInfo info =
            TObjectInfo::Named(QStringLiteral("ACCT-LAYOUT"), "Record Layout", icon::Record);
        info.parent = name;
        TCobolProgram(estate, file, random, info, library).WriteMember(Text(copy, def));
        break;
    }
    case Part::MapSet:
        WriteMapSet(estate, id, Text(copy, def));
        break;
    case Part::LoadModule:
        WriteLoadModule(estate, copy, id);
        break;
    case Part::JobStream:
        WriteJobStream(estate, id, Text(copy, def), copy.batchPackage,
                       copy.Name(QStringLiteral("NIGHTLY-BATCH")));
        break;
    }
}

} // namespace

TCopyLibrary SuiteCopyLibrary(const TEstate& estate, const TSuiteCopy& copy) {
    TCopyLibrary library;
    for (const TSuiteFile& def : SuiteFiles) {
        if (def.part != Part::Member)
            continue;
        const QString name = copy.Name(QLatin1String(def.base));
        library.insert(name, TCopybook{Text(copy, def), estate.Find(Key("CPY", name))});
    }
    return library;
}

void PlanSuite(TEstate& estate, TSuiteCopy& copy) {
    copy.loadModulePackage = estate.NewPackageID();
    copy.batchPackage = estate.NewPackageID();
    for (const TSuiteFile& def : SuiteFiles) {
        const QString name = FileName(copy, def);
        const qint32 id =
            estate.AddFile(name, Directory(copy, def), def.language, copy.*def.assignment);
        estate.Define(Key("FILE", name), TTarget{id, 0, 0});
        const QString base = copy.Name(QLatin1String(def.base));
        if (def.part == Part::Program)
            estate.Define(Key("PGM", base), TTarget{id, 1, 0});
        else if (def.part == Part::Member)
            estate.Define(Key("CPY", base), TTarget{id, 1, 0});
        else if (def.part == Part::MapSet)
            PlanMapSet(estate, id, Text(copy, def));
    }
}

void WriteSuite(TEstate& estate, const TSuiteCopy& copy) {
    const TCopyLibrary library = SuiteCopyLibrary(estate, copy);
    for (const TSuiteFile& def : SuiteFiles)
        WriteFile(estate, copy, def, library);
}

} // namespace sample
