#include "host/FormRegistry.h"

#include "host/FormInterface.h"
#include "repository/Errors.h"

#include <QMap>

namespace {

QMap<QString, TQXFormRegistry::Factory>& Factories() {
    static QMap<QString, TQXFormRegistry::Factory> factories;
    return factories;
}

QMap<QString, TQXFormRegistry::ItemFormFactory>& ItemFormFactories() {
    static QMap<QString, TQXFormRegistry::ItemFormFactory> factories;
    return factories;
}

} // namespace

void TQXFormRegistry::Register(const QString& className, Factory factory) {
    ItemFormFactories().remove(className);
    Factories().insert(className, std::move(factory));
}

void TQXFormRegistry::RegisterItemForm(const QString& className, ItemFormFactory factory) {
    Factories().remove(className);
    ItemFormFactories().insert(className, std::move(factory));
}

void TQXFormRegistry::Unregister(const QString& className) {
    Factories().remove(className);
    ItemFormFactories().remove(className);
}

bool TQXFormRegistry::IsRegistered(const QString& className) {
    return Factories().contains(className) || ItemFormFactories().contains(className);
}

QStringList TQXFormRegistry::ClassNames() {
    QStringList names = Factories().keys() + ItemFormFactories().keys();
    names.sort();
    return names;
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

std::unique_ptr<QWidget> TQXFormRegistry::CreateItemForm(const QString& className, QWidget* owner,
                                                         TQXDataAccessInterface* dataAccess,
                                                         const TQXItem& item) {
    const auto it = ItemFormFactories().constFind(className);
    if (it == ItemFormFactories().constEnd())
        throw EQXError(QStringLiteral("Class %1 not found").arg(className));
    const ItemFormFactory factory = *it;
    return factory(owner, dataAccess, item);
}
