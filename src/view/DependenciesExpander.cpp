#include "view/DependenciesExpander.h"

#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "repository/ImageIndexes.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "view/DependenciesCallChildren.h"
#include "view/Recursion.h"
#include "view/ViewOperations.h"

#include <memory>
#include <utility>

namespace {
using qx::Table;
namespace F = qx::QXFILE;
namespace A = qx::QXATTRIBUTE;
namespace P = qx::QXPACKAGE;
namespace R = qx::QXROW;

// File and object of either kind of item; the expansion limits test them.
std::pair<qint32, qint32> FileAndObject(const TQXTreeNode& node) {
    if (const auto* data = node.ItemAs<TQXDataItem>())
        return {data->FileID, data->ObjectID};
    const auto* chain = node.ItemAs<TQXItem>();
    return {chain->FileID, chain->ObjectID};
}
} // namespace

TQXDependenciesExpander::TQXDependenciesExpander(TQXExpansionContext& context)
    : FContext(context), FSettings(context.Settings),
      FDirection(context.Settings.DirectionNumber()) {}

void TQXDependenciesExpander::Expand(TQXTreeNode* node) {
    if (node == nullptr || node->Item() == nullptr)
        return;
    if (RefusedByLimits(node)) {
        node->SetExpanded(false); // keeps its placeholder for later
        return;
    }
    if (!TQXTreeControl::TakePlaceholder(node))
        return; // nothing to show, or expanded before

    const TQXLevel level = FSettings.Level;
    const TQXItem* item = node->ItemAs<TQXItem>();
    if (level == TQXLevel::Data || item == nullptr)
        return; // data flows are not listed yet

    const Roles roles = RolesOf(node);
    TDependencies calls;
    if (roles.Entries) {
        FContext.View.GetDependencies(*item, FSettings.Direction, false);
        // Copied: the placeholder tests below refill the view's list.
        calls = FContext.View.Dependencies();
    }

    if (level::IsAttribute(level)) {
        AddAttributes(node, calls);
    } else if (level == TQXLevel::Package) {
        AddPackages(node, calls);
    } else {
        const auto kind = level == TQXLevel::Object ? TQXDependenciesCallChildren::Kind::Objects
                                                    : TQXDependenciesCallChildren::Kind::Entries;
        if (roles.Entries)
            TQXDependenciesCallChildren(FContext, kind, roles.N).Add(node, calls);
        if (roles.Lines)
            AddLines(node, *item, roles.N);
    }
    Finish(node, roles);
}

bool TQXDependenciesExpander::RefusedByLimits(const TQXTreeNode* node) {
    const TQXExpandLimits& limits = FContext.Limits;
    if (!limits.Any())
        return false;
    const auto [fileID, objectID] = FileAndObject(*node);
    if (limits.PackageID > 0) {
        if (!FContext.Records.Select(Table::QXPACKAGE, where::Keys({{"QXObjectFileID", fileID},
                                                                    {"QXObjectID", objectID}})))
            return true;
        return FContext.Records.Int(Table::QXPACKAGE, P::QXPackageID) != limits.PackageID;
    }
    return fileID != limits.FileID || objectID != limits.ObjectID;
}

// In the Code view TopDown, nodes at even depths list their lines and nodes
// at odd depths (lines) the entries they call; BottomUp every node (an
// entry) lists both. N alternates between levels of the same kind.
TQXDependenciesExpander::Roles TQXDependenciesExpander::RolesOf(const TQXTreeNode* node) const {
    if (FSettings.Level != TQXLevel::Code)
        return Roles{};
    const int depth = node->Level();
    if (!FSettings.IsTopDown())
        return Roles{true, true, depth % 2 == 0 ? 2 : 1};
    if (depth % 2 == 0)
        return Roles{false, true, depth % 4 == 0 ? 2 : 1};
    return Roles{true, false, (depth + 1) % 4 == 0 ? 1 : 2};
}

// Systems, computers or applications of the called (or calling) files.
void TQXDependenciesExpander::AddAttributes(TQXTreeNode* node, const TDependencies& calls) {
    const bool system = FSettings.Level == TQXLevel::System;
    const bool computer = FSettings.Level == TQXLevel::Computer;
    const int column = system ? F::QXSystemID : computer ? F::QXComputerID : F::QXApplicationID;
    auto idOf = [&](const TQXItem& item) {
        return system ? item.SystemID : computer ? item.ComputerID : item.ApplicationID;
    };
    TQXRecordReader& records = FContext.Records;
    for (const TDependency& call : calls) {
        if (!records.Select(Table::QXFILE, where::Keys({{"QXFileID", call.FileID}})))
            continue;
        const qint32 id = records.Int(Table::QXFILE, column);
        if (dependencies::IsListed(node, [&](const TQXItem& item) { return idOf(item) == id; }))
            continue;
        if (!records.Select(Table::QXATTRIBUTE, where::Keys({{"QXAttributeID", id}})))
            continue;
        auto item = system     ? TQXItem::ForSystem(id)
                    : computer ? TQXItem::ForComputer(id)
                               : TQXItem::ForApplication(id);
        FContext.Tree.AddChild(node, records.Text(Table::QXATTRIBUTE, A::QXAttributeName),
                               std::move(item), records.Int(Table::QXATTRIBUTE, A::QXIcon));
    }
}

