// The frame of the edit commands: history, menus, re-entry, and engine calls that fail anywhere on the way.

#include "editing/edit_harness.h"

#include "editing/moduleTWState.h"

namespace editing_test {
namespace {

using namespace mdiTarnwick;

class EditCommandsTest : public EditTest {
protected:
    static std::string rows()
    {
        std::string all;
        for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
            all += (all.empty() ? "" : ", ") + row.Text;
        }
        return all + " | " + std::to_string(ModuleHistory::HistoryIndex) + "/"
               + std::to_string(ModuleHistory::HistoryCollection.Count());
    }
};

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
        lay("V A0-1000! B1000-2000");
        UpdateTreeView();
        form.tvwTimeline.Change().Children.clear();
        state::ProjectModified = false;
        command();
        EXPECT_EQ(rows(), std::string(row) + " | 1/1");
        EXPECT_TRUE(state::ProjectModified);
        EXPECT_EQ(!form.tvwTimeline.Root().Children.empty(), updatesList) << row;
        EXPECT_FALSE(state::InSelectionUpdate);
        EXPECT_EQ(forms::mdiTarnwick.MousePointer, 0);
        EXPECT_TRUE(forms::mdiTarnwick.mnuEditUndo.Enabled);
    }
}

TEST_F(EditCommandsTest, PasteIsEnabledByTheClipboardAlone)
{
    for (const char* const clips : {"V/0 C500", "E/0 Blur10", "K/0 10#1"}) {
        fill(clips);
        EXPECT_TRUE(moduleTWState::IsClipboardFilled());
        EnableOrDisableMenuItems();
        EXPECT_TRUE(forms::mdiTarnwick.mnuEditPaste.Enabled && forms::mdiTarnwick.mnuEC_Paste.Enabled);
        EXPECT_FALSE(forms::mdiTarnwick.mnuEditCut.Enabled);
    }
    clear();
    EnableOrDisableMenuItems();
    EXPECT_FALSE(forms::mdiTarnwick.mnuEditPaste.Enabled);
}

TEST_F(EditCommandsTest, OnAnEmptyTimelineOnlyAPasteRuns)
{
    fill("V/0 C500");
    for (const auto command : {mnuEditCut_Click, mnuEditCopy_Click, mnuEditClear_Click, mnuEditCrop_Click}) {
        command();
    }
    EXPECT_EQ(clipboard(), "V/0 C500");
    EXPECT_EQ(rows(), " | 0/0");
    EXPECT_FALSE(state::ProjectModified);
    mnuEditPaste_Click();
    expectStep("", "V C0-500");
}

TEST_F(EditCommandsTest, NothingRunsInsideAnother)
{
    lay("V A0-1000!");
    fill("V/0 C500");
    state::InSelectionUpdate = true;
    for (const auto command : {mnuEditCut_Click, mnuEditClear_Click, mnuEditPaste_Click}) {
        command();
    }
    EXPECT_FALSE(moduleEdit::EditCopy());
    EXPECT_FALSE(moduleEdit::EditPaste());
    state::InSelectionUpdate = false;
    EXPECT_EQ(text() + rows() + clipboard(), "V A0-1000! | 0/0V/0 C500");
}

struct Failing {
    const char* name;
    void (*command)();
    bool isOverSelection;
};

class FailureTest : public EditCommandsTest {
protected:
    /// Runs the command with its nth call of these failing. False when it makes fewer.
    bool failsAtCall(const Failing& it, const std::set<std::string>& calls, int nth)
    {
        SCOPED_TRACE(std::string(it.name) + ", call " + std::to_string(nth));
        lay(layout);
        fill("V/0 C500, V/1 ~100, V/2 D300x1, 1/0 ~50, 1/1 T500, O/0 D400x2, O/1 ~50, O/2 C300, "
             "E/0 Blur200, E/1 ~50, E/2 Wave70, K/0 400#4, K/1 300#5");
        if (it.isOverSelection) {
            select(2000, 5000);
        } else {
            moduleTimeline::ShowSelSliders(false);
            moduleTimeline::SetSliderPosition(1000, false);
        }
        platform.tickCount += 2000; // or silent records of one kind are dropped
        engineCalls.failCall(calls, nth);
        it.command();
        if (engineCalls.failsLater()) {
            engineCalls.failCall({}, 0);
            return false;
        }
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
        if (bare(text()) != bare(layout)) {
            ModuleHistory::OnEditUndoClick();
            EXPECT_EQ(text(), bare(layout));
        }
    }

    const std::string layout =
        "V A0-3000x3 B4000-8000[0-2000] C8000-9000! | E Blur0-3000 Wave3500-4000! Fade4500-9000 | "
        "O A0-2500#1! B2500-4000#2 C4500-9000[0-2250]x1#3! | 1 S0-9000! T9000-9500";
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
                             {"paste", mnuEditPaste_Click, false},
                             {"paste over", mnuEditPaste_Click, true}};
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
} // namespace editing_test
