#include "twcore/render/picture_scaler.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstring>

namespace twcore {

namespace {

constexpr int kBytesDepth = 8;
constexpr int kMostDepth = 14;

const AVPixFmtDescriptor& shapeOf(AVPixelFormat layout) { return *av_pix_fmt_desc_get(layout); }

int halved(int length, int shift) { return -(-length >> shift); }

PictureSize colourSize(PictureSize size, AVPixelFormat layout)
{
    const AVPixFmtDescriptor& shape = shapeOf(layout);
    return {halved(size.width, shape.log2_chroma_w), halved(size.height, shape.log2_chroma_h)};
}

bool isReachable(PictureSize from, PictureSize to)
{
    return tapsBetween(from.width, to.width) <= kMostTaps && tapsBetween(from.height, to.height) <= kMostTaps;
}

bool isOfPlanes(AVPixelFormat layout, int mostDepth)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(layout);
    constexpr std::uint64_t kOther =
        AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_BE | AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_FLOAT;
    if (shape == nullptr || shape->nb_components != 3 || (shape->flags & kOther) != 0
        || (shape->flags & AV_PIX_FMT_FLAG_PLANAR) == 0) {
        return false;
    }
    const int depth = shape->comp[0].depth;
    const int step = depth > kBytesDepth ? 2 : 1;
    return depth >= kBytesDepth && depth <= mostDepth
           && std::all_of(shape->comp, shape->comp + 3, [&, plane = 0](const AVComponentDescriptor& part) mutable {
                  return part.plane == plane++ && part.depth == depth && part.step == step && part.offset == 0
                         && part.shift == 0;
              });
}

template <class Byte, class Frame>
PlanarPicture<Byte> partOf(Frame& frame, const PictureRect& part, const Colour& colour)
{
    const AVPixelFormat layout = withoutRange(static_cast<AVPixelFormat>(frame.format));
    const AVPixFmtDescriptor& shape = shapeOf(layout);
    PlanarPicture<Byte> picture{{}, {}, layout, {part.width, part.height}, colour};
    for (int i = 0; i < 3 && frame.data[i] != nullptr; ++i) {
        const int left = part.left >> (i == 0 ? 0 : shape.log2_chroma_w);
        const int top = part.top >> (i == 0 ? 0 : shape.log2_chroma_h);
        picture.planes[i] = frame.data[i] + std::ptrdiff_t{top} * frame.linesize[i] + left * shape.comp[0].step;
        picture.strides[i] = frame.linesize[i];
    }
    return picture;
}

} // namespace

AVPixelFormat withoutRange(AVPixelFormat layout)
{
    switch (layout) {
    case AV_PIX_FMT_YUVJ420P:
        return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P:
        return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P:
        return AV_PIX_FMT_YUV444P;
    case AV_PIX_FMT_YUVJ440P:
        return AV_PIX_FMT_YUV440P;
    case AV_PIX_FMT_YUVJ411P:
        return AV_PIX_FMT_YUV411P;
    default:
        return layout;
    }
}

PlanarPicture<std::uint8_t> planarPart(AVFrame& frame, const PictureRect& part, const Colour& colour)
{
    return partOf<std::uint8_t>(frame, part, colour);
}

PlanarPicture<const std::uint8_t> planarPart(const AVFrame& frame, const PictureRect& part, const Colour& colour)
{
    return partOf<const std::uint8_t>(frame, part, colour);
}

bool PictureScaler::reads(AVPixelFormat layout, PictureSize size, PictureSize to)
{
    // Colour may have to come to every pixel, or from every pixel to every second.
    return isOfPlanes(layout, kMostDepth) && isReachable(size, {halved(to.width, 1), halved(to.height, 1)});
}

bool PictureScaler::draws(const PlanarPicture<std::uint8_t>& target, const PlanarPicture<const std::uint8_t>& source)
{
    return isOfPlanes(target.layout, kBytesDepth) && reads(source.layout, source.size, target.size);
}

void PictureScaler::prepare(const Kind& kind)
{
    if (kind == kind_) {
        return;
    }
    kind_ = {};
    const int depth = shapeOf(kind.sourceLayout).comp[0].depth;
    luma_.emplace(kind.from, kind.to, depth, vectors_);
    chroma_.emplace(colourSize(kind.from, kind.sourceLayout), colourSize(kind.to, kind.targetLayout), depth, vectors_);
    recolouring_.reset();
    if (kind.sourceColour != kind.targetColour) {
        recolouring_.emplace(kind.sourceColour, kind.targetColour);
    }
    const int chromaShift = shapeOf(kind.targetLayout).log2_chroma_w;
    lines_[0].resize(static_cast<std::size_t>(kind.to.width) + kLineGroup);
    for (auto* const line : {&lines_[1], &lines_[2]}) {
        line->resize(static_cast<std::size_t>(chroma_->size().width) + kLineGroup);
    }
    parts_.resize((static_cast<std::size_t>(chroma_->size().width) << chromaShift) + kLineGroup);
    kind_ = kind;
}

void PictureScaler::draw(const PlanarPicture<std::uint8_t>& target, const PlanarPicture<const std::uint8_t>& source)
{
    prepare({source.layout, target.layout, source.size, target.size, source.colour, target.colour});
    if (recolouring_) {
        drawRecoloured(target, source);
        return;
    }
    drawPlane(*luma_, target, source, 0);
    drawPlane(*chroma_, target, source, 1);
    drawPlane(*chroma_, target, source, 2);
}

void PictureScaler::drawPlane(PlaneScaler& scaler, const PlanarPicture<std::uint8_t>& target,
                              const PlanarPicture<const std::uint8_t>& source, int plane)
{
    for (int y = 0; y < scaler.size().height; ++y) {
        std::uint8_t* const to = target.planes[plane] + std::ptrdiff_t{y} * target.strides[plane];
        if (scaler.isCopy()) {
            std::memcpy(to, source.planes[plane] + std::ptrdiff_t{y} * source.strides[plane],
                        static_cast<std::size_t>(scaler.size().width));
        } else {
            scaler.line(source.planes[plane], source.strides[plane], y, lines_[0].data());
            lineToBytes(vectors_, lines_[0].data(), to, scaler.size().width);
        }
    }
}

void PictureScaler::drawRecoloured(const PlanarPicture<std::uint8_t>& target,
                                   const PlanarPicture<const std::uint8_t>& source)
{
    const AVPixFmtDescriptor& shape = shapeOf(target.layout);
    const auto row = [&](int plane, int number) {
        return target.planes[plane] + std::ptrdiff_t{number} * target.strides[plane];
    };
    for (int y = 0; y < chroma_->size().height; ++y) {
        for (const int plane : {1, 2}) {
            chroma_->line(source.planes[plane], source.strides[plane], y, lines_[plane].data());
        }
        recolouring_->parts({lines_[1].data(), lines_[2].data()}, chroma_->size().width, shape.log2_chroma_w,
                            parts_.data());
        recolouring_->chroma({lines_[1].data(), lines_[2].data()}, row(1, y), row(2, y), chroma_->size().width);
        const int end = std::min((y + 1) << shape.log2_chroma_h, luma_->size().height);
        for (int of = y << shape.log2_chroma_h; of < end; ++of) {
            luma_->line(source.planes[0], source.strides[0], of, lines_[0].data());
            recolouring_->luma(lines_[0].data(), parts_.data(), row(0, of), luma_->size().width);
        }
    }
}

} // namespace twcore
