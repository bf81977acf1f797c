// The clipboard back on the tracks: at the slider, over a selection, twice, and what it splits and moves.

#include "support/logic_harness.h"

#include "editing/moduleEdit.h"
#include "shell/edit_commands.h"

#include "core/forms/frmMediaList.h"
#include "editing/paste.h"
#include "editing/split.h"
#include "engine/ITWMediaFiles.h"

namespace logic_test {
namespace {

using namespace mdiTarnwick;

class PasteTest : public LogicTest {
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
        {"on an empty track", "", "V c1000m2", 500, "V c500-1500m2"},
        {"at a start", "V 0-4000 b4000-8000", "V c1000", 0, "V c0-1000 1000-5000 b5000-9000"},
        {"at a joint", "V 0-4000 b4000-8000", "V c1000", 4000, "V 0-4000 c4000-5000 b5000-9000"},
        {"inside", "V 0-4000m3 b4000-8000", "V c1000=700-1700", 2000,
         "V 0-2000m3 c2000-3000=700-1700 3000-5000=2000-4000m3 b5000-9000"},
        {"at the stop; nothing stays selected", "V 0-4000*", "V c1000", 4000, "V 0-4000 c4000-5000"},
        {"behind the end, with the gap", "V 0-4000", "V c1000", 4500, "V 0-4000 c4500-5500"},
        {"ahead of the first", "V 1000-2000", "V c1000", 500, "V c500-1500 2000-3000"},
        {"in a gap, which stays wider than needed", "V 0-1000 b3000-4000", "V c500", 2000,
         "V 0-1000 c2000-2500 b3500-4500"},
        // The whole sums are divided by the speed, unlike in a cut.
        {"inside one at half speed", "V 0-4000=1000-3000", "V c1000", 2000,
         "V 0-2000=1000-1500 c2000-3000 3000-5000=500-3000"},
        {"inside one at double speed: the right piece has nothing left", "V 0-4000=0-8000", "V c1000", 2000,
         "V 0-2000=0-4000 c2000-3000 3000-5000=12000-8000"},
        {"with its gaps", "V 0-4000 b4000-5000", "V ~500 c1000 ~300 d200", 4000,
         "V 0-4000 c4500-5500 d5800-6000 b6000-7000"},
        {"with its gaps on an empty track", "", "V ~500 c1000 ~300 d200", 0, "V c500-1500 d1800-2000"},
        {"a gap at the end keeps what follows away", "V 0-4000", "V c1000 ~300", 0, "V c0-1000 1300-5300"},
        {"and does nothing on an empty track", "", "V c1000 ~300", 0, "V c0-1000"},
        {"two tracks; the third is neither split nor moved", "V 0-4000 A 0-4000 B t0-4000", "V c1000 A t500", 2000,
         "V 0-2000 c2000-3000 3000-5000=2000-4000 A 0-2000 t2000-2500 2500-4500=2000-4000 B t0-4000"},
        {"locked tracks are left out, unless they are empty", "V 0-4000 A 0-4000", "V c1000 A t500 B t500", 0,
         "V 0-4000 A t0-500 500-4500 B t0-500", "Lv Lb"},
        {"effects", "V 0-9000 E 1000-3000 Fade3000-4000", "E Wave500", 2000,
         "V 0-9000 E 1000-2000 Wave2000-2500 2500-3500 Fade3500-4500"},
        {"effects with gaps", "V 0-9000 E 0-1000 Fade1000-2000", "E ~100 Wave500 ~200 50", 1000,
         "V 0-9000 E 0-1000 Wave1100-1600 1800-1850 Fade1850-2850"},
        {"a locked lane with effects", "V 0-9000 E 1000-3000", "E Wave500", 0, "V 0-9000 E 1000-3000", "Le"},
        {"a locked lane without", "V 0-9000", "E Wave500", 0, "V 0-9000 E Wave0-500", "Le"},
        {"overlays, into one", "V 0-9000 O b0-4000#3", "O c1000m2 K 1000#8", 1000,
         "V 0-9000 O b0-1000#3 c1000-2000m2#8 b2000-5000=1000-4000#3"},
        {"overlays: transitions keep no gap between them", "V 0-9000 O b0-4000#3", "O c1000 ~500 d1000 K 1000#1 1000#2",
         4000, "V 0-9000 O b0-4000#3 c4000-5000#1 d5500-6500#2!5000-6000"},
        {"a locked empty overlay track", "V 0-9000", "O c1000 K 1000#8", 0, "V 0-9000 O c0-1000#8", "Lo"},
        {"a locked overlay track", "V 0-9000 O b0-4000#3", "O c1000 K 1000#8", 0, "V 0-9000 O b0-4000#3", "Lo"},
        {"a piece without length is no piece", "V 0-4000", "V c0", 4000, "V 0-4000"},
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
        {"what follows closes up, then makes room", "V 0-2000 b2000-5000 c6000-7000", "V d500",
         "V 0-2000 d2000-2500 c2500-3500"},
        {"of two parts", "V 0-4000 b4000-8000", "V d500", "V 0-2000 d2000-2500 b2500-5500=1000-4000"},
        {"inside one", "V 0-8000", "V d500", "V 0-2000 d2000-2500 2500-5500=5000-8000"},
        {"beginning in a gap, which stays", "V 0-1000 b3000-4000 c6000-7000", "V d500",
         "V 0-1000 d2000-2500 c6500-7500"},
        {"a track without records closes up too, linked or not", "V 0-8000 A 0-2000 t3000-4000", "V d500",
         "V 0-2000 d2000-2500 2500-5500=5000-8000 A 0-2000 t2000-3000", "-a"},
        {"but not a locked one", "V 0-8000 A 0-2000 t3000-4000", "V d500",
         "V 0-2000 d2000-2500 2500-5500=5000-8000 A 0-2000 t3000-4000", "La"},
        {"effects and overlays", "V 0-500 E 0-8000 O b0-8000#1", "O c700 E Wave500 K 700#2",
         "V 0-500 E 0-2000 Wave2000-2500 2500-5500 O b0-2000#1 c2000-2700#2 b2700-5700=5000-8000#1"},
    };
    for (const auto& [name, layout, clips, after, rows] : cases) {
        for (const bool isEndShown : {true, false}) { // one slider is enough
            SCOPED_TRACE(name);
            lay(layout);
            fill(clips);
            setRows(rows);
            showSelection(2000, 5000);
            moduleTimeline::ShowEndSelSlider(isEndShown);
            mnuEditPaste_Click();
            EXPECT_FALSE(form.imgStartSelHandle.Visible);
            expectStep(layout, after);
        }
    }
}

TEST_F(PasteTest, ACutPastedAtItsPlaceGivesTheSpacingBack)
{
    const char* const layout = "V 0-1000 b3000-4000 c4500-5500 d8000-9000 O b0-1000#1 c1500-2500#2 d2500-4000#3";
    lay(layout);
    showSelection(1200, 7000);
    mnuEditCut_Click();
    EXPECT_EQ(text(), "V 0-1000 d8000-9000 O b0-1000#1");
    pasteAt(1200);
    // A paste is an insertion: what lies behind moves by all of it.
    EXPECT_EQ(text(), "V 0-1000 b3000-4000 c4500-5500 d13800-14800 O b0-1000#1 c1500-2500#2 d2500-4000#3");
    const std::string once = text();
    pasteAt(0);
    EXPECT_EQ(text(), "V b1800-2800 c3300-4300 5800-6800 b8800-9800 c10300-11300 d19600-20600 "
                      "O c300-1300#2 d1300-2800#3 b5800-6800#1 c7300-8300#2 d8300-9800#3");
    ModuleHistory::OnEditUndoClick();
    EXPECT_EQ(text(), once);
}

TEST_F(PasteTest, PiecesThatAreRefusedAreLeftOutWithTheirKeys)
{
    laid.streams['d'] = 4711; // no such stream
    lay("V 0-4000 O b0-1000#1 c1000-2000#2");
    fill("V d500 c300 O d500 c700 c0 K 500#5 700#6 0#7");
    pasteAt(1000);
    EXPECT_EQ(text(), "V 0-1000 c1000-1300 1300-4300=1000-4000 O b0-1000#1 c1000-1700#6 c1700-2700#2");
}

TEST_F(PasteTest, AFileThatWasClosedComesBackToTheMediaList)
{
    Handle file = 0;
    engine::Bool16 ok = engine::kFalse;
    check(engine::Engine->OpenFile(media("still.tga"), file));
    check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, laid.streams['d']));
    fill("V d500");
    check(engine::Engine->CloseFile(file, ok));
    pasteAt(0);
    EXPECT_EQ(text(), "V d0-500");
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 1);
}

