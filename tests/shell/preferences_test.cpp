// The dialogue of the preferences: what becomes a setting, and when.

#include "shell/shell_harness.h"

#include "core/forms/frmPreferences.h"
#include "shell/file_commands.h"
#include "shell/frmPreferences.h"

namespace logic_test {
namespace {

class PreferencesTest : public ShellTest {
protected:
    void TearDown() override
    {
        frmPreferences::showDialogue = frmPreferences::closeDialogue = nullptr;
        ShellTest::TearDown();
    }
    void inDialogue(const std::function<void()>& deeds)
    {
        isOpen = true;
        frmPreferences::closeDialogue = [this] { isOpen = false; };
        frmPreferences::showDialogue = deeds;
        mdiTarnwick::mnuToolsOptions_Click();
    }
    std::string stored(const std::string& key) { return platform.settings["Quillmont 1.1/" + key]; }

    forms::FrmPreferences& dialogue = forms::frmPreferences;
    bool isOpen = false;
};

TEST_F(PreferencesTest, OnlyOkAndApplyStore)
{
    state::WorkingFolder = "/of/the/project";
    platform.settings["Quillmont 1.1/Working DIR/Path"] = platform.folder;
    platform.settings["Quillmont 1.1/Save Options/FPS"] = "24";
    inDialogue([&] {
        EXPECT_FALSE(dialogue.cmdApply.Enabled);
        EXPECT_EQ(dialogue.Values.FrameRate.lbl.get(), "24");
        platform.chosenColours = {"0000FF"};
        frmPreferences::cmdVideo_Click();
        frmPreferences::cmdAudio_Click(); // cancelled
        EXPECT_EQ(dialogue.lblVideoColor.get(), 0xFF);
        EXPECT_EQ(dialogue.lblAudioColor.get(), 0x80FFFF);
        EXPECT_TRUE(dialogue.cmdApply.Enabled);
        frmPreferences::cmdCancel_Click();
    });
    EXPECT_EQ(state::WorkingFolder, "/of/the/project");
    EXPECT_EQ(state::VideoBarFill, 0xFFFF80);
    EXPECT_FALSE(isOpen);
    inDialogue([&] {
        EXPECT_EQ(dialogue.lblVideoColor.get(), 0xFFFF80) << "as it is stored";
        dialogue.Values.FrameRate.sld.SetValue(12);
        platform.chosenColours = {"0000FF"};
        frmPreferences::cmdVideo_Click();
        chooseText(dialogue.cboVideoCompressorST, "Motion JPEG");
        EXPECT_TRUE(dialogue.Values.Quality.sld.Enabled);
        frmPreferences::cmdApply_Click();
        EXPECT_FALSE(dialogue.cmdApply.Enabled);
        EXPECT_TRUE(isOpen);
        EXPECT_EQ(state::VideoBarFill, 0xFF);
        frmPreferences::cmdDefaultSO_Click();
        EXPECT_EQ(dialogue.Values.FrameRate.sld.Value(), 15);
        EXPECT_TRUE(dialogue.cmdApply.Enabled);
        frmPreferences::cmdCancel_Click();
    });
    EXPECT_EQ(stored("Save Options/FPS") + " " + stored("Save Options/Video Compressor"), "12 Motion JPEG");
    inDialogue([&] {
        frmPreferences::cmdDefault_Click();
        dialogue.txtPath.Text = platform.folder;
        dialogue.chkDoNotShowTutorial.Value = std::int16_t{1};
        frmPreferences::cmdOk_Click();
    });
    EXPECT_FALSE(isOpen);
    EXPECT_EQ(stored("Color Settings/VideoBarColor") + " " + stored("Save Options/Tutorial"), "16777088 1");
}

TEST_F(PreferencesTest, AFolderThatCannotBeUsedIsSaid)
{
    inDialogue([&] {
        for (const std::string& folder : {std::string("/nowhere"), std::string("relative"), std::string()}) {
            dialogue.txtPath.Text = folder;
            frmPreferences::cmdOk_Click();
            EXPECT_TRUE(isOpen) << folder;
        }
        dialogue.txtPath.Text = platform.folder;
        platform.isVolumeSilent = true;
        frmPreferences::cmdApply_Click();
        EXPECT_TRUE(dialogue.cmdApply.Enabled) << "a disk that has gone is not touched";
        platform.isVolumeSilent = false;
        platform.pickedFolders = {platform.folder + "/"};
        frmPreferences::cmdBrowse_Click();
        EXPECT_EQ(dialogue.txtPath.Text.get(), platform.folder);
        frmPreferences::cmdOk_Click();
    });
    EXPECT_EQ(platform.messages.size(), 4u);
    EXPECT_EQ(state::WorkingFolder, platform.folder);
}

TEST_F(PreferencesTest, ProfilesBySettingAndFromTheList)
{
    state::WorkingFolder = platform.folder;
    inDialogue([&] {
        EXPECT_EQ(dialogue.Video.cboSetting.ListIndex.get(), 1);
        dialogue.Video.cboSetting.ListIndex = 0;
        const std::string low = "Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)";
        EXPECT_EQ(chosenText(dialogue.Video.cboProfile), low);
        EXPECT_FALSE(dialogue.Video.txtProfile.get().empty());
        chooseText(dialogue.Video.cboProfile, "Video for broadband PAL (700 Kbps)");
        EXPECT_EQ(dialogue.Video.cboSetting.ListIndex.get(), -1);
        frmPreferences::cmdAudioDefault_Click();
        dialogue.txtPath.Text = platform.folder;
        frmPreferences::cmdOk_Click();
    });
    EXPECT_EQ(stored("Save Options/Video Profile"), "Video for broadband PAL (700 Kbps)");
    EXPECT_EQ(stored("Save Options/Audio Profile"), "Audio for CD-quality (96 Kbps stereo)");
}

} // namespace
} // namespace logic_test
