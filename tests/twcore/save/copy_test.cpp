// Pictures that nothing is done to stand in a movie as their medium has them.

#include "twcore/media/picture_reader.h"
#include "twcore/save/packet_rules.h"
#include "twcore/save/save_harness.h"
#include "twcore/save/source_packets.h"

#include <algorithm>
#include <bit>
#include <sys/resource.h>

using namespace savetest;
using testmedia::littleEndianAt;
using testmedia::Movie;

namespace {

// Whole | from the middle of a group | touching cut | a place between two pictures
const std::vector<Place> kPieces{
    {0, 960, 960, 1920}, {1200, 2600, 600, 2000}, {2600, 3100, 0, 500}, {3100, 4000, 1517, 2417}};
constexpr int kGroup = 12;

/// Pictures from the first key frame of each piece on, where one stands at each `group`th.
int copiedOf(const std::vector<Place>& pieces, int group)
{
    int count = 0;
    for (const auto& piece : pieces) {
        for (int ms = (piece.start + 39) / 40 * 40; ms < piece.stop; ms += 40) {
            const int picture = (piece.mediaStart + ms - piece.start) / 40;
            const int first = (piece.mediaStart + (piece.start + 39) / 40 * 40 - piece.start) / 40;
            count += picture >= (first + group - 1) / group * group ? 1 : 0;
        }
    }
    return count;
}

/// The same packets in another kind of file, those of the picture that much later, and with something more.
void putInto(const std::filesystem::path& to, const std::filesystem::path& from, int lateMs = 0,
             const std::string& more = {})
{
    AVFormatContext *in = nullptr, *out = nullptr;
    ASSERT_EQ(avformat_open_input(&in, from.c_str(), nullptr, nullptr), 0);
    ASSERT_GE(avformat_find_stream_info(in, nullptr), 0);
    ASSERT_GE(avformat_alloc_output_context2(&out, nullptr, nullptr, to.c_str()), 0);
    for (unsigned i = 0; i < in->nb_streams; ++i) {
        AVStream* const stream = avformat_new_stream(out, nullptr);
        ASSERT_GE(avcodec_parameters_copy(stream->codecpar, in->streams[i]->codecpar), 0);
        stream->codecpar->codec_tag = 0;
        stream->avg_frame_rate = in->streams[i]->avg_frame_rate;
    }
    ASSERT_GE(avio_open(&out->pb, to.c_str(), AVIO_FLAG_WRITE), 0);
    ASSERT_GE(avformat_write_header(out, nullptr), 0);
    for (auto packet = twcore::makePacket(); av_read_frame(in, packet.get()) >= 0;) {
        const int size = packet->size;
        if (packet->stream_index == 0 && av_grow_packet(packet.get(), static_cast<int>(more.size())) == 0) {
            std::ranges::copy(more, packet->data + size);
        }
        const auto index = static_cast<unsigned>(packet->stream_index);
        packet->dts += index == 0 ? av_rescale_q(lateMs, {1, 1000}, in->streams[0]->time_base) : 0;
        packet->pts = packet->dts;
        av_packet_rescale_ts(packet.get(), in->streams[index]->time_base, out->streams[index]->time_base);
        ASSERT_GE(av_interleaved_write_frame(out, packet.get()), 0);
    }
    av_write_trailer(out);
    avio_closep(&out->pb);
    avformat_free_context(out);
    avformat_close_input(&in);
}

} // namespace

