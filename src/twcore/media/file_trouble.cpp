#include "twcore/media/file_trouble.h"

#include "twcore/media/midi_file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace twcore {

namespace {

struct ClaimedSize {
    std::int64_t width = 0;
    std::int64_t height = 0;

    std::int64_t points() const { return width * height; } // of sides of 31 bits at most
};

/// Bytes of the beginning of a file; those behind its end are 0.
class Head {
public:
    explicit Head(const std::string& path) : file_(path, std::ios::binary)
    {
        file_.read(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
        file_.clear();
    }

    bool holds(std::size_t at, std::string_view text) const { return view().substr(at, text.size()) == text; }
    /// Blanks and the mark of UTF-8 ahead of it do not count, nor do capitals.
    bool beginsWith(std::string_view text) const
    {
        std::string_view all = view();
        all.remove_prefix(all.starts_with("\xEF\xBB\xBF") ? 3 : 0);
        all.remove_prefix(std::min(all.find_first_not_of(" \t\r\n"), all.size()));
        const auto isSame = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
        return all.size() >= text.size()
               && std::equal(text.begin(), text.end(), all.begin(), [&](char a, char b) { return isSame(b, a); });
    }
    bool mentions(std::string_view text) const { return view().find(text) != std::string_view::npos; }
    std::int64_t bigEndian(std::size_t at, std::size_t count) const
    {
        std::int64_t value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            value = value << 8 | byte(at + i);
        }
        return value;
    }
    std::int64_t littleEndian(std::size_t at, std::size_t count) const
    {
        std::int64_t value = 0;
        for (std::size_t i = count; i > 0; --i) {
            value = value << 8 | byte(at + i - 1);
        }
        return value;
    }
    std::ifstream& file() { return file_; }

private:
    std::string_view view() const { return {bytes_.data(), bytes_.size()}; }
    std::uint8_t byte(std::size_t at) const { return static_cast<std::uint8_t>(bytes_[at]); }

    std::ifstream file_;
    std::array<char, 1024> bytes_{};
};

/// The size in the first frame's header, behind segments of any length.
ClaimedSize jpegSize(std::ifstream& file)
{
    std::array<char, 9> head{};
    const auto number = [&](std::size_t at) {
        return static_cast<std::uint8_t>(head[at]) << 8 | static_cast<std::uint8_t>(head[at + 1]);
    };
    for (std::int64_t at = 2; file.seekg(at) && file.read(head.data(), head.size());) {
        const int marker = number(0);
        if (marker >= 0xFFC0 && marker <= 0xFFC3) {
            return {number(7), number(5)};
        }
        if (marker < 0xFF00 || number(2) < 2) {
            break;
        }
        at += 2 + number(2);
    }
    return {};
}

ClaimedSize stillSize(Head& head, const std::string& path)
{
    if (head.holds(0, "\x89PNG")) {
        return {head.bigEndian(16, 4) & 0x7FFFFFFF, head.bigEndian(20, 4) & 0x7FFFFFFF};
    }
    if (head.holds(0, "BM")) { // heights below 0 are of pictures stored from the top
        const auto height = static_cast<std::int32_t>(head.littleEndian(22, 4));
        return {head.littleEndian(18, 4) & 0x7FFFFFFF, std::abs(std::int64_t{height})};
    }
    if (head.holds(0, "GIF8")) {
        return {head.littleEndian(6, 2), head.littleEndian(8, 2)};
    }
    if (head.holds(0, "\xFF\xD8\xFF")) {
        return jpegSize(head.file());
    }
    if (head.holds(8, "WEBPVP8X")) {
        return {1 + head.littleEndian(24, 3), 1 + head.littleEndian(27, 3)};
    }
    if (path.ends_with(".tga") || path.ends_with(".TGA")) {
        return {head.littleEndian(12, 2), head.littleEndian(14, 2)};
    }
    return {};
}

/// The largest picture that the file's streams or its header claim.
ClaimedSize claimedSize(Head& head, const std::string& path, const InputFile* opened)
{
    ClaimedSize largest = stillSize(head, path);
    for (unsigned i = 0; opened != nullptr && i < opened->context()->nb_streams; ++i) {
        const AVCodecParameters& told = *opened->stream(static_cast<int>(i))->codecpar;
        const ClaimedSize size{told.width, told.height};
        largest = size.points() > largest.points() ? size : largest;
    }
    return largest;
}

bool isPlayList(const Head& head, const std::string& path)
{
    constexpr std::array<std::string_view, 7> kBeginnings{"#extm3u", "[playlist]", "[reference]", "<asx",
                                                          "<smil",   "ffconcat ",  "<?wpl"};
    constexpr std::array<const char*, 8> kEndings{".m3u", ".m3u8", ".pls", ".xspf", ".asx", ".wpl", ".cue", ".mpd"};
    const bool isXml = head.beginsWith("<?xml") || head.beginsWith("<");
    return std::ranges::any_of(kBeginnings, [&](auto text) { return head.beginsWith(text); })
           || (isXml && (head.mentions("<playlist") || head.mentions("<MPD")))
           || std::ranges::any_of(kEndings, [&](auto* ending) { return path.ends_with(ending); });
}

bool holdsSubtitlesAlone(const InputFile& file)
{
    const auto* const streams = file.context()->streams;
    const auto count = file.context()->nb_streams;
    return count > 0 && std::all_of(streams, streams + count, [](const AVStream* stream) {
               return stream->codecpar->codec_type == AVMEDIA_TYPE_SUBTITLE;
           });
}

} // namespace

std::string troubleWith(const std::string& path, const InputFile* opened)
{
    Head head(path);
    const std::string quoted = "\"" + path + "\"";
    if (isMidiFile(path, {})) {
        std::error_code error;
        return std::filesystem::file_size(path, error) > kMostMidiBytes && !error
                   ? quoted + " is larger than a MIDI song can be here (16 MB). Convert it to a sound file."
                   : std::string();
    }
    if (isPlayList(head, path)) {
        return quoted + " is a play list: it names other files and holds none. Name those files instead.";
    }
    if (opened != nullptr && holdsSubtitlesAlone(*opened)) {
        return quoted + " holds subtitles, and neither picture nor sound. Name the film that they belong to.";
    }
    constexpr std::int64_t kAnimated = 0x02;
    if (head.holds(8, "WEBPVP8X") && (head.littleEndian(20, 1) & kAnimated) != 0) {
        return quoted + " is an animated WebP picture, which cannot be played here. Convert it to GIF or to a film.";
    }
    if (const auto size = claimedSize(head, path, opened); size.points() > kMaxPixels) {
        return quoted + " has pictures of " + std::to_string(size.width) + " x " + std::to_string(size.height)
               + " points; more than " + std::to_string(kMaxPixels) + " are not taken. Scale it down first.";
    }
    return {};
}

} // namespace twcore
