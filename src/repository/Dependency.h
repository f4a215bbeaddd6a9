#pragma once

#include <QtGlobal>

#include <vector>

// One call as the view keeps it. Fields 1 to 4 name the other end of the
// call as seen from the item looked up; FromFileID and FromRowID name the line
// where the call is written. InheritsFileID is 0 for an ordinary call, above
// 0 for a call possible through inheritance (the Inherits fields then name the
// object whose inheritance leads to the target), below 0 when the parser was
// not sure of the call.
struct TDependency {
    qint32 FileID = 0;
    qint32 PackageFileID = 0;
    qint32 ObjectID = 0;
    qint32 EntryID = 0;
    qint32 RowID = 0;
    qint32 WordID = 0;
    qint32 InheritsFileID = 0;
    qint32 InheritsObjectID = 0;
    qint32 FromFileID = 0;
    qint32 FromRowID = 0;

    bool operator==(const TDependency&) const = default;
};

using TDependencies = std::vector<TDependency>;
