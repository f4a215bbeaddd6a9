#pragma once

#include "repository/Errors.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVector>

#include <functional>

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

// Running one statement against the repository: every failure becomes a
// SqlError carrying the database's own message, and every statement counts
// as one round trip.
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
    QSqlQuery Run(const QString& sql, const QVariantList& values);

    QSqlDatabase FDb;
    qint64& FRoundTrips;
    QStringList FColumns;
};

// A key value written into SQL text: numbers in decimal, text in quotes.
QString SqlLiteral(const QVariant& value);
