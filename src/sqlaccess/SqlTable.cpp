#include "sqlaccess/SqlTable.h"

#include "repository/Errors.h"
#include "sqlaccess/SqlStatement.h"
#include "sqlaccess/SqliteIntegerRows.h"

#include <QSet>
#include <QSqlQuery>

#include <algorithm>

namespace {
// Lookups answered by the database before an index is considered.
constexpr int DirectLookups = 24;
// A selection is indexed only when it holds at most this many records per
// lookup made so far: reading a record into the index costs a small part
// of a lookup in the database, so an index pays off only for dense lookups,
// and a refresh that looks up a hundred keys never reads a whole table.
constexpr qsizetype RecordsPerLookup = 256;
// Indexed selections up to this size keep their records too, so that a
// located record needs no further statement.
constexpr qsizetype KeptRecords = 8192;
// Selections larger than this are never indexed; lookups stay in the database.
constexpr qsizetype LargestIndex = 2'000'000;
// Small selections remembered per table.
constexpr qsizetype RememberedSelections = 4096;
} // namespace

SqlTable::SqlTable(QSqlDatabase db, qint64& roundTrips, const QString& name,
                   const QStringList& columns)
    : FDb(std::move(db)), FRoundTrips(roundTrips), FName(name), FColumns(columns),
      FOrder(RecordOrder::For(FDb, roundTrips, name, columns)) {}

