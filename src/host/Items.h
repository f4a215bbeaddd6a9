#pragma once

#include "repository/TreeItems.h"

#include <QList>
#include <QString>

#include <memory>

// The item list the view hands to host windows: one entry per item, with
// the item's nine identifiers (constructor order: entry before row) and the
// texts a command adds to it. The Add... operations after AddItem describe
// the entry just added.
class TQXItems {
public:
    struct Entry {
        qint32 FileID = 0;
        qint32 SystemID = 0;
        qint32 ComputerID = 0;
        qint32 ApplicationID = 0;
        qint32 PackageID = 0;
        qint32 ObjectID = 0;
        qint32 EntryID = 0;
        qint32 RowID = 0;
        qint32 WordID = 0;
        QString Text;
        int Level = 0;
        QString ParentText;
        qint32 ParentFileID = 0;
        int Icon = -1;
        // The variable an entry stands for, when it is one.
        std::shared_ptr<const TQXDataItem> Data;
    };

    int AddItem(qint32 fileID, qint32 systemID, qint32 computerID, qint32 applicationID,
                qint32 packageID, qint32 objectID, qint32 entryID, qint32 rowID, qint32 wordID);
    void AddText(const QString& text) { Last().Text = text; }
    void AddLevel(int level) { Last().Level = level; }
    void AddParentText(const QString& text) { Last().ParentText = text; }
    void AddParentFileID(qint32 fileID) { Last().ParentFileID = fileID; }
    void AddIcon(int icon) { Last().Icon = icon; }
    void AddDataItem(std::shared_ptr<const TQXDataItem> data) { Last().Data = std::move(data); }

    int Count() const { return FEntries.size(); }
    const Entry& At(int index) const { return FEntries.at(index); }

private:
    // The entry the Add... operations describe; throws EQXError before AddItem.
    Entry& Last();

    QList<Entry> FEntries;
};
