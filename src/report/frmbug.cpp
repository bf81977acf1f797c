#include "report/frmbug.h"

#include "core/platform.h"
#include "core/upcalls.h"
#include "report/error_log.h"
#include "report/error_record.h"
#include "report/report_page.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace frmbug {

namespace {

error_record::ErrorFacts lastError;
bool dialogueOpen = false;
bool recordWritten = false; // of the error that the dialogue was opened for

/// Whether a silent error of the same kind came less than a second ago.
class FloodGate {
public:
    bool isRepeat(const error_record::ErrorFacts& facts)
    {
        constexpr std::uint32_t kQuietMs = 1000;
        const std::uint32_t now = ports.events->ticks();
        std::erase_if(recent_, [&](const Seen& seen) { return now - seen.ticks >= kQuietMs; });
        const auto kind = std::tie(facts.number, facts.module, facts.function);
        const auto known = std::ranges::find_if(
            recent_, [&](const Seen& seen) { return std::tie(seen.number, seen.module, seen.function) == kind; });
        if (known != recent_.end()) {
            known->ticks = now;
            return true;
        }
        recent_.push_back({facts.number, facts.module, facts.function, now});
        return false;
    }

private:
    struct Seen {
        std::string number;
        std::string module;
        std::string function;
        std::uint32_t ticks;
    };
    std::vector<Seen> recent_;
};

void setLastError(std::string_view module, std::string_view function, const engine::RuntimeError& error)
{
    SetErrDescription(error.what());
    SetErrFunction(function);
    SetErrModule(module);
    SetErrNumber(std::to_string(error.number()));
}

void logSilently(std::string_view module, std::string_view function, const engine::RuntimeError& error)
{
    static FloodGate gate;
    setLastError(module, function, error);
    if (!gate.isRepeat(lastError)) {
        WriteError();
    }
}

/// An error that comes while the dialogue is open: its record is written, and the dialogue keeps its own error.
void logBehindDialogue(std::string_view module, std::string_view function, const engine::RuntimeError& error)
{
    const error_record::ErrorFacts shown = lastError;
    const bool shownIsWritten = recordWritten;
    logSilently(module, function.ends_with('*') ? std::string(function) : std::string(function) + "*", error);
    lastError = shown;
    recordWritten = shownIsWritten;
}

void showReported(std::string_view module, std::string_view function, const engine::RuntimeError& error)
{
    setLastError(module, function, error);
    recordWritten = false;
    if (showDialogue) {
        dialogueOpen = true;
        try {
            showDialogue();
        } catch (...) { // NOLINT: the record is written below
        }
        dialogueOpen = false;
    }
    if (!recordWritten) {
        WriteError();
    }
}

void close() noexcept
{
    try {
        if (closeDialogue) {
            closeDialogue();
        }
    } catch (...) { // NOLINT: nothing in this room may report
    }
}

} // namespace

void SetErrDescription(std::string_view description) { lastError.description = description; }
void SetErrNumber(std::string_view number) { lastError.number = number; }
void SetErrModule(std::string_view module) { lastError.module = module; }
void SetErrFunction(std::string_view function) { lastError.function = function; }

void WriteError() noexcept
{
    try {
        recordWritten = true;
        error_log::append(error_record::asText(lastError));
    } catch (...) { // NOLINT: a failure here must not lead to another record
    }
}

void Load() noexcept { WriteError(); }

std::string ReportContentsText()
{
    return "This error report includes information regarding the condition of Quillmont when the problem "
           "occured and the Operating System Version.\r\n"
           "We do not collect your files, name, address and/or e-mail address or any other form of personally "
           "identifiable information. The error report does not contain any Customer Specific Information whatsoever. "
           "The data we collect will only be used to fix the problem. If more information is available we will "
           "let you know. This error report will be considered confidential and will not be "
           "used for any marketing purposes by Brindlecove.";
}

void lblReportContents_Click() { tellUser(ReportContentsText(), MessageIcon::kNone); }

bool WriteReportPage() noexcept
{
    try {
        const std::string log = error_log::read();
        const std::string page = report_page::temporaryFiles().page;
        if (log.empty() || !report_page::write(page, report_page::pageText(log))
            || !ports.shell->openWithDesktop(page)) {
            return false;
        }
        error_log::remove();
        return true;
    } catch (...) {
        return false;
    }
}

void cmdsendreport_Click() noexcept
{
    WriteReportPage();
    close();
}

void frmdontsend_Click() noexcept { close(); }

} // namespace frmbug

void ReportError(std::string_view module, std::string_view function, const engine::RuntimeError& error) noexcept
{
    try {
        if (frmbug::dialogueOpen) {
            frmbug::logBehindDialogue(module, function, error);
        } else if (function.ends_with('*')) {
            frmbug::logSilently(module, function, error);
        } else {
            frmbug::showReported(module, function, error);
        }
    } catch (...) { // NOLINT: memory has run out; there is nobody left to tell
    }
}
