#include "view/CallLookup.h"

#include "repository/Errors.h"
#include "repository/ImageIndexes.h"
#include "repository/WhereText.h"

namespace {
const QString CallColumns =
    QStringLiteral("SELECT QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXInheritsFileID, "
                   "QXInheritsObjectID, QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID, "
                   "QXFromWordID FROM QXDEPENDENCIES WHERE ");
const QString CallOrder = QStringLiteral(
    " ORDER BY QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID, QXFromWordID");
} // namespace

struct TQXCallLookup::Call {
    qint32 FileID, ObjectID, EntryID, InheritsFileID, InheritsObjectID;
    qint32 FromFileID, FromObjectID, FromEntryID, FromRowID;

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

TQXCallLookup::TQXCallLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables)
    : FDataAccess(dataAccess), FTables(tables), FRecords(dataAccess, tables) {}

TQXCallLookup::Call TQXCallLookup::ReadCall(TQXTableRef dataSet) {
    using namespace qx::QXDEPENDENCIES;
    auto value = [&](int column) {
        return RecordInt(
            FDataAccess.GetFieldValue(dataSet, FTables.Field(qx::Table::QXDEPENDENCIES, column)),
            QStringLiteral("QXDEPENDENCIES"),
            QLatin1String(qx::ColumnName(qx::Table::QXDEPENDENCIES, column)), dataSet);
    };
    return Call{value(QXFileID),         value(QXObjectID),         value(QXEntryID),
                value(QXInheritsFileID), value(QXInheritsObjectID), value(QXFromFileID),
                value(QXFromObjectID),   value(QXFromEntryID),      value(QXFromRowID)};
}

bool TQXCallLookup::GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst,
                                    bool objectsSequential, TDependencies& list) {
    list.clear();
    try {
        std::vector<Source> sources;
        if (!SourceList(item, sources))
            return false;
        bool found = false;
        for (const Source& s : sources) {
            const bool kept = direction == TQXDirection::TopDown
                                  ? TopDown(s, item, stopAtFirst, objectsSequential, list)
                                  : BottomUp(s, item, stopAtFirst, list);
            found = found || kept;
            if (found && stopAtFirst)
                break;
        }
        return found;
    } catch (const std::exception& e) {
        throw EQXError(QStringLiteral("TQXView.GetDependencies: ") + ExceptionMessage(e) +
                       QChar(13));
    }
}

// The starting points: the files of a system, computer or application; the
// package file or the package's member objects; or the item itself. False
// when a grouping has no file at all.
bool TQXCallLookup::SourceList(const TQXItem& item, std::vector<Source>& sources) {
    if (item.FileID == 0) {
        QString condition;
        if (item.ComputerID > 0)
            condition = where::Keys({{"QXComputerID", item.ComputerID}});
        else if (item.SystemID > 0)
            condition = where::Keys({{"QXSystemID", item.SystemID}});
        else if (item.ApplicationID > 0)
            condition = where::Keys({{"QXApplicationID", item.ApplicationID}});
        TQXTableRef file = FTables.Table(qx::Table::QXFILE);
        if (!FDataAccess.SelectRecords(file, condition))
            return false;
        do
            sources.push_back(Source{FRecords.Int(qx::Table::QXFILE, qx::QXFILE::QXFileID)});
        while (FDataAccess.NextRecord(file));
        return true;
    }
    if (item.PackageID > 0) {
        using namespace qx::QXPACKAGE;
        TQXTableRef package = FTables.Table(qx::Table::QXPACKAGE);
        if (!FDataAccess.SelectRecords(package, where::Keys({{"QXPackageID", item.PackageID}})))
            return true;
        const qint32 fileID = FRecords.Int(qx::Table::QXPACKAGE, QXFileID);
        if (FRecords.Int(qx::Table::QXPACKAGE, QXObjectFileID) == fileID) {
            sources.push_back(Source{fileID, FRecords.Int(qx::Table::QXPACKAGE, QXPackageID)});
            return true;
        }
        do
            sources.push_back(Source{FRecords.Int(qx::Table::QXPACKAGE, QXObjectFileID),
                                     FRecords.Int(qx::Table::QXPACKAGE, QXPackageID),
                                     FRecords.Int(qx::Table::QXPACKAGE, QXObjectID)});
        while (FDataAccess.NextRecord(package));
        return true;
    }
    sources.push_back(
        Source{item.FileID, item.PackageID, item.ObjectID, item.EntryID, item.RowID, item.WordID});
    return true;
}

// The file's system, computer or application is the item's own (all three
// compared, also where the item holds 0). A missing file is not.
bool TQXCallLookup::SameGrouping(qint32 fileID, const TQXItem& item) {
    using namespace qx::QXFILE;
    if (!FRecords.Select(qx::Table::QXFILE, where::Keys({{"QXFileID", fileID}})))
        return false;
    return FRecords.Int(qx::Table::QXFILE, QXSystemID) == item.SystemID ||
           FRecords.Int(qx::Table::QXFILE, QXComputerID) == item.ComputerID ||
           FRecords.Int(qx::Table::QXFILE, QXApplicationID) == item.ApplicationID;
}

