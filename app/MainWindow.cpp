#include "MainWindow.h"

#include "host/BaseFunctions.h"
#include "host/DiagramWindow.h"
#include "host/FormInterface.h"
#include "host/FormRegistry.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>

#include <algorithm>
#include <memory>

namespace {

// Where a view's own items go in a host menu of the same group.
constexpr const char* FormItemsMarker = "FormItems";

QAction* AddItem(QMenu* menu, const QString& name, const QString& caption) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

} // namespace

TQXMainWindow::TQXMainWindow(TQXBaseFunctions& baseFunctions, const QString& settingsFile)
    : FBaseFunctions(baseFunctions), FSettingsFile(settingsFile), FMdiArea(new QMdiArea(this)),
      FHostMenu(this), FDiagram(new TQXDiagramWindow(this)) {
    setObjectName(QStringLiteral("KorvaneMain"));
    // A window of its own beside the main window, offered to the views
    // before the first of them is made.
    FDiagram->setWindowFlag(Qt::Window);
    FBaseFunctions.RegisterWindow(QStringLiteral("Diagram"),
                                  [diagram = QPointer<TQXDiagramWindow>(FDiagram)](
                                      const QString& connection, const TQXItems& items,
                                      const QString& command, QString& errorText) {
                                      if (!diagram) {
                                          errorText = tr("The Diagram window is closed");
                                          return;
                                      }
                                      diagram->AddItems(connection, items, command, errorText);
                                      diagram->show();
                                      diagram->raise();
                                  });
    // Items handed to "View" open in a view of their own.
    FBaseFunctions.RegisterWindow(QStringLiteral("View"),
                                  [this](const QString& connection, const TQXItems& items,
                                         const QString& command, QString& errorText) {
                                      TQXFormInterface* form = OpenView(connection);
                                      if (!form) {
                                          errorText = tr("No view could be opened");
                                          return;
                                      }
                                      form->ReceiveItems(items, command, errorText);
                                  });
    setWindowTitle(QStringLiteral("Korvane"));
    FMdiArea->setViewMode(QMdiArea::TabbedView);
    FMdiArea->setDocumentMode(true);
    FMdiArea->setTabsClosable(true);
    FMdiArea->setTabsMovable(true);
    setCentralWidget(FMdiArea);
    CreateHostMenus();
    connect(FMdiArea, &QMdiArea::subWindowActivated, this, [this] {
        RebuildMenuBar();
        ShowActiveView();
    });
    RebuildMenuBar();
    ShowActiveView();
}

TQXMainWindow::~TQXMainWindow() {
    // Views go first, quietly, while the window is still whole.
    disconnect(FMdiArea, nullptr, this, nullptr);
    for (QMdiSubWindow* window : FMdiArea->subWindowList()) {
        disconnect(window, nullptr, this, nullptr);
        delete window;
    }
}

