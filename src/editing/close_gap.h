#pragma once

// Delete, and close the gap that it leaves, and that gap alone:
//
//     before               [AAA] [B**][CC]   [D]
//     B deleted            [AAA] [CC]   [D]            what follows on its row moves up
//     of a range     |-------|
//     cut out        [B**][CC]   [D]                   on all linked, unlocked rows, also those with nothing in it
//
// Locked rows are left alone, and so is the clipboard. Interface thread only.

#include "history/command.h"

namespace editing {

/// Over the range while both selection sliders are shown, which are hidden then; else the selected items, each unlocked
/// row for itself; a picture that goes with its sound counts as long as that one, so that both rows stay level. Raises
/// what the engine raises; the timeline may be changed half way then.
history::Outcome deleteAndCloseGap();

} // namespace editing
