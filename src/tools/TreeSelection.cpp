#include "tools/TreeSelection.h"

#include "platform/PrintCanvas.h"
#include "platform/TreeControl.h"

namespace treeselection {

QString IndentedText(const TQXTreeNode* node) {
    return QString(4 * node->Level() + 1, QLatin1Char(' ')) + node->Text();
}

QString CopyText(const QList<TQXTreeNode*>& selection) {
    QString text;
    for (const TQXTreeNode* node : selection)
        if (!node->Text().isEmpty())
            text = IndentedText(node) + QLatin1Char('\r') + text;
    return text;
}

QList<TQXTreeNode*> VisibleNodes(const TQXTreeControl& tree) {
    QList<TQXTreeNode*> nodes;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = tree.NextVisible(node))
        nodes << node;
    return nodes;
}

void SelectAllVisible(TQXTreeControl& tree) {
    if (!tree.FirstNode())
        return;
    tree.Select(nullptr);
    tree.SetSelected(VisibleNodes(tree), true);
}

void ChangeSelection(TQXTreeControl& tree, bool select, const QString& prefix) {
    if (prefix.isEmpty())
        return;
    QList<TQXTreeNode*> matching;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = TQXTreeControl::NextNode(node))
        if (node->Text().startsWith(prefix))
            matching << node;
    tree.SetSelected(matching, select);
}

bool Contains(const TQXTreeControl& tree, const TQXTreeNode* node) {
    if (!node)
        return false;
    for (const TQXTreeNode* n = tree.FirstNode(); n; n = TQXTreeControl::NextNode(n))
        if (n == node)
            return true;
    return false;
}

TQXTreeNode* FindVisible(const TQXTreeControl& tree, TQXTreeNode* start, const QString& text,
                         bool matchCase, bool down) {
    const QString wanted = matchCase ? text : text.toUpper();
    for (TQXTreeNode* node = start; node;
         node = down ? tree.NextVisible(node) : tree.PreviousVisible(node)) {
        const QString nodeText = matchCase ? node->Text() : node->Text().toUpper();
        if (nodeText.contains(wanted))
            return node;
    }
    return nullptr;
}

void PrintVisible(const TQXTreeControl& tree, const QString& heading, TQXPrintCanvas& canvas) {
    constexpr int Left = 400;
    constexpr int Top = 400;
    constexpr int LineHeight = 80;
    canvas.TextOut(Left, 200, heading);
    int y = Top;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = tree.NextVisible(node)) {
        canvas.TextOut(Left, y, IndentedText(node));
        y += LineHeight;
        if (y > canvas.PageHeight() - Top) {
            canvas.NewPage();
            y = Top;
        }
    }
}

} // namespace treeselection
