// The clipboard back on the tracks: at the slider, over a selection, twice, and what it splits and moves.

#include "editing/edit_harness.h"

#include "core/forms/frmMediaList.h"
#include "editing/paste.h"
#include "editing/split.h"

namespace editing_test {
namespace {

using namespace mdiTarnwick;

class PasteTest : public EditTest {
protected:
    static void pasteAt(Milliseconds position)
    {
        moduleTimeline::SetSliderPosition(position, false);
        mnuEditPaste_Click();
    }
};

TEST_F(PasteTest, AtTheSlider)
{
    const struct {
        const char* name;
        const char* layout;
        const char* clipboard;
        Milliseconds position;
        const char* after;
        const char* rows = "";
    } cases[] = {
        {"on an empty track", "", "V/0 C1000x2", 500, "V C500-1500x2"},
        {"at a start", "V A0-4000 B4000-8000", "V/0 C1000", 0, "V C0-1000 A1000-5000 B5000-9000"},
        {"at a joint", "V A0-4000 B4000-8000", "V/0 C1000", 4000, "V A0-4000 C4000-5000 B5000-9000"},
        {"inside", "V A0-4000x3 B4000-8000", "V/0 C1000[700-1700]", 2000,
         "V A0-2000x3 C2000-3000[700-1700] A3000-5000[2000-4000]x3 B5000-9000"},
        {"at the stop; nothing stays selected", "V A0-4000!", "V/0 C1000", 4000, "V A0-4000 C4000-5000"},
        {"behind the end, with the gap", "V A0-4000", "V/0 C1000", 4500, "V A0-4000 C4500-5500"},
        {"ahead of the first", "V A1000-2000", "V/0 C1000", 500, "V C500-1500 A2000-3000"},
        {"in a gap, which stays wider than needed", "V A0-1000 B3000-4000", "V/0 C500", 2000,
         "V A0-1000 C2000-2500 B3500-4500"},
        // The whole sums are divided by the speed, unlike in a cut.
        {"inside one at half speed", "V A0-4000[1000-3000]", "V/0 C1000", 2000,
         "V A0-2000[1000-1500] C2000-3000 A3000-5000[500-3000]"},
        {"inside one at double speed: the right piece has nothing left", "V A0-4000[0-8000]", "V/0 C1000", 2000,
         "V A0-2000[0-4000] C2000-3000 A3000-5000[12000-8000]"},
        {"with its gaps", "V A0-4000 B4000-5000", "V/0 ~500, V/1 C1000, V/2 ~300, V/3 D200", 4000,
         "V A0-4000 C4500-5500 D5800-6000 B6000-7000"},
        {"with its gaps on an empty track", "", "V/0 ~500, V/1 C1000, V/2 ~300, V/3 D200", 0, "V C500-1500 D1800-2000"},
        {"a gap at the end keeps what follows away", "V A0-4000", "V/0 C1000, V/1 ~300", 0, "V C0-1000 A1300-5300"},
        {"and does nothing on an empty track", "", "V/0 C1000, V/1 ~300", 0, "V C0-1000"},
        {"two tracks; the third is neither split nor moved", "V A0-4000 | 1 S0-4000 | 2 T0-4000", "V/0 C1000, 1/0 T500",
         2000, "V A0-2000 C2000-3000 A3000-5000[2000-4000] | 1 S0-2000 T2000-2500 S2500-4500[2000-4000] | 2 T0-4000"},
        {"locked tracks are left out, unless they are empty", "V A0-4000 | 1 S0-4000", "V/0 C1000, 1/0 T500, 2/0 T500",
         0, "V A0-4000 | 1 T0-500 S500-4500 | 2 T0-500", "Lv L2"},
        {"effects", "V A0-9000 | E Blur1000-3000 Fade3000-4000", "E/0 Wave500", 2000,
         "V A0-9000 | E Blur1000-2000 Wave2000-2500 Blur2500-3500 Fade3500-4500"},
        {"effects with gaps", "V A0-9000 | E Blur0-1000 Fade1000-2000", "E/0 ~100, E/1 Wave500, E/2 ~200, E/3 Blur50",
         1000, "V A0-9000 | E Blur0-1000 Wave1100-1600 Blur1800-1850 Fade1850-2850"},
        {"a locked lane with effects", "V A0-9000 | E Blur1000-3000", "E/0 Wave500", 0, "V A0-9000 | E Blur1000-3000",
         "Le"},
        {"a locked lane without", "V A0-9000", "E/0 Wave500", 0, "V A0-9000 | E Wave0-500", "Le"},
        {"overlays, into one", "V A0-9000 | O B0-4000#3", "O/0 C1000x2, K/0 1000#8", 1000,
         "V A0-9000 | O B0-1000#3 C1000-2000x2#8 B2000-5000[1000-4000]#3"},
        {"overlays: transitions keep no gap between them", "V A0-9000 | O B0-4000#3",
         "O/0 C1000, O/1 ~500, O/2 D1000, K/0 1000#1, K/1 1000#2", 4000,
         "V A0-9000 | O B0-4000#3 C4000-5000#1 D5500-6500#2@5000-6000"},
        {"a locked empty overlay track", "V A0-9000", "O/0 C1000, K/0 1000#8", 0, "V A0-9000 | O C0-1000#8", "Lo"},
        {"a locked overlay track", "V A0-9000 | O B0-4000#3", "O/0 C1000, K/0 1000#8", 0, "V A0-9000 | O B0-4000#3",
         "Lo"},
        {"a piece without length is no piece", "V A0-4000", "V/0 C0", 4000, "V A0-4000"},
    };
    for (const auto& [name, layout, clips, position, after, rows] : cases) {
        SCOPED_TRACE(name);
        lay(layout);
        fill(clips);
        setRows(rows);
        pasteAt(position);
        EXPECT_EQ(clipboard(), clips);
        expectStep(layout, after);
    }
}

TEST_F(PasteTest, OverASelection)
{
    const struct {
        const char* name;
        const char* layout;
        const char* clipboard;
        const char* after;
        const char* rows = "";
    } cases[] = {
        {"what follows closes up, then makes room", "V A0-2000 B2000-5000 C6000-7000", "V/0 D500",
         "V A0-2000 D2000-2500 C2500-3500"},
        {"of two parts", "V A0-4000 B4000-8000", "V/0 D500", "V A0-2000 D2000-2500 B2500-5500[1000-4000]"},
        {"inside one", "V A0-8000", "V/0 D500", "V A0-2000 D2000-2500 A2500-5500[5000-8000]"},
        {"beginning in a gap, which stays", "V A0-1000 B3000-4000 C6000-7000", "V/0 D500",
         "V A0-1000 D2000-2500 C6500-7500"},
        {"a track without records closes up too, linked or not", "V A0-8000 | 1 S0-2000 T3000-4000", "V/0 D500",
         "V A0-2000 D2000-2500 A2500-5500[5000-8000] | 1 S0-2000 T2000-3000", "-1"},
        {"but not a locked one", "V A0-8000 | 1 S0-2000 T3000-4000", "V/0 D500",
         "V A0-2000 D2000-2500 A2500-5500[5000-8000] | 1 S0-2000 T3000-4000", "L1"},
        {"effects and overlays", "V A0-500 | E Blur0-8000 | O B0-8000#1", "O/0 C700, E/0 Wave500, K/0 700#2",
         "V A0-500 | E Blur0-2000 Wave2000-2500 Blur2500-5500 | O B0-2000#1 C2000-2700#2 B2700-5700[5000-8000]#1"},
    };
    for (const auto& [name, layout, clips, after, rows] : cases) {
        for (const bool isEndShown : {true, false}) { // one slider is enough
            SCOPED_TRACE(name);
            lay(layout);
            fill(clips);
            setRows(rows);
            select(2000, 5000);
            moduleTimeline::ShowEndSelSlider(isEndShown);
            mnuEditPaste_Click();
            EXPECT_FALSE(form.imgStartSelHandle.Visible);
            expectStep(layout, after);
        }
    }
}

TEST_F(PasteTest, ACutPastedAtItsPlaceGivesTheSpacingBack)
{
    const char* const layout = "V A0-1000 B3000-4000 C4500-5500 D8000-9000 | O B0-1000#1 C1500-2500#2 D2500-4000#3";
    lay(layout);
    select(1200, 7000);
    mnuEditCut_Click();
    EXPECT_EQ(text(), "V A0-1000 D8000-9000 | O B0-1000#1");
    pasteAt(1200);
    // A paste is an insertion: what lies behind moves by all of it.
    EXPECT_EQ(text(), "V A0-1000 B3000-4000 C4500-5500 D13800-14800 | O B0-1000#1 C1500-2500#2 D2500-4000#3");
    const std::string once = text();
    pasteAt(0);
    EXPECT_EQ(text(), "V B1800-2800 C3300-4300 A5800-6800 B8800-9800 C10300-11300 D19600-20600 | "
                      "O C300-1300#2 D1300-2800#3 B5800-6800#1 C7300-8300#2 D8300-9800#3");
    ModuleHistory::OnEditUndoClick();
    EXPECT_EQ(text(), once);
}

TEST_F(PasteTest, PiecesThatAreRefusedAreLeftOutWithTheirKeys)
{
    streams['D'] = 4711; // no such stream
    lay("V A0-4000 | O B0-1000#1 C1000-2000#2");
    fill("V/0 D500, V/1 C300, O/0 D500, O/1 C700, O/2 C0, K/0 500#5, K/1 700#6, K/2 0#7");
    pasteAt(1000);
    EXPECT_EQ(text(), "V A0-1000 C1000-1300 A1300-4300[1000-4000] | O B0-1000#1 C1000-1700#6 C1700-2700#2");
}

TEST_F(PasteTest, AFileThatWasClosedComesBackToTheMediaList)
{
    Handle file = 0;
    engine::Bool16 ok = engine::kFalse;
    check(engine::Engine->OpenFile((testmedia::mediaFolder() / "still.tga").string(), file));
    check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, streams['D']));
    fill("V/0 D500");
    check(engine::Engine->CloseFile(file, ok));
    pasteAt(0);
    EXPECT_EQ(text(), "V D0-500");
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 1);
}

