// The view driver: settings through the view's controls, failures the view
// only showed turned into errors, and opening nodes by depth, by path and up
// to a node cap. Its answers to the view's questions are checked with the
// limit question.
#include "support/CliEstate.h"
#include "support/TreeTexts.h"

#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "view/View.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QtTest>

namespace {

TQXViewSettings ObjectCalls() {
    TQXViewSettings settings;
    settings.Type = TQXViewType::Dependencies;
    settings.Level = TQXLevel::Object;
    return settings;
}

// Every node, depth first.
QList<TQXTreeNode*> Shown(TQXTreeControl& tree) {
    QList<TQXTreeNode*> nodes;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = TQXTreeControl::NextNode(node))
        nodes << node;
    return nodes;
}

} // namespace

class TestViewDriver : public QObject {
    Q_OBJECT

    TestRepository FRepo;

private slots:
    void initTestCase() { BuildCliEstate(FRepo); }

    void settingsGoThroughTheControls() {
        TQXViewDriver driver(FRepo.Location());
        TQXView& view = driver.View();
        TQXViewSettings settings = ObjectCalls();
        settings.Direction = TQXDirection::BottomUp;
        settings.Level = TQXLevel::Entry;
        settings.LimitText = QStringLiteral(" 007");
        driver.Apply(settings);
        QVERIFY(view.rbDependencies->isChecked());
        QVERIFY(view.rbBottomUp->isChecked());
        QCOMPARE(view.cbViewBy->currentText(), QString("Entry"));
        QCOMPARE(view.tbRootItemLimit->text(), QString("7")); // checked as on leaving the box
        QVERIFY(view.cbOption->isHidden());

        // Choosing Entry checks the option box; the settings say otherwise.
        settings.Direction = TQXDirection::TopDown;
        driver.Apply(settings);
        QVERIFY(!view.cbOption->isHidden());
        QVERIFY(!view.cbOption->isChecked());
        settings.Option = true;
        driver.Apply(settings);
        QVERIFY(view.cbOption->isChecked());
        QCOMPARE(view.lblUserHint->text(),
                 QString("View: Entrys in order of execution, call TO other Entry(s)"));

        settings.LimitText = QStringLiteral("many");
        QVERIFY_THROWS_EXCEPTION(EQXError, driver.Apply(settings));
    }

    void failuresTheViewOnlyShowedAreThrown() {
        QVERIFY_THROWS_EXCEPTION(EQXError, TQXViewDriver(QDir::temp().filePath("none.kvdb")));
        TQXViewDriver driver(NotARepositoryFile());
        try {
            driver.Refresh();
            QFAIL("a file that is no repository was refreshed");
        } catch (const EQXError& e) {
            QVERIFY2(e.Message().startsWith("AssignDBPointers failed: "), qPrintable(e.Message()));
        }
    }

    void refreshAndOpenNodes() {
        TQXViewDriver driver(FRepo.Location());
        driver.Apply(ObjectCalls());
        const qint64 before = driver.RoundTrips();
        driver.Refresh();
        QVERIFY(driver.RoundTrips() > before);
        QCOMPARE(driver.Tree().RootCount(), 5);

        QVERIFY(driver.ExpandToDepth(1));
        QCOMPARE(Texts(Shown(driver.Tree())),
                 QStringList({"BETA [Class]", "MAIN [Program]", "IO/PRINT [Program]",
                              "MAIN [Program]", "ZETA [Program]", "SUM,\"TOTAL\" [Program]",
                              "ZETA [Program]", "MAIN [Program]"}));

        QVERIFY(driver.ExpandPath({"MAIN [Program]", "ZETA [Program]"}));
        QCOMPARE(Shown(driver.Tree()).size(), 9);
        QVERIFY(!driver.ExpandPath({"MAIN [Program]", "BETA [Class]"}));

        // Breadth first: the roots BETA and MAIN are opened before BETA's callee,
        // then the cap of 7 nodes stops it.
        driver.Refresh();
        QVERIFY(!driver.ExpandToDepth(10, 7));
        QCOMPARE(Shown(driver.Tree()).size(), 7);
        QVERIFY(TQXTreeControl::HasPlaceholder(driver.Tree().Root(0)->FirstChild()));
    }
};

QTEST_MAIN(TestViewDriver)
#include "tst_ViewDriver.moc"
