// Pictures and sound by time, over every kind of file that the generator makes: at any media time the frame whose
// interval holds it, and the very samples of that moment, in whatever order they are asked for.

#include "support/media_recipes.h"
#include "support/movie_reader.h"
#include "twcore/media/media_harness.h"

#include <array>
#include <functional>
#include <random>

using namespace testmedia;
using namespace twcore;

namespace {

/// Where a file's first picture and first sample stand, in seconds of media time, as a straight decode tells.
struct Starts {
    double picture = 0;
    double sound = 0;
};
Starts startsOf(const MediaEntry& entry)
{
    const Movie movie = readMovie(mediaFolder() / entry.name);
    if (movie.format == "avi" || movie.frames.empty() || movie.soundCodec.empty()) {
        return {};
    }
    const double picture = movie.frames.front().seconds;
    const double zero = std::min(picture, movie.soundStartSeconds);
    return {picture - zero, movie.soundStartSeconds - zero};
}

/// When picture i begins behind the first one, in seconds.
double startOfPicture(const MediaEntry& entry, int i)
{
    return entry.note("times").empty() ? i / entry.framesPerSecond() : irregularMs(i) / 1000.0;
}

/// The bar code that is to be seen so many seconds behind the beginning of the first picture.
int numberAt(const MediaEntry& entry, double seconds)
{
    int i = 0;
    while (i + 1 < entry.frames && startOfPicture(entry, i + 1) <= seconds) {
        ++i;
    }
    int number = entry.firstNumber + i;
    if (const std::string dropped = entry.note("dropped"); !dropped.empty()) {
        const int from = std::stoi(dropped);
        const int to = std::stoi(dropped.substr(dropped.rfind('.') + 1));
        number = number >= from && number <= to ? from - 1 : number;
    }
    return number;
}

std::vector<MediaEntry> entriesWithPicture()
{
    auto entries = readManifest();
    std::erase_if(entries, [](const auto& e) { return e.frames == 0 || e.kind == "still" || e.has("alias"); });
    return entries;
}

constexpr double kAsked = 0.013; // inside a frame, away from its edges

/// Whether the reader rested now and then.
bool findsFramesInAnyOrder(const MediaEntry& entry, const MediaFilePtr& media)
{
    if (!media || !media->picture) {
        ADD_FAILURE() << "no picture";
        return false;
    }
    bool rested = false;
    std::vector<double> times;
    for (int i = 0; i < entry.frames; ++i) {
        times.push_back(startOfPicture(entry, i) + std::min(kAsked, 0.3 / entry.framesPerSecond()));
    }
    std::shuffle(times.begin(), times.end(), std::mt19937(7)); // NOLINT: the same order in every run
    times.resize(std::min<std::size_t>(times.size(), 40));
    PictureReader reader(media, 2);
    const double first = startsOf(entry).picture;
    for (int asked = 0; const double time : times) {
        EXPECT_EQ(shownNumber(reader.at(first + time), *media), numberAt(entry, time)) << "at " << time;
        rested = (++asked % 3 == 0 && reader.rest()) || rested;
    }
    reader.rest();
    EXPECT_EQ(shownNumber(reader.at(first), *media), numberAt(entry, 0)) << "the first picture behind a rest";
    return rested;
}

/// As a large file is: with nothing listed by its trial.
MediaFilePtr unlisted(const MediaFilePtr& media, const std::filesystem::path& path)
{
    auto copy = std::make_shared<MediaFile>(*media);
    copy->path = path.string();
    copy->listing = listingFor(*copy);
    return copy;
}

/// An AVI of two streams as files over 1 GB are: in two parts, with a list of each stream behind each part, a list of
/// those in the head where there was room left for it, and none at the end.
std::string inTwoParts(std::string avi)
{
    const auto movi = avi.find("movi");
    const auto idx1 = avi.rfind("idx1");
    const std::size_t count = (avi.size() - idx1 - 8) / 16;
    std::string film = avi.substr(0, movi - 8);
    std::array<std::string, 2> lists;
    for (std::size_t part = 0; part < 2; ++part) {
        const std::size_t before = part == 0 ? 0 : film.size() + 12;
        std::string body = "movi";
        std::array<std::string, 2> entries;
        const std::size_t base = (part == 0 ? film.size() : before) + 8;
        for (std::size_t i = part * count / 2; i < (part == 0 ? count / 2 : count); ++i) {
            const std::size_t entry = idx1 + 8 + 16 * i;
            const std::size_t size = littleEndianAt(avi, entry + 12);
            const bool isKey = (littleEndianAt(avi, entry + 4) & 16) != 0;
            entries[avi[entry + 1] == '1'] +=
                littleEndian(body.size() + 8) + littleEndian(size | (isKey ? 0 : 1u << 31));
            body += avi.substr(movi + littleEndianAt(avi, entry + 8), 8 + size + size % 2);
        }
        for (std::size_t i = 0; i < 2; ++i) {
            const std::string of = i == 0 ? "00dc" : "01wb";
            lists[i] += littleEndian(base + body.size(), 8) + littleEndian(entries[i].size() + 32)
                        + littleEndian(entries[i].size() / 8);
            body += chunk("ix0" + std::to_string(i), littleEndian(2, 2) + littleEndian(256, 2)
                                                         + littleEndian(entries[i].size() / 8) + of
                                                         + littleEndian(base, 8) + littleEndian(0) + entries[i]);
        }
        film += part == 0 ? chunk("LIST", body) : chunk("RIFF", "AVIX" + chunk("LIST", body));
        if (part == 0) {
            film.replace(4, 4, littleEndian(film.size() - 8));
        }
    }
    for (std::size_t i = 0, at = 0; i < 2; ++i) {
        at = film.find("JUNK", at + 1); // one behind each stream's head
        const std::string list =
            littleEndian(4) + littleEndian(2) + (i == 0 ? "00dc" : "01wb") + std::string(12, '\0') + lists[i];
        film.replace(at, 4, "indx").replace(at + 8, list.size(), list);
    }
    return film;
}

/// The entries of idx1 pass through `change`: name, flags, place, size, of four bytes each.
std::string withList(std::string avi, const std::function<void(std::vector<std::string>&)>& change)
{
    const auto at = avi.rfind("idx1");
    std::vector<std::string> entries;
    for (auto place = at + 8; place + 16 <= avi.size(); place += 16) {
        entries.push_back(avi.substr(place, 16));
    }
    change(entries);
    std::string list;
    for (const auto& entry : entries) {
        list += entry;
    }
    avi.replace(at, std::string::npos, "idx1" + littleEndian(list.size()) + list);
    return avi.replace(4, 4, littleEndian(avi.size() - 8));
}

} // namespace

