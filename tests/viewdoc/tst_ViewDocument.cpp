// View documents: the exact bytes of a document written by hand, line ends
// the reader takes, hostile files refused with the line that was wrong, the
// view's round trips (with the " on " suffix and the connection fallback),
// saves that fail without touching the old file, and a fuzz run.
#include "support/CliEstate.h"
#include "support/TreeTexts.h"

#include "driver/ViewDriver.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "view/View.h"
#include "viewdoc/ViewDocument.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

namespace {

// Written by hand from the file format: LF CR after every line; two filter
// rows (the first on "Files Name", a value with commas), an item node, a
// node whose children are not read yet (its placeholder line), a data item
// (14 commas before its text), a message without payload, the selection and
// one track.
const QByteArray Golden = QByteArray("Claims on repository\n\r"
                                     "repository\n\r"
                                     "\n\r"
                                     "repository\n\r"
                                     "-1\n\r"
                                     "-1\n\r"
                                     "Object\n\r"
                                     "-1\n\r"
                                     "0\n\r"
                                     "250\n\r"
                                     "2\n\r"
                                     "0,10,1,PAY,LIB\n\r"
                                     "-1,3,0,K\xdcRZEL\n\r"
                                     "-1\n\r"
                                     "-1,20,0,1,0,0,0,0,1,0,0,0,MAIN [Program]\n\r"
                                     "-1,20,1,1,0,0,0,0,2,0,0,0,ZETA [Program]\n\r"
                                     "0,-1,2,,,,,,,,,,\n\r"
                                     "-1,35,1,WS-TOTAL,PIC 9(5),1,1,0,1,1,0,40,3,7,WS-TOTAL, "
                                     "[Variable]\n\r"
                                     "-1,-1,0,,,,,,,,,,  *** No Hits, none ***\n\r"
                                     "  Selection  \n\r"
                                     "1,3,\n\r"
                                     "  TrackList  \n\r"
                                     "MAIN - ZETA\n\r"
                                     "0:1,0,0,0,0,1,0,0,0\n\r"
                                     "1:1,0,0,0,0,2,0,0,0\n\r");

TQXViewDocument GoldenDocument() {
    TQXViewDocument d;
    d.DocumentName = "Claims on repository";
    d.CreationText2 = "repository";
    d.ConnectionName = "repository";
    d.Dependencies = true;
    d.ViewBy = "Object";
    d.Option = true;
    d.LimitText = "250";
    d.FilterRows = {{false, 10, 1, "PAY,LIB"}, {true, 3, 0, QString::fromLatin1("K\xdcRZEL")}};
    d.CaseSensitive = true;
    using P = TQXDocumentNode::Payload;
    d.Nodes = {{true, 20, 0, P::Item, {1, 0, 0, 0, 0, 1, 0, 0, 0}, {}, {}, "MAIN [Program]"},
               {true, 20, 1, P::Item, {1, 0, 0, 0, 0, 2, 0, 0, 0}, {}, {}, "ZETA [Program]"},
               {false, -1, 2, P::None, {}, {}, {}, {}},
               {true,
                35,
                1,
                P::DataItem,
                {1, 1, 0, 1, 1, 0, 40, 3, 7},
                "WS-TOTAL",
                "PIC 9(5)",
                "WS-TOTAL, [Variable]"},
               {true, -1, 0, P::None, {}, {}, {}, "  *** No Hits, none ***"}};
    d.Selection = {1, 3};
    d.Tracks = {{"MAIN - ZETA", {"0:1,0,0,0,0,1,0,0,0", "1:1,0,0,0,0,2,0,0,0"}}};
    return d;
}

QByteArray Lines(const QList<QByteArray>& lines) {
    QByteArray bytes;
    for (const QByteArray& line : lines)
        bytes += line + "\n\r";
    return bytes;
}

// The header and filter part of the golden document, for hostile variants.
QByteArray Header() {
    return Golden.left(Golden.indexOf("-1,20,0,"));
}

QString ReadFailure(const QByteArray& bytes) {
    try {
        viewdoc::Read(bytes);
    } catch (const EQXError& e) {
        return e.Message();
    }
    return QString();
}

QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

// One random change of a valid document.
QByteArray Mutated(QByteArray bytes, QRandomGenerator& random) {
    const QList<QByteArray> extra = {"",
                                     "  Selection  ",
                                     "  TrackList  ",
                                     "-1,0,5,,,,,,,,,,x",
                                     "-1,1,1,1,1,1,1,1,1,1,1,1,a - b",
                                     "99999999999,-2147483648,2147483647,",
                                     "0,0,1,a,b,1,2,3,4,5,6,7,8,9,t",
                                     QByteArray(300, ',')};
    for (int changes = 1 + random.bounded(3); changes > 0; --changes) {
        const int at = bytes.isEmpty() ? 0 : random.bounded(int(bytes.size()));
        switch (random.bounded(6)) {
        case 0: // bit flip
            if (!bytes.isEmpty())
                bytes[at] = char(bytes[at] ^ (1 << random.bounded(8)));
            break;
        case 1: // truncation
            bytes.truncate(at);
            break;
        case 2: { // a line duplicated
            const qsizetype start = bytes.lastIndexOf('\n', at) + 1;
            const qsizetype end = bytes.indexOf('\n', at);
            if (end > start)
                bytes.insert(start, bytes.mid(start, end - start + 1));
            break;
        }
        case 3: // a known line
            bytes.insert(at, extra[random.bounded(int(extra.size()))] + "\n\r");
            break;
        case 4: { // random bytes
            QByteArray noise(1 + random.bounded(40), '\0');
            for (char& c : noise)
                c = char(random.bounded(256));
            bytes.insert(at, noise);
            break;
        }
        default: { // a line removed
            const qsizetype start = bytes.lastIndexOf('\n', at) + 1;
            const qsizetype end = bytes.indexOf('\n', at);
            bytes.remove(start, end < start ? bytes.size() - start : end - start + 1);
            break;
        }
        }
    }
    return bytes;
}

} // namespace

