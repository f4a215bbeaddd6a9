#pragma once

#include "host/MainMenu.h"

#include <QString>
#include <QWidget>

class QAction;
class QCloseEvent;
class TQXBaseFunctionsInterface;
class TQXDataAccessInterface;
class TQXImageList;
class TQXItems;

// The host's base form. The host creates forms by class name with an owner,
// a window number, its base-functions object and three texts: the document
// name, the connection name and a command text. The form keeps the texts,
// builds its main menu (File, Edit, Window) and drives its file and edit
// commands through virtual operations that derived forms override.
//
// Main-menu items looked up by name: "View3" (open a view document),
// "Save1", "WorkList2" and "Diagram2" (enabled when the host offers its work
// list and diagram windows).
class TQXFormInterface : public QWidget {
    Q_OBJECT

public:
    TQXFormInterface(QWidget* owner, int windowNumber, TQXBaseFunctionsInterface* baseFunctions,
                     const QString& documentName, const QString& connectionName,
                     const QString& commandText);
    ~TQXFormInterface() override;

    // File and edit commands, in slot order. The base versions are the
    // host form's own handlers and do nothing but keep the Edit menu usable.
    virtual void Open1Click(QObject* sender);
    virtual void Save1Click(QObject* sender);
    virtual void SaveAs1Click(QObject* sender);
    virtual void Print1Click(QObject* sender);
    virtual void Edit1Click(QObject* sender);
    virtual void Copy1Click(QObject* sender);
    virtual void SelectAll1Click(QObject* sender);
    virtual void ClearSelection1Click(QObject* sender);
    virtual void Find1Click(QObject* sender);
    virtual void FindDialog1Find(QObject* sender);

    // What the host drives after creating a form.
    virtual void ConnectToDB();
    virtual void RefreshContent(TQXDataAccessInterface* dataAccess, QObject* sender,
                                const QString& text);
    virtual void SetFont(const QString& name, int size);
    // Items another window hands to this one with a command (the host's
    // "View" window). A form that cannot take them says why in `errorText`.
    virtual void ReceiveItems(const TQXItems& items, const QString& command, QString& errorText);

    // The form's class name, as registered with the form registry.
    virtual QString ClassName() const { return QStringLiteral("TQXFormInterface"); }

    int WindowNumber() const { return FWindowNumber; }
    const QString& DocumentName() const { return FDocumentName; }
    const QString& CreationConnectionName() const { return FCreationConnectionName; }
    const QString& CreationCommand() const { return FCreationCommand; }
    const QString& ConnectionName() const { return FConnectionName; }
    const QString& DocumentFile() const { return FDocumentFile; }
    TQXBaseFunctionsInterface* BaseFunctions() const { return FBaseFunctions; }
    TQXDataAccessInterface* DataAccess() const { return FDataAccess; }
    const TQXImageList* ImageList() const { return FImageList; }
    bool AskBeforeClosing() const { return FAskBeforeClosing; }

    // The base form's main menu, and the one the host shows for the form
    // (a derived form merges the base menu into its own).
    const TQXMainMenu& MainMenu() const { return FMainMenu; }
    virtual const TQXMainMenu& FormMenu() const { return FMainMenu; }
    // A main-menu item by name; null when there is none.
    QAction* FindMenuItem(const QString& name) const { return FMainMenu.FindItem(name); }

protected:
    void closeEvent(QCloseEvent* event) override;

    int FWindowNumber;
    QString FDocumentName;
    // The creation texts as the host gave them; view documents keep them.
    QString FCreationConnectionName;
    QString FCreationCommand;
    QString FConnectionName;
    TQXBaseFunctionsInterface* FBaseFunctions;
    QString FDocumentFile;
    TQXDataAccessInterface* FDataAccess = nullptr;
    const TQXImageList* FImageList;
    // When set, closing the form asks the user first.
    bool FAskBeforeClosing = true;

private:
    void CreateMainMenu();

    TQXMainMenu FMainMenu;
};
