#include "twcore/render/picture_store.h"

#include "twcore/render/pictures_at_hand.h"

extern "C" {
#include <libavutil/imgutils.h>
}

#include <algorithm>
#include <cmath>
#include <unistd.h>

namespace twcore {

namespace {

bool isSame(const PictureFit& a, const PictureFit& b)
{
    return a.media == b.media && a.stamp == b.stamp && a.place == b.place && a.format.size == b.format.size
           && a.format.pixels == b.format.pixels && a.format.colour == b.format.colour;
}

std::size_t bytesOf(const AVFrame& frame)
{
    const int bytes = av_image_get_buffer_size(static_cast<AVPixelFormat>(frame.format), frame.width, frame.height, 64);
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

} // namespace

std::size_t storeBytes()
{
    constexpr std::size_t kMost = std::size_t{256} << 20;
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long pageBytes = ::sysconf(_SC_PAGESIZE);
    return pages > 0 && pageBytes > 0 ? std::min(kMost, std::size_t(pages) / 16 * std::size_t(pageBytes)) : kMost / 4;
}

PictureStore::Shelf* PictureStore::find(const PictureFit& fit)
{
    const auto found = std::ranges::find_if(shelves_, [&](const Shelf& shelf) { return isSame(shelf.fit, fit); });
    return found != shelves_.end() ? &*found : nullptr;
}

PictureStore::Stored PictureStore::used(Entry& entry)
{
    uses_.splice(uses_.begin(), uses_, entry.use);
    return entry.picture;
}

std::optional<PictureStore::Stored> PictureStore::at(const PictureFit& fit, double seconds)
{
    Shelf* const shelf = find(fit);
    if (shelf == nullptr) {
        return std::nullopt;
    }
    auto above = shelf->entries.upper_bound(seconds);
    if (above == shelf->entries.begin()) {
        return std::nullopt;
    }
    Entry& entry = std::prev(above)->second;
    return seconds < entry.picture.end ? std::optional(used(entry)) : std::nullopt;
}

std::optional<PictureStore::Stored> PictureStore::nearest(const PictureFit& fit, double seconds)
{
    Shelf* const shelf = find(fit);
    if (shelf == nullptr || shelf->entries.empty()) {
        return std::nullopt;
    }
    auto above = shelf->entries.lower_bound(seconds);
    if (above == shelf->entries.end()
        || (above != shelf->entries.begin() && seconds - std::prev(above)->first < above->first - seconds)) {
        --above;
    }
    return used(above->second);
}

void PictureStore::put(const PictureFit& fit, Stored picture)
{
    Shelf* shelf = find(fit);
    if (shelf == nullptr) {
        shelf = &shelves_.emplace_front();
        shelf->fit = fit;
    }
    if (const auto old = shelf->entries.find(picture.start); old != shelf->entries.end()) {
        Stored& known = old->second.picture; // the same picture, perhaps known to last longer
        known.end = std::max(known.end, picture.end);
        (void)used(old->second);
        return;
    }
    uses_.emplace_front(shelf, picture.start);
    const std::size_t bytes = bytesOf(*picture.frame);
    shelf->entries.emplace(picture.start, Entry{picture, bytes, uses_.begin()});
    bytes_ += bytes;
    picturesAtHand().note(fit, picture);
    makeRoom();
}

void PictureStore::clear()
{
    uses_.clear();
    shelves_.clear();
    bytes_ = 0;
}

void PictureStore::drop(Shelf& shelf, std::map<double, Entry>::iterator entry)
{
    bytes_ -= entry->second.bytes;
    uses_.erase(entry->second.use);
    shelf.entries.erase(entry);
    if (shelf.entries.empty()) {
        std::erase_if(shelves_, [&](const Shelf& other) { return &other == &shelf; });
    }
}

void PictureStore::makeRoom()
{
    while (bytes_ > mostBytes_ && uses_.size() > 1) {
        const auto [shelf, start] = uses_.back();
        drop(*shelf, shelf->entries.find(start));
    }
}

} // namespace twcore
