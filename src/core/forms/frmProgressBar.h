#pragma once

// What stands on the window of a running save, as state. Behaviour: `export/`.

#include "core/controls.h"
#include "engine/types.h"

namespace forms {

struct FrmProgressBar {
    ProgressBar pbr; // 0 to 100
    Shown<std::string> lblFramesSaved, lblComplete;
    Shown<std::string> lblTimeLeft, lblSpeed, lblSize; // empty where nothing can be said yet
    Shown<std::string> lblFramesCopied;                // empty while none are
    Shown<std::string> lblFailure;                     // why it will not come to its end; empty while it may
    CheckBox chkPreviewWhenDone;
    Shown<std::string> cmdCancel; // its caption, which says what the window waits for
    Timer tmSave;

    engine::Milliseconds SaveLength = 0;
    engine::Milliseconds SavedSoFar = 0;
};
inline FrmProgressBar frmProgressBar;

} // namespace forms
