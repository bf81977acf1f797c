#include "app/render_words.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <charconv>
#include <iostream>
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
        "Size of the picture, WxH (the project's; else the first picture's)");
    program.add_option("--fps", words.framesPerSecond, "Frames a second (the first video's; else 25)")
        ->check(CLI::Range(1, 240));
    program.add_option("--audio-rate", words.soundRate, "Samples a second (48000)")->check(CLI::Range(8000, 192000));
    program.add_option("--video-compressor", words.videoCompressor,
                       "A name of --list-compressors, or Uncompressed (Motion JPEG)");
    program.add_option("--audio-compressor", words.audioCompressor,
                       "A name of --list-compressors, or Uncompressed (PCM)");
    program.add_option("--quality", words.quality, "0 smallest to 100 best, where the compressor takes one")
        ->check(CLI::Range(0, 100));
    program.add_option("--key-frame-rate", words.keyFrameRate, "Frames from key frame to key frame")
        ->check(CLI::Range(1, kMost));
    program.add_option_function<std::string>(
        "--range",
        [&](const std::string& text) {
            words.rangeMs = twoNumbers("--range", text, '-', 0, "1000-5000");
            if (words.rangeMs->second <= words.rangeMs->first) {
                throw CLI::ValidationError("--range", "ends where it begins, or ahead of that");
            }
        },
        "Only this part of the timeline, START-STOP in milliseconds");
    program.add_flag("--list-compressors", words.listsCompressors, "Print the compressors of this machine");
    program.add_flag("--json", words.tellsJson, "Print the result as JSON in the last line");
    program.set_version_flag("--version", "quillmont-render " QUILLMONT_VERSION);
}

} // namespace

ReadWords readRenderWords(int count, const char* const* raw)
{
    CLI::App program("Renders a Quillmont project, or media files laid one behind the other, to an AVI movie.\n"
                     "Exit status: 0 done, 1 the run failed, 2 the words are wrong.");
    program.name("quillmont-render");
    program.footer("Example: quillmont-render holiday.mp4 song.mp3 -o movie.avi");
    RenderWords words;
    addOptions(program, words);
    try {
        program.parse(count, raw);
        if (!words.listsCompressors && words.inputs.empty()) {
            throw CLI::RequiredError("INPUT: a project file or some media files");
        }
        if (!words.listsCompressors && words.output.empty()) {
            throw CLI::RequiredError("-o OUTPUT");
        }
    } catch (const CLI::Success& asked) {
        return {std::nullopt, program.exit(asked)};
    } catch (const CLI::ParseError& wrong) {
        std::cerr << "quillmont-render: " << wrong.what() << "\nRun quillmont-render --help to see the options.\n";
        return {std::nullopt, kWrongWords};
    }
    return {std::move(words), 0};
}

} // namespace app
