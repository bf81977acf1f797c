// The panel: facts of the selected file, the small player, keys.

#include "media/media_list_harness.h"

#include "volume/frmVolume.h"

namespace logic_test {
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
    /// Button, slider's place and length, timer; where the player stands in what it has loaded.
    std::string player()
    {
        return form.cmdPlay.Picture.get() + " " + std::to_string(form.sldFilePreview.Value()) + "/"
               + std::to_string(form.sldFilePreview.Max()) + (form.tmFilePreview.Enabled ? " ticking" : "")
               + (form.FilePlaying ? " playing" : "") + (form.cmdPlay.Visible ? "" : " no button")
               + (form.sldFilePreview.Visible ? "" : " no slider") + (heldPlayer.isPlaying ? ": plays " : ": ")
               + std::to_string(playedMs()) + " of " + std::to_string(loadedMs());
    }

    forms::FrmMediaList& form = forms::frmMediaList;
};

TEST_F(PanelTest, Selecting)
{
    EXPECT_EQ(player(), "STOP 0/100: 0 of 0");
    open({"h264.mp4", "cbr.mp3", "still.bmp"});
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
        {1, "PLAY 0/5000: 0 of 5000",
         "File name=h264.mp4 Path=h264.mp4 Size=" + size("h264.mp4") + when + "MP4 Streams=2"},
        {2, "PLAY 0/5017: 0 of 5017",
         "File name=cbr.mp3 Path=cbr.mp3 Size=" + size("cbr.mp3") + when + "MP3 Streams=1"},
        {3, "PLAY 0/5000 no button no slider: 0 of 5000",
         "File name=still.bmp Path=still.bmp Size=" + size("still.bmp") + when + "BMP Streams=1"},
        {1, "PLAY 0/5000: 0 of 5000",
         "File name=h264.mp4 Path=h264.mp4 Size=" + size("h264.mp4") + when + "MP4 Streams=2"},
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
    engine::check(smallPlayer->Close());
    state::InSelectionUpdate = true;
    click(1);
    EXPECT_EQ(loadedMs(), 0);
    state::InSelectionUpdate = false;
    frmMediaList::lvwMediaList_KeyDown(37);
    EXPECT_EQ(loadedMs(), 0);
    frmMediaList::lvwMediaList_KeyDown(40);
    EXPECT_EQ(loadedMs(), 5000);
    EXPECT_FALSE(state::InSelectionUpdate);
    frmMediaList::OnLvwMediaListDblClick();
    EXPECT_EQ(platform.openedWithDesktop, std::vector{media("still.bmp")});
}

TEST_F(PanelTest, RowsThatAFilterHidesLoseTheirSelection)
{
    open({"h264.mp4", "cbr.mp3", "still.bmp"});
    const struct {
        std::initializer_list<std::int32_t> selected; // the last one has the focus
        std::vector<std::int32_t> hidden;
        const char* rows;
        int clicks;
    } cases[] = {{{1, 2}, {3}, "h264.mp4* cbr.mp3*< still.bmp", 0},
                 {{1, 2}, {2, 3}, "h264.mp4*< cbr.mp3 still.bmp", 1},
                 {{2, 1}, {2}, "h264.mp4*< cbr.mp3 still.bmp", 1},
                 {{1, 2, 3}, {1, 2, 3}, "h264.mp4 cbr.mp3 still.bmp", 1}};
    for (const auto& [selected, hidden, expected, clicks] : cases) {
        select(selected);
        frmMediaList::lvwMediaList_Click();
        const std::int32_t before = form.picPreviewSmallCleared;
        frmMediaList::txtFilter_Change(hidden);
        EXPECT_EQ(rows(), expected);
        EXPECT_EQ(form.picPreviewSmallCleared - before, clicks) << expected;
    }
    EXPECT_EQ(form.lblFileDisplay.Caption.get(), "");
    EXPECT_EQ(loadedMs(), 0);
    form.txtFilter.Text = std::string("mp");
    open({"still.png"});
    EXPECT_EQ(form.txtFilter.Text.get(), "");
    form.txtFilter.Text = std::string("mp");
    moduleTarnwick::CloseAllMediaFiles();
    EXPECT_EQ(form.txtFilter.Text.get(), "");
}

