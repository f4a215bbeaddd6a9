#include "view/ObjectContents.h"

#include "platform/TreeControl.h"
#include "repository/ImageIndexes.h"
#include "repository/RecordReader.h"
#include "repository/SchemaNames.h"
#include "repository/WhereText.h"
#include "view/DistributionNodes.h"

#include <QSet>

#include <utility>

namespace {
using qx::Table;
namespace O = qx::QXOBJECT;
namespace E = qx::QXENTRY;
namespace R = qx::QXROW;
namespace W = qx::QXWORD;

QString ObjectLevelDeclarations(qint32 fileID, qint32 objectID) {
    return where::FileObjectKeys(fileID, objectID) + QStringLiteral(" AND QXEntryID = 0") +
           where::AndVariableDeclarations();
}
} // namespace

TQXObjectContents::TQXObjectContents(TQXRecordReader& records, TQXTreeControl& tree,
                                     TQXUpperFileNames* fileNames)
    : FRecords(records), FTree(tree), FFileNames(fileNames) {}

void TQXObjectContents::Show(TQXTreeNode* node, const TQXItem& item) {
    FNode = node;
    const int nodeImage = node->ImageIndex();
    FVariableImage = image::IsPersistentStorage(nodeImage) ? image::ImagePersistentVariable
                                                           : image::ImageVariable;
    FInherited = false;
    FSubObjects.clear();
    FVariables.clear();
    FEntries.clear();

    if (!FRecords.Select(Table::QXOBJECT, where::FileObjectKeys(item.FileID, item.ObjectID)))
        return;
    QSet<std::pair<qint32, qint32>> listed;
    for (;;) {
        const PassObject pass = ReadPassObject();
        if (listed.contains({pass.FileID, pass.ObjectID}))
            return; // the inheritance comes back to an object listed already
        listed.insert({pass.FileID, pass.ObjectID});
        if (pass.FileID != item.FileID || pass.ObjectID != item.ObjectID) {
            AddText(QStringLiteral("--- Inherited source [") + pass.Name + QStringLiteral("] ---"));
            FInherited = true;
        }
        ListPass(pass);
        if (pass.Inherits.isEmpty())
            return;
        if (!LocateAncestor(pass)) {
            const QString missing = IsSetName(pass.InheritsParentName)
                                        ? pass.InheritsParentName + QLatin1Char('.') + pass.Inherits
                                        : pass.Inherits;
            AddText(QStringLiteral("--- Inherited source [") + missing +
                    QStringLiteral("] is missing ---"));
            return;
        }
    }
}

TQXObjectContents::PassObject TQXObjectContents::ReadPassObject() {
    PassObject pass;
    pass.FileID = FRecords.Int(Table::QXOBJECT, O::QXFileID);
    pass.ObjectID = FRecords.Int(Table::QXOBJECT, O::QXObjectID);
    pass.Icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
    pass.Name = FRecords.Text(Table::QXOBJECT, O::QXObjectName);
    pass.Identifier = FRecords.Text(Table::QXOBJECT, O::QXObjectIdentifier);
    pass.SubObjectParentName = FRecords.Text(Table::QXOBJECT, O::QXSubObjectParentName);
    pass.Inherits = FRecords.Text(Table::QXOBJECT, O::QXObjectInherits);
    pass.InheritsParentName = FRecords.Text(Table::QXOBJECT, O::QXInheritsParentName);
    return pass;
}

void TQXObjectContents::ListPass(const PassObject& pass) {
    AddSubObjects(pass);
    ForEachUsedHiddenPart(pass, [&](qint32 fileID, qint32 objectID) {
        AddVariables(ObjectLevelDeclarations(fileID, objectID), pass.Name);
    });
    AddVariables(ObjectLevelDeclarations(pass.FileID, pass.ObjectID), pass.Name);
    AddLines(pass);
    AddEntries(where::FileObjectKeys(pass.FileID, pass.ObjectID), pass.Name);
    ForEachUsedHiddenPart(pass, [&](qint32 fileID, qint32 objectID) {
        AddEntries(where::FileObjectKeys(fileID, objectID), pass.Name);
    });
}

// A sub-object's own sub-objects are in its file; those of a top-level
// object may also sit in the files that share its base name.
void TQXObjectContents::AddSubObjects(const PassObject& pass) {
    const QString parent = where::AndText("QXSubObjectParentName", pass.Identifier);
    QString objectWhere = QStringLiteral("QXFileID = 0");
    if (IsSetName(pass.SubObjectParentName)) {
        objectWhere = where::Keys({{"QXFileID", pass.FileID}}) + parent;
    } else {
        const QList<qint32> files = FilesSharingBaseName(FRecords, pass.FileID, true, FFileNames);
        if (!files.isEmpty())
            objectWhere = where::In("QXFileID", files, QStringLiteral(", ")) + parent;
    }
    if (!FRecords.Select(Table::QXOBJECT, objectWhere))
        return;
    do {
        const QString identifier = FRecords.Text(Table::QXOBJECT, O::QXObjectIdentifier);
        if (!ShowName(FSubObjects, identifier))
            continue;
        FTree.AddChild(FNode, ObjectNodeText(FRecords),
                       TQXItem::ForObject(FRecords.Int(Table::QXOBJECT, O::QXFileID),
                                          FRecords.Int(Table::QXOBJECT, O::QXObjectID)),
                       FRecords.Int(Table::QXOBJECT, O::QXIcon));
    } while (FRecords.Next(Table::QXOBJECT));
}

