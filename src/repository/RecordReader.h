#pragma once

#include "repository/DataAccessInterface.h"
#include "repository/TableHandleSet.h"

// Reads the repository through a view's table handle set: the table and
// field references are named by table and column, values come back as the
// integers and texts the view works with.
class TQXRecordReader {
public:
    TQXRecordReader(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables)
        : FDataAccess(dataAccess), FTables(tables) {}

    bool Select(qx::Table table, const QString& where) {
        return FDataAccess.SelectRecords(FTables.Table(table), where);
    }
    bool Next(qx::Table table) { return FDataAccess.NextRecord(FTables.Table(table)); }
    // LocateRecord in the table's current selection.
    bool Locate(qx::Table table, const QString& keyFields, const QVariantList& keyValues) {
        return FDataAccess.LocateRecord(FTables.Table(table), keyFields, keyValues, 1);
    }
    // A whole number of the current record; a NULL, a value that is not a
    // whole number or one outside 32 bits raises EQXError naming table,
    // column and record.
    qint32 Int(qx::Table table, int column) {
        TQXTableRef dataSet = FTables.Table(table);
        return RecordInt(FDataAccess.GetFieldValue(dataSet, FTables.Field(table, column)),
                         QLatin1String(qx::TableName(table)),
                         QLatin1String(qx::ColumnName(table, column)), dataSet);
    }
    QString Text(qx::Table table, int column) {
        return VariantToText(
            FDataAccess.GetFieldValue(FTables.Table(table), FTables.Field(table, column)));
    }
    // Reads a value of the current record; false when there is none to read
    // (an empty selection). A value that is there but not a whole number
    // raises EQXError as Int does.
    bool TryInt(qx::Table table, int column, qint32& value) {
        TQXTableRef dataSet = FTables.Table(table);
        QVariant read;
        try {
            read = FDataAccess.GetFieldValue(dataSet, FTables.Field(table, column));
        } catch (const std::exception&) {
            return false;
        }
        if (read.isNull() && (dataSet == nullptr || dataSet->Eof()))
            return false;
        value = RecordInt(read, QLatin1String(qx::TableName(table)),
                          QLatin1String(qx::ColumnName(table, column)), dataSet);
        return true;
    }

    TQXDataAccessInterface& Access() { return FDataAccess; }
    TQXTableHandleSet& Tables() { return FTables; }

private:
    TQXDataAccessInterface& FDataAccess;
    TQXTableHandleSet& FTables;
};
