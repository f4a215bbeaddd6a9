// Item and row tools as the view offers them: item properties and the
// delete command, dependent rows, and the commands on the tree and its
// selection, with their popup entries. The work is done in tools/.
#include "view/View.h"

#include "host/BaseFunctionsInterface.h"
#include "platform/BusyCursor.h"
#include "platform/ErrorDisplay.h"
#include "platform/TreeControl.h"
#include "platform/TreeUpdate.h"
#include "platform/UIServices.h"
#include "repository/WhereText.h"
#include "tools/AttributeWriter.h"
#include "tools/ChangeSelectionDialog.h"
#include "tools/DependentRows.h"
#include "tools/DependentRowsWindow.h"
#include "tools/ItemPropertiesDialog.h"
#include "tools/SubtreeExpander.h"
#include "tools/TreeSelection.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QMouseEvent>
#include <QRadioButton>

namespace {

const QString ExpandWithinObject = QStringLiteral("ExpandAllwithinObject1");
const QString ExpandWithinPackage = QStringLiteral("ExpandAllwithinPackage1");

// Hands the mouse presses on the tree to the view, and lets the tree handle
// them as well.
class TMousePressHook final : public QObject {
public:
    TMousePressHook(QObject* parent, std::function<void(QMouseEvent*)> onPress)
        : QObject(parent), FOnPress(std::move(onPress)) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress)
            FOnPress(static_cast<QMouseEvent*>(event));
        return false;
    }

private:
    std::function<void(QMouseEvent*)> FOnPress;
};

// The item of a node as the tools take it: a data item stands for the word
// it was read from.
std::unique_ptr<TQXItem> ToolItem(const TQXTreeNode& node) {
    if (const auto* data = node.ItemAs<TQXDataItem>())
        return std::make_unique<TQXItem>(data->FileID, 0, 0, 0, 0, data->ObjectID, data->EntryID,
                                         data->RowID, data->WordID);
    if (const auto* item = node.ItemAs<TQXItem>())
        return std::make_unique<TQXItem>(*item);
    return nullptr;
}

} // namespace

void TQXView::CreateToolCommands() {
    auto item = [this](const char* name, const QString& caption,
                       void (TQXView::*handler)(QObject*)) {
        QAction* action = pmnuView->addAction(caption);
        action->setObjectName(QLatin1String(name));
        connect(action, &QAction::triggered, this,
                [this, action, handler] { RunReportingErrors([&] { (this->*handler)(action); }); });
        return action;
    };
    pmnuView->addSeparator();
    item("ShowDependentRows1", QStringLiteral("Show Dependent Rows"),
         &TQXView::ShowDependentRows1Click);
    item("ShowDataFlow1", QStringLiteral("Show Data Flow"), &TQXView::ShowDataFlow1Click);
    pmnuView->addSeparator();
    item("ExpandAll1", QStringLiteral("Expand All"), &TQXView::ExpandAll1Click);
    item("ExpandAllwithinObject1", QStringLiteral("Expand All within Object"),
         &TQXView::ExpandAll1Click);
    item("ExpandAllwithinPackage1", QStringLiteral("Expand All within Package"),
         &TQXView::ExpandAll1Click);
    item("ChangeSelectedItems1", QStringLiteral("Change Selected Items"),
         &TQXView::ChangeSelectedItems1Click);
    item("CountSelectedItems1", QStringLiteral("Count Selected Items"),
         &TQXView::CountSelectedItems1Click);
    item("Copy2", QStringLiteral("Copy                                 (Ctrl+C)"),
         &TQXView::Copy1Click);
    item("SelectAll2", QStringLiteral("Select All                           (Ctrl+A)"),
         &TQXView::SelectAll1Click);
    item("ClearSelection2", QStringLiteral("Clear Selection                 (Ctrl+N)"),
         &TQXView::ClearSelection1Click);
    pmnuView->addSeparator();
    item("Properties2", QStringLiteral("Item Properties..."), &TQXView::Properties2Click);
    connect(pmnuView, &QMenu::aboutToShow, this,
            [this] { RunReportingErrors([this] { EnableToolCommands(); }); });

    tvMain->Viewport()->installEventFilter(new TMousePressHook(this, [this](QMouseEvent* event) {
        OnMouseDown(event->button(), event->modifiers(), event->position().toPoint());
    }));
}