class TestViewDocument : public QObject {
    Q_OBJECT

    TestRepository FRepo;
    QTemporaryDir FDir;

    QString Path(const QString& name) const { return FDir.filePath(name); }

private slots:
    void initTestCase() { BuildCliEstate(FRepo); }

    void theBytesAndTheLineEnds() {
        QCOMPARE(viewdoc::Write(GoldenDocument()), Golden);
        QCOMPARE(viewdoc::Read(Golden), GoldenDocument());
        for (const char* end : {"\r\n", "\n", "\r"}) {
            QByteArray other = Golden;
            QCOMPARE(viewdoc::Read(other.replace("\n\r", end)), GoldenDocument());
        }
        // Through the view: open, save, open the saved file, save again.
        TQXViewDriver driver(FRepo.Location());
        WriteFile(Path("golden.kvv"), Golden);
        QCOMPARE(driver.OpenDocument(Path("golden.kvv")), QStringList{});
        QCOMPARE(driver.View().windowTitle(), "Korvane - Claims on repository");
        QCOMPARE(Texts(RootNodes(driver.Tree())),
                 (QStringList{"MAIN [Program]", "  *** No Hits, none ***"}));
        QVERIFY(TQXTreeControl::HasPlaceholder(RootNodes(driver.Tree())[0]->Child(0)));
        QCOMPARE(driver.Tree().PopupMenu(), nullptr);
        QCOMPARE(driver.View().mnuView.FindItem("Track0")->text(), "MAIN - ZETA");
        driver.SaveDocument(Path("again.kvv"));
        driver.OpenDocument(Path("again.kvv"));
        driver.SaveDocument(Path("again.kvv"));
        QCOMPARE(FileBytes(Path("again.kvv")), Golden);

        // Made against a connection this machine does not have.
        QByteArray elsewhere = Golden;
        elsewhere.replace("Claims on repository\n\rrepository\n\r\n\rrepository",
                          "Claims on elsewhere\n\rrepository\n\r\n\relsewhere");
        WriteFile(Path("elsewhere.kvv"), elsewhere);
        QCOMPARE(driver.OpenDocument(Path("elsewhere.kvv")),
                 QStringList{"Document is created against database elsewhere\n"
                             "Connection is changed to database repository"});
        QCOMPARE(driver.View().ConnectionName(), "repository");
        QCOMPARE(driver.View().DocumentName(), "Claims on repository");
        QVERIFY(driver.View().DataAccess());
    }

