#pragma once

#include "repository/Errors.h"

#include <QString>

#include <functional>

// The message of the EQXError the action throws; "(no error)" when it throws none.
inline QString ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const EQXError& e) {
        return e.Message();
    }
    return QStringLiteral("(no error)");
}
