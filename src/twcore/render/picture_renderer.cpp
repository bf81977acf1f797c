#include "twcore/render/picture_renderer.h"

#include "twcore/trace.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <stdexcept>

namespace twcore {

namespace {

// Files that stay open at once: enough for both tracks on either side of a cut.
constexpr std::size_t kMaxReaders = 4;
// A decoder keeps a dozen pictures. Whoever works through a movie gives one back that has given this many, when another
// file has its turn: so much work is worth opening it once more.
constexpr int kWorthReopening = 48;

/// Pictures are worked on as planes.
PictureFormat workFormatOf(PictureFormat format)
{
    if (format.colour.matrix == Matrix::kRgb) {
        format.pixels = AV_PIX_FMT_GBRP;
    }
    return format;
}

/// Brightness and colour differences, and nothing shining through.
bool isFilm(const AVFrame& frame)
{
    const AVPixFmtDescriptor* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return shape != nullptr && (shape->flags & AV_PIX_FMT_FLAG_ALPHA) == 0 && colourOf(frame).matrix != Matrix::kRgb;
}

} // namespace

PictureRenderer::PictureRenderer(PlanPtr plan, MovieClock clock, PictureFormat format, int decoderThreads,
                                 Patience patience, PictureStore* store, PicturePoolPtr pool)
    : plan_(std::move(plan)), clock_(clock), format_(format), decoderThreads_(decoderThreads), patience_(patience),
      workFormat_(workFormatOf(format)), fitter_(format, std::move(pool)),
      worker_(workFormat_, workFormat_.pixels == format.pixels ? fitter_.pool() : nullptr), store_(store)
{}

const PictureStretch* PictureRenderer::stretchAt(std::int64_t number)
{
    const auto& stretches = plan_->stretches;
    const auto holds = [&](std::size_t i) {
        return clock_.firstFrameAt(stretches[i].startMs) <= number && number < clock_.firstFrameAt(stretches[i].stopMs);
    };
    if (stretch_ < stretches.size() && holds(stretch_)) {
        return &stretches[stretch_];
    }
    const auto above =
        std::ranges::upper_bound(stretches, number, {}, [&](const auto& s) { return clock_.firstFrameAt(s.startMs); });
    if (above == stretches.begin()) {
        return nullptr;
    }
    stretch_ = static_cast<std::size_t>(above - stretches.begin()) - 1;
    return holds(stretch_) ? &stretches[stretch_] : nullptr;
}

PictureRenderer::Reader* PictureRenderer::find(const MediaFilePtr& media, std::size_t layer)
{
    const auto found = std::ranges::find_if(readers_, [&](auto& r) { return r.media == media && r.layer == layer; });
    return found != readers_.end() ? &*found : nullptr;
}

void PictureRenderer::giveBackDecoders()
{
    std::erase_if(readers_, [&](Reader& r) {
        if (expectedEnd_ == kNoEnd || r.lastUse > usesBefore_ || r.uses <= kWorthReopening) {
            return false;
        }
        r.uses = 0;
        return !r.reader->rest();
    });
}

PictureRenderer::Reader& PictureRenderer::openFor(const MediaFilePtr& media, std::size_t layer)
{
    Reader* found = find(media, layer);
    const FileStamp stamp = store_ != nullptr ? stampOf(*media) : FileStamp();
    if (found != nullptr && stamp != found->stamp) {
        // What it reads is of the old file, and would be stored as the new one's.
        readers_.erase(readers_.begin() + (found - readers_.data()));
        found = nullptr;
    }
    if (found == nullptr || found->reader->isRested()) {
        giveBackDecoders();
        found = find(media, layer);
    }
    if (found == nullptr) {
        if (readers_.size() >= kMaxReaders) {
            readers_.erase(std::ranges::min_element(readers_, {}, &Reader::lastUse));
        }
        readers_.push_back(
            {media, layer, std::make_unique<PictureReader>(media, decoderThreads_, patience_), stamp, 0, {}});
        found = &readers_.back();
    }
    if (store_ != nullptr) {
        found->reader->onTheWay([this](const PictureReader::Passed& passed) {
            if (passing_ != nullptr) {
                keepPassed(*passing_, passed);
            }
        });
    }
    found->lastUse = ++uses_;
    ++found->uses;
    return *found;
}

void PictureRenderer::takeReaders(PictureRenderer& other)
{
    readers_ = std::move(other.readers_);
    std::erase_if(readers_, [](const Reader& r) { return r.reader->isBroken(); }); // its file may be back
    uses_ = other.uses_;
}

/// A title's file is written anew at any time, and that of a film now and then; one that is gone is no other film.
FileStamp PictureRenderer::stampOf(const MediaFile& media) const
{
    constexpr std::chrono::milliseconds kLookAgain{500};
    const auto now = std::chrono::steady_clock::now();
    Looked& looked = looked_[&media];
    const bool isStill = media.picture && media.picture->isStill;
    if (isStill || !looked.stamp.isThere || now - looked.at >= kLookAgain) {
        const FileStamp stamp = FileStamp::of(media.path);
        looked = {stamp.isThere || isStill ? stamp : looked.stamp, now};
    }
    return looked.stamp;
}

double PictureRenderer::secondsIn(const PlannedSource& source, std::int64_t number) const
{
    return source.mediaSecondsAt(clock_.timeMs(number));
}

/// The media time up to which the reader of a source will be asked, cuts within its medium included.
double PictureRenderer::expectedSeconds(const PlannedSource& source, std::int64_t number) const
{
    const std::int64_t last = std::max(number, expectedEnd_ - 1);
    const PlannedSource* until = &source;
    for (const PlannedSource* next = until; next != nullptr && clock_.firstFrameAt(next->startMs) <= last;
         next = laterPartBehind(*plan_, *next)) {
        until = next;
    }
    return secondsIn(*until, last);
}

PictureRenderer::LayerPicture PictureRenderer::decoded(const PlannedSource& source, SharedFrame frame) const
{
    return {std::move(frame), *source.media->picture, placeOf(source)};
}

/// The picture of one source; nothing when its reader was asked to pause, or to give up.
std::optional<PictureRenderer::LayerPicture> PictureRenderer::layerAt(const PlannedSource& source, std::size_t layer,
                                                                      std::int64_t number)
{
    const double seconds = secondsIn(source, number);
    const PictureFit fit = store_ != nullptr ? fitOf(source) : PictureFit{};
    if (store_ != nullptr) {
        if (const auto ready = store_->at(fit, seconds)) {
            return stored(fit, *ready);
        }
    }
    const TraceSpan span("decode", number);
    Reader& open = openFor(source.media, layer);
    if (open.holds(seconds)) {
        return keep(source, fit, open, open.held);
    }
    PictureReader& reader = *open.reader;
    reader.expectUpTo(expectedEnd_ != kNoEnd ? expectedSeconds(source, number)
                                             : std::numeric_limits<double>::infinity());
    if (store_ != nullptr) {
        passing_ = &source;
        passingLayer_ = layer;
        passingTo_ = seconds;
        reader.decodeAllFrom(keptAhead_ > 0 ? seconds - keptAhead_ : std::numeric_limits<double>::infinity());
    }
    const SharedFrame frame = reader.at(seconds);
    passing_ = nullptr;
    // What a reader answers that was told to give up is the picture it had come to.
    if (reader.isPaused() || (store_ != nullptr && patience_.over())) {
        return std::nullopt;
    }
    isNear_ = isNear_ || reader.isNear();
    return store_ == nullptr || !frame || reader.isNear()
               ? decoded(source, frame)
               : keep(source, fit, open, {frame, reader.frameStart(), reader.knownEnd()});
}

SharedFrame PictureRenderer::frame(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    isNear_ = false;
    usesBefore_ = uses_;
    if (stretch == nullptr || stretch->layers.empty()) {
        return fitter_.black();
    }
    std::vector<LayerPicture> layers;
    for (std::size_t i = 0; i < stretch->layers.size(); ++i) {
        auto layer = layerAt(*stretch->layers[i], i, number);
        if (!layer) {
            return nullptr;
        }
        layers.push_back(std::move(*layer));
    }
    return composed(*stretch, number, layers);
}

bool PictureRenderer::isUntouched(std::int64_t number)
{
    const SharedFrame picture = frame(number);
    return picture && made_.picture == picture && made_.frames.size() == 1 && made_.frames.front() == picture;
}

std::string PictureRenderer::lack(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    for (std::size_t i = 0; stretch != nullptr && i < stretch->layers.size(); ++i) {
        const Reader* const open = find(stretch->layers[i]->media, i);
        std::string text =
            open != nullptr && i < made_.frames.size() && !made_.frames[i] ? open->reader->lack() : std::string();
        if (!text.empty()) {
            return text;
        }
    }
    return {};
}

SharedFrame PictureRenderer::composed(const PictureStretch& stretch, std::int64_t number,
                                      const std::vector<LayerPicture>& layers)
{
    std::vector<SharedFrame> frames;
    frames.reserve(layers.size());
    for (const auto& layer : layers) {
        frames.push_back(layer.frame);
    }
    if (made_.stretch == &stretch && made_.frames == frames && stretch.effect == nullptr) {
        return made_.picture;
    }
    const TraceSpan span("compose", number);
    made_ = {std::move(frames), &stretch, compose(stretch, layers, clock_.timeMs(number))};
    return made_.picture;
}

PicturePlace PictureRenderer::placeOf(const PlannedSource& source) const
{
    const PictureFacts& facts = *source.media->picture;
    return placed(source.stretchMode, {facts.width, facts.height}, plan_->frame, format_.size);
}

SharedFrame PictureRenderer::compose(const PictureStretch& stretch, const std::vector<LayerPicture>& layers,
                                     double timelineMs)
{
    // Nothing to be worked on: straight into the movie's format.
    bool isPlain = stretch.effect == nullptr;
    int drawn = 0;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        drawn += layers[i].frame ? 1 : 0;
        isPlain = isPlain && drawn <= 1 && !(layers[i].frame && stretch.layers[i]->key);
    }
    PictureFitter& fitter = isPlain ? fitter_ : worker_;
    SharedFrame picture;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const LayerPicture& layer = layers[i];
        if (!layer.frame) {
            continue;
        }
        const PlannedSource& source = *stretch.layers[i];
        const TraceSpan span("fit");
        try {
            if (isPlain || (!source.key && !picture)) {
                picture = fitter.fit(layer.frame, layer.facts, layer.place);
            } else if (source.key) {
                picture = overlaid(picture ? picture : worker_.black(), layer, source);
            } else {
                picture = fitter.fitOver(picture, layer.frame, layer.facts, layer.place);
            }
        } catch (const std::runtime_error&) {
            // A kind of picture that cannot be converted is left out, as a damaged one is.
        }
    }
    if (!picture) {
        return fitter_.black();
    }
    if (stretch.effect != nullptr) {
        const TraceSpan span("effect");
        auto worked = worker_.copyOf(*picture);
        applyEffect(stretch.effect->kind, stretch.effect->momentAt(timelineMs), planesOf(*worked, workFormat_.colour));
        picture = shareFrame(std::move(worked));
    }
    if (isPlain || workFormat_.pixels == format_.pixels) {
        return picture;
    }
    return fitter_.fit(picture, PictureFacts{}, {{0, 0, format_.size.width, format_.size.height}});
}

