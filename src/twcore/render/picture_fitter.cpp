#include "twcore/render/picture_fitter.h"

#include "twcore/media/ff_versions.h"
#include "twcore/render/deinterlace.h"
#include "twcore/render/over_black.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace twcore {

namespace {

constexpr int kAlignment = 64;

/// Of encoders that look beyond the edge.
int rowWidthOfEncoders(int width)
{
    constexpr int kEdge = 16;
    constexpr int kStep = 2 * kAlignment; // colour has half of it
    return (width + 2 * kEdge + kStep - 1) / kStep * kStep;
}

const int* coefficientsOf(Matrix matrix)
{
    switch (matrix) {
    case Matrix::kBt709:
        return sws_getCoefficients(SWS_CS_ITU709);
    case Matrix::kBt2020:
        return sws_getCoefficients(SWS_CS_BT2020);
    default:
        return sws_getCoefficients(SWS_CS_ITU601);
    }
}

bool isYuv(const Colour& colour) { return colour.matrix != Matrix::kRgb; }

PlanarRect planarRect(AVFrame& frame, const PictureRect& rect)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    PlanarRect planar{};
    planar.width = rect.width;
    planar.height = rect.height;
    planar.shiftX = shape->log2_chroma_w;
    planar.shiftY = shape->log2_chroma_h;
    for (int i = 0; i < 3; ++i) {
        const int x = i == 0 ? rect.left : rect.left >> planar.shiftX;
        const int y = i == 0 ? rect.top : rect.top >> planar.shiftY;
        planar.planes[i] = frame.data[i] + std::ptrdiff_t{y} * frame.linesize[i] + x;
        planar.strides[i] = frame.linesize[i];
    }
    return planar;
}

/// Turns one plane. Sizes are those of the whole turned picture; a plane of subsampled colour has its shifts, and where
/// they differ it is read at the nearest pixel.
template <int bytes>
void turnPlane(std::uint8_t* target, int targetStride, const std::uint8_t* source, int sourceStride, PictureSize size,
               int shiftX, int shiftY, const Orientation& orientation)
{
    // Blocks keep both sides in the cache.
    constexpr int kBlock = 32;
    const int width = size.width >> shiftX;
    const int height = size.height >> shiftY;
    const int sourceWidth = orientation.swapAxes ? size.height : size.width;
    const int sourceHeight = orientation.swapAxes ? size.width : size.height;
    for (int blockY = 0; blockY < height; blockY += kBlock) {
        for (int blockX = 0; blockX < width; blockX += kBlock) {
            for (int y = blockY; y < std::min(blockY + kBlock, height); ++y) {
                for (int x = blockX; x < std::min(blockX + kBlock, width); ++x) {
                    int u = orientation.swapAxes ? y << shiftY : x << shiftX;
                    int v = orientation.swapAxes ? x << shiftX : y << shiftY;
                    u = (orientation.mirrorX ? sourceWidth - 1 - u : u) >> shiftX;
                    v = (orientation.mirrorY ? sourceHeight - 1 - v : v) >> shiftY;
                    std::memcpy(target + std::ptrdiff_t{y} * targetStride + x * bytes,
                                source + std::ptrdiff_t{v} * sourceStride + u * bytes, bytes);
                }
            }
        }
    }
}

} // namespace

PicturePool::PicturePool(const PictureFormat& format, Rows rows) : format_(format)
{
    const auto bytesOf = [&](int width) {
        return av_image_get_buffer_size(format_.pixels, width, format_.size.height, kAlignment);
    };
    if (rows == Rows::kOfEncoders && format_.pixels == AV_PIX_FMT_YUV420P) {
        rowWidth_ = rowWidthOfEncoders(format_.size.width);
        pictureBytes_ = bytesOf(rowWidth_);
    }
    if (pictureBytes_ <= 0) {
        rowWidth_ = format_.size.width;
        pictureBytes_ = bytesOf(rowWidth_);
    }
    pool_ = pictureBytes_ > 0 ? av_buffer_pool_init(static_cast<std::size_t>(pictureBytes_) + kAlignment, nullptr)
                              : nullptr;
    if (pool_ == nullptr) {
        throw std::bad_alloc();
    }
}

PicturePool::~PicturePool() { av_buffer_pool_uninit(&pool_); }

