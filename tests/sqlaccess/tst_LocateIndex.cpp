// The locate index on its own: records with equal keys come in record order
// whatever order they were added in, for each form a key is stored in.
#include "sqlaccess/LocateIndex.h"

#include <QtTest>

#include <vector>

class TestLocateIndex : public QObject {
    Q_OBJECT

private slots:
    void equalKeysComeInRecordOrder() {
        // Keys in order, their records not: the index must still sort them.
        const QList<QVariantList> keys{{7},                       // one integer
                                       {7, qint64(1) << 40},      // two, one wide
                                       {1, 2, 3},                 // three
                                       {QStringLiteral("A"), 2}}; // a text
        for (const QVariantList& key : keys) {
            LocateIndex index;
            index.Add(key, 30);
            index.Add(key, 10);
            index.Add(key, 20);
            index.Finish();
            const auto found = index.Find(key);
            QCOMPARE(std::vector<qint64>(found.begin(), found.end()),
                     (std::vector<qint64>{10, 20, 30}));
        }
    }
};

QTEST_MAIN(TestLocateIndex)
#include "tst_LocateIndex.moc"