void TQXMainWindow::CreateHostMenus() {
    QMenu* file = FHostMenu.AddMenu(QStringLiteral("HostFile1"), tr("&File"), 0);
    QAction* newView = AddItem(file, QStringLiteral("NewView1"), tr("&New View"));
    newView->setShortcut(QKeySequence::New);
    connect(newView, &QAction::triggered, this, [this] {
        const TQXFormInterface* active = ActiveForm();
        OpenView(active ? active->ConnectionName() : QString());
    });
    QAction* open = AddItem(file, QStringLiteral("OpenRepository1"), tr("Open &Repository..."));
    open->setShortcut(QKeySequence::Open);
    connect(open, &QAction::triggered, this, &TQXMainWindow::OpenRepository);
    file->addSeparator()->setObjectName(QLatin1String(FormItemsMarker));
    QAction* close = AddItem(file, QStringLiteral("CloseView1"), tr("&Close View"));
    close->setShortcut(QKeySequence::Close);
    connect(close, &QAction::triggered, FMdiArea, &QMdiArea::closeActiveSubWindow);
    QAction* exit = AddItem(file, QStringLiteral("Exit1"), tr("E&xit"));
    exit->setShortcut(QKeySequence::Quit);
    connect(exit, &QAction::triggered, this, &QWidget::close);

    QMenu* tools = FHostMenu.AddMenu(QStringLiteral("Tools1"), tr("&Tools"), 60);
    QAction* load = AddItem(tools, QStringLiteral("Load1"), tr("&Load..."));
    connect(load, &QAction::triggered, this, [] {
        TQXUIServices::Current().ShowMessage(
            tr("Repositories are filled by the Korvane loader, a separate program.\n"
               "Load the estate with it, then open the repository here "
               "(File/Open Repository...)."));
    });
    QMenu* settings = tools->addMenu(tr("&Settings"));
    settings->menuAction()->setObjectName(QStringLiteral("Settings1"));
    connect(AddItem(settings, QStringLiteral("SourceDatabases1"), tr("&Source Databases...")),
            &QAction::triggered, this, &TQXMainWindow::ChooseSourceDatabase);

    QMenu* window = FHostMenu.AddMenu(QStringLiteral("HostWindow1"), tr("&Window"), 90);
    window->addSeparator()->setObjectName(QLatin1String(FormItemsMarker));
    QAction* next = AddItem(window, QStringLiteral("NextView1"), tr("&Next View"));
    next->setShortcut(QKeySequence::NextChild);
    connect(next, &QAction::triggered, FMdiArea, &QMdiArea::activateNextSubWindow);
    QAction* previous = AddItem(window, QStringLiteral("PreviousView1"), tr("&Previous View"));
    previous->setShortcut(QKeySequence::PreviousChild);
    connect(previous, &QAction::triggered, FMdiArea, &QMdiArea::activatePreviousSubWindow);

    QMenu* help = FHostMenu.AddMenu(QStringLiteral("Help1"), tr("&Help"), 100);
    connect(AddItem(help, QStringLiteral("About1"), tr("&About Korvane")), &QAction::triggered,
            this, [] {
                TQXUIServices::Current().ShowMessage(
                    tr("Korvane View\nBrowse the repository of a legacy business estate as an "
                       "expandable tree."));
            });
}

QMenu* TQXMainWindow::Compose(QMenu* host, QMenu* form) {
    auto composed = std::make_unique<QMenu>(host->title(), this);
    composed->setObjectName(host->objectName());
    for (QAction* action : host->actions()) {
        if (action->objectName() == QLatin1String(FormItemsMarker)) {
            if (!composed->isEmpty())
                composed->addSeparator();
            composed->addActions(form->actions());
            composed->addSeparator();
        } else {
            composed->addAction(action);
        }
    }
    // The view's own opening notice (its Edit menu, for one) follows.
    connect(composed.get(), &QMenu::aboutToShow, form, &QMenu::aboutToShow);
    FComposedMenus << composed.get();
    return composed.release(); // owned by this window
}

void TQXMainWindow::RebuildMenuBar() {
    menuBar()->clear();
    for (const QPointer<QMenu>& menu : FComposedMenus)
        delete menu.data();
    FComposedMenus.clear();

    // The window list of the Window menu follows the open views.
    QMenu* hostWindow = FHostMenu.FindMenu(QStringLiteral("HostWindow1"));
    for (QAction* action : hostWindow->actions())
        if (action->property("ViewWindow").toBool())
            delete action;
    const QList<QMdiSubWindow*> windows = FMdiArea->subWindowList();
    if (!windows.isEmpty())
        hostWindow->addSeparator()->setProperty("ViewWindow", true);
    for (QMdiSubWindow* window : windows) {
        QAction* action = hostWindow->addAction(window->windowTitle());
        action->setProperty("ViewWindow", true);
        action->setCheckable(true);
        action->setChecked(window == FMdiArea->activeSubWindow());
        connect(action, &QAction::triggered, FMdiArea,
                [this, window = QPointer<QMdiSubWindow>(window)] {
                    if (window)
                        FMdiArea->setActiveSubWindow(window);
                });
    }

    QList<QMenu*> hostMenus = FHostMenu.Menus();
    QList<QMenu*> formMenus;
    if (const TQXFormInterface* form = ActiveForm())
        formMenus = form->FormMenu().Menus();
    QList<int> groups;
    for (const QList<QMenu*>* menus : {&hostMenus, &formMenus})
        for (const QMenu* menu : *menus)
            if (!groups.contains(TQXMainMenu::GroupIndex(menu)))
                groups << TQXMainMenu::GroupIndex(menu);
    std::sort(groups.begin(), groups.end());

    for (int group : groups) {
        auto inGroup = [group](const QList<QMenu*>& menus) {
            QList<QMenu*> result;
            for (QMenu* menu : menus)
                if (TQXMainMenu::GroupIndex(menu) == group)
                    result << menu;
            return result;
        };
        const QList<QMenu*> host = inGroup(hostMenus);
        const QList<QMenu*> form = inGroup(formMenus);
        if (host.size() == 1 && form.size() == 1) {
            menuBar()->addMenu(Compose(host.constFirst(), form.constFirst()));
            continue;
        }
        for (QMenu* menu : host)
            menuBar()->addMenu(menu);
        for (QMenu* menu : form)
            menuBar()->addMenu(menu);
    }
}

