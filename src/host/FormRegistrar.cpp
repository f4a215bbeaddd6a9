#include "host/FormRegistrar.h"

TQXFormRegistrar::TQXFormRegistrar(const QString& className, TQXFormRegistry::Factory factory)
    : FClassName(className) {
    TQXFormRegistry::Register(className, std::move(factory));
}

TQXFormRegistrar::~TQXFormRegistrar() {
    TQXFormRegistry::Unregister(FClassName);
}
