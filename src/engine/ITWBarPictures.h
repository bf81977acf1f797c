#pragma once

// Pictures and peaks of streams, for bars that show what lies in them.
//
// Nobody waits for any: what is asked for and does not stand ready is made on a thread of the engine's that works when
// nothing else does, and rests while a movie is saved or a player works; pictures that a player has ready are taken
// from there. A `NewsSink` hears when there is more to ask for. What was made once is kept in the user's cache, by the
// file's path, time and size.
//
// All operations come from the interface thread and return at once; none of them reads a disk.

#include "engine/status.h"
#include "engine/surfaces.h"
#include "engine/types.h"

#include <span>

namespace engine {

/// The lowest and the highest of some samples of all channels, by 127 at full scale and rounded outwards.
struct Peak {
    std::int8_t low = 1;
    std::int8_t high = -1;

    /// Otherwise nobody knows yet, or there is no sound.
    constexpr bool isKnown() const { return low <= high; }
    friend bool operator==(const Peak&, const Peak&) = default;
};

class ITWBarPictures {
public:
    virtual ~ITWBarPictures() = default;

    /// Who hears that something has been made, by its number in the registry of surfaces; 0: nobody.
    virtual Status SetNewsSink(std::int32_t number) = 0;
    /// Where pictures and peaks are kept from one run to the next, and the bytes of the disk that they may take; made
    /// when it is needed. Empty, as until told otherwise: nowhere. One that cannot be written costs speed alone.
    virtual Status SetCacheFolder(Text path, std::int64_t mostBytes) = 0;

    /// From here on what is asked for and not found is noted.
    virtual Status BeginView() = 0;
    /// What was noted is made, in that order. What an earlier view still wanted is not.
    virtual Status EndView() = 0;

    /// False while something that the last view asked for is still to come.
    virtual Status IsViewWhole(Bool16& whole) = 0;

    /// How wide a picture of that height is, in pixels; 0 when the stream has none.
    virtual Status GetPictureWidth(Handle stream, std::int32_t height, std::int32_t& width) = 0;
    /// A picture of the stream near a media time, of that height: the key frame ahead of it, or until that is there the
    /// nearest that is; while there is none of that height, one of another.
    virtual Status GetPicture(Handle stream, Milliseconds at, std::int32_t height, SurfacePicture& picture,
                              Bool16& ok) = 0;
    /// The peaks of stretches of `step` media milliseconds that follow each other, the first one from `from` on, to the
    /// sample; one that no sample begins in has that of the next. Ok when all are known that there are: until then they
    /// may be too high, by what lies within a millisecond.
    virtual Status GetPeaks(Handle stream, double from, double step, std::span<Peak> peaks, Bool16& ok) = 0;
};

} // namespace engine
