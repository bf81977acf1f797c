// The dialogue that saves the timeline, and its advanced options: lists, names, numbers, profiles.

#include "export/export_harness.h"

#include "engine/ITWSave.h"
#include "export/moduleProfiles.h"

namespace logic_test {
namespace {

const std::string kSaveOptions = "Quillmont 1.1/Save Options/";

class DialogueTest : public ExportTest {
protected:
    static std::int16_t told(engine::Status (engine::ITWSave::*getter)(std::int16_t&))
    {
        std::int16_t value = 0;
        check((engine::EngineAs<engine::ITWSave>().get()->*getter)(value));
        return value;
    }
    static std::string profile(bool isVideo) { return frmAdvancedSaveOptions::presentProfile(isVideo); }
    /// Opens the advanced options, does that in them, and presses OK.
    static void inOptions(const std::function<void()>& deeds)
    {
        frmAdvancedSaveOptions::showDialogue = [&] {
            deeds();
            frmAdvancedSaveOptions::cmdOK_Click();
        };
        frmExportTimeline::cmdAdvanced_Click();
    }
};

TEST_F(DialogueTest, RowsOfTheTracks)
{
    const struct {
        const char* timeline;
        std::function<void()> ahead;
        const char* rows;
        bool isVideo;
    } cases[] = {
        {"", [] {}, "", false},
        {"V 0-1000 E 100-200 O 0-500 A 0-1000 B 0-1000", [] {}, "Video* Effect* Overlay* Audio 1* Audio 2*", true},
        {"E 100-200 B 0-1000", [] {}, "Effect* Audio 2*", true},
        {"V 0-1000 E 100-200 A 0-1000", [&] { form.chkDisableVideo[0].Value = std::int16_t{1}; },
         "Video Effect* Audio 1*", true},
        {"V 0-1000 E 100-200 A 0-1000", [&] { form.chkDisableEffect[0].Value = std::int16_t{1}; },
         "Video* Effect Audio 1*", true},
        {"A 0-1000 B 0-1000", [] {}, "Audio 1* Audio 2*", false},
    };
    for (const auto& [timeline, ahead, expected, isVideo] : cases) {
        SCOPED_TRACE(timeline);
        form.chkDisableVideo[0].Value = form.chkDisableEffect[0].Value = std::int16_t{0};
        lay(timeline);
        ahead();
        inDialogue([&, expected = std::string(expected), isVideo = isVideo] {
            EXPECT_EQ(rows(), expected);
            EXPECT_EQ(frmExportTimeline::IsVideoApplicable(), isVideo);
            EXPECT_EQ(dialogue.cmdOK.Enabled && dialogue.cmdAdvanced.Enabled, !expected.empty());
            EXPECT_EQ(dialogue.SaveStreams.size(),
                      static_cast<std::size_t>(std::ranges::count_if(
                          dialogue.lstSaveStreams.get(), [](const auto& row) { return row.Text != "Effect"; })));
        });
    }
}

TEST_F(DialogueTest, TheNameAndItsEnding)
{
    lay("V 0-1000 O 0-500 A 0-1000");
    writeBytes(path("MyMovie.avi"), "");
    writeBytes(path("MyMovie1.avi"), "");
    inDialogue([&] {
        EXPECT_EQ(dialogue.txtSaveFileName.Text.get(), path("MyMovie2.avi"));
        const auto named = [&](const std::string& name, void (*format)()) {
            dialogue.txtSaveFileName.Text = name;
            format();
            return dialogue.txtSaveFileName.Text.get();
        };
        using frmExportTimeline::optAVI_Click;
        using frmExportTimeline::optWMF_Click;
        EXPECT_EQ(named("/a/film.avi", optWMF_Click), "/a/film.wmv");
        EXPECT_EQ(named("/a/a.b.avi", optWMF_Click), "/a/a.b.wmv");
        EXPECT_EQ(named("/a.b/film", optWMF_Click), "/a.b/film");
        choose({"Audio 1"});
        EXPECT_EQ(named("/a/film.avi", optWMF_Click), "/a/film.wma");
        choose({"Overlay"});
        EXPECT_EQ(dialogue.txtSaveFileName.Text.get(), "/a/film.wmv") << "the rows decide";
        EXPECT_EQ(named("/a/film.wmv", optAVI_Click), "/a/film.avi");
        EXPECT_EQ(dialogue.lblVideoDim.get() + " " + dialogue.lblFPS.get(), "320 x 240 pixels 15");
        dialogue.txtSaveFileName.Text = std::string("  ");
        EXPECT_TRUE(!dialogue.cmdOK.Enabled && dialogue.cmdAdvanced.Enabled);
        dialogue.txtSaveFileName.Text = std::string(" film.avi ");
        EXPECT_EQ(frmExportTimeline::SaveFileName(), path("film.avi")) << "a bare name lies in the working folder";
        dialogue.txtSaveFileName.Text = std::string("movies/film.avi");
        EXPECT_EQ(frmExportTimeline::SaveFileName(), path("movies/film.avi"));
        choose({});
        EXPECT_TRUE(!dialogue.cmdOK.Enabled && !dialogue.cmdAdvanced.Enabled);
    });
}

TEST_F(DialogueTest, BrowsingAsksForTheFormatsFiles)
{
    lay("V 0-1000 A 0-1000");
    inDialogue([&] {
        platform.savedFiles = {path("chosen.avi")};
        dialogue.txtSaveFileName.Text = path("film.avi");
        frmExportTimeline::cmdBrowse_Click();
        frmExportTimeline::cmdBrowse_Click(); // cancelled
        frmExportTimeline::optWMF_Click();
        platform.savedFiles = {path("chosen.wmv")};
        frmExportTimeline::cmdBrowse_Click();
    });
    ASSERT_EQ(platform.saveRequests.size(), 3u);
    EXPECT_EQ(platform.saveRequests[0].name + " " + platform.saveRequests[0].folder, "film.avi " + platform.folder);
    EXPECT_EQ(platform.saveRequests[1].name, "chosen.avi");
    EXPECT_EQ(platform.saveRequests[2].filters[0].name + platform.saveRequests[2].defaultExtension, "WMV Filewmv");
    EXPECT_EQ(dialogue.txtSaveFileName.Text.get(), path("chosen.wmv"));
}

TEST_F(DialogueTest, TheRangeShowsWhatOneSliderSays)
{
    lay("V 0-5000");
    showSelection(1000, 2000);
    inDialogue([&] { EXPECT_EQ(dialogue.lblSaveRange.get(), "0:00:01.000 - 0:00:02.000"); });
    moduleTimeline::ShowSelSliders(false);
    moduleTimeline::ShowStartSelSlider(true);
    inDialogue([&] { EXPECT_EQ(dialogue.lblSaveRange.get(), "0:00:01.000 - 0:00:05.000"); });
}

TEST_F(DialogueTest, SettingsGoToTheEngineAtEachOpening)
{
    lay("V 0-1000");
    state::ProjectWidth = 1280;
    state::ProjectHeight = 720;
    inDialogue([&] { EXPECT_EQ(dialogue.lblVideoDim.get(), "1280 x 720 pixels") << "the frame of the film"; });
    platform.settings[kSaveOptions + "FPS"] = "25";
    platform.settings[kSaveOptions + "Quality"] = "x";
    platform.settings[kSaveOptions + "Video Dimension"] = "640 x 360";
    platform.settings[kSaveOptions + "Video Compressor"] = "Motion JPEG";
    platform.settings[kSaveOptions + "Audio Profile"] = "Audio for near-CD quality (64 Kbps stereo)";
    inDialogue([&] {
        EXPECT_EQ(told(&engine::ITWSave::GetFrameRate), 25);
        EXPECT_EQ(told(&engine::ITWSave::GetQuality), 75);
        EXPECT_EQ(told(&engine::ITWSave::GetVideoWidth), 640);
        EXPECT_EQ(options.VideoCompressorName, "Motion JPEG");
        EXPECT_EQ(profile(false), "Audio for CD-quality (96 Kbps stereo)") << "kept in another section";
        inOptions([&] {
            EXPECT_EQ(chosenText(options.VideoDimension.cboDimension), "Custom");
            EXPECT_EQ(options.VideoDimension.txtWidth.Text.get(), "640");
            EXPECT_EQ(options.Values.FrameRate.lbl.get(), "25");
            EXPECT_TRUE(options.Values.Quality.sld.Enabled);
            options.Values.FrameRate.chk.Value = std::int16_t{0};
            options.Values.Quality.sld.SetValue(40);
            chooseText(options.VideoDimension.cboDimension, "160 x 120");
            options.txtTitle.Text = std::string("  A day  ");
        });
        EXPECT_EQ(told(&engine::ITWSave::GetFrameRate), -1);
        EXPECT_EQ(dialogue.lblFPS.get(), "as the clips");
        EXPECT_EQ(told(&engine::ITWSave::GetQuality), 40);
        EXPECT_EQ(dialogue.lblVideoDim.get(), "160 x 120 pixels");
        EXPECT_EQ(frmAdvancedSaveOptions::GetTitle(), "A day");
    });
    inDialogue([&] { EXPECT_EQ(told(&engine::ITWSave::GetFrameRate), 25) << "it lasted for one opening"; });
    EXPECT_EQ(frmAdvancedSaveOptions::GetTitle(), "A day") << "the texts stay";
    platform.settings[kSaveOptions + "Video Dimension"] = "3840 x 2160"; // of a clip that is not here
    inDialogue([&] {
        inOptions([&] { EXPECT_EQ(chosenText(options.VideoDimension.cboDimension), "3840 x 2160"); });
        EXPECT_EQ(dialogue.lblVideoDim.get(), "3840 x 2160 pixels");
    });
    platform.settings[kSaveOptions + "Video Dimension"] = "wide";
    state::ProjectWidth = 1280;
    inDialogue([&] { EXPECT_EQ(dialogue.lblVideoDim.get(), "320 x 240 pixels"); });
}

TEST_F(DialogueTest, ACompressorIsChosenAtOnceAndKnowsItsNumbers)
{
    lay("V 0-1000");
    inDialogue([&] {
        frmAdvancedSaveOptions::showDialogue = [&] {
            EXPECT_EQ(options.cboVideoCompressor.List.get().back(), "Uncompressed");
            EXPECT_FALSE(options.Values.Quality.chk.Enabled || options.Values.Quality.sld.Enabled);
            EXPECT_TRUE(options.Values.FrameRate.sld.Enabled);
            chooseText(options.cboVideoCompressor, "H.264");
            EXPECT_TRUE(options.Values.Quality.sld.Enabled && options.Values.KeyFrameRate.sld.Enabled);
            options.Values.Quality.chk.Value = std::int16_t{0};
            EXPECT_FALSE(options.Values.Quality.sld.Enabled || options.Values.Quality.lblEnabled);
            frmAdvancedSaveOptions::cmdCancel_Click();
        };
        frmExportTimeline::cmdAdvanced_Click();
        std::int32_t index = -1;
        check(engine::EngineAs<engine::ITWSave>()->GetVideoCompressorIndex(index));
        EXPECT_GE(index, 0) << "what was chosen is there, cancelled or not";
    });
}

TEST_F(DialogueTest, SizesOfOnesOwn)
{
    lay("V 0-1000");
    inDialogue([&] {
        inOptions([&] {
            DimensionBoxes& size = options.VideoDimension;
            EXPECT_FALSE(size.txtWidth.Enabled);
            chooseText(size.cboDimension, "Custom");
            const auto typed = [&](TextBox& box, const char* text) {
                box.Text = std::string(text);
                return size.txtWidth.Text.get() + " " + size.txtHeight.Text.get();
            };
            EXPECT_EQ(typed(size.txtWidth, "101"), "101 75.75");
            EXPECT_EQ(typed(size.txtHeight, "300"), "400 300");
            for (const char* const wrong : {"2000", "-1", "1e9", "", "wide"}) {
                EXPECT_EQ(typed(size.txtWidth, wrong), "400 300") << wrong;
            }
            size.chkLockAspectRatio.Value = std::int16_t{0};
            EXPECT_EQ(typed(size.txtWidth, "1999"), "1999 300");
        });
        EXPECT_EQ(told(&engine::ITWSave::GetVideoWidth), 1999);
    });
}

TEST_F(DialogueTest, ProfilesBySettingAndByName)
{
    lay("V 0-1000 A 0-1000");
    inDialogue([&] {
        frmExportTimeline::optWMF_Click();
        inOptions([&] {
            forms::ProfileChoice& choice = options.Profile;
            EXPECT_EQ(options.tbs.get(), "WMF_OPTIONS");
            EXPECT_EQ(choice.cboSetting.ListIndex.get(), 1);
            EXPECT_TRUE(choice.txtProfileVisible);
            EXPECT_EQ(options.txtFrequency.get() + ", " + options.txtFrameRate.get(),
                      "22.05 KHz, 15 frames per second");
            choice.cboSetting.ListIndex = 2;
            EXPECT_EQ(choice.txtProfile.Text.get(), "Video for e-mail and dual-channel ISDN (128 Kbps)");
            choice.cboSetting.ListIndex = 3;
            EXPECT_FALSE(choice.txtProfileVisible);
            chooseText(choice.cboProfile, "Video for broadband PAL (700 Kbps)");
        });
        EXPECT_EQ(profile(true), "Video for broadband PAL (700 Kbps)");
        EXPECT_EQ(dialogue.lblFPS.get(), "25");
        choose({"Audio 1"});
        inOptions([&] {
            EXPECT_EQ(chosenText(options.Profile.cboProfile), "Audio for CD-quality (96 Kbps stereo)");
            EXPECT_EQ(std::ranges::count_if(options.Profile.cboProfile.List.get(), moduleProfiles::HasVideo), 0);
            options.Profile.cboSetting.ListIndex = 0;
        });
        EXPECT_EQ(profile(false), "Audio for near-CD quality (64 Kbps stereo)");
        EXPECT_EQ(profile(true), "Video for broadband PAL (700 Kbps)");
    });
    EXPECT_TRUE(moduleProfiles::Profiles().empty());
    EXPECT_EQ(moduleProfiles::GetIndex("nobody's"), 0);
}

} // namespace
} // namespace logic_test
