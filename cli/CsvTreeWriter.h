#pragma once

#include "TreeWriter.h"

class TQXTreeNode;

// RFC 4180: a header, then one row per node in tree order with its depth,
// text, image index, whether it can still be opened, and its item's fields
// in their named columns (empty where the item has no such field).
class TQXCsvTreeWriter final : public TQXTreeWriter {
public:
    void Write(const TQXTreeControl& tree, QTextStream& out) const override;

private:
    static void WriteNode(const TQXTreeNode& node, int depth, QTextStream& out);
};
