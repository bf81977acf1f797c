#include "preview/frmPreview_events.h"

#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "preview/moduleTWPreview.h"
#include "timeline/moduleTimeline.h"
#include "volume/frmVolume.h"

#include <algorithm>
#include <string>

namespace frmPreview {

using engine::check;
using engine::EngineAs;
using engine::ITWPreview;
using moduleTWPreview::PreviewBuilt;
using moduleTWPreview::PreviewState;

namespace {

forms::FrmPreview& form = forms::frmPreview;

constexpr const char* kModule = "frmPreview";
constexpr std::int16_t kPlaying = 1;
constexpr std::int16_t kPaused = 2;

void hint(const char* text)
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        forms::mdiTarnwick.sbr.Panel(1) = std::string(text);
    }
}

/// The largest place of the project's proportions in a room, in its middle.
forms::Rectangle fitted(std::int32_t roomWidth, std::int32_t roomHeight)
{
    const std::int64_t width = std::max<std::int64_t>(state::ProjectWidth, 1);
    const std::int64_t height = std::max<std::int64_t>(state::ProjectHeight, 1);
    forms::Rectangle place{0, 0, std::max(roomWidth, 1), std::max(roomHeight, 1)};
    if (place.width * height > place.height * width) {
        place.width = static_cast<std::int32_t>(std::max<std::int64_t>(place.height * width / height, 1));
    } else {
        place.height = static_cast<std::int32_t>(std::max<std::int64_t>(place.width * height / width, 1));
    }
    place.left = std::max(0, (roomWidth - place.width) / 2);
    place.top = std::max(0, (roomHeight - place.height) / 2);
    return place;
}

/// Marks a tick as being worked on: events run inside, and the timer may be due again before it is done.
class TickSpan {
public:
    TickSpan() { form.Ticking = true; }
    ~TickSpan() { form.Ticking = false; }
    TickSpan(const TickSpan&) = delete;
    TickSpan& operator=(const TickSpan&) = delete;
};

/// Bar and slider take the player's place. One that plays before its range, after a step back or because the range has
/// moved, goes to its start.
void followPlayer()
{
    const auto player = EngineAs<ITWPreview>();
    engine::Milliseconds position = 0;
    check(player->GetPosition(position));
    if (PreviewState == kPlaying && position < form.sldSeekBar.Min()) {
        position = form.sldSeekBar.Min();
        engine::Bool16 ok = engine::kFalse;
        check(player->Seek(position, ok));
    }
    form.sldSeekBar.SetValue(position);
    moduleTimeline::SetSliderPosition(form.sldSeekBar.Value(), true);
}

/// Of the bar, or of the film, behind which a range may reach.
bool isAtEnd()
{
    const auto player = EngineAs<ITWPreview>();
    engine::Milliseconds position = 0;
    engine::Milliseconds duration = 0;
    check(player->GetPosition(position));
    check(player->GetDuration(duration));
    return form.sldSeekBar.Value() >= form.sldSeekBar.Max() || (duration > 0 && position >= duration);
}

/// The last tick lies behind the picture at which the player was held: a cut at the slider is to fall where it is seen.
void pauseAndFollow(const char* routine)
{
    const bool hasPlayed = PreviewState == kPlaying;
    moduleTWPreview::OnCmdPauseClick();
    if (hasPlayed) {
        Trapped(kModule, routine, followPlayer);
    }
}

void endOrRepeat()
{
    form.sldSeekBar.SetValue(0);
    moduleTWPreview::OnCmdStopClick();
    if (form.cmdRepeat.Value) {
        moduleTWPreview::OnCmdPlayClick();
    }
}

/// A command that was given while the bar was held may have sent the player elsewhere: it comes to where the bar was
/// let go.
void takeBarsPlace(const char* routine)
{
    Trapped(kModule, routine, [] {
        moduleTimeline::SetSliderPosition(form.sldSeekBar.Value(), true);
        const auto player = EngineAs<ITWPreview>();
        engine::Milliseconds position = 0;
        check(player->GetPosition(position));
        if (PreviewState != kPlaying && position != form.sldSeekBar.Value()) {
            engine::Bool16 ok = engine::kFalse;
            check(player->Seek(form.sldSeekBar.Value(), ok));
        }
    });
}

} // namespace

// --- The panel -----------------------------------------------------------------------------------------------------

void Load()
{
    Trapped(kModule, "Form_Load", [] {
        moduleTWPreview::SetInitialIcons();
        form.tm.tick = tm_Timer;
        const std::string start = time_text::MilliSecondsToTimetypeAsString(0);
        form.lblCurrentTime.Caption = start;
        form.lblDuration.Caption = start;
        forms::mdiTarnwick.sbr.Panel("DURATION") = start;
        constexpr std::int32_t kEmptyMax = 10;
        form.sldSeekBar.SetMax(kEmptyMax);
        Resize();
        frmVolume::LoadVolume();
        frmVolume::SetVolume(frmVolume::GetVolume());
    });
}

