#pragma once

// From a rendered picture to the pixels of a surface: where it stands, bars around it, four bytes a pixel.

#include "engine/surfaces.h"
#include "twcore/media/ff.h"
#include "twcore/render/colour.h"
#include "twcore/render/picture_place.h"
#include "twcore/render/screen_pixels.h"

#include <optional>

namespace twcore {

/// Device pixels.
struct SurfaceLayout {
    PictureSize surface;
    PictureRect picture; // even edges, inside the surface

    bool isEmpty() const { return picture.width < 2 || picture.height < 2; }
    friend bool operator==(const SurfaceLayout&, const SurfaceLayout&) = default;
};

/// A picture with its proportions kept, in the middle of `area` (logical pixels; none: the whole surface). Empty when
/// there is no room.
SurfaceLayout layOut(const engine::SurfaceSize& surface, const std::optional<PictureRect>& area, PictureSize picture);

/// Black all over.
engine::SurfacePicture blackSurface(const engine::SurfaceSize& surface);

/// Serves one thread. Its pictures may outlive it.
class SurfacePainter {
public:
    SurfacePainter(const SurfaceLayout& layout, const Colour& colour);
    ~SurfacePainter();
    SurfacePainter(const SurfacePainter&) = delete;
    SurfacePainter& operator=(const SurfacePainter&) = delete;

    const SurfaceLayout& layout() const noexcept { return layout_; }
    /// `frame` is planar 4:2:0 of the picture's size. The same frame gives the same pixels.
    engine::SurfacePicture paint(const SharedFrame& frame);

private:
    void paintBars(std::uint8_t* pixels) const;

    SurfaceLayout layout_;
    std::ptrdiff_t stride_;
    ScreenPixels converter_;
    AVBufferPool* pool_ = nullptr;
    SharedFrame frame_; // what was painted last
    engine::SurfacePicture painted_;
};

} // namespace twcore
