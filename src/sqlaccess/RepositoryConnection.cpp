#include "sqlaccess/RepositoryConnection.h"

#include "repository/Errors.h"
#include "sqlaccess/SqliteFunctions.h"

#include "sqlaccess/StatementWatchdog.h"

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSettings>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <libpq-fe.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <mutex>

namespace {

// libpq owns the memory of what it parses; these hand it back.
struct ConninfoFree {
    void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};
using Conninfo = std::unique_ptr<PQconninfoOption, ConninfoFree>;

// The keywords libpq knows ("host", "dbname", "connect_timeout", ...).
const QStringList& LibpqKeywords() {
    static const QStringList keywords = [] {
        QStringList names;
        char* error = nullptr;
        const Conninfo options(PQconninfoParse("", &error));
        PQfreemem(error);
        for (const PQconninfoOption* option = options.get(); option && option->keyword; ++option)
            names << QString::fromLatin1(option->keyword);
        return names;
    }();
    return keywords;
}

bool LooksLikePostgreSQL(const QString& text) {
    if (text.startsWith(QLatin1String("postgresql://")) ||
        text.startsWith(QLatin1String("postgres://")))
        return true;
    static const QRegularExpression dbname(QStringLiteral("(^|\\s)dbname\\s*="));
    static const QRegularExpression firstKeyword(QStringLiteral("^([A-Za-z_]+)\\s*="));
    if (text.contains(dbname))
        return true;
    const QRegularExpressionMatch first = firstKeyword.match(text);
    return first.hasMatch() && LibpqKeywords().contains(first.captured(1));
}

// A value as libpq reads it inside single quotes.
QString LibpqQuoted(QString value) {
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    value.replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

[[noreturn]] void Invalid(const QString& reason) {
    throw EQXError(QStringLiteral("Invalid PostgreSQL connection string: ") + reason);
}

// A port, or a list of them for a list of hosts: numbers from 1 to 65535
// (an empty entry stands for the default port).
void CheckPorts(const QString& ports) {
    for (const QString& port : ports.split(QLatin1Char(','))) {
        bool ok = false;
        const int number = port.trimmed().toInt(&ok);
        if (port.trimmed().isEmpty() && ports.contains(QLatin1Char(',')))
            continue;
        if (!ok || number < 1 || number > 65535)
            Invalid(QStringLiteral("the port must be a number from 1 to 65535, not '") + port +
                    QLatin1Char('\''));
    }
}

// A URI or libpq keywords, read by libpq itself.
RepositoryLocation ParseConnectionString(const QString& text) {
    char* error = nullptr;
    const Conninfo options(PQconninfoParse(text.toUtf8().constData(), &error));
    if (!options) {
        const QString reason =
            error ? QString::fromUtf8(error).trimmed() : QStringLiteral("libpq could not read it");
        PQfreemem(error);
        Invalid(reason);
    }
    RepositoryLocation location;
    location.kind = RepositoryLocation::Kind::PostgreSQL;
    QStringList further;
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option) {
        if (option->val == nullptr)
            continue;
        const QString key = QString::fromLatin1(option->keyword);
        const QString value = QString::fromUtf8(option->val);
        if (key == QLatin1String("host")) {
            location.hostName = value;
        } else if (key == QLatin1String("dbname")) {
            location.databaseName = value;
        } else if (key == QLatin1String("user")) {
            location.userName = value;
        } else if (key == QLatin1String("password")) {
            location.password = value;
        } else if (key == QLatin1String("port") && !value.isEmpty()) {
            CheckPorts(value);
            if (value.contains(QLatin1Char(',')))
                further << key + QLatin1Char('=') + LibpqQuoted(value);
            else
                location.port = value.trimmed().toInt();
        } else if (key != QLatin1String("port")) {
            // Qt joins further keywords with ';', which it turns into blanks.
            if (value.contains(QLatin1Char(';')))
                Invalid(QStringLiteral("the value of ") + key +
                        QStringLiteral(" holds a ';', which cannot be passed on"));
            further << key + QLatin1Char('=') + LibpqQuoted(value);
        }
    }
    location.options = further.join(QLatin1Char(';'));
    return location;
}

QString ErrorText(const QSqlError& error) {
    const QString text = error.text().trimmed();
    return text.isEmpty() ? QStringLiteral("unknown database error") : text;
}

// The timeouts new connections get, and the statement timeout of each open
// connection by its name.
struct TimeoutRegistry {
    std::mutex mutex;
    RepositoryTimeouts current;
    QHash<QString, int> statementSeconds;

