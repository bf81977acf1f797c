#pragma once

// Files that were closed, and are used by the timeline again.

namespace moduleTarnwick {

/// The engine opens the streams of a closed file again when an image of the timeline names them. Gives each such file
/// its row in the media list again, as the last one, and its handles their places in `state::FileCollection` and
/// `state::StreamCollection`. Traps its own errors. Interface thread only.
void BringBackFiles();

} // namespace moduleTarnwick
