#include "twcore/render/deinterlace.h"

#include "twcore/media/ff_versions.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace twcore {

namespace {

// Motion is judged block by block. In a whole picture a line is nearer to its neighbours than these are to the next
// lines but one; where two moments are interleaved it is the other way round.
constexpr int kBlockWidth = 32;
constexpr int kBlockHeight = 16;
constexpr int kNoise = 1;  // of the second differences, for each pixel
constexpr int kSlants = 2; // pixels to either side over which an edge is followed
constexpr int kReach = 1;  // pixels to either side that are compared along it

/// One plane of a frame; lines beyond its edges are those of the edge's own field. Sides are the frame's, `shift` times
/// halved.
struct Plane {
    const std::uint8_t* data;
    std::ptrdiff_t stride;
    int width;
    int height;
    int shiftX;
    int shiftY;

    const std::uint8_t* line(int y) const
    {
        while (y < 0) {
            y += 2;
        }
        while (y >= height) {
            y -= 2;
        }
        return data + y * stride;
    }
};

/// Which blocks comb, in brightness or in colour, with those around them.
class CombMap {
public:
    CombMap(const std::array<Plane, 3>& planes, int firstFilled)
        : columns_((planes[0].width + kBlockWidth - 1) / kBlockWidth),
          rows_((planes[0].height + kBlockHeight - 1) / kBlockHeight),
          moves_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_))
    {
        std::vector<char> combs(moves_.size());
        for (int row = 0; row < rows_; ++row) {
            for (int column = 0; column < columns_; ++column) {
                combs[at(column, row)] = std::ranges::any_of(
                    planes, [&](const Plane& plane) { return combsAt(plane, firstFilled, column, row); });
            }
        }
        for (int row = 0; row < rows_; ++row) {
            for (int column = 0; column < columns_; ++column) {
                char any = 0;
                for (int y = std::max(0, row - 1); y <= std::min(rows_ - 1, row + 1); ++y) {
                    for (int x = std::max(0, column - 1); x <= std::min(columns_ - 1, column + 1); ++x) {
                        any = static_cast<char>(any | combs[at(x, y)]);
                    }
                }
                moves_[at(column, row)] = any;
            }
        }
    }

    int columns() const { return columns_; }
    /// Of a line of the plane itself, or of one `shift` times halved.
    bool moves(int column, int y, int shift) const
    {
        return moves_[at(column, std::min(rows_ - 1, (y << shift) / kBlockHeight))] != 0;
    }

private:
    std::size_t at(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
    }

    static bool combsAt(const Plane& plane, int firstFilled, int column, int row)
    {
        const int left = column * kBlockWidth >> plane.shiftX;
        const int right = std::min(plane.width, (column + 1) * kBlockWidth >> plane.shiftX);
        const int top = row * kBlockHeight >> plane.shiftY;
        const int bottom = std::min(plane.height, (row + 1) * kBlockHeight >> plane.shiftY);
        int interleaved = 0;
        int sameMoment = 0;
        int count = 0;
        for (int y = top + ((top + firstFilled) % 2 == 0 ? 0 : 1); y < bottom; y += 2) {
            const auto* const above2 = plane.line(y - 3);
            const auto* const above = plane.line(y - 1);
            const auto* const own = plane.line(y);
            const auto* const below = plane.line(y + 1);
            for (int x = left; x < right; ++x) {
                interleaved += std::abs(2 * own[x] - above[x] - below[x]);
                sameMoment += std::abs(2 * above[x] - above2[x] - below[x]);
            }
            count += right - left;
        }
        return interleaved > sameMoment + kNoise * count;
    }

    int columns_;
    int rows_;
    std::vector<char> moves_;
};

/// The pixel between two lines, followed along the edge that goes through it.
std::uint8_t between(const std::uint8_t* above, const std::uint8_t* below, int x, int width)
{
    int best = std::abs(above[x] - below[x]) * (2 * kReach + 1) - kReach; // straight down, when in doubt
    int value = (above[x] + below[x] + 1) >> 1;
    if (x < kSlants + kReach || x >= width - kSlants - kReach) {
        return static_cast<std::uint8_t>(value);
    }
    best = 0;
    for (int i = -kReach; i <= kReach; ++i) {
        best += std::abs(above[x + i] - below[x + i]);
    }
    best -= kReach;
    for (const int side : {-1, 1}) {
        for (int slant = 1; slant <= kSlants; ++slant) {
            const int d = side * slant;
            int difference = 0;
            for (int i = -kReach; i <= kReach; ++i) {
                difference += std::abs(above[x + d + i] - below[x - d + i]);
            }
            if (difference >= best) {
                break; // a steeper edge is only believed beside a flatter one
            }
            best = difference;
            value = (above[x + d] + below[x - d] + 1) >> 1;
        }
    }
    return static_cast<std::uint8_t>(value);
}

} // namespace

FramePtr deinterlaced(const AVFrame& frame)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    if (shape == nullptr || (shape->flags & AV_PIX_FMT_FLAG_PLANAR) == 0 || shape->comp[0].depth != 8
        || shape->nb_components < 3 || frame.height < 4) { // a field has a line of colour at least
        return nullptr;
    }
    auto whole = makeFrame();
    whole->format = frame.format;
    whole->width = frame.width;
    whole->height = frame.height;
    if (av_frame_get_buffer(whole.get(), 0) < 0 || av_frame_copy_props(whole.get(), &frame) < 0) {
        return nullptr;
    }
    const int firstFilled = isTopFieldFirst(frame) ? 1 : 0;
    std::array<Plane, 3> planes{};
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const int shiftX = i == 0 ? 0 : shape->log2_chroma_w;
        const int shiftY = i == 0 ? 0 : shape->log2_chroma_h;
        planes[i] = {frame.data[i], frame.linesize[i], -(-frame.width >> shiftX), -(-frame.height >> shiftY), shiftX,
                     shiftY};
    }
    const CombMap map(planes, firstFilled);
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const Plane& plane = planes[i];
        for (int y = 0; y < plane.height; ++y) {
            auto* const target = whole->data[i] + std::ptrdiff_t{y} * whole->linesize[i];
            std::memcpy(target, plane.line(y), static_cast<std::size_t>(plane.width));
            if (y % 2 != firstFilled || plane.height < 2) {
                continue;
            }
            const auto* const above = plane.line(y - 1);
            const auto* const below = plane.line(y + 1);
            for (int column = 0; column < map.columns(); ++column) {
                if (!map.moves(column, y, plane.shiftY)) {
                    continue;
                }
                const int left = column * kBlockWidth >> plane.shiftX;
                const int right = std::min(plane.width, (column + 1) * kBlockWidth >> plane.shiftX);
                for (int x = left; x < right; ++x) {
                    target[x] = between(above, below, x, plane.width);
                }
            }
        }
    }
    setFields(*whole, false, isTopFieldFirst(frame));
    return whole;
}

} // namespace twcore
