#include "view/DistributionExpander.h"

#include "platform/TreeControl.h"
#include "repository/ImageIndexes.h"
#include "repository/SchemaNames.h"
#include "repository/WhereText.h"
#include "view/DistributionNodes.h"
#include "view/ExpansionContext.h"
#include "view/ObjectContents.h"
#include "view/Recursion.h"

#include <QList>

#include <unordered_map>

namespace {
using qx::Table;
namespace F = qx::QXFILE;
namespace O = qx::QXOBJECT;
namespace E = qx::QXENTRY;
namespace R = qx::QXROW;
namespace W = qx::QXWORD;
namespace P = qx::QXPACKAGE;
namespace A = qx::QXATTRIBUTE;

constexpr int IconHiddenPart = qx::code::IconHiddenPart;
constexpr int IconComputerAmongApplications = qx::code::IconComputerAmongApplications;

// The item of a system, computer or application, by the QXFILE column that
// refers to it.
std::unique_ptr<TQXItem> AttributeItem(int fileColumn, qint32 id) {
    if (fileColumn == F::QXSystemID)
        return TQXItem::ForSystem(id);
    if (fileColumn == F::QXComputerID)
        return TQXItem::ForComputer(id);
    return TQXItem::ForApplication(id);
}
} // namespace

TQXDistributionExpander::TQXDistributionExpander(TQXExpansionContext& context)
    : FContext(context), FRecords(context.Records), FTree(context.Tree),
      FDirection(context.Settings.DirectionNumber()) {}

void TQXDistributionExpander::Expand(TQXTreeNode* node) {
    // A node without a placeholder was expanded before, or never had
    // anything to show.
    if (!TQXTreeControl::TakePlaceholder(node))
        return;
    FNode = node;
    FSort = true;

    const auto* item = node->ItemAs<TQXItem>();
    const Kind kind = KindOf(node, item);
    if (kind == Kind::None)
        return;
    if (AddChildren(kind, *item) == Outcome::EndNow)
        return;
    AddPlaceholders();
    if (FSort)
        FTree.SortChildren(node);
}

TQXDistributionExpander::Kind TQXDistributionExpander::KindOf(const TQXTreeNode* node,
                                                              const TQXItem* item) const {
    if (item == nullptr)
        return Kind::None;
    if (node->Level() == 0 && FContext.Settings.Level == TQXLevel::Data)
        return Kind::VariableRoot;
    if (node->Level() == 0 && FContext.Settings.Level == TQXLevel::Code)
        return Kind::CodeRoot;
    if (item->EntryID > 0)
        return Kind::Entry;
    if (item->ObjectID > 0)
        return Kind::Object;
    if (item->PackageID > 0)
        return Kind::Package;
    if (item->ApplicationID > 0 || node->ImageIndex() == IconComputerAmongApplications)
        return Kind::Application;
    if (item->ComputerID > 0)
        return Kind::Computer;
    if (item->SystemID > 0)
        return Kind::System;
    return Kind::None;
}

TQXDistributionExpander::Outcome TQXDistributionExpander::AddChildren(Kind kind,
                                                                      const TQXItem& item) {
    const bool topDown = FDirection == 0;
    switch (kind) {
    case Kind::VariableRoot:
        return topDown ? Outcome::GoOn : VariableRootParent(item);
    case Kind::CodeRoot:
        return topDown ? Outcome::GoOn : CodeRootParent(item);
    case Kind::Entry:
        if (!topDown)
            return ParentObject(
                where::Keys({{"QXFileID", item.FileID}, {"QXObjectId", item.ObjectID}}));
        EntryContents(item);
        break;
    case Kind::Object:
        if (topDown) {
            TQXObjectContents(FRecords, FTree, FContext.FileNames).Show(FNode, item);
            FSort = false;
        } else {
            ObjectContainers(item);
        }
        break;
    case Kind::Package:
        if (topDown)
            PackageMembers(item);
        else
            ApplicationOrComputer(item.FileID);
        break;
    case Kind::Application:
        if (topDown)
            ApplicationContents(item);
        else if (FNode->ImageIndex() == IconComputerAmongApplications && item.ComputerID > 0)
            AttributeOfFirstFile(where::Keys({{"QXComputerID", item.ComputerID}}), F::QXSystemID);
        else
            AttributeOfFirstFile(where::Keys({{"QXApplicationID", item.ApplicationID}}),
                                 F::QXComputerID);
        break;
    case Kind::Computer:
        if (topDown)
            AttributesOfFiles(where::Keys({{"QXComputerID", item.ComputerID}}), F::QXApplicationID);
        else
            AttributeOfFirstFile(where::Keys({{"QXComputerID", item.ComputerID}}), F::QXSystemID);
        break;
    case Kind::System:
        if (topDown)
            AttributesOfFiles(where::Keys({{"QXSystemID", item.SystemID}}), F::QXComputerID);
        break;
    case Kind::None:
        break;
    }
    return Outcome::GoOn;
}

