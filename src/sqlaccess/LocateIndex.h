#pragma once

#include <QString>
#include <QVariant>

#include <array>
#include <span>
#include <vector>

// Positions (record order keys, see RecordOrder) of the records of one
// selection, by the values of some key columns, in record order.
// Identifier keys (up to four columns of integers, or of texts that are
// plain integers) are compared as numbers; any other key as text. All keys
// of one index have the same number of columns.
//
// Keys are stored at their own width: one integer, or two that fit in 32
// bits each, as one 64-bit number; other integer keys as four numbers; the
// rest as text. Each form keeps its keys and its positions in two flat
// arrays sorted by key and position, so that a selection of a million
// two-column records costs 16 MB and no allocation per record; a look-up
// is a binary search.
class LocateIndex {
public:
    // Room for this many records with keys of this many columns.
    void Reserve(qsizetype records, qsizetype columns);
    // Records may be added in any order; Finish sorts them before the first Find.
    void Add(const QVariantList& keyValues, qint64 seq);
    // The same for key values that are all integers, without a QVariant each.
    void AddIntegers(std::span<const qint64> keyValues, qint64 seq);
    void Finish();
    // Record positions with these key values, in record order; empty if none.
    std::span<const qint64> Find(const QVariantList& keyValues) const;

private:
    // Keys of one form beside the positions of their records.
    template <class Key> struct Keyed {
        std::vector<Key> keys;
        std::vector<qint64> seqs;

        void Reserve(qsizetype records);
        void Add(Key key, qint64 seq);
        void Finish();
        std::span<const qint64> Find(const Key& key) const;
    };
    using WideKey = std::array<qint64, 4>;

    void AddNumbers(std::span<const qint64> keyValues, qint64 seq);

    Keyed<quint64> FPacked;
    Keyed<WideKey> FWide;
    Keyed<QString> FTexts;
};
