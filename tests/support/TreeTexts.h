#pragma once

// Reading a tree in a test: its roots or a node's children, and per node its
// text, image, whether it can be opened and its item's id.
#include "platform/TreeControl.h"
#include "platform/TreeNode.h"

#include <QList>
#include <QStringList>

inline QList<TQXTreeNode*> RootNodes(const TQXTreeControl& tree) {
    QList<TQXTreeNode*> nodes;
    for (int i = 0; i < tree.RootCount(); ++i)
        nodes << tree.Root(i);
    return nodes;
}
inline QList<TQXTreeNode*> ChildNodes(const TQXTreeNode* node) {
    QList<TQXTreeNode*> nodes;
    for (int i = 0; i < node->ChildCount(); ++i)
        nodes << node->Child(i);
    return nodes;
}

inline QStringList Texts(const QList<TQXTreeNode*>& nodes) {
    QStringList texts;
    for (const TQXTreeNode* node : nodes)
        texts << node->Text();
    return texts;
}
inline QList<int> Images(const QList<TQXTreeNode*>& nodes) {
    QList<int> images;
    for (const TQXTreeNode* node : nodes)
        images << node->ImageIndex();
    return images;
}
// 1 for a node with children (or a placeholder), 0 for a leaf.
inline QList<int> Expandable(const QList<TQXTreeNode*>& nodes) {
    QList<int> expandable;
    for (const TQXTreeNode* node : nodes)
        expandable << (node->ChildCount() > 0 || TQXTreeControl::HasPlaceholder(node) ? 1 : 0);
    return expandable;
}
// The item's ids ("file,system,computer,application,package,object,entry,
// row,word" for a TQXItem); empty for a node without item.
inline QString ItemId(const TQXTreeNode* node) {
    return node->Item() ? node->Item()->GetItemID() : QString();
}

// The same of the roots, or of a node's children.
inline QStringList RootTexts(const TQXTreeControl& tree) {
    return Texts(RootNodes(tree));
}
inline QStringList ChildTexts(const TQXTreeNode* node) {
    return Texts(ChildNodes(node));
}
inline QList<int> Images(const TQXTreeNode* node) {
    return Images(ChildNodes(node));
}
inline QList<int> Expandable(const TQXTreeNode* node) {
    return Expandable(ChildNodes(node));
}
