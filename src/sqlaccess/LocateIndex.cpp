#include "sqlaccess/LocateIndex.h"

namespace {
const QChar KeySeparator(0x1f);

QString KeyText(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    return value.toString();
}
} // namespace

QString LocateIndex::KeyOf(const QVariantList& values) {
    QString key;
    for (const QVariant& value : values) {
        key += KeyText(value);
        key += KeySeparator;
    }
    return key;
}

void LocateIndex::Add(const QVariantList& keyValues, qint64 seq) {
    FPositions[KeyOf(keyValues)].push_back(seq);
    ++FSize;
}

const QVector<qint64>& LocateIndex::Find(const QVariantList& keyValues) const {
    static const QVector<qint64> none;
    const auto it = FPositions.constFind(KeyOf(keyValues));
    return it == FPositions.cend() ? none : it.value();
}
