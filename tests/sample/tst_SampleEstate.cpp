// The sample estate, checked with SQL for what the views rely on: references
// that resolve (apart from the deliberate gaps), every repository code the
// views give a meaning to, the shape of screen-map tokens, and that the same
// scale and seed always give the same estate. Also how source texts become
// rows and words, and that a faulty text is reported by name.
#include "CobolProgram.h"
#include "EstateWriter.h"
#include "SampleEstate.h"
#include "SourceFile.h"
#include "SourceWriters.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositorySchema.h"
#include "support/Failure.h"
#include "support/RunProgram.h"
#include "support/TestRepository.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

const char* const Tables[] = {"QXFILE",         "QXOBJECT",  "QXENTRY",     "QXROW",      "QXWORD",
                              "QXDEPENDENCIES", "QXPACKAGE", "QXATTRIBUTE", "QXDATAFLOW", "QXLOAD"};

// A repository in a temporary SQLite file: its tables empty, or holding an
// estate of that scale and seed.
class TRepository {
public:
    TRepository() = default;
    TRepository(int scale, quint32 seed) {
        QSqlDatabase db = Db();
        RepositorySchema::DropTables(db);
        FCounts = BuildSampleEstate(db, SampleEstateOptions{scale, seed, {}, {}});
    }

    QSqlDatabase Db() const { return FRepository.Db(); }
    const QString& Location() const { return FRepository.Location(); }
    const SampleEstateCounts& Counts() const { return FCounts; }

    // The first column of the query's rows, joined by blanks.
    QString Column(const QString& sql) const {
        QSqlQuery query(Db());
        if (!query.exec(sql))
            qFatal("%s: %s", qPrintable(sql), qPrintable(query.lastError().text()));
        QStringList values;
        while (query.next())
            values << query.value(0).toString();
        return values.join(QLatin1Char(' '));
    }
    qint64 Scalar(const QString& sql) const { return Column(sql).toLongLong(); }

    // Digest of a table's contents in load order.
    QByteArray Digest(const char* table) const {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        QSqlQuery query(Db());
        query.setForwardOnly(true);
        query.exec(QStringLiteral("SELECT * FROM %1 ORDER BY QXSeq").arg(QLatin1String(table)));
        while (query.next())
            for (int i = 0; i < query.record().count(); ++i)
                hash.addData(query.value(i).toString().toUtf8() + '\x1f');
        return hash.result();
    }

private:
    TestRepository FRepository;
    SampleEstateCounts FCounts;
};

// References that must resolve: records of the child table for which no
// parent record matches. A join term is "COLUMN" for columns named alike in
// both tables, or "CHILD=PARENT".
struct TReference {
    const char* name;
    const char* child;
    const char* parent;
    const char* join;
    const char* where = "1 = 1"; // on the child, as c
};

const TReference References[] = {
    {"object without file", "QXOBJECT", "QXFILE", "QXFileID"},
    {"entry without object", "QXENTRY", "QXOBJECT", "QXFileID QXObjectID"},
    {"row without object", "QXROW", "QXOBJECT", "QXFileID QXObjectID"},
    {"row without entry", "QXROW", "QXENTRY", "QXFileID QXObjectID QXEntryID", "c.QXEntryID > 0"},
    {"word without row", "QXWORD", "QXROW", "QXFileID QXObjectID QXEntryID QXRowID"},
    {"call from a word that is not there", "QXDEPENDENCIES", "QXWORD",
     "QXFromFileID=QXFileID QXFromObjectID=QXObjectID QXFromEntryID=QXEntryID QXFromRowID=QXRowID "
     "QXFromWordID=QXWordID"},
    {"QXCall row without call", "QXROW", "QXDEPENDENCIES",
     "QXFileID=QXFromFileID QXRowID=QXFromRowID", "c.QXCall = 1"},
    {"call to a missing object", "QXDEPENDENCIES", "QXOBJECT", "QXFileID QXObjectID"},
    {"call to a missing entry", "QXDEPENDENCIES", "QXENTRY", "QXFileID QXObjectID QXEntryID",
     "c.QXEntryID > 0"},
    {"inherited call through a missing object", "QXDEPENDENCIES", "QXOBJECT",
     "QXInheritsFileID=QXFileID QXInheritsObjectID=QXObjectID", "c.QXInheritsFileID > 0"},
    {"data flow to a missing word", "QXDATAFLOW", "QXWORD", "QXFileID QXRowID QXWordID"},
    {"data flow from a missing word", "QXDATAFLOW", "QXWORD",
     "QXFromFileID=QXFileID QXFromRowID=QXRowID QXFromWordID=QXWordID"},
    {"package in a missing file", "QXPACKAGE", "QXFILE", "QXFileID"},
    {"object in a package it is not a member of", "QXOBJECT", "QXPACKAGE",
     "QXInPackage=QXPackageID QXFileID=QXObjectFileID QXObjectID", "c.QXInPackage > 0"},
};

QString ReferenceQuery(const TReference& reference) {
    QStringList terms;
    for (const QString& term : QString::fromLatin1(reference.join).split(QLatin1Char(' '))) {
        const QString child = term.section(QLatin1Char('='), 0, 0);
        terms << QStringLiteral("p.%1 = c.%2").arg(term.section(QLatin1Char('='), -1), child);
    }
    return QStringLiteral(
               "SELECT COUNT(*) FROM %1 c WHERE %2 AND NOT EXISTS (SELECT 1 FROM %3 p WHERE %4)")
        .arg(QLatin1String(reference.child), QLatin1String(reference.where),
             QLatin1String(reference.parent), terms.join(QLatin1String(" AND ")));
}

