#include "tracks/TrackSelection.h"

#include "host/Items.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"

#include <QHash>

#include <array>

namespace {

const QString NoParent = QStringLiteral("        No Parent        ");

QString Quoted(const TQXTreeNode* node) {
    return QLatin1Char('"') + node->Text().trimmed() + QLatin1Char('"');
}

// The nine identifiers a host window takes for a node's item, in the order
// file, system, computer, application, package, object, entry, row, word. A
// data item gives its own file, object, entry, row and word.
std::array<qint32, 9> HostIds(const TQXTreeItem* item) {
    if (const auto* tree = dynamic_cast<const TQXItem*>(item))
        return {tree->FileID,        tree->SystemID,  tree->ComputerID,
                tree->ApplicationID, tree->PackageID, tree->ObjectID,
                tree->EntryID,       tree->RowID,     tree->WordID};
    if (const auto* data = dynamic_cast<const TQXDataItem*>(item))
        return {data->FileID, 0, 0, 0, 0, data->ObjectID, data->EntryID, data->RowID, data->WordID};
    return {};
}

} // namespace

TQXTreeNode* TQXTrackSelection::StartNode(const QList<TQXTreeNode*>& selection) {
    TQXTreeNode* start = nullptr;
    for (TQXTreeNode* node : selection)
        if (!start || node->Level() < start->Level())
            start = node;
    return start;
}

QString TQXTrackSelection::Label(const TQXTreeNode& node) {
    const QString text = node.Text();
    if (const auto* item = node.ItemAs<TQXItem>(); item && item->RowID >= 1 && item->WordID == 0)
        return text.trimmed().left(20);
    const qsizetype bracket = text.indexOf(QLatin1Char('['));
    return (bracket >= 0 ? text.left(bracket) : text).trimmed();
}

QString TQXTrackSelection::NodeKey(int absoluteIndex, const TQXTreeItem& item) {
    return QString::number(absoluteIndex) + QLatin1Char(':') + item.GetItemID();
}

TQXTrackCheck TQXTrackSelection::Check(bool levelsOnly, bool complete) {
    const QList<TQXTreeNode*> selection = FTree.Selection();
    if (selection.size() < 2)
        return {false, QStringLiteral("A Track needs at least two selected nodes: its start node "
                                      "and nodes below it.")};
    TQXTreeNode* start = StartNode(selection);
    const int startLevel = start->Level();
    TQXTrackCheck result{true, QString()};
    for (TQXTreeNode* node : selection) {
        if (node == start)
            continue;
        if (node->Level() == startLevel)
            return {false, QStringLiteral("A Track has one node at its top level, but ") +
                               Quoted(start) + QStringLiteral(" and ") + Quoted(node) +
                               QStringLiteral(" are both selected there.")};
        if (levelsOnly)
            continue;
        TQXTreeNode* parent = node->ParentNode();
        if (parent && parent->Selected())
            continue;
        if (!complete)
            return {false, QStringLiteral("The parent of ") + Quoted(node) +
                               QStringLiteral(" is not selected; AutoComplete Track selects the "
                                              "nodes in between.")};
        // Up to the nearest selected ancestor, never above the start level.
        QList<TQXTreeNode*> between;
        TQXTreeNode* ancestor = parent;
        while (ancestor && !ancestor->Selected() && ancestor->Level() > startLevel) {
            between << ancestor;
            ancestor = ancestor->ParentNode();
        }
        if (!ancestor || !ancestor->Selected()) {
            if (result.Valid)
                result = {false, Quoted(node) +
                                     QStringLiteral(" does not lie below the Track's "
                                                    "start node ") +
                                     Quoted(start) + QLatin1Char('.')};
            continue;
        }
        for (TQXTreeNode* added : between)
            FTree.Select(added, true);
    }
    return result;
}

QString TQXTrackSelection::NodeWithoutItem() const {
    for (const TQXTreeNode* node : FTree.Selection())
        if (!node->Item())
            return QStringLiteral("A Track holds repository items only, and ") + Quoted(node) +
                   QStringLiteral(" is a message of the view.");
    return QString();
}

TTrack TQXTrackSelection::MakeTrack() const {
    const QList<TQXTreeNode*> selection = FTree.Selection();
    TTrack track;
    if (selection.isEmpty())
        return track;
    // One walk gives every selected node its absolute index.
    QHash<const TQXTreeNode*, int> indexes;
    int index = 0;
    for (const TQXTreeNode* node = FTree.FirstNode(); node;
         node = TQXTreeControl::NextNode(node), ++index)
        if (node->Selected())
            indexes.insert(node, index);

    const TQXTreeNode* last = selection.constFirst();
    for (const TQXTreeNode* node : selection)
        if (indexes.value(node) > indexes.value(last))
            last = node;
    track.Name = Label(*StartNode(selection)) + QStringLiteral(" - ") + Label(*last);
    for (const TQXTreeNode* node : selection)
        track.Keys << (node->Item() ? NodeKey(indexes.value(node), *node->Item())
                                    : QString::number(indexes.value(node)) + QLatin1Char(':'));
    return track;
}

bool TQXTrackSelection::Show(const TTrack& track, const std::function<void(TQXTreeNode*)>& expand) {
    FTree.Select(nullptr);
    for (const QString& key : track.Keys) {
        // Only the node at the key's absolute index can carry the key.
        bool ok = false;
        const int index = key.left(key.indexOf(QLatin1Char(':'))).toInt(&ok);
        TQXTreeNode* node = ok ? FTree.NodeAt(index) : nullptr;
        if (!node || !node->Item() || NodeKey(index, *node->Item()) != key)
            return false;
        if (!TQXTreeControl::IsVisibleNode(node))
            expand(node->ParentNode());
        FTree.Select(node, true);
    }
    return true;
}

void TQXTrackSelection::DiagramItems(TQXItems& items) const {
    const TQXTreeNode* start = StartNode(FTree.Selection());
    if (!start)
        return;
    const int startLevel = start->Level();
    for (const TQXTreeNode* node = start; node && (node == start || node->Level() > startLevel);
         node = FTree.NextVisible(node)) {
        if (!node->Selected())
            continue;
        const std::array<qint32, 9> ids = HostIds(node->Item());
        items.AddItem(ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7], ids[8]);
        items.AddText(node->Text());
        items.AddLevel(node->Level());
        const TQXTreeNode* parent = node->ParentNode();
        if (parent && parent->Selected()) {
            items.AddParentText(parent->Text());
            items.AddParentFileID(HostIds(parent->Item())[0]);
        } else {
            items.AddParentText(NoParent);
            items.AddParentFileID(-1);
        }
        items.AddIcon(node->ImageIndex());
    }
}

bool TQXTrackSelection::DataItemExistsInTrack(const TQXTreeNode* node) {
    const TQXDataItem* data = node ? node->ItemAs<TQXDataItem>() : nullptr;
    if (!data)
        throw EQXError(QStringLiteral("The node carries no variable"));
    if (!node->ParentNode())
        return false;
    for (const TQXTreeNode* ancestor = node->ParentNode()->ParentNode(); ancestor;
         ancestor = ancestor->ParentNode()) {
        for (int i = 0; i < ancestor->ChildCount(); ++i) {
            const auto* other = ancestor->Child(i)->ItemAs<TQXDataItem>();
            if (other && other->OwnerFileID > 0 && other->DataText1 == data->DataText1 &&
                other->DataText2 == data->DataText2 && other->OwnerFileID == data->OwnerFileID &&
                other->OwnerObjectID == data->OwnerObjectID &&
                other->OwnerEntryID == data->OwnerEntryID)
                return true;
        }
    }
    return false;
}
