#pragma once

#include "repository/ViewSettings.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class TQXView;
class TQXBaseFunctions;
class TQXScriptedUIServices;
class TQXTreeControl;
class TQXTreeNode;

// Drives a TQXView without a user, for scripts, reports and benchmarks: the
// very view the host shows, never shown itself. Settings go through the
// controls (so their rules apply), questions are answered from the scripted
// UI services (No unless AnswerYes), and nodes open through the tree's own
// expansion notice, as a click would open them.
class TQXViewDriver {
public:
    // Opens the repository (SQLite file path or PostgreSQL connection
    // string) in a new view. Throws EQXError when it cannot be opened. An
    // empty text gives a view without a repository, for view documents.
    explicit TQXViewDriver(const QString& repository);
    ~TQXViewDriver();

    TQXViewDriver(const TQXViewDriver&) = delete;
    TQXViewDriver& operator=(const TQXViewDriver&) = delete;

    // Answer to every question the view asks (the root-item limit question).
    // Answers queued on Ui() come first; a question without one gets this
    // answer and is still listed in Ui().Unanswered().
    void AnswerYes(bool yes);

    // Sets the view's controls as a user would: view type, direction, level,
    // limit (checked as when leaving the box), then the option box. The
    // filter setting is left as it is.
    void Apply(const TQXViewSettings& settings);
    // Connects the view as the host's first refresh notice does, without
    // listing anything: the view's filter dialog exists from then on. Throws
    // EQXError with the view's message when it cannot connect.
    void Connect();
    // Connects on first use, then rebuilds the tree from the root items.
    // Throws EQXError with the view's message when the refresh failed.
    void Refresh();

    // Shows the data flow of a variable as "Show Data Flow" does: the view
    // becomes the Dependencies view at the Data level, TopDown, with the
    // variable as its only root node. Answers why not when the object or
    // the variable is not found; throws EQXError when the view cannot connect.
    QString ShowVariable(const QString& objectName, const QString& variableName);

    // Opens a node (its placeholder is replaced by its children).
    void Expand(TQXTreeNode* node);
    // Opens every node down to `depth` (0: root items only), breadth first;
    // stops after `maxNodes` nodes exist (placeholders not counted) and then
    // answers false.
    bool ExpandToDepth(int depth, int maxNodes = 200000);
    // Opens the nodes whose texts match the path, one text per depth;
    // false when a text is not found.
    bool ExpandPath(const QStringList& texts);

    // The nodes along a path, one text per depth, the first match at each;
    // every node but the last is opened. Empty when a text has no node.
    QList<TQXTreeNode*> NodesOnPath(const QStringList& texts);
    // Opens a view document and returns what the view told the user on the
    // way (a changed connection). Throws EQXError when it cannot be read.
    QStringList OpenDocument(const QString& path);
    void SaveDocument(const QString& path);

    TQXView& View();
    TQXTreeControl& Tree();
    TQXBaseFunctions& BaseFunctions();
    TQXScriptedUIServices& Ui();
    // Statements sent to the repository so far (0 when unknown).
    qint64 RoundTrips() const;
    // What the repository had to say about itself on connecting (the
    // indexes it lacks); empty when nothing. The view does not show it again.
    const QString& RepositoryNotice() const;

private:
    struct Parts;
    std::unique_ptr<Parts> FParts;
};
