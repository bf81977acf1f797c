// Every compressor of the lists: what it writes reads back whole, and what it says it can be told is true.

#include "twcore/media/picture_reader.h"
#include "twcore/render/picture_fitter.h"
#include "twcore/save/save_harness.h"

#include <functional>
#include <map>

using namespace savetest;
using testmedia::Movie;

namespace {

std::vector<std::string> names(engine::Status (ITWSave::*nameAt)(std::int16_t, engine::TextBuffer))
{
    std::vector<std::string> found;
    for (std::int16_t index = 0;; ++index) {
        std::string buffer(128, 'x');
        check((EngineAs<ITWSave>().get()->*nameAt)(index, buffer));
        const auto end = buffer.find('\0');
        if (end == std::string::npos) {
            return found;
        }
        found.push_back(buffer.substr(0, end));
    }
}

/// The list's, which has these, and behind them the one that is in no list.
std::vector<std::string> all(const std::vector<std::string>& listed, std::vector<std::string> expected)
{
    EXPECT_EQ(listed, expected);
    expected.emplace_back("Uncompressed");
    return expected;
}

std::vector<std::string> allOfPicture()
{
    return all(names(&ITWSave::GetVideoCompressorName),
               {"Motion JPEG", "MPEG-4", "Xvid MPEG-4", "H.264", "Windows Media Video 8", "MS-MPEG4 V3", "HuffYUV",
                "FFV1", "Ut Video", "DV", "Cinepak"});
}

SaveWords wordsFor(const std::string& compressor)
{
    const bool isDv = compressor == "DV";
    const bool isSlow = compressor == "Cinepak";
    return {.video = compressor, .width = isDv ? 720 : isSlow ? 160 : 320, .height = isDv ? 576 : isSlow ? 120 : 240};
}

constexpr testmedia::Rgb kQuarters[]{{0, 192, 0}, {192, 32, 32}, {48, 48, 208}, {160, 160, 160}}; // line by line

/// An upright picture of 24 bits whose quarters are flat.
void writeQuarters(const std::filesystem::path& path, int width, int height)
{
    std::string bytes = std::string("\0\0\x02\0\0\0\0\0\0\0\0\0", 12) + testmedia::littleEndian(unsigned(width), 2)
                        + testmedia::littleEndian(unsigned(height), 2) + "\x18\x20";
    for (int i = 0; i < width * height; ++i) {
        const auto& [red, green, blue] =
            kQuarters[(i / width >= height / 2 ? 2 : 0) + (i % width >= width / 2 ? 1 : 0)];
        bytes.append({static_cast<char>(blue), static_cast<char>(green), static_cast<char>(red)});
    }
    testmedia::writeBytes(path, bytes);
}

void expectQuarters(int width, int height, const std::string& reader,
                    const std::function<double(int x, int y, int part)>& found)
{
    for (int i = 0; i < 4; ++i) {
        for (int part = 0; part < 3; ++part) {
            EXPECT_NEAR(found(width * (1 + 2 * (i % 2)) / 4, height * (1 + 2 * (i / 2)) / 4, part),
                        kQuarters[i][std::size_t(part)], 5)
                << reader << ", quarter " << i << ", part " << part;
        }
    }
}

/// The first picture of a movie as this system reads it.
void expectReadBack(const std::filesystem::path& path)
{
    const auto media = twcore::tryMediaFile(path.string(), {}).file;
    const twcore::PictureSize size{media->picture->width, media->picture->height};
    twcore::PictureReader reader(media, 1, {});
    twcore::PictureFitter fitter({size, AV_PIX_FMT_RGB24, {twcore::Matrix::kRgb, true}});
    const auto shown = fitter.fit(reader.at(0.013), *media->picture, {{0, 0, size.width, size.height}});
    expectQuarters(size.width, size.height, "by ours", [&](int x, int y, int part) {
        return shown->data[0][std::ptrdiff_t{y} * shown->linesize[0] + x * 3 + part];
    });
}

class CompressorsTest : public SaveTest {};

} // namespace

