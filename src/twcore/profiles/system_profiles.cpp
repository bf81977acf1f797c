#include "twcore/profiles/system_profiles.h"

namespace twcore {

namespace {

struct Movie {
    const char* name;
    const char* description;
    ProfilePicture picture;
    ProfileSound sound;
};

struct Music {
    const char* name;
    const char* description;
    ProfileSound sound;
};

// The rate that a name tells is that of picture and sound together.
constexpr Movie kMovies[] = {
    {"Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)",
     "A small picture and speech, for the slowest connections.",
     {160, 120, 10, 1, 30000, 50, 10},
     {16000, 1, 24000}},
    {kDefaultVideoProfile,
     "A small picture and simple sound, for modems and shared networks.",
     {160, 120, 15, 1, 66000, 75, 10},
     {22050, 1, 32000}},
    {"Video for e-mail and dual-channel ISDN (128 Kbps)",
     "Short clips that fit into a letter.",
     {240, 180, 15, 1, 94000, 75, 10},
     {22050, 1, 32000}},
    {"Video for web servers (256 Kbps)",
     "A quarter of a television picture, for pages that play clips.",
     {320, 240, 25, 1, 206000, 80, 8},
     {32000, 2, 48000}},
    {"Video for broadband NTSC (384 Kbps)",
     "A quarter of a television picture at its own rate of frames.",
     {320, 240, 30000, 1001, 318000, 85, 8},
     {44100, 2, 64000}},
    {"Video for broadband PAL (384 Kbps)",
     "A quarter of a television picture at its own rate of frames.",
     {384, 288, 25, 1, 318000, 85, 8},
     {44100, 2, 64000}},
    {"Video for broadband NTSC (700 Kbps)",
     "Half a television picture, good for most clips.",
     {480, 360, 30000, 1001, 602000, 90, 6},
     {44100, 2, 96000}},
    {"Video for broadband PAL (700 Kbps)",
     "Half a television picture, good for most clips.",
     {480, 360, 25, 1, 602000, 90, 6},
     {44100, 2, 96000}},
    {"Video for local area networks (1 Mbps)",
     "A whole picture of a computer's screen of old, for fast networks.",
     {640, 480, 25, 1, 900000, 92, 5},
     {44100, 2, 96000}},
    {"Video for DVD quality NTSC (2 Mbps)",
     "A whole television picture at its own rate of frames, with square pixels.",
     {640, 480, 30000, 1001, 1866000, 95, 4},
     {44100, 2, 128000}},
    {"Video for DVD quality PAL (2 Mbps)",
     "A whole television picture at its own rate of frames, with square pixels.",
     {768, 576, 25, 1, 1866000, 95, 4},
     {44100, 2, 128000}},
};

constexpr Music kMusic[] = {
    {"Audio for speech and dial-up modems (32 Kbps mono)",
     "Speech, and music heard in the background.",
     {22050, 1, 32000}},
    {"Audio for FM radio quality (48 Kbps stereo)", "Music as a small radio plays it.", {32000, 2, 48000}},
    {"Audio for near-CD quality (64 Kbps stereo)", "Music for portable players.", {44100, 2, 64000}},
    {"Audio for CD-quality (96 Kbps stereo)", "Music that few ears tell from a disc.", {44100, 2, 96000}},
    {"Audio for CD-quality transparency (128 Kbps stereo)", "Music as a disc has it.", {44100, 2, 128000}},
    {"Audio for archives (160 Kbps stereo)", "Music to keep.", {44100, 2, 160000}},
    {"Audio for archives (192 Kbps stereo)", "Music to keep, at the rate of film sound.", {48000, 2, 192000}},
};

std::vector<Profile> makeList()
{
    std::vector<Profile> list;
    for (const auto& movie : kMovies) {
        list.push_back({movie.name, movie.description, movie.picture, movie.sound});
    }
    for (const auto& music : kMusic) {
        list.push_back({music.name, music.description, std::nullopt, music.sound});
    }
    return list;
}

} // namespace

const std::vector<Profile>& systemProfiles()
{
    static const auto list = makeList();
    return list;
}

} // namespace twcore
