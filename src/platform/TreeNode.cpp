#include "platform/TreeNode.h"

#include "platform/TreeControl.h"

TQXTreeNode::TQXTreeNode(const QString& text, std::unique_ptr<TQXTreeItem> item, int imageIndex)
    : QTreeWidgetItem(NodeType), FItem(std::move(item)), FImageIndex(imageIndex),
      FSelectedIndex(imageIndex) {
    setText(0, text);
}

TQXTreeNode::~TQXTreeNode() = default;

void TQXTreeNode::SetImageIndex(int index) {
    FImageIndex = index;
    FSelectedIndex = index;
    emitDataChanged();
}

void TQXTreeNode::SetSelectedIndex(int index) {
    FSelectedIndex = index;
    emitDataChanged();
}

QIcon TQXTreeNode::Icon() const {
    return data(0, Qt::DecorationRole).value<QIcon>();
}

TQXTreeNode* TQXTreeNode::ParentNode() const {
    return FromItem(parent());
}

TQXTreeNode* TQXTreeNode::Child(int index) const {
    return FromItem(child(index));
}

int TQXTreeNode::IndexOfChild(const TQXTreeNode* child) const {
    return child != nullptr ? indexOfChild(const_cast<TQXTreeNode*>(child)) : -1;
}

int TQXTreeNode::Level() const {
    int level = 0;
    for (const QTreeWidgetItem* p = parent(); p; p = p->parent())
        ++level;
    return level;
}

TQXTreeControl* TQXTreeNode::Tree() const {
    return treeWidget() != nullptr ? qobject_cast<TQXTreeControl*>(treeWidget()->parentWidget())
                                   : nullptr;
}

QVariant TQXTreeNode::data(int column, int role) const {
    if (role == Qt::DecorationRole && column == 0) {
        const TQXTreeControl* tree = Tree();
        if (!tree || FImageIndex < 0)
            return QVariant();
        return tree->NodeIcon(FImageIndex, FSelectedIndex);
    }
    return QTreeWidgetItem::data(column, role);
}

bool TQXTreeNode::operator<(const QTreeWidgetItem& other) const {
    const QString a = text(0);
    const QString b = other.text(0);
    const int folded = a.compare(b, Qt::CaseInsensitive);
    return folded != 0 ? folded < 0 : a < b;
}

TQXTreeNode* TQXTreeNode::FromItem(QTreeWidgetItem* item) {
    return item && item->type() == NodeType ? static_cast<TQXTreeNode*>(item) : nullptr;
}

const TQXTreeNode* TQXTreeNode::FromItem(const QTreeWidgetItem* item) {
    return item && item->type() == NodeType ? static_cast<const TQXTreeNode*>(item) : nullptr;
}
