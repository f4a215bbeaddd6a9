#pragma once

class TQXTreeNode;

// Marks a node that repeats an item of its own path: when an ancestor's item
// has the same system, computer, application, file, object, entry, row and
// word, " !!! Recursive Track from here !!!" is appended to the node's text
// (once per matching ancestor). True when any ancestor matched.
bool CheckRecursion(TQXTreeNode* node);
