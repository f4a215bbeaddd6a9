#include "view/RootItemLister.h"

#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "repository/ImageIndexes.h"
#include "repository/SchemaNames.h"
#include "repository/WhereText.h"
#include "view/DistributionNodes.h"
#include "view/ViewOperations.h"

#include <QSet>

#include <utility>

namespace {
using qx::Table;
namespace F = qx::QXFILE;
namespace O = qx::QXOBJECT;
namespace E = qx::QXENTRY;
namespace R = qx::QXROW;
namespace W = qx::QXWORD;
namespace P = qx::QXPACKAGE;
namespace A = qx::QXATTRIBUTE;

// The key columns of the look-ups of files, objects and entries; a
// read-ahead serves a look-up only by the same text.
constexpr const char* FileKey = "QXFileID";
constexpr const char* ObjectKey = "QXFileID;QXObjectID";
constexpr const char* EntryKey = "QXFileID;QXObjectID;QXEntryID";
} // namespace

TQXRootItemLister::TQXRootItemLister(TQXRecordReader& records, TQXTreeControl& tree,
                                     TQXViewOperations& view, TQXReadPath path)
    : FRecords(records), FTree(tree), FView(view), FPath(path) {}

void TQXRootItemLister::ReadAhead(qx::Table source, const std::vector<LookUp>& lookUps,
                                  int perRoot) {
    if (FPath != TQXReadPath::SetBased)
        return;
    QStringList columns;
    for (const LookUp& lookUp : lookUps)
        for (const char* column : lookUp.SourceColumns)
            if (!columns.contains(QLatin1String(column)))
                columns << QLatin1String(column);
    TQXDataAccessInterface& access = FRecords.Access();
    TQXTableHandleSet& tables = FRecords.Tables();
    const QList<QVariantList> records = access.PeekKeys(
        tables.Table(source), columns.join(QLatin1Char(';')), perRoot * FLimit + 16);
    if (records.isEmpty())
        return;
    for (const LookUp& lookUp : lookUps) {
        QList<QVariantList> keys;
        for (const QVariantList& record : records) {
            QVariantList key;
            for (const char* column : lookUp.SourceColumns)
                key << record.value(columns.indexOf(QLatin1String(column)));
            keys << key;
        }
        access.PrepareLocate(tables.Table(lookUp.Target), QLatin1String(lookUp.TargetKeys), keys);
    }
}

void TQXRootItemLister::Show(const TQXViewSettings& settings) {
    FRootFilter = FView.FilterRootItems();
    const std::optional<int> limit = settings.Limit();
    if (!limit)
        throw EQXError(LimitError(settings.LimitText));
    FLimit = *limit;
    FSettings = settings;
    FDirection = settings.DirectionNumber();
    FCount = 0;
    FStopped = false;
    FSort = true;

    switch (settings.Level) {
    case TQXLevel::System:
    case TQXLevel::Computer:
    case TQXLevel::Application:
        ListAttributes();
        break;
    case TQXLevel::Package:
        ListPackages();
        break;
    case TQXLevel::Object:
        ListObjects();
        break;
    case TQXLevel::Entry:
        ListEntries();
        break;
    case TQXLevel::Code:
        if (settings.IsDependencies())
            ListEntries();
        else
            ListRows();
        break;
    case TQXLevel::Data:
        ListWords();
        break;
    }
    if (FStopped)
        return; // the user chose the filter: leave what was listed as it is
    if (FCount > FLimit)
        FTree.InsertRoot(0, QStringLiteral("  *** RootItem Limit reached, only the first ") +
                                settings.LimitText +
                                QStringLiteral(" hits in the database showed ***"));
    AddPlaceholders();
    if (FSort)
        FTree.SortChildren(nullptr);
}

// Counts the candidate and appends its root node unless the limit is
// exceeded; the item is freed when the node is not added.
TQXRootItemLister::Added TQXRootItemLister::Add(std::unique_ptr<TQXItem> item, const QString& text,
                                                int image) {
    ++FCount;
    if (FCount > FLimit)
        return Added::OverLimit;
    FTree.AddRoot(text, std::move(item), image);
    if (FView.HintAboutFilter(FCount)) {
        FStopped = true;
        return Added::Stop;
    }
    return Added::Yes;
}

TQXRootItemLister::Walk TQXRootItemLister::AfterAdd(Added added) {
    return added == Added::Yes ? Walk::Next : Walk::Done;
}

bool TQXRootItemLister::LocateFile(qint32 fileID) {
    return FRecords.Locate(Table::QXFILE, QLatin1String(FileKey), {fileID});
}

