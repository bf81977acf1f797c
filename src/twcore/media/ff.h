#pragma once

// Owners of the media libraries' objects, and their errors as text. Only twcore includes this.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <new>
#include <string>

namespace twcore {

template <auto free>
struct FreeByAddress {
    template <class T>
    void operator()(T* object) const noexcept
    {
        free(&object);
    }
};

using FramePtr = std::unique_ptr<AVFrame, FreeByAddress<av_frame_free>>;
using PacketPtr = std::unique_ptr<AVPacket, FreeByAddress<av_packet_free>>;
using CodecContextPtr = std::unique_ptr<AVCodecContext, FreeByAddress<avcodec_free_context>>;
using SwrPtr = std::unique_ptr<SwrContext, FreeByAddress<swr_free>>;

/// A finished picture that nobody changes any more.
using SharedFrame = std::shared_ptr<const AVFrame>;

inline FramePtr makeFrame()
{
    FramePtr frame(av_frame_alloc());
    if (!frame) {
        throw std::bad_alloc();
    }
    return frame;
}

inline PacketPtr makePacket()
{
    PacketPtr packet(av_packet_alloc());
    if (!packet) {
        throw std::bad_alloc();
    }
    return packet;
}

inline SharedFrame shareFrame(FramePtr frame) { return SharedFrame(frame.release(), FreeByAddress<av_frame_free>{}); }

inline std::string ffText(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return text;
}

} // namespace twcore
