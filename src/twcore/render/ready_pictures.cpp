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
    PictureFit fit{source.media, {}, placeOf(source), workFormat_};
    if (source.media->picture->isStill) { // it may be written anew, as a title is
        std::error_code error;
        fit.changed = std::filesystem::last_write_time(source.media->path, error);
    }
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

/// Fits the picture into its place, and stores it so.
PictureRenderer::LayerPicture PictureRenderer::keep(const PlannedSource& source, const SharedFrame& frame, double start,
                                                    double end)
{
    const PictureFit fit = fitOf(source);
    const PictureSize size = fit.format.size;
    if (!mayBeFitted(*frame, source) || size.width < 2 || size.height < 2) {
        return decoded(source, frame);
    }
    if (!placer_ || placer_->format().size != size) {
        placer_ = std::make_unique<PictureFitter>(fit.format);
    }
    PicturePlace whole = fit.place;
    whole.target = {0, 0, size.width, size.height};
    try {
        const PictureStore::Stored made{placer_->fit(frame, *source.media->picture, whole), start, end};
        store_->put(fit, made);
        return stored(fit, made);
    } catch (const std::runtime_error&) {
        return decoded(source, frame); // its composition tells
    }
}

void PictureRenderer::keepPassed(const PlannedSource& source, const PictureReader::Passed& passed)
{
    const bool isClose = keptAhead_ > 0 && passed.start >= passingTo_ - keptAhead_;
    const bool isDue = keptEvery_ > 0 && std::abs(passed.start - lastKept_) >= keptEvery_;
    if (isClose || isDue) {
        lastKept_ = passed.start;
        (void)keep(source, passed.frame, passed.start, passed.end);
    }
}

bool PictureRenderer::isReady(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    return stretch == nullptr || std::ranges::all_of(stretch->layers, [&](const PlannedSource* source) {
               return store_->at(fitOf(*source), secondsIn(*source, number)).has_value();
           });
}

SharedFrame PictureRenderer::nearestFrame(std::int64_t number, double& farthest)
{
    farthest = 0;
    const PictureStretch* const stretch = stretchAt(number);
    if (stretch == nullptr || stretch->layers.empty()) {
        return fitter_.black();
    }
    std::vector<LayerPicture> layers;
    bool hasAny = false;
    for (const PlannedSource* const source : stretch->layers) {
        const PictureFit fit = fitOf(*source);
        const double seconds = secondsIn(*source, number);
        const auto found = store_->nearest(fit, seconds);
        layers.push_back(found ? stored(fit, *found) : LayerPicture{});
        hasAny = hasAny || found;
        farthest =
            std::max(farthest, found ? std::abs(found->start - seconds) : std::numeric_limits<double>::infinity());
    }
    return hasAny ? composed(*stretch, number, layers) : nullptr;
}

void PictureRenderer::workTowards(std::int64_t number, double everySeconds)
{
    const PictureStretch* const stretch = stretchAt(number);
    if (stretch == nullptr) {
        return;
    }
    keptEvery_ = everySeconds;
    for (std::size_t i = 0; i < stretch->layers.size(); ++i) {
        (void)layerAt(*stretch->layers[i], i, number);
    }
    keptEvery_ = 0;
}

bool PictureRenderer::hold(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        const PlannedSource& source = *stretch->layers[i];
        const double seconds = secondsIn(source, number);
        Reader& open = openFor(source.media, i);
        if (open.held.frame && seconds >= open.held.start && seconds < open.held.end) {
            continue;
        }
        const SharedFrame frame = open.reader->at(seconds);
        if (open.reader->isPaused()) {
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
        const bool isHeld = open.held.frame && seconds >= open.held.start && seconds < open.held.end;
        if (!isHeld && !store_->at(fitOf(source), seconds)) {
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
