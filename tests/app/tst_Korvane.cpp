// korvane as a user starts it: a screenshot of the first refreshed view, and
// clear failures for a missing repository, bad arguments and a repository
// that cannot be reached.
#include "support/RunProgram.h"
#include "support/SilentServer.h"
#include "support/TestRepository.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

namespace {

ProgramRun Korvane(const QStringList& arguments) {
    return RunProgram("korvane", arguments);
}

} // namespace

class TestKorvane : public QObject {
    Q_OBJECT

    QTemporaryDir FDir;

    QString Settings() const { return FDir.filePath("korvane.ini"); }

private slots:
    void screenshotOfTheFirstView() {
        TestRepository repository;
        repository.Insert("QXFILE", "QXFileID, QXFileName", {{1, "PAYCALC.CBL"}});
        const QString png = FDir.filePath("view.png");
        const ProgramRun run =
            Korvane({"--settings", Settings(), "--screenshot", png, repository.Location()});
        QVERIFY2(run.ExitCode == 0, qPrintable(run.Err));
        QCOMPARE(run.Out.trimmed(), png);
        const QImage image(png);
        QVERIFY(!image.isNull());
        QVERIFY(image.width() >= 800 && image.height() >= 500);
        // The window is drawn, not left blank.
        QVERIFY(image.pixelColor(image.width() / 2, image.height() / 2) !=
                image.pixelColor(5, image.height() - 5));
    }

    void usageErrors() {
        const ProgramRun missing =
            Korvane({"--settings", Settings(), FDir.filePath("nowhere.kvdb")});
        QCOMPARE(missing.ExitCode, 2);
        QVERIFY2(missing.Err.contains("repository not found: " + FDir.filePath("nowhere.kvdb")),
                 qPrintable(missing.Err));
        QCOMPARE(Korvane({"--no-such-option"}).ExitCode, 2);
        const ProgramRun two = Korvane({"a.kvdb", "b.kvdb"});
        QCOMPARE(two.ExitCode, 2);
        QVERIFY(two.Err.contains("usage: korvane"));
        // Repository texts that are no repository are said in words, not aborted on.
        const QString png = FDir.filePath("bad.png");
        const struct {
            const char* Repository;
            const char* Reason;
        } cases[] = {{"   ", "No repository given"},
                     {"host=h dbname=estate garbage", "Invalid PostgreSQL connection string"}};
        for (const auto& bad : cases) {
            const ProgramRun run =
                Korvane({"--settings", Settings(), "--screenshot", png, bad.Repository});
            QCOMPARE(run.ExitCode, 2);
            QVERIFY2(run.Err.contains(bad.Reason), qPrintable(run.Err));
        }
    }

    void screenshotsReplaceOnlyPictures() {
        TestRepository repository;
        const auto bytes = [](const QString& path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        // Given the repository as the picture too, the repository is kept.
        const QByteArray before = bytes(repository.Location());
        const ProgramRun refused = Korvane({"--settings", Settings(), "--screenshot",
                                            repository.Location(), repository.Location()});
        QCOMPARE(refused.ExitCode, 2);
        QVERIFY2(refused.Err.contains("will not write the screenshot over " +
                                      repository.Location() +
                                      ": the file exists and is not a PNG picture"),
                 qPrintable(refused.Err));
        QCOMPARE(bytes(repository.Location()), before);

        // An earlier picture is replaced, through a file renamed into place.
        QTemporaryDir pictures;
        const QString png = pictures.filePath("view.png");
        QImage(4, 4, QImage::Format_RGB32).save(png, "PNG");
        const ProgramRun replaced =
            Korvane({"--settings", Settings(), "--screenshot", png, repository.Location()});
        QVERIFY2(replaced.ExitCode == 0, qPrintable(replaced.Err));
        QVERIFY(QImage(png).width() > 4);
        QCOMPARE(QDir(pictures.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{"view.png"});
    }

    void unreachableRepositoryIsReported() {
        const QString png = FDir.filePath("failed.png");
        const ProgramRun run = Korvane({"--settings", Settings(), "--screenshot", png,
                                        "host=" + FDir.filePath("no-server") + " dbname=estate"});
        QCOMPARE(run.ExitCode, 3);
        QVERIFY2(run.Err.contains("Could not connect to Database estate"), qPrintable(run.Err));
        QVERIFY(QFileInfo::exists(png)); // the marker is shown and rendered

        // A server that never answers is given up on after the settings' timeout.
        const SilentServer silent;
        QSettings settings(FDir.filePath("impatient.ini"), QSettings::IniFormat);
        settings.setValue("Timeouts/Connect", 2);
        settings.sync();
        QElapsedTimer clock;
        clock.start();
        const ProgramRun silence =
            Korvane({"--settings", settings.fileName(), "--screenshot", png,
                     QString("host=127.0.0.1 port=%1 dbname=estate").arg(silent.Port())});
        QCOMPARE(silence.ExitCode, 3);
        QVERIFY2(silence.Err.contains("the server did not answer within 2 s"),
                 qPrintable(silence.Err));
        QVERIFY(clock.elapsed() < 15000);
    }
};

QTEST_GUILESS_MAIN(TestKorvane)
#include "tst_Korvane.moc"
