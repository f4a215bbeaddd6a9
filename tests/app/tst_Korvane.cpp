// korvane as a user starts it: a screenshot of the first refreshed view, and
// clear failures for a missing repository, bad arguments and a repository
// that cannot be reached.
#include "support/TestRepository.h"

#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run {
    int ExitCode = -1;
    QString Out;
    QString Err;
};

Run Korvane(const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationDirPath() + "/korvane", arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
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
        const Run run =
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

    void missingRepositoryIsAUsageError() {
        const Run run = Korvane({"--settings", Settings(), FDir.filePath("nowhere.kvdb")});
        QCOMPARE(run.ExitCode, 2);
        QVERIFY2(run.Err.contains("repository not found: " + FDir.filePath("nowhere.kvdb")),
                 qPrintable(run.Err));
    }

    void badArgumentsAreUsageErrors() {
        QCOMPARE(Korvane({"--no-such-option"}).ExitCode, 2);
        const Run two = Korvane({"a.kvdb", "b.kvdb"});
        QCOMPARE(two.ExitCode, 2);
        QVERIFY(two.Err.contains("usage: korvane"));
    }

    void unreachableRepositoryIsReported() {
        const QString png = FDir.filePath("failed.png");
        const Run run = Korvane({"--settings", Settings(), "--screenshot", png,
                                 "host=" + FDir.filePath("no-server") + " dbname=estate"});
        QCOMPARE(run.ExitCode, 3);
        QVERIFY2(run.Err.contains("Could not connect to Database estate"), qPrintable(run.Err));
        QVERIFY(QFileInfo::exists(png)); // the marker is shown and rendered
    }
};

QTEST_GUILESS_MAIN(TestKorvane)
#include "tst_Korvane.moc"
