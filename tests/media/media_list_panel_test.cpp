// The panel: facts of the selected file, the small player, keys.

#include "media/media_list_harness.h"

#include "volume/frmVolume.h"

namespace media_list_test {
namespace {

class PanelTest : public MediaListTest {
protected:
    void SetUp() override
    {
        MediaListTest::SetUp();
        form.picPreviewSmallHandle = 77;
        form.picPreviewSmallWidth = 320;
        form.picPreviewSmallHeight = 240;
        forms::frmVolume.iVolume = 80;
    }
    /// The six facts, and the six captions before them when they stand there.
    std::string facts() const
    {
        std::string text = form.lblFile.Caption.get() + "=" + form.lblFileDisplay.Caption.get();
        for (std::size_t i = 0; i < form.lblInfo.size(); ++i) {
            text += " " + form.lblInfo[i].Caption.get() + "=" + plain(form.lblInfoDisplay[i].Caption);
        }
        return text;
    }
    void click(std::int32_t place)
    {
        select({place});
        frmMediaList::lvwMediaList_Click();
    }
    /// Button, slider's place and length, timer.
    std::string player() const
    {
        return form.cmdPlay.Picture.get() + " " + std::to_string(form.sldFilePreview.Value()) + "/"
               + std::to_string(form.sldFilePreview.Max()) + (form.tmFilePreview.Enabled ? " ticking" : "")
               + (form.FilePlaying ? " playing" : "") + (form.cmdPlay.Visible ? "" : " no button")
               + (form.sldFilePreview.Visible ? "" : " no slider") + ": " + plain(wrapped->preview.takeCalls());
    }

