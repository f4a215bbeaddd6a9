// korvane-cli as scripts run it: golden trees of the small estate in text,
// JSON and CSV, opening by depth, by path and to the node cap, and the exit
// statuses and messages of bad usage and failures.
#include "support/CliEstate.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QProcess>
#include <QtTest>

namespace {

struct Run {
    int ExitCode = -1;
    QString Out;
    QString Err;
};

Run Cli(const QStringList& arguments) {
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + "/korvane-cli", arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
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

    Run Tree(const QStringList& arguments) {
        return Cli(QStringList{"tree", FRepo.Location()} + arguments);
    }

private slots:
    void initTestCase() { BuildCliEstate(FRepo); }

    void distributionToTheBottomAsText() {
        const Run run = Tree({"--expand-all"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QCOMPARE(run.Out, QString("ACCOUNTS\t1\t0\t1\t0\t0\t0\t0\t0\t0\t0\n"
                                  "  HOST@DC1\t2\t0\t0\t2\t0\t0\t0\t0\t0\t0\n"
                                  "    PAYROLL\t9\t0\t0\t0\t3\t0\t0\t0\t0\t0\n"
                                  "      BETA [Class]\t30\t2\t0\t0\t0\t0\t1\t0\t0\t0\n"
                                  "        INIT [BETA]\t29\t2\t0\t0\t0\t0\t1\t1\t0\t0\n"
                                  "      IO/PRINT [Program]\t20\t2\t0\t0\t0\t0\t2\t0\t0\t0\n"
                                  "      MAIN [Program]\t20\t1\t0\t0\t0\t0\t1\t0\t0\t0\n"
                                  "        START [MAIN]\t29\t1\t0\t0\t0\t0\t1\t1\t0\t0\n"
                                  "      SUM,\"TOTAL\" [Program]\t20\t2\t0\t0\t0\t0\t3\t0\t0\t0\n"
                                  "      ZETA [Program]\t20\t1\t0\t0\t0\t0\t2\t0\t0\t0\n"
                                  "        RUN [ZETA]\t29\t1\t0\t0\t0\t0\t2\t1\t0\t0\n"));
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
        const Run run = Cli({"tree", repo.Location(), "--type", "Dependencies", "--level", "Object",
                             "--depth", "2"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        const QString ids = "\t20\t1\t0\t0\t0\t0\t%1\t0\t0\t0";
        QCOMPARE(run.Out, "BETA [Class]\t30\t2\t0\t0\t0\t0\t1\t0\t0\t0\n"
                          "  MAIN [Program]" +
                              ids.arg(1) +
                              "\n"
                              "    ZETA [Program]" +
                              ids.arg(2) +
                              "\n"
                              "IO/PRINT [Program]\t20\t2\t0\t0\t0\t0\t2\t0\t0\t0\n"
                              "MAIN [Program]" +
                              ids.arg(1) +
                              "\n"
                              "  ZETA [Program]" +
                              ids.arg(2) +
                              "\n"
                              "    MAIN [Program] !!! Recursive Track from here !!!" +
                              ids.arg(1) +
                              "\n"
                              "SUM,\"TOTAL\" [Program]\t20\t2\t0\t0\t0\t0\t3\t0\t0\t0\n"
                              "ZETA [Program]" +
                              ids.arg(2) +
                              "\n"
                              "  MAIN [Program]" +
                              ids.arg(1) +
                              "\n"
                              "    ZETA [Program] !!! Recursive Track from here !!!" +
                              ids.arg(2) + "\n");
    }

    // The limit leaves a marker without item; only the path's nodes are opened.
    void bottomUpAlongAPathAsJson() {
        const Run run =
            Tree({"--type", "Dependencies", "--direction", "BottomUp", "--level", "Object",
                  "--limit", "2", "--path", "MAIN [Program]/ZETA [Program]", "--format", "json"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QVERIFY(!QJsonDocument::fromJson(run.Out.toUtf8()).isNull());
        const QString leaf = R"({"text":"%1","image":%2,"item":%3,"expandable":%4,"children":[]})";
        const QString expected =
            R"({"nodes":[)" +
            leaf.arg("  *** RootItem Limit reached, only the first 2 hits in the database "
                     "showed ***",
                     "-1", "null", "false") +
            R"(,{"text":"MAIN [Program]","image":21,"item":)" + ObjectItem(1, 1) +
            R"(,"expandable":false,"children":[)" +
            leaf.arg("BETA [Class]", "31", ObjectItem(2, 1), "false") +
            R"(,{"text":"ZETA [Program]","image":21,"item":)" + ObjectItem(1, 2) +
            R"(,"expandable":false,"children":[)" +
            leaf.arg("MAIN [Program] !!! Recursive Track from here !!!", "21", ObjectItem(1, 1),
                     "false") +
            "]}]}," + leaf.arg("ZETA [Program]", "21", ObjectItem(1, 2), "true") + "]}";
        QCOMPARE(Compact(run.Out), expected);
        // Unanswered, the view's question about the filter gets No.
        QVERIFY2(run.Err.contains("This View contains more than 2 RootItems") &&
                     run.Err.contains("answered No"),
                 qPrintable(run.Err));
    }

    void rootObjectsAsCsv() {
        const Run run = Tree({"--level", "Object", "--format", "csv"});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        const QString tail = ",true,%1,0,0,0,0,%2,0,0,0,,,,,,\r\n";
        QCOMPARE(run.Out, "depth,text,image,expandable,file,system,computer,application,"
                          "package,object,entry,row,word,text1,text2,ownerFile,ownerObject,"
                          "ownerEntry,language\r\n"
                          "0,BETA [Class],30" +
                              tail.arg(2).arg(1) + "0,IO/PRINT [Program],20" + tail.arg(2).arg(2) +
                              "0,MAIN [Program],20" + tail.arg(1).arg(1) +
                              "0,\"SUM,\"\"TOTAL\"\" [Program]\",20" + tail.arg(2).arg(3) +
                              "0,ZETA [Program],20" + tail.arg(1).arg(2));
    }

    void pathsOpenOnlyTheirNodes() {
        const Run main = Tree({"--level", "Object", "--path", "MAIN [Program]"});
        QVERIFY2(main.ExitCode == 0, qPrintable(main.Err));
        QCOMPARE(main.Out.count('\n'), 6);
        QVERIFY(main.Out.contains("MAIN [Program]\t20\t1\t0\t0\t0\t0\t1\t0\t0\t0\n"
                                  "  START [MAIN]\t"));

        // A '/' inside a text is written "\/".
        QCOMPARE(Tree({"--level", "Object", "--path", "IO\\/PRINT [Program]"}).ExitCode, 0);
        const Run split = Tree({"--level", "Object", "--path", "IO/PRINT [Program]"});
        QCOMPARE(split.ExitCode, 1);
        QVERIFY2(split.Err.contains("no root node 'IO'"), qPrintable(split.Err));

        const Run missing = Tree({"--type", "Dependencies", "--level", "Object", "--path",
                                  "MAIN [Program]/BETA [Class]"});
        QCOMPARE(missing.ExitCode, 1);
        QCOMPARE(missing.Out, QString());
        QVERIFY2(missing.Err.contains("no node 'BETA [Class]' under 'MAIN [Program]'"),
                 qPrintable(missing.Err));
    }

    void expandAllStopsAtTheNodeCap() {
        // PAYROLL is opened while the tree holds 3 nodes, its objects are not.
        const Run run = Tree({"--expand-all", "--max-nodes", "4"});
        QCOMPARE(run.ExitCode, 0);
        QCOMPARE(run.Out.count('\n'), 8);
        QVERIFY2(run.Err.contains("stopped opening nodes at 4 nodes"), qPrintable(run.Err));
    }

    void badUsageAndFailures_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        const QString repo = "REPO";
        QTest::newRow("no command") << QStringList{} << 2 << "usage: korvane-cli COMMAND";
        QTest::newRow("unknown command") << QStringList{"forest"} << 2 << "unknown command";
        QTest::newRow("no repository") << QStringList{"tree"} << 2 << "tree needs a repository";
        QTest::newRow("missing repository") << QStringList{"tree", "/nowhere/estate.kvdb"} << 2
                                            << "repository not found: /nowhere/estate.kvdb";
        QTest::newRow("level") << QStringList{"tree", repo, "--level", "Program"} << 2
                               << "unknown level 'Program' (one of: System, Computer,";
        QTest::newRow("type") << QStringList{"tree", repo, "--type", "Calls"} << 2
                              << "unknown view type 'Calls'";
        QTest::newRow("direction")
            << QStringList{"tree", repo, "--direction", "Up"} << 2 << "unknown direction 'Up'";
        QTest::newRow("format") << QStringList{"tree", repo, "--format", "xml"} << 2
                                << "unknown format 'xml' (one of: text, json, csv)";
        QTest::newRow("limit") << QStringList{"tree", repo, "--limit", "0"} << 2
                               << "--limit needs a whole number of at least 1";
        QTest::newRow("option") << QStringList{"tree", repo, "--colour"} << 2
                                << "Unknown option 'colour'";
        QTest::newRow("depth and all") << QStringList{"tree", repo, "--depth", "2", "--expand-all"}
                                       << 2 << "--depth and --expand-all exclude each other";
        QTest::newRow("path escape")
            << QStringList{"tree", repo, "--path", "A\\B"} << 2 << "write '\\/' for a '/'";
        QTest::newRow("not a repository")
            << QStringList{"tree", QFINDTESTDATA("tst_KorvaneCli.cpp")} << 1
            << "AssignDBPointers failed";
    }
    void badUsageAndFailures() {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        arguments.replaceInStrings("REPO", FRepo.Location());
        const Run run = Cli(arguments);
        QCOMPARE(run.ExitCode, exitCode);
        QCOMPARE(run.Out, QString());
        QVERIFY2(run.Err.contains(message), qPrintable(run.Err));
        if (exitCode == 2 && !arguments.isEmpty())
            QVERIFY2(run.Err.contains("for the usage"), qPrintable(run.Err));
    }

    void helpIsAnswered() {
        for (const QStringList& arguments : {QStringList{"--help"}, QStringList{"help"}}) {
            const Run run = Cli(arguments);
            QCOMPARE(run.ExitCode, 0);
            QVERIFY(run.Out.contains("  tree "));
        }
        for (const QStringList& arguments :
             {QStringList{"help", "tree"}, QStringList{"tree", "--help"}}) {
            const Run run = Cli(arguments);
            QCOMPARE(run.ExitCode, 0);
            QVERIFY(run.Out.startsWith("usage: korvane-cli tree REPO [options]"));
            QVERIFY(run.Out.contains("--max-nodes N"));
        }
    }
};

QTEST_MAIN(TestKorvaneCli)
#include "tst_KorvaneCli.moc"