TEST_F(SaveTest, CopiesFromFilesThatTellTimes)
{
    struct Case {
        const char* compressor;
        int group;
        const char* format;
        const char* film;
        int fps; // -1: 30000/1001 of the clip
    };
    for (const auto& [compressor, group, format, film, fps] : {Case{"Motion JPEG", 1, ".mkv", "30p.mp4", -1},
                                                               {"H.264", kGroup, ".mkv", "30p.mp4", -1},
                                                               {"MPEG-4", kGroup, ".mov", "30p.mp4", -1},
                                                               {"FFV1", kGroup, ".mkv", "h264.mp4", 25},
                                                               {"H.264", kGroup, ".mp4", "h264.mp4", 25},
                                                               {"MPEG-4", kGroup, ".mp4", "h264.mp4", 25}}) {
        SCOPED_TRACE(std::string(compressor) + format);
        SetUp();
        const SaveWords words{.video = compressor, .audio = "MP3", .fps = fps, .keyFrameRate = kGroup};
        layBoth(film, {0, 4800, 0, 4800});
        const Movie source = saved(words, "source.avi");
        const auto file = folder / (std::string("source") + format);
        putInto(file, folder / "source.avi");
        SetUp();
        const Handle picture = openStream(openFile(file.string()), 0);
        if (fps < 0) {
            lay(video, picture, {0, 4800, 0, 4800});
            const Movie copied = saved(words, "copied.avi");
            EXPECT_EQ(numbersOf(copied), numbersOf(source));
            EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), copied.frames.size());
            continue;
        }
        for (const auto& piece : kPieces) {
            lay(video, picture, piece);
        }
        EXPECT_EQ(numbersOf(saved(words, "copied.avi")), expectedNumbers(kPieces, 25, 0, 4000));
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), copiedOf(kPieces, group));
    }
}

TEST_F(SaveTest, CopiesBehindTheFramesThatAPictureIsLate)
{
    SaveWords words{.video = "H.264", .keyFrameRate = kGroup};
    layBoth("h264.mp4", {0, 4800, 0, 4800});
    saved(words, "source.avi");
    putInto(folder / "source.mkv", folder / "source.avi", 80);
    SetUp();
    lay(video, openStream(openFile((folder / "source.mkv").string()), 0), {0, 4000, 0, 4000});
    const Movie copied = saved(words, "copied.avi");
    EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 98);
    words.copies = false;
    EXPECT_EQ(numbersOf(saved(words, "encoded.avi")), numbersOf(copied));
    words.rangeStart = 0;
    words.rangeStop = 80;
    EXPECT_EQ(numbersOf(saved(words, "short.avi")), "0 0 ") << "held, also where no more is asked for";
}

TEST_F(SaveTest, CopiesWhatNothingIsDoneTo)
{
    for (const auto& [compressor, group] : {std::pair{"Motion JPEG", 1},
                                            {"Uncompressed", 1},
                                            {"HuffYUV", 1},
                                            {"Ut Video", 1},
                                            {"FFV1", kGroup},
                                            {"MPEG-4", kGroup},
                                            {"H.264", kGroup}}) {
        SCOPED_TRACE(compressor);
        SetUp();
        SaveWords words{.video = compressor, .keyFrameRate = kGroup};
        layBoth("h264.mp4", {0, 4800, 0, 4800});
        saved(words, "source.avi");
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 0) << "the source is another kind";

        const auto layAgain = [&] {
            SetUp();
            const Handle file = openFile((folder / "source.avi").string());
            for (const auto& piece : kPieces) {
                lay(video, openStream(file, 0), piece);
                lay(audio1, openStream(file, 1), piece);
            }
        };
        layAgain();
        const Movie copied = saved(words, "copied.avi");
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), copiedOf(kPieces, group));
        EXPECT_EQ(numbersOf(copied), expectedNumbers(kPieces, 25, 0, 4000));
        expectShift(copied, 0.3, 0.96);
        expectShift(copied, 3.3, -1.583);

        words.copies = false;
        EXPECT_EQ(numbersOf(saved(words, "encoded.avi")), numbersOf(copied));
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 0);
        words.copies = true;
        words.width = 160;
        saved(words, "small.avi");
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 0) << "they are fitted";
        layAgain();
        lay(overlay, openStream(openFile(medium("still.bmp")), 0), {0, 1200, 0, 1200});
        saved({.video = compressor, .keyFrameRate = kGroup}, "covered.avi");
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied),
                  copiedOf(kPieces, group) - copiedOf({kPieces[0]}, group))
            << "something lies over them";
    }
}