TEST(PictureReader, FindsTheFrameOfATimeInAnyOrder)
{
    int rested = 0;
    for (const auto& entry : entriesWithPicture()) {
        SCOPED_TRACE(entry.name);
        const auto media = opened(entry.name);
        rested += findsFramesInAnyOrder(entry, media);
        if (media && media->listing) {
            SCOPED_TRACE("not listed by its trial");
            EXPECT_FALSE(findsFramesInAnyOrder(entry, unlisted(media, media->path)));
        }
    }
    EXPECT_GT(rested, 3) << "H.264 in MP4 rests";
}

TEST(PictureReader, GoesOnWhereItWasPausedAndTellsWhatItPassed)
{
    for (const auto& entry : entriesWithPicture()) {
        SCOPED_TRACE(entry.name);
        const auto media = opened(entry.name);
        const double first = startsOf(entry).picture;
        Pause pause;
        PictureReader reader(media, 2, Patience{.pause = &pause});
        int passedCount = 0;
        reader.onTheWay([&](const PictureReader::Passed& passed) {
            if (++passedCount % 8 == 0) {
                const int number = shownNumber(passed.frame, *media);
                EXPECT_EQ(number, numberAt(entry, passed.start - first + 0.002)) << passed.start;
                if (passed.end > passed.start + 0.004) { // else it is not known
                    EXPECT_EQ(number, numberAt(entry, passed.end - first - 0.003)) << passed.start << " " << passed.end;
                }
            }
        });
        for (const int number : {entry.frames * 2 / 3, entry.frames / 3, entry.frames - 1}) {
            const double time = startOfPicture(entry, number) + std::min(kAsked, 0.3 / entry.framesPerSecond());
            if (number == entry.frames / 3) {
                reader.decodeAllFrom(0);
            }
            SharedFrame frame;
            int turns = 0;
            do {
                pause.end = std::chrono::steady_clock::now(); // a turn of one picture
                frame = reader.at(first + time);
            } while (reader.isPaused() && ++turns < 2 * entry.frames);
            EXPECT_EQ(shownNumber(frame, *media), numberAt(entry, time)) << "at " << time << " after " << turns;
        }
        (void)reader.at(first + startOfPicture(entry, entry.frames / 2)); // which pauses, but for key frames
        (void)reader.at(-1);
        EXPECT_FALSE(reader.isPaused()); // there is nothing to go on with
    }
}

