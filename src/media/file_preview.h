#pragma once

// The small player beside the media list. Interface thread only.

#include <string_view>

/// Loading and emptying. These raise what the engine raises; the state of the controls is right all the same.
namespace media {

/// Loads the file, stopped at its start. `mediaClass` is the word of the row: an image has no slider, sound alone no
/// picture; nothing is loaded for any other word than the three.
void loadFilePreview(std::string_view mediaClass, std::string_view path);
/// Drops what was loaded, keeping the player for the next file.
void resetFilePreview();
/// Releases the player and clears its picture.
void closeFilePreview();

} // namespace media

/// What the person does with it, and its timer. Nothing is raised.
namespace frmMediaList {

/// Plays or stops.
void cmdPlay_Click();
/// Play, and pause, when the file can be played and is not in that state yet.
void OnCmdPlayClick();
void OnCmdPauseClick();
/// Every 100 ms while it plays.
void tmFilePreview_Timer();
/// The person moved the slider; its value is set before. A value set by the program is no scroll.
void sldFilePreview_Scroll();
/// The form has written a new size in `picPreviewSmallWidth` and `picPreviewSmallHeight`.
void picPreviewSmall_Resize();

} // namespace frmMediaList
