#pragma once

#include <QSqlDatabase>
#include <QString>

#include <functional>
#include <span>

// Reads rows of integers straight through SQLite's own interface, without
// Qt's row cache and a QVariant per value: reading the keys of a whole
// selection that way costs a fraction of what it costs through Qt.
//
// Runs sql when db is an open SQLite connection and hands each row to
// visit. Answers false, having stopped, when db is not SQLite, when SQLite
// refuses or fails, and at the first value that is not an integer (NULL,
// text, real, blob): the caller then reads the same rows through Qt, which
// converts those values and reports a failure in its own words. Counts one
// round trip when the statement ran.
bool ForEachSqliteIntegerRow(const QSqlDatabase& db, qint64& roundTrips, const QString& sql,
                             const std::function<void(std::span<const qint64>)>& visit);