TEST_F(CompressorsTest, WriteEveryFrameAndTellTheTruthOfWhatTheyTake)
{
    const Place place{0, 2000, 1000, 3000};
    layBoth("mjpeg.avi", place);
    std::int32_t expectedIndex = 0;
    const auto list = allOfPicture();
    for (const auto& name : list) {
        SCOPED_TRACE(name);
        check(EngineAs<ITWSave>()->SetVideoCompressor(name));
        const auto index = told<std::int32_t>(&ITWSave::GetVideoCompressorIndex);
        EXPECT_EQ(index, name == list.back() ? -1 : expectedIndex++);
        const bool takesKeys = did(&ITWSave::CanSetKeyFrameRate, index);
        const bool takesQuality = did(&ITWSave::CanSetQuality, index);
        EXPECT_FALSE(did(&ITWSave::CanSetPFrameFrequency, index));

        SaveWords words = wordsFor(name);
        words.keyFrameRate = 5;
        words.quality = 10;
        words.copies = false; // what is copied has the quality that it has
        const Movie coarse = saved(words);
        const auto coarseBytes = std::filesystem::file_size(folder / "movie.avi");
        EXPECT_EQ(numbersOf(coarse), expectedNumbers({place}, 25, 0, 2000));
        EXPECT_EQ(coarse.decodeErrors, 0);
        int keyFrames = 0;
        for (std::size_t n = 0; n < coarse.frames.size(); ++n) {
            keyFrames += coarse.frames[n].keyFrame ? 1 : 0;
            EXPECT_TRUE(!takesKeys || n % 5 != 0 || coarse.frames[n].keyFrame) << n;
        }
        EXPECT_EQ(keyFrames, takesKeys ? 10 : 50) << "who takes no rate makes every frame a key frame";
        words.quality = 90;
        saved(words);
        EXPECT_EQ(coarseBytes != std::filesystem::file_size(folder / "movie.avi"), takesQuality);
        words.rangeStart = 0;
        words.rangeStop = 17;
        EXPECT_EQ(saved(words).numbers(), std::vector<int>{25});
    }
}

TEST_F(CompressorsTest, SoundOfEveryCompressorIsInStepAndTellsItsRate)
{
    lay(audio1, stream("stereo-48k.wav", false), {0, 3000, 1000, 4000});
    for (const auto& name : all(names(&ITWSave::GetAudioCompressorName),
                                {"PCM", "MP3", "MP2", "AC-3", "IMA ADPCM", "Microsoft ADPCM", "A-law", "Mu-law"})) {
        // Within a packet, and where one ends: what the encoder holds at its end is one too many.
        for (const auto& [rate, lengthMs] :
             {std::pair{48000, 3000}, {44100, 3000}, {48000, 1920}, {48000, 600}, {48000, 17}}) {
            SCOPED_TRACE(testing::Message() << name << " " << rate << " for " << lengthMs);
            const Movie movie = saved({.audio = name, .rangeStart = 0, .rangeStop = lengthMs, .soundRate = rate});
            const double seconds = lengthMs / 1000.0;
            EXPECT_EQ(movie.decodeErrors, 0);
            EXPECT_EQ(movie.rateHz, rate);
            EXPECT_GE(movie.soundSeconds(), seconds - 1e-9);
            EXPECT_LT(movie.soundSeconds(), seconds + 0.044) << "at most the last packet is longer than the movie";
            if (lengthMs == 1920 && !name.ends_with("ADPCM")) { // whose packets end elsewhere
                EXPECT_EQ(movie.soundCount(), 92160u) << "a whole packet too many";
            }
            EXPECT_NEAR(movie.durationSeconds, seconds, 0.15) << "as the header tells it";
            for (const double at : {0.03, 1.5, 2.7}) {
                if (at + 0.2 < seconds) {
                    expectShift(movie, at, 1);
                }
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
        const SaveWords words{.video = "DV", .fps = fps, .width = width, .height = height};
        EXPECT_EQ(prepare(words, folder / "movie.avi"), isTaken);
        check(EngineAs<ITWSave>()->CloseSave());
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
            EXPECT_EQ(saved({.video = name, .audio = "MP3", .bitRate = rate}).frames.size(), 100u);
            bytes[rate] = std::filesystem::file_size(folder / "movie.avi") - 120000; // sound, header and index
        }
        EXPECT_LT(bytes[60000] * 3 / 2, bytes[400000]) << name;
        EXPECT_LT(bytes[400000], 400000u * (4 + 3) / 8) << name << ", with three seconds spent ahead";
    }
}

TEST_F(CompressorsTest, ColoursOfAnySizeComeBack)
{
    for (const auto& [width, height] : {std::pair{1280, 720}, {640, 480}}) {
        SetUp();
        const auto source = folder / ("quarters-" + std::to_string(width) + ".tga");
        writeQuarters(source, width, height);
        check(
            EngineAs<ITWTimeline>()->SetFrameSize(static_cast<std::int16_t>(width), static_cast<std::int16_t>(height)));
        lay(video, stream(source.string(), true), {0, 40, 0, 40});
        for (const auto& name : allOfPicture()) {
            SCOPED_TRACE(testing::Message() << name << " " << width);
            const bool isDv = name == "DV";
            saved({.video = name, .width = isDv ? 720 : width, .height = isDv ? 576 : height});
            expectReadBack(folder / "movie.avi");
            if (name == "H.264" || name == "Motion JPEG" || name == "Ut Video") {
                const auto frame = testmedia::readMovie(folder / "movie.avi", {.keepRgb = true}).frames.at(0);
                expectQuarters(frame.widthPx, frame.heightPx, "by its tags", [&](int x, int y, int part) {
                    return frame.meanColour({x - 8, y - 8, x + 8, y + 8})[std::size_t(part)];
                });
            }
        }
        saved({.profile = "Video for local area networks (1 Mbps)", .width = width, .height = height}, "movie.wmv");
        expectReadBack(folder / "movie.wmv");
    }
}
