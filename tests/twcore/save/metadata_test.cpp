// The descriptive fields of finished movies, as players see them, and the movies unharmed by them.

#include "twcore/save/save_harness.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <map>
#include <memory>
#include <sys/stat.h>

using namespace savetest;
using testmedia::Movie;

namespace {

namespace fs = std::filesystem;
using Fields = std::map<std::string, std::string>; // by the names that players have for them

using FormatPtr = std::unique_ptr<AVFormatContext, void (*)(AVFormatContext*)>;

FormatPtr opened(const fs::path& path)
{
    AVFormatContext* context = nullptr;
    EXPECT_EQ(avformat_open_input(&context, path.c_str(), nullptr, nullptr), 0) << path;
    return {context, [](AVFormatContext* c) { avformat_close_input(&c); }};
}

Fields shownBy(const fs::path& path)
{
    Fields fields;
    const auto format = opened(path);
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(format->metadata, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr) {
        fields[std::string(entry->key) == "IRTD" ? "rating" : entry->key] = entry->value;
    }
    return fields;
}

/// Sizes and times of the packets of the first stream, read from the middle on by means of the index.
std::string packetsFromTheMiddle(const fs::path& path)
{
    const auto format = opened(path);
    std::string found;
    EXPECT_GE(av_seek_frame(format.get(), 0, format->streams[0]->duration / 2, AVSEEK_FLAG_BACKWARD), 0);
    AVPacket* packet = av_packet_alloc();
    while (av_read_frame(format.get(), packet) >= 0) {
        found += std::to_string(packet->stream_index) + ":" + std::to_string(packet->dts) + "+"
                 + std::to_string(packet->size) + " ";
        av_packet_unref(packet);
    }
    av_packet_free(&packet);
    return found;
}

/// Writes fields as the end of a save does; false when the file cannot carry them.
bool describe(const fs::path& path, const Fields& fields)
{
    using Set = engine::Status (ITWSave::*)(engine::Text);
    const std::map<std::string, Set> setters{{"title", &ITWSave::SetTitle},
                                             {"artist", &ITWSave::SetAuthor},
                                             {"rating", &ITWSave::SetRating},
                                             {"copyright", &ITWSave::SetCopyright},
                                             {"comment", &ITWSave::SetDescription}};
    const bool isOpen = did(&ITWSave::OpenMetadata, path.string());
    for (const auto& [name, text] : fields) {
        check((EngineAs<ITWSave>().get()->*setters.at(name))(text));
    }
    check(EngineAs<ITWSave>()->SaveMetadata());
    return isOpen;
}

class MetadataTest : public SaveTest {
protected:
    /// A second of a movie, in either format by its name.
    fs::path made(const std::string& name)
    {
        layBoth("mjpeg.avi", {0, 1000, 0, 1000});
        saved(name.ends_with(".avi") ? SaveWords{} : SaveWords{.profile = "Video for broadband PAL (384 Kbps)"}, name);
        return folder / name;
    }
};

const Fields kAll{{"title", "Ferien in Köln"},
                  {"artist", "山田 太郎"},
                  {"rating", "PG 😀"},
                  {"copyright", "© 2003 \"A\" & <B>"},
                  {"comment", "Two\nlines"}};

} // namespace

TEST_F(MetadataTest, StandInTheHeaderAndPlayersShowThem)
{
    for (const char* name : {"movie.avi", "movie.wmv"}) {
        SCOPED_TRACE(name);
        SetUp();
        const fs::path path = made(name);
        const std::string before = bytesOf(path);
        EXPECT_EQ(shownBy(path), Fields{}) << "the room itself shows nothing";
        EXPECT_TRUE(describe(path, {}));
        EXPECT_TRUE(bytesOf(path) == before) << "nothing is written when nothing is said";

        EXPECT_TRUE(describe(path, kAll));
        const std::string after = bytesOf(path);
        EXPECT_EQ(shownBy(path), kAll);
        ASSERT_EQ(after.size(), before.size());
        const std::size_t room = 24 * 1024; // the header and what is reserved in it
        EXPECT_TRUE(after.substr(room) == before.substr(room)) << "pictures and sound are where they were";

        EXPECT_TRUE(describe(path, {{"title", "Another"}, {"artist", ""}}));
        Fields changed = kAll;
        changed["title"] = "Another";
        EXPECT_EQ(shownBy(path), changed) << "blank fields leave what is there";
        EXPECT_EQ(fs::file_size(path), before.size());
        EXPECT_EQ(testmedia::readMovie(path).decodeErrors, 0);
    }
}

