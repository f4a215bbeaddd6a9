// The commands on the tree and its selection, in a real view over a small
// estate: expand all (within an object, within a package, cancelled),
// change selection in collapsed branches, count, copy order, select all,
// find forward and backward, print (to the recording canvas and to a PDF
// with a page break), the mouse-down rule and the popup's enabling.
#include "ToolsEstate.h"

#include "driver/ViewDriver.h"
#include "platform/PrinterCanvas.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "tools/ChangeSelectionDialog.h"
#include "tools/TreeSelection.h"
#include "view/View.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPrinter>
#include <QPushButton>
#include <QtTest>

namespace {

QStringList Texts(const QList<TQXTreeNode*>& nodes) {
    QStringList texts;
    for (const TQXTreeNode* node : nodes)
        texts << node->Text();
    return texts;
}

// A node and every node below it, indented by depth; nodes still waiting
// for their children end in "+".
QStringList Outline(const TQXTreeNode* node) {
    QStringList lines{QString(node->Level() * 2, ' ') + node->Text() +
                      (TQXTreeControl::HasPlaceholder(node) ? "+" : "")};
    for (int i = 0; i < node->ChildCount(); ++i)
        lines += Outline(node->Child(i));
    return lines;
}

} // namespace

class TestTreeCommands : public QObject {
    Q_OBJECT

    TestRepository FRepo;
    std::unique_ptr<TQXViewDriver> FDriver;

    // The Entry view, Dependencies TopDown, refreshed.
    TQXView& View() {
        FDriver.reset(); // its UI services go first, the new ones become current
        FDriver = std::make_unique<TQXViewDriver>(FRepo.Location());
        TQXViewSettings settings;
        settings.Type = TQXViewType::Dependencies;
        settings.Level = TQXLevel::Entry;
        FDriver->Apply(settings);
        FDriver->Refresh();
        return FDriver->View();
    }
    TQXTreeControl& Tree() { return FDriver->Tree(); }
    TQXTreeNode* Root(const QString& text) {
        for (int i = 0; i < Tree().RootCount(); ++i)
            if (Tree().Root(i)->Text() == text)
                return Tree().Root(i);
        return nullptr;
    }
    QAction* Action(const char* name) {
        return FDriver->View().pmnuView->findChild<QAction*>(QLatin1String(name));
    }

private slots:
    void initTestCase() { BuildToolsEstate(FRepo); }

    void expandAllHonoursTheLimits() {
        TQXView& view = View();
        Tree().Select(Root("START [MAIN]"));
        emit view.pmnuView->aboutToShow();
        QVERIFY(Action("ExpandAllwithinObject1")->isEnabled());
        QVERIFY(Action("ExpandAllwithinPackage1")->isEnabled());
        Action("ExpandAllwithinObject1")->trigger();
        // Only MAIN's entries are opened; the others keep their expand buttons.
        QCOMPARE(Outline(Root("START [MAIN]")),
                 QStringList({"START [MAIN]", "  LOOP [MAIN]", "    RUN [ZETA]+", "  RUN [ZETA]+",
                              "  S1 [SUB]+"}));
        QCOMPARE(FDriver->Ui().ProgressSteps(), 2);

        View();
        Tree().Select(Root("START [MAIN]"));
        FDriver->View().ExpandAll1Click(Action("ExpandAllwithinPackage1"));
        QCOMPARE(Outline(Root("START [MAIN]")),
                 QStringList({"START [MAIN]", "  LOOP [MAIN]", "    RUN [ZETA]+", "  RUN [ZETA]+",
                              "  S1 [SUB]", "    RUN [ZETA]+"}));

        // Without limits everything opens, down to the recursion marks.
        View().ExpandAll1Click(nullptr); // nothing selected: nothing to expand
        Tree().Select(Root("START [MAIN]"));
        FDriver->View().ExpandAll1Click(Action("ExpandAll1"));
        const QStringList all = Outline(Root("START [MAIN]"));
        QCOMPARE(all.filter("+").size(), 0);
        QVERIFY(all.contains("      START [MAIN] !!! Recursive Track from here !!!"));
        QCOMPARE(FDriver->Ui().ProgressSteps(), 6);
        QCOMPARE(FDriver->Ui().ProgressText(), QString("6 nodes opened"));
        // A cancelled expand-all keeps what it opened.
        View();
        FDriver->Ui().SetCancelProgressAfter(2);
        Tree().Select(Root("START [MAIN]"));
        FDriver->View().ExpandAll1Click(Action("ExpandAll1"));
        QCOMPARE(
            Outline(Root("START [MAIN]")).mid(0, 4),
            QStringList({"START [MAIN]", "  LOOP [MAIN]", "    RUN [ZETA]+", "  RUN [ZETA]+"}));
    }