FramePtr PicturePool::newFrame()
{
    auto frame = makeFrame();
    frame->format = format_.pixels;
    frame->width = format_.size.width;
    frame->height = format_.size.height;
    frame->color_range = format_.colour.isFullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    frame->buf[0] = av_buffer_pool_get(pool_);
    if (frame->buf[0] == nullptr) {
        throw std::bad_alloc();
    }
    av_image_fill_arrays(frame->data, frame->linesize, frame->buf[0]->data, format_.pixels, rowWidth_, frame->height,
                         kAlignment);
    return frame;
}

PictureFitter::PictureFitter(PictureFormat format, PicturePoolPtr pool)
    : format_(format), pool_(pool ? std::move(pool) : std::make_shared<PicturePool>(format, PicturePool::Rows::kOwn))
{}

PictureFitter::~PictureFitter()
{
    for (auto& scaler : scalers_) {
        sws_freeContext(scaler.context);
    }
}

void PictureFitter::paintBlack(AVFrame& frame) const
{
    const std::ptrdiff_t strides[4] = {frame.linesize[0], frame.linesize[1], frame.linesize[2], frame.linesize[3]};
    av_image_fill_black(frame.data, strides, format_.pixels,
                        format_.colour.isFullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG, frame.width, frame.height);
}

SharedFrame PictureFitter::black()
{
    if (!black_) {
        auto frame = newFrame();
        paintBlack(*frame);
        black_ = shareFrame(std::move(frame));
    }
    return black_;
}

SharedFrame PictureFitter::fit(const SharedFrame& frame, const PictureFacts& facts, const PicturePlace& place)
{
    const PictureRect all{0, 0, format_.size.width, format_.size.height};
    const AVPixelFormat pixels = withoutRange(static_cast<AVPixelFormat>(frame->format));
    if (place == PicturePlace{all} && PictureSize{frame->width, frame->height} == format_.size
        && pixels == format_.pixels && colourOf(*frame) == format_.colour && !isHighDynamicRange(*frame)
        && facts.orientation.isPlain()) {
        return frame;
    }
    auto target = newFrame();
    if (place.target != all) {
        paintBlack(*target);
    }
    draw(*target, *frame, facts, place);
    return shareFrame(std::move(target));
}

FramePtr PictureFitter::copyOf(const AVFrame& frame)
{
    auto copy = newFrame();
    const std::uint8_t* planes[4] = {frame.data[0], frame.data[1], frame.data[2], frame.data[3]};
    av_image_copy(copy->data, copy->linesize, planes, frame.linesize, format_.pixels, copy->width, copy->height);
    return copy;
}

SharedFrame PictureFitter::fitOver(const SharedFrame& below, const SharedFrame& frame, const PictureFacts& facts,
                                   const PicturePlace& place)
{
    auto target = copyOf(*below);
    draw(*target, *frame, facts, place);
    return shareFrame(std::move(target));
}

void PictureFitter::draw(AVFrame& target, const AVFrame& frame, const PictureFacts& facts, const PicturePlace& place)
{
    FramePtr whole;
    const AVFrame* mapped = nullptr;
    if (isHighDynamicRange(frame)) {
        // Scaled first where that can be: fewer pixels to work on.
        PictureSize size{frame.width, frame.height};
        if (place.showsAll()) {
            size = facts.orientation.swapAxes ? PictureSize{place.target.height, place.target.width}
                                              : PictureSize{place.target.width, place.target.height};
        }
        mapped = toneMapper_.map(frame, size);
    } else if (isTransparent(frame)) {
        whole = overBlack(frame);
    } else if (isInterlaced(frame)) {
        if (keepsLines(frame, facts, place)) {
            drawFields(target, frame, place);
            return;
        }
        whole = deinterlaced(frame);
    }
    const AVFrame& source = mapped != nullptr ? *mapped : whole ? *whole : frame;
    const PictureRect part = storedPart(source, place, facts.orientation);
    if (facts.orientation.isPlain()) {
        scaleInto(target, source, part, place.target, Lines::kAll);
    } else {
        turnInto(target, source, part, place.target, facts.orientation);
    }
}

/// Whether each pixel of the movie is one of the stored picture, line by line, and both fields have whole lines of
/// colour.
bool PictureFitter::keepsLines(const AVFrame& frame, const PictureFacts& facts, const PicturePlace& place)
{
    constexpr int kLinesOfColour = 4; // two of each field for a line of colour each
    const PictureRect part = storedPart(frame, place, facts.orientation);
    return facts.orientation.isPlain() && part.width == place.target.width && part.height == place.target.height
           && part.top % kLinesOfColour == 0 && part.height % kLinesOfColour == 0
           && place.target.top % kLinesOfColour == 0;
}