bool TQXRootItemLister::LocateObject(qint32 fileID, qint32 objectID) {
    return FRecords.Locate(Table::QXOBJECT, QLatin1String(ObjectKey), {fileID, objectID});
}

bool TQXRootItemLister::LocateEntry(qint32 fileID, qint32 objectID, qint32 entryID, QString& name) {
    if (!FRecords.Locate(Table::QXENTRY, QLatin1String(EntryKey), {fileID, objectID, entryID}))
        return false;
    name = FRecords.Text(Table::QXENTRY, E::QXEntryName);
    return true;
}

// The object's name, with " in " and its file's name for objects shown in
// their file; the file must be the located one.
QString TQXRootItemLister::ObjectText() {
    QString text = FRecords.Text(Table::QXOBJECT, O::QXObjectName);
    if (FRecords.Int(Table::QXOBJECT, O::QXIcon) == image::IconInFile)
        text += QStringLiteral(" in ") + FRecords.Text(Table::QXFILE, F::QXFileName);
    return text;
}

void TQXRootItemLister::ListAttributes() {
    const TQXLevel level = FSettings.Level;
    QString condition =
        QStringLiteral("QXAttributeType = ") + where::Number(qx::code::AttributeSystem);
    if (level == TQXLevel::Computer)
        condition =
            QStringLiteral("QXAttributeType = ") + where::Number(qx::code::AttributeComputer);
    else if (level == TQXLevel::Application)
        condition = QStringLiteral("QXAttributeType = ") +
                    where::Number(qx::code::AttributeApplication) +
                    QStringLiteral(" OR QXIcon = ") +
                    where::Number(qx::code::IconComputerAmongApplications);
    if (!FRecords.Select(Table::QXATTRIBUTE, condition))
        return;
    // Applications are many (systems and computers few): their files are
    // read ahead.
    if (level == TQXLevel::Application)
        ReadAhead(Table::QXATTRIBUTE, {{Table::QXFILE, "QXApplicationID", {"QXAttributeID"}},
                                       {Table::QXFILE, "QXComputerID", {"QXAttributeID"}}});
    do {
        const qint32 id = FRecords.Int(Table::QXATTRIBUTE, A::QXAttributeID);
        std::unique_ptr<TQXItem> item;
        QString fileColumn;
        if (level == TQXLevel::System) {
            item = TQXItem::ForSystem(id);
            fileColumn = QStringLiteral("QXSystemID");
        } else if (level == TQXLevel::Application &&
                   FRecords.Int(Table::QXATTRIBUTE, A::QXAttributeType) ==
                       qx::code::AttributeApplication) {
            item = TQXItem::ForApplication(id);
            fileColumn = QStringLiteral("QXApplicationID");
        } else { // a computer, also one listed among applications
            item = TQXItem::ForComputer(id);
            fileColumn = QStringLiteral("QXComputerID");
        }
        if (!FRecords.Locate(Table::QXFILE, fileColumn, {id}))
            continue;
        if (AfterAdd(Add(std::move(item), FRecords.Text(Table::QXATTRIBUTE, A::QXAttributeName),
                         FRecords.Int(Table::QXATTRIBUTE, A::QXIcon))) == Walk::Done)
            return;
    } while (FRecords.Next(Table::QXATTRIBUTE));
}

bool TQXRootItemLister::IsDuplicatePackage(qint32 fileID, qint32 packageID) const {
    for (int i = FTree.RootCount() - 1; i >= 0; --i) {
        const auto* item = FTree.Root(i)->ItemAs<TQXItem>();
        if (item != nullptr && item->FileID == fileID && item->PackageID == packageID)
            return true;
    }
    return false;
}

void TQXRootItemLister::ListPackages() {
    qint32 first = 0;
    if (!FRecords.TryInt(Table::QXPACKAGE, P::QXPackageID, first) || first <= 0)
        return;
    // A package has a record per member, all naming its file.
    ReadAhead(Table::QXPACKAGE, {{Table::QXFILE, FileKey, {"QXFileID"}}}, 40);
    do {
        const qint32 fileID = FRecords.Int(Table::QXPACKAGE, P::QXFileID);
        const qint32 packageID = FRecords.Int(Table::QXPACKAGE, P::QXPackageID);
        auto item = TQXItem::ForPackage(fileID, packageID);
        if (IsDuplicatePackage(fileID, packageID) || !LocateFile(fileID))
            continue;
        if (AfterAdd(Add(std::move(item), FRecords.Text(Table::QXPACKAGE, P::QXPackageName),
                         FDirection == 0 ? image::ImagePackageTopDown
                                         : image::ImagePackageBottomUp)) == Walk::Done)
            return;
    } while (FRecords.Next(Table::QXPACKAGE));
}

