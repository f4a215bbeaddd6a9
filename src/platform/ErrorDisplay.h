#pragma once

#include <functional>

// Runs a user-interface handler; an exception that leaves it is shown with
// the UI services' error display instead of reaching the event loop, as the
// toolkit's default error display would.
void RunReportingErrors(const std::function<void()>& handler);
