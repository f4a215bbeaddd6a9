#pragma once

#include "repository/ViewSettings.h"

#include <QSqlDatabase>
#include <QStringList>

#include <optional>

// The floor of a refresh: the one statement that returns the root nodes a
// refresh shows (their ids and the texts they are built from), as a
// hand-written join would. The benchmark times it beside the view and checks
// that it returns the same items. Placeholder tests (does a root node have
// children?) are not part of it, so for the Dependencies view the ratio is
// an upper bound.
class ViewFloor {
public:
    // The floor of a refresh at this level and limit; none where the view's
    // roots are not a plain selection.
    static std::optional<ViewFloor> For(const TQXViewSettings& settings, int limit, bool postgres);

    // Runs the statement; the item ids (TQXItem::GetItemID) of its rows.
    QStringList Run(QSqlDatabase& db) const;

private:
    enum class Kind { System, Computer, Application, Package, Object, Entry, Row, Word };
    ViewFloor(Kind kind, QString sql) : FKind(kind), FSql(std::move(sql)) {}

    Kind FKind;
    QString FSql;
};
