#include "support/TestRepository.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/RepositorySchema.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QTest>

namespace {
int NextNumber() {
    static int number = 0;
    return ++number;
}

QString PostgreSQLBase() {
    return qEnvironmentVariable("KV_TEST_PG");
}
} // namespace

bool TestRepository::PostgreSQLAvailable() {
    return !PostgreSQLBase().isEmpty();
}

void TestRepository::AddBackendRows() {
    QTest::addColumn<int>("backend");
    for (Backend backend : {Backend::SQLite, Backend::PostgreSQL})
        QTest::newRow(qPrintable(BackendName(backend))) << int(backend);
}

TestRepository::Backend TestRepository::CurrentBackend() {
    QFETCH_GLOBAL(int, backend);
    return Backend(backend);
}

bool TestRepository::Usable(Backend backend) {
    return backend == Backend::SQLite || PostgreSQLAvailable();
}

QString TestRepository::BackendName(Backend backend) {
    return backend == Backend::SQLite ? QStringLiteral("sqlite") : QStringLiteral("postgresql");
}

TestRepository::TestRepository(Backend backend)
    : FBackend(backend), FConnectionName(QStringLiteral("test-repository-%1").arg(NextNumber())) {
    if (backend == Backend::SQLite) {
        FLocation = FDir.filePath(QStringLiteral("repository.kvdb"));
        QSqlDatabase db = OpenRepositoryDatabase(RepositoryLocation::Parse(FLocation),
                                                 FConnectionName, OpenMode::CreateIfMissing);
        RepositorySchema::CreateTables(db);
        RepositorySchema::CreateIndexes(db);
        return;
    }
    // Each repository lives in a schema of its own, reached through search_path.
    FSchema =
        QStringLiteral("kvtest_%1_%2").arg(QCoreApplication::applicationPid()).arg(NextNumber());
    const QString base = PostgreSQLBase();
    {
        QSqlDatabase admin = OpenRepositoryDatabase(RepositoryLocation::Parse(base),
                                                    FConnectionName + QStringLiteral("-admin"),
                                                    OpenMode::ExistingOnly);
        QSqlQuery(admin).exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(FSchema));
        QSqlQuery create(admin);
        if (!create.exec(QStringLiteral("CREATE SCHEMA ") + FSchema))
            throw EQXError(create.lastError().text());
    }
    CloseRepositoryDatabase(FConnectionName + QStringLiteral("-admin"));
    FLocation = base + QStringLiteral(" options=-csearch_path=") + FSchema;
    QSqlDatabase db = OpenRepositoryDatabase(RepositoryLocation::Parse(FLocation), FConnectionName,
                                             OpenMode::ExistingOnly);
    RepositorySchema::CreateTables(db);
    RepositorySchema::CreateIndexes(db);
}

TestRepository::~TestRepository() {
    if (FBackend == Backend::PostgreSQL) {
        QSqlQuery(Db()).exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(FSchema));
    }
    CloseRepositoryDatabase(FConnectionName);
}

QSqlDatabase TestRepository::Db() const {
    return QSqlDatabase::database(FConnectionName, false);
}

void TestRepository::Insert(const QString& table, const QString& columns,
                            const QList<QVariantList>& rows) {
    const qsizetype count = columns.count(QLatin1Char(',')) + 1;
    QStringList marks(count, QStringLiteral("?"));
    QSqlQuery query(Db());
    if (!query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                           .arg(table, columns, marks.join(QStringLiteral(", ")))))
        throw EQXError(query.lastError().text());
    for (const QVariantList& row : rows) {
        if (row.size() != count)
            throw EQXError(QStringLiteral("%1: %2 values for %3 columns")
                               .arg(table)
                               .arg(row.size())
                               .arg(count));
        for (const QVariant& value : row)
            query.addBindValue(value);
        if (!query.exec())
            throw EQXError(table + QStringLiteral(": ") + query.lastError().text());
    }
}

void TestRepository::Exec(const QString& sql) {
    QSqlQuery query(Db());
    if (!query.exec(sql))
        throw EQXError(query.lastError().text());
}

int TestRepository::Count(const QString& table, const QString& where) {
    QSqlQuery query(Db());
    const QString sql = QStringLiteral("SELECT COUNT(*) FROM ") + table +
                        (where.isEmpty() ? QString() : QStringLiteral(" WHERE ") + where);
    if (!query.exec(sql) || !query.next())
        throw EQXError(query.lastError().text());
    return query.value(0).toInt();
}
