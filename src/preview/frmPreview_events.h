#pragma once

// What a person does on the preview's panel, and its timer. State stands in `forms::frmPreview`. Nothing is raised to
// the caller. Interface thread only.

#include <cstdint>

namespace frmPreview {

// --- The panel -----------------------------------------------------------------------------------------------------

/// Dresses the buttons, binds the timer, takes the volume of the last run. The surface's number stands already.
void Load();
/// Closes the player and keeps the volume for the next run.
void Unload();
/// Fits the picture's place into its room (`fmeDisplayWidth` and `fmeDisplayHeight`, which the screen writes before) in
/// the proportions of the project. To be called when those change too.
///
///     +-------------------+         +-------------------+
///     |   +-----------+   |         +-------------------+
///     |   |  picture  |   |   or    |      picture      |
///     |   +-----------+   |         +-------------------+
///     +-------------------+         +-------------------+
void Resize();
/// The panel has become the active one: the tools panel shows its actions.
void Form_Activate();
/// 13 (Enter) plays, 32 (Space) pauses, and plays when it pauses already; on the whole screen whenever it does not
/// play.
void Form_KeyDown(int key);
/// Closed from its window menu: it hides, and the view menu loses its check.
void CloseFromWindowMenu();
/// The picture gets the whole screen, or goes back to its panel.
void TurnWholeScreen();
void LeaveWholeScreen();

// --- Player --------------------------------------------------------------------------------------------------------

void cmdPlay_Click();
void cmdPause_Click();
/// Pauses while it plays, else plays.
void PlayOrPause();
void cmdStop_Click();
void cmdRewind_Click();
void cmdForward_Click();
/// Turns the button over.
void cmdRepeat_Click();
/// Opens the volume's popup below the button, whose lower left corner is told in pixels of the screen.
void cmdMute_Click(std::int32_t left, std::int32_t bottom);

/// The bar is being dragged, or was moved by a key; the screen writes its value before.
void sldSeekBar_Scroll();
void sldSeekBar_Click();
void sldSeekBar_MouseUp();

/// Bar and slider follow the player. At the end it stops, or begins again.
void tm_Timer();

// --- Hints in the status bar ---------------------------------------------------------------------------------------

void cmdPlay_MouseMove();
void cmdPause_MouseMove();
void cmdStop_MouseMove();
void cmdRewind_MouseMove();
void cmdForward_MouseMove();
void cmdRepeat_MouseMove();
void cmdMute_MouseMove();
void lblCurrentTime_MouseMove();
void lblDuration_MouseMove();
void picDisplay_MouseMove();
void sldSeekBar_MouseMove();
void fmeDisplay_MouseMove();

} // namespace frmPreview