SharedFrame PictureRenderer::overlaid(const SharedFrame& below, const LayerPicture& layer, const PlannedSource& source)
{
    const PicturePlace& place = layer.place;
    auto target = worker_.copyOf(*below);
    const Planes planes = planesOf(*target, workFormat_.colour);
    if (prepared_.frame != layer.frame || prepared_.source != &source) {
        prepare(layer, source, planes);
    }
    const TraceSpan span("lay");
    if (prepared_.inPlanes) {
        prepared_.planeKey.lay(planes, place.target.left, place.target.top);
    } else {
        prepared_.key.lay(planes, place.target.left, place.target.top);
    }
    return shareFrame(std::move(target));
}

void PictureRenderer::prepare(const LayerPicture& layer, const PlannedSource& source, const Planes& target)
{
    const auto& [frame, facts, place] = layer;
    const PictureSize size{place.target.width, place.target.height};
    prepared_.inPlanes = isFilm(*frame) && !target.isRgb();
    const PictureFormat format = prepared_.inPlanes ? PictureFormat{size, workFormat_.pixels, workFormat_.colour}
                                                    : PictureFormat{size, AV_PIX_FMT_GBRP, {Matrix::kRgb, true}};
    if (!overlays_ || overlays_->format().size != size || overlays_->format().pixels != format.pixels) {
        overlays_ = std::make_unique<PictureFitter>(format);
    }
    PicturePlace whole = place;
    whole.target = {0, 0, size.width, size.height};
    const SharedFrame fitted = overlays_->fit(frame, facts, whole);
    const TraceSpan span("key");
    if (prepared_.inPlanes) {
        prepared_.planeKey.prepare(fitted, format.colour, *source.key);
    } else {
        auto overlay = overlays_->copyOf(*fitted); // its key's part is taken out in place
        prepared_.key.prepare(planesOf(*overlay, format.colour), *source.key, target);
    }
    prepared_.frame = frame;
    prepared_.source = &source;
}

} // namespace twcore
