#pragma once

#include "filter/RootFilter.h"
#include "repository/DataFlow.h"
#include "repository/Dependency.h"
#include "repository/ViewSettings.h"

#include <optional>
#include <vector>

class TQXDataItem;
class TQXItem;
class TQXTreeNode;

// What the classes that list and expand the tree ask of their view. TQXView
// implements it; tests stand in a fake.
class TQXViewOperations {
public:
    virtual ~TQXViewOperations() = default;

    // The call lookup: fills Dependencies() with the calls that leave
    // (TopDown) or reach the item; true when any was kept.
    virtual bool GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst) = 0;
    virtual const TDependencies& Dependencies() const = 0;
    // Whether the item has any call to show, as GetDependencies with
    // stopAtFirst answers it; Dependencies() is left undefined.
    virtual bool HasDependencies(const TQXItem& item, TQXDirection direction) {
        return GetDependencies(item, direction, true);
    }
    // Announces the items HasDependencies is about to be asked for, so that
    // their answers can be read together.
    virtual void PrepareHasDependencies(const std::vector<const TQXItem*>& items,
                                        TQXDirection direction) {
        Q_UNUSED(items);
        Q_UNUSED(direction);
    }

    // The data flow lookup: fills DataFlows() with the flows of the variable
    // where its value goes (TopDown) or comes from; true when it takes part
    // in any. With checkOnly it answers at the first flow and keeps no list.
    virtual bool GetDataFlow(const TQXDataItem& item, TQXDirection direction, bool checkOnly) = 0;
    virtual const TDataFlows& DataFlows() const = 0;
    // How far the language's variables are known (the scope of its host
    // definition); none, with the user told, when the host has no definition.
    virtual std::optional<int> LanguageScope(qint32 languageID) = 0;
    // Whether the node's variable already hangs on its path; throws for a
    // node that carries no variable.
    virtual bool DataItemExistsInTrack(const TQXTreeNode* node) = 0;

    // Narrows the selections to what the root-item filter lets through.
    virtual TQXRootFilter FilterRootItems() = 0;
    // Consulted after every root node listed; true stops the listing.
    virtual bool HintAboutFilter(int count) = 0;
};
