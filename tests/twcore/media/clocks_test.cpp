// Files whose stamps do not run on: joined, recorded over the end of the clock, with holes, damaged, or with no stamps.

#include "twcore/media/media_harness.h"
#include "twcore/media/stamp_scan.h"

#include <cstdlib>
#include <numeric>
#include <random>

using namespace testmedia;
using namespace twcore;

namespace {

constexpr int kRate = 48000;
constexpr int kFrames = 125; // of each part, 25 a second

/// Adds to every stamp of a transport stream: the 33 bits of presentation, of decoding and of the clock reference.
std::string withClock(std::string ts, std::uint64_t add)
{
    const auto move = [&](std::size_t at) {
        const auto byte = [&](std::size_t i) { return std::uint64_t{static_cast<std::uint8_t>(ts[at + i])}; };
        const std::uint64_t stamp =
            (byte(0) >> 1 & 7) << 30 | byte(1) << 22 | (byte(2) >> 1) << 15 | byte(3) << 7 | byte(4) >> 1;
        const std::uint64_t moved = (stamp + add) & ((std::uint64_t{1} << 33) - 1);
        ts[at] = static_cast<char>((byte(0) & 0xF0) | (moved >> 30) << 1 | 1);
        ts[at + 1] = static_cast<char>(moved >> 22);
        ts[at + 2] = static_cast<char>((moved >> 15) << 1 | 1);
        ts[at + 3] = static_cast<char>(moved >> 7);
        ts[at + 4] = static_cast<char>(moved << 1 | 1);
    };
    for (std::size_t at = 0; at + 188 <= ts.size(); at += 188) {
        const bool hasField = (ts[at + 3] & 0x20) != 0;
        const std::size_t start = at + 4 + (hasField ? 1 + static_cast<std::uint8_t>(ts[at + 4]) : 0);
        if ((ts[at + 1] & 0x40) == 0 || start + 19 > at + 188 || ts.compare(start, 3, std::string("\0\0\1", 3)) != 0) {
            continue;
        }
        const int flags = static_cast<std::uint8_t>(ts[start + 7]) >> 6;
        if (flags >= 2) {
            move(start + 9);
        }
        if (flags == 3) {
            move(start + 14);
        }
    }
    return ts;
}

/// A transport stream that has lost one of its streams: 0x100 is the picture, 0x101 the sound.
std::string without(const std::string& ts, int lost)
{
    std::string kept;
    for (std::size_t at = 0; at + 188 <= ts.size(); at += 188) {
        const int id = (static_cast<std::uint8_t>(ts[at + 1]) & 0x1F) << 8 | static_cast<std::uint8_t>(ts[at + 2]);
        kept += id != lost ? ts.substr(at, 188) : std::string();
    }
    return kept;
}

/// Of the picture, in ms; -1 for none.
int lengthMs(const std::string& bytes)
{
    const MadeFile made(bytes);
    return made.media && made.media->picture ? made.media->picture->durationMs : -1;
}

bool beginsAPicture(const std::string& ts, std::size_t packet)
{
    return (ts[packet + 1] & 0x5F) == 0x41 && ts[packet + 2] == 0;
}

int numberAt(PictureReader& reader, double seconds) { return shownNumber(reader.at(seconds), reader.media()); }

/// By how much the sound at a time is off from that moment of the pattern; 9 for anything else.
double soundOff(SoundSource& source, double seconds, double moment)
{
    std::vector<float> block(static_cast<std::size_t>(kRate / 5) * 2);
    source.read(std::llround(seconds * kRate), block);
    const auto match = locate({block.data(), block.size() / 2, kRate, 2}, 0, moment - 0.2, moment + 0.2);
    return match.score > 0.4 ? match.seconds - moment : 9;
}

void expectJoined(const MediaFilePtr& media, int parts)
{
    ASSERT_TRUE(media && media->picture && media->sound);
    const double first = media->picture->startSeconds - media->zeroSeconds;
    EXPECT_NEAR(media->picture->durationMs, 1000 * first + parts * 5000, 2);
    std::vector<int> order(static_cast<std::size_t>(parts * kFrames));
    std::iota(order.begin(), order.end(), 0);
    PictureReader forward(media, 1);
    for (const int i : order) {
        ASSERT_EQ(numberAt(forward, first + i / 25.0 + 0.013), i % kFrames) << "picture " << i;
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(7)); // NOLINT: the same order in every run
    PictureReader jumping(media, 1);
    const auto straight = openSound(media, kRate, {});
    const auto jumped = openSound(media, kRate, {});
    for (int i = 0; i < 40; ++i) {
        const int wanted = order[static_cast<std::size_t>(i)];
        ASSERT_EQ(numberAt(jumping, first + wanted / 25.0 + 0.013), wanted % kFrames) << "picture " << wanted;
    }
    for (double at = 0.3; at < 5 * parts; at += 0.7) {
        const double moment = std::fmod(at - first, 5);
        if (moment > 0.1 && moment < 4.7) {
            EXPECT_NEAR(soundOff(*straight, at, moment), 0, 0.002) << "at " << at;
            const double back = 5 * parts - at - 0.3;
            const double backMoment = std::fmod(back - first, 5);
            if (backMoment > 0.1 && backMoment < 4.7) {
                EXPECT_NEAR(soundOff(*jumped, back, backMoment), 0, 0.002) << "jumping to " << back;
            }
        }
    }
}

} // namespace

