#include "TextTreeWriter.h"

#include "NodeFields.h"

#include "platform/TreeNode.h"

#include <QTextStream>

namespace {
QString OneLine(QString text) {
    for (QChar& c : text)
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            c = QLatin1Char(' ');
    return text;
}
} // namespace

void TQXTextTreeWriter::Write(const TQXTreeControl& tree, QTextStream& out) const {
    for (const TQXTreeNode* root : nodefields::ShownRoots(tree))
        WriteNode(*root, 0, out);
}

void TQXTextTreeWriter::WriteNode(const TQXTreeNode& node, int depth, QTextStream& out) {
    out << QString(2 * depth, QLatin1Char(' ')) << OneLine(node.Text());
    if (node.Item()) {
        out << '\t' << node.ImageIndex();
        for (const nodefields::Field& field : nodefields::ItemFields(node.Item()))
            out << '\t' << OneLine(field.Value);
    }
    out << '\n';
    for (const TQXTreeNode* child : nodefields::ShownChildren(node))
        WriteNode(*child, depth + 1, out);
}
