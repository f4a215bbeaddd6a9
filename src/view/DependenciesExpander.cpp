#include "view/DependenciesExpander.h"

#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "view/DependenciesCallChildren.h"
#include "view/ImageIndexes.h"
#include "view/Recursion.h"

#include <memory>
#include <utility>

namespace {
using qx::Table;
namespace F = qx::QXFILE;
namespace A = qx::QXATTRIBUTE;
namespace P = qx::QXPACKAGE;
namespace R = qx::QXROW;

constexpr int ImageLineWithCall = 23;      // + N, Code view TopDown
constexpr int ImageLineCallingParent = 27; // + the depth's parity, Code view BottomUp

const TQXItem* ItemOf(const TQXTreeNode* node) {
    return dynamic_cast<const TQXItem*>(node->Item());
}

// File and object of either kind of item; the expansion limits test them.
std::pair<qint32, qint32> FileAndObject(const TQXTreeItem& item) {
    if (const auto* data = dynamic_cast<const TQXDataItem*>(&item))
        return {data->FileID, data->ObjectID};
    const auto& chain = static_cast<const TQXItem&>(item);
    return {chain.FileID, chain.ObjectID};
}
} // namespace

TQXDependenciesExpander::TQXDependenciesExpander(TQXExpansionContext& context)
    : FContext(context) {}

void TQXDependenciesExpander::Expand(TQXTreeNode* node, int direction) {
    if (node == nullptr || node->Item() == nullptr)
        return;
    if (RefusedByLimits(node)) {
        node->SetExpanded(false); // keeps its placeholder for later
        return;
    }
    if (node->ChildCount() == 0 || node->FirstChild()->Item() != nullptr)
        return; // nothing to show, or expanded before
    const std::unique_ptr<QTreeWidgetItem> placeholder(node->takeChild(0)); // freed on return

    const QString& level = FContext.Level;
    const TQXItem* item = ItemOf(node);
    if (level == QLatin1String("Data") || item == nullptr)
        return; // data flows are not listed yet

    const Roles roles = RolesOf(node, direction);
    TDependencies calls;
    if (roles.Entries) {
        FContext.GetDependencies(*item, direction, false);
        // Copied: the placeholder tests below refill the view's list.
        calls = FContext.Dependencies;
    }

    if (level == QLatin1String("System") || level == QLatin1String("Computer") ||
        level == QLatin1String("Application")) {
        AddAttributes(node, calls);
    } else if (level == QLatin1String("Package")) {
        AddPackages(node, calls, direction);
    } else if (level == QLatin1String("Object") || level == QLatin1String("Entry") ||
               level == QLatin1String("Code")) {
        const auto kind = level == QLatin1String("Object")
                              ? TQXDependenciesCallChildren::Kind::Objects
                              : TQXDependenciesCallChildren::Kind::Entries;
        if (roles.Entries)
            TQXDependenciesCallChildren(FContext, kind, direction, roles.N).Add(node, calls);
        if (roles.Lines)
            AddLines(node, *item, direction, roles.N);
    }
    Finish(node, direction, roles);
}

bool TQXDependenciesExpander::RefusedByLimits(const TQXTreeNode* node) {
    if (FContext.ExpandFileID <= 0 && FContext.ExpandPackageID <= 0 && FContext.ExpandObjectID <= 0)
        return false;
    const auto [fileID, objectID] = FileAndObject(*node->Item());
    if (FContext.ExpandPackageID > 0) {
        if (!FContext.Records.Select(Table::QXPACKAGE, where::Keys({{"QXObjectFileID", fileID},
                                                                    {"QXObjectID", objectID}})))
            return true;
        return FContext.Records.Int(Table::QXPACKAGE, P::QXPackageID) != FContext.ExpandPackageID;
    }
    return fileID != FContext.ExpandFileID || objectID != FContext.ExpandObjectID;
}

// In the Code view TopDown, nodes at even depths list their lines and nodes
// at odd depths (lines) the entries they call; BottomUp every node (an
// entry) lists both. N alternates between levels of the same kind.
TQXDependenciesExpander::Roles TQXDependenciesExpander::RolesOf(const TQXTreeNode* node,
                                                                int direction) const {
    if (FContext.Level != QLatin1String("Code"))
        return Roles{};
    const int depth = node->Level();
    if (direction != 0)
        return Roles{true, true, depth % 2 == 0 ? 2 : 1};
    if (depth % 2 == 0)
        return Roles{false, true, depth % 4 == 0 ? 2 : 1};
    return Roles{true, false, (depth + 1) % 4 == 0 ? 1 : 2};
}

