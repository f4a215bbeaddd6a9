#pragma once

#include <QSqlDatabase>

// SQLite's own upper() folds ASCII letters only, where PostgreSQL and the
// view fold every letter. Each SQLite connection gets an Upper of its own
// that folds as where::UpperCase does, so that "Upper(" in a where text
// means the same on both databases. Throws EQXError when the connection is
// not an open SQLite connection or the function cannot be registered.
void RegisterSqliteFunctions(const QSqlDatabase& db);
