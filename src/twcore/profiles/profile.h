#pragma once

// A Windows Media profile: what a Windows Media file is to be. At most one picture and one sound stream; a number of 0
// leaves the matter to the timeline that is saved.

#include <cstdint>
#include <optional>
#include <string>

namespace twcore {

struct ProfilePicture {
    int width = 0; // pixels; 0, as the height, is the frame of the timeline
    int height = 0;
    int fpsNumerator = 0; // frames a second, as a fraction; 0: the timeline's
    int fpsDenominator = 1;
    int bitRate = 0; // bits a second; 0: quality alone decides
    int quality = 0; // 0 to 100: no picture is made finer than this, however many bits are left
    int keyFrameSeconds = 8;
};

struct ProfileSound {
    int sampleRate = 44100;
    int channels = 2;
    int bitRate = 64000; // bits a second
};

struct Profile {
    std::string name; // UTF-8, as the description
    std::string description;
    std::optional<ProfilePicture> picture;
    std::optional<ProfileSound> sound;
};

} // namespace twcore
