// Cut, copy, delete and crop of selected items, and of none.

#include "editing/edit_harness.h"

namespace editing_test {
namespace {

using namespace mdiTarnwick;

using WholeItemsTest = EditTest;

TEST_F(WholeItemsTest, OnEveryRow)
{
    const std::string layout = "V A0-1000! B1000-2000 C3000-4000[500-2500]x2! | E Blur0-500! Wave600-900 | "
                               "O D0-1000#5! A1500-2500#6 | 1 S0-700! T700-900 | 2 S0-800 T800-900";
    const std::string cut = "V B1000-2000 | E Wave600-900 | O A1500-2500#6 | 1 T700-900 | 2 S0-800 T800-900";
    const std::string clips = "V/0 A1000, V/1 C1000[500-2500]x2, 1/0 S700, O/0 D1000, E/0 Blur500, K/0 1000#5";
    const struct {
        const char* name;
        void (*command)();
        const char* rows;
        std::string after;
        std::string clipboard;
    } cases[] = {
        {"copy", mnuEditCopy_Click, "", layout, clips},
        {"delete", mnuEditClear_Click, "", cut, ""},
        {"cut", mnuEditCut_Click, "", cut, clips},
        {"crop, but where nothing is selected", mnuEditCrop_Click, "",
         "V A0-1000! C3000-4000[500-2500]x2! | E Blur0-500! | O D0-1000#5! | 1 S0-700! | 2 S0-800 T800-900", ""},
        {"crop of sources is the same", mnuEditCropSources_Click, "",
         "V A0-1000! C3000-4000[500-2500]x2! | E Blur0-500! | O D0-1000#5! | 1 S0-700! | 2 S0-800 T800-900", ""},
        {"locks are per row", mnuEditCut_Click, "Lv Lo",
         "V A0-1000! B1000-2000 C3000-4000[500-2500]x2! | E Wave600-900 | O D0-1000#5! A1500-2500#6 | 1 T700-900 | "
         "2 S0-800 T800-900",
         "1/0 S700, E/0 Blur500"},
        {"of a crop too", mnuEditCrop_Click, "Le L1 Lv",
         "V A0-1000! B1000-2000 C3000-4000[500-2500]x2! | E Blur0-500! Wave600-900 | O D0-1000#5! | "
         "1 S0-700! T700-900 | 2 S0-800 T800-900",
         ""},
        {"links do not matter", mnuEditCut_Click, "-v -e -o -1 -2", cut, clips},
    };
    for (const auto& [name, command, rows, after, expected] : cases) {
        SCOPED_TRACE(name);
        clear();
        lay(layout);
        setRows(rows);
        command();
        EXPECT_EQ(clipboard(), expected);
        expectStep(layout, after);
    }
}

TEST_F(WholeItemsTest, TheLastVideoTakesTheEffectsAlong)
{
    lay("V A0-1000! | E Blur0-500 | 2 T0-500");
    mnuEditClear_Click();
    expectStep("V A0-1000! | E Blur0-500 | 2 T0-500", "2 T0-500");
}

TEST_F(WholeItemsTest, NothingSelected)
{
    lay("V A0-1000 | O B0-500#1");
    fill("V/0 C500");
    mnuEditClear_Click();
    mnuEditCrop_Click();
    EXPECT_EQ(text(), "V A0-1000 | O B0-500#1");
    EXPECT_EQ(clipboard(), "V/0 C500");
    mnuEditCut_Click(); // empties the clipboard all the same
    EXPECT_EQ(text(), "V A0-1000 | O B0-500#1");
    EXPECT_EQ(clipboard(), "");
    EXPECT_EQ(ModuleHistory::HistoryIndex, 3);
}

} // namespace
} // namespace editing_test