// The enabling of the tool commands until the popup's full rules come:
// properties and the expand commands with one selected node, dependent rows
// with a parent and its child selected in the Dependencies view.
void TQXView::EnableToolCommands() {
    auto action = [this](const char* name) {
        return pmnuView->findChild<QAction*>(QLatin1String(name));
    };
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    const bool one = selection.size() == 1;
    const bool dependencies = rbDependencies->isChecked();
    action("Properties2")->setEnabled(one && selection.constFirst()->Item());
    action("ExpandAll1")->setEnabled(one);
    const TQXItem* word = one ? selection.constFirst()->ItemAs<TQXItem>() : nullptr;
    action("ShowDataFlow1")
        ->setEnabled(
            FBaseFunctions->HasWindow(QStringLiteral("View")) &&
            ((one && selection.constFirst()->ItemAs<TQXDataItem>()) || (word && word->WordID > 0)));
    const TQXItem* item = one ? selection.constFirst()->ItemAs<TQXItem>() : nullptr;
    const bool inObject = dependencies && item && item->FileID > 0 && item->ObjectID > 0;
    action("ExpandAllwithinObject1")->setEnabled(inObject);
    action("ExpandAllwithinPackage1")
        ->setEnabled(inObject && FDataAccess &&
                     FDataAccess->SelectRecords(FTables.Table(qx::Table::QXPACKAGE),
                                                where::Keys({{"QXObjectFileID", item->FileID},
                                                             {"QXObjectID", item->ObjectID}})));
    action("ShowDependentRows1")
        ->setEnabled(dependencies && selection.size() == 2 &&
                     (selection[0]->ParentNode() == selection[1] ||
                      selection[1]->ParentNode() == selection[0]));
}

void TQXView::Properties2Click(QObject*) {
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    if (selection.isEmpty() || !FDataAccess)
        return;
    const std::unique_ptr<TQXItem> item = ToolItem(*selection.constFirst());
    if (!item)
        return;
    TQXItemProperties dialog(this, imgIcons, *item, FDataAccess,
                             [this] { RefreshContent(FDataAccess, nullptr, QString()); });
    TQXUIServices::Current().ShowModal(dialog);
}

void TQXView::DeletethisItem1Click(QObject*) {
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    const std::unique_ptr<TQXItem> item =
        selection.isEmpty() ? nullptr : ToolItem(*selection.constFirst());
    if (!FDataAccess || !item || !DeleteAttribute(*FDataAccess, *item)) {
        TQXUIServices::Current().ShowMessage(QStringLiteral("Delete not possible"));
        return;
    }
    RefreshCurrentView();
}

void TQXView::ShowDependentRows1Click(QObject*) {
    TQXBusyCursor busy;
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    const TQXItem* first = selection.size() >= 2 ? selection[0]->ItemAs<TQXItem>() : nullptr;
    const TQXItem* second = selection.size() >= 2 ? selection[1]->ItemAs<TQXItem>() : nullptr;
    if (!first || !second || !FDataAccess) {
        TQXUIServices::Current().ShowMessage(
            QStringLiteral("Select two items, a node and one of its children, to show the rows "
                           "through which the one calls the other"));
        return;
    }
    // The parent of the two is the caller's side.
    const bool secondIsParent = selection[0]->ParentNode() == selection[1];
    const TQXItem& a = secondIsParent ? *second : *first;
    const TQXItem& b = secondIsParent ? *first : *second;

    TQXDependentRowsReader reader(*FDataAccess);
    const std::optional<QString> condition = reader.Condition(a, b, rbTopDown->isChecked());
    if (!condition) {
        TQXUIServices::Current().ShowMessage(QStringLiteral("Function not implemented for ") +
                                             cbViewBy->currentText());
        return;
    }
    TQXDependentRows window(this);
    for (const QString& row : reader.Rows(*condition))
        window.AddRow(row);
    TQXUIServices::Current().ShowModal(window);
}

