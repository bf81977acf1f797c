#pragma once

// What stands ready for bars, on the interface thread: found by medium and time, and bounded. Who looks for something
// that is not there leaves a wish.
//
// What the view in the making does not use makes room first. Of peaks the fine ones go before the coarse ones; what the
// view itself has no room for stays away.

#include "twcore/bars/bar_maker.h"

#include <cstddef>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace twcore {

class BarStore {
public:
    /// A new view begins.
    void begin();
    /// What it did not find.
    const BarWishes& wishes() const noexcept { return wishes_; }
    void take(BarNews news);

    /// The picture for a media time, or the nearest until that is there; nullptr when there is none.
    const engine::SurfacePicture* picture(const MediaFilePtr& media, std::int32_t ms, int height);
    /// Fills in the peaks of stretches of `step` ms from `from` on. False when some are still to come.
    bool peaks(const MediaFilePtr& media, double from, double step, std::span<Peak> peaks);

    std::size_t bytes() const noexcept { return pictureBytes_ + fineBytes_ + coarseBytes_ + sampleBytes_; }

    static constexpr std::size_t kMostPictures = 16u << 20; // bytes; so are those below
    static constexpr std::size_t kMostFine = 12u << 20;
    static constexpr std::size_t kMostCoarse = 4u << 20;
    static constexpr std::size_t kMostSamples = 2u << 20; // and what one view needs

private:
    struct Picture {
        engine::SurfacePicture picture; // without pixels: there is none
        bool hadNoRoom = false;         // it is not asked for again before something else has gone
        std::uint64_t view = 0;         // that has used it last
    };
    struct Chunk {
        PeakChunk peaks;
        bool hadNoRoom = false;
        std::uint64_t view = 0;
    };
    /// Those of a millisecond that stretches meet in; none: they cannot be had.
    struct Samples {
        std::vector<Peak> peaks;
        std::uint64_t view = 0;

        std::size_t bytes() const noexcept { return sizeof *this + peaks.size() * sizeof(Peak); }
    };
    using PictureKey = std::pair<int, std::int32_t>; // height, media time
    struct Shelf {
        PictureTimes times;
        std::map<PictureKey, Picture> pictures;
        std::map<std::int32_t, Chunk> chunks;
        std::map<std::int32_t, Samples> samples; // by their milliseconds
        std::uint64_t view = 0;
    };

    Shelf& shelfOf(const MediaFilePtr& media);
    void wishFor(BarWish wish);
    void wishForSamples(const MediaFilePtr& media, std::int32_t ms);
    /// Where several stretches of a medium are read.
    struct Reading {
        Shelf& shelf;
        const MediaFilePtr& media;
        double step;
        bool isWhole = true;
    };
    Peak overMilliseconds(Reading& reading, std::int64_t begin, std::int64_t end);
    Peak overPart(Reading& reading, std::int64_t ms, std::int64_t first, std::int64_t end);
    Peak overSamples(Reading& reading, std::int64_t first, std::int64_t end);
    static Picture* nearest(std::map<PictureKey, Picture>& pictures, int height, std::int32_t ms);
    static Picture* nearestOfAnyHeight(std::map<PictureKey, Picture>& pictures, int height, std::int32_t ms);
    void takePicture(Shelf& shelf, BarNews& news);
    void takePeaks(Shelf& shelf, BarNews& news);
    void takeSamples(Shelf& shelf, BarNews& news);
    void dropMedium(const MediaFilePtr& media);
    bool dropOldPicture();
    bool dropOldChunk();
    void dropOldFine();
    void askAgainForRefused();

    std::map<MediaFilePtr, Shelf> shelves_;
    std::uint64_t view_ = 1;
    std::size_t pictureBytes_ = 0;
    std::size_t fineBytes_ = 0;
    std::size_t coarseBytes_ = 0;
    std::size_t sampleBytes_ = 0;
    BarWishes wishes_;
    std::set<std::tuple<const MediaFile*, int, std::int32_t>> wished_;              // height, 0 for peaks; and number
    std::map<std::pair<const MediaFile*, std::int32_t>, std::size_t> sampleWishes_; // by chunk, among those for peaks
};

} // namespace twcore