bool TQXCallLookup::InSamePackage(qint32 fileID, qint32 objectID, const TQXItem& item) {
    return FDataAccess.LocateRecord(FTables.Table(qx::Table::QXPACKAGE),
                                    QStringLiteral("QXObjectFileID;QXObjectID"), {fileID, objectID},
                                    1) &&
           FRecords.Int(qx::Table::QXPACKAGE, qx::QXPACKAGE::QXPackageID) == item.PackageID;
}

// A call from an entry to a whole object is kept only for objects shown with
// icon 52, and for objects missing from the repository.
bool TQXCallLookup::IsWholeObjectCallToDrop(qint32 fileID, qint32 objectID) {
    return FRecords.Select(qx::Table::QXOBJECT, where::FileObjectKeys(fileID, objectID)) &&
           FRecords.Int(qx::Table::QXOBJECT, qx::QXOBJECT::QXIcon) !=
               image::IconObjectCalledAsWhole;
}

bool TQXCallLookup::TopDown(const Source& s, const TQXItem& item, bool stopAtFirst,
                            bool objectsSequential, TDependencies& list) {
    QString condition = where::Keys({{"QXFromFileID", s.FileID}});
    if (s.RowID > 0)
        condition += where::AndKey("QXFromObjectID", s.ObjectID) +
                     where::AndKey("QXFromEntryID", s.EntryID) +
                     where::AndKey("QXFromRowID", s.RowID);
    else if (s.EntryID > 0)
        condition +=
            where::AndKey("QXFromObjectID", s.ObjectID) + where::AndKey("QXFromEntryID", s.EntryID);
    else if (s.ObjectID > 0)
        condition += where::AndKey("QXFromObjectID", s.ObjectID);

    bool found = false;
    {
        // The result is closed before the lookup returns: it needs no owner.
        std::unique_ptr<TQXDataSet> query =
            FDataAccess.OpenQuery(nullptr, {CallColumns, condition, CallOrder}, 0);
        for (bool more = !query->Eof(); more; more = FDataAccess.NextRecord(query.get())) {
            const Call d = ReadCall(query.get());
            bool leaveOut = false;
            if (s.PackageID == 0 && s.ObjectID == 0)
                leaveOut = SameGrouping(d.FileID, item);
            else if (s.PackageID > 0 && s.ObjectID == 0)
                leaveOut = d.FileID == item.FileID;
            else if (s.PackageID > 0)
                leaveOut = InSamePackage(d.FileID, d.ObjectID, item);
            else if (s.ObjectID > 0 && s.EntryID == 0)
                leaveOut =
                    d.FileID == item.FileID && d.ObjectID == item.ObjectID && !objectsSequential;
            else if (s.EntryID > 0 && d.EntryID == 0)
                leaveOut = IsWholeObjectCallToDrop(d.FileID, d.ObjectID);
            if (leaveOut)
                continue;
            const bool packageFile = s.PackageID > 0 && s.ObjectID == 0;
            list.push_back(d.Kept(d.FileID, d.ObjectID, d.EntryID, packageFile));
            found = true;
            if (stopAtFirst)
                break;
        }
        query->Close();
    }
    FTables.RebindTable(qx::Table::QXDEPENDENCIES,
                        FDataAccess.GetTableRef(QStringLiteral("QXDEPENDENCIES")));
    return found;
}

bool TQXCallLookup::BottomUp(const Source& s, const TQXItem& item, bool stopAtFirst,
                             TDependencies& list) {
    QString condition = where::Keys({{"QXFileID", s.FileID}});
    if (s.ObjectID > 0 && s.EntryID > 0)
        condition +=
            where::AndKey("QXObjectID", s.ObjectID) + where::AndKey("QXEntryID", s.EntryID);
    else if (s.ObjectID > 0)
        condition += where::AndKey("QXObjectID", s.ObjectID);

    TQXTableRef dependencies = FTables.Table(qx::Table::QXDEPENDENCIES);
    if (!FDataAccess.SelectRecords(dependencies, condition))
        return false;
    bool found = false;
    do {
        const Call d = ReadCall(dependencies);
        bool leaveOut = false;
        if (s.PackageID == 0 && s.ObjectID == 0)
            leaveOut = SameGrouping(d.FromFileID, item);
        else if (s.PackageID > 0 && s.ObjectID == 0)
            leaveOut = d.FromFileID == item.FileID;
        else if (s.PackageID > 0)
            leaveOut = InSamePackage(d.FromFileID, d.FromObjectID, item);
        else if (s.ObjectID > 0 && s.EntryID == 0)
            leaveOut = d.FromFileID == item.FileID && d.FromObjectID == item.ObjectID;
        else if (s.EntryID > 0 && s.RowID == 0)
            leaveOut = d.FromFileID == item.FileID && d.FromObjectID == item.ObjectID &&
                       d.FromEntryID == item.EntryID;
        if (leaveOut)
            continue;
        const bool packageFile = s.PackageID > 0 && s.ObjectID == 0;
        list.push_back(d.Kept(d.FromFileID, d.FromObjectID, d.FromEntryID, packageFile));
        found = true;
        if (stopAtFirst)
            break;
    } while (FDataAccess.NextRecord(dependencies));
    return found;
}
