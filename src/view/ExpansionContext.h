#pragma once

#include "view/Dependency.h"
#include "view/RecordReader.h"

#include <QString>

#include <functional>

class TQXTreeControl;
class TQXItem;

// What an expansion of one node needs of its view: the repository, the
// tree, the view's settings and its call lookup with the list it fills.
struct TQXExpansionContext {
    TQXRecordReader& Records;
    TQXTreeControl& Tree;
    // The view's GetDependencies: fills Dependencies, true when any call was kept.
    std::function<bool(const TQXItem& item, int direction, bool stopAtFirst)> GetDependencies;
    const TDependencies& Dependencies;
    QString Level;       // the view-by level text ("System" ... "Data")
    bool Option = false; // the option box (objects or entries in sequence)
    // Limits set by "Expand All within Object/Package"; 0 when unset.
    qint32 ExpandFileID = 0;
    qint32 ExpandPackageID = 0;
    qint32 ExpandObjectID = 0;
};
