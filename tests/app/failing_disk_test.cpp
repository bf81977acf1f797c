// Renders from disks that fail: the movie is whole to the byte, or there is none and the cause is told.

#include "app/child_process.h"
#include "support/files.h"
#include "support/manifest.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>

namespace app_test {
namespace {

namespace fs = std::filesystem;
using testmedia::bytesOf;
using testmedia::medium;

class FailingDiskTest : public testing::Test {
protected:
    Outcome render(const std::string& input, const Limits& limits = {}) const
    {
        return Child({QUILLMONT_RENDER, input, "-o", movie.string(), "--size", "160x120"}, folder.path(), limits).end();
    }

    /// Renders with one step after the other, until nothing fails. Says how many failed while saving.
    template <class LimitsOf>
    int sweep(const std::string& input, const std::string& whole, const std::string& cause, LimitsOf limitsOf)
    {
        int whileSaving = 0;
        for (int step = 0; step < 1000; step += 1 + step / 3) {
            fs::remove(movie);
            const Outcome outcome = render(input, limitsOf(step));
            SCOPED_TRACE("step " + std::to_string(step) + ": " + outcome.err);
            if (outcome.status == 0) {
                EXPECT_TRUE(bytesOf(movie) == whole) << "a movie that is not whole";
                return whileSaving;
            }
            EXPECT_EQ(outcome.status, 1) << "signal " << outcome.signal;
            // A program that finds no descriptors at all fails at its movie, ahead of any input.
            EXPECT_TRUE(outcome.err.find(fs::path(input).filename()) != std::string::npos
                        || outcome.err.find(movie.filename()) != std::string::npos);
            EXPECT_FALSE(fs::exists(movie));
            if (outcome.err.find("not damaged") != std::string::npos) {
                EXPECT_NE(outcome.err.find(cause), std::string::npos);
                whileSaving += outcome.err.find("save again") != std::string::npos ? 1 : 0;
            }
        }
        ADD_FAILURE() << "it failed to the end";
        return whileSaving;
    }

    testmedia::TempFolder folder;
    fs::path movie = folder / "movie.avi";
};

/// A call that fails from its nth on, on one file.
Limits failing(const std::string& call, int after, int cause, const std::string& path)
{
    return {.environment = {
                {"LD_PRELOAD", QUILLMONT_FAILING_DISK},
                {"ASAN_OPTIONS", "verify_asan_link_order=0"},
                {"FAILING_DISK", call + " " + std::to_string(after) + " " + std::to_string(cause) + " " + path}}};
}

TEST_F(FailingDiskTest, EveryCallThatFailsEndsTheSave)
{
    struct Case {
        const char* name;
        bool seeks; // while it is saved
    };
    const Case cases[] = {{"h264.mp4", true},        {"mpeg2.ts", true},   {"mjpeg.avi", true},
                          {"stereo-48k.wav", false}, {"still.png", false}, {"tune.mid", false}};
    for (const auto& [name, seeks] : cases) {
        const std::string input = folder / name;
        fs::copy_file(medium(name), input);
        ASSERT_EQ(render(input).status, 0) << name;
        const std::string whole = bytesOf(movie);
        for (const auto& [call, cause] : {std::pair{"read", EIO}, {"lseek", EIO}, {"open", ESTALE}}) {
            SCOPED_TRACE(std::string(name) + " " + call);
            const int count = sweep(input, whole, std::strerror(cause), [&, call = call, cause = cause](int step) {
                return failing(call, step, cause, input);
            });
            EXPECT_TRUE(count > 0 || (std::string(call) == "lseek" && !seeks)) << "nothing failed while it was saved";
        }
    }
}

TEST_F(FailingDiskTest, NoDescriptorsLeft)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers read the program's own map by a descriptor, and report false types without one";
#endif
    const std::string input = folder / "clip.mp4";
    fs::copy_file(medium("h264.mp4"), input);
    ASSERT_EQ(render(input).status, 0);
    const std::string whole = bytesOf(movie);
    const int count = sweep(input, whole, std::strerror(EMFILE),
                            [](int step) { return Limits{.openFiles = static_cast<rlim_t>(7 + step)}; });
    EXPECT_GT(count, 0) << "nothing failed while it was saved";
}

} // namespace
} // namespace app_test
