#pragma once

// What the program would report to its makers, as a line each: "moduleEdit.CutAction: 11 Division by zero". A name that
// ends in "*" is only logged, without a dialogue. Interface thread only; the ports are set.

#include <iosfwd>
#include <string>
#include <vector>

namespace app {

/// From now on the report dialogue writes its error's line to `told` and closes.
void tellReportedErrors(std::ostream& told);
/// Undoes it.
void forgetReportedErrors();

/// The lines of the error log, which is empty then. An error without a dialogue stands there once a second at most.
std::vector<std::string> takeLoggedErrors();

} // namespace app
