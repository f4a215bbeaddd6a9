#pragma once

#include "repository/DataAccessInterface.h"
#include "repository/Dependency.h"
#include "repository/RecordReader.h"
#include "repository/TableHandleSet.h"
#include "repository/TreeItems.h"
#include "repository/ViewSettings.h"

#include <vector>

// Reads the calls that leave an item (TopDown) or reach it (BottomUp) from
// QXDEPENDENCIES, leaving out the calls that stay inside the item. The view's
// GetDependencies delegates here; the lookup changes the current selections of
// QXFILE, QXPACKAGE, QXOBJECT and QXDEPENDENCIES.
class TQXCallLookup {
public:
    TQXCallLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables);

    // Empties `list` and appends one record per call kept; true when any was
    // kept. With stopAtFirst the lookup ends at the first record kept.
    // `objectsSequential` is the view's option box: with it, an object's
    // calls into itself are kept. Failures are raised again with the
    // "TQXView.GetDependencies: " prefix.
    bool GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst,
                         bool objectsSequential, TDependencies& list);

private:
    // A starting point of the lookup; PackageID holds a package id.
    struct Source {
        qint32 FileID = 0;
        qint32 PackageID = 0;
        qint32 ObjectID = 0;
        qint32 EntryID = 0;
        qint32 RowID = 0;
        qint32 WordID = 0;
    };
    struct Call; // one QXDEPENDENCIES record as read

    bool SourceList(const TQXItem& item, std::vector<Source>& sources);
    bool TopDown(const Source& s, const TQXItem& item, bool stopAtFirst, bool objectsSequential,
                 TDependencies& list);
    bool BottomUp(const Source& s, const TQXItem& item, bool stopAtFirst, TDependencies& list);
    bool SameGrouping(qint32 fileID, const TQXItem& item);
    bool InSamePackage(qint32 fileID, qint32 objectID, const TQXItem& item);
    bool IsWholeObjectCallToDrop(qint32 fileID, qint32 objectID);
    Call ReadCall(TQXTableRef dataSet);

    TQXDataAccessInterface& FDataAccess;
    TQXTableHandleSet& FTables;
    TQXRecordReader FRecords;
};
