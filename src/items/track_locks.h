#pragma once

// Whether a row may be edited. Lock is held in the rows' check boxes alone. Interface thread only.

#include "engine/types.h"

namespace moduleTWState {

/// True while the row's lock box is 1; false for a handle that belongs to no row. The effect lane has a box of its own,
/// which does not count here.
bool IsTrackLocked(engine::Handle track);

} // namespace moduleTWState
