#include "view/DependenciesCallChildren.h"

#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "repository/ImageIndexes.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"

#include <vector>

namespace {
using qx::Table;
namespace F = qx::QXFILE;
namespace O = qx::QXOBJECT;
namespace E = qx::QXENTRY;

} // namespace

bool dependencies::IsListed(const TQXTreeNode* node,
                            const std::function<bool(const TQXItem&)>& same, bool indentedOnly) {
    for (int i = node->ChildCount() - 1; i >= 0; --i) {
        const TQXTreeNode* child = node->Child(i);
        const TQXItem* item = child->ItemAs<TQXItem>();
        if (item == nullptr || (indentedOnly && !child->Text().startsWith(Indent)))
            continue;
        if (same(*item))
            return true;
    }
    return false;
}

TQXDependenciesCallChildren::TQXDependenciesCallChildren(TQXExpansionContext& context, Kind kind,
                                                         int levelN)
    : FContext(context), FRecords(context.Records), FKind(kind), FOption(context.Settings.Option),
      FDirection(context.Settings.DirectionNumber()), FLevelN(levelN) {}

void TQXDependenciesCallChildren::Add(TQXTreeNode* node, const TDependencies& calls) {
    if (FContext.Path == TQXReadPath::SetBased)
        ReadObjects(calls);
    else
        SelectAllObjects();
    Regular(node, calls);
    if (FDirection == 0)
        InheritedTopDown(node, calls);
    else
        InheritedBottomUp(node, calls);
    Uncertain(node, calls);
}

void TQXDependenciesCallChildren::Regular(TQXTreeNode* node, const TDependencies& calls) {
    // In sequence, an entry is listed at every call to it.
    const bool dropRepeats = FKind == Kind::Objects || !FOption;
    for (const TDependency& call : calls) {
        if (call.InheritsFileID != 0 || (dropRepeats && IsListed(node, call, false)))
            continue;
        const std::optional<Target> target = Resolve(call);
        if (!target)
            continue;
        FContext.Tree.AddChild(node, Label(*target), ItemFor(call, *target),
                               Image(*target, target->Obj.Name));
    }
    if (!FOption)
        FContext.Tree.SortChildren(node);
}

// Each inherited call follows the regular child whose object it is inherited
// through, in the order of the calls.
void TQXDependenciesCallChildren::InheritedTopDown(TQXTreeNode* node, const TDependencies& calls) {
    std::vector<TQXTreeNode*> regular;
    for (int i = 0; i < node->ChildCount(); ++i)
        regular.push_back(node->Child(i));
    for (TQXTreeNode* owner : regular) {
        const TQXItem* ownerItem = owner->ItemAs<TQXItem>();
        if (ownerItem == nullptr)
            continue;
        TQXTreeNode* last = owner;
        for (const TDependency& call : calls) {
            if (call.InheritsFileID <= 0 || call.InheritsFileID != ownerItem->FileID ||
                call.InheritsObjectID != ownerItem->ObjectID || IsListed(node, call, true))
                continue;
            const std::optional<Object> inheritor =
                LocateObject(ownerItem->FileID, ownerItem->ObjectID);
            const std::optional<Target> target = Resolve(call);
            if (!inheritor || !target)
                continue;
            QString text;
            if (FKind == Kind::Objects) {
                text = dependencies::Indent + target->Obj.PlainName +
                       QStringLiteral(" [Inherited from ") + inheritor->Name +
                       QStringLiteral(", therefore possible call]");
            } else {
                const QString inheriting =
                    inheritor->SubObjectParentName.isEmpty()
                        ? inheritor->PlainName
                        : inheritor->SubObjectParentName + QLatin1Char('.') + inheritor->PlainName;
                text = dependencies::Indent + Label(*target) + dependencies::Indent +
                       QStringLiteral("[Inherited from ") + inheriting +
                       QStringLiteral(", therefore possible call]");
            }
            // A hidden part is matched against the inheriting object's name.
            last = FContext.Tree.InsertChildAfter(node, last, text, ItemFor(call, *target),
                                                  Image(*target, inheritor->Name));
        }
    }
}

