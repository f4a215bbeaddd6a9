#include "BuildTargets.h"

#include "repository/Errors.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <system_error>

namespace {

const char* const Sidecars[] = {"-journal", "-wal", "-shm"};

void RemoveWithSidecars(const QString& path) {
    QFile::remove(path);
    for (const char* suffix : Sidecars)
        QFile::remove(path + QLatin1String(suffix));
}

QString PartialPrefix(const QFileInfo& target) {
    return QLatin1Char('.') + target.fileName() + QStringLiteral(".partial-");
}

bool ProcessIsGone(qint64 pid) {
    return pid == QCoreApplication::applicationPid() ||
           (::kill(pid_t(pid), 0) == -1 && errno == ESRCH);
}

// A schema name in a statement: double quotes, inner ones doubled.
QString Identifier(QString name) {
    return QLatin1Char('"') + name.replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

constexpr const char* BuildPrefix = "korvane_build_";

} // namespace

TPartialFile::TPartialFile(const QString& target) {
    const QFileInfo info(target);
    FTarget = info.absoluteFilePath();
    FPath = info.absoluteDir().filePath(PartialPrefix(info) +
                                        QString::number(QCoreApplication::applicationPid()));
    RemoveWithSidecars(FPath);
    QFile file(FPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        throw EQXError(QStringLiteral("Cannot write in ") + info.absolutePath() +
                       QStringLiteral(": ") + file.errorString());
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
}

TPartialFile::~TPartialFile() {
    if (!FInPlace)
        RemoveWithSidecars(FPath);
}

void TPartialFile::PutInPlace() {
    for (const char* suffix : Sidecars)
        QFile::remove(FTarget + QLatin1String(suffix));
    std::error_code error;
    std::filesystem::rename(QFile::encodeName(FPath).toStdString(),
                            QFile::encodeName(FTarget).toStdString(), error);
    if (error)
        throw EQXError(QStringLiteral("Cannot rename ") + FPath + QStringLiteral(" to ") + FTarget +
                       QStringLiteral(": ") + QString::fromStdString(error.message()));
    FInPlace = true;
}

void TPartialFile::RemoveStale(const QString& target) {
    const QFileInfo info(target);
    const QString prefix = PartialPrefix(info);
    const QDir folder = info.absoluteDir();
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (!name.startsWith(prefix))
            continue;
        QString pid = name.mid(prefix.size());
        for (const char* suffix : Sidecars)
            if (pid.endsWith(QLatin1String(suffix)))
                pid.chop(qsizetype(qstrlen(suffix)));
        bool ok = false;
        const qint64 number = pid.toLongLong(&ok);
        if (ok && number > 0 && ProcessIsGone(number))
            QFile::remove(folder.filePath(name));
    }
}

TSchemaBuild::TSchemaBuild(QSqlDatabase& db, const QStringList& tables, bool replace)
    : FDb(db), FTables(tables) {
    QSqlQuery query(FDb);
    if (!query.exec(QStringLiteral("SELECT current_schema(), pg_backend_pid()")) || !query.next())
        throw EQXError(QStringLiteral("Cannot read the current schema: ") +
                       query.lastError().text());
    FTarget = query.value(0).toString();
    // Dropping a schema lists every table it takes along; nobody asked.
    Exec(QStringLiteral("SET client_min_messages = warning"));
    const QString build = QLatin1String(BuildPrefix) + query.value(1).toString();
    if (FTarget.isEmpty())
        throw EQXError(QStringLiteral("The search_path of the connection names no schema that "
                                      "exists: there is nowhere to write the estate"));
    const QStringList existing = ExistingTables(FTarget);
    if (!existing.isEmpty() && !replace)
        throw EQXError(QStringLiteral("Schema ") + FTarget +
                       QStringLiteral(" already has repository tables (") +
                       existing.join(QStringLiteral(", ")) +
                       QStringLiteral("); use --force to replace them"));

    // Builds of sessions that are gone: nobody holds their lock any more.
    QStringList stale;
    if (!query.exec(QStringLiteral("SELECT nspname FROM pg_namespace WHERE nspname LIKE "
                                   "'korvane\\_build\\_%'")))
        throw EQXError(query.lastError().text());
    while (query.next())
        stale << query.value(0).toString();
    QSqlQuery lock(FDb);
    lock.prepare(QStringLiteral("SELECT pg_try_advisory_lock(hashtext(?))"));
    QSqlQuery unlock(FDb);
    unlock.prepare(QStringLiteral("SELECT pg_advisory_unlock(hashtext(?))"));
    for (const QString& schema : stale) {
        lock.addBindValue(schema);
        if (!lock.exec() || !lock.next())
            throw EQXError(lock.lastError().text());
        if (!lock.value(0).toBool())
            continue; // a live build
        Exec(QStringLiteral("DROP SCHEMA IF EXISTS ") + Identifier(schema) +
             QStringLiteral(" CASCADE"));
        unlock.addBindValue(schema);
        unlock.exec();
    }

    // The lock on the build's name says that it is in progress.
    lock.addBindValue(build);
    if (!lock.exec() || !lock.next() || !lock.value(0).toBool())
        throw EQXError(QStringLiteral("Cannot lock the build schema ") + build);
    FBuild = build;
    Exec(QStringLiteral("CREATE SCHEMA ") + Identifier(FBuild));
    Exec(QStringLiteral("SET search_path TO ") + Identifier(FBuild));
}

TSchemaBuild::~TSchemaBuild() {
    if (FSwapped || FBuild.isEmpty() || !FDb.isOpen())
        return;
    QSqlQuery query(FDb);
    query.exec(QStringLiteral("DROP SCHEMA IF EXISTS ") + Identifier(FBuild) +
               QStringLiteral(" CASCADE"));
    query.exec(QStringLiteral("SELECT pg_advisory_unlock_all()"));
}

void TSchemaBuild::Exec(const QString& sql) {
    QSqlQuery query(FDb);
    if (!query.exec(sql))
        throw EQXError(query.lastError().text().trimmed() + QStringLiteral(" in: ") + sql);
}

QStringList TSchemaBuild::ExistingTables(const QString& schema) {
    QSqlQuery query(FDb);
    query.prepare(QStringLiteral("SELECT upper(table_name) FROM information_schema.tables "
                                 "WHERE table_schema = ?"));
    query.addBindValue(schema);
    if (!query.exec())
        throw EQXError(query.lastError().text());
    QStringList present;
    while (query.next())
        present << query.value(0).toString();
    QStringList existing;
    for (const QString& table : FTables)
        if (present.contains(table))
            existing << table;
    return existing;
}

void TSchemaBuild::SwapIn() {
    const QStringList old = ExistingTables(FTarget);
    const QString aside = QStringLiteral("korvane_old_") + FBuild.mid(qstrlen(BuildPrefix));
    if (!FDb.transaction())
        throw EQXError(QStringLiteral("Could not begin a transaction: ") + FDb.lastError().text());
    try {
        if (!old.isEmpty()) {
            Exec(QStringLiteral("CREATE SCHEMA ") + Identifier(aside));
            for (const QString& table : old)
                Exec(QStringLiteral("ALTER TABLE ") + Identifier(FTarget) + QLatin1Char('.') +
                     table + QStringLiteral(" SET SCHEMA ") + Identifier(aside));
        }
        for (const QString& table : FTables)
            Exec(QStringLiteral("ALTER TABLE ") + Identifier(FBuild) + QLatin1Char('.') + table +
                 QStringLiteral(" SET SCHEMA ") + Identifier(FTarget));
        if (!old.isEmpty())
            Exec(QStringLiteral("DROP SCHEMA ") + Identifier(aside) + QStringLiteral(" CASCADE"));
        Exec(QStringLiteral("DROP SCHEMA ") + Identifier(FBuild));
        if (!FDb.commit())
            throw EQXError(QStringLiteral("Commit failed: ") + FDb.lastError().text());
    } catch (...) {
        FDb.rollback();
        throw;
    }
    FSwapped = true;
    Exec(QStringLiteral("SELECT pg_advisory_unlock_all()"));
    Exec(QStringLiteral("SET search_path TO ") + Identifier(FTarget));
}
