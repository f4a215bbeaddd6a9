#include "view/DataFlowExpander.h"

#include "host/LanguageDefinition.h"
#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "repository/ImageIndexes.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "view/RootVariable.h"
#include "view/ViewOperations.h"

#include <memory>

namespace {
using qx::Table;
namespace O = qx::QXOBJECT;

// The same variable looked up in another scope.
std::unique_ptr<TQXDataItem> InScope(const TQXDataItem& v, qint32 fileID, qint32 objectID,
                                     qint32 entryID) {
    return std::make_unique<TQXDataItem>(v.DataText1, v.DataText2, fileID, objectID, entryID,
                                         v.FileID, v.ObjectID, v.EntryID, v.RowID, v.WordID,
                                         v.LanguageID);
}

// The variable at the other end of a flow, as the lookup found its declaration.
std::unique_ptr<TQXDataItem> FromFlow(const TDataFlow& v) {
    return std::make_unique<TQXDataItem>(v.VariableName, v.ParentName, v.OwnerFileID,
                                         v.OwnerObjectID, v.OwnerEntryID, v.FileID, v.ObjectID,
                                         v.EntryID, v.RowID, v.WordID, v.LanguageID);
}
} // namespace

TQXDataFlowExpander::TQXDataFlowExpander(TQXExpansionContext& context)
    : FContext(context), FTopDown(context.Settings.IsTopDown()) {}

void TQXDataFlowExpander::Expand(TQXTreeNode* node) {
    const TQXDataItem* variable = node->ItemAs<TQXDataItem>();
    if (variable == nullptr)
        return;
    const int firstNew = node->ChildCount();
    if (node->ParentNode() == nullptr)
        AddScopes(node, *variable);
    else
        AddFlows(node);
    Finish(node, firstNew);
}

// The scopes of a root variable: the callers of its declaring object that
// the language lets see it, sorted, after the declaring scope when the
// variable takes part in a flow there.
void TQXDataFlowExpander::AddScopes(TQXTreeNode* node, const TQXDataItem& variable) {
    TQXViewOperations& view = FContext.View;
    const std::optional<int> scope = view.LanguageScope(variable.LanguageID);
    if (!scope)
        return; // the view said why
    view.GetDependencies(*TQXItem::ForObject(variable.FileID, variable.ObjectID),
                         TQXDirection::BottomUp, false);
    const TDependencies callers = view.Dependencies();
    TQXRecordReader& records = FContext.Records;
    for (const TDependency& caller : callers) {
        bool inScope = false;
        if (*scope == TQXLanguageDefinition::ScopeObject)
            inScope = caller.FileID != variable.FileID || caller.ObjectID != variable.ObjectID;
        else if (*scope == TQXLanguageDefinition::ScopeFile)
            inScope = caller.FileID != variable.FileID;
        if (!inScope)
            continue;
        bool listed = false;
        for (int i = 0; i < node->ChildCount() && !listed; ++i) {
            const auto* other = node->Child(i)->ItemAs<TQXDataItem>();
            listed = other != nullptr && other->OwnerFileID == caller.FileID &&
                     other->OwnerObjectID == caller.ObjectID;
        }
        if (listed ||
            !records.Select(Table::QXOBJECT, where::FileObjectKeys(caller.FileID, caller.ObjectID)))
            continue;
        FContext.Tree.AddChild(
            node, QStringLiteral("As used in ") + records.Text(Table::QXOBJECT, O::QXObjectName),
            InScope(variable, records.Int(Table::QXOBJECT, O::QXFileID),
                    records.Int(Table::QXOBJECT, O::QXObjectID), 0),
            node->ImageIndex());
    }
    FContext.Tree.SortChildren(node);
    if (view.GetDataFlow(variable, FContext.Settings.Direction, true))
        FContext.Tree.InsertChild(
            node, 0, QStringLiteral("As used in Declaration Scope"),
            InScope(variable, variable.OwnerFileID, variable.OwnerObjectID, variable.OwnerEntryID),
            image::ImageDeclarationScope + (FTopDown ? 0 : 1));
}

// The variables the node's value flows to or comes from, each followed by
// the lines of its flows; then the lines whose other variable was not found.
void TQXDataFlowExpander::AddFlows(TQXTreeNode* node) {
    TQXViewOperations& view = FContext.View;
    view.GetDataFlow(*node->ItemAs<TQXDataItem>(), FContext.Settings.Direction, false);
    // Copied: the placeholder tests of the finishing pass refill the view's list.
    const TDataFlows flows = view.DataFlows();
    for (const TDataFlow& v : flows) {
        if (v.IsRow)
            continue;
        if (v.FileID <= 0) {
            FContext.Tree.AddChild(node, QStringLiteral(" [called source not loaded]"));
            continue;
        }
        const bool persistent = image::IsPersistentStorage(v.Icon);
        const int picture =
            FTopDown ? (persistent ? image::ImagePersistentFlowTarget : image::ImageFlowTarget)
                     : (persistent ? image::ImagePersistentFlowSource : image::ImageFlowSource);
        FContext.Tree.AddChild(node, VariableText(v.VariableName, v.Text, v.ParentName),
                               FromFlow(v), picture);
        if (!FTopDown)
            node->SetImageIndex(node->ImageIndex() == image::ImagePersistentVariable
                                    ? image::ImagePersistentVariableWithSources
                                    : image::ImageVariableWithSources);
        AddLines(node, flows, v.Group);
    }
    for (const TDataFlow& line : flows)
        if (line.IsRow && line.Group == -1) {
            FContext.Tree.AddChild(node, QStringLiteral("--- Other rows of interest ---"));
            AddLines(node, flows, -1);
            break;
        }
}

void TQXDataFlowExpander::AddLines(TQXTreeNode* node, const TDataFlows& flows, qint32 group) {
    for (const TDataFlow& line : flows)
        if (line.IsRow && line.Group == group)
            FContext.Tree.AddChild(
                node, line.Text,
                TQXItem::ForRow(line.FileID, line.ObjectID, line.EntryID, line.RowID),
                image::ImageRow);
}

// Placeholders for the new children, from the last to the first: under a
// root, a scope without a flow of the variable goes; deeper, a variable not
// yet on its path can be opened. Lines carry no variable: the track test
// refuses them and they stay leaves.
void TQXDataFlowExpander::Finish(TQXTreeNode* node, int firstNew) {
    TQXViewOperations& view = FContext.View;
    const bool root = node->ParentNode() == nullptr;
    for (int i = node->ChildCount() - 1; i >= firstNew; --i) {
        TQXTreeNode* child = node->Child(i);
        if (child->Item() == nullptr)
            continue;
        if (root) {
            if (view.GetDataFlow(*child->ItemAs<TQXDataItem>(), FContext.Settings.Direction, true))
                FContext.Tree.AddPlaceholder(child);
            else
                delete child; // its parent lets go of it
            continue;
        }
        try {
            if (!view.DataItemExistsInTrack(child))
                FContext.Tree.AddPlaceholder(child);
        } catch (const std::exception&) {
            // A node the test cannot judge stays a leaf.
        }
    }
}