TQXTreeNode* TQXDistributionExpander::Add(const QString& text, std::unique_ptr<TQXItem> item,
                                          int image) {
    return FTree.AddChild(FNode, text, std::move(item), image);
}

// ---- BottomUp ----

// A variable shows its entry, or its object when it lies outside any entry.
TQXDistributionExpander::Outcome TQXDistributionExpander::VariableRootParent(const TQXItem& item) {
    if (!FRecords.Select(Table::QXENTRY, where::Keys({{"QXFileID", item.FileID},
                                                      {"QXObjectId", item.ObjectID},
                                                      {"QXEntryId", item.EntryID}})))
        return ParentObject(where::FileObjectKeys(item.FileID, item.ObjectID));
    if (FRecords.Select(Table::QXOBJECT, where::FileObjectKeys(item.FileID, item.ObjectID)))
        EntryAbove();
    return Outcome::GoOn;
}

// A line of code shows its entry, or its object when it lies outside any entry.
TQXDistributionExpander::Outcome TQXDistributionExpander::CodeRootParent(const TQXItem& item) {
    if (!FRecords.Select(Table::QXOBJECT,
                         where::Keys({{"QXFileID", item.FileID}, {"QXObjectId", item.ObjectID}})))
        return Outcome::GoOn;
    if (FRecords.Select(Table::QXENTRY, where::Keys({{"QXFileID", item.FileID},
                                                     {"QXObjectId", item.ObjectID},
                                                     {"QXEntryId", item.EntryID}}))) {
        EntryAbove();
        return Outcome::GoOn;
    }
    return ParentObjectOfCurrent();
}

TQXDistributionExpander::Outcome TQXDistributionExpander::ParentObject(const QString& objectWhere) {
    if (!FRecords.Select(Table::QXOBJECT, objectWhere))
        return Outcome::GoOn;
    return ParentObjectOfCurrent();
}

// The current QXOBJECT record as the parent, or for a hidden part the
// visible object of the same name; without one the expansion ends at once.
TQXDistributionExpander::Outcome TQXDistributionExpander::ParentObjectOfCurrent() {
    if (FRecords.Int(Table::QXOBJECT, O::QXIcon) == IconHiddenPart &&
        !FRecords.Select(
            Table::QXOBJECT,
            where::TextEquals("QXObjectName", FRecords.Text(Table::QXOBJECT, O::QXObjectName)) +
                QStringLiteral(" AND QXIcon <> ") + where::Number(IconHiddenPart)))
        return Outcome::EndNow;
    Add(ObjectNodeText(FRecords),
        TQXItem::ForObject(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                           FRecords.Int(Table::QXOBJECT, O::QXObjectID)),
        FRecords.Int(Table::QXOBJECT, O::QXIcon) + 1);
    return Outcome::GoOn;
}

// The current QXENTRY record, named with the current QXOBJECT record.
void TQXDistributionExpander::EntryAbove() {
    Add(FRecords.Text(Table::QXENTRY, E::QXEntryName) + QStringLiteral(" [") +
            FRecords.Text(Table::QXOBJECT, O::QXObjectName) + QLatin1Char(']'),
        TQXItem::ForEntry(FRecords.Int(Table::QXENTRY, E::QXFileID),
                          FRecords.Int(Table::QXENTRY, E::QXObjectID),
                          FRecords.Int(Table::QXENTRY, E::QXEntryID)),
        image::ImageEntryBottomUp);
}

