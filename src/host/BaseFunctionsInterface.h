#pragma once

#include <QString>

class QObject;
class QWidget;
class TQXDataAccessInterface;
class TQXFormInterface;
class TQXItems;
class TQXTreeItem;

// The host's services for its forms: repository connections, the tree
// font, language names, named host objects, and hand-over of items to other
// host windows. Owned by the host; forms never free it.
class TQXBaseFunctionsInterface {
public:
    virtual ~TQXBaseFunctionsInterface() = default;

    // The data-access object of a connection, owned by the host; one per
    // connection name. Throws EQXError when it cannot be opened.
    virtual TQXDataAccessInterface* GetDataAccess(const QString& connectionName) = 0;
    // Lets the user pick a configured connection; `connectionName` keeps its
    // value when the user cancels. Views call it as (nullptr, 0, name, 1).
    virtual void ChooseSourceDatabase(QWidget* owner, int options, QString& connectionName,
                                      int mode) = 0;
    virtual QString TreeFontName() = 0;
    virtual int TreeFontSize() = 0;
    // The name of a source language, by its QXLanguageID; empty when unknown.
    virtual QString GetLanguageName(int languageID) = 0;
    // The host object with this name; throws EQXError when there is none.
    virtual QObject* GetNamedObject(const QString& name) = 0;
    // Hands items to the host window named `windowName` ("WorkList", "View",
    // "EditorController", "Query", "Diagram"). A failure comes back as a
    // non-empty `errorText`.
    virtual void SendItemsToWindow(const QString& windowName, int flag,
                                   const QString& connectionName, const TQXItems& items,
                                   const QString& command, QString& errorText) = 0;
    virtual void SendItemsToWindow(const QString& windowName, int flag,
                                   const QString& connectionName, const TQXTreeItem& item,
                                   const QString& command, QString& errorText) = 0;
    // A form took a new name (after a view document was saved or opened).
    virtual void ViewRenamed(TQXFormInterface* view, const QString& name) = 0;
    // Whether the host offers the window named `windowName`; forms enable
    // their commands for it accordingly.
    virtual bool HasWindow(const QString& windowName) = 0;
};
