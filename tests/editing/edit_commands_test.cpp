// The frame of the edit commands: history, menus, re-entry, and engine calls that fail anywhere on the way.

#include "support/logic_harness.h"

#include "editing/moduleEdit.h"
#include "editing/moduleTWState.h"
#include "shell/edit_commands.h"

namespace logic_test {
namespace {

using namespace mdiTarnwick;

using EditCommandsTest = LogicTest;

TEST_F(EditCommandsTest, HistoryAndState)
{
    const struct {
        void (*command)();
        const char* row;
        bool updatesList;
    } cases[] = {{mnuEditCut_Click, "Cut", true},     {mnuEditCopy_Click, "Copy", false},
                 {mnuEditPaste_Click, "Paste", true}, {mnuEditClear_Click, "Delete", true},
                 {mnuEditCrop_Click, "Crop", true},   {mnuEditCropSources_Click, "Crop Sources", true}};
    for (const auto& [command, row, updatesList] : cases) {
        lay("V 0-1000* b1000-2000");
        UpdateTreeView();
        form.tvwTimeline.Change().Children.clear();
        state::ProjectModified = false;
        command();
        EXPECT_EQ(history(), std::string(row) + " | 1/1");
        EXPECT_TRUE(state::ProjectModified);
        EXPECT_EQ(!form.tvwTimeline.Root().Children.empty(), updatesList) << row;
        EXPECT_FALSE(state::InSelectionUpdate);
        EXPECT_EQ(forms::mdiTarnwick.MousePointer, 0);
        EXPECT_TRUE(forms::mdiTarnwick.mnuEditUndo.Enabled);
    }
}

TEST_F(EditCommandsTest, PasteIsEnabledByTheClipboardAlone)
{
    for (const char* const clips : {"V c500", "E 10", "K 10#1"}) {
        fill(clips);
        EXPECT_TRUE(moduleTWState::IsClipboardFilled());
        EnableOrDisableMenuItems();
        EXPECT_TRUE(forms::mdiTarnwick.mnuEditPaste.Enabled && forms::mdiTarnwick.mnuEC_Paste.Enabled);
        EXPECT_FALSE(forms::mdiTarnwick.mnuEditCut.Enabled);
    }
    fill("");
    EnableOrDisableMenuItems();
    EXPECT_FALSE(forms::mdiTarnwick.mnuEditPaste.Enabled);
}

TEST_F(EditCommandsTest, OnAnEmptyTimelineOnlyAPasteRuns)
{
    fill("V c500");
    for (const auto command : {mnuEditCut_Click, mnuEditCopy_Click, mnuEditClear_Click, mnuEditCrop_Click}) {
        command();
    }
    EXPECT_EQ(clipboard(), "V c500");
    EXPECT_EQ(history(), " | 0/0");
    EXPECT_FALSE(state::ProjectModified);
    mnuEditPaste_Click();
    expectStep("", "V c0-500");
}

TEST_F(EditCommandsTest, NothingRunsInsideAnother)
{
    lay("V 0-1000*");
    fill("V c500");
    state::InSelectionUpdate = true;
    for (const auto command : {mnuEditCut_Click, mnuEditClear_Click, mnuEditPaste_Click}) {
        command();
    }
    EXPECT_FALSE(moduleEdit::EditCopy());
    EXPECT_FALSE(moduleEdit::EditPaste());
    state::InSelectionUpdate = false;
    EXPECT_EQ(text() + history() + clipboard(), "V 0-1000* | 0/0V c500");
}

TEST_F(EditCommandsTest, AnEmptyMediaRangeIsLeftAsItIs)
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

struct Failing {
    const char* name;
    void (*command)();
    bool isOverSelection;
    bool isWholeOrNothing = false;
};

class FailureTest : public EditCommandsTest {
protected:
    void begin(const Failing& it)
    {
        lay(layout);
        fill("V c500 ~100 d300m1 A ~50 t500 O d400m2 ~50 c300 "
             "E 200 ~50 Wave70 K 400#4 300#5");
        if (it.isOverSelection) {
            showSelection(2000, 5000);
        } else {
            moduleTimeline::ShowSelSliders(false);
            moduleTimeline::SetSliderPosition(1000, false);
        }
    }
    /// Runs the command with its nth call of these failing. False when it makes fewer.
    bool failsAtCall(const Failing& it, const std::set<std::string>& calls, int nth)
    {
        SCOPED_TRACE(std::string(it.name) + ", call " + std::to_string(nth));
        begin(it);
        it.command();
        const std::string whole = unselected(text());
        begin(it);
        platform.tickCount += 2000; // or silent records of one kind are dropped
        engineCalls.failCall(calls, nth);
        it.command();
        if (engineCalls.failsLater()) {
            engineCalls.failCall({}, 0);
            return false;
        }
        EXPECT_TRUE(!it.isWholeOrNothing || text() == unselected(layout) || unselected(text()) == whole) << text();
        EXPECT_NE(error_log::read(), "");
        error_log::remove();
        EXPECT_FALSE(state::InSelectionUpdate);
        expectNothingLost();
        return !HasFailure();
    }
    void expectNothingLost()
    {
        std::int16_t overlays = 0;
        std::int16_t keys = 0;
        check(timelineCalls->GetSourceCount(state::OverlayTrack, overlays));
        check(timelineCalls->GetTransitionCount(state::OverlayTrack, keys));
        EXPECT_EQ(overlays, keys) << text();
        if (unselected(text()) != unselected(layout)) {
            ModuleHistory::OnEditUndoClick();
            EXPECT_EQ(text(), unselected(layout));
        }
    }

