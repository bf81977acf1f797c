#pragma once

// Sound of the mix into packets of one movie stream, with the encoder's own delay taken out: the first packet that
// comes out begins with sample 0 of the movie. Ahead of it stand, at the same time and with no length of their own,
// those that every decoder of the format throws away.

#include "twcore/save/compressors.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace twcore {

class SoundEncoder {
public:
    /// nullptr when the encoder refuses, with `why` a sentence for people. No compressor: 16-bit PCM.
    static std::unique_ptr<SoundEncoder> open(const std::optional<AudioCompressor>& compressor, int rate,
                                              std::string& why);

    /// Encodes the next samples, interleaved stereo floats, and adds what packets come out, stamped in samples.
    /// Throws std::runtime_error when the encoder fails.
    void encode(std::span<const float> samples, std::vector<PacketPtr>& packets);
    /// What is still inside.
    void finish(std::vector<PacketPtr>& packets);

    bool describe(AVCodecParameters& parameters) const;

private:
    SoundEncoder() = default;
    void sendBlock(std::span<const float> samples, std::vector<PacketPtr>& packets);
    void send(const AVFrame* frame, std::vector<PacketPtr>& packets);

    std::string name_;
    CodecContextPtr context_;
    int frameSize_ = 0; // samples the encoder takes at once; 0: any number
    // Nothing but the encoder's delay and silence is in the first packets.
    int packetsToDrop_ = 0;
    int packetsToSkip_ = 0; // behind those, for decoders to throw away
    std::int64_t delaySamples_ = 0;
    std::int64_t sent_ = 0;
    std::int64_t given_ = 0;     // samples of the movie so far
    std::int64_t nextStart_ = 0; // of the packet that comes out next
    std::vector<float> waiting_;
};

} // namespace twcore
