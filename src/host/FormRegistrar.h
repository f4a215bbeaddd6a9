#pragma once

#include "host/FormRegistry.h"

// Registers a form class for its lifetime. A library holds one as a static
// object per form class: the class is registered when the library is loaded
// and unregistered when it is unloaded.
class TQXFormRegistrar {
public:
    TQXFormRegistrar(const QString& className, TQXFormRegistry::Factory factory);
    ~TQXFormRegistrar();

    TQXFormRegistrar(const TQXFormRegistrar&) = delete;
    TQXFormRegistrar& operator=(const TQXFormRegistrar&) = delete;

private:
    QString FClassName;
};

// The same for a form built for one item of a connection.
class TQXItemFormRegistrar {
public:
    TQXItemFormRegistrar(const QString& className, TQXFormRegistry::ItemFormFactory factory);
    ~TQXItemFormRegistrar();

    TQXItemFormRegistrar(const TQXItemFormRegistrar&) = delete;
    TQXItemFormRegistrar& operator=(const TQXItemFormRegistrar&) = delete;

private:
    QString FClassName;
};
