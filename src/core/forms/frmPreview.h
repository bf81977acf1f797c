#pragma once

// What stands on the preview player's form, as state. Behaviour: `preview/`. Times are milliseconds of the timeline,
// places logical pixels.

#include "core/controls.h"
#include "core/forms/mdiTarnwick.h"
#include "engine/types.h"

namespace forms {

/// A button that stays down.
struct ToggleButton {
    Shown<std::string> Picture;
    Shown<std::string> ToolTipText;
    Shown<std::string> Caption;
    Shown<bool> Value{false};
};

/// The line that offers the size of the first picture for the movie.
struct FrameOffer {
    Shown<bool> Visible{false};
    Shown<std::string> Caption; // "The movie is 320 x 240, sunrise.mp4 is 640 x 360."
    std::string FileName;       // as it stands in the caption, where a screen may shorten it
    Shown<std::string> cmdUseCaption;
    Shown<std::string> cmdKeepCaption{std::string("Keep")};
    std::int16_t Width = 0; // pixels; what is offered
    std::int16_t Height = 0;
    engine::Handle Stream = 0; // the picture
};

struct FrmPreview {
    Shown<bool> Visible{true};
    Shown<bool> WholeScreen{false}; // the picture has the whole screen

    // The picture: its room is told by the screen; its surface is a number of the engine's registry, and its place in
    // the room has the project's proportions.
    Shown<std::int32_t> fmeDisplayWidth{0};
    Shown<std::int32_t> fmeDisplayHeight{0};
    Shown<Rectangle> picDisplay;
    std::int32_t picDisplayHandle = 0;
    FrameOffer fmeFrameOffer;
    bool HasPictures = false; // some lay on the timeline when it was looked at last

    Slider sldSeekBar;
    Label lblCurrentTime; // where the timeline's slider stands
    Label lblDuration;
    Button cmdPlay, cmdPause, cmdStop, cmdRewind, cmdForward;
    ToggleButton cmdRepeat{.Picture = {}, .ToolTipText = {}, .Caption = std::string("Loop"), .Value = false};
    Button cmdMute;
    Shown<std::string> cmdMuteCaption{std::string("Volume ")};
    Timer tm{.Enabled = false, .Interval = 33, .tick = {}};
    bool Ticking = false; // a tick of `tm` is being worked on

    // The player.
    std::int16_t PreviewState = 0; // 0 stopped, 1 playing, 2 paused
    engine::Bool16 PreviewBuilt = engine::kFalse;
};
inline FrmPreview frmPreview;

} // namespace forms
