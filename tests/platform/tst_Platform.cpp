// The platform. The tree control: item ownership, placeholders, depth-first
// indexes, visible walks, selection order, sorting, update brackets,
// expansion notice and the popup menu switch; the pictures of its image list.
// The UI services: swapping the current instance, scripted answers, the busy
// cursor guard, the error display, and the Qt services' own rules.
#include "platform/BusyCursor.h"
#include "platform/ErrorDisplay.h"
#include "platform/ImageList.h"
#include "platform/QtUIServices.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "support/TreeTexts.h"

#include <QColor>
#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QSignalSpy>
#include <QtTest>

namespace {

// An item that counts the live instances, to see who frees them.
class CountingItem final : public TQXTreeItem {
public:
    static int Live;
    explicit CountingItem(int id) : FId(id) { ++Live; }
    ~CountingItem() override { --Live; }
    QString ClassName() const override { return QStringLiteral("CountingItem"); }
    QString GetItemID() const override { return QString::number(FId); }

private:
    int FId;
};
int CountingItem::Live = 0;

std::unique_ptr<TQXTreeItem> Item(int id) {
    return std::make_unique<CountingItem>(id);
}

const TQXImageList& List() {
    return TQXImageList::Standard();
}

QImage Render(int index, int size) {
    return List().Pixmap(index, size).toImage().convertToFormat(QImage::Format_ARGB32);
}

// Pixels whose colour differs noticeably, so that near-identical pictures
// count as the same.
int DifferentPixels(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            const int d = qAbs(qRed(p) - qRed(q)) + qAbs(qGreen(p) - qGreen(q)) +
                          qAbs(qBlue(p) - qBlue(q)) + qAbs(qAlpha(p) - qAlpha(q));
            count += d > 48;
        }
    return count;
}

} // namespace

class TestPlatform : public QObject {
    Q_OBJECT

private slots:
    void nodesOwnTheirItemsAndPlaceholders() {
        {
            TQXTreeControl tree;
            TQXTreeNode* a = tree.AddRoot("A", Item(1), 1);
            TQXTreeNode* a1 = tree.AddChild(a, "A1", Item(2));
            tree.AddChild(a1, "A11", Item(3));
            tree.AddPlaceholder(a1);
            tree.AddRoot("B", Item(4));
            QCOMPARE(CountingItem::Live, 4);
            QCOMPARE(a1->Item()->GetItemID(), QString("2"));

            delete a1; // its child goes with it
            QCOMPARE(CountingItem::Live, 2);
            QCOMPARE(a->ChildCount(), 0);

            tree.Clear();
            QCOMPARE(CountingItem::Live, 0);
            QCOMPARE(tree.RootCount(), 0);

            // A placeholder makes a node expandable without a row.
            TQXTreeNode* node = tree.AddRoot("C", Item(5));
            QVERIFY(!TQXTreeControl::HasPlaceholder(node));
            tree.AddPlaceholder(node);
            QVERIFY(TQXTreeControl::HasPlaceholder(node));
            QCOMPARE(node->ChildCount(), 0);
            QCOMPARE(tree.NodeCount(), 1);
            QVERIFY(TQXTreeControl::TakePlaceholder(node));
            QVERIFY(!TQXTreeControl::HasPlaceholder(node));
            QVERIFY(!TQXTreeControl::TakePlaceholder(node));
            // A first child without item still counts as not yet opened.
            tree.AddChild(node, "marker");
            QVERIFY(TQXTreeControl::HasPlaceholder(node));
            QVERIFY(TQXTreeControl::TakePlaceholder(node));
            QCOMPARE(node->ChildCount(), 0);
            tree.AddChild(node, QString(), Item(6));
            QVERIFY(!TQXTreeControl::HasPlaceholder(node));
        }
        QCOMPARE(CountingItem::Live, 0); // the tree's end frees the rest
    }

