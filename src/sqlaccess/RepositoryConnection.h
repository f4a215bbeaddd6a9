#pragma once

#include <QSqlDatabase>
#include <QString>

class QSettings;

// Where a repository lives: a SQLite file (the embedded default) or a
// PostgreSQL database given by a connection string, either as a URI
// ("postgresql://user:pw@host:5432/db") or as libpq keywords
// ("host=localhost dbname=estate user=me"). Connection strings are read by
// libpq's own parser, so quoting, escapes and errors are libpq's.
struct RepositoryLocation {
    enum class Kind { SQLite, PostgreSQL };

    Kind kind = Kind::SQLite;
    QString filePath; // SQLite
    QString hostName; // PostgreSQL
    int port = -1;
    QString databaseName;
    QString userName;
    QString password;
    QString options; // further libpq keywords, "key='value';key='value'"

    // A text that is a URI, starts with a libpq keyword and "=", or holds
    // "dbname=" is a PostgreSQL location; anything else is a SQLite file path.
    // Throws EQXError naming what libpq could not read, or a port that is no
    // port number.
    static RepositoryLocation Parse(const QString& text);
    // The location as a user would recognise it (never shows the password).
    QString Display() const;
};

// How long a repository may keep a caller waiting, in seconds; 0 waits
// without limit.
struct RepositoryTimeouts {
    int connectSeconds = 10;   // PostgreSQL: reaching the server (libpq connect_timeout)
    int statementSeconds = 30; // one statement, or the wait for a lock it needs: PostgreSQL
                               // statement_timeout and lock_timeout, SQLite's busy timeout

    // The [Timeouts] section of a settings file (Connect=10, Statement=30);
    // missing or unreadable values keep the defaults.
    static RepositoryTimeouts FromSettings(QSettings& settings);
    // What connections opened from now on get.
    static RepositoryTimeouts Current();
    static void SetCurrent(const RepositoryTimeouts& timeouts);
};

enum class OpenMode {
    ExistingOnly, // a missing SQLite file is an error
    CreateIfMissing,
};

// Opens a database connection under a unique Qt connection name, with the
// current timeouts. SQLite gets case-sensitive LIKE, as LIKE is on
// PostgreSQL, and an Upper that folds every letter (RegisterSqliteFunctions).
// Throws EQXError with the database's message when the repository cannot be
// opened.
QSqlDatabase OpenRepositoryDatabase(const RepositoryLocation& location,
                                    const QString& connectionName,
                                    OpenMode mode = OpenMode::ExistingOnly);

// Closes and removes a connection opened by OpenRepositoryDatabase.
void CloseRepositoryDatabase(const QString& connectionName);

// True when the connection is to PostgreSQL.
bool IsPostgreSQL(const QSqlDatabase& db);

// The statement timeout a connection was opened with (0: none).
int StatementTimeoutOf(const QSqlDatabase& db);
