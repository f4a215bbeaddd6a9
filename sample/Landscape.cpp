// The estate's single pieces around the suite: the general ledger (a COBOL
// posting program and Java classes with inheritance), the VisualAge Generator
// claim entry on a workstation, the bank and insurance databases, the date
// conversion routine, a test driver and a forgotten conversion program.
// The COBOL programs' texts are in sample/estate/landscape.

#include "CobolProgram.h"
#include "Estate.h"
#include "EstateCodes.h"

#include <memory>
#include <vector>

using namespace estate;

namespace sample {
namespace {

constexpr quint64 LandscapeStream = 1'000'000'000;

// --- Java classes ---------------------------------------------------------------

struct TJavaCall {
    int marker;                          // the n-th [>name] of the line
    const char* target;                  // "Class.method"
    const char* inheritedFrom = nullptr; // the call is possible through this class
    bool uncertain = false;
};

struct TJavaLine {
    const char* text;
    std::vector<TJavaCall> calls = {};
};

struct TJavaMethod {
    const char* name;
    const char* signature; // ends in ";" for a method without body
    std::vector<TJavaLine> body;
};

struct TJavaClass {
    const char* file;
    const char* name;
    const char* enclosing; // the class it is declared in, or ""
    const char* header;    // declaration up to the class name's end
    const char* inherits;
    const char* inheritsParent;
    const char* type;
    std::vector<const char*> fields;
    std::vector<TJavaMethod> methods;
};

// Inheritance: ReversalPosting -> Posting -> LedgerEntry; SavingsAccount ->
// Account; InterimStatement -> Account.Statement; BonusInterestRule ->
// InterestRule, found through Account's file; FxPosting -> CurrencyAmount and
// TaxStatement -> Reporting.Statement, both missing; LegacyAdapter and
// LegacyBridge inherit from each other.
const std::vector<TJavaClass>& JavaClasses() {
    static const std::vector<TJavaClass> classes = {
        {"LedgerEntry.java",
         "LedgerEntry",
         "",
         "public abstract class LedgerEntry implements Postable",
         "",
         "",
         "Java Class",
         {"protected long [!amountCents:long];", "protected long [!feeCents:long];",
          "protected String [!currency:String] = \"EUR\";", "protected int [!valueDate:int];"},
         {{"validate",
           "public void validate() {",
           {{"if ([amountCents] > [Postable.MAX_AMOUNT]) {"},
            {"    throw new IllegalStateException(\"amount exceeds limit\");"},
            {"}"}}},
          {"post", "public void post() {", {{"[>validate]();", {{0, "LedgerEntry.validate"}}}}}}},
        {"Posting.java",
         "Posting",
         "",
         "public class Posting extends LedgerEntry",
         "LedgerEntry",
         "",
         "Java Class",
         {"protected String [!accountNo:String];", "protected long [!netCents:long];"},
         {{"post",
           "@Override public void post() {",
           {{"[>validate]();", {{0, "LedgerEntry.validate"}}},
            {"[netCents] = [amountCents] - [feeCents];"},
            {"long [!total:long] = [netCents] + [feeCents];"},
            {"[>book]([&accountNo], [&total]);", {{0, "Posting.book"}}}}},
          {"book",
           "protected void book(String [!account:String], long [!cents:long]) {",
           {{"Account [!target:Account] = Account.[>find]([&account]);", {{0, "Account.find"}}},
            {"[target].[>credit]([&cents]);", {{0, "Account.credit"}}}}},
          {"reverse",
           "public void reverse() {",
           {{"[amountCents] = - [amountCents];"}, {"[feeCents] = 0;"}}}}},
        {"ReversalPosting.java",
         "ReversalPosting",
         "",
         "public class ReversalPosting extends Posting",
         "Posting",
         "",
         "Java Class",
         {"private String [!reason:String];"},
         {{"post",
           "@Override public void post() {",
           {{"[>reverse]();", {{0, "Posting.reverse"}}},
            {"super.[>post]();", {{0, "Posting.post"}}}}}}},
        {"FxPosting.java",
         "FxPosting",
         "",
         "public class FxPosting extends CurrencyAmount",
         "CurrencyAmount",
         "",
         "Java Class",
         {"private double [!rate:double];"},
         {{"convert",
           "public long convert(long [!cents:long]) {",
           {{"long [!converted:long] = Math.round([cents] * [rate]);"}, {"return [converted];"}}}}},
        {"Account.java",
         "Account",
         "",
         "public class Account",
         "",
         "",
         "Java Class",
         {"private String [!accountNo:String];", "protected long [!balanceCents:long];",
          "protected double [!interestRate:double];"},
         {{"credit",
           "public void credit(long [!cents:long]) {",
           {{"[balanceCents] = [balanceCents] + [cents];"}}},
          {"debit",
           "public void debit(long [!cents:long]) {",
           {{"[balanceCents] = [balanceCents] - [cents];"}}},
          {"find",
           "public static Account find(String [!number:String]) {",
           {{"Account [!found:Account] = new Account();"},
            {"[found.accountNo] = [number];"},
            {"return [found];"}}},
          {"statement",
           "public Statement statement() {",
           {{"Statement [!current:Statement] = new Statement();"},
            {"[current].[>print]();", {{0, "Statement.print"}}},
            {"return [current];"}}}}},
        {"Account.java",
         "Statement",
         "Account",
         "public static class Statement",
         "",
         "",
         "Java Class",
         {"private int [!period:int];", "private Line [!first:Line];"},
         {{"print",
           "public void print() {",
           {{"long [!sum:long] = [first].[>total]([&period]);", {{0, "Line.total"}}},
            {"System.out.println([sum]);"}}}}},
        {"Account.java",
         "Line",
         "Statement",
         "static class Line",
         "",
         "",
         "Java Class",
         {"private long [!amount:long];", "private Line [!next:Line];"},
         {{"total",
           "long total(int [!depth:int]) {",
           {{"if ([next] == null) {"},
            {"    return [amount];"},
            {"}"},
            {"return [amount] + [next].[>total]([&depth]);", {{0, "Line.total"}}}}}}},
        {"Account.java",
         "InterestRule",
         "",
         "class InterestRule",
         "",
         "",
         "Java Class",
         {"protected double [!rate:double] = 0.02;"},
         {{"apply",
           "long apply(long [!balance:long]) {",
           {{"long [!interest:long] = Math.round([balance] * [rate]);"}, {"return [interest];"}}}}},
        {"SavingsAccount.java",
         "SavingsAccount",
         "",
         "public class SavingsAccount extends Account",
         "Account",
         "",
         "Java Class",
         {"private double [!bonusRate:double];"},
         {{"addInterest",
           "public void addInterest() {",
           {{"long [!interest:long] = Math.round([balanceCents] * ([interestRate] + "
             "[bonusRate]));"},
            {"[>credit]([&interest]);", {{0, "Account.credit"}}}}}}},
        {"InterimStatement.java",
         "InterimStatement",
         "",
         "public class InterimStatement extends Account.Statement",
         "Statement",
         "Account",
         "Java Class",
         {},
         {{"print",
           "@Override public void print() {",
           {{"System.out.println(\"INTERIM STATEMENT\");"},
            {"super.[>print]();", {{0, "Statement.print"}}}}}}},
        {"BonusInterestRule.java",
         "BonusInterestRule",
         "",
         "public class BonusInterestRule extends InterestRule",
         "InterestRule",
         "Account",
         "Java Class",
         {},
         {{"apply",
           "@Override long apply(long [!balance:long]) {",
           {{"double [!bonus:double] = [rate] * 1.5;"},
            {"return Math.round([balance] * [bonus]);"}}}}},
        {"TaxStatement.java",
         "TaxStatement",
         "",
         "public class TaxStatement extends Reporting.Statement",
         "Statement",
         "Reporting",
         "Java Class",
         {"private int [!taxYear:int];"},
         {{"print", "@Override public void print() {", {{"System.out.println([taxYear]);"}}}}},
        {"LegacyAdapter.java",
         "LegacyAdapter",
         "",
         "public class LegacyAdapter extends LegacyBridge",
         "LegacyBridge",
         "",
         "Java Class",
         {},
         {{"adapt", "public void adapt() {", {{"[>bridge]();", {{0, "LegacyBridge.bridge"}}}}}}},
        {"LegacyBridge.java",
         "LegacyBridge",
         "",
         "public class LegacyBridge extends LegacyAdapter",
         "LegacyAdapter",
         "",
         "Java Class",
         {},
         {{"bridge", "public void bridge() {", {{"[>adapt]();", {{0, "LegacyAdapter.adapt"}}}}}}},
        {"Postable.java",
         "Postable",
         "",
         "public interface Postable",
         "",
         "",
         "Java Interface",
         {"long [!MAX_AMOUNT:long] = 100000000;"},
         {{"post", "void post();", {}}}},
        {"Auditable.java",
         "Auditable",
         "",
         "public interface Auditable",
         "",
         "",
         "Java Interface",
         {},
         {}},
        {"LedgerService.java",
         "LedgerService",
         "",
         "public class LedgerService",
         "",
         "",
         "Java Class",
         {"private Posting [!posting:Posting];",
          "private Account.Statement [!statement:Statement];",
          "private String [!adapterName:String] = \"com.korvane.legacy.LegacyAdapter\";"},
         {{"postAll",
           "public void postAll() {",
           {{"[posting].[>post]();",
             {{0, "Posting.post"}, {0, "ReversalPosting.post", "Posting"}}}}},
          {"printStatements",
           "public void printStatements() {",
           {{"[statement].[>print]();",
             {{0, "Statement.print"},
              {0, "InterimStatement.print", "Statement"},
              {0, "TaxStatement.print", "Statement"}}}}},
          {"loadAdapter",
           "public Object loadAdapter() throws Exception {",
           {{"Object [!adapter:Object] = Class.forName([adapterName]).[>newInstance]();",
             {{0, "LegacyAdapter.adapt", nullptr, true}}},
            {"return [adapter];"}}}}},
    };
    return classes;
}

QString JavaDirectory() {
    return QStringLiteral("D:\\ESTATE\\GROUP\\LEDGER\\JAVA\\com\\korvane\\ledger");
}

QString ClassKey(const char* name) {
    return QStringLiteral("CLS:") + QLatin1String(name);
}

QString MethodKey(const char* qualified) {
    return QStringLiteral("MTH:") + QLatin1String(qualified);
}

void PlanJava(TEstate& estate, const TLandscape& landscape) {
    QHash<QString, qint32> files;
    QHash<qint32, qint32> objects; // next object id per file
    for (const TJavaClass& def : JavaClasses()) {
        const QString fileName = QLatin1String(def.file);
        if (!files.contains(fileName))
            files.insert(fileName, estate.AddFile(fileName, JavaDirectory(), lang::Java,
                                                  landscape.ledgerJava));
        const qint32 file = files.value(fileName);
        const qint32 object = ++objects[file];
        estate.Define(ClassKey(def.name), TTarget{file, object, 0});
        qint32 entry = 0;
        for (const TJavaMethod& method : def.methods)
            estate.Define(MethodKey(def.name) + QLatin1Char('.') + QLatin1String(method.name),
                          TTarget{file, object, ++entry});
        estate.Define(QStringLiteral("JAVAFILE:") + fileName, TTarget{file, 0, 0});
    }
    const qint32 packageFile = estate.AddFile(QStringLiteral("package-info.java"), JavaDirectory(),
                                              lang::Java, landscape.ledgerJava);
    estate.Define(QStringLiteral("FILE:package-info.java"), TTarget{packageFile, 0, 0});
}

void WriteJavaClass(TEstate& estate, TSourceFile& file, const TJavaClass& def, int depth,
                    qint32 package, const QString& packageLine) {
    const TTarget self = estate.Find(ClassKey(def.name));
    TObjectInfo info;
    info.id = self.object;
    info.name = QLatin1String(def.name);
    info.identifier = info.name;
    info.type = QLatin1String(def.type);
    info.icon = icon::Class;
    info.parent = QLatin1String(def.enclosing);
    info.inherits = QLatin1String(def.inherits);
    info.inheritsParent = QLatin1String(def.inheritsParent);
    info.inPackage = package;
    file.AddObject(info);

    const QString indent(depth * 4, QLatin1Char(' '));
    file.At(self.object, 0);
    if (!packageLine.isEmpty())
        file.Emit(packageLine, TSourceRow::Flows::None);
    file.Emit(indent + QLatin1String(def.header) + QStringLiteral(" {"), TSourceRow::Flows::None);
    for (const char* field : def.fields)
        file.Emit(TSourceRow(indent + QStringLiteral("    ") + QLatin1String(field),
                             TSourceRow::Flows::Assignment, section::Field));
    qint32 entry = 0;
    for (const TJavaMethod& method : def.methods) {
        file.AddEntry(self.object, ++entry, QLatin1String(method.name), info.identifier);
        file.At(self.object, entry);
        const QString signature = QLatin1String(method.signature);
        file.Emit(TSourceRow(indent + QStringLiteral("    ") + signature, TSourceRow::Flows::None,
                             section::Local));
        for (const TJavaLine& line : method.body) {
            TSourceRow row(indent + QStringLiteral("        ") + QLatin1String(line.text),
                           TSourceRow::Flows::Assignment, section::Local);
            for (const TJavaCall& call : line.calls) {
                const TTarget target = estate.Find(MethodKey(call.target));
                if (call.uncertain) {
                    row.Call(call.marker, target, -1, 0);
                } else if (call.inheritedFrom) {
                    const TTarget through = estate.Find(ClassKey(call.inheritedFrom));
                    row.Call(call.marker, target, through.file, through.object);
                } else {
                    row.Call(call.marker, target);
                }
            }
            file.Emit(row);
        }
        if (!signature.endsWith(QLatin1Char(';')))
            file.Emit(indent + QStringLiteral("    }"), TSourceRow::Flows::None);
    }
    for (const TJavaClass& inner : JavaClasses())
        if (QLatin1String(inner.file) == QLatin1String(def.file) &&
            QLatin1String(inner.enclosing) == QLatin1String(def.name))
            WriteJavaClass(estate, file, inner, depth + 1, package, QString());
    file.At(self.object, 0);
    file.Emit(indent + QStringLiteral("}"), TSourceRow::Flows::None);
}

void WriteJava(TEstate& estate, const TLandscape& landscape) {
    const QString packageName = QStringLiteral("com.korvane.ledger");
    const qint32 packageFile = estate.Find(QStringLiteral("FILE:package-info.java")).file;
    QString currentFile;
    std::unique_ptr<TSourceFile> file;
    for (const TJavaClass& def : JavaClasses()) {
        // The package statement opens the file, as the first row of its first class.
        QString packageLine;
        if (QLatin1String(def.file) != currentFile) {
            currentFile = QLatin1String(def.file);
            file = std::make_unique<TSourceFile>(
                estate.Writer(), estate.Find(QStringLiteral("JAVAFILE:") + currentFile).file,
                lang::Java);
            packageLine = QStringLiteral("package ") + packageName + QLatin1Char(';');
        }
        const TTarget self = estate.Find(ClassKey(def.name));
        estate.Writer().Package(packageFile, landscape.ledgerPackage, packageName,
                                QLatin1String(def.name), self.file, self.object);
        if (QLatin1String(def.enclosing).size() == 0)
            WriteJavaClass(estate, *file, def, 0, landscape.ledgerPackage, packageLine);
    }
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
    PlanJava(estate, landscape);
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
    WriteJava(estate, landscape);
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
