#pragma once

#include "platform/TreeNode.h"

#include <QHash>
#include <QList>
#include <QMenu>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QWidget>

#include <memory>

class QTreeWidgetItem;
class TQXImageList;

// The repository tree: a read-only tree with multi-select (Ctrl and Shift),
// images from an image list, and the operations the view needs: nodes that
// own their items, placeholder children, the selection in the order it was
// made, depth-first absolute indexes, visible-node walks, alphabetical
// sorting, nestable update brackets and a switchable popup menu. The Qt tree
// widget inside is not reachable from outside.
class TQXTreeControl : public QWidget {
    Q_OBJECT

public:
    explicit TQXTreeControl(QWidget* parent = nullptr);
    ~TQXTreeControl() override;

    // Images come from the standard image list unless another one is set.
    void SetImages(const TQXImageList* images);
    const TQXImageList* Images() const { return FImages; }
    QIcon NodeIcon(int imageIndex, int selectedIndex) const;

    TQXTreeNode* AddRoot(const QString& text, std::unique_ptr<TQXTreeItem> item = nullptr,
                         int imageIndex = -1);
    // A root node at `index` of the top level.
    TQXTreeNode* InsertRoot(int index, const QString& text,
                            std::unique_ptr<TQXTreeItem> item = nullptr, int imageIndex = -1);
    TQXTreeNode* AddChild(TQXTreeNode* parent, const QString& text,
                          std::unique_ptr<TQXTreeItem> item = nullptr, int imageIndex = -1);
    // A child of `parent` right after its child `after`.
    TQXTreeNode* InsertChildAfter(TQXTreeNode* parent, const TQXTreeNode* after,
                                  const QString& text, std::unique_ptr<TQXTreeItem> item = nullptr,
                                  int imageIndex = -1);

    // A child of `parent` at position `index` among its children.
    TQXTreeNode* InsertChild(TQXTreeNode* parent, int index, const QString& text,
                             std::unique_ptr<TQXTreeItem> item = nullptr, int imageIndex = -1);

    // Makes `parent` expandable before its children are read.
    static void AddPlaceholder(TQXTreeNode* parent);
    // Whether the node still waits for its first expansion: it carries a
    // placeholder, or its first child carries no item.
    static bool HasPlaceholder(const TQXTreeNode* node);
    // Removes the placeholder (or that first child); false when there is
    // none (the node has nothing to show, or was expanded before).
    static bool TakePlaceholder(TQXTreeNode* node);

    // Deletes every node and so frees every item.
    void Clear();

    int RootCount() const;
    TQXTreeNode* Root(int index) const;
    TQXTreeNode* FirstNode() const { return Root(0); }
    // Every existing node, collapsed branches included.
    int NodeCount() const;

    // Position in a depth-first walk over every existing node, counted from
    // 0; -1 for a node of another tree.
    int AbsoluteIndex(const TQXTreeNode* node) const;
    TQXTreeNode* NodeAt(int absoluteIndex) const;
    // The next node of that walk, or null after the last one.
    static TQXTreeNode* NextNode(const TQXTreeNode* node);

    // A node is visible when all its ancestors are expanded.
    static bool IsVisibleNode(const TQXTreeNode* node);
    TQXTreeNode* NextVisible(const TQXTreeNode* node) const;
    TQXTreeNode* PreviousVisible(const TQXTreeNode* node) const;

    // The selected nodes in the order they were selected; nodes selected
    // together (a Shift range) come in tree order.
    QList<TQXTreeNode*> Selection() const;
    int SelectionCount() const { return Selection().size(); }
    // Selects `node`, alone or added to the selection.
    void Select(TQXTreeNode* node, bool keepOthers = false);
    void Deselect(TQXTreeNode* node);
    // Replaces the selection by `nodes`, selected in that order, in one step.
    void SetSelection(const QList<TQXTreeNode*>& nodes);
    // Selects or deselects many nodes at once; nodes selected together join
    // the selection order in tree order.
    void SetSelected(const QList<TQXTreeNode*>& nodes, bool selected);
    // The node drawn at a point of Viewport(); null on empty space.
    TQXTreeNode* NodeAtPoint(const QPoint& point) const;
    // The node with the keyboard focus.
    void SetCurrent(TQXTreeNode* node);
    // Where the node is drawn, in the coordinates of Viewport().
    QRect NodeRect(const TQXTreeNode* node) const;
    QWidget* Viewport() const;

    // Alphabetical order of one node's children, or of the top level.
    void SortChildren(TQXTreeNode* parent);

    // Painting is suspended from the first BeginUpdate to the matching last
    // EndUpdate.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const { return FUpdateDepth > 0; }

    // The menu shown on a right click; null for none.
    void SetPopupMenu(QMenu* menu);
    QMenu* PopupMenu() const { return FPopupMenu; }

    void SetTreeFont(const QString& name, int pointSize);

signals:
    // A node was expanded, by the user or by code.
    void NodeExpanded(TQXTreeNode* node);

private:
    class Widget; // the Qt tree widget inside

    QTreeWidgetItem* Container(TQXTreeNode* parent) const;
    void TrackSelection();
    void ShowPopup(const QPoint& position);

    Widget* FWidget; // owned as a child widget
    const TQXImageList* FImages = nullptr;
    mutable QHash<quint64, QIcon> FIconCache;
    QList<QPersistentModelIndex> FSelectionOrder;
    QPointer<QMenu> FPopupMenu;
    int FUpdateDepth = 0;
};