TEST(Clocks, PartsThatBeginAnewAreOneFilm)
{
    constexpr std::uint64_t kSecond = 90000;
    constexpr std::uint64_t kEnd = std::uint64_t{1} << 33;
    const std::string h264 = bytesOf(medium("h264.ts"));
    const std::string mpeg2 = bytesOf(medium("mpeg2.ts"));
    const std::string program = bytesOf(medium("mpeg2-open-gop.mpg"));
    const std::string old = bytesOf(medium("mpeg1.mpg"));
    struct Case {
        const char* name;
        std::string bytes;
        int parts;
    };
    for (const auto& [name, bytes, parts] :
         {Case{"programme streams", program + program, 2}, Case{"three older ones", old + old + old, 3},
          Case{"a recording", h264 + h264, 2}, Case{"a clock set forward", mpeg2 + withClock(mpeg2, 1000 * kSecond), 2},
          Case{"a clock set back", withClock(h264, 1000 * kSecond) + h264, 2},
          Case{"over the counter's end", withClock(h264, kEnd - 3 * kSecond), 1},
          Case{"over the end, and anew", withClock(mpeg2, kEnd - 3 * kSecond) + mpeg2, 2}}) {
        SCOPED_TRACE(name);
        expectJoined(MadeFile(bytes).media, parts);
    }
}

TEST(Clocks, PartsWithoutSoundOrPictureKeepTheirLength)
{
    const std::string both = bytesOf(medium("mpeg2.ts"));
    const std::string mute = without(both, 0x101);
    const std::string blind = without(both, 0x100);
    struct Case {
        const char* name;
        std::string bytes;
        int parts;
    };
    for (const auto& [name, bytes, parts] :
         {Case{"v+av", mute + both, 2}, Case{"av+v+av", both + mute + both, 3}, Case{"v+av+v", mute + both + mute, 3},
          Case{"av+av+v+av", both + both + mute + both, 4}, Case{"av+s+av", both + blind + both, 3}}) {
        SCOPED_TRACE(name);
        const MadeFile made(bytes);
        ASSERT_TRUE(made.media && made.media->picture && made.media->sound);
        EXPECT_NEAR(made.media->picture->durationMs, parts * 5000, 60);
        const int whole = bytes.ends_with(mute) ? parts - 1 : parts; // the last part that has both
        const double start = (whole - 1) * 5.0 + made.media->picture->startSeconds - made.media->zeroSeconds;
        PictureReader pictures(made.media, 1);
        EXPECT_EQ(numberAt(pictures, start + 1.036), 25); // sound is a little longer than its picture
        EXPECT_NEAR(soundOff(*openSound(made.media, kRate, {}), start + 2, 2), 0, 0.04);
    }
}

