#include "platform/TreeControl.h"

#include "host/ImageList.h"

#include <QHeaderView>
#include <QMenu>
#include <QSet>
#include <QTreeWidgetItemIterator>

#include <algorithm>

TQXTreeControl::TQXTreeControl(QWidget* parent)
    : QTreeWidget(parent), FImages(&TQXImageList::Standard()) {
    setColumnCount(1);
    header()->hide();
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setIndentation(19);
    setUniformRowHeights(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    // The selection stays visible when the tree does not have the focus.
    QPalette p = palette();
    p.setColor(QPalette::Inactive, QPalette::Highlight,
               p.color(QPalette::Active, QPalette::Highlight));
    p.setColor(QPalette::Inactive, QPalette::HighlightedText,
               p.color(QPalette::Active, QPalette::HighlightedText));
    setPalette(p);

    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        if (TQXTreeNode* node = AsNode(item))
            emit NodeExpanded(node);
    });
    connect(this, &QTreeWidget::itemSelectionChanged, this, &TQXTreeControl::TrackSelection);
    connect(this, &QWidget::customContextMenuRequested, this, &TQXTreeControl::ShowPopup);
}

TQXTreeControl::~TQXTreeControl() = default;

void TQXTreeControl::SetImages(const TQXImageList* images) {
    FImages = images;
    FIconCache.clear();
    viewport()->update();
}

QIcon TQXTreeControl::NodeIcon(int imageIndex, int selectedIndex) const {
    if (!FImages || imageIndex < 0 || imageIndex >= FImages->Count())
        return QIcon();
    const quint64 key = (quint64(quint32(imageIndex)) << 32) | quint32(selectedIndex);
    auto it = FIconCache.constFind(key);
    if (it != FIconCache.constEnd())
        return *it;
    QIcon icon = FImages->Icon(imageIndex);
    if (selectedIndex != imageIndex && selectedIndex >= 0 && selectedIndex < FImages->Count()) {
        // A node whose selected picture differs shows it while selected.
        QIcon both;
        const QIcon selected = FImages->Icon(selectedIndex);
        for (const QSize& size : icon.availableSizes())
            both.addPixmap(icon.pixmap(size), QIcon::Normal);
        for (const QSize& size : selected.availableSizes())
            both.addPixmap(selected.pixmap(size), QIcon::Selected);
        if (!both.availableSizes().isEmpty())
            icon = both;
    }
    FIconCache.insert(key, icon);
    return icon;
}

TQXTreeNode* TQXTreeControl::AddRoot(const QString& text, std::unique_ptr<TQXTreeItem> item,
                                     int imageIndex) {
    auto node = std::make_unique<TQXTreeNode>(text, std::move(item), imageIndex);
    addTopLevelItem(node.get());
    return node.release(); // owned by the tree now
}

TQXTreeNode* TQXTreeControl::AddChild(TQXTreeNode* parent, const QString& text,
                                      std::unique_ptr<TQXTreeItem> item, int imageIndex) {
    if (!parent)
        return AddRoot(text, std::move(item), imageIndex);
    auto node = std::make_unique<TQXTreeNode>(text, std::move(item), imageIndex);
    parent->addChild(node.get());
    return node.release(); // owned by its parent now
}

TQXTreeNode* TQXTreeControl::AddPlaceholder(TQXTreeNode* parent) {
    return AddChild(parent, QString());
}

void TQXTreeControl::Clear() {
    FSelectionOrder.clear();
    clear();
}

int TQXTreeControl::NodeCount() const {
    int count = 0;
    for (QTreeWidgetItemIterator it(const_cast<TQXTreeControl*>(this)); *it; ++it)
        ++count;
    return count;
}

int TQXTreeControl::AbsoluteIndex(const TQXTreeNode* node) const {
    if (!node || node->treeWidget() != this)
        return -1;
    int index = 0;
    for (QTreeWidgetItemIterator it(const_cast<TQXTreeControl*>(this)); *it; ++it, ++index)
        if (*it == node)
            return index;
    return -1;
}

TQXTreeNode* TQXTreeControl::NodeAt(int absoluteIndex) const {
    if (absoluteIndex < 0)
        return nullptr;
    int index = 0;
    for (QTreeWidgetItemIterator it(const_cast<TQXTreeControl*>(this)); *it; ++it, ++index)
        if (index == absoluteIndex)
            return AsNode(*it);
    return nullptr;
}

namespace {

// The sibling after `item`, or after the nearest ancestor that has one.
QTreeWidgetItem* NextAfterSubtree(const QTreeWidgetItem* item) {
    while (item) {
        QTreeWidgetItem* parent = item->parent();
        const QTreeWidgetItem* container =
            parent ? parent : item->treeWidget()->invisibleRootItem();
        const int index = container->indexOfChild(const_cast<QTreeWidgetItem*>(item));
        if (index + 1 < container->childCount())
            return container->child(index + 1);
        item = parent;
    }
    return nullptr;
}

} // namespace

