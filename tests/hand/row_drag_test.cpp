// Moving, resizing and nudging items on the rows. At 10 ms a pixel.

#include "support/logic_harness.h"

#include "hand/row_drag.h"
#include "hand/row_events.h"

namespace logic_test {
namespace {

using namespace frmTimeline;

/// The pointer on one row.
struct Row {
    void (*down)(std::int16_t, int, int, float, float);
    void (*move)(std::int16_t, int, int, float, float);
    void (*up)(std::int16_t, int, int, float, float);
    std::int16_t index = 0;
};
constexpr Row kVideo{picVideo_MouseDown, picVideo_MouseMove, picVideo_MouseUp};
constexpr Row kAudio1{picAudio_MouseDown, picAudio_MouseMove, picAudio_MouseUp};
constexpr Row kAudio2{picAudio_MouseDown, picAudio_MouseMove, picAudio_MouseUp, 1};

constexpr float kBody = 15; // below the zone where items are resized
constexpr float kEdge = 5;
enum Keys { kNone, kShift, kCtrl };

/// Presses, goes from place to place, and releases at the last.
std::function<void()> drag(const Row& row, float y, std::vector<float> xs, int keys = kNone)
{
    return [=] {
        row.down(row.index, 1, keys, xs[0], y);
        for (std::size_t i = 1; i < xs.size(); ++i) {
            row.move(row.index, 1, keys, xs[i], y);
        }
        row.up(row.index, 1, keys, xs.back(), y);
    };
}

class RowDragTest : public LogicTest {};

TEST_F(RowDragTest, MovesAndResizes)
{
    const Edit cases[] = {
        {"from a gap", "V 0-1000 2000-3000*", drag(kVideo, kBody, {150, 160}), "V 0-1000 2100-3100*"},
        {"there and back", "V 0-1000 2000-3000*", drag(kVideo, kBody, {250, 270, 250}), "V 0-1000 2000-3000*"},
        {"an empty row", "V 0-1000*", drag(kAudio2, kBody, {50, 70}, kCtrl), "V 0-1000*"},
        {"what was deselected stays", "V 0-1000* A 0-500*", drag(kVideo, kBody, {50, 60}, kCtrl),
         "V 0-1000 A 100-600*"},
        {"fractions of a pixel", "V 0-1000", drag(kVideo, kBody, {50, 50.4F, 50.8F, 51.2F, 51.6F, 52}), "V 20-1020*"},
        {"a short one stays, the long one not", "V 0-50* 50-2050*", drag(kVideo, kEdge, {200, 190}),
         "V 0-50* 50-1950=0-2000*"},
        {"there and back, but for the short one", "V 0-50* 50-2050*", drag(kVideo, kEdge, {200, 190, 200}),
         "V 0-150=0-50* 150-2150*"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
}

TEST_F(RowDragTest, ALockedRowIsSelectedAndNotDragged)
{
    setRows("La");
    lay("V 500-1000* A 100-900");
    drag(kAudio1, kBody, {60, 0})();
    EXPECT_EQ(text(), "V 500-1000 A 100-900*");
    EXPECT_EQ(history(), " | 0/0");
}

TEST_F(RowDragTest, AClickTakesItsEntryBackAndWhatWasUndoneIsGone)
{
    lay("V 0-1000 1000-2000");
    drag(kVideo, kBody, {150, 160})();
    drag(kVideo, kBody, {160, 170})();
    drag(kVideo, kEdge, {215, 225})();
    EXPECT_EQ(history(), "Move Move Resize | 3/3");
    forms::frmTools.lvwHistorySelected = 2;
    ModuleHistory::OnHistoryListClick();
    picVideo_MouseDown(0, 1, kNone, 50, kBody);
    EXPECT_EQ(history(), "Move Move | 2/2") << "the entry of the press";
    EXPECT_TRUE(form.DragActive);
    picVideo_MouseDown(0, 2, kNone, 150, kBody); // the other button does not end it
    picVideo_MouseUp(0, 2, kNone, 150, kBody);
    EXPECT_TRUE(form.DragActive);
    picVideo_MouseUp(0, 1, kNone, 50, kBody);
    EXPECT_EQ(history(), "Move | 1/1");
    EXPECT_TRUE(state::ProjectModified);
    ModuleHistory::OnEditRedoClick();
    EXPECT_EQ(history(), "Move | 1/1");
}

TEST_F(RowDragTest, EscapeAndALostRelease)
{
    const char* const layout = "V 0-50* 50-2050* E 100-200 O 0-900#30* A 0-500*";
    for (const float y : {kBody, kEdge}) {
        lay(layout);
        picVideo_MouseDown(0, 1, kNone, 200, y);
        picVideo_MouseMove(0, 1, kNone, 190, y);
        picVideo_MouseMove(0, 1, kNone, 260, y);
        EXPECT_NE(text(), layout);
        picVideo_KeyDown(0, 39, kNone); // no nudge now
        picVideo_KeyDown(0, 27, kNone);
        EXPECT_EQ(text(), layout) << "selected as before";
        EXPECT_EQ(history(), " | 0/0");
        EXPECT_FALSE(state::ProjectModified);
        EXPECT_EQ(selectedNode(), "Video 2");
        picVideo_MouseMove(0, 1, kNone, 270, y);
        picVideo_MouseUp(0, 1, kNone, 270, y);
        EXPECT_EQ(text(), layout);
    }
    run({"a lost release keeps what was done", "V 0-1000* A 0-500*",
         [] {
             picVideo_MouseDown(0, 1, kNone, 50, kBody);
             picVideo_MouseMove(0, 1, kNone, 60, kBody);
             EndItemDrag();
             picVideo_MouseMove(0, 1, kNone, 90, kBody);
         },
         "V 100-1100* A 100-600*"});
}

TEST_F(RowDragTest, WhatArrivesWhileAPressIsWorkedOnWaitsForIt)
{
    const auto release = [] { picVideo_MouseUp(0, 1, kNone, 150, kBody); };
    const struct {
        const char* what;
        std::function<void()> meanwhile; // the press moves the slider, and events run there
        const char* after;
        const char* history;
    } cases[] = {
        {"a release", release, "V 0-1000 1000-2000*", "Cut | 1/1"},
        {"a lost release", EndItemDrag, "V 0-1000 1000-2000*", "Cut | 1/1"},
        {"Escape", [] { picVideo_KeyDown(0, 27, kNone); }, "V 0-1000 1000-2000*", "Cut | 1/1"},
        {"a move and a release",
         [] {
             picVideo_MouseMove(0, 1, kNone, 170, kBody);
             picVideo_MouseUp(0, 1, kNone, 170, kBody);
         },
         "V 0-1000 1200-2200*", "Cut Move | 2/2"},
        {"a release and a click on the other one",
         [&] {
             release();
             drag(kVideo, kBody, {50})();
         },
         "V 0-1000* 1000-2000", "Cut | 1/1"},
    };
    for (const auto& [what, meanwhile, after, left] : cases) {
        SCOPED_TRACE(what);
        lay("V 0-1000 1000-2000");
        command("Cut", [] {});
        moduleTimeline::SetSliderPosition(0, false);
        platform.whileEventsRun = [once = true, &meanwhile = meanwhile]() mutable {
            if (std::exchange(once, false)) {
                meanwhile();
            }
        };
        picVideo_MouseDown(0, 1, kNone, 150, kBody);
        platform.whileEventsRun = nullptr;
        EXPECT_EQ(text(), after);
        EXPECT_EQ(history(), left);
        EXPECT_FALSE(form.DragActive);
    }
}

TEST_F(RowDragTest, ADragTakesBackItsOwnEntryOnly)
{
    for (void (*const end)() :
         {EndItemDrag, +[] { picVideo_KeyDown(0, 27, kNone); }, +[] { picVideo_MouseDown(0, 1, kNone, 50, kBody); }}) {
        lay("V 0-1000 1000-2000");
        picVideo_MouseDown(0, 1, kNone, 150, kBody);
        command("Cut", [] {}); // a step in the middle of it
        end();
        EXPECT_EQ(history().substr(0, 8), "Move Cut");
        picVideo_MouseUp(0, 1, kNone, 50, kBody);
        EXPECT_EQ(history(), "Move Cut | 2/2");
    }
}

TEST_F(RowDragTest, Nudges)
{
    const char* const fine = "Ready";
    const char* const coarse = "Use the 'Shift' key to nudge source(s) with the direction keys";
    const struct {
        const char* before;
        int key;
        int keys;
        const char* after;
        const char* hint;
    } cases[] = {
        {"V 0-1000 2000-3000* 3000-3500", 39, kNone, "V 0-1000 2050-3050* 3050-3550", coarse},
        {"V 0-1000 2000-3000* A 500-600*", 37, kShift, "V 0-1000 1990-2990* A 490-590*", fine},
        {"V 0-1000 1020-2000*", 37, kNone, "V 0-1000 1000-1980*", coarse},
        {"V 0-1000*", 37, kNone, "V 0-1000*", coarse},
        {"V 0-1000", 39, kNone, "V 0-1000", coarse},
        {"V 0-1000*", 16, kShift, "V 0-1000*", fine},
    };
    for (const auto& [before, key, keys, after, hint] : cases) {
        SCOPED_TRACE(before);
        lay(before);
        engineCalls.counts.clear();
        picVideo_KeyDown(0, key, keys);
        EXPECT_EQ(text(), after);
        EXPECT_EQ(history(), " | 0/0");
        EXPECT_EQ(panel(""), hint);
        EXPECT_EQ(state::ProjectModified, std::string_view(before) != after);
        EXPECT_EQ(engineCalls.counts["BuildPreview"] + engineCalls.counts["RefreshPreview"],
                  std::string_view(before) == after ? 0 : 1);
    }
}

TEST_F(RowDragTest, AStepAsksNoMoreThanAFewTimesForEachItem)
{
    constexpr std::int16_t kItems = 2000;
    for (std::int16_t i = 0; i < kItems; ++i) {
        engine::Bool16 ok = engine::kFalse;
        check(timelineCalls->InsertSource(video(), laid.stream('a'), i, i * 1000, i * 1000 + 1000, ok));
    }
    form.hsb.SetValue(0);
    moduleScaleRenderer::AdjustScroll();
    form.hsb.SetValue(form.hsb.Max()); // the last ones are in view
    const auto atEnd = static_cast<float>(kItems * 100 - form.hsb.Value() * 10 - 50);
    picVideo_MouseDown(0, 1, kNone, atEnd, kBody);
    engineCalls.counts.clear();
    picVideo_MouseMove(0, 1, kNone, atEnd + 10, kBody);
    int calls = 0;
    for (const auto& [name, count] : engineCalls.counts) {
        calls += count;
    }
    EXPECT_LT(calls, 5 * kItems);
    EXPECT_EQ(engineCalls.counts["ShiftSources"], 1);
    picVideo_MouseUp(0, 1, kNone, atEnd + 10, kBody);
}

} // namespace
} // namespace logic_test
