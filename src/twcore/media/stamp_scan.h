#pragma once

// What the packets of a file tell of its length and of breaks in its clock, for files whose header does not tell.

#include "twcore/media/input_file.h"
#include "twcore/media/stamp_breaks.h"

#include <array>

namespace twcore {

struct Scan {
    std::array<double, 2> ends{-1, -1}; // last moment of the picture and of the sound; -1: not known
    std::array<bool, 2> endEarly{};     // because of damaged stamps
    bool hasDamage = false;             // damaged stamps were passed over
    std::shared_ptr<const StampBreaks> breaks;
};

/// Whether it has no length of its own, so that a joined file or a recording may set the clock anew.
bool mayBreak(const InputFile& file);

/// How long a packet lasts that may not tell it itself.
double secondsOf(const AVStream& stream, std::int64_t length);

/// Reads on to the next packet of one of the streams and tells which; -1 at the end. `indexes` are those of the picture
/// and of the sound, -1 for none, here and below.
int readOneOf(InputFile& file, AVPacket& packet, const std::array<int, 2>& indexes);

/// From every packet of a file that has only just been opened.
Scan brokenScan(InputFile& file, const std::array<int, 2>& indexes);

/// From places all over the file: between two whose stamps do not fit, the break is looked up. What begins and ends
/// between two places stays unseen. Nothing is told when patience is over meanwhile.
Scan sampledScan(InputFile& file, const std::array<int, 2>& indexes);

} // namespace twcore
