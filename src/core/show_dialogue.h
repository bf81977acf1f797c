#pragma once

// A modal dialogue is opened by its hook, which the screens set; without screens nothing is shown.

#include "core/trap.h"

#include <functional>

/// Comes back when the dialogue is closed. What its handlers raise is reported here, so that whoever opened it can
/// clear up behind it.
inline void ShowDialogue(const char* module, const std::function<void()>& show)
{
    Trapped(module, "ShowModal", [&] {
        if (show) {
            show();
        }
    });
}
