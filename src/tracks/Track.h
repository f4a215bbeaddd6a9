#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// A named path through the tree: the keys of its nodes (absolute index, ":"
// and item id) in the order they were selected.
struct TTrack {
    QString Name;
    QStringList Keys;
};

using TTracks = std::vector<TTrack>;
