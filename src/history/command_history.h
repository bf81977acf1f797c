#pragma once

// A command and its history entry, which is made ahead of it and lies above `ModuleHistory::HistoryIndex`: into force
// when the command has taken effect, left there, and all that was done taken back, when it fails half way.
//
//     runCommand("Pack", PackTracks)      the entry, the routine, the newest image
//         inWhole([] { ... })             in the routine: what it does, and its entry's fate
//
// Interface thread only.

#include "core/shared_state.h"
#include "history/ModuleHistory.h"

#include <string_view>

namespace history {

/// The newest entry comes into force. Nothing when no entry was made.
void bringIntoForce();

/// Puts the timeline back to the image of the newest entry, which stays, out of force, until the next operation. When
/// there is no whole image, nothing changes but that the entry is in force. Selected flags are lost. Nothing when no
/// entry was made.
void takeBackNewest();

/// Runs one command. `operation` answers whether it has changed anything; if not, its entry stays out of force, and the
/// next operation drops it. Raises what the operation raises, with the timeline as it was.
template <class Operation>
bool inWhole(const Operation& operation)
{
    bool isChanged = false;
    try {
        isChanged = operation();
    } catch (...) {
        takeBackNewest();
        throw;
    }
    if (isChanged) {
        bringIntoForce();
    }
    return isChanged;
}

/// A whole command: the entry with that word, the routine, which brings it into force, and the image for a redo. True
/// when the routine has taken effect; the project is modified then.
template <class Routine>
bool runCommand(std::string_view word, const Routine& routine)
{
    ModuleHistory::RemoveDisabledEntries();
    ModuleHistory::AddOperationToHistory(word);
    const std::int16_t index = ModuleHistory::HistoryIndex;
    routine();
    ModuleHistory::StoreCurrentTLImage();
    const bool isDone = ModuleHistory::HistoryIndex > index;
    state::ProjectModified = state::ProjectModified || isDone;
    return isDone;
}

} // namespace history
