#pragma once

// The volume of both players, kept from run to run, and the small popup in which it is set.
//
// The engine counts from -100 (silent) to 0 (full), everything here from 0 to 100. Every routine traps its own errors
// and raises nothing. Interface thread only.

#include "core/controls.h"

#include <cstdint>

namespace forms {

struct FrmVolume {
    Shown<bool> Visible{false};
    Shown<std::int32_t> Left{0}; // pixels of the screen
    Shown<std::int32_t> Top{0};
    Slider sldVolume;
    std::int16_t iVolume = 100; // the present volume
};
inline FrmVolume frmVolume;

} // namespace forms

namespace frmVolume {

/// Takes the volume of the last run; a blank one is stored as 100, what is no volume counts as 100. Called when the
/// preview opens.
void LoadVolume();
/// Stores a level from 0 to 100; any other is dropped. Called with `GetVolume` when the preview closes.
void SaveVolume(std::int16_t level);
std::int16_t GetVolume();
/// Hands the level to both players and keeps it.
void SetVolume(std::int16_t level);

// --- The popup -----------------------------------------------------------------------------------------------------

/// Shows the popup where `Left` and `Top` say; its slider takes the present volume.
void Form_Load();
/// Any key closes the popup, the arrow keys too.
void Form_KeyDown();
/// Another window has become active: the popup closes.
void Form_Deactivate();

} // namespace frmVolume