    forms::FrmMediaList& form = forms::frmMediaList;
};

TEST_F(PanelTest, Selecting)
{
    EXPECT_EQ(player(), "STOP 0/100: ");
    open({"mpeg4.avi", "cbr.mp3", "still.bmp"});
    struct Case {
        std::int32_t place;
        const char* player;
        std::string facts;
    };
    const auto size = [](const char* name) {
        char text[40];
        std::snprintf(text, sizeof text, "%.2f KB", static_cast<double>(fs::file_size(media(name))) / 1024);
        return std::string(text);
    };
    const std::string when = " Created On=3/4/2026 05:06:07 File type=";
    const Case cases[] = {
        {1,
         "PLAY 0/5000: SetOwnerWindow 77; ResetPlayer; OpenFile mpeg4.avi; SetVideoWindow 1 1 317 238; "
         "ShowFirstFrame; SetVolume -20",
         "File name=mpeg4.avi Path=mpeg4.avi Size=" + size("mpeg4.avi") + when + "AVI Streams=2"},
        {2, "PLAY 0/5000: SetOwnerWindow 77; ResetPlayer; OpenFile cbr.mp3; SetVolume -20",
         "File name=cbr.mp3 Path=cbr.mp3 Size=" + size("cbr.mp3") + when + "MP3 Streams=1"},
        {3,
         "PLAY 0/5000 no button no slider: SetOwnerWindow 77; ResetPlayer; OpenFile still.bmp; "
         "SetVideoWindow 1 1 317 238; ShowFirstFrame",
         "File name=still.bmp Path=still.bmp Size=" + size("still.bmp") + when + "BMP Streams=1"},
        {1,
         "PLAY 0/5000: SetOwnerWindow 77; ResetPlayer; OpenFile mpeg4.avi; SetVideoWindow 1 1 317 238; "
         "ShowFirstFrame; SetVolume -20",
         "File name=mpeg4.avi Path=mpeg4.avi Size=" + size("mpeg4.avi") + when + "AVI Streams=2"},
    };
    for (const Case& c : cases) {
        const std::int32_t cleared = form.picPreviewSmallCleared;
        form.FilePlaying = true; // whatever played before
        form.tmFilePreview.Enabled = true;
        click(c.place);
        EXPECT_EQ(player(), c.player);
        EXPECT_EQ(facts(), c.facts);
        EXPECT_GT(form.picPreviewSmallCleared, cleared);
        EXPECT_EQ(statusText(), "Selected file: \"" + list().Row(c.place).Text + "\". Total Files in Media List: 3.");
    }
    frmMediaList::ClearFileInformation();
    EXPECT_EQ(facts(), "= = = = = =");
    EXPECT_EQ(takeMessages(), "");
}

TEST_F(PanelTest, AnEmptyListAndReEntry)
{
    form.sldFilePreview.Visible = false;
    frmMediaList::lvwMediaList_Click();
    EXPECT_EQ(statusText(), "Selected file: \"\". Total Files in Media List: 0.");
    EXPECT_FALSE(form.cmdPlay.Visible);
    frmMediaList::OnLvwMediaListDblClick();
    EXPECT_TRUE(platform.openedWithDesktop.empty());

    open({"still.bmp"});
    state::InSelectionUpdate = true;
    click(1);
    EXPECT_EQ(wrapped->preview.takeCalls(), "");
    state::InSelectionUpdate = false;
    frmMediaList::lvwMediaList_KeyDown(37);
    EXPECT_EQ(wrapped->preview.takeCalls(), "");
    frmMediaList::lvwMediaList_KeyDown(40);
    EXPECT_NE(wrapped->preview.takeCalls(), "");
    EXPECT_FALSE(state::InSelectionUpdate);
    frmMediaList::OnLvwMediaListDblClick();
    EXPECT_EQ(platform.openedWithDesktop, std::vector{media("still.bmp")});
}

TEST_F(PanelTest, AFileThatHasGone)
{
    const std::string path = copied("mpeg4.avi", "going.avi");
    moduleTarnwick::OpenDroppedFiles({media("cbr.mp3"), path});
    click(1);
    frmMediaList::cmdPlay_Click();
    fs::remove(path);
    wrapped->preview.calls.clear();
    click(2);
    EXPECT_EQ(takeMessages(), "[The selected file is missing.]");
    EXPECT_EQ(facts(), "File name=going.avi Path=going.avi Size= Created On= File type= Streams=");
    EXPECT_EQ(player(), "PLAY 0/5000: ResetPlayer") << "the other file does not stay in the player";
    EXPECT_EQ(rows(), "cbr.mp3 going.avi*<");
}

TEST_F(PanelTest, PlayingInSteps)
{
    open({"mpeg4.avi", "still.bmp"});
    click(1);
    wrapped->preview.calls.clear();
    auto& position = wrapped->preview.position;
    auto& duration = wrapped->preview.duration;
    const auto scrollTo = [&](std::int32_t value) {
        form.sldFilePreview.SetValue(value);
        frmMediaList::sldFilePreview_Scroll();
    };
    const auto tickAt = [&](std::int32_t at) {
        position = at;
        form.tmFilePreview.tick();
    };
    struct Step {
        const char* what;
        std::function<void()> act;
        const char* after;
    };
    const Step steps[] = {
        {"play", [] { frmMediaList::cmdPlay_Click(); }, "STOP 0/5000 ticking playing: Play"},
        {"tick", [&] { tickAt(100); }, "STOP 100/5000 ticking playing: "},
        {"Enter while it plays", [] { frmMediaList::Form_KeyDown(13); }, "STOP 100/5000 ticking playing: "},
        {"scroll", [&] { scrollTo(3000); }, "STOP 3000/5000 ticking playing: Seek 3000"},
        {"stop", [] { frmMediaList::cmdPlay_Click(); }, "PLAY 3000/5000: Stop"},
        {"Space while it stands", [] { frmMediaList::Form_KeyDown(32); }, "PLAY 3000/5000: "},
        {"Enter", [] { frmMediaList::Form_KeyDown(13); }, "STOP 3000/5000 ticking playing: Play"},
        {"Space", [] { frmMediaList::Form_KeyDown(32); }, "PLAY 3000/5000: Stop"},
        {"play on", [] { frmMediaList::OnCmdPlayClick(); }, "STOP 3000/5000 ticking playing: Play"},
        {"the end is reached", [&] { tickAt(5000); }, "STOP 5000/5000 ticking playing: "},
        {"the tick behind it", [&] { tickAt(5000); }, "PLAY 0/5000: Stop; Rewind"},
        {"another size",
         [this] {
             form.picPreviewSmallWidth = 100;
             frmMediaList::picPreviewSmall_Resize();
         },
         "PLAY 0/5000: SetVideoWindow 1 1 97 238"},
        {"nothing to play",
         [&] {
             duration = 0;
             frmMediaList::cmdPlay_Click();
         },
         "PLAY 0/5000: Stop"},
        {"its size", [] { frmMediaList::picPreviewSmall_Resize(); }, "PLAY 0/5000: "},
        {"unload", [] { frmMediaList::Unload(); }, "PLAY 0/5000: Close"},
    };
    for (const Step& step : steps) {
        step.act();
        EXPECT_EQ(player(), step.after) << step.what;
    }
    // A still has no button for Enter to press.
    duration = 5000;
    click(2);
    wrapped->preview.calls.clear();
    frmMediaList::Form_KeyDown(13);
    EXPECT_EQ(player(), "PLAY 0/5000 no button no slider: ");
}

TEST_F(PanelTest, FailuresOfThePlayerAreReported)
{
    expectsErrors = true;
    open({"mpeg4.avi"});
    wrapped->preview.status = engine::kFailed;
    frmMediaList::tmFilePreview_Timer();
    click(1);
    EXPECT_EQ(form.lblInfoDisplay[4].Caption.get(), "2") << "the facts stand all the same";
    frmMediaList::cmdPlay_Click();
    frmMediaList::Unload();
    EXPECT_FALSE(form.FilePlaying);
    const std::string log = error_log::read();
    for (const char* const name : {"tmFilePreview_Timer*", "OnLvwMediaListClick", "cmdPlay_Click", "Form_Unload"}) {
        EXPECT_NE(log.find(name), std::string::npos) << name;
    }
}

} // namespace
} // namespace media_list_test