TEST_F(PasteTest, SplitOfOneItem)
{
    using namespace editing;
    lay("V 0-4000=0-2000m3 E 0-4000 O b0-4000#7");
    for (const Milliseconds atAnEnd : {0, 4000, 5000}) {
        splitSource(video(), 0, atAnEnd);
        splitEffect(video(), 0, atAnEnd, 10);
        splitOverlay(state::OverlayTrack, 0, atAnEnd);
    }
    splitSource(video(), 1, 1000);
    EXPECT_EQ(text(), "V 0-4000=0-2000m3 E 0-4000 O b0-4000#7");
    splitSource(video(), 0, 1000);
    splitEffect(video(), 0, 1000, 10);
    splitOverlay(state::OverlayTrack, 0, 1000);
    EXPECT_EQ(text(), "V 0-1000=0-500m3 1000-4000=-500-2000m3 E 0-1000 1000-4000 "
                      "O b0-1000#7 b1000-4000=1000-4000#7");
    lay("V 0-4000=500-500");
    EXPECT_THROW(splitSource(video(), 0, 1000), engine::RuntimeError);
    EXPECT_EQ(text(), "V 0-4000=500-500");
}

TEST_F(PasteTest, GapBehindAPosition)
{
    using namespace moduleEdit;
    lay("V 0-1000 b1500-2000 c2200-3000 E 0-1000 Wave1500-2000 O 0-1000#1 b1500-2000#2");
    EXPECT_FALSE(ShiftSourcesFromPos(900, video()));
    EXPECT_FALSE(ShiftSourcesFromPos(3000, video())); // nothing follows
    EXPECT_TRUE(ShiftSourcesFromPos(1000, video()));
    EXPECT_TRUE(ShiftSourcesFromPos(1000, video())); // by 0
    EXPECT_TRUE(ShiftEffectsFromPos(1000, video()));
    EXPECT_TRUE(ShiftSourcesFromPos(1000, state::OverlayTrack));
    EXPECT_TRUE(ShiftTransitionsFromPos(1000, state::OverlayTrack));
    EXPECT_EQ(text(), "V 0-1000 b1000-1500 c1700-2500 E 0-1000 Wave1000-1500 O 0-1000#1 b1000-1500#2");
}

} // namespace
} // namespace logic_test
