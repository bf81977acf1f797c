// The preview kept in step with the timeline: transport, seek bar and slider, edits, faults; and who tells it what.

#include "core/forms/frmTools.h"
#include "core/upcalls.h"
#include "engine/ITWPreview.h"
#include "hand/slider_drag.h"
#include "history/ModuleHistory.h"
#include "preview/frmPreview_events.h"
#include "preview/moduleTWPreview.h"
#include "support/logic_harness.h"
#include "volume/frmVolume.h"

#include <cstdlib>

namespace logic_test {
namespace {

using namespace moduleTWPreview;

class PreviewTest : public LogicTest {
protected:
    void SetUp() override
    {
        ::setenv("SDL_AUDIODRIVER", "dummy", 1);
        LogicTest::SetUp();
        player = engine::EngineAs<engine::ITWPreview>().get();
        engineCalls.answer = std::ref(held);
        preview.picDisplayHandle = 77; // names no surface
        frmPreview::Load();
    }
    void TearDown() override
    {
        frmPreview::Unload();
        LogicTest::TearDown();
    }

    void fill()
    {
        put("V 0-5000");
        UpdatePreview();
    }
    /// The player's clock goes on to a place.
    void goOnTo(Milliseconds ms)
    {
        engine::Bool16 ok = engine::kFalse;
        check(player->Seek(ms, ok));
    }
    void playFrom(Milliseconds ms)
    {
        OnCmdPlayClick();
        goOnTo(ms);
    }
    /// What the preview's player does.
    std::string playing()
    {
        Milliseconds at = 0;
        check(player->GetPosition(at));
        return (held.isPlaying ? "plays at " : "at ") + std::to_string(at);
    }
    /// What it shows as its state, where bar and slider stand, and what the player does.
    std::string now()
    {
        const char* const states[] = {"stopped", "playing", "paused"};
        const auto& bar = preview.sldSeekBar;
        return std::string(states[PreviewState]) + (preview.tm.Enabled ? " ticking " : " ")
               + std::to_string(bar.Value()) + " of " + std::to_string(bar.Min()) + "-" + std::to_string(bar.Max())
               + ", slider " + std::to_string(state::SliderPosition) + ": " + playing();
    }

