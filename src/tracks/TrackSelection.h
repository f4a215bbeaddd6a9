#pragma once

#include "tracks/Track.h"

#include <QList>
#include <QString>

#include <functional>

class TQXItems;
class TQXTreeControl;
class TQXTreeItem;
class TQXTreeNode;

// The outcome of a track check: whether the selection is a track, and when
// it is not, why, in words for the user.
struct TQXTrackCheck {
    bool Valid = false;
    QString Reason;

    explicit operator bool() const { return Valid; }
};

// The track rules over one tree's selection: the validity check and its
// completion, making a track of the selection, re-selecting a track, and the
// item list that hands a track to the host's diagram window.
class TQXTrackSelection {
public:
    explicit TQXTrackSelection(TQXTreeControl& tree) : FTree(tree) {}

    // Whether the selection is a track: at least two nodes, exactly one at
    // the smallest level, and (unless `levelsOnly`) every other node's
    // parent selected too. With `complete`, a node whose parent is not
    // selected gets its ancestors selected up to the nearest selected one;
    // a node with no selected ancestor at all (outside the start node's
    // subtree) gets none and makes the check fail.
    TQXTrackCheck Check(bool levelsOnly, bool complete);
    // Why the selection cannot be handed on as a track even though it is
    // one: a node without an item (a message line of the view). Empty when
    // every node has an item.
    QString NodeWithoutItem() const;

    // The selection as a track: named after its start node and its last
    // node in tree order, one key per selected node in selection order.
    TTrack MakeTrack() const;
    // Selects the track's nodes again, key by key; a node under a collapsed
    // parent is made visible by `expand` on that parent. False when a key
    // matches no node; the nodes found before stay selected.
    bool Show(const TTrack& track, const std::function<void(TQXTreeNode*)>& expand);

    // The selected nodes of the start node's visible subtree, in display
    // order, with their ids, texts, levels, selected parents and icons.
    void DiagramItems(TQXItems& items) const;

    // The start node: the selected node with the smallest level, the first
    // in selection order among several.
    static TQXTreeNode* StartNode(const QList<TQXTreeNode*>& selection);
    // The text that names a node in a track's name.
    static QString Label(const TQXTreeNode& node);
    // Absolute index, ":" and the item's id.
    static QString NodeKey(int absoluteIndex, const TQXTreeItem& item);
    // Whether the node's data item already hangs among the children of its
    // grandparent or of a higher ancestor. Throws EQXError for a node
    // without a data item.
    static bool DataItemExistsInTrack(const TQXTreeNode* node);

private:
    TQXTreeControl& FTree;
};
