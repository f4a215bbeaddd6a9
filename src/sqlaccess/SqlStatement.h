#pragma once

#include "repository/Errors.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVector>

#include <functional>

class StatementWatchdog;

// A statement the database refused: the database's own message, and its
// error code (SQLite's result code, PostgreSQL's SQLSTATE) so that callers
// can tell a read-only repository from other failures.
class SqlError : public EQXError {
public:
    SqlError(const QString& message, QString code) : EQXError(message), FCode(std::move(code)) {}
    const QString& Code() const { return FCode; }

private:
    QString FCode;
};

// A statement that ran out of time: the server cancelled it (statement or
// lock timeout), did not answer at all, or a SQLite file stayed locked.
class EQXStatementTimeout : public EQXError {
public:
    using EQXError::EQXError;
};

// Running one statement against the repository: every failure becomes a
// SqlError carrying the database's own message (EQXStatementTimeout when it
// ran out of time), and every statement counts as one round trip. No
// statement waits longer than the connection's statement timeout (plus a
// grace when the server does not answer at all).
class SqlStatement {
public:
    SqlStatement(const QSqlDatabase& db, qint64& roundTrips);

    // Executes a statement (with positional bind values) and reads every
    // row it returns.
    QVector<QVector<QVariant>> ReadAll(const QString& sql, const QVariantList& values = {});
    // Executes a statement and hands each row to the visitor until it
    // answers false; for reads too large to hold at once.
    void ForEachRow(const QString& sql, const std::function<bool(const QSqlQuery&)>& visit,
                    const QVariantList& values = {});
    // Executes a statement with positional bind values; returns rows affected.
    int Execute(const QString& sql, const QVariantList& values = {});

    // Column names of the last statement read.
    const QStringList& Columns() const { return FColumns; }

private:
    QSqlQuery Run(const QString& sql, const QVariantList& values, StatementWatchdog& watchdog);
    [[noreturn]] void Fail(const QSqlError& error, const StatementWatchdog& watchdog) const;

    QSqlDatabase FDb;
    qint64& FRoundTrips;
    QStringList FColumns;
};

// A key value written into SQL text: numbers in decimal, text in quotes as
// where::Quoted writes it (NULL, which equals nothing, for a text holding a NUL).
QString SqlLiteral(const QVariant& value);
