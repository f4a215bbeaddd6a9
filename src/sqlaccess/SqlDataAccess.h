#pragma once

#include "repository/DataAccessInterface.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/SqlStatement.h"

#include <QHash>
#include <QSqlDatabase>

#include <memory>

class SqlTable;

// The data-access object over Qt SQL, for a SQLite file or a PostgreSQL
// database. One object per repository connection; it owns one table data set
// per table name, each with one current selection and one current record.
//
// Selections are read in record order (QXSeq, or the database's row identity
// in a repository another loader wrote) in batches, so selecting a table of
// millions of rows costs one small query. LocateRecord searches the current
// selection through an index of its key columns built on first use.
//
// Every failure names its real cause: a table that cannot be bound is
// "not found" only when the database does not know it; otherwise the
// database's own message says why (not a database, locked, no privilege).
class SqlDataAccess final : public TQXDataAccessInterface, public TQXRepositoryNotice {
public:
    // Opens the repository (SQLite file path or PostgreSQL connection
    // string); throws EQXError when it cannot be opened.
    explicit SqlDataAccess(const QString& repository);
    explicit SqlDataAccess(const RepositoryLocation& location);
    ~SqlDataAccess() override;

    SqlDataAccess(const SqlDataAccess&) = delete;
    SqlDataAccess& operator=(const SqlDataAccess&) = delete;

    void CloseTables(QObject* owner, bool flag) override;
    TQXTableRef GetTableRef(const QString& tableName) override;
    TQXFieldRef GetFieldRef(TQXTableRef table, const QString& columnName) override;
    QString GetFieldName(TQXTableRef table, TQXFieldRef field) override;
    bool SelectRecords(TQXTableRef table, const QString& where) override;
    bool NextRecord(TQXTableRef table) override;
    void DeleteRecords(TQXTableRef table, const QString& where, int options) override;
    QVariant GetFieldValue(TQXTableRef table, TQXFieldRef field) override;
    void SetFieldValue(TQXTableRef table, TQXFieldRef field, const QVariant& value) override;
    bool LocateRecord(TQXTableRef table, const QString& keyFields, const QVariantList& keyValues,
                      int options) override;
    bool LocateNextRecord(TQXTableRef table, const QString& keyFields,
                          const QVariantList& keyValues, int options) override;
    void EndRefresh(bool flag1, bool flag2) override;
    QList<QVariantList> PeekKeys(TQXTableRef table, const QString& keyFields, int count) override;
    void PrepareLocate(TQXTableRef table, const QString& keyFields,
                       const QList<QVariantList>& keyValues) override;
    std::unique_ptr<TQXDataSet> OpenQuery(QObject* owner, const QStringList& sql,
                                          int options) override;
    // SQLite takes the write lock when the transaction begins, so a file
    // locked by another program fails before anything is written. A rollback
    // closes every selection: their records may hold values it undid.
    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() override;

    // On the first call, the indexes of Korvane's schema the repository
    // lacks and what that costs; empty when it has them all, and on every
    // later call.
    QString TakeRepositoryNotice() override;

    const RepositoryLocation& Location() const { return FLocation; }
    QSqlDatabase Database() const;

    // Number of statements sent to the database so far; benchmarks report it.
    qint64 RoundTrips() const { return FRoundTrips; }

private:
    friend class SqlTable;
    SqlTable& TableOf(TQXTableRef table) const;
    QString UnreadableTable(const QString& name, const SqlError& error);
    bool TableKnown(const QString& name);
    [[noreturn]] void ThrowWriteFailure(const SqlError& error) const;

    RepositoryLocation FLocation;
    QString FConnectionName;
    QHash<QString, std::shared_ptr<SqlTable>> FTables; // by upper-case table name
    qint64 FRoundTrips = 0;
    bool FNoticeTaken = false;
};
