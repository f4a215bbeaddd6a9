#pragma once

#include "repository/DataAccessInterface.h"
#include "sqlaccess/LocateIndex.h"
#include "sqlaccess/RecordOrder.h"

#include <QHash>
#include <QSqlDatabase>
#include <QStringList>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

// What SqlDataAccess needs of any data set it hands out: values by field
// name, and a step to the next record.
class SqlDataSetBase : public TQXDataSet {
public:
    virtual QVariant ValueOf(const TQXField& field) const = 0;
    virtual bool Advance() = 0;
};

// One repository table with its current selection and current record.
//
// The selection is read in record order (QXSeq, or the database's row
// identity for a table without it, see RecordOrder) in batches that grow
// from a few records to a few thousand, so a selection of millions of
// records is never read at once. Locating by key columns asks the database for the first
// few lookups of a selection and then builds an in-memory index of the
// selection's keys, so that thousands of lookups cost microseconds each.
// Small selections (one batch or less, the lookups of single records that
// expansions make by the thousand) are remembered by their where text until
// the table is written, the refresh ends or the tables are closed.
class SqlTable final : public SqlDataSetBase {
public:
    SqlTable(QSqlDatabase db, qint64& roundTrips, const QString& name, const QStringList& columns);

    QString TableName() const override { return FName; }
    void First() override;
    void Next() override { Advance(); }
    bool Eof() const override { return !FHasCurrent || FAtEnd; }
    int FieldCount() const override { return static_cast<int>(FColumns.size()); }
    QVariant FieldValue(int position) const override;
    void Close() override;
    QString RecordName() const override;

    QVariant ValueOf(const TQXField& field) const override;
    bool Advance() override;

    TQXFieldRef Field(const QString& columnName);
    bool Select(const QString& where);
    bool Locate(const QString& keyFields, const QVariantList& keyValues, bool next);
    // The key columns of the selection's first records, in record order;
    // nothing for an order that is not cheap to read from the start.
    QList<QVariantList> PeekKeys(const QString& keyFields, int count);
    // Reads the record Locate would find for each of these key values, a
    // few hundred per statement; Locate then answers them without one.
    void PrepareLocate(const QString& keyFields, const QList<QVariantList>& keyValues);
    void SetValue(const TQXField& field, const QVariant& value);
    void Delete(const QString& where);
    // Frees what can be rebuilt (locate indexes, remembered selections);
    // the current selection stays.
    void ReleaseCaches();

private:
    struct LocateState {
        qsizetype lookups = 0;
        qsizetype nextTry = 0;              // lookups before the next try to index
        std::unique_ptr<LocateIndex> index; // built when lookups are dense enough
        std::unordered_map<qint64, QVector<QVariant>> records; // of a small indexed selection
        bool tooLarge = false;                                 // selection too large to index ever
        // Read ahead by PrepareLocate: the first record of each key value
        // (by its literal text), none for a value no record has.
        QHash<QString, std::optional<QVector<QVariant>>> prepared;
    };

    bool FetchBatch();
    void Remember(const QString& where, const QVector<QVector<QVariant>>& rows);
    void Forget();
    const QVector<QVariant>& CurrentRow() const;
    LocateState& CurrentLocateState();
    const QStringList& KeysOf(const QString& keyFields);
    // "K1 = v1 AND K2 = v2", the values as literals.
    static QString KeysEqual(const QStringList& keys, const QVariantList& values);
    // The key values as one text, the same for equal values of any type.
    static QString KeyText(const QVariantList& values);
    bool LocateThroughDatabase(const QStringList& keys, const QVariantList& values,
                               std::optional<qint64> after);
    void TryIndex(LocateState& state, const QStringList& keys);
    bool LocateThroughIndex(const LocateState& state, const QVariantList& values, bool next);
    QString SelectionCondition() const;
    int PositionOf(const QString& columnName) const;
    void PositionOnKey(qint64 key, std::optional<QVector<QVariant>> row);

    QSqlDatabase FDb;
    qint64& FRoundTrips;
    QString FName;
    QStringList FColumns;
    std::unique_ptr<RecordOrder> FOrder;
    std::deque<TQXField> FFields; // stable addresses for field references

    // Current selection.
    bool FSelected = false;
    QString FWhere;
    QVector<QVector<QVariant>> FBatch;
    int FBatchPos = 0;
    RecordWalk FWalk;

    // Current record: a row of the batch, or a located record read on demand.
    bool FHasCurrent = false;
    bool FAtEnd = false;
    qint64 FCurrentKey = 0;
    mutable std::optional<QVector<QVariant>> FLocatedRow;
    bool FCurrentIsLocated = false;

    // Small selections by where text, and the order they were remembered in.
    QHash<QString, QVector<QVector<QVariant>>> FSmallSelections;
    QStringList FSmallSelectionOrder;

    // Locate state per key column list, for the current selection.
    std::map<QString, LocateState> FLocates;
    QString FLastLocateKeyFields; // the text KeysOf parsed last
    QStringList FLastLocateKeys;
    QString FLastLocateStateKey; // their entry in FLocates
};
