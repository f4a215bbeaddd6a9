#include "JsonTreeWriter.h"

#include "NodeFields.h"

#include "platform/TreeNode.h"

#include <QTextStream>

namespace {

QString Quoted(const QString& text) {
    QString quoted = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            quoted += QStringLiteral("\\\"");
            break;
        case '\\':
            quoted += QStringLiteral("\\\\");
            break;
        case '\n':
            quoted += QStringLiteral("\\n");
            break;
        case '\r':
            quoted += QStringLiteral("\\r");
            break;
        case '\t':
            quoted += QStringLiteral("\\t");
            break;
        default:
            if (c.unicode() < 0x20)
                quoted += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else
                quoted += c;
        }
    }
    return quoted + QLatin1Char('"');
}

QString Item(const TQXTreeNode& node) {
    const QList<nodefields::Field> fields = nodefields::ItemFields(node.Item());
    if (fields.isEmpty())
        return QStringLiteral("null");
    QStringList members;
    for (const nodefields::Field& field : fields)
        members << Quoted(field.Name) + QStringLiteral(": ") +
                       (field.IsText ? Quoted(field.Value) : field.Value);
    return QLatin1Char('{') + members.join(QStringLiteral(", ")) + QLatin1Char('}');
}

QString Filter(const TQXFilterInForce& filter) {
    QStringList conditions;
    for (const TQXFilterInForce::Condition& condition : filter.Conditions)
        conditions << QStringLiteral("{\"joint\": ") +
                          (condition.Joint.isEmpty() ? QStringLiteral("null")
                                                     : Quoted(condition.Joint)) +
                          QStringLiteral(", \"attribute\": ") + Quoted(condition.Attribute) +
                          QStringLiteral(", \"operator\": ") + Quoted(condition.Operator) +
                          QStringLiteral(", \"value\": ") + Quoted(condition.Value) +
                          QLatin1Char('}');
    return QStringLiteral("{\"on\": ") + (filter.On ? "true" : "false") +
           QStringLiteral(", \"caseSensitive\": ") + (filter.CaseSensitive ? "true" : "false") +
           QStringLiteral(", \"conditions\": [") + conditions.join(QStringLiteral(", ")) +
           QStringLiteral("]}");
}

} // namespace

void TQXJsonTreeWriter::Write(const TQXTreeControl& tree, QTextStream& out) const {
    const QList<const TQXTreeNode*> roots = nodefields::ShownRoots(tree);
    out << "{\n  \"filter\": " << Filter(FFilter) << ",\n  \"nodes\": [";
    for (qsizetype i = 0; i < roots.size(); ++i) {
        out << (i ? ",\n" : "\n");
        WriteNode(*roots.at(i), 4, out);
    }
    out << (roots.isEmpty() ? "]\n}\n" : "\n  ]\n}\n");
}

void TQXJsonTreeWriter::WriteNode(const TQXTreeNode& node, int indent, QTextStream& out) {
    const QString pad(indent, QLatin1Char(' '));
    const QString inner(indent + 2, QLatin1Char(' '));
    out << pad << "{\n";
    out << inner << "\"text\": " << Quoted(node.Text()) << ",\n";
    out << inner << "\"image\": " << node.ImageIndex() << ",\n";
    out << inner << "\"item\": " << Item(node) << ",\n";
    out << inner << "\"expandable\": " << (nodefields::Expandable(node) ? "true" : "false")
        << ",\n";
    out << inner << "\"children\": [";
    const QList<const TQXTreeNode*> children = nodefields::ShownChildren(node);
    for (qsizetype i = 0; i < children.size(); ++i) {
        out << (i ? ",\n" : "\n");
        WriteNode(*children.at(i), indent + 4, out);
    }
    out << (children.isEmpty() ? "]\n" : "\n" + inner + "]\n") << pad << "}";
}
