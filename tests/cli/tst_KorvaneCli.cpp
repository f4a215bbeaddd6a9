// korvane-cli as scripts run it: golden trees of the small estate in text,
// JSON and CSV, opening by depth, by path and to the node cap, and the exit
// statuses and messages of bad usage and failures.
#include "support/CliEstate.h"
#include "support/RunProgram.h"
#include "support/SilentServer.h"
#include "tools/ToolsEstate.h"

#include <QElapsedTimer>
#include <QJsonDocument>
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
        const QString expected = QString(R"({"nodes":[
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
