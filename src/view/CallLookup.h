#pragma once

#include "repository/DataAccessInterface.h"
#include "repository/Dependency.h"
#include "repository/RecordReader.h"
#include "repository/TableHandleSet.h"
#include "repository/TreeItems.h"
#include "repository/ViewSettings.h"
#include "view/ReadPath.h"

#include <QHash>

#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <vector>

// Reads the calls that leave an item (TopDown) or reach it (BottomUp) from
// QXDEPENDENCIES, leaving out the calls that stay inside the item. The view's
// GetDependencies delegates here; the lookup changes the current selections of
// QXFILE, QXPACKAGE, QXOBJECT and QXDEPENDENCIES.
class TQXCallLookup {
    // One QXDEPENDENCIES record as read.
    struct Call {
        qint32 FileID, ObjectID, EntryID, InheritsFileID, InheritsObjectID;
        qint32 FromFileID, FromObjectID, FromEntryID, FromRowID, FromWordID;

        // The call as the view keeps it, naming the other end (file, object,
        // entry); a call into or out of a package file names that file.
        TDependency Kept(qint32 fileID, qint32 objectID, qint32 entryID, bool packageFile) const {
            return TDependency{.FileID = fileID,
                               .PackageFileID = packageFile ? fileID : 0,
                               .ObjectID = objectID,
                               .EntryID = entryID,
                               .InheritsFileID = InheritsFileID,
                               .InheritsObjectID = InheritsObjectID,
                               .FromFileID = FromFileID,
                               .FromRowID = FromRowID};
        }
    };

public:
    // What the lookup reads that does not change while the view shows one
    // refresh: the grouping of each file and the calls leaving each starting
    // point. Without it, opening a repository whose ids are all 0 asks the
    // database once per call, per file, per root item. The owner clears it
    // on every refresh; it empties itself when it grows too large.
    class Cache {
    public:
        void Clear();

    private:
        friend class TQXCallLookup;
        struct Grouping {
            qint32 SystemID, ComputerID, ApplicationID;
        };
        // Groupings by file id; none for a file missing from QXFILE.
        std::unordered_map<qint32, std::optional<Grouping>> FGroupings;
        QHash<QString, std::vector<Call>> FCallsFrom; // TopDown, by condition
        QHash<QString, std::vector<Call>> FCallsTo;   // BottomUp, by condition
        qsizetype FCallCount = 0;
        // Whether an object has a call to show, read for many objects at
        // once: by direction, option box, file and object.
        std::map<std::tuple<bool, bool, qint32, qint32>, bool> FObjectAnswers;
        // The same for packages whose members are all plain objects of other
        // files: by direction and package id.
        std::map<std::pair<bool, qint32>, bool> FPackageAnswers;
        // The same for entries: by direction, file, object and entry.
        std::map<std::tuple<bool, qint32, qint32, qint32>, bool> FEntryAnswers;
        // Whether a system, computer or application has a call kept for
        // certain (false: not known): by direction and its three ids.
        using GroupingKey = std::tuple<bool, qint32, qint32, qint32>;
        std::map<GroupingKey, bool> FGroupingAnswers;
    };

    TQXCallLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables, Cache& cache,
                  TQXReadPath path = TQXReadPath::SetBased);

    // Empties `list` and appends one record per call kept; true when any was
    // kept. With stopAtFirst the lookup ends at the first record kept.
    // `objectsSequential` is the view's option box: with it, an object's
    // calls into itself are kept. Failures are raised again with the
    // "TQXView.GetDependencies: " prefix.
    bool GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst,
                         bool objectsSequential, TDependencies& list);

    // Whether GetDependencies with stopAtFirst would keep a call; `list` is
    // left undefined. A system, computer or application with a call that is
    // kept for certain is answered by one joined statement (a broken file
    // record met earlier in the record-by-record order is then reported by
    // the expansion rather than here); anything else as GetDependencies
    // answers it.
    bool HasDependencies(const TQXItem& item, TQXDirection direction, bool objectsSequential,
                         TDependencies& list);
    // On the set-based path, reads for all object items among these in a
    // statement per few hundred whether they have a call to show; later
    // HasDependencies calls for them answer from that.
    void PrepareObjectTests(const std::vector<const TQXItem*>& items, TQXDirection direction,
                            bool objectsSequential);

    // Conditions on QXFILE under an alias, for joined statements over a
    // system, computer or application item. GroupingFiles selects the item's
    // own files as the lookup chooses them (computer, then system, then
    // application; empty for any other item). LeavesGrouping holds for a
    // file record that shares none of the item's three ids, or that lacks one
    // (which a record-by-record read would refuse).
    static QString GroupingFiles(const TQXItem& item, const QString& alias);
    // The QXFILE column and id GroupingFiles tests; none for another item.
    static std::optional<std::pair<const char*, qint32>> GroupingColumn(const TQXItem& item);
    static QString LeavesGrouping(const TQXItem& item, const QString& alias);
    static QString LeavesGroupingOf(const QString& alias, const QString& systemID,
                                    const QString& computerID, const QString& applicationID);

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

    bool SourceList(const TQXItem& item, std::vector<Source>& sources);
    bool MayHaveCallLeaving(const TQXItem& item, TQXDirection direction);
    bool HasPlainCallLeaving(const TQXItem& item, TQXDirection direction);
    void PreparePackageTests(const std::vector<const TQXItem*>& items, TQXDirection direction);
    void PrepareEntryTests(const std::vector<const TQXItem*>& items, TQXDirection direction);
    void PrepareGroupingTests(const std::vector<const TQXItem*>& items, TQXDirection direction);
    static QString PlainCallsLeaving(bool topDown, const QString& grouping, const QString& systemID,
                                     const QString& computerID, const QString& applicationID);
    bool TopDown(const Source& s, const TQXItem& item, bool stopAtFirst, bool objectsSequential,
                 TDependencies& list);
    bool BottomUp(const Source& s, const TQXItem& item, bool stopAtFirst, TDependencies& list);
    bool SameGrouping(qint32 fileID, const TQXItem& item);
    Cache::Grouping CurrentFileGrouping();
    bool InSamePackage(qint32 fileID, qint32 objectID, const TQXItem& item);
    bool IsWholeObjectCallToDrop(qint32 fileID, qint32 objectID);
    Call ReadCall(TQXTableRef dataSet);
    const std::vector<Call>& CallsFrom(const QString& condition);
    const std::vector<Call>& CallsTo(const QString& condition);
    std::vector<Call> ReadSelection(const QString& condition);
    void Keep(QHash<QString, std::vector<Call>>& calls, const QString& condition,
              std::vector<Call> list);
    void ReadAhead(const std::vector<Source>& sources, TQXDirection direction);
    void ReadGroupings(const QList<qint32>& fileIDs);
    void ReadGroupingsOf(const std::vector<Call>& calls, bool topDown);

    TQXDataAccessInterface& FDataAccess;
    TQXTableHandleSet& FTables;
    TQXRecordReader FRecords;
    Cache& FCache;
    TQXReadPath FPath;
};
