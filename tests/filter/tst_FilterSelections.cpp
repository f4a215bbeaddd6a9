// The filter's conditions as where texts and selections: the text of each
// operator with and without case sensitivity, joints, the routing of each
// attribute to its text, attribute id lists and the file-id-0 rule, and
// hostile values selecting exactly the records they name, on SQLite and
// PostgreSQL.
#include "filter/FilterSelections.h"
#include "repository/Errors.h"
#include "repository/WhereText.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/Failure.h"
#include "support/TestRepository.h"

#include <QtTest>

namespace {

// The repository's data access, with every selection recorded as
// "TABLE:where".
class RecordingAccess final : public TQXDataAccessInterface {
public:
    explicit RecordingAccess(const QString& location) : FAccess(location) {}
    QStringList Selected;

    void CloseTables(QObject* o, bool f) override { FAccess.CloseTables(o, f); }
    TQXTableRef GetTableRef(const QString& n) override { return FAccess.GetTableRef(n); }
    TQXFieldRef GetFieldRef(TQXTableRef t, const QString& c) override {
        return FAccess.GetFieldRef(t, c);
    }
    QString GetFieldName(TQXTableRef t, TQXFieldRef f) override {
        return FAccess.GetFieldName(t, f);
    }
    bool SelectRecords(TQXTableRef t, const QString& where) override {
        Selected << t->TableName() + ':' + where;
        return FAccess.SelectRecords(t, where);
    }
    bool NextRecord(TQXTableRef t) override { return FAccess.NextRecord(t); }
    void DeleteRecords(TQXTableRef t, const QString& w, int o) override {
        FAccess.DeleteRecords(t, w, o);
    }
    QVariant GetFieldValue(TQXTableRef t, TQXFieldRef f) override {
        return FAccess.GetFieldValue(t, f);
    }
    void SetFieldValue(TQXTableRef t, TQXFieldRef f, const QVariant& v) override {
        FAccess.SetFieldValue(t, f, v);
    }
    bool LocateRecord(TQXTableRef t, const QString& k, const QVariantList& v, int o) override {
        return FAccess.LocateRecord(t, k, v, o);
    }
    bool LocateNextRecord(TQXTableRef t, const QString& k, const QVariantList& v, int o) override {
        return FAccess.LocateNextRecord(t, k, v, o);
    }
    void EndRefresh(bool a, bool b) override { FAccess.EndRefresh(a, b); }
    std::unique_ptr<TQXDataSet> OpenQuery(QObject* o, const QStringList& s, int p) override {
        return FAccess.OpenQuery(o, s, p);
    }

private:
    SqlDataAccess FAccess;
};

const QStringList HostileNames{"O'BRIEN", "o'brien",     "'; DROP TABLE QXFILE; --",
                               "50%",     "50X",         "A_B",
                               "AXB",     "back\\slash", "backslash",
                               "Müller",  "MÜLLER",      QString(199, 'Q') + "'",
                               "PLAIN"};

bool Matches(const QString& name, TOperator op, const QString& value) {
    switch (op) {
    case opEquals:
        return name == value;
    case opContains:
        return name.contains(value);
    case opBeginsWith:
        return name.startsWith(value);
    default:
        return name.endsWith(value);
    }
}

} // namespace

class TestFilterSelections : public QObject {
    Q_OBJECT

    std::unique_ptr<TestRepository> FRepo;
    std::unique_ptr<RecordingAccess> FAccess;
    TQXTableHandleSet FTables;
    std::unique_ptr<TQXRecordReader> FRecords;

    void Add(TQXWhereClause& clause, bool andPrevious, const char* table, const char* column,
             int typeKey, TOperator op, const QString& value) {
        const TQXTableRef ref = FAccess->GetTableRef(table);
        clause.Add(andPrevious, ref, FAccess->GetFieldRef(ref, column), typeKey);
        clause.SetOperator(op);
        clause.SetValueString(value);
    }

