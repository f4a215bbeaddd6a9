#include "view/RootVariable.h"

#include "platform/TreeNode.h"
#include "repository/ImageIndexes.h"
#include "repository/WhereText.h"

namespace {
using qx::Table;
namespace O = qx::QXOBJECT;
namespace W = qx::QXWORD;
namespace D = qx::QXDEPENDENCIES;
} // namespace

QString VariableText(const QString& name, const QString& type, const QString& parent) {
    return QLatin1Char(' ') + name + QStringLiteral(" as ") + type + QStringLiteral(" [") + parent +
           QLatin1Char(']');
}

TQXRootVariableFinder::TQXRootVariableFinder(TQXRecordReader& records) : FRecords(records) {}

std::optional<TQXRootVariable> TQXRootVariableFinder::OfNode(const TQXTreeNode& node) {
    if (const auto* data = node.ItemAs<TQXDataItem>()) {
        if (!SelectWord(data->FileID, data->ObjectID, data->EntryID, data->RowID, data->WordID))
            return std::nullopt; // a variable whose declaration is not loaded
        TQXRootVariable variable = FromCurrentWord();
        variable.Item = std::make_shared<const TQXDataItem>(*data); // its scope kept
        return variable;
    }
    const auto* word = node.ItemAs<TQXItem>();
    if (word == nullptr || word->WordID <= 0)
        return std::nullopt;
    if (!SelectWord(word->FileID, word->ObjectID, word->EntryID, word->RowID, word->WordID) ||
        FRecords.Int(Table::QXWORD, W::QXWordType) != qx::code::WordVariableDeclaration)
        return std::nullopt;
    return FromCurrentWord();
}

std::optional<TQXRootVariable> TQXRootVariableFinder::Named(const QString& objectName,
                                                            const QString& variableName,
                                                            QString& missing) {
    if (!FRecords.Select(Table::QXOBJECT, where::TextEquals("QXObjectName", objectName) +
                                              QStringLiteral(" AND QXIcon >= 0"))) {
        missing = QStringLiteral("The repository has no object named ") + objectName;
        return std::nullopt;
    }
    const qint32 fileID = FRecords.Int(Table::QXOBJECT, O::QXFileID);
    const qint32 objectID = FRecords.Int(Table::QXOBJECT, O::QXObjectID);
    if (SelectDeclaration(fileID, objectID, variableName))
        return FromCurrentWord();
    // The parts and members the object includes: what it depends on as a
    // whole, from outside its entries.
    std::vector<std::pair<qint32, qint32>> included;
    if (FRecords.Select(Table::QXDEPENDENCIES, where::Keys({{"QXFromFileID", fileID},
                                                            {"QXFromObjectID", objectID},
                                                            {"QXFromEntryID", 0},
                                                            {"QXEntryID", 0}})))
        do
            included.emplace_back(FRecords.Int(Table::QXDEPENDENCIES, D::QXFileID),
                                  FRecords.Int(Table::QXDEPENDENCIES, D::QXObjectID));
        while (FRecords.Next(Table::QXDEPENDENCIES));
    for (const auto& [file, object] : included)
        if (SelectDeclaration(file, object, variableName))
            return FromCurrentWord();
    missing = QStringLiteral("The object ") + objectName +
              QStringLiteral(" declares no variable ") + variableName +
              QStringLiteral(", nor does anything it includes");
    return std::nullopt;
}

bool TQXRootVariableFinder::SelectDeclaration(qint32 fileID, qint32 objectID, const QString& name) {
    return FRecords.Select(Table::QXWORD,
                           where::FileObjectKeys(fileID, objectID) +
                               where::AndKey("QXWordType", qx::code::WordVariableDeclaration) +
                               where::AndText("QXWord", name));
}

bool TQXRootVariableFinder::SelectWord(qint32 fileID, qint32 objectID, qint32 entryID, qint32 rowID,
                                       qint32 wordID) {
    return FRecords.Select(Table::QXWORD, where::Keys({{"QXFileID", fileID},
                                                       {"QXObjectID", objectID},
                                                       {"QXEntryID", entryID},
                                                       {"QXRowID", rowID},
                                                       {"QXWordID", wordID}}));
}

TQXRootVariable TQXRootVariableFinder::FromCurrentWord() {
    const qint32 fileID = FRecords.Int(Table::QXWORD, W::QXFileID);
    const qint32 objectID = FRecords.Int(Table::QXWORD, W::QXObjectID);
    const qint32 entryID = FRecords.Int(Table::QXWORD, W::QXEntryID);
    const qint32 rowID = FRecords.Int(Table::QXWORD, W::QXRowID);
    const qint32 wordID = FRecords.Int(Table::QXWORD, W::QXWordID);
    const qint32 languageID = FRecords.Int(Table::QXWORD, W::QXLanguageID);
    const QString name = FRecords.Text(Table::QXWORD, W::QXWord);
    const QString type = FRecords.Text(Table::QXWORD, W::QXObjectIdentifier);
    // The declaring object's identifier also names the variable's uses as
    // a qualifier.
    QString declaringObject;
    int icon = 0;
    if (FRecords.Select(Table::QXOBJECT, where::FileObjectKeys(fileID, objectID))) {
        declaringObject = FRecords.Text(Table::QXOBJECT, O::QXObjectIdentifier);
        icon = FRecords.Int(Table::QXOBJECT, O::QXIcon);
    }
    return TQXRootVariable{
        std::make_shared<const TQXDataItem>(name, declaringObject, fileID, objectID, 0, fileID,
                                            objectID, entryID, rowID, wordID, languageID),
        VariableText(name, type, declaringObject),
        image::IsPersistentStorage(icon) ? image::ImagePersistentVariable : image::ImageVariable};
}
