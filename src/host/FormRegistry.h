#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QWidget;
class TQXBaseFunctionsInterface;
class TQXDataAccessInterface;
class TQXFormInterface;
class TQXItem;

// The class registry: form classes by name, so that the host creates forms
// it does not link against. Libraries register their forms when they are
// loaded and unregister them when they are unloaded (see TQXFormRegistrar).
// There is one registry per process.
class TQXFormRegistry {
public:
    using Factory = std::function<std::unique_ptr<TQXFormInterface>(
        QWidget* owner, int windowNumber, TQXBaseFunctionsInterface* baseFunctions,
        const QString& documentName, const QString& connectionName, const QString& commandText)>;

    // Forms built for one item of a connection (the screen map viewer): the
    // owner, the connection's data-access object and the item.
    using ItemFormFactory = std::function<std::unique_ptr<QWidget>(
        QWidget* owner, TQXDataAccessInterface* dataAccess, const TQXItem& item)>;

    // A second registration of a name replaces the first.
    static void Register(const QString& className, Factory factory);
    static void RegisterItemForm(const QString& className, ItemFormFactory factory);
    static void Unregister(const QString& className);
    static bool IsRegistered(const QString& className);
    static QStringList ClassNames();

    // Creates a form of the named class; throws EQXError "Class X not found"
    // for a name that is not registered.
    static std::unique_ptr<TQXFormInterface>
    Create(const QString& className, QWidget* owner, int windowNumber,
           TQXBaseFunctionsInterface* baseFunctions, const QString& documentName,
           const QString& connectionName, const QString& commandText);
    // Creates an item form of the named class; throws EQXError as Create does.
    static std::unique_ptr<QWidget> CreateItemForm(const QString& className, QWidget* owner,
                                                   TQXDataAccessInterface* dataAccess,
                                                   const TQXItem& item);
};
