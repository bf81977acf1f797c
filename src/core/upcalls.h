#pragma once

// The few routines that every room must reach although they stand above it. Declared here, defined in their rooms.

#include "engine/runtime_error.h"

#include <string_view>

/// Defined in `report/`. A function name that ends in "*" only writes the log record; any other opens the report
/// dialogue, which writes it. Never raises.
void ReportError(std::string_view module, std::string_view function, const engine::RuntimeError& error) noexcept;

/// Defined in `timeline/`. Empties the timeline list and fills it from the engine.
void UpdateTreeView();

/// Defined in `timeline/`. Draws every bar of every row anew from the engine.
void RenderAllBars();