TEST(PictureIndex, TheListOfAnAviSaysWhatItsPacketsSay)
{
    for (const char* name : {"mpeg4.avi", "mpeg4-b.avi", "mpeg4-b-packed.avi", "h264-b.avi", "dropped.avi", "mjpeg.avi",
                             "uncompressed.avi", "dv-pal.avi", ""}) {
        SCOPED_TRACE(name);
        const bool isLong = std::string(name).empty();
        const auto original = medium(isLong ? "mpeg4-b.avi" : name);
        const MadeFile file(isLong ? inTwoParts(bytesOf(original)) : bytesOf(original));
        const auto& media = file.media;
        const auto told = PictureIndex::fromFile(*media, {});
        const auto read = PictureIndex::build(*media, {});
        ASSERT_TRUE(told && read);
        ASSERT_EQ(told->count(), read->count());
        EXPECT_GT(told->count(), isLong ? 124u : 40u);
        for (std::size_t k = 0; k < read->count(); ++k) {
            const std::size_t i = (k * 37 + 60) % read->count(); // groups apart, and back
            EXPECT_EQ(told->identify(read->packet(i).position, 0, read->packet(i).byteCount), i);
            EXPECT_EQ(told->slotOf(i), read->slotOf(i)) << i;
            EXPECT_EQ(told->startOfSlot(i), read->startOfSlot(i)) << i;
            EXPECT_EQ(told->keyOrdinalFor(i), read->keyOrdinalFor(i)) << i;
        }
    }
    EXPECT_EQ(PictureIndex::fromFile(*opened("no-index.avi"), {}), nullptr);
}

TEST(PictureReader, IsNotMisledByTheListOfAnAvi)
{
    using List = std::vector<std::string>;
    const auto isPicture = [](const std::string& entry) { return entry.starts_with("00"); };
    // 50 entries on, a picture.
    const auto picture = [&](List& list) { return std::find_if(list.begin() + 50, list.end(), isPicture); };
    const std::vector<std::pair<const char*, std::function<void(List&)>>> lies{
        {"half of it", [](List& list) { list.resize(list.size() / 2); }},
        {"a picture left out", [&](List& list) { list.erase(picture(list)); }},
        {"every one a key frame", [](List& list) { std::ranges::for_each(list, [](auto& e) { e[4] = 16; }); }},
        {"key frames beside the right ones",
         [&](List& list) {
             for (int i = 0; auto& entry : list) {
                 entry[4] = isPicture(entry) && i++ % 12 == 1 ? 16 : 0;
             }
             list.front()[4] = 16;
         }},
        {"elsewhere", [&](List& list) { picture(list)->replace(8, 4, littleEndian(1000)); }},
        {"of another size", [&](List& list) { ++(*picture(list))[12]; }},
    };
    for (const char* name : {"mpeg4-b.avi", "h264-b.avi"}) {
        const auto entry = mediaEntry(name);
        for (const auto& [lie, tell] : lies) {
            SCOPED_TRACE(std::string(name) + ", " + lie);
            const OwnFile file(withList(bytesOf(medium(name)), tell));
            findsFramesInAnyOrder(entry, unlisted(opened(entry.name), file.path));
        }
    }
}

