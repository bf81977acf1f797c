#include "twcore/bars/bar_work.h"

#include "twcore/media/key_frames.h"
#include "twcore/media/picture_listing.h"
#include "twcore/play/canvas_frames.h"
#include "twcore/render/pictures_at_hand.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace twcore {

namespace {

constexpr int kMasterHeight = 128;
constexpr int kWidest = 8; // heights
constexpr std::size_t kMostMasters = 90;
constexpr std::size_t kMostKnown = 512;
constexpr std::size_t kMostSounds = 2;
constexpr double kMoment = 0.002; // seconds: times are rounded to milliseconds, and a picture lasts longer

/// Bytes of 4:2:0 in lines without gaps.
std::size_t planarBytes(PictureSize size)
{
    const auto luma = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    return luma + luma / 2;
}

template <class Line>
void eachLine(const AVFrame& frame, const Line& line)
{
    for (int plane = 0; plane < 3; ++plane) {
        const int shift = plane == 0 ? 0 : 1;
        for (int y = 0; y < frame.height >> shift; ++y) {
            line(frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane],
                 static_cast<std::size_t>(frame.width >> shift));
        }
    }
}

FramePtr planarFrame(PictureSize size)
{
    FramePtr frame = makeFrame();
    frame->format = AV_PIX_FMT_YUV420P;
    frame->width = size.width;
    frame->height = size.height;
    if (av_frame_get_buffer(frame.get(), 0) < 0) {
        throw std::bad_alloc();
    }
    return frame;
}

PictureTimes timesIn(const BarCache::Bytes& bytes)
{
    auto times = std::make_shared<std::vector<std::int32_t>>(bytes.size() / sizeof(std::int32_t));
    std::memcpy(times->data(), bytes.data(), times->size() * sizeof(std::int32_t));
    return times;
}

template <class Value>
std::span<const std::uint8_t> rawBytes(const std::vector<Value>& values)
{
    return {reinterpret_cast<const std::uint8_t*>(values.data()), values.size() * sizeof(Value)};
}

/// The key frames, half a second apart at least: what is closer looks the same on a bar.
std::vector<std::int32_t> spread(const std::vector<double>& seconds)
{
    constexpr double kApart = 0.52;
    std::vector<std::int32_t> times{0};
    double last = 0;
    for (const double at : seconds) {
        if (at - last >= kApart) {
            times.push_back(static_cast<std::int32_t>(std::ceil(at * 1000)));
            last = at;
        }
    }
    return times;
}

/// Where nothing tells of key frames.
std::vector<std::int32_t> everySecond(std::int32_t durationMs)
{
    std::vector<std::int32_t> times{0};
    while (times.back() + 1000 < durationMs) {
        times.push_back(times.back() + 1000);
    }
    return times;
}

/// Even, as its colours need it.
PictureSize masterSize(const MediaFile& media)
{
    PictureSize size = barPictureSize(media, kMasterHeight);
    size.width += size.width % 2;
    return size;
}

/// Of one that has been fitted: upright, of square pixels.
PictureFacts factsOf(const AVFrame& fitted)
{
    PictureFacts facts;
    facts.width = fitted.width;
    facts.height = fitted.height;
    return facts;
}

} // namespace

PictureSize barPictureSize(const MediaFile& media, int height)
{
    if (!media.picture || media.picture->width <= 0 || media.picture->height <= 0 || height <= 0) {
        return {};
    }
    const double width = static_cast<double>(media.picture->width) / media.picture->height * height;
    return {std::clamp(static_cast<int>(std::lround(width)), std::max(1, height / kWidest), height * kWidest), height};
}

BarWork::BarWork(const std::atomic<bool>& cancelled) : cancelled_(cancelled) {}

void BarWork::useCache(const std::string& folder, std::int64_t mostBytes)
{
    if (!cache_ || folder != folder_ || mostBytes != mostBytes_) {
        folder_ = folder;
        mostBytes_ = mostBytes;
        cache_.emplace(folder, mostBytes);
    }
}

BarWork::Known& BarWork::known(const MediaFilePtr& media)
{
    const auto [found, isNew] = known_.try_emplace(media);
    if (isNew) {
        found->second.stamp = FileStamp::of(media->path);
    }
    return found->second;
}

