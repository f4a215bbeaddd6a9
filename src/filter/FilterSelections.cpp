#include "filter/FilterSelections.h"

#include "repository/Errors.h"
#include "repository/WhereText.h"

namespace {

// The pattern between quotes, its own "%", "_" and "\" escaped when it has
// any, with the ESCAPE clause then.
QString LikePattern(const QString& before, const QString& value, const QString& after) {
    const bool hasWildcards = value.contains(QLatin1Char('%')) ||
                              value.contains(QLatin1Char('_')) || value.contains(QLatin1Char('\\'));
    if (!hasWildcards)
        return where::Quoted(before + value + after);
    QString escaped;
    escaped.reserve(value.size() * 2);
    for (const QChar c : value) {
        if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('\\'))
            escaped += QLatin1Char('\\');
        escaped += c;
    }
    return where::Quoted(before + escaped + after) + QStringLiteral(" ESCAPE '\\'");
}

bool IsTable(TQXTableRef ref, qx::Table table) {
    return ref &&
           ref->TableName().compare(QLatin1String(qx::TableName(table)), Qt::CaseInsensitive) == 0;
}

// " AND " or " OR " by the condition's joint.
QString Joint(const TQXWhereClause& clause, int index) {
    return clause.GetAnd_Previous(index) ? QStringLiteral(" AND ") : QStringLiteral(" OR ");
}

const char* FileColumnOfAttributeType(int typeKey) {
    switch (typeKey) {
    case qx::code::AttributeSystem:
        return "QXSystemID";
    case qx::code::AttributeComputer:
        return "QXComputerID";
    case qx::code::AttributeApplication:
        return "QXApplicationID";
    default:
        throw EQXError(QStringLiteral("A filter condition on attributes has the type ") +
                       where::Number(typeKey) +
                       QStringLiteral(", which is no system, computer or application"));
    }
}

// Adds the attribute condition `index` to the file text as the ids of the
// matching attributes.
void AddAttributeCondition(TQXRecordReader& records, const TQXWhereClause& clause, int index,
                           bool caseSensitive, QString& fileText) {
    const int typeKey = clause.GetTypeKey(index);
    const char* fileColumn = FileColumnOfAttributeType(typeKey);
    QString attributes;
    AppendFilterString(records.Access(), clause, index, caseSensitive, attributes);
    attributes += QStringLiteral(" AND QXAttributeType = ") + where::Number(typeKey);
    QList<qint32> ids;
    if (records.Select(qx::Table::QXATTRIBUTE, attributes)) {
        do
            ids << records.Int(qx::Table::QXATTRIBUTE, qx::QXATTRIBUTE::QXAttributeID);
        while (records.Next(qx::Table::QXATTRIBUTE));
    }
    const QString noFile = QStringLiteral("QXFileID = 0");
    if (fileText.isEmpty())
        fileText = ids.isEmpty() ? noFile : where::In(fileColumn, ids, QStringLiteral(","));
    else if (ids.isEmpty())
        fileText += Joint(clause, index) + QLatin1Char('(') + noFile + QLatin1Char(')');
    else
        fileText += Joint(clause, index) + where::In(fileColumn, ids, QStringLiteral(","));
}

} // namespace

QString FilterConditionText(const QString& column, TOperator op, const QString& value,
                            bool caseSensitive) {
    const QString subject = caseSensitive ? column : where::Upper(column);
    const QString v = caseSensitive ? value : where::UpperCase(value);
    const QString any = QStringLiteral("%");
    switch (op) {
    case opEquals:
        return subject + QStringLiteral(" = ") + where::Quoted(v);
    case opContains:
        return subject + QStringLiteral(" LIKE ") + LikePattern(any, v, any);
    case opBeginsWith:
        return subject + QStringLiteral(" LIKE ") + LikePattern(QString(), v, any);
    case opEndsWith:
        return subject + QStringLiteral(" LIKE ") + LikePattern(any, v, QString());
    case opNone:
        break;
    }
    throw EQXError(QStringLiteral("The filter condition on ") + column +
                   QStringLiteral(" has no operator (") + where::Number(op) + QStringLiteral(")"));
}

void AppendFilterString(TQXDataAccessInterface& access, const TQXWhereClause& clause, int index,
                        bool caseSensitive, QString& text) {
    if (!text.isEmpty())
        text += Joint(clause, index);
    const QString column = access.GetFieldName(clause.GetTable(index), clause.GetField(index));
    text += FilterConditionText(column, clause.GetOperator(index), clause.GetValueString(index),
                                caseSensitive);
}

TQXRootFilter SelectFiltered(TQXRecordReader& records, TQXLevel level, const TQXWhereClause& clause,
                             bool caseSensitive) {
    using qx::Table;
    QString fileText;
    QString packageText;
    TQXRootFilter filter;
    for (int i = 0; i < clause.Count(); ++i) {
        const TQXTableRef table = clause.GetTable(i);
        QString* text = nullptr;
        if (IsTable(table, Table::QXATTRIBUTE)) {
            const int typeKey = clause.GetTypeKey(i);
            const bool belowLevel =
                (level == TQXLevel::System && (typeKey == qx::code::AttributeComputer ||
                                               typeKey == qx::code::AttributeApplication)) ||
                (level == TQXLevel::Computer && typeKey == qx::code::AttributeApplication);
            if (!belowLevel)
                AddAttributeCondition(records, clause, i, caseSensitive, fileText);
            continue;
        }
        if (IsTable(table, Table::QXPACKAGE))
            text = &packageText;
        else if (IsTable(table, Table::QXOBJECT))
            text = &filter.ObjectCondition;
        else if (IsTable(table, Table::QXENTRY))
            text = &filter.EntryCondition;
        else if (IsTable(table, Table::QXROW))
            text = &filter.RowCondition;
        else if (IsTable(table, Table::QXWORD))
            text = &filter.WordCondition;
        else if (IsTable(table, Table::QXFILE))
            text = &fileText;
        else
            throw EQXError(QStringLiteral("A filter condition is on the table ") +
                           (table ? table->TableName() : QStringLiteral("(none)")) +
                           QStringLiteral(", which the root items are not listed from"));
        AppendFilterString(records.Access(), clause, i, caseSensitive, *text);
    }

    records.Select(Table::QXFILE, fileText);
    if (level >= TQXLevel::Package)
        records.Select(Table::QXPACKAGE, packageText);
    if (level >= TQXLevel::Object)
        records.Select(Table::QXOBJECT, filter.ObjectCondition);
    if (level >= TQXLevel::Entry)
        records.Select(Table::QXENTRY, filter.EntryCondition);
    filter.PackageCondition = !packageText.isEmpty();
    return filter;
}
