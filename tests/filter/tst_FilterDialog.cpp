// The filter dialog driven through its widgets: the rules for adding and
// removing rows with their messages and focus, the value history, the rows
// a level leaves editable, the attribute lists by level, and what Apply,
// Clear and Cancel leave in the where clause and the result.
#include "filter/FilterDialog.h"
#include "platform/ScriptedUIServices.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QtTest>

namespace {

QStringList Items(const QComboBox& box) {
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items << box.itemText(i);
    return items;
}

// "AND|QXENTRY.QXEntryName|0|11|o'x" for each condition of the where clause.
QStringList Conditions(const TQXWhereClause& clause) {
    QStringList conditions;
    for (int i = 0; i < clause.Count(); ++i)
        conditions << QStringList{clause.GetAnd_Previous(i) ? "AND" : "OR",
                                  clause.GetTable(i)->TableName() + '.' + clause.GetField(i)->Name,
                                  QString::number(clause.GetTypeKey(i)),
                                  QString::number(clause.GetOperator(i)), clause.GetValueString(i)}
                          .join('|');
    return conditions;
}

} // namespace

class TestFilterDialog : public QObject {
    Q_OBJECT

    TestRepository FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;

private slots:
    void initTestCase() { FAccess = std::make_unique<SqlDataAccess>(FRepo.Location()); }

    // AND on an incomplete last row names the first box missing, focuses it
    // and checks End again; on a complete row it adds a row that offers the
    // value typed before. End on a row removes the rows after it.
    void rowRulesThroughTheWidgets() {
        TQXScriptedUIServices ui;
        TQXFilter filter(nullptr, *FAccess);
        QCOMPARE(filter.windowTitle(), QString("RootItem Filter"));
        filter.InitFilter("Object");
        QCOMPARE(filter.RowCount(), 1);
        filter.show();
        QVERIFY(QTest::qWaitForWindowActive(&filter));
        TQXQueryRow* row = filter.GetQueryRow(0);
        const struct {
            std::function<void()> Fill;
            QString Message;
            QWidget* Box;
        } steps[] = {
            {[] {}, "Attribute is required", row->cbAttribute},
            {[&] { row->cbAttribute->setCurrentIndex(4); }, "Operator is required",
             row->cbOperator},
            {[&] { row->cbOperator->setCurrentIndex(2); },
             "At least one character is required for Value", row->cbValue},
        };
        for (const auto& step : steps) {
            step.Fill();
            QTest::mouseClick(row->rbAnd, Qt::LeftButton);
            QCOMPARE(ui.Messages().constLast(), step.Message);
            QVERIFY(row->rbEnd->isChecked());
            QCOMPARE(QApplication::focusWidget(), step.Box);
            QCOMPARE(filter.RowCount(), 1);
        }
        QTest::keyClicks(row->cbValue, "PAY");
        QTest::mouseClick(row->rbAnd, Qt::LeftButton);
        QCOMPARE(ui.Messages().size(), 3);
        QCOMPARE(filter.RowCount(), 2);
        QVERIFY(row->rbAnd->isChecked());
        QCOMPARE(Items(*filter.GetQueryRow(1)->cbValue), QStringList{"PAY"});
        QCOMPARE(filter.GetQueryRow(1)->cbValue->currentText(), QString());
        QCOMPARE(filter.GetQueryRow(1)->objectName(), QString("QXQueryRow1"));

        filter.AddFilterRow(5, 0, "Program", 2);
        filter.AddFilterRow(4, 1, "X", 1);
        filter.AddFilterRow(4, 1, "Y", 1);
        QCOMPARE(filter.RowCount(), 5);
        QVERIFY(filter.GetQueryRow(1)->rbOr->isChecked());
        QCOMPARE(Items(*filter.GetQueryRow(4)->cbValue), QStringList({"PAY", "Program", "X"}));
        QCOMPARE(filter.GetQueryRow(0)->cbValue->currentText(), QString("PAY")); // kept
        QTest::mouseClick(filter.GetQueryRow(1)->rbEnd, Qt::LeftButton);
        QCOMPARE(filter.RowCount(), 2);
    }

    // Rows below the level stay but cannot be edited; the attribute list
    // offers the level's attributes and keeps a selection it still holds.
    // Apply copies every row with its joint; Clear and Cancel.
    void levelsApplyClearAndCancel() {
        TQXScriptedUIServices ui;
        TQXFilter filter(nullptr, *FAccess);
        filter.InitFilter("System");
        filter.cbApplyClick(); // the one empty row
        QCOMPARE(filter.Result(), QString("Cleared"));
        QCOMPARE(filter.WhereClause().Count(), 0);

        filter.GetQueryRow(0)->cbAttribute->setCurrentIndex(0);
        filter.GetQueryRow(0)->cbOperator->setCurrentIndex(0);
        filter.GetQueryRow(0)->cbValue->setEditText("ACCOUNTS");
        filter.AddFilterRow(6, 1, "o'x", 1);
        filter.AddFilterRow(4, 3, "PAY ", 2);
        filter.InitFilter("Object");
        QCOMPARE(filter.Result(), QString());
        QVERIFY(filter.GetQueryRow(0)->cbValue->isEnabled());
        QVERIFY(!filter.GetQueryRow(1)->cbAttribute->isEnabled());
        QVERIFY(!filter.GetQueryRow(1)->cbValue->isEnabled());
        QVERIFY(filter.GetQueryRow(2)->cbOperator->isEnabled());
        filter.InitFilter("Data");
        QVERIFY(filter.GetQueryRow(1)->cbAttribute->isEnabled());

        TQXQueryRow* objects = filter.GetQueryRow(2);
        filter.InitFilter("Entry");
        filter.AttributeClicked(objects);
        QCOMPARE(
            Items(*objects->cbAttribute),
            QStringList({"Systems Name", "Computers Name", "Applications Name", "Packages Name",
                         "Objects Name", "Objects Type", "Entrys Name", "Files Name"}));
        QCOMPARE(objects->cbAttribute->currentText(), QString("Objects Name"));

        filter.cbCaseSensitive->click();
        QVERIFY(filter.CaseSensitive());
        filter.cbApplyClick();
        QCOMPARE(filter.Result(), QString("Changed"));
        QCOMPARE(Conditions(filter.WhereClause()),
                 QStringList({"OR|QXATTRIBUTE.QXAttributeName|1|10|ACCOUNTS",
                              "AND|QXENTRY.QXEntryName|0|11|o'x",
                              "OR|QXOBJECT.QXObjectName|0|13|PAY "}));

        filter.InitFilter("Computer");
        filter.AttributeClicked(objects);
        QCOMPARE(Items(*objects->cbAttribute), QStringList({"Systems Name", "Computers Name"}));
        QCOMPARE(objects->cbAttribute->currentIndex(), -1);
        filter.cbApplyClick(); // the last row lost its attribute
        QCOMPARE(ui.Messages(), QStringList{"Attribute is required"});
        QCOMPARE(filter.Result(), QString());
        QCOMPARE(filter.WhereClause().Count(), 0);

        filter.cbClearClick();
        QCOMPARE(filter.RowCount(), 1);
        QCOMPARE(filter.GetQueryRow(0)->cbAttribute->currentIndex(), -1);
        QCOMPARE(filter.GetQueryRow(0)->cbValue->currentText(), QString());
        filter.cbCancelClick();
        QCOMPARE(filter.Result(), QString("Cleared"));
    }
};

QTEST_MAIN(TestFilterDialog)
#include "tst_FilterDialog.moc"
