#pragma once

#include "repository/RecordReader.h"
#include "repository/TreeItems.h"

#include <memory>
#include <optional>

class TQXTreeNode;

// A variable as a root node of the Data view shows it: its data item, the
// text " NAME as TYPE [DECLARING OBJECT]" and the variable picture (green
// for persistent storage).
struct TQXRootVariable {
    std::shared_ptr<const TQXDataItem> Item;
    QString Text;
    int Image = 0;
};

// The text of a variable node: " NAME as TYPE [PARENT]".
QString VariableText(const QString& name, const QString& type, const QString& parent);

// Finds the variable a node or a name stands for, reading the declaration
// from the repository.
class TQXRootVariableFinder {
public:
    explicit TQXRootVariableFinder(TQXRecordReader& records);

    // The variable of a node: its data item (its scope kept), or the
    // declaration word of a node listing an object's contents. None for any
    // other node. A variable found by its declaration is looked up in the
    // object declaring it, whose callers are the other scopes it is used in.
    std::optional<TQXRootVariable> OfNode(const TQXTreeNode& node);
    // The variable `variableName` as the object `objectName` knows it:
    // declared in the object, else in a part or member the object includes.
    // None, with `missing` naming what was not found, otherwise.
    std::optional<TQXRootVariable> Named(const QString& objectName, const QString& variableName,
                                         QString& missing);

private:
    // The variable of the current QXWORD record, a declaration.
    TQXRootVariable FromCurrentWord();
    bool SelectDeclaration(qint32 fileID, qint32 objectID, const QString& name);
    // Selects the word at this position.
    bool SelectWord(qint32 fileID, qint32 objectID, qint32 entryID, qint32 rowID, qint32 wordID);

    TQXRecordReader& FRecords;
};
