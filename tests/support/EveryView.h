#pragma once

// Every view of a repository and how to compare the trees they show.
#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "repository/ViewSettings.h"
#include "support/TreeTexts.h"

#include <QStringList>

#include <memory>

// Both types and directions on every level, and the option box checked
// where it is shown: 34 views.
inline QList<TQXViewSettings> EveryView() {
    QList<TQXViewSettings> views;
    for (TQXViewType type : {TQXViewType::Distribution, TQXViewType::Dependencies})
        for (TQXDirection direction : {TQXDirection::TopDown, TQXDirection::BottomUp})
            for (const QString& name : level::Names()) {
                TQXViewSettings settings;
                settings.Type = type;
                settings.Direction = direction;
                settings.Level = *level::FromName(name);
                views << settings;
                if (settings.OptionCaption(false)) {
                    settings.Option = true;
                    views << settings;
                }
            }
    return views;
}

inline QString Describe(const TQXViewSettings& settings) {
    return settings.UserHint() + (settings.Option ? " (option)" : "");
}

// Every node in tree order with its depth, text, image, item and whether it
// still waits to be opened.
inline QStringList Dump(TQXTreeControl& tree) {
    QStringList lines;
    for (TQXTreeNode* node = tree.FirstNode(); node; node = TQXTreeControl::NextNode(node))
        lines << QString::number(node->Level()) + '|' + node->Text() + '|' +
                     QString::number(node->ImageIndex()) + '|' + ItemId(node) +
                     (TQXTreeControl::HasPlaceholder(node) ? "|+" : "|");
    return lines;
}

// A view of the repository with every node opened.
inline std::unique_ptr<TQXViewDriver> FullyOpened(const QString& repository,
                                                  const TQXViewSettings& settings) {
    auto driver = std::make_unique<TQXViewDriver>(repository);
    driver->Apply(settings);
    driver->Refresh();
    if (!driver->ExpandToDepth(1000, 20000))
        throw EQXError(Describe(settings) + QStringLiteral(": more than 20000 nodes"));
    return driver;
}
