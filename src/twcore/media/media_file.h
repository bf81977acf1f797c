#pragma once

// What is known of a media file once it has been tried: which picture and which sound stream it offers, how they are
// displayed, and where their time begins. Immutable, shared by everything that reads the file.

#include "twcore/media/input_file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace twcore {

/// How a stored picture is turned to be seen: the displayed pixel (x, y) is the stored one at (x, y), or at (y, x)
/// when the axes are swapped, counted from the far side of a mirrored stored axis.
struct Orientation {
    bool swapAxes = false;
    bool mirrorX = false;
    bool mirrorY = false;

    bool isPlain() const noexcept { return !swapAxes && !mirrorX && !mirrorY; }
    friend bool operator==(const Orientation&, const Orientation&) = default;
};

struct PictureFacts {
    int streamIndex = 0;
    AVCodecID codec = AV_CODEC_ID_NONE;
    int width = 0; // as displayed: orientation and pixel aspect applied
    int height = 0;
    Orientation orientation;
    AVRational pixelAspect{1, 1}; // of the stored pixels
    AVRational frameRate{0, 1};   // 0 for a still
    bool isStill = false;
    bool reorders = false;       // its frames may be shown in another order than they are stored in
    double startSeconds = 0;     // first frame, in the file's own time
    std::int32_t durationMs = 0; // from media time 0 to the end
};

struct SoundFacts {
    int streamIndex = 0;
    int rate = 0;
    int channels = 0;
    double startSeconds = 0;
    std::int32_t durationMs = 0;
};

/// How a format's time stamps are to be used.
enum class TimeStamps {
    kTrusted, // each packet tells its time, and the file seeks by time exactly
    kIndexed, // its packets have to be listed before a frame can be found
};

class PictureListing;
struct StampBreaks;

struct MediaFile {
    std::string path;
    std::string formatName;
    std::int64_t byteCount = 0;
    bool isMidi = false;
    TimeStamps timeStamps = TimeStamps::kTrusted;
    double zeroSeconds = 0; // the file's own time that is media time 0: the earlier start of the two streams
    std::shared_ptr<const StampBreaks> breaks; // where the clock of the stamps begins anew; none: it runs on
    std::optional<PictureFacts> picture;
    std::optional<SoundFacts> sound;
    std::shared_ptr<PictureListing> listing; // of kIndexed pictures: shared by all who read them
    std::string trouble;                     // what of it is damaged, as sentences for people; empty: nothing known
};

using MediaFilePtr = std::shared_ptr<const MediaFile>;

/// What trying a file gave: its facts when it offers anything that can be decoded, and one of engine::media_error.
struct Trial {
    std::uint32_t error = 0;
    MediaFilePtr file;
    std::string trouble{}; // what is in the way, as a sentence for people; empty when the error says it all
};

/// Opens the file, decodes the beginning of its streams and reads what there is to know. Waits as long as `patience`.
Trial tryMediaFile(const std::string& path, const Patience& patience);

/// How long a still lasts.
inline constexpr std::int32_t kStillMs = 5000;

} // namespace twcore