TEST_F(SaveTest, WhatIsNotCopiedIsEncodedAsIfNobodyHadLooked)
{
    for (const auto& [compressor, name] : {std::pair{"H.264", "h264-b.avi"}, {"MPEG-4", "mpeg4-b.avi"}}) {
        SCOPED_TRACE(name);
        SetUp();
        lay(video, openStream(openFile(medium(name)), 0), {0, 4000, 0, 4000});
        SaveWords words{.video = compressor};
        saved(words, "copied.avi");
        ASSERT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 0);
        words.copies = false;
        saved(words, "encoded.avi");
        EXPECT_TRUE(bytesOf(folder / "copied.avi") == bytesOf(folder / "encoded.avi"));
    }
}

TEST_F(SaveTest, KeyPicturesThatFollowEachOtherBearOtherNumbers)
{
    SaveWords words{.video = "H.264", .audio = "PCM", .keyFrameRate = 1};
    layBoth("h264.mp4", {0, 4800, 0, 4800});
    saved(words, "source.avi");
    SetUp();
    const Handle file = openFile((folder / "source.avi").string());
    for (const Place& piece : {Place{0, 200, 200, 400}, {200, 320, 200, 320}, {320, 360, 0, 40}, {360, 400, 0, 40}}) {
        lay(video, openStream(file, 0), piece);
    }
    EXPECT_EQ(numbersOf(saved(words, "copied.avi")), "5 6 7 8 9 5 6 7 0 0 ");
    EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 10);
    const std::string film = bytesOf(folder / "copied.avi");
    const std::string slice("\0\0\1\x65\x88", 5); // of a whole picture, the first of these parameters
    std::vector<int> numbers;
    for (auto at = film.find(slice); at != std::string::npos; at = film.find(slice, at + 1)) {
        const std::uint32_t bits = std::uint32_t{littleEndianAt(film, at + 5)};
        const std::uint32_t turned = (bits & 0xFF) << 24 | (bits & 0xFF00) << 8 | (bits >> 8 & 0xFF00) | bits >> 24;
        const int zeros = std::countl_zero(turned << 5); // behind the frame's number
        numbers.push_back(static_cast<int>(turned << (5 + zeros) >> (31 - zeros)) - 1);
    }
    ASSERT_EQ(numbers.size(), 10u);
    EXPECT_EQ(std::ranges::adjacent_find(numbers), numbers.end()) << testing::PrintToString(numbers);
}

TEST_F(SaveTest, KeyFramesOfAFileWithoutAListAreFound)
{
    for (const char* compressor : {"FFV1", "MS-MPEG4 V3", "Windows Media Video 8", "MPEG-4"}) {
        SCOPED_TRACE(compressor);
        SetUp();
        const SaveWords words{.video = compressor, .keyFrameRate = kGroup};
        layBoth("h264.mp4", {0, 4800, 0, 4800});
        saved(words, "source.avi");
        const std::string film = bytesOf(folder / "source.avi");
        const auto list = film.rfind("idx1");
        ASSERT_NE(list, std::string::npos);
        std::string lying = film; // every one a key frame
        for (auto at = list + 12; at + 16 <= film.size(); at += 16) {
            lying[at] = 16;
        }
        for (const std::string& bytes : {film.substr(0, list), lying}) {
            SetUp();
            testmedia::writeBytes(folder / "source.avi", bytes);
            const Handle picture = openStream(openFile((folder / "source.avi").string()), 0);
            for (const auto& piece : kPieces) {
                lay(video, picture, piece);
            }
            EXPECT_EQ(numbersOf(saved(words, "copied.avi")), expectedNumbers(kPieces, 25, 0, 4000));
        }
    }
}

