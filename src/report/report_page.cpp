#include "report/report_page.h"

#include "core/file_text.h"
#include "report/web_host.h"

#include <cstdio>
#include <filesystem>

namespace report_page {

namespace {

void addEscaped(std::string& text, char c)
{
    switch (c) {
    case '&':
        text += "&amp;";
        break;
    case '"':
        text += "&quot;";
        break;
    case '\'':
        text += "&#39;";
        break;
    case '<':
        text += "&lt;";
        break;
    case '>':
        text += "&gt;";
        break;
    default:
        text += c;
    }
}

/// The lines of the log in one, " <br>" behind each.
std::string joinedLines(std::string_view log)
{
    std::string text;
    while (!log.empty()) {
        const std::size_t end = log.find('\n');
        for (const char c : log.substr(0, end)) {
            if (c != '\r') {
                addEscaped(text, c);
            }
        }
        text += " <br>";
        log.remove_prefix(end == std::string_view::npos ? log.size() : end + 1);
    }
    return text;
}

} // namespace

TemporaryFiles temporaryFiles()
{
    const std::string folder = file_text::GetTempFolder();
    return {folder + "/ErrLog.htm", folder + "/ErrPrj.qpj"};
}

std::string pageText(std::string_view log)
{
    std::string page;
    const auto addLine = [&page](const std::string& line) { page += line + "\r\n"; };
    for (const char* const line :
         {"<html>", "<HEAD>", "<SCRIPT LANGUAGE='javascript'>", "function justSubmit()", "{",
          "document.frmlogin.submit()", "}", "</SCRIPT>", "</HEAD>", "<BODY ONLOAD='justSubmit()'>"}) {
        addLine(line);
    }
    addLine("<FORM name=\"frmlogin\" method=\"post\" accept-charset=\"utf-8\" action=\"" + std::string(kWebHost)
            + "/Quillmont/err_mail_qmt.aspx\">");
    addLine("<INPUT type=\"hidden\" name=\"bodytext\" value=\"" + joinedLines(log) + "\">");
    for (const char* const line : {"</FORM>", "</BODY>", "</HTML>"}) {
        addLine(line);
    }
    return page;
}

bool write(const std::string& path, std::string_view page)
{
    std::error_code ignored; // when it stays, the exclusive opening fails
    std::filesystem::remove(path, ignored);
    std::FILE* const file = std::fopen(path.c_str(), "wbx");
    if (file == nullptr) {
        return false;
    }
    const bool isWritten = std::fwrite(page.data(), 1, page.size(), file) == page.size();
    return std::fclose(file) == 0 && isWritten;
}

} // namespace report_page