// Walks the package members of the QXPACKAGE selection with their file and
// object located; false when a visit ended the listing.
bool TQXRootItemLister::WalkPackageMembers(const std::function<Walk()>& visit) {
    qint32 first = 0;
    if (!FRecords.TryInt(Table::QXPACKAGE, P::QXPackageID, first) || first <= 0)
        return true;
    ReadAhead(Table::QXPACKAGE, {{Table::QXFILE, FileKey, {"QXObjectFileID"}},
                                 {Table::QXOBJECT, ObjectKey, {"QXObjectFileID", "QXObjectID"}}});
    do {
        const qint32 fileID = FRecords.Int(Table::QXPACKAGE, P::QXObjectFileID);
        const qint32 objectID = FRecords.Int(Table::QXPACKAGE, P::QXObjectID);
        if (!LocateFile(fileID) || !LocateObject(fileID, objectID))
            continue;
        if (visit() == Walk::Done)
            return false;
    } while (FRecords.Next(Table::QXPACKAGE));
    return true;
}

// Walks the QXOBJECT selection with each object's file located.
bool TQXRootItemLister::WalkObjects(const std::function<Walk()>& visit) {
    qint32 first = 0;
    if (!FRecords.TryInt(Table::QXOBJECT, O::QXObjectID, first) || first <= 0)
        return true;
    ReadAhead(Table::QXOBJECT, {{Table::QXFILE, FileKey, {"QXFileID"}}});
    do {
        if (!LocateFile(FRecords.Int(Table::QXOBJECT, O::QXFileID)))
            continue;
        if (visit() == Walk::Done)
            return false;
    } while (FRecords.Next(Table::QXOBJECT));
    return true;
}

// Walks the objects of the QXENTRY selection, each once, with file and
// object located. The objects are read first, so that looking entries up
// while visiting cannot move this walk.
bool TQXRootItemLister::WalkEntryObjects(const std::function<Walk()>& visit) {
    qint32 first = 0;
    if (!FRecords.TryInt(Table::QXENTRY, E::QXFileID, first))
        return true;
    QList<std::pair<qint32, qint32>> objects;
    QSet<std::pair<qint32, qint32>> seen;
    do {
        const std::pair key{FRecords.Int(Table::QXENTRY, E::QXFileID),
                            FRecords.Int(Table::QXENTRY, E::QXObjectID)};
        if (!seen.contains(key)) {
            seen.insert(key);
            objects << key;
        }
    } while (FRecords.Next(Table::QXENTRY));
    for (const auto& [fileID, objectID] : objects) {
        if (!LocateFile(fileID) || !LocateObject(fileID, objectID))
            continue;
        if (visit() == Walk::Done)
            return false;
    }
    return true;
}

void TQXRootItemLister::ListObjects() {
    auto visit = [this] {
        const qint32 icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
        if (icon == qx::code::IconHiddenPart)
            return Walk::Next;
        auto item = TQXItem::ForObject(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                                       FRecords.Int(Table::QXOBJECT, O::QXObjectID));
        const QString text = ObjectText() + QStringLiteral(" [") +
                             FRecords.Text(Table::QXOBJECT, O::QXObjectType) + QLatin1Char(']');
        const int imageIndex = FDirection == 0 || icon == image::IconSameBothWays ? icon : icon + 1;
        return AfterAdd(Add(std::move(item), text, imageIndex));
    };
    if (FRootFilter.PackageCondition)
        WalkPackageMembers(visit);
    else
        WalkObjects(visit);
}

TQXRootItemLister::Walk TQXRootItemLister::EntriesOfCurrentObject() {
    const qint32 fileID = FRecords.Int(Table::QXOBJECT, O::QXFileID);
    const qint32 objectID = FRecords.Int(Table::QXOBJECT, O::QXObjectID);
    const QString objectText = ObjectText();
    if (!FRecords.Select(Table::QXENTRY, where::FileObjectKeys(fileID, objectID) +
                                             where::AndSub(FRootFilter.EntryCondition)))
        return Walk::Next;
    do {
        auto item = TQXItem::ForEntry(fileID, objectID, FRecords.Int(Table::QXENTRY, E::QXEntryID));
        const QString text = FRecords.Text(Table::QXENTRY, E::QXEntryName) + QStringLiteral(" [") +
                             objectText + QLatin1Char(']');
        if (AfterAdd(Add(std::move(item), text,
                         FDirection == 0 ? image::ImageEntryTopDown : image::ImageEntryBottomUp)) ==
            Walk::Done)
            return Walk::Done;
    } while (FRecords.Next(Table::QXENTRY));
    return Walk::Next;
}