TQXFormInterface* TQXMainWindow::OpenView(const QString& connectionName) {
    TQXUIServices& ui = TQXUIServices::Current();
    const int number = ++FViewCount;
    TQXFormInterface* form = nullptr;
    try {
        std::unique_ptr<TQXFormInterface> created = TQXFormRegistry::Create(
            QStringLiteral("TQXView"), nullptr, number, &FBaseFunctions,
            QStringLiteral("View %1").arg(number), connectionName, QString());
        form = created.get();
        QMdiSubWindow* window = FMdiArea->addSubWindow(created.release()); // owns the view now
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->setWindowIcon(QApplication::windowIcon());
        connect(form, &QWidget::windowTitleChanged, this, [this] {
            RebuildMenuBar();
            ShowActiveView();
        });
        // Queued: the area lets go of a closed window after it is destroyed.
        connect(
            window, &QObject::destroyed, this,
            [this] {
                RebuildMenuBar();
                ShowActiveView();
            },
            Qt::QueuedConnection);
        if (QAction* diagram = form->FindMenuItem(QStringLiteral("Diagram2")))
            connect(diagram, &QAction::triggered, FDiagram, [this] {
                FDiagram->show();
                FDiagram->raise();
            });
        window->showMaximized();
        FMdiArea->setActiveSubWindow(window);
    } catch (const std::exception& e) {
        ui.ShowError(ExceptionMessage(e));
        return nullptr;
    }
    try {
        form->RefreshContent(nullptr, nullptr, QString());
    } catch (const std::exception& e) {
        ui.ShowError(ExceptionMessage(e));
    }
    RebuildMenuBar();
    ShowActiveView();
    return form;
}

TQXFormInterface* TQXMainWindow::ActiveForm() const {
    QMdiSubWindow* window = FMdiArea->activeSubWindow();
    if (!window && !FMdiArea->subWindowList().isEmpty())
        window = FMdiArea->subWindowList().constLast();
    return window ? qobject_cast<TQXFormInterface*>(window->widget()) : nullptr;
}

QList<TQXFormInterface*> TQXMainWindow::Forms() const {
    QList<TQXFormInterface*> forms;
    for (QMdiSubWindow* window : FMdiArea->subWindowList())
        if (auto* form = qobject_cast<TQXFormInterface*>(window->widget()))
            forms << form;
    return forms;
}

void TQXMainWindow::OpenRepository() {
    const QString path = TQXUIServices::Current().OpenFileName(
        this, tr("Open Repository"), tr("Korvane repositories (*.kvdb)|*.kvdb|All files (*)|*"),
        QString());
    if (path.isEmpty())
        return;
    const QString name = TQXBaseFunctions::ConnectionNameFor(path);
    FBaseFunctions.SetConnection(name, path);
    SaveSettings();
    OpenView(name);
}

void TQXMainWindow::ChooseSourceDatabase() {
    QString name;
    if (const TQXFormInterface* active = ActiveForm())
        name = active->ConnectionName();
    const QString before = name;
    FBaseFunctions.ChooseSourceDatabase(this, 0, name, 1);
    SaveSettings();
    if (!name.isEmpty() && (name != before || !ActiveForm()))
        OpenView(name);
}

void TQXMainWindow::SaveSettings() const {
    std::unique_ptr<QSettings> settings =
        FSettingsFile.isEmpty() ? std::make_unique<QSettings>()
                                : std::make_unique<QSettings>(FSettingsFile, QSettings::IniFormat);
    FBaseFunctions.SaveSettings(*settings);
}

void TQXMainWindow::ShowActiveView() {
    const TQXFormInterface* form = ActiveForm();
    setWindowTitle(form ? form->windowTitle() : QStringLiteral("Korvane"));
    if (!form || form->ConnectionName().isEmpty()) {
        statusBar()->showMessage(tr("No repository open"));
        return;
    }
    const QString repository = FBaseFunctions.Repository(form->ConnectionName());
    statusBar()->showMessage(
        tr("Source Database %1: %2")
            .arg(form->ConnectionName(), repository.isEmpty()
                                             ? QString()
                                             : RepositoryLocation::Parse(repository).Display()));
}
