// The tools panel: which actions there are, what they run; effects, history.

#include "shell/shell_harness.h"

#include "shell/action_table.h"

#include <set>

namespace logic_test {
namespace {

using shell::ActionContext;
using shell::CommandTests;

TEST(Actions, AreOfferedWhereTheMenuTakesThem)
{
    using enum ActionContext;
    using T = CommandTests;
    const shell::CommandTest holding[] = {&T::hasRows,           &T::hasVideo,       &T::hasTimeline,
                                          &T::canUndo,           &T::canRedo,        &T::canEdit,
                                          &T::canCropSources,    &T::canPaste,       &T::canRestoreSize,
                                          &T::canSetStretchMode, &T::canSetKeyColor, &T::hasEffects};
    std::set<std::string_view> offered;
    for (const shell::CommandTest one : holding) {
        CommandTests tests;
        tests.hasTimeline = true;
        tests.*one = true;
        for (const ActionContext context : {kMediaList, kPreview, kTimeline, kCommon}) {
            for (const shell::Action* const action : actionsOf(context, tests)) {
                offered.insert(action->text);
                const shell::MenuRow* const menu = shell::findMenu(action->menu);
                EXPECT_EQ(menu == nullptr, action->menu.empty()) << action->text;
                // The menu waits for a picture, the action for anything: both as they are known.
                const bool isKnown = action->menu == "mnuToolsAddText" || action->menu == "mnuToolsTakeSnap";
                EXPECT_TRUE(menu == nullptr || menu->test == nullptr || tests.*menu->test || isKnown) << action->text;
            }
        }
    }
    EXPECT_GT(offered.size(), 25U);
}

using ToolsPanelTest = ShellTest;

TEST_F(ToolsPanelTest, ActionsFollowThePanelAndTheTimeline)
{
    const auto click = [&](std::int32_t place, int button) {
        frmTools::tvwActions_MouseDown(button);
        frmTools::tvwActions_NodeClick({place});
    };
    const std::string projects = "|Create a new project|Open an existing project...";
    const std::string save = projects + "|Save current project";
    EXPECT_EQ(texts(tools.tvwActions), "Open media file..." + projects);
    open({"mpeg4.avi"});
    EXPECT_EQ(texts(tools.tvwActions), "Open media file...|Add media file to the timeline" + save);
    click(1, 2);
    EXPECT_TRUE(moduleTimeline::IsTimelineEmpty());
    click(1, 1);
    EXPECT_FALSE(moduleTimeline::IsTimelineEmpty());
    frmTools::tvwActions_NodeClick({1}); // without a press before
    EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
    EXPECT_EQ(texts(tools.tvwActions),
              "Open media file...|Add media file to the timeline|Add media file to overlay track" + save);
    const std::uint64_t before = tools.tvwActions.generation();
    EnableOrDisableMenuItems();
    EXPECT_EQ(tools.tvwActions.generation(), before); // the same list is not made anew
    frmTimeline::Form_Activate();
    EXPECT_EQ(
        texts(tools.tvwActions),
        "Undo|Show/Hide selection sliders|Add an effect|Split timeline tracks|Pack timeline tracks|Add text as overlay|"
        "Save timeline..."
            + save);
    click(2, 1);
    EXPECT_EQ(tools.lvwHistory.get().size(), 2U);
    click(1, 1);
    EXPECT_TRUE(form.imgStartSelHandle.Visible);
    click(0, 1);
    EXPECT_EQ(texts(tools.tvwActions),
              "Undo|Redo|Show/Hide selection sliders|Delete selection|Cut selection|Copy selection|Crop selection|"
              "Crop source(s)|Add an effect|Split timeline tracks|Pack timeline tracks|Add text as overlay|"
              "Save timeline..."
                  + save);
    frmTools::ActionsClear();
    frmTools::ActionsBuildMediaList();
    frmTools::ActionsBuildCommon();
    EXPECT_EQ(texts(tools.tvwActions),
              "Open media file...|Add media file to the timeline|Add media file to overlay track" + save);
    mdiTarnwick::OnActionsClick("Cut selection"); // not built yet
    mdiTarnwick::OnActionsClick("Anything");
}

TEST_F(ToolsPanelTest, EffectsTabsHistory)
{
    std::string effects;
    for (std::int32_t place = 1; place <= tools.lvwEffects.Count(); ++place) {
        effects += tools.lvwEffects.Row(place).Text + (tools.lvwEffects.Row(place).Selected ? "* " : " ");
    }
    EXPECT_EQ(effects, "Fade* Pixelate Blur Wave Emboss Engrave ");
    EXPECT_EQ(tools.lvwEffects.SelectedItem, 1);
    EXPECT_FALSE(tools.cmdAdd.Visible);
    frmTools::tbsTools_Click(2);
    EXPECT_TRUE(tools.cmdAdd.Visible);
    frmTools::tbsTools_Click(3);
    EXPECT_FALSE(tools.cmdAdd.Visible);
    open({"still.bmp"});
    mdiTarnwick::mnuEditAddToTimeline_Click();
    frmTools::lvwEffects_DblClick();
    tools.lvwHistorySelected = 2;
    frmTools::lvwHistory_Click(); // takes the effect back
    EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
}

} // namespace
} // namespace logic_test
