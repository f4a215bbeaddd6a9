#include "view/FlowRecords.h"

#include "repository/Errors.h"

namespace {
std::size_t Index(qx::Table table) {
    return static_cast<std::size_t>(table);
}
} // namespace

TQXFlowRecords::TQXFlowRecords(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables,
                               bool remember)
    : FReader(dataAccess, tables), FRemember(remember) {}

std::vector<TQXFlowRecords::Record> TQXFlowRecords::ReadSelection(qx::Table table) {
    std::vector<Record> rows;
    TQXTableRef dataSet = FReader.Tables().Table(table);
    const int columns = qx::ColumnCount(table);
    do {
        Record row;
        row.reserve(static_cast<std::size_t>(columns));
        for (int column = 0; column < columns; ++column)
            row.push_back(
                FReader.Access().GetFieldValue(dataSet, FReader.Tables().Field(table, column)));
        rows.push_back(std::move(row));
    } while (FReader.Next(table));
    return rows;
}

bool TQXFlowRecords::Select(qx::Table table, const QString& where) {
    if (!FRemember)
        return FReader.Select(table, where);
    Records& known = FSelections[Index(table)][where];
    if (!known)
        known = std::make_shared<const std::vector<Record>>(
            FReader.Select(table, where) ? ReadSelection(table) : std::vector<Record>());
    FCurrent[Index(table)] = Cursor{known, 0};
    return !known->empty();
}

bool TQXFlowRecords::Next(qx::Table table) {
    if (!FRemember)
        return FReader.Next(table);
    Cursor& cursor = FCurrent[Index(table)];
    if (!cursor.Rows || cursor.Index + 1 >= cursor.Rows->size())
        return false;
    ++cursor.Index;
    return true;
}

const QVariant& TQXFlowRecords::Value(qx::Table table, int column) const {
    const Cursor& cursor = FCurrent[Index(table)];
    if (!cursor.Rows || cursor.Index >= cursor.Rows->size())
        throw EQXError(QStringLiteral("No current record in ") +
                       QLatin1String(qx::TableName(table)));
    return (*cursor.Rows)[cursor.Index][static_cast<std::size_t>(column)];
}

qint32 TQXFlowRecords::Int(qx::Table table, int column) {
    if (!FRemember)
        return FReader.Int(table, column);
    return RecordInt(Value(table, column), QLatin1String(qx::TableName(table)),
                     QLatin1String(qx::ColumnName(table, column)), nullptr);
}

QString TQXFlowRecords::Text(qx::Table table, int column) {
    if (!FRemember)
        return FReader.Text(table, column);
    return VariantToText(Value(table, column));
}

void TQXFlowRecords::Prefetch(qx::Table table, const QString& condition,
                              const std::function<QString(const Record&)>& whereOf,
                              const QStringList& wheres) {
    if (!FRemember)
        return;
    QHash<QString, std::vector<Record>> groups;
    for (const QString& where : wheres)
        if (!FSelections[Index(table)].contains(where))
            groups.insert(where, {});
    if (groups.isEmpty())
        return;
    if (FReader.Select(table, condition))
        for (Record& row : ReadSelection(table)) {
            auto group = groups.find(whereOf(row));
            if (group != groups.end())
                group->push_back(std::move(row));
        }
    for (auto group = groups.begin(); group != groups.end(); ++group)
        FSelections[Index(table)].insert(
            group.key(), std::make_shared<const std::vector<Record>>(std::move(group.value())));
}