TEST(PictureReader, WaitsForAListAsLongAsItIsToldTo)
{
    // A hole in front of the film's last pictures, which are there twice, so that the list takes a while.
    const auto entry = mediaEntry("mpeg2-open-gop.mpg");
    const std::string film = bytesOf(medium(entry.name));
    const OwnFile file(film + std::string(std::size_t{160} << 20, '\0') + film.substr(film.size() * 9 / 10));
    const auto media = unlisted(opened(entry.name), file.path);
    const double first = startsOf(entry).picture + kAsked;

    PictureReader inAHurry(media, 1, Patience{.takesNear = true});
    do { // what the list's beginning knows is exact before the list is whole; a key frame is there until then
        EXPECT_GE(shownNumber(inAHurry.at(first + 0.4), *media), 0);
    } while (inAHurry.isNear());
    EXPECT_EQ(shownNumber(inAHurry.at(first + 0.4), *media), numberAt(entry, 0.4));
    const Patience none{.deadline = std::chrono::steady_clock::now()};
    EXPECT_EQ(media->listing->upTo(media->zeroSeconds + first + 3, *media, none), nullptr);
    EXPECT_TRUE(media->listing->isComing());
    EXPECT_GE(shownNumber(inAHurry.at(first + 3), *media), 0);

    PictureReader patient(media, 1);
    EXPECT_EQ(shownNumber(patient.at(first + 3), *media), numberAt(entry, 3));
    EXPECT_EQ(shownNumber(inAHurry.at(first + 3), *media), numberAt(entry, 3));
    EXPECT_FALSE(inAHurry.isNear());
}

TEST(PictureReader, ReadsForwardFrameByFrameAndHoldsTheEdges)
{
    for (const auto& entry : entriesWithPicture()) {
        SCOPED_TRACE(entry.name);
        const auto media = opened(entry.name);
        ASSERT_TRUE(media && media->picture);
        PictureReader reader(media, 1);
        const double first = startsOf(entry).picture;
        for (int i = 0; i < entry.frames; i += i < 30 ? 1 : 7) {
            const double start = startOfPicture(entry, i); // the beginning belongs to the frame
            EXPECT_EQ(shownNumber(reader.at(first + start), *media), numberAt(entry, start + 1e-6)) << "picture " << i;
        }
        const double end = first + startOfPicture(entry, entry.frames - 1) + 1 / entry.framesPerSecond();
        EXPECT_EQ(shownNumber(reader.at(end - 0.004), *media), entry.firstNumber + entry.frames - 1);
        EXPECT_EQ(shownNumber(reader.at(end + 0.3), *media), -1) << "behind the end";
        EXPECT_NEAR(media->picture->durationMs, 1000 * end, 60) << "length";
    }
}

TEST(PictureReader, IsBlackBeforeAPictureThatBeginsLater)
{
    const auto entry = mediaEntry("video-later.mkv");
    const auto media = opened(entry.name);
    PictureReader reader(media, 1);
    const double first = startsOf(entry).picture;
    EXPECT_NEAR(first, 0.5, 0.03);
    EXPECT_EQ(reader.at(0.1), nullptr);
    EXPECT_EQ(shownNumber(reader.at(first), *media), 0);
    EXPECT_EQ(reader.at(0.1), nullptr) << "also when going back";
}

TEST(PictureReader, ShowsAStillTurnedAsItsCameraNoted)
{
    for (const auto& entry : readManifest()) {
        if (entry.kind != "still") {
            continue;
        }
        SCOPED_TRACE(entry.name);
        const auto media = opened(entry.name);
        ASSERT_TRUE(media && media->picture);
        EXPECT_TRUE(media->picture->isStill);
        EXPECT_EQ(media->picture->durationMs, kStillMs);
        PictureReader reader(media, 1);
        EXPECT_EQ(shownNumber(reader.at(4.9), *media), entry.firstNumber);
        EXPECT_EQ(reader.at(5.1), nullptr);
    }
}

TEST(PictureReader, ShowsBitmapsWhoseFourthByteMeansNothing)
{
    // Flat, 32 bits a pixel, the last byte 0, and no alpha bits in the header; or eight, and then it counts.
    for (const auto& [alphaBits, shown] : {std::pair{'\0', 192}, {'\x08', 0}}) {
        std::string bytes("\0\0\x02\0\0\0\0\0\0\0\0\0\x40\0\x40\0\x20", 17);
        bytes += alphaBits;
        for (int i = 0; i < 64 * 64; ++i) {
            bytes += std::string("\x28\xC0\x3C\0", 4);
        }
        const MadeFile file(bytes, "flat.tga");
        const auto& media = file.media;
        ASSERT_TRUE(media && media->picture);
        PictureFitter fitter({{64, 64}, AV_PIX_FMT_BGR24, {Matrix::kRgb, true}});
        const auto picture = fitter.fit(PictureReader(media, 1, {}).at(0), *media->picture, {{0, 0, 64, 64}});
        EXPECT_EQ(picture->data[0][1], shown);
    }
}

