// korvane-cli: the views of a repository without a window. Every command
// drives the very view the host shows, off screen.
#include "CommandTable.h"
#include "TreeCommand.h"

#include <QApplication>
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
    // The view is a widget: it needs a GUI application, but never a screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("korvane-cli"));

    TQXCommandTable commands(QStringLiteral("korvane-cli"));
    commands.Add(std::make_unique<TQXTreeCommand>());

    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = commands.Run(QApplication::arguments().mid(1), out, err);
    out.flush();
    err.flush();
    return status;
}
