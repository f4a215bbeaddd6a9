#include "host/FormRegistrar.h"

TQXFormRegistrar::TQXFormRegistrar(const QString& className, TQXFormRegistry::Factory factory)
    : FClassName(className) {
    TQXFormRegistry::Register(className, std::move(factory));
}

TQXFormRegistrar::~TQXFormRegistrar() {
    TQXFormRegistry::Unregister(FClassName);
}

TQXItemFormRegistrar::TQXItemFormRegistrar(const QString& className,
                                           TQXFormRegistry::ItemFormFactory factory)
    : FClassName(className) {
    TQXFormRegistry::RegisterItemForm(className, std::move(factory));
}

TQXItemFormRegistrar::~TQXItemFormRegistrar() {
    TQXFormRegistry::Unregister(FClassName);
}
