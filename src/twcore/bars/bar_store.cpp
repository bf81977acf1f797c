#include "twcore/bars/bar_store.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace twcore {

namespace {

constexpr std::size_t kMostMedia = 256;
// A pixel of so many milliseconds does not show whether its edges are off by a few.
constexpr double kCoarseStep = 64;

std::size_t bytesOf(const engine::SurfacePicture& picture)
{
    return static_cast<std::size_t>(picture.strideBytes) * static_cast<std::size_t>(picture.height);
}

/// The first sample that begins at a media time or behind it.
std::int64_t sampleFrom(double ms, int rate)
{
    constexpr double kRounding = 1e-6;
    return static_cast<std::int64_t>(std::ceil(ms * rate / 1000 - kRounding));
}

} // namespace

void BarStore::begin()
{
    ++view_;
    wishes_ = {};
    wished_.clear();
    sampleWishes_.clear();
    if (shelves_.size() > kMostMedia) {
        for (auto shelf = shelves_.begin(); shelf != shelves_.end();) {
            const auto next = std::next(shelf);
            if (shelf->second.view + 1 < view_) {
                dropMedium(shelf->first);
            }
            shelf = next;
        }
    }
}

BarStore::Shelf& BarStore::shelfOf(const MediaFilePtr& media)
{
    Shelf& shelf = shelves_[media];
    if (std::exchange(shelf.view, view_) != view_) {
        wishes_.seen.push_back(media);
    }
    return shelf;
}

void BarStore::wishFor(BarWish wish)
{
    if (wished_.emplace(wish.media.get(), wish.height, wish.number).second) {
        auto& list = wish.kind == BarWish::Kind::kPicture ? wishes_.pictures : wishes_.peaks;
        list.push_back(std::move(wish));
    }
}

const engine::SurfacePicture* BarStore::picture(const MediaFilePtr& media, std::int32_t ms, int height)
{
    Shelf& shelf = shelfOf(media);
    std::int32_t wanted = ms;
    if (shelf.times) {
        const auto behind = std::ranges::upper_bound(*shelf.times, ms);
        wanted = behind == shelf.times->begin() ? shelf.times->front() : *(behind - 1);
    }
    const auto found = shelf.pictures.find({height, wanted});
    const bool isKnown = shelf.times && found != shelf.pictures.end();
    if (!isKnown) {
        wishFor({BarWish::Kind::kPicture, media, wanted, height});
    }
    Picture* const best =
        isKnown && found->second.picture.pixels ? &found->second : nearestOfAnyHeight(shelf.pictures, height, wanted);
    if (best == nullptr) {
        return nullptr;
    }
    best->view = view_;
    return &best->picture;
}

BarStore::Picture* BarStore::nearest(std::map<PictureKey, Picture>& pictures, int height, std::int32_t ms)
{
    const auto behind = pictures.lower_bound({height, ms});
    auto after = behind;
    while (after != pictures.end() && after->first.first == height && !after->second.picture.pixels) {
        ++after;
    }
    auto before = std::make_reverse_iterator(behind);
    while (before != pictures.rend() && before->first.first == height && !before->second.picture.pixels) {
        ++before;
    }
    const bool hasAfter = after != pictures.end() && after->first.first == height;
    const bool hasBefore = before != pictures.rend() && before->first.first == height;
    if (hasBefore && (!hasAfter || ms - before->first.second <= after->first.second - ms)) {
        return &before->second;
    }
    return hasAfter ? &after->second : nullptr;
}

/// Of the height that was asked for, else of the height nearest to it: what is drawn stretched for a moment is missed
/// less than what goes and comes.
BarStore::Picture* BarStore::nearestOfAnyHeight(std::map<PictureKey, Picture>& pictures, int height, std::int32_t ms)
{
    Picture* best = nearest(pictures, height, ms);
    if (best != nullptr) {
        return best;
    }
    int least = std::numeric_limits<int>::max();
    for (auto place = pictures.begin(); place != pictures.end();) {
        const int other = place->first.first;
        Picture* const found = nearest(pictures, other, ms);
        if (found != nullptr && std::abs(other - height) < least) {
            least = std::abs(other - height);
            best = found;
        }
        place = pictures.upper_bound({other, std::numeric_limits<std::int32_t>::max()});
    }
    return best;
}

void BarStore::wishForSamples(const MediaFilePtr& media, std::int32_t ms)
{
    const auto chunk = static_cast<std::int32_t>(ms / kChunkMs);
    const auto [place, isNew] = sampleWishes_.try_emplace({media.get(), chunk}, wishes_.peaks.size());
    if (isNew) {
        wishes_.peaks.push_back({BarWish::Kind::kSamples, media, chunk});
    }
    std::vector<std::int32_t>& wanted = wishes_.peaks[place->second].milliseconds;
    if (wanted.empty() || wanted.back() != ms) { // one stretch ends where the next one begins
        wanted.push_back(ms);
    }
}

