#pragma once

#include "CliCommand.h"

#include <memory>
#include <vector>

// The subcommands by name, and what is common to all of them: the program's
// help, "help COMMAND", and turning errors into messages and exit statuses.
class TQXCommandTable {
public:
    explicit TQXCommandTable(QString program);

    void Add(std::unique_ptr<TQXCliCommand> command);
    // Runs the arguments that follow the program's name.
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) const;

private:
    TQXCliCommand* Find(const QString& name) const;
    QString Usage() const;
    int RunHelp(const QStringList& arguments, QTextStream& out, QTextStream& err) const;
    int UsageError(const QString& text, const QString& helpTopic, QTextStream& err) const;

    QString FProgram;
    std::vector<std::unique_ptr<TQXCliCommand>> FCommands;
};
