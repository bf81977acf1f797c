#pragma once

// What stands on the main window, as state. Behaviour: `shell/`.

#include "core/controls.h"

#include <vector>

namespace forms {

struct MdiTarnwick {
    Shown<std::int16_t> MousePointer{std::int16_t{0}}; // 0 default, 11 hourglass, 99 a picture of the program's own
    StatusBar sbr{"", "SLIDER_POS", "DURATION", "SELECTION"};
    ProgressBar pbarMain;

    // The recent lists: the last four, newest first; "Empty" and disabled while there is none.
    std::vector<Menu> mnuFileRF{1};
    std::vector<Menu> mnuFileRP{1};

    Menu mnuViewSelectionSliders;
    Menu mnuEC_SelSliders;
    Menu mnuViewMediaList{.Caption = {}, .Enabled = true, .Checked = true, .Visible = true};
};
inline MdiTarnwick mdiTarnwick;

} // namespace forms
