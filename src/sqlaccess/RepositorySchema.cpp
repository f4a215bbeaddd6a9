#include "sqlaccess/RepositorySchema.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace RepositorySchema {
namespace {

QString Script(const QSqlDatabase& db, const char* part) {
    const QString name =
        QStringLiteral(":/schema/%1-%2.sql")
            .arg(IsPostgreSQL(db) ? QStringLiteral("postgresql") : QStringLiteral("sqlite"),
                 QLatin1String(part));
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw EQXError(QStringLiteral("Schema script missing: ") + name);
    return QString::fromUtf8(file.readAll());
}

} // namespace

void RunScript(QSqlDatabase& db, const QString& script) {
    QStringList lines;
    for (const QString& line : script.split(QLatin1Char('\n')))
        if (!line.trimmed().startsWith(QLatin1String("--")))
            lines << line;
    QSqlQuery query(db);
    for (const QString& statement : lines.join(QLatin1Char('\n')).split(QLatin1Char(';'))) {
        if (statement.trimmed().isEmpty())
            continue;
        if (!query.exec(statement))
            throw EQXError(query.lastError().text() + QStringLiteral(" in: ") +
                           statement.trimmed());
    }
}

void CreateTables(QSqlDatabase& db) {
    RunScript(db, Script(db, "tables"));
}

void CreateIndexes(QSqlDatabase& db) {
    RunScript(db, Script(db, "indexes"));
}

QString IndexScript(const QSqlDatabase& db) {
    return Script(db, "indexes");
}

void DropTables(QSqlDatabase& db) {
    QSqlQuery query(db);
    for (const char* table : {"QXFILE", "QXOBJECT", "QXENTRY", "QXROW", "QXWORD", "QXDEPENDENCIES",
                              "QXPACKAGE", "QXATTRIBUTE", "QXDATAFLOW", "QXLOAD"})
        if (!query.exec(QStringLiteral("DROP TABLE IF EXISTS ") + QLatin1String(table)))
            throw EQXError(query.lastError().text());
}

} // namespace RepositorySchema
