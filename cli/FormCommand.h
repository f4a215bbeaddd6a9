#pragma once

#include "CliCommand.h"

// "korvane-cli form": draws one stored screen map as the form viewer does
// and prints its boxes as JSON, as text on an 80-column grid, or renders the
// window off screen into a PNG file.
class TQXFormCommand final : public TQXCliCommand {
public:
    QString Name() const override { return QStringLiteral("form"); }
    QString Summary() const override;
    QString Help() const override;
    int Run(const QStringList& arguments, QTextStream& out, QTextStream& err) override;
};
