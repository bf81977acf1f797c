#include "odd_files.h"

#include "support/files.h"
#include "support/media_recipes.h"

#include <random>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace testmedia {
namespace {

using Bytes = std::string;

// Four beats at 120 a minute, two at 60, eight at 240: 2 + 2 + 2 = 6 seconds, one note a beat.
Bytes midiBytes()
{
    constexpr int kTicksPerBeat = 480;
    const auto delta = [](unsigned ticks) {
        return ticks < 128 ? bigEndian(ticks, 1) : bigEndian(0x80U | (ticks >> 7), 1) + bigEndian(ticks & 0x7F, 1);
    };
    const auto tempo = [](unsigned microsecondsPerBeat) {
        return Bytes("\x00\xFF\x51\x03", 4) + bigEndian(microsecondsPerBeat, 3);
    };
    Bytes track = tempo(500000) + Bytes("\x00\xC0\x00", 3);
    const int scale[] = {60, 64, 67, 72, 71, 67, 64, 62, 60, 64, 67, 72, 76, 72};
    for (int beat = 0; beat < 14; ++beat) {
        if (beat == 4)
            track += tempo(1000000);
        if (beat == 6)
            track += tempo(250000);
        const auto key = static_cast<unsigned>(scale[beat]);
        track += delta(0) + bigEndian(0x900000U | (key << 8) | 96U, 3);
        track += delta(kTicksPerBeat) + bigEndian(0x800000U | (key << 8), 3);
    }
    track += Bytes("\x00\xFF\x2F\x00", 4);
    return "MThd" + bigEndian(6, 4) + bigEndian(0, 2) + bigEndian(1, 2) + bigEndian(kTicksPerBeat, 2) + "MTrk"
           + bigEndian(track.size(), 4) + track;
}

// An EXIF block with nothing but "turn a quarter to the right to see it upright", put behind the start mark.
Bytes withOrientation(const Bytes& jpeg)
{
    const Bytes tiff = Bytes("MM\x00\x2A", 4) + bigEndian(8, 4) + bigEndian(1, 2) + bigEndian(0x0112, 2)
                       + bigEndian(3, 2) + bigEndian(1, 4) + bigEndian(6, 2) + bigEndian(0, 2) + bigEndian(0, 4);
    const Bytes block = Bytes("Exif\0\0", 6) + tiff;
    return jpeg.substr(0, 2) + Bytes("\xFF\xE1", 2) + bigEndian(block.size() + 2, 2) + block + jpeg.substr(2);
}

// The first track of an MP4 file turned: the nine numbers of its header that map the stored picture onto the shown one.
Bytes withTurn(Bytes mp4, bool clockwise)
{
    const auto header = mp4.find("tkhd");
    if (header == Bytes::npos || mp4[header + 4] != 0)
        throw std::runtime_error("no track header to patch");
    const std::uint32_t one = 0x10000, minusOne = 0xFFFF0000U;
    Bytes matrix;
    for (const std::uint32_t part :
         {0U, clockwise ? one : minusOne, 0U, clockwise ? minusOne : one, 0U, 0U, clockwise ? kBaseWidthPx * one : 0U,
          clockwise ? 0U : kBaseHeightPx * one, 0x40000000U})
        matrix += bigEndian(part, 4);
    return mp4.replace(header + 44, matrix.size(), matrix);
}

Bytes hugePng(const Bytes& png)
{
    // The check sum of the header is made to fit, or the lie would be found out at once.
    Bytes header = "IHDR" + bigEndian(60000, 4) + bigEndian(60000, 4) + png.substr(24, 5);
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char c : header) {
        crc ^= static_cast<std::uint8_t>(c);
        for (int i = 0; i < 8; ++i)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return png.substr(0, 12) + header + bigEndian(crc ^ 0xFFFFFFFF, 4) + png.substr(33);
}

// A picture of MPEG-4 at 25 a second that shows the one before again: of its kind, and of its moment.
Bytes emptyPictureBehind(const Bytes& picture)
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(picture.at(i)); };
    std::uint32_t bits = (byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3)) << 2;
    while ((bits >> 31) != 0)
        bits <<= 1; // the seconds since the one before
    const std::uint32_t time = bits >> 25 & 31;
    return Bytes("\0\0\1\xB6", 4) + static_cast<char>((byte(0) & 0xC0) | 0x10 | time >> 1)
           + static_cast<char>(0x4F | (time & 1) << 7);
}

