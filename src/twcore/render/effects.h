#pragma once

// The six effects of the effect lane, drawn on a finished picture.
//
//     Fade      towards black and back, by a level that the plan works out from where picture begins and ends
//     Pixelate  square blocks of one colour, growing to the middle of the stretch and shrinking again
//     Blur      each pixel the mean of its surroundings, twice over
//     Wave      every line shifted along a sine that runs down the picture with time
//     Emboss    relief: grey, brighter where brightness falls from the upper left to the lower right
//     Engrave   the same relief, pressed in
//
// Sizes follow the picture's height, so that an effect looks the same in a small movie and in a large one.

#include "twcore/render/planes.h"

#include <string_view>

namespace twcore {

enum class EffectKind { kNone, kFade, kPixelate, kBlur, kWave, kEmboss, kEngrave };

/// kNone for a name that is unknown, which draws the plain picture.
EffectKind effectKindOf(std::string_view name);

/// Where in its stretch an effect stands.
struct EffectMoment {
    double progress = 0; // 0 at its start, 1 at its stop
    double seconds = 0;  // since its start
    double level = 1;    // Fade: 1 the plain picture, 0 black
};

/// Width of Pixelate's blocks in pixels.
int pixelateBlock(double progress, int pictureHeight);

void applyEffect(EffectKind kind, const EffectMoment& moment, const Planes& picture);

} // namespace twcore
