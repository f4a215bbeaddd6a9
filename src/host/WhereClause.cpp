#include "host/WhereClause.h"

#include "repository/Errors.h"

void TQXWhereClause::Add(bool andPrevious, TQXTableRef table, TQXFieldRef field, int typeKey) {
    FConditions.append(Condition{andPrevious, table, field, typeKey, opNone, QString()});
}

void TQXWhereClause::SetOperator(TOperator op) {
    Last().Operator = op;
}

void TQXWhereClause::SetValueString(const QString& value) {
    Last().Value = value;
}

TQXWhereClause::Condition& TQXWhereClause::Last() {
    if (FConditions.isEmpty())
        throw EQXError(QStringLiteral("The filter's where clause has no condition to describe"));
    return FConditions.last();
}