void TQXDependenciesCallChildren::InheritedBottomUp(TQXTreeNode* node, const TDependencies& calls) {
    for (const TDependency& call : calls) {
        if (call.InheritsFileID <= 0 || IsListed(node, call, false))
            continue;
        const std::optional<Target> caller = Resolve(call);
        const std::optional<Object> inherited =
            LocateObject(call.InheritsFileID, call.InheritsObjectID);
        if (!caller || !inherited)
            continue;
        const QString reason = caller->Obj.Name + QStringLiteral(" inherits from ") +
                               inherited->PlainName +
                               QStringLiteral(", therefore possible caller]");
        const QString text = FKind == Kind::Objects
                                 ? caller->Obj.PlainName + QStringLiteral(" [") + reason
                                 : caller->EntryName + QStringLiteral(" [") +
                                       caller->Obj.PlainName + QLatin1Char(']') +
                                       dependencies::Indent + QLatin1Char('[') + reason;
        FContext.Tree.AddChild(node, text, ItemFor(call, *caller),
                               Image(*caller, caller->Obj.Name));
    }
}

void TQXDependenciesCallChildren::Uncertain(TQXTreeNode* node, const TDependencies& calls) {
    const QString ending = FDirection == 0
                               ? QStringLiteral(" [Parser unshure, therefore possible call]")
                               : QStringLiteral(" [Parser unshure, therefore possible caller]");
    for (const TDependency& call : calls) {
        if (call.InheritsFileID >= 0 || IsListed(node, call, false))
            continue;
        const std::optional<Target> target = Resolve(call);
        if (!target)
            continue;
        FContext.Tree.AddChild(node, dependencies::Indent + Label(*target) + ending,
                               ItemFor(call, *target), Image(*target, target->Obj.Name));
    }
}

// Every object is located in the whole table, whatever a filter selected.
void TQXDependenciesCallChildren::SelectAllObjects() {
    if (!FAllObjectsSelected)
        FRecords.Select(Table::QXOBJECT, QString());
    FAllObjectsSelected = true;
}

// The objects of the calls, each as a locate in the whole table finds it:
// the first of its records in record order. A few hundred per statement.
void TQXDependenciesCallChildren::ReadObjects(const TDependencies& calls) {
    std::vector<std::pair<qint32, qint32>> keys;
    auto want = [&](qint32 fileID, qint32 objectID) {
        if (FObjects.try_emplace({fileID, objectID}, std::nullopt).second)
            keys.emplace_back(fileID, objectID);
    };
    bool inherited = false;
    for (const TDependency& call : calls) {
        want(call.FileID, call.ObjectID);
        if (call.InheritsFileID > 0) {
            want(call.InheritsFileID, call.InheritsObjectID);
            inherited = true;
        }
    }
    constexpr std::size_t KeysPerStatement = 500;
    QStringList hiddenParts;
    for (std::size_t i = 0; i < keys.size(); i += KeysPerStatement) {
        QString condition;
        for (std::size_t j = i; j < std::min(keys.size(), i + KeysPerStatement); ++j)
            condition += (condition.isEmpty() ? QStringLiteral("(") : QStringLiteral(" OR (")) +
                         where::FileObjectKeys(keys[j].first, keys[j].second) + QLatin1Char(')');
        if (!FRecords.Select(Table::QXOBJECT, condition))
            continue;
        do {
            std::optional<Object>& known = FObjects[{FRecords.Int(Table::QXOBJECT, O::QXFileID),
                                                     FRecords.Int(Table::QXOBJECT, O::QXObjectID)}];
            if (!known) {
                known = CurrentObject(FRecords.Int(Table::QXOBJECT, O::QXFileID));
                if (known->Icon == qx::code::IconHiddenPart)
                    hiddenParts << known->Name;
            }
        } while (FRecords.Next(Table::QXOBJECT));
    }
    if (hiddenParts.isEmpty())
        return;
    // A hidden part's picture is that of the first object of its name with
    // an icon; an inherited call asks it by the inheriting object's name.
    if (inherited)
        for (const TDependency& call : calls)
            if (call.InheritsFileID > 0)
                if (const std::optional<Object>& inheritor =
                        FObjects[{call.InheritsFileID, call.InheritsObjectID}])
                    hiddenParts << inheritor->Name;
    hiddenParts.removeDuplicates();
    for (const QString& name : hiddenParts)
        FHiddenPartIcons.insert(name, qx::code::IconHiddenPart);
    for (qsizetype i = 0; i < hiddenParts.size(); i += qsizetype(KeysPerStatement)) {
        QStringList quoted;
        for (const QString& name : hiddenParts.mid(i, qsizetype(KeysPerStatement)))
            quoted << where::Quoted(name);
        if (!FRecords.Select(Table::QXOBJECT, QStringLiteral("QXObjectIdentifier IN (") +
                                                  quoted.join(QStringLiteral(", ")) +
                                                  QStringLiteral(") AND QXIcon >= 0")))
            continue;
        do {
            int& icon = FHiddenPartIcons[FRecords.Text(Table::QXOBJECT, O::QXObjectIdentifier)];
            if (icon == qx::code::IconHiddenPart)
                icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
        } while (FRecords.Next(Table::QXOBJECT));
    }
}