// A call into a package file names the package; any other call names an
// object, whose packages are found through the object's name.
void TQXDependenciesExpander::AddPackages(TQXTreeNode* node, const TDependencies& calls) {
    TQXRecordReader& records = FContext.Records;
    for (const TDependency& call : calls) {
        if (call.PackageFileID > 0) {
            if (dependencies::IsListed(
                    node, [&](const TQXItem& item) { return item.FileID == call.PackageFileID; }))
                continue;
            if (records.Select(Table::QXPACKAGE, where::Keys({{"QXFileID", call.PackageFileID}})))
                AddPackageOfCurrentRecord(node);
            continue;
        }
        if (!records.Select(Table::QXOBJECT, where::Keys({{"QXFileID", call.FileID},
                                                          {"QXObjectID", call.ObjectID}})))
            continue;
        const QString name = records.Text(Table::QXOBJECT, qx::QXOBJECT::QXObjectName);
        if (!records.Select(Table::QXPACKAGE, where::TextEquals("QXObjectName", name)))
            continue;
        do {
            const qint32 packageID = records.Int(Table::QXPACKAGE, P::QXPackageID);
            if (!dependencies::IsListed(
                    node, [&](const TQXItem& item) { return item.PackageID == packageID; }))
                AddPackageOfCurrentRecord(node);
        } while (records.Next(Table::QXPACKAGE));
    }
}

void TQXDependenciesExpander::AddPackageOfCurrentRecord(TQXTreeNode* node) {
    TQXRecordReader& records = FContext.Records;
    auto item = TQXItem::ForPackage(records.Int(Table::QXPACKAGE, P::QXFileID),
                                    records.Int(Table::QXPACKAGE, P::QXPackageID));
    FContext.Tree.AddChild(node, records.Text(Table::QXPACKAGE, P::QXPackageName), std::move(item),
                           image::ImagePackageTopDown + FDirection);
}

// The lines of code of the node's entry, in record order. TopDown marks the
// lines that make a call; BottomUp the line that calls the entry the node
// was reached from.
void TQXDependenciesExpander::AddLines(TQXTreeNode* node, const TQXItem& item, int levelN) {
    TQXRecordReader& records = FContext.Records;
    if (!records.Select(Table::QXROW, where::Keys({{"QXFileID", item.FileID},
                                                   {"QXObjectID", item.ObjectID},
                                                   {"QXEntryID", item.EntryID}})))
        return;
    const TQXTreeNode* parent = node->ParentNode();
    const TQXItem* calledEntry = parent != nullptr ? parent->ItemAs<TQXItem>() : nullptr;
    const int depth = node->Level();
    do {
        auto line = TQXItem::ForRow(
            records.Int(Table::QXROW, R::QXFileID), records.Int(Table::QXROW, R::QXObjectID),
            records.Int(Table::QXROW, R::QXEntryID), records.Int(Table::QXROW, R::QXRowID));
        const QString text = records.Text(Table::QXROW, R::QXRow);
        int imageIndex = image::ImageRow;
        if (FSettings.IsTopDown()) {
            if (records.Int(Table::QXROW, R::QXCall) != 0)
                imageIndex = image::ImageLineWithCall + levelN;
        } else if (calledEntry != nullptr && MakesCallInto(*calledEntry, *line)) {
            imageIndex = image::ImageLineCallingParent + depth % 2;
        }
        FContext.Tree.AddChild(node, text, std::move(line), imageIndex);
    } while (records.Next(Table::QXROW));
}

bool TQXDependenciesExpander::MakesCallInto(const TQXItem& entry, const TQXItem& line) {
    return FContext.Records.Select(Table::QXDEPENDENCIES,
                                   where::Keys({{"QXFileID", entry.FileID},
                                                {"QXObjectID", entry.ObjectID},
                                                {"QXEntryID", entry.EntryID},
                                                {"QXFromFileID", line.FileID},
                                                {"QXFromObjectID", line.ObjectID},
                                                {"QXFromEntryID", line.EntryID},
                                                {"QXFromRowID", line.RowID}}));
}

// Marks recursion and gives each new child a placeholder when it has
// something to show, then sorts the grouping levels.
void TQXDependenciesExpander::Finish(TQXTreeNode* node, const Roles& roles) {
    const bool code = FSettings.Level == TQXLevel::Code;
    const TQXPathItems path(node);
    for (int i = node->ChildCount() - 1; i >= 0; --i) {
        TQXTreeNode* child = node->Child(i);
        const TQXItem* item = child->ItemAs<TQXItem>();
        if (item == nullptr || path.CheckRecursion(child))
            continue;
        bool expandable = false;
        if (code && FSettings.IsTopDown() && roles.Entries)
            expandable = true; // a called entry always has its lines
        else if (code && !FSettings.IsTopDown())
            expandable = item->RowID == 0; // entries; lines of code are leaves
        else
            expandable = FContext.View.GetDependencies(*item, FSettings.Direction, true);
        if (expandable)
            FContext.Tree.AddPlaceholder(child);
    }
    if (level::IsAttribute(FSettings.Level) || FSettings.Level == TQXLevel::Package)
        FContext.Tree.SortChildren(node);
}
