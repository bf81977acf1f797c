// A save from the window: what comes into the movie, how it ends, and what becomes of the file that was there.

#include "export/export_harness.h"

#include "engine/ITWSave.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/copied_frames.h"
#include "support/movie_reader.h"

#include <sys/stat.h>

namespace logic_test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class RunTest : public ExportTest {
protected:
    /// Two seconds of a clip with sound, under an effect.
    void film()
    {
        open({"h264.mp4"});
        laid.streams = {{'x', state::StreamCollection.Item(1)}, {'y', state::StreamCollection.Item(2)}};
        lay("V x0-2000 E 500-1000 A y0-2000");
    }
    /// Saves under that name, by default as the dialogue opens.
    void saveAs(
        const std::string& name, const std::function<void()>& ahead = [] {}, int ticks = kEnoughTicks)
    {
        inDialogue([&] {
            dialogue.txtSaveFileName.Text = path(name);
            ahead();
            save(ticks);
        });
    }
    std::string files() const
    {
        std::string all;
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(platform.folder)) {
            if (entry.path().extension() != ".asr") {
                names.insert(entry.path().filename().string());
            }
        }
        for (const std::string& name : names) {
            all += (all.empty() ? "" : " ") + name;
        }
        return all;
    }
};

TEST_F(RunTest, WhatWasChosenComesIntoTheMovie)
{
    film();
    saveAs("all.avi");
    EXPECT_EQ(outcome, "&Done Save Complete");
    EXPECT_EQ(run.pbr.Value(), 100);
    EXPECT_FALSE(dialogue.SaveCancelled);
    EXPECT_EQ(platform.openedWithDesktop, std::vector<std::string>{path("all.avi")});
    EXPECT_EQ(platform.awake.lock(), nullptr) << "the machine may sleep again";
    const auto all = testmedia::readMovie(path("all.avi"));
    EXPECT_EQ(all.frames.size(), 30u);
    EXPECT_TRUE(all.soundShift(0, 0.5));

    saveAs("rows.avi", [&] {
        choose({"Audio 1"}); // of a row of effects between them none is counted
    });
    const auto sound = testmedia::readMovie(path("rows.avi"));
    EXPECT_TRUE(sound.videoCodec.empty() && sound.soundShift(0, 0.5));

    showSelection(500, 1500);
    saveAs("range.avi");
    EXPECT_EQ(testmedia::readMovie(path("range.avi")).frames.size(), 15u);
    moduleTimeline::ShowSelSliders(false);
    moduleTimeline::ShowStartSelSlider(true);
    saveAs("whole.avi", [&] { choose({"Video"}); });
    EXPECT_EQ(testmedia::readMovie(path("whole.avi")).frames.size(), 30u) << "one slider is no range";
}

