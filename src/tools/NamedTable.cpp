#include "tools/NamedTable.h"

TQXNamedTable::TQXNamedTable(TQXDataAccessInterface& dataAccess, const QString& tableName)
    : FDataAccess(dataAccess), FName(tableName), FTable(dataAccess.GetTableRef(tableName)) {}

bool TQXNamedTable::Select(const QString& where) {
    return FDataAccess.SelectRecords(FTable, where);
}

bool TQXNamedTable::Next() {
    return FDataAccess.NextRecord(FTable);
}

void TQXNamedTable::Delete(const QString& where) {
    FDataAccess.DeleteRecords(FTable, where, 0);
}

TQXFieldRef TQXNamedTable::Field(const char* column) {
    const QString name = QLatin1String(column);
    auto it = FFields.constFind(name);
    if (it == FFields.cend())
        it = FFields.insert(name, FDataAccess.GetFieldRef(FTable, name));
    return it.value();
}

QString TQXNamedTable::Text(const char* column) {
    return VariantToText(FDataAccess.GetFieldValue(FTable, Field(column)));
}

qint32 TQXNamedTable::Int(const char* column) {
    return RecordInt(FDataAccess.GetFieldValue(FTable, Field(column)), FName, QLatin1String(column),
                     FTable);
}

void TQXNamedTable::Set(const char* column, const QVariant& value) {
    FDataAccess.SetFieldValue(FTable, Field(column), value);
}
