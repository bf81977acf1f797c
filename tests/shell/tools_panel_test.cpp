// The tools panel: which actions there are, what they run; effects, history, hints.

#include "shell/shell_harness.h"

#include "shell/action_table.h"

namespace shell_test {
namespace {

using shell::ActionContext;
using shell::CommandTests;

/// Keys and texts of the actions of a context under these tests: "UNDO Undo|REDO Redo".
std::string actions(ActionContext context, std::initializer_list<shell::CommandTest> holding)
{
    CommandTests tests;
    for (const shell::CommandTest test : holding) {
        tests.*test = true;
    }
    std::string all;
    for (const shell::Action* const action : actionsOf(context, tests)) {
        all += (all.empty() ? "" : "|") + std::string(action->key) + " " + std::string(action->text);
    }
    return all;
}

TEST(Actions, OfEveryContext)
{
    using T = CommandTests;
    using enum ActionContext;
    const std::string always = "SEL_SLIDERS Show/Hide selection sliders|SPLIT_TIMELINE Split timeline tracks"
                               "|PACK_TIMELINE Pack timeline tracks|ADD_TEXT Add text as overlay"
                               "|SAVE_TIMELINE Save timeline...";
    const struct {
        ActionContext context;
        std::initializer_list<shell::CommandTest> tests;
        std::string actions;
    } cases[] = {
        {kMediaList, {}, "IMPORT_FILE Open media file..."},
        {kMediaList,
         {&T::hasRows, &T::hasVideo},
         "IMPORT_FILE Open media file...|ADD_TO_TIMELINE Add media file to the timeline"
         "|ADD_TO_OVERLAY Add media file to overlay track"},
        {kPreview, {}, ""},
        {kPreview,
         {&T::hasTimeline},
         "PLAY Play|PAUSE Pause|STOP Stop|REWIND Rewind|FORWARD Forward|LOOP Loop playback|TAKE_SNAP Take snap"
         "|SAVE_TIMELINE Save Timeline..."},
        {kTimeline, {&T::canUndo, &T::canRedo, &T::canPaste}, "UNDO Undo|REDO Redo"},
        {kTimeline, {&T::hasTimeline}, always},
        {kTimeline,
         {&T::hasTimeline, &T::canUndo, &T::canEdit, &T::canCropSources, &T::canPaste, &T::canRestoreSize, &T::hasVideo,
          &T::canSetKeyColor, &T::canSetStretchMode, &T::isAudioSelected},
         "UNDO Undo|SEL_SLIDERS Show/Hide selection sliders|CLEAR Delete selection|CUT Cut selection"
         "|COPY Copy selection|CROP Crop selection|CROP_SOURCES Crop source(s)|PASTE Paste"
         "|RESTORE_SIZE Restore to original size|ADD_EFFECT Add an effect|OVERLAY_TRANSPARENCY Set overlay key color"
         "|STRETCH Set stretch mode...|SPLIT_TIMELINE Split timeline tracks|PACK_TIMELINE Pack timeline tracks"
         "|REPEAT_AUDIO Repeat audio|ADD_TEXT Add text as overlay|SAVE_TIMELINE Save timeline..."},
        {kCommon, {}, "NEW Create a new project|OPEN Open an existing project..."},
        {kCommon, {&T::hasRows}, "NEW Create a new project|OPEN Open an existing project...|SAVE Save current project"},
    };
    for (const auto& [context, tests, expected] : cases) {
        EXPECT_EQ(actions(context, tests), expected);
    }
}

using ToolsPanelTest = ShellTest;

TEST_F(ToolsPanelTest, ActionsFollowThePanelAndTheTimeline)
{
    const auto click = [&](std::int32_t place, int button) {
        frmTools::tvwActions_MouseDown(button);
        frmTools::tvwActions_NodeClick({place});
    };
    EXPECT_EQ(texts(tools.tvwActions), "Open media file..."); // those whose command is built
    open({"mpeg4.avi"});
    EXPECT_EQ(texts(tools.tvwActions), "Open media file...|Add media file to the timeline");
    click(1, 2);
    EXPECT_TRUE(moduleTimeline::IsTimelineEmpty());
    click(1, 1);
    EXPECT_FALSE(moduleTimeline::IsTimelineEmpty());
    frmTools::tvwActions_NodeClick({1}); // without a press before
    EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
    EXPECT_EQ(texts(tools.tvwActions),
              "Open media file...|Add media file to the timeline|Add media file to overlay track");
    const std::uint64_t before = tools.tvwActions.generation();
    EnableOrDisableMenuItems();
    EXPECT_EQ(tools.tvwActions.generation(), before); // the same list is not made anew
    frmTimeline::Form_Activate();
    EXPECT_EQ(texts(tools.tvwActions),
              "Undo|Show/Hide selection sliders|Add an effect|Split timeline tracks|Pack timeline tracks");
    click(2, 1);
    EXPECT_EQ(tools.lvwHistory.get().size(), 2U);
    click(1, 1);
    EXPECT_TRUE(form.imgStartSelHandle.Visible);
    click(0, 1);
    EXPECT_EQ(texts(tools.tvwActions),
              "Undo|Redo|Show/Hide selection sliders|Delete selection|Cut selection|Copy selection|Crop selection|"
              "Crop source(s)|Add an effect|Split timeline tracks|Pack timeline tracks");
    frmTools::ActionsClear();
    frmTools::ActionsBuildMediaList();
    frmTools::ActionsBuildCommon();
    EXPECT_EQ(texts(tools.tvwActions),
              "Open media file...|Add media file to the timeline|Add media file to overlay track");
    mdiTarnwick::OnActionsClick("Cut selection"); // not built yet
    mdiTarnwick::OnActionsClick("Anything");
}

TEST_F(ToolsPanelTest, EffectsTabsHistoryHints)
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
    const std::pair<void (*)(), const char*> hints[] = {
        {frmTools::tvwActions_MouseMove, "Lists all actions possible in the current context"},
        {frmTools::lvwEffects_MouseMove, "Lists all effects that can be added to the timeline"},
        {frmTools::lvwHistory_MouseMove, "Lists all operations that has been carried out"},
        {frmTools::Form_MouseMove, "Ready"}};
    for (const auto& [move, hint] : hints) {
        move();
        EXPECT_EQ(panel(""), hint);
    }
}

} // namespace
} // namespace shell_test
