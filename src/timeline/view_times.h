#pragma once

// Which times of the film the view shows: brought there by scrolling, or by a zoom that fits them. The slider keeps its
// time and may be out of view then. Nothing is raised to the caller. Interface thread only.

#include "items/items.h"

#include <optional>

namespace timeline {

/// Scrolls to those times unless that many of their pixels are in view: from a little ahead of their start on.
void bringIntoView(const items::ItemTimes& times, std::int32_t leastPx);
/// The same for what an edit has brought, as far as it fits in the view; only while View > Follow Edits is on.
void followEdit(const items::ItemTimes& times);

/// From handle to handle while the selection is shown, else from the first selected item to the last, of rows that are
/// not locked; nothing when there is neither.
std::optional<items::ItemTimes> selectedTimes();

} // namespace timeline

namespace moduleScaleRenderer {

/// The film from its start to its end fills the view.
void ZoomToFilm();
/// What is selected does.
void ZoomToSelection();

} // namespace moduleScaleRenderer