TEST(Clocks, WhereTimeIsShortBreaksAreFoundFromAFewPlaces)
{
    constexpr int kPieces = 40; // of five seconds, in each part
    const std::string piece = bytesOf(medium("mpeg2.ts"));
    std::string part;
    for (std::uint64_t i = 0; i < kPieces; ++i) {
        part += withClock(piece, i * 5 * 90000);
    }
    const MadeFile made(part + withClock(part, std::uint64_t{1000} * 90000) + part);
    std::uint32_t error = 0;
    const auto scan = [&](auto how) {
        const auto file = InputFile::open(made.path, {}, error);
        return file && file->readStreamInfo() ? how(*file, std::array{0, 1}) : Scan{};
    };
    const Scan whole = scan(brokenScan);
    const Scan sampled = scan(sampledScan);
    ASSERT_TRUE(made.media && whole.breaks && sampled.breaks);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(sampled.ends[i] - made.media->zeroSeconds, 3 * kPieces * 5, 0.2);
        ASSERT_EQ(sampled.breaks->shifts[i].size(), whole.breaks->shifts[i].size());
        for (std::size_t k = 0; k < whole.breaks->shifts[i].size(); ++k) {
            EXPECT_NEAR(static_cast<double>(sampled.breaks->shifts[i][k].ticks),
                        static_cast<double>(whole.breaks->shifts[i][k].ticks), 9000); // a tenth of a second
        }
    }
    MediaFile opened = *made.media; // as it is where there was no time
    opened.breaks = sampled.breaks;
    opened.listing.reset();
    const auto source = openSound(std::make_shared<const MediaFile>(opened), kRate, {});
    for (const double at : {3.0 * kPieces * 5 - 3, 2.0 * kPieces * 5 + 2, 2.0}) {
        EXPECT_NEAR(soundOff(*source, at, std::fmod(at, 5)), 0, 0.2) << at;
    }
}

TEST(Clocks, AShortPartBehindALargeOneIsFound)
{
    constexpr std::uint64_t kPieces = 20; // of five seconds, far apart in the file
    const std::string piece = bytesOf(medium("mpeg2.ts"));
    std::string padding;
    for (std::size_t i = 0; i < (50 << 20) / kPieces / 188; ++i) {
        padding += std::string("\x47\x1F\xFF\x10", 4) + std::string(184, '\xFF');
    }
    std::string large;
    for (std::uint64_t i = 0; i < kPieces; ++i) {
        large += padding + withClock(piece, i * 5 * 90000);
    }
    const std::string part = piece.substr(0, std::size_t{188} * 400);
    ASSERT_GT(lengthMs(part), 0);
    EXPECT_NEAR(lengthMs(large + part), kPieces * 5000 + lengthMs(part), 100);
}

TEST(Clocks, AHoleOfAnHourIsSilenceThatCostsNothing)
{
    const auto media = opened("sound-hole.mkv");
    ASSERT_TRUE(media && media->sound);
    EXPECT_NEAR(media->sound->durationMs, 3605000, 100);
    for (const int rate : {kRate, 44100}) { // without a converter's anchors, and with them
        const auto source = openSound(media, rate, {});
        std::vector<float> second(static_cast<std::size_t>(rate) * 2);
        for (int i = 0; i < 3603; ++i) {
            source->read(std::int64_t{i} * rate, second);
            const bool isSilent = std::ranges::all_of(second, [](float s) { return s == 0; });
            ASSERT_EQ(isSilent, i >= 3 && i < 3602) << i;
        }
    }
    const auto source = openSound(media, kRate, {});
    for (const double at : {1.0, 3603.0, 0.5, 3602.5}) {
        const double moment = std::fmod(at, 3600) - (media->picture->startSeconds - media->zeroSeconds);
        EXPECT_NEAR(soundOff(*source, at, moment), 0, 0.002) << at;
    }
}

