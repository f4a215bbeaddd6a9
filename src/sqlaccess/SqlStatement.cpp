#include "sqlaccess/SqlStatement.h"

#include "repository/Errors.h"
#include "repository/WhereText.h"

#include <QSqlError>
#include <QSqlRecord>

namespace {
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
} // namespace

SqlStatement::SqlStatement(const QSqlDatabase& db, qint64& roundTrips)
    : FDb(db), FRoundTrips(roundTrips) {}

QSqlQuery SqlStatement::Run(const QString& sql, const QVariantList& values) {
    if (!FDb.isOpen())
        throw EQXError(QStringLiteral("The repository connection is closed"));
    QSqlQuery query(FDb);
    query.setForwardOnly(true);
    ++FRoundTrips;
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
        throw ErrorOf(query.lastError());
    return query;
}

void SqlStatement::ForEachRow(const QString& sql,
                              const std::function<bool(const QSqlQuery&)>& visit,
                              const QVariantList& values) {
    QSqlQuery query = Run(sql, values);
    const QSqlRecord record = query.record();
    FColumns.clear();
    for (int i = 0; i < record.count(); ++i)
        FColumns << record.fieldName(i);
    while (query.next())
        if (!visit(query))
            return;
    // A connection lost while reading shows up as an error after the last row.
    if (query.lastError().isValid())
        throw ErrorOf(query.lastError());
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
    return Run(sql, values).numRowsAffected();
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
