#pragma once

#include "CliCommand.h"

// "korvane-cli rename": renames a system, computer or application (and may
// give it another icon) as the item properties dialog saves it.
class TQXRenameCommand final : public TQXCliCommand {
public:
    QString Name() const override { return QStringLiteral("rename"); }
    QString Summary() const override;
    QString Help() const override;
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) override;
};