TEST(Clocks, ADamagedStampMakesNoFilmOfDays)
{
    const std::string avi = bytesOf(medium("mpeg4.avi"));
    const auto withSeconds = [&](int of) { return patched(avi, "vids", 16, littleEndian(of) + littleEndian(1)); };
    const MadeFile slow(withSeconds(40'000)); // eleven hours a picture
    ASSERT_TRUE(slow.media && slow.media->picture && slow.media->sound);
    EXPECT_LT(slow.media->picture->durationMs, 6000) << "longer than the file's own header allows";
    PictureReader counted(slow.media, 1);
    EXPECT_EQ(numberAt(counted, 3.013), 75) << "the times are not those of the rate in its place";
    EXPECT_NEAR(slow.media->sound->durationMs, 5000, 80);

    // As if it went on in further parts, one picture in 20 s.
    std::string parts = patched(withSeconds(20), "avih", 4, littleEndian(20'000'000));
    parts = patched(parts, "avih", 20, littleEndian(1));
    parts.replace(parts.find("odml") - 8, 4, "LIST");
    EXPECT_NEAR(lengthMs(patched(parts, "dmlh", 4, littleEndian(125))), 125 * 20'000, 20'000);
    // 40 s from picture to picture, and the main header counts two of them.
    const std::string still = patched(withSeconds(40), "avih", 4, littleEndian(40'000'000));
    EXPECT_NEAR(lengthMs(patched(still, "avih", 20, littleEndian(2))), 125 * 40'000, 40'000);

    std::string ts = bytesOf(medium("mpeg2.ts"));
    std::size_t next = ts.size() / 376 * 188;
    while (!beginsAPicture(ts, next)) {
        next += 188;
    }
    ts.replace(next, 188, withClock(ts.substr(next, 188), std::uint64_t{1} << 31)); // six hours
    EXPECT_NEAR(lengthMs(ts), 5010, 60);

    const std::string whole = bytesOf(medium("h264.ts"));
    std::string late = whole;
    for (std::size_t at = late.size() / 376 * 188; at + 188 <= late.size(); at += 188) {
        const std::size_t stamp = late.find(std::string("\0\0\1\xE0", 4), at) + 9;
        if (stamp < at + 188 && (late[stamp - 2] & 0xC0) == 0xC0) {
            late[stamp + 1] = static_cast<char>(late[stamp + 1] ^ 1); // of showing alone, some three minutes
            break;
        }
    }
    EXPECT_NE(late, whole);
    EXPECT_NEAR(lengthMs(late), lengthMs(whole), 60);
}

TEST(Clocks, TheLastPictureBehindALongStillKeepsItsTime)
{
    const std::string ts = bytesOf(medium("mpeg2.ts"));
    std::size_t last = ts.size() - 188;
    while (!beginsAPicture(ts, last)) {
        last -= 188;
    }
    std::string held = ts.substr(0, last);
    for (std::uint64_t i = 1; i < 12; ++i) {
        held += withClock(without(ts, 0x100), i * 5 * 90000);
    }
    held += withClock(without(ts.substr(last), 0x101) + without(ts, 0x100), std::uint64_t{60} * 90000);
    EXPECT_NEAR(lengthMs(held), 65010, 60);
    EXPECT_NEAR(lengthMs(without(held, 0x101)), 65010, 60);
    const std::string damaged = ts.substr(0, last) + withClock(ts.substr(last, 188), std::uint64_t{60} * 90000);
    const std::string sound = withClock(without(ts, 0x100), std::uint64_t{5} * 90000);
    EXPECT_NEAR(lengthMs(damaged + ts.substr(last + 188) + sound), 5010, 60) << "the sound behind it denies the stamp";
}

TEST(Clocks, SoundThatBeginsMinutesLaterIsOffered)
{
    const auto trial = tryMediaFile(medium("late-sound.mp4"), {});
    ASSERT_TRUE(trial.file && trial.file->sound);
    EXPECT_EQ(trial.error, 0u);
    EXPECT_NEAR(trial.file->sound->durationMs, 185000, 100);
    const auto source = openSound(trial.file, kRate, {});
    EXPECT_NEAR(soundOff(*source, 182, 2), 0, 0.03);
}