void TQXView::ExpandAll1Click(QObject* sender) {
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    if (selection.isEmpty())
        return;
    TQXTreeNode* node = selection.constFirst();
    // The limits hold for this command only.
    FExpandLimits = {};
    struct TResetLimits {
        TQXExpandLimits& Limits;
        ~TResetLimits() { Limits = {}; }
    } reset{FExpandLimits};

    const QString name = sender ? sender->objectName() : QString();
    const TQXItem* item = node->ItemAs<TQXItem>();
    if (item && (name == ExpandWithinObject || name == ExpandWithinPackage)) {
        FExpandLimits.FileID = item->FileID;
        FExpandLimits.ObjectID = item->ObjectID;
        if (name == ExpandWithinPackage && FDataAccess) {
            TQXRecordReader records(*FDataAccess, FTables);
            if (records.Select(qx::Table::QXPACKAGE, where::Keys({{"QXObjectFileID", item->FileID},
                                                                  {"QXObjectID", item->ObjectID}})))
                FExpandLimits.PackageID =
                    records.Int(qx::Table::QXPACKAGE, qx::QXPACKAGE::QXPackageID);
        }
    }
    TQXBusyCursor busy;
    TQXTreeUpdate update(*tvMain);
    const std::unique_ptr<TQXProgress> progress =
        TQXUIServices::Current().StartProgress(this, QStringLiteral("Expand All"));
    TQXSubtreeExpander::Expand(node, *progress);
}

void TQXView::ChangeSelectedItems1Click(QObject*) {
    TQXChangeSelection dialog(this);
    dialog.move(mapToGlobal(QPoint(0, 0)) + QPoint(200, 200));
    TQXUIServices::Current().ShowModal(dialog);
    treeselection::ChangeSelection(*tvMain, dialog.SelectChosen(), dialog.ItemText());
}

void TQXView::CountSelectedItems1Click(QObject*) {
    TQXUIServices::Current().ShowMessage(QString::number(tvMain->SelectionCount()) +
                                         QStringLiteral(" Items is selected"));
}

void TQXView::Copy1Click(QObject*) {
    TQXUIServices::Current().SetClipboardText(treeselection::CopyText(tvMain->Selection()));
}

void TQXView::SelectAll1Click(QObject*) {
    treeselection::SelectAllVisible(*tvMain);
}

void TQXView::ClearSelection1Click(QObject*) {
    tvMain->Select(nullptr);
}

void TQXView::Find1Click(QObject*) {
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    FFindNode = selection.size() == 1 ? selection.constFirst() : nullptr;
    TQXFindRequest initial;
    initial.Down = true;
    TQXUIServices::Current().ShowFind(this, initial, false, [this](const TQXFindRequest& request) {
        FFindText = request.Text;
        FFindMatchCase = request.MatchCase;
        FFindDown = request.Down;
        RunReportingErrors([this] { FindDialog1Find(nullptr); });
    });
}

void TQXView::FindDialog1Find(QObject*) {
    // A node deleted since (by a refresh) is not followed.
    if (!treeselection::Contains(*tvMain, FFindNode))
        FFindNode = nullptr;
    TQXTreeNode* start = tvMain->FirstNode();
    if (FFindNode)
        start = FFindDown ? tvMain->NextVisible(FFindNode) : tvMain->PreviousVisible(FFindNode);
    TQXTreeNode* found =
        treeselection::FindVisible(*tvMain, start, FFindText, FFindMatchCase, FFindDown);
    if (!found) {
        TQXUIServices::Current().ShowMessage(QStringLiteral("Text not found"));
        return;
    }
    tvMain->Select(found);
    tvMain->SetCurrent(found);
    FFindNode = found;
}

void TQXView::Print1Click(QObject*) {
    const QString heading = QStringLiteral("Korvane ") + FDocumentName;
    TQXUIServices& ui = TQXUIServices::Current();
    // The hourglass while the document is drawn, not while the dialog is open.
    ui.Print(this, heading, [this, &heading](TQXPrintCanvas& canvas) {
        TQXBusyCursor busy;
        treeselection::PrintVisible(*tvMain, heading, canvas);
    });
}

void TQXView::OnMouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                          const QPoint& point) {
    if (button != Qt::LeftButton || (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)))
        return; // the tree's own multi-select handles it
    tvMain->Select(tvMain->NodeAtPoint(point));
}