/// Each field by itself: a line of colour belongs to lines of its own moment alone.
void PictureFitter::drawFields(AVFrame& target, const AVFrame& frame, const PicturePlace& place)
{
    const auto field = [](const AVFrame& whole, int number) {
        FramePtr half(av_frame_clone(&whole));
        if (!half) {
            throw std::bad_alloc();
        }
        for (int i = 0; i < AV_NUM_DATA_POINTERS && half->data[i] != nullptr; ++i) {
            half->data[i] += number * std::ptrdiff_t{half->linesize[i]};
            half->linesize[i] *= 2;
        }
        half->height = whole.height / 2;
        return half;
    };
    PicturePlace halfPlace = place;
    halfPlace.target.top /= 2;
    halfPlace.target.height /= 2;
    for (const int number : {0, 1}) {
        const FramePtr source = field(frame, number);
        const FramePtr half = field(target, number);
        scaleInto(*half, *source, storedPart(*source, halfPlace, {}), halfPlace.target,
                  number == 0 ? Lines::kUpper : Lines::kLower);
    }
}

/// The part of the stored picture that is seen, with even edges.
PictureRect PictureFitter::storedPart(const AVFrame& frame, const PicturePlace& place, const Orientation& orientation)
{
    if (place.showsAll()) {
        return {0, 0, frame.width, frame.height};
    }
    const auto axis = [](double start, double length, bool mirrored, int count) {
        const double from = (mirrored ? 1 - start - length : start) * count;
        const int first = static_cast<int>(std::lround(from / 2)) * 2;
        const int size = std::max(2, static_cast<int>(std::lround(length * count / 2)) * 2);
        return std::pair{std::clamp(first, 0, std::max(0, count - size)), std::min(size, count)};
    };
    const bool swap = orientation.swapAxes;
    const auto [left, width] = axis(swap ? place.cropTop : place.cropLeft, swap ? place.cropHeight : place.cropWidth,
                                    orientation.mirrorX, frame.width);
    const auto [top, height] = axis(swap ? place.cropLeft : place.cropTop, swap ? place.cropWidth : place.cropHeight,
                                    orientation.mirrorY, frame.height);
    return {left, top, width, height};
}

/// A scaler that knows where lines of colour stand between those of brightness: in the middle of a whole picture's, a
/// quarter of a line off it in a field, where the upper one has them higher and the lower one lower.
SwsContext* PictureFitter::scalerFor(AVPixelFormat from, PictureSize size, PictureSize to, Lines lines)
{
    constexpr int kUsual = -513;
    const auto placeIn = [&](AVPixelFormat pixels) {
        const bool isHalved = av_pix_fmt_desc_get(pixels)->log2_chroma_h == 1;
        return !isHalved || lines == Lines::kAll ? kUsual : lines == Lines::kUpper ? 64 : 192;
    };
    auto& [scaler, source] = scalers_[static_cast<std::size_t>(lines)];
    if (lines != Lines::kAll && (scaler == nullptr || source != from)) {
        sws_freeContext(scaler);
        scaler = sws_alloc_context();
        if (scaler == nullptr) {
            throw std::bad_alloc();
        }
        av_opt_set_int(scaler, "src_v_chr_pos", placeIn(from), 0);
        av_opt_set_int(scaler, "dst_v_chr_pos", placeIn(format_.pixels), 0);
        source = from;
    }
    // The quick way from stored bitmaps to brightness and colour knows the limited range alone.
    const bool isTooQuick = from == AV_PIX_FMT_BGR24 && isYuv(format_.colour) && format_.colour.isFullRange;
    const int flags = SWS_BICUBIC | (isTooQuick ? SWS_ACCURATE_RND : 0);
    scaler = sws_getCachedContext(scaler, size.width, size.height, from, to.width, to.height, format_.pixels, flags,
                                  nullptr, nullptr, nullptr);
    if (scaler == nullptr) {
        throw std::runtime_error("A picture of this kind cannot be scaled.");
    }
    return scaler;
}

void PictureFitter::scaleInto(AVFrame& target, const AVFrame& source, const PictureRect& part, const PictureRect& rect,
                              Lines of)
{
    const Colour colour = colourOf(source);
    const auto to = planarPart(target, rect, format_.colour);
    const auto from = planarPart(source, part, colour);
    if (of == Lines::kAll && PictureScaler::draws(to, from)) {
        scaler_.draw(to, from);
        return;
    }
    scaleByLibrary(target, source, part, rect, of);
    if (isYuv(colour) && isYuv(format_.colour) && colour != format_.colour) {
        recolour(planarRect(target, rect), colour, format_.colour);
    }
}

