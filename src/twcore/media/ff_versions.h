#pragma once

// Where the versions of the media libraries differ, from 5.1 to 7.1: one way to ask, whichever is there.

#include "twcore/media/ff.h"

#include <cstdint>
#include <span>

namespace twcore {

/// What a writer to memory of its own is given.
#if LIBAVFORMAT_VERSION_MAJOR >= 61
using WrittenByte = const std::uint8_t;
#else
using WrittenByte = std::uint8_t;
#endif

#ifdef AV_FRAME_FLAG_INTERLACED // the fields of the same meaning went away
inline bool isInterlaced(const AVFrame& frame) { return (frame.flags & AV_FRAME_FLAG_INTERLACED) != 0; }
inline bool isTopFieldFirst(const AVFrame& frame) { return (frame.flags & AV_FRAME_FLAG_TOP_FIELD_FIRST) != 0; }
inline bool isKeyFrame(const AVFrame& frame) { return (frame.flags & AV_FRAME_FLAG_KEY) != 0; }
inline void setFields(AVFrame& frame, bool isInterlaced, bool isTopFirst)
{
    frame.flags &= ~(AV_FRAME_FLAG_INTERLACED | AV_FRAME_FLAG_TOP_FIELD_FIRST);
    frame.flags |= (isInterlaced ? AV_FRAME_FLAG_INTERLACED : 0) | (isTopFirst ? AV_FRAME_FLAG_TOP_FIELD_FIRST : 0);
}
#else
inline bool isInterlaced(const AVFrame& frame) { return frame.interlaced_frame != 0; }
inline bool isTopFieldFirst(const AVFrame& frame) { return frame.top_field_first != 0; }
inline bool isKeyFrame(const AVFrame& frame) { return frame.key_frame != 0; }
inline void setFields(AVFrame& frame, bool isInterlaced, bool isTopFirst)
{
    frame.interlaced_frame = isInterlaced ? 1 : 0;
    frame.top_field_first = isTopFirst ? 1 : 0;
}
#endif

/// What a stream says beside its packets; empty: nothing. Good as long as the stream.
inline std::span<const std::uint8_t> sideDataOf(const AVStream& stream, AVPacketSideDataType type)
{
#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(60, 31, 102)
    const AVCodecParameters& codec = *stream.codecpar;
    const auto* const side = av_packet_side_data_get(codec.coded_side_data, codec.nb_coded_side_data, type);
    return side == nullptr ? std::span<const std::uint8_t>() : std::span<const std::uint8_t>(side->data, side->size);
#else
    std::size_t size = 0;
    const auto* const data = av_stream_get_side_data(&stream, type, &size);
    return data == nullptr ? std::span<const std::uint8_t>() : std::span<const std::uint8_t>(data, size);
#endif
}

/// The formats that an encoder takes, ended by AV_SAMPLE_FMT_NONE; none: it does not say.
inline const AVSampleFormat* sampleFormatsOf(const AVCodec& codec)
{
#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(61, 13, 100)
    const void* formats = nullptr;
    return avcodec_get_supported_config(nullptr, &codec, AV_CODEC_CONFIG_SAMPLE_FORMAT, 0, &formats, nullptr) < 0
               ? nullptr
               : static_cast<const AVSampleFormat*>(formats);
#else
    return codec.sample_fmts;
#endif
}

} // namespace twcore
