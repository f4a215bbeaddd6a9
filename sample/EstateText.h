#pragma once

#include "repository/Errors.h"

#include <QString>
#include <QStringList>

// One source text of the estate, compiled into the generator from
// sample/estate (its README describes the conventions). A {NAME} placeholder
// stands for NAME followed by the suffix of the suite copy being written, so
// the demo reads NAME and the first regional copy NAME-1. Trailing blanks are
// dropped from every line.
class TEstateText {
public:
    // The resource :/estate/<path>. Throws EQXError naming the resource when
    // it is missing or a placeholder in it is malformed.
    static TEstateText Load(const QString& path, const QString& suffix = QString());

    // A text given directly; name is what errors call it.
    TEstateText(const QString& name, const QString& text, const QString& suffix = QString());

    const QString& Name() const { return FName; }
    qsizetype Size() const { return FLines.size(); }
    const QString& operator[](qsizetype line) const { return FLines[line]; }

    // An error in the given line (0-based), for the message prefix
    // "Sample estate: <name> line <n>: ".
    EQXError Error(qsizetype line, const QString& message) const;

private:
    QString FName;
    QStringList FLines;
};
