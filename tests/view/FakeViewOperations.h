#pragma once

#include "filter/UnfilteredSelections.h"
#include "view/CallLookup.h"
#include "view/ViewOperations.h"

// Stands in for the view around a lister or an expander: calls are looked up
// in the repository as the view would, the filter is off, and the listing
// stops at StopAt root nodes (never, by default).
class FakeViewOperations final : public TQXViewOperations {
public:
    FakeViewOperations(TQXDataAccessInterface& access, TQXTableHandleSet& tables)
        : FRecords(access, tables), FLookup(access, tables, FCache) {}

    bool Option = false; // the view's option box
    TQXLevel Level = TQXLevel::System;
    int StopAt = -1;

    bool GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst) override {
        return FLookup.GetDependencies(item, direction, stopAtFirst, Option, FList);
    }
    const TDependencies& Dependencies() const override { return FList; }
    TQXRootFilter FilterRootItems() override { return SelectUnfiltered(FRecords, Level); }
    bool HintAboutFilter(int count) override { return count == StopAt; }

private:
    TQXRecordReader FRecords;
    TQXCallLookup::Cache FCache;
    TQXCallLookup FLookup;
    TDependencies FList;
};

inline TQXViewSettings SettingsFor(TQXLevel level, TQXDirection direction = TQXDirection::TopDown,
                                   TQXViewType type = TQXViewType::Distribution) {
    TQXViewSettings settings;
    settings.Type = type;
    settings.Direction = direction;
    settings.Level = level;
    return settings;
}
