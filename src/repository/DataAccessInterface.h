#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

// A data set: a table of the repository with its current selection and
// current record, or the result of a query. A query result is read either by
// position (First/FieldValue/Next/Eof) or, standing in for the table it
// queried, through the data-access object's GetFieldValue and NextRecord.
class TQXDataSet {
public:
    virtual ~TQXDataSet() = default;

    virtual QString TableName() const = 0;

    virtual void First() = 0;
    virtual void Next() = 0;
    virtual bool Eof() const = 0;
    virtual int FieldCount() const = 0;
    virtual QVariant FieldValue(int position) const = 0;
    virtual void Close() = 0;

    // The current record as a message names it ("the record with rowid 17",
    // "row 3 of the query result"); empty when the data set cannot say.
    virtual QString RecordName() const { return {}; }
};

// One column of a table, as handed out by GetFieldRef.
struct TQXField {
    TQXDataSet* DataSet = nullptr;
    QString Name;
    int Position = -1; // position in the owning data set's records
};

using TQXTableRef = TQXDataSet*;
using TQXFieldRef = const TQXField*;

// The host's data-access object: one per repository connection, owned by the
// host. Each table reference has exactly one current selection and one
// current record, shared by every caller. Every operation may throw EQXError
// with the database's own message.
class TQXDataAccessInterface {
public:
    virtual ~TQXDataAccessInterface() = default;

    // Operations in slot order.
    virtual void CloseTables(QObject* owner, bool flag) = 0;
    virtual TQXTableRef GetTableRef(const QString& tableName) = 0;
    virtual TQXFieldRef GetFieldRef(TQXTableRef table, const QString& columnName) = 0;
    virtual QString GetFieldName(TQXTableRef table, TQXFieldRef field) = 0;
    // Replaces the current selection; true when it holds at least one record.
    virtual bool SelectRecords(TQXTableRef table, const QString& where) = 0;
    virtual bool NextRecord(TQXTableRef table) = 0;
    virtual void DeleteRecords(TQXTableRef table, const QString& where, int options) = 0;
    virtual QVariant GetFieldValue(TQXTableRef table, TQXFieldRef field) = 0;
    virtual void SetFieldValue(TQXTableRef table, TQXFieldRef field, const QVariant& value) = 0;
    // Key fields joined by ";" ("QXFileID;QXObjectID"), one value per field.
    virtual bool LocateRecord(TQXTableRef table, const QString& keyFields,
                              const QVariantList& keyValues, int options) = 0;
    virtual bool LocateNextRecord(TQXTableRef table, const QString& keyFields,
                                  const QVariantList& keyValues, int options) = 0;
    virtual void EndRefresh(bool flag1, bool flag2) = 0;
    // Runs "SELECT ... WHERE " / where text / " ORDER BY ..." given as lines;
    // the caller owns the result, positioned on its first row.
    virtual std::unique_ptr<TQXDataSet> OpenQuery(QObject* owner, const QStringList& sql,
                                                  int options) = 0;

    // Read-ahead for the locates a listing is about to make. PeekKeys gives
    // the values of `keyFields` in the first `count` records of the table's
    // current selection, in record order, or nothing where that is not
    // cheap to read; PrepareLocate reads at once the records LocateRecord
    // would find for these key values. Neither changes a selection or a
    // current record, and a data-access object may ignore both.
    virtual QList<QVariantList> PeekKeys(TQXTableRef table, const QString& keyFields, int count);
    virtual void PrepareLocate(TQXTableRef table, const QString& keyFields,
                               const QList<QVariantList>& keyValues);

    // Writes kept together: everything written between BeginTransaction and
    // CommitTransaction stays, or after RollbackTransaction none of it does.
    // Not nested. A data-access object that cannot keep writes together
    // refuses to begin (the default).
    virtual void BeginTransaction();
    virtual void CommitTransaction();
    virtual void RollbackTransaction();
};

// One transaction for the lifetime of a scope: begun on construction, rolled
// back on destruction unless committed, also when an exception leaves the
// scope.
class TQXTransaction {
public:
    explicit TQXTransaction(TQXDataAccessInterface& dataAccess);
    ~TQXTransaction();

    TQXTransaction(const TQXTransaction&) = delete;
    TQXTransaction& operator=(const TQXTransaction&) = delete;

    void Commit();

private:
    TQXDataAccessInterface& FDataAccess;
    bool FOpen = true;
};

// What a data-access object has to tell the user once about its repository,
// such as the indexes it lacks. The first call answers it (empty when there
// is nothing to tell), later calls answer an empty text.
class TQXRepositoryNotice {
public:
    virtual ~TQXRepositoryNotice() = default;
    virtual QString TakeRepositoryNotice() = 0;
};

// Variant conversions used when reading repository values. A value that is
// not a whole number, or one outside 32 bits, raises EQXError, as a failed
// conversion would.
qint32 VariantToInt(const QVariant& value);
QString VariantToText(const QVariant& value);

// The one conversion of the whole numbers the view reads from records (ids,
// types, icons): a NULL, a value that is not a whole number or one outside
// 32 bits raises EQXError naming table, column, record and value
// ("QXOBJECT.QXObjectID is NULL in the record with rowid 17").
qint32 RecordInt(const QVariant& value, const QString& table, const QString& column,
                 const TQXDataSet* record);