bool BarWork::isSame(const MediaFilePtr& media)
{
    if (known_.size() > kMostKnown && !known_.contains(media)) {
        known_.clear();
    }
    Known& was = known(media);
    const FileStamp stamp = FileStamp::of(media->path);
    if (was.stamp == stamp) {
        return true;
    }
    was = {stamp, nullptr};
    masters_.remove_if([&](const Master& master) { return master.media == media; });
    rest();
    return false;
}

void BarWork::rest()
{
    pictures_.reset();
    sounds_.clear();
    if (cache_) {
        cache_->close();
    }
}

PictureTimes BarWork::cachedTimes(const MediaFilePtr& media)
{
    const auto bytes = cache_ ? cache_->find(media->path, known(media).stamp, BarCache::Kind::kTimes, 0) : std::nullopt;
    const auto times = bytes ? timesIn(*bytes) : nullptr;
    const bool isGood = times && !times->empty() && times->front() == 0 && std::ranges::is_sorted(*times);
    return isGood ? times : nullptr;
}

PictureTimes BarWork::timesOf(const MediaFilePtr& media)
{
    Known& medium = known(media);
    if (medium.times || (medium.times = cachedTimes(media))) {
        return medium.times;
    }
    std::vector<std::int32_t> times{0};
    if (!media->picture->isStill) {
        const auto keys = keyFrameTimes(media, patience());
        if (cancelled_ || (keys.empty() && media->listing && media->listing->isComing())) {
            return nullptr;
        }
        times = keys.empty() ? everySecond(media->picture->durationMs) : spread(keys);
        if (cache_ && !keys.empty()) {
            cache_->keep(media->path, medium.stamp, BarCache::Kind::kTimes, 0, rawBytes(times));
        }
    }
    medium.times = std::make_shared<const std::vector<std::int32_t>>(std::move(times));
    return medium.times;
}

engine::SurfacePicture BarWork::picture(const MediaFilePtr& media, std::int32_t ms, int height)
{
    const PictureSize size = barPictureSize(*media, height);
    const SharedFrame frame = size.height > 0 ? master(media, ms) : nullptr;
    if (!frame) {
        return {};
    }
    auto pixels = std::make_shared<const std::vector<std::uint32_t>>(pixelsOf(frame, factsOf(*frame), size));
    if (pixels->empty()) {
        return {};
    }
    return {size.width, size.height, std::ptrdiff_t{size.width} * 4,
            std::shared_ptr<const std::uint8_t>(pixels, reinterpret_cast<const std::uint8_t*>(pixels->data()))};
}

SharedFrame BarWork::master(const MediaFilePtr& media, std::int32_t ms)
{
    const auto found =
        std::ranges::find_if(masters_, [&](const Master& master) { return master.media == media && master.ms == ms; });
    if (found != masters_.end()) {
        masters_.splice(masters_.begin(), masters_, found);
        return masters_.front().frame;
    }
    SharedFrame frame = cachedMaster(media, ms);
    if (!frame) {
        const PictureSize size = masterSize(*media);
        const SharedFrame ready = picturesAtHand().find(media, known(media).stamp, ms / 1000.0 + kMoment, size);
        const SharedFrame decoded = ready ? ready : decode(media, ms);
        if (!decoded || cancelled_) {
            return nullptr;
        }
        PictureFitter fitter({size, AV_PIX_FMT_YUV420P, {Matrix::kBt601, false}});
        frame = fitter.fit(decoded, ready ? factsOf(*ready) : *media->picture, {{0, 0, size.width, size.height}});
        keepMaster(media, ms, *frame);
    }
    masters_.push_front({media, ms, frame});
    if (masters_.size() > kMostMasters) {
        masters_.pop_back();
    }
    return frame;
}

SharedFrame BarWork::cachedMaster(const MediaFilePtr& media, std::int32_t ms)
{
    const auto bytes =
        cache_ ? cache_->find(media->path, known(media).stamp, BarCache::Kind::kPicture, ms) : std::nullopt;
    const PictureSize size = masterSize(*media);
    if (!bytes || bytes->size() != planarBytes(size)) {
        return nullptr;
    }
    FramePtr frame = planarFrame(size);
    const std::uint8_t* from = bytes->data();
    eachLine(*frame, [&](std::uint8_t* line, std::size_t count) {
        std::copy_n(from, count, line);
        from += count;
    });
    return shareFrame(std::move(frame));
}