std::optional<TQXDependenciesCallChildren::Object>
TQXDependenciesCallChildren::LocateObject(qint32 fileID, qint32 objectID) {
    if (const auto known = FObjects.find({fileID, objectID}); known != FObjects.end())
        return known->second;
    SelectAllObjects();
    if (!FRecords.Locate(Table::QXOBJECT, QStringLiteral("QXFileID;QXObjectID"),
                         {fileID, objectID}))
        return std::nullopt;
    return CurrentObject(fileID);
}

// The current record of QXOBJECT, of the given file.
std::optional<TQXDependenciesCallChildren::Object>
TQXDependenciesCallChildren::CurrentObject(qint32 fileID) {
    Object object;
    object.PlainName = FRecords.Text(Table::QXOBJECT, O::QXObjectName);
    object.Type = FRecords.Text(Table::QXOBJECT, O::QXObjectType);
    object.SubObjectParentName = FRecords.Text(Table::QXOBJECT, O::QXSubObjectParentName);
    object.Icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
    object.Name = object.PlainName;
    if (object.Icon == image::IconInFile &&
        FRecords.Select(Table::QXFILE, where::Keys({{"QXFileID", fileID}})))
        object.Name += QStringLiteral(" in ") + FRecords.Text(Table::QXFILE, F::QXFileName);
    return object;
}

std::optional<TQXDependenciesCallChildren::Target>
TQXDependenciesCallChildren::Resolve(const TDependency& call) {
    std::optional<Object> object = LocateObject(call.FileID, call.ObjectID);
    if (!object)
        return std::nullopt;
    Target target{*object, QString(), 0};
    if (FKind == Kind::Objects)
        return target;
    if (FRecords.Select(Table::QXENTRY, where::Keys({{"QXFileID", call.FileID},
                                                     {"QXObjectID", call.ObjectID},
                                                     {"QXEntryID", call.EntryID}}))) {
        target.EntryName = FRecords.Text(Table::QXENTRY, E::QXEntryName);
        target.EntryID = call.EntryID;
        return target;
    }
    if (object->Icon != image::IconObjectCalledAsWhole)
        return std::nullopt;
    target.EntryName = object->Name;
    return target;
}

bool TQXDependenciesCallChildren::IsListed(const TQXTreeNode* node, const TDependency& call,
                                           bool indentedOnly) const {
    const bool entries = FKind == Kind::Entries;
    return dependencies::IsListed(
        node,
        [&](const TQXItem& item) {
            return item.FileID == call.FileID && item.ObjectID == call.ObjectID &&
                   (!entries || item.EntryID == call.EntryID);
        },
        indentedOnly);
}

int TQXDependenciesCallChildren::Image(const Target& target, const QString& hiddenPartName) {
    if (FKind == Kind::Entries)
        return (FDirection == 0 ? image::ImageEntryTopDown : image::ImageEntryBottomUp) + FLevelN;
    if (target.Obj.Icon == qx::code::IconHiddenPart)
        return HiddenPartImage(hiddenPartName);
    return target.Obj.Icon + FDirection;
}

// A hidden part shows the icon of the first object with the same identifier
// that has a real one; without such an object it keeps -1.
int TQXDependenciesCallChildren::HiddenPartImage(const QString& name) {
    if (const auto known = FHiddenPartIcons.constFind(name); known != FHiddenPartIcons.constEnd())
        return *known == qx::code::IconHiddenPart ? *known : *known + FDirection;
    SelectAllObjects();
    const QString key = QStringLiteral("QXObjectIdentifier");
    TQXTableRef objects = FRecords.Tables().Table(Table::QXOBJECT);
    for (bool found = FRecords.Locate(Table::QXOBJECT, key, {name}); found;
         found = FRecords.Access().LocateNextRecord(objects, key, {name}, 1)) {
        const qint32 icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
        if (icon >= 0)
            return icon + FDirection;
    }
    return qx::code::IconHiddenPart;
}

std::unique_ptr<TQXItem> TQXDependenciesCallChildren::ItemFor(const TDependency& call,
                                                              const Target& target) const {
    return TQXItem::ForEntry(call.FileID, call.ObjectID, target.EntryID);
}

QString TQXDependenciesCallChildren::Label(const Target& target) const {
    if (FKind == Kind::Objects)
        return target.Obj.Name + QStringLiteral(" [") + target.Obj.Type + QLatin1Char(']');
    return target.EntryName + QStringLiteral(" [") + target.Obj.Name + QLatin1Char(']');
}
