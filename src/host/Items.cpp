#include "host/Items.h"

#include "repository/Errors.h"

int TQXItems::AddItem(qint32 fileID, qint32 systemID, qint32 computerID, qint32 applicationID,
                      qint32 packageID, qint32 objectID, qint32 entryID, qint32 rowID,
                      qint32 wordID) {
    Entry entry;
    entry.FileID = fileID;
    entry.SystemID = systemID;
    entry.ComputerID = computerID;
    entry.ApplicationID = applicationID;
    entry.PackageID = packageID;
    entry.ObjectID = objectID;
    entry.EntryID = entryID;
    entry.RowID = rowID;
    entry.WordID = wordID;
    FEntries << entry;
    return FEntries.size() - 1;
}

TQXItems::Entry& TQXItems::Last() {
    if (FEntries.isEmpty())
        throw EQXError(QStringLiteral("TQXItems: no item to describe; call AddItem first"));
    return FEntries.last();
}
