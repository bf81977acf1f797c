// Trims by the pointer, clicks with Alt, and drags that go on outside the view. At 10 ms a pixel.

#include "support/logic_harness.h"

#include "editing/adding.h"
#include "hand/drag_scroll.h"
#include "hand/row_drop.h"
#include "hand/row_events.h"

namespace logic_test {
namespace {

using namespace frmTimeline;

constexpr float kBody = 15; // below the corner where items are resized
constexpr float kCorner = 5;
enum Keys { kNone, kShift, kCtrl, kAlt = 4 };

/// The pointer on the video row, or on that of the sound.
void press(bool isSound, float x, float y, int keys)
{
    (isSound ? picAudio_MouseDown : picVideo_MouseDown)(0, 1, keys, x, y);
}
void move(bool isSound, float x, float y, int keys)
{
    (isSound ? picAudio_MouseMove : picVideo_MouseMove)(0, 1, keys, x, y);
}
void release(bool isSound, float x, float y, int keys)
{
    (isSound ? picAudio_MouseUp : picVideo_MouseUp)(0, 1, keys, x, y);
}

class TrimDragTest : public LogicTest {
protected:
    void TearDown() override
    {
        forms::mdiTarnwick.mnuToolsTrimMode.Checked = false;
        forms::mdiTarnwick.mnuViewSnapping.Checked = true;
        LogicTest::TearDown();
    }
};

TEST_F(TrimDragTest, EndsGoAsFarAsTheyCanAndToCuts)
{
    const struct {
        const char* what;
        const char* before;
        float from, to, y;
        int keys, keysThen;
        const char* after;
        const char* word = "Trim";
    } cases[] = {
        {"a still's end", "V 1000-2000 3000-4000", 195, 205, kBody, kAlt, kAlt, "V 1000-2100=0-1000* 3000-4000"},
        {"its start", "V 1000-2000", 105, 125, kBody, kAlt, kAlt, "V 1200-2000=0-1000*"},
        {"up to the next one", "V 1000-2000 3000-4000", 195, 395, kBody, kAlt, kAlt, "V 1000-3000=0-1000* 3000-4000"},
        {"of a joint by the side of the hand", "V 0-1000 1000-2000", 101, 121, kBody, kAlt, kAlt,
         "V 0-1000 1200-2000=0-1000*"},
        {"by a little too", "V 0-1000 1000-2000", 101, 105, kBody, kAlt, kAlt, "V 0-1000 1040-2000=0-1000*"},
        {"to a cut of another row", "V 1000-2000 A 0-2530", 195, 245, kBody, kAlt, kAlt,
         "V 1000-2530=0-1000* A 0-2530"},
        {"not with Shift", "V 1000-2000 A 0-2530", 195, 245, kBody, kAlt, kAlt + kShift,
         "V 1000-2500=0-1000* A 0-2530"},
        {"a short one by its thirds", "V 1000-1090", 108, 118, kBody, kAlt, kAlt, "V 1000-1190=0-90*"},
        {"its middle moves", "V 1000-1090", 104, 114, kBody, kAlt, kAlt, "V 1100-1190*", "Move"},
        {"without Alt", "V 1000-2000", 195, 205, kBody, kNone, kNone, "V 1100-2100*", "Move"},
        {"the corner stays the corner", "A 0-1000", 95, 105, kCorner, kAlt, kAlt, "A 0-1100=0-1000*", "Resize"},
        {"sound", "A 0-1000", 95, 105, kBody, kAlt, kAlt, "A 0-1100*"},
        {"its start", "A 500-1500=1000-2000", 52, 22, kBody, kAlt, kAlt, "A 200-1500=700-2000*"},
        {"no further than its medium", "A 1500-2500=1000-2000", 152, 22, kBody, kAlt, kAlt, "A 500-2500*"},
    };
    for (const auto& c : cases) {
        const bool isSound = c.before[0] == 'A';
        run({c.what, c.before,
             [&] {
                 press(isSound, c.from, c.y, c.keys);
                 move(isSound, c.to, c.y, c.keysThen);
                 EXPECT_EQ(form.Trimming, std::string_view(c.word) == "Trim");
                 release(isSound, c.to, c.y, c.keysThen);
                 EXPECT_EQ(history(), std::string(c.word) + " | 1/1");
                 EXPECT_FALSE(form.Trimming || form.picSnapLine.Visible);
             },
             c.after});
    }
}

TEST_F(TrimDragTest, TheModeAndTheSwitch)
{
    forms::mdiTarnwick.mnuToolsTrimMode.Checked = true;
    forms::mdiTarnwick.mnuViewSnapping.Checked = false;
    for (const float y : {kBody, kCorner}) {
        run({"the corner too", "V 2000-3000 A 0-1000",
             [&] {
                 picAudio_MouseMove(0, 0, kNone, 95, y);
                 EXPECT_EQ(form.ptrAudio[0].MousePointer, 9);
                 press(true, 95, y, kNone);
                 move(true, 196, y, kNone);
                 EXPECT_FALSE(form.picSnapLine.Visible);
                 release(true, 196, y, kNone);
             },
             "V 2000-3000 A 0-2010*"});
    }
    lay("V 1000-2000");
    press(false, 195, kBody, kNone);
    moduleScaleRenderer::SetZoomFactor(20);
    move(false, 107, kBody, kNone);
    EXPECT_EQ(text(), "V 1000-2190=0-1000*") << "a zoom under the hand";
    release(false, 107, kBody, kNone);
    moduleScaleRenderer::SetZoomFactor(10);
    setRows("La");
    lay("A 0-1000");
    press(true, 95, kBody, kNone);
    move(true, 105, kBody, kNone);
    EXPECT_EQ(text(), "A 0-1000*") << "a locked row";
}

TEST_F(TrimDragTest, WhatComesToNothingLeavesTheHistoryAlone)
{
    const struct {
        const char* what;
        std::vector<float> xs;
        bool isEscaped;
        const char* selected;
    } cases[] = {{"a click in the mode", {195}, false, "V 0-1000 1000-2000*"},
                 {"there and back", {195, 175, 195}, false, "V 0-1000 1000-2000*"},
                 {"Esc", {195, 175}, true, "V 0-1000* 1000-2000*"}};
    forms::mdiTarnwick.mnuToolsTrimMode.Checked = true;
    for (const auto& [what, xs, isEscaped, selected] : cases) {
        SCOPED_TRACE(what);
        lay("V 0-1000 1000-2000");
        command("Cut", [] {});
        ModuleHistory::OnEditUndoClick();
        const std::string past = history();
        state::ProjectModified = false;
        select(video(), 0);
        select(video(), 1);
        press(false, xs[0], kBody, kNone);
        for (const float x : xs) {
            move(false, x, kBody, kNone);
            EXPECT_EQ(history(), x == xs[0] ? history() : "Trim | 1/1");
        }
        if (isEscaped) {
            picVideo_KeyDown(0, 27, kNone);
            EXPECT_EQ(forms::mdiTarnwick.sbr.Panel(1).get(), "Ready") << "the end is no longer where it was told to be";
        }
        release(false, xs.back(), kBody, kNone);
        EXPECT_EQ(text(), selected);
        EXPECT_EQ(history(), past);
        EXPECT_FALSE(state::ProjectModified || form.Trimming || form.picSnapLine.Visible);
    }
}

TEST_F(TrimDragTest, AMarkIsShownOnlyWhereFilesGoIn)
{
    lay("V 0-1000");
    const items::TrackRow& row = items::row(items::RowKind::kVideo, 0);
    const auto over = [&](int keys) {
        dragFilesOver(row, 50, keys, false);
        return std::pair(form.ptrVideo[0].DropMark.Visible.get(), forms::mdiTarnwick.sbr.Panel(1).get().substr(0, 6));
    };
    EXPECT_EQ(over(kCtrl), std::pair(true, std::string("Goes i")));
    EXPECT_EQ(over(kNone), std::pair(false, std::string("Ready")));
    dragFilesOver(items::row(items::RowKind::kAudio, 1), 50, kNone, false);
    EXPECT_EQ(forms::mdiTarnwick.sbr.Panel(1).get(), "Drop it on Audio 1, then choose Edit > Move to Audio 2");
    EXPECT_EQ(over(kNone), std::pair(false, std::string("Ready")));
    setRows("La");
    EXPECT_EQ(over(kCtrl), std::pair(false, std::string("Please"))) << "the sound would find no room";
}

TEST_F(TrimDragTest, MarksStandWhereFilesLand)
{
    using enum items::RowKind;
    lay("V 0-1000");
    const auto over = [&](items::RowKind kind, bool areListed) {
        dragFilesOver(items::row(kind, 0), 50, kCtrl, areListed);
        return std::array{form.ptrVideo[0].DropMark.Visible.get(), form.ptrAudio[0].DropMark.Visible.get(),
                          form.ptrOverlay[0].DropMark.Visible.get()};
    };
    open({"mpeg4.avi"});
    for (const items::RowKind kind : {kVideo, kAudio}) {
        EXPECT_EQ(over(kind, true), (std::array{true, true, false})) << "a film with sound";
    }
    EXPECT_EQ(over(kOverlay, true), (std::array{false, false, true}));
    open({"still.tga"});
    EXPECT_EQ(over(kAudio, true), (std::array{true, false, false})) << "a still has no sound";
    EXPECT_EQ(over(kAudio, false), (std::array{true, true, false})) << "what is not looked into yet";
    dragFilesOff();
}

TEST_F(TrimDragTest, AltAndAClickTakesTheSoundAlong)
{
    open({"mpeg4.avi"});
    moduleTimeline::OnEditAddToTimelineClick();
    put("O 0-900#30*");
    ModuleHistory::OnEditUndoClick();
    ModuleHistory::OnEditRedoClick();
    command("Cut", [] {});
    ModuleHistory::OnEditUndoClick();
    const std::string past = history();
    put("O 0-900#30*");
    setRows("La");
    const struct {
        float x, y, by;
        const char* flags;
    } cases[] = {{250, kBody, 3, "V 1 O 0 A 1"}, // in the middle
                 {2, kBody, 3, "V 1 O 0 A 1"},   // at an end
                 {250, kBody, 0, "V 1 O 0 A 1"},
                 {2, kBody, 5, "V 1 O 0 A 0"}}; // a trim that has no room
    for (const auto& [x, y, by, wanted] : cases) {
        SCOPED_TRACE(std::to_string(x) + " " + std::to_string(by));
        moduleTimeline::ClearMFSTSubSelections();
        press(false, x, y, kAlt);
        move(false, x - by, y, kAlt);
        release(false, x - by, y, kAlt);
        EXPECT_EQ(flags(), wanted);
        EXPECT_EQ(history(), past);
        EXPECT_FALSE(form.DragActive);
    }
    press(true, 250, kBody, kAlt); // on the locked row
    release(true, 250, kBody, kAlt);
    EXPECT_EQ(flags(), "V 1 O 0 A 1");
    press(false, 250, kBody, kAlt);
    move(false, 250, kBody + 9, kAlt);
    release(false, 250, kBody, kAlt);
    EXPECT_EQ(flags(), "V 1 O 0 A 0") << "the pointer had gone";
}

TEST_F(TrimDragTest, OutsideTheViewTheDragGoesOn)
{
    const auto tick = [&](int times) {
        for (int i = 0; i < times && form.tmDrag.Enabled; ++i) {
            tmDrag_Timer();
        }
    };
    const struct {
        const char* what;
        const char* before;
        float from, to, y;
        int keys, ticks;
        std::int32_t view;
        const char* after;
    } cases[] = {
        {"to the right", "V 0-3000 A 0-9000", 200, 405, kBody, kNone, 3, 3, "V 2350-5350* A 0-9000"},
        {"faster further out", "V 0-3000 A 0-9000", 200, 490, kBody, kNone, 2, 6, "V 3500-6500* A 0-9000"},
        {"the film grows", "V 0-4500", 300, 401, kBody, kNone, 30, 30, "V 4010-8510*"},
        {"in the view it stands", "V 0-3000 A 0-9000", 200, 390, kBody, kNone, 9, 0, "V 1900-4900* A 0-9000"},
        {"a resize", "V 0-3900 A 0-9000", 389, 409, kCorner, kNone, 2, 2, "V 0-4300=0-3900* A 0-9000"},
        {"a trim", "V 0-3900 A 0-9000", 389, 409, kBody, kAlt, 2, 2, "V 0-4300=0-3900* A 0-9000"},
        {"as far as the next", "V 0-3900 4250-5000 A 0-9000", 389, 409, kBody, kAlt, 9, 1,
         "V 0-4250=0-3900* 4250-5000 A 0-9000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        form.hsb.SetValue(0);
        lay(c.before);
        press(false, c.from, c.y, c.keys);
        move(false, c.to, c.y, c.keys);
        tick(c.ticks);
        EXPECT_EQ(form.hsb.Value(), c.view);
        release(false, c.to, c.y, c.keys);
        EXPECT_EQ(form.tmDrag.Enabled, c.to > 400) << "until the next tick";
        tick(1);
        EXPECT_FALSE(form.tmDrag.Enabled);
        expectStep(c.before, c.after);
    }
    lay("V 0-1000 3000-9000");
    form.hsb.SetValue(30);
    press(false, 50, kBody, kNone); // at 3500
    move(false, -1, kBody, kNone);  // to 2490
    tick(99);
    EXPECT_EQ(text(), "V 0-1000 1090-7090*") << "no further than what is ahead lets it, by whole ticks";
    EXPECT_EQ(form.hsb.Value(), 16);
    picVideo_KeyDown(0, 27, kNone);
    EXPECT_EQ(text(), "V 0-1000 3000-9000*");
}

} // namespace
} // namespace logic_test
