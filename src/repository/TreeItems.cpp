#include "repository/TreeItems.h"

#include <QStringList>

#include <initializer_list>

namespace {
QString JoinNumbers(std::initializer_list<qint32> numbers) {
    QStringList parts;
    for (qint32 number : numbers)
        parts << QString::number(number);
    return parts.join(QLatin1Char(','));
}
} // namespace

TQXItem::TQXItem(qint32 fileID, qint32 systemID, qint32 computerID, qint32 applicationID,
                 qint32 packageID, qint32 objectID, qint32 entryID, qint32 rowID, qint32 wordID)
    : FileID(fileID), SystemID(systemID), ComputerID(computerID), ApplicationID(applicationID),
      PackageID(packageID), ObjectID(objectID), RowID(rowID), EntryID(entryID), WordID(wordID) {}

// Identifiers in constructor order, so the text reads like the item's construction.
QString TQXItem::GetItemID() const {
    return JoinNumbers(
        {FileID, SystemID, ComputerID, ApplicationID, PackageID, ObjectID, EntryID, RowID, WordID});
}

TQXDataItem::TQXDataItem(const QString& dataText1, const QString& dataText2, qint32 ownerFileID,
                         qint32 ownerObjectID, qint32 ownerEntryID, qint32 fileID, qint32 objectID,
                         qint32 entryID, qint32 rowID, qint32 wordID, qint32 languageID)
    : DataText1(dataText1), DataText2(dataText2), OwnerFileID(ownerFileID),
      OwnerObjectID(ownerObjectID), OwnerEntryID(ownerEntryID), FileID(fileID), ObjectID(objectID),
      RowID(rowID), EntryID(entryID), WordID(wordID), LanguageID(languageID) {}

// A variable is identified by its declaration word and the scope it was
// reached in; the texts are left out because the ids already locate it.
QString TQXDataItem::GetItemID() const {
    return QStringLiteral("D") + JoinNumbers({OwnerFileID, OwnerObjectID, OwnerEntryID, FileID,
                                              ObjectID, EntryID, RowID, WordID, LanguageID});
}

std::unique_ptr<TQXItem> TQXItem::ForSystem(qint32 systemID) {
    return std::make_unique<TQXItem>(0, systemID, 0, 0, 0, 0, 0, 0, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForComputer(qint32 computerID) {
    return std::make_unique<TQXItem>(0, 0, computerID, 0, 0, 0, 0, 0, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForApplication(qint32 applicationID) {
    return std::make_unique<TQXItem>(0, 0, 0, applicationID, 0, 0, 0, 0, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForPackage(qint32 fileID, qint32 packageID) {
    return std::make_unique<TQXItem>(fileID, 0, 0, 0, packageID, 0, 0, 0, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForObject(qint32 fileID, qint32 objectID) {
    return std::make_unique<TQXItem>(fileID, 0, 0, 0, 0, objectID, 0, 0, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForEntry(qint32 fileID, qint32 objectID, qint32 entryID) {
    return std::make_unique<TQXItem>(fileID, 0, 0, 0, 0, objectID, entryID, 0, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForRow(qint32 fileID, qint32 objectID, qint32 entryID,
                                         qint32 rowID) {
    return std::make_unique<TQXItem>(fileID, 0, 0, 0, 0, objectID, entryID, rowID, 0);
}

std::unique_ptr<TQXItem> TQXItem::ForWord(qint32 fileID, qint32 objectID, qint32 entryID,
                                          qint32 rowID, qint32 wordID) {
    return std::make_unique<TQXItem>(fileID, 0, 0, 0, 0, objectID, entryID, rowID, wordID);
}

std::unique_ptr<TQXItem> TQXItem::ForNothing() {
    return std::make_unique<TQXItem>(0, 0, 0, 0, 0, 0, 0, 0, 0);
}
