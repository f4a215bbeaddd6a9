#pragma once

#include <QString>
#include <QVariant>

#include <array>
#include <span>
#include <vector>

// Positions (record order keys, see RecordOrder) of the records of one
// selection, by the values of some key columns, in record order.
// Identifier keys (up to four columns of integers, or of texts that are
// plain integers) are compared as numbers; any other key as text.
//
// The index is two flat arrays sorted by key and position, so that a
// selection of a million records costs a few tens of megabytes and no
// allocation per record; a look-up is a binary search.
class LocateIndex {
public:
    // Room for this many records, when known.
    void Reserve(qsizetype records);
    // Records may be added in any order; Finish sorts them before the first Find.
    void Add(const QVariantList& keyValues, qint64 seq);
    // The same for key values that are all integers, without a QVariant each.
    void AddIntegers(std::span<const qint64> keyValues, qint64 seq);
    void Finish();
    // Record positions with these key values, in record order; empty if none.
    std::span<const qint64> Find(const QVariantList& keyValues) const;
    qsizetype Size() const { return static_cast<qsizetype>(FNumbers.size() + FTexts.size()); }

private:
    using NumberKey = std::array<qint64, 4>;
    struct NumberEntry {
        NumberKey key;
        qint64 seq;
    };
    struct TextEntry {
        QString key;
        qint64 seq;
    };
    static bool ToNumberKey(const QVariantList& values, NumberKey& key);
    static QString ToTextKey(const QVariantList& values);

    std::vector<NumberEntry> FNumbers;
    std::vector<TextEntry> FTexts;
    // After Finish: the positions in the order of the sorted entries.
    std::vector<qint64> FNumberSeqs;
    std::vector<qint64> FTextSeqs;
};
