// The banking and insurance suite: customer accounts, payments, claims and
// policy administration, as COBOL programs with their copy members, BMS maps,
// the nightly job and the account load module. Copy 0 is the demo; each
// further copy is a region's variant with its own names, applications and
// packages, larger programs, and calls into the copy before it. The texts
// are in sample/estate/suite.

#include "CobolProgram.h"
#include "Estate.h"
#include "EstateCodes.h"

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

TObjectInfo Info(const QString& name, const char* type, int objectIcon, qint32 inPackage = 0) {
    TObjectInfo info;
    info.name = name;
    info.identifier = name;
    info.type = QLatin1String(type);
    info.icon = objectIcon;
    info.inPackage = inPackage;
    return info;
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
        TObjectInfo info = Info(name, "COBOL Program", icon::Program,
                                def.inLoadModule ? copy.loadModulePackage : 0);
        TCobolProgram(estate, file, random, info, library)
            .WriteProgram(Text(copy, def), TRules{copy.extraParagraphsMin, copy.extraParagraphsMax,
                                                  DateCallables(estate, copy, def.dateCalls)});
        break;
    }
    case Part::Member:
        TCobolProgram(estate, file, random, Info(name, "Copy Member", icon::CopyMember), library)
            .WriteMember(library.constFind(name)->text);
        break;
    case Part::Layout: {
        // The account program's record layout lives in a file of its own with
        // the same base name; its enclosing object is the program.
        TObjectInfo info = Info(QStringLiteral("ACCT-LAYOUT"), "Record Layout", icon::Record);
        info.parent = name;
        TCobolProgram(estate, file, random, info, library).WriteMember(Text(copy, def));
        break;
    }
    case Part::MapSet:
        if (def.base == QLatin1String("CUSTSET"))
            WriteCustSet(estate, copy);
        else
            WriteClmSet(estate, copy);
        break;
    case Part::LoadModule:
        WriteLoadModule(estate, copy, id);
        break;
    case Part::JobStream:
        WriteNightlyJob(estate, copy);
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
        else if (def.part == Part::MapSet) {
            // The maps follow their map set, the file's first object.
            const QStringList maps =
                def.base == QLatin1String("CUSTSET")
                    ? QStringList{QStringLiteral("CUSTM1"), QStringLiteral("CUSTM2")}
                    : QStringList{QStringLiteral("CLMM1")};
            for (qsizetype i = 0; i < maps.size(); ++i)
                estate.Define(Key("MAP", copy.Name(maps[i])), TTarget{id, qint32(i) + 2, 0});
        }
    }
}

void WriteSuite(TEstate& estate, const TSuiteCopy& copy) {
    const TCopyLibrary library = SuiteCopyLibrary(estate, copy);
    for (const TSuiteFile& def : SuiteFiles)
        WriteFile(estate, copy, def, library);
}

} // namespace sample
