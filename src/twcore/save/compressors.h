#pragma once

// The compressors that a movie may be written with, under names people know, and what each can be told.
//
// The lists hold those alone that the media libraries of this machine really have. "Uncompressed" is in neither list:
// it is what -1 stands for, in pictures as in sound.

#include "twcore/media/ff.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace twcore {

/// What quality 0 to 100 means to a picture encoder.
enum class QualityScale {
    kNone,      // nothing: it is lossless or has one quality only
    kQuantizer, // 31 to 2
    kRateFactor // 40 to 10
};

struct VideoCompressor {
    const char* name;
    const char* encoder;
    AVPixelFormat pixels;
    bool isFullRange;
    bool isIntraOnly; // every frame for itself, so that frames may be encoded side by side
    bool canSetKeyFrameRate;
    QualityScale quality;
    int defaultQuality; // of its own scale
};

struct AudioCompressor {
    const char* name;
    const char* encoder;
    int bitRate; // bits a second; 0 where the encoder has no choice
    int channels = 2;
    int skippedPackets = 0; // at the start of a stream, that whatever decodes it throws away
};

/// Stands in place of an encoder of the media libraries: pictures are made with the JPEG library.
inline constexpr std::string_view kJpegEncoder = "jpeg";

/// Its groups lean on what their encoder told ahead of the first one.
inline constexpr const char* kXvidEncoder = "libxvid";

/// Takes two sizes only, each with a rate of its own.
inline constexpr const char* kDvEncoder = "dvvideo";

inline constexpr std::string_view kUncompressed = "Uncompressed";

/// Those that this machine has, in the order of the lists.
const std::vector<VideoCompressor>& videoCompressors();
const std::vector<AudioCompressor>& audioCompressors();

/// What Windows Media files are written with.
const VideoCompressor& windowsMediaVideo();
AudioCompressor windowsMediaAudio(int bitRate, int channels);

/// Index in the list; -1 for any other name.
int videoCompressorIndex(std::string_view name);
int audioCompressorIndex(std::string_view name);

/// Quality 0 to 100 on a scale of its own, the default for -1. See docs/quality.md.
int encoderQuality(const VideoCompressor& compressor, int quality);

} // namespace twcore
