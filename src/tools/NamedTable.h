#pragma once

#include "repository/DataAccessInterface.h"

#include <QHash>
#include <QString>
#include <QVariant>

// A repository table reached by name through the data-access object, for
// the tools that read columns the view does not bind (a file's directory)
// or write (attributes, load records). The table's current selection and
// record are the ones every other user of the table shares.
class TQXNamedTable {
public:
    TQXNamedTable(TQXDataAccessInterface& dataAccess, const QString& tableName);

    // True when the selection holds at least one record.
    bool Select(const QString& where);
    bool Next();
    void Delete(const QString& where);

    QString Text(const char* column);
    // A whole number; anything else raises EQXError naming table, column and record.
    qint32 Int(const char* column);
    void Set(const char* column, const QVariant& value);

private:
    TQXFieldRef Field(const char* column);

    TQXDataAccessInterface& FDataAccess;
    QString FName;
    TQXTableRef FTable;
    QHash<QString, TQXFieldRef> FFields;
};
