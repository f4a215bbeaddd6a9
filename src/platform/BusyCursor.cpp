#include "platform/BusyCursor.h"

TQXBusyCursor::TQXBusyCursor()
    : FServices(TQXUIServices::Current()), FSaved(FServices.ScreenCursor()) {
    FServices.SetScreenCursor(Qt::WaitCursor);
}

TQXBusyCursor::~TQXBusyCursor() {
    FServices.SetScreenCursor(FSaved);
}
