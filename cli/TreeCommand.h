#pragma once

#include "CliCommand.h"

class TQXTreeOptions;
class TQXViewDriver;

// "korvane-cli tree": refreshes a view of the repository with the given
// settings, opens nodes by depth or along a path, and prints the tree.
class TQXTreeCommand final : public TQXCliCommand {
public:
    QString Name() const override { return QStringLiteral("tree"); }
    QString Summary() const override;
    QString Help() const override;
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) override;

    // Opens the nodes the options ask for; warns when the node cap stopped it.
    static void Open(TQXViewDriver& driver, const TQXTreeOptions& options, QTextStream& err);
    // A SQLite repository must exist: opening it must not create an empty one.
    static void CheckRepositoryExists(const QString& repository);
    // The options' time limit, when given, for connecting and each statement.
    static void SetTimeouts(const TQXTreeOptions& options);

private:
    // Adds the --track paths as tracks, then selects the --select nodes.
    static void SelectAndTrack(TQXViewDriver& driver, const TQXTreeOptions& options);
    // Which text of the path has no node, for the error message.
    static QString MissingOnPath(TQXViewDriver& driver, const QStringList& path);
    // The questions the view asked and how they were answered.
    static void ReportQuestions(TQXViewDriver& driver, bool yes, QTextStream& err);
};