// A sub-object shows its enclosing object; any other object its packages,
// or else its application or computer.
void TQXDistributionExpander::ObjectContainers(const TQXItem& item) {
    if (!FRecords.Select(Table::QXOBJECT, where::FileObjectKeys(item.FileID, item.ObjectID)))
        return;
    const qint32 fileID = FRecords.Int(Table::QXOBJECT, O::QXFileID);
    const QString parentName = FRecords.Text(Table::QXOBJECT, O::QXSubObjectParentName);
    if (IsSetName(parentName)) {
        EnclosingObject(fileID, parentName);
        return;
    }
    if (FRecords.Select(Table::QXPACKAGE, where::Keys({{"QXObjectFileID", item.FileID},
                                                       {"QXObjectID", item.ObjectID}}))) {
        do
            Add(FRecords.Text(Table::QXPACKAGE, P::QXPackageName),
                TQXItem::ForPackage(FRecords.Int(Table::QXPACKAGE, P::QXFileID),
                                    FRecords.Int(Table::QXPACKAGE, P::QXPackageID)),
                image::ImagePackageBottomUp);
        while (FRecords.Next(Table::QXPACKAGE));
        return;
    }
    ApplicationOrComputer(item.FileID);
}

// The enclosing object is looked for in the sub-object's own file first,
// then in the files that share its base name (ACCT.CPY -> ACCT.CBL).
void TQXDistributionExpander::EnclosingObject(qint32 fileID, const QString& parentName) {
    const QString visibleParent = where::AndText("QXObjectIdentifier", parentName) +
                                  QStringLiteral(" AND QXIcon <> ") + where::Number(IconHiddenPart);
    if (FRecords.Select(Table::QXOBJECT, where::Keys({{"QXFileID", fileID}}) + visibleParent)) {
        Add(ObjectNodeText(FRecords),
            TQXItem::ForObject(fileID, FRecords.Int(Table::QXOBJECT, O::QXObjectID)),
            FRecords.Int(Table::QXOBJECT, O::QXIcon));
        return;
    }
    QString objectWhere = QStringLiteral("QXFileID = 0");
    const QList<qint32> siblings =
        FilesSharingBaseName(FRecords, fileID, false, FContext.FileNames);
    if (!siblings.isEmpty())
        objectWhere = where::In("QXFileID", siblings, QStringLiteral(", ")) + visibleParent;
    if (!FRecords.Select(Table::QXOBJECT, objectWhere))
        return;
    Add(ObjectNodeText(FRecords),
        TQXItem::ForObject(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                           FRecords.Int(Table::QXOBJECT, O::QXObjectID)),
        FRecords.Int(Table::QXOBJECT, O::QXIcon));
}

// The application of the file, or else its computer when that is one shown
// among applications (icon 49).
void TQXDistributionExpander::ApplicationOrComputer(qint32 fileID) {
    if (!FRecords.Select(Table::QXFILE, where::Keys({{"QXFileID", fileID}})))
        return;
    const qint32 applicationID = FRecords.Int(Table::QXFILE, F::QXApplicationID);
    const qint32 computerID = FRecords.Int(Table::QXFILE, F::QXComputerID);
    if (applicationID > 0)
        AddAttribute(applicationID, F::QXApplicationID);
    else if (computerID > 0)
        AddAttribute(computerID, F::QXComputerID,
                     QStringLiteral(" AND QXIcon = ") +
                         where::Number(IconComputerAmongApplications));
}

void TQXDistributionExpander::AttributeOfFirstFile(const QString& fileWhere, int fileColumn) {
    if (!FRecords.Select(Table::QXFILE, fileWhere))
        return;
    const qint32 id = FRecords.Int(Table::QXFILE, fileColumn);
    if (id > 0)
        AddAttribute(id, fileColumn);
}

void TQXDistributionExpander::AddAttribute(qint32 id, int fileColumn,
                                           const QString& extraCondition) {
    if (!FRecords.Select(Table::QXATTRIBUTE, where::Keys({{"QXAttributeID", id}}) + extraCondition))
        return;
    Add(FRecords.Text(Table::QXATTRIBUTE, A::QXAttributeName), AttributeItem(fileColumn, id),
        FRecords.Int(Table::QXATTRIBUTE, A::QXIcon));
}

