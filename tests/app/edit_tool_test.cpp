// quillmont-edit from outside: scripts on its standard input, what it prints, and how it ends.

#include "app/child_process.h"
#include "support/files.h"

#include <csignal>
#include <gtest/gtest.h>

namespace app_test {
namespace {

Outcome runScript(const std::string& script)
{
    const testmedia::TempFolder folder;
    testmedia::writeBytes(folder / "script", script);
    return Child({"/bin/sh", "-c", "exec \"$0\" < script", QUILLMONT_EDIT}, folder.path()).end();
}

TEST(EditTool, EndsAtAWrongLineAndTellsIt)
{
    static constexpr struct {
        const char* line;
        const char* cause;
    } kCases[] = {{"fly", "there is no command called fly"},
                  {"cut now", "this is used as: cut"},
                  {"add", "this is used as: add NAME"},
                  {"add nothing", "there is no file called nothing"},
                  {"media clip 10 v", "there is a file called clip already"},
                  {"media ../x 10 v", "a name is made of letters"},
                  {"media x 0 v", "0 is out of range"},
                  {"media x 10 av", "\"av\" is not v, a or va"},
                  {"put video clip 100 100 0 10", "100 is not behind 100"},
                  {"put audio1 clip 0 100 0 10", "clip has no sound"},
                  {"put effects clip 0 100 0 10", "no file goes on effects"},
                  {"select screen 0", "there is no track called screen"},
                  {"select video one", "\"one\" is no whole number"},
                  {"lock video maybe", "\"maybe\" is neither on nor off"},
                  {"range 10 5", "5 is not behind 10"},
                  {"range on", "\"on\" is no whole number"},
                  {"slider -1", "-1 is out of range"},
                  {"nudge 2", "a direction key moves by 5 pixels, or 1"},
                  {"add-effect Sepia", "there is no effect called Sepia"}};
    for (const auto& [line, cause] : kCases) {
        const Outcome outcome = runScript("media clip 1000 v\n# the next one\n" + std::string(line) + "\ndump\n");
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_EQ(outcome.out, "") << line;
        EXPECT_NE(outcome.err.find("line 3: " + std::string(cause)), std::string::npos) << line << ": " << outcome.err;
    }
}

TEST(EditTool, TellsMessagesAndGoesOn)
{
    const Outcome outcome = runScript("media clip 1000 v   # a picture\n\noverlay clip\nadd clip\ndump\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "Unable to add to overlay as the video track is empty.\n");
    EXPECT_EQ(outcome.out, "video 0 0 1000 0 1000 clip\nhistory 1 1 1\n.\n");
}

TEST(EditTool, TakesItsFilesAlongHoweverItEnds)
{
    const testmedia::TempFolder folder;
    std::string script = "media clip 1000 va\nadd clip\n";
    for (int i = 0; i < 3000; ++i) {
        script += "dump\n";
    }
    testmedia::writeBytes(folder / "script", script);
    const Outcome unread =
        Child({"/bin/sh", "-c", "TMPDIR=. \"$0\" < script | head -c 1", QUILLMONT_EDIT}, folder.path()).end();
    EXPECT_EQ(unread.out, "v");
    EXPECT_NE(unread.err.find("the result could not be printed"), std::string::npos) << unread.err;
    EXPECT_EQ(folder.names(), std::set<std::string>{"script"});

    Child waiting({"/bin/sh", "-c", "mkfifo lines; TMPDIR=. exec \"$0\" 0<> lines", QUILLMONT_EDIT}, folder.path());
    ASSERT_TRUE(waiting.runsUntil([&] { return folder.names().size() > 2; }));
    waiting.kill(SIGTERM);
    EXPECT_EQ(waiting.end().status, 1);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"lines", "script"}));
}

TEST(EditTool, ShowsAnExampleThatRuns)
{
    const testmedia::TempFolder folder;
    const Outcome help = Child({QUILLMONT_EDIT, "--help"}, folder.path()).end();
    EXPECT_EQ(help.status, 0);
    const auto example = help.out.find("Example:\n");
    ASSERT_NE(example, std::string::npos);
    const Outcome outcome = runScript(help.out.substr(example + 9));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "video 0 0 4000 0 4000 clip\naudio1 0 0 4000 0 4000 clip\nhistory 1 2 1\n.\n");
}

} // namespace
} // namespace app_test