TEST_F(SaveTest, GroupsTooLargeToBeHeldAreReadAgain)
{
    const SaveWords words{.video = "H.264", .audio = "MP3", .keyFrameRate = kGroup};
    layBoth("h264.mp4", {0, 1960, 0, 1960});
    saved(words, "source.avi");
    // 36 MB a group, in remarks that say nothing.
    std::string remark("\0\0\0\1\x06\x05", 6);
    remark +=
        std::string(3'000'000 / 255, '\xFF') + std::string(1, '\0') + std::string(3'000'000 / 255 * 255, 'x') + '\x80';
    putInto(folder / "source.mp4", folder / "source.avi", 0, remark);
    SetUp();
    const std::vector<Place> pieces{{0, 1000, 480, 1480}, {1000, 1880, 80, 960}};
    const Handle picture = openStream(openFile((folder / "source.mp4").string()), 0);
    for (const auto& piece : pieces) {
        lay(video, picture, piece);
    }
    EXPECT_EQ(numbersOf(saved(words, "copied.avi")), expectedNumbers(pieces, 25, 0, 1880));
    EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), copiedOf(pieces, kGroup));
}

TEST_F(SaveTest, CopiesFromMoreFilesThanMayBeOpen)
{
    constexpr int kFiles = 200, kRoom = 120;
    layBoth("h264.mp4", {0, 4800, 0, 4800});
    saved({}, "source.avi");
    SetUp();
    for (int i = 0; i < kFiles; ++i) {
        const auto path = folder / (std::to_string(i) + ".avi");
        std::filesystem::create_hard_link(folder / "source.avi", path);
        lay(video, openStream(openFile(path.string()), 0), {i * 80, i * 80 + 80, 0, 80});
    }
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    using std::filesystem::directory_iterator;
    const auto openNow = std::distance(directory_iterator("/proc/self/fd"), directory_iterator());
    const rlimit few{static_cast<rlim_t>(openNow + kRoom), before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    saved({}, "copied.avi");
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(told<std::int32_t>(&ITWSave::GetFramesCopied), 2 * kFiles);
}

TEST_F(SaveTest, AHoleInAFileIsWhatItIsWithoutCopies)
{
    layBoth("h264.mp4", {0, 4800, 0, 4800});
    saved({}, "source.avi");
    putInto(folder / "source.mkv", folder / "source.avi");
    for (const char* name : {"source.avi", "source.mkv"}) {
        SCOPED_TRACE(name);
        SetUp();
        std::string film = bytesOf(folder / name);
        std::fill_n(film.begin() + static_cast<std::ptrdiff_t>(film.size() * 2 / 5), film.size() / 6, '\0');
        testmedia::writeBytes(folder / name, film);
        lay(video, openStream(openFile((folder / name).string()), 0), {0, 4800, 0, 4800});
        const Movie copied = saved({}, "copied.avi");
        EXPECT_GT(told<std::int32_t>(&ITWSave::GetFramesCopied), 80);
        EXPECT_LT(told<std::int32_t>(&ITWSave::GetFramesCopied), 110);
        EXPECT_EQ(numbersOf(copied), numbersOf(saved({.copies = false}, "encoded.avi")));
    }
}

TEST_F(SaveTest, AKeyFrameCutShortIsTheSamePictureHoweverItIsReached)
{
    layBoth("h264.mp4", {0, 4800, 0, 4800});
    saved({.video = "MPEG-4", .audio = "MP3", .keyFrameRate = kGroup}, "source.avi");
    putInto(folder / "source.mp4", folder / "source.avi");
    std::string film = bytesOf(folder / "source.mp4");
    AVFormatContext* file = nullptr;
    ASSERT_EQ(avformat_open_input(&file, (folder / "source.mp4").c_str(), nullptr, nullptr), 0);
    int key = 0;
    for (auto packet = twcore::makePacket(); av_read_frame(file, packet.get()) >= 0;) {
        constexpr int kFirstBytes = 60;
        if (packet->stream_index == 0 && (packet->flags & AV_PKT_FLAG_KEY) != 0 && key++ == 4) {
            std::fill_n(film.begin() + packet->pos + kFirstBytes, packet->size - kFirstBytes, '\0');
        }
    }
    avformat_close_input(&file);
    testmedia::writeBytes(folder / "source.mp4", film);
    const auto media = twcore::tryMediaFile((folder / "source.mp4").string(), {}).file;
    const auto isSame = [](const twcore::SharedFrame& a, const twcore::SharedFrame& b) {
        return a && b && std::equal(a->data[0], a->data[0] + a->linesize[0] * a->height, b->data[0]);
    };
    twcore::PictureReader straight(media, 1), jumping(media, 1);
    std::vector<twcore::SharedFrame> frames;
    for (int i = 0; i < 120; ++i) {
        frames.push_back(straight.at(i / 25.0 + 0.01));
    }
    for (int k = 0; k < 120; ++k) {
        const int i = k * 49 % 120;
        EXPECT_TRUE(isSame(jumping.at(i / 25.0 + 0.01), frames[static_cast<std::size_t>(i)])) << i;
    }
}

TEST_F(SaveTest, ARemarkInAPictureHoldsForItAlone)
{
    lay(video, stream("h264.mp4", true), {0, 4000, 0, 4000});
    saved({}, "source.avi");
    std::string film = bytesOf(folder / "source.avi");
    const std::string maker("\xFF\xE0\0\x10JFIF", 8);
    const std::string remark("\xFF\xFE\0\x10"
                             "CS=ITU601\0\0\0\0\0",
                             18);
    int count = 0;
    for (auto at = film.find(maker); at != std::string::npos; at = film.find(maker, at + 1)) {
        if (count++ % 20 >= 10) {
            film.replace(at, remark.size(), remark);
        }
    }
    ASSERT_EQ(count, 100);
    testmedia::writeBytes(folder / "mixed.avi", film);
    const auto media = twcore::tryMediaFile((folder / "mixed.avi").string(), {}).file;
    for (const int threads : {1, 2}) {
        twcore::PictureReader reader(media, threads);
        for (int k = 0; k < 2 * count; ++k) {
            const int i = k < count ? k : k * 37 % count;
            const auto frame = reader.at(i / 25.0 + 0.01);
            ASSERT_TRUE(frame);
            EXPECT_EQ(twcore::colourOf(*frame).isFullRange, i % 20 < 10) << i;
        }
    }
}

TEST_F(SaveTest, TheListOfAFileStaysTheSameForAllWhoCopy)
{
    const auto media = twcore::tryMediaFile(medium("mpeg4.avi"), {}).file;
    twcore::SourceLists lists;
    const auto first = lists.of(media, {});
    ASSERT_TRUE(first);
    media->listing->distrust(first); // as one of them does
    EXPECT_EQ(lists.of(media, {}), first);
    EXPECT_NE(twcore::SourceLists().of(media, {}), first);
}

namespace {

/// Of a black picture; and the rules of such a movie.
struct OwnPacket {
    explicit OwnPacket(const std::string& compressor, twcore::PictureSize size)
        : encoding{.compressor = *std::ranges::find(twcore::videoCompressors(), compressor,
                                                    [](const auto& c) { return std::string(c.name); }),
                   .size = size},
          rules(encoding)
    {
        std::string why;
        const auto encoder = twcore::VideoEncoder::open(encoding, 1, why);
        encoder->encode(twcore::PictureFitter(encoding.pictureFormat()).black().get(), 0, packets);
        encoder->encode(nullptr, 0, packets);
    }

    twcore::VideoEncoding encoding;
    twcore::PacketRules rules;
    std::vector<twcore::PacketPtr> packets{};
};

} // namespace

TEST(PacketRules, ALikeStreamOfAnotherKindIsNotOurs)
{
    const OwnPacket mpeg4("MPEG-4", {64, 48});
    AVFormatContext* const file = avformat_alloc_context();
    AVStream* const stream = avformat_new_stream(file, nullptr);
    stream->codecpar->codec_id = AV_CODEC_ID_MPEG4;
    stream->codecpar->width = 64;
    stream->codecpar->height = 48;
    for (const auto& [tag, isOurs] :
         {std::pair{"FMP4", true}, {"mp4v", true}, {"\0\0\0\0", true}, {"XVID", false}, {"DIVX", false}}) {
        stream->codecpar->codec_tag = MKTAG(tag[0], tag[1], tag[2], tag[3]);
        EXPECT_EQ(mpeg4.rules.take(*stream), isOurs) << tag;
    }
    stream->codecpar->height = 64;
    EXPECT_FALSE(mpeg4.rules.take(*stream));
    avformat_free_context(file);

    const OwnPacket dv("DV", {720, 576});
    AVPacket& packet = *dv.packets.front();
    ASSERT_TRUE(dv.rules.take(packet, true));
    for (const auto& [what, at, bit] :
         {std::tuple{"lines a second", 3, 0x80}, {"colour", 4, 1}, {"kind", 451, 1}, {"shape", 453, 2}}) {
        packet.data[at] = static_cast<std::uint8_t>(packet.data[at] ^ bit);
        EXPECT_FALSE(dv.rules.take(packet, true)) << what;
        packet.data[at] = static_cast<std::uint8_t>(packet.data[at] ^ bit);
    }
    packet.size /= 2;
    EXPECT_FALSE(dv.rules.take(packet, true));
}

TEST(PacketRules, DoubtMeansNo)
{
    const OwnPacket own("Motion JPEG", {64, 48});
    const auto& [encoding, rules, packets] = own;
    const AVPacket& good = *packets.front();
    ASSERT_TRUE(rules.take(good, true));
    const auto marker = [&](std::uint8_t kind) {
        for (int at = 2; at + 4 < good.size; at += 2 + (good.data[at + 2] << 8 | good.data[at + 3])) {
            if (good.data[at + 1] == kind) {
                return at;
            }
        }
        return -1;
    };
    constexpr int kFrame = 0xC0, kTables = 0xC4;
    const int frame = marker(kFrame);
    ASSERT_GT(frame, 0);
    struct Case {
        const char* what;
        int at;
        int value;
    };
    for (const Case& c :
         {Case{"another height", frame + 6, 40}, Case{"another width", frame + 8, 80},
          Case{"colour in full", frame + 11, 0x11}, Case{"of another process", frame + 1, 0xC2},
          Case{"another maker's colours", marker(0xE0) + 1, 0xEE}, Case{"turned by its camera", marker(0xE0) + 1, 0xE1},
          Case{"a remark that may steer decoders", marker(0xE0) + 1, 0xFE},
          Case{"another pixel aspect", marker(0xE0) + 13, 7}, Case{"a quantiser of the picture before", frame + 12, 3},
          Case{"a table of the picture before", marker(0xDA) + 6, 0x22},
          Case{"a length that claims too much", marker(kTables) + 2, 0xFF}, Case{"no end", good.size - 1, 1}}) {
        twcore::PacketPtr damaged(av_packet_clone(&good));
        ASSERT_EQ(av_packet_make_writable(damaged.get()), 0);
        damaged->data[c.at] = static_cast<std::uint8_t>(c.value);
        EXPECT_FALSE(rules.take(*damaged, true)) << c.what;
    }
    twcore::PacketPtr flagged(av_packet_clone(&good));
    flagged->flags |= AV_PKT_FLAG_CORRUPT;
    EXPECT_FALSE(rules.take(*flagged, true));
    twcore::PacketPtr cut(av_packet_clone(&good));
    for (cut->size = 0; cut->size < good.size; ++cut->size) {
        ASSERT_FALSE(rules.take(*cut, true)) << cut->size;
    }
}
