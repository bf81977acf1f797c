#pragma once

// The error log and the report dialogue.
//
// Every trap ends here (`ReportError` in `core/upcalls.h`). A function name that ends in "*" only writes a record to
// the log; any other shows the dialogue, whose load writes the record. Nothing in this room raises or reports: a
// failure in the log must not lead to another record.
//
// The log is "ErrLog.asr" in the program's folder, or in the user's state folder when the former cannot be written.
// Every error leaves its record, also a run of equal ones; the log's own length is bounded (`error_log.h`).
//
// Interface thread only.

#include <functional>
#include <string>

namespace frmbug {

/// Shows the dialogue and comes back when it is closed. Its load calls `Load`. Set by the screens; while it is not
/// set, a reported error writes its record at once and nothing is shown. An error that comes while the dialogue is
/// open is logged silently.
inline std::function<void()> showDialogue;
/// Closes the dialogue. Set by the screens.
inline std::function<void()> closeDialogue;

/// Appends one record of the last error to the log.
void WriteError() noexcept;

/// The dialogue's load: writes the record.
void Load() noexcept;

/// The link "click here" tells what a report holds.
void lblReportContents_Click();

/// Writes the report page and opens it with the desktop, which sends it; then deletes the log and closes the
/// dialogue. Where the page could not be written or opened, a box says so, and the dialogue and the log stay.
void cmdsendreport_Click() noexcept;
/// Closes the dialogue; the log stays.
void frmdontsend_Click() noexcept;

/// The page and the deletion, without the dialogue. Empty when all went well; else what the person is told, and the log
/// stays.
std::string WriteReportPage();

} // namespace frmbug
