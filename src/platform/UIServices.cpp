#include "platform/UIServices.h"

#include "platform/QtUIServices.h"

namespace {

TQXUIServices* InstalledServices = nullptr;

TQXUIServices& QtServices() {
    static TQXQtUIServices services;
    return services;
}

} // namespace

TQXUIServices& TQXUIServices::Current() {
    return InstalledServices ? *InstalledServices : QtServices();
}

TQXUIServices* TQXUIServices::SetCurrent(TQXUIServices* services) {
    TQXUIServices* previous = InstalledServices;
    InstalledServices = services;
    return previous;
}
