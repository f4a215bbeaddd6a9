#pragma once

#include <QList>
#include <QString>

class TQXTreeControl;
class TQXTreeItem;
class TQXTreeNode;

// What every output format prints of a node: the nodes that are shown
// (placeholders are not), whether a node still has unopened children, and
// the fields of its item in constructor order.
namespace nodefields {

struct Field {
    QString Name;
    QString Value;
    bool IsText = false; // a text of a variable, not an identifier
};

// Item fields, in constructor order: a TQXItem's nine identifiers, or a
// TQXDataItem's two texts and nine integers; none without an item.
QList<Field> ItemFields(const TQXTreeItem* item);
// Every field name any item can have, in the order the CSV columns take.
QStringList AllFieldNames();

QList<const TQXTreeNode*> ShownRoots(const TQXTreeControl& tree);
QList<const TQXTreeNode*> ShownChildren(const TQXTreeNode& node);
// The node still holds a placeholder: it has not been opened.
bool Expandable(const TQXTreeNode& node);

} // namespace nodefields
