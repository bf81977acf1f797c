// What a renderer does with a store of pictures that stand ready: how it finds, keeps and approaches them.

#include "twcore/render/picture_renderer.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace twcore {

namespace {

/// Nothing of the picture shines through, and nothing of it is keyed by its very colours: fitted, it is as good.
bool mayBeFitted(const AVFrame& frame, const PlannedSource& source)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return shape != nullptr && (shape->flags & (AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_PAL)) == 0
           && (!source.key || colourOf(frame).matrix != Matrix::kRgb);
}

} // namespace

PictureFit PictureRenderer::fitOf(const PlannedSource& source) const
{
    PictureFit fit{source.media, stampOf(*source.media), placeOf(source), workFormat_};
    fit.format.size = {fit.place.target.width, fit.place.target.height};
    return fit;
}

PictureRenderer::LayerPicture PictureRenderer::stored(const PictureFit& fit, const PictureStore::Stored& picture) const
{
    LayerPicture layer{picture.frame, {}, {fit.place.target}};
    layer.facts.width = fit.format.size.width;
    layer.facts.height = fit.format.size.height;
    return layer;
}

/// Fits the picture into its place, and stores it so. One that would not be the same then is held as it is.
PictureRenderer::LayerPicture PictureRenderer::keep(const PlannedSource& source, const PictureFit& fit, Reader& open,
                                                    const PictureStore::Stored& picture)
{
    const PictureSize size = fit.format.size;
    if (!mayBeFitted(*picture.frame, source) || size.width < 2 || size.height < 2) {
        LayerPicture layer = decoded(source, picture.frame);
        if (!leavesHeld_) {
            open.held = picture;
        }
        return layer;
    }
    if (!placer_ || placer_->format().size != size) {
        placer_ = std::make_unique<PictureFitter>(fit.format);
    }
    PicturePlace whole = fit.place;
    whole.target = {0, 0, size.width, size.height};
    try {
        const PictureStore::Stored made{placer_->fit(picture.frame, *source.media->picture, whole), picture.start,
                                        picture.end};
        store_->put(fit, made);
        return stored(fit, made);
    } catch (const std::runtime_error&) {
        return decoded(source, picture.frame); // its composition tells
    }
}

void PictureRenderer::keepPassed(const PlannedSource& source, const PictureReader::Passed& passed)
{
    const bool isClose = keptAhead_ > 0 && passed.start >= passingTo_ - keptAhead_;
    Reader& open = *find(source.media, passingLayer_);
    const bool isDue = keptEvery_ > 0 && std::abs(passed.start - open.lastKept) >= keptEvery_;
    if (isClose || isDue) {
        open.lastKept = passed.start;
        (void)keep(source, fitOf(source), open, {passed.frame, passed.start, passed.end});
    }
}

bool PictureRenderer::isReady(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        if (!isThere(*stretch->layers[i], i, secondsIn(*stretch->layers[i], number))) {
            return false;
        }
    }
    return true;
}

bool PictureRenderer::isThere(const PlannedSource& source, std::size_t layer, double seconds)
{
    const Reader* const open = find(source.media, layer);
    return store_->at(fitOf(source), seconds) || (open != nullptr && open->holds(seconds));
}

std::size_t PictureRenderer::bytesOf(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    std::size_t bytes = 0;
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        const PictureRect target = placeOf(*stretch->layers[i]).target;
        bytes += static_cast<std::size_t>(std::int64_t{target.width} * target.height * 3 / 2);
    }
    return bytes;
}

/// What stands of a source, next to a media time: fitted, or held as it was decoded; empty when nothing does.
std::optional<PictureRenderer::LayerPicture> PictureRenderer::nearestOf(const PlannedSource& source, std::size_t layer,
                                                                        double seconds, double& off)
{
    const auto distance = [&](const PictureStore::Stored& picture) {
        return seconds >= picture.start && seconds < picture.end ? 0 : std::abs(picture.start - seconds);
    };
    const PictureFit fit = fitOf(source);
    if (const auto found = store_->nearest(fit, seconds)) {
        off = distance(*found);
        return stored(fit, *found);
    }
    const Reader* const open = find(source.media, layer);
    if (open == nullptr || !open->held.frame) {
        off = std::numeric_limits<double>::infinity();
        return std::nullopt;
    }
    off = distance(open->held);
    return decoded(source, open->held.frame);
}

