#pragma once

// From where to where the selection reaches, as the commands take it.

#include "engine/types.h"

namespace editing {

/// Timeline times in ms, in the grid of the zoom.
struct SelectionEdges {
    engine::Milliseconds start = 0;
    engine::Milliseconds stop = 0;
};

/// The edges by the places of the selection's sliders, whether they are shown or not. The time of a slider is half its
/// width, 5 pixels, right of its left:
///
///     left                        time = ms of (left + scrolled pixels + 5)
///      [    |    ]
///
/// Raises error 6 on overflow. Interface thread only.
SelectionEdges selectionEdges();

} // namespace editing
