// Construction, connection, the refresh cycle and the dispatch of node
// expansions.
#include "view/View.h"

#include "host/BaseFunctionsInterface.h"
#include "platform/BusyCursor.h"
#include "platform/TreeControl.h"
#include "platform/TreeUpdate.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>

namespace {

const QString EmptyRepositoryMarker = QStringLiteral(
    "  *** Source Database is empty, choose Tools/Load on the Main Menu to load the Database ***");
const QString DataDependenciesMarker =
    QStringLiteral("  *** Dependencies for Data is not available in this version of Korvane ***");
const QString FilterNoHitsMarker = QStringLiteral("  *** No Hits with current Filter Settings ***");
const QString LoadAttributesAdvice =
    QStringLiteral("  *** Choose Tools/Load on the Main Menu to assign System(s), Computer(s) and "
                   "Application(s) and reload the Database ***");
const QString MissingConnectionMarker =
    QStringLiteral("  *** Missing Database connection, Choose Tools/Settings/Source Databases to "
                   "correct the settings ***");

bool MenuItemEnabled(const TQXFormInterface& form, const char* name) {
    const QAction* item = form.FindMenuItem(QLatin1String(name));
    return item && item->isEnabled();
}

} // namespace

TQXView::TQXView(QWidget* owner, int windowNumber, TQXBaseFunctionsInterface* baseFunctions,
                 const QString& documentName, const QString& connectionName,
                 const QString& commandText)
    : TQXFormInterface(owner, windowNumber, baseFunctions, documentName, connectionName,
                       commandText),
      mnuView(this) {
    CreateControls();
    CreateMenus();
    CreatePopupMenu();
    ConnectControls();
    ConnectTrackCommands();
    try {
        if (!FBaseFunctions)
            throw EQXError(QStringLiteral("no base functions object"));
        FAskBeforeClosing = false;
        mnuView.Merge(MainMenu());
        imgIcons = ImageList();
        tvMain->SetImages(imgIcons);

        const bool workList = MenuItemEnabled(*this, "WorkList2");
        for (const char* name : {"AddtoWorkList1", "AddtoWorkListAs1", "Editor1"})
            pmnuView->findChild<QAction*>(QLatin1String(name))->setEnabled(workList);
        pmnuView->findChild<QAction*>(QStringLiteral("AddTracktoDiagram1"))
            ->setEnabled(MenuItemEnabled(*this, "Diagram2"));

        SyncMenuItems();
        cbOption->hide();
        lblOption->hide();
        SetUserHint();
        tvMain->SetTreeFont(FBaseFunctions->TreeFontName(), FBaseFunctions->TreeFontSize());
    } catch (const std::exception& e) {
        throw EQXError(QStringLiteral("TQXView.Create: ") + ExceptionMessage(e) +
                       QLatin1Char('\r'));
    }
}

TQXView::~TQXView() {
    try {
        if (FDataAccess)
            FDataAccess->CloseTables(nullptr, true);
    } catch (...) {
        // The connection goes anyway; nothing to tell the user.
    }
}

void TQXView::ConnectToDB() {
    if (FDataAccess)
        FDataAccess->CloseTables(nullptr, true);
    if (FConnectionName.isEmpty())
        FBaseFunctions->ChooseSourceDatabase(nullptr, 0, FConnectionName, 1);
    FDataAccess = FBaseFunctions->GetDataAccess(FConnectionName);
    if (!FDataAccess)
        throw EQXError(QStringLiteral("no data access for ") + FConnectionName);

    FTables.Clear();
    try {
        AssignDBPointers(*FDataAccess, FTables);
    } catch (const std::exception& e) {
        TQXUIServices::Current().ShowMessage(QStringLiteral("AssignDBPointers failed: ") +
                                             ExceptionMessage(e));
        ReplaceFilterDialog(false); // its tables could not be bound either
        return;
    }
    // What the repository has to say about itself, once per connection.
    if (auto* notice = dynamic_cast<TQXRepositoryNotice*>(FDataAccess)) {
        const QString text = notice->TakeRepositoryNotice();
        if (!text.isEmpty())
            TQXUIServices::Current().ShowMessage(text);
    }
    ReplaceFilterDialog(true);
}

