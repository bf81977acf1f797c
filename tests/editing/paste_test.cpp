// The clipboard back on the tracks: at the slider, over a selection, twice, and what it splits and moves.

#include "support/logic_harness.h"

#include "shell/edit_commands.h"

#include "core/forms/frmMediaList.h"
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

TEST_F(PasteTest, OverASelectionOfOneSlider)
{
    const char* const layout = "V 0-2000 b2000-5000 c6000-7000";
    lay(layout);
    fill("V d500");
    showSelection(2000, 5000);
    moduleTimeline::ShowEndSelSlider(false);
    mnuEditPaste_Click();
    EXPECT_FALSE(form.imgStartSelHandle.Visible);
    expectStep(layout, "V 0-2000 d2000-2500 c2500-3500");
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

TEST_F(PasteTest, IsWholeWhereSourcesHaveNoMedia)
{
    const char* const layout = "V 0-2000=500-400 b2000-4000 A 0-2000=500-500 B 0-2000";
    lay(layout);
    fill("V d500 A t500 B t500");
    pasteAt(1000);
    expectStep(layout, "V 0-1000=500-400 d1000-1500 1500-2500=500-400 b2500-4500 "
                       "A 0-1000=500-500 t1000-1500 1500-2500=500-500 B 0-1000 t1000-1500 1500-2500=1000-2000");
    lay(layout);
    showSelection(1000, 1500);
    mnuEditPaste_Click();
    expectStep(layout, "V 0-1000=500-400 d1000-1500 1500-2000=500-400 b2000-4000 "
                       "A 0-1000=500-500 t1000-1500 1500-2000=500-500 B 0-1000 t1000-1500 1500-2000=1500-2000");
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

} // namespace
} // namespace logic_test
