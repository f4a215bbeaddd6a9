#pragma once

#include "host/MainMenu.h"

#include <QList>
#include <QMainWindow>
#include <QPointer>

class QMdiArea;
class QMdiSubWindow;
class QMenu;
class TQXBaseFunctions;
class TQXDiagramWindow;
class TQXFormInterface;

// Korvane's main window: the views as tabs, and a menu bar made of the
// host's menus (File, Tools, Window, Help) and the active view's menus
// (its File and Edit commands, View, Filter, Tracks), placed by group index.
// Menus of the same group are shown as one: the host's items around the
// view's.
class TQXMainWindow : public QMainWindow {
    Q_OBJECT

public:
    TQXMainWindow(TQXBaseFunctions& baseFunctions, const QString& settingsFile);
    ~TQXMainWindow() override;

    // Creates a view by its registered class name on a connection (empty:
    // the view asks for one), shows it and sends it the refresh notice.
    // Failures are shown to the user; null when the view could not be made.
    TQXFormInterface* OpenView(const QString& connectionName);
    TQXFormInterface* ActiveForm() const;
    QList<TQXFormInterface*> Forms() const;

private:
    void CreateHostMenus();
    void RebuildMenuBar();
    QMenu* Compose(QMenu* host, QMenu* form);
    void OpenRepository();
    void ChooseSourceDatabase();
    void SaveSettings() const;
    void ShowActiveView();

    TQXBaseFunctions& FBaseFunctions;
    QString FSettingsFile;
    QMdiArea* FMdiArea;
    TQXMainMenu FHostMenu;
    // The host window "Diagram": draws the tracks the views hand to it.
    TQXDiagramWindow* FDiagram; // owned as a child window
    QList<QPointer<QMenu>> FComposedMenus;
    int FViewCount = 0;
};
