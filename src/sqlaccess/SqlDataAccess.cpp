#include "sqlaccess/SqlDataAccess.h"

#include "repository/Errors.h"
#include "sqlaccess/MissingIndexes.h"
#include "sqlaccess/SqlQueryResult.h"
#include "sqlaccess/SqlStatement.h"
#include "sqlaccess/SqlTable.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <atomic>

namespace {

QString NewConnectionName() {
    static std::atomic<int> counter{0};
    return QStringLiteral("korvane-repository-%1").arg(++counter);
}

SqlDataSetBase& DataSetOf(TQXTableRef table) {
    auto* dataSet = dynamic_cast<SqlDataSetBase*>(table);
    if (dataSet == nullptr)
        throw EQXError(QStringLiteral("Table reference is not bound"));
    return *dataSet;
}

const TQXField& FieldOf(TQXFieldRef field) {
    if (field == nullptr)
        throw EQXError(QStringLiteral("Field reference is not bound"));
    return *field;
}

// The table a query statement reads, for the result's name.
QString QueriedTable(const QString& sql) {
    static const QRegularExpression from(QStringLiteral("\\bFROM\\s+([A-Za-z_][A-Za-z0-9_]*)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = from.match(sql);
    return match.hasMatch() ? match.captured(1).toUpper() : QStringLiteral("QUERY");
}

// A write the repository refuses as a whole: SQLite's SQLITE_READONLY (of a
// file or folder without write permission, or opened read-only), PostgreSQL's
// read-only transaction or a missing privilege.
bool IsReadOnlyFailure(const QSqlDatabase& db, const SqlError& error) {
    if (IsPostgreSQL(db))
        return error.Code() == QLatin1String("25006") || error.Code() == QLatin1String("42501");
    bool ok = false;
    const int code = error.Code().toInt(&ok);
    return ok && (code & 0xff) == 8;
}

} // namespace

SqlDataAccess::SqlDataAccess(const QString& repository)
    : SqlDataAccess(RepositoryLocation::Parse(repository)) {}

SqlDataAccess::SqlDataAccess(const RepositoryLocation& location)
    : FLocation(location), FConnectionName(NewConnectionName()) {
    // SQLite says only "unable to open database file" for a file it may not read.
    if (FLocation.kind == RepositoryLocation::Kind::SQLite) {
        const QFileInfo file(FLocation.filePath);
        if (file.exists() && !file.isReadable())
            throw EQXError(QStringLiteral("The repository ") + FLocation.Display() +
                           QStringLiteral(" cannot be read: permission denied"));
    }
    OpenRepositoryDatabase(FLocation, FConnectionName, OpenMode::ExistingOnly);
}

SqlDataAccess::~SqlDataAccess() {
    FTables.clear();
    CloseRepositoryDatabase(FConnectionName);
}

QSqlDatabase SqlDataAccess::Database() const {
    return QSqlDatabase::database(FConnectionName, false);
}

SqlTable& SqlDataAccess::TableOf(TQXTableRef table) const {
    auto* sqlTable = dynamic_cast<SqlTable*>(table);
    if (sqlTable == nullptr)
        throw EQXError(table == nullptr ? QStringLiteral("Table reference is not bound")
                                        : QStringLiteral("Not a table of this repository: ") +
                                              table->TableName());
    const auto it = FTables.constFind(sqlTable->TableName());
    if (it == FTables.cend() || it.value().get() != sqlTable)
        throw EQXError(QStringLiteral("Not a table of this repository: ") + table->TableName());
    return *sqlTable;
}

void SqlDataAccess::CloseTables(QObject*, bool) {
    for (const auto& table : std::as_const(FTables)) {
        table->Close();
        table->ReleaseCaches();
    }
}

TQXTableRef SqlDataAccess::GetTableRef(const QString& tableName) {
    const QString name = tableName.trimmed().toUpper();
    if (const auto it = FTables.constFind(name); it != FTables.cend())
        return it.value().get();
    // The columns as the database resolves the name, so that unquoted names
    // mean the same on both databases.
    SqlStatement probe(Database(), FRoundTrips);
    try {
        probe.ReadAll(QStringLiteral("SELECT * FROM ") + name + QStringLiteral(" WHERE 1 = 0"));
    } catch (const EQXStatementTimeout&) {
        throw; // the table may well be there, only locked
    } catch (const SqlError& e) {
        throw EQXError(UnreadableTable(name, e));
    }
    const QStringList columns = probe.Columns();
    auto table = std::make_shared<SqlTable>(Database(), FRoundTrips, name, columns);
    FTables.insert(name, table);
    return table.get();
}

// Why a table could not be read: missing only when the catalog does not know
// it; any other failure (and a catalog that cannot be read) in the
// database's own words. Only SQLite's generic error and PostgreSQL's
// undefined table can mean a missing table; the catalog is not asked
// otherwise (a locked file would keep it waiting once more).
QString SqlDataAccess::UnreadableTable(const QString& name, const SqlError& error) {
    const bool mayBeMissing = IsPostgreSQL(Database()) ? error.Code() == QLatin1String("42P01")
                                                       : error.Code() == QLatin1String("1");
    if (mayBeMissing && !TableKnown(name))
        return QStringLiteral("Table ") + name + QStringLiteral(" not found in the repository ") +
               FLocation.Display();
    return QStringLiteral("Table ") + name + QStringLiteral(" of the repository ") +
           FLocation.Display() + QStringLiteral(" cannot be read: ") + error.Message();
}

// Whether the catalog knows the table by its unquoted name; true when the
// catalog cannot be read either.
bool SqlDataAccess::TableKnown(const QString& name) {
    try {
        SqlStatement catalog(Database(), FRoundTrips);
        const auto rows =
            IsPostgreSQL(Database())
                ? catalog.ReadAll(QStringLiteral("SELECT to_regclass(?) IS NOT NULL"), {name})
                : catalog.ReadAll(QStringLiteral("SELECT COUNT(*) > 0 FROM sqlite_master WHERE "
                                                 "type IN ('table', 'view') AND "
                                                 "name = ? COLLATE NOCASE"),
                                  {name});
        return rows.isEmpty() || rows.front().front().toBool();
    } catch (const EQXError&) {
        return true;
    }
}

void SqlDataAccess::ThrowWriteFailure(const SqlError& error) const {
    if (IsReadOnlyFailure(Database(), error))
        throw EQXError(QStringLiteral("The repository ") + FLocation.Display() +
                       QStringLiteral(" is read-only: ") + error.Message());
    throw error;
}

QString SqlDataAccess::TakeRepositoryNotice() {
    if (FNoticeTaken)
        return QString();
    FNoticeTaken = true;
    try {
        return MissingIndexes::Notice(FLocation.Display(), Database(),
                                      MissingIndexes::Find(Database(), FRoundTrips));
    } catch (const EQXError&) {
        return QString(); // a repository that cannot be read says so when it is bound
    }
}

TQXFieldRef SqlDataAccess::GetFieldRef(TQXTableRef table, const QString& columnName) {
    return TableOf(table).Field(columnName);
}

QString SqlDataAccess::GetFieldName(TQXTableRef table, TQXFieldRef field) {
    TableOf(table);
    return FieldOf(field).Name;
}

bool SqlDataAccess::SelectRecords(TQXTableRef table, const QString& where) {
    return TableOf(table).Select(where);
}

bool SqlDataAccess::NextRecord(TQXTableRef table) {
    return DataSetOf(table).Advance();
}

void SqlDataAccess::DeleteRecords(TQXTableRef table, const QString& where, int) {
    try {
        TableOf(table).Delete(where);
    } catch (const SqlError& e) {
        ThrowWriteFailure(e);
    }
}

QVariant SqlDataAccess::GetFieldValue(TQXTableRef table, TQXFieldRef field) {
    return DataSetOf(table).ValueOf(FieldOf(field));
}

void SqlDataAccess::SetFieldValue(TQXTableRef table, TQXFieldRef field, const QVariant& value) {
    try {
        TableOf(table).SetValue(FieldOf(field), value);
    } catch (const SqlError& e) {
        ThrowWriteFailure(e);
    }
}

bool SqlDataAccess::LocateRecord(TQXTableRef table, const QString& keyFields,
                                 const QVariantList& keyValues, int) {
    return TableOf(table).Locate(keyFields, keyValues, false);
}

bool SqlDataAccess::LocateNextRecord(TQXTableRef table, const QString& keyFields,
                                     const QVariantList& keyValues, int) {
    return TableOf(table).Locate(keyFields, keyValues, true);
}

QList<QVariantList> SqlDataAccess::PeekKeys(TQXTableRef table, const QString& keyFields,
                                            int count) {
    return TableOf(table).PeekKeys(keyFields, count);
}

void SqlDataAccess::PrepareLocate(TQXTableRef table, const QString& keyFields,
                                  const QList<QVariantList>& keyValues) {
    TableOf(table).PrepareLocate(keyFields, keyValues);
}

void SqlDataAccess::EndRefresh(bool, bool) {
    for (const auto& table : std::as_const(FTables))
        table->ReleaseCaches();
}

std::unique_ptr<TQXDataSet> SqlDataAccess::OpenQuery(QObject*, const QStringList& sql, int) {
    const QString text = sql.join(QLatin1Char('\n'));
    SqlStatement statement(Database(), FRoundTrips);
    auto rows = statement.ReadAll(text);
    return std::make_unique<SqlQueryResult>(QueriedTable(text), statement.Columns(),
                                            std::move(rows));
}

void SqlDataAccess::BeginTransaction() {
    SqlStatement statement(Database(), FRoundTrips);
    try {
        statement.Execute(IsPostgreSQL(Database()) ? QStringLiteral("BEGIN")
                                                   : QStringLiteral("BEGIN IMMEDIATE"));
    } catch (const EQXStatementTimeout&) {
        throw;
    } catch (const SqlError& e) {
        ThrowWriteFailure(e);
    }
}

void SqlDataAccess::CommitTransaction() {
    SqlStatement statement(Database(), FRoundTrips);
    statement.Execute(QStringLiteral("COMMIT"));
}

void SqlDataAccess::RollbackTransaction() {
    for (const auto& table : std::as_const(FTables)) {
        table->Close();
        table->ReleaseCaches();
    }
    if (!Database().isOpen())
        return; // the server rolled back when the connection went
    SqlStatement statement(Database(), FRoundTrips);
    statement.Execute(QStringLiteral("ROLLBACK"));
}
