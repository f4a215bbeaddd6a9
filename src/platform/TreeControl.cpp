#include "platform/TreeControl.h"

#include "platform/ImageList.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QMenu>
#include <QSet>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>

class TQXTreeControl::Widget : public QTreeWidget {
public:
    using QTreeWidget::indexFromItem;
    using QTreeWidget::itemFromIndex;
    using QTreeWidget::QTreeWidget;
};

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

TQXTreeControl::TQXTreeControl(QWidget* parent)
    : QWidget(parent), FWidget(new Widget(this)), FImages(&TQXImageList::Standard()) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(FWidget);
    setFocusProxy(FWidget);

    FWidget->setColumnCount(1);
    FWidget->header()->hide();
    FWidget->setSelectionMode(QAbstractItemView::ExtendedSelection);
    FWidget->setEditTriggers(QAbstractItemView::NoEditTriggers);
    FWidget->setIndentation(19);
    FWidget->setUniformRowHeights(true);
    FWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    // The selection stays visible when the tree does not have the focus.
    QPalette p = FWidget->palette();
    p.setColor(QPalette::Inactive, QPalette::Highlight,
               p.color(QPalette::Active, QPalette::Highlight));
    p.setColor(QPalette::Inactive, QPalette::HighlightedText,
               p.color(QPalette::Active, QPalette::HighlightedText));
    FWidget->setPalette(p);

    connect(FWidget, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        if (TQXTreeNode* node = TQXTreeNode::FromItem(item))
            emit NodeExpanded(node);
    });
    connect(FWidget, &QTreeWidget::itemSelectionChanged, this, &TQXTreeControl::TrackSelection);
    connect(FWidget, &QWidget::customContextMenuRequested, this, &TQXTreeControl::ShowPopup);
}

TQXTreeControl::~TQXTreeControl() {
    // The nodes go before the control's own members they refer to.
    FSelectionOrder.clear();
    FWidget->clear();
}

