#include "CsvTreeWriter.h"

#include "NodeFields.h"

#include "platform/TreeNode.h"

#include <QTextStream>

namespace {

// Quoted when it holds a comma, a quote or a line break; quotes doubled.
QString Field(const QString& value) {
    if (!value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) &&
        !value.contains(QLatin1Char('\n')) && !value.contains(QLatin1Char('\r')))
        return value;
    QString quoted = value;
    quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

void WriteRow(const QStringList& fields, QTextStream& out) {
    QStringList row;
    for (const QString& field : fields)
        row << Field(field);
    out << row.join(QLatin1Char(',')) << "\r\n";
}

} // namespace

void TQXCsvTreeWriter::Write(const TQXTreeControl& tree, QTextStream& out) const {
    WriteRow(QStringList{QStringLiteral("depth"), QStringLiteral("text"), QStringLiteral("image"),
                         QStringLiteral("expandable")} +
                 nodefields::AllFieldNames(),
             out);
    for (const TQXTreeNode* root : nodefields::ShownRoots(tree))
        WriteNode(*root, 0, out);
}

void TQXCsvTreeWriter::WriteNode(const TQXTreeNode& node, int depth, QTextStream& out) {
    const QStringList names = nodefields::AllFieldNames();
    QStringList values(names.size());
    for (const nodefields::Field& field : nodefields::ItemFields(node.Item()))
        values[names.indexOf(field.Name)] = field.Value;
    WriteRow(QStringList{QString::number(depth), node.Text(), QString::number(node.ImageIndex()),
                         nodefields::Expandable(node) ? QStringLiteral("true")
                                                      : QStringLiteral("false")} +
                 values,
             out);
    for (const TQXTreeNode* child : nodefields::ShownChildren(node))
        WriteNode(*child, depth + 1, out);
}
