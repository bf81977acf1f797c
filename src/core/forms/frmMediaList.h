#pragma once

// What stands on the media list's form, as state. Behaviour: `media/`.

#include "core/controls.h"

#include <array>

namespace forms {

struct FrmMediaList {
    Shown<std::string> Caption{std::string("Media List - Project: Untitled")};
    Shown<bool> Visible{true};
    ListView lvwMediaList;
    TextBox txtFilter; // the screen hides the rows whose names do not hold it; they stay in the list

    // Facts of the selected file.
    Label lblFile;
    Label lblFileDisplay;
    std::array<Label, 5> lblInfo;
    std::array<Label, 5> lblInfoDisplay;

    // The small player. Its surface is a number of the engine's registry; its size is told by the screen.
    std::int32_t picPreviewSmallHandle = 0;
    Shown<std::int32_t> picPreviewSmallWidth{0};
    Shown<std::int32_t> picPreviewSmallHeight{0};
    Observed<std::int32_t> picPreviewSmallCleared{0}; // counts up when its picture is cleared, which is done at once
    Slider sldFilePreview;
    Button cmdPlay{.Picture = std::string("STOP"), .ToolTipText = {}, .Visible = true, .Enabled = false};
    Timer tmFilePreview{.Enabled = false, .Interval = 100, .tick = {}};

    bool FilePlaying = false;
    bool RightClickPending = false;
};
inline FrmMediaList frmMediaList;

} // namespace forms
