#pragma once

#include "TreeWriter.h"

class TQXTreeNode;

// One line per node, two blanks of indent per depth, then the text; for a
// node with an item a tab, the image index and the item's fields follow,
// separated by tabs. Tabs and line breaks inside texts print as blanks, so
// that every node stays one line.
class TQXTextTreeWriter final : public TQXTreeWriter {
public:
    void Write(const TQXTreeControl& tree, QTextStream& out) const override;

private:
    static void WriteNode(const TQXTreeNode& node, int depth, QTextStream& out);
};
