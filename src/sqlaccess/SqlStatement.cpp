#include "sqlaccess/SqlStatement.h"

#include "repository/Errors.h"
#include "repository/WhereText.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/StatementWatchdog.h"

#include <QSqlError>
#include <QSqlRecord>

#include <cstdio>

namespace {

// The server's own words, without the position and code that follow them:
// "ERROR:  canceling statement due to lock timeout\nLINE 1: ...\n(55P03)" becomes
// "canceling statement due to lock timeout".
QString ServerMessage(const QSqlError& error) {
    QString text = error.databaseText().trimmed().section(QLatin1Char('\n'), 0, 0);
    if (text.startsWith(QLatin1String("ERROR:")))
        text = text.mid(6);
    return text.trimmed();
}

bool IsTimeout(const QSqlDatabase& db, const QSqlError& error) {
    const QString code = error.nativeErrorCode();
    if (IsPostgreSQL(db)) // query_canceled, lock_not_available
        return code == QLatin1String("57014") || code == QLatin1String("55P03");
    return code == QLatin1String("5"); // SQLITE_BUSY: another connection holds the lock
}

// The database's own words; Qt's note on what it was doing only when the
// database said nothing.
SqlError ErrorOf(const QSqlError& error) {
    QString message = error.databaseText().simplified();
    if (message.isEmpty())
        message = error.text().simplified();
    if (message.isEmpty())
        message = QStringLiteral("The database refused the statement");
    return SqlError(message, error.nativeErrorCode());
}
// KORVANE_TRACE_SQL=1 writes every statement to stderr, for finding where
// round trips go.
bool Tracing() {
    static const bool tracing = qEnvironmentVariableIntValue("KORVANE_TRACE_SQL") != 0;
    return tracing;
}

} // namespace

SqlStatement::SqlStatement(const QSqlDatabase& db, qint64& roundTrips)
    : FDb(db), FRoundTrips(roundTrips) {}

void SqlStatement::Fail(const QSqlError& error, const StatementWatchdog& watchdog) const {
    const int timeout = StatementTimeoutOf(FDb);
    const QString limit = QString::number(timeout) + QStringLiteral(" s");
    if (watchdog.Fired())
        throw EQXStatementTimeout(
            QStringLiteral("The PostgreSQL server did not answer within ") + limit +
            QStringLiteral(", not even to cancel the statement; the connection to the "
                           "repository was closed"));
    if (IsTimeout(FDb, error)) {
        if (IsPostgreSQL(FDb))
            throw EQXStatementTimeout(ServerMessage(error) +
                                      QStringLiteral(" (the repository's time limit is ") + limit +
                                      QLatin1Char(')'));
        throw EQXStatementTimeout(QStringLiteral("The repository file ") + FDb.databaseName() +
                                  QStringLiteral(" is locked by another program; waited ") + limit +
                                  QStringLiteral(" (") + ServerMessage(error) + QLatin1Char(')'));
    }
    throw ErrorOf(error);
}

QSqlQuery SqlStatement::Run(const QString& sql, const QVariantList& values,
                            StatementWatchdog& watchdog) {
    if (!FDb.isOpen())
        throw EQXError(QStringLiteral("The repository connection is closed"));
    QSqlQuery query(FDb);
    query.setForwardOnly(true);
    ++FRoundTrips;
    if (Tracing())
        std::fprintf(stderr, "sql: %s %s\n", qPrintable(sql),
                     qPrintable(QVariant(values).toStringList().join(QLatin1Char(','))));
    bool ok = false;
    if (values.isEmpty()) {
        ok = query.exec(sql);
    } else {
        ok = query.prepare(sql);
        for (const QVariant& value : values)
            query.addBindValue(value);
        ok = ok && query.exec();
    }
    if (!ok)
        Fail(query.lastError(), watchdog);
    return query;
}

void SqlStatement::ForEachRow(const QString& sql,
                              const std::function<bool(const QSqlQuery&)>& visit,
                              const QVariantList& values) {
    StatementWatchdog watchdog(FDb, StatementTimeoutOf(FDb));
    QSqlQuery query = Run(sql, values, watchdog);
    const QSqlRecord record = query.record();
    FColumns.clear();
    for (int i = 0; i < record.count(); ++i)
        FColumns << record.fieldName(i);
    // Rows may arrive while they are read: the server is timed while it is
    // asked for the next one, not while the visitor works.
    for (;;) {
        watchdog.Restart();
        const bool more = query.next();
        watchdog.Pause();
        if (!more)
            break;
        if (!visit(query))
            return;
    }
    // A connection lost while reading shows up as an error after the last row.
    if (query.lastError().isValid())
        Fail(query.lastError(), watchdog);
}

QVector<QVector<QVariant>> SqlStatement::ReadAll(const QString& sql, const QVariantList& values) {
    QVector<QVector<QVariant>> rows;
    ForEachRow(
        sql,
        [this, &rows](const QSqlQuery& query) {
            const int count = static_cast<int>(FColumns.size());
            QVector<QVariant> row(count);
            for (int i = 0; i < count; ++i)
                row[i] = query.value(i);
            rows.push_back(std::move(row));
            return true;
        },
        values);
    return rows;
}

int SqlStatement::Execute(const QString& sql, const QVariantList& values) {
    StatementWatchdog watchdog(FDb, StatementTimeoutOf(FDb));
    return Run(sql, values, watchdog).numRowsAffected();
}

QString SqlLiteral(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return value.toString();
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    default:
        return where::Quoted(value.toString());
    }
}
