// The pieces every part of the view relies on: where-text pieces and the
// constructor order of data items.
#include "repository/TreeItems.h"
#include "repository/WhereText.h"

#include <QtTest>

class TestRepositoryContract : public QObject {
    Q_OBJECT

private slots:
    void whereTextPiecesKeepTheirBlanks() {
        QCOMPARE(where::Keys({{"QXFileID", 12}, {"QXObjectID", -3}, {"QXEntryID", 0}}),
                 QStringLiteral("QXFileID = 12 AND QXObjectID = -3 AND QXEntryID = 0"));
        QCOMPARE(QStringLiteral("QXFileID = 4") + where::AndKey("QXObjectID", 7),
                 QStringLiteral("QXFileID = 4 AND QXObjectID = 7"));
        QCOMPARE(where::FileObjectKeys(4, -7), QStringLiteral("QXFileID = 4 AND QXObjectID = -7"));
        QCOMPARE(QStringLiteral("QXEntryID = 0") + where::AndVariableDeclarations(),
                 QStringLiteral("QXEntryID = 0 AND QXWordType = 1011"));
        QCOMPARE(where::AndText("QXSubObjectParentName", QStringLiteral("ACCT")),
                 QStringLiteral(" AND QXSubObjectParentName = 'ACCT'"));
        QCOMPARE(where::AndSub(QStringLiteral("QXIcon = 20 OR QXIcon = 43")),
                 QStringLiteral(" AND (QXIcon = 20 OR QXIcon = 43)"));
        QCOMPARE(where::AndSub(QString()), QString());
        QCOMPARE(where::In("QXSystemID", {3, 7}, QStringLiteral(",")),
                 QStringLiteral("QXSystemID IN (3,7)"));
        QCOMPARE(where::Quoted(QStringLiteral("it's")), QStringLiteral("'it''s'"));
    }

    // A data item takes entry before row, as TQXItem does; nothing in the
    // view builds one, so its order is checked here.
    void dataItemsTakeEntryBeforeRow() {
        const TQXDataItem data(QStringLiteral("WS-AMOUNT"), QStringLiteral("PAYCALC"), 1, 2, 3, 4,
                               5, 6, 7, 8, 9);
        QCOMPARE((QList<int>{data.EntryID, data.RowID, data.WordID, data.LanguageID}),
                 (QList<int>{6, 7, 8, 9}));
    }
};

QTEST_GUILESS_MAIN(TestRepositoryContract)
#include "tst_RepositoryContract.moc"
