#pragma once

#include "filter/RootFilter.h"
#include "repository/RecordReader.h"
#include "repository/TreeItems.h"
#include "repository/ViewSettings.h"
#include "view/ReadPath.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class TQXTreeControl;
class TQXTreeNode;
class TQXViewOperations;

// Fills an empty tree with the root items of one view-by level: an outer
// loop walks one table's selection, candidates are tested for membership in
// the selections the filter left on other tables, and the listing stops at
// the root-item limit.
class TQXRootItemLister {
public:
    // The view is asked for the root-item filter first, for its hint after
    // every root node, and (Dependencies) whether an item calls anything.
    // The set-based path reads ahead the files, objects and entries the
    // first records of a listing name; the reference path looks each up.
    TQXRootItemLister(TQXRecordReader& records, TQXTreeControl& tree, TQXViewOperations& view,
                      TQXReadPath path = TQXReadPath::SetBased);

    // A limit text that is not a number raises EQXError.
    void Show(const TQXViewSettings& settings);

private:
    // A look-up a listing makes for each record of its source: in the
    // target's selection, by its key columns, with the values of the
    // source's columns.
    struct LookUp {
        qx::Table Target;
        const char* TargetKeys;
        std::vector<const char*> SourceColumns;
    };
    // Reads ahead the look-ups of the first records of the source's
    // selection, `perRoot` records for each root node the limit allows
    // (records that are passed over need theirs too), so that each costs no
    // statement; the set-based path only.
    void ReadAhead(qx::Table source, const std::vector<LookUp>& lookUps, int perRoot = 2);
    enum class Added { Yes, OverLimit, Stop };
    enum class Walk { Next, Done };

    Added Add(std::unique_ptr<TQXItem> item, const QString& text, int image);
    Walk AfterAdd(Added added);

    void ListAttributes();
    void ListPackages();
    void ListObjects();
    void ListEntries();
    void ListRows();
    void ListWords();

    // Outer loops shared by the levels below Object.
    bool WalkPackageMembers(const std::function<Walk()>& visit);
    bool WalkObjects(const std::function<Walk()>& visit);
    bool WalkEntryObjects(const std::function<Walk()>& visit);
    Walk EntriesOfCurrentObject();

    bool LocateFile(qint32 fileID);
    bool LocateObject(qint32 fileID, qint32 objectID);
    bool LocateEntry(qint32 fileID, qint32 objectID, qint32 entryID, QString& name);
    QString ObjectText();

    void AddPlaceholders();
    bool IsDuplicatePackage(qint32 fileID, qint32 packageID) const;

    TQXRecordReader& FRecords;
    TQXTreeControl& FTree;
    TQXViewOperations& FView;
    TQXReadPath FPath;

    TQXRootFilter FRootFilter;
    TQXViewSettings FSettings;
    int FDirection = 0; // the settings' direction number
    int FLimit = 0;
    int FCount = 0;
    bool FStopped = false;
    bool FSort = true;
};