int SqlTable::PositionOf(const QString& columnName) const {
    for (int i = 0; i < FColumns.size(); ++i)
        if (FColumns[i].compare(columnName, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

TQXFieldRef SqlTable::Field(const QString& columnName) {
    for (const TQXField& field : FFields)
        if (field.Name.compare(columnName, Qt::CaseInsensitive) == 0)
            return &field;
    const int position = PositionOf(columnName);
    if (position < 0)
        throw EQXError(QStringLiteral("Field '%1' not found in table %2").arg(columnName, FName));
    FFields.push_back(TQXField{this, columnName, position});
    return &FFields.back();
}

QString SqlTable::SelectionCondition() const {
    return FWhere.trimmed().isEmpty() ? QStringLiteral("1 = 1")
                                      : QLatin1Char('(') + FWhere + QLatin1Char(')');
}

bool SqlTable::Select(const QString& where) {
    Close();
    FSelected = true;
    FWhere = where;
    if (const auto remembered = FSmallSelections.constFind(where);
        remembered != FSmallSelections.cend()) {
        FBatch = remembered.value();
        FWalk = RecordWalk{};
        FWalk.batchSize = batch::First;
        FWalk.exhausted = true;
        if (FBatch.isEmpty())
            return false;
        FWalk.after = FOrder->RowKey(FBatch.back());
    } else {
        FWalk = RecordWalk{};
        const bool found = FetchBatch();
        if (FWalk.exhausted && (!found || FBatch.size() < batch::First))
            Remember(where, found ? FBatch : QVector<QVector<QVariant>>());
        if (!found)
            return false;
    }
    FHasCurrent = true;
    FCurrentKey = FOrder->RowKey(FBatch[0]);
    return true;
}

void SqlTable::Remember(const QString& where, const QVector<QVector<QVariant>>& rows) {
    if (FSmallSelectionOrder.size() >= RememberedSelections)
        FSmallSelections.remove(FSmallSelectionOrder.takeFirst());
    FSmallSelections.insert(where, rows);
    FSmallSelectionOrder << where;
}

void SqlTable::Forget() {
    FSmallSelections.clear();
    FSmallSelectionOrder.clear();
}

// Reads the next batch of the selection into FBatch; false (and FBatch
// untouched) when the selection has no further record.
bool SqlTable::FetchBatch() {
    SqlStatement statement(FDb, FRoundTrips);
    SqlRows rows;
    if (!FOrder->ReadBatch(statement, FName, SelectionCondition(), FWalk, rows))
        return false;
    FBatch = std::move(rows);
    FBatchPos = 0;
    FCurrentIsLocated = false;
    FLocatedRow.reset();
    return true;
}

bool SqlTable::Advance() {
    if (!FSelected || !FHasCurrent || FAtEnd)
        return false;
    if (FCurrentIsLocated) {
        // Walk on from the located record.
        FOrder->RestartAfter(FWalk, FCurrentKey);
    } else if (FBatchPos + 1 < FBatch.size()) {
        ++FBatchPos;
        FCurrentKey = FOrder->RowKey(FBatch[FBatchPos]);
        return true;
    }
    if (!FetchBatch()) {
        FAtEnd = true; // the last record stays current
        return false;
    }
    FCurrentKey = FOrder->RowKey(FBatch[0]);
    return true;
}

void SqlTable::First() {
    const QString where = FWhere;
    Select(where);
}

void SqlTable::Close() {
    FSelected = false;
    FWhere.clear();
    FBatch.clear();
    FBatchPos = 0;
    FWalk = RecordWalk{};
    FWalk.exhausted = true;
    FHasCurrent = false;
    FAtEnd = false;
    FCurrentKey = 0;
    FCurrentIsLocated = false;
    FLocatedRow.reset();
    FLocates.clear();
}

void SqlTable::ReleaseCaches() {
    Forget();
    for (auto& [keys, state] : FLocates) {
        state.index.reset();
        state.records.clear();
    }
}

const QVector<QVariant>& SqlTable::CurrentRow() const {
    if (!FHasCurrent)
        throw EQXError(QStringLiteral("No current record in table ") + FName);
    if (!FCurrentIsLocated)
        return FBatch[FBatchPos];
    if (!FLocatedRow) {
        SqlStatement statement(FDb, FRoundTrips);
        auto rows = statement.ReadAll(QStringLiteral("SELECT ") + FOrder->SelectList() +
                                      QStringLiteral(" FROM ") + FName + QStringLiteral(" WHERE ") +
                                      FOrder->Is(FCurrentKey));
        if (rows.isEmpty())
            throw EQXError(
                QStringLiteral("The current record of table %1 no longer exists").arg(FName));
        FLocatedRow = std::move(rows.front());
    }
    return *FLocatedRow;
}

QVariant SqlTable::FieldValue(int position) const {
    const QVector<QVariant>& row = CurrentRow();
    if (position < 0 || position >= row.size())
        throw EQXError(
            QStringLiteral("Field index %1 out of range in table %2").arg(position).arg(FName));
    return row[position];
}

QVariant SqlTable::ValueOf(const TQXField& field) const {
    if (field.DataSet == this)
        return FieldValue(field.Position);
    const int position = PositionOf(field.Name);
    if (position < 0)
        throw EQXError(QStringLiteral("Field '%1' not found in table %2").arg(field.Name, FName));
    return FieldValue(position);
}

QString SqlTable::RecordName() const {
    return FHasCurrent ? FOrder->RecordName(FCurrentKey) : QString();
}

void SqlTable::PositionOnKey(qint64 key, std::optional<QVector<QVariant>> row) {
    FHasCurrent = true;
    FAtEnd = false;
    FCurrentIsLocated = true;
    FCurrentKey = key;
    FLocatedRow = std::move(row);
}

// The locate state of the key columns KeysOf parsed last.
SqlTable::LocateState& SqlTable::CurrentLocateState() {
    return FLocates[FLastLocateStateKey];
}

// The key columns of a key-field text, parsed and checked once for as long
// as the same text comes again (thousands of look-ups use one).
const QStringList& SqlTable::KeysOf(const QString& keyFields) {
    if (keyFields == FLastLocateKeyFields && !FLastLocateKeys.isEmpty())
        return FLastLocateKeys;
    QStringList keys;
    for (const QString& key : keyFields.split(QLatin1Char(';'), Qt::SkipEmptyParts))
        keys << key.trimmed();
    for (const QString& key : keys)
        if (PositionOf(key) < 0)
            throw EQXError(QStringLiteral("Field '%1' not found in table %2").arg(key, FName));
    FLastLocateKeyFields = keyFields;
    FLastLocateKeys = keys;
    FLastLocateStateKey = keys.join(QLatin1Char(';')).toUpper();
    return FLastLocateKeys;
}

bool SqlTable::Locate(const QString& keyFields, const QVariantList& keyValues, bool next) {
    const QStringList& keys = KeysOf(keyFields);
    if (keys.isEmpty() || keys.size() != keyValues.size())
        throw EQXError(QStringLiteral("LocateRecord on %1: %2 key fields but %3 values")
                           .arg(FName)
                           .arg(keys.size())
                           .arg(keyValues.size()));
    if (!FSelected)
        Select(QString());

    LocateState& state = CurrentLocateState();
    if (!next && !state.prepared.isEmpty()) {
        const auto prepared = state.prepared.constFind(KeyText(keyValues));
        if (prepared != state.prepared.cend()) {
            if (!*prepared)
                return false;
            PositionOnKey(FOrder->RowKey(**prepared), **prepared);
            return true;
        }
    }
    if (!next)
        ++state.lookups;
    if (!state.index && !state.tooLarge && state.lookups > DirectLookups &&
        state.lookups >= state.nextTry)
        TryIndex(state, keys);
    if (state.index)
        return LocateThroughIndex(state, keyValues, next);
    return LocateThroughDatabase(keys, keyValues,
                                 next && FHasCurrent ? std::optional(FCurrentKey) : std::nullopt);
}

// Indexes the selection when it is small enough for the lookups made so
// far; otherwise tries again when their number has doubled. The size is
// counted only up to the bound, so a large selection costs little to refuse.
void SqlTable::TryIndex(LocateState& state, const QStringList& keys) {
    const qsizetype bound = std::min(state.lookups * RecordsPerLookup, LargestIndex);
    state.nextTry = state.lookups * 2;
    SqlStatement counting(FDb, FRoundTrips);
    const auto counted = counting.ReadAll(QStringLiteral("SELECT COUNT(*) FROM (SELECT 1 FROM ") +
                                          FName + QStringLiteral(" WHERE ") + SelectionCondition() +
                                          QStringLiteral(" LIMIT ") + QString::number(bound + 1) +
                                          QStringLiteral(") bounded"));
    const qsizetype size = counted.isEmpty() ? 0 : counted.front().front().toLongLong();
    if (size > bound) {
        state.tooLarge = bound == LargestIndex;
        return;
    }
    // Read in any order (a PostgreSQL selection sorted by ctid would be
    // sorted whole); the index keeps each key's records in record order.
    auto index = std::make_unique<LocateIndex>();
    index->Reserve(size, keys.size());
    state.records.clear();
    SqlStatement statement(FDb, FRoundTrips);
    QVariantList values(keys.size());
    if (size <= KeptRecords) {
        // Whole records, kept beside the index.
        QList<int> positions;
        for (const QString& key : keys)
            positions << PositionOf(key);
        for (SqlRow& row : statement.ReadAll(QStringLiteral("SELECT ") + FOrder->SelectList() +
                                             QStringLiteral(" FROM ") + FName +
                                             QStringLiteral(" WHERE ") + SelectionCondition())) {
            for (int i = 0; i < keys.size(); ++i)
                values[i] = row[positions[i]];
            const qint64 key = FOrder->RowKey(row);
            index->Add(values, key);
            state.records.emplace(key, std::move(row));
        }
    } else {
        QString columns = FOrder->KeyExpression();
        for (const QString& key : keys)
            columns += QStringLiteral(", ") + key;
        const QString read = QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM ") +
                             FName + QStringLiteral(" WHERE ") + SelectionCondition();
        // Integer keys in SQLite are read without Qt's row cache; any other
        // value starts the index again through Qt.
        const bool integers =
            ForEachSqliteIntegerRow(FDb, FRoundTrips, read, [&](std::span<const qint64> row) {
                index->AddIntegers(row.subspan(1), FOrder->KeyOf(row.front()));
            });
        if (!integers) {
            index = std::make_unique<LocateIndex>();
            index->Reserve(size, keys.size());
            statement.ForEachRow(read, [&](const QSqlQuery& query) {
                for (int i = 0; i < keys.size(); ++i)
                    values[i] = query.value(i + 1);
                index->Add(values, FOrder->KeyOf(query.value(0)));
                return true;
            });
        }
    }
    index->Finish();
    state.index = std::move(index);
}

bool SqlTable::LocateThroughIndex(const LocateState& state, const QVariantList& values, bool next) {
    const std::span<const qint64> matches = state.index->Find(values);
    auto found = matches.begin();
    if (next && FHasCurrent)
        found = std::upper_bound(matches.begin(), matches.end(), FCurrentKey);
    if (found == matches.end())
        return false;
    const auto kept = state.records.find(*found);
    PositionOnKey(*found, kept != state.records.end() ? std::optional(kept->second) : std::nullopt);
    return true;
}

QString SqlTable::KeysEqual(const QStringList& keys, const QVariantList& values) {
    QStringList terms;
    for (int i = 0; i < keys.size(); ++i)
        terms << keys[i] + QStringLiteral(" = ") + SqlLiteral(values[i]);
    return terms.join(QStringLiteral(" AND "));
}

QString SqlTable::KeyText(const QVariantList& values) {
    QString text;
    for (const QVariant& value : values)
        text += SqlLiteral(value) + QLatin1Char('\x1f');
    return text;
}

QList<QVariantList> SqlTable::PeekKeys(const QString& keyFields, int count) {
    const QStringList& keys = KeysOf(keyFields);
    if (keys.isEmpty() || count <= 0 || !FSelected || !FOrder->CheapFromStart())
        return {};
    SqlStatement statement(FDb, FRoundTrips);
    const auto rows = statement.ReadAll(
        QStringLiteral("SELECT ") + keys.join(QStringLiteral(", ")) + QStringLiteral(" FROM ") +
        FName + QStringLiteral(" WHERE ") + SelectionCondition() + QStringLiteral(" ORDER BY ") +
        FOrder->KeyExpression() + QStringLiteral(" LIMIT ") + QString::number(count));
    QList<QVariantList> values;
    for (const auto& row : rows)
        values << QVariantList(row.begin(), row.end());
    return values;
}

void SqlTable::PrepareLocate(const QString& keyFields, const QList<QVariantList>& keyValues) {
    const QStringList& keys = KeysOf(keyFields);
    if (keys.isEmpty())
        return;
    if (!FSelected)
        Select(QString());
    QList<int> positions;
    for (const QString& key : keys)
        positions << PositionOf(key);
    if (positions.contains(-1))
        return;
    LocateState& state = CurrentLocateState();
    constexpr qsizetype ValuesPerStatement = 300;
    QSet<QString> wanted;
    QStringList conditions;
    auto read = [&] {
        if (conditions.isEmpty())
            return;
        // One key column: a list of values, which the database looks up
        // through an index as readily as one value.
        const QString any = keys.size() == 1
                                ? keys.front() + QStringLiteral(" IN (") +
                                      conditions.join(QStringLiteral(", ")) + QLatin1Char(')')
                                : conditions.join(QStringLiteral(" OR "));
        const QString matching = QStringLiteral(" WHERE ") + SelectionCondition() +
                                 QStringLiteral(" AND (") + any + QLatin1Char(')');
        // Only the first record of each key, where the order's key has a
        // minimum; otherwise every record of the keys.
        const QString where = FOrder->CheapFromStart()
                                  ? QStringLiteral(" WHERE ") + FOrder->KeyExpression() +
                                        QStringLiteral(" IN (SELECT MIN(") +
                                        FOrder->KeyExpression() + QStringLiteral(") FROM ") +
                                        FName + matching + QStringLiteral(" GROUP BY ") +
                                        keys.join(QStringLiteral(", ")) + QLatin1Char(')')
                                  : matching;
        SqlStatement statement(FDb, FRoundTrips);
        const auto rows = statement.ReadAll(QStringLiteral("SELECT ") + FOrder->SelectList() +
                                            QStringLiteral(" FROM ") + FName + where +
                                            QStringLiteral(" ORDER BY ") + FOrder->KeyExpression());
        // The first record of each value in record order, as a locate finds
        // it. A record whose values read back otherwise than they were
        // asked for leaves the values it found nothing for unprepared.
        bool allMatched = true;
        QSet<QString> found;
        for (const auto& row : rows) {
            QVariantList values;
            for (int position : positions)
                values << row[position];
            const QString text = KeyText(values);
            if (!wanted.contains(text)) {
                allMatched = false;
                continue;
            }
            if (!found.contains(text)) {
                found.insert(text);
                state.prepared.insert(text, row);
            }
        }
        if (allMatched)
            for (const QString& text : wanted)
                if (!found.contains(text))
                    state.prepared.insert(text, std::nullopt);
        wanted.clear();
        conditions.clear();
    };
    for (const QVariantList& values : keyValues) {
        if (values.size() != keys.size())
            continue;
        const QString text = KeyText(values);
        if (state.prepared.contains(text) || wanted.contains(text))
            continue;
        conditions << (keys.size() == 1
                           ? SqlLiteral(values.front())
                           : QLatin1Char('(') + KeysEqual(keys, values) + QLatin1Char(')'));
        wanted.insert(text);
        if (conditions.size() >= ValuesPerStatement)
            read();
    }
    read();
}

bool SqlTable::LocateThroughDatabase(const QStringList& keys, const QVariantList& values,
                                     std::optional<qint64> after) {
    QString condition = SelectionCondition() + QStringLiteral(" AND ") + KeysEqual(keys, values);
    if (after)
        condition += QStringLiteral(" AND ") + FOrder->After(*after);
    SqlStatement statement(FDb, FRoundTrips);
    auto rows = statement.ReadAll(QStringLiteral("SELECT ") + FOrder->SelectList() +
                                  QStringLiteral(" FROM ") + FName + QStringLiteral(" WHERE ") +
                                  condition + QStringLiteral(" ORDER BY ") +
                                  FOrder->KeyExpression() + QStringLiteral(" LIMIT 1"));
    if (rows.isEmpty())
        return false;
    const qint64 key = FOrder->RowKey(rows.front());
    PositionOnKey(key, std::move(rows.front()));
    return true;
}

void SqlTable::SetValue(const TQXField& field, const QVariant& value) {
    CurrentRow(); // raises when there is no current record
    const int position = field.DataSet == this ? field.Position : PositionOf(field.Name);
    if (position < 0)
        throw EQXError(QStringLiteral("Field '%1' not found in table %2").arg(field.Name, FName));
    SqlStatement statement(FDb, FRoundTrips);
    const qint64 key = FOrder->Update(statement, FName, FColumns[position], value, FCurrentKey);
    if (FCurrentIsLocated) {
        if (FLocatedRow)
            (*FLocatedRow)[position] = value;
    } else {
        FBatch[FBatchPos][position] = value;
    }
    if (key != FCurrentKey) {
        // The record's new version lies elsewhere: found there from now on,
        // while the walk goes on from where it stood.
        FCurrentKey = key;
        if (!FCurrentIsLocated)
            FBatch[FBatchPos][FOrder->KeyPosition()] = FOrder->KeyValue(key);
    }
    FLocates.clear(); // indexed key values may have changed
    Forget();
}

void SqlTable::Delete(const QString& where) {
    SqlStatement statement(FDb, FRoundTrips);
    statement.Execute(QStringLiteral("DELETE FROM ") + FName +
                      (where.trimmed().isEmpty() ? QString() : QStringLiteral(" WHERE ") + where));
    FLocates.clear();
    Forget();
}
