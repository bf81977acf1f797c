#pragma once

// The few routines that every room must reach although they stand above it. Declared here, defined in their rooms.

#include "engine/runtime_error.h"

#include <cstdint>
#include <string_view>

/// Defined in `report/`. A function name that ends in "*" only writes the log record; any other opens the report
/// dialogue, which writes it. Never raises.
void ReportError(std::string_view module, std::string_view function, const engine::RuntimeError& error) noexcept;

/// Defined in `timeline/`. Empties the timeline list and fills it from the engine.
void UpdateTreeView();

/// Defined in `timeline/`. Draws every bar of every row anew from the engine.
void RenderAllBars();

/// Defined in `shell/`. The menu update, after nearly every command and release of the pointer: which menu entries and
/// buttons are enabled, and the actions of the tools panel. Raises nothing.
void EnableOrDisableMenuItems();

/// Defined in `preview/`. The one call after every change of the timeline: the player takes it in, and goes on playing,
/// pausing or standing as before. Raises nothing.
void UpdatePreview();
/// Defined in `preview/`. The timeline's slider was moved by hand: the player pauses at its time. Raises nothing.
void OnSliderMove();

/// Defined in `shell/`. A panel has become the active one: 0 the media list, 1 the preview, 2 the timeline. The tools
/// panel shows its actions with the next `RefreshActions`, which raises nothing.
void SetActiveContext(std::int16_t context);
void RefreshActions();

/// Defined in `shell/`. Shows a topic of the help, as "1_Welcome.htm"; nothing without screens.
void ShowHelp(std::string_view topic);

/// Defined in `media/`. The engine opens the streams of a closed file again when an image or a paste names them. Gives
/// each such file its row in the media list again, as the last one, and its handles their places in
/// `state::FileCollection` and `state::StreamCollection`. Raises nothing.
void BringBackFiles();
