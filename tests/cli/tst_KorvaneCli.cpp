// korvane-cli as scripts run it: golden trees of the small estate in text,
// JSON and CSV, opening by depth, by path and to the node cap, and the exit
// statuses and messages of bad usage and failures.
#include "support/CliEstate.h"
#include "support/RunProgram.h"
#include "support/SilentServer.h"
#include "tools/ToolsEstate.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

ProgramRun Cli(const QStringList& arguments) {
    return RunProgram("korvane-cli", arguments);
}

// A golden text with '|' for each tab.
QString Tabs(QString text) {
    return text.replace('|', '\t');
}

// JSON without the blanks and line breaks between its tokens, field order kept.
QString Compact(const QString& json) {
    QString compact;
    bool inString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const QChar c = json.at(i);
        if (inString && c == '\\') {
            compact += c;
            compact += json.at(++i);
            continue;
        }
        if (c == '"')
            inString = !inString;
        if (inString || !c.isSpace())
            compact += c;
    }
    return compact;
}

// A TQXItem of an object as the JSON output names its fields.
QString ObjectItem(int file, int object) {
    return QString(R"({"file":%1,"system":0,"computer":0,"application":0,"package":0,)"
                   R"("object":%2,"entry":0,"row":0,"word":0})")
        .arg(file)
        .arg(object);
}

} // namespace

class TestKorvaneCli : public QObject {
    Q_OBJECT

    TestRepository FRepo;

    ProgramRun Tree(const QStringList& arguments) {
        return Cli(QStringList{"tree", FRepo.Location()} + arguments);
    }

private slots:
    void initTestCase() { BuildCliEstate(FRepo); }

