// Cut, copy, delete and crop between the selection sliders. Each case: the layout, the command, the whole timeline and
// the clipboard behind it, and the way back and forth. Without other times, the selection is 2000 to 5000.

#include "support/logic_harness.h"

#include "editing/moduleEdit.h"
#include "shell/edit_commands.h"

#include "editing/selection_walk.h"

namespace logic_test {
namespace {

using namespace mdiTarnwick;

struct Range {
    const char* name;
    const char* layout;
    const char* after;
    const char* clipboard = "";
    const char* rows = "";
    Milliseconds from = 2000;
    Milliseconds to = 5000;
};

class RangeTest : public LogicTest {
protected:
    void expectAll(void (*edit)(), std::initializer_list<Range> cases)
    {
        for (const Range& it : cases) {
            SCOPED_TRACE(it.name);
            fill("");
            lay(it.layout);
            setRows(it.rows);
            showSelection(it.from, it.to);
            edit();
            EXPECT_FALSE(form.imgStartSelHandle.Visible || form.imgEndSelHandle.Visible);
            EXPECT_EQ(clipboard(), it.clipboard);
            expectStep(it.layout, it.after);
        }
    }
};

TEST_F(RangeTest, CutOfSources)
{
    expectAll(mnuEditCut_Click,
              {
                  {"inside one, in two pieces", "V 0-8000 b9000-9500", "V 0-2000 5000-8000=5000-8000 b9000-9500",
                   "V 3000=2000-5000"},
                  {"at half speed, with its mode", "V 0-8000=1000-5000m2", "V 0-2000=1000-2000m2 5000-8000=3500-5000m2",
                   "V 3000=2000-3500m2"},
                  {"a tie goes to the even millisecond", "V 0-8000=0-2000", "V 0-2010=0-502 5010-8000=1252-2000",
                   "V 3000=502-1252", "", 2010, 5010},
                  {"parts of two", "V 0-4000 b4000-8000 c8000-9000", "V 0-2000 b5000-8000=1000-4000 c8000-9000",
                   "V 2000=2000-4000 b1000"},
                  {"exactly one", "V 0-2000 b2000-5000 c5000-6000", "V 0-2000 c5000-6000", "V b3000"},
                  {"gaps ahead, between and behind", "V 0-1000 b3000-4000 c4500-5500 d8000-9000", "V 0-1000 d8000-9000",
                   "V ~1000 b1000 ~500 c1000 ~1500", "", 2000, 7000},
                  {"behind the last one", "V 0-1000 b3000-4000", "V 0-1000", "V ~1000 b1000 ~1000"},
                  // What goes first of a track makes the next one the first, ahead of which no gap is kept.
                  {"from the first one on", "V 1000-2000 b3000-4000 B t8000-9000", "B t8000-9000", "V 1000 b1000 ~1000",
                   "", 0, 5000},
                  {"in no item", "V 0-1000 b6000-7000", "V 0-1000 b6000-7000"},
                  {"rows that are linked and unlocked", "V 0-8000 O b0-8000#7 A 0-8000 B t0-8000",
                   "V 0-2000 5000-8000=5000-8000 O b0-8000#7 A 0-8000 B t0-2000 t5000-8000=5000-8000",
                   "V 3000=2000-5000 B t3000=2000-5000", "Lo -a"},
                  {"the last video takes the effects along, linked or not", "V 2000-4000 E 0-9000 A 0-9000",
                   "A 0-2000 5000-9000=5000-9000", "V 2000 ~1000 A 3000=2000-5000", "-e"},
              });
}

TEST_F(RangeTest, CopyChangesNothingButTheClipboard)
{
    expectAll(mnuEditCopy_Click,
              {
                  {"inside one", "V 0-8000=1000-5000m2", "V 0-8000=1000-5000m2", "V 3000=2000-3500m2"},
                  {"gaps", "V 0-1000 b3000-4000 c4500-5500 d8000-9000", "V 0-1000 b3000-4000 c4500-5500 d8000-9000",
                   "V ~1000 b1000 ~500 c1000 ~1500", "", 2000, 7000},
                  {"from the first one on, with what a cut forgets", "V 1000-2000 b3000-4000", "V 1000-2000 b3000-4000",
                   "V 1000 ~1000 b1000 ~1000", "", 0, 5000},
                  {"effects and overlays", "V 0-500 E 0-3000 Wave4000-9000 O b0-3000#1 c4000-9000#2",
                   "V 0-500 E 0-3000 Wave4000-9000 O b0-3000#1 c4000-9000#2",
                   "O b1000=2000-3000 ~1000 c1000 E 1000 Wave1000 K 1000#1 1000#2"},
              });
}

TEST_F(RangeTest, CutOfEffects)
{
    expectAll(
        mnuEditCut_Click,
        {
            {"inside one", "V 0-500 E 1000-8000", "V 0-500 E 1000-2000 5000-8000", "E 3000"},
            {"parts of two, and no gap between them", "V 0-500 E 0-1000 Wave1500-4000 Fade4500-8000",
             "V 0-500 E 0-1000 Wave1500-2000 Fade5000-8000", "E Wave2000 Fade500"},
            {"gaps ahead and behind", "V 0-500 E 0-1000 Wave3000-4000", "V 0-500 E 0-1000", "E ~1000 Wave1000 ~1000"},
            {"behind, up to where it ends", "V 0-500 E 2500-4000 Wave7000-8000", "V 0-500 E Wave7000-8000",
             "E 1500 ~1000"},
            {"locked", "V 0-500 E 1000-8000", "V 0-500 E 1000-8000", "", "Le"},
            {"unlinked", "V 0-500 E 1000-8000", "V 0-500 E 1000-8000", "", "-e"},
            {"of a locked video track", "V 0-9000 E 1000-8000", "V 0-9000 E 1000-2000 5000-8000", "E 3000", "Lv"},
        });
}

TEST_F(RangeTest, CutOfOverlays)
{
    expectAll(mnuEditCut_Click,
              {
                  {"inside one, with its key", "O b0-8000=0-4000m1#9", "O b0-2000=0-1000m1#9 b5000-8000=2500-4000m1#9",
                   "O b3000=1000-2500m1 K 3000#9"},
                  {"a whole one and a part; transitions keep no gap between", "O b0-1000#1 c3000-4000#2 d4500-8000#3",
                   "O b0-1000#1 d5000-8000=500-3500#3", "O ~1000 c1000 ~500 d500 K ~1000 1000#2 500#3"},
                  {"the right part, and the gap behind the last one", "O b0-1000#1 c1500-4000#2",
                   "O b0-1000#1 c1500-2000#2", "O c2000=500-2500 ~1000 K 2000#2 ~1000"},
                  {"without a key", "O b0-8000", "O b0-2000 b5000-8000=5000-8000", "O b3000=2000-5000 K 3000"},
              });
}

TEST_F(RangeTest, Delete)
{
    expectAll(mnuEditClear_Click,
              {
                  {"inside one", "V 0-8000m3 b9000-9500", "V 0-2000m3 5000-8000=5000-8000m3 b9000-9500"},
                  {"parts of two leave the third", "V 0-4000 b4000-8000 c8000-9000",
                   "V 0-2000 b5000-8000=1000-4000 c8000-9000"},
                  {"at another speed too", "V 0-4000 b4000-8000 c8000-9000=0-333",
                   "V 0-2000 b5000-8000=1000-4000 c8000-9000=0-333"},
                  {"ending in a gap draws the next towards it", "V 0-4000 c8000-12000=2500-6500",
                   "V 0-2000 c6000-12000=500-6500", "", "", 2000, 6000},
                  {"as far as its medium reaches", "V 0-4000 c8000-12000=500-4500", "V 0-2000 c7500-12000", "", "",
                   2000, 6000},
                  {"but not what begins where it ends", "V 0-5000 b5000-6000=100-1100", "V 0-2000 b5000-6000=100-1100"},
                  {"nor over what is ahead", "V 0-5000 b5000-6000 c6500-7000=2000-2500",
                   "V 0-2000 b5000-6000 c6000-7000=1500-2500"},
                  {"effects and overlays behind it stay", "V 0-500 E 6000-7000 O b6000-7000=500-1500#1",
                   "V 0-500 E 6000-7000 O b6000-7000=500-1500#1"},
                  {"overlays", "O b0-3000#1 c3000-4000#2 d4000-9000#3", "O b0-2000#1 d5000-9000=1000-5000#3"},
                  {"effects", "V 0-500 E 0-3000 Wave3000-4000 Fade4000-9000", "V 0-500 E 0-2000 Fade5000-9000"},
                  {"inside an effect and an overlay", "V 0-500 E 0-9000 O b0-9000#1",
                   "V 0-500 E 0-2000 5000-9000 O b0-2000#1 b5000-9000=5000-9000#1"},
              });
}

TEST_F(RangeTest, Crop)
{
    expectAll(mnuEditCrop_Click,
              {
                  {"keeps what is inside where it is", "V 0-1000 b1500-3000 c3000-4000 d4000-8000",
                   "V b2000-3000=500-1500 c3000-4000 d4000-5000"},
                  {"inside one, at double speed", "V 0-8000=0-16000m1", "V 2000-5000=4000-10000m1"},
                  {"at its very edges only a source stays", "V 2000-5000 E 2000-4000 O b2000-5000#1", "V 2000-5000"},
                  {"effects", "V 2000-3000 E 0-3000 Wave3500-4000 Fade4500-9000",
                   "V 2000-3000 E 2000-3000 Wave3500-4000 Fade4500-5000"},
                  {"inside an effect", "V 2000-3000 E 0-9000", "V 2000-3000 E 2000-5000"},
                  {"overlays", "O 0-500#4 b500-3000#1 c3500-4000#2 d4500-9000#3",
                   "O b2000-3000=1500-2500#1 c3500-4000#2 d4500-5000#3"},
                  {"inside an overlay", "O b0-9000#4", "O b2000-5000=2000-5000#4"},
                  {"rows that are linked and unlocked", "V 0-1000 E 0-1000 O b0-1000#1 A 0-1000 B t0-1000",
                   "V 0-1000 E 0-1000 O b0-1000#1", "", "-v Le Lo"},
              });
}

TEST_F(RangeTest, CropOfSourcesKeepsWhatLiesOutside)
{
    expectAll(
        mnuEditCropSources_Click,
        {
            // A source behind the selection would be told to end before it begins, which the engine does not take.
            {"ahead and behind", "V 0-1000 b1500-3000 c4000-8000 d8500-9000",
             "V 0-1000 b2000-3000=500-1500 c4000-5000 d8500-9000"},
            {"others as in a crop", "V 0-1000 E 0-500 Wave600-3000 O b0-500#1 c600-3000#2 d8000-9000#3",
             "V 0-1000 E 0-500 Wave2000-3000 O b0-500#1 c2000-3000=1400-2400#2 d8000-9000#3"},
        });
}

TEST_F(RangeTest, AnEmptyMediaRangeIsLeftAsItIs)
{
    expectsErrors = true;
    lay("V 0-4000=500-500 b4000-8000");
    for (const auto& command : {mnuEditCut_Click, mnuEditClear_Click, mnuEditCopy_Click}) {
        lay("V 0-4000=500-500 b4000-8000");
        showSelection(2000, 5000);
        command();
        expectStep("V 0-4000=500-500 b4000-8000", command == mnuEditCopy_Click
                                                      ? "V 0-4000=500-500 b4000-8000"
                                                      : "V 0-4000=500-500 b5000-8000=1000-4000");
    }
    EXPECT_EQ(clipboard(), "V b1000");
    EXPECT_NE(error_log::read().find("CutAction"), std::string::npos);
}

TEST_F(RangeTest, TheReservedModeOnlyHidesTheSliders)
{
    lay("V 0-8000");
    showSelection(2000, 5000);
    EXPECT_TRUE(moduleEdit::EditSelection(moduleEdit::EditMode::kReserved).flag);
    EXPECT_EQ(text(), "V 0-8000");
    EXPECT_FALSE(form.imgStartSelHandle.Visible);
}

} // namespace
} // namespace logic_test
