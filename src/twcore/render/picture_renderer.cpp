#include "twcore/render/picture_renderer.h"

#include <algorithm>
#include <stdexcept>

namespace twcore {

namespace {

// Files that stay open at once: enough for both tracks on either side of a cut.
constexpr std::size_t kMaxReaders = 4;

} // namespace

PictureRenderer::PictureRenderer(PlanPtr plan, MovieClock clock, PictureFormat format, int decoderThreads,
                                 Patience patience)
    : plan_(std::move(plan)), clock_(clock), format_(format), decoderThreads_(decoderThreads), patience_(patience),
      fitter_(format)
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

PictureReader& PictureRenderer::readerFor(const MediaFilePtr& media, std::size_t layer)
{
    auto found = std::ranges::find_if(readers_, [&](auto& r) { return r.media == media && r.layer == layer; });
    if (found == readers_.end()) {
        if (readers_.size() >= kMaxReaders) {
            readers_.erase(std::ranges::min_element(readers_, {}, &Reader::lastUse));
        }
        readers_.push_back({media, layer, std::make_unique<PictureReader>(media, decoderThreads_, patience_), 0});
        found = readers_.end() - 1;
    }
    found->lastUse = ++uses_;
    return *found->reader;
}

SharedFrame PictureRenderer::frame(std::int64_t number)
{
    const PictureStretch* const stretch = stretchAt(number);
    if (stretch == nullptr || stretch->layers.empty()) {
        return fitter_.black();
    }
    std::vector<SharedFrame> frames;
    for (std::size_t i = 0; i < stretch->layers.size(); ++i) {
        const PlannedSource& source = *stretch->layers[i];
        frames.push_back(readerFor(source.media, i).at(source.mediaSecondsAt(clock_.timeMs(number))));
    }
    if (made_.stretch == stretch && made_.frames == frames) {
        return made_.picture;
    }
    made_ = {frames, stretch, compose(*stretch, frames)};
    return made_.picture;
}

SharedFrame PictureRenderer::compose(const PictureStretch& stretch, const std::vector<SharedFrame>& frames)
{
    SharedFrame picture;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!frames[i]) {
            continue;
        }
        const PictureFacts& facts = *stretch.layers[i]->media->picture;
        const auto rect = fittedWhole({facts.width, facts.height}, plan_->frame, format_.size);
        try {
            picture = picture ? fitter_.fitOver(picture, frames[i], facts, rect) : fitter_.fit(frames[i], facts, rect);
        } catch (const std::runtime_error&) {
            // A kind of picture that cannot be converted is left out, as a damaged one is.
        }
    }
    return picture ? picture : fitter_.black();
}

} // namespace twcore
