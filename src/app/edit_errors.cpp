#include "app/edit_errors.h"

#include "report/error_log.h"
#include "report/frmbug.h"

#include <map>
#include <ostream>
#include <sstream>

namespace app {

namespace {

std::vector<std::string> linesOf(const std::string& log)
{
    std::istringstream stream(log);
    std::map<std::string, std::string> facts;
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        const auto colon = line.find(" :");
        if (colon == std::string::npos) {
            continue;
        }
        const std::string label = line.substr(0, line.find(' '));
        const auto value = line.find_first_not_of(' ', colon + 2);
        const auto end = line.find_last_not_of("\r ");
        facts[label] = value == std::string::npos || value > end ? "" : line.substr(value, end + 1 - value);
        if (label == "Function") {
            lines.push_back(facts["Module"] + "." + facts[label] + ": " + facts["Number"] + " " + facts["Description"]);
        }
    }
    return lines;
}

} // namespace

void tellReportedErrors(std::ostream& told)
{
    frmbug::showDialogue = [&told] {
        frmbug::Load();
        const auto lines = linesOf(error_log::read());
        told << (lines.empty() ? std::string("error") : lines.back()) << "\n";
    };
}

void forgetReportedErrors() { frmbug::showDialogue = nullptr; }

std::vector<std::string> takeLoggedErrors()
{
    const std::string log = error_log::read();
    if (!log.empty()) {
        error_log::remove();
    }
    return linesOf(log);
}

} // namespace app
