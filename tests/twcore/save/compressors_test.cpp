// Every compressor of the lists: what it writes reads back whole, and what it says it can be told is true.

#include "twcore/save/save_harness.h"

#include <map>

using namespace savetest;
using testmedia::Movie;

namespace {

std::vector<std::string> names(engine::Status (engine::ITWSave::*nameAt)(std::int16_t, engine::TextBuffer))
{
    std::vector<std::string> found;
    for (std::int16_t index = 0;; ++index) {
        std::string buffer(128, 'x');
        check((EngineAs<engine::ITWSave>().get()->*nameAt)(index, buffer));
        const auto end = buffer.find('\0');
        if (end == std::string::npos) {
            return found;
        }
        found.push_back(buffer.substr(0, end));
    }
}

class CompressorsTest : public SaveTest {
protected:
    /// Saves with settings that `prepare` leaves at the compressor's own.
    Movie savedWith(const SaveWords& words, int keyFrameRate, int quality, int bitRate = 0)
    {
        const auto save = EngineAs<engine::ITWSave>();
        const auto path = folder / "movie.avi";
        EXPECT_TRUE(EngineAs<twcore::EngineOptions>()->setVideoBitRate(bitRate));
        EXPECT_TRUE(prepare(words, path)) << words.video; // for tracks and sizes
        check(save->SetKeyFrameRate(keyFrameRate));
        check(save->SetQuality(quality));
        engine::Bool16 ok = engine::kFalse;
        check(save->PrepareAviFile(path.string(), ok));
        check(save->RunSaveToEnd());
        std::int32_t state = 0;
        check(save->GetSaveState(state));
        EXPECT_EQ(state, engine::save_state::kComplete) << words.video;
        check(save->CloseSave());
        byteCount = std::filesystem::file_size(path);
        return testmedia::readMovie(path);
    }

    static SaveWords wordsFor(const std::string& compressor)
    {
        SaveWords words{.video = compressor};
        if (compressor == "DV") {
            words.width = 720;
            words.height = 576;
        } else if (compressor == "Cinepak") { // takes its time
            words.width = 160;
            words.height = 120;
        }
        return words;
    }

    std::uintmax_t byteCount = 0;
};

} // namespace

TEST_F(CompressorsTest, WriteEveryFrameAndTellTheTruthOfWhatTheyTake)
{
    layBoth("mjpeg.avi", {0, 480, 1000, 1480});
    const std::vector<int> expected{25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36};
    const auto list = names(&engine::ITWSave::GetVideoCompressorName);
    ASSERT_GE(list.size(), 8u);
    for (std::size_t i = 0; i < list.size(); ++i) {
        SCOPED_TRACE(list[i]);
        const auto save = EngineAs<engine::ITWSave>();
        std::int32_t index = -2;
        engine::Bool16 key = 1;
        engine::Bool16 predicted = 1;
        engine::Bool16 quality = 1;
        check(save->SetVideoCompressor(list[i]));
        check(save->GetVideoCompressorIndex(index));
        EXPECT_EQ(index, static_cast<std::int32_t>(i));
        check(save->CanSetKeyFrameRate(index, key));
        check(save->CanSetPFrameFrequency(index, predicted));
        check(save->CanSetQuality(index, quality));
        EXPECT_EQ(predicted, engine::kFalse);

        const Movie coarse = savedWith(wordsFor(list[i]), 5, 10);
        const auto coarseBytes = byteCount;
        EXPECT_EQ(coarse.numbers(), expected);
        EXPECT_EQ(coarse.decodeErrors, 0);
        int keyFrames = 0;
        for (std::size_t n = 0; n < coarse.frames.size(); ++n) {
            keyFrames += coarse.frames[n].keyFrame ? 1 : 0;
            EXPECT_TRUE(key == engine::kFalse || n % 5 != 0 || coarse.frames[n].keyFrame) << n;
        }
        EXPECT_EQ(keyFrames, key != engine::kFalse ? 3 : 12) << "who takes no rate makes every frame a key frame";
        savedWith(wordsFor(list[i]), 5, 90);
        EXPECT_EQ(coarseBytes != byteCount, quality != engine::kFalse);
    }
}

TEST_F(CompressorsTest, SoundOfEveryCompressorIsInStepAndTellsItsRate)
{
    lay(audio1, stream("stereo-48k.wav", false), {0, 3000, 1000, 4000});
    for (const auto& name : names(&engine::ITWSave::GetAudioCompressorName)) {
        for (const int rate : {48000, 44100}) {
            SCOPED_TRACE(name + " " + std::to_string(rate));
            SaveWords words{.audio = name};
            words.soundRate = rate;
            const Movie movie = saved(words);
            EXPECT_EQ(movie.rateHz, rate);
            EXPECT_GE(movie.soundSeconds(), 3.0 - 1e-9);
            EXPECT_LT(movie.soundSeconds(), 3.05);
            EXPECT_NEAR(movie.durationSeconds, 3, 0.15) << "as the header tells it";
            for (const double at : {0.03, 1.5, 2.7}) {
                const auto shift = movie.soundShift(0, at, 1.5);
                ASSERT_TRUE(shift) << at;
                EXPECT_NEAR(*shift, 1.0, 0.001) << at;
            }
        }
    }
}

TEST_F(CompressorsTest, DvTakesItsTwoSizesAndRatesOnly)
{
    layBoth("30p.mp4", {0, 400, 0, 400});
    struct Case {
        int width;
        int height;
        int fps; // -1: 30000/1001 of the clip
        bool isTaken;
    };
    for (const auto& [width, height, fps, isTaken] :
         {Case{720, 576, 25, true}, Case{720, 480, -1, true}, Case{720, 576, -1, false}, Case{720, 480, 30, false},
          Case{720, 480, 25, false}, Case{640, 480, 25, false}}) {
        SCOPED_TRACE(testing::Message() << width << " x " << height << " at " << fps);
        SaveWords words{.video = "DV"};
        words.width = width;
        words.height = height;
        words.fps = fps;
        EXPECT_EQ(prepare(words, folder / "movie.avi"), isTaken);
        check(EngineAs<engine::ITWSave>()->CloseSave());
        if (isTaken) {
            const Movie movie = saved(words);
            EXPECT_EQ(movie.videoCodec, "dvvideo");
            for (std::size_t n = 0; n < movie.frames.size(); ++n) {
                EXPECT_EQ(movie.frames[n].number, static_cast<int>(fps == 25 ? n * 1200 / 1001 : n));
            }
        }
    }
}

TEST_F(CompressorsTest, KeepToABitRateWhereOneIsAsked)
{
    layBoth("mjpeg.avi", {0, 4000, 0, 4000});
    for (const char* name : {"MPEG-4", "Windows Media Video 8", "H.264", "MS-MPEG4 V3"}) {
        std::map<int, std::uintmax_t> bytes;
        for (const int rate : {60000, 400000}) {
            const Movie movie = savedWith({.video = name, .audio = "MP3"}, -1, -1, rate);
            EXPECT_EQ(movie.frames.size(), 100u);
            bytes[rate] = byteCount - 120000; // sound, header and index
        }
        EXPECT_LT(bytes[60000] * 3 / 2, bytes[400000]) << name;
        EXPECT_LT(bytes[400000], 400000u * (4 + 3) / 8) << name << ", with three seconds spent ahead";
    }
}
