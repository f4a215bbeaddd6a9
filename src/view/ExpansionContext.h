#pragma once

#include "repository/RecordReader.h"
#include "repository/ViewSettings.h"
#include "view/ReadPath.h"

#include <QtGlobal>

class TQXTreeControl;
class TQXUpperFileNames;
class TQXViewOperations;

// Limits of "Expand All within Object/Package": an expansion outside them
// is refused. 0 when unset.
struct TQXExpandLimits {
    qint32 FileID = 0;
    qint32 PackageID = 0;
    qint32 ObjectID = 0;

    bool Any() const { return FileID > 0 || PackageID > 0 || ObjectID > 0; }
};

// What an expansion of one node works with: the repository, the tree, the
// view it calls back and the view's settings at the time.
struct TQXExpansionContext {
    TQXRecordReader& Records;
    TQXTreeControl& Tree;
    TQXViewOperations& View;
    TQXViewSettings Settings;
    TQXExpandLimits Limits;
    TQXReadPath Path = TQXReadPath::SetBased;
    // Kept for one refresh; the set-based path only.
    TQXUpperFileNames* FileNames = nullptr;
};
