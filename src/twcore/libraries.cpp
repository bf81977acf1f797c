#include "twcore/libraries.h"

#include "twcore/media/ff.h"

#include <SDL.h>
#include <cstdio> // jpeglib.h wants it first
#include <fluidsynth.h>
#include <jpeglib.h>
#include <pugixml.hpp>

namespace twcore {

namespace {

std::string sdlVersion()
{
    SDL_version loaded{};
    SDL_GetVersion(&loaded);
    return std::to_string(loaded.major) + "." + std::to_string(loaded.minor) + "." + std::to_string(loaded.patch);
}

std::string jpegVersion()
{
    const int number = LIBJPEG_TURBO_VERSION_NUMBER; // thousands of thousands, thousands, ones
    return std::to_string(number / 1'000'000) + "." + std::to_string(number / 1000 % 1000) + "."
           + std::to_string(number % 1000);
}

std::string pugixmlVersion()
{
    constexpr int kNumber = PUGIXML_VERSION; // 1130 is 1.13, and 1131 would be 1.13.1
    return std::to_string(kNumber / 1000) + "." + std::to_string(kNumber / 10 % 100)
           + (kNumber % 10 > 0 ? "." + std::to_string(kNumber % 10) : "");
}

} // namespace

std::vector<engine::LibraryFacts> libraries()
{
    return {{"FFmpeg", av_version_info(), avcodec_license()}, // which depends on how it was built
            {"FluidSynth", fluid_version_str(), "LGPL version 2.1 or later"},
            {"SDL", sdlVersion(), "zlib licence"},
            {"libjpeg-turbo", jpegVersion(), "IJG and BSD licences"},
            {"pugixml", pugixmlVersion(), "MIT licence"}};
}

} // namespace twcore
