#include "view/Recursion.h"

#include "platform/TreeNode.h"
#include "repository/TreeItems.h"

namespace {
bool SameItem(const TQXItem& a, const TQXItem& b) {
    return a.SystemID == b.SystemID && a.ComputerID == b.ComputerID &&
           a.ApplicationID == b.ApplicationID && a.FileID == b.FileID && a.ObjectID == b.ObjectID &&
           a.EntryID == b.EntryID && a.RowID == b.RowID && a.WordID == b.WordID;
}
} // namespace

bool CheckRecursion(TQXTreeNode* node) {
    const auto* item = node != nullptr ? node->ItemAs<TQXItem>() : nullptr;
    if (item == nullptr)
        return false;
    bool recursive = false;
    for (TQXTreeNode* ancestor = node->ParentNode(); ancestor != nullptr;
         ancestor = ancestor->ParentNode()) {
        const auto* other = ancestor->ItemAs<TQXItem>();
        if (other != nullptr && SameItem(*item, *other)) {
            node->SetText(node->Text() + QStringLiteral(" !!! Recursive Track from here !!!"));
            recursive = true;
        }
    }
    return recursive;
}
