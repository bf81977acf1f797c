#pragma once

// The dialogue that says how sources are fitted to the movie where their size is another: 0 stretched, 1 cropped, 2
// whole with bars, 3 filling the frame. It goes to the selected sources, or to all of a track of theirs.
//
// The fourth option shows a source that is in mode 3 already, as older projects have them; OK with it changes nothing.
// There is no step of the history: scripts and people count the steps that there are. An undo of an earlier step brings
// the modes of then.
//
// State: `forms::frmStretchMode`. Each routine traps its errors. Interface thread only.

#include <cstdint>
#include <functional>
#include <optional>

namespace frmStretchMode {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

void ShowModal();
void Form_Load();

/// Of the first selected source, overlays last; nothing when none is selected.
std::optional<std::int16_t> GetFirstSelSourceStretchMode();
// Both reach audio sources too, which keep the mode and make nothing of it. How many sources got it.
int SetSelSourcesStretchMode(std::int16_t mode);
/// All sources of all tracks but the overlays when a video source is selected, all overlays when one of them is.
int SetTrackStretchMode(std::int16_t mode);

void optStretch_Click();
void optCrop_Click();
void optPreserve_Click();
void optStretchPreserve_Click();
/// The project counts as modified when any source got the mode, also the one that it had.
void cmdOK_Click();
void cmdCancel_Click();
void cmdHelp_Click();

} // namespace frmStretchMode