TEST(SoundSource, GivesTheSamplesOfATimeInAnyOrder)
{
    constexpr int kRate = 48000;
    for (const auto& entry : readManifest()) {
        if (entry.rateHz == 0 || entry.has("alias")) {
            continue;
        }
        SCOPED_TRACE(entry.name);
        const auto media = opened(entry.name);
        ASSERT_TRUE(media && media->sound);
        EXPECT_EQ(media->sound->rate, entry.rateHz);
        EXPECT_EQ(media->sound->channels, entry.channels);
        EXPECT_NEAR(media->sound->durationMs, 1000 * (entry.durationSeconds - entry.noteNumber("video-start")), 80);
        const auto source = openSound(media, kRate, {});
        const Starts starts = startsOf(entry);
        const double end = entry.durationSeconds - 0.3;
        const double start = starts.sound;
        for (const double share : {0.0, 0.5, 0.51, 0.2, 0.95, 0.05}) {
            const double at = start + 0.02 + share * (end - start - 0.02);
            std::vector<float> block(static_cast<std::size_t>(kRate / 5) * 2);
            source->read(std::llround(at * kRate), block);
            const double asked = static_cast<double>(std::llround(at * kRate)) / kRate;
            const double fromPicture = entry.frames > 0 ? starts.picture : 0;
            const double expected = asked - fromPicture + entry.noteNumber("sound-lag")
                                    + entry.noteNumber("media-start") + entry.noteNumber("video-start")
                                    - entry.noteNumber("sound-start");
            const int channel = entry.channels == 2 ? 0 : entry.channels == 1 ? 0 : kDownmix;
            const SoundView view{block.data(), block.size() / 2, kRate, 2};
            const auto match = locate(view, channel, expected - 0.2, expected + 0.2);
            EXPECT_GT(match.score, 0.4) << "at " << at;
            EXPECT_NEAR(match.seconds, expected, 0.001) << "at " << at;
        }
    }
}

TEST(SoundSource, IsTheSameWhereverReadingBegins)
{
    // To the sample, with a change of rate and without one.
    for (const char* name : {"stereo-48k.wav", "stereo-44k.wav", "mono-8k-u8.wav", "stereo-96k-24bit.wav"}) {
        SCOPED_TRACE(name);
        const auto media = opened(name);
        constexpr std::int64_t kFirst = 100000;
        constexpr std::size_t kCount = 3000;
        std::vector<float> straight(static_cast<std::size_t>(kFirst + kCount) * 2);
        openSound(media, 48000, {})->read(0, straight);
        std::vector<float> jumped(kCount * 2);
        openSound(media, 48000, {})->read(kFirst, jumped);
        for (std::size_t i = 0; i < jumped.size(); ++i) {
            ASSERT_NEAR(jumped[i], straight[static_cast<std::size_t>(kFirst) * 2 + i], 2e-4) << "sample " << i / 2;
        }
    }
}

TEST(SoundSource, PlaysMidiForAsLongAsItsTempoMapSays)
{
    const auto entry = mediaEntry("tune.mid");
    const auto media = opened(entry.name);
    ASSERT_TRUE(media && media->sound);
    EXPECT_NEAR(media->sound->durationMs, 1000 * entry.durationSeconds, 2);
    const auto source = openSound(media, 48000, {});
    const auto levelAt = [&](double seconds) {
        std::vector<float> block(48000);
        source->read(std::llround(seconds * 48000), block);
        return loudest({block.data(), block.size()});
    };
    EXPECT_GT(levelAt(1), 0.01f);
    EXPECT_LT(levelAt(1), 1.0f);
    EXPECT_EQ(levelAt(7), 0) << "behind the end";
    EXPECT_GT(levelAt(0.1), 0.01f) << "back again";
}
