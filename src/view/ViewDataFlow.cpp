// The view's data flows: the lookup kept in FDataFlows, the language
// definitions it needs, and the root variables of the Data view.
#include "host/BaseFunctionsInterface.h"
#include "host/FormInterface.h"
#include "host/Items.h"
#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "platform/TreeUpdate.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"
#include "view/DataFlowLookup.h"
#include "view/RootVariable.h"
#include "view/View.h"

#include <QComboBox>
#include <QRadioButton>

namespace {
const QString ShowDataFlowCommand = QStringLiteral("Show Data Flow");

// A variable as items handed to a window: its declaration, text and picture.
TQXItems ItemsOf(const TQXRootVariable& variable) {
    const TQXDataItem& item = *variable.Item;
    TQXItems items;
    items.AddItem(item.FileID, 0, 0, 0, 0, item.ObjectID, item.EntryID, item.RowID, item.WordID);
    items.AddText(variable.Text);
    items.AddIcon(variable.Image);
    items.AddDataItem(variable.Item);
    return items;
}
} // namespace

bool TQXView::GetDataFlow(const TQXDataItem& item, int direction, bool checkOnly) {
    return TQXDataFlowLookup(*DataAccess(), FTables, *BaseFunctions(), FLanguageDefinition,
                             FReadPath)
        .GetDataFlow(item, direction, checkOnly, FDataFlows);
}

std::optional<int> TQXView::LanguageScope(qint32 languageID) {
    if (!TQXDataFlowLookup::UseLanguageDefinition(*BaseFunctions(), FLanguageDefinition,
                                                  languageID))
        return std::nullopt;
    return FLanguageDefinition->Scope();
}

void TQXView::ShowDataFlow1Click(QObject*) {
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    if (selection.size() != 1 || FDataAccess == nullptr)
        return;
    TQXRecordReader records(*FDataAccess, FTables);
    const std::optional<TQXRootVariable> variable =
        TQXRootVariableFinder(records).OfNode(*selection.constFirst());
    if (!variable) {
        TQXUIServices::Current().ShowMessage(
            QStringLiteral("The selected node is not a variable whose declaration is loaded"));
        return;
    }
    QString error;
    FBaseFunctions->SendItemsToWindow(QStringLiteral("View"), 0, FConnectionName,
                                      ItemsOf(*variable), ShowDataFlowCommand, error);
    if (!error.isEmpty())
        throw EQXError(error);
}

void TQXView::ReceiveItems(const TQXItems& items, const QString& command, QString& errorText) {
    errorText.clear();
    if (command != ShowDataFlowCommand) {
        TQXFormInterface::ReceiveItems(items, command, errorText);
        return;
    }
    try {
        ShowVariables(items);
    } catch (const std::exception& e) {
        errorText = ExceptionMessage(e);
    }
}

void TQXView::ShowVariables(const TQXItems& items) {
    std::vector<TQXRootVariable> roots;
    for (int i = 0; i < items.Count(); ++i)
        if (const TQXItems::Entry& entry = items.At(i); entry.Data)
            roots.push_back({entry.Data, entry.Text, entry.Icon});
    if (roots.empty())
        throw EQXError(QStringLiteral("No variable was handed to the view"));
    // The controls as a user would set them; their change clears the tree.
    rbDependencies->setChecked(true);
    rbTopDown->setChecked(true);
    cbViewBy->setCurrentIndex(cbViewBy->findText(level::Name(TQXLevel::Data)));
    ViewTypeChanged(nullptr);
    AddRootVariables(roots);
}

QString TQXView::ShowVariableNamed(const QString& objectName, const QString& variableName) {
    if (FDataAccess == nullptr)
        throw EQXError(QStringLiteral("No Source Database connected"));
    TQXRecordReader records(*FDataAccess, FTables);
    QString missing;
    const std::optional<TQXRootVariable> variable =
        TQXRootVariableFinder(records).Named(objectName, variableName, missing);
    if (variable)
        ShowVariables(ItemsOf(*variable));
    return missing;
}

std::vector<TQXRootVariable> TQXView::RootVariables() const {
    std::vector<TQXRootVariable> roots;
    for (int i = 0; i < tvMain->RootCount(); ++i) {
        const TQXTreeNode* node = tvMain->Root(i);
        if (const auto* item = node->ItemAs<TQXDataItem>())
            roots.push_back(
                {std::make_shared<const TQXDataItem>(*item), node->Text(), node->ImageIndex()});
    }
    return roots;
}

void TQXView::AddRootVariables(const std::vector<TQXRootVariable>& roots) {
    TQXTreeUpdate update(*tvMain);
    tvMain->Clear();
    tvMain->SetPopupMenu(pmnuView);
    for (const TQXRootVariable& root : roots)
        TQXTreeControl::AddPlaceholder(
            tvMain->AddRoot(root.Text, std::make_unique<TQXDataItem>(*root.Item), root.Image));
}