void TQXObjectContents::ForEachUsedHiddenPart(
    const PassObject& pass, const std::function<void(qint32 fileID, qint32 objectID)>& visit) {
    if (!FRecords.Select(Table::QXOBJECT, where::TextEquals("QXObjectName", pass.Name) +
                                              QStringLiteral(" AND QXIcon = ") +
                                              where::Number(qx::code::IconHiddenPart)))
        return;
    do {
        const qint32 fileID = FRecords.Int(Table::QXOBJECT, O::QXFileID);
        const qint32 objectID = FRecords.Int(Table::QXOBJECT, O::QXObjectID);
        const QString used = where::FileObjectKeys(fileID, objectID) +
                             QStringLiteral(" AND QXEntryID = 0") +
                             where::AndKey("QXFromFileID", pass.FileID) +
                             where::AndKey("QXFromObjectID", pass.ObjectID) +
                             QStringLiteral(" AND QXFromEntryID = 0");
        if (FRecords.Select(Table::QXDEPENDENCIES, used))
            visit(fileID, objectID);
    } while (FRecords.Next(Table::QXOBJECT));
}

void TQXObjectContents::AddVariables(const QString& wordWhere, const QString& objectName) {
    if (!FRecords.Select(Table::QXWORD, wordWhere))
        return;
    do {
        const QString name = FRecords.Text(Table::QXWORD, W::QXWord);
        if (!ShowName(FVariables, name))
            continue;
        FTree.AddChild(FNode,
                       QLatin1Char(' ') + name + QStringLiteral(" as ") +
                           FRecords.Text(Table::QXWORD, W::QXObjectIdentifier) +
                           QStringLiteral(" [") + objectName + QLatin1Char(']'),
                       TQXItem::ForWord(FRecords.Int(Table::QXWORD, W::QXFileID),
                                        FRecords.Int(Table::QXWORD, W::QXObjectID),
                                        FRecords.Int(Table::QXWORD, W::QXEntryID),
                                        FRecords.Int(Table::QXWORD, W::QXRowID),
                                        FRecords.Int(Table::QXWORD, W::QXWordID)),
                       FVariableImage);
    } while (FRecords.Next(Table::QXWORD));
}

// Lines outside entries: the whole file's for programs and copy members,
// the object's own for nested programs and functions, none for other kinds
// of object.
void TQXObjectContents::AddLines(const PassObject& pass) {
    QString rowWhere;
    if (pass.Icon == image::IconProgram || pass.Icon == image::IconCopyMember)
        rowWhere = where::Keys({{"QXFileID", pass.FileID}}) +
                   QStringLiteral(" AND QXObjectID >= 0 AND QXEntryID = 0");
    else if (pass.Icon == image::IconNestedProgram || pass.Icon == image::IconFunction)
        rowWhere = where::FileObjectKeys(pass.FileID, pass.ObjectID);
    else
        return;
    if (!FRecords.Select(Table::QXROW, rowWhere))
        return;
    do
        FTree.AddChild(FNode, FRecords.Text(Table::QXROW, R::QXRow),
                       TQXItem::ForRow(FRecords.Int(Table::QXROW, R::QXFileID),
                                       FRecords.Int(Table::QXROW, R::QXObjectID),
                                       FRecords.Int(Table::QXROW, R::QXEntryID),
                                       FRecords.Int(Table::QXROW, R::QXRowID)),
                       image::ImageRow);
    while (FRecords.Next(Table::QXROW));
}

void TQXObjectContents::AddEntries(const QString& entryWhere, const QString& objectName) {
    if (!FRecords.Select(Table::QXENTRY, entryWhere))
        return;
    do {
        const QString name = FRecords.Text(Table::QXENTRY, E::QXEntryName);
        if (!ShowName(FEntries, name))
            continue;
        FTree.AddChild(FNode, name + QStringLiteral(" [") + objectName + QLatin1Char(']'),
                       TQXItem::ForEntry(FRecords.Int(Table::QXENTRY, E::QXFileID),
                                         FRecords.Int(Table::QXENTRY, E::QXObjectID),
                                         FRecords.Int(Table::QXENTRY, E::QXEntryID)),
                       image::ImageEntryTopDown);
    } while (FRecords.Next(Table::QXENTRY));
}

// The ancestor is the object of the inherited identifier under the named
// enclosing object, or else the one of that identifier in the file of the
// enclosing object.
bool TQXObjectContents::LocateAncestor(const PassObject& pass) {
    if (FRecords.Select(Table::QXOBJECT,
                        where::TextEquals("QXObjectIdentifier", pass.Inherits) +
                            where::AndText("QXSubObjectParentName", pass.InheritsParentName)))
        return true;
    if (!FRecords.Select(Table::QXOBJECT,
                         where::TextEquals("QXObjectIdentifier", pass.InheritsParentName)))
        return false;
    return FRecords.Select(Table::QXOBJECT,
                           where::Keys({{"QXFileID", FRecords.Int(Table::QXOBJECT, O::QXFileID)}}) +
                               where::AndText("QXObjectIdentifier", pass.Inherits));
}

bool TQXObjectContents::ShowName(QStringList& shown, const QString& name) {
    if (name.isEmpty() || (FInherited && shown.contains(name)))
        return false;
    shown << name;
    return true;
}

// Headings and markers carry an item whose only id is row -1, and no image.
void TQXObjectContents::AddText(const QString& text) {
    FTree.AddChild(FNode, text, std::make_unique<TQXItem>(0, 0, 0, 0, 0, 0, 0, -1, 0), -1);
}