TQXTreeNode* TQXTreeControl::NextNode(const TQXTreeNode* node) {
    if (!node || !node->treeWidget())
        return nullptr;
    if (node->childCount() > 0)
        return node->Child(0);
    return AsNode(NextAfterSubtree(node));
}

bool TQXTreeControl::IsVisibleNode(const TQXTreeNode* node) {
    if (!node || !node->treeWidget())
        return false;
    for (const QTreeWidgetItem* p = node->parent(); p; p = p->parent())
        if (!p->isExpanded())
            return false;
    return true;
}

TQXTreeNode* TQXTreeControl::NextVisible(const TQXTreeNode* node) const {
    if (!node || node->treeWidget() != this)
        return nullptr;
    if (node->isExpanded() && node->childCount() > 0)
        return node->Child(0);
    return AsNode(NextAfterSubtree(node));
}

TQXTreeNode* TQXTreeControl::PreviousVisible(const TQXTreeNode* node) const {
    if (!node || node->treeWidget() != this)
        return nullptr;
    QTreeWidgetItem* parent = node->parent();
    const QTreeWidgetItem* container = parent ? parent : invisibleRootItem();
    const int index = container->indexOfChild(const_cast<TQXTreeNode*>(node));
    if (index == 0)
        return AsNode(parent);
    // The last visible node of the previous sibling's subtree.
    QTreeWidgetItem* item = container->child(index - 1);
    while (item->isExpanded() && item->childCount() > 0)
        item = item->child(item->childCount() - 1);
    return AsNode(item);
}

QList<TQXTreeNode*> TQXTreeControl::Selection() const {
    QList<TQXTreeNode*> nodes;
    for (const QPersistentModelIndex& index : FSelectionOrder) {
        if (!index.isValid())
            continue;
        TQXTreeNode* node = AsNode(itemFromIndex(index));
        if (node && node->isSelected())
            nodes << node;
    }
    return nodes;
}

void TQXTreeControl::Select(TQXTreeNode* node, bool keepOthers) {
    if (!keepOthers)
        clearSelection();
    if (node)
        node->setSelected(true);
}

void TQXTreeControl::Deselect(TQXTreeNode* node) {
    if (node)
        node->setSelected(false);
}

void TQXTreeControl::TrackSelection() {
    QSet<QTreeWidgetItem*> selected;
    for (QTreeWidgetItem* item : selectedItems())
        selected.insert(item);

    QSet<QTreeWidgetItem*> known;
    QList<QPersistentModelIndex> kept;
    for (const QPersistentModelIndex& index : FSelectionOrder) {
        if (!index.isValid())
            continue;
        QTreeWidgetItem* item = itemFromIndex(index);
        if (item && selected.contains(item) && !known.contains(item)) {
            kept << index;
            known.insert(item);
        }
    }

    QList<QTreeWidgetItem*> added;
    for (QTreeWidgetItem* item : selected)
        if (!known.contains(item))
            added << item;
    if (added.size() > 1) {
        // Nodes selected together join in tree order.
        QHash<QTreeWidgetItem*, int> order;
        int position = 0;
        for (QTreeWidgetItemIterator it(this); *it; ++it)
            order.insert(*it, position++);
        std::sort(added.begin(), added.end(), [&order](QTreeWidgetItem* a, QTreeWidgetItem* b) {
            return order.value(a) < order.value(b);
        });
    }
    for (QTreeWidgetItem* item : added)
        kept << QPersistentModelIndex(indexFromItem(item));
    FSelectionOrder = kept;
}

void TQXTreeControl::SortChildren(TQXTreeNode* parent) {
    QTreeWidgetItem* container =
        parent ? static_cast<QTreeWidgetItem*>(parent) : invisibleRootItem();
    container->sortChildren(0, Qt::AscendingOrder);
}

void TQXTreeControl::BeginUpdate() {
    if (FUpdateDepth++ == 0)
        setUpdatesEnabled(false);
}

void TQXTreeControl::EndUpdate() {
    if (FUpdateDepth == 0)
        return;
    if (--FUpdateDepth == 0)
        setUpdatesEnabled(true);
}

void TQXTreeControl::SetPopupMenu(QMenu* menu) {
    FPopupMenu = menu;
}

void TQXTreeControl::ShowPopup(const QPoint& position) {
    if (FPopupMenu)
        FPopupMenu->popup(viewport()->mapToGlobal(position));
}

void TQXTreeControl::SetTreeFont(const QString& name, int pointSize) {
    QFont f = font();
    if (!name.isEmpty())
        f.setFamily(name);
    if (pointSize > 0)
        f.setPointSize(pointSize);
    setFont(f);
    viewport()->update();
}
