// The pointer on the rows: hints, tool tips, its shape, and the menus that pop up.

#include "shell/shell_harness.h"

#include "hand/row_events.h"
#include "hand/row_pointer.h"
#include "media/frmMediaList_events.h"

namespace logic_test {
namespace {

class ContextMenuTest : public ShellTest {
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        window.PopupMenu = [this](forms::PopUp which) {
            poppedUp += which == forms::PopUp::kEditContext ? "edit " : "media list ";
        };
    }
    /// Names of the entries that show, without their beginning "mnuEC_" or "mnuEditContext".
    static std::string shown()
    {
        std::string all;
        for (const shell::MenuRow& row : shell::editContext().subspan(1)) {
            std::string name(row.name);
            for (const std::string prefix : {"mnuEC_", "mnuEditContext"}) {
                name.erase(0, name.starts_with(prefix) ? prefix.size() : 0);
            }
            all += row.state->Visible ? (all.empty() ? "" : " ") + name : "";
        }
        return all;
    }

    std::string poppedUp;
};

TEST_F(ContextMenuTest, EntriesByContext)
{
    using namespace frmTimeline;
    const std::string own = " sr3 TrimStart TrimEnd CloseGap SelectWithSound"; // of the bars
    // Each after the one before: what a context does not name stays as it was.
    const struct {
        std::function<void()> press;
        std::string shown;
    } cases[] = {
        {[] { picScale_MouseDown(2, 5); },
         "ZoomIn ZoomOut s34 AddtoAudio1 AddtoAudio2 s22 AddMarker RemoveMarker SetOverlayTransparency sr2 SelSliders"},
        {[] { picVideo_MouseDown(0, 2, 0, 5, 12); },
         "Cut Copy Paste Delete Crop s34 s23 StretchMode sr2 SelSliders" + own},
        {[] { picAudio_MouseDown(0, 2, 0, 5, 12); }, "Cut Copy Paste Delete Crop s34 AddtoAudio2 sr2 SelSliders" + own},
        {[] { picEffect_MouseDown(0, 2, 0, 5, 12); }, "Cut Copy Paste Delete Crop AddtoAudio2 sr2 SelSliders" + own},
        {[] { picAudio_MouseDown(1, 2, 0, 5, 12); }, "Cut Copy Paste Delete Crop s34 AddtoAudio1 sr2 SelSliders" + own},
        {[] { picOverlay_MouseDown(0, 2, 0, 5, 12); },
         "Cut Copy Paste Delete Crop s23 StretchMode SetOverlayTransparency sr2 SelSliders" + own},
    };
    for (const auto& [press, expected] : cases) {
        poppedUp.clear();
        press();
        EXPECT_EQ(poppedUp, "edit ");
        EXPECT_EQ(shown(), expected);
    }
    EXPECT_FALSE(window.mnuEditAddtoAudio1.Visible); // of the main menu, by the overlay's context
    picVideo_MouseDown(0, 1, 0, 5, 12);
    EXPECT_TRUE(window.mnuEditAddtoAudio1.Visible && window.mnuEditAddtoAudio2.Visible);
}

TEST_F(ContextMenuTest, RightPressSelectsAndStopsAtALock)
{
    put("V 0-1000 1000-2000");
    frmTimeline::picVideo_MouseDown(0, 2, 0, 150, 12);
    EXPECT_EQ(flags(), "V 01");
    EXPECT_EQ(std::exchange(poppedUp, ""), "edit ");
    for (CheckBox* const box : {&form.chkLockVideo[0], &form.chkLockEffect[0], &form.chkLockOverlay[0]}) {
        box->Value = std::int16_t{1};
    }
    frmTimeline::picVideo_MouseDown(0, 2, 0, 50, 12);
    frmTimeline::picEffect_MouseDown(0, 2, 0, 50, 12);
    frmTimeline::picOverlay_MouseDown(0, 2, 0, 50, 12);
    EXPECT_EQ(flags(), "V 10");
    EXPECT_EQ(poppedUp, "");
    frmTimeline::picVideo_MouseDown(0, 4, 0, 150, 12); // no button of ours
    EXPECT_EQ(flags(), "V 10");
}

TEST_F(ContextMenuTest, MediaList)
{
    open({"still.bmp"});
    poppedUp.clear();
    frmMediaList::lvwMediaList_MouseDown(1);
    frmMediaList::lvwMediaList_Click();
    EXPECT_EQ(poppedUp, "");
    frmMediaList::lvwMediaList_MouseDown(2);
    frmMediaList::lvwMediaList_Click();
    EXPECT_EQ(poppedUp, "media list ");
    frmMediaList::lvwMediaList_KeyDown(38);
    EXPECT_EQ(poppedUp, "media list ");
    EXPECT_FALSE(state::InSelectionUpdate);
}

TEST_F(ContextMenuTest, HintsToolTipsAndShapes)
{
    put("V 0-1000 B 500-1000 O 0-1000#0 E 200-1000");
    using namespace frmTimeline;
    const struct {
        void (*move)(std::int16_t, int, int, float, float);
        forms::RowPointer& row;
        std::int16_t index;
        float x, y;
        const char* expected;
    } cases[] = {
        {picVideo_MouseMove, form.ptrVideo[0], 0, 50, 5, "still.bmp 0 Represents video sources over time"},
        {picVideo_MouseMove, form.ptrVideo[0], 0, 88, 11, "still.bmp 9 Represents video sources over time"},
        {picVideo_MouseMove, form.ptrVideo[0], 0, 87, 11, "still.bmp 0 Represents video sources over time"},
        {picVideo_MouseMove, form.ptrVideo[0], 0, 100, 0, "still.bmp 9 Represents video sources over time"},
        {picVideo_MouseMove, form.ptrVideo[0], 0, 100, 12, "still.bmp 0 Represents video sources over time"},
        {picVideo_MouseMove, form.ptrVideo[0], 0, 101, 0, "Video Track 0 Represents video sources over time"},
        {picAudio_MouseMove, form.ptrAudio[0], 0, 60, 0, "Video Track 0 Represents audio sources over time"},
        {picAudio_MouseMove, form.ptrAudio[1], 1, 60, 0, "stereo-48k.wav 0 Represents audio sources over time"},
        {picEffect_MouseMove, form.ptrEffect[0], 0, 10, 0, "Effect Track 0 Represents various effects over time"},
        {picEffect_MouseMove, form.ptrEffect[0], 0, 95, 0, "Blur 9 Represents various effects over time"},
        {picOverlay_MouseMove, form.ptrOverlay[0], 0, 200, 0, "Overlay Track 0 Represents overlay sources over time"},
    };
    for (const auto& [move, row, index, x, y, expected] : cases) {
        move(index, 0, 0, x, y);
        EXPECT_EQ(row.ToolTipText.get() + " " + std::to_string(row.MousePointer.get()) + " " + panel(""), expected);
        EXPECT_EQ(form.imgScaleMarker.Left, static_cast<std::int32_t>(x));
    }
    state::BusyOpening = true;
    window.sbr.Panel(1) = "Opening file";
    picVideo_MouseMove(0, 0, 0, 5, 5);
    EXPECT_EQ(panel(""), "Opening file");
}

} // namespace
} // namespace logic_test
