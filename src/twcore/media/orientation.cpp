#include "twcore/media/orientation.h"

#include "twcore/media/ff_versions.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace twcore {

namespace {

Orientation fromMatrix(const std::int32_t* matrix)
{
    // Row by row a b u, c d v, x y w: stored (p, q) is displayed at (a p + c q, b p + d q).
    const auto a = std::int64_t{matrix[0]};
    const auto b = std::int64_t{matrix[1]};
    const auto c = std::int64_t{matrix[3]};
    const auto d = std::int64_t{matrix[4]};
    if (std::abs(b) > std::abs(a)) {
        return {.swapAxes = true, .mirrorX = b < 0, .mirrorY = c < 0};
    }
    return {.swapAxes = false, .mirrorX = a < 0, .mirrorY = d < 0};
}

/// The eight orientations that a camera notes, from 1.
Orientation fromCameraNote(int note)
{
    switch (note) {
    case 2:
        return {false, true, false};
    case 3:
        return {false, true, true};
    case 4:
        return {false, false, true};
    case 5:
        return {true, false, false};
    case 6:
        return {true, false, true};
    case 7:
        return {true, true, true};
    case 8:
        return {true, true, false};
    default:
        return {};
    }
}

} // namespace

Orientation orientationOf(const AVStream& stream, const AVFrame* frame)
{
    if (const auto data = sideDataOf(stream, AV_PKT_DATA_DISPLAYMATRIX); data.size() >= 9 * sizeof(std::int32_t)) {
        return fromMatrix(reinterpret_cast<const std::int32_t*>(data.data()));
    }
    if (frame == nullptr) {
        return {};
    }
    if (const auto* side = av_frame_get_side_data(frame, AV_FRAME_DATA_DISPLAYMATRIX);
        side != nullptr && side->size >= 9 * sizeof(std::int32_t)) {
        return fromMatrix(reinterpret_cast<const std::int32_t*>(side->data));
    }
    if (const auto* note = av_dict_get(frame->metadata, "Orientation", nullptr, 0)) {
        return fromCameraNote(std::atoi(note->value));
    }
    return {};
}

PictureSize displayedSize(int storedWidth, int storedHeight, AVRational pixelAspect, const Orientation& orientation)
{
    // The stored lines are kept and their length follows, as cameras mean it.
    int width = static_cast<int>(std::lround(storedWidth * av_q2d(pixelAspect)));
    int height = storedHeight;
    if (orientation.swapAxes) {
        std::swap(width, height);
    }
    return {std::max(1, width), std::max(1, height)};
}

} // namespace twcore
