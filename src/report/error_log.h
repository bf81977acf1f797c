#pragma once

// The log file: records are appended, read as a whole and deleted as a whole. It is opened for each of these and
// closed after it.
//
// It stands in the program's folder, or in the state folder when the former cannot be written. Where that changed
// between two records, both files are the log. Interface thread only.

#include <string>
#include <string_view>

namespace error_log {

/// False when neither place could be written.
bool append(std::string_view record);

/// All records; empty when there is no log.
std::string read();

void remove();

} // namespace error_log
