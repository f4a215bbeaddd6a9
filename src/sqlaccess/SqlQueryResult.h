#pragma once

#include "sqlaccess/SqlTable.h"

#include <QHash>
#include <QStringList>
#include <QVector>

// The result of a query statement, read in full when it is opened (the
// statements the view runs return the calls of one item or the tokens of one
// screen map). It is read by position, or stands in for the table it queried:
// a field reference of that table reads the same-named column.
class SqlQueryResult final : public SqlDataSetBase {
public:
    SqlQueryResult(QString tableName, QStringList columns, QVector<QVector<QVariant>> rows);

    QString TableName() const override { return FTableName; }
    void First() override { FPos = 0; }
    void Next() override { Advance(); }
    bool Eof() const override { return FPos >= FRows.size(); }
    int FieldCount() const override { return static_cast<int>(FColumns.size()); }
    QVariant FieldValue(int position) const override;
    void Close() override;
    QString RecordName() const override;

    QVariant ValueOf(const TQXField& field) const override;
    bool Advance() override;

private:
    QString FTableName;
    QStringList FColumns;
    QHash<QString, int> FPositions; // upper-case column name -> position
    QVector<QVector<QVariant>> FRows;
    qsizetype FPos = 0;
};
