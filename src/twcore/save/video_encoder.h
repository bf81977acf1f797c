#pragma once

// Pictures into packets of one movie stream. Serves one thread; encoders of an intra-only compressor made alike give
// the same packet for the same picture, so that several may share the work.

#include "twcore/render/picture_fitter.h"
#include "twcore/save/compressors.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

struct VideoEncoding {
    std::optional<VideoCompressor> compressor; // none: uncompressed
    PictureSize size;
    AVRational fps{25, 1};
    int bitRate = 0;               // bits a second; 0: quality alone decides
    int quality = -1;              // 0 to 100; beside a bit rate the finest that a picture may be
    int keyFrameRate = -1;         // frames from key frame to key frame
    bool keepsKeyDistance = false; // no key frame between those, as a Windows Media profile asks
    bool copiesUnchanged = false;  // pictures that nothing is done to, where their medium has them as the movie is to

    /// What the encoder wants its pictures to be.
    PictureFormat pictureFormat() const;
    /// What may be encoded by itself, so that several encoders share the work.
    enum class Unit {
        kPicture,
        kGroup, // from one key frame to another, whichever those are: quality alone decides
        kMovie  // a rate is kept over all of it, or groups do not stand alone
    };
    Unit unit() const;
    /// Frames from key frame to key frame, at most.
    int groupFrames() const;
};

class VideoEncoder {
public:
    virtual ~VideoEncoder() = default;

    /// nullptr when the encoder refuses the settings, with `why` a sentence for people.
    static std::unique_ptr<VideoEncoder> open(const VideoEncoding& encoding, int threads, std::string& why);

    /// Encodes picture `number`, nullptr to end, and adds what packets come out, stamped in frames.
    /// Throws std::runtime_error when the encoder fails.
    virtual void encode(const AVFrame* picture, std::int64_t number, std::vector<PacketPtr>& packets) = 0;

    /// Describes the stream to a writer.
    virtual bool describe(AVCodecParameters& parameters) const = 0;
};

} // namespace twcore
