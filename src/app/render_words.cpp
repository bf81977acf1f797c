#include "app/render_words.h"

#include "app/terminal_text.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <limits>
#include <string_view>

namespace app {

namespace {

constexpr int kWrongWords = 2;
constexpr int kMost = std::numeric_limits<int>::max();

/// Two whole numbers with a sign between them.
std::pair<int, int> twoNumbers(const std::string& option, std::string_view text, char between, int least,
                               const std::string& example)
{
    std::pair<int, int> numbers{};
    const auto read = [&](std::string_view part, int& value) {
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        return error == std::errc{} && end == part.data() + part.size() && value >= least;
    };
    const auto at = text.find(between);
    if (at == std::string_view::npos || !read(text.substr(0, at), numbers.first)
        || !read(text.substr(at + 1), numbers.second)) {
        throw CLI::ValidationError(option, "takes two whole numbers, as in " + example + ", not " + std::string(text));
    }
    return numbers;
}

ChosenTracks chosenTracks(const std::string& list)
{
    ChosenTracks tracks{false, false, false, false};
    const std::pair<std::string_view, bool*> known[] = {
        {"video", &tracks.video}, {"overlay", &tracks.overlay}, {"audio1", &tracks.audio1}, {"audio2", &tracks.audio2}};
    for (const auto& name : CLI::detail::split(list, ',')) {
        const auto* const found = std::ranges::find(known, name, &std::pair<std::string_view, bool*>::first);
        if (found == std::end(known)) {
            throw CLI::ValidationError("--tracks", "takes video, overlay, audio1 and audio2 with commas between, not \""
                                                       + name + "\"");
        }
        *found->second = true;
    }
    return tracks;
}

void addTimelineOptions(CLI::App& program, RenderWords& words)
{
    program.add_option_function<std::string>(
        "--tracks", [&](const std::string& list) { words.tracks = chosenTracks(list); },
        "Only these tracks, of video,overlay,audio1,audio2 (all)");
    program.add_flag_callback(
        "--no-effects", [&] { words.withEffects = false; }, "Leave the effects out");
    program.add_option("--title", words.describing.title, "The title that players show");
    program.add_option("--author", words.describing.author, "Who made the movie");
    program.add_option("--rating", words.describing.rating, "For whom it is");
    program.add_option("--copyright", words.describing.copyright, "Whose rights it is under");
    program.add_option("--description", words.describing.description, "What it is about");
}

void addProfileOptions(CLI::App& program, RenderWords& words)
{
    program.add_option("--profile", words.profile,
                       "For .wmv, .wma and .asf: a name of --list-profiles (1 Mbps; sound alone 128 Kbps)");
    program.add_flag("--list-profiles", words.listsProfiles,
                     "Print the Windows Media profiles, the system's and yours");
}

/// Words that are there and say nothing for the kind of movie that is written are a mistake.
void checkKind(const CLI::App& program, const RenderWords& words)
{
    const auto refuse = [&](std::initializer_list<const char*> options, const std::string& reason) {
        for (const char* const option : options) {
            if (program.count(option) > 0) {
                throw CLI::ValidationError(option, reason);
            }
        }
    };
    if (words.isWindowsMedia()) {
        refuse({"--video-compressor", "--audio-compressor", "--quality", "--key-frame-rate", "--video-rate"},
               "is for AVI movies; a Windows Media file takes a --profile, which says it");
    } else if (!words.output.empty()) {
        refuse({"--profile"}, "is for Windows Media files, whose names end in .wmv, .wma or .asf");
    }
}

void addOptions(CLI::App& program, RenderWords& words)
{
    program.add_option("INPUT", words.inputs, "One project file (.qpj), or video, sound and image files");
    program.add_option("-o,--output", words.output, "The movie to write");
    program.add_option_function<std::string>(
        "--size",
        [&](const std::string& text) {
            words.size = twoNumbers("--size", text, 'x', 16, "640x480");
            if (words.size->first > 8192 || words.size->second > 8192) {
                throw CLI::ValidationError("--size", "goes up to 8192x8192");
            }
        },
        "Size of the picture, WxH (the profile's; else the project's; else the first picture's)");
    program
        .add_option("--fps", words.framesPerSecond, "Frames a second (the profile's; else the first video's; else 25)")
        ->check(CLI::Range(1, 240));
    program.add_option("--audio-rate", words.soundRate, "Samples a second (the profile's; else 48000)")
        ->check(CLI::Range(8000, 192000));
    program.add_option("--video-compressor", words.videoCompressor,
                       "A name of --list-compressors, or Uncompressed (Motion JPEG)");
    program.add_option("--audio-compressor", words.audioCompressor,
                       "A name of --list-compressors, or Uncompressed (PCM)");
    program.add_option("--quality", words.quality, "0 smallest to 100 best, where the compressor takes one")
        ->check(CLI::Range(0, 100));
    program.add_option("--key-frame-rate", words.keyFrameRate, "Frames from key frame to key frame")
        ->check(CLI::Range(1, kMost));
    program
        .add_option("--video-rate", words.videoRate,
                    "Bits a second of the picture, where the compressor takes a quality; then --quality is the finest")
        ->check(CLI::Range(8000, 100'000'000));
    program.add_option_function<std::string>(
        "--range",
        [&](const std::string& text) {
            words.rangeMs = twoNumbers("--range", text, '-', 0, "1000-5000");
            if (words.rangeMs->second <= words.rangeMs->first) {
                throw CLI::ValidationError("--range", "ends where it begins, or ahead of that");
            }
        },
        "Only this part of the timeline, START-STOP in milliseconds");
    addTimelineOptions(program, words);
    addProfileOptions(program, words);
    program.add_flag_callback(
        "--no-copy", [&] { words.copiesUnchanged = false; },
        "Encode also what could be copied as it is, as with --quality or --video-rate");
    program.add_flag("--list-compressors", words.listsCompressors, "Print the compressors of this machine");
    program.add_option("--trace", words.trace, "Write where the time went, as trace events for a browser");
    program.add_flag("--json", words.tellsJson, "Print the result as JSON in the last line");
    program.set_version_flag("--version", "quillmont-render " QUILLMONT_VERSION);
}

/// The words as the library takes them, last first. It would take a name in brackets apart as a list: a path like that
/// is told from its folder.
std::vector<std::string> backwards(int count, const char* const* raw)
{
    std::vector<std::string> words;
    for (int i = count - 1; i > 0; --i) {
        const std::string_view word = raw[i];
        words.emplace_back(word.starts_with('[') && word.ends_with(']') ? "./" : "").append(word);
    }
    return words;
}

} // namespace

bool RenderWords::isWindowsMedia() const
{
    std::string ending = output.substr(output.size() - std::min<std::size_t>(output.size(), 4));
    std::ranges::transform(ending, ending.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return ending == ".wmv" || ending == ".wma" || ending == ".asf";
}

ReadWords readRenderWords(int count, const char* const* raw)
{
    CLI::App program(
        "Renders a Quillmont project, or media files laid one behind the other, to an AVI movie or a Windows\n"
        "Media file.\n"
        "Exit status: 0 done, 1 the run failed, 2 the words are wrong.");
    program.name("quillmont-render");
    program.footer("Example: quillmont-render holiday.mp4 song.mp3 -o movie.avi");
    RenderWords words;
    addOptions(program, words);
    try {
        program.parse(backwards(count, raw));
        checkKind(program, words);
        const bool isListing = words.listsCompressors || words.listsProfiles;
        if (!isListing && words.inputs.empty()) {
            throw CLI::RequiredError("INPUT: a project file or some media files");
        }
        if (!isListing && words.output.empty()) {
            throw CLI::RequiredError("-o OUTPUT");
        }
    } catch (const CLI::Success& asked) {
        return {std::nullopt, program.exit(asked)};
    } catch (const CLI::ParseError& wrong) {
        std::cerr << "quillmont-render: " << forTerminal(wrong.what())
                  << "\nRun quillmont-render --help to see the options.\n";
        return {std::nullopt, kWrongWords};
    }
    return {std::move(words), 0};
}

} // namespace app
