#include "sqlaccess/SqlQueryResult.h"

#include "repository/Errors.h"

SqlQueryResult::SqlQueryResult(QString tableName, QStringList columns,
                               QVector<QVector<QVariant>> rows)
    : FTableName(std::move(tableName)), FColumns(std::move(columns)), FRows(std::move(rows)) {
    for (int i = 0; i < FColumns.size(); ++i)
        FPositions.insert(FColumns[i].toUpper(), i);
}

QVariant SqlQueryResult::FieldValue(int position) const {
    if (Eof())
        throw EQXError(QStringLiteral("No current record in the query result of ") + FTableName);
    if (position < 0 || position >= FColumns.size())
        throw EQXError(QStringLiteral("Field index %1 out of range in the query result of %2")
                           .arg(position)
                           .arg(FTableName));
    return FRows[FPos][position];
}

QVariant SqlQueryResult::ValueOf(const TQXField& field) const {
    const auto it = FPositions.constFind(field.Name.toUpper());
    if (it == FPositions.cend())
        throw EQXError(QStringLiteral("Field '%1' not found in the query result of %2")
                           .arg(field.Name, FTableName));
    return FieldValue(it.value());
}

bool SqlQueryResult::Advance() {
    if (FPos < FRows.size())
        ++FPos;
    return FPos < FRows.size();
}

void SqlQueryResult::Close() {
    FRows.clear();
    FPos = 0;
}

QString SqlQueryResult::RecordName() const {
    if (Eof())
        return QString();
    return QStringLiteral("row ") + QString::number(FPos + 1) +
           QStringLiteral(" of the query result on ") + FTableName;
}
