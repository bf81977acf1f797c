#include "report/frmbug.h"

#include "core/platform.h"
#include "core/upcalls.h"
#include "report/error_log.h"
#include "report/error_record.h"
#include "report/report_page.h"

namespace frmbug {

namespace {

error_record::ErrorFacts lastError;
bool dialogueOpen = false;
bool recordWritten = false; // of the error that the dialogue was opened for

// The last error, as its trap told it.
void SetErrDescription(std::string_view description) { lastError.description = description; }
void SetErrNumber(std::string_view number) { lastError.number = number; }
void SetErrModule(std::string_view module) { lastError.module = module; }
void SetErrFunction(std::string_view function) { lastError.function = function; }

void setLastError(std::string_view module, std::string_view function, const engine::RuntimeError& error)
{
    SetErrDescription(error.what());
    SetErrFunction(function);
    SetErrModule(module);
    SetErrNumber(std::to_string(error.number()));
}

void logSilently(std::string_view module, std::string_view function, const engine::RuntimeError& error)
{
    setLastError(module, function, error);
    WriteError();
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

} // namespace

void WriteError() noexcept
{
    try {
        recordWritten = true;
        error_log::append(error_record::asText(lastError));
    } catch (...) { // NOLINT: a failure here must not lead to another record
    }
}

void Load() noexcept { WriteError(); }

void lblReportContents_Click() { tellUser(ReportContentsText(), MessageIcon::kNone); }

std::string WriteReportPage()
{
    const std::string log = error_log::read();
    const std::string page = report_page::temporaryFiles().page;
    if (log.empty()) {
        return "There is nothing to send: no error log was found, and none can be written. Please make room on the "
               "disk "
               "and try again the next time that this window appears.";
    }
    const std::string kept =
        "\r\n\r\nThe error log was kept, and goes with the next report. You can also send the file "
        "yourself:\r\n"
        + error_log::path();
    if (!report_page::write(page, report_page::pageText(log))) {
        return "The report could not be written to " + page + ". Please see whether the disk is full." + kept;
    }
    if (!ports.shell->openWithDesktop(page)) {
        return "The report could not be opened in a browser. It is the page " + page + "." + kept;
    }
    error_log::remove();
    return {};
}

void cmdsendreport_Click() noexcept
{
    try {
        const std::string failure = WriteReportPage();
        if (failure.empty()) {
            close();
        } else {
            tellUser(failure, MessageIcon::kExclamation);
        }
    } catch (...) { // NOLINT: the dialogue stays, and so does the log
    }
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