Peak BarStore::overMilliseconds(Reading& reading, std::int64_t begin, std::int64_t end)
{
    Peak peak;
    while (begin < end) {
        const auto number = static_cast<std::int32_t>(begin / kChunkMs);
        const std::int64_t chunkStart = number * kChunkMs;
        const std::int64_t stop = std::min(end, chunkStart + kChunkMs);
        const auto found = reading.shelf.chunks.find(number);
        const bool isThere = found != reading.shelf.chunks.end();
        if (!isThere || (!found->second.peaks.isFine() && reading.step < kCoarseStep)) {
            wishFor({BarWish::Kind::kPeaks, reading.media, number});
            reading.isWhole = false;
        }
        if (isThere) {
            found->second.view = view_;
            widen(peak, found->second.peaks.over(begin - chunkStart, stop - chunkStart));
        }
        begin = stop;
    }
    return peak;
}

/// Of a millisecond, the samples from `first` up to `end`.
Peak BarStore::overPart(Reading& reading, std::int64_t ms, std::int64_t first, std::int64_t end)
{
    const auto found = reading.shelf.samples.find(static_cast<std::int32_t>(ms));
    if (found == reading.shelf.samples.end()) {
        wishForSamples(reading.media, static_cast<std::int32_t>(ms));
        reading.isWhole = false;
        return overMilliseconds(reading, ms, ms + 1);
    }
    found->second.view = view_;
    const std::vector<Peak>& samples = found->second.peaks;
    if (samples.empty()) {
        return overMilliseconds(reading, ms, ms + 1);
    }
    const std::int64_t start = firstSample(peakRate(*reading.media), ms);
    const std::int64_t stop = std::min(end - start, static_cast<std::int64_t>(samples.size()));
    Peak peak;
    for (std::int64_t i = std::max<std::int64_t>(0, first - start); i < stop; ++i) {
        widen(peak, samples[static_cast<std::size_t>(i)]);
    }
    return peak;
}

Peak BarStore::overSamples(Reading& reading, std::int64_t first, std::int64_t end)
{
    const int rate = peakRate(*reading.media);
    const std::int64_t begin = msOfSample(rate, first);
    const std::int64_t last = msOfSample(rate, end - 1);
    const bool hasHead = firstSample(rate, begin) < first;
    const bool hasTail = end < firstSample(rate, last + 1);
    const bool wasWhole = std::exchange(reading.isWhole, true);
    Peak peak = overMilliseconds(reading, begin, last + 1);
    if ((hasHead || hasTail) && reading.isWhole) {
        // What is louder inside tells that nothing of the parts at the ends is missed.
        Peak inside = overMilliseconds(reading, begin + (hasHead ? 1 : 0), last + (hasTail ? 0 : 1));
        if (inside != peak) {
            hasHead ? widen(inside, overPart(reading, begin, first, end)) : void();
            hasTail && (last > begin || !hasHead) ? widen(inside, overPart(reading, last, first, end)) : void();
            peak = inside;
        }
    }
    reading.isWhole = reading.isWhole && wasWhole;
    return peak;
}

bool BarStore::peaks(const MediaFilePtr& media, double from, double step, std::span<Peak> peaks)
{
    Reading reading{shelfOf(media), media, step};
    const int rate = media->sound ? peakRate(*media) : 0;
    const std::int64_t soundEnd = media->sound ? firstSample(rate, media->sound->durationMs) : 0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const double begin = from + step * static_cast<double>(i);
        const std::int64_t first = std::max<std::int64_t>(0, sampleFrom(begin, rate));
        const std::int64_t end = std::min(soundEnd, std::max(first + 1, sampleFrom(begin + step, rate)));
        peaks[i] = begin + step > 0 && first < end ? overSamples(reading, first, end) : Peak{};
    }
    return reading.isWhole;
}

void BarStore::take(BarNews news)
{
    if (news.kind == BarNews::Kind::kChanged) {
        dropMedium(news.media);
        return;
    }
    Shelf& shelf = shelves_[news.media];
    if (news.kind == BarNews::Kind::kPicture) {
        takePicture(shelf, news);
    } else if (news.kind == BarNews::Kind::kPeaks) {
        takePeaks(shelf, news);
    } else {
        takeSamples(shelf, news);
    }
}

void BarStore::takePicture(Shelf& shelf, BarNews& news)
{
    shelf.times = news.times;
    const auto [place, isNew] = shelf.pictures.try_emplace({news.height, news.number});
    Picture& picture = place->second;
    pictureBytes_ -= bytesOf(picture.picture);
    picture = {std::move(news.picture), false, view_};
    pictureBytes_ += bytesOf(picture.picture);
    while (pictureBytes_ > kMostPictures && dropOldPicture()) {
    }
    if (pictureBytes_ > kMostPictures) {
        pictureBytes_ -= bytesOf(picture.picture);
        picture = {{}, true, view_};
    }
}

