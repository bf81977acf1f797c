#include "timeline/bar_pictures.h"

#include "core/colours.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/trap.h"
#include "engine/ITWBarPictures.h"
#include "engine/engine_access.h"
#include "timeline/moduleScaleRenderer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace timeline {

using engine::check;

namespace {

constexpr std::int64_t kCacheBytes = std::int64_t{256} << 20;
// Bars narrower than this have no room for anything to be seen.
constexpr std::int32_t kNarrowest = 12;

Shown<bool> isAwaited;

double millisecondsAPixel() { return moduleScaleRenderer::PixelsToMs(1); }

} // namespace

void listenForBarPictures(std::int32_t newsSink)
{
    Trapped("bar_pictures", "listenForBarPictures*", [&] {
        const auto engine = engine::EngineAs<engine::ITWBarPictures>();
        check(engine->SetNewsSink(newsSink));
        const std::string folder = ports.shell->cacheFolder();
        check(engine->SetCacheFolder(folder.empty() ? folder : folder + "/bars", kCacheBytes));
    });
}

bool areBarPicturesAwaited() { return isAwaited; }

BarPictures::BarPictures()
    : showsPictures_(forms::mdiTarnwick.mnuViewPicturesOnBars.Checked),
      showsWaves_(forms::mdiTarnwick.mnuViewWavesOnBars.Checked)
{
    static bool hasAsked = false;
    const bool asks = showsPictures_ || showsWaves_;
    if (std::exchange(hasAsked, asks) || asks) { // once more when both are off: what is still being made is not wanted
        timeline_ = engine::EngineAs<engine::ITWTimeline>();
        engine_ = engine::EngineAs<engine::ITWBarPictures>();
        check(engine_->BeginView());
    }
}

void BarPictures::finish()
{
    if (engine_) {
        engine::Bool16 isWhole = engine::kTrue;
        check(engine_->EndView());
        check(engine_->IsViewWhole(isWhole));
        isAwaited = isWhole == engine::kFalse;
    }
}

BarPictures::Medium BarPictures::mediumOf(const Bar& bar) const
{
    Medium medium;
    engine::Milliseconds start = 0;
    engine::Milliseconds stop = 0;
    engine::Bool16 ok = engine::kFalse;
    check(timeline_->GetSourceStream(bar.track, bar.seq, medium.stream));
    check(timeline_->GetSourceMediaTimes(bar.track, bar.seq, start, stop, ok));
    const double length = static_cast<double>(bar.times.stop) - bar.times.start;
    if (ok == engine::kFalse || length <= 0 || stop <= start) {
        return {};
    }
    medium.start = start;
    medium.rate = (static_cast<double>(stop) - start) / length;
    return medium;
}

bool BarPictures::paint(DrawList& canvas, const Bar& bar)
{
    if (!(showsPictures_ || showsWaves_) || bar.right - bar.left < kNarrowest || bar.height < kNarrowest) {
        return false;
    }
    const Medium medium = mediumOf(bar);
    std::int32_t width = 0;
    if (medium.stream != 0) {
        const double height = (bar.height - 2) * forms::frmTimeline.PixelRatio;
        check(engine_->GetPictureWidth(medium.stream, static_cast<std::int32_t>(std::lround(height)), width));
    }
    if (width > 0) {
        return showsPictures_ && paintPictures(canvas, bar, medium, width);
    }
    return showsWaves_ && medium.stream != 0 && paintWave(canvas, bar, medium);
}

bool BarPictures::paintPictures(DrawList& canvas, const Bar& bar, const Medium& medium, std::int32_t pictureWidth)
{
    const double ratio = forms::frmTimeline.PixelRatio;
    const auto height = static_cast<std::int32_t>(std::lround((bar.height - 2) * ratio));
    const std::int32_t step = std::max(1, static_cast<std::int32_t>(std::floor(pictureWidth / ratio)));
    const std::int32_t first = bar.left + 1;
    const std::int32_t viewWidth = forms::frmTimeline.picScale.ScaleWidth;
    bool isAny = false;
    for (std::int64_t x = first + std::int64_t{std::max(0, -first / step)} * step; x < std::min(bar.right, viewWidth);
         x += step) {
        const double at = medium.start + static_cast<double>(x - first) * millisecondsAPixel() * medium.rate;
        engine::SurfacePicture picture;
        engine::Bool16 ok = engine::kFalse;
        check(engine_->GetPicture(medium.stream, static_cast<engine::Milliseconds>(std::clamp(at, 0.0, 2e9)), height,
                                  picture, ok));
        if (ok != engine::kFalse) {
            const auto left = static_cast<std::int32_t>(x);
            canvas.picture(left, 1, std::min(left + step, bar.right) - 1, bar.height - 2, picture);
            isAny = true;
        }
    }
    if (isAny && bar.isLocked) { // grey, as the bar is that shows none
        canvas.veil(bar.left + 1, 1, bar.right - 1, bar.height - 2, colours::kButtonFace);
    }
    return isAny;
}

bool BarPictures::paintWave(DrawList& canvas, const Bar& bar, const Medium& medium)
{
    const std::int32_t left = std::max(bar.left + 1, 0);
    const std::int32_t right = std::min(bar.right, forms::frmTimeline.picScale.ScaleWidth.get());
    if (left >= right) {
        return false;
    }
    // A pixel stands for the milliseconds from its own place on, so that a wave does not change with the view's.
    const std::int64_t viewMs =
        moduleScaleRenderer::PixelsToMs(left + moduleScaleRenderer::TicksToPixels(forms::frmTimeline.hsb.Value()));
    const double from = medium.start + static_cast<double>(viewMs - bar.times.start) * medium.rate;
    peaks_.resize(static_cast<std::size_t>(right - left));
    engine::Bool16 ok = engine::kFalse;
    check(engine_->GetPeaks(medium.stream, from, millisecondsAPixel() * medium.rate, peaks_, ok));
    const bool isAny = std::ranges::any_of(peaks_, &engine::Peak::isKnown);
    if (isAny) {
        canvas.wave(left, 3, bar.height - 4, peaks_, bar.waveColour);
    }
    return isAny;
}

} // namespace timeline
