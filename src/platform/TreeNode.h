#pragma once

#include "repository/TreeItems.h"

#include <QIcon>
#include <QTreeWidgetItem>

#include <memory>

class TQXTreeControl;

// One node of the tree control: a text, an image index, a selected image
// index and the tree item it owns. Deleting a node deletes its children, and
// every node frees its item. A node without an item is a text-only node (a
// marker). A node whose children are still to be read carries a placeholder:
// a flag shown as an expand indicator, not a row, so that taking it away on
// the first expansion costs nothing however large the tree.
//
// The Qt item underneath is the tree control's business alone.
class TQXTreeNode : private QTreeWidgetItem {
public:
    TQXTreeNode(const QString& text, std::unique_ptr<TQXTreeItem> item, int imageIndex);
    ~TQXTreeNode() override;

    TQXTreeNode(const TQXTreeNode&) = delete;
    TQXTreeNode& operator=(const TQXTreeNode&) = delete;

    QString Text() const { return text(0); }
    void SetText(const QString& text) { setText(0, text); }

    int ImageIndex() const { return FImageIndex; }
    int SelectedIndex() const { return FSelectedIndex; }
    // Sets both the image index and the selected index.
    void SetImageIndex(int index);
    void SetSelectedIndex(int index);
    // The picture the tree draws for the node (normal and selected).
    QIcon Icon() const;

    TQXTreeItem* Item() const { return FItem.get(); }
    void SetItem(std::unique_ptr<TQXTreeItem> item) { FItem = std::move(item); }
    // The node's item as T; null without an item or for an item of another kind.
    template <class T> const T* ItemAs() const { return dynamic_cast<const T*>(FItem.get()); }

    TQXTreeNode* ParentNode() const;
    int ChildCount() const { return childCount(); }
    TQXTreeNode* Child(int index) const;
    TQXTreeNode* FirstChild() const { return Child(0); }
    int IndexOfChild(const TQXTreeNode* child) const;
    // 0 for a root node, 1 for its children, and so on.
    int Level() const;

    bool Expanded() const { return isExpanded(); }
    void SetExpanded(bool expanded) { setExpanded(expanded); }
    bool Selected() const { return isSelected(); }

    TQXTreeControl* Tree() const;

private:
    friend class TQXTreeControl;
    static constexpr int NodeType = QTreeWidgetItem::UserType + 1;

    // The node behind a Qt item of a tree control; null for any other.
    static TQXTreeNode* FromItem(QTreeWidgetItem* item);
    static const TQXTreeNode* FromItem(const QTreeWidgetItem* item);
    QTreeWidgetItem* AsItem() { return this; }
    const QTreeWidgetItem* AsItem() const { return this; }

    // The icon comes from the tree's image list, drawn from the two indexes.
    QVariant data(int column, int role) const override;
    // Alphabetical order of the texts, case-insensitive first.
    bool operator<(const QTreeWidgetItem& other) const override;

    std::unique_ptr<TQXTreeItem> FItem;
    bool FPlaceholder = false; // children not read yet
    int FImageIndex = -1;
    int FSelectedIndex = -1;
};
