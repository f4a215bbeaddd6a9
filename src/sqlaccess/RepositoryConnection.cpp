#include "sqlaccess/RepositoryConnection.h"

#include "repository/Errors.h"
#include "sqlaccess/SqliteFunctions.h"

#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

namespace {

bool LooksLikePostgreSQL(const QString& text) {
    return text.startsWith(QLatin1String("postgresql://")) ||
           text.startsWith(QLatin1String("postgres://")) || text.contains(QLatin1String("dbname="));
}

RepositoryLocation ParseUri(const QString& text) {
    RepositoryLocation location;
    location.kind = RepositoryLocation::Kind::PostgreSQL;
    const QUrl url(text);
    if (!url.isValid())
        throw EQXError(QStringLiteral("Invalid PostgreSQL connection string: ") + text);
    location.hostName = url.host();
    location.port = url.port(-1);
    location.databaseName = url.path().mid(1);
    location.userName = url.userName();
    location.password = url.password();
    QStringList options;
    for (const auto& [key, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded)) {
        if (key == QLatin1String("host"))
            location.hostName = value; // a socket directory
        else
            options << key + QLatin1Char('=') + value;
    }
    location.options = options.join(QLatin1Char(';'));
    return location;
}

RepositoryLocation ParseKeywords(const QString& text) {
    RepositoryLocation location;
    location.kind = RepositoryLocation::Kind::PostgreSQL;
    QStringList options;
    for (const QString& pair : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const qsizetype equals = pair.indexOf(QLatin1Char('='));
        if (equals <= 0)
            throw EQXError(QStringLiteral("Invalid PostgreSQL connection string: ") + text);
        const QString key = pair.left(equals);
        const QString value = pair.mid(equals + 1);
        if (key == QLatin1String("host"))
            location.hostName = value;
        else if (key == QLatin1String("port"))
            location.port = value.toInt();
        else if (key == QLatin1String("dbname"))
            location.databaseName = value;
        else if (key == QLatin1String("user"))
            location.userName = value;
        else if (key == QLatin1String("password"))
            location.password = value;
        else
            options << pair;
    }
    location.options = options.join(QLatin1Char(';'));
    return location;
}

QString ErrorText(const QSqlError& error) {
    const QString text = error.text().trimmed();
    return text.isEmpty() ? QStringLiteral("unknown database error") : text;
}

} // namespace

RepositoryLocation RepositoryLocation::Parse(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        throw EQXError(QStringLiteral("No repository given"));
    if (trimmed.startsWith(QLatin1String("postgres")) && trimmed.contains(QLatin1String("://")))
        return ParseUri(trimmed);
    if (LooksLikePostgreSQL(trimmed))
        return ParseKeywords(trimmed);
    RepositoryLocation location;
    location.filePath = trimmed;
    return location;
}

QString RepositoryLocation::Display() const {
    if (kind == Kind::SQLite)
        return filePath;
    QString text = QStringLiteral("postgresql://");
    if (!userName.isEmpty())
        text += userName + QLatin1Char('@');
    text += hostName;
    if (port > 0)
        text += QLatin1Char(':') + QString::number(port);
    return text + QLatin1Char('/') + databaseName;
}

QSqlDatabase OpenRepositoryDatabase(const RepositoryLocation& location,
                                    const QString& connectionName, OpenMode mode) {
    QSqlDatabase db;
    if (location.kind == RepositoryLocation::Kind::SQLite) {
        if (mode == OpenMode::ExistingOnly && !QFileInfo::exists(location.filePath))
            throw EQXError(QStringLiteral("Repository file not found: ") + location.filePath);
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
            throw EQXError(QStringLiteral("The Qt SQLite driver (QSQLITE) is not installed"));
        db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(location.filePath);
    } else {
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
            throw EQXError(QStringLiteral("The Qt PostgreSQL driver (QPSQL) is not installed"));
        db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connectionName);
        db.setHostName(location.hostName);
        if (location.port > 0)
            db.setPort(location.port);
        db.setDatabaseName(location.databaseName);
        db.setUserName(location.userName);
        db.setPassword(location.password);
        db.setConnectOptions(location.options);
    }
    if (!db.open()) {
        const QString message = ErrorText(db.lastError());
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw EQXError(QStringLiteral("Could not open repository ") + location.Display() +
                       QStringLiteral(": ") + message);
    }
    if (location.kind == RepositoryLocation::Kind::SQLite) {
        try {
            RegisterSqliteFunctions(db); // Upper( folds as on PostgreSQL
        } catch (const EQXError&) {
            db = QSqlDatabase();
            CloseRepositoryDatabase(connectionName);
            throw;
        }
        QSqlQuery pragma(db);
        // LIKE is case-sensitive on PostgreSQL; where texts must mean the same here.
        pragma.exec(QStringLiteral("PRAGMA case_sensitive_like = ON"));
        pragma.exec(QStringLiteral("PRAGMA cache_size = -65536"));
    }
    return db;
}

void CloseRepositoryDatabase(const QString& connectionName) {
    {
        QSqlDatabase db = QSqlDatabase::database(connectionName, false);
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
}

bool IsPostgreSQL(const QSqlDatabase& db) {
    return db.driverName() == QLatin1String("QPSQL");
}
