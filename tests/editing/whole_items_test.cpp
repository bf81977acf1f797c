// Cut, copy, delete and crop of selected items, and of none.

#include "support/logic_harness.h"

#include "editing/moduleEdit.h"
#include "shell/edit_commands.h"

namespace logic_test {
namespace {

using namespace mdiTarnwick;

using WholeItemsTest = LogicTest;

TEST_F(WholeItemsTest, OnEveryRow)
{
    const std::string layout = "V 0-1000* b1000-2000 c3000-4000=500-2500m2* E 0-500* Wave600-900 "
                               "O d0-1000#5* 1500-2500#6 A 0-700* t700-900 B 0-800 t800-900";
    const std::string cut = "V b1000-2000 E Wave600-900 O 1500-2500#6 A t700-900 B 0-800 t800-900";
    const std::string clips = "V 1000 c1000=500-2500m2 A 700 O d1000 E 500 K 1000#5";
    const struct {
        const char* name;
        void (*command)();
        std::string after;
        std::string clipboard;
    } cases[] = {
        {"copy", mnuEditCopy_Click, layout, clips},
        {"cut", mnuEditCut_Click, cut, clips},
        {"crop, but where nothing is selected", mnuEditCrop_Click,
         "V 0-1000* c3000-4000=500-2500m2* E 0-500* O d0-1000#5* A 0-700* B 0-800 t800-900", ""},
    };
    for (const auto& [name, command, after, expected] : cases) {
        SCOPED_TRACE(name);
        fill("");
        lay(layout);
        command();
        EXPECT_EQ(clipboard(), expected);
        expectStep(layout, after);
    }
}

TEST_F(WholeItemsTest, NothingSelected)
{
    lay("V 0-1000 O b0-500#1");
    fill("V c500");
    mnuEditClear_Click();
    mnuEditCrop_Click();
    EXPECT_EQ(text(), "V 0-1000 O b0-500#1");
    EXPECT_EQ(clipboard(), "V c500");
    mnuEditCut_Click(); // empties the clipboard all the same
    EXPECT_EQ(text(), "V 0-1000 O b0-500#1");
    EXPECT_EQ(clipboard(), "");
    EXPECT_EQ(ModuleHistory::HistoryIndex, 3);
}

} // namespace
} // namespace logic_test
