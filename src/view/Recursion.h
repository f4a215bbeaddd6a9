#pragma once

#include <array>
#include <map>

class TQXTreeNode;

// Marks nodes that repeat an item of their own path: when an ancestor's item
// has the same system, computer, application, file, object, entry, row and
// word, " !!! Recursive Track from here !!!" is appended to the node's text
// (once per matching ancestor).
//
// The items of one parent's path are gathered once, so that checking all the
// children of a node deep in a call chain costs the depth once, not once per
// child.
class TQXPathItems {
public:
    // The items of `parent` and of all its ancestors.
    explicit TQXPathItems(const TQXTreeNode* parent);

    // Marks `child` (a child of that parent); true when any ancestor matched.
    bool CheckRecursion(TQXTreeNode* child) const;

private:
    using Key = std::array<int, 8>;
    std::map<Key, int> FCounts; // ancestors per item
};