void Unload()
{
    Trapped(kModule, "Form_Unload", [] {
        frmVolume::SaveVolume(frmVolume::GetVolume());
        form.tm.Enabled = false;
        PreviewState = 0;
        if (PreviewBuilt != engine::kFalse) {
            PreviewBuilt = engine::kFalse;
            check(EngineAs<ITWPreview>()->ClosePreview());
        }
    });
}

void Resize() { form.picDisplay = fitted(form.fmeDisplayWidth, form.fmeDisplayHeight); }

void Form_Activate()
{
    constexpr std::int16_t kPreview = 1;
    SetActiveContext(kPreview);
    RefreshActions();
}

void Form_KeyDown(int key)
{
    constexpr int kEnter = 13;
    constexpr int kSpace = 32;
    // A pause that would change nothing plays; on the whole screen, where nothing shows the difference, a stop does
    // too.
    const bool doesSpacePlay = form.WholeScreen ? PreviewState != kPlaying : PreviewState == kPaused;
    if (key == kEnter || (key == kSpace && doesSpacePlay)) {
        moduleTWPreview::OnCmdPlayClick();
    } else if (key == kSpace) {
        pauseAndFollow("Form_KeyDown");
    }
}

void CloseFromWindowMenu()
{
    form.Visible = false;
    forms::mdiTarnwick.mnuViewPreview.Checked = false;
}

void TurnWholeScreen() { form.WholeScreen = !form.WholeScreen; }

void LeaveWholeScreen() { form.WholeScreen = false; }

// --- Player --------------------------------------------------------------------------------------------------------

void cmdPlay_Click() { moduleTWPreview::OnCmdPlayClick(); }

void cmdPause_Click() { pauseAndFollow("cmdPause_Click"); }

void PlayOrPause() { PreviewState == kPlaying ? cmdPause_Click() : cmdPlay_Click(); }

void cmdStop_Click() { moduleTWPreview::OnCmdStopClick(); }

void cmdRewind_Click() { moduleTWPreview::OnCmdRewindClick(); }

void cmdForward_Click() { moduleTWPreview::OnCmdForwardClick(); }

void cmdRepeat_Click() { form.cmdRepeat.Value = !form.cmdRepeat.Value; }

void cmdMute_Click(std::int32_t left, std::int32_t bottom)
{
    Trapped(kModule, "cmdMute_Click", [&] {
        constexpr std::int32_t kBelow = 7; // 105 twips
        forms::frmVolume.Left = left;
        forms::frmVolume.Top = bottom + kBelow;
        frmVolume::Form_Load();
    });
}

void sldSeekBar_Scroll()
{
    Trapped(kModule, "sldSeekBar_Scroll*", [] {
        moduleTWPreview::OnCmdPauseClick();
        engine::Bool16 ok = engine::kFalse;
        check(EngineAs<ITWPreview>()->Seek(form.sldSeekBar.Value(), ok));
        form.lblCurrentTime.Caption = time_text::MilliSecondsToTimetypeAsString(form.sldSeekBar.Value());
    });
}

void sldSeekBar_Click() { takeBarsPlace("sldSeekBar_Click"); }

void sldSeekBar_MouseUp() { takeBarsPlace("sldSeekBar_MouseUp"); }

void tm_Timer()
{
    Trapped(kModule, "tm_Timer*", [] {
        if (form.Ticking || forms::frmTimeline.MovingSlider) { // the place that somebody gives the slider stands
            return;
        }
        const TickSpan span;
        if (PreviewState == kPlaying) {
            followPlayer();
            if (PreviewState != kPlaying) {
                followPlayer(); // it was stopped while the slider moved, which has put it to the old place
            }
        }
        if (PreviewState != kPlaying) {
            form.tm.Enabled = false; // a move of the timeline's slider pauses without it
        } else if (isAtEnd()) {
            endOrRepeat();
        }
    });
}

// --- Hints in the status bar ---------------------------------------------------------------------------------------

void cmdPlay_MouseMove() { hint("Play"); }

void cmdPause_MouseMove() { hint("Pause"); }

void cmdStop_MouseMove() { hint("Stop"); }

void cmdRewind_MouseMove() { hint("Rewind"); }

void cmdForward_MouseMove() { hint("Forward"); }

void cmdRepeat_MouseMove() { hint("Repeats playback (Loop)"); }

void cmdMute_MouseMove() { hint("Control volume"); }

void lblCurrentTime_MouseMove() { hint("Displays the current time of the video"); }

void lblDuration_MouseMove() { hint("Displays the total duration of the video"); }

void picDisplay_MouseMove() { hint("Previews the contents of the timeline"); }

void sldSeekBar_MouseMove() { hint("Seek to the desired position of the video"); }

void fmeDisplay_MouseMove() { hint("Ready"); }

} // namespace frmPreview
