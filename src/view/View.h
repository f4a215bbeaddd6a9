#pragma once

#include "host/FormInterface.h"
#include "host/MainMenu.h"
#include "repository/TableHandleSet.h"
#include "view/Dependency.h"
#include "view/Track.h"

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
class TQXRecordReader;
struct TQXExpansionContext;

// The repository tree window. The settings (view type, track direction,
// view-by level, root-item filter, root-item limit, option box) are the
// state of its controls; the menus, radio buttons and combo box are kept in
// step, the hint line says how to read the tree, and the tree is rebuilt on
// request from the root items of the chosen level.
//
// The member functions live in the files of their concerns:
// ViewForm.cpp (controls and menus), ViewWindow.cpp (construction,
// connection, refresh, expansion), ViewSettings.cpp (settings, menus, hint,
// limit), ViewCommands.cpp (the host's file and edit commands),
// RootItems.cpp, DistributionExpansion.cpp and DependenciesExpansion.cpp.
class TQXView : public TQXFormInterface {
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
    void NodeExpanded(TQXTreeNode* node);
    void tbLimitChange();
    void cbRefreshViewClick();

    // The view's settings as the controls hold them.
    QString Level() const;
    bool IsDependencies() const;
    // 0 for TopDown, 1 for BottomUp.
    int Direction() const;
    const TTracks& Tracks() const { return FTracks; }
    const TQXTableHandleSet& Tables() const { return FTables; }

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
    // Conditions in the filter dialog's where clause; none until the filter
    // dialog is built by the connection.
    virtual int FilterConditionCount() const;

    // Root items of the chosen level: direction 0 TopDown, 1 BottomUp; kind
    // 1 Distribution, 0 Dependencies.
    void ShowRootItems(int direction, int kind);
    // The expansions of one node, by view type.
    void ShowDistribution(TQXTreeNode* node, int direction);
    void ShowDependencies(TQXTreeNode* node, int direction);

public:
    // Fills FDependencies with the calls that leave (direction 0) or reach
    // the item; true when any was kept.
    bool GetDependencies(const TQXItem& item, int direction, bool stopAtFirst);
    const TDependencies& Dependencies() const { return FDependencies; }

protected:
    // Narrows the selections of QXFILE, QXPACKAGE, QXOBJECT and QXENTRY to
    // what the root-item filter lets through and sets the condition texts;
    // true when a package condition is in force.
    bool SetFilter();
    // Consulted after every root node listed; true stops the listing.
    bool HintAboutFilter(int count);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // ViewForm.cpp
    void CreateControls();
    void CreateMenus();
    void CreatePopupMenu();
    void ConnectControls();
    QAction* AddMenuItem(QMenu* menu, const QString& name, const QString& caption, int groupIndex);

    // A marker node; a tree showing one has no popup menu.
    void AddMarker(const QString& text);
    // Option box state for the level and settings; `check` is applied when set.
    void ShowOption(const QString& caption, std::optional<bool> check);
    void HideOption();
    void DropTracks();
    // The repository, tree and settings an expansion works with.
    TQXExpansionContext ExpansionContext(TQXRecordReader& records);

    TQXFilter* FFilter = nullptr; // owned by the view through its parent
    TQXTableHandleSet FTables;
    TTracks FTracks;
    TDependencies FDependencies;
    // Condition texts of the root-item filter, set by SetFilter.
    QString FObjectFilter;
    QString FEntryFilter;
    QString FRowFilter;
    QString FWordFilter;
    // Limits of "Expand All within Object/Package"; 0 when unset.
    qint32 FExpandFileID = 0;
    qint32 FExpandPackageID = 0;
    qint32 FExpandObjectID = 0;
    bool FCheckingLimit = false;
};
