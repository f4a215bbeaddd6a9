#pragma once

#include "repository/DataFlow.h"
#include "view/ExpansionContext.h"

class TQXDataItem;
class TQXTreeNode;

// The Dependencies view's expansion of a variable at the Data level. A root
// variable opens into the scopes it is used in: the objects that call the
// object declaring it ("As used in " + name) and the declaring object
// itself, each kept only when the variable takes part in a flow there. A
// deeper variable opens into the variables its value flows to (TopDown) or
// comes from (BottomUp), each followed by the lines where the flow happens.
class TQXDataFlowExpander {
public:
    explicit TQXDataFlowExpander(TQXExpansionContext& context);

    // `node` has had its placeholder taken. A node without a data item (a
    // line of code) has nothing to show. Errors of the data access and of the
    // data flow lookup are not caught.
    void Expand(TQXTreeNode* node);

private:
    void AddScopes(TQXTreeNode* node, const TQXDataItem& variable);
    void AddFlows(TQXTreeNode* node);
    void AddLines(TQXTreeNode* node, const TDataFlows& flows, qint32 group);
    void Finish(TQXTreeNode* node, int firstNew);

    TQXExpansionContext& FContext;
    const bool FTopDown;
};
