#pragma once

// Pictures that players have ready, for those who would decode the same ones again. Nobody keeps one alive here: what a
// player lets go of is gone, and so is all with the player.
//
// Any thread. A player never waits: while somebody else is at the list, what it has to note is left out.

#include "twcore/render/picture_store.h"

#include <mutex>
#include <vector>

namespace twcore {

class PicturesAtHand {
public:
    /// Those that show a part of the picture only are left out.
    void note(const PictureFit& fit, const PictureStore::Stored& picture);
    /// All of the picture of a media time in seconds, upright, its proportions as its place has them; nullptr when
    /// there is none of that size or larger.
    SharedFrame find(const MediaFilePtr& media, const FileStamp& stamp, double seconds, PictureSize least);

private:
    static constexpr std::size_t kMost = 2048; // as many small ones as a store holds

    struct Entry {
        std::weak_ptr<const MediaFile> media;
        FileStamp stamp;
        double start = 0;
        double end = 0;
        std::weak_ptr<const AVFrame> frame;
    };

    std::mutex mutex_; // guards what follows
    std::vector<Entry> entries_;
    std::size_t next_ = 0; // the oldest, once there are that many
};

/// Of all players.
PicturesAtHand& picturesAtHand();

} // namespace twcore