void BarStore::takePeaks(Shelf& shelf, BarNews& news)
{
    const auto sizes = [](const PeakChunk& peaks) {
        const std::size_t fine = peaks.fine().size() * sizeof(Peak);
        return std::pair(fine, peaks.bytes() - fine);
    };
    const auto count = [&](const PeakChunk& peaks, bool adds) {
        const auto [fine, coarse] = sizes(peaks);
        fineBytes_ += adds ? fine : 0 - fine;
        coarseBytes_ += adds ? coarse : 0 - coarse;
    };
    const auto [place, isNew] = shelf.chunks.try_emplace(news.number, Chunk{PeakChunk({}), false, view_});
    Chunk& chunk = place->second;
    count(chunk.peaks, false);
    chunk = {PeakChunk(std::move(news.peaks)), false, view_};
    count(chunk.peaks, true);
    while (coarseBytes_ > kMostCoarse && dropOldChunk()) {
    }
    if (coarseBytes_ > kMostCoarse) {
        count(chunk.peaks, false);
        chunk = {PeakChunk({}), true, view_};
    }
    if (fineBytes_ > kMostFine) {
        dropOldFine();
    }
}

void BarStore::takeSamples(Shelf& shelf, BarNews& news)
{
    for (std::size_t i = 0; i < news.milliseconds.size(); ++i) {
        Samples& samples = shelf.samples[news.milliseconds[i]];
        sampleBytes_ -= samples.view != 0 ? samples.bytes() : 0;
        samples = {std::move(news.samples[i]), view_};
        sampleBytes_ += samples.bytes();
    }
    for (auto& [media, other] : shelves_) {
        for (auto entry = other.samples.begin(); sampleBytes_ > kMostSamples && entry != other.samples.end();) {
            const bool goes = entry->second.view < view_;
            sampleBytes_ -= goes ? entry->second.bytes() : 0;
            entry = goes ? other.samples.erase(entry) : std::next(entry);
        }
    }
}

void BarStore::dropMedium(const MediaFilePtr& media)
{
    const auto found = shelves_.find(media);
    if (found == shelves_.end()) {
        return;
    }
    for (const auto& [key, picture] : found->second.pictures) {
        pictureBytes_ -= bytesOf(picture.picture);
    }
    for (const auto& [number, chunk] : found->second.chunks) {
        const std::size_t fine = chunk.peaks.fine().size() * sizeof(Peak);
        fineBytes_ -= fine;
        coarseBytes_ -= chunk.peaks.bytes() - fine;
    }
    for (const auto& [ms, samples] : found->second.samples) {
        sampleBytes_ -= samples.bytes();
    }
    shelves_.erase(found);
}

/// What the view has not used; the one that was used longest ago. False when there is none.
bool BarStore::dropOldPicture()
{
    Shelf* from = nullptr;
    std::map<PictureKey, Picture>::iterator oldest;
    for (auto& [media, shelf] : shelves_) {
        for (auto picture = shelf.pictures.begin(); picture != shelf.pictures.end(); ++picture) {
            if (picture->second.picture.pixels && picture->second.view < view_
                && (from == nullptr || picture->second.view < oldest->second.view)) {
                from = &shelf;
                oldest = picture;
            }
        }
    }
    if (from == nullptr) {
        return false;
    }
    pictureBytes_ -= bytesOf(oldest->second.picture);
    from->pictures.erase(oldest);
    askAgainForRefused();
    return true;
}

bool BarStore::dropOldChunk()
{
    Shelf* from = nullptr;
    std::map<std::int32_t, Chunk>::iterator oldest;
    for (auto& [media, shelf] : shelves_) {
        for (auto chunk = shelf.chunks.begin(); chunk != shelf.chunks.end(); ++chunk) {
            if (chunk->second.view < view_ && (from == nullptr || chunk->second.view < oldest->second.view)) {
                from = &shelf;
                oldest = chunk;
            }
        }
    }
    if (from == nullptr) {
        return false;
    }
    const std::size_t fine = oldest->second.peaks.fine().size() * sizeof(Peak);
    fineBytes_ -= fine;
    coarseBytes_ -= oldest->second.peaks.bytes() - fine;
    from->chunks.erase(oldest);
    askAgainForRefused();
    return true;
}

/// Only a view of more than an hour comes here, and it does not show them.
void BarStore::dropOldFine()
{
    Chunk* oldest = nullptr;
    for (auto& [media, shelf] : shelves_) {
        for (auto& [number, chunk] : shelf.chunks) {
            const bool isOlder = oldest == nullptr || chunk.view < oldest->view;
            oldest = !chunk.peaks.fine().empty() && isOlder ? &chunk : oldest;
        }
    }
    if (oldest != nullptr) {
        fineBytes_ -= oldest->peaks.fine().size() * sizeof(Peak);
        oldest->peaks.dropFine();
    }
}

void BarStore::askAgainForRefused()
{
    for (auto& [media, shelf] : shelves_) {
        std::erase_if(shelf.pictures, [](const auto& entry) { return entry.second.hadNoRoom; });
        std::erase_if(shelf.chunks, [](const auto& entry) { return entry.second.hadNoRoom; });
    }
}

} // namespace twcore
