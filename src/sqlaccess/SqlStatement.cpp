#include "sqlaccess/SqlStatement.h"

#include "repository/Errors.h"
#include "repository/WhereText.h"

#include <QSqlError>
#include <QSqlRecord>

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
    if (!ok) {
        QString message = query.lastError().text().trimmed();
        if (message.isEmpty())
            message = QStringLiteral("The database refused the statement");
        throw EQXError(message);
    }
    return query;
}

void SqlStatement::ForEachRow(const QString& sql,
                              const std::function<bool(const QSqlQuery&)>& visit) {
    QSqlQuery query = Run(sql, {});
    const QSqlRecord record = query.record();
    FColumns.clear();
    for (int i = 0; i < record.count(); ++i)
        FColumns << record.fieldName(i);
    while (query.next())
        if (!visit(query))
            return;
    // A connection lost while reading shows up as an error after the last row.
    if (query.lastError().isValid())
        throw EQXError(query.lastError().text().trimmed());
}

QVector<QVector<QVariant>> SqlStatement::ReadAll(const QString& sql) {
    QVector<QVector<QVariant>> rows;
    ForEachRow(sql, [this, &rows](const QSqlQuery& query) {
        const int count = static_cast<int>(FColumns.size());
        QVector<QVariant> row(count);
        for (int i = 0; i < count; ++i)
            row[i] = query.value(i);
        rows.push_back(std::move(row));
        return true;
    });
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
