#pragma once

#include "platform/UIServices.h"

// Shows the hourglass for its lifetime and then puts back the screen cursor
// it found, also when an exception leaves the scope.
class TQXBusyCursor {
public:
    TQXBusyCursor();
    ~TQXBusyCursor();

    TQXBusyCursor(const TQXBusyCursor&) = delete;
    TQXBusyCursor& operator=(const TQXBusyCursor&) = delete;

private:
    TQXUIServices& FServices;
    Qt::CursorShape FSaved;
};
