#pragma once

// Makes what bars show, one piece at a time: where a medium has pictures, a picture, a chunk of peaks. It looks into
// the user's cache first, and keeps there what it has made.
//
// Its readers stay open from piece to piece until `rest`. All but the constructor on one thread, which may wait for
// disks; whoever gives up sets `cancelled`.

#include "twcore/bars/bar_cache.h"
#include "twcore/bars/peaks.h"
#include "twcore/media/near_pictures.h"
#include "twcore/media/picture_reader.h"
#include "twcore/render/picture_fitter.h"

#include <atomic>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace twcore {

/// Media milliseconds, rising from 0: each picture stands for the time up to the next.
using PictureTimes = std::shared_ptr<const std::vector<std::int32_t>>;

/// The size of a picture of that height; 0 when there is none. Very wide and very narrow ones are squeezed.
PictureSize barPictureSize(const MediaFile& media, int height);

class BarWork {
public:
    /// `cancelled` outlives this.
    explicit BarWork(const std::atomic<bool>& cancelled);

    /// What the interface was told last.
    void useCache(const std::string& folder, std::int64_t mostBytes);
    /// Looks at the medium's file. False when it is another one than before: then nothing is remembered of it.
    bool isSame(const MediaFilePtr& media);

    /// nullptr while the file's pictures are still being listed.
    PictureTimes timesOf(const MediaFilePtr& media);
    /// The picture of one of its times; without pixels when there is none to be had.
    engine::SurfacePicture picture(const MediaFilePtr& media, std::int32_t ms, int height);
    std::vector<Peak> peaks(const MediaFilePtr& media, std::int32_t chunk);
    /// Of each of these milliseconds a peak a sample; none when they cannot be had.
    std::vector<std::vector<Peak>> samples(const MediaFilePtr& media, const std::vector<std::int32_t>& milliseconds);

    /// Closes all files.
    void rest();

private:
    struct Known {
        FileStamp stamp;
        PictureTimes times;
    };
    struct Pictures {
        MediaFilePtr media;
        std::unique_ptr<PictureReader> exact; // of stills and listed files
        std::unique_ptr<NearPictures> near;
        SharedFrame last;
    };
    struct Sound {
        MediaFilePtr media;
        int rate;
        std::unique_ptr<SoundSource> source;
    };
    /// A picture as it is kept: small, and of no particular bar's height.
    struct Master {
        MediaFilePtr media;
        std::int32_t ms;
        SharedFrame frame;
    };

    Known& known(const MediaFilePtr& media);
    SharedFrame master(const MediaFilePtr& media, std::int32_t ms);
    SharedFrame cachedMaster(const MediaFilePtr& media, std::int32_t ms);
    SharedFrame decode(const MediaFilePtr& media, std::int32_t ms);
    void keepMaster(const MediaFilePtr& media, std::int32_t ms, const AVFrame& frame);
    Sound& soundOf(const MediaFilePtr& media);
    bool hasFailed(const Sound& sound);
    PictureTimes cachedTimes(const MediaFilePtr& media);
    Patience patience() const { return {.cancelled = &cancelled_, .takesNear = true}; }

    const std::atomic<bool>& cancelled_;
    std::string folder_;
    std::int64_t mostBytes_ = 0;
    std::optional<BarCache> cache_;
    std::map<MediaFilePtr, Known> known_;
    std::list<Master> masters_; // the newest in front
    std::optional<Pictures> pictures_;
    std::list<Sound> sounds_;
};

} // namespace twcore
