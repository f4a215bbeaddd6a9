#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

// Positions (QXSeq) of the records of one selection, by the values of some
// key columns, in record order. Keys are compared as text so that a number
// handed in as 7 finds the record whose column reads 7.
class LocateIndex {
public:
    void Add(const QVariantList& keyValues, qint64 seq);
    // Record positions with these key values, in record order; empty if none.
    const QVector<qint64>& Find(const QVariantList& keyValues) const;
    qsizetype Size() const { return FSize; }

    static QString KeyOf(const QVariantList& values);

private:
    QHash<QString, QVector<qint64>> FPositions;
    qsizetype FSize = 0;
};
