#include "twcore/bars/bar_pictures_interface.h"

#include <algorithm>

namespace twcore {

using engine::kFalse;
using engine::Status;
using engine::toBool16;

namespace {

constexpr std::int32_t kHighest = 1024; // higher than any row

} // namespace

Status BarPicturesInterface::SetNewsSink(std::int32_t number)
{
    return guarded([&] { maker_.tellTo(number); });
}

Status BarPicturesInterface::SetCacheFolder(engine::Text path, std::int64_t mostBytes)
{
    return guarded([&] {
        cacheFolder_ = path;
        cacheBytes_ = std::max<std::int64_t>(0, mostBytes);
    });
}

Status BarPicturesInterface::BeginView()
{
    return guarded([&] {
        for (BarNews& news : maker_.take()) {
            store_.take(std::move(news));
        }
        store_.begin();
    });
}

Status BarPicturesInterface::EndView()
{
    return guarded([&] {
        BarWishes wishes = store_.wishes();
        if (wishes.seen.empty() && !hadWishes_) {
            return;
        }
        hadWishes_ = !wishes.pictures.empty() || !wishes.peaks.empty();
        wishes.cacheFolder = cacheFolder_;
        wishes.cacheBytes = cacheBytes_;
        maker_.makeFor(std::move(wishes));
    });
}

Status BarPicturesInterface::IsViewWhole(Bool16& whole)
{
    return guarded([&] { whole = toBool16(!hadWishes_); });
}

Status BarPicturesInterface::GetPictureWidth(Handle stream, std::int32_t height, std::int32_t& width)
{
    width = 0;
    return guarded([&] {
        const StreamTarget target = files_.targetOf(stream);
        if (target.media && target.isPicture && height <= kHighest) {
            width = barPictureSize(*target.media, height).width;
        }
    });
}

Status BarPicturesInterface::GetPicture(Handle stream, Milliseconds at, std::int32_t height,
                                        engine::SurfacePicture& picture, Bool16& ok)
{
    picture = {};
    ok = kFalse;
    return guarded([&] {
        const StreamTarget target = files_.targetOf(stream);
        if (!target.media || !target.isPicture || height < 1 || height > kHighest) {
            return;
        }
        const engine::SurfacePicture* const found =
            store_.picture(target.media, std::clamp(at, 0, std::max(0, target.media->picture->durationMs - 1)), height);
        if (found != nullptr) {
            picture = *found;
        }
        ok = toBool16(found != nullptr);
    });
}

Status BarPicturesInterface::GetPeaks(Handle stream, double from, double step, std::span<Peak> peaks, Bool16& ok)
{
    std::ranges::fill(peaks, Peak{});
    ok = kFalse;
    return guarded([&] {
        const StreamTarget target = files_.targetOf(stream);
        if (target.media && !target.isPicture && step > 0) {
            ok = toBool16(store_.peaks(target.media, from, step, peaks));
        }
    });
}

} // namespace twcore
