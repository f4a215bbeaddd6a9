#pragma once

#include "repository/TreeItems.h"
#include "view/RecordReader.h"

#include <QString>

#include <functional>
#include <memory>

class TQXTreeControl;
class TQXTreeNode;

// What the root-item filter left for the listing: the current selections of
// QXFILE, QXPACKAGE, QXOBJECT and QXENTRY are narrowed as a side effect; the
// condition texts are empty for tables without a condition.
struct TQXRootFilter {
    bool PackageCondition = false;
    QString ObjectCondition;
    QString EntryCondition;
    QString RowCondition;
    QString WordCondition;
};

// Fills an empty tree with the root items of one view-by level: an outer
// loop walks one table's selection, candidates are tested for membership in
// the selections the filter left on other tables, and the listing stops at
// the root-item limit.
class TQXRootItemLister {
public:
    struct Hooks {
        std::function<TQXRootFilter()> SetFilter;
        // Consulted after every root node; true stops the listing at once.
        std::function<bool(int count)> HintAboutFilter;
        // Whether an item has a dependency in the direction (stop at first).
        std::function<bool(const TQXItem& item, int direction)> HasDependencies;
    };

    TQXRootItemLister(TQXRecordReader& records, TQXTreeControl& tree, Hooks hooks);

    // direction: 0 TopDown, 1 BottomUp; kind: 1 Distribution, 0 Dependencies.
    // A limit text that is not a number raises EQXError.
    void Show(int direction, int kind, const QString& level, const QString& limitText);

private:
    enum class Added { Yes, OverLimit, Stop };
    enum class Walk { Next, Done };

    Added Add(std::unique_ptr<TQXItem> item, const QString& text, int image);
    Walk AfterAdd(Added added);

    void ListAttributes(const QString& level);
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
    Hooks FHooks;

    TQXRootFilter FRootFilter;
    int FDirection = 0;
    int FKind = 1;
    QString FLevel;
    int FLimit = 0;
    int FCount = 0;
    bool FStopped = false;
    bool FSort = true;
};
