#include "repository/TableHandleSet.h"

int TQXTableHandleSet::BoundCount() const {
    int count = 0;
    for (int t = 0; t < qx::TableCount; ++t) {
        count += FTables[t] != nullptr ? 1 : 0;
        for (TQXFieldRef field : FFields[t])
            count += field != nullptr ? 1 : 0;
    }
    return count;
}

void TQXTableHandleSet::Clear() {
    FTables.fill(nullptr);
    for (auto& fields : FFields)
        fields.fill(nullptr);
}

void AssignDBPointers(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& handles) {
    handles.Clear();
    for (int t = 0; t < qx::TableCount; ++t) {
        const auto table = static_cast<qx::Table>(t);
        TQXTableRef ref = dataAccess.GetTableRef(QString::fromLatin1(qx::TableName(table)));
        handles.FTables[t] = ref;
        for (int c = 0; c < qx::ColumnCount(table); ++c)
            handles.FFields[t][c] =
                dataAccess.GetFieldRef(ref, QString::fromLatin1(qx::ColumnName(table, c)));
    }
}
