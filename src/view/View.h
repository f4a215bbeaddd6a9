#pragma once

#include "host/FormInterface.h"
#include "host/MainMenu.h"
#include "repository/DataFlow.h"
#include "repository/Dependency.h"
#include "repository/TableHandleSet.h"
#include "repository/ViewSettings.h"
#include "tracks/Track.h"
#include "view/CallLookup.h"
#include "view/DataFlowLookup.h"
#include "view/DistributionNodes.h"
#include "view/ExpansionContext.h"
#include "view/RootVariable.h"
#include "view/ViewOperations.h"
#include "viewdoc/ViewDocument.h"

#include <optional>

class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class TQXFilter;
class TQXTreeNode;
class TQXTreeControl;
class TQXItem;
class TQXItems;
class TQXRecordReader;

// The repository tree window. The settings (view type, track direction,
// view-by level, root-item filter, root-item limit, option box) are the
// state of its controls; the menus, radio buttons and combo box are kept in
// step, the hint line says how to read the tree, and the tree is rebuilt on
// request from the root items of the chosen level.
//
// The member functions live in the View*.cpp files of their concerns, and
// hand the work to the classes beside them, which know nothing of TQXView:
// ViewForm.cpp (controls and menus), ViewWindow.cpp (construction,
// connection, refresh, expansion), ViewSettings.cpp (settings, menus, hint,
// limit), ViewCommands.cpp (the host's file and edit commands),
// ViewRootItems.cpp (TQXRootItemLister), ViewDistribution.cpp
// (TQXDistributionExpander), ViewDependencies.cpp (TQXDependenciesExpander),
// ViewCallLookup.cpp (TQXCallLookup), ViewFilter.cpp (the root-item filter),
// ViewTracks.cpp (TQXTrackSelection), ViewDocument.cpp (view documents) and
// ViewRegistration.cpp.
class TQXView : public TQXFormInterface, public TQXViewOperations {
    Q_OBJECT

public:
    TQXView(QWidget* owner, int windowNumber, TQXBaseFunctionsInterface* baseFunctions,
            const QString& documentName, const QString& connectionName, const QString& commandText);
    ~TQXView() override;

    // The base form's file and edit commands, in slot order.
    void Open1Click(QObject* sender) override;
    void Save1Click(QObject* sender) override;
    void SaveAs1Click(QObject* sender) override;
    void Print1Click(QObject* sender) override;
    void Edit1Click(QObject* sender) override;
    void Copy1Click(QObject* sender) override;
    void SelectAll1Click(QObject* sender) override;
    void ClearSelection1Click(QObject* sender) override;
    void Find1Click(QObject* sender) override;
    void FindDialog1Find(QObject* sender) override;

    void ConnectToDB() override;
    void RefreshContent(TQXDataAccessInterface* dataAccess, QObject* sender,
                        const QString& text) override;
    void SetFont(const QString& name, int size) override;

    QString ClassName() const override { return QStringLiteral("TQXView"); }
    const TQXMainMenu& FormMenu() const override { return mnuView; }

    // Event handlers.
    void MenuChoice(QAction* item);
    void ViewTypeChanged(QObject* sender);
    void SyncMenuItems();
    void SetUserHint();
    void RefreshCurrentView();
    // True when the last refresh the host started failed; the host drops
    // such failures, a driver refreshes again to learn why.
    bool HostRefreshFailed() const { return FHostRefreshFailed; }
    void NodeExpanded(TQXTreeNode* node);
    void tbLimitChange();
    void cbRefreshViewClick();

    // The root-item filter (ViewFilter.cpp): the filter dialog of the
    // connection (null before the first), its commands, and a filter the
    // host hands in for one item (a TQXItemSender) with the view's text.
    TQXFilter* Filter() const { return FFilter; }
    void SetFilter1Click();
    void ClearFilter1Click();
    void ActivateFilter(QObject* item, const QString& viewText);
    // Tracks (ViewTracks.cpp): the Tracks menu and the track commands of the
    // popup menu.
    void Tracks1Click();
    void AddTrack1Click(QObject* sender);
    void AddTracktoTracks1Click(QObject* sender);
    void AutoCompleteTrack1Click(QObject* sender);
    void AutoCompleteTrackfromSelection1Click(QObject* sender);
    void ShowTrack(QObject* sender);
    void AddTracktoDiagram1Click(QObject* sender);
    bool CheckValidTrackInSelection(bool levelsOnly, bool complete);
    bool DataItemExistsInTrack(const TQXTreeNode* node) override;
    // The pause between the blinks of a completed track (100 ms).
    void SetBlinkPause(int milliseconds) { FBlinkPause = milliseconds; }