SharedFrame PictureRenderer::nearestFrame(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    if (stretch == nullptr || stretch->layers.empty()) {
        return fitter_.black();
    }
    std::vector<LayerPicture> layers;
    bool hasAny = false;
    for (std::size_t i = 0; i < stretch->layers.size(); ++i) {
        const PlannedSource& source = *stretch->layers[i];
        double off = 0;
        const bool isStill = source.media->picture->isStill; // there is one, and it comes at once
        auto layer = isStill ? layerAt(source, i, number) : nearestOf(source, i, secondsIn(source, number), off);
        hasAny = hasAny || layer;
        layers.push_back(std::move(layer).value_or(LayerPicture{}));
    }
    return hasAny ? composed(*stretch, number, layers) : nullptr;
}

double PictureRenderer::offOf(const PlannedSource& source, std::size_t layer, std::int64_t number)
{
    double off = 0;
    if (!source.media->picture->isStill) {
        (void)nearestOf(source, layer, secondsIn(source, number), off);
    }
    return off;
}

double PictureRenderer::nearestOff(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    double farthest = 0;
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        farthest = std::max(farthest, offOf(*stretch->layers[i], i, number));
    }
    return farthest;
}

bool PictureRenderer::workTowards(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    if (stretch == nullptr) {
        return true;
    }
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t i = 0; i < stretch->layers.size(); ++i) {
        order.emplace_back(-offOf(*stretch->layers[i], i, number), i);
    }
    std::ranges::sort(order);
    for (const auto& [off, i] : order) {
        if (!layerAt(*stretch->layers[i], i, number)) {
            return false;
        }
    }
    return true;
}

std::int64_t PictureRenderer::stretchBegin(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    return stretch == nullptr ? number : clock_.firstFrameAt(stretch->startMs);
}

bool PictureRenderer::hold(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        const PlannedSource& source = *stretch->layers[i];
        const double seconds = secondsIn(source, number);
        Reader& open = openFor(source.media, i);
        if (open.holds(seconds)) {
            continue;
        }
        const SharedFrame frame = open.reader->at(seconds);
        if (open.reader->isPaused() || patience_.over()) {
            return false;
        }
        if (frame && !open.reader->isNear()) {
            open.held = {frame, open.reader->frameStart(), open.reader->knownEnd()};
        }
    }
    return true;
}

int PictureRenderer::picturesTo(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    int count = 0;
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        const PlannedSource& source = *stretch->layers[i];
        const double seconds = secondsIn(source, number);
        const Reader& open = openFor(source.media, i);
        if (!open.holds(seconds) && !store_->at(fitOf(source), seconds)) {
            count += 1 + open.reader->picturesTo(seconds);
        }
    }
    return count;
}

PictureRenderer::Landmarks PictureRenderer::landmarks(std::int64_t number)
{
    Landmarks marks;
    const PictureStretch* const stretch = stretchAt(number);
    if (stretch == nullptr || stretch->layers.empty()) {
        return marks;
    }
    const PlannedSource& source = *stretch->layers.front();
    const double seconds = secondsIn(source, number);
    const double step = secondsIn(source, number + 1) - seconds;
    if (step <= 0) {
        return marks;
    }
    const auto frameAt = [&](std::optional<double> mediaSeconds) -> std::optional<std::int64_t> {
        if (!mediaSeconds) {
            return std::nullopt;
        }
        const auto there = number + static_cast<std::int64_t>(std::ceil((*mediaSeconds - seconds) / step));
        return there >= 0 && stretchAt(there) == stretch ? std::optional(there) : std::nullopt;
    };
    constexpr double kAhead = 0.02; // seconds
    const PictureReader& reader = readerFor(source.media, 0);
    const auto key = reader.keySecondsFor(seconds);
    marks.groupBefore = key ? frameAt(*key - kAhead) : std::nullopt;
    marks.groupBehind = frameAt(reader.keySecondsBehind(seconds));
    marks.position = frameAt(reader.position());
    marks.secondsAFrame = step;
    return marks;
}

} // namespace twcore