TEST_F(PasteTest, SplitOfOneItem)
{
    using namespace editing;
    lay("V A0-4000[0-2000]x3 | E Blur0-4000 | O B0-4000#7");
    for (const Milliseconds atAnEnd : {0, 4000, 5000}) {
        splitSource(video(), 0, atAnEnd);
        splitEffect(video(), 0, atAnEnd, 10);
        splitOverlay(state::OverlayTrack, 0, atAnEnd);
    }
    splitSource(video(), 1, 1000);
    EXPECT_EQ(text(), "V A0-4000[0-2000]x3 | E Blur0-4000 | O B0-4000#7");
    splitSource(video(), 0, 1000);
    splitEffect(video(), 0, 1000, 10);
    splitOverlay(state::OverlayTrack, 0, 1000);
    EXPECT_EQ(text(), "V A0-1000[0-500]x3 A1000-4000[-500-2000]x3 | E Blur0-1000 Blur1000-4000 | "
                      "O B0-1000#7 B1000-4000[1000-4000]#7");
    lay("V A0-4000[500-500]");
    EXPECT_THROW(splitSource(video(), 0, 1000), engine::RuntimeError);
    EXPECT_EQ(text(), "V A0-4000[500-500]");
}

TEST_F(PasteTest, GapBehindAPosition)
{
    using namespace moduleEdit;
    lay("V A0-1000 B1500-2000 C2200-3000 | E Blur0-1000 Wave1500-2000 | O A0-1000#1 B1500-2000#2");
    EXPECT_FALSE(ShiftSourcesFromPos(900, video()));
    EXPECT_FALSE(ShiftSourcesFromPos(3000, video())); // nothing follows
    EXPECT_TRUE(ShiftSourcesFromPos(1000, video()));
    EXPECT_TRUE(ShiftSourcesFromPos(1000, video())); // by 0
    EXPECT_TRUE(ShiftEffectsFromPos(1000, video()));
    EXPECT_TRUE(ShiftSourcesFromPos(1000, state::OverlayTrack));
    EXPECT_TRUE(ShiftTransitionsFromPos(1000, state::OverlayTrack));
    EXPECT_EQ(text(), "V A0-1000 B1000-1500 C1700-2500 | E Blur0-1000 Wave1000-1500 | O A0-1000#1 B1000-1500#2");
}

} // namespace
} // namespace editing_test
