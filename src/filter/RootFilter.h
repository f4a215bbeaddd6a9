#pragma once

#include <QString>

// What the root-item filter left for the listing of root items: the current
// selections of QXFILE, QXPACKAGE, QXOBJECT and QXENTRY are narrowed as a
// side effect; the condition texts are empty for tables without a condition.
struct TQXRootFilter {
    bool PackageCondition = false;
    QString ObjectCondition;
    QString EntryCondition;
    QString RowCondition;
    QString WordCondition;
};
