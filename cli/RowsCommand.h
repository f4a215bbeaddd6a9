#pragma once

#include "CliCommand.h"

// "korvane-cli rows": the dependent rows of two nodes, a node and its child.
class TQXRowsCommand final : public TQXCliCommand {
public:
    QString Name() const override { return QStringLiteral("rows"); }
    QString Summary() const override;
    QString Help() const override;
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) override;
};
