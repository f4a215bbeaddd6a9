#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

#include <array>

// Positions (record order keys, see RecordOrder) of the records of one
// selection, by the values of some key columns, in record order. Identifier keys (up to four
// columns of integers, or of texts that are plain integers) are hashed as numbers; any other key is
// compared as text.
class LocateIndex {
public:
    // Records may be added in any order; Finish puts each key's records in
    // record order before the first Find.
    void Add(const QVariantList& keyValues, qint64 seq);
    void Finish();
    // Record positions with these key values, in record order; empty if none.
    const QVector<qint64>& Find(const QVariantList& keyValues) const;
    qsizetype Size() const { return FSize; }

private:
    struct NumberKey {
        std::array<qint64, 4> values{};
        bool operator==(const NumberKey&) const = default;
    };
    friend size_t qHash(const NumberKey& key, size_t seed) {
        return qHashRange(key.values.begin(), key.values.end(), seed);
    }
    static bool ToNumberKey(const QVariantList& values, NumberKey& key);
    static QString ToTextKey(const QVariantList& values);

    QHash<NumberKey, QVector<qint64>> FByNumber;
    QHash<QString, QVector<qint64>> FByText;
    qsizetype FSize = 0;
};