void TQXRootItemLister::ListEntries() {
    auto entries = [this] { return EntriesOfCurrentObject(); };
    if (FRootFilter.PackageCondition) {
        WalkPackageMembers(entries);
        return;
    }
    if (!FRootFilter.ObjectCondition.isEmpty()) {
        WalkObjects(entries);
        return;
    }
    qint32 first = 0;
    if (!FRecords.TryInt(Table::QXENTRY, E::QXFileID, first))
        return;
    ReadAhead(Table::QXENTRY, {{Table::QXFILE, FileKey, {"QXFileID"}},
                               {Table::QXOBJECT, ObjectKey, {"QXFileID", "QXObjectID"}}});
    do {
        const qint32 fileID = FRecords.Int(Table::QXENTRY, E::QXFileID);
        const qint32 objectID = FRecords.Int(Table::QXENTRY, E::QXObjectID);
        if (!LocateFile(fileID) || !LocateObject(fileID, objectID))
            continue;
        auto item = TQXItem::ForEntry(fileID, objectID, FRecords.Int(Table::QXENTRY, E::QXEntryID));
        const QString text = FRecords.Text(Table::QXENTRY, E::QXEntryName) + QStringLiteral(" [") +
                             ObjectText() + QLatin1Char(']');
        if (AfterAdd(Add(std::move(item), text,
                         FDirection == 0 ? image::ImageEntryTopDown : image::ImageEntryBottomUp)) ==
            Walk::Done)
            return;
    } while (FRecords.Next(Table::QXENTRY));
}

void TQXRootItemLister::ListRows() {
    FSort = false; // lines of code stay in record order
    // One row of the current QXROW record, under the given object name.
    auto addRow = [this](const QString& objectName) {
        const qint32 fileID = FRecords.Int(Table::QXROW, R::QXFileID);
        const qint32 objectID = FRecords.Int(Table::QXROW, R::QXObjectID);
        const qint32 entryID = FRecords.Int(Table::QXROW, R::QXEntryID);
        QString entryName;
        const bool entryFound = entryID > 0 && LocateEntry(fileID, objectID, entryID, entryName);
        if (!FRootFilter.EntryCondition.isEmpty() && !entryFound)
            return Walk::Next;
        auto item =
            TQXItem::ForRow(fileID, objectID, entryID, FRecords.Int(Table::QXROW, R::QXRowID));
        const QString text = FRecords.Text(Table::QXROW, R::QXRow) + QStringLiteral(" [") +
                             objectName + (entryFound ? QLatin1Char('.') + entryName : QString()) +
                             QLatin1Char(']');
        return AfterAdd(Add(std::move(item), text, image::ImageRow));
    };
    auto rowsOfObject = [&] {
        const QString objectName = FRecords.Text(Table::QXOBJECT, O::QXObjectName);
        if (!FRecords.Select(Table::QXROW,
                             where::FileObjectKeys(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                                                   FRecords.Int(Table::QXOBJECT, O::QXObjectID)) +
                                 where::AndSub(FRootFilter.RowCondition)))
            return Walk::Next;
        do
            if (addRow(objectName) == Walk::Done)
                return Walk::Done;
        while (FRecords.Next(Table::QXROW));
        return Walk::Next;
    };
    if (FRootFilter.PackageCondition)
        WalkPackageMembers(rowsOfObject);
    else if (!FRootFilter.ObjectCondition.isEmpty())
        WalkObjects(rowsOfObject);
    else if (!FRootFilter.EntryCondition.isEmpty())
        WalkEntryObjects(rowsOfObject);
    else if (FRecords.Select(Table::QXROW, FRootFilter.RowCondition)) {
        ReadAhead(Table::QXROW,
                  {{Table::QXOBJECT, ObjectKey, {"QXFileID", "QXObjectID"}},
                   {Table::QXENTRY, EntryKey, {"QXFileID", "QXObjectID", "QXEntryID"}}});
        do {
            const bool located = LocateObject(FRecords.Int(Table::QXROW, R::QXFileID),
                                              FRecords.Int(Table::QXROW, R::QXObjectID));
            const QString objectName =
                located ? FRecords.Text(Table::QXOBJECT, O::QXObjectName) : QString();
            if (addRow(objectName) == Walk::Done)
                return;
        } while (FRecords.Next(Table::QXROW));
    }
}

