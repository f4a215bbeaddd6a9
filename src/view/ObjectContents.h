#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class TQXItem;
class TQXRecordReader;
class TQXTreeControl;
class TQXTreeNode;
class TQXUpperFileNames;

// What an Object node shows when opened TopDown in the Distribution view:
// its sub-objects, the object-level variables of the hidden parts it uses,
// its own object-level variables, its lines outside entries (for some kinds
// of object), its entries and the entries of the hidden parts it uses. The
// same list follows for each ancestor it inherits source from, under a
// "--- Inherited source [...] ---" heading; names a descendant has shown are
// not shown again. A missing ancestor is shown as a marker line, and an
// inheritance chain that comes back to an object already listed stops there.
class TQXObjectContents {
public:
    // With `fileNames`, base names are matched against them (set-based path).
    TQXObjectContents(TQXRecordReader& records, TQXTreeControl& tree,
                      TQXUpperFileNames* fileNames = nullptr);

    // Appends the contents of the item's object to the node, in list order.
    void Show(TQXTreeNode* node, const TQXItem& item);

private:
    // The QXOBJECT record whose contents a pass lists, read at its start.
    struct PassObject {
        qint32 FileID = 0;
        qint32 ObjectID = 0;
        qint32 Icon = 0;
        QString Name;
        QString Identifier;
        QString SubObjectParentName;
        QString Inherits;
        QString InheritsParentName;
    };

    PassObject ReadPassObject();
    void ListPass(const PassObject& pass);
    void AddSubObjects(const PassObject& pass);
    // Calls `visit` with the file and object of each hidden part of the pass
    // object's name that the pass object uses (an object-level dependency).
    void ForEachUsedHiddenPart(const PassObject& pass,
                               const std::function<void(qint32 fileID, qint32 objectID)>& visit);
    void AddVariables(const QString& wordWhere, const QString& objectName);
    void AddLines(const PassObject& pass);
    void AddEntries(const QString& entryWhere, const QString& objectName);
    // Positions QXOBJECT on the pass object's ancestor; false when it is missing.
    bool LocateAncestor(const PassObject& pass);
    // Shown once the first inherited pass has begun: false for a name
    // already in the list; a shown name joins the list.
    bool ShowName(QStringList& shown, const QString& name);
    void AddText(const QString& text);

    TQXRecordReader& FRecords;
    TQXTreeControl& FTree;
    TQXUpperFileNames* FFileNames;
    TQXTreeNode* FNode = nullptr;
    int FVariableImage = 0;
    bool FInherited = false;
    QStringList FSubObjects;
    QStringList FVariables;
    QStringList FEntries;
};
