#pragma once

#include "repository/Errors.h"

// Arguments that cannot be used: reported with a pointer to the command's
// help and exit status 2.
class EQXUsageError : public EQXError {
public:
    using EQXError::EQXError;
};
