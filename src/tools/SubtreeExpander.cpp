#include "tools/SubtreeExpander.h"

#include "platform/TreeControl.h"
#include "platform/UIServices.h"

#include <vector>

TQXSubtreeExpander::Result TQXSubtreeExpander::Expand(TQXTreeNode* node, TQXProgress& progress) {
    Result result;
    std::vector<TQXTreeNode*> pending{node};
    while (!pending.empty()) {
        TQXTreeNode* next = pending.back();
        pending.pop_back();
        const bool waiting = TQXTreeControl::HasPlaceholder(next);
        if (!waiting && next->ChildCount() == 0)
            continue; // a leaf
        if (waiting && next->Expanded())
            next->SetExpanded(false); // left open by an expansion that failed
        if (!next->Expanded())
            next->SetExpanded(true); // the tree's expansion notice runs the view's expansion
        if (!next->Expanded())
            continue; // refused by the expansion limits
        if (waiting && !TQXTreeControl::HasPlaceholder(next)) {
            ++result.Opened;
            if (!progress.Step(result.Opened,
                               QString::number(result.Opened) + QStringLiteral(" nodes opened"))) {
                result.Cancelled = true;
                return result;
            }
        }
        // Children in tree order: the last pushed is opened first.
        for (int i = next->ChildCount() - 1; i >= 0; --i)
            pending.push_back(next->Child(i));
    }
    return result;
}
