#pragma once

// Loading the small player beside the media list, and emptying it. These raise what the engine raises; the state of
// the controls is right all the same. What the person does with it: `frmMediaList_events.h`.

#include <string_view>

namespace media {

/// Loads the file, stopped at its start. `mediaClass` is the word of the row: an image has no slider, sound alone no
/// picture; nothing is loaded for any other word than the three.
void loadFilePreview(std::string_view mediaClass, std::string_view path);
/// Drops what was loaded, keeping the player for the next file.
void resetFilePreview();
/// Releases the player and clears its picture.
void closeFilePreview();

} // namespace media
