// Tracks: the validity check and its completion on small trees, labels and
// keys, re-selection after expansion, the diagram's item list and the data
// item look-up; then the view's Tracks menu and track commands on a real
// repository.
#include "support/CliEstate.h"
#include "support/TreeTexts.h"

#include "driver/ViewDriver.h"
#include "host/BaseFunctions.h"
#include "host/Items.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "tracks/TrackSelection.h"
#include "view/View.h"

#include <QAction>
#include <QMenu>
#include <QRadioButton>
#include <QtTest>

class TestTracks : public QObject {
    Q_OBJECT

    // MAIN > ZETA > a line > a word; MAIN > BETA > IO; SUM.
    struct Tree {
        TQXTreeControl Control;
        TQXTreeNode* Main = Control.AddRoot("MAIN [Program]", TQXItem::ForObject(1, 1), 52);
        TQXTreeNode* Zeta = Control.AddChild(Main, "ZETA [Program]", TQXItem::ForObject(1, 2), 52);
        TQXTreeNode* Line = Control.AddChild(Zeta, "   MOVE TOTAL-AMOUNT TO REPORT-LINE  ",
                                             TQXItem::ForRow(1, 2, 1, 10), 23);
        TQXTreeNode* Word =
            Control.AddChild(Line, "TOTAL-AMOUNT [Word]", TQXItem::ForWord(1, 2, 1, 10, 7), 35);
        TQXTreeNode* Beta = Control.AddChild(Main, "BETA [Class]", TQXItem::ForObject(2, 3), 14);
        TQXTreeNode* Io = Control.AddChild(Beta, "IO", TQXItem::ForObject(2, 4), 52);
        TQXTreeNode* Sum = Control.AddRoot("SUM [Program]", TQXItem::ForObject(2, 5), 52);

        void Select(const QList<TQXTreeNode*>& nodes) { Control.SetSelection(nodes); }
    };

    TestRepository FRepo;

private slots:
    void initTestCase() { BuildCliEstate(FRepo); }

    void validityAndCompletion() {
        Tree tree;
        TQXTrackSelection tracks(tree.Control);
        tree.Select({tree.Main});
        QVERIFY(!tracks.Check(true, false));
        tree.Select({tree.Main, tree.Sum});
        QCOMPARE(tracks.Check(true, false).Reason,
                 "A Track has one node at its top level, but \"MAIN [Program]\" and \"SUM "
                 "[Program]\" are both selected there.");

        // A gap: valid by levels only, completed by selecting what lies between.
        tree.Select({tree.Word, tree.Zeta});
        QVERIFY(tracks.Check(true, false));
        QVERIFY(tracks.Check(false, false)
                    .Reason.startsWith("The parent of \"TOTAL-AMOUNT [Word]\" is not selected"));
        QVERIFY(tracks.Check(false, true));
        QCOMPARE(tree.Control.Selection(), (QList<TQXTreeNode*>{tree.Word, tree.Zeta, tree.Line}));
        QVERIFY(tracks.Check(false, false));

        // Outside the start node's subtree: nothing is added, the check says why.
        tree.Select({tree.Zeta, tree.Io});
        QCOMPARE(tracks.Check(false, true).Reason,
                 "\"IO\" does not lie below the Track's start node \"ZETA [Program]\".");
        QCOMPARE(tree.Control.SelectionCount(), 2);

        // A node without an item is refused with a reason.
        TQXTreeNode* message = tree.Control.AddChild(tree.Zeta, "  *** nothing ***");
        tree.Select({tree.Zeta, message});
        QVERIFY(tracks.Check(false, false));
        QVERIFY(tracks.NodeWithoutItem().contains("\"*** nothing ***\" is a message"));
    }

    void labelsKeysAndReselection() {
        Tree tree;
        TQXTrackSelection tracks(tree.Control);
        tree.Select({tree.Word, tree.Zeta, tree.Line});
        const TTrack track = tracks.MakeTrack();
        QCOMPARE(track.Name, "ZETA - TOTAL-AMOUNT");
        QCOMPARE(track.Keys, (QStringList{"3:1,0,0,0,0,2,1,10,7", "1:1,0,0,0,0,2,0,0,0",
                                          "2:1,0,0,0,0,2,1,10,0"}));
        tree.Select({tree.Line, tree.Word});
        QCOMPARE(tracks.MakeTrack().Name, "MOVE TOTAL-AMOUNT TO - TOTAL-AMOUNT");

        // Under a collapsed parent the node's parent is opened, one level only.
        tree.Main->SetExpanded(true);
        QList<TQXTreeNode*> opened;
        auto expand = [&opened](TQXTreeNode* node) {
            opened << node;
            node->SetExpanded(true);
        };
        QVERIFY(tracks.Show(track, expand));
        QCOMPARE(tree.Control.Selection(), (QList<TQXTreeNode*>{tree.Word, tree.Zeta, tree.Line}));
        QCOMPARE(opened, (QList<TQXTreeNode*>{tree.Line, tree.Zeta}));

        // A node above shifts the indexes: the first key no longer matches.
        tree.Control.InsertRoot(0, "NEW [Program]", TQXItem::ForObject(3, 1), 52);
        QVERIFY(!tracks.Show(track, expand));
        QCOMPARE(tree.Control.SelectionCount(), 0);
    }

