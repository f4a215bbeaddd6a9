#pragma once

#include <QString>
#include <QStringList>

class QTextStream;

// Exit statuses of korvane-cli.
enum TQXExitStatus { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

// One subcommand of korvane-cli ("tree", ...): its name, its help, and
// running it on the arguments that follow its name. Bad usage is thrown as
// EQXUsageError, failures as EQXError; the command table reports both.
class TQXCliCommand {
public:
    virtual ~TQXCliCommand() = default;

    virtual QString Name() const = 0;
    // One line for the list of commands.
    virtual QString Summary() const = 0;
    // The full usage text.
    virtual QString Help() const = 0;
    // Results go to `out`, warnings and notes to `err`; answers the exit status.
    virtual int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) = 0;
};
