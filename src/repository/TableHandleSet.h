#pragma once

#include "repository/DataAccessInterface.h"
#include "repository/SchemaNames.h"

#include <array>

// The table and field references a view binds once per connection: nine
// tables, each with its bound columns, in one fixed structure indexed by
// table and column. References not (yet) bound are null.
class TQXTableHandleSet {
public:
    TQXTableRef Table(qx::Table table) const { return FTables[Index(table)]; }
    TQXFieldRef Field(qx::Table table, int column) const { return FFields[Index(table)][column]; }

    // Replaces one table reference, as after a query stood in for the table.
    void RebindTable(qx::Table table, TQXTableRef ref) { FTables[Index(table)] = ref; }

    // Number of references bound so far (74 when complete).
    int BoundCount() const;
    void Clear();

private:
    friend void AssignDBPointers(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& handles);
    static int Index(qx::Table table) { return static_cast<int>(table); }

    std::array<TQXTableRef, qx::TableCount> FTables{};
    std::array<std::array<TQXFieldRef, qx::MaxBoundColumns>, qx::TableCount> FFields{};
};

// Binds every reference in order: for each table its GetTableRef, then the
// GetFieldRef of each of its columns. An exception ends the binding where it
// stands; what was bound before stays bound.
void AssignDBPointers(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& handles);
