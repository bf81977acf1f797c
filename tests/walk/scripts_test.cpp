// Small scripts with the timelines that they must leave: lines that begin with "#> " are what the `dump` above prints.

#include "app/edit_words.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace walk_test {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> scriptNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(QUILLMONT_EDIT_SCRIPTS)) {
        names.push_back(entry.path().stem().string());
    }
    std::ranges::sort(names);
    return names;
}

class EditScript : public testing::TestWithParam<std::string> {};

TEST_P(EditScript, LeavesTheTimelineThatItSays)
{
    constexpr std::string_view kPrinted = "#> ";
    std::ifstream file(fs::path(QUILLMONT_EDIT_SCRIPTS) / (GetParam() + ".txt"));
    std::stringstream script;
    std::string told;
    for (std::string line; std::getline(file, line);) {
        script << line << "\n";
        told += line.starts_with(kPrinted) ? line.substr(kPrinted.size()) + "\n" : "";
    }
    ASSERT_NE(told, "");
    std::ostringstream messages;
    std::ostringstream printed;
    app::EditSession session(messages);
    const volatile int interrupted = 0;
    app::runScript(session, script, printed, interrupted);
    EXPECT_EQ(printed.str(), told);
}

INSTANTIATE_TEST_SUITE_P(All, EditScript, testing::ValuesIn(scriptNames()), [](const auto& script) {
    std::string name = script.param;
    std::ranges::replace(name, '-', '_');
    return name;
});

} // namespace
} // namespace walk_test
