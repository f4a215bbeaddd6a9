#include "view/CallLookup.h"

#include "repository/Errors.h"
#include "repository/ImageIndexes.h"
#include "repository/WhereText.h"

#include <QSet>

#include <algorithm>
#include <tuple>

namespace {
const QString CallColumns =
    QStringLiteral("SELECT QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXInheritsFileID, "
                   "QXInheritsObjectID, QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID, "
                   "QXFromWordID FROM QXDEPENDENCIES WHERE ");
const QString CallOrder = QStringLiteral(
    " ORDER BY QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID, QXFromWordID");
// Calls kept before the cache starts afresh.
constexpr qsizetype MostCachedCalls = 1'000'000;
// File ids per statement when reading ahead.
constexpr qsizetype IdsPerStatement = 500;

// The ids in chunks small enough for one IN list each.
QList<QList<qint32>> Chunks(const QList<qint32>& ids) {
    QList<QList<qint32>> chunks;
    for (qsizetype i = 0; i < ids.size(); i += IdsPerStatement)
        chunks << ids.mid(i, IdsPerStatement);
    return chunks;
}
} // namespace

void TQXCallLookup::Cache::Clear() {
    FGroupings.clear();
    FCallsFrom.clear();
    FCallsTo.clear();
    FCallCount = 0;
    FObjectAnswers.clear();
    FPackageAnswers.clear();
    FEntryAnswers.clear();
    FGroupingAnswers.clear();
}

TQXCallLookup::TQXCallLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables,
                             Cache& cache, TQXReadPath path)
    : FDataAccess(dataAccess), FTables(tables), FRecords(dataAccess, tables), FCache(cache),
      FPath(path) {}

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
                value(QXFromObjectID),   value(QXFromEntryID),      value(QXFromRowID),
                value(QXFromWordID)};
}

