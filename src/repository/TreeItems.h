#pragma once

#include <QString>

#include <memory>

// Data carried by a tree node that stands for something in the repository.
// The node owns its item; items never change after construction.
class TQXTreeItem {
public:
    virtual ~TQXTreeItem() = default;

    // "TQXItem" or "TQXDataItem": how code tells the two kinds apart.
    virtual QString ClassName() const = 0;
    // A text that identifies the item, stable for one tree; node keys of
    // tracks are built from it.
    virtual QString GetItemID() const = 0;
};

// An item of the containment chain (system ... word). The constructor takes
// entry before row, while the fields hold row before entry.
class TQXItem final : public TQXTreeItem {
public:
    TQXItem(qint32 fileID, qint32 systemID, qint32 computerID, qint32 applicationID,
            qint32 packageID, qint32 objectID, qint32 entryID, qint32 rowID, qint32 wordID);

    // Named factories, so that no caller passes nine ids by position.
    static std::unique_ptr<TQXItem> ForSystem(qint32 systemID);
    static std::unique_ptr<TQXItem> ForComputer(qint32 computerID);
    static std::unique_ptr<TQXItem> ForApplication(qint32 applicationID);
    static std::unique_ptr<TQXItem> ForPackage(qint32 fileID, qint32 packageID);
    static std::unique_ptr<TQXItem> ForObject(qint32 fileID, qint32 objectID);
    static std::unique_ptr<TQXItem> ForEntry(qint32 fileID, qint32 objectID, qint32 entryID);
    static std::unique_ptr<TQXItem> ForRow(qint32 fileID, qint32 objectID, qint32 entryID,
                                           qint32 rowID);
    static std::unique_ptr<TQXItem> ForWord(qint32 fileID, qint32 objectID, qint32 entryID,
                                            qint32 rowID, qint32 wordID);
    // An item with every id 0: something listed that is not in the repository.
    static std::unique_ptr<TQXItem> ForNothing();

    QString ClassName() const override { return QStringLiteral("TQXItem"); }
    QString GetItemID() const override;

    const qint32 FileID;
    const qint32 SystemID;
    const qint32 ComputerID;
    const qint32 ApplicationID;
    const qint32 PackageID;
    const qint32 ObjectID;
    const qint32 RowID;
    const qint32 EntryID;
    const qint32 WordID;
};

// A variable reached through a data flow: two texts and nine integers. The
// constructor again takes entry before row.
class TQXDataItem final : public TQXTreeItem {
public:
    TQXDataItem(const QString& dataText1, const QString& dataText2, qint32 ownerFileID,
                qint32 ownerObjectID, qint32 ownerEntryID, qint32 fileID, qint32 objectID,
                qint32 entryID, qint32 rowID, qint32 wordID, qint32 languageID);

    QString ClassName() const override { return QStringLiteral("TQXDataItem"); }
    QString GetItemID() const override;

    const QString DataText1;
    const QString DataText2;
    const qint32 OwnerFileID;
    const qint32 OwnerObjectID;
    const qint32 OwnerEntryID;
    const qint32 FileID;
    const qint32 ObjectID;
    const qint32 RowID;
    const qint32 EntryID;
    const qint32 WordID;
    const qint32 LanguageID;
};
