#pragma once

// The log file: records are appended, read as a whole and deleted as a whole. It is opened for each of these and
// closed after it.
//
// It stands in the program's folder, or in the state folder when the former cannot be written. Where that changed
// between two records, both files are the log. A log that a record would take over 16 MB is set aside first, as
// "ErrLog.old.asr" beside it, in the place of an older one: a timer that fails thirty times a second fills no disk.
// What was set aside is neither read nor deleted here. Interface thread only.

#include <string>
#include <string_view>

namespace error_log {

/// False when neither place could be written.
bool append(std::string_view record);

/// All records; empty when there is no log.
std::string read();

void remove();

/// Where the newest records lie, for people.
std::string path();

} // namespace error_log