void TQXView::RefreshContent(TQXDataAccessInterface* dataAccess, QObject* sender,
                             const QString& text) {
    FHostRefreshFailed = false;
    try {
        if (!dataAccess) {
            if (!FDocumentFile.isEmpty()) {
                OpenViewDoc(FDocumentFile);
            } else {
                try {
                    ConnectToDB();
                } catch (const std::exception& e) {
                    TQXUIServices::Current().ShowMessage(
                        QStringLiteral("Could not connect to Database ") + FConnectionName +
                        QLatin1Char('\r') + QStringLiteral("Error: ") + ExceptionMessage(e) +
                        QLatin1Char('\r') + QStringLiteral("Choose another Source Database"));
                    tvMain->Clear();
                    AddMarker(MissingConnectionMarker);
                    return;
                }
                setWindowTitle(QStringLiteral("Korvane - ") + FDocumentName +
                               QStringLiteral(" on ") + FConnectionName);
                if (sender)
                    ActivateFilter(sender, text);
                try {
                    RefreshCurrentView();
                } catch (const std::exception&) {
                    // A refresh the host started fails silently.
                    FHostRefreshFailed = true;
                }
            }
        } else if (dataAccess == FDataAccess) {
            try {
                RefreshCurrentView();
            } catch (const std::exception&) {
                // A refresh the host started fails silently.
                FHostRefreshFailed = true;
            }
        }
        cbRefreshView->setFocus();
    } catch (const std::exception& e) {
        throw EQXError(QStringLiteral("TQXView.RefreshContent: ") + ExceptionMessage(e));
    }
}

void TQXView::RefreshCurrentView() {
    if (!FDataAccess)
        throw EQXError(QStringLiteral("No Source Database connected"));
    TQXBusyCursor busy;
    const std::vector<TQXRootVariable> roots = RootVariables();
    tvMain->Clear();
    FCallCache.Clear(); // the repository may have changed since
    FFileNames.Clear();
    TQXTreeUpdate update(*tvMain);
    tvMain->SetPopupMenu(pmnuView);

    const TQXViewSettings settings = Settings();
    if (!FDataAccess->SelectRecords(FTables.Table(qx::Table::QXFILE), QString())) {
        AddMarker(EmptyRepositoryMarker);
    } else if (settings.IsDependencies() && settings.Level == TQXLevel::Data) {
        // Variables come from "Show Data Flow" or a view document, and stay.
        if (roots.empty())
            AddMarker(DataDependenciesMarker);
        else
            AddRootVariables(roots);
    } else {
        ShowRootItems(settings);
        if (tvMain->RootCount() == 0) {
            if (rbFilterOn->isChecked() && FilterConditionCount() > 0) {
                AddMarker(FilterNoHitsMarker);
            } else {
                AddMarker(QStringLiteral("  *** No Hits on ") + level::Name(settings.Level) +
                          QStringLiteral(" ***"));
                if (level::IsAttribute(settings.Level)) {
                    tvMain->AddRoot(QString());
                    AddMarker(LoadAttributesAdvice);
                }
            }
        }
    }
    FDataAccess->EndRefresh(true, false);
}

void TQXView::NodeExpanded(TQXTreeNode* node) {
    if (FLoadingDocument)
        return; // the document brings the children
    TQXBusyCursor busy;
    TQXTreeUpdate update(*tvMain);
    const TQXViewSettings settings = Settings();
    if (settings.IsDependencies())
        ShowDependencies(node, settings);
    else
        ShowDistribution(node, settings);
}

void TQXView::SetFont(const QString& name, int size) {
    tvMain->SetTreeFont(name, size);
}

void TQXView::AddMarker(const QString& text) {
    tvMain->AddRoot(text);
    tvMain->SetPopupMenu(nullptr);
}
