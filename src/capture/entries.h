#pragma once

// Which entries of the capture window's menus and toolbar are enabled and ticked. State alone: raises nothing.
// Interface thread only.

#include "core/controls.h"

#include <initializer_list>

namespace capture {

/// All of the menus and the toolbar. Exit and Help stay: whoever finds no camera looks there.
void EnableAllMenuItems();
void DisableAllMenuItems();

void enable(std::initializer_list<Menu*> entries, bool isOn);
void enableButtons(std::initializer_list<const char*> keys, bool isOn);

/// The dialogues of the sound's device, and those of the picture's.
void enableAudioEntries(bool isOn);
void enableVideoEntries(bool isOn);
void enableSynchronize(bool isOn);
void enableStreams(bool isOn);

/// The tick of a stream, what follows it, and its entries.
void tickAudioStream(bool isOn);
void tickVideoStream(bool isOn);
/// 1, 0, -1: one of the three is ticked.
void chooseSyncMaster(std::int16_t master);

/// The pictures of the status bar.
void showCapturing(bool isOn);
void showSnapping(bool isOn);

} // namespace capture
