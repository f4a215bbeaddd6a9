#pragma once

#include "CliCommand.h"

// "korvane-cli props": what the item properties dialog shows for a node.
class TQXPropsCommand final : public TQXCliCommand {
public:
    QString Name() const override { return QStringLiteral("props"); }
    QString Summary() const override;
    QString Help() const override;
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) override;
};