    // Indexes count collapsed branches; visible walks skip them.
    void walksAndIndexes() {
        TQXTreeControl tree;
        TQXTreeNode* a = tree.AddRoot("A");
        TQXTreeNode* a1 = tree.AddChild(a, "A1");
        TQXTreeNode* a11 = tree.AddChild(a1, "A11");
        TQXTreeNode* a2 = tree.AddChild(a, "A2");
        TQXTreeNode* a21 = tree.AddChild(a2, "A21");
        TQXTreeNode* b = tree.AddRoot("B");
        TQXTreeNode* b1 = tree.AddChild(b, "B1");
        a->SetExpanded(true);
        a1->SetExpanded(true); // A2 and B stay collapsed

        const QList<TQXTreeNode*> order = {a, a1, a11, a2, a21, b, b1};
        for (int i = 0; i < order.size(); ++i) {
            QCOMPARE(tree.AbsoluteIndex(order[i]), i);
            QCOMPARE(tree.NodeAt(i), order[i]);
        }
        QCOMPARE(tree.NodeCount(), 7);
        QCOMPARE(tree.NodeAt(7), nullptr);
        QCOMPARE(TQXTreeControl::NextNode(a11), a2);
        QCOMPARE(TQXTreeControl::NextNode(b1), nullptr);
        QCOMPARE(TQXTreeControl().AbsoluteIndex(a), -1);

        QList<TQXTreeNode*> down;
        for (TQXTreeNode* n = tree.FirstNode(); n; n = tree.NextVisible(n))
            down << n;
        QCOMPARE(Texts(down), QStringList({"A", "A1", "A11", "A2", "B"}));
        QList<TQXTreeNode*> up;
        for (TQXTreeNode* n = b; n; n = tree.PreviousVisible(n))
            up << n;
        QCOMPARE(Texts(up), QStringList({"B", "A2", "A11", "A1", "A"}));
        QVERIFY(TQXTreeControl::IsVisibleNode(a11));
        QVERIFY(!TQXTreeControl::IsVisibleNode(a21));
    }

