#pragma once

// What a drag of a handle of the selection says in the first panel of the status bar, until the handles go.

namespace moduleTimeline {

inline constexpr const char* kStartHandleHint = "Reposition the start selection slider";
inline constexpr const char* kEndHandleHint = "Reposition the end selection slider";

} // namespace moduleTimeline