    void selectionCommands() {
        TQXView& view = View();
        TQXTreeNode* start = Root("START [MAIN]");
        FDriver->Expand(start);
        start->SetExpanded(false); // its children lie in a collapsed branch
        auto change = [&](int type, const QString& text) {
            FDriver->Ui().QueueDialog([=](QDialog& dialog) {
                auto& change = static_cast<TQXChangeSelection&>(dialog);
                change.cbChangeType->setCurrentIndex(type);
                change.edtItemText->setText(text);
                change.cbApply->click();
                return change.result();
            });
            view.ChangeSelectedItems1Click(nullptr);
        };
        Tree().Select(Root("S1 [SUB]"));
        change(1, "RUN");
        QCOMPARE(Texts(Tree().Selection()), QStringList({"S1 [SUB]", "RUN [ZETA]", "RUN [ZETA]"}));
        change(1, "run");
        change(1, "");
        view.CountSelectedItems1Click(nullptr);
        change(0, "RUN [");
        QCOMPARE(Texts(Tree().Selection()), QStringList({"S1 [SUB]"}));
        QCOMPARE(FDriver->Ui().Messages(), QStringList{"3 Items is selected"});

        // Copy: the child selected after its parent comes first.
        start->SetExpanded(true);
        Tree().Select(start);
        Tree().Select(start->Child(0), true);
        view.Copy1Click(nullptr);
        QCOMPARE(FDriver->Ui().ClipboardText(), QString("     LOOP [MAIN]\r START [MAIN]\r"));
        view.ClearSelection1Click(nullptr);
        QCOMPARE(Tree().SelectionCount(), 0);

        // Select all: the visible nodes only.
        Root("S1 [SUB]")->SetExpanded(false);
        view.SelectAll1Click(nullptr);
        QCOMPARE(Tree().SelectionCount(), treeselection::VisibleNodes(Tree()).size());
        QCOMPARE(Tree().SelectionCount(), Tree().RootCount() + start->ChildCount());

        // Find: from the top, on after the last match, backward, no wrap, no collapsed branch.
        FDriver->Ui().ClearLog();
        view.ClearSelection1Click(nullptr);
        view.Find1Click(nullptr);
        QVERIFY(!FDriver->Ui().FindShowsWholeWord());
        auto find = [&](const QString& text, bool down, bool matchCase = false) {
            FDriver->Ui().TriggerFind({text, matchCase, false, down});
            return treeselection::IndentedText(Tree().Selection().value(0));
        };
        QCOMPARE(find("run [", true), QString(" RUN [ZETA]"));
        QCOMPARE(find("RUN", true), QString("     RUN [ZETA]"));
        QCOMPARE(find("main", false), QString("     LOOP [MAIN]"));
        QCOMPARE(find("main", false, true), QString("     LOOP [MAIN]"));
        QCOMPARE(FDriver->Ui().Messages(), QStringList{"Text not found"});
        QCOMPARE(find("S1", true), QString("     S1 [SUB]"));
        FDriver->Ui().ClearLog();
        find("RUN", true); // below S1 lie only collapsed branches: no wrap to the top
        QCOMPARE(FDriver->Ui().Messages(), QStringList{"Text not found"});
    }

    void printAndMouseDown() {
        TQXView& view = View();
        // Lines at y = 400, 480, 560; the next one passes 1000 - 400 and breaks the page.
        FDriver->Ui().SetPageHeight(1000);
        FDriver->Ui().QueuePrint(true);
        view.Print1Click(nullptr);
        const auto& printed = FDriver->Ui().LastPrint()->Texts();
        QCOMPARE(printed.size(), 1 + Tree().RootCount());
        QCOMPARE(printed[0].Value, QString("Korvane View 1"));
        QCOMPARE(QList<int>({printed[0].X, printed[0].Y, printed[1].Y, printed[3].Y, printed[4].Y,
                             printed[4].Page}),
                 QList<int>({400, 200, 400, 560, 400, 1}));
        QCOMPARE(printed[1].Value, QString(" ") + Tree().FirstNode()->Text());

        // A plain left click selects the node under the pointer alone.
        view.show();
        TQXTreeNode* first = Tree().Root(0);
        TQXTreeNode* second = Tree().Root(1);
        Tree().Select(first);
        QTest::mouseClick(Tree().Viewport(), Qt::LeftButton, Qt::ControlModifier,
                          Tree().NodeRect(second).center());
        QCOMPARE(Tree().SelectionCount(), 2);
        view.OnMouseDown(Qt::LeftButton, Qt::NoModifier, Tree().NodeRect(second).center());
        QCOMPARE(Tree().Selection(), QList<TQXTreeNode*>{second});
        view.OnMouseDown(Qt::LeftButton, Qt::NoModifier,
                         QPoint(5, Tree().Viewport()->height() - 2));
        QCOMPARE(Tree().SelectionCount(), 0);

        // A real PDF from the same drawing, one page break.
        QTemporaryDir dir;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath("tree.pdf"));
        printer.setResolution(600);
        const int lines = (printer.pageLayout().paintRectPixels(600).height() - 800) / 80 + 2;
        for (int i = Tree().RootCount(); i < lines; ++i)
            Tree().AddRoot(QString("LINE %1").arg(i));
        {
            TQXPrinterCanvas canvas(printer);
            treeselection::PrintVisible(Tree(), "Korvane View 1", canvas);
        }
        QFile pdf(dir.filePath("tree.pdf"));
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QCOMPARE(pdf.readAll().count("/Type /Page\n"), 2);
    }
};

QTEST_MAIN(TestTreeCommands)
#include "tst_TreeCommands.moc"