void TQXRootItemLister::ListWords() {
    const QString declarations = where::AndVariableDeclarations();
    auto addWord = [this] {
        const qint32 fileID = FRecords.Int(Table::QXWORD, W::QXFileID);
        const qint32 objectID = FRecords.Int(Table::QXWORD, W::QXObjectID);
        const qint32 entryID = FRecords.Int(Table::QXWORD, W::QXEntryID);
        if (!LocateFile(fileID) || !LocateObject(fileID, objectID))
            return Walk::Next;
        QString entryName;
        if (entryID > 0 && !LocateEntry(fileID, objectID, entryID, entryName))
            return Walk::Next;
        auto item =
            TQXItem::ForWord(fileID, objectID, entryID, FRecords.Int(Table::QXWORD, W::QXRowID),
                             FRecords.Int(Table::QXWORD, W::QXWordID));
        const QString text =
            QLatin1Char(' ') + FRecords.Text(Table::QXWORD, W::QXWord) + QStringLiteral(" as ") +
            FRecords.Text(Table::QXWORD, W::QXObjectIdentifier) + QStringLiteral(" [") +
            FRecords.Text(Table::QXOBJECT, O::QXObjectName) +
            (entryID > 0 ? QLatin1Char('.') + entryName : QString()) + QLatin1Char(']');
        const int imageIndex = image::IsPersistentStorage(FRecords.Int(Table::QXOBJECT, O::QXIcon))
                                   ? image::ImagePersistentVariable
                                   : image::ImageVariable;
        return AfterAdd(Add(std::move(item), text, imageIndex));
    };
    auto wordsOfObject = [&] {
        if (!FRecords.Select(Table::QXWORD,
                             where::FileObjectKeys(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                                                   FRecords.Int(Table::QXOBJECT, O::QXObjectID)) +
                                 declarations + where::AndSub(FRootFilter.WordCondition)))
            return Walk::Next;
        do
            if (addWord() == Walk::Done)
                return Walk::Done;
        while (FRecords.Next(Table::QXWORD));
        return Walk::Next;
    };
    if (FRootFilter.PackageCondition)
        WalkPackageMembers(wordsOfObject);
    else if (!FRootFilter.ObjectCondition.isEmpty())
        WalkObjects(wordsOfObject);
    else if (!FRootFilter.EntryCondition.isEmpty())
        WalkEntryObjects(wordsOfObject);
    else if (FRecords.Select(Table::QXWORD, QStringLiteral("QXWordType = ") +
                                                where::Number(qx::code::WordVariableDeclaration) +
                                                where::AndSub(FRootFilter.WordCondition))) {
        ReadAhead(Table::QXWORD,
                  {{Table::QXFILE, FileKey, {"QXFileID"}},
                   {Table::QXOBJECT, ObjectKey, {"QXFileID", "QXObjectID"}},
                   {Table::QXENTRY, EntryKey, {"QXFileID", "QXObjectID", "QXEntryID"}}});
        do
            if (addWord() == Walk::Done)
                return;
        while (FRecords.Next(Table::QXWORD));
    }
}

void TQXRootItemLister::AddPlaceholders() {
    const bool data = FSettings.Level == TQXLevel::Data;
    const bool codeOrData = data || FSettings.Level == TQXLevel::Code;
    if (FSettings.IsDependencies() && !codeOrData) {
        std::vector<const TQXItem*> items;
        for (int i = 0; i < FTree.RootCount(); ++i)
            items.push_back(FTree.Root(i)->ItemAs<TQXItem>());
        FView.PrepareHasDependencies(items, FSettings.Direction);
    }
    for (int i = FTree.RootCount() - 1; i >= 0; --i) {
        TQXTreeNode* node = FTree.Root(i);
        const auto* item = node->ItemAs<TQXItem>();
        if (item == nullptr)
            continue;
        bool expandable = false;
        if (FSettings.IsDependencies())
            expandable = codeOrData || FView.HasDependencies(*item, FSettings.Direction);
        else if (FDirection == 0)
            expandable = !data && (node->ImageIndex() == image::IconInFile ||
                                           node->ImageIndex() == image::IconInFileBottomUp
                                       ? ObjectHasContents(FRecords, item->FileID, item->ObjectID)
                                       : item->RowID == 0);
        else
            expandable = data || item->SystemID == 0;
        if (expandable)
            FTree.AddPlaceholder(node);
    }
}
