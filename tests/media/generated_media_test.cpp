// The generated media are what the manifest says: otherwise every test that stands on them would mislead.

#include "support/manifest.h"
#include "support/media_recipes.h"
#include "support/movie_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

using namespace testmedia;

namespace {

void checkPictures(const MediaEntry& entry, const Movie& movie)
{
    std::vector<int> expected;
    const std::string dropped = entry.note("dropped");
    for (int i = 0; i < entry.frames; ++i)
        if (dropped.empty() || i < std::stoi(dropped) || i > std::stoi(dropped.substr(dropped.rfind('.') + 1)))
            expected.push_back(entry.firstNumber + i);
    EXPECT_EQ(movie.numbers(), expected);

    EXPECT_EQ(movie.rotationDegrees, entry.noteNumber("rotation"));
    if (const std::string aspect = entry.note("aspect"); !aspect.empty()) {
        EXPECT_EQ(std::to_string(movie.aspectNumerator) + ":" + std::to_string(movie.aspectDenominator), aspect);
    }
    const std::string fields = entry.note("interlaced");
    for (const MovieFrame& frame : movie.frames) {
        EXPECT_EQ(frame.interlaced, !fields.empty());
        EXPECT_TRUE(fields.empty() || frame.topFieldFirst == (fields == "tff"));
    }
}

void checkTimes(const MediaEntry& entry, const Movie& movie)
{
    if (entry.kind != "movie" || movie.frames.empty() || movie.format == "avi")
        return; // AVI has no times of its own
    const double first = movie.frames.front().seconds;
    for (std::size_t i = 0; i < movie.frames.size(); ++i) {
        const double expected = entry.note("times").empty() ? static_cast<double>(i) / entry.framesPerSecond()
                                                            : irregularMs(static_cast<int>(i)) / 1000.0;
        EXPECT_NEAR(movie.frames[i].seconds - first, expected, 0.0011) << i;
    }
}

double laterOf(const MediaEntry& entry) { return entry.noteNumber("video-start") + entry.noteNumber("sound-start"); }

void checkSound(const MediaEntry& entry, const Movie& movie)
{
    EXPECT_EQ(movie.rateHz, entry.rateHz);
    EXPECT_EQ(movie.channels, entry.channels);
    EXPECT_NEAR(movie.soundSeconds(), entry.frames > 0 ? entry.durationSeconds - laterOf(entry) : entry.durationSeconds,
                0.06);
    // The pattern's moment at presentation time t, counted from the first picture, or from the first sample without
    // one. AVI has no times of its own: both begin at zero.
    const double zero = movie.format == "avi"  ? 0
                        : movie.frames.empty() ? movie.soundStartSeconds
                                               : movie.frames.front().seconds;
    const double ahead = entry.noteNumber("sound-lag") + entry.noteNumber("media-start")
                         + entry.noteNumber("video-start") - entry.noteNumber("sound-start");
    for (int channel = 0; channel < entry.channels; ++channel)
        for (const double share : {0.05, 0.5, 0.9}) {
            const double at = movie.soundStartSeconds + share * (movie.soundSeconds() - 0.25);
            const auto shift = movie.soundShift(channel, at, 1.6);
            ASSERT_TRUE(shift) << "channel " << channel << " at " << at;
            EXPECT_NEAR(*shift + zero, ahead, 0.001) << "channel " << channel << " at " << at;
        }
}

void checkPatches(const MediaEntry& entry)
{
    const Movie movie = readMovie(mediaFolder() / entry.name, {.keepRgb = true});
    EXPECT_EQ(movie.colourSpace, entry.note("space"));
    EXPECT_EQ(movie.colourRange, entry.note("range"));
    const MovieFrame& frame = movie.frames.at(20);
    for (std::size_t i = 0; i < kPatchColours.size(); ++i) {
        const auto colour = frame.meanColour(patchRect(static_cast<int>(i), frame.widthPx, frame.heightPx));
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_NEAR(colour[c], kPatchColours[i][c], 4) << "patch " << i << " part " << c;
    }
}

} // namespace

TEST(GeneratedMedia, AreWhatTheManifestSays)
{
    for (const MediaEntry& entry : readManifest()) {
        SCOPED_TRACE(entry.name);
        EXPECT_TRUE(std::filesystem::exists(mediaFolder() / entry.name));
        if (entry.kind == "bad" || entry.kind == "midi")
            continue;
        const Movie movie = readMovie(mediaFolder() / entry.name);
        EXPECT_EQ(movie.decodeErrors, 0);
        if (entry.frames > 0 && entry.note("orientation").empty())
            checkPictures(entry, movie);
        checkTimes(entry, movie);
        if (entry.rateHz > 0 && !entry.has("alias"))
            checkSound(entry, movie);
        if (entry.has("patches"))
            checkPatches(entry);
    }
}

TEST(GeneratedMedia, NothingIsMissing)
{
    std::ifstream missing(mediaFolder() / "missing.txt");
    for (std::string name; std::getline(missing, name);)
        ADD_FAILURE() << name << " could not be made: is its encoder installed?";
}