TEST_F(PanelTest, AFileThatHasGone)
{
    const std::string path = copied("h264.mp4", "going.avi");
    moduleTarnwick::OpenDroppedFiles({media("cbr.mp3"), path});
    click(1);
    frmMediaList::cmdPlay_Click();
    fs::remove(path);
    click(2);
    EXPECT_EQ(takeMessages(), "[The selected file is missing.]");
    EXPECT_EQ(facts(), "File name=going.avi Path=going.avi Size= Created On= File type= Streams=");
    EXPECT_EQ(player(), "PLAY 0/5017: 0 of 0") << "the other file does not stay in the player";
    EXPECT_EQ(rows(), "cbr.mp3 going.avi*<");
}

TEST_F(PanelTest, PlayingInSteps)
{
    open({"h264.mp4", "still.bmp"});
    click(1);
    engine::Bool16 ok = engine::kFalse;
    const auto scrollTo = [&](std::int32_t value) {
        form.sldFilePreview.SetValue(value);
        frmMediaList::sldFilePreview_Scroll();
    };
    const auto tickAt = [&](std::int32_t at) {
        engine::check(smallPlayer->Seek(at, ok));
        form.tmFilePreview.tick();
    };
    struct Step {
        const char* what;
        std::function<void()> act;
        const char* after;
    };
    const Step steps[] = {
        {"play", [] { frmMediaList::cmdPlay_Click(); }, "STOP 0/5000 ticking playing: plays 0 of 5000"},
        {"tick", [&] { tickAt(100); }, "STOP 100/5000 ticking playing: plays 100 of 5000"},
        {"Enter while it plays", [] { frmMediaList::Form_KeyDown(13); },
         "STOP 100/5000 ticking playing: plays 100 of 5000"},
        {"scroll", [&] { scrollTo(3000); }, "STOP 3000/5000 ticking playing: plays 3000 of 5000"},
        {"stop", [] { frmMediaList::cmdPlay_Click(); }, "PLAY 3000/5000: 3000 of 5000"},
        {"Space while it stands", [] { frmMediaList::Form_KeyDown(32); },
         "STOP 3000/5000 ticking playing: plays 3000 of 5000"},
        {"Space", [] { frmMediaList::Form_KeyDown(32); }, "PLAY 3000/5000: 3000 of 5000"},
        {"Enter", [] { frmMediaList::Form_KeyDown(13); }, "STOP 3000/5000 ticking playing: plays 3000 of 5000"},
        {"Space", [] { frmMediaList::Form_KeyDown(32); }, "PLAY 3000/5000: 3000 of 5000"},
        {"play on", [] { frmMediaList::OnCmdPlayClick(); }, "STOP 3000/5000 ticking playing: plays 3000 of 5000"},
        {"the end is reached", [&] { tickAt(5000); }, "STOP 5000/5000 ticking playing: plays 5000 of 5000"},
        {"the tick behind it", [&] { tickAt(5000); }, "PLAY 0/5000: 0 of 5000"},
        {"nothing to play",
         [&] {
             engine::check(smallPlayer->Close());
             frmMediaList::cmdPlay_Click();
         },
         "PLAY 0/5000: 0 of 0"},
    };
    for (const Step& step : steps) {
        step.act();
        EXPECT_EQ(player(), step.after) << step.what;
    }
    // A still has no button for Enter to press.
    click(2);
    frmMediaList::Form_KeyDown(13);
    EXPECT_EQ(player(), "PLAY 0/5000 no button no slider: 0 of 5000");
    frmMediaList::Unload();
    EXPECT_EQ(loadedMs(), 0);
}

TEST_F(PanelTest, ThePictureIsPlacedAtTheLoadAndWithItsFrame)
{
    int& placed = engineCalls.counts["SetVideoWindow"];
    open({"h264.mp4"});
    click(1);
    const int before = placed;
    EXPECT_GT(before, 0);
    frmMediaList::picPreviewSmall_Resize();
    EXPECT_EQ(placed, before + 1);
    engine::check(smallPlayer->Close());
    frmMediaList::picPreviewSmall_Resize();
    EXPECT_EQ(placed, before + 1) << "there is nothing to place";
}

TEST_F(PanelTest, FailuresOfThePlayerAreReported)
{
    expectsErrors = true;
    open({"h264.mp4"});
    engineCalls.answer = [](const std::string& operation) {
        return operation.starts_with("FilePreviewInterface::") ? std::optional(engine::kFailed) : std::nullopt;
    };
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
} // namespace logic_test
