// The pieces every part of the view relies on: the binding order of the
// table handle set, where-text pieces, and the constructor order of items.
#include "repository/Errors.h"
#include "repository/TableHandleSet.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "support/NullDataAccess.h"

#include <QtTest>

#include <deque>

namespace {

// Records the binding calls and can fail at a chosen call.
class RecordingDataAccess : public NullDataAccess {
public:
    QStringList calls;
    int failAtCall = -1;
    std::deque<NullDataSet> tables;
    std::deque<TQXField> fields;

    void Count() {
        if (static_cast<int>(calls.size()) == failAtCall + 1)
            throw EQXError(QStringLiteral("no such column"));
    }
    TQXTableRef GetTableRef(const QString& name) override {
        calls << name;
        Count();
        return &tables.emplace_back(name);
    }
    TQXFieldRef GetFieldRef(TQXTableRef table, const QString& column) override {
        calls << table->TableName() + QLatin1Char('.') + column;
        Count();
        fields.push_back(TQXField{table, column, 0});
        return &fields.back();
    }
};

} // namespace

class TestRepositoryContract : public QObject {
    Q_OBJECT

private slots:
    void bindingAsksForEveryReferenceInOrder() {
        RecordingDataAccess access;
        TQXTableHandleSet handles;
        AssignDBPointers(access, handles);
        QCOMPARE(access.calls.size(), 74);
        QCOMPARE(handles.BoundCount(), 74);
        // Each table is followed by its own columns before the next table.
        QCOMPARE(
            access.calls.mid(0, 7),
            (QStringList{"QXFILE", "QXFILE.QXFileID", "QXFILE.QXComputerID", "QXFILE.QXSystemID",
                         "QXFILE.QXApplicationID", "QXFILE.QXLanguageID", "QXFILE.QXFileName"}));
        QCOMPARE(access.calls.at(7), QStringLiteral("QXOBJECT"));
        QCOMPARE(access.calls.filter(QRegularExpression("^QX[A-Z]+$")),
                 (QStringList{"QXFILE", "QXOBJECT", "QXENTRY", "QXROW", "QXWORD", "QXDEPENDENCIES",
                              "QXPACKAGE", "QXATTRIBUTE", "QXDATAFLOW"}));
        QCOMPARE(access.calls.last(), QStringLiteral("QXDATAFLOW.QXFromWordID"));
        // Fields are kept where the parts read them.
        QCOMPARE(handles.Field(qx::Table::QXPACKAGE, qx::QXPACKAGE::QXObjectFileID)->Name,
                 QStringLiteral("QXObjectFileID"));
        QCOMPARE(handles.Field(qx::Table::QXWORD, qx::QXWORD::QXObjectIdentifier)->Name,
                 QStringLiteral("QXObjectIdentifier"));
        QCOMPARE(handles.Field(qx::Table::QXWORD, qx::QXWORD::QXObjectIdentifier)->DataSet,
                 handles.Table(qx::Table::QXWORD));
    }

    void aFailureEndsTheBindingWhereItStands() {
        RecordingDataAccess access;
        access.failAtCall = 10; // the third column of QXOBJECT
        TQXTableHandleSet handles;
        QVERIFY_THROWS_EXCEPTION(EQXError, AssignDBPointers(access, handles));
        QCOMPARE(handles.BoundCount(), 10);
        QVERIFY(handles.Field(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectID) != nullptr);
        QVERIFY(handles.Field(qx::Table::QXOBJECT, qx::QXOBJECT::QXLanguageID) == nullptr);
        QVERIFY(handles.Table(qx::Table::QXENTRY) == nullptr);
    }

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

    void itemsTakeEntryBeforeRow() {
        const TQXItem row(5, 0, 0, 0, 0, 6, 7, 8, 0);
        QCOMPARE((QList<int>{row.EntryID, row.RowID}), (QList<int>{7, 8}));
        QCOMPARE(row.ClassName(), QStringLiteral("TQXItem"));
        const TQXDataItem data(QStringLiteral("WS-AMOUNT"), QStringLiteral("PAYCALC"), 1, 2, 3, 4,
                               5, 6, 7, 8, 9);
        QCOMPARE((QList<int>{data.EntryID, data.RowID, data.WordID, data.LanguageID}),
                 (QList<int>{6, 7, 8, 9}));
        QCOMPARE(data.ClassName(), QStringLiteral("TQXDataItem"));
        // Item ids tell items apart, including two that differ only in row and entry.
        const TQXItem swapped(5, 0, 0, 0, 0, 6, 8, 7, 0);
        QVERIFY(row.GetItemID() != swapped.GetItemID());
        QCOMPARE(row.GetItemID(), TQXItem(5, 0, 0, 0, 0, 6, 7, 8, 0).GetItemID());
        QVERIFY(data.GetItemID() != row.GetItemID());
    }
};

QTEST_GUILESS_MAIN(TestRepositoryContract)
#include "tst_RepositoryContract.moc"
