// The list of test media that the command line encoder makes, as data.
//
// A recipe names its source pictures and sound, both raw files that make_media.cpp draws, and the encoder's arguments.
// The run (make_media.cpp) builds the command line, so that what all have in common is told once.
#pragma once

#include "support/manifest.h"

#include <vector>

namespace testmedia {

// Words in the notes:
//   gop= b-frames open-gop packed no-index vbr no-header edit-list alpha alias
//   rotation=       clockwise degrees to show it upright        aspect=       of a pixel
//   video-start=    seconds that the picture begins later than the sound; sound-start= the other way
//   media-start=    seconds of the pattern that stand before the first shown picture and sound
//   sound-lag=      seconds that the sound heard is ahead of (below zero: behind) the picture shown, as this file's
//                   container and codec leave it to a plain reader
//   dropped=a..b    numbers that are not in the file: the picture before them stands still
//   times=          a file with the time of each picture in ms    interlaced=   tff or bff
//   patches space= range=    the colours of drawPatches          orientation=  as a still's own data tell it
//   readable-in-part claims= truncated playlist script network local misnamed    of bad files

// Raw pictures, 320x240 rgb24, number n at place n.
enum class Pictures {
    none,
    progressive, // 300 of them
    interlaced,  // upper field at moment n, lower field at n + 1/2, both under number n
    patches,     // with flat colours below the bar code
};

struct Recipe {
    MediaEntry entry;
    Pictures pictures = Pictures::none;
    std::string arguments = {};      // apart by blanks; no shell reads them
    std::string inputArguments = {}; // before the -i of the picture or of the earlier file
    std::string soundArguments = {}; // before the sound's -i
    std::string muxer = {};          // for files which go through a pipe
    std::string from = {};           // made of this earlier file instead of raw sources
};

inline constexpr int kBaseWidthPx = 320, kBaseHeightPx = 240, kBaseFrames = 300;

// Times of the pictures of vfr.mp4; the last lasts as long as the one before it.
inline int irregularMs(int frame) { return 40 * frame + (7 * frame * frame) % 31 + (frame >= 60 ? 500 : 0); }

std::vector<Recipe> movieRecipes();
std::vector<Recipe> soundRecipes();
std::vector<Recipe> stillRecipes();
// Those with `from`: to be made when all others stand.
std::vector<Recipe> derivedRecipes();

} // namespace testmedia
