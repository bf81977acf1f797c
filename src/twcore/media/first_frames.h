#pragma once

// The first frames of the streams that a file offers: what proves that they can be decoded, and tells what the header
// does not.

#include "twcore/media/decoder.h"
#include "twcore/media/input_file.h"

#include <array>

namespace twcore {

/// What decoding the beginning of one stream showed.
struct FirstFrames {
    int streamIndex = -1;
    std::unique_ptr<Decoder> decoder;
    FramePtr first; // nullptr also for a stream that is believed
    int frameCount = 0;
    int packetCount = 0;
    bool isBelieved = false; // nothing of it was met, but its header tells all there is to know

    bool wanted() const { return decoder != nullptr && frameCount < 1; }
    bool isOffered() const { return frameCount > 0 || isBelieved; }
};

/// `streamIndex` below 0: there is no such stream.
FirstFrames openDecoder(const InputFile& file, int streamIndex);

/// Decodes on from where the file stands until every stream gave a frame, or a bound is met; what has not come by then
/// is looked up further behind: it may begin minutes later.
void decodeBeginnings(InputFile& file, const std::array<FirstFrames*, 2>& streams);

/// When the stream begins, in seconds of the file's own time; infinity where that is not known: later than the other
/// one.
double startOf(const InputFile& file, const FirstFrames& frames);

} // namespace twcore
