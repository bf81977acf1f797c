#pragma once

// The page that sends a report: it submits itself as soon as a browser has loaded it.

#include <string>
#include <string_view>

namespace report_page {

/// The names that a report takes in the temporary folder.
struct TemporaryFiles {
    std::string page;
    std::string project; // a name only: nothing is written under it
};
TemporaryFiles temporaryFiles();

/// The page over the text of a log, in UTF-8. Line ends become " <br>"; no character of the log can end the value
/// that holds it.
std::string pageText(std::string_view log);

/// Writes the page, never through a link that somebody left under its name. False when it cannot be written.
bool write(const std::string& path, std::string_view page);

} // namespace report_page
