#include "preview/moduleTWPreview.h"

#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "preview/frame_offer.h"
#include "preview/frmPreview_events.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace moduleTWPreview {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWPreview;
using engine::kFalse;
using engine::Milliseconds;

namespace {

forms::FrmPreview& form = forms::frmPreview;

constexpr const char* kModule = "moduleTWPreview";

enum State : std::int16_t { kStopped, kPlaying, kPaused };

Milliseconds durationOf(ITWPreview& player)
{
    Milliseconds duration = 0;
    check(player.GetDuration(duration));
    return duration;
}

Milliseconds positionOf(ITWPreview& player)
{
    Milliseconds position = 0;
    check(player.GetPosition(position));
    return position;
}

void seek(ITWPreview& player, Milliseconds position)
{
    Bool16 ok = kFalse;
    check(player.Seek(position, ok));
}

double stepOf(ITWPreview& player)
{
    constexpr double kShare = 0.05;
    return durationOf(player) * kShare;
}

/// The bar takes the position as far as its range goes, the timeline's slider what the bar took, the player all of it.
void goTo(ITWPreview& player, Milliseconds position)
{
    form.sldSeekBar.SetValue(position);
    moduleTimeline::SetSliderPosition(form.sldSeekBar.Value(), true);
    seek(player, position);
    if (PreviewState == kPlaying) {
        Bool16 ok = kFalse;
        check(player.Play(ok));
    }
}

/// Tells the player once more what it is doing.
void applyState(ITWPreview& player)
{
    Bool16 ok = kFalse;
    switch (PreviewState) {
    case kPlaying:
        return check(player.Play(ok));
    case kPaused:
        return check(player.Pause(ok));
    default:
        return check(player.Stop(ok));
    }
}

void closePlayer(ITWPreview& player)
{
    PreviewBuilt = kFalse;
    check(player.ClosePreview());
}

/// Builds the player over the present timeline and fits the picture into the panel.
void InitPreview()
{
    Trapped(kModule, "InitPreview", [] {
        const auto player = EngineAs<ITWPreview>();
        check(player->SetOwnerWindow(form.picDisplayHandle));
        check(player->BuildPreview(PreviewBuilt));
        frmPreview::Resize();
    });
}

void refreshPlayer(ITWPreview& player)
{
    Bool16 ok = kFalse;
    check(player.IsPreviewValid(ok));
    if (ok == kFalse) {
        closePlayer(player);
        InitPreview();
        forms::mdiTarnwick.sbr.Panel(1) = std::string("Preview update failed. Rebuilt Preview.");
    }
    check(player.RefreshPreview(ok));
    applyState(player);
}

/// A player that was closed kept its place, while the slider may have gone on.
void standAtSlider(ITWPreview& player)
{
    if (positionOf(player) != state::SliderPosition) {
        seek(player, state::SliderPosition);
    }
}

void takeTimeline(ITWPreview& player)
{
    const bool isEmpty = moduleTimeline::IsTimelineEmpty();
    const bool isBuilt = PreviewBuilt != kFalse;
    if (!isEmpty && !isBuilt) {
        InitPreview();
        standAtSlider(player);
    } else if (!isEmpty) {
        refreshPlayer(player);
    } else if (isBuilt) {
        closePlayer(player);
    }
}

/// The bar takes the whole film, but while a range is played it keeps to that: else an edit would end a loop.
void showDuration(Milliseconds duration)
{
    constexpr Milliseconds kEmptyMax = 10;
    if (duration > 0) {
        const bool isRange = PreviewState == kPlaying && timeline::isSelectionShown();
        form.sldSeekBar.SetMax(isRange ? moduleTimeline::GetSelSliderPosition(false) : duration);
    } else if (duration == 0) {
        form.sldSeekBar.SetMax(kEmptyMax);
        OnCmdStopClick();
    }
    const std::string text = time_text::MilliSecondsToTimetypeAsString(duration);
    form.lblDuration.Caption = text;
    forms::mdiTarnwick.sbr.Panel("DURATION") = text;
}

/// Shows the hourglass for a span, an error's too.
class Waiting {
public:
    Waiting() { forms::mdiTarnwick.MousePointer = kHourglass; }
    ~Waiting() { forms::mdiTarnwick.MousePointer = kDefault; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    static constexpr std::int16_t kHourglass = 11;
    static constexpr std::int16_t kDefault = 0;
};

/// The bar takes the range. A player that stands outside it goes to its start, as the bar shows no other place; at the
/// end it would stop at once.
void takeSelectionRange(ITWPreview& player)
{
    const Milliseconds start = moduleTimeline::GetSelSliderPosition(true);
    const Milliseconds stop = moduleTimeline::GetSelSliderPosition(false);
    form.sldSeekBar.SetMin(start);
    form.sldSeekBar.SetMax(stop);
    const Milliseconds position = positionOf(player);
    if (position < start || position >= stop) {
        seek(player, start);
    }
}

} // namespace

void OnCmdPlayClick()
{
    Trapped(kModule, "OnCmdPlayClick", [] {
        if (moduleTimeline::GetTimelineDuration() < 1 || PreviewState == kPlaying) {
            return;
        }
        const auto player = EngineAs<ITWPreview>();
        if (timeline::isSelectionShown()) {
            takeSelectionRange(*player);
        } else if (const Milliseconds duration = durationOf(*player); duration >= 1) {
            form.sldSeekBar.SetMax(duration);
        } else if (duration == 0) {
            UpdatePreview();
        }
        PreviewState = kPlaying;
        Bool16 ok = kFalse;
        check(player->Play(ok));
        form.tm.Enabled = true;
    });
}

void OnCmdPauseClick()
{
    Trapped(kModule, "InitPreview", [] { // kept: logs are searched for a pause that failed under this name
        if (PreviewState != kPaused) {
            form.tm.Enabled = false;
            PreviewState = kPaused;
            Bool16 ok = kFalse;
            check(EngineAs<ITWPreview>()->Pause(ok));
        }
    });
}

void OnCmdStopClick()
{
    Trapped(kModule, "OnCmdStopClick", [] {
        if (PreviewState == kStopped) {
            return;
        }
        PreviewState = kStopped;
        form.tm.Enabled = false;
        form.sldSeekBar.SetValue(0);
        moduleTimeline::SetSliderPosition(form.sldSeekBar.Value(), true);
        if (timeline::isSelectionShown()) {
            moduleTimeline::SetSliderPosition(moduleTimeline::GetSelSliderPosition(true), true);
        }
        const auto player = EngineAs<ITWPreview>();
        seek(*player, moduleTimeline::GetSliderPosition());
        Bool16 ok = kFalse;
        check(player->Halt(ok));
    });
}

void OnCmdRewindClick()
{
    Trapped(kModule, "OnCmdRewindClick", [] {
        const auto player = EngineAs<ITWPreview>();
        goTo(*player, numbers::rounded<Milliseconds>(GetCurrentPosition() - stepOf(*player)));
    });
}

void OnCmdForwardClick()
{
    Trapped(kModule, "OnCmdForwardClick", [] {
        const auto player = EngineAs<ITWPreview>();
        const auto position = numbers::rounded<Milliseconds>(stepOf(*player) + positionOf(*player));
        goTo(*player, std::min(position, durationOf(*player)));
    });
}

std::int32_t GetCurrentPosition()
{
    Milliseconds position = 0;
    Trapped(kModule, "GetCurrentPosition", [&] { position = positionOf(*EngineAs<ITWPreview>()); });
    return position;
}

void DoPreviewAction(std::string_view action)
{
    using Named = std::pair<std::string_view, void (*)()>;
    constexpr Named kButtons[] = {
        {"Play", frmPreview::cmdPlay_Click},       {"Pause", frmPreview::cmdPause_Click},
        {"Stop", frmPreview::cmdStop_Click},       {"Rewind", frmPreview::cmdRewind_Click},
        {"Forward", frmPreview::cmdForward_Click}, {"Loop playback", frmPreview::cmdRepeat_Click},
    };
    const auto* const found = std::ranges::find(kButtons, action, &Named::first);
    if (found != std::end(kButtons)) {
        found->second();
    }
}

void SetInitialIcons()
{
    const auto dress = [](auto& button, const char* picture, const char* toolTip) {
        button.Picture = std::string(picture);
        button.ToolTipText = std::string(toolTip);
    };
    dress(form.cmdPlay, "PLAY", "Play");
    dress(form.cmdPause, "PAUSE", "Pause");
    dress(form.cmdStop, "STOP", "Stop");
    dress(form.cmdRewind, "REWIND", "Rewind");
    dress(form.cmdForward, "FORWARD", "Forward");
    dress(form.cmdRepeat, "LOOP", "Repeats playback (Loop)");
    dress(form.cmdMute, "MUTE_FALSE", "Control volume");
}

} // namespace moduleTWPreview

void UpdatePreview()
{
    using namespace moduleTWPreview;
    Trapped(kModule, "UpdatePreview", [] {
        const Waiting waiting;
        const auto player = EngineAs<ITWPreview>();
        takeTimeline(*player);
        showDuration(durationOf(*player));
        frmPreview::WatchFirstPicture();
    });
}

void OnSliderMove()
{
    using namespace moduleTWPreview;
    Trapped(kModule, "OnSliderMove*", [] {
        const auto player = EngineAs<ITWPreview>();
        PreviewState = kPaused;
        Bool16 ok = kFalse;
        check(player->Pause(ok));
        const Milliseconds position = moduleTimeline::GetSliderPosition();
        seek(*player, position);
        if (position >= form.sldSeekBar.Min() && position <= form.sldSeekBar.Max()) {
            form.sldSeekBar.SetValue(position);
        }
    });
}
