#pragma once

// Key frames somewhere near a time, for a file whose pictures are still being listed: better than nothing while a hand
// looks for a place, and never good enough for a movie.
//
// Opens the file for itself. Not thread safe.

#include "twcore/media/decoder.h"
#include "twcore/media/media_file.h"

namespace twcore {

class NearPictures {
public:
    NearPictures(MediaFilePtr media, const Patience& patience) : media_(std::move(media)), patience_(patience) {}

    /// A key frame near a time in the file's own time; nullptr when none was found. Within half a second of the last
    /// time the same one.
    SharedFrame at(double time);

private:
    bool open();
    bool seek(double time);
    SharedFrame decodeKey();

    MediaFilePtr media_;
    Patience patience_;
    std::unique_ptr<InputFile> file_;
    std::unique_ptr<Decoder> decoder_;
    bool broken_ = false;
    double lastTime_ = 0;
    SharedFrame last_;
};

} // namespace twcore
