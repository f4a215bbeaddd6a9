// korvane-cli: the views of a repository without a window. Every command
// drives the very view the host shows, off screen.
#include "CommandTable.h"
#include "FlowCommand.h"
#include "FormCommand.h"
#include "PropsCommand.h"
#include "RenameCommand.h"
#include "RowsCommand.h"
#include "TreeCommand.h"

#include "sqlaccess/RepositoryConnection.h"

#include <QApplication>
#include <QSettings>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

namespace {
// Qt's notes about running without a user session (no runtime folder, an
// off-screen window system) are not the command's output.
void QuietQtNotes(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg ||
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")) ||
        message.contains(QLatin1String("does not support propagateSizeHints")))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(message));
}
} // namespace

int main(int argc, char* argv[]) {
    qInstallMessageHandler(QuietQtNotes);
    // Our arguments, read before Qt sees them: QApplication takes options such
    // as -reverse, -style or -platform out of the arguments it is given, even
    // where they are the value of one of ours.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    // The view is a widget: it needs a GUI application, but never a screen.
    // Qt gets the program name only and a platform without a display, so no
    // argument or setting of the user's can make it look for another.
    qputenv("QT_QPA_PLATFORM", "offscreen;minimal");
    int qtArgc = 1;
    char* qtArgv[] = {argv[0], nullptr};
    QApplication app(qtArgc, qtArgv);
    QApplication::setApplicationName(QStringLiteral("korvane-cli"));

    // The time limits korvane has, from its settings file, unless --timeout says.
    {
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Korvane"),
                           QStringLiteral("korvane"));
        RepositoryTimeouts::SetCurrent(RepositoryTimeouts::FromSettings(settings));
    }

    TQXCommandTable commands(QStringLiteral("korvane-cli"));
    commands.Add(std::make_unique<TQXTreeCommand>());
    commands.Add(std::make_unique<TQXFlowCommand>());
    commands.Add(std::make_unique<TQXPropsCommand>());
    commands.Add(std::make_unique<TQXRenameCommand>());
    commands.Add(std::make_unique<TQXRowsCommand>());
    commands.Add(std::make_unique<TQXFormCommand>());

    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = commands.Run(arguments, out, err);
    out.flush();
    err.flush();
    return status;
}