    static TimeoutRegistry& Instance() {
        static TimeoutRegistry registry;
        return registry;
    }
};

// libpq waits at least 2 s for a connection, whatever it is told.
int EffectiveConnectSeconds(int seconds) {
    return seconds > 0 ? std::max(seconds, 2) : 0;
}

// The server cancels a statement after the timeout and gives up waiting for
// a lock a little earlier, so that a statement held up by a lock says so.
void LimitSession(QSqlDatabase& db, int seconds) {
    if (seconds <= 0)
        return;
    const int milliseconds = seconds * 1000;
    StatementWatchdog watchdog(db, seconds);
    QSqlQuery set(db);
    if (!set.exec(QStringLiteral("SET statement_timeout = ") + QString::number(milliseconds)) ||
        !set.exec(QStringLiteral("SET lock_timeout = ") + QString::number(milliseconds - 100)))
        throw EQXError(QStringLiteral("could not set the statement timeout: ") +
                       ErrorText(set.lastError()));
}

// SQLite reads the file's schema with the first statement, and waits for it
// while another program holds the file locked: once is enough to say so.
void CheckNotLocked(QSqlDatabase& db, int seconds) {
    QSqlQuery probe(db);
    if (probe.exec(QStringLiteral("SELECT 1 FROM sqlite_master LIMIT 1")) ||
        probe.lastError().nativeErrorCode() != QLatin1String("5"))
        return; // anything else wrong with the file shows where it is read
    throw EQXError(QStringLiteral("the file is locked by another program; waited ") +
                   QString::number(seconds) + QStringLiteral(" s (") +
                   probe.lastError().databaseText() + QLatin1Char(')'));
}

int IntegerSetting(QSettings& settings, const char* key, int fallback) {
    bool ok = false;
    const int value = settings.value(QLatin1String(key)).toString().trimmed().toInt(&ok);
    return ok && value >= 0 ? value : fallback;
}

} // namespace

RepositoryTimeouts RepositoryTimeouts::FromSettings(QSettings& settings) {
    RepositoryTimeouts timeouts;
    settings.beginGroup(QStringLiteral("Timeouts"));
    timeouts.connectSeconds = IntegerSetting(settings, "Connect", timeouts.connectSeconds);
    timeouts.statementSeconds = IntegerSetting(settings, "Statement", timeouts.statementSeconds);
    settings.endGroup();
    return timeouts;
}

RepositoryTimeouts RepositoryTimeouts::Current() {
    TimeoutRegistry& registry = TimeoutRegistry::Instance();
    std::lock_guard lock(registry.mutex);
    return registry.current;
}

void RepositoryTimeouts::SetCurrent(const RepositoryTimeouts& timeouts) {
    TimeoutRegistry& registry = TimeoutRegistry::Instance();
    std::lock_guard lock(registry.mutex);
    registry.current = timeouts;
}

RepositoryLocation RepositoryLocation::Parse(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        throw EQXError(QStringLiteral("No repository given"));
    if (LooksLikePostgreSQL(trimmed))
        return ParseConnectionString(trimmed);
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
    const RepositoryTimeouts timeouts = RepositoryTimeouts::Current();
    QSqlDatabase db;
    if (location.kind == RepositoryLocation::Kind::SQLite) {
        if (mode == OpenMode::ExistingOnly && !QFileInfo::exists(location.filePath))
            throw EQXError(QStringLiteral("Repository file not found: ") + location.filePath);
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
            throw EQXError(QStringLiteral("The Qt SQLite driver (QSQLITE) is not installed"));
        db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(location.filePath);
        // How long a statement waits while another program holds the file's lock.
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=") +
                             QString::number(timeouts.statementSeconds > 0
                                                 ? timeouts.statementSeconds * 1000
                                                 : INT_MAX));
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
        QString options = location.options;
        const int connectSeconds = EffectiveConnectSeconds(timeouts.connectSeconds);
        if (connectSeconds > 0 && !options.contains(QLatin1String("connect_timeout="))) {
            if (!options.isEmpty())
                options += QLatin1Char(';');
            options += QStringLiteral("connect_timeout=") + QString::number(connectSeconds);
        }
        db.setConnectOptions(options);
    }
    if (!db.open()) {
        QString message = ErrorText(db.lastError());
        const int connectSeconds = EffectiveConnectSeconds(timeouts.connectSeconds);
        if (location.kind == RepositoryLocation::Kind::PostgreSQL && connectSeconds > 0 &&
            message.contains(QLatin1String("timeout expired")))
            message = QStringLiteral("the server did not answer within ") +
                      QString::number(connectSeconds) + QStringLiteral(" s (") +
                      message.simplified() + QLatin1Char(')');
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw EQXError(QStringLiteral("Could not open repository ") + location.Display() +
                       QStringLiteral(": ") + message);
    }
    try {
        if (location.kind == RepositoryLocation::Kind::PostgreSQL)
            LimitSession(db, timeouts.statementSeconds);
        else
            CheckNotLocked(db, timeouts.statementSeconds);
    } catch (const EQXError& e) {
        db = QSqlDatabase();
        CloseRepositoryDatabase(connectionName);
        throw EQXError(QStringLiteral("Could not open repository ") + location.Display() +
                       QStringLiteral(": ") + e.Message());
    }
    {
        TimeoutRegistry& registry = TimeoutRegistry::Instance();
        std::lock_guard lock(registry.mutex);
        registry.statementSeconds.insert(connectionName, timeouts.statementSeconds);
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
    TimeoutRegistry& registry = TimeoutRegistry::Instance();
    std::lock_guard lock(registry.mutex);
    registry.statementSeconds.remove(connectionName);
}

bool IsPostgreSQL(const QSqlDatabase& db) {
    return db.driverName() == QLatin1String("QPSQL");
}

int StatementTimeoutOf(const QSqlDatabase& db) {
    TimeoutRegistry& registry = TimeoutRegistry::Instance();
    std::lock_guard lock(registry.mutex);
    return registry.statementSeconds.value(db.connectionName(), 0);
}
