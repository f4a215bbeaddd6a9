#include "sqlaccess/SqliteIntegerRows.h"

#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>

#include <memory>
#include <vector>

namespace {

sqlite3* HandleOf(const QSqlDatabase& db) {
    if (!db.isOpen())
        return nullptr;
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3* const*>(handle.constData());
}

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

} // namespace

bool ForEachSqliteIntegerRow(const QSqlDatabase& db, qint64& roundTrips, const QString& sql,
                             const std::function<void(std::span<const qint64>)>& visit) {
    sqlite3* connection = HandleOf(db);
    if (connection == nullptr)
        return false;
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare16_v2(connection, sql.utf16(), static_cast<int>(sql.size() * 2), &prepared,
                             nullptr) != SQLITE_OK) {
        sqlite3_finalize(prepared);
        return false;
    }
    const std::unique_ptr<sqlite3_stmt, Finalize> statement(prepared);
    ++roundTrips;
    const int columns = sqlite3_column_count(prepared);
    std::vector<qint64> values(static_cast<size_t>(columns));
    for (;;) {
        const int result = sqlite3_step(prepared);
        if (result == SQLITE_DONE)
            return true;
        if (result != SQLITE_ROW)
            return false;
        for (int i = 0; i < columns; ++i) {
            // One locked call per value; reading the value itself needs no lock.
            sqlite3_value* value = sqlite3_column_value(prepared, i);
            if (sqlite3_value_type(value) != SQLITE_INTEGER)
                return false;
            values[static_cast<size_t>(i)] = sqlite3_value_int64(value);
        }
        visit(values);
    }
}
