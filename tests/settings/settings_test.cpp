// Settings: defaults, what bad values become, and what is written under which key.

#include "settings/ModuleSettings.h"

#include "core/forms/frmPreferences.h"
#include "core/shared_state.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "support/scripted_platform.h"
#include "twcore/tarnwick_timeline.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace settings_test {
namespace {

using namespace ModuleSettings;

const std::string kProgram = "Quillmont 1.1/";

class SettingsTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        fillLists();
    }
    void TearDown() override { engine::Engine.reset(); }

    std::string writtenSettings() const
    {
        std::string text;
        for (const auto& [key, value] : platform.settings) {
            text += key.substr(kProgram.size()) + "=" + value + "\n";
        }
        return text;
    }
    /// What a store gives back that holds nothing but this.
    std::string readFrom(const std::string& key, const std::string& value)
    {
        platform.settings = {{kProgram + key, value}};
        LoadPreferences();
        platform.settings.clear();
        StorePreferences();
        return platform.settings[kProgram + key];
    }

    testsupport::ScriptedPlatform platform;
    forms::FrmPreferences& form = forms::frmPreferences;

private:
    /// As the dialogue has them from the engine.
    void fillLists()
    {
        form.cboVideoCompressorST.List = {"Other & \"ü\"", "Uncompressed"};
        form.cboAudioCompressorST.List = {"Uncompressed"};
        form.Video.cboProfile.List = {"Video for dial-up modems or LAN (28.8 to 100 Kbps)"};
        form.Audio.cboProfile.List = {"Audio for CD-quality (96 Kbps stereo)", "Mine"};
        dimension::reset(form.VideoDimension, {"320 x 240", "640 x 480", dimension::kCustom}, 2000);
    }
};

TEST_F(SettingsTest, AFreshStoreGivesTheDefaults)
{
    state::VideoBarFill = 1;
    SaveFrameRate = 1;
    VideoProfileName = "other";
    LoadPreferences();
    EXPECT_TRUE(platform.settings.empty()) << "reading writes nothing";

    form.txtPath.Text = std::string("/w");
    StorePreferences();
    EXPECT_EQ(writtenSettings(), "Color Settings/AudioBarColor=8454143\n"
                                 "Color Settings/EffectBarColor=8454016\n"
                                 "Color Settings/OverlayBarColor=12640511\n"
                                 "Color Settings/VideoBarColor=16777088\n"
                                 "Save Options/Audio Compressor=Uncompressed\n"
                                 "Save Options/Audio Profile=Audio for CD-quality (96 Kbps stereo)\n"
                                 "Save Options/FPS=15\n"
                                 "Save Options/Frame Frequency=15\n"
                                 "Save Options/Key Frame Rate=15\n"
                                 "Save Options/Preview=1\n"
                                 "Save Options/Quality=75\n"
                                 "Save Options/Tutorial=0\n"
                                 "Save Options/Video Compressor=Uncompressed\n"
                                 "Save Options/Video Dimension=320 x 240\n"
                                 "Save Options/Video Profile=Video for dial-up modems or LAN (28.8 to 100 Kbps)\n"
                                 "Working DIR/Path=/w\n");
}

TEST_F(SettingsTest, ABadValueIsTheDefault)
{
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"Color Settings/VideoBarColor", "255", "255"},
        {"Color Settings/VideoBarColor", "0", "0"},
        {"Color Settings/VideoBarColor", "16777216", "16777088"},
        {"Color Settings/VideoBarColor", "-1", "16777088"},
        {"Color Settings/OverlayBarColor", "pink", "12640511"},
        {"Save Options/FPS", "25", "25"},
        {"Save Options/FPS", " 25 ", "25"},
        {"Save Options/FPS", "", "15"},
        {"Save Options/FPS", "2147483648", "15"},
        {"Save Options/Quality", "12x", "75"},
        {"Save Options/Quality", "nan", "75"},
        {"Save Options/Preview", "32768", "1"},
        {"Save Options/Preview", "0", "0"},
        {"Save Options/Video Compressor", "", "Uncompressed"},
        {"Save Options/Video Compressor", "Other & \"ü\"", "Other & \"ü\""},
        {"Save Options/Video Compressor", "not here", "Uncompressed"},
        {"Save Options/Audio Profile", "Mine", "Mine"},
        {"Save Options/Video Profile", "gone", "Video for dial-up modems or LAN (28.8 to 100 Kbps)"},
        {"Save Options/Video Dimension", "640 x 480", "640 x 480"},
        {"Save Options/Video Dimension", "641 x 360", "641 x 360"},
        {"Save Options/Video Dimension", "3840 x 2160", "3840 x 2160"}};
    for (const auto& [key, value, expected] : cases) {
        EXPECT_EQ(readFrom(key, value), expected) << key << " " << value;
    }
    EXPECT_TRUE(std::filesystem::is_empty(platform.folder)) << "none of it is an error to report";
}

TEST_F(SettingsTest, NewColoursReachTheBars)
{
    platform.settings[kProgram + "Color Settings/EffectBarColor"] = "255";
    AddColorToBars();
    EXPECT_EQ(state::EffectBarFill, 255);
}

TEST_F(SettingsTest, TheWorkingFolder)
{
    platform.settings[kProgram + "Working DIR/Path"] = "/films";
    LoadRegistrySettings();
    EXPECT_EQ(state::WorkingFolder, "/films");

    // Without one the engine's, whole even where it is longer than the first buffer.
    platform.settings[kProgram + "Working DIR/Path"] = "";
    const std::string home = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
    for (const std::string& folder : {std::string("/nowhere/ü b"), "/" + std::string(3000, 'x')}) {
        setenv("HOME", folder.c_str(), 1);
        LoadRegistrySettings();
        EXPECT_EQ(state::WorkingFolder, folder);
    }
    setenv("HOME", ("/" + std::string(40000, 'x')).c_str(), 1);
    LoadRegistrySettings();
    EXPECT_EQ(state::WorkingFolder, platform.folder) << "what fits no buffer gives the program's own folder";
    setenv("HOME", home.c_str(), 1);
}

} // namespace
} // namespace settings_test
