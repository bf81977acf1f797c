#pragma once

// Pictures of sources that stand ready as they are shown: decoded, and fitted into their place. They are found by what
// they are, file, moment and fit, so that an edit leaves all that it does not touch. The one that was used longest ago
// makes room for others.

#include "twcore/media/file_stamp.h"
#include "twcore/media/media_file.h"
#include "twcore/render/picture_fitter.h"

#include <cstddef>
#include <list>
#include <map>
#include <optional>
#include <utility>

namespace twcore {

/// How a file's pictures are brought to where they stand.
struct PictureFit {
    MediaFilePtr media;
    FileStamp stamp{};
    PicturePlace place;
    PictureFormat format;
};

class PictureStore {
public:
    explicit PictureStore(std::size_t mostBytes) : mostBytes_(mostBytes) {}

    struct Stored {
        SharedFrame frame;
        double start = 0; // media time in seconds that it is shown at, up to `end`
        double end = 0;
    };

    /// The picture of a media time; nothing when it does not stand here.
    std::optional<Stored> at(const PictureFit& fit, double seconds);
    /// The one that begins nearest to a media time.
    std::optional<Stored> nearest(const PictureFit& fit, double seconds);
    void put(const PictureFit& fit, Stored picture);

    std::size_t bytes() const noexcept { return bytes_; }
    std::size_t mostBytes() const noexcept { return mostBytes_; }
    void clear();

private:
    struct Entry;
    struct Shelf;
    using Use = std::list<std::pair<Shelf*, double>>; // the newest first
    struct Entry {
        Stored picture;
        std::size_t bytes = 0;
        Use::iterator use;
    };
    struct Shelf {
        PictureFit fit;
        std::map<double, Entry> entries; // by their starts
    };

    Shelf* find(const PictureFit& fit);
    Stored used(Entry& entry);
    void drop(Shelf& shelf, std::map<double, Entry>::iterator entry);
    void makeRoom();

    std::size_t mostBytes_;
    std::size_t bytes_ = 0;
    std::list<Shelf> shelves_;
    Use uses_;
};

/// What a machine can spare for it: a sixteenth of its memory, 256 MiB at most.
std::size_t storeBytes();

} // namespace twcore