    void hostileFilesNameTheLine_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("message");
        const QByteArray header = Header() + "-1,20,0,1,0,0,0,0,1,0,0,0,MAIN\n\r";
        QByteArray badType = Golden;
        badType.replace("repository\n\r-1\n\r", "repository\n\ryes\n\r");
        QTest::newRow("empty") << QByteArray() << "line 1: the file ends before the document name";
        QTest::newRow("truncated")
            << Golden.left(60) << "line 8: the file ends before the option box";
        QTest::newRow("boolean") << badType
                                 << "line 5: the view type (-1 Dependencies, 0 Distribution) must "
                                    "be -1 or 0, not 'yes'";
        QByteArray count = Header();
        count.replace("250\n\r2\n\r", "250\n\r99999999999\n\r");
        QTest::newRow("huge count") << count
                                    << "line 11: the number of filter rows must be a whole "
                                       "number of at least 0, not '99999999999'";
        QTest::newRow("rows missing") << Golden.left(Golden.indexOf("-1,3,0"))
                                      << "line 13: the file ends before filter row 2 of 2";
        QTest::newRow("negative level") << header + "-1,20,-1,1,0,0,0,0,1,0,0,0,X\n\r"
                                        << "line 16: the node's level -1 is negative";
        QTest::newRow("level jump") << header + "-1,20,2,1,0,0,0,0,1,0,0,0,X\n\r"
                                    << "line 16: level 2 follows level 0";
        QTest::newRow("first level") << Header() + "-1,20,1,1,0,0,0,0,1,0,0,0,X\n\r"
                                     << "line 15: the first node must have level 0, not 1";
        QTest::newRow("huge image") << header + "-1,2147483648,0,1,0,0,0,0,1,0,0,0,X\n\r"
                                    << "line 16: the node's image index must be a whole number";
        QTest::newRow("payload") << header + "-1,20,0,1,2,x,MAIN\n\r"
                                 << "line 16: the node's item is neither nine numbers nor two "
                                    "texts and nine numbers";
        QTest::newRow("no selection marker")
            << header << "line 16: the file ends before the selection marker";
        QTest::newRow("after an empty line") << header + "\n\rjunk\n\r"
                                             << "line 17: expected the selection marker";
        QTest::newRow("10 MB line") << header + QByteArray(10 << 20, 'x')
                                    << "line 16: the line is longer than 1048576 bytes";
        QByteArray binary(4096, '\0');
        for (int i = 0; i < binary.size(); ++i)
            binary[i] = char((i * 7919) % 251);
        QTest::newRow("binary") << binary << "line ";
    }
    void hostileFilesNameTheLine() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, message);
        QVERIFY2(ReadFailure(bytes).startsWith(message), qPrintable(ReadFailure(bytes)));

        // The view says so with its prefix and stays as it was.
        TQXViewDriver driver(FRepo.Location());
        WriteFile(Path("golden.kvv"), Golden);
        driver.OpenDocument(Path("golden.kvv"));
        WriteFile(Path("hostile.kvv"), bytes);
        try {
            driver.OpenDocument(Path("hostile.kvv"));
            QFAIL("the hostile file was read");
        } catch (const EQXError& e) {
            QVERIFY(e.Message().startsWith("TQXView.OpenViewDoc: " + message));
        }
        QCOMPARE(driver.Tree().NodeCount(), 4);
        QCOMPARE(driver.View().DocumentFile(), Path("golden.kvv"));
    }

    // A million lines read in one pass; unreadable selection entries skipped.
    void aMillionLines() {
        QByteArray bytes = Header() + Lines({"-1,20,0,1,0,0,0,0,1,0,0,0,MAIN", "  Selection  ",
                                             "x,0,7,-1,0,", "  TrackList  ", "MAIN - MAIN"});
        bytes.reserve(bytes.size() + 12'000'000);
        for (int i = 0; i < 1'000'000; ++i)
            bytes += "0:1,0,0,0,0,1,0,0,0\n\r";
        QElapsedTimer timer;
        timer.start();
        const TQXViewDocument document = viewdoc::Read(bytes);
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(document.Selection, QList<int>{0});
        QCOMPARE(document.Tracks.at(0).Keys.size(), 1'000'000);
    }

    void failedSavesKeepTheOldFile() {
        TQXViewDriver driver(FRepo.Location());
        WriteFile(Path("kept.kvv"), Golden);
        driver.OpenDocument(Path("kept.kvv"));
        QDir(FDir.path()).mkdir("folder.kvv");
        QVERIFY_THROWS_EXCEPTION(EQXError, driver.SaveDocument(Path("folder.kvv")));
        QVERIFY(QFileInfo(Path("folder.kvv")).isDir());
        WriteFile(Path("file"), "x");
        QVERIFY_THROWS_EXCEPTION(EQXError, driver.SaveDocument(Path("file/view.kvv")));

        // A disk that fills up while writing: the file size limit stops the
        // write after 100 bytes.
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit small = before;
        small.rlim_cur = 100;
        setrlimit(RLIMIT_FSIZE, &small);
        QString message;
        try {
            driver.SaveDocument(Path("kept.kvv"));
        } catch (const EQXError& e) {
            message = e.Message();
        }
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY2(message.startsWith("Could not save the view document " + Path("kept.kvv") + ": "),
                 qPrintable(message));
        QVERIFY(message.endsWith("(an existing file was left as it was)"));
        qInfo("%s", qPrintable(message));
        QCOMPARE(FileBytes(Path("kept.kvv")), Golden);
        QCOMPARE(QDir(FDir.path()).entryList(QDir::Files).filter("kept"), QStringList{"kept.kvv"});
    }

    // Mutations of valid documents either load or fail with the line named;
    // nothing crashes or hangs, and whatever loads writes and reads again.
    void fuzz() {
        QRandomGenerator random(20240613);
        TQXViewDocument big = GoldenDocument();
        for (int i = 0; i < 40; ++i)
            big.Nodes.push_back(big.Nodes[i % 2]);
        std::swap(big.Nodes[big.Nodes.size() - 1], big.Nodes[4]);
        const QList<QByteArray> seeds = {Golden, viewdoc::Write(big),
                                         QByteArray(Golden).replace("\n\r", "\r\n")};
        TQXViewDriver driver(QString{});
        QElapsedTimer timer;
        timer.start();
        int loaded = 0;
        for (int i = 0; i < 4000; ++i) {
            const QByteArray bytes = Mutated(seeds[i % seeds.size()], random);
            try {
                const TQXViewDocument document = viewdoc::Read(bytes);
                ++loaded;
                viewdoc::Read(viewdoc::Write(document));
            } catch (const EQXError& e) {
                QVERIFY2(e.Message().startsWith("line "), qPrintable(e.Message()));
            }
            if (i % 40 != 0)
                continue;
            WriteFile(Path("fuzz.kvv"), bytes);
            const int nodes = driver.Tree().NodeCount();
            try {
                driver.OpenDocument(Path("fuzz.kvv"));
            } catch (const EQXError& e) {
                QVERIFY2(e.Message().startsWith("TQXView.OpenViewDoc: line "),
                         qPrintable(e.Message()));
                QCOMPARE(driver.Tree().NodeCount(), nodes);
            }
        }
        QVERIFY(loaded > 100 && loaded < 3900);
        qInfo("%d of 4000 mutated documents loaded", loaded);
        QVERIFY2(timer.elapsed() < 120000, qPrintable(QString::number(timer.elapsed())));
    }
};

QTEST_MAIN(TestViewDocument)
#include "tst_ViewDocument.moc"
