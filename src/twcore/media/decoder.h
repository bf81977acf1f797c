#pragma once

// A decoder of one stream. Damaged packets are passed over: what cannot be decoded is missing, and nothing more.

#include "twcore/media/ff.h"

#include <deque>
#include <memory>

namespace twcore {

class Decoder {
public:
    /// nullptr when there is no decoder for the stream or it refuses the stream's header. `threads` 0 is one a core.
    static std::unique_ptr<Decoder> open(const AVStream& stream, int threads);

    /// Hands in a packet, nullptr at the end of the stream. All frames must have been received before.
    void send(const AVPacket* packet);
    /// The next frame in display order, nullptr when more packets are needed or the end has been reached. Sound comes
    /// in parts of a second at most, whatever a packet holds.
    FramePtr receive();
    /// Forgets everything, to go on from another place of the stream.
    void flush() noexcept;

    /// Whether frames were dropped since the last flush that are whole only when decoded from further ahead.
    bool startsDamaged() const noexcept { return startsDamaged_; }

    AVCodecContext& context() noexcept { return *context_; }

private:
    explicit Decoder(CodecContextPtr context) : context_(std::move(context)) {}

    static CodecContextPtr contextFor(const AVCodecParameters& parameters, AVRational timeBase, int threads);
    bool isToBeDropped(const AVFrame& frame);
    FramePtr nextPart();
    void noteRemarks(const AVPacket& packet);
    void openAnew();

    CodecContextPtr context_;
    unsigned remarks_ = 0;       // in Motion JPEG, that the decoder has been told
    std::deque<FramePtr> ready_; // of a decoder that was closed
    FramePtr spare_;
    FramePtr long_;          // sound that is handed out in parts
    int partStart_ = 0;      // its first sample that has not been
    bool opaque_ = false;    // the packet says that its pixels' fourth byte means nothing
    bool recovering_ = true; // since the beginning or a jump no whole frame has come out
    bool afterFlush_ = false;
    bool startsDamaged_ = false;
};

} // namespace twcore
