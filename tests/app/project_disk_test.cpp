// Saves of a project that fail or are killed at each step in turn: under its name stands the old one or the new one.

#include "app/child_process.h"
#include "support/files.h"
#include "support/manifest.h"

#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>

namespace app_test {
namespace {

namespace fs = std::filesystem;
using testmedia::bytesOf;
using testmedia::writeBytes;

class ProjectDiskTest : public testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directory(place);
        writeBytes(folder / "save", "open " + project.string() + "\nadd still\nsave " + project.string() + "\n");
        old = "<QuillmontProject><Timeline/><MediaList><File Src=\"" + (testmedia::mediaFolder() / "still.png").string()
              + "\"/></MediaList><PreviewDimension Width=\"320\" Height=\"240\"/></QuillmontProject>";
    }

    Outcome run(const std::string& script, const std::string& failing = "") const
    {
        Limits limits;
        if (!failing.empty()) {
            limits.environment = {{"LD_PRELOAD", QUILLMONT_FAILING_STEPS},
                                  {"ASAN_OPTIONS", "verify_asan_link_order=0"},
                                  {"FAILING_STEP", failing}};
        }
        return Child({"/bin/sh", "-c", "exec \"$0\" < " + script, QUILLMONT_EDIT}, folder.path(), limits).end();
    }

    /// A save whose nth step fails with that cause, or is its last one.
    Outcome save(int step, int cause) const
    {
        writeBytes(project, old);
        return run("save", std::to_string(step) + " " + std::to_string(cause));
    }

    testmedia::TempFolder folder;
    fs::path place = folder / "place";
    fs::path project = place / "film.qpj";
    std::string old;
};

TEST_F(ProjectDiskTest, AFailureOrAKillAtAnyStep)
{
    constexpr int kNever = 9999;
    EXPECT_EQ(save(kNever, EIO).err, "");
    const std::string saved = bytesOf(project);
    ASSERT_NE(saved, old);
    int keptByKill = 0;
    int keptByFailure = 0;
    bool isKilled = true;
    for (int step = 0; isKilled; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        isKilled = save(step, 0).signal == SIGKILL;
        EXPECT_TRUE(bytesOf(project) == old || bytesOf(project) == saved) << bytesOf(project);
        keptByKill += bytesOf(project) == old ? 1 : 0;
        for (const int cause : {ENOSPC, EIO}) {
            const Outcome outcome = save(step, cause);
            const std::string& told = outcome.err;
            EXPECT_EQ(outcome.status != 0, told != "");
            EXPECT_TRUE(bytesOf(project) == saved || (bytesOf(project) == old && told != ""))
                << told << bytesOf(project);
            EXPECT_TRUE(bytesOf(project) == old || told == "" || told.find("is whole") != std::string::npos) << told;
            keptByFailure += bytesOf(project) == old ? 1 : 0;
        }
    }
    EXPECT_GT(keptByKill, 20);
    EXPECT_GT(keptByFailure, 30);
    EXPECT_EQ(save(kNever, EIO).err, "") << "after a kill the next save goes well";
    EXPECT_EQ(std::distance(fs::directory_iterator(place), {}), 1) << "and nothing is left behind";
}

} // namespace
} // namespace app_test
