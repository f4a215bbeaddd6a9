#include "view/Recursion.h"

#include "platform/TreeNode.h"
#include "repository/TreeItems.h"

namespace {
std::array<int, 8> KeyOf(const TQXItem& item) {
    return {item.SystemID, item.ComputerID, item.ApplicationID, item.FileID,
            item.ObjectID, item.EntryID,    item.RowID,         item.WordID};
}
} // namespace

TQXPathItems::TQXPathItems(const TQXTreeNode* parent) {
    for (const TQXTreeNode* ancestor = parent; ancestor != nullptr;
         ancestor = ancestor->ParentNode())
        if (const auto* item = ancestor->ItemAs<TQXItem>())
            ++FCounts[KeyOf(*item)];
}

bool TQXPathItems::CheckRecursion(TQXTreeNode* child) const {
    const auto* item = child != nullptr ? child->ItemAs<TQXItem>() : nullptr;
    if (item == nullptr)
        return false;
    const auto found = FCounts.find(KeyOf(*item));
    if (found == FCounts.end())
        return false;
    QString text = child->Text();
    for (int i = 0; i < found->second; ++i)
        text += QStringLiteral(" !!! Recursive Track from here !!!");
    child->SetText(text);
    return true;
}