// ---- TopDown ----

// All variables, then all lines of code in record order; not sorted.
void TQXDistributionExpander::EntryContents(const TQXItem& item) {
    FSort = false;
    const QString entryKeys = where::Keys(
        {{"QXFileID", item.FileID}, {"QXObjectID", item.ObjectID}, {"QXEntryID", item.EntryID}});
    if (FRecords.Select(Table::QXWORD, entryKeys + where::AndVariableDeclarations())) {
        do
            Add(QLatin1Char(' ') + FRecords.Text(Table::QXWORD, W::QXWord) +
                    QStringLiteral(" as ") + FRecords.Text(Table::QXWORD, W::QXObjectIdentifier),
                TQXItem::ForWord(FRecords.Int(Table::QXWORD, W::QXFileID),
                                 FRecords.Int(Table::QXWORD, W::QXObjectID),
                                 FRecords.Int(Table::QXWORD, W::QXEntryID),
                                 FRecords.Int(Table::QXWORD, W::QXRowID),
                                 FRecords.Int(Table::QXWORD, W::QXWordID)),
                image::ImageVariable);
        while (FRecords.Next(Table::QXWORD));
    }
    if (FRecords.Select(Table::QXROW, entryKeys)) {
        do
            Add(FRecords.Text(Table::QXROW, R::QXRow),
                TQXItem::ForRow(FRecords.Int(Table::QXROW, R::QXFileID),
                                FRecords.Int(Table::QXROW, R::QXObjectID),
                                FRecords.Int(Table::QXROW, R::QXEntryID),
                                FRecords.Int(Table::QXROW, R::QXRowID)),
                image::ImageRow);
        while (FRecords.Next(Table::QXROW));
    }
}

// The members are located in the whole QXOBJECT table; a member that is not
// loaded is still listed, by the name the package record gives it.
void TQXDistributionExpander::PackageMembers(const TQXItem& item) {
    FRecords.Select(Table::QXOBJECT, QString());
    if (!FRecords.Select(Table::QXPACKAGE, where::Keys({{"QXPackageID", item.PackageID}})))
        return;
    do {
        const qint32 fileID = FRecords.Int(Table::QXPACKAGE, P::QXObjectFileID);
        const qint32 objectID = FRecords.Int(Table::QXPACKAGE, P::QXObjectID);
        if (!FRecords.Locate(Table::QXOBJECT, QStringLiteral("QXFileID;QXObjectID"),
                             {fileID, objectID})) {
            Add(FRecords.Text(Table::QXPACKAGE, P::QXObjectName) +
                    QStringLiteral(" [source not loaded]"),
                TQXItem::ForNothing(), -1);
            continue;
        }
        const qint32 icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
        if (icon == image::IconInFile)
            continue;
        Add(ObjectNodeText(FRecords),
            TQXItem::ForObject(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                               FRecords.Int(Table::QXOBJECT, O::QXObjectID)),
            icon);
    } while (FRecords.Next(Table::QXPACKAGE));
}

