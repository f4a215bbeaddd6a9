#include "CommandTable.h"

#include "UsageError.h"

#include <QTextStream>

TQXCommandTable::TQXCommandTable(QString program) : FProgram(std::move(program)) {}

void TQXCommandTable::Add(std::unique_ptr<TQXCliCommand> command) {
    FCommands.push_back(std::move(command));
}

TQXCliCommand* TQXCommandTable::Find(const QString& name) const {
    for (const auto& command : FCommands)
        if (command->Name() == name)
            return command.get();
    return nullptr;
}

QString TQXCommandTable::Usage() const {
    QString text = QStringLiteral("usage: %1 COMMAND [ARGUMENTS]\n\n"
                                  "Korvane View's views without a window: refreshed and opened "
                                  "as in the view,\nprinted for scripts and reports.\n\n"
                                  "commands:\n")
                       .arg(FProgram);
    for (const auto& command : FCommands)
        text += QStringLiteral("  %1  %2\n").arg(command->Name(), -8).arg(command->Summary());
    text +=
        QStringLiteral("  %1  %2\n")
            .arg(QStringLiteral("help"), -8)
            .arg(QStringLiteral("this text, or a command's usage: %1 help COMMAND").arg(FProgram));
    text += QStringLiteral("\nexit status: 0 success, 1 failure, 2 bad usage\n");
    return text;
}

int TQXCommandTable::UsageError(const QString& text, const QString& helpTopic,
                                QTextStream& err) const {
    err << FProgram << ": " << text << "\n";
    err << "run '" << FProgram << " help" << (helpTopic.isEmpty() ? QString() : " " + helpTopic)
        << "' for the usage\n";
    return ExitUsage;
}

int TQXCommandTable::RunHelp(const QStringList& arguments, QTextStream& out,
                             QTextStream& err) const {
    if (arguments.isEmpty()) {
        out << Usage();
        return ExitOk;
    }
    if (arguments.size() > 1)
        return UsageError(QStringLiteral("help takes one command name"), QString(), err);
    const TQXCliCommand* command = Find(arguments.constFirst());
    if (!command)
        return UsageError(QStringLiteral("unknown command '%1'").arg(arguments.constFirst()),
                          QString(), err);
    out << command->Help();
    return ExitOk;
}

int TQXCommandTable::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) const {
    if (arguments.isEmpty()) {
        err << Usage();
        return ExitUsage;
    }
    const QString name = arguments.constFirst();
    const QStringList rest = arguments.mid(1);
    if (name == QLatin1String("help"))
        return RunHelp(rest, out, err);
    if (name == QLatin1String("--help") || name == QLatin1String("-h"))
        return RunHelp({}, out, err);
    TQXCliCommand* command = Find(name);
    if (!command)
        return UsageError(QStringLiteral("unknown command '%1'").arg(name), QString(), err);
    try {
        return command->Run(rest, out, err);
    } catch (const EQXUsageError& e) {
        out.flush();
        return UsageError(e.Message(), command->Name(), err);
    } catch (const std::exception& e) {
        out.flush();
        err << FProgram << ": " << ExceptionMessage(e) << "\n";
        return ExitFailure;
    }
}