    // On a shown tree: selections keep the order of selecting, and the user
    // opens nodes.
    void selectionAndExpansionByTheUser() {
        TQXTreeControl tree;
        for (const char* text : {"R0", "R1", "R2", "R3", "R4"})
            tree.AddRoot(text);
        tree.resize(300, 300);
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree));
        auto click = [&tree](int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            const QRect rect = tree.NodeRect(tree.Root(row));
            QTest::mouseClick(tree.Viewport(), Qt::LeftButton, modifiers, rect.center());
        };

        click(3);
        click(0, Qt::ControlModifier);
        click(2, Qt::ControlModifier);
        QCOMPARE(Texts(tree.Selection()), QStringList({"R3", "R0", "R2"}));
        click(0, Qt::ControlModifier); // deselects R0
        QCOMPARE(Texts(tree.Selection()), QStringList({"R3", "R2"}));

        // A Shift range joins in tree order after what was selected before.
        click(4);
        click(1, Qt::ShiftModifier);
        QCOMPARE(Texts(tree.Selection()), QStringList({"R4", "R1", "R2", "R3"}));

        // Selection by code, and a deleted node leaves the selection.
        tree.Select(tree.Root(0));
        tree.Select(tree.Root(3), true);
        QCOMPARE(Texts(tree.Selection()), QStringList({"R0", "R3"}));
        delete tree.Root(0);
        QCOMPARE(Texts(tree.Selection()), QStringList({"R3"}));
        tree.Deselect(tree.Root(2)); // R3
        QCOMPARE(tree.SelectionCount(), 0);
        tree.Select(tree.Root(1));
        tree.Clear();
        QCOMPARE(tree.SelectionCount(), 0);

        // Opened by the user; opening from code is checked by the expansion tests.
        TQXTreeNode* b = tree.AddRoot("B");
        tree.AddPlaceholder(b);
        QSignalSpy spy(&tree, &TQXTreeControl::NodeExpanded);
        tree.SetCurrent(b);
        QTest::keyClick(tree.Viewport()->parentWidget(), Qt::Key_Right);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.takeFirst().at(0).value<TQXTreeNode*>(), b);
        QVERIFY(b->Expanded());
    }

    void sortIsAlphabeticalAndCaseInsensitive() {
        TQXTreeControl tree;
        for (const char* text : {"beta", "Alpha", "gamma", "alpha2", "ALPHA"})
            tree.AddRoot(text);
        TQXTreeNode* parent = tree.Root(0);
        for (const char* text : {"z", "Y", "x"})
            tree.AddChild(parent, text);

        tree.SortChildren(nullptr);
        QCOMPARE(RootTexts(tree), QStringList({"ALPHA", "Alpha", "alpha2", "beta", "gamma"}));
        // The top level alone: children keep their order until sorted.
        QCOMPARE(ChildTexts(parent), QStringList({"z", "Y", "x"}));
        tree.SortChildren(parent);
        QCOMPARE(ChildTexts(parent), QStringList({"x", "Y", "z"}));
    }

    void updateBracketsNest() {
        TQXTreeControl tree;
        tree.BeginUpdate();
        tree.BeginUpdate();
        tree.EndUpdate();
        QVERIFY(!tree.updatesEnabled());
        QVERIFY(tree.Updating());
        tree.EndUpdate();
        QVERIFY(tree.updatesEnabled());
        tree.EndUpdate(); // one too many changes nothing
        QVERIFY(tree.updatesEnabled());
        // The view's failing refresh checks that the bracket closes on the way out.
    }

    // Images come from the image list; a destroyed popup menu is no longer offered.
    void imagesAndThePopupMenu() {
        TQXTreeControl tree;
        auto menu = std::make_unique<QMenu>();
        tree.SetPopupMenu(menu.get());
        menu.reset();
        QCOMPARE(tree.PopupMenu(), nullptr);
        TQXTreeNode* node = tree.AddRoot("A", nullptr, 12);
        QCOMPARE(node->SelectedIndex(), 12); // the selected picture follows the image
        node->SetSelectedIndex(13);
        // Selected, the node shows its selected picture.
        const QIcon icon = node->Icon();
        const TQXImageList& images = TQXImageList::Standard();
        QCOMPARE(icon.pixmap(16, QIcon::Normal).toImage(), images.Pixmap(12, 16).toImage());
        QCOMPARE(icon.pixmap(16, QIcon::Selected).toImage(), images.Pixmap(13, 16).toImage());
        node->SetImageIndex(-1);
        QCOMPARE(node->SelectedIndex(), -1);
        QVERIFY(node->Icon().isNull());
        tree.SetImages(nullptr); // without an image list no node shows a picture
        node->SetImageIndex(3);
        QVERIFY(node->Icon().isNull());
    }

    // Every index renders a picture of its own at every size; others none.
    void everyIndexRendersADistinctPicture() {
        QCOMPARE(List().Count(), 56);
        for (int i = 0; i < List().Count(); ++i) {
            for (int size : {16, 32}) {
                const QImage image = Render(i, size);
                QCOMPARE(image.size(), QSize(size, size));
                // A real picture covers a good part of its square.
                QImage blank(size, size, QImage::Format_ARGB32);
                blank.fill(Qt::transparent);
                QVERIFY2(DifferentPixels(image, blank) >= size * size / 5,
                         qPrintable(QStringLiteral("index %1 at %2 px").arg(i).arg(size)));
                for (int j = i + 1; j < List().Count(); ++j)
                    QVERIFY2(DifferentPixels(image, Render(j, size)) >= size,
                             qPrintable(QStringLiteral("%1 and %2 at %3 px look alike")
                                            .arg(i)
                                            .arg(j)
                                            .arg(size)));
            }
        }
        for (int i : {-1, 56})
            QVERIFY(List().Icon(i).isNull() && List().Pixmap(i, 16).isNull());
        QVERIFY(List().Pixmap(0, 0).isNull());
    }

    // A TopDown picture and its BottomUp twin share everything but the
    // direction badge in the lower right corner.
    void twinsAndColours() {
        const QList<QPair<int, int>> twins = {{12, 13}, {14, 15}, {16, 17}, {18, 19}, {20, 21},
                                              {23, 26}, {24, 27}, {25, 28}, {29, 32}, {30, 33},
                                              {31, 34}, {39, 40}, {41, 42}, {43, 44}, {50, 51},
                                              {52, 53}, {35, 36}, {45, 46}, {54, 55}};
        for (const auto& [down, up] : twins) {
            const QImage a = Render(down, 32), b = Render(up, 32);
            for (const QRect& kept : {QRect(0, 0, 32, 14), QRect(0, 0, 16, 32)})
                QVERIFY2(a.copy(kept) == b.copy(kept),
                         qPrintable(QStringLiteral("%1 / %2").arg(down).arg(up)));
        }
        // Persistent storage is green.
        for (int i : {20, 21, 43, 44, 45, 46, 47, 48}) {
            const QImage image = Render(i, 32);
            int green = 0, other = 0;
            for (int y = 0; y < 32; ++y)
                for (int x = 0; x < 32; ++x) {
                    const QColor c = QColor::fromRgba(image.pixel(x, y));
                    if (c.alpha() < 128 || c.saturation() < 60)
                        continue;
                    (c.hue() >= 90 && c.hue() <= 150 ? green : other)++;
                }
            QVERIFY2(green > other, qPrintable(QString::number(i)));
        }
    }

    // Scripted services are current while they live, nested too, and answer
    // from their queue first, then with the default answer (No unless set).
    void scriptedServicesAnswerWhileTheyLive() {
        QVERIFY(dynamic_cast<TQXQtUIServices*>(&TQXUIServices::Current()));
        {
            TQXScriptedUIServices outer;
            {
                TQXScriptedUIServices ui;
                TQXUIServices& current = TQXUIServices::Current();
                QCOMPARE(&current, &ui);
                ui.QueueAnswer(true);
                ui.QueueAnswer(false);
                QVERIFY(current.Ask("Overwrite existing file?"));
                QVERIFY(!current.Ask("Again?"));
                QVERIFY(!current.Ask("Unscripted?", TQXQuestionKind::Warning));
                QCOMPARE(ui.Questions(),
                         QStringList({"Overwrite existing file?", "Again?", "Unscripted?"}));
                QCOMPARE(ui.Unanswered(), QStringList({"Unscripted?"}));
                ui.SetDefaultAnswer(true);
                ui.QueueAnswer(false);
                QVERIFY(!current.Ask("Queued?"));
                QVERIFY(current.Ask("Defaulted?"));
            }
            QCOMPARE(&TQXUIServices::Current(), &outer);
        }
        QVERIFY(dynamic_cast<TQXQtUIServices*>(&TQXUIServices::Current()));
    }

    void busyCursorRestoresWhatItFound() {
        TQXScriptedUIServices ui;
        ui.SetScreenCursor(Qt::CrossCursor);
        try {
            TQXBusyCursor outer;
            QCOMPARE(ui.ScreenCursor(), Qt::WaitCursor);
            { TQXBusyCursor inner; }
            QCOMPARE(ui.ScreenCursor(), Qt::WaitCursor);
            throw EQXError("failed while busy");
        } catch (const EQXError&) {
        }
        QCOMPARE(ui.ScreenCursor(), Qt::CrossCursor);
        QCOMPARE(ui.CursorLog(),
                 (QList<Qt::CursorShape>{Qt::CrossCursor, Qt::WaitCursor, Qt::WaitCursor,
                                         Qt::WaitCursor, Qt::CrossCursor}));
    }

    void qtServicesUseTheOverrideCursor() {
        TQXQtUIServices qt;
        QCOMPARE(qt.ScreenCursor(), Qt::ArrowCursor);
        qt.SetScreenCursor(Qt::WaitCursor);
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        qt.SetScreenCursor(Qt::IBeamCursor);
        QCOMPARE(qt.ScreenCursor(), Qt::IBeamCursor);
        qt.SetScreenCursor(Qt::ArrowCursor);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        QCOMPARE(qt.ScreenCursor(), Qt::ArrowCursor);
    }

    // An EQXError's way there is checked with the base form's commands.
    void unhandledErrorsReachTheErrorDisplay() {
        TQXScriptedUIServices ui;
        RunReportingErrors([] { throw std::runtime_error("bad_alloc"); });
        RunReportingErrors([] {});
        QCOMPARE(ui.Errors(), QStringList({"bad_alloc"}));
    }

    void fileFiltersBecomeQtFilters() {
        QCOMPARE(TQXQtUIServices::QtFilter("Korvane View files (*.kvv)|*.kvv"),
                 QString("Korvane View files (*.kvv)"));
        QCOMPARE(TQXQtUIServices::QtFilter("Sources|*.cbl;*.cpy|All (*)|*"),
                 QString("Sources (*.cbl *.cpy);;All (*)"));
        QCOMPARE(TQXQtUIServices::QtFilter(""), QString());
    }
};

QTEST_MAIN(TestPlatform)
#include "tst_Platform.moc"
