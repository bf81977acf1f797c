#pragma once

// The player over the timeline, and single frames for the dialogues.
// Operations come from the interface thread and return at once, but `DrawSnapFrame` and `DrawKeyFrame`, which take at
// most 2 s and then leave the canvas as it is. Pictures come to the surface on an engine thread.
// Play, Pause and Stop may come twice and keep the position; building and refreshing keep it too.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWPreview {
public:
    virtual ~ITWPreview() = default;

    /// The surface to draw on, by its number in the registry of surfaces.
    virtual Status SetOwnerWindow(std::int32_t windowHandle) = 0;
    virtual Status BuildPreview(Bool16& built) = 0;
    virtual Status ClosePreview() = 0;
    /// False when the player must be built again.
    virtual Status IsPreviewValid(Bool16& valid) = 0;
    virtual Status Play(Bool16& ok) = 0;
    virtual Status Pause(Bool16& ok) = 0;
    virtual Status Stop(Bool16& ok) = 0;
    /// Clamped to the timeline.
    virtual Status Seek(Milliseconds position, Bool16& ok) = 0;
    /// Takes in the changed timeline without rebuilding.
    virtual Status RefreshPreview(Bool16& ok) = 0;
    /// Ends playing at the position last sought.
    virtual Status Halt(Bool16& ok) = 0;
    virtual Status GetDuration(Milliseconds& duration) = 0;
    virtual Status GetPosition(Milliseconds& position) = 0;
    /// The colour of one pixel of a canvas that the engine has drawn on; each 0 to 255.
    virtual Status GetFramePixel(std::int32_t deviceContext, std::int32_t x, std::int32_t y, std::int32_t& red,
                                 std::int32_t& green, std::int32_t& blue) = 0;
    /// Draws the frame of a file at a time on a canvas, exactly of the size asked. Black when there is no such file, or
    /// no picture in it.
    virtual Status DrawSnapFrame(Text path, double seconds, std::int32_t deviceContext, std::int32_t width,
                                 std::int32_t height) = 0;
    /// Draws the frame of a stream at a time on a canvas, exactly of the size asked.
    virtual Status DrawKeyFrame(Handle stream, double seconds, std::int32_t deviceContext, std::int32_t width,
                                std::int32_t height) = 0;
    /// Writes a canvas as a bitmap file.
    virtual Status SaveSnapFrame(std::int32_t deviceContext, Text path, std::int32_t width, std::int32_t height,
                                 Bool16& ok) = 0;
    /// -100 silent to 0 full.
    virtual Status SetVolume(std::int32_t level) = 0;
};

} // namespace engine
