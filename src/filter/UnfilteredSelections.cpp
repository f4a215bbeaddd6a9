#include "filter/UnfilteredSelections.h"

#include <QStringList>

TQXRootFilter SelectUnfiltered(TQXRecordReader& records, const QString& level) {
    static const QStringList levels{"System", "Computer", "Application", "Package",
                                    "Object", "Entry",    "Code",        "Data"};
    const qsizetype rank = levels.indexOf(level);
    records.Select(qx::Table::QXFILE, QString());
    if (rank >= levels.indexOf(QStringLiteral("Package")))
        records.Select(qx::Table::QXPACKAGE, QString());
    if (rank >= levels.indexOf(QStringLiteral("Object")))
        records.Select(qx::Table::QXOBJECT, QString());
    if (rank >= levels.indexOf(QStringLiteral("Entry")))
        records.Select(qx::Table::QXENTRY, QString());
    return {};
}