    // View documents (ViewDocument.cpp). Both throw EQXError; opening names
    // the line that was wrong and leaves the view as it was.
    void SaveViewDoc(const QString& fileName);
    void OpenViewDoc(const QString& fileName);

    // The view's settings as the controls hold them, read once per refresh
    // or expansion.
    TQXViewSettings Settings() const;
    const TTracks& Tracks() const { return FTracks; }
    const TQXTableHandleSet& Tables() const { return FTables; }
    // Set-based reads (the default) or the reference path; takes effect
    // with the next refresh or expansion.
    void SetReadPath(TQXReadPath path) { FReadPath = path; }
    TQXReadPath ReadPath() const { return FReadPath; }

    // The form's controls, by their names on the form.
    TQXMainMenu mnuView;
    QMenu* pmnuView = nullptr;
    TQXTreeControl* tvMain = nullptr;
    const TQXImageList* imgIcons = nullptr;
    QGroupBox* gbViewType = nullptr;
    QRadioButton* rbDistribution = nullptr;
    QRadioButton* rbDependencies = nullptr;
    QGroupBox* gbTrackDirection = nullptr;
    QRadioButton* rbTopDown = nullptr;
    QRadioButton* rbBottomUp = nullptr;
    QGroupBox* gbViewBy = nullptr;
    QComboBox* cbViewBy = nullptr;
    QCheckBox* cbOption = nullptr;
    QLabel* lblOption = nullptr;
    QGroupBox* gbRootItemFilter = nullptr;
    QRadioButton* rbFilterOff = nullptr;
    QRadioButton* rbFilterOn = nullptr;
    QPushButton* cbSetFilter = nullptr;
    QGroupBox* gbRootItemLimit = nullptr;
    QLineEdit* tbRootItemLimit = nullptr;
    QPushButton* cbRefreshView = nullptr;
    QLabel* lblUserHint = nullptr;

protected:
    // Conditions in the filter dialog's where clause; none before the
    // filter dialog is built by the connection.
    virtual int FilterConditionCount() const;

    // Root items of the chosen level.
    void ShowRootItems(const TQXViewSettings& settings);
    // The expansions of one node, by view type.
    void ShowDistribution(TQXTreeNode* node, const TQXViewSettings& settings);
    void ShowDependencies(TQXTreeNode* node, const TQXViewSettings& settings);

public:
    // Fills FDependencies with the calls that leave (TopDown) or reach
    // (BottomUp) the item; true when any was kept.
    bool GetDependencies(const TQXItem& item, TQXDirection direction, bool stopAtFirst) override;
    const TDependencies& Dependencies() const override { return FDependencies; }
    bool HasDependencies(const TQXItem& item, TQXDirection direction) override;
    void PrepareHasDependencies(const std::vector<const TQXItem*>& items,
                                TQXDirection direction) override;
    TQXRootFilter FilterRootItems() override;
    // Fills FDataFlows with the flows of a variable: where its value goes
    // (direction 0) or comes from (any other); true when it takes part in
    // any. With checkOnly it answers at the first flow and keeps no list.
    bool GetDataFlow(const TQXDataItem& item, int direction, bool checkOnly);
    bool GetDataFlow(const TQXDataItem& item, TQXDirection direction, bool checkOnly) override {
        return GetDataFlow(item, static_cast<int>(direction), checkOnly);
    }
    const TDataFlows& DataFlows() const override { return FDataFlows; }
    std::optional<int> LanguageScope(qint32 languageID) override;

