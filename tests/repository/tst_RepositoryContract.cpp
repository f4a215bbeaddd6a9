// The pieces of the repository layer that no view case reaches: a where-text
// condition wrapped for a filter, and the constructor order of data items.
// The other where-text pieces run in every view case's statements.
#include "repository/TreeItems.h"
#include "repository/WhereText.h"

#include <QtTest>

class TestRepositoryContract : public QObject {
    Q_OBJECT

private slots:
    // A filter condition keeps its meaning next to the keys, whatever it holds.
    void filterConditionsAreWrapped() {
        QCOMPARE(where::AndSub(QStringLiteral("QXIcon = 20 OR QXIcon = 43")),
                 QStringLiteral(" AND (QXIcon = 20 OR QXIcon = 43)"));
        QCOMPARE(where::AndSub(QString()), QString());
    }

    // A data item takes entry before row, as TQXItem does; nothing in the
    // view builds one yet.
    void dataItemsTakeEntryBeforeRow() {
        const TQXDataItem data(QStringLiteral("WS-AMOUNT"), QStringLiteral("PAYCALC"), 1, 2, 3, 4,
                               5, 6, 7, 8, 9);
        QCOMPARE((QList<int>{data.EntryID, data.RowID, data.WordID, data.LanguageID}),
                 (QList<int>{6, 7, 8, 9}));
    }
};

QTEST_GUILESS_MAIN(TestRepositoryContract)
#include "tst_RepositoryContract.moc"