bool TQXCallLookup::GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst,
                                    bool objectsSequential, TDependencies& list) {
    list.clear();
    try {
        // Whether a grouping has any call that leaves it is asked in one
        // statement; only where one may leave are its files read one by one.
        if (FPath == TQXReadPath::SetBased && item.FileID == 0 && stopAtFirst &&
            !MayHaveCallLeaving(item, direction))
            return false;
        std::vector<Source> sources;
        if (!SourceList(item, sources))
            return false;
        // A grouping's files are read in one go, unless one call will do.
        if (FPath == TQXReadPath::SetBased && item.FileID == 0 && !stopAtFirst)
            ReadAhead(sources, direction);
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

// False only when no call of the grouping's files can be kept: every file at
// the other end exists and each of its records shares the item's system,
// computer or application (what SameGrouping leaves out, whichever of a
// file's records it reads). True may still find nothing kept.
std::optional<std::pair<const char*, qint32>> TQXCallLookup::GroupingColumn(const TQXItem& item) {
    if (item.ComputerID > 0)
        return std::pair{"QXComputerID", item.ComputerID};
    if (item.SystemID > 0)
        return std::pair{"QXSystemID", item.SystemID};
    if (item.ApplicationID > 0)
        return std::pair{"QXApplicationID", item.ApplicationID};
    return std::nullopt;
}

QString TQXCallLookup::GroupingFiles(const TQXItem& item, const QString& alias) {
    const auto column = GroupingColumn(item);
    if (!column)
        return QString();
    return alias + QLatin1Char('.') + QLatin1String(column->first) + QStringLiteral(" = ") +
           where::Number(column->second);
}

QString TQXCallLookup::LeavesGrouping(const TQXItem& item, const QString& alias) {
    return LeavesGroupingOf(alias, where::Number(item.SystemID), where::Number(item.ComputerID),
                            where::Number(item.ApplicationID));
}

// The same with the grouping's ids given as SQL expressions.
QString TQXCallLookup::LeavesGroupingOf(const QString& alias, const QString& systemID,
                                        const QString& computerID, const QString& applicationID) {
    const QString system = alias + QStringLiteral(".QXSystemID");
    const QString computer = alias + QStringLiteral(".QXComputerID");
    const QString application = alias + QStringLiteral(".QXApplicationID");
    return QLatin1Char('(') + system + QStringLiteral(" IS NULL OR ") + computer +
           QStringLiteral(" IS NULL OR ") + application + QStringLiteral(" IS NULL OR NOT (") +
           system + QStringLiteral(" = ") + systemID + QStringLiteral(" OR ") + computer +
           QStringLiteral(" = ") + computerID + QStringLiteral(" OR ") + application +
           QStringLiteral(" = ") + applicationID + QStringLiteral("))");
}

namespace {
// An item that stands for a whole object.
bool IsObjectItem(const TQXItem& item) {
    return item.FileID > 0 && item.ObjectID > 0 && item.PackageID == 0 && item.EntryID == 0 &&
           item.RowID == 0 && item.WordID == 0;
}
// One row of a VALUES list of keys: "(1, 2, 3)".
QString ValuesRow(std::initializer_list<qint32> values) {
    QStringList numbers;
    for (qint32 value : values)
        numbers << where::Number(value);
    return QLatin1Char('(') + numbers.join(QStringLiteral(", ")) + QLatin1Char(')');
}
// An item that stands for an entry.
bool IsEntryItem(const TQXItem& item) {
    return item.FileID > 0 && item.ObjectID > 0 && item.EntryID > 0 && item.PackageID == 0 &&
           item.RowID == 0 && item.WordID == 0;
}
// An item that stands for a package.
bool IsPackageItem(const TQXItem& item) {
    return item.PackageID > 0 && item.ObjectID == 0 && item.EntryID == 0 && item.RowID == 0 &&
           item.WordID == 0;
}
} // namespace

// An object's calls are kept unless they go into the object itself (TopDown
// without the option box) or come from it (BottomUp): read as one
// condition per object, a statement per few hundred objects.
void TQXCallLookup::PrepareObjectTests(const std::vector<const TQXItem*>& items,
                                       TQXDirection direction, bool objectsSequential) {
    if (FPath != TQXReadPath::SetBased)
        return;
    const bool topDown = direction == TQXDirection::TopDown;
    const bool sequential = topDown && objectsSequential;
    QList<std::pair<qint32, qint32>> objects;
    for (const TQXItem* item : items)
        if (item != nullptr && IsObjectItem(*item) &&
            !FCache.FObjectAnswers.contains({topDown, sequential, item->FileID, item->ObjectID}))
            objects << std::pair{item->FileID, item->ObjectID};
    PreparePackageTests(items, direction);
    PrepareEntryTests(items, direction);
    PrepareGroupingTests(items, direction);
    const char* file = topDown ? "QXFromFileID" : "QXFileID";
    const char* object = topDown ? "QXFromObjectID" : "QXObjectID";
    constexpr qsizetype ObjectsPerStatement = 200;
    for (qsizetype i = 0; i < objects.size(); i += ObjectsPerStatement) {
        // The objects as a list of keys, each looked up through the index:
        // an OR of key pairs lets the planner scan the whole table instead.
        QStringList keys;
        for (const auto& [fileID, objectID] : objects.mid(i, ObjectsPerStatement)) {
            keys << ValuesRow({fileID, objectID});
            FCache.FObjectAnswers[{topDown, sequential, fileID, objectID}] = false;
        }
        std::unique_ptr<TQXDataSet> query = FDataAccess.OpenQuery(
            nullptr,
            {QStringLiteral("WITH k (f, o) AS (VALUES ") + keys.join(QStringLiteral(", ")) +
                 QStringLiteral(") SELECT k.f, k.o FROM k WHERE EXISTS (SELECT 1 FROM "
                                "QXDEPENDENCIES d WHERE d.") +
                 QLatin1String(file) + QStringLiteral(" = k.f AND d.") + QLatin1String(object) +
                 QStringLiteral(" = k.o"),
             sequential ? QStringLiteral(")")
                        : QStringLiteral(" AND NOT (d.QXFileID = d.QXFromFileID AND d.QXObjectID = "
                                         "d.QXFromObjectID))")},
            0);
        for (bool more = !query->Eof(); more; more = FDataAccess.NextRecord(query.get()))
            FCache.FObjectAnswers[{topDown, sequential, query->FieldValue(0).toInt(),
                                   query->FieldValue(1).toInt()}] = true;
        query->Close();
    }
}

// A package is looked up member by member: a member that is a whole file
// (no object, or the package's own file) keeps every call with the other
// end outside the package's file; an object member keeps the calls whose
// other end is no member of the package. Whether any call is kept is read
// in one statement per few hundred packages, for packages in one file whose
// records are all of one kind (all the package's own file, or none) and
// complete; the others are left to the lookup.
void TQXCallLookup::PreparePackageTests(const std::vector<const TQXItem*>& items,
                                        TQXDirection direction) {
    const bool topDown = direction == TQXDirection::TopDown;
    QList<qint32> packages;
    for (const TQXItem* item : items)
        if (item != nullptr && IsPackageItem(*item) &&
            !FCache.FPackageAnswers.contains({topDown, item->PackageID}))
            packages << item->PackageID;
    if (packages.isEmpty())
        return;
    // The member's side of a call, its other end, and the other end's
    // object as a member of the same package.
    const QString memberFile =
        topDown ? QStringLiteral("d.QXFromFileID") : QStringLiteral("d.QXFileID");
    const QString memberObject =
        topDown ? QStringLiteral("d.QXFromObjectID") : QStringLiteral("d.QXObjectID");
    const QString otherFile =
        topDown ? QStringLiteral("d.QXFileID") : QStringLiteral("d.QXFromFileID");
    const QString otherObject =
        topDown ? QStringLiteral("d.QXObjectID") : QStringLiteral("d.QXFromObjectID");
    const QString wholeFile = QStringLiteral("EXISTS (SELECT 1 FROM QXDEPENDENCIES d WHERE ") +
                              memberFile + QStringLiteral(" = p.QXObjectFileID AND ") + otherFile +
                              QStringLiteral(" <> p.QXFileID)");
    const QString object = QStringLiteral("EXISTS (SELECT 1 FROM QXDEPENDENCIES d WHERE ") +
                           memberFile + QStringLiteral(" = p.QXObjectFileID AND ") + memberObject +
                           QStringLiteral(" = p.QXObjectID AND NOT EXISTS (SELECT 1 FROM QXPACKAGE "
                                          "q WHERE q.QXPackageID = p.QXPackageID AND "
                                          "q.QXObjectFileID = ") +
                           otherFile + QStringLiteral(" AND q.QXObjectID = ") + otherObject +
                           QStringLiteral("))");
    const QString plain = QStringLiteral(
        "MIN(p.QXFileID) = MAX(p.QXFileID) AND COUNT(*) = COUNT(p.QXFileID) AND COUNT(*) = "
        "COUNT(p.QXObjectFileID) AND COUNT(*) = COUNT(p.QXObjectID) AND MIN(p.QXObjectID) >= 0 "
        "AND SUM(CASE WHEN p.QXObjectFileID = p.QXFileID THEN 1 ELSE 0 END) IN (0, COUNT(*))");
    constexpr qsizetype PackagesPerStatement = 200;
    for (qsizetype i = 0; i < packages.size(); i += PackagesPerStatement) {
        std::unique_ptr<TQXDataSet> query = FDataAccess.OpenQuery(
            nullptr,
            {QStringLiteral("SELECT p.QXPackageID, CASE WHEN ") + plain +
                 QStringLiteral(" THEN 1 ELSE 0 END, MAX(CASE WHEN (p.QXObjectFileID = "
                                "p.QXFileID OR p.QXObjectID = 0) AND ") +
                 wholeFile +
                 QStringLiteral(" THEN 1 WHEN p.QXObjectFileID <> p.QXFileID AND "
                                "p.QXObjectID > 0 AND ") +
                 object + QStringLiteral(" THEN 1 ELSE 0 END) FROM QXPACKAGE p WHERE ") +
                 where::In("p.QXPackageID", packages.mid(i, PackagesPerStatement),
                           QStringLiteral(", ")),
             QStringLiteral(" GROUP BY p.QXPackageID")},
            0);
        for (bool more = !query->Eof(); more; more = FDataAccess.NextRecord(query.get()))
            if (query->FieldValue(1).toInt() == 1)
                FCache.FPackageAnswers[{topDown, query->FieldValue(0).toInt()}] =
                    query->FieldValue(2).toInt() == 1;
        query->Close();
    }
}

// An entry keeps, TopDown, every call into an entry and a call of a whole
// object that is missing or shown with icon 52; BottomUp every call but
// its own into itself. Read for a few hundred entries per statement; an
// entry whose whole-object calls reach an object with records of both
// kinds of icon is left to the lookup.
void TQXCallLookup::PrepareEntryTests(const std::vector<const TQXItem*>& items,
                                      TQXDirection direction) {
    const bool topDown = direction == TQXDirection::TopDown;
    QList<std::tuple<qint32, qint32, qint32>> entries;
    for (const TQXItem* item : items)
        if (item != nullptr && IsEntryItem(*item) &&
            !FCache.FEntryAnswers.contains({topDown, item->FileID, item->ObjectID, item->EntryID}))
            entries << std::tuple{item->FileID, item->ObjectID, item->EntryID};
    const QString object =
        QStringLiteral("SELECT 1 FROM QXOBJECT o WHERE o.QXFileID = d.QXFileID AND o.QXObjectID = "
                       "d.QXObjectID");
    const QString calls =
        topDown ? QStringLiteral("SELECT 1 FROM QXDEPENDENCIES d WHERE d.QXFromFileID = k.f AND "
                                 "d.QXFromObjectID = k.o AND d.QXFromEntryID = k.e")
                : QStringLiteral("SELECT 1 FROM QXDEPENDENCIES d WHERE d.QXFileID = k.f AND "
                                 "d.QXObjectID = k.o AND d.QXEntryID = k.e");
    // Kept for certain, and (TopDown) whether a whole object has records of
    // both kinds of icon.
    const QString kept =
        topDown ? QStringLiteral("EXISTS (") + calls +
                      QStringLiteral(" AND (d.QXEntryID <> 0 OR (d.QXEntryID = 0 AND NOT EXISTS "
                                     "(") +
                      object + QStringLiteral(" AND (o.QXIcon IS NULL OR o.QXIcon <> 52)))))")
                : QStringLiteral("EXISTS (") + calls +
                      QStringLiteral(" AND NOT (d.QXFromFileID = k.f AND d.QXFromObjectID = k.o "
                                     "AND d.QXFromEntryID = k.e))");
    const QString mixed = topDown
                              ? QStringLiteral("EXISTS (") + calls +
                                    QStringLiteral(" AND d.QXEntryID = 0 AND EXISTS (") + object +
                                    QStringLiteral(" AND o.QXIcon = 52) AND EXISTS (") + object +
                                    QStringLiteral(" AND (o.QXIcon IS NULL OR o.QXIcon <> "
                                                   "52)))")
                              : QStringLiteral("1 = 0");
    constexpr qsizetype EntriesPerStatement = 200;
    for (qsizetype i = 0; i < entries.size(); i += EntriesPerStatement) {
        QStringList keys;
        for (const auto& [fileID, objectID, entryID] : entries.mid(i, EntriesPerStatement))
            keys << ValuesRow({fileID, objectID, entryID});
        std::unique_ptr<TQXDataSet> query = FDataAccess.OpenQuery(
            nullptr,
            {QStringLiteral("WITH k (f, o, e) AS (VALUES ") + keys.join(QStringLiteral(", ")) +
             QStringLiteral(") SELECT k.f, k.o, k.e, CASE WHEN ") + kept +
             QStringLiteral(" THEN 1 ELSE 0 END, CASE WHEN ") + mixed +
             QStringLiteral(" THEN 1 ELSE 0 END FROM k")},
            0);
        for (bool more = !query->Eof(); more; more = FDataAccess.NextRecord(query.get())) {
            const bool certain = query->FieldValue(3).toInt() == 1;
            if (certain || query->FieldValue(4).toInt() == 0)
                FCache.FEntryAnswers[{topDown, query->FieldValue(0).toInt(),
                                      query->FieldValue(1).toInt(), query->FieldValue(2).toInt()}] =
                    certain;
        }
        query->Close();
    }
}

bool TQXCallLookup::HasDependencies(const TQXItem& item, TQXDirection direction,
                                    bool objectsSequential, TDependencies& list) {
    if (FPath == TQXReadPath::SetBased && IsEntryItem(item)) {
        const auto answer = FCache.FEntryAnswers.find(
            {direction == TQXDirection::TopDown, item.FileID, item.ObjectID, item.EntryID});
        if (answer != FCache.FEntryAnswers.end()) {
            list.clear();
            return answer->second;
        }
    }
    if (FPath == TQXReadPath::SetBased && IsPackageItem(item)) {
        const auto answer =
            FCache.FPackageAnswers.find({direction == TQXDirection::TopDown, item.PackageID});
        if (answer != FCache.FPackageAnswers.end()) {
            list.clear();
            return answer->second;
        }
    }
    if (FPath == TQXReadPath::SetBased && IsObjectItem(item)) {
        const bool topDown = direction == TQXDirection::TopDown;
        const auto answer = FCache.FObjectAnswers.find(
            {topDown, topDown && objectsSequential, item.FileID, item.ObjectID});
        if (answer != FCache.FObjectAnswers.end()) {
            list.clear();
            return answer->second;
        }
    }
    if (FPath == TQXReadPath::SetBased && item.FileID == 0 && item.PackageID == 0) {
        try {
            list.clear();
            const auto read =
                FCache.FGroupingAnswers.find({direction == TQXDirection::TopDown, item.SystemID,
                                              item.ComputerID, item.ApplicationID});
            if (read != FCache.FGroupingAnswers.end() ? read->second
                                                      : HasPlainCallLeaving(item, direction))
                return true;
        } catch (const std::exception& e) {
            throw EQXError(QStringLiteral("TQXView.GetDependencies: ") + ExceptionMessage(e) +
                           QChar(13));
        }
    }
    return GetDependencies(item, direction, true, objectsSequential, list);
}

// The calls of the grouping's files (alias s) that are kept for certain:
// the file at the other end is missing, or it has one record, with whole
// ids, outside the grouping given by the three expressions.
QString TQXCallLookup::PlainCallsLeaving(bool topDown, const QString& grouping,
                                         const QString& systemID, const QString& computerID,
                                         const QString& applicationID) {
    const QString other = topDown ? QStringLiteral("d.QXFileID") : QStringLiteral("d.QXFromFileID");
    return QStringLiteral("SELECT 1 FROM QXFILE s JOIN QXDEPENDENCIES d ON ") +
           (topDown ? QStringLiteral("d.QXFromFileID") : QStringLiteral("d.QXFileID")) +
           QStringLiteral(" = s.QXFileID WHERE ") + grouping +
           QStringLiteral(" AND (NOT EXISTS (SELECT 1 FROM QXFILE t WHERE t.QXFileID = ") + other +
           QStringLiteral(") OR ((SELECT COUNT(*) FROM QXFILE u WHERE u.QXFileID = ") + other +
           QStringLiteral(") = 1 AND EXISTS (SELECT 1 FROM QXFILE t WHERE t.QXFileID = ") + other +
           QStringLiteral(" AND t.QXSystemID IS NOT NULL AND t.QXComputerID IS NOT "
                          "NULL AND t.QXApplicationID IS NOT NULL AND ") +
           LeavesGroupingOf(QStringLiteral("t"), systemID, computerID, applicationID) +
           QStringLiteral(")))");
}

// True when a call of the grouping's files is kept for certain: the file at
// its other end is missing, or it has one record, with whole ids, that
// shares none of the item's system, computer and application. False says
// only that no such call was found.
bool TQXCallLookup::HasPlainCallLeaving(const TQXItem& item, TQXDirection direction) {
    const QString grouping = GroupingFiles(item, QStringLiteral("s"));
    if (grouping.isEmpty())
        return false;
    std::unique_ptr<TQXDataSet> query = FDataAccess.OpenQuery(
        nullptr,
        {PlainCallsLeaving(direction == TQXDirection::TopDown, grouping,
                           where::Number(item.SystemID), where::Number(item.ComputerID),
                           where::Number(item.ApplicationID)),
         QStringLiteral(" LIMIT 1")},
        0);
    const bool found = !query->Eof();
    query->Close();
    return found;
}

// HasPlainCallLeaving for many groupings of one kind at once, the
// groupings as a list of keys.
void TQXCallLookup::PrepareGroupingTests(const std::vector<const TQXItem*>& items,
                                         TQXDirection direction) {
    const bool topDown = direction == TQXDirection::TopDown;
    for (const char* column : {"QXComputerID", "QXSystemID", "QXApplicationID"}) {
        QStringList keys;
        for (const TQXItem* item : items) {
            if (item == nullptr || item->FileID != 0 || item->PackageID != 0)
                continue;
            const auto grouping = GroupingColumn(*item);
            const Cache::GroupingKey key{topDown, item->SystemID, item->ComputerID,
                                         item->ApplicationID};
            if (!grouping || qstrcmp(grouping->first, column) != 0 ||
                FCache.FGroupingAnswers.count(key) > 0)
                continue;
            FCache.FGroupingAnswers[key] = false;
            keys << ValuesRow(
                {grouping->second, item->SystemID, item->ComputerID, item->ApplicationID});
        }
        if (keys.isEmpty())
            continue;
        std::unique_ptr<TQXDataSet> query = FDataAccess.OpenQuery(
            nullptr,
            {QStringLiteral("WITH k (g, sys, comp, app) AS (VALUES ") +
             keys.join(QStringLiteral(", ")) +
             QStringLiteral(") SELECT k.sys, k.comp, k.app FROM k WHERE EXISTS (") +
             PlainCallsLeaving(
                 topDown, QStringLiteral("s.") + QLatin1String(column) + QStringLiteral(" = k.g"),
                 QStringLiteral("k.sys"), QStringLiteral("k.comp"), QStringLiteral("k.app")) +
             QLatin1Char(')')},
            0);
        for (bool more = !query->Eof(); more; more = FDataAccess.NextRecord(query.get()))
            FCache.FGroupingAnswers[{topDown, query->FieldValue(0).toInt(),
                                     query->FieldValue(1).toInt(), query->FieldValue(2).toInt()}] =
                true;
        query->Close();
    }
}

bool TQXCallLookup::MayHaveCallLeaving(const TQXItem& item, TQXDirection direction) {
    const QString grouping = GroupingFiles(item, QStringLiteral("s"));
    if (grouping.isEmpty())
        return true;
    const bool topDown = direction == TQXDirection::TopDown;
    const QString own = topDown ? QStringLiteral("QXFromFileID") : QStringLiteral("QXFileID");
    const QString other = topDown ? QStringLiteral("QXFileID") : QStringLiteral("QXFromFileID");
    std::unique_ptr<TQXDataSet> query = FDataAccess.OpenQuery(
        nullptr,
        {QStringLiteral("SELECT 1 FROM QXFILE s JOIN QXDEPENDENCIES d ON d.") + own +
             QStringLiteral(" = s.QXFileID WHERE ") + grouping,
         QStringLiteral(" AND (NOT EXISTS (SELECT 1 FROM QXFILE t WHERE t.QXFileID = d.") + other +
             QStringLiteral(") OR EXISTS (SELECT 1 FROM QXFILE t WHERE t.QXFileID = d.") + other +
             QStringLiteral(" AND ") + LeavesGrouping(item, QStringLiteral("t")) +
             QStringLiteral("))"),
         QStringLiteral(" LIMIT 1")},
        0);
    const bool may = !query->Eof();
    query->Close();
    return may;
}

// The system, computer and application of QXFILE's current record.
TQXCallLookup::Cache::Grouping TQXCallLookup::CurrentFileGrouping() {
    using namespace qx::QXFILE;
    return {FRecords.Int(qx::Table::QXFILE, QXSystemID),
            FRecords.Int(qx::Table::QXFILE, QXComputerID),
            FRecords.Int(qx::Table::QXFILE, QXApplicationID)};
}

// The file's system, computer or application is the item's own (all three
// compared, also where the item holds 0). A missing file is not.
bool TQXCallLookup::SameGrouping(qint32 fileID, const TQXItem& item) {
    using namespace qx::QXFILE;
    auto cached = FCache.FGroupings.find(fileID);
    if (cached == FCache.FGroupings.end()) {
        std::optional<Cache::Grouping> grouping;
        if (FRecords.Select(qx::Table::QXFILE, where::Keys({{"QXFileID", fileID}})))
            grouping = CurrentFileGrouping();
        cached = FCache.FGroupings.emplace(fileID, grouping).first;
    }
    const std::optional<Cache::Grouping>& grouping = cached->second;
    return grouping &&
           (grouping->SystemID == item.SystemID || grouping->ComputerID == item.ComputerID ||
            grouping->ApplicationID == item.ApplicationID);
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
    const std::vector<Call>& calls = CallsFrom(condition);
    if (s.PackageID == 0 && s.ObjectID == 0)
        ReadGroupingsOf(calls, true);
    for (const Call& d : calls) {
        bool leaveOut = false;
        if (s.PackageID == 0 && s.ObjectID == 0)
            leaveOut = SameGrouping(d.FileID, item);
        else if (s.PackageID > 0 && s.ObjectID == 0)
            leaveOut = d.FileID == item.FileID;
        else if (s.PackageID > 0)
            leaveOut = InSamePackage(d.FileID, d.ObjectID, item);
        else if (s.ObjectID > 0 && s.EntryID == 0)
            leaveOut = d.FileID == item.FileID && d.ObjectID == item.ObjectID && !objectsSequential;
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
    return found;
}

// The calls leaving one starting point, in the order of the call query.
const std::vector<TQXCallLookup::Call>& TQXCallLookup::CallsFrom(const QString& condition) {
    if (const auto cached = FCache.FCallsFrom.constFind(condition);
        cached != FCache.FCallsFrom.cend())
        return cached.value();
    std::vector<Call> calls;
    {
        // The result is closed before the lookup returns: it needs no owner.
        std::unique_ptr<TQXDataSet> query =
            FDataAccess.OpenQuery(nullptr, {CallColumns, condition, CallOrder}, 0);
        for (bool more = !query->Eof(); more; more = FDataAccess.NextRecord(query.get()))
            calls.push_back(ReadCall(query.get()));
        query->Close();
    }
    FTables.RebindTable(qx::Table::QXDEPENDENCIES,
                        FDataAccess.GetTableRef(QStringLiteral("QXDEPENDENCIES")));
    Keep(FCache.FCallsFrom, condition, std::move(calls));
    return FCache.FCallsFrom[condition];
}

bool TQXCallLookup::BottomUp(const Source& s, const TQXItem& item, bool stopAtFirst,
                             TDependencies& list) {
    QString condition = where::Keys({{"QXFileID", s.FileID}});
    if (s.ObjectID > 0 && s.EntryID > 0)
        condition +=
            where::AndKey("QXObjectID", s.ObjectID) + where::AndKey("QXEntryID", s.EntryID);
    else if (s.ObjectID > 0)
        condition += where::AndKey("QXObjectID", s.ObjectID);

    bool found = false;
    const std::vector<Call>& calls = CallsTo(condition);
    if (s.PackageID == 0 && s.ObjectID == 0)
        ReadGroupingsOf(calls, false);
    for (const Call& d : calls) {
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
    }
    return found;
}

// The calls reaching one target, in record order.
const std::vector<TQXCallLookup::Call>& TQXCallLookup::CallsTo(const QString& condition) {
    if (const auto cached = FCache.FCallsTo.constFind(condition); cached != FCache.FCallsTo.cend())
        return cached.value();
    Keep(FCache.FCallsTo, condition, ReadSelection(condition));
    return FCache.FCallsTo[condition];
}

// The QXDEPENDENCIES records a where text selects, in record order.
std::vector<TQXCallLookup::Call> TQXCallLookup::ReadSelection(const QString& condition) {
    std::vector<Call> calls;
    TQXTableRef dependencies = FTables.Table(qx::Table::QXDEPENDENCIES);
    if (FDataAccess.SelectRecords(dependencies, condition))
        do
            calls.push_back(ReadCall(dependencies));
        while (FDataAccess.NextRecord(dependencies));
    return calls;
}

void TQXCallLookup::Keep(QHash<QString, std::vector<Call>>& calls, const QString& condition,
                         std::vector<Call> list) {
    if (FCache.FCallCount + static_cast<qsizetype>(list.size()) > MostCachedCalls)
        FCache.Clear();
    FCache.FCallCount += static_cast<qsizetype>(list.size());
    calls.insert(condition, std::move(list));
}

// Reads the calls of all the sources' files in a statement per few hundred
// files, and the groupings of the files at their other ends, and keeps them
// as the lookups of single files would have read them: leaving a file's
// calls in the order of the call query (record order among equal keys, as
// its index returns them), reaching it in record order.
void TQXCallLookup::ReadAhead(const std::vector<Source>& sources, TQXDirection direction) {
    const bool topDown = direction == TQXDirection::TopDown;
    auto conditionOf = [topDown](qint32 fileID) {
        return topDown ? where::Keys({{"QXFromFileID", fileID}})
                       : where::Keys({{"QXFileID", fileID}});
    };
    QHash<QString, std::vector<Call>>& kept = topDown ? FCache.FCallsFrom : FCache.FCallsTo;
    QList<qint32> files;
    QSet<qint32> seen;
    for (const Source& s : sources)
        if (!seen.contains(s.FileID) && !kept.contains(conditionOf(s.FileID))) {
            files << s.FileID;
            seen.insert(s.FileID);
        }
    QList<qint32> others;
    seen.clear();
    for (const QList<qint32>& chunk : Chunks(files)) {
        QHash<qint32, std::vector<Call>> byFile;
        for (const Call& d : ReadSelection(
                 where::In(topDown ? "QXFromFileID" : "QXFileID", chunk, QStringLiteral(", ")))) {
            byFile[topDown ? d.FromFileID : d.FileID].push_back(d);
            const qint32 other = topDown ? d.FileID : d.FromFileID;
            if (!FCache.FGroupings.contains(other) && !seen.contains(other)) {
                others << other;
                seen.insert(other);
            }
        }
        for (qint32 fileID : chunk) {
            std::vector<Call> calls = byFile.take(fileID);
            if (topDown)
                std::stable_sort(calls.begin(), calls.end(), [](const Call& a, const Call& b) {
                    return std::tie(a.FromFileID, a.FromObjectID, a.FromEntryID, a.FromRowID,
                                    a.FromWordID) < std::tie(b.FromFileID, b.FromObjectID,
                                                             b.FromEntryID, b.FromRowID,
                                                             b.FromWordID);
                });
            Keep(kept, conditionOf(fileID), std::move(calls));
        }
    }
    ReadGroupings(others);
}

// On the set-based path, the groupings of the files at the other end of
// these calls that are not known yet, in a statement per few hundred files
// instead of one per file.
void TQXCallLookup::ReadGroupingsOf(const std::vector<Call>& calls, bool topDown) {
    if (FPath != TQXReadPath::SetBased)
        return;
    QList<qint32> missing;
    QSet<qint32> seen;
    for (const Call& d : calls) {
        const qint32 other = topDown ? d.FileID : d.FromFileID;
        if (!FCache.FGroupings.contains(other) && !seen.contains(other)) {
            seen.insert(other);
            missing << other;
        }
    }
    if (missing.size() > 1)
        ReadGroupings(missing);
}

// The grouping of each file, from its first record as SameGrouping reads it.
void TQXCallLookup::ReadGroupings(const QList<qint32>& fileIDs) {
    using namespace qx::QXFILE;
    for (const QList<qint32>& chunk : Chunks(fileIDs)) {
        if (FRecords.Select(qx::Table::QXFILE, where::In("QXFileID", chunk, QStringLiteral(", "))))
            do {
                const qint32 fileID = FRecords.Int(qx::Table::QXFILE, QXFileID);
                if (!FCache.FGroupings.contains(fileID))
                    FCache.FGroupings.emplace(fileID, CurrentFileGrouping());
            } while (FRecords.Next(qx::Table::QXFILE));
        for (qint32 fileID : chunk)
            FCache.FGroupings.try_emplace(fileID, std::nullopt);
    }
}
