#include "sqlaccess/SqlDataAccess.h"

#include "repository/Errors.h"
#include "sqlaccess/SqlQueryResult.h"
#include "sqlaccess/SqlStatement.h"
#include "sqlaccess/SqlTable.h"

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

} // namespace

SqlDataAccess::SqlDataAccess(const QString& repository)
    : SqlDataAccess(RepositoryLocation::Parse(repository)) {}

SqlDataAccess::SqlDataAccess(const RepositoryLocation& location)
    : FLocation(location), FConnectionName(NewConnectionName()) {
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
    } catch (const EQXError& e) {
        throw EQXError(QStringLiteral("Table %1 not found in the repository %2: %3")
                           .arg(name, FLocation.Display(), e.Message()));
    }
    const QStringList columns = probe.Columns();
    auto table = std::make_shared<SqlTable>(Database(), FRoundTrips, name, columns);
    FTables.insert(name, table);
    return table.get();
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
    TableOf(table).Delete(where);
}

QVariant SqlDataAccess::GetFieldValue(TQXTableRef table, TQXFieldRef field) {
    return DataSetOf(table).ValueOf(FieldOf(field));
}

void SqlDataAccess::SetFieldValue(TQXTableRef table, TQXFieldRef field, const QVariant& value) {
    TableOf(table).SetValue(FieldOf(field), value);
}

bool SqlDataAccess::LocateRecord(TQXTableRef table, const QString& keyFields,
                                 const QVariantList& keyValues, int) {
    return TableOf(table).Locate(keyFields, keyValues, false);
}

bool SqlDataAccess::LocateNextRecord(TQXTableRef table, const QString& keyFields,
                                     const QVariantList& keyValues, int) {
    return TableOf(table).Locate(keyFields, keyValues, true);
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
