#pragma once

#include <QString>

#include <memory>

struct TQXExpansionContext;
class TQXItem;
class TQXRecordReader;
class TQXTreeControl;
class TQXTreeNode;

// The Distribution view's expansion of one node: what it contains (TopDown)
// or what it is part of (BottomUp). An Object node opened TopDown shows its
// contents (TQXObjectContents).
//
// The node's placeholder is replaced by its children, each of which gets a
// placeholder of its own when it has something to show. A node whose first
// child is a real one was expanded before and is left as it is.
class TQXDistributionExpander {
public:
    explicit TQXDistributionExpander(TQXExpansionContext& context);

    void Expand(TQXTreeNode* node);

private:
    enum class Kind {
        None,
        VariableRoot,
        CodeRoot,
        Entry,
        Object,
        Package,
        Application,
        Computer,
        System
    };
    // Whether the expansion goes on to placeholders and sorting, or ended at
    // once (a hidden part without its visible object).
    enum class Outcome { GoOn, EndNow };

    Kind KindOf(const TQXTreeNode* node, const TQXItem* item) const;
    Outcome AddChildren(Kind kind, const TQXItem& item);

    // BottomUp steps.
    Outcome VariableRootParent(const TQXItem& item);
    Outcome CodeRootParent(const TQXItem& item);
    Outcome ParentObject(const QString& objectWhere);
    Outcome ParentObjectOfCurrent();
    void EntryAbove();
    void ObjectContainers(const TQXItem& item);
    void EnclosingObject(qint32 fileID, const QString& parentName);
    void ApplicationOrComputer(qint32 fileID);
    // The system or computer the first file of a QXFILE selection is assigned to.
    void AttributeOfFirstFile(const QString& fileWhere, int fileColumn);

    // TopDown steps.
    void EntryContents(const TQXItem& item);
    void PackageMembers(const TQXItem& item);
    void ApplicationContents(const TQXItem& item);
    void AttributesOfFiles(const QString& fileWhere, int fileColumn);

    // Adds the attribute with the id from QXATTRIBUTE, nothing when it is missing.
    void AddAttribute(qint32 id, int fileColumn, const QString& extraCondition = QString());
    TQXTreeNode* Add(const QString& text, std::unique_ptr<TQXItem> item, int image);

    void AddPlaceholders();

    TQXExpansionContext& FContext;
    TQXRecordReader& FRecords;
    TQXTreeControl& FTree;
    TQXTreeNode* FNode = nullptr;
    int FDirection = 0; // the settings' direction number
    bool FSort = true;
};