    void diagramItemsAndDataItems() {
        Tree tree;
        for (TQXTreeNode* node : {tree.Main, tree.Zeta, tree.Line})
            node->SetExpanded(true);
        tree.Select({tree.Word, tree.Main, tree.Zeta, tree.Sum});
        TQXItems items;
        TQXTrackSelection(tree.Control).DiagramItems(items);
        QCOMPARE(items.Count(), 3); // SUM lies outside MAIN's subtree
        QCOMPARE(items.At(0).Text, "MAIN [Program]");
        QCOMPARE(items.At(0).ParentText, "        No Parent        ");
        QCOMPARE(items.At(0).ParentFileID, -1);
        QCOMPARE(items.At(1).ParentText, "MAIN [Program]");
        QCOMPARE(items.At(1).ParentFileID, 1);
        QCOMPARE(items.At(2).ParentText, "        No Parent        "); // the line is not selected
        QCOMPARE(items.At(2).Level, 3);
        QCOMPARE(items.At(2).Icon, 35);
        QCOMPARE(items.At(2).RowID, 10);
        QCOMPARE(items.At(2).WordID, 7);

        // The same variable among the children of the grandparent or higher.
        auto data = [](const QString& text2, int owner) {
            return std::make_unique<TQXDataItem>("TOTAL", text2, owner, 2, 1, 1, 2, 1, 10, 7, 5);
        };
        TQXTreeNode* first = tree.Control.AddChild(tree.Zeta, "TOTAL", data("WS", 1), 35);
        TQXTreeNode* flow = tree.Control.AddChild(first, "line", TQXItem::ForRow(1, 2, 1, 11), 0);
        TQXTreeNode* again = tree.Control.AddChild(flow, "TOTAL", data("WS", 1), 35);
        TQXTreeNode* other = tree.Control.AddChild(flow, "TOTAL", data("LS", 1), 35);
        QVERIFY(TQXTrackSelection::DataItemExistsInTrack(again));
        QVERIFY(!TQXTrackSelection::DataItemExistsInTrack(other));
        QVERIFY(!TQXTrackSelection::DataItemExistsInTrack(first)); // its grandparent is MAIN
        QVERIFY_THROWS_EXCEPTION(EQXError, TQXTrackSelection::DataItemExistsInTrack(flow));
    }

    // The view: menu items Track0.., re-selection from the menu, the menu
    // rules, completion with its blinks, the diagram hand-over.
    void theViewsTrackCommands() {
        TQXViewDriver driver(FRepo.Location());
        TQXViewSettings settings;
        settings.Type = TQXViewType::Dependencies;
        settings.Level = TQXLevel::Object;
        driver.Apply(settings);
        driver.Refresh();
        TQXView& view = driver.View();
        view.SetBlinkPause(1);
        TQXTreeControl& tree = driver.Tree();
        const QList<TQXTreeNode*> path =
            driver.NodesOnPath({"BETA [Class]", "MAIN [Program]", "ZETA [Program]"});
        QCOMPARE(path.size(), 3);

        QAction* addTrack = view.mnuView.FindItem("AddTrack1");
        QAction* autoComplete = view.mnuView.FindItem("AutoCompleteTrack1");
        tree.SetSelection({path[0], path[2]});
        view.Tracks1Click();
        QVERIFY(!addTrack->isEnabled() && autoComplete->isEnabled());
        autoComplete->trigger();
        QCOMPARE(tree.Selection(), (QList<TQXTreeNode*>{path[0], path[2], path[1]}));
        view.Tracks1Click();
        QVERIFY(addTrack->isEnabled() && !autoComplete->isEnabled());

        for (int i = 0; i < 3; ++i) {
            tree.SetSelection(path.mid(0, 2 + i % 2));
            addTrack->trigger();
        }
        QAction* third = view.mnuView.FindItem("Track2");
        QVERIFY(third);
        QCOMPARE(third->text(), "BETA - MAIN");
        QCOMPARE(view.mnuView.FindItem("Track1")->text(), "BETA - ZETA");
        tree.Select(nullptr);
        third->trigger();
        QCOMPARE(tree.Selection(), path.mid(0, 2));

        QList<TQXItems::Entry> sent;
        QString command;
        QString failure;
        driver.BaseFunctions().RegisterWindow(
            "Diagram",
            [&](const QString&, const TQXItems& items, const QString& text, QString& errorText) {
                for (int i = 0; i < items.Count(); ++i)
                    sent << items.At(i);
                command = text;
                errorText = failure;
            });
        tree.SetSelection(path);
        view.AddTracktoDiagram1Click(nullptr);
        QCOMPARE(command, "DependenciesTopDown");
        QCOMPARE(sent.size(), 3);
        QCOMPARE(sent[2].ParentText, "MAIN [Program]");
        failure = "The diagram is closed";
        QVERIFY_THROWS_EXCEPTION(EQXError, view.AddTracktoDiagram1Click(nullptr));

        // Opening a node above a track shifts its nodes.
        const QList<TQXTreeNode*> below = driver.NodesOnPath({"MAIN [Program]", "ZETA [Program]"});
        tree.SetSelection(below);
        addTrack->trigger();
        tree.Select(nullptr);
        driver.Ui().ClearLog();
        view.mnuView.FindItem("Track3")->trigger();
        QCOMPARE(tree.Selection(), below);
        driver.Expand(path[2]);
        view.mnuView.FindItem("Track3")->trigger();
        QCOMPARE(driver.Ui().Messages(), QStringList{"Could not restore this Track"});

        // A new setting drops the tracks and their menu items.
        view.rbDistribution->click();
        QVERIFY(!view.mnuView.FindItem("Track0"));
        QVERIFY(view.Tracks().empty());
    }
};

QTEST_MAIN(TestTracks)
#include "tst_Tracks.moc"
