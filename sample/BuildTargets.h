#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// Where korvane-sample builds an estate: beside the target, put in place only
// once complete, so that a run that fails or is killed never costs the estate
// that was there.

// A SQLite target is built in ".NAME.partial-PID" in the target's folder and
// renamed over the target at the end. Partial files of runs that were killed
// (their process is gone) are removed when the next run starts.
class TPartialFile {
public:
    explicit TPartialFile(const QString& target);
    // Removes the partial file unless it was put in place.
    ~TPartialFile();
    TPartialFile(const TPartialFile&) = delete;
    TPartialFile& operator=(const TPartialFile&) = delete;

    const QString& Path() const { return FPath; }
    // Renames the partial file over the target.
    void PutInPlace();

    // Removes the partial files (and their journals) that runs which no
    // longer exist left for `target`.
    static void RemoveStale(const QString& target);

private:
    QString FTarget;
    QString FPath;
    bool FInPlace = false;
};

// A PostgreSQL target is built in a schema of its own, korvane_build_PID
// (the backend's process id), and moved into the connection's current schema
// in one transaction that also drops the tables it replaces. Build schemas of
// sessions that are gone are dropped when the next run starts; a live build
// holds an advisory lock on its schema's name.
class TSchemaBuild {
public:
    // Reads the current schema and switches the connection to a new build
    // schema. `replace` lets existing repository tables be replaced;
    // otherwise they are an error.
    TSchemaBuild(QSqlDatabase& db, const QStringList& tables, bool replace);
    // Drops the build schema unless it was swapped in.
    ~TSchemaBuild();
    TSchemaBuild(const TSchemaBuild&) = delete;
    TSchemaBuild& operator=(const TSchemaBuild&) = delete;

    const QString& Target() const { return FTarget; }
    // Moves the built tables into the target schema, replacing the old ones.
    void SwapIn();

private:
    void Exec(const QString& sql);
    QStringList ExistingTables(const QString& schema);

    QSqlDatabase& FDb;
    QStringList FTables;
    QString FTarget;
    QString FBuild;
    bool FSwapped = false;
};
