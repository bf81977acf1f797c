// A fresh engine with the editor's tracks, short words to lay sources, and a save that is read back.
#pragma once

#include "engine/ITWSave.h"
#include "support/engine_test.h"
#include "support/movie_reader.h"
#include "twcore/engine_options.h"

#include <array>
#include <cmath>

namespace savetest {

using engine::ITWSave;
using engine::ITWTimeline;
using testmedia::bytesOf;
using namespace testsupport;

/// Where a source stands and what of its stream it plays, all in milliseconds.
struct Place {
    int start;
    int stop;
    int mediaStart;
    int mediaStop;
};

struct SaveWords {
    std::string video = "Motion JPEG";
    std::string audio = "PCM";
    std::string profile = {}; // of a Windows Media file; empty: an AVI
    int fps = 25;             // of an AVI
    int width = profile.empty() ? 320 : 0;
    int height = profile.empty() ? 240 : 0;
    int rangeStart = -1; // -1: all
    int rangeStop = -1;
    int soundRate = 0; // 0: as before
    int keyFrameRate = -1;
    int quality = -1;
    int bitRate = 0;
    bool copies = true;
};

/// All of them: a container is printed up to its 32nd.
inline std::string asText(const std::vector<int>& numbers)
{
    std::string text;
    for (const int number : numbers) {
        text += std::to_string(number) + ' ';
    }
    return text;
}

/// What frame n shows when the sources of a 25 fps file stand so, for a movie at fps from startMs on; -1 for black. The
/// file's first picture stands lateMs behind media time 0, and is held until then. As text, to be read in a failure.
inline std::string expectedNumbers(const std::vector<Place>& places, double fps, int startMs, int stopMs,
                                   double lateMs = 0)
{
    std::vector<int> numbers;
    const auto count = static_cast<int>(std::ceil((stopMs - startMs) * fps / 1000 - 1e-9));
    for (int n = 0; n < count; ++n) {
        const double time = startMs + n * 1000 / fps;
        int number = -1;
        for (const auto& place : places) {
            if (time >= place.start - 1e-9 && time < place.stop - 1e-9) {
                const double speed = double(place.mediaStop - place.mediaStart) / (place.stop - place.start);
                const double media = place.mediaStart + (time - place.start) * speed - lateMs;
                number = std::max(0, static_cast<int>(std::floor(media / 40 + 1e-6)));
            }
        }
        numbers.push_back(number);
    }
    return asText(numbers);
}

inline std::string numbersOf(const testmedia::Movie& movie) { return asText(movie.numbers()); }

class SaveTest : public EngineTest {
protected:
    void SetUp() override
    {
        EngineTest::SetUp();
        for (Handle& track : tracks) {
            track = newTrack(&track == &video || &track == &overlay);
        }
    }

    /// The picture or the sound of a generated file; 0 when it has none.
    static Handle stream(const std::string& name, bool picture)
    {
        const Handle file = openFile(medium(name));
        EXPECT_NE(file, 0) << name;
        for (std::int16_t index = 0;; ++index) {
            const Handle found = openStream(file, index);
            if (found == 0 || did(&engine::ITWMediaFiles::IsVideoStream, found) == picture) {
                return found;
            }
        }
    }

    static void lay(Handle track, Handle stream, const Place& place)
    {
        EXPECT_TRUE(did(&ITWTimeline::AppendSource, track, stream, -1));
        const auto seq = static_cast<std::int16_t>(told<std::int16_t>(&ITWTimeline::GetSourceCount, track) - 1);
        did(&ITWTimeline::SetSourceTimes, track, seq, place.start, place.stop);
        did(&ITWTimeline::SetSourceMediaTimes, track, seq, place.mediaStart, place.mediaStop);
    }

    void layBoth(const std::string& name, const Place& place)
    {
        lay(video, stream(name, true), place);
        lay(audio1, stream(name, false), place);
    }

    bool prepare(const SaveWords& words, const std::filesystem::path& path)
    {
        const auto save = EngineAs<ITWSave>();
        check(save->ResetSave());
        check(save->SetVideoCompressor(words.video));
        check(save->SetAudioCompressor(words.audio));
        check(save->SetVideoProfile(words.profile));
        check(save->SetAudioProfile(words.profile));
        check(save->SetFrameRate(words.fps));
        check(save->SetKeyFrameRate(words.keyFrameRate));
        check(save->SetQuality(words.quality));
        check(save->SetCopyUnchanged(engine::toBool16(words.copies)));
        EXPECT_TRUE(EngineAs<twcore::EngineOptions>()->setVideoBitRate(words.bitRate));
        if (words.profile.empty()) {
            check(save->SetVideoSize(words.width, words.height));
        } else {
            check(save->SetWindowsMediaVideoSize(static_cast<std::int16_t>(words.width),
                                                 static_cast<std::int16_t>(words.height)));
        }
        if (words.soundRate > 0) {
            EXPECT_TRUE(EngineAs<twcore::EngineOptions>()->setSoundRate(words.soundRate));
        }
        for (const Handle track : tracks) {
            if (told<std::int16_t>(&ITWTimeline::GetSourceCount, track) > 0) {
                did(&ITWSave::AddSaveTrack, track);
            }
        }
        check(save->SetSaveWholeTimeline(engine::toBool16(words.rangeStop < 0)));
        check(save->SetSaveRange(words.rangeStart, words.rangeStop));
        return did(words.profile.empty() ? &ITWSave::PrepareAviFile : &ITWSave::PrepareWindowsMediaFile, path.string());
    }

    /// Saves the timeline and reads the movie back.
    testmedia::Movie saved(const SaveWords& words, const std::string& name = "movie.avi")
    {
        EXPECT_TRUE(prepare(words, folder / name)) << words.video << ", " << words.audio << words.profile;
        check(EngineAs<ITWSave>()->RunSaveToEnd());
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetSaveState), engine::save_state::kComplete) << words.video;
        check(EngineAs<ITWSave>()->CloseSave());
        return testmedia::readMovie(folder / name);
    }

    static void expectShift(const testmedia::Movie& movie, double seconds, double shift)
    {
        const auto found = movie.soundShift(0, seconds, 3);
        ASSERT_TRUE(found) << seconds;
        EXPECT_NEAR(*found, shift, 0.001) << seconds;
    }

    std::array<Handle, 4> tracks{};
    Handle& video = tracks[0];
    Handle& overlay = tracks[1];
    Handle& audio1 = tracks[2];
    Handle& audio2 = tracks[3];
};

} // namespace savetest
