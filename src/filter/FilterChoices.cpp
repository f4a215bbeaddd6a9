#include "filter/FilterChoices.h"

#include "repository/ViewSettings.h"

namespace filterchoice {

const std::array<Attribute, AttributeCount>& Attributes() {
    using qx::Table;
    static const std::array<Attribute, AttributeCount> attributes{{
        {"Systems Name", Table::QXATTRIBUTE, "QXAttributeName", qx::code::AttributeSystem},
        {"Computers Name", Table::QXATTRIBUTE, "QXAttributeName", qx::code::AttributeComputer},
        {"Applications Name", Table::QXATTRIBUTE, "QXAttributeName",
         qx::code::AttributeApplication},
        {"Packages Name", Table::QXPACKAGE, "QXPackageName", 0},
        {"Objects Name", Table::QXOBJECT, "QXObjectName", 0},
        {"Objects Type", Table::QXOBJECT, "QXObjectType", 0},
        {"Entrys Name", Table::QXENTRY, "QXEntryName", 0},
        {"Line of Code", Table::QXROW, "QXRow", 0},
        {"Variables Name", Table::QXWORD, "QXWord", 0},
        {"Variables Type", Table::QXWORD, "QXObjectIdentifier", 0},
        {"Files Name", Table::QXFILE, "QXFileName", 0},
    }};
    return attributes;
}

const std::array<Operator, OperatorCount>& Operators() {
    static const std::array<Operator, OperatorCount> operators{{
        {"equals", opEquals},
        {"contains", opContains},
        {"begins with", opBeginsWith},
        {"ends with", opEndsWith},
    }};
    return operators;
}

int AttributeIndex(const QString& text) {
    for (int i = 0; i < AttributeCount; ++i)
        if (text == QLatin1String(Attributes()[i].Text))
            return i;
    return -1;
}

int OperatorIndex(const QString& text) {
    for (int i = 0; i < OperatorCount; ++i)
        if (text == QLatin1String(Operators()[i].Text))
            return i;
    return -1;
}

QStringList AttributeTexts() {
    QStringList texts;
    for (const Attribute& attribute : Attributes())
        texts << QLatin1String(attribute.Text);
    return texts;
}

QStringList OperatorTexts() {
    QStringList texts;
    for (const Operator& op : Operators())
        texts << QLatin1String(op.Text);
    return texts;
}

QString OperatorText(TOperator op) {
    for (const Operator& known : Operators())
        if (known.Value == op)
            return QLatin1String(known.Text);
    return {};
}

QList<int> ForLevel(const QString& level) {
    const std::optional<TQXLevel> known = level::FromName(level);
    switch (known.value_or(TQXLevel::Data)) {
    case TQXLevel::System:
        return {0};
    case TQXLevel::Computer:
        return {0, 1};
    case TQXLevel::Application:
        return {0, 1, 2};
    case TQXLevel::Package:
        return {0, 1, 2, 3, 10};
    case TQXLevel::Object:
        return {0, 1, 2, 3, 4, 5, 10};
    case TQXLevel::Entry:
        return {0, 1, 2, 3, 4, 5, 6, 10};
    case TQXLevel::Code:
        return {0, 1, 2, 3, 4, 5, 6, 7, 10};
    case TQXLevel::Data:
        break;
    }
    return {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

bool EditableAt(const QString& attributeText, const QString& level) {
    if (attributeText.isEmpty())
        return true;
    const int index = AttributeIndex(attributeText);
    return index >= 0 && ForLevel(level).contains(index);
}

} // namespace filterchoice