void BarWork::keepMaster(const MediaFilePtr& media, std::int32_t ms, const AVFrame& frame)
{
    if (!cache_) {
        return;
    }
    BarCache::Bytes bytes;
    eachLine(frame,
             [&](const std::uint8_t* line, std::size_t count) { bytes.insert(bytes.end(), line, line + count); });
    cache_->keep(media->path, known(media).stamp, BarCache::Kind::kPicture, ms, bytes);
}

SharedFrame BarWork::decode(const MediaFilePtr& media, std::int32_t ms)
{
    if (!pictures_ || pictures_->media != media) {
        pictures_ = Pictures{media, nullptr, nullptr, nullptr};
    }
    const double seconds = ms / 1000.0;
    const bool isListed = media->listing && !media->listing->isComing();
    if (media->picture->isStill || isListed) {
        if (!pictures_->exact) {
            pictures_->exact = std::make_unique<PictureReader>(media, 1, patience());
        }
        pictures_->exact->expectUpTo(seconds + kMoment);
        return pictures_->exact->at(seconds + kMoment);
    }
    if (!pictures_->near) {
        pictures_->near = std::make_unique<NearPictures>(media, patience());
    }
    SharedFrame frame = pictures_->near->at(seconds + media->zeroSeconds + kMoment);
    if (frame && frame == pictures_->last) {
        return nullptr; // there is none near this time, so it stayed on the last
    }
    pictures_->last = frame;
    return frame;
}

BarWork::Sound& BarWork::soundOf(const MediaFilePtr& media)
{
    const auto found = std::ranges::find(sounds_, media, &Sound::media);
    if (found != sounds_.end()) {
        return *found;
    }
    const int rate = peakRate(*media);
    sounds_.push_front({media, rate, openSound(media, rate, patience())});
    if (sounds_.size() > kMostSounds) {
        sounds_.pop_back();
    }
    return sounds_.front();
}

/// What has been read is worth nothing then, and the sound is let go of.
bool BarWork::hasFailed(const Sound& sound)
{
    const bool hasFailed = cancelled_ || sound.source->isBroken();
    if (hasFailed) {
        sounds_.remove_if([&](const Sound& other) { return &other == &sound; });
    }
    return hasFailed;
}

std::vector<std::vector<Peak>> BarWork::samples(const MediaFilePtr& media,
                                                const std::vector<std::int32_t>& milliseconds)
{
    std::vector<std::vector<Peak>> all(milliseconds.size());
    Sound& sound = soundOf(media);
    for (std::size_t i = 0; i < all.size() && !cancelled_; ++i) {
        all[i] = readSamples(*sound.source, sound.rate, milliseconds[i]);
    }
    if (hasFailed(sound)) {
        std::ranges::for_each(all, [](std::vector<Peak>& samples) { samples.clear(); });
    }
    return all;
}

std::vector<Peak> BarWork::peaks(const MediaFilePtr& media, std::int32_t chunk)
{
    const std::int64_t count = chunkLength(media->sound->durationMs, chunk);
    if (count <= 0) {
        return {};
    }
    const FileStamp stamp = known(media).stamp;
    const auto cached = cache_ ? cache_->find(media->path, stamp, BarCache::Kind::kPeaks, chunk) : std::nullopt;
    if (cached && cached->size() == static_cast<std::size_t>(count) * sizeof(Peak)) {
        std::vector<Peak> peaks(static_cast<std::size_t>(count));
        std::memcpy(peaks.data(), cached->data(), cached->size());
        return peaks;
    }
    Sound& sound = soundOf(media);
    std::vector<Peak> peaks = readPeaks(*sound.source, sound.rate, media->sound->durationMs, chunk);
    if (hasFailed(sound)) {
        return {};
    }
    if (cache_) {
        cache_->keep(media->path, stamp, BarCache::Kind::kPeaks, chunk, rawBytes(peaks));
    }
    return peaks;
}

} // namespace twcore
