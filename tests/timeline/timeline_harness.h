#pragma once

// The timeline's form over the real engine, with stills and sounds of chosen times on its tracks; what stands on the
// screen and on the tracks as text.
//
// The view is 400 pixels wide and begins 100 pixels right of the form's ground; a row is 24 pixels high. A character
// is 7 pixels wide and 13 high.

#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "hand/frmTimeline_events.h"
#include "items/track_locks.h"
#include "report/error_log.h"
#include "support/engine_calls.h"
#include "support/manifest.h"
#include "support/scripted_platform.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>

namespace timeline_test {

using engine::check;
using engine::Handle;
using engine::Milliseconds;

class TimelineTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        timelineCalls = engine::EngineAs<engine::ITWTimeline>().get();
        keyCalls = engine::EngineAs<engine::ITWKeyTransition>().get();
        frmTimeline::Load();
        form.lblHighlight.Left = 100;
        for (PictureBox* const picture : {&form.picVideo[0], &form.picEffect[0], &form.picOverlay[0], &form.picAudio[0],
                                          &form.picAudio[1], &form.picScale}) {
            picture->ScaleWidth = 400;
            picture->ScaleHeight = 24;
        }
        frmTimeline::Form_Resize();
    }
    void TearDown() override
    {
        EXPECT_EQ(error_log::read() != "", expectsErrors) << error_log::read();
        engine::Engine.reset();
    }

    static Handle video() { return state::TrackCollection.Item(1); }
    static Handle audio(int number) { return state::TrackCollection.Item(1 + number); }

    Handle stream(const char* name)
    {
        Handle file = 0;
        Handle stream = 0;
        check(engine::Engine->OpenFile((testmedia::mediaFolder() / name).string(), file));
        check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, stream));
        return stream;
    }
    /// Behind what lies on the track; on the overlay track with its transition.
    void put(Handle track, Milliseconds start, Milliseconds stop)
    {
        engine::Bool16 isVideo = engine::kFalse;
        engine::Bool16 ok = engine::kFalse;
        std::int16_t count = 0;
        check(timelineCalls->IsVideoTrack(track, isVideo));
        check(timelineCalls->GetSourceCount(track, count));
        check(timelineCalls->InsertSource(track, stream(isVideo != 0 ? "still.bmp" : "stereo-48k.wav"), count, start,
                                          stop, ok));
        ASSERT_NE(ok, engine::kFalse);
        if (track == state::OverlayTrack) {
            check(timelineCalls->AddTransitionAt(track, "DxtKey", start, stop, ok));
        }
    }
    void putEffect(Milliseconds start, Milliseconds stop, const char* name = "Blur")
    {
        engine::Bool16 ok = engine::kFalse;
        check(timelineCalls->AddEffectAt(video(), name, start, stop, ok));
        ASSERT_NE(ok, engine::kFalse);
    }
    void select(Handle track, std::int16_t seq) { check(timelineCalls->SetSourceSelected(track, seq, engine::kTrue)); }

    /// Selected flags of the rows' items, a digit each: "V 010 E 0 O 1 A - B -".
    std::string flags()
    {
        using engine::ITWTimeline;
        const auto digits = [&](auto count, auto isSelected, Handle track) {
            std::int16_t items = 0;
            check(((*timelineCalls).*count)(track, items));
            std::string all;
            for (std::int16_t seq = 0; seq < items; ++seq) {
                engine::Bool16 flag = engine::kFalse;
                check(((*timelineCalls).*isSelected)(track, seq, flag));
                all += flag != engine::kFalse ? "1" : "0";
            }
            return all.empty() ? "-" : all;
        };
        const auto sources = [&](Handle track) {
            return digits(&ITWTimeline::GetSourceCount, &ITWTimeline::IsSourceSelected, track);
        };
        return "V " + sources(video()) + " E "
               + digits(&ITWTimeline::GetEffectCount, &ITWTimeline::IsEffectItemSelected, video()) + " O "
               + sources(state::OverlayTrack) + " A " + sources(audio(1)) + " B " + sources(audio(2));
    }

    /// What the selected node of the list is called, with its place below its track: "Video 2".
    std::string selectedNode() const
    {
        const std::vector<std::int32_t>& places = form.tvwTimeline.Selected;
        if (places.empty()) {
            return "none";
        }
        const TreeNode& track = form.tvwTimeline.Root().Children.at(static_cast<std::size_t>(places[0]));
        return track.Text + (places.size() > 1 ? " " + std::to_string(places[1] + 1) : "");
    }

    /// A selection between two handles' lefts.
    void showSelection(std::int32_t startLeft, std::int32_t endLeft)
    {
        state::SelStartPosition = moduleScaleRenderer::PixelsToMs(startLeft + 5);
        state::SelEndPosition = moduleScaleRenderer::PixelsToMs(endLeft + 5);
        moduleTimeline::SetSelSliderPosition(state::SelStartPosition, true);
        moduleTimeline::SetSelSliderPosition(state::SelEndPosition, false);
        moduleTimeline::ShowSelSliders(true);
    }

    static std::string panel(std::string_view key) { return forms::mdiTarnwick.sbr.Panel(key); }

    forms::FrmTimeline& form = forms::frmTimeline;
    bool expectsErrors = false;
    testsupport::ScriptedPlatform platform;
    testsupport::EngineCalls engineCalls;
    engine::ITWTimeline* timelineCalls = nullptr; // the engine's
    engine::ITWKeyTransition* keyCalls = nullptr;
};

} // namespace timeline_test
