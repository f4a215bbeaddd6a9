#pragma once

#include "repository/TreeItems.h"

#include <QObject>

// A repository item handed to a view with the host's refresh notice, so
// that the view shows what lies around that item only.
class TQXItemSender final : public QObject {
    Q_OBJECT

public:
    explicit TQXItemSender(const TQXItem& item, QObject* parent = nullptr)
        : QObject(parent), FItem(item) {}

    const TQXItem& Item() const { return FItem; }

private:
    TQXItem FItem;
};
