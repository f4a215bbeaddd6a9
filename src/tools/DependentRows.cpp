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

QHash<std::pair<qint32, qint32>, TQXDependentRowsReader::Line>
TQXDependentRowsReader::ReadLines(const QList<std::pair<qint32, qint32>>& keys) {
    QHash<qint32, QList<qint32>> rowsByFile;
    for (const auto& [file, row] : keys)
        if (!rowsByFile[file].contains(row))
            rowsByFile[file] << row;
    QHash<std::pair<qint32, qint32>, Line> lines;
    TQXNamedTable table(FDataAccess, QStringLiteral("QXROW"));
    constexpr qsizetype IdsPerStatement = 500;
    for (auto file = rowsByFile.cbegin(); file != rowsByFile.cend(); ++file)
        for (qsizetype i = 0; i < file.value().size(); i += IdsPerStatement) {
            if (!table.Select(where::Keys({{"QXFileID", file.key()}}) + QStringLiteral(" AND ") +
                              where::In("QXRowID", file.value().mid(i, IdsPerStatement),
                                        QStringLiteral(", "))))
                continue;
            do // record order: a row's first record comes first
                lines.insert({file.key(), table.Int("QXRowID")},
                             lines.value({file.key(), table.Int("QXRowID")},
                                         Line{table.Int("QXObjectID"), table.Int("QXEntryID"),
                                              table.Text("QXRow")}));
            while (table.Next());
        }
    return lines;
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
    QList<std::pair<qint32, qint32>> keys; // the calling lines, file and row
    do
        keys << std::pair{calls.Int("QXFromFileID"), calls.Int("QXFromRowID")};
    while (calls.Next());
    const auto read = FLineByLine ? decltype(ReadLines(keys))() : ReadLines(keys);
    for (const auto& [file, row] : keys) {
        Line line;
        if (FLineByLine) {
            if (!lines.Select(where::Keys({{"QXFileID", file}, {"QXRowID", row}})))
                continue;
            line = Line{lines.Int("QXObjectID"), lines.Int("QXEntryID"), lines.Text("QXRow")};
        } else if (const auto found = read.constFind({file, row}); found != read.cend()) {
            line = found.value();
        } else {
            continue;
        }
        QString place;
        if (objects.Select(where::FileObjectKeys(file, line.ObjectID))) {
            place = QLatin1Char('[') + objects.Text("QXObjectIdentifier");
            if (entries.Select(where::Keys({{"QXFileID", file},
                                            {"QXObjectID", line.ObjectID},
                                            {"QXEntryID", line.EntryID}})))
                place += QLatin1Char('.') + entries.Text("QXEntryName");
            place += QLatin1Char(']');
        }
        rows << line.Text + QStringLiteral("    ") + place;
    }
    return rows;
}
