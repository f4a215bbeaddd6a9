#include "tools/DependentRows.h"

#include "repository/DataAccessInterface.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "tools/NamedTable.h"

std::optional<QString> TQXDependentRowsReader::Condition(const TQXItem& a, const TQXItem& b,
                                                         bool topDown) {
    const TQXItem& caller = topDown ? a : b;
    const TQXItem& target = topDown ? b : a;
    if (b.EntryID > 0)
        return where::Keys({{"QXFromFileID", caller.FileID},
                            {"QXFromObjectID", caller.ObjectID},
                            {"QXFromEntryID", caller.EntryID},
                            {"QXFileID", target.FileID},
                            {"QXObjectID", target.ObjectID},
                            {"QXEntryID", target.EntryID}});
    if (b.ObjectID > 0)
        return where::Keys({{"QXFromFileID", caller.FileID},
                            {"QXFromObjectID", caller.ObjectID},
                            {"QXFileID", target.FileID},
                            {"QXObjectID", target.ObjectID}});
    if (b.PackageID > 0) {
        TQXNamedTable packages(FDataAccess, QStringLiteral("QXPACKAGE"));
        if (!packages.Select(where::Keys({{"QXPackageID", b.PackageID}})))
            return QString();
        if (packages.Int("QXObjectFileID") != packages.Int("QXFileID"))
            return std::nullopt;
        return where::Keys({{"QXFromFileID", caller.FileID}, {"QXFileID", target.FileID}});
    }
    return std::nullopt;
}

QStringList TQXDependentRowsReader::Rows(const QString& condition) {
    QStringList rows;
    // An empty condition would select every call of the repository.
    if (condition.isEmpty())
        return rows;
    TQXNamedTable calls(FDataAccess, QStringLiteral("QXDEPENDENCIES"));
    TQXNamedTable lines(FDataAccess, QStringLiteral("QXROW"));
    TQXNamedTable objects(FDataAccess, QStringLiteral("QXOBJECT"));
    TQXNamedTable entries(FDataAccess, QStringLiteral("QXENTRY"));
    if (!calls.Select(condition))
        return rows;
    do {
        if (!lines.Select(where::Keys(
                {{"QXFileID", calls.Int("QXFromFileID")}, {"QXRowID", calls.Int("QXFromRowID")}})))
            continue;
        const qint32 file = lines.Int("QXFileID");
        const qint32 object = lines.Int("QXObjectID");
        QString place;
        if (objects.Select(where::FileObjectKeys(file, object))) {
            place = QLatin1Char('[') + objects.Text("QXObjectIdentifier");
            if (entries.Select(where::Keys({{"QXFileID", file},
                                            {"QXObjectID", object},
                                            {"QXEntryID", lines.Int("QXEntryID")}})))
                place += QLatin1Char('.') + entries.Text("QXEntryName");
            place += QLatin1Char(']');
        }
        rows << lines.Text("QXRow") + QStringLiteral("    ") + place;
    } while (calls.Next());
    return rows;
}
