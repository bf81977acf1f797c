#pragma once

// The small player of the media list: one file, apart from the timeline. Positions are milliseconds.
// Operations come from the interface thread and return at once; pictures come to the surface on an engine thread.
// Play and Stop may come twice and keep the position; Seek clamps; at the end the position equals the length.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWFilePreview {
public:
    virtual ~ITWFilePreview() = default;

    /// The surface to draw on, by its number in the registry of surfaces.
    virtual Status SetOwnerWindow(std::int32_t windowHandle) = 0;
    virtual Status ResetPlayer(Bool16& ok) = 0;
    virtual Status OpenFile(Text path, Bool16& ok) = 0;
    virtual Status Close() = 0;
    virtual Status Play(Bool16& ok) = 0;
    /// Stops and keeps the position.
    virtual Status Stop(Bool16& ok) = 0;
    /// The area of the surface in which the picture stands, logical pixels.
    virtual Status SetVideoWindow(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) = 0;
    virtual Status Seek(std::int32_t position, Bool16& ok) = 0;
    virtual Status Rewind(Bool16& ok) = 0;
    /// 0 when nothing that can be played is loaded.
    virtual Status GetDuration(std::int32_t& length) = 0;
    virtual Status GetPosition(std::int32_t& position) = 0;
    virtual Status ShowFirstFrame(Bool16& ok) = 0;
    /// -100 silent to 0 full.
    virtual Status SetVolume(std::int32_t level) = 0;
};

} // namespace engine
