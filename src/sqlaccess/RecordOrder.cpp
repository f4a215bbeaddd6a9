#include "sqlaccess/RecordOrder.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/SqlStatement.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

const QString SeqColumn = QStringLiteral("QXSeq");

int NextBatchSize(int size) {
    return size == 0 ? batch::First : std::min(size * 4, batch::Largest);
}

int PositionOf(const QStringList& columns, const QString& name) {
    for (int i = 0; i < columns.size(); ++i)
        if (columns[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

// Our own column: the record's position in load order, the table's primary key.
class SeqOrder final : public RecordOrder {
public:
    SeqOrder(int position, QString column) : RecordOrder(position), FColumn(std::move(column)) {}

    QString SelectList() const override { return QStringLiteral("*"); }
    qint64 KeyOf(const QVariant& value) const override { return value.toLongLong(); }
    QString KeyExpression() const override { return FColumn; }
    QString RecordName(qint64 key) const override {
        return QStringLiteral("the record with QXSeq ") + QString::number(key);
    }

private:
    QString FColumn;
};

// SQLite's rowid: the order in which the loader inserted the records.
class RowidOrder final : public RecordOrder {
public:
    RowidOrder(int position, QString alias) : RecordOrder(position), FAlias(std::move(alias)) {}

    QString SelectList() const override { return QStringLiteral("*, ") + FAlias; }
    qint64 KeyOf(const QVariant& value) const override { return value.toLongLong(); }
    QString KeyExpression() const override { return FAlias; }
    QString RecordName(qint64 key) const override {
        return QStringLiteral("the record with rowid ") + QString::number(key);
    }

private:
    QString FAlias;
};

// PostgreSQL's ctid: where the record lies in the table's heap, which is the
// order a loader's inserts left the records in. A selection that fits in one
// probe is read through whatever index its condition can use and put in
// order here; a larger one is read in windows of heap blocks, each a TID
// range scan and a sort of that window only.
class CtidOrder final : public RecordOrder {
public:
    explicit CtidOrder(int position) : RecordOrder(position) {}

    QString SelectList() const override { return QStringLiteral("*, ctid"); }
    qint64 KeyOf(const QVariant& value) const override;
    QVariant KeyValue(qint64 key) const override { return TidText(key); }
    QString KeyExpression() const override { return QStringLiteral("ctid"); }
    bool CheapFromStart() const override { return false; }
    QString KeyLiteral(qint64 key) const override {
        return QLatin1Char('\'') + TidText(key) + QStringLiteral("'::tid");
    }
    QString RecordName(qint64 key) const override {
        return QStringLiteral("the record with ctid ") + TidText(key);
    }

    bool ReadBatch(SqlStatement& statement, const QString& table, const QString& condition,
                   RecordWalk& walk, SqlRows& rows) const override;
    void RestartAfter(RecordWalk& walk, qint64 key) const override;
    qint64 Update(SqlStatement& statement, const QString& table, const QString& column,
                  const QVariant& value, qint64 key) const override;

private:
    // Selections smaller than this are read in one statement.
    static constexpr int Probe = 1024;
    // The most blocks (of 8 kB, usually) one window scans.
    static constexpr qint64 LargestWindow = 16384;

    static qint64 Block(qint64 key) { return key >> 16; }
    static qint64 KeyAt(qint64 block) { return block << 16; } // before the block's first record
    static QString TidText(qint64 key) {
        return QLatin1Char('(') + QString::number(Block(key)) + QLatin1Char(',') +
               QString::number(key & 0xffff) + QLatin1Char(')');
    }
    bool ReadProbe(SqlStatement& statement, const QString& table, const QString& condition,
                   RecordWalk& walk, SqlRows& rows) const;
    bool ReadWindows(SqlStatement& statement, const QString& table, const QString& condition,
                     RecordWalk& walk, SqlRows& rows) const;
    static qint64 NextWindowBlocks(const RecordWalk& walk);
};

qint64 CtidOrder::KeyOf(const QVariant& value) const {
    static const QRegularExpression tid(QStringLiteral("^\\((\\d+),(\\d+)\\)$"));
    const auto match = tid.match(value.toString().trimmed());
    if (!match.hasMatch())
        throw EQXError(QStringLiteral("Not a row identity of PostgreSQL: ") + value.toString());
    return KeyAt(match.captured(1).toLongLong()) | match.captured(2).toLongLong();
}

bool CtidOrder::ReadBatch(SqlStatement& statement, const QString& table, const QString& condition,
                          RecordWalk& walk, SqlRows& rows) const {
    rows.clear();
    if (walk.exhausted)
        return false;
    if (!walk.windows && ReadProbe(statement, table, condition, walk, rows))
        return !rows.isEmpty();
    return ReadWindows(statement, table, condition, walk, rows);
}

// True when the probe read the rest of the selection.
bool CtidOrder::ReadProbe(SqlStatement& statement, const QString& table, const QString& condition,
                          RecordWalk& walk, SqlRows& rows) const {
    QString where = condition;
    if (walk.after)
        where += QStringLiteral(" AND ") + After(*walk.after);
    rows = statement.ReadAll(QStringLiteral("SELECT *, ctid FROM ") + table +
                             QStringLiteral(" WHERE ") + where + QStringLiteral(" LIMIT ") +
                             QString::number(Probe));
    if (rows.size() >= Probe) {
        rows.clear();
        walk.windows = true;
        walk.windowEnd = 0;
        return false;
    }
    std::sort(rows.begin(), rows.end(),
              [this](const SqlRow& a, const SqlRow& b) { return RowKey(a) < RowKey(b); });
    walk.exhausted = true;
    if (!rows.isEmpty())
        walk.after = RowKey(rows.back());
    return true;
}

bool CtidOrder::ReadWindows(SqlStatement& statement, const QString& table, const QString& condition,
                            RecordWalk& walk, SqlRows& rows) const {
    if (walk.relationBlocks < 0) {
        const auto size =
            statement.ReadAll(QStringLiteral("SELECT pg_relation_size(") + SqlLiteral(table) +
                              QStringLiteral(") / current_setting('block_size')::bigint"));
        walk.relationBlocks = size.isEmpty() ? 0 : size.front().front().toLongLong();
    }
    walk.batchSize = NextBatchSize(walk.batchSize);
    for (;;) {
        const qint64 after = walk.after.value_or(0);
        if (walk.windowEnd <= Block(after)) {
            // An empty window is not the end; the block past the last one is.
            if (Block(after) >= walk.relationBlocks) {
                walk.exhausted = true;
                return false;
            }
            walk.windowBlocks = NextWindowBlocks(walk);
            walk.windowEnd = Block(after) + walk.windowBlocks;
        }
        rows = statement.ReadAll(
            QStringLiteral("SELECT *, ctid FROM ") + table + QStringLiteral(" WHERE ") + condition +
            QStringLiteral(" AND ") + After(after) + QStringLiteral(" AND ctid < ") +
            KeyLiteral(KeyAt(walk.windowEnd)) + QStringLiteral(" ORDER BY ctid LIMIT ") +
            QString::number(walk.batchSize));
        walk.windowRows += rows.size();
        if (rows.size() == walk.batchSize) {
            // The window goes on after the last of these.
            walk.after = RowKey(rows.back());
            return true;
        }
        walk.blocksRead += walk.windowBlocks;
        walk.rowsRead += walk.windowRows;
        walk.windowRows = 0;
        walk.after = KeyAt(walk.windowEnd);
        if (!rows.isEmpty())
            return true;
    }
}

// As many blocks as should hold the next batch, judged by the windows read
// so far; growing fourfold while they held nothing.
qint64 CtidOrder::NextWindowBlocks(const RecordWalk& walk) {
    qint64 blocks = 1;
    if (walk.rowsRead > 0)
        blocks = (qint64(walk.batchSize) * walk.blocksRead + walk.rowsRead - 1) / walk.rowsRead;
    else if (walk.windowBlocks > 0)
        blocks = walk.windowBlocks * 4;
    return std::clamp<qint64>(blocks, 1, LargestWindow);
}

void CtidOrder::RestartAfter(RecordWalk& walk, qint64 key) const {
    walk.after = key;
    walk.exhausted = false;
    walk.windowEnd = 0; // a new window starts at the record's block
    walk.windowRows = 0;
}

qint64 CtidOrder::Update(SqlStatement& statement, const QString& table, const QString& column,
                         const QVariant& value, qint64 key) const {
    const auto rows = statement.ReadAll(
        QStringLiteral("UPDATE ") + table + QStringLiteral(" SET ") + column +
            QStringLiteral(" = ? WHERE ") + Is(key) + QStringLiteral(" RETURNING ctid"),
        {value});
    if (rows.isEmpty())
        throw EQXError(QStringLiteral("The current record of table ") + table +
                       QStringLiteral(" no longer exists"));
    return KeyOf(rows.front().front());
}

// The SQLite table's definition: refused when it has no rowid.
void CheckSQLiteTable(const QSqlDatabase& db, qint64& roundTrips, const QString& table) {
    SqlStatement statement(db, roundTrips);
    const auto rows = statement.ReadAll(QStringLiteral("SELECT type, sql FROM sqlite_master WHERE "
                                                       "name = ? COLLATE NOCASE"),
                                        {table});
    if (rows.isEmpty())
        return;
    static const QRegularExpression withoutRowid(QStringLiteral("\\bWITHOUT\\s+ROWID\\b"),
                                                 QRegularExpression::CaseInsensitiveOption);
    const QString reason = rows.front()[0].toString() == QLatin1String("view")
                               ? QStringLiteral("is a view")
                           : withoutRowid.match(rows.front()[1].toString()).hasMatch()
                               ? QStringLiteral("is a WITHOUT ROWID table")
                               : QString();
    if (!reason.isEmpty())
        throw EQXError(QStringLiteral("Table ") + table + QLatin1Char(' ') + reason +
                       QStringLiteral(" without a QXSeq column: its records have no order "
                                      "Korvane could read them in"));
}

} // namespace

std::unique_ptr<RecordOrder> RecordOrder::For(const QSqlDatabase& db, qint64& roundTrips,
                                              const QString& table, const QStringList& columns) {
    if (const int seq = PositionOf(columns, SeqColumn); seq >= 0)
        return std::make_unique<SeqOrder>(seq, columns[seq]);
    const int appended = static_cast<int>(columns.size());
    if (IsPostgreSQL(db))
        return std::make_unique<CtidOrder>(appended);
    CheckSQLiteTable(db, roundTrips, table);
    // A column of the table may take the name rowid; SQLite offers two more.
    for (const char* alias : {"rowid", "_rowid_", "oid"})
        if (PositionOf(columns, QLatin1String(alias)) < 0)
            return std::make_unique<RowidOrder>(appended, QLatin1String(alias));
    throw EQXError(QStringLiteral("Table ") + table +
                   QStringLiteral(" has columns named rowid, _rowid_ and oid and no QXSeq "
                                  "column: its records have no order Korvane could read them in"));
}

QString RecordOrder::Is(qint64 key) const {
    return KeyExpression() + QStringLiteral(" = ") + KeyLiteral(key);
}

QString RecordOrder::After(qint64 key) const {
    return KeyExpression() + QStringLiteral(" > ") + KeyLiteral(key);
}

QString RecordOrder::RecordName(qint64 key) const {
    return QStringLiteral("the record with key ") + QString::number(key);
}

bool RecordOrder::ReadBatch(SqlStatement& statement, const QString& table, const QString& condition,
                            RecordWalk& walk, SqlRows& rows) const {
    rows.clear();
    if (walk.exhausted)
        return false;
    walk.batchSize = NextBatchSize(walk.batchSize);
    QString where = condition;
    if (walk.after)
        where += QStringLiteral(" AND ") + After(*walk.after);
    rows = statement.ReadAll(QStringLiteral("SELECT ") + SelectList() + QStringLiteral(" FROM ") +
                             table + QStringLiteral(" WHERE ") + where +
                             QStringLiteral(" ORDER BY ") + KeyExpression() +
                             QStringLiteral(" LIMIT ") + QString::number(walk.batchSize));
    walk.exhausted = rows.size() < walk.batchSize;
    if (rows.isEmpty())
        return false;
    walk.after = RowKey(rows.back());
    return true;
}

void RecordOrder::RestartAfter(RecordWalk& walk, qint64 key) const {
    walk.after = key;
    walk.exhausted = false;
}

qint64 RecordOrder::Update(SqlStatement& statement, const QString& table, const QString& column,
                           const QVariant& value, qint64 key) const {
    statement.Execute(QStringLiteral("UPDATE ") + table + QStringLiteral(" SET ") + column +
                          QStringLiteral(" = ? WHERE ") + KeyExpression() + QStringLiteral(" = ?"),
                      {value, key});
    return key;
}
