#pragma once

#include "host/WhereClause.h"
#include "repository/SchemaNames.h"

#include <QList>
#include <QString>

#include <array>

// What the filter dialog offers: the attributes a condition can be on and
// the four operators, each by its position in the full list, and which
// attributes fit a view-by level.
namespace filterchoice {

struct Attribute {
    const char* Text;
    qx::Table Table;
    const char* Column;
    int TypeKey; // the attribute type for systems, computers and applications; else 0
};
inline constexpr int AttributeCount = 11;
const std::array<Attribute, AttributeCount>& Attributes();

struct Operator {
    const char* Text;
    TOperator Value;
};
inline constexpr int OperatorCount = 4;
const std::array<Operator, OperatorCount>& Operators();

// Position in the full list by exact text; -1 when there is none.
int AttributeIndex(const QString& text);
int OperatorIndex(const QString& text);
QStringList AttributeTexts();
QStringList OperatorTexts();
// The text of an operator value; empty for one that is not an operator.
QString OperatorText(TOperator op);

// The attributes offered at a level (its text, as the view-by box shows it),
// as positions in the full list; any text other than the eight levels gets
// them all.
QList<int> ForLevel(const QString& level);
// Whether a row with this attribute text can be edited at the level: an
// empty attribute always, else one the level offers.
bool EditableAt(const QString& attributeText, const QString& level);

} // namespace filterchoice
