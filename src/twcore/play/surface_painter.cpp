#include "twcore/play/surface_painter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace twcore {

namespace {

constexpr std::ptrdiff_t kPixelBytes = 4;

std::ptrdiff_t strideFor(int width) { return (width * kPixelBytes + 63) / 64 * 64; }

/// Black that nothing shines through, as the toolkit wants its pixels. Whole pixels.
void blacken(std::uint8_t* from, std::ptrdiff_t bytes)
{
    constexpr std::uint8_t kBlack[kPixelBytes] = {0, 0, 0, 0xFF};
    for (std::ptrdiff_t at = 0; at < bytes; at += kPixelBytes) {
        std::memcpy(from + at, kBlack, sizeof kBlack);
    }
}

int devicePixels(int logical, double ratio)
{
    constexpr double kMost = 16384;
    return static_cast<int>(std::clamp(std::round(logical * ratio), 0.0, kMost));
}

/// One side of the picture in a side of its area.
std::pair<int, int> sideIn(int start, int room, double wanted)
{
    const int most = room & ~1;
    // A bar of a pixel or two is rounding.
    const int length = room - wanted < 2.5 ? most : std::clamp(static_cast<int>(std::lround(wanted / 2)) * 2, 2, most);
    return {start + (room - length) / 2, length};
}

} // namespace

SurfaceLayout layOut(const engine::SurfaceSize& surface, const std::optional<PictureRect>& area, PictureSize picture)
{
    const double ratio = surface.pixelRatio > 0 ? surface.pixelRatio : 1;
    SurfaceLayout layout;
    layout.surface = {devicePixels(surface.width, ratio), devicePixels(surface.height, ratio)};
    PictureRect room{0, 0, layout.surface.width, layout.surface.height};
    if (area) {
        room.left = std::min(devicePixels(area->left, ratio), layout.surface.width);
        room.top = std::min(devicePixels(area->top, ratio), layout.surface.height);
        room.width = std::min(devicePixels(area->width, ratio), layout.surface.width - room.left);
        room.height = std::min(devicePixels(area->height, ratio), layout.surface.height - room.top);
    }
    if (room.width < 2 || room.height < 2 || picture.width < 1 || picture.height < 1) {
        return layout;
    }
    const double scale =
        std::min(static_cast<double>(room.width) / picture.width, static_cast<double>(room.height) / picture.height);
    std::tie(layout.picture.left, layout.picture.width) = sideIn(room.left, room.width, picture.width * scale);
    std::tie(layout.picture.top, layout.picture.height) = sideIn(room.top, room.height, picture.height * scale);
    return layout;
}

engine::SurfacePicture blackSurface(const engine::SurfaceSize& surface)
{
    const PictureSize size = layOut(surface, std::nullopt, {1, 1}).surface;
    const std::ptrdiff_t stride = strideFor(size.width);
    auto pixels = std::make_shared<std::vector<std::uint8_t>>(static_cast<std::size_t>(stride * size.height));
    blacken(pixels->data(), stride * size.height);
    return {size.width, size.height, stride, {pixels, pixels->data()}};
}

SurfacePainter::SurfacePainter(const SurfaceLayout& layout, const Colour& colour)
    : layout_(layout), stride_(strideFor(layout.surface.width)), converter_(colour)
{
    pool_ = av_buffer_pool_init(static_cast<std::size_t>(stride_ * layout_.surface.height), nullptr);
    if (pool_ == nullptr) {
        throw std::bad_alloc();
    }
}

SurfacePainter::~SurfacePainter() { av_buffer_pool_uninit(&pool_); }

engine::SurfacePicture SurfacePainter::paint(const SharedFrame& frame)
{
    if (frame == frame_) {
        return painted_;
    }
    AVBufferRef* buffer = av_buffer_pool_get(pool_);
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    const std::shared_ptr<const std::uint8_t> pixels(
        buffer->data, [buffer](const std::uint8_t*) mutable { av_buffer_unref(&buffer); });
    std::uint8_t* const target = buffer->data + layout_.picture.top * stride_ + layout_.picture.left * kPixelBytes;
    converter_.paint({{frame->data[0], frame->data[1], frame->data[2]},
                      {frame->linesize[0], frame->linesize[1], frame->linesize[2]},
                      layout_.picture.width,
                      layout_.picture.height,
                      target,
                      stride_});
    paintBars(buffer->data);
    painted_ = {layout_.surface.width, layout_.surface.height, stride_, pixels};
    frame_ = frame;
    return painted_;
}

void SurfacePainter::paintBars(std::uint8_t* pixels) const
{
    const PictureRect& rect = layout_.picture;
    const std::ptrdiff_t leftBytes = rect.left * kPixelBytes;
    const std::ptrdiff_t rightStart = (rect.left + rect.width) * kPixelBytes;
    blacken(pixels, rect.top * stride_);
    for (int y = rect.top; y < rect.top + rect.height; ++y) {
        std::uint8_t* const line = pixels + y * stride_;
        blacken(line, leftBytes);
        blacken(line + rightStart, stride_ - rightStart);
    }
    const int below = rect.top + rect.height;
    blacken(pixels + below * stride_, (layout_.surface.height - below) * stride_);
}

} // namespace twcore