// Further rules, each query counting the records that break it.
const std::pair<const char*, const char*> Consistency[] = {
    {"row id used twice in a file",
     "SELECT COUNT(*) FROM (SELECT 1 FROM QXROW GROUP BY QXFileID, QXRowID HAVING COUNT(*) > 1) d"},
    {"word of another language than its file",
     "SELECT COUNT(*) FROM QXWORD w JOIN QXFILE f ON f.QXFileID = w.QXFileID WHERE w.QXLanguageID "
     "<> f.QXLanguageID"},
    {"call from a row without QXCall",
     "SELECT COUNT(*) FROM QXDEPENDENCIES d JOIN QXROW r ON r.QXFileID = d.QXFromFileID AND "
     "r.QXRowID = d.QXFromRowID WHERE r.QXCall <> 1"},
    {"file assigned to a missing or wrong attribute",
     "SELECT COUNT(*) FROM QXFILE f WHERE (f.QXSystemID > 0 AND NOT EXISTS (SELECT 1 FROM "
     "QXATTRIBUTE a WHERE a.QXAttributeID = f.QXSystemID AND a.QXAttributeType = 1)) OR "
     "(f.QXComputerID > 0 AND NOT EXISTS (SELECT 1 FROM QXATTRIBUTE a WHERE a.QXAttributeID = "
     "f.QXComputerID AND a.QXAttributeType = 2)) OR (f.QXApplicationID > 0 AND NOT EXISTS (SELECT "
     "1 FROM QXATTRIBUTE a WHERE a.QXAttributeID = f.QXApplicationID AND a.QXAttributeType = 3))"},
    {"package id with two files or names",
     "SELECT COUNT(*) FROM (SELECT 1 FROM QXPACKAGE GROUP BY QXPackageID HAVING COUNT(DISTINCT "
     "QXFileID) > 1 OR COUNT(DISTINCT QXPackageName) > 1) d"},
    {"package member with another name",
     "SELECT COUNT(*) FROM QXPACKAGE p JOIN QXOBJECT o ON o.QXFileID = p.QXObjectFileID AND "
     "o.QXObjectID = p.QXObjectID WHERE o.QXObjectName <> p.QXObjectName"},
    {"sub-object without enclosing object in its file or a sibling file",
     "SELECT COUNT(*) FROM QXOBJECT s JOIN QXFILE sf ON sf.QXFileID = s.QXFileID WHERE "
     "s.QXSubObjectParentName <> '' AND NOT EXISTS (SELECT 1 FROM QXOBJECT p JOIN QXFILE pf ON "
     "pf.QXFileID = p.QXFileID WHERE p.QXObjectIdentifier = s.QXSubObjectParentName AND p.QXIcon "
     "<> -1 AND Upper(pf.QXFileName) LIKE Upper(substr(sf.QXFileName, 1, instr(sf.QXFileName, "
     "'.'))) || '%')"},
    {"hidden part without visible object or COPY dependency",
     "SELECT COUNT(*) FROM QXOBJECT h WHERE h.QXIcon = -1 AND NOT EXISTS (SELECT 1 FROM QXOBJECT v "
     "JOIN QXDEPENDENCIES d ON d.QXFromFileID = v.QXFileID AND d.QXFromObjectID = v.QXObjectID AND "
     "d.QXFromEntryID = 0 WHERE v.QXObjectName = h.QXObjectName AND v.QXIcon <> -1 AND d.QXFileID "
     "= h.QXFileID AND d.QXObjectID = h.QXObjectID AND d.QXEntryID = 0)"},
    {"load record not matching its file and attributes",
     "SELECT COUNT(*) FROM QXFILE f LEFT JOIN QXLOAD l ON l.QXLoadID = f.QXFileID LEFT JOIN "
     "QXATTRIBUTE s ON s.QXAttributeID = f.QXSystemID LEFT JOIN QXATTRIBUTE c ON c.QXAttributeID = "
     "f.QXComputerID LEFT JOIN QXATTRIBUTE a ON a.QXAttributeID = f.QXApplicationID WHERE "
     "l.QXLoadID IS NULL OR l.QXFileName <> f.QXFileName OR l.QXDirectory <> f.QXDirectory OR "
     "l.QXLanguageID <> f.QXLanguageID OR l.QXSystemName <> COALESCE(s.QXAttributeName, '') OR "
     "l.QXApplicationName <> COALESCE(a.QXAttributeName, '') OR (CASE WHEN l.QXComputerLocation = "
     "'' THEN l.QXComputerType ELSE l.QXComputerType || '@' || l.QXComputerLocation END) <> "
     "COALESCE(c.QXAttributeName, '')"},
};

void CheckReferences(const TRepository& estate, int scale) {
    for (const TReference& reference : References)
        QVERIFY2(estate.Scalar(ReferenceQuery(reference)) == 0, reference.name);
    for (const auto& [name, sql] : Consistency)
        QVERIFY2(estate.Scalar(QLatin1String(sql)) == 0, name);
    // The deliberate gaps: one unloaded load-module member per suite copy,
    // and the two ancestors that the object contents expansion cannot find
    // by identifier and enclosing name, nor in the enclosing object's file.
    QCOMPARE(estate.Column(
                 QStringLiteral("SELECT p.QXObjectName FROM QXPACKAGE p WHERE NOT EXISTS (SELECT 1 "
                                "FROM QXOBJECT o WHERE o.QXFileID = p.QXObjectFileID AND "
                                "o.QXObjectID = p.QXObjectID) ORDER BY p.QXSeq")),
             QString::fromLatin1(scale == 1 ? "ACCTARCH" : "ACCTARCH ACCTARCH-1"));
    QCOMPARE(estate.Column(QStringLiteral(
                 "SELECT o.QXInheritsParentName || '.' || o.QXObjectInherits FROM QXOBJECT o WHERE "
                 "o.QXObjectInherits <> '' AND NOT EXISTS (SELECT 1 FROM QXOBJECT a WHERE "
                 "a.QXObjectIdentifier = o.QXObjectInherits AND a.QXSubObjectParentName = "
                 "o.QXInheritsParentName) AND NOT EXISTS (SELECT 1 FROM QXOBJECT p JOIN QXOBJECT a "
                 "ON a.QXFileID = p.QXFileID WHERE p.QXObjectIdentifier = o.QXInheritsParentName "
                 "AND a.QXObjectIdentifier = o.QXObjectInherits) ORDER BY 1")),
             QStringLiteral(".CurrencyAmount Reporting.Statement"));
}

