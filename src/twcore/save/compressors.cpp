#include "twcore/save/compressors.h"

#include <algorithm>
#include <cmath>

namespace twcore {

namespace {

constexpr VideoCompressor kWindowsMediaVideo{"Windows Media Video 8",  "wmv2", AV_PIX_FMT_YUV420P, false, false, true,
                                             QualityScale::kQuantizer, 4};

constexpr VideoCompressor kVideo[] = {
    {"Motion JPEG", "jpeg", AV_PIX_FMT_YUVJ420P, true, true, false, QualityScale::kQuantizer, 3},
    {"MPEG-4", "mpeg4", AV_PIX_FMT_YUV420P, false, false, true, QualityScale::kQuantizer, 4},
    {"Xvid MPEG-4", kXvidEncoder, AV_PIX_FMT_YUV420P, false, false, true, QualityScale::kQuantizer, 4},
    {"H.264", "libx264", AV_PIX_FMT_YUV420P, false, false, true, QualityScale::kRateFactor, 23},
    kWindowsMediaVideo,
    {"MS-MPEG4 V3", "msmpeg4", AV_PIX_FMT_YUV420P, false, false, true, QualityScale::kQuantizer, 4},
    {"HuffYUV", "huffyuv", AV_PIX_FMT_YUV422P, false, true, false, QualityScale::kNone, 0},
    {"FFV1", "ffv1", AV_PIX_FMT_YUV420P, false, false, true, QualityScale::kNone, 0},
    {"Ut Video", "utvideo", AV_PIX_FMT_YUV420P, false, true, false, QualityScale::kNone, 0},
    {"DV", kDvEncoder, AV_PIX_FMT_YUV420P, false, true, false, QualityScale::kNone, 0},
    {"Cinepak", "cinepak", AV_PIX_FMT_RGB24, false, false, true, QualityScale::kNone, 0},
};

constexpr AudioCompressor kAudio[] = {
    {"PCM", "pcm_s16le", 0},  {"MP3", "libmp3lame", 192000},     {"MP2", "mp2", 224000},
    {"AC-3", "ac3", 192000},  {"IMA ADPCM", "adpcm_ima_wav", 0}, {"Microsoft ADPCM", "adpcm_ms", 0},
    {"A-law", "pcm_alaw", 0}, {"Mu-law", "pcm_mulaw", 0},
};

template <class Compressor, std::size_t count>
std::vector<Compressor> present(const Compressor (&all)[count])
{
    std::vector<Compressor> found;
    std::ranges::copy_if(all, std::back_inserter(found), [](const auto& c) {
        return c.encoder == kJpegEncoder || avcodec_find_encoder_by_name(c.encoder) != nullptr;
    });
    return found;
}

template <class Compressor>
int indexOf(const std::vector<Compressor>& list, std::string_view name)
{
    const auto found = std::ranges::find_if(list, [&](const auto& c) { return name == c.name; });
    return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

} // namespace

const std::vector<VideoCompressor>& videoCompressors()
{
    static const auto list = present(kVideo);
    return list;
}

const std::vector<AudioCompressor>& audioCompressors()
{
    static const auto list = present(kAudio);
    return list;
}

const VideoCompressor& windowsMediaVideo() { return kWindowsMediaVideo; }

AudioCompressor windowsMediaAudio(int bitRate, int channels)
{
    constexpr int kSkippedPackets = 2;
    return {"Windows Media Audio 2", "wmav2", bitRate, channels, kSkippedPackets};
}

int videoCompressorIndex(std::string_view name) { return indexOf(videoCompressors(), name); }

int audioCompressorIndex(std::string_view name) { return indexOf(audioCompressors(), name); }

int encoderQuality(const VideoCompressor& compressor, int quality)
{
    if (quality < 0) {
        return compressor.defaultQuality;
    }
    const double part = std::min(quality, 100) / 100.0;
    switch (compressor.quality) {
    case QualityScale::kQuantizer:
        return static_cast<int>(std::lround(31 - 29 * part));
    case QualityScale::kRateFactor:
        return static_cast<int>(std::lround(40 - 30 * part));
    default:
        return 0;
    }
}

} // namespace twcore