    const std::string layout = "V 0-3000m3 b4000-8000=0-2000 c8000-9000* E 0-3000 Wave3500-4000* Fade4500-9000 "
                               "O 0-2500#1* b2500-4000#2 c4500-9000=0-2250m1#3* A 0-9000* t9000-9500";
};

TEST_F(FailureTest, WhateverCallFailsNothingIsLost)
{
    const std::set<std::string> changes{
        "InsertSource",      "InsertEffect",   "InsertTransition", "RemoveSource",         "RemoveEffect",
        "RemoveTransition",  "SetSourceTimes", "SetEffectTimes",   "SetTransitionTimes",   "SetSourceMediaTimes",
        "ShiftSources",      "ShiftEffects",   "ShiftTransitions", "SetSourceStretchMode", "SetSourceSelected",
        "SetEffectSelected", "SetKeyColor",    "SetKeyParameter",  "ClearKeyParameters"};
    const std::set<std::string> reads{
        "GetSourceTimes",       "GetEffectTimes",       "GetTransitionTimes", "GetSourceMediaTimes",
        "GetSourceCount",       "GetEffectCount",       "GetTransitionCount", "GetSourceStream",
        "GetEffectName",        "GetTransitionName",    "GetTrackLink",       "IsSourceSelected",
        "IsEffectItemSelected", "GetSourceStretchMode", "GetKeyBlue",         "IsVideoTrack"};
    const Failing cases[] = {{"cut", mnuEditCut_Click, true},
                             {"delete", mnuEditClear_Click, true},
                             {"crop", mnuEditCrop_Click, true},
                             {"cut of items", mnuEditCut_Click, false},
                             {"crop of items", mnuEditCrop_Click, false},
                             {"copy", mnuEditCopy_Click, true},
                             {"paste", mnuEditPaste_Click, false, true},
                             {"paste over", mnuEditPaste_Click, true, true}};
    int failures = 0;
    // Each change fails once. Most reads are of the history and the drawing: every seventh will do.
    for (const auto& [calls, step] : {std::pair{changes, 1}, std::pair{reads, 7}}) {
        for (const auto& it : cases) {
            for (int nth = 1; failsAtCall(it, calls, nth); nth += step) {
                ++failures;
            }
        }
    }
    EXPECT_GT(failures, 300);
}

} // namespace
} // namespace logic_test