TEST_F(MetadataTest, TakeAsMuchRoomAsLongTextsNeed)
{
    std::string text;
    for (int i = 0; i < 1500; ++i) {
        text += "Grüße, 世界 😀. ";
    }
    for (const char* name : {"movie.avi", "movie.wmv"}) {
        SCOPED_TRACE(name);
        SetUp();
        const fs::path path = made(name);
        ::chmod(path.c_str(), 0640);
        fs::create_symlink(path, folder / ("link-" + std::string(name)));
        const auto size = fs::file_size(path);
        const std::string packets = packetsFromTheMiddle(path);
        const Movie before = testmedia::readMovie(path);

        EXPECT_TRUE(describe(folder / ("link-" + std::string(name)), {{"comment", text}, {"title", "Long"}}));
        EXPECT_EQ(shownBy(path), (Fields{{"comment", text}, {"title", "Long"}}));
        EXPECT_GT(fs::file_size(path), size);
        EXPECT_TRUE(fs::is_symlink(folder / ("link-" + std::string(name))));
        EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
        EXPECT_EQ(folder.names().size(), name[6] == 'a' ? 2u : 4u) << "no copy is left";
        EXPECT_EQ(packetsFromTheMiddle(path), packets) << "by the index";
        const Movie after = testmedia::readMovie(path);
        EXPECT_EQ(after.numbers(), before.numbers());
        EXPECT_TRUE(after.sound == before.sound);

        const auto grown = fs::file_size(path);
        EXPECT_TRUE(describe(path, kAll));
        EXPECT_EQ(shownBy(path), kAll);
        EXPECT_EQ(fs::file_size(path), grown) << "there is room now";
    }
}

// Files of other programs, with no room, other fields, or B-frames and their own kind of index.
TEST_F(MetadataTest, GoIntoFilesOfOtherPrograms)
{
    for (const char* name : {"mpeg4-b.avi", "h264-b.avi", "uncompressed.avi", "wmv2.wmv", "msmpeg4.asf"}) {
        SCOPED_TRACE(name);
        const fs::path path = folder / name;
        fs::copy_file(medium(name), path);
        const std::string packets = packetsFromTheMiddle(path);
        Fields expected = shownBy(path);
        for (const auto& [field, text] : kAll) {
            expected[field] = text;
        }
        EXPECT_TRUE(describe(path, kAll));
        EXPECT_EQ(shownBy(path), expected);
        EXPECT_EQ(packetsFromTheMiddle(path), packets);
    }
}

TEST_F(MetadataTest, AreRefusedByFilesThatCannotCarryThem)
{
    const std::string avi = bytesOf(made("movie.avi"));
    for (const auto& [name, bytes] : Fields{{"empty.avi", ""},
                                            {"text.wmv", "no movie"},
                                            {"cut.avi", avi.substr(0, 300)},
                                            {"image.png", bytesOf(medium("still.png"))},
                                            {"movie.mp4", bytesOf(medium("h264.mp4"))}}) {
        testmedia::writeBytes(folder / name, bytes);
        EXPECT_FALSE(describe(folder / name, kAll)) << name;
        EXPECT_TRUE(bytesOf(folder / name) == bytes) << name;
    }
    EXPECT_FALSE(describe(folder / "missing.avi", kAll));
    EXPECT_FALSE(fs::exists(folder / "missing.avi"));
    EXPECT_FALSE(describe(folder, kAll));
}

// Movies over a gigabyte have an index of indexes, whose places count from the start of the file:
//
//     RIFF AVI [ LIST hdrl [ LIST strl [ indx -> ix00 ] ] | no room | LIST movi [ 00dc, ix00 -> movi ] idx1 ]
TEST_F(MetadataTest, MoveWhatLargeMoviesPointTo)
{
    const auto number = [](std::uint64_t value, int count) { return testmedia::littleEndian(value, count); };
    using testmedia::chunk;
    const auto file = [&](std::uint64_t ix, std::uint64_t base, std::uint64_t old, const std::string& room) {
        const std::string super = number(4, 2) + number(0, 1) + number(0, 1) + number(1, 4) + "00dc"
                                  + std::string(12, '\0') + number(ix, 8) + number(24, 4) + number(1, 4);
        const std::string part =
            number(2, 2) + number(0, 1) + number(1, 1) + number(0, 4) + "00dc" + number(base, 8) + number(0, 4);
        return chunk("RIFF", "AVI " + chunk("LIST", "hdrl" + chunk("LIST", "strl" + chunk("indx", super))) + room
                                 + chunk("LIST", "movi" + chunk("00dc", "pict") + chunk("ix00", part))
                                 + chunk("idx1", "00dc" + number(16, 4) + number(old, 4) + number(4, 4)));
    };
    const std::uint64_t movi = file(0, 0, 0, "").find("LIST", 40);
    const fs::path path = folder / "large.avi";
    for (const bool isAbsolute : {true, false}) {
        const std::uint64_t old = isAbsolute ? movi + 12 : 4;
        testmedia::writeBytes(path, file(movi + 24, movi, old, ""));
        ASSERT_TRUE(describe(path, {{"title", "Abc"}}));
        const std::string found = bytesOf(path);
        const std::string room = chunk("LIST", "INFO" + chunk("INAM", std::string("Abc\0", 4)));
        ASSERT_EQ(found.substr(movi, room.size()), room);
        const auto growth = found.rfind("LIST") - movi;
        const std::string rest = found.substr(movi + room.size(), growth - room.size());
        EXPECT_TRUE(found == file(movi + 24 + growth, movi + growth, isAbsolute ? old + growth : old, room + rest));
    }
}
