// Every compressor of the lists: what it writes reads back whole, and what it says it can be told is true.

#include "twcore/media/picture_reader.h"
#include "twcore/render/picture_fitter.h"
#include "twcore/save/save_harness.h"

#include <array>
#include <cmath>
#include <fstream>
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

using Quarters = std::array<testmedia::Rgb, 4>; // of a picture, line by line
constexpr Quarters kQuarters{{{0, 192, 0}, {192, 32, 32}, {48, 48, 208}, {160, 160, 160}}};

/// An upright bitmap of 24 bits whose quarters are flat.
void writeQuarters(const std::filesystem::path& path, int width, int height)
{
    std::string head = "BM";
    const auto add = [&](std::uint32_t value, int bytes) {
        for (; bytes > 0; --bytes, value >>= 8) {
            head += static_cast<char>(value & 0xFF);
        }
    };
    const int size = width * height * 3; // of widths that are multiples of 4
    for (const int value : {54 + size, 0, 54, 40, width, -height}) {
        add(static_cast<std::uint32_t>(value), 4);
    }
    add(1, 2);
    add(24, 2);
    head.append(24, '\0');
    std::string pixels;
    for (int i = 0; i < width * height; ++i) {
        const int column = i % width >= width / 2 ? 1 : 0;
        const int row = i / width >= height / 2 ? 2 : 0;
        const auto& [red, green, blue] = kQuarters[static_cast<std::size_t>(row + column)];
        pixels.append({static_cast<char>(blue), static_cast<char>(green), static_cast<char>(red)});
    }
    std::ofstream(path, std::ios::binary) << head << pixels;
}

void expectQuarters(const Quarters& found, const std::string& reader)
{
    for (std::size_t i = 0; i < found.size(); ++i) {
        for (std::size_t part = 0; part < 3; ++part) {
            EXPECT_NEAR(found[i][part], kQuarters[i][part], 5) << reader << ", quarter " << i << ", part " << part;
        }
    }
}

/// The quarters of a movie's first picture as this system reads them.
Quarters readBack(const std::filesystem::path& path)
{
    const auto media = twcore::tryMediaFile(path.string(), {}).file;
    const twcore::PictureSize size{media->picture->width, media->picture->height};
    twcore::PictureReader reader(media, 1, {});
    twcore::PictureFitter fitter({size, AV_PIX_FMT_BGR24, {twcore::Matrix::kRgb, true}});
    const auto shown = fitter.fit(reader.at(0.013), *media->picture, {{0, 0, size.width, size.height}});
    Quarters found{};
    for (int i = 0; i < 4; ++i) {
        const int x = size.width * (1 + 2 * (i % 2)) / 4;
        const int y = size.height * (1 + 2 * (i / 2)) / 4;
        const auto* const at = shown->data[0] + std::ptrdiff_t{y} * shown->linesize[0] + x * 3;
        found[static_cast<std::size_t>(i)] = {at[2], at[1], at[0]};
    }
    return found;
}

/// The same as it is read by the tags alone.
Quarters readByTags(const std::filesystem::path& path)
{
    const auto frame = testmedia::readMovie(path, {.keepRgb = true}).frames.at(0);
    Quarters found{};
    for (int i = 0; i < 4; ++i) {
        const int x = frame.widthPx * (1 + 2 * (i % 2)) / 4;
        const int y = frame.heightPx * (1 + 2 * (i / 2)) / 4;
        const auto mean = frame.meanColour({x - 8, y - 8, x + 8, y + 8});
        for (std::size_t part = 0; part < 3; ++part) {
            found[static_cast<std::size_t>(i)][part] = static_cast<std::uint8_t>(std::lround(mean[part]));
        }
    }
    return found;
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

TEST_F(CompressorsTest, ColoursOfAnySizeComeBack)
{
    for (const auto& [width, height] : {std::pair{1280, 720}, {640, 480}}) {
        SetUp();
        const auto source = folder / ("quarters-" + std::to_string(width) + ".bmp");
        writeQuarters(source, width, height);
        check(EngineAs<engine::ITWTimeline>()->SetFrameSize(static_cast<std::int16_t>(width),
                                                            static_cast<std::int16_t>(height)));
        lay(video, stream(source.string(), true), {0, 40, 0, 40});
        auto list = names(&engine::ITWSave::GetVideoCompressorName);
        list.emplace_back("Uncompressed");
        for (const auto& name : list) {
            SCOPED_TRACE(testing::Message() << name << " " << width);
            SaveWords words{.video = name};
            words.width = name == "DV" ? 720 : width;
            words.height = name == "DV" ? 576 : height;
            saved(words);
            expectQuarters(readBack(folder / "movie.avi"), "by ours");
            if (name == "H.264" || name == "Motion JPEG" || name == "Ut Video") {
                expectQuarters(readByTags(folder / "movie.avi"), "by its tags");
            }
        }
        const auto save = EngineAs<engine::ITWSave>();
        engine::Bool16 ok = engine::kFalse;
        check(save->SetVideoProfile("Video for local area networks (1 Mbps)"));
        check(save->SetWindowsMediaVideoSize(static_cast<std::int16_t>(width), static_cast<std::int16_t>(height)));
        check(save->AddSaveTrack(video, ok));
        check(save->PrepareWindowsMediaFile((folder / "movie.wmv").string(), ok));
        ASSERT_EQ(ok, engine::kTrue);
        check(save->RunSaveToEnd());
        check(save->CloseSave());
        expectQuarters(readBack(folder / "movie.wmv"), "Windows Media");
    }
}
