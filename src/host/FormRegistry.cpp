#include "host/FormRegistry.h"

#include "host/FormInterface.h"
#include "repository/Errors.h"

#include <QMap>

namespace {

QMap<QString, TQXFormRegistry::Factory>& Factories() {
    static QMap<QString, TQXFormRegistry::Factory> factories;
    return factories;
}

} // namespace

void TQXFormRegistry::Register(const QString& className, Factory factory) {
    Factories().insert(className, std::move(factory));
}

void TQXFormRegistry::Unregister(const QString& className) {
    Factories().remove(className);
}

bool TQXFormRegistry::IsRegistered(const QString& className) {
    return Factories().contains(className);
}

QStringList TQXFormRegistry::ClassNames() {
    return Factories().keys();
}

std::unique_ptr<TQXFormInterface>
TQXFormRegistry::Create(const QString& className, QWidget* owner, int windowNumber,
                        TQXBaseFunctionsInterface* baseFunctions, const QString& documentName,
                        const QString& connectionName, const QString& commandText) {
    const auto it = Factories().constFind(className);
    if (it == Factories().constEnd())
        throw EQXError(QStringLiteral("Class %1 not found").arg(className));
    // Copied: creating a form may load or unload libraries that change the map.
    const Factory factory = *it;
    return factory(owner, windowNumber, baseFunctions, documentName, connectionName, commandText);
}
