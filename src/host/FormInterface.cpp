#include "host/FormInterface.h"

#include "host/BaseFunctionsInterface.h"
#include "platform/ErrorDisplay.h"
#include "platform/ImageList.h"
#include "platform/UIServices.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>

TQXFormInterface::TQXFormInterface(QWidget* owner, int windowNumber,
                                   TQXBaseFunctionsInterface* baseFunctions,
                                   const QString& documentName, const QString& connectionName,
                                   const QString& commandText)
    : QWidget(owner), FWindowNumber(windowNumber), FDocumentName(documentName),
      FCreationConnectionName(connectionName), FCreationCommand(commandText),
      FConnectionName(connectionName), FBaseFunctions(baseFunctions),
      FImageList(&TQXImageList::Standard()), FMainMenu(this) {
    CreateMainMenu();
}

TQXFormInterface::~TQXFormInterface() = default;

void TQXFormInterface::CreateMainMenu() {
    // Every command runs through the form's virtual operation, with the
    // menu item as sender; errors go to the error display.
    auto item = [this](QMenu* menu, const QString& name, const QString& caption,
                       void (TQXFormInterface::*handler)(QObject*)) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        TQXMainMenu::SetGroupIndex(action, TQXMainMenu::GroupIndex(menu));
        connect(action, &QAction::triggered, this,
                [this, action, handler] { RunReportingErrors([&] { (this->*handler)(action); }); });
        return action;
    };

    QMenu* file = FMainMenu.AddMenu(QStringLiteral("File1"), tr("&File"), 0);
    item(file, QStringLiteral("View3"), tr("&Open View..."), &TQXFormInterface::Open1Click);
    QAction* save = item(file, QStringLiteral("Save1"), tr("&Save"), &TQXFormInterface::Save1Click);
    save->setShortcut(QKeySequence::Save);
    save->setEnabled(false); // until the form has a document file
    item(file, QStringLiteral("SaveAs1"), tr("Save &As..."), &TQXFormInterface::SaveAs1Click);
    file->addSeparator();
    item(file, QStringLiteral("Print1"), tr("&Print..."), &TQXFormInterface::Print1Click)
        ->setShortcut(QKeySequence::Print);

    QMenu* edit = FMainMenu.AddMenu(QStringLiteral("Edit1"), tr("&Edit"), 1);
    item(edit, QStringLiteral("Copy1"), tr("&Copy"), &TQXFormInterface::Copy1Click);
    item(edit, QStringLiteral("SelectAll1"), tr("Select &All"), &TQXFormInterface::SelectAll1Click);
    item(edit, QStringLiteral("ClearSelection1"), tr("C&lear Selection"),
         &TQXFormInterface::ClearSelection1Click);
    edit->addSeparator();
    item(edit, QStringLiteral("Find1"), tr("&Find..."), &TQXFormInterface::Find1Click)
        ->setShortcut(QKeySequence::Find);
    connect(edit, &QMenu::aboutToShow, this,
            [this, edit] { RunReportingErrors([&] { Edit1Click(edit); }); });

    // The host's other windows; a form enables what the host offers.
    QMenu* window = FMainMenu.AddMenu(QStringLiteral("Window1"), tr("&Window"), 90);
    QAction* workList = window->addAction(tr("&WorkList"));
    workList->setObjectName(QStringLiteral("WorkList2"));
    QAction* diagram = window->addAction(tr("&Diagram"));
    diagram->setObjectName(QStringLiteral("Diagram2"));
    workList->setEnabled(FBaseFunctions && FBaseFunctions->HasWindow(QStringLiteral("WorkList")));
    diagram->setEnabled(FBaseFunctions && FBaseFunctions->HasWindow(QStringLiteral("Diagram")));
}

void TQXFormInterface::Open1Click(QObject*) {}
void TQXFormInterface::Save1Click(QObject*) {}
void TQXFormInterface::SaveAs1Click(QObject*) {}
void TQXFormInterface::Print1Click(QObject*) {}

void TQXFormInterface::Edit1Click(QObject*) {
    for (const char* name : {"Copy1", "SelectAll1", "ClearSelection1", "Find1"})
        if (QAction* action = FindMenuItem(QLatin1String(name)))
            action->setEnabled(true);
}

void TQXFormInterface::Copy1Click(QObject*) {}
void TQXFormInterface::SelectAll1Click(QObject*) {}
void TQXFormInterface::ClearSelection1Click(QObject*) {}
void TQXFormInterface::Find1Click(QObject*) {}
void TQXFormInterface::FindDialog1Find(QObject*) {}
void TQXFormInterface::ConnectToDB() {}
void TQXFormInterface::RefreshContent(TQXDataAccessInterface*, QObject*, const QString&) {}

void TQXFormInterface::SetFont(const QString& name, int size) {
    QFont f = font();
    if (!name.isEmpty())
        f.setFamily(name);
    if (size > 0)
        f.setPointSize(size);
    setFont(f);
}

void TQXFormInterface::closeEvent(QCloseEvent* event) {
    if (FAskBeforeClosing && !TQXUIServices::Current().Ask(tr("Close %1?").arg(FDocumentName))) {
        event->ignore();
        return;
    }
    QWidget::closeEvent(event);
}

void TQXFormInterface::ReceiveItems(const TQXItems&, const QString& command, QString& errorText) {
    errorText = ClassName() + QStringLiteral(" does not take items for \"") + command +
                QStringLiteral("\"");
}