// korvane-sample, run to the end (its exit code; -1 when it crashed), or
// killed as soon as it reports its first regional copy.
QString SampleProgram() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/korvane-sample");
}

int RunSample(const QStringList& arguments) {
    QProcess process;
    process.start(SampleProgram(), arguments);
    if (!process.waitForFinished(120000))
        qFatal("korvane-sample did not finish");
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

bool KillSampleMidBuild(const QStringList& arguments) {
    QProcess process;
    process.setReadChannel(QProcess::StandardError); // where the progress goes
    process.start(SampleProgram(), arguments);
    QByteArray progress;
    while (!progress.contains("regional copy") && process.waitForReadyRead(60000))
        progress += process.readAllStandardError();
    process.kill();
    process.waitForFinished();
    return progress.contains("regional copy") && process.exitStatus() == QProcess::CrashExit;
}

QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSampleEstate : public QObject {
    Q_OBJECT

private slots:
    // How a source line template becomes words, calls and data flows: word
    // types, the sections of declarations and call arguments, and the flows
    // from word to word.
    void sourceRow_data() {
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("flows");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("sections"); // word, section, level, type text
        QTest::addColumn<QString>("dataFlows");
        auto row = [](const char* name, const char* source, TSourceRow::Flows flows,
                      const char* text, const char* words, const char* sections,
                      const char* dataFlows) {
            QTest::newRow(name) << QString(source) << int(flows) << QString(text) << QString(words)
                                << QString(sections) << QString(dataFlows);
        };
        const auto cobol = TSourceRow::Flows::Cobol;
        const auto assignment = TSourceRow::Flows::Assignment;
        row("qualified move, qualifier first", "MOVE [CUST-NAME OF CUSTREC] TO [WS-NAME].", cobol,
            "MOVE CUST-NAME OF CUSTREC TO WS-NAME.",
            "MOVE/1 CUSTREC/1012 OF/10 CUST-NAME/1012 TO/1 WS-NAME/1012 ./2", "", "4>6");
        row("compute flows right to left", "COMPUTE [A] ROUNDED = [B] + [C IN R] * 2", cobol,
            "COMPUTE A ROUNDED = B + C IN R * 2",
            "COMPUTE/1 A/1012 ROUNDED/1 =/2 B/1012 +/2 R/1012 IN/10 C/1012 */2 2/3", "", "5>2 9>2");
        row("subtract flows around FROM", "SUBTRACT [A] FROM [B]", cobol, "SUBTRACT A FROM B",
            "SUBTRACT/1 A/1012 FROM/1 B/1012", "", "2>4");
        row("SQL SET flows right to left", "SET [T.A] = [T.A] + :[B]", cobol, "SET T.A = T.A + :B",
            "SET/1 T/1012 ./10 A/1012 =/2 T/1012 ./10 A/1012 +/2 :/2 B/1012", "", "8>4 11>4");
        // Written with its quotes as they stand, on either database.
        row("move of a literal has no flow", "MOVE 'NOT FOUND' TO [MSG]", cobol,
            "MOVE 'NOT FOUND' TO MSG", "MOVE/1 '/1001 NOT/1001 FOUND/1001 '/1001 TO/1 MSG/1012", "",
            "");
        row("declaration keeps its picture whole",
            "01  [!WS-A:PIC S9(5) COMP-3]  PIC S9(5) COMP-3.", TSourceRow::Flows::None,
            "01  WS-A  PIC S9(5) COMP-3.", "01/3 WS-A/1011 PIC/1 S9(5)/1 COMP-3/1 ./2",
            "WS-A 22 5 PIC S9(5) COMP-3", "");
        row("call with arguments", "CALL [>'DATEUTIL'] USING [&DATE-PARMS]", cobol,
            "CALL 'DATEUTIL' USING DATE-PARMS",
            "CALL/1 '/1001 DATEUTIL/1001 '/1001 USING/1 DATE-PARMS/1012", "DATE-PARMS 24 0", "");
        row("assignment with a declaration", "long [!total:long] = [net] + [Fees.fee];", assignment,
            "long total = net + Fees.fee;",
            "long/1 total/1011 =/2 net/1012 +/2 Fees/1012 ./10 fee/1012 ;/2", "total 22 5 long",
            "4>2 8>2");
        row("comparison is no assignment", "if ([next] == [last]) {", assignment,
            "if (next == last) {", "if/1 (/2 next/1012 =/2 =/2 last/1012 )/2 {/2", "", "");
    }

    void sourceRow() {
        QFETCH(QString, source);
        QFETCH(int, flows);
        const TRepository repository;
        QSqlDatabase db = repository.Db();
        TEstateWriter writer(db, {});
        TSourceFile file(writer, 7, 20100);
        file.At(2, 3);
        TSourceRow row(source, TSourceRow::Flows(flows), 22, 5);
        for (int marker = 0; marker < row.CallCount(); ++marker)
            row.Call(marker, TTarget{8, 9, 1});
        QCOMPARE(file.Emit(row), 1);
        writer.Flush();
        QTEST(repository.Column(QStringLiteral("SELECT QXRow FROM QXROW")), "text");
        QTEST(repository.Column(QStringLiteral(
                  "SELECT QXWord || '/' || QXWordType FROM QXWORD WHERE QXFileID = 7 AND "
                  "QXObjectID = 2 AND QXEntryID = 3 AND QXRowID = 1 ORDER BY QXWordID")),
              "words");
        QTEST(repository.Column(QStringLiteral(
                  "SELECT QXWord || ' ' || QXSectionType || ' ' || QXSectionLevel || rtrim(' ' || "
                  "QXObjectIdentifier) FROM QXWORD WHERE QXSectionType > 0")),
              "sections");
        QTEST(repository.Column(QStringLiteral(
                  "SELECT QXFromWordID || '>' || QXWordID FROM QXDATAFLOW WHERE QXFileID = 7 AND "
                  "QXFromFileID = 7 AND QXRowID = 1 AND QXFromRowID = 1 ORDER BY QXSeq")),
              "dataFlows");
        // A call is made by its marked word, from a row marked as calling.
        QCOMPARE(repository.Column(QStringLiteral(
                     "SELECT d.QXFileID || ',' || d.QXObjectID || ',' || d.QXEntryID || ' from ' "
                     "|| QXFromFileID || ',' || QXFromObjectID || ',' || QXFromEntryID || ',' || "
                     "QXFromRowID || ',' || QXFromWordID || ' ' || r.QXCall FROM QXDEPENDENCIES d "
                     "JOIN QXROW r ON r.QXRowID = QXFromRowID")),
                 QLatin1String(row.CallCount() ? "8,9,1 from 7,2,3,1,3 1" : ""));
    }

    // A faulty text stops the estate with an error naming the text and its
    // line, and for a copy member the COPY that copied it.
    void faultyTextsAreNamed() {
        const TRepository repository;
        QSqlDatabase db = repository.Db();
        TEstateWriter writer(db, {});
        TEstate estate(writer, 1);
        TSourceFile file(writer, 1, 20100);
        TRandom random(1);
        TObjectInfo info;
        info.name = QStringLiteral("BAD");
        TCopyLibrary library;
        library.insert(
            QStringLiteral("BROKEN"),
            TCopybook{TEstateText(QStringLiteral("estate/BROKEN.cpy"),
                                  QStringLiteral("       01  BROKEN.\n           05  B PIC.")),
                      TTarget{2, 1, 0}});
        auto program = [&](const char* statement) {
            return FailureOf([&] {
                       const QString text =
                           QStringLiteral(
                               "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. BAD.\n     "
                               "  PROCEDURE DIVISION.\n%1\n       END PROGRAM BAD.")
                               .arg(QLatin1String(statement));
                       TCobolProgram(estate, file, random, info, library)
                           .WriteProgram(TEstateText(QStringLiteral("estate/BAD.cbl"), text, "-1"),
                                         TRules{});
                   })
                .Message;
        };
        const QString bad = "Sample estate: estate/BAD.cbl line 4: ";
        const QString unclosed = program("           MOVE [A TO [B]");
        QVERIFY2(unclosed.startsWith(bad + "a [ that does not close"), qPrintable(unclosed));
        QCOMPARE(program("           MOVE [{A] TO [B]"), bad + "unclosed placeholder");
        QCOMPARE(program("           PERFORM [>NOWHERE]"), bad + "nothing called NOWHERE");
        QCOMPARE(program("           COPY BROKEN."),
                 bad + "estate/BROKEN.cpy line 2: not a data description entry: 05  B PIC.");
        const QString java = "package p;\nclass A {\n    void f() {\n        [>f]();\n    }\n}";
        QCOMPARE(
            FailureOf([&] {
                sample::WriteJava(estate, 1, TEstateText("estate/A.java", java), 1, 2);
            }).Message,
            QString("Sample estate: estate/A.java line 4: a call word without a note //@ calls"));
        QCOMPARE(FailureOf([] { TEstateText::Load("suite/NOSUCH.cbl"); }).Message,
                 QString("Sample estate: the resource estate/suite/NOSUCH.cbl is missing"));
    }

    void initTestCase() { FDemo = std::make_unique<TRepository>(1, 1); }
    void cleanupTestCase() { FDemo.reset(); }

    void demoReferencesResolveAndCountsAreTrue() {
        CheckReferences(*FDemo, 1);
        const SampleEstateCounts& counts = FDemo->Counts();
        QVERIFY(counts.files >= 24 && counts.files <= 60);
        const qint64 reported[] = {counts.files,    counts.objects,    counts.entries,
                                   counts.rows,     counts.words,      counts.dependencies,
                                   counts.packages, counts.attributes, counts.dataflows,
                                   counts.loads};
        for (std::size_t i = 0; i < std::size(Tables); ++i)
            QVERIFY2(FDemo->Scalar(QStringLiteral("SELECT COUNT(*) FROM ") +
                                   QLatin1String(Tables[i])) == reported[i],
                     Tables[i]);
    }

    void demoHasEveryCode_data() {
        QTest::addColumn<QString>("sql");
        // A query, or what follows "SELECT COUNT(*) FROM " in one.
        auto add = [](const char* name, const char* sql) {
            const QString text = QString::fromLatin1(sql);
            QTest::newRow(name) << (text.startsWith(QLatin1String("SELECT"))
                                        ? text
                                        : QStringLiteral("SELECT COUNT(*) FROM ") + text);
        };
        // Attributes and assignments
        add("computers with icons 2 to 8", "SELECT COUNT(DISTINCT QXIcon) >= 3 FROM QXATTRIBUTE "
                                           "WHERE QXAttributeType = 2 AND QXIcon BETWEEN 2 AND 8");
        add("applications with icons 9 and 10",
            "SELECT COUNT(DISTINCT QXIcon) = 2 FROM QXATTRIBUTE WHERE QXAttributeType = 3 AND "
            "QXIcon IN (9, 10)");
        add("icon-49 computer with files but no application",
            "QXATTRIBUTE a JOIN QXFILE f ON f.QXComputerID = a.QXAttributeID WHERE a.QXIcon = 49 "
            "AND a.QXAttributeType <> 3 AND f.QXApplicationID = 0");
        add("system without files",
            "QXATTRIBUTE a WHERE a.QXAttributeType = 1 AND NOT EXISTS (SELECT 1 FROM QXFILE f "
            "WHERE f.QXSystemID = a.QXAttributeID)");
        add("computer without location",
            "QXATTRIBUTE a JOIN QXFILE f ON f.QXComputerID = a.QXAttributeID WHERE "
            "a.QXAttributeType = 2 AND instr(a.QXAttributeName, '@') = 0");
        add("unassigned file",
            "QXFILE WHERE QXSystemID = 0 AND QXComputerID = 0 AND QXApplicationID = 0");
        // Objects
        add("every object icon",
            "SELECT COUNT(DISTINCT QXIcon) = 12 FROM QXOBJECT WHERE QXIcon IN (-1, 14, 16, 18, 20, "
            "22, 39, 43, 50, 51, 52, 54)");
        add("icon-50 name in two files",
            "(SELECT QXObjectName FROM QXOBJECT WHERE QXIcon = 50 GROUP BY QXObjectName HAVING "
            "COUNT(DISTINCT QXFileID) > 1) d");
        add("sub-object whose parent is in a sibling file",
            "QXOBJECT s JOIN QXFILE sf ON sf.QXFileID = s.QXFileID JOIN QXOBJECT p ON "
            "p.QXObjectIdentifier = s.QXSubObjectParentName AND p.QXFileID <> s.QXFileID JOIN "
            "QXFILE pf ON pf.QXFileID = p.QXFileID WHERE substr(pf.QXFileName, 1, "
            "instr(pf.QXFileName, '.')) = substr(sf.QXFileName, 1, instr(sf.QXFileName, '.'))");
        add("sub-object of a sub-object",
            "QXOBJECT s JOIN QXOBJECT p ON p.QXFileID = s.QXFileID AND p.QXObjectIdentifier = "
            "s.QXSubObjectParentName WHERE p.QXSubObjectParentName <> ''");
        add("hidden part with entries", "QXOBJECT o JOIN QXENTRY e ON e.QXFileID = o.QXFileID AND "
                                        "e.QXObjectID = o.QXObjectID WHERE o.QXIcon = -1");
        // Packages
        add("packages that are files of their own and packages of member objects",
            "SELECT COUNT(DISTINCT p.QXObjectFileID = p.QXFileID) = 2 FROM QXPACKAGE p WHERE "
            "p.QXSeq = (SELECT MIN(q.QXSeq) FROM QXPACKAGE q WHERE q.QXPackageID = p.QXPackageID)");
        add("icon-50 package member",
            "QXPACKAGE p JOIN QXOBJECT o ON o.QXFileID = p.QXObjectFileID AND o.QXObjectID = "
            "p.QXObjectID WHERE o.QXIcon = 50");
        // Inheritance
        add("chain of three",
            "QXOBJECT a JOIN QXOBJECT b ON b.QXObjectIdentifier = a.QXObjectInherits JOIN QXOBJECT "
            "c ON c.QXObjectIdentifier = b.QXObjectInherits WHERE c.QXObjectInherits = ''");
        add("ancestor found only through its enclosing object's file",
            "QXOBJECT o JOIN QXOBJECT p ON p.QXObjectIdentifier = o.QXInheritsParentName JOIN "
            "QXOBJECT a ON a.QXFileID = p.QXFileID AND a.QXObjectIdentifier = o.QXObjectInherits "
            "WHERE a.QXSubObjectParentName <> o.QXInheritsParentName");
        add("cycle", "QXOBJECT a JOIN QXOBJECT b ON b.QXObjectIdentifier = a.QXObjectInherits "
                     "WHERE b.QXObjectInherits = a.QXObjectIdentifier");
        // Calls
        add("inherited and uncertain calls", "SELECT SUM(QXInheritsFileID > 0) > 0 AND "
                                             "SUM(QXInheritsFileID < 0) > 0 FROM QXDEPENDENCIES");
        add("paragraph performing itself",
            "QXDEPENDENCIES WHERE QXFileID = QXFromFileID AND QXObjectID = QXFromObjectID AND "
            "QXEntryID = QXFromEntryID AND QXEntryID > 0");
        add("programs calling each other",
            "QXDEPENDENCIES a JOIN QXDEPENDENCIES b ON b.QXFromFileID = a.QXFileID AND "
            "b.QXFromObjectID = a.QXObjectID AND b.QXFileID = a.QXFromFileID AND b.QXObjectID = "
            "a.QXFromObjectID WHERE a.QXFileID <> a.QXFromFileID");
        add("entry calling a whole icon-52 program",
            "QXDEPENDENCIES d JOIN QXOBJECT o ON o.QXFileID = d.QXFileID AND o.QXObjectID = "
            "d.QXObjectID WHERE o.QXIcon = 52 AND d.QXEntryID = 0 AND d.QXFromEntryID > 0");
        // Variables and data flows
        add("declarations, all with type text and section",
            "SELECT COUNT(*) > 0 AND SUM(QXObjectIdentifier = '' OR QXSectionType = 0) = 0 FROM "
            "QXWORD WHERE QXWordType = 1011");
        add("declaration inside an entry", "QXWORD WHERE QXWordType = 1011 AND QXEntryID > 0");
        add("qualifiers OF, IN and .",
            "SELECT COUNT(DISTINCT q.QXWord) = 3 FROM QXWORD q JOIN QXWORD n ON n.QXFileID = "
            "q.QXFileID AND n.QXRowID = q.QXRowID AND n.QXWordID = q.QXWordID + 1 WHERE "
            "q.QXWordType = 10 AND n.QXWordType = 1012 AND q.QXWord IN ('OF', 'IN', '.')");
        add("use qualified by its declaring object",
            "QXWORD q JOIN QXWORD op ON op.QXFileID = q.QXFileID AND op.QXRowID = q.QXRowID AND "
            "op.QXWordID = q.QXWordID + 1 AND op.QXWordType = 10 JOIN QXWORD n ON n.QXFileID = "
            "q.QXFileID AND n.QXRowID = q.QXRowID AND n.QXWordID = q.QXWordID + 2 JOIN QXOBJECT o "
            "ON o.QXObjectIdentifier = q.QXWord JOIN QXWORD d ON d.QXFileID = o.QXFileID AND "
            "d.QXObjectID = o.QXObjectID AND d.QXWordType = 1011 AND d.QXWord = n.QXWord");
        add("data flow across rows", "QXDATAFLOW WHERE QXRowID <> QXFromRowID");
        // A call argument after the call's word that the called program
        // declares in a copied part, where it passes it on in a data flow.
        add("data flow chain across programs",
            "QXWORD a JOIN QXDEPENDENCIES d ON d.QXFromFileID = a.QXFileID AND d.QXFromRowID = "
            "a.QXRowID AND d.QXFromWordID < a.QXWordID JOIN QXDEPENDENCIES inc ON inc.QXFromFileID "
            "= d.QXFileID AND inc.QXFromObjectID = d.QXObjectID AND inc.QXFromEntryID = 0 AND "
            "inc.QXEntryID = 0 JOIN QXWORD decl ON decl.QXFileID = inc.QXFileID AND "
            "decl.QXObjectID = inc.QXObjectID AND decl.QXWordType = 1011 AND decl.QXWord = "
            "a.QXWord WHERE a.QXSectionType = 24 AND d.QXFileID <> a.QXFileID AND EXISTS (SELECT 1 "
            "FROM QXWORD u JOIN QXDATAFLOW f ON f.QXFromFileID = u.QXFileID AND f.QXFromRowID = "
            "u.QXRowID AND f.QXFromWordID = u.QXWordID WHERE u.QXFileID = d.QXFileID AND "
            "u.QXObjectID = d.QXObjectID AND u.QXWordType = 1012 AND u.QXWord = a.QXWord)");
        // Screen maps
        add("VisualAge Generator and BMS map words",
            "SELECT COUNT(DISTINCT w.QXLanguageID) = 2 FROM QXWORD w JOIN QXOBJECT o ON o.QXFileID "
            "= w.QXFileID AND o.QXObjectID = w.QXObjectID WHERE o.QXIcon = 16 AND w.QXLanguageID "
            "IN (20500, 20525)");
        add("labelled BMS field",
            "QXWORD l JOIN QXWORD m ON m.QXFileID = l.QXFileID AND m.QXRowID = l.QXRowID AND "
            "m.QXWordID = l.QXWordID + 1 WHERE l.QXWordType = 1011 AND m.QXWord = 'DFHMDF'");
    }

    void demoHasEveryCode() {
        QFETCH(QString, sql);
        QVERIFY2(FDemo->Scalar(sql) > 0, qPrintable(sql));
    }

    // The demo's data flows as korvane-cli opens them: a reserve passed by
    // CALL ... USING reaches a data set field of the called program (image 47)
    // through a use qualified by the data set; a use qualified by its
    // declaring data set counts BottomUp; a nested program's parameter gets
    // its value from a line outside its scope; an SQL procedure's parameter
    // reaches a column of its file's table; a use declared in a copy member is
    // found, one declared nowhere in scope lands among the other rows. Each
    // case's lines (text, tab, image) appear in this order.
    void demoDataFlowsAsTheViewOpensThem_data() {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("call into a data set")
            << "--object CLAIMREG --variable CLAIM-RESERVE --depth 3"
            << QStringList{"     RESERVE as DECIMAL(13,2) [CLAIM]\t47",
                           "     CLAIM-RESERVE as PIC S9(11)V99 COMP-3 [CLAIMPAY]\t37",
                           "       IR-RESERVE as PIC S9(11)V99 COMP-3 [CLMINST]\t47",
                           "      MOVE CLAIM-RESERVE TO IR-RESERVE OF CLMINST [CLAIMPAY]\t0",
                           "    CALL 'CLAIMPAY' USING CLAIM-AREA CLAIM-RESERVE. [CLAIMREG]\t0"};
        QTest::newRow("qualified by its data set")
            << "--object CLMINST --variable IR-RESERVE --direction BottomUp --depth 2"
            << QStringList{"  As used in CLAIMPAY\t48",
                           "     CLAIM-RESERVE as PIC S9(11)V99 COMP-3 [CLAIMPAY]\t35",
                           "    MOVE CLAIM-RESERVE TO IR-RESERVE OF CLMINST [CLAIMPAY]\t0"};
        QTest::newRow("line outside the called program")
            << "--object PAYROUND --variable LK-AMOUNT --direction BottomUp --depth 2"
            << QStringList{"  As used in Declaration Scope\t36",
                           "    --- Other rows of interest ---",
                           "    Source missing for called object\t0"};
        QTest::newRow("within an SQL file")
            << "--object BOOK_PAYMENT --variable P_AMOUNT --depth 2"
            << QStringList{"  As used in Declaration Scope\t35",
                           "     BALANCE as DECIMAL(13,2) [ACCOUNTS]\t47",
                           "    SET BALANCE = BALANCE + P_AMOUNT [BOOK_PAYMENT]\t0"};
        QTest::newRow("copy member and no declaration")
            << "--object PAYCALC --variable PAY-NET --depth 2"
            << QStringList{"  As used in PAYCALC\t35",
                           "     PAY-NET as PIC S9(11)V99 COMP-3 [PAYREC]\t37",
                           "    CALL 'PAYPOST' USING PAYREC [PAYCALC]\t0",
                           "    --- Other rows of interest ---",
                           "    CALL 'PAYROUND' USING PAY-NET WA-ROUNDED [PAYCALC]\t0",
                           "  As used in PAYPOST\t35"};
    }

    void demoDataFlowsAsTheViewOpensThem() {
        QFETCH(QString, arguments);
        QFETCH(QStringList, lines);
        if (!QFileInfo::exists(QCoreApplication::applicationDirPath() + "/korvane-cli"))
            QSKIP("korvane-cli is not built");
        const ProgramRun run = RunProgram("korvane-cli", QStringList{"flow", FDemo->Location()} +
                                                             arguments.split(' '));
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        qsizetype next = 0;
        for (const QString& node : run.Out.split('\n')) {
            const QString shown = node.section('\t', 0, 1);
            if (next < lines.size() && shown == lines[next])
                ++next;
        }
        QVERIFY2(next == lines.size(),
                 qPrintable(lines.value(next) + "\nnot found in order in:\n" + run.Out));
    }

    // The form viewer counts words from the last keyword: the value of POS's
    // line is the third word after it, the column the fifth, LENGTH's value
    // the second; a VisualAge value is the second word after its keyword.
    void screenMapTokensLineUpWithTheViewer() {
        const QString word =
            QStringLiteral("(SELECT v.QXWord FROM QXWORD v WHERE v.QXFileID = k.QXFileID AND "
                           "v.QXRowID = k.QXRowID AND v.QXWordID = k.QXWordID + %1)");
        auto misplaced = [&](int language, const char* keyword, int offset) {
            return FDemo->Scalar(
                QStringLiteral("SELECT COUNT(*) FROM QXWORD k WHERE k.QXLanguageID = %1 AND "
                               "k.QXWord = '%2' AND NOT (%3 GLOB '[0-9]*')")
                    .arg(language)
                    .arg(QLatin1String(keyword), word.arg(offset)));
        };
        // One LENGTH is a symbol on purpose: the viewer leaves that width unset.
        const std::tuple<int, const char*, int, int> counted[] = {
            {20500, "row", 2, 0}, {20500, "column", 2, 0}, {20500, "bytes", 2, 0},
            {20525, "POS", 3, 0}, {20525, "POS", 5, 0},    {20525, "LENGTH", 2, 1}};
        for (const auto& [language, keyword, offset, expected] : counted)
            QVERIFY2(misplaced(language, keyword, offset) == expected, keyword);
        QCOMPARE(FDemo->Scalar("SELECT COUNT(DISTINCT QXWord) FROM QXWORD WHERE QXLanguageID = "
                               "20525 AND QXWord IN ('=', '(', ',', ')')"),
                 4);
        // A VisualAge constant: "." three words after "bytes", first on its row.
        QVERIFY(FDemo->Scalar("SELECT COUNT(*) FROM QXWORD k JOIN QXWORD d ON d.QXFileID = "
                              "k.QXFileID AND d.QXRowID = k.QXRowID + 1 AND d.QXWordID = 1 AND "
                              "d.QXWord = '.' WHERE k.QXWord = 'bytes' AND k.QXLanguageID = 20500 "
                              "AND k.QXWordID + 2 = (SELECT MAX(QXWordID) FROM QXWORD e WHERE "
                              "e.QXFileID = k.QXFileID AND e.QXRowID = k.QXRowID)") >= 4);
        // The viewer passes over the word after a literal: a field's label
        // must not follow a literal that ends the row before it.
        QCOMPARE(FDemo->Scalar("SELECT COUNT(*) FROM QXWORD l JOIN QXWORD p ON p.QXFileID = "
                               "l.QXFileID AND p.QXObjectID = l.QXObjectID AND p.QXRowID = "
                               "l.QXRowID - 1 WHERE l.QXLanguageID = 20525 AND l.QXWordType = "
                               "1011 AND p.QXWordType = 1001 AND p.QXWordID = (SELECT "
                               "MAX(QXWordID) FROM QXWORD e WHERE e.QXFileID = p.QXFileID AND "
                               "e.QXRowID = p.QXRowID)"),
                 0);
    }

    // The same scale and seed give the same estate; another seed other
    // contents in the same structure, another scale more of it.
    void seedDecidesTheContentsScaleTheSize() {
        const TRepository again(1, 1);
        const TRepository otherSeed(1, 2);
        bool differs = false;
        for (const char* table : Tables) {
            QVERIFY2(again.Digest(table) == FDemo->Digest(table), table);
            differs = differs || otherSeed.Digest(table) != FDemo->Digest(table);
        }
        QVERIFY(differs);
        QCOMPARE(otherSeed.Counts().files, FDemo->Counts().files);
        QCOMPARE(otherSeed.Counts().objects, FDemo->Counts().objects);
        CheckReferences(otherSeed, 1);

        // At scale 2 a regional copy follows the demo, whose file ids it
        // keeps, and calls into the demo's suite.
        const TRepository larger(2, 1);
        CheckReferences(larger, 2);
        QVERIFY(larger.Scalar("SELECT COUNT(*) FROM QXDEPENDENCIES d JOIN QXFILE t ON t.QXFileID = "
                              "d.QXFileID JOIN QXFILE c ON c.QXFileID = d.QXFromFileID WHERE "
                              "c.QXFileName LIKE '%-1.CBL' AND t.QXFileName = 'DATEUTIL.CBL'") > 0);
        QCOMPARE(larger.Column("SELECT QXFileName FROM QXFILE WHERE QXFileID <= " +
                               QString::number(FDemo->Counts().files) + " ORDER BY QXFileID"),
                 FDemo->Column("SELECT QXFileName FROM QXFILE ORDER BY QXFileID"));
    }

    // korvane-sample: exit codes, refusal to overwrite, replacement with
    // --force, and no half-written file left behind.
    void commandLine() {
        const QString program = QCoreApplication::applicationDirPath() + "/korvane-sample";
        if (!QFileInfo::exists(program))
            QSKIP("korvane-sample is not built");
        QTemporaryDir dir;
        const QString target = dir.filePath(QStringLiteral("demo.kvdb"));
        auto run = [&](const QStringList& arguments) {
            QProcess process;
            process.start(program, arguments);
            if (!process.waitForFinished(60000))
                qFatal("korvane-sample did not finish");
            return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        };
        const QStringList badUsage[] = {{},
                                        {QStringLiteral("--scale"), QStringLiteral("0"), target},
                                        {QStringLiteral("--colour"), target},
                                        {target, target}};
        for (const QStringList& arguments : badUsage)
            QCOMPARE(run(arguments), 2);
        QVERIFY(!QFileInfo::exists(target));

        QCOMPARE(run({target}), 0);
        const qint64 size = QFileInfo(target).size();
        QVERIFY(size > 0);
        QCOMPARE(run({target}), 1);
        QCOMPARE(run({QStringLiteral("--force"), QStringLiteral("--scale=2"), target}), 0);
        QVERIFY(QFileInfo(target).size() > size);
        QCOMPARE(run({dir.filePath(QStringLiteral("missing/estate.kvdb"))}), 1);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("demo.kvdb")});
    }

    // A killed run costs nothing: a SQLite target stays as it was, and so do
    // the tables of a PostgreSQL schema until the new estate is complete.
    // What the killed run left behind is cleared by the next run.
    void killedRunsLeaveTheEstateThatWasThere() {
        if (!QFileInfo::exists(SampleProgram()))
            QSKIP("korvane-sample is not built");
        QTemporaryDir dir;
        const QString target = dir.filePath(QStringLiteral("estate.kvdb"));
        QCOMPARE(RunSample({target}), 0);
        const QByteArray file = Contents(target);
        QVERIFY(
            KillSampleMidBuild({QStringLiteral("--force"), QStringLiteral("--scale=30"), target}));
        QCOMPARE(Contents(target), file);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 2); // and a partial
        QCOMPARE(RunSample({QStringLiteral("--force"), target}), 0);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("estate.kvdb")});

        if (!TestRepository::PostgreSQLAvailable())
            QSKIP("KV_TEST_PG is not set");
        TestRepository repository(TestRepository::Backend::PostgreSQL);
        auto counts = [&] {
            QStringList all;
            for (const char* table : Tables)
                all << QString::number(repository.Count(QLatin1String(table)));
            return all.join(QLatin1Char(' '));
        };
        auto buildSchemas = [&] {
            return repository.Count(QStringLiteral("pg_namespace"),
                                    QStringLiteral("nspname LIKE 'korvane\\_build\\_%'"));
        };
        QCOMPARE(RunSample({QStringLiteral("--force"), repository.Location()}), 0);
        const QString demo = counts();
        QVERIFY(KillSampleMidBuild(
            {QStringLiteral("--force"), QStringLiteral("--scale=30"), repository.Location()}));
        QCOMPARE(counts(), demo);
        QCOMPARE(buildSchemas(), 1);
        // The killed run's session ends once the server notices; then its
        // build is stale.
        QVERIFY(QTest::qWaitFor(
            [&] {
                return repository.Count(QStringLiteral("pg_locks"),
                                        QStringLiteral("locktype = 'advisory'")) == 0;
            },
            20000));
        QCOMPARE(RunSample({QStringLiteral("--force"), QStringLiteral("--scale=2"),
                            repository.Location()}),
                 0);
        QVERIFY(repository.Count(QStringLiteral("QXWORD")) >
                demo.section(QLatin1Char(' '), 4, 4).toInt());
        QCOMPARE(buildSchemas(), 0);
    }

    void refusesARepositoryThatHasTables() {
        QSqlDatabase db = FDemo->Db();
        QVERIFY_THROWS_EXCEPTION(EQXError, BuildSampleEstate(db, SampleEstateOptions{}));
        QCOMPARE(FDemo->Scalar(QStringLiteral("SELECT COUNT(*) FROM QXFILE")),
                 FDemo->Counts().files);
    }

private:
    std::unique_ptr<TRepository> FDemo;
};

QTEST_MAIN(TestSampleEstate)
#include "tst_SampleEstate.moc"
