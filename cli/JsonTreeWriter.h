#pragma once

#include "TreeWriter.h"

class TQXTreeNode;

// {"nodes": [...]}: each node an object with text, image, item (its fields
// by name in constructor order, or null), expandable and children. Written
// as it goes, so that the fields keep their order and large trees are not
// held twice.
class TQXJsonTreeWriter final : public TQXTreeWriter {
public:
    void Write(const TQXTreeControl& tree, QTextStream& out) const override;

private:
    static void WriteNode(const TQXTreeNode& node, int indent, QTextStream& out);
};