TEST_F(RunTest, WhatNothingIsDoneToIsCopiedUnlessAnotherQualityIsAskedFor)
{
    const std::string kSaveOptions = "Quillmont 1.1/Save Options/";
    platform.settings[kSaveOptions + "Video Compressor"] = "Motion JPEG";
    platform.settings[kSaveOptions + "FPS"] = "20";
    film();
    saveAs("source.avi");
    EXPECT_EQ(run.lblFramesCopied.get(), "");
    open({path("source.avi").c_str()});
    laid.streams['x'] = state::StreamCollection.Item(3);
    lay("V x0-1000 A y0-1200");
    const auto advanced = [&](const std::string& deeds) {
        frmAdvancedSaveOptions::showDialogue = [&] {
            Slider& quality = options.Values.Quality.sld;
            auto& box = options.chkCopyUnchanged.Value;
            for (const char deed : deeds) {
                deed == 'm'   ? quality.SetValue(quality.Value() == 75 ? 40 : 75)
                : deed == 'c' ? void(box = static_cast<std::int16_t>(1 - box))
                : deed == 'o' ? frmAdvancedSaveOptions::cmdOK_Click()
                              : frmAdvancedSaveOptions::cmdCancel_Click();
            }
        };
        frmExportTimeline::cmdAdvanced_Click();
    };
    const struct {
        const char* quality;
        const char* fps;
        std::vector<std::string> openings; // (m)ove the quality, (c)lick the box, (o)K, cancel (x)
        bool copies;
    } cases[] = {{"75", "20", {}, true},          {"-1", "-1", {"o"}, true}, // the rate is the clip's
                 {"x", "20", {"o"}, true},        {"40", "20", {"o"}, false},      {"40", "20", {"co"}, true},
                 {"75", "20", {"mo"}, false},     {"75", "20", {"mmo"}, false},    {"75", "20", {"mco"}, true},
                 {"75", "20", {"mx", "o"}, true}, {"75", "20", {"co", "o"}, false}};
    const std::string all = "20 of 24 frames copied unchanged";
    for (const auto& [quality, fps, openings, copies] : cases) {
        SCOPED_TRACE(std::string(quality) + (openings.empty() ? "" : " " + openings.front()));
        platform.settings[kSaveOptions + "Quality"] = quality;
        platform.settings[kSaveOptions + "FPS"] = fps;
        saveAs("film.avi", [&, &each = openings] { std::ranges::for_each(each, advanced); });
        EXPECT_EQ(outcome, "&Done Save Complete");
        EXPECT_EQ(run.lblFramesCopied.get(), copies ? all : "");
    }
    expectsErrors = true;
    platform.settings[kSaveOptions + "Quality"] = "75";
    {
        constexpr rlim_t kRoom = 100'000;
        const testmedia::FullDisk full(kRoom);
        saveAs("film.avi");
    }
    EXPECT_TRUE(outcome.starts_with("&Cancel Saved: ")) << outcome;
    EXPECT_TRUE(run.lblFramesCopied.get().ends_with(" of 24 frames copied unchanged")) << "while it is under way";
    EXPECT_EQ(exporting::copiedText(1'142, 1'234'567), "1,142 of 1,234,567 frames copied unchanged");
}

TEST_F(RunTest, TextsGoIntoTheMovieThatCanHaveThem)
{
    film();
    options.Title = "A day";
    options.Description = "by the sea";
    saveAs("film.avi");
    EXPECT_EQ(engineCalls.counts["SetTitle"] + engineCalls.counts["SetDescription"], 2);
    EXPECT_EQ(engineCalls.counts["SetRating"] + engineCalls.counts["SetAuthor"], 0) << "blank";
    EXPECT_NE(bytesOf(path("film.avi")).find("A day"), std::string::npos);
    expectsErrors = true;
    engineCalls.failCall({"SaveMetadata"});
    saveAs("other.avi");
    EXPECT_EQ(outcome, "&Done Save Complete");
    EXPECT_NE(run.lblFailure.get().find("kept without its title"), std::string::npos);
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(RunTest, CancelKeepsTheDialogueAndItsName)
{
    film();
    saveAs(
        "film.avi", [] {}, 0);
    EXPECT_EQ(outcome, "&Cancel ");
    EXPECT_TRUE(dialogue.SaveCancelled);
    EXPECT_TRUE(platform.openedWithDesktop.empty());
    EXPECT_EQ(dialogue.txtSaveFileName.Text.get(), path("film.avi"));
    saveAs("film.avi", [&] { run.chkPreviewWhenDone.Value = std::int16_t{1}; });
    EXPECT_EQ(outcome, "&Done Save Complete");
}

TEST_F(RunTest, PreviewWhenDoneIsLeftOutOrSaysThatItCannot)
{
    film();
    frmProgressBar::showDialogue = nullptr;
    inDialogue([&] {
        dialogue.txtSaveFileName.Text = path("film.avi");
        frmProgressBar::showDialogue = [&] {
            run.chkPreviewWhenDone.Value = std::int16_t{0};
            for (int i = 0; i < 600 && run.cmdCancel.get() != "&Done"; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                run.tmSave.tick();
            }
            frmProgressBar::cmdCancel_Click();
        };
        frmExportTimeline::cmdOK_Click();
    });
    EXPECT_TRUE(platform.openedWithDesktop.empty());
    platform.opensWithDesktop = false;
    expectsErrors = true;
    saveAs("other.avi");
    EXPECT_EQ(window.sbr.Panel(1).get(), "There is no program that opens " + path("other.avi") + ".");
}

TEST_F(RunTest, TheDiskIsWatched)
{
    film();
    const struct {
        std::optional<std::int64_t> free;
        bool isSilent;
        bool aborts;
    } cases[] = {{5'242'880, false, true}, {5'242'881, false, false}, {std::nullopt, false, true}, {0, true, false}};
    for (const auto& [free, isSilent, aborts] : cases) {
        SCOPED_TRACE(free.value_or(-1));
        platform.messages.clear();
        inDialogue([&, free = free, isSilent = isSilent, aborts = aborts] {
            dialogue.txtSaveFileName.Text = path("film" + std::to_string(free.value_or(-1)) + ".avi");
            frmProgressBar::showDialogue = [&] {
                platform.freeBytes = free;
                platform.isVolumeSilent = isSilent;
                engineCalls.answer = [](const std::string& operation) -> std::optional<engine::Status> {
                    return operation.ends_with("GetSaveState") ? std::optional(engine::kDone) : std::nullopt;
                };
                run.tmSave.tick();
                engineCalls.answer = nullptr;
                EXPECT_EQ(run.lblFramesSaved.get() == "Save Aborted", aborts);
                EXPECT_EQ(run.tmSave.Enabled.get(), !aborts);
                frmProgressBar::cmdCancel_Click();
            };
            frmExportTimeline::cmdOK_Click();
        });
        platform.freeBytes = std::int64_t{1} << 40;
        platform.isVolumeSilent = false;
        EXPECT_EQ(lastMessage(), aborts ? "Insufficient disk space." : "");
    }
}

TEST_F(RunTest, AWriterThatFailsIsToldAndNeverComplete)
{
    film();
    expectsErrors = true;
    {
        constexpr rlim_t kRoom = 100'000;
        const testmedia::FullDisk full(kRoom);
        engineCalls.answer = [&](const std::string&) -> std::optional<engine::Status> {
            if (run.lblFailure.get().empty()) {
                run.lblTimeLeft = std::string("0:01:05 left");
            }
            return std::nullopt;
        };
        saveAs("film.avi");
    }
    EXPECT_TRUE(outcome.starts_with("&Cancel Saved: ")) << outcome;
    EXPECT_NE(run.lblFailure.get().find(path("film.avi")), std::string::npos) << run.lblFailure.get();
    EXPECT_EQ(window.sbr.Panel(1).get(), run.lblFailure.get());
    EXPECT_EQ(run.lblTimeLeft.get(), "") << "nothing is left to come";
    EXPECT_TRUE(platform.messages.empty()) << lastMessage();
    EXPECT_NE(bytesOf(platform.folder + "/ErrLog.asr").find("Form_Load"), std::string::npos);

    inDialogue([&] {
        frmProgressBar::showDialogue = [&] {
            run.lblTimeLeft = run.lblSize = std::string("as it looked so far");
            engineCalls.failCall({"GetSaveState"});
            run.tmSave.tick();
            EXPECT_EQ(run.lblTimeLeft.get() + run.lblSize.get(), "") << "there is nothing to expect any more";
            frmProgressBar::cmdCancel_Click();
        };
        frmExportTimeline::cmdOK_Click();
    });
}

TEST_F(RunTest, AMovieThatIsGoneFromItsNameIsNeverComplete)
{
    film();
    expectsErrors = true;
    options.Title = "A day";
    engineCalls.answer = [&](const std::string& operation) -> std::optional<engine::Status> {
        if (operation.ends_with("StartSave")) { // another program's turn
            fs::rename(path("film.avi"), path("moved.avi"));
            fs::copy_file(media("mjpeg.avi"), path("film.avi"));
        }
        return std::nullopt;
    };
    saveAs("film.avi");
    EXPECT_TRUE(outcome.starts_with("&Cancel Saved: ")) << outcome;
    EXPECT_NE(run.lblFailure.get().find("was moved, removed or replaced"), std::string::npos) << run.lblFailure.get();
    EXPECT_EQ(bytesOf(path("film.avi")), bytesOf(media("mjpeg.avi"))) << "the texts are not for it";
}

TEST_F(RunTest, ASaveThatCannotBeginLeavesTheOldFile)
{
    film();
    expectsErrors = true;
    std::optional<testmedia::FullDisk> full;
    const std::string refused = "Error Saving Timeline. Please select a different ";
    const struct {
        const char* what;
        std::string name;
        std::function<void()> ahead;
        std::string message;
    } cases[] = {
        {"compressor", "old.avi", [&] { engineCalls.failCall({"PrepareAviFile"}, 1, engine::kDone); },
         refused + "compressor and try again."},
        {"profile", "old.wmv",
         [&] {
             frmExportTimeline::optWMF_Click();
             engineCalls.failCall({"PrepareWindowsMediaFile"}, 1, engine::kDone);
         },
         refused + "profile and try again."},
        {"engine", "old.avi", [&] { engineCalls.failCall({"PrepareAviFile"}, 1, engine::kDiskFull); }, ""},
        {"start", "old.avi", [&] { engineCalls.failCall({"StartSave"}); }, ""},
        {"folder", "nowhere/film.avi", [] {}, ""},
        {"read-only", "readonly.avi", [] {}, ""},
        {"full", "new.avi", [&] { full.emplace(100); }, ""},
        {"silent", "old.avi", // also where the path would be refused for its file
         [&] {
             platform.isVolumeSilent = true;
             dialogue.txtSaveFileName.Text = media("h264.mp4");
         },
         "The folder of \"" + media("h264.mp4") + "\" does not answer. Choose another one."},
    };
    for (const char* const name : {"old.avi", "old.wmv", "readonly.avi"}) {
        writeBytes(path(name), "old");
    }
    ::chmod(path("readonly.avi").c_str(), 0444);
    const std::string before = files();
    for (const auto& [what, name, ahead, message] : cases) {
        SCOPED_TRACE(what);
        platform.messages.clear();
        saveAs(name, ahead);
        full.reset();
        platform.isVolumeSilent = false;
        EXPECT_EQ(outcome, "");
        EXPECT_TRUE(dialogue.SaveCancelled);
        ASSERT_EQ(platform.messages.size(), 1u);
        EXPECT_TRUE(lastMessage() == message || (message.empty() && !lastMessage().starts_with(refused)))
            << lastMessage();
        for (const char* const old : {"old.avi", "old.wmv", "readonly.avi"}) {
            EXPECT_EQ(bytesOf(path(old)), "old") << old;
        }
    }
    EXPECT_TRUE(platform.trashed.empty());
    EXPECT_EQ(files(), before);

    saveAs("odd.avi", [&] { // as a size of one's own gets by the lock
        engine::check(engine::EngineAs<engine::ITWSave>()->SetVideoSize(101, 76));
        engine::check(engine::EngineAs<engine::ITWSave>()->SetVideoCompressor("H.264"));
    });
    EXPECT_TRUE(window.sbr.Panel(1).get().ends_with("Try an even width and height.")) << window.sbr.Panel(1).get();
}

TEST_F(RunTest, NothingIsOverwrittenUnasked)
{
    film();
    writeBytes(path("film.avi"), "old");
    saveAs("film.avi");
    EXPECT_EQ(platform.trashed, std::vector<std::string>{"film (old).avi"});
    EXPECT_EQ(files(), "film.avi");

    platform.hasTrash = false;
    writeBytes(path("film.avi"), "old");
    writeBytes(path("film (old).avi"), "older");
    saveAs("film.avi");
    EXPECT_EQ(files(), "film (old 2).avi film (old).avi film.avi");
    EXPECT_EQ(bytesOf(path("film (old 2).avi")), "old");

    writeBytes(path("real.avi"), "old");
    fs::create_symlink("real.avi", path("link.avi"));
    saveAs("link.avi"); // a link stays one, and what it leads to is kept
    EXPECT_TRUE(fs::is_symlink(path("link.avi")));
    EXPECT_EQ(files(), "film (old 2).avi film (old).avi film.avi link.avi real (old).avi real.avi");
    EXPECT_EQ(bytesOf(path("real (old).avi")), "old");
    const std::string longest(251, 'x'); // as long as names may be
    writeBytes(path(longest + ".avi"), "old");
    saveAs(longest + ".avi");
    const std::string kept = longest.substr(6) + " (old).avi";
    EXPECT_EQ(bytesOf(path(kept)), "old");
    for (const std::string& name : {longest + ".avi", kept, "link.avi"s, "real.avi"s, "real (old).avi"s}) {
        fs::remove(path(name));
    }

    inDialogue([&] { // asked about, and unchanged since: also after a compressor that refuses
        platform.savedFiles = {path("film.avi")};
        frmExportTimeline::cmdBrowse_Click();
        engineCalls.failCall({"PrepareAviFile"}, 1, engine::kDone);
        save();
        save();
    });
    EXPECT_EQ(outcome, "&Done Save Complete");
    EXPECT_EQ(files(), "film (old 2).avi film (old).avi film.avi");

    state::ProjectFilePath = path("film.qpj");
    for (const std::string& name : {media("h264.mp4"), path("film.qpj")}) { // what is open is no place for a movie
        inDialogue([&] {
            dialogue.txtSaveFileName.Text = name;
            save();
        });
        EXPECT_EQ(outcome, "");
        EXPECT_EQ(lastMessage(), "Unable to save to file \"" + name
                                     + "\" as it is being used by Quillmont. Please specify another filename.");
    }
}

} // namespace
} // namespace logic_test
