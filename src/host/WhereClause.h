#pragma once

#include "repository/DataAccessInterface.h"

#include <QList>
#include <QString>

// How a filter condition compares its column with its value; the numbers
// are the ones view documents store.
enum TOperator : int {
    opNone = 0,
    opEquals = 10,
    opContains = 11,
    opBeginsWith = 12,
    opEndsWith = 13,
};

// The root-item filter's conditions in order. Each is joined to the one
// before it with AND or OR and compares one column of one table (for
// attributes, of one attribute type) with a value. SetOperator and
// SetValueString describe the condition added last.
class TQXWhereClause {
public:
    void Clear() { FConditions.clear(); }
    void Add(bool andPrevious, TQXTableRef table, TQXFieldRef field, int typeKey);
    // Both throw EQXError when no condition has been added yet.
    void SetOperator(TOperator op);
    void SetValueString(const QString& value);

    int Count() const { return static_cast<int>(FConditions.size()); }
    // The index must lie below Count().
    TQXTableRef GetTable(int index) const { return FConditions.at(index).Table; }
    TQXFieldRef GetField(int index) const { return FConditions.at(index).Field; }
    int GetTypeKey(int index) const { return FConditions.at(index).TypeKey; }
    TOperator GetOperator(int index) const { return FConditions.at(index).Operator; }
    const QString& GetValueString(int index) const { return FConditions.at(index).Value; }
    bool GetAnd_Previous(int index) const { return FConditions.at(index).AndPrevious; }

private:
    struct Condition {
        bool AndPrevious = false;
        TQXTableRef Table = nullptr;
        TQXFieldRef Field = nullptr;
        int TypeKey = 0;
        TOperator Operator = opNone;
        QString Value;
    };
    Condition& Last();

    QList<Condition> FConditions;
};