    QStringList ObjectNames() {
        QStringList names;
        qint32 id = 0;
        if (FRecords->TryInt(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectID, id))
            do
                names << FRecords->Text(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectName);
            while (FRecords->Next(qx::Table::QXOBJECT));
        names.sort();
        return names;
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }

    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL is not available");
        FRepo = std::make_unique<TestRepository>(TestRepository::CurrentBackend());
        FRepo->Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName",
                      {{3, 1, "ABC"}, {5, 1, "ZZZ"}, {7, 1, "xaby"}, {8, 2, "AB-HOST"}});
        FRepo->Insert("QXFILE", "QXFileID, QXFileName, QXSystemID", {{1, "PAY.CBL", 3}});
        QList<QVariantList> objects;
        for (int i = 0; i < HostileNames.size(); ++i)
            objects << QVariantList{1, i + 1, HostileNames.at(i)};
        FRepo->Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName", objects);
        FAccess = std::make_unique<RecordingAccess>(FRepo->Location());
        FTables.Clear();
        AssignDBPointers(*FAccess, FTables);
        FRecords = std::make_unique<TQXRecordReader>(*FAccess, FTables);
    }
    void cleanup() {
        FRecords.reset();
        FAccess.reset();
        FRepo.reset();
    }

    // Each operator's text, upper-cased unless case sensitive; values with
    // LIKE's wildcards or a backslash escape them, quotes are doubled.
    void conditionTexts() {
        const QString c = "QXObjectName";
        QCOMPARE(FilterConditionText(c, opEquals, "Pay", true), "QXObjectName = 'Pay'");
        QCOMPARE(FilterConditionText(c, opEquals, "Pay", false), "Upper(QXObjectName) = 'PAY'");
        QCOMPARE(FilterConditionText(c, opContains, "ab", false),
                 "Upper(QXObjectName) LIKE '%AB%'");
        QCOMPARE(FilterConditionText(c, opContains, "ab", true), "QXObjectName LIKE '%ab%'");
        QCOMPARE(FilterConditionText(c, opBeginsWith, "ü", false), "Upper(QXObjectName) LIKE 'Ü%'");
        QCOMPARE(FilterConditionText(c, opEndsWith, "O'B", true), "QXObjectName LIKE '%O''B'");
        QCOMPARE(FilterConditionText(c, opBeginsWith, "50%_a\\", true),
                 "QXObjectName LIKE '50\\%\\_a\\\\%' ESCAPE '\\'");
        QCOMPARE(FilterConditionText(c, opEquals, "50%_\\", true), "QXObjectName = '50%_\\'");
        QCOMPARE(FailureOf([&] { FilterConditionText(c, opNone, "x", true); }).Message,
                 QString("The filter condition on QXObjectName has no operator (0)"));
    }

    // Conditions go to the text of their table, joined there by their own
    // joint; attributes become id lists on the files, or file id 0.
    void routingAndAttributeLists() {
        TQXWhereClause clause;
        Add(clause, false, "QXATTRIBUTE", "QXAttributeName", 1, opContains, "ab");
        Add(clause, true, "QXATTRIBUTE", "QXAttributeName", 2, opEquals, "NONE");
        Add(clause, false, "QXOBJECT", "QXObjectName", 0, opEquals, "A");
        Add(clause, false, "QXOBJECT", "QXObjectType", 0, opEquals, "B");
        Add(clause, true, "QXPACKAGE", "QXPackageName", 0, opBeginsWith, "P");
        Add(clause, false, "QXFILE", "QXFileName", 0, opEndsWith, ".CBL");
        Add(clause, true, "QXENTRY", "QXEntryName", 0, opEquals, "E");
        Add(clause, true, "QXROW", "QXRow", 0, opContains, "CALL");
        Add(clause, true, "QXWORD", "QXObjectIdentifier", 0, opEquals, "PIC X");
        const TQXRootFilter filter = SelectFiltered(*FRecords, TQXLevel::Data, clause, false);
        QCOMPARE(FAccess->Selected.filter("QXFILE:"),
                 QStringList{"QXFILE:QXSystemID IN (3,7) AND (QXFileID = 0) OR "
                             "Upper(QXFileName) LIKE '%.CBL'"});
        QVERIFY(filter.PackageCondition);
        QCOMPARE(filter.ObjectCondition, "Upper(QXObjectName) = 'A' OR Upper(QXObjectType) = 'B'");
        QCOMPARE(filter.EntryCondition, "Upper(QXEntryName) = 'E'");
        QCOMPARE(filter.RowCondition, "Upper(QXRow) LIKE '%CALL%'");
        QCOMPARE(filter.WordCondition, "Upper(QXObjectIdentifier) = 'PIC X'");
        QCOMPARE(FAccess->Selected.mid(2),
                 QStringList({FAccess->Selected.at(2), "QXPACKAGE:Upper(QXPackageName) LIKE 'P%'",
                              "QXOBJECT:" + filter.ObjectCondition,
                              "QXENTRY:" + filter.EntryCondition}));

        // At System, computers are left out; only the levels' tables are selected.
        FAccess->Selected.clear();
        SelectFiltered(*FRecords, TQXLevel::System, clause, true);
        QCOMPARE(FAccess->Selected,
                 QStringList({"QXATTRIBUTE:QXAttributeName LIKE '%ab%' AND QXAttributeType = 1",
                              "QXFILE:QXSystemID IN (7) OR QXFileName LIKE '%.CBL'"}));
        FAccess->Selected.clear();
        SelectFiltered(*FRecords, TQXLevel::Object, TQXWhereClause(), false);
        QCOMPARE(FAccess->Selected, QStringList({"QXFILE:", "QXPACKAGE:", "QXOBJECT:"}));
    }

    // Quotes, wildcards, SQL, backslashes, non-ASCII letters and a long
    // value select exactly what they say and never change the statement.
    void hostileValuesSelectExactly() {
        const QStringList values{
            "O'BRIEN", "'; DROP TABLE QXFILE; --", "50%", "A_B", "\\", "%", "_",
            "ü",       QString(199, 'Q') + "'",    "'"};
        for (const QString& value : values)
            for (TOperator op : {opEquals, opContains, opBeginsWith, opEndsWith})
                for (bool caseSensitive : {true, false}) {
                    TQXWhereClause clause;
                    Add(clause, false, "QXOBJECT", "QXObjectName", 0, op, value);
                    SelectFiltered(*FRecords, TQXLevel::Object, clause, caseSensitive);
                    QStringList expected;
                    for (const QString& name : HostileNames)
                        if (caseSensitive
                                ? Matches(name, op, value)
                                : Matches(where::UpperCase(name), op, where::UpperCase(value)))
                            expected << name;
                    expected.sort();
                    QVERIFY2(ObjectNames() == expected,
                             qPrintable(value + ' ' + QString::number(op) +
                                        (caseSensitive ? " case sensitive" : "")));
                }
        QCOMPARE(FRepo->Count("QXFILE"), 1);
    }
};

QTEST_MAIN(TestFilterSelections)
#include "tst_FilterSelections.moc"
