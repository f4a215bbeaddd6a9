#pragma once

#include "CliCommand.h"

// "korvane-cli flow": the data flow of one variable, as "Show Data Flow"
// opens it: the Dependencies view at the Data level with the variable as its
// only root node, opened by depth and printed as "tree" prints.
class TQXFlowCommand final : public TQXCliCommand {
public:
    QString Name() const override { return QStringLiteral("flow"); }
    QString Summary() const override;
    QString Help() const override;
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) override;
};
