#pragma once

#include <QSqlDatabase>
#include <QString>

// Where a repository lives: a SQLite file (the embedded default) or a
// PostgreSQL database given by a connection string, either as a URI
// ("postgresql://user:pw@host:5432/db") or as libpq keywords
// ("host=localhost dbname=estate user=me").
struct RepositoryLocation {
    enum class Kind { SQLite, PostgreSQL };

    Kind kind = Kind::SQLite;
    QString filePath; // SQLite
    QString hostName; // PostgreSQL
    int port = -1;
    QString databaseName;
    QString userName;
    QString password;
    QString options; // further libpq keywords, "key=value;key=value"

    // A text that is a URI or holds "dbname=" is a PostgreSQL location;
    // anything else is a SQLite file path.
    static RepositoryLocation Parse(const QString& text);
    // The location as a user would recognise it (never shows the password).
    QString Display() const;
};

enum class OpenMode {
    ExistingOnly, // a missing SQLite file is an error
    CreateIfMissing,
};

// Opens a database connection under a unique Qt connection name. SQLite gets
// case-sensitive LIKE, as LIKE is on PostgreSQL, and an Upper that folds
// every letter (RegisterSqliteFunctions). Throws EQXError with the
// database's message when the repository cannot be opened.
QSqlDatabase OpenRepositoryDatabase(const RepositoryLocation& location,
                                    const QString& connectionName,
                                    OpenMode mode = OpenMode::ExistingOnly);

// Closes and removes a connection opened by OpenRepositoryDatabase.
void CloseRepositoryDatabase(const QString& connectionName);

// True when the connection is to PostgreSQL.
bool IsPostgreSQL(const QSqlDatabase& db);
