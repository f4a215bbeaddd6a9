#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The indexes Korvane's own schema gives the repository tables, compared
// with the indexes a repository has. Korvane never adds one to a repository
// it did not create; it only says which are missing and what that costs.
namespace MissingIndexes {

struct Index {
    QString table;       // upper case
    QStringList columns; // as the schema script writes them
    QStringList keys;    // the columns compared: lower case, without quotes or operator classes
};

// The indexes an index script creates, in its order.
QList<Index> FromScript(const QString& script);

struct Report {
    int checked = 0;      // the schema's indexes on tables the repository has
    QList<Index> missing; // grouped by table
};

// The schema's indexes a repository lacks: those whose columns do not lead
// any index of the same table. Tables the repository does not have are left
// out; their absence is reported when they are bound. Throws EQXError when
// the catalog cannot be read.
Report Find(const QSqlDatabase& db, qint64& roundTrips);

// The notice for the user; empty when nothing is missing.
QString Notice(const QString& repository, const QSqlDatabase& db, const Report& report);

// The key an index column is compared by: "Upper(QXFileName) text_pattern_ops"
// and "upper(qxfilename)" both give "upper(qxfilename)".
QString ColumnKey(const QString& column);

} // namespace MissingIndexes