    // ViewDataFlow.cpp: "Show Data Flow" opens the selected variable in a new
    // view of its own (the host's "View" window), and a view takes the
    // variables handed to it with that command as its root nodes: the
    // Dependencies view at the Data level, TopDown.
    void ShowDataFlow1Click(QObject* sender);
    void ReceiveItems(const TQXItems& items, const QString& command, QString& errorText) override;
    // Throws EQXError when no item is a variable.
    void ShowVariables(const TQXItems& items);
    // Shows the variable as the object knows it; answers why not when the
    // object or the variable is not found.
    QString ShowVariableNamed(const QString& objectName, const QString& variableName);
    // The root variables of the tree, and the tree made of them alone: a
    // change of direction or a refresh at the Data level keeps them.
    std::vector<TQXRootVariable> RootVariables() const;
    void AddRootVariables(const std::vector<TQXRootVariable>& roots);

protected:
    // Narrows the selections of QXFILE, QXPACKAGE, QXOBJECT and QXENTRY to
    // what the root-item filter lets through and sets the condition texts;
    // true when a package condition is in force.
    bool SetFilter();
    // Consulted after every root node listed; true stops the listing.
    bool HintAboutFilter(int count) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

public:
    // ViewFormShow.cpp: "Show in" / "FormViewer" opens the screen map of the
    // first selected node in a modeless TQXFormShow window, which it
    // answers; offered for one selected node with image 16 or 17.
    QWidget* FormViewer1Click();
    void AddFormViewerCommand();
    void EnableFormViewer();

private:
    // ViewForm.cpp
    void CreateControls();
    void CreateMenus();
    void CreatePopupMenu();
    void ConnectControls();
    // ViewFilter.cpp: the old dialog goes; a new one is built when asked.
    void ReplaceFilterDialog(bool build);
    void ConnectFilterCommands();
    QAction* AddMenuItem(QMenu* menu, const QString& name, const QString& caption, int groupIndex);

    // A marker node; a tree showing one has no popup menu.
    void AddMarker(const QString& text);
    // The option box for the settings: shown with its caption where they
    // have one, hidden elsewhere; `check` is applied when set.
    void ApplyOptionRule(bool fromMenu, std::optional<bool> check);
    void DropTracks();
    // The repository, tree and settings an expansion works with.
    TQXExpansionContext ExpansionContext(TQXRecordReader& records, const TQXViewSettings& settings);

    // ViewTracks.cpp
    void ConnectTrackCommands();
    void EnableTrackCommands();
    void AddTrackMenuItem(int index);
    // ViewDocument.cpp
    TQXViewDocument MakeDocument() const;
    void BuildTree(const TQXViewDocument& document);
    // The root-item filter's rows and case-sensitive box, to and from a document.
    void FilterToDocument(TQXViewDocument& document) const;
    void FilterFromDocument(const QList<TQXDocumentFilterRow>& rows, bool caseSensitive);
    // While a document builds the tree, expansions leave the nodes alone.
    bool FLoadingDocument = false;
    int FBlinkPause = 100;

    TQXFilter* FFilter = nullptr; // owned by the view through its parent
    TQXTableHandleSet FTables;
    TTracks FTracks;
    TDependencies FDependencies;
    // What call lookups read, kept for one refresh.
    TQXCallLookup::Cache FCallCache;
    TQXUpperFileNames FFileNames;
    TQXReadPath FReadPath = TQXReadPath::SetBased;
    TDataFlows FDataFlows;
    // The language definition last looked up; owned by the host.
    QPointer<TQXLanguageDefinition> FLanguageDefinition;
    // Condition texts of the root-item filter, set by SetFilter.
    QString FObjectFilter;
    QString FEntryFilter;
    QString FRowFilter;
    QString FWordFilter;
    // Limits of "Expand All within Object/Package"; 0 when unset.
    TQXExpandLimits FExpandLimits;
    bool FCheckingLimit = false;
    bool FHostRefreshFailed = false;

public:
    // ViewTools.cpp: item properties and deletion, dependent rows, and the
    // commands on the tree and its selection (the edit and print commands
    // above among them), with their popup entries.
    void Properties2Click(QObject* sender);
    void DeletethisItem1Click(QObject* sender);
    void ShowDependentRows1Click(QObject* sender);
    // The sender's name chooses the limits: "ExpandAllwithinObject1",
    // "ExpandAllwithinPackage1", or none.
    void ExpandAll1Click(QObject* sender);
    void ChangeSelectedItems1Click(QObject* sender);
    void CountSelectedItems1Click(QObject* sender);
    // A press on the tree: a plain left click selects the node under the
    // pointer alone (none on empty space).
    void OnMouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, const QPoint& point);

private:
    void CreateToolCommands();
    void EnableToolCommands();
    // Where the next search starts (none: at the top), and the find
    // dialog's last request.
    TQXTreeNode* FFindNode = nullptr;
    QString FFindText;
    bool FFindMatchCase = false;
    bool FFindDown = true;
};