    void distributionToTheBottomAsText() {
        const ProgramRun run = Tree({"--expand-all"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QCOMPARE(run.Out, Tabs(R"(ACCOUNTS|1|0|1|0|0|0|0|0|0|0
  HOST@DC1|2|0|0|2|0|0|0|0|0|0
    PAYROLL|9|0|0|0|3|0|0|0|0|0
      BETA [Class]|30|2|0|0|0|0|1|0|0|0
        INIT [BETA]|29|2|0|0|0|0|1|1|0|0
      IO/PRINT [Program]|20|2|0|0|0|0|2|0|0|0
      MAIN [Program]|20|1|0|0|0|0|1|0|0|0
        START [MAIN]|29|1|0|0|0|0|1|1|0|0
      SUM,"TOTAL" [Program]|20|2|0|0|0|0|3|0|0|0
      ZETA [Program]|20|1|0|0|0|0|2|0|0|0
        RUN [ZETA]|29|1|0|0|0|0|2|1|0|0
)"));
        QCOMPARE(run.Err, QString());
    }

    void dependenciesTwoLevelsDeepMarkRecursion_data() {
        QTest::addColumn<int>("backend");
        QTest::newRow("sqlite") << int(TestRepository::Backend::SQLite);
        QTest::newRow("postgresql") << int(TestRepository::Backend::PostgreSQL);
    }
    void dependenciesTwoLevelsDeepMarkRecursion() {
        QFETCH(int, backend);
        if (backend == int(TestRepository::Backend::PostgreSQL) &&
            !TestRepository::PostgreSQLAvailable())
            QSKIP("no PostgreSQL server (KV_TEST_PG)");
        TestRepository repo{TestRepository::Backend(backend)};
        BuildCliEstate(repo);
        const ProgramRun run = Cli({"tree", repo.Location(), "--type", "Dependencies", "--level",
                                    "Object", "--depth", "2"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QCOMPARE(run.Out, Tabs(R"(BETA [Class]|30|2|0|0|0|0|1|0|0|0
  MAIN [Program]|20|1|0|0|0|0|1|0|0|0
    ZETA [Program]|20|1|0|0|0|0|2|0|0|0
IO/PRINT [Program]|20|2|0|0|0|0|2|0|0|0
MAIN [Program]|20|1|0|0|0|0|1|0|0|0
  ZETA [Program]|20|1|0|0|0|0|2|0|0|0
    MAIN [Program] !!! Recursive Track from here !!!|20|1|0|0|0|0|1|0|0|0
SUM,"TOTAL" [Program]|20|2|0|0|0|0|3|0|0|0
ZETA [Program]|20|1|0|0|0|0|2|0|0|0
  MAIN [Program]|20|1|0|0|0|0|1|0|0|0
    ZETA [Program] !!! Recursive Track from here !!!|20|1|0|0|0|0|2|0|0|0
)"));
    }

    // The limit leaves a marker without item; only the path's nodes are opened.
    void bottomUpAlongAPathAsJson() {
        const ProgramRun run =
            Tree({"--type", "Dependencies", "--direction", "BottomUp", "--level", "Object",
                  "--limit", "2", "--path", "MAIN [Program]/ZETA [Program]", "--format", "json"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QVERIFY(!QJsonDocument::fromJson(run.Out.toUtf8()).isNull());
        const QString expected = QString(R"({"filter":{"on":false,"caseSensitive":false,
"conditions":[]},"nodes":[
{"text":"  *** RootItem Limit reached, only the first 2 hits in the database showed ***",
 "image":-1,"item":null,"expandable":false,"children":[]},
{"text":"MAIN [Program]","image":21,"item":%1,"expandable":false,"children":[
  {"text":"BETA [Class]","image":31,"item":%2,"expandable":false,"children":[]},
  {"text":"ZETA [Program]","image":21,"item":%3,"expandable":false,"children":[
    {"text":"MAIN [Program] !!! Recursive Track from here !!!","image":21,"item":%1,
     "expandable":false,"children":[]}]}]},
{"text":"ZETA [Program]","image":21,"item":%3,"expandable":true,"children":[]}]})")
                                     .arg(ObjectItem(1, 1), ObjectItem(2, 1), ObjectItem(1, 2));
        QCOMPARE(Compact(run.Out), Compact(expected));
        // Unanswered, the view's question about the filter gets No.
        QVERIFY2(run.Err.contains("This View contains more than 2 RootItems") &&
                     run.Err.contains("answered No"),
                 qPrintable(run.Err));
    }

    // Conditions joined by AND unless --or stands between them; the JSON
    // output names the filter in force. A value is data.
    void filteredRootItems() {
        const ProgramRun run =
            Tree({"--level", "Object", "--filter", "objects name BEGINS WITH ma", "--limit", "5",
                  "--or", "--filter", "Objects Name equals IO/PRINT", "--filter",
                  "Files Name ends with .CBL", "--format", "json"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        const QJsonObject json = QJsonDocument::fromJson(run.Out.toUtf8()).object();
        QCOMPARE(
            Compact(QString::fromUtf8(QJsonDocument(json.value("filter").toObject()).toJson())),
            Compact(R"({"caseSensitive":false,"conditions":[
{"attribute":"Objects Name","joint":null,"operator":"begins with","value":"ma"},
{"attribute":"Objects Name","joint":"OR","operator":"equals","value":"IO/PRINT"},
{"attribute":"Files Name","joint":"AND","operator":"ends with","value":".CBL"}],"on":true})"));
        QStringList roots;
        for (const QJsonValue node : json.value("nodes").toArray())
            roots << node.toObject().value("text").toString();
        QCOMPARE(roots, QStringList({"IO/PRINT [Program]", "MAIN [Program]"}));

        const ProgramRun cased = Tree({"--level", "Object", "--filter", "Objects Name equals main",
                                       "--case-sensitive", "--filter-off"});
        QCOMPARE(cased.Out.count('\n'), 5); // off: every object
        const ProgramRun hostile = Tree({"--level", "Object", "--case-sensitive", "--filter",
                                         "Objects Name contains \"T'; DROP TABLE QXFILE; --"});
        QVERIFY2(hostile.ExitCode == 0, qPrintable(hostile.Err));
        QCOMPARE(hostile.Out, "  *** No Hits with current Filter Settings ***\n");
        QCOMPARE(Tree({"--level", "Object", "--filter", "Objects Name contains \"T"}).Out,
                 Tabs("SUM,\"TOTAL\" [Program]|20|2|0|0|0|0|3|0|0|0\n"));
    }

    void rootObjectsAsCsv() {
        const ProgramRun run = Tree({"--level", "Object", "--format", "csv"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        const QString header = "depth,text,image,expandable,file,system,computer,application,"
                               "package,object,entry,row,word,text1,text2,ownerFile,ownerObject,"
                               "ownerEntry,language\n";
        QCOMPARE(run.Out, QString(header + R"(0,BETA [Class],30,true,2,0,0,0,0,1,0,0,0,,,,,,
0,IO/PRINT [Program],20,true,2,0,0,0,0,2,0,0,0,,,,,,
0,MAIN [Program],20,true,1,0,0,0,0,1,0,0,0,,,,,,
0,"SUM,""TOTAL"" [Program]",20,true,2,0,0,0,0,3,0,0,0,,,,,,
0,ZETA [Program],20,true,1,0,0,0,0,2,0,0,0,,,,,,
)")
                              .replace("\n", "\r\n"));
    }

    void pathsOpenOnlyTheirNodes() {
        const ProgramRun main = Tree({"--level", "Object", "--path", "MAIN [Program]"});
        QVERIFY2(main.ExitCode == 0, qPrintable(main.Err));
        QCOMPARE(main.Out.count('\n'), 6);
        QVERIFY(main.Out.contains("MAIN [Program]\t20\t1\t0\t0\t0\t0\t1\t0\t0\t0\n"
                                  "  START [MAIN]\t"));

        // A '/' inside a text is written "\/".
        QCOMPARE(Tree({"--level", "Object", "--path", "IO\\/PRINT [Program]"}).ExitCode, 0);
        const ProgramRun split = Tree({"--level", "Object", "--path", "IO/PRINT [Program]"});
        QCOMPARE(split.ExitCode, 1);
        QVERIFY2(split.Err.contains("no root node 'IO'"), qPrintable(split.Err));

        const ProgramRun missing = Tree({"--type", "Dependencies", "--level", "Object", "--path",
                                         "MAIN [Program]/BETA [Class]"});
        QCOMPARE(missing.ExitCode, 1);
        QCOMPARE(missing.Out, QString());
        QVERIFY2(missing.Err.contains("no node 'BETA [Class]' under 'MAIN [Program]'"),
                 qPrintable(missing.Err));
    }

    void expandAllStopsAtTheNodeCap() {
        // PAYROLL is opened while the tree holds 3 nodes, its objects are not.
        const ProgramRun run = Tree({"--expand-all", "--max-nodes", "4"});
        QCOMPARE(run.ExitCode, 0);
        QCOMPARE(run.Out.count('\n'), 8);
        QVERIFY2(run.Err.contains("stopped opening nodes at 4 nodes"), qPrintable(run.Err));
    }

    void badUsageAndFailures_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        auto row = [](const char* name, const QStringList& arguments, int exitCode,
                      const QString& message) {
            QTest::newRow(name) << arguments << exitCode << message;
        };
        const QString repo = "REPO";
        row("no command", {}, 2, "usage: korvane-cli COMMAND");
        row("unknown command", {"forest"}, 2, "unknown command");
        row("no repository", {"tree"}, 2, "tree needs a repository");
        row("missing repository", {"tree", "/nowhere/estate.kvdb"}, 2,
            "repository not found: /nowhere/estate.kvdb");
        row("level", {"tree", repo, "--level", "Program"}, 2,
            "unknown level 'Program' (one of: System, Computer,");
        row("type", {"tree", repo, "--type", "Calls"}, 2, "unknown view type 'Calls'");
        row("direction", {"tree", repo, "--direction", "Up"}, 2, "unknown direction 'Up'");
        row("format", {"tree", repo, "--format", "xml"}, 2,
            "unknown format 'xml' (one of: text, json, csv)");
        row("limit", {"tree", repo, "--limit", "0"}, 2,
            "--limit needs a whole number of at least 1");
        row("option", {"tree", repo, "--colour"}, 2, "Unknown option 'colour'");
        row("depth and all", {"tree", repo, "--depth", "2", "--expand-all"}, 2,
            "--depth and --expand-all exclude each other");
        row("path escape", {"tree", repo, "--path", "A\\B"}, 2, "write '\\/' for a '/'");
        row("timeout", {"tree", repo, "--timeout", "soon"}, 2,
            "--timeout needs a whole number of at least 0, not 'soon'");
        row("a Qt option", {"tree", repo, "-platform", "bogus"}, 2, "Unknown option 'platform'");
        row("not a repository", {"tree", NotARepositoryFile()}, 1, "AssignDBPointers failed");
        row("filter attribute", {"tree", repo, "--filter", "Object Name equals X"}, 2,
            "--filter 'Object Name equals X': no attribute, which is one of: 'Systems Name', "
            "'Computers Name', 'Applications Name', 'Packages Name', 'Objects Name', 'Objects "
            "Type', 'Entrys Name', 'Line of Code', 'Variables Name', 'Variables Type', 'Files "
            "Name'");
        row("filter operator", {"tree", repo, "--filter", "Objects Name is X"}, 2,
            "no operator after the attribute, which is one of: 'equals', 'contains', 'begins "
            "with', 'ends with'");
        row("filter value", {"tree", repo, "--filter", "Files Name equals "}, 2,
            "at least one character is required for the value");
        row("or first", {"tree", repo, "--or", "--filter", "Files Name equals X"}, 2,
            "--or must stand between two --filter options");
        row("on and off", {"tree", repo, "--filter-on", "--filter-off"}, 2,
            "--filter-on and --filter-off exclude each other");
        row("settings of a document", {"tree", "--open", "x.kvv", "--level", "Object"}, 2,
            "--level does not apply to --open");
        row("track of one node", {"tree", repo, "--track", "MAIN [Program]"}, 2,
            "--track needs a path of at least two texts");
        row("track not found",
            {"tree", repo, "--level", "Object", "--track", "MAIN [Program]/NOPE"}, 1,
            "path not found: MAIN [Program]/NOPE (no node 'NOPE' under 'MAIN [Program]')");
        row("flow without names", {"flow", repo, "--object", "MAIN"}, 2,
            "flow needs --object NAME and --variable NAME");
        row("flow of an unknown object", {"flow", repo, "--object", "NOPE", "--variable", "X"}, 2,
            "The repository has no object named NOPE");
        row("flow of an unknown variable", {"flow", repo, "--object=MAIN", "--variable=X"}, 2,
            "The object MAIN declares no variable X");
        row("flow at another level", {"flow", repo, "--level", "Object"}, 2,
            "--level does not apply to flow");
        row("not a document", {"tree", "--open", NotARepositoryFile()}, 1,
            "TQXView.OpenViewDoc: line 2: the file ends before the second creation text");
    }
    void badUsageAndFailures() {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        arguments.replaceInStrings("REPO", FRepo.Location());
        const ProgramRun run = Cli(arguments);
        QCOMPARE(run.ExitCode, exitCode);
        QCOMPARE(run.Out, QString());
        QVERIFY2(run.Err.contains(message), qPrintable(run.Err));
        if (exitCode == 2 && !arguments.isEmpty())
            QVERIFY2(run.Err.contains("for the usage"), qPrintable(run.Err));
    }

    // A view saved with a filter, a track and a selection prints the same
    // tree when opened, with or without its repository, and saves to the
    // same bytes (the filter rows pass through the filter dialog and back).
    void documentsRoundTripThroughTheCli() {
        QTemporaryDir dir;
        const QString first = dir.filePath("first.kvv"), second = dir.filePath("second.kvv");
        const ProgramRun saved =
            Tree({"--type", "Dependencies", "--level", "Object", "--filter",
                  "Objects Name equals NONE,X", "--or", "--filter", "Objects Name contains A",
                  "--track", "BETA [Class]/MAIN [Program]/ZETA [Program]", "--select",
                  "MAIN [Program]/ZETA [Program]", "--save", first});
        QVERIFY2(saved.ExitCode == 0, qPrintable(saved.Err));
        const ProgramRun opened =
            Cli({"tree", "--open", first, FRepo.Location(), "--save", second});
        QVERIFY2(opened.ExitCode == 0, qPrintable(opened.Err));
        QCOMPARE(opened.Out, saved.Out);
        QCOMPARE(opened.Err, QString());
        QFile a(first), b(second);
        QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
        const QList<QByteArray> before = a.readAll().split('\n'), after = b.readAll().split('\n');
        QCOMPARE(before.value(0), QByteArray("View 1"));
        QCOMPARE(after.value(0), QByteArray("View 1 on repository"));
        QCOMPARE(after.mid(1), before.mid(1));
        QVERIFY(before.contains("\r  TrackList  "));
        QVERIFY(before.contains("\rBETA - ZETA"));
        QVERIFY(before.contains("\r0,4,0,NONE,X") && before.contains("\r0,4,1,A"));

        const ProgramRun alone = Cli({"tree", "--open", second});
        QCOMPARE(alone.ExitCode, 0);
        QCOMPARE(alone.Out, saved.Out);
        QVERIFY2(alone.Err.contains("note: Document is created against database repository"),
                 qPrintable(alone.Err));
    }

    void qtTakesNoneOfOurArguments() {
        // A value Qt would take for an option of its own stays ours.
        const ProgramRun reverse = Tree({"--path", "-reverse"});
        QCOMPARE(reverse.ExitCode, 1);
        QVERIFY2(reverse.Err.contains("path not found: -reverse (no root node '-reverse')"),
                 qPrintable(reverse.Err));
        // No display is needed, so none the environment names can be missing.
        const ProgramRun display =
            RunProgram("korvane-cli", {"tree", FRepo.Location()}, {"QT_QPA_PLATFORM=bogus"});
        QVERIFY2(display.ExitCode == 0, qPrintable(display.Err));
        QVERIFY(display.Out.startsWith("ACCOUNTS\t"));
    }

    void aServerThatNeverAnswersIsGivenUpOn() {
        const SilentServer silent;
        QVERIFY(silent.Port() > 0);
        QElapsedTimer clock;
        clock.start();
        const ProgramRun run =
            Cli({"tree", QString("host=127.0.0.1 port=%1 dbname=estate").arg(silent.Port()),
                 "--timeout", "2"});
        QCOMPARE(run.ExitCode, 1);
        QVERIFY2(run.Err.contains("the server did not answer within 2 s"), qPrintable(run.Err));
        QVERIFY(clock.elapsed() < 10000);
    }

    void helpIsAnswered() {
        for (const QStringList& arguments :
             {QStringList{"--help"}, QStringList{"help"}, QStringList{"help", "tree"},
              QStringList{"tree", "--help"}}) {
            const ProgramRun run = Cli(arguments);
            QCOMPARE(run.ExitCode, 0);
            if (arguments.contains("tree"))
                QVERIFY(run.Out.startsWith("usage: korvane-cli tree REPO [options]") &&
                        run.Out.contains("--max-nodes N"));
            else
                QVERIFY(run.Out.contains("  tree "));
        }
    }

    void itemCommandsShowRenameAndListRows() {
        TestRepository repo;
        BuildToolsEstate(repo);
        const QString computer = "ACCOUNTS/HOST@DC1";
        ProgramRun run = Cli({"props", repo.Location(), "--path", computer});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QVERIFY2(run.Out.startsWith("Type:        Computer\nName:        HOST@DC1\nIn File:     \n"
                                    "Icon:        2 (Computer: mainframe)\n"
                                    "Icons:       2 3 4 5 6 7 8\nKVID in DB:  QXAttributeID = 2\n"
                                    "Editable:    name, icon\n"),
                 qPrintable(run.Out));
        run = Cli(
            {"rename", repo.Location(), "--path", computer, "--name", "NEW@DC9", "--icon", "5"});
        QCOMPARE(run.Out, QString("Computer HOST@DC1 renamed to NEW@DC9 (icon 5); 2 load records "
                                  "changed\n"));
        QCOMPARE(repo.Count("QXLOAD", "QXComputerType = 'NEW' AND QXComputerLocation = 'DC9'"), 2);
        run = Cli({"rows", repo.Location(), "--path", "MAIN [Program]", "--path",
                   "MAIN [Program]/ZETA [Program]"});
        QCOMPARE(run.Out, QString("CALL 'ZETA'    [MAIN.START]\nCALL 'ZETA' AGAIN    [MAIN.LOOP]\n"
                                  "CALL 'ZETA' ELSEWHERE    [MAIN]\n"));
        // Paths that lead nowhere and kinds that do not allow it: bad usage.
        for (const QStringList& arguments :
             {QStringList{"props", repo.Location(), "--path", "ACCOUNTS/NOPE"},
              QStringList{"rename", repo.Location(), "--path", "ACCOUNTS/NEW@DC9", "--name", "X",
                          "--icon", "9"},
              QStringList{"rename", repo.Location(), "--path",
                          "ACCOUNTS/NEW@DC9/PAYROLL/MAIN [Program]", "--name", "X"},
              QStringList{"rows", repo.Location(), "--path", "MAIN [Program]", "--path",
                          "MAIN [Program]", "--level", "Object"}}) {
            run = Cli(arguments);
            QCOMPARE(run.ExitCode, 2);
            QVERIFY2(run.Out.isEmpty() && !run.Err.isEmpty(), qPrintable(run.Err));
        }
    }
};

QTEST_MAIN(TestKorvaneCli)
#include "tst_KorvaneCli.moc"