// MPEG-4 in AVI as it was commonly packed: a B picture travels in the chunk of the picture it is decoded after, and an
// empty picture stands in the chunk that this leaves over, listed as a key frame where that picture is one.
//
//     before   I0  P3  B1  B2  P5  B4        after   I0  P3+B1  B2  -  P5+B4  -
Bytes withPackedPictures(const Bytes& avi)
{
    const Bytes pictureMark("\0\0\1\xB6", 4);
    const auto movi = avi.find("movi"), index = avi.rfind("idx1");
    struct Chunk {
        Bytes id, data;
        std::uint32_t flags;
    };
    std::vector<Chunk> chunks;
    for (std::size_t at = movi + 4; at + 8 <= index; at += 8 + (littleEndianAt(avi, at + 4) + 1) / 2 * 2)
        chunks.push_back({avi.substr(at, 4), avi.substr(at + 8, littleEndianAt(avi, at + 4)),
                          littleEndianAt(avi, index + 8 + 16 * chunks.size() + 4)});

    Chunk *previous = nullptr, *shownBehind = nullptr;
    Bytes emptyPicture;
    for (Chunk& chunk : chunks) {
        if (chunk.id != "00dc")
            continue;
        const auto picture = chunk.data.find(pictureMark) + 4;
        const bool isShownAhead = (static_cast<std::uint8_t>(chunk.data.at(picture)) >> 6) == 2;
        if (isShownAhead) {
            if (previous != shownBehind)
                previous->data.clear(), previous->flags = 0;
            previous->data += std::exchange(chunk.data, emptyPicture);
            chunk.flags = shownBehind->flags;
        } else {
            emptyPicture = emptyPictureBehind(chunk.data.substr(picture, 4));
            shownBehind = &chunk;
        }
        if (previous == nullptr) // what tells a decoder to look for packed pictures
            chunk.data.insert(picture - 4, Bytes("\0\0\1\xB2", 4) + "DivX503b1393p");
        previous = &chunk;
    }

    Bytes body = "movi", entries;
    for (const Chunk& chunk : chunks) {
        entries +=
            chunk.id + littleEndian(chunk.flags, 4) + littleEndian(body.size(), 4) + littleEndian(chunk.data.size(), 4);
        body += chunk.id + littleEndian(chunk.data.size(), 4) + chunk.data + Bytes(chunk.data.size() % 2, '\0');
    }
    const Bytes packed = avi.substr(0, movi - 4) + littleEndian(body.size(), 4) + body + "idx1"
                         + littleEndian(entries.size(), 4) + entries;
    return patched(packed, "RIFF", 0, littleEndian(packed.size() - 8));
}

Bytes withoutIndex(const Bytes& avi)
{
    const auto at = avi.rfind("idx1");
    if (at == Bytes::npos)
        throw std::runtime_error("no index to take off");
    return patched(avi.substr(0, at), "RIFF", 0, littleEndian(at - 8));
}

Bytes randomBytes(std::size_t count)
{
    std::mt19937 random(20);
    Bytes bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random() & 0xFF);
    return bytes;
}

struct Writer {
    fs::path folder;
    std::vector<MediaEntry> entries;

    void bad(const std::string& name, const Bytes& bytes, const std::string& notes)
    {
        writeBytes(folder / name, bytes);
        entries.push_back({name, "bad", "0", 0, 0, 0, 0, 0, notes});
    }

    // The same file under another name.
    void alias(const MediaEntry& entry, const std::string& name)
    {
        fs::create_directories((folder / name).parent_path());
        fs::copy_file(folder / entry.name, folder / name, fs::copy_options::overwrite_existing);
        entries.push_back(entry);
        entries.back().name = name;
    }
};

void writeBroken(Writer& writer)
{
    const auto whole = [&](const char* name) { return bytesOf(writer.folder / name); };
    writer.bad("bad/empty.avi", {}, "empty");
    const Bytes mp4 = whole("h264.mp4"), fast = whole("work/faststart.mp4"), avi = whole("mpeg4.avi"),
                png = whole("still.png");
    writer.bad("bad/no-moov.mp4", mp4.substr(0, mp4.rfind("moov") - 4), "truncated");
    const auto data = fast.find("mdat");
    writer.bad("bad/half.mp4", fast.substr(0, data + (fast.size() - data) / 2), "truncated readable-in-part");
    writer.bad("bad/half.avi", avi.substr(0, avi.size() * 6 / 10), "truncated readable-in-part");
    const Bytes jpeg = whole("still.jpg");
    writer.bad("bad/half.jpg", jpeg.substr(0, jpeg.size() / 2), "truncated readable-in-part");
    writer.bad("bad/random.mp4", randomBytes(100000), "random");
    Bytes prose;
    while (prose.size() < 20000)
        prose += "It was a quiet evening, and nothing that happened in it was a moving picture.\n";
    writer.bad("bad/text.avi", prose, "text");
    writer.bad("bad/huge.png", hugePng(png), "claims=60000x60000");
    const Bytes huge = littleEndian(60000) + littleEndian(60000); // width and height in the picture's format
    Bytes hugeAvi = patched(patched(avi, "avih", 36, huge), "strf", 8, huge); // and in the main header, nowhere else
    writer.bad("bad/huge.avi", hugeAvi, "claims=60000x60000 readable-in-part");
    // The picture's own data tell the true size above; uncompressed ones have nothing but the lie.
    writer.bad("bad/huge-uncompressed.avi", patched(whole("uncompressed.avi").substr(0, 1000000), "strf", 8, huge),
               "claims=60000x60000 truncated");
    const Bytes wav = whole("stereo-44k.wav").substr(0, 20000);
    writer.bad("bad/claims-4gb.wav",
               patched(patched(wav, "RIFF", 0, littleEndian(0xFFFFFF00U)), "data", 0, littleEndian(0xFFFFFF00U - 36)),
               "claims=4gb readable-in-part");
    writer.bad("bad/half.mid", midiBytes().substr(0, 60), "truncated");
}

