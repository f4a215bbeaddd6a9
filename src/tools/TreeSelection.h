#pragma once

#include <QList>
#include <QString>

class TQXPrintCanvas;
class TQXTreeControl;
class TQXTreeNode;

// The commands on the tree and its selection as a whole, apart from any
// dialog: what they read of the tree, and the selection they leave.
namespace treeselection {

// A node as copied and printed: (4 x depth + 1) blanks, then its text.
QString IndentedText(const TQXTreeNode* node);

// The clipboard text for the selection: each non-empty node's line ended by
// a carriage return, put in front of the earlier ones, so the nodes come in
// reverse selection order.
QString CopyText(const QList<TQXTreeNode*>& selection);

// Every node whose ancestors are all expanded, from the first node down.
QList<TQXTreeNode*> VisibleNodes(const TQXTreeControl& tree);

// Selects all visible nodes, and only them.
void SelectAllVisible(TQXTreeControl& tree);

// Adds to the selection (or removes from it) every node of the tree,
// collapsed branches included, whose text begins with `prefix`
// (case-sensitive; an empty prefix matches no node).
void ChangeSelection(TQXTreeControl& tree, bool select, const QString& prefix);

// Whether `node` is a node of the tree; the pointer is compared, never
// followed, so it may be one that was deleted since.
bool Contains(const TQXTreeControl& tree, const TQXTreeNode* node);

// The next visible node from `start` on (`start` itself included) in the
// direction given whose text contains `text`; without `matchCase` both are
// compared in upper case. Null when the walk ends without a match: it does
// not wrap around.
TQXTreeNode* FindVisible(const TQXTreeControl& tree, TQXTreeNode* start, const QString& text,
                         bool matchCase, bool down);

// Prints the heading at (400, 200) and the visible nodes from y = 400, 80
// units apart, starting a new page when y passes the page height less 400.
void PrintVisible(const TQXTreeControl& tree, const QString& heading, TQXPrintCanvas& canvas);

} // namespace treeselection
