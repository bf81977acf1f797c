// Cut, copy, delete and crop between the selection sliders. Each case: the layout, the command, the whole timeline and
// the clipboard behind it, and the way back and forth. Without other times, the selection is 2000 to 5000.

#include "editing/edit_harness.h"

#include "editing/selection_walk.h"

namespace editing_test {
namespace {

using namespace mdiTarnwick;

struct Case {
    const char* name;
    const char* layout;
    const char* after;
    const char* clipboard = "";
    const char* rows = "";
    Milliseconds from = 2000;
    Milliseconds to = 5000;
};

class RangeTest : public EditTest {
protected:
    void expectAll(void (*command)(), std::initializer_list<Case> cases)
    {
        for (const Case& it : cases) {
            SCOPED_TRACE(it.name);
            clear();
            lay(it.layout);
            setRows(it.rows);
            select(it.from, it.to);
            command();
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
                  {"inside one, in two pieces", "V A0-8000 B9000-9500", "V A0-2000 A5000-8000[5000-8000] B9000-9500",
                   "V/0 A3000[2000-5000]"},
                  {"at half speed, with its mode", "V A0-8000[1000-5000]x2",
                   "V A0-2000[1000-2000]x2 A5000-8000[3500-5000]x2", "V/0 A3000[2000-3500]x2"},
                  {"a tie goes to the even millisecond", "V A0-8000[0-2000]", "V A0-2010[0-502] A5010-8000[1252-2000]",
                   "V/0 A3000[502-1252]", "", 2010, 5010},
                  {"parts of two", "V A0-4000 B4000-8000 C8000-9000", "V A0-2000 B5000-8000[1000-4000] C8000-9000",
                   "V/0 A2000[2000-4000], V/1 B1000"},
                  {"exactly one", "V A0-2000 B2000-5000 C5000-6000", "V A0-2000 C5000-6000", "V/0 B3000"},
                  {"gaps ahead, between and behind", "V A0-1000 B3000-4000 C4500-5500 D8000-9000",
                   "V A0-1000 D8000-9000", "V/0 ~1000, V/1 B1000, V/2 ~500, V/3 C1000, V/4 ~1500", "", 2000, 7000},
                  {"behind the last one", "V A0-1000 B3000-4000", "V A0-1000", "V/0 ~1000, V/1 B1000, V/2 ~1000"},
                  // What goes first of a track makes the next one the first, ahead of which no gap is kept.
                  {"from the first one on", "V A1000-2000 B3000-4000 | 2 T8000-9000", "2 T8000-9000",
                   "V/0 A1000, V/1 B1000, V/2 ~1000", "", 0, 5000},
                  {"in no item", "V A0-1000 B6000-7000", "V A0-1000 B6000-7000"},
                  {"rows that are linked and unlocked", "V A0-8000 | O B0-8000#7 | 1 S0-8000 | 2 T0-8000",
                   "V A0-2000 A5000-8000[5000-8000] | O B0-8000#7 | 1 S0-8000 | 2 T0-2000 T5000-8000[5000-8000]",
                   "V/0 A3000[2000-5000], 2/0 T3000[2000-5000]", "Lo -1"},
                  {"the last video takes the effects along, linked or not", "V A2000-4000 | E Blur0-9000 | 1 S0-9000",
                   "1 S0-2000 S5000-9000[5000-9000]", "V/0 A2000, V/1 ~1000, 1/0 S3000[2000-5000]", "-e"},
              });
}

TEST_F(RangeTest, CopyChangesNothingButTheClipboard)
{
    expectAll(mnuEditCopy_Click,
              {
                  {"inside one", "V A0-8000[1000-5000]x2", "V A0-8000[1000-5000]x2", "V/0 A3000[2000-3500]x2"},
                  {"gaps", "V A0-1000 B3000-4000 C4500-5500 D8000-9000", "V A0-1000 B3000-4000 C4500-5500 D8000-9000",
                   "V/0 ~1000, V/1 B1000, V/2 ~500, V/3 C1000, V/4 ~1500", "", 2000, 7000},
                  {"from the first one on, with what a cut forgets", "V A1000-2000 B3000-4000",
                   "V A1000-2000 B3000-4000", "V/0 A1000, V/1 ~1000, V/2 B1000, V/3 ~1000", "", 0, 5000},
                  {"effects and overlays", "V A0-500 | E Blur0-3000 Wave4000-9000 | O B0-3000#1 C4000-9000#2",
                   "V A0-500 | E Blur0-3000 Wave4000-9000 | O B0-3000#1 C4000-9000#2",
                   "O/0 B1000[2000-3000], O/1 ~1000, O/2 C1000, E/0 Blur1000, E/1 Wave1000, K/0 1000#1, K/1 1000#2"},
              });
}

TEST_F(RangeTest, CutOfEffects)
{
    expectAll(
        mnuEditCut_Click,
        {
            {"inside one", "V A0-500 | E Blur1000-8000", "V A0-500 | E Blur1000-2000 Blur5000-8000", "E/0 Blur3000"},
            {"parts of two, and no gap between them", "V A0-500 | E Blur0-1000 Wave1500-4000 Fade4500-8000",
             "V A0-500 | E Blur0-1000 Wave1500-2000 Fade5000-8000", "E/0 Wave2000, E/1 Fade500"},
            {"gaps ahead and behind", "V A0-500 | E Blur0-1000 Wave3000-4000", "V A0-500 | E Blur0-1000",
             "E/0 ~1000, E/1 Wave1000, E/2 ~1000"},
            {"behind, up to where it ends", "V A0-500 | E Blur2500-4000 Wave7000-8000", "V A0-500 | E Wave7000-8000",
             "E/0 Blur1500, E/1 ~1000"},
            {"locked", "V A0-500 | E Blur1000-8000", "V A0-500 | E Blur1000-8000", "", "Le"},
            {"unlinked", "V A0-500 | E Blur1000-8000", "V A0-500 | E Blur1000-8000", "", "-e"},
            {"of a locked video track", "V A0-9000 | E Blur1000-8000", "V A0-9000 | E Blur1000-2000 Blur5000-8000",
             "E/0 Blur3000", "Lv"},
        });
}

TEST_F(RangeTest, CutOfOverlays)
{
    expectAll(mnuEditCut_Click,
              {
                  {"inside one, with its key", "O B0-8000[0-4000]x1#9",
                   "O B0-2000[0-1000]x1#9 B5000-8000[2500-4000]x1#9", "O/0 B3000[1000-2500]x1, K/0 3000#9"},
                  {"a whole one and a part; transitions keep no gap between", "O B0-1000#1 C3000-4000#2 D4500-8000#3",
                   "O B0-1000#1 D5000-8000[500-3500]#3",
                   "O/0 ~1000, O/1 C1000, O/2 ~500, O/3 D500, K/0 ~1000, K/1 1000#2, K/2 500#3"},
                  {"the right part, and the gap behind the last one", "O B0-1000#1 C1500-4000#2",
                   "O B0-1000#1 C1500-2000#2", "O/0 C2000[500-2500], O/1 ~1000, K/0 2000#2, K/1 ~1000"},
                  {"without a key", "O B0-8000", "O B0-2000 B5000-8000[5000-8000]", "O/0 B3000[2000-5000], K/0 3000#0"},
              });
}

TEST_F(RangeTest, Delete)
{
    expectAll(
        mnuEditClear_Click,
        {
            {"inside one", "V A0-8000x3 B9000-9500", "V A0-2000x3 A5000-8000[5000-8000]x3 B9000-9500"},
            {"parts of two leave the third", "V A0-4000 B4000-8000 C8000-9000",
             "V A0-2000 B5000-8000[1000-4000] C8000-9000"},
            {"at another speed too", "V A0-4000 B4000-8000 C8000-9000[0-333]",
             "V A0-2000 B5000-8000[1000-4000] C8000-9000[0-333]"},
            {"ending in a gap draws the next towards it", "V A0-4000 C8000-12000[2500-6500]",
             "V A0-2000 C6000-12000[500-6500]", "", "", 2000, 6000},
            {"as far as its medium reaches", "V A0-4000 C8000-12000[500-4500]", "V A0-2000 C7500-12000", "", "", 2000,
             6000},
            {"but not what begins where it ends", "V A0-5000 B5000-6000[100-1100]", "V A0-2000 B5000-6000[100-1100]"},
            {"nor over what is ahead", "V A0-5000 B5000-6000 C6500-7000[2000-2500]",
             "V A0-2000 B5000-6000 C6000-7000[1500-2500]"},
            {"effects and overlays behind it stay", "V A0-500 | E Blur6000-7000 | O B6000-7000[500-1500]#1",
             "V A0-500 | E Blur6000-7000 | O B6000-7000[500-1500]#1"},
            {"overlays", "O B0-3000#1 C3000-4000#2 D4000-9000#3", "O B0-2000#1 D5000-9000[1000-5000]#3"},
            {"effects", "V A0-500 | E Blur0-3000 Wave3000-4000 Fade4000-9000", "V A0-500 | E Blur0-2000 Fade5000-9000"},
            {"inside an effect and an overlay", "V A0-500 | E Blur0-9000 | O B0-9000#1",
             "V A0-500 | E Blur0-2000 Blur5000-9000 | O B0-2000#1 B5000-9000[5000-9000]#1"},
        });
}

TEST_F(RangeTest, Crop)
{
    expectAll(
        mnuEditCrop_Click,
        {
            {"keeps what is inside where it is", "V A0-1000 B1500-3000 C3000-4000 D4000-8000",
             "V B2000-3000[500-1500] C3000-4000 D4000-5000"},
            {"inside one, at double speed", "V A0-8000[0-16000]x1", "V A2000-5000[4000-10000]x1"},
            {"at its very edges only a source stays", "V A2000-5000 | E Blur2000-4000 | O B2000-5000#1",
             "V A2000-5000"},
            {"effects", "V A2000-3000 | E Blur0-3000 Wave3500-4000 Fade4500-9000",
             "V A2000-3000 | E Blur2000-3000 Wave3500-4000 Fade4500-5000"},
            {"inside an effect", "V A2000-3000 | E Blur0-9000", "V A2000-3000 | E Blur2000-5000"},
            {"overlays", "O A0-500#4 B500-3000#1 C3500-4000#2 D4500-9000#3",
             "O B2000-3000[1500-2500]#1 C3500-4000#2 D4500-5000#3"},
            {"inside an overlay", "O B0-9000#4", "O B2000-5000[2000-5000]#4"},
            {"rows that are linked and unlocked", "V A0-1000 | E Blur0-1000 | O B0-1000#1 | 1 S0-1000 | 2 T0-1000",
             "V A0-1000 | E Blur0-1000 | O B0-1000#1", "", "-v Le Lo"},
        });
}

TEST_F(RangeTest, CropOfSourcesKeepsWhatLiesOutside)
{
    expectAll(
        mnuEditCropSources_Click,
        {
            // A source behind the selection would be told to end before it begins, which the engine does not take.
            {"ahead and behind", "V A0-1000 B1500-3000 C4000-8000 D8500-9000",
             "V A0-1000 B2000-3000[500-1500] C4000-5000 D8500-9000"},
            {"others as in a crop", "V A0-1000 | E Blur0-500 Wave600-3000 | O B0-500#1 C600-3000#2 D8000-9000#3",
             "V A0-1000 | E Blur0-500 Wave2000-3000 | O B0-500#1 C2000-3000[1400-2400]#2 D8000-9000#3"},
        });
}

TEST_F(RangeTest, AnEmptyMediaRangeIsLeftAsItIs)
{
    expectsErrors = true;
    lay("V A0-4000[500-500] B4000-8000");
    for (const auto& command : {mnuEditCut_Click, mnuEditClear_Click, mnuEditCopy_Click}) {
        lay("V A0-4000[500-500] B4000-8000");
        select(2000, 5000);
        command();
        expectStep("V A0-4000[500-500] B4000-8000", command == mnuEditCopy_Click
                                                        ? "V A0-4000[500-500] B4000-8000"
                                                        : "V A0-4000[500-500] B5000-8000[1000-4000]");
    }
    EXPECT_EQ(clipboard(), "V/0 B1000");
    EXPECT_NE(error_log::read().find("CutAction"), std::string::npos);
}

TEST_F(RangeTest, TheReservedModeOnlyHidesTheSliders)
{
    lay("V A0-8000");
    select(2000, 5000);
    EXPECT_TRUE(moduleEdit::EditSelection(moduleEdit::EditMode::kReserved).flag);
    EXPECT_EQ(text(), "V A0-8000");
    EXPECT_FALSE(form.imgStartSelHandle.Visible);
}

} // namespace
} // namespace editing_test
