#pragma once

#include "repository/Dependency.h"
#include "view/ExpansionContext.h"

#include <QHash>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class TQXItem;
class TQXTreeNode;

namespace dependencies {

// Four blanks open the text of an inherited or uncertain call listed after
// the regular ones.
inline const QString Indent = QStringLiteral("    ");

// True when a child of `node`, scanned from the last to the first, carries an
// item that `same` accepts; with `indentedOnly` only indented children count.
bool IsListed(const TQXTreeNode* node, const std::function<bool(const TQXItem&)>& same,
              bool indentedOnly = false);

} // namespace dependencies

// The children of an Object or Entry node (and of a Code node listing
// entries) built from its calls in three passes: regular calls, calls
// possible through inheritance, and calls the parser was unsure of.
class TQXDependenciesCallChildren {
public:
    enum class Kind { Objects, Entries };

    // `levelN` is added to entry images so that the Code view's levels
    // alternate; 0 elsewhere.
    TQXDependenciesCallChildren(TQXExpansionContext& context, Kind kind, int levelN);

    void Add(TQXTreeNode* node, const TDependencies& calls);

private:
    // An object as read from QXOBJECT: Name carries " in " and the file's
    // name for objects shown in their file, PlainName is QXObjectName.
    struct Object {
        QString Name;
        QString PlainName;
        QString Type;
        QString SubObjectParentName;
        qint32 Icon = 0;
    };
    // What a call names: its object and, in the entry views, its entry; a
    // whole-object call (EntryID 0) names the object in the entry's place.
    struct Target {
        Object Obj;
        QString EntryName;
        qint32 EntryID = 0;
    };

    void Regular(TQXTreeNode* node, const TDependencies& calls);
    void InheritedTopDown(TQXTreeNode* node, const TDependencies& calls);
    void InheritedBottomUp(TQXTreeNode* node, const TDependencies& calls);
    void Uncertain(TQXTreeNode* node, const TDependencies& calls);

    std::optional<Object> LocateObject(qint32 fileID, qint32 objectID);
    // The set-based path reads the objects of all calls,
    // and the first real icon of each hidden part's name, before the passes.
    void ReadObjects(const TDependencies& calls);
    std::optional<Object> CurrentObject(qint32 fileID);
    // Selects the whole object table for locates, once per expansion.
    void SelectAllObjects();
    std::optional<Target> Resolve(const TDependency& call);
    bool IsListed(const TQXTreeNode* node, const TDependency& call, bool indentedOnly) const;
    int Image(const Target& target, const QString& hiddenPartName);
    int HiddenPartImage(const QString& name);
    std::unique_ptr<TQXItem> ItemFor(const TDependency& call, const Target& target) const;
    // Name and type, or entry and object, as the regular call shows them.
    QString Label(const Target& target) const;

    TQXExpansionContext& FContext;
    TQXRecordReader& FRecords;
    Kind FKind;
    bool FOption;   // the option box: in sequence, repeats are listed
    int FDirection; // the settings' direction number
    int FLevelN;
    // Read by ReadObjects, for one expansion: objects by file and object id
    // (none: not in QXOBJECT), and hidden parts' icons by name (-1: none).
    std::map<std::pair<qint32, qint32>, std::optional<Object>> FObjects;
    QHash<QString, int> FHiddenPartIcons;
    bool FAllObjectsSelected = false;
};
