#include "sqlaccess/LocateIndex.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {
const QChar KeySeparator(0x1f);
constexpr size_t WideColumns = 4;

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

// The key's values as integers, when there are at most four and all are.
bool ToIntegers(const QVariantList& values, std::array<qint64, WideColumns>& numbers) {
    if (values.size() > static_cast<qsizetype>(WideColumns))
        return false;
    for (qsizetype i = 0; i < values.size(); ++i)
        if (!ToInteger(values[i], numbers[static_cast<size_t>(i)]))
            return false;
    return true;
}

QString ToTextKey(const QVariantList& values) {
    QString key;
    for (const QVariant& value : values) {
        key += value.typeId() == QMetaType::Bool ? QString::number(value.toBool() ? 1 : 0)
                                                 : value.toString();
        key += KeySeparator;
    }
    return key;
}

bool Fits32(qint64 value) {
    return value >= std::numeric_limits<qint32>::min() &&
           value <= std::numeric_limits<qint32>::max();
}

// One integer, or two of 32 bits, as one number that orders as the values
// do (sign bits flipped), so that keys read in key order need no sort.
bool Pack(std::span<const qint64> values, quint64& packed) {
    if (values.size() == 1) {
        packed = static_cast<quint64>(values[0]) ^ (quint64(1) << 63);
        return true;
    }
    if (values.size() != 2 || !Fits32(values[0]) || !Fits32(values[1]))
        return false;
    const auto half = [](qint64 value) {
        return static_cast<quint64>(static_cast<quint32>(value) ^ 0x8000'0000u);
    };
    packed = half(values[0]) << 32 | half(values[1]);
    return true;
}

std::array<qint64, WideColumns> Widen(std::span<const qint64> values) {
    std::array<qint64, WideColumns> wide{};
    std::copy(values.begin(), values.end(), wide.begin());
    return wide;
}
} // namespace

template <class Key> void LocateIndex::Keyed<Key>::Reserve(qsizetype records) {
    keys.reserve(static_cast<size_t>(records));
    seqs.reserve(static_cast<size_t>(records));
}

template <class Key> void LocateIndex::Keyed<Key>::Add(Key key, qint64 seq) {
    keys.push_back(std::move(key));
    seqs.push_back(seq);
}

// Sorts by key, then position. Keys read through an index on the key
// columns come sorted already and are only checked.
template <class Key> void LocateIndex::Keyed<Key>::Finish() {
    bool sorted = true;
    for (size_t i = 1; i < keys.size() && sorted; ++i)
        sorted = !(keys[i] < keys[i - 1]) && (keys[i - 1] < keys[i] || seqs[i - 1] <= seqs[i]);
    if (sorted)
        return;
    std::vector<std::pair<Key, qint64>> entries;
    entries.reserve(keys.size());
    for (size_t i = 0; i < keys.size(); ++i)
        entries.emplace_back(std::move(keys[i]), seqs[i]);
    std::sort(entries.begin(), entries.end());
    for (size_t i = 0; i < keys.size(); ++i) {
        keys[i] = std::move(entries[i].first);
        seqs[i] = entries[i].second;
    }
}

template <class Key> std::span<const qint64> LocateIndex::Keyed<Key>::Find(const Key& key) const {
    const auto [first, last] = std::equal_range(keys.begin(), keys.end(), key);
    return std::span<const qint64>(seqs).subspan(static_cast<size_t>(first - keys.begin()),
                                                 static_cast<size_t>(last - first));
}

void LocateIndex::Reserve(qsizetype records, qsizetype columns) {
    if (columns <= 2)
        FPacked.Reserve(records);
    else if (columns <= static_cast<qsizetype>(WideColumns))
        FWide.Reserve(records);
    else
        FTexts.Reserve(records);
}

void LocateIndex::Add(const QVariantList& keyValues, qint64 seq) {
    std::array<qint64, WideColumns> numbers;
    if (ToIntegers(keyValues, numbers))
        AddNumbers(std::span<const qint64>(numbers).first(static_cast<size_t>(keyValues.size())),
                   seq);
    else
        FTexts.Add(ToTextKey(keyValues), seq);
}

void LocateIndex::AddIntegers(std::span<const qint64> keyValues, qint64 seq) {
    if (keyValues.size() > WideColumns)
        FTexts.Add(ToTextKey(QVariantList(keyValues.begin(), keyValues.end())), seq);
    else
        AddNumbers(keyValues, seq);
}

void LocateIndex::AddNumbers(std::span<const qint64> keyValues, qint64 seq) {
    quint64 packed;
    if (Pack(keyValues, packed))
        FPacked.Add(packed, seq);
    else
        FWide.Add(Widen(keyValues), seq);
}

void LocateIndex::Finish() {
    FPacked.Finish();
    FWide.Finish();
    FTexts.Finish();
}

std::span<const qint64> LocateIndex::Find(const QVariantList& keyValues) const {
    std::array<qint64, WideColumns> numbers;
    if (!ToIntegers(keyValues, numbers))
        return FTexts.Find(ToTextKey(keyValues));
    const auto values =
        std::span<const qint64>(numbers).first(static_cast<size_t>(keyValues.size()));
    quint64 packed;
    if (Pack(values, packed))
        return FPacked.Find(packed);
    return FWide.Find(Widen(values));
}
