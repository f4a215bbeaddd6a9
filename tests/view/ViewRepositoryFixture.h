#pragma once

// A throw-away repository read the way a view reads it, with a stand-in for
// the view around a lister or an expander. A test fills FRepo with its
// estate, then calls OpenRepository() once before anything reads it.
#include "filter/UnfilteredSelections.h"
#include "platform/TreeControl.h"
#include "repository/RecordReader.h"
#include "repository/TableHandleSet.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"
#include "support/TreeTexts.h"
#include "view/CallLookup.h"
#include "view/DependenciesExpander.h"
#include "view/DistributionExpander.h"
#include "view/ViewOperations.h"

#include <memory>

// Stands in for the view: calls are looked up in the repository as the view
// would, the filter is off, and the listing stops at StopAt root nodes
// (never, by default).
class FakeViewOperations final : public TQXViewOperations {
public:
    FakeViewOperations(TQXDataAccessInterface& access, TQXTableHandleSet& tables)
        : FRecords(access, tables), FLookup(access, tables, FCache) {}

    bool Option = false; // the view's option box
    TQXLevel Level = TQXLevel::System;
    int StopAt = -1;
    TQXRootFilter Conditions; // the filter's conditions, none by default

    bool GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst) override {
        return FLookup.GetDependencies(item, direction, stopAtFirst, Option, FList);
    }
    const TDependencies& Dependencies() const override { return FList; }
    TQXRootFilter FilterRootItems() override {
        SelectUnfiltered(FRecords, Level);
        return Conditions;
    }
    bool HintAboutFilter(int count) override { return count == StopAt; }
    // No data flows: the fake serves the call views.
    bool GetDataFlow(const TQXDataItem&, TQXDirection, bool) override { return false; }
    const TDataFlows& DataFlows() const override { return FFlows; }
    std::optional<int> LanguageScope(qint32) override { return std::nullopt; }
    bool DataItemExistsInTrack(const TQXTreeNode*) override { return false; }

private:
    TQXRecordReader FRecords;
    TQXCallLookup::Cache FCache;
    TQXCallLookup FLookup;
    TDependencies FList;
    TDataFlows FFlows;
};

inline TQXViewSettings SettingsFor(TQXLevel level, bool topDown = true,
                                   TQXViewType type = TQXViewType::Distribution) {
    TQXViewSettings settings;
    settings.Type = type;
    settings.Direction = topDown ? TQXDirection::TopDown : TQXDirection::BottomUp;
    settings.Level = level;
    return settings;
}

class ViewRepositoryFixture {
protected:
    void OpenRepository() {
        FAccess = std::make_unique<SqlDataAccess>(FRepo.Location());
        AssignDBPointers(*FAccess, FTables);
        FRecords = std::make_unique<TQXRecordReader>(*FAccess, FTables);
        FTree = std::make_unique<TQXTreeControl>();
    }

    // A node as the root-item listing leaves it: an item and a placeholder.
    TQXTreeNode* AddClosed(std::unique_ptr<TQXItem> item, int image, TQXTreeNode* parent = nullptr,
                           const QString& text = "node") {
        TQXTreeNode* node = FTree->AddChild(parent, text, std::move(item), image);
        FTree->AddPlaceholder(node);
        return node;
    }

    // Opens the node as a view with those settings would.
    TQXTreeNode* Opened(TQXTreeNode* node, const TQXViewSettings& settings,
                        const TQXExpandLimits& limits = {}) {
        FakeViewOperations view(*FAccess, FTables);
        view.Option = settings.Option;
        TQXExpansionContext context{*FRecords, *FTree, view, settings, limits};
        if (settings.IsDependencies())
            TQXDependenciesExpander(context).Expand(node);
        else
            TQXDistributionExpander(context).Expand(node);
        return node;
    }

    TestRepository FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;
    TQXTableHandleSet FTables;
    std::unique_ptr<TQXRecordReader> FRecords;
    std::unique_ptr<TQXTreeControl> FTree;
};