// The packages of the application's files, then its objects that belong to
// no package (found by walking every such object and locating its file in
// the application's file selection).
void TQXDistributionExpander::ApplicationContents(const TQXItem& item) {
    const QString fileWhere =
        FNode->ImageIndex() == IconComputerAmongApplications && item.ComputerID > 0
            ? where::Keys({{"QXComputerID", item.ComputerID}})
            : where::Keys({{"QXApplicationID", item.ApplicationID}});
    if (!FRecords.Select(Table::QXFILE, fileWhere))
        return;
    const bool setBased = FContext.Path == TQXReadPath::SetBased;
    const QString filesOfApplication =
        QStringLiteral("QXFileID IN (SELECT QXFileID FROM QXFILE WHERE ") + fileWhere +
        QLatin1Char(')');
    // The set-based path reads the packages of all the files at once: the
    // first record of each file's, as the look-up per file finds it.
    std::unordered_map<qint32, std::pair<QString, qint32>> packages;
    if (setBased && FRecords.Select(Table::QXPACKAGE, filesOfApplication))
        do
            packages.try_emplace(FRecords.Int(Table::QXPACKAGE, P::QXFileID),
                                 FRecords.Text(Table::QXPACKAGE, P::QXPackageName),
                                 FRecords.Int(Table::QXPACKAGE, P::QXPackageID));
        while (FRecords.Next(Table::QXPACKAGE));
    if (setBased || FRecords.Select(Table::QXPACKAGE, QString())) {
        do {
            const qint32 fileID = FRecords.Int(Table::QXFILE, F::QXFileID);
            if (setBased) {
                if (const auto package = packages.find(fileID); package != packages.end())
                    Add(package->second.first, TQXItem::ForPackage(fileID, package->second.second),
                        image::ImagePackageTopDown);
            } else if (FRecords.Select(Table::QXPACKAGE, where::Keys({{"QXFileID", fileID}}))) {
                Add(FRecords.Text(Table::QXPACKAGE, P::QXPackageName),
                    TQXItem::ForPackage(fileID, FRecords.Int(Table::QXPACKAGE, P::QXPackageID)),
                    image::ImagePackageTopDown);
            }
        } while (FRecords.Next(Table::QXFILE));
    }
    // The set-based path selects only the objects of the application's files
    // instead of every object of the estate (the unary plus keeps SQLite from
    // reading them through the index on QXInPackage, which nearly every
    // object shares); the file look-up below then finds each, as it does on
    // the reference path.
    const QString objectWhere = setBased
                                    ? QStringLiteral("+QXInPackage = 0 AND ") + filesOfApplication
                                    : QStringLiteral("QXInPackage = 0");
    if (!FRecords.Select(Table::QXOBJECT, objectWhere))
        return;
    do {
        const qint32 icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
        if (icon == image::IconInFile || icon == IconHiddenPart)
            continue;
        const qint32 fileID = FRecords.Int(Table::QXOBJECT, O::QXFileID);
        if (!FRecords.Locate(Table::QXFILE, QStringLiteral("QXFileID"), {fileID}))
            continue;
        Add(ObjectNodeText(FRecords),
            TQXItem::ForObject(fileID, FRecords.Int(Table::QXOBJECT, O::QXObjectID)), icon);
    } while (FRecords.Next(Table::QXOBJECT));
}

// The applications of a computer's files or the computers of a system's
// files, each shown once.
void TQXDistributionExpander::AttributesOfFiles(const QString& fileWhere, int fileColumn) {
    if (!FRecords.Select(Table::QXFILE, fileWhere))
        return;
    QList<qint32> shown;
    do {
        const qint32 id = FRecords.Int(Table::QXFILE, fileColumn);
        if (id <= 0 || shown.contains(id))
            continue;
        if (!FRecords.Select(Table::QXATTRIBUTE, where::Keys({{"QXAttributeID", id}})))
            continue;
        Add(FRecords.Text(Table::QXATTRIBUTE, A::QXAttributeName), AttributeItem(fileColumn, id),
            FRecords.Int(Table::QXATTRIBUTE, A::QXIcon));
        shown << id;
    } while (FRecords.Next(Table::QXFILE));
}

// ---- Placeholders ----

// Every new child that can be opened further gets a placeholder; a child
// that repeats an item of its own path gets none.
void TQXDistributionExpander::AddPlaceholders() {
    const TQXPathItems path(FNode);
    for (int i = FNode->ChildCount() - 1; i >= 0; --i) {
        TQXTreeNode* child = FNode->Child(i);
        const auto* item = child->ItemAs<TQXItem>();
        if (item == nullptr || path.CheckRecursion(child))
            continue;
        bool expandable = false;
        if (FDirection != 0)
            expandable = item->SystemID == 0;
        else if (child->ImageIndex() == image::IconInFile ||
                 child->ImageIndex() == image::IconInFileBottomUp)
            expandable = ObjectHasContents(FRecords, item->FileID, item->ObjectID);
        else
            expandable = item->RowID == 0;
        if (expandable)
            FTree.AddPlaceholder(child);
    }
}
