#pragma once

#include <QSqlDatabase>

// The repository's tables and indexes, for the sample builder and tests.
// Indexes are separate so a bulk load can create them after the data.
namespace RepositorySchema {

void CreateTables(QSqlDatabase& db);
void CreateIndexes(QSqlDatabase& db); // ends with ANALYZE
void DropTables(QSqlDatabase& db);    // every repository table that exists

// The script that creates the indexes on this database.
QString IndexScript(const QSqlDatabase& db);

// Runs a script of ";"-terminated statements; throws EQXError on failure.
void RunScript(QSqlDatabase& db, const QString& script);

} // namespace RepositorySchema
