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
    qint32 Int(qx::Table table, int column) {
        return VariantToInt(
            FDataAccess.GetFieldValue(FTables.Table(table), FTables.Field(table, column)));
    }
    QString Text(qx::Table table, int column) {
        return VariantToText(
            FDataAccess.GetFieldValue(FTables.Table(table), FTables.Field(table, column)));
    }
    // Reads a value of the current record; false when there is none to read
    // (an empty selection) or it is not a number.
    bool TryInt(qx::Table table, int column, qint32& value) {
        try {
            value = Int(table, column);
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    TQXDataAccessInterface& Access() { return FDataAccess; }
    TQXTableHandleSet& Tables() { return FTables; }

private:
    TQXDataAccessInterface& FDataAccess;
    TQXTableHandleSet& FTables;
};
