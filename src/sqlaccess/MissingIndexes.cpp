#include "sqlaccess/MissingIndexes.h"

#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/RepositorySchema.h"
#include "sqlaccess/SqlStatement.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace MissingIndexes {
namespace {

// The parts of a column list between its top-level commas.
QStringList SplitColumns(const QString& list) {
    QStringList parts;
    int depth = 0;
    QString part;
    for (const QChar c : list) {
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            --depth;
        if (c == QLatin1Char(',') && depth == 0) {
            parts << part.trimmed();
            part.clear();
        } else {
            part += c;
        }
    }
    if (!part.trimmed().isEmpty())
        parts << part.trimmed();
    return parts;
}

// The text inside the parentheses that open at `open`.
QString Parenthesised(const QString& text, qsizetype open) {
    int depth = 0;
    for (qsizetype i = open; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('('))
            ++depth;
        else if (text.at(i) == QLatin1Char(')') && --depth == 0)
            return text.mid(open + 1, i - open - 1);
    }
    return QString();
}

// The columns an index of the repository has, by table (upper case).
using Existing = QHash<QString, QList<QStringList>>;

void ReadSQLite(SqlStatement& statement, Existing& existing) {
    for (const auto& row :
         statement.ReadAll(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'")))
        existing[row[0].toString().toUpper()];
    QHash<QString, QStringList> byIndex;
    QHash<QString, QString> tableOf;
    for (const auto& row : statement.ReadAll(QStringLiteral(
             "SELECT m.name, il.name, ii.name FROM sqlite_master AS m "
             "JOIN pragma_index_list(m.name) AS il JOIN pragma_index_info(il.name) AS ii "
             "WHERE m.type = 'table' ORDER BY m.name, il.name, ii.seqno"))) {
        const QString index = row[1].toString();
        tableOf[index] = row[0].toString().toUpper();
        // An expression column has no name; it matches none of ours.
        byIndex[index] << (row[2].isNull() ? QStringLiteral("(expression)")
                                           : ColumnKey(row[2].toString()));
    }
    for (auto it = byIndex.cbegin(); it != byIndex.cend(); ++it)
        existing[tableOf.value(it.key())] << it.value();
    // An INTEGER PRIMARY KEY is the rowid itself: the table is kept in its order.
    for (const auto& row : statement.ReadAll(QStringLiteral(
             "SELECT m.name, ti.name FROM sqlite_master AS m JOIN pragma_table_info(m.name) AS ti "
             "WHERE m.type = 'table' AND ti.pk = 1 AND ti.type = 'INTEGER' COLLATE NOCASE AND "
             "(SELECT COUNT(*) FROM pragma_table_info(m.name) WHERE pk > 0) = 1")))
        existing[row[0].toString().toUpper()] << QStringList{ColumnKey(row[1].toString())};
}

void ReadPostgreSQL(SqlStatement& statement, const QStringList& tables, Existing& existing) {
    QStringList names;
    for (const QString& table : tables)
        names << QLatin1Char('(') + SqlLiteral(table) + QLatin1Char(')');
    // The tables as the statements' unquoted names find them on the search path.
    static const QRegularExpression columns(QStringLiteral("\\sUSING\\s+\\w+\\s*\\("));
    for (const auto& row : statement.ReadAll(
             QStringLiteral("SELECT n.t, to_regclass(n.t) IS NOT NULL, "
                            "pg_get_indexdef(i.indexrelid) FROM (VALUES ") +
             names.join(QStringLiteral(", ")) +
             QStringLiteral(
                 ") AS n(t) LEFT JOIN pg_index AS i ON i.indrelid = to_regclass(n.t)"))) {
        if (!row[1].toBool())
            continue;
        QList<QStringList>& indexes = existing[row[0].toString().toUpper()];
        if (row[2].isNull())
            continue;
        const QString definition = row[2].toString();
        const auto match = columns.match(definition);
        if (!match.hasMatch())
            continue;
        QStringList keys;
        for (const QString& column :
             SplitColumns(Parenthesised(definition, match.capturedEnd() - 1)))
            keys << ColumnKey(column);
        indexes << keys;
    }
}

bool Leads(const QStringList& existing, const QStringList& wanted) {
    if (existing.size() < wanted.size())
        return false;
    for (qsizetype i = 0; i < wanted.size(); ++i)
        if (existing[i] != wanted[i])
            return false;
    return true;
}

} // namespace

QString ColumnKey(const QString& column) {
    QString key = column.trimmed().toLower();
    key.remove(QLatin1Char('"'));
    const qsizetype close = key.lastIndexOf(QLatin1Char(')'));
    if (close >= 0)
        key.truncate(close + 1); // an expression, without operator class or ordering
    else
        key = key.section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty);
    key.remove(QLatin1Char(' '));
    return key;
}