    forms::FrmPreview& preview = forms::frmPreview;
    engine::ITWPreview* player = nullptr; // the engine's
    testsupport::HeldPlayer held{"PreviewInterface"};
};

TEST_F(PreviewTest, FollowsEveryChangeOfTheTimeline)
{
    UpdatePreview();
    EXPECT_EQ(now(), "stopped 0 of 0-10, slider 0: at 0");
    OnCmdPlayClick(); // there is nothing to play
    EXPECT_EQ(now(), "stopped 0 of 0-10, slider 0: at 0");
    put("V 0-5000");
    UpdatePreview();
    EXPECT_EQ(now(), "stopped 0 of 0-5000, slider 0: at 0");
    EXPECT_EQ(panel("DURATION"), "0:00:05.000");
    EXPECT_EQ(preview.lblDuration.Caption.get(), "0:00:05.000");
    OnCmdPlayClick();
    put("V 5000-6000");
    UpdatePreview();
    EXPECT_EQ(now(), "playing ticking 0 of 0-6000, slider 0: plays at 0");
    OnCmdPauseClick();
    UpdatePreview();
    EXPECT_EQ(now(), "paused 0 of 0-6000, slider 0: at 0");

    lay("");
    goOnTo(3000);
    preview.sldSeekBar.SetValue(3000);
    UpdatePreview(); // emptied: the player goes, and what was paused stops; closed, it keeps its place
    EXPECT_EQ(now(), "stopped 0 of 0-10, slider 0: at 3000");
    Milliseconds length = 0;
    check(player->GetDuration(length));
    EXPECT_EQ(length, 0);
    EXPECT_EQ(PreviewBuilt, engine::kFalse);
    EXPECT_EQ(panel("DURATION"), "0:00:00.000");
    EXPECT_EQ(forms::mdiTarnwick.MousePointer, 0);
    put("V 0-4000");
    UpdatePreview();
    EXPECT_EQ(now(), "stopped 0 of 0-4000, slider 0: at 0");
}

TEST_F(PreviewTest, APlayerThatHasFailedIsBuiltAgain)
{
    fill();
    playFrom(700);
    engineCalls.counts.clear();
    engineCalls.failCall({"IsPreviewValid"}, 1, engine::kDone);
    UpdatePreview();
    EXPECT_TRUE(engineCalls.counts["ClosePreview"] == 1 && engineCalls.counts["BuildPreview"] == 1);
    EXPECT_EQ(now(), "playing ticking 0 of 0-5000, slider 0: plays at 700");
    EXPECT_EQ(panel(""), "Preview update failed. Rebuilt Preview.");
    EXPECT_NE(PreviewBuilt, engine::kFalse);
}

TEST_F(PreviewTest, Transport)
{
    const struct {
        Milliseconds position; // of the player before
        const char* action;
        const char* after;
    } steps[] = {
        {0, "Stop", "stopped 0 of 0-5000, slider 0: at 0"},
        {0, "Play", "playing ticking 0 of 0-5000, slider 0: plays at 0"},
        {20, "Play", "playing ticking 0 of 0-5000, slider 0: plays at 20"},
        {100, "Rewind", "playing ticking 0 of 0-5000, slider 0: plays at 0"},
        {1001, "Forward", "playing ticking 1251 of 0-5000, slider 1251: plays at 1251"},
        {4900, "Forward", "playing ticking 5000 of 0-5000, slider 5000: plays at 5000"},
        {4900, "Pause", "paused 4900 of 0-5000, slider 4900: at 4900"},
        {4800, "Pause", "paused 4900 of 0-5000, slider 4900: at 4800"},
        {4900, "Rewind", "paused 4650 of 0-5000, slider 4650: at 4650"},
        {4900, "Loop playback", "paused 4650 of 0-5000, slider 4650: at 4900"},
        {4900, "Reverse", "paused 4650 of 0-5000, slider 4650: at 4900"},
        {4900, "Stop", "stopped 0 of 0-5000, slider 0: at 0"},
    };
    fill();
    for (const auto& [position, action, after] : steps) {
        goOnTo(position);
        DoPreviewAction(action);
        EXPECT_EQ(now(), after) << action;
    }
    EXPECT_TRUE(preview.cmdRepeat.Value);
    DoPreviewAction("Loop playback");
    EXPECT_FALSE(preview.cmdRepeat.Value);
}

TEST_F(PreviewTest, PlaysTheSelectionAndStopsOrRepeatsAtItsEnd)
{
    fill();
    showSelection(1000, 2000); // 1000 to 2000 ms
    for (const bool isRepeated : {false, true}) {
        preview.cmdRepeat.Value = isRepeated;
        playFrom(1500);
        frmPreview::tm_Timer();
        EXPECT_EQ(now(), "playing ticking 1500 of 1000-2000, slider 1500: plays at 1500");
        goOnTo(2016);
        frmPreview::tm_Timer();
        EXPECT_EQ(now(), isRepeated ? "playing ticking 1000 of 1000-2000, slider 1000: plays at 1000"
                                    : "stopped 1000 of 1000-2000, slider 1000: at 1000");
    }
}

TEST_F(PreviewTest, ARangeThatReachesBehindTheFilmEndsWithIt)
{
    fill();
    showSelection(4000, 6000);
    for (const bool isRepeated : {false, true}) {
        preview.cmdRepeat.Value = isRepeated;
        playFrom(5000);
        frmPreview::tm_Timer();
        EXPECT_EQ(now(), isRepeated ? "playing ticking 4000 of 4000-6000, slider 4000: plays at 4000"
                                    : "stopped 4000 of 4000-6000, slider 4000: at 4000");
    }
}

TEST_F(PreviewTest, ARangeThatIsPlayedIsKeptTo)
{
    fill();
    showSelection(1000, 2000);
    playFrom(1100);
    put("V 5000-6000");
    UpdatePreview(); // an edit
    EXPECT_EQ(now(), "playing ticking 1000 of 1000-2000, slider 0: plays at 1100");
    OnCmdRewindClick();
    frmPreview::tm_Timer();
    EXPECT_EQ(now(), "playing ticking 1000 of 1000-2000, slider 1000: plays at 1000");
}

TEST_F(PreviewTest, PlayGoesToTheRangeFromOutsideIt)
{
    fill();
    showSelection(1000, 2000); // 1000 to 2000 ms
    const std::pair<Milliseconds, const char*> places[] = {{0, "plays at 1000"},    {999, "plays at 1000"},
                                                           {1000, "plays at 1000"}, {1999, "plays at 1999"},
                                                           {2000, "plays at 1000"}, {4000, "plays at 1000"}};
    for (const auto& [place, after] : places) {
        OnCmdPauseClick();
        goOnTo(place);
        OnCmdPlayClick();
        EXPECT_EQ(playing(), after) << place;
    }
}

TEST_F(PreviewTest, ATickDoesNothingAfterAStopAndIsNotEnteredTwice)
{
    fill();
    playFrom(800);
    int depth = 0;
    platform.whileEventsRun = [&] { // in the middle of a tick
        if (++depth == 1) {
            frmPreview::tm_Timer();
            OnCmdStopClick();
        }
    };
    goOnTo(5000);
    frmPreview::tm_Timer();
    platform.whileEventsRun = nullptr;
    EXPECT_EQ(now(), "stopped 0 of 0-5000, slider 0: at 0");
    preview.tm.Enabled = true; // a tick that was under way
    frmPreview::tm_Timer();
    EXPECT_EQ(now(), "stopped 0 of 0-5000, slider 0: at 0");
}

TEST_F(PreviewTest, ATickInTheMiddleOfAMoveOfTheSliderLeavesItToThatMove)
{
    fill();
    put("V 5000-6000");
    UpdatePreview();
    const std::pair<std::function<void()>, Milliseconds> moves[] = {
        {[] { frmTimeline::picScale_MouseDown(1, 250); }, 2500},
        {[] {
             state::ClickX = 550;
             moduleTimeline::OnPicMediaClick(0, true);
         },
         5000},
        {[] {
             frmTimeline::imgSliderHandle_MouseDown(1, 5);
             frmTimeline::imgSliderHandle_MouseMove(1, 15);
             frmTimeline::imgSliderHandle_MouseUp(1, 15);
         },
         900},
    };
    for (const auto& [move, after] : moves) {
        playFrom(800);
        frmPreview::tm_Timer();
        platform.whileEventsRun = [] { frmPreview::tm_Timer(); };
        move();
        platform.whileEventsRun = nullptr;
        frmPreview::tm_Timer(); // which finds it paused, and ends
        EXPECT_EQ(now(), "paused " + std::to_string(after) + " of 0-6000, slider " + std::to_string(after) + ": at "
                             + std::to_string(after));
        EXPECT_EQ(moduleTimeline::GetSliderPosition(), after);
    }
}

TEST_F(PreviewTest, WhatThePersonDoes)
{
    fill();
    const struct {
        const char* what;
        std::function<void()> deed;
        const char* after;
    } deeds[] = {
        {"scroll", [&] { preview.sldSeekBar.SetValue(1230), frmPreview::sldSeekBar_Scroll(); },
         "paused 1230 of 0-5000, slider 0: at 1230"},
        {"release", [&] { goOnTo(700), frmPreview::sldSeekBar_MouseUp(); },
         "paused 1230 of 0-5000, slider 1230: at 1230"},
        {"Enter", [] { frmPreview::Form_KeyDown(13); }, "playing ticking 1230 of 0-5000, slider 1230: plays at 1230"},
        {"Space", [] { frmPreview::Form_KeyDown(32); }, "paused 1230 of 0-5000, slider 1230: at 1230"},
        {"Space", [] { frmPreview::Form_KeyDown(32); }, "playing ticking 1230 of 0-5000, slider 1230: plays at 1230"},
        {"Space", [] { frmPreview::Form_KeyDown(32); }, "paused 1230 of 0-5000, slider 1230: at 1230"},
        {"another key", [] { frmPreview::Form_KeyDown(65); }, "paused 1230 of 0-5000, slider 1230: at 1230"},
        {"Enter", [] { frmPreview::Form_KeyDown(13); }, "playing ticking 1230 of 0-5000, slider 1230: plays at 1230"},
        {"press on the scale", [] { frmTimeline::picScale_MouseDown(1, 250); },
         "paused 2500 of 0-5000, slider 2500: at 2500"},
        {"right arrow", [] { frmTimeline::picScale_KeyDown(39, 0); }, "paused 2550 of 0-5000, slider 2550: at 2550"},
        {"drag of the slider",
         [] {
             frmTimeline::imgSliderHandle_MouseDown(1, 5);
             frmTimeline::imgSliderHandle_MouseMove(1, 15);
             frmTimeline::imgSliderHandle_MouseUp(1, 15);
         },
         "paused 2650 of 0-5000, slider 2650: at 2650"},
        {"press on another item",
         [&] {
             put("V 5000-6000");
             state::SliderPosition = 5500;
             state::ClickX = 20;
             moduleTimeline::OnPicMediaClick(0, true);
         },
         "paused 0 of 0-5000, slider 0: at 0"},
        {"undo",
         [] {
             ModuleHistory::AddOperationToHistory("Cut");
             ++ModuleHistory::HistoryIndex;
             ModuleHistory::Undo();
         },
         "paused 0 of 0-6000, slider 0: at 0"},
    };
    for (const auto& [what, deed, after] : deeds) {
        deed();
        EXPECT_EQ(now(), after) << what;
    }
    frmPreview::Form_Activate();
    EXPECT_EQ(forms::frmTools.ActiveContext, 1);
    frmPreview::CloseFromWindowMenu();
    EXPECT_FALSE(preview.Visible);
    EXPECT_FALSE(forms::mdiTarnwick.mnuViewPreview.Checked);
}

TEST_F(PreviewTest, PlaceOfThePicture)
{
    const struct {
        std::int16_t width, height;
        std::int32_t roomWidth, roomHeight;
        forms::Rectangle place;
    } cases[] = {{320, 240, 400, 300, {0, 0, 400, 300}},    {320, 240, 500, 300, {50, 0, 400, 300}},
                 {1920, 1080, 320, 300, {0, 60, 320, 180}}, {1, 2000, 400, 300, {199, 0, 1, 300}},
                 {0, 0, 100, 50, {25, 0, 50, 50}},          {320, 240, 0, 0, {0, 0, 1, 1}}};
    for (const auto& c : cases) {
        state::ProjectWidth = c.width;
        state::ProjectHeight = c.height;
        preview.fmeDisplayWidth = c.roomWidth;
        preview.fmeDisplayHeight = c.roomHeight;
        frmPreview::Resize();
        EXPECT_EQ(preview.picDisplay.get(), c.place) << c.width << " x " << c.height;
    }
}

TEST_F(PreviewTest, ErrorsAreReportedByNameAndThePlayerStays)
{
    expectsErrors = true;
    fill();
    playFrom(100);
    const struct {
        const char* operation;
        std::function<void()> routine;
        const char* logged;
    } cases[] = {{"RefreshPreview", UpdatePreview, "UpdatePreview"},
                 {"GetPosition", frmPreview::tm_Timer, "tm_Timer*"},
                 {"Seek", OnCmdRewindClick, "OnCmdRewindClick"},
                 {"Pause", OnCmdPauseClick, "InitPreview"},
                 {"Play", OnCmdPlayClick, "OnCmdPlayClick"},
                 {"Halt", OnCmdStopClick, "OnCmdStopClick"},
                 {"Pause", OnSliderMove, "OnSliderMove*"}};
    for (const auto& [operation, routine, logged] : cases) {
        error_log::remove();
        engineCalls.failCall({operation});
        routine();
        const std::string log = error_log::read();
        EXPECT_NE(log.find(logged), std::string::npos) << operation << ": " << log;
        EXPECT_EQ(forms::mdiTarnwick.MousePointer, 0);
    }
    EXPECT_NE(PreviewBuilt, engine::kFalse);
}

TEST_F(PreviewTest, VolumeIsTakenWhenItOpensAndKeptWhenItCloses)
{
    std::string& stored = platform.settings["Quillmont 1.1/Save Options/Volume"];
    EXPECT_EQ(stored, "100"); // the first run
    stored = "35";
    frmPreview::Load();
    EXPECT_EQ(frmVolume::GetVolume(), 35);
    frmPreview::cmdMute_Click(200, 300);
    EXPECT_TRUE(forms::frmVolume.Visible);
    EXPECT_EQ(forms::frmVolume.Left.get(), 200);
    EXPECT_EQ(forms::frmVolume.Top.get(), 307);
    forms::frmVolume.sldVolume.SetValue(20);
    fill();
    frmPreview::Unload();
    EXPECT_EQ(stored, "20");
    engine::Bool16 isBuilt = engine::kTrue;
    check(player->IsPreviewValid(isBuilt));
    EXPECT_EQ(isBuilt, engine::kFalse);
}

} // namespace
} // namespace logic_test
