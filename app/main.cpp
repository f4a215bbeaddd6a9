// korvane: the host application. Loads the view library, opens a repository
// given on the command line or chosen among the configured Source
// Databases, and shows its views.
#include "CommandLine.h"
#include "MainWindow.h"
#include "ViewLibrary.h"

#include "host/BaseFunctions.h"
#include "host/FormInterface.h"
#include "platform/ScriptedUIServices.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>
#include <QSaveFile>
#include <QSettings>

#include <cstdio>
#include <memory>

namespace {

// Exit codes.
constexpr int ExitOk = 0;
constexpr int ExitFailure = 1;      // view library or screenshot file
constexpr int ExitUsage = 2;        // bad arguments, missing repository
constexpr int ExitNotConnected = 3; // screenshot taken, but the view reported a problem

void Complain(const QString& text) {
    std::fprintf(stderr, "korvane: %s\n", qPrintable(text));
}

std::unique_ptr<QSettings> OpenSettings(const QString& file) {
    if (file.isEmpty())
        return std::make_unique<QSettings>();
    return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

// Why a screenshot must not be written to `file`, or nothing: a screenshot
// only ever replaces an earlier picture, never a repository or a document
// given there by mistake.
QString ScreenshotRefusal(const QString& file) {
    const QFileInfo info(file);
    if (!info.exists())
        return QString();
    if (info.isDir())
        return QStringLiteral("the screenshot file %1 is a folder").arg(file);
    QFile existing(file);
    const QByteArray pngSignature("\x89PNG\r\n\x1a\n", 8);
    if (!existing.open(QIODevice::ReadOnly) || existing.read(8) != pngSignature)
        return QStringLiteral("will not write the screenshot over %1: the file exists and is "
                              "not a PNG picture")
            .arg(file);
    return QString();
}

// Lets the first view finish its refresh and paint, then saves the window
// through a temporary file beside `file`, renamed into place when complete.
int TakeScreenshot(TQXMainWindow& window, const QString& file,
                   const TQXScriptedUIServices& reported) {
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
    const QPixmap picture = window.grab();
    QSaveFile out(file);
    if (picture.isNull() || !out.open(QIODevice::WriteOnly) || !picture.save(&out, "PNG") ||
        !out.commit()) {
        Complain(
            QStringLiteral("could not write the screenshot %1: %2").arg(file, out.errorString()));
        return ExitFailure;
    }
    std::printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
    // Messages the view showed (a failed connection, for one) go to stderr.
    QStringList shown = reported.Messages() + reported.Errors();
    for (QString text : shown)
        Complain(text.replace(QLatin1Char('\r'), QLatin1Char('\n')));
    return shown.isEmpty() ? ExitOk : ExitNotConnected;
}

} // namespace

int Run(QApplication& app) {
    QApplication::setOrganizationName(QStringLiteral("Korvane"));
    QApplication::setApplicationName(QStringLiteral("korvane"));
    QApplication::setApplicationDisplayName(QStringLiteral("Korvane"));

    const TQXCommandLine commandLine = TQXCommandLine::Parse(QApplication::arguments());
    if (commandLine.HelpShown)
        return ExitOk;
    if (!commandLine.Error.isEmpty()) {
        Complain(commandLine.Error);
        Complain(QStringLiteral("usage: korvane [--settings FILE] [--screenshot FILE] "
                                "[REPOSITORY]"));
        return ExitUsage;
    }
    if (const QString refusal = ScreenshotRefusal(commandLine.ScreenshotFile); !refusal.isEmpty()) {
        Complain(refusal);
        return ExitUsage;
    }
    if (commandLine.RepositoryMissing()) {
        Complain(QStringLiteral("repository not found: %1").arg(commandLine.Repository));
        Complain(QStringLiteral("give an existing SQLite repository file or a PostgreSQL "
                                "connection string"));
        return ExitUsage;
    }

    // Without a user to answer, messages are collected and reported.
    const bool unattended = !commandLine.ScreenshotFile.isEmpty();
    std::unique_ptr<TQXScriptedUIServices> scripted;
    if (unattended)
        scripted = std::make_unique<TQXScriptedUIServices>();

    TQXViewLibrary library;
    try {
        // Built, the view library lies beside korvane; installed, in the
        // library folder of the prefix.
        const QDir programs(QApplication::applicationDirPath());
        const QString installed = programs.filePath(QStringLiteral(KV_LIBRARY_FROM_BINARY));
        library.Load(
            QFileInfo::exists(installed + QStringLiteral("/libkorvaneview.so")) &&
                    !QFileInfo::exists(programs.filePath(QStringLiteral("libkorvaneview.so")))
                ? installed
                : programs.path());
    } catch (const EQXError& e) {
        Complain(e.Message());
        if (!unattended)
            TQXUIServices::Current().ShowError(e.Message());
        return ExitFailure;
    }

    TQXBaseFunctions baseFunctions;
    {
        const std::unique_ptr<QSettings> settings = OpenSettings(commandLine.SettingsFile);
        baseFunctions.LoadSettings(*settings);
        RepositoryTimeouts::SetCurrent(RepositoryTimeouts::FromSettings(*settings));
    }
    QString connection;
    if (!commandLine.Repository.isEmpty()) {
        connection = TQXBaseFunctions::ConnectionNameFor(commandLine.Repository);
        baseFunctions.SetConnection(connection, commandLine.Repository);
    }

    TQXMainWindow window(baseFunctions, commandLine.SettingsFile);
    window.resize(1180, 760);
    window.show();
    // Drawn before the first view connects, which may take until a timeout.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    window.OpenView(connection);

    if (unattended)
        return TakeScreenshot(window, commandLine.ScreenshotFile, *scripted);
    return app.exec();
}

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    // A repository text that cannot be read as one (blanks only, a broken
    // connection string) is a bad argument, said in words, never an abort.
    try {
        return Run(app);
    } catch (const EQXError& e) {
        Complain(e.Message());
        return ExitUsage;
    } catch (const std::exception& e) {
        Complain(QString::fromLocal8Bit(e.what()));
        return ExitFailure;
    }
}