void PictureFitter::scaleByLibrary(AVFrame& target, const AVFrame& source, const PictureRect& part,
                                   const PictureRect& rect, Lines of)
{
    const Colour colour = colourOf(source);
    const AVPixelFormat sourcePixels = withoutRange(static_cast<AVPixelFormat>(source.format));
    SwsContext* const scaler = scalerFor(sourcePixels, {part.width, part.height}, {rect.width, rect.height}, of);
    // Between two kinds of colour differences the scaler only scales: the change of colour is made afterwards, on
    // fewer pixels. To and from red, green and blue it knows the other side's matrix.
    const bool bothYuv = isYuv(colour) && isYuv(format_.colour);
    const int* const from = coefficientsOf(isYuv(colour) ? colour.matrix : format_.colour.matrix);
    const int* const to =
        bothYuv ? from : coefficientsOf(isYuv(format_.colour) ? format_.colour.matrix : colour.matrix);
    const int range = bothYuv ? 0 : colour.isFullRange;
    sws_setColorspaceDetails(scaler, from, range, to, bothYuv ? 0 : format_.colour.isFullRange, 0, 1 << 16, 1 << 16);
    std::uint8_t* planes[4] = {};
    int strides[4] = {};
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(format_.pixels);
    const bool planar = (shape->flags & AV_PIX_FMT_FLAG_PLANAR) != 0;
    for (int i = 0; i < 4 && target.data[i] != nullptr; ++i) {
        const int x = i == 0 ? rect.left : rect.left >> shape->log2_chroma_w;
        const int y = i == 0 ? rect.top : rect.top >> shape->log2_chroma_h;
        planes[i] = target.data[i] + std::ptrdiff_t{y} * target.linesize[i] + x * (planar ? 1 : shape->comp[0].step);
        strides[i] = target.linesize[i];
    }
    const std::uint8_t* lines[4] = {};
    for (int i = 0; i < 4; ++i) {
        lines[i] = source.data[i];
    }
    if (part.left != 0 || part.top != 0) {
        const AVPixFmtDescriptor* const stored = av_pix_fmt_desc_get(sourcePixels);
        for (int i = 0; i < 4 && lines[i] != nullptr; ++i) {
            const bool halved = i == 1 || i == 2;
            const int step =
                av_image_get_linesize(sourcePixels, 2, i) / (halved ? std::max(1, 2 >> stored->log2_chroma_w) : 2);
            lines[i] += std::ptrdiff_t{halved ? part.top >> stored->log2_chroma_h : part.top} * source.linesize[i]
                        + (halved ? part.left >> stored->log2_chroma_w : part.left) * step;
        }
    }
    if (sws_scale(scaler, lines, source.linesize, 0, part.height, planes, strides) <= 0) {
        throw std::runtime_error("A picture could not be scaled.");
    }
}

void PictureFitter::turnInto(AVFrame& target, const AVFrame& source, const PictureRect& part, const PictureRect& rect,
                             const Orientation& orientation)
{
    const int width = orientation.swapAxes ? rect.height : rect.width;
    const int height = orientation.swapAxes ? rect.width : rect.height;
    if (!turned_ || turned_->width != width || turned_->height != height) {
        turned_ = makeFrame();
        turned_->format = format_.pixels;
        turned_->width = width;
        turned_->height = height;
        if (av_frame_get_buffer(turned_.get(), 0) < 0) {
            throw std::bad_alloc();
        }
    }
    scaleInto(*turned_, source, part, {0, 0, width, height}, Lines::kAll);
    const PictureSize size{rect.width, rect.height};
    if (av_pix_fmt_desc_get(format_.pixels)->comp[0].step == 3) {
        turnPlane<3>(target.data[0] + std::ptrdiff_t{rect.top} * target.linesize[0] + rect.left * 3, target.linesize[0],
                     turned_->data[0], turned_->linesize[0], size, 0, 0, orientation);
        return;
    }
    const PlanarRect planar = planarRect(target, rect);
    for (int i = 0; i < 3; ++i) {
        turnPlane<1>(planar.planes[i], planar.strides[i], turned_->data[i], turned_->linesize[i], size,
                     i == 0 ? 0 : planar.shiftX, i == 0 ? 0 : planar.shiftY, orientation);
    }
}

} // namespace twcore
