#include "sqlaccess/LocateIndex.h"

#include <algorithm>

namespace {
const QChar KeySeparator(0x1f);

// Integers, and texts that are an integer written plainly ("7", "-3"), so
// that a key compares equal whichever of the two forms either side uses.
bool ToInteger(const QVariant& value, qint64& number) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UInt:
    case QMetaType::UShort:
        number = value.toLongLong();
        return true;
    case QMetaType::QString: {
        bool ok = false;
        const QString text = value.toString();
        number = text.toLongLong(&ok);
        return ok && QString::number(number) == text;
    }
    default:
        return false;
    }
}
} // namespace

bool LocateIndex::ToNumberKey(const QVariantList& values, NumberKey& key) {
    if (values.size() > static_cast<qsizetype>(key.size()))
        return false;
    key.fill(0);
    for (qsizetype i = 0; i < values.size(); ++i)
        if (!ToInteger(values[i], key[i]))
            return false;
    return true;
}

QString LocateIndex::ToTextKey(const QVariantList& values) {
    QString key;
    for (const QVariant& value : values) {
        key += value.typeId() == QMetaType::Bool ? QString::number(value.toBool() ? 1 : 0)
                                                 : value.toString();
        key += KeySeparator;
    }
    return key;
}

void LocateIndex::Reserve(qsizetype records) {
    FNumbers.reserve(static_cast<size_t>(records));
}

void LocateIndex::Add(const QVariantList& keyValues, qint64 seq) {
    NumberKey number;
    if (ToNumberKey(keyValues, number))
        FNumbers.push_back({number, seq});
    else
        FTexts.push_back({ToTextKey(keyValues), seq});
}

void LocateIndex::AddIntegers(std::span<const qint64> keyValues, qint64 seq) {
    NumberKey number;
    if (keyValues.size() > number.size()) {
        Add(QVariantList(keyValues.begin(), keyValues.end()), seq);
        return;
    }
    number.fill(0);
    std::copy(keyValues.begin(), keyValues.end(), number.begin());
    FNumbers.push_back({number, seq});
}

namespace {
// Sorts entries by key, then position, and keeps the positions apart.
// Entries read through an index on the key columns come sorted already.
template <class Entry> void SortApart(std::vector<Entry>& entries, std::vector<qint64>& seqs) {
    const auto before = [](const Entry& a, const Entry& b) {
        return a.key < b.key || (a.key == b.key && a.seq < b.seq);
    };
    if (!std::is_sorted(entries.begin(), entries.end(), before))
        std::sort(entries.begin(), entries.end(), before);
    seqs.resize(entries.size());
    for (size_t i = 0; i < entries.size(); ++i)
        seqs[i] = entries[i].seq;
}

// Compares an entry with a key either way round, for equal_range.
struct ByKey {
    template <class Entry, class Key>
    bool operator()(const Entry& entry, const Key& key) const requires requires {
        entry.key;
    }
    { return entry.key < key; }
    template <class Key, class Entry>
    bool operator()(const Key& key, const Entry& entry) const requires requires {
        entry.key;
    }
    { return key < entry.key; }
};

template <class Entry, class Key>
std::span<const qint64> Range(const std::vector<Entry>& entries, const std::vector<qint64>& seqs,
                              const Key& key) {
    const auto [first, last] = std::equal_range(entries.begin(), entries.end(), key, ByKey{});
    return std::span<const qint64>(seqs).subspan(static_cast<size_t>(first - entries.begin()),
                                                 static_cast<size_t>(last - first));
}
} // namespace

void LocateIndex::Finish() {
    SortApart(FNumbers, FNumberSeqs);
    SortApart(FTexts, FTextSeqs);
}

std::span<const qint64> LocateIndex::Find(const QVariantList& keyValues) const {
    NumberKey number;
    if (ToNumberKey(keyValues, number))
        return Range(FNumbers, FNumberSeqs, number);
    return Range(FTexts, FTextSeqs, ToTextKey(keyValues));
}
