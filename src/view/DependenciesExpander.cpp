#include "view/DependenciesExpander.h"

#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "repository/ImageIndexes.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "view/CallLookup.h"
#include "view/DataFlowExpander.h"
#include "view/DependenciesCallChildren.h"
#include "view/Recursion.h"
#include "view/ViewOperations.h"

#include <QSet>

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
    if (level == TQXLevel::Data) {
        TQXDataFlowExpander(FContext).Expand(node);
        return;
    }
    const TQXItem* item = node->ItemAs<TQXItem>();
    if (item == nullptr)
        return;

    const Roles roles = RolesOf(node);
    if (level::IsAttribute(level) && FContext.Path == TQXReadPath::SetBased &&
        AddAttributesAtOnce(node, *item)) {
        Finish(node, roles);
        return;
    }
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

// The column's value in the first record of each of these files; none for
// a file missing from QXFILE. A few hundred files per statement.
std::unordered_map<qint32, std::optional<qint32>>
TQXDependenciesExpander::FileColumns(const TDependencies& calls, int column) {
    std::unordered_map<qint32, std::optional<qint32>> values;
    QList<qint32> files;
    QSet<qint32> seen;
    for (const TDependency& call : calls)
        if (!seen.contains(call.FileID)) {
            seen.insert(call.FileID);
            files << call.FileID;
        }
    TQXRecordReader& records = FContext.Records;
    constexpr qsizetype IdsPerStatement = 500;
    for (qsizetype i = 0; i < files.size(); i += IdsPerStatement) {
        const QList<qint32> chunk = files.mid(i, IdsPerStatement);
        if (records.Select(Table::QXFILE, where::In("QXFileID", chunk, QStringLiteral(", "))))
            do // record order: a file's first record comes first
                values.try_emplace(records.Int(Table::QXFILE, F::QXFileID),
                                   records.Int(Table::QXFILE, column));
            while (records.Next(Table::QXFILE));
        for (qint32 fileID : chunk)
            values.try_emplace(fileID, std::nullopt);
    }
    return values;
}

// The attributes AddAttributes would list, read in one statement: those of
// the files at the other end of calls that leave the item's grouping. The
// order of the calls does not matter where the names differ, as the
// children are sorted by name. Where two names are equal, a file has more
// than one record or a grouping column is not a whole number (cases that
// AddAttributes settles record by record), nothing is added and the answer
// is false.
bool TQXDependenciesExpander::AddAttributesAtOnce(TQXTreeNode* node, const TQXItem& item) {
    const bool system = FSettings.Level == TQXLevel::System;
    const bool computer = FSettings.Level == TQXLevel::Computer;
    const QString column = system     ? QStringLiteral("t.QXSystemID")
                           : computer ? QStringLiteral("t.QXComputerID")
                                      : QStringLiteral("t.QXApplicationID");
    const QString grouping = TQXCallLookup::GroupingFiles(item, QStringLiteral("s"));
    if (grouping.isEmpty())
        return false;
    const bool topDown = FSettings.IsTopDown();
    const QString own = topDown ? QStringLiteral("d.QXFromFileID") : QStringLiteral("d.QXFileID");
    const QString other = topDown ? QStringLiteral("d.QXFileID") : QStringLiteral("d.QXFromFileID");
    const QString nulls = QStringLiteral(
        "MAX(CASE WHEN t.QXSystemID IS NULL OR t.QXComputerID IS NULL OR t.QXApplicationID IS "
        "NULL THEN 1 ELSE 0 END)");
    TQXDataAccessInterface& access = FContext.Records.Access();
    std::unique_ptr<TQXDataSet> query = access.OpenQuery(
        nullptr,
        {QStringLiteral("SELECT ") + column + QStringLiteral(", ") + nulls +
             QStringLiteral(", MAX((SELECT COUNT(*) FROM QXFILE u WHERE u.QXFileID = "
                            "t.QXFileID)) FROM QXFILE s JOIN QXDEPENDENCIES d ON ") +
             own + QStringLiteral(" = s.QXFileID JOIN QXFILE t ON t.QXFileID = ") + other,
         QStringLiteral(" WHERE ") + grouping + QStringLiteral(" AND ") +
             TQXCallLookup::LeavesGrouping(item, QStringLiteral("t")),
         QStringLiteral(" GROUP BY ") + column},
        0);
    QList<qint32> ids;
    bool plain = true;
    for (bool more = !query->Eof(); more && plain; more = access.NextRecord(query.get())) {
        const QVariant id = query->FieldValue(0);
        plain = (id.typeId() == QMetaType::LongLong || id.typeId() == QMetaType::Int) &&
                query->FieldValue(1).toInt() == 0 && query->FieldValue(2).toInt() == 1;
        ids << id.toInt();
    }
    query->Close();
    if (!plain)
        return false;
    // Each attribute from its first record, as AddAttributes reads it.
    struct Child {
        qint32 id;
        QString name;
        int icon;
    };
    std::vector<Child> children;
    QSet<QString> names;
    TQXRecordReader& records = FContext.Records;
    for (qint32 id : ids) {
        if (!records.Select(Table::QXATTRIBUTE, where::Keys({{"QXAttributeID", id}})))
            continue;
        const QString name = records.Text(Table::QXATTRIBUTE, A::QXAttributeName);
        if (names.contains(name))
            return false;
        names.insert(name);
        children.push_back({id, name, records.Int(Table::QXATTRIBUTE, A::QXIcon)});
    }
    for (const Child& child : children)
        FContext.Tree.AddChild(node, child.name,
                               system     ? TQXItem::ForSystem(child.id)
                               : computer ? TQXItem::ForComputer(child.id)
                                          : TQXItem::ForApplication(child.id),
                               child.icon);
    return true;
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
    // The set-based path reads the files of all calls at once.
    const bool setBased = FContext.Path == TQXReadPath::SetBased;
    const auto fileColumns =
        setBased ? FileColumns(calls, column) : std::unordered_map<qint32, std::optional<qint32>>();
    QSet<qint32> listed;
    for (const TDependency& call : calls) {
        std::optional<qint32> found;
        if (setBased)
            found = fileColumns.at(call.FileID);
        else if (records.Select(Table::QXFILE, where::Keys({{"QXFileID", call.FileID}})))
            found = records.Int(Table::QXFILE, column);
        if (!found)
            continue;
        const qint32 id = *found;
        if (setBased ? listed.contains(id) : dependencies::IsListed(node, [&](const TQXItem& item) {
                return idOf(item) == id;
            }))
            continue;
        if (!records.Select(Table::QXATTRIBUTE, where::Keys({{"QXAttributeID", id}})))
            continue;
        listed.insert(id);
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
    if (!code) {
        std::vector<const TQXItem*> items;
        for (int i = 0; i < node->ChildCount(); ++i)
            items.push_back(node->Child(i)->ItemAs<TQXItem>());
        FContext.View.PrepareHasDependencies(items, FSettings.Direction);
    }
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
            expandable = FContext.View.HasDependencies(*item, FSettings.Direction);
        if (expandable)
            FContext.Tree.AddPlaceholder(child);
    }
    if (level::IsAttribute(FSettings.Level) || FSettings.Level == TQXLevel::Package)
        FContext.Tree.SortChildren(node);
}
