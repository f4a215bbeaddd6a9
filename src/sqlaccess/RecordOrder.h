#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <memory>
#include <optional>

class SqlStatement;

using SqlRow = QVector<QVariant>;
using SqlRows = QVector<SqlRow>;

// Batches grow so that a lookup of one record costs a tiny read and a walk
// over millions of records needs few round trips.
namespace batch {
inline constexpr int First = 16;
inline constexpr int Largest = 4096;
} // namespace batch

// Where the walk over one selection stands. Only the record order that
// started a walk reads or changes it.
struct RecordWalk {
    std::optional<qint64> after; // key of the last record read; none before the first
    int batchSize = 0;           // rows the last batch asked for
    bool exhausted = false;
    // PostgreSQL row identity: a selection too large to read at once is read
    // in windows of heap blocks, [after's block, windowEnd).
    bool windows = false;
    qint64 windowEnd = 0;
    qint64 windowBlocks = 0;    // size of the last window opened
    qint64 windowRows = 0;      // records read from it so far
    qint64 relationBlocks = -1; // the table's size in blocks, read when the windows start
    qint64 blocksRead = 0;      // blocks of the windows closed so far
    qint64 rowsRead = 0;        // and the records they held
};

// The order in which the records of one table are read, and how one record
// is found again: the QXSeq column a Korvane repository carries, or, for a
// table another loader wrote, the database's own row identity (SQLite's
// rowid, PostgreSQL's ctid). Every record has a key of 64 bits that sorts
// in record order; a PostgreSQL ctid (block, offset) is block << 16 | offset.
class RecordOrder {
public:
    virtual ~RecordOrder() = default;

    // The order of a table with these columns; throws EQXError naming the
    // table when it has none (a SQLite table WITHOUT ROWID and no QXSeq).
    static std::unique_ptr<RecordOrder> For(const QSqlDatabase& db, qint64& roundTrips,
                                            const QString& table, const QStringList& columns);

    // The select list of a whole record: the table's columns in their order,
    // then the key when it is not one of them.
    virtual QString SelectList() const = 0;
    int KeyPosition() const { return FKeyPosition; }
    qint64 RowKey(const SqlRow& row) const { return KeyOf(row[FKeyPosition]); }
    virtual qint64 KeyOf(const QVariant& value) const = 0;
    // The key as a row read with SelectList holds it.
    virtual QVariant KeyValue(qint64 key) const { return key; }

    // The key in SQL: its expression, a literal, and conditions on it.
    virtual QString KeyExpression() const = 0;
    // Whether the first records of a selection are cheap to read in this
    // order (not so for PostgreSQL's row identity, which sorts them all).
    virtual bool CheapFromStart() const { return true; }
    virtual QString KeyLiteral(qint64 key) const { return QString::number(key); }
    QString Is(qint64 key) const;
    QString After(qint64 key) const;
    // The record as a message names it: "the record with QXSeq 17".
    virtual QString RecordName(qint64 key) const;

    // Reads the next batch of the selection `condition` into rows, in record
    // order; false (rows empty) when the selection has no further record.
    virtual bool ReadBatch(SqlStatement& statement, const QString& table, const QString& condition,
                           RecordWalk& walk, SqlRows& rows) const;
    // Lets the walk go on after the record with this key.
    virtual void RestartAfter(RecordWalk& walk, qint64 key) const;
    // Sets one column of the record with this key; answers the record's key
    // afterwards, which changes where an update writes a new row version.
    virtual qint64 Update(SqlStatement& statement, const QString& table, const QString& column,
                          const QVariant& value, qint64 key) const;

protected:
    explicit RecordOrder(int keyPosition) : FKeyPosition(keyPosition) {}

private:
    int FKeyPosition;
};