void TQXTreeControl::SetImages(const TQXImageList* images) {
    FImages = images;
    FIconCache.clear();
    FWidget->viewport()->update();
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

QTreeWidgetItem* TQXTreeControl::Container(TQXTreeNode* parent) const {
    return parent ? parent->AsItem() : FWidget->invisibleRootItem();
}

TQXTreeNode* TQXTreeControl::AddRoot(const QString& text, std::unique_ptr<TQXTreeItem> item,
                                     int imageIndex) {
    return InsertRoot(RootCount(), text, std::move(item), imageIndex);
}

TQXTreeNode* TQXTreeControl::InsertRoot(int index, const QString& text,
                                        std::unique_ptr<TQXTreeItem> item, int imageIndex) {
    auto node = std::make_unique<TQXTreeNode>(text, std::move(item), imageIndex);
    FWidget->insertTopLevelItem(index, node->AsItem());
    return node.release(); // owned by the tree now
}

TQXTreeNode* TQXTreeControl::AddChild(TQXTreeNode* parent, const QString& text,
                                      std::unique_ptr<TQXTreeItem> item, int imageIndex) {
    if (!parent)
        return AddRoot(text, std::move(item), imageIndex);
    auto node = std::make_unique<TQXTreeNode>(text, std::move(item), imageIndex);
    parent->addChild(node->AsItem());
    return node.release(); // owned by its parent now
}

TQXTreeNode* TQXTreeControl::InsertChildAfter(TQXTreeNode* parent, const TQXTreeNode* after,
                                              const QString& text,
                                              std::unique_ptr<TQXTreeItem> item, int imageIndex) {
    QTreeWidgetItem* container = Container(parent);
    const int index = after ? container->indexOfChild(const_cast<TQXTreeNode*>(after)->AsItem())
                            : container->childCount() - 1;
    return InsertChild(parent, index + 1, text, std::move(item), imageIndex);
}

TQXTreeNode* TQXTreeControl::InsertChild(TQXTreeNode* parent, int index, const QString& text,
                                         std::unique_ptr<TQXTreeItem> item, int imageIndex) {
    auto node = std::make_unique<TQXTreeNode>(text, std::move(item), imageIndex);
    Container(parent)->insertChild(index, node->AsItem());
    return node.release(); // owned by its parent now
}

// A placeholder is a flag with Qt's expand indicator, never a row: removing a
// row makes the model walk every persistent index (each expanded node) up to
// its root, which made opening deep or large trees quadratic or worse.
void TQXTreeControl::AddPlaceholder(TQXTreeNode* parent) {
    if (!parent)
        return;
    parent->FPlaceholder = true;
    parent->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
}

bool TQXTreeControl::HasPlaceholder(const TQXTreeNode* node) {
    return node != nullptr && (node->FPlaceholder ||
                               (node->ChildCount() > 0 && node->FirstChild()->Item() == nullptr));
}

bool TQXTreeControl::TakePlaceholder(TQXTreeNode* node) {
    if (!HasPlaceholder(node))
        return false;
    if (node->FPlaceholder) {
        node->FPlaceholder = false;
        node->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    } else {
        delete node->FirstChild();
    }
    return true;
}

void TQXTreeControl::Clear() {
    FSelectionOrder.clear();
    FWidget->clear();
}

int TQXTreeControl::RootCount() const {
    return FWidget->topLevelItemCount();
}

TQXTreeNode* TQXTreeControl::Root(int index) const {
    return TQXTreeNode::FromItem(FWidget->topLevelItem(index));
}

int TQXTreeControl::NodeCount() const {
    int count = 0;
    for (QTreeWidgetItemIterator it(FWidget); *it; ++it)
        ++count;
    return count;
}

int TQXTreeControl::AbsoluteIndex(const TQXTreeNode* node) const {
    if (!node || node->AsItem()->treeWidget() != FWidget)
        return -1;
    int index = 0;
    for (QTreeWidgetItemIterator it(FWidget); *it; ++it, ++index)
        if (*it == node->AsItem())
            return index;
    return -1;
}

TQXTreeNode* TQXTreeControl::NodeAt(int absoluteIndex) const {
    if (absoluteIndex < 0)
        return nullptr;
    int index = 0;
    for (QTreeWidgetItemIterator it(FWidget); *it; ++it, ++index)
        if (index == absoluteIndex)
            return TQXTreeNode::FromItem(*it);
    return nullptr;
}

TQXTreeNode* TQXTreeControl::NextNode(const TQXTreeNode* node) {
    if (!node || !node->AsItem()->treeWidget())
        return nullptr;
    if (node->ChildCount() > 0)
        return node->Child(0);
    return TQXTreeNode::FromItem(NextAfterSubtree(node->AsItem()));
}

bool TQXTreeControl::IsVisibleNode(const TQXTreeNode* node) {
    if (!node || !node->AsItem()->treeWidget())
        return false;
    for (const TQXTreeNode* p = node->ParentNode(); p; p = p->ParentNode())
        if (!p->Expanded())
            return false;
    return true;
}

TQXTreeNode* TQXTreeControl::NextVisible(const TQXTreeNode* node) const {
    if (!node || node->AsItem()->treeWidget() != FWidget)
        return nullptr;
    if (node->Expanded() && node->ChildCount() > 0)
        return node->Child(0);
    return TQXTreeNode::FromItem(NextAfterSubtree(node->AsItem()));
}

TQXTreeNode* TQXTreeControl::PreviousVisible(const TQXTreeNode* node) const {
    if (!node || node->AsItem()->treeWidget() != FWidget)
        return nullptr;
    QTreeWidgetItem* parent = const_cast<QTreeWidgetItem*>(node->AsItem())->parent();
    const QTreeWidgetItem* container = parent ? parent : FWidget->invisibleRootItem();
    const int index = container->indexOfChild(const_cast<QTreeWidgetItem*>(node->AsItem()));
    if (index == 0)
        return TQXTreeNode::FromItem(parent);
    // The last visible node of the previous sibling's subtree.
    QTreeWidgetItem* item = container->child(index - 1);
    while (item->isExpanded() && item->childCount() > 0)
        item = item->child(item->childCount() - 1);
    return TQXTreeNode::FromItem(item);
}

QList<TQXTreeNode*> TQXTreeControl::Selection() const {
    QList<TQXTreeNode*> nodes;
    for (const QPersistentModelIndex& index : FSelectionOrder) {
        if (!index.isValid())
            continue;
        TQXTreeNode* node = TQXTreeNode::FromItem(FWidget->itemFromIndex(index));
        if (node && node->Selected())
            nodes << node;
    }
    return nodes;
}

void TQXTreeControl::Select(TQXTreeNode* node, bool keepOthers) {
    if (!keepOthers)
        FWidget->clearSelection();
    if (node)
        node->setSelected(true);
}

void TQXTreeControl::Deselect(TQXTreeNode* node) {
    if (node)
        node->setSelected(false);
}

void TQXTreeControl::SetSelection(const QList<TQXTreeNode*>& nodes) {
    QItemSelection selection;
    QList<QPersistentModelIndex> order;
    for (TQXTreeNode* node : nodes) {
        if (!node || node->AsItem()->treeWidget() != FWidget)
            continue;
        const QModelIndex index = FWidget->indexFromItem(node->AsItem());
        selection.select(index, index);
        order << QPersistentModelIndex(index);
    }
    FWidget->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    // The order given, not the tree order that selecting together implies.
    FSelectionOrder = order;
}

void TQXTreeControl::SetSelected(const QList<TQXTreeNode*>& nodes, bool selected) {
    QItemSelection selection;
    for (TQXTreeNode* node : nodes) {
        const QModelIndex index = FWidget->indexFromItem(node->AsItem());
        selection.select(index, index);
    }
    if (selection.isEmpty())
        return;
    FWidget->selectionModel()->select(selection, selected ? QItemSelectionModel::Select
                                                          : QItemSelectionModel::Deselect);
}

TQXTreeNode* TQXTreeControl::NodeAtPoint(const QPoint& point) const {
    return TQXTreeNode::FromItem(FWidget->itemAt(point));
}

void TQXTreeControl::SetCurrent(TQXTreeNode* node) {
    FWidget->setCurrentItem(node ? node->AsItem() : nullptr);
}

QRect TQXTreeControl::NodeRect(const TQXTreeNode* node) const {
    return node ? FWidget->visualItemRect(node->AsItem()) : QRect();
}

QWidget* TQXTreeControl::Viewport() const {
    return FWidget->viewport();
}

void TQXTreeControl::TrackSelection() {
    QSet<QTreeWidgetItem*> selected;
    for (QTreeWidgetItem* item : FWidget->selectedItems())
        selected.insert(item);

    QSet<QTreeWidgetItem*> known;
    QList<QPersistentModelIndex> kept;
    for (const QPersistentModelIndex& index : FSelectionOrder) {
        if (!index.isValid())
            continue;
        QTreeWidgetItem* item = FWidget->itemFromIndex(index);
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
        for (QTreeWidgetItemIterator it(FWidget); *it; ++it)
            order.insert(*it, position++);
        std::sort(added.begin(), added.end(), [&order](QTreeWidgetItem* a, QTreeWidgetItem* b) {
            return order.value(a) < order.value(b);
        });
    }
    for (QTreeWidgetItem* item : added)
        kept << QPersistentModelIndex(FWidget->indexFromItem(item));
    FSelectionOrder = kept;
}

void TQXTreeControl::SortChildren(TQXTreeNode* parent) {
    Container(parent)->sortChildren(0, Qt::AscendingOrder);
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
        FPopupMenu->popup(FWidget->viewport()->mapToGlobal(position));
}

void TQXTreeControl::SetTreeFont(const QString& name, int pointSize) {
    QFont f = font();
    if (!name.isEmpty())
        f.setFamily(name);
    if (pointSize > 0)
        f.setPointSize(pointSize);
    setFont(f);
    FWidget->viewport()->update();
}
