#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QWidget;
class TQXBaseFunctionsInterface;
class TQXFormInterface;

// The class registry: form classes by name, so that the host creates forms
// it does not link against. Libraries register their forms when they are
// loaded and unregister them when they are unloaded (see TQXFormRegistrar).
// There is one registry per process.
class TQXFormRegistry {
public:
    using Factory = std::function<std::unique_ptr<TQXFormInterface>(
        QWidget* owner, int windowNumber, TQXBaseFunctionsInterface* baseFunctions,
        const QString& documentName, const QString& connectionName, const QString& commandText)>;

    // A second registration of a name replaces the first.
    static void Register(const QString& className, Factory factory);
    static void Unregister(const QString& className);
    static bool IsRegistered(const QString& className);
    static QStringList ClassNames();

    // Creates a form of the named class; throws EQXError "Class X not found"
    // for a name that is not registered.
    static std::unique_ptr<TQXFormInterface>
    Create(const QString& className, QWidget* owner, int windowNumber,
           TQXBaseFunctionsInterface* baseFunctions, const QString& documentName,
           const QString& connectionName, const QString& commandText);
};