// Lists that would make a careless reader fetch something else.
void writeRedirecting(Writer& writer)
{
    writer.bad("bad/network.m3u8",
               "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:5\n#EXT-X-MEDIA-SEQUENCE:0\n#EXTINF:5.0,\n"
               "http://media.invalid/segment0.ts\n#EXTINF:5.0,\nhttp://media.invalid/segment1.ts\n#EXT-X-ENDLIST\n",
               "playlist network");
    writer.bad("bad/network.mp4", bytesOf(writer.folder / "bad/network.m3u8"), "playlist network misnamed");
    writer.bad("bad/local.m3u8",
               "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:5\n#EXT-X-MEDIA-SEQUENCE:0\n#EXTINF:5.0,\n../"
               "h264.ts\n#EXT-X-ENDLIST\n",
               "playlist local");
    writer.bad("bad/network.pls", "[playlist]\nNumberOfEntries=1\nFile1=http://media.invalid/song.mp3\nVersion=2\n",
               "playlist network");
    writer.bad("bad/network.m3u", "#EXTM3U\nhttp://media.invalid/song.mp3\n", "playlist network");
    writer.bad("bad/concat.ffconcat", "ffconcat version 1.0\nfile ../h264.mp4\nfile ../mpeg4.avi\n", "script local");
    writer.bad("bad/concat.avi", "ffconcat version 1.0\nfile ../h264.mp4\nfile ../mpeg4.avi\n",
               "script local misnamed");
}

void writeNames(Writer& writer, const MediaEntry& movie, const MediaEntry& still)
{
    for (const char* name :
         {"names/two  blanks .mp4", "names/it's \"quoted\".mp4", "names/salt & pepper 100%.mp4", "names/%03d.mp4",
          "names/colon: and ; semicolon #1?.mp4", "names/\xD0\x92\xD0\xB8\xD0\xB4\xD0\xB5\xD0\xBE.mp4",
          "names/\xE8\xA7\x86\xE9\xA2\x91.mp4", "names/-i.mp4", "names/UPPER.MP4"})
        writer.alias(movie, name);
    for (const char* name : {"names/%03d.png", "names/shot001.png", "names/shot[1]*.png"})
        writer.alias(still, name);
    std::string deep = "names";
    for (int i = 0; i < 7; ++i)
        deep += "/" + std::string(48, static_cast<char>('a' + i));
    writer.alias(movie, deep + "/deep.mp4");
}

} // namespace

std::vector<MediaEntry> writeOddFiles(const fs::path& folder)
{
    Writer writer{folder, {}};
    const MediaEntry movie{"h264.mp4", "movie", "25", 125, 0, 5, 48000, 2, "alias"};
    const MediaEntry still{"still.png", "still", "25", 1, 16, 0, 0, 0, "alias"};
    writeBytes(folder / "tune.mid", midiBytes());
    writer.entries.push_back({"tune.mid", "midi", "0", 0, 0, 6, 0, 0, "tempos=3 notes=14"});
    writeBytes(folder / "turned.jpg", withOrientation(bytesOf(folder / "turned.jpg")));
    writeBytes(folder / "rotated-90.mp4", withTurn(bytesOf(folder / "rotated-90.mp4"), true));
    writeBytes(folder / "rotated-270.mp4", withTurn(bytesOf(folder / "rotated-270.mp4"), false));
    writeBytes(folder / "mpeg4-b-packed.avi", withPackedPictures(bytesOf(folder / "mpeg4-b-packed.avi")));
    writeBytes(folder / "no-index.avi", withoutIndex(bytesOf(folder / "mpeg4.avi")));
    writer.entries.push_back({"no-index.avi", "movie", "25", 125, 0, 5, 48000, 2, "no-index sound-lag=-0.023"});
    Bytes times;
    for (int i = 0; i < 125; ++i)
        times += std::to_string(irregularMs(i)) + "\n";
    writeBytes(folder / "vfr.txt", times);
    writeBroken(writer);
    writeRedirecting(writer);
    writeNames(writer, movie, still);
    return std::move(writer.entries);
}

} // namespace testmedia
