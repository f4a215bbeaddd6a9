#include "platform/ErrorDisplay.h"

#include "platform/UIServices.h"
#include "repository/Errors.h"

void RunReportingErrors(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const std::exception& e) {
        TQXUIServices::Current().ShowError(ExceptionMessage(e));
    }
}