QList<Index> FromScript(const QString& script) {
    static const QRegularExpression create(
        QStringLiteral("^\\s*CREATE\\s+(?:UNIQUE\\s+)?INDEX\\s+\\w+\\s+ON\\s+(\\w+)\\s*\\("),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    QList<Index> indexes;
    for (auto it = create.globalMatch(script); it.hasNext();) {
        const auto match = it.next();
        Index index;
        index.table = match.captured(1).toUpper();
        index.columns = SplitColumns(Parenthesised(script, match.capturedEnd() - 1));
        for (const QString& column : index.columns)
            index.keys << ColumnKey(column);
        indexes << index;
    }
    return indexes;
}

Report Find(const QSqlDatabase& db, qint64& roundTrips) {
    const QList<Index> wanted = FromScript(RepositorySchema::IndexScript(db));
    QStringList tables;
    for (const Index& index : wanted)
        if (!tables.contains(index.table))
            tables << index.table;
    Existing existing;
    SqlStatement statement(db, roundTrips);
    if (IsPostgreSQL(db))
        ReadPostgreSQL(statement, tables, existing);
    else
        ReadSQLite(statement, existing);
    Report report;
    for (const Index& index : wanted) {
        const auto table = existing.constFind(index.table);
        if (table == existing.cend())
            continue;
        ++report.checked;
        bool covered = false;
        for (const QStringList& keys : table.value())
            covered = covered || Leads(keys, index.keys);
        if (!covered)
            report.missing << index;
    }
    // Grouped by table for the notice, tables and indexes in the script's order.
    std::stable_sort(report.missing.begin(), report.missing.end(),
                     [&tables](const Index& a, const Index& b) {
                         return tables.indexOf(a.table) < tables.indexOf(b.table);
                     });
    return report;
}

QString Notice(const QString& repository, const QSqlDatabase& db, const Report& report) {
    if (report.missing.isEmpty())
        return QString();
    // By table: "QXFILE (QXFileID), (QXSystemID); QXOBJECT (...)".
    QStringList tables;
    QString table;
    for (const Index& index : report.missing) {
        const QString columns =
            QLatin1Char('(') + index.columns.join(QStringLiteral(", ")) + QLatin1Char(')');
        if (index.table != table) {
            table = index.table;
            tables << table + QLatin1Char(' ') + columns;
        } else {
            tables.last() += QStringLiteral(", ") + columns;
        }
    }
    return QStringLiteral("The repository ") + repository + QStringLiteral(" lacks ") +
           QString::number(report.missing.size()) + QStringLiteral(" of the ") +
           QString::number(report.checked) +
           QStringLiteral(" indexes Korvane's own schema gives its tables: ") +
           tables.join(QStringLiteral("; ")) +
           QStringLiteral(". Every lookup by these columns reads the whole table, so views and "
                          "opening nodes slow down as the tables grow. Korvane does not change a "
                          "repository it did not create; its owner can add them (") +
           (IsPostgreSQL(db) ? QStringLiteral("schema/postgresql-indexes.sql")
                             : QStringLiteral("schema/sqlite-indexes.sql")) +
           QStringLiteral(").");
}

} // namespace MissingIndexes