// Systems, computers or applications of the called (or calling) files.
void TQXDependenciesExpander::AddAttributes(TQXTreeNode* node, const TDependencies& calls) {
    const QString& level = FContext.Level;
    const bool system = level == QLatin1String("System");
    const bool computer = level == QLatin1String("Computer");
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
        auto item = std::make_unique<TQXItem>(0, system ? id : 0, computer ? id : 0,
                                              system || computer ? 0 : id, 0, 0, 0, 0, 0);
        FContext.Tree.AddChild(node, records.Text(Table::QXATTRIBUTE, A::QXAttributeName),
                               std::move(item), records.Int(Table::QXATTRIBUTE, A::QXIcon));
    }
}

// A call into a package file names the package; any other call names an
// object, whose packages are found through the object's name.
void TQXDependenciesExpander::AddPackages(TQXTreeNode* node, const TDependencies& calls,
                                          int direction) {
    TQXRecordReader& records = FContext.Records;
    for (const TDependency& call : calls) {
        if (call.PackageFileID > 0) {
            if (dependencies::IsListed(
                    node, [&](const TQXItem& item) { return item.FileID == call.PackageFileID; }))
                continue;
            if (records.Select(Table::QXPACKAGE, where::Keys({{"QXFileID", call.PackageFileID}})))
                AddPackageOfCurrentRecord(node, direction);
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
                AddPackageOfCurrentRecord(node, direction);
        } while (records.Next(Table::QXPACKAGE));
    }
}

void TQXDependenciesExpander::AddPackageOfCurrentRecord(TQXTreeNode* node, int direction) {
    TQXRecordReader& records = FContext.Records;
    auto item =
        std::make_unique<TQXItem>(records.Int(Table::QXPACKAGE, P::QXFileID), 0, 0, 0,
                                  records.Int(Table::QXPACKAGE, P::QXPackageID), 0, 0, 0, 0);
    FContext.Tree.AddChild(node, records.Text(Table::QXPACKAGE, P::QXPackageName), std::move(item),
                           direction == 0 ? image::ImagePackageTopDown
                                          : image::ImagePackageBottomUp);
}

// The lines of code of the node's entry, in record order. TopDown marks the
// lines that make a call; BottomUp the line that calls the entry the node
// was reached from.
void TQXDependenciesExpander::AddLines(TQXTreeNode* node, const TQXItem& item, int direction,
                                       int levelN) {
    TQXRecordReader& records = FContext.Records;
    if (!records.Select(Table::QXROW, where::Keys({{"QXFileID", item.FileID},
                                                   {"QXObjectID", item.ObjectID},
                                                   {"QXEntryID", item.EntryID}})))
        return;
    const TQXTreeNode* parent = node->ParentNode();
    const TQXItem* calledEntry = parent != nullptr ? ItemOf(parent) : nullptr;
    const int depth = node->Level();
    do {
        auto line = std::make_unique<TQXItem>(records.Int(Table::QXROW, R::QXFileID), 0, 0, 0, 0,
                                              records.Int(Table::QXROW, R::QXObjectID),
                                              records.Int(Table::QXROW, R::QXEntryID),
                                              records.Int(Table::QXROW, R::QXRowID), 0);
        const QString text = records.Text(Table::QXROW, R::QXRow);
        int imageIndex = image::ImageRow;
        if (direction == 0) {
            if (records.Int(Table::QXROW, R::QXCall) != 0)
                imageIndex = ImageLineWithCall + levelN;
        } else if (calledEntry != nullptr && MakesCallInto(*calledEntry, *line)) {
            imageIndex = ImageLineCallingParent + depth % 2;
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
void TQXDependenciesExpander::Finish(TQXTreeNode* node, int direction, const Roles& roles) {
    const bool code = FContext.Level == QLatin1String("Code");
    for (int i = node->ChildCount() - 1; i >= 0; --i) {
        TQXTreeNode* child = node->Child(i);
        const TQXItem* item = ItemOf(child);
        if (item == nullptr || CheckRecursion(child))
            continue;
        bool expandable = false;
        if (code && direction == 0 && roles.Entries)
            expandable = true; // a called entry always has its lines
        else if (code && direction != 0)
            expandable = item->RowID == 0; // entries; lines of code are leaves
        else
            expandable = FContext.GetDependencies(*item, direction, true);
        if (expandable)
            FContext.Tree.AddPlaceholder(child);
    }
    const QString& level = FContext.Level;
    if (level == QLatin1String("System") || level == QLatin1String("Computer") ||
        level == QLatin1String("Application") || level == QLatin1String("Package"))
        FContext.Tree.SortChildren(node);
}
