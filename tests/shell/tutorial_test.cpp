// The tutorial: which way it is shown, and when at the start.

#include "shell/shell_harness.h"

#include <filesystem>
#include <fstream>

namespace logic_test {
namespace {

class TutorialTest : public ShellTest {
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        mdiTarnwick::showHelp = [this](std::string_view topic) { shown += "[" + std::string(topic) + "]"; };
        mdiTarnwick::startProgram = [this](std::string_view program, std::string_view word) {
            const auto name = [&](std::string_view path) { return std::string(path.substr(platform.folder.size())); };
            shown += name(program) + " " + name(word);
            return starts;
        };
    }
    void TearDown() override
    {
        mdiTarnwick::startProgram = nullptr;
        ShellTest::TearDown();
    }

    std::string shown;
    bool starts = true;
};

TEST_F(TutorialTest, ThePlayerIsStartedWhereThereIsOne)
{
    mdiTarnwick::mnuHelpTutorial_Click();
    EXPECT_EQ(shown, "[tutorial/index.html]");
    std::filesystem::create_directory(platform.folder + "/Tutorial");
    std::ofstream(platform.folder + "/Tutorial/FlashPla.exe") << "player";
    shown.clear();
    mdiTarnwick::mnuHelpTutorial_Click();
    EXPECT_EQ(shown, "/Tutorial/FlashPla.exe /Tutorial/Index.swf");
    starts = false;
    shown.clear();
    mdiTarnwick::mnuHelpTutorial_Click();
    EXPECT_EQ(shown, "/Tutorial/FlashPla.exe /Tutorial/Index.swf[tutorial/index.html]");
}

TEST_F(TutorialTest, AtTheStartByTheSetting)
{
    const std::string key = state::AppSection + "/Save Options/Tutorial";
    platform.settings.erase(key);
    mdiTarnwick::ShowTutorialAtStart();
    EXPECT_EQ(shown, "[tutorial/index.html]");
    for (const auto& [value, isShown] : {std::pair{"", true}, {"0", true}, {"1", false}, {"-1", false}}) {
        platform.settings[key] = value;
        shown.clear();
        mdiTarnwick::ShowTutorialAtStart();
        EXPECT_EQ(!shown.empty(), isShown) << value;
    }
}

} // namespace
} // namespace logic_test
