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
    if (values.size() > static_cast<qsizetype>(key.values.size()))
        return false;
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (!ToInteger(values[i], key.values[i]))
            return false;
    }
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

void LocateIndex::Add(const QVariantList& keyValues, qint64 seq) {
    NumberKey number;
    if (ToNumberKey(keyValues, number))
        FByNumber[number].push_back(seq);
    else
        FByText[ToTextKey(keyValues)].push_back(seq);
    ++FSize;
}

void LocateIndex::Finish() {
    for (QVector<qint64>& positions : FByNumber)
        if (!std::is_sorted(positions.cbegin(), positions.cend()))
            std::sort(positions.begin(), positions.end());
    for (QVector<qint64>& positions : FByText)
        if (!std::is_sorted(positions.cbegin(), positions.cend()))
            std::sort(positions.begin(), positions.end());
}

const QVector<qint64>& LocateIndex::Find(const QVariantList& keyValues) const {
    static const QVector<qint64> none;
    NumberKey number;
    if (ToNumberKey(keyValues, number)) {
        const auto it = FByNumber.constFind(number);
        return it == FByNumber.cend() ? none : it.value();
    }
    const auto it = FByText.constFind(ToTextKey(keyValues));
    return it == FByText.cend() ? none : it.value();
}
