#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

// A throw-away repository for one test: a SQLite file in a temporary folder,
// or a fresh schema in the PostgreSQL database named by KV_TEST_PG (libpq
// keywords, e.g. "host=/tmp port=5499 dbname=korvane_test user=postgres").
// Tables and indexes are created empty; tests insert what they need.
class TestRepository {
public:
    enum class Backend { SQLite, PostgreSQL };

    static bool PostgreSQLAvailable();
    static QString BackendName(Backend backend);
    // For tests whose every case runs on both databases: the global data
    // rows (initTestCase_data), the current row's backend, and whether it
    // can run here (a case skips when it cannot).
    static void AddBackendRows();
    static Backend CurrentBackend();
    static bool Usable(Backend backend);

    explicit TestRepository(Backend backend = Backend::SQLite);
    ~TestRepository();
    TestRepository(const TestRepository&) = delete;
    TestRepository& operator=(const TestRepository&) = delete;

    // The text to open this repository with (file path or connection string).
    const QString& Location() const { return FLocation; }
    // The PostgreSQL schema that holds the tables; empty on SQLite.
    const QString& Schema() const { return FSchema; }
    QSqlDatabase Db() const;

    // One record per row, its values in the order of the columns, e.g.
    // Insert("QXFILE", "QXFileID, QXFileName", {{1, "PAY.CBL"}, {2, "LIB.CBL"}}).
    void Insert(const QString& table, const QString& columns, const QList<QVariantList>& rows);
    void Exec(const QString& sql);
    int Count(const QString& table, const QString& where = QString());

private:
    Backend FBackend;
    QTemporaryDir FDir;
    QString FConnectionName;
    QString FSchema;
    QString FLocation;
};
