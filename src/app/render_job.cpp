#include "app/render_job.h"

#include "app/input_files.h"
#include "engine/ITWSave.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "twcore/engine_options.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <thread>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace app {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWSave;

namespace {

/// The movie while it is being written: a sibling of its final name, gone again unless it is kept.
class UnfinishedMovie {
public:
    explicit UnfinishedMovie(const std::string& output) : output_(output)
    {
        namespace fs = std::filesystem;
        const fs::path path(output);
        std::error_code error;
        if (fs::is_directory(path, error)) {
            throw RenderFailed("\"" + output + "\" is a folder. Name a file in it.");
        }
        const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
        if (!fs::is_directory(folder, error)) {
            throw RenderFailed("The folder \"" + folder.string() + "\" is not there. Create it, or choose another.");
        }
        if (::access(folder.c_str(), W_OK) != 0) {
            throw RenderFailed("The folder \"" + folder.string() + "\" may not be written to. Choose another.");
        }
        path_ = (folder / (".quillmont-" + std::to_string(::getpid()) + ".part.avi")).string();
    }
    ~UnfinishedMovie()
    {
        if (!path_.empty()) {
            ::unlink(path_.c_str());
        }
    }
    UnfinishedMovie(const UnfinishedMovie&) = delete;
    UnfinishedMovie& operator=(const UnfinishedMovie&) = delete;

    const std::string& path() const { return path_; }

    void keep()
    {
        std::error_code error;
        std::filesystem::rename(path_, output_, error);
        if (error) {
            throw RenderFailed("The movie cannot be named \"" + output_ + "\": " + error.message()
                               + ". Choose another name.");
        }
        path_.clear();
    }

private:
    std::string output_;
    std::string path_;
};

std::string trimmed(const std::string& buffer)
{
    const auto end = buffer.find_last_not_of(' ');
    std::string text = end == std::string::npos ? std::string() : buffer.substr(0, end + 1);
    while (!text.empty() && text.back() == '\0') {
        text.pop_back();
    }
    return text;
}

std::vector<std::string> compressorNames(engine::Status (ITWSave::*nameAt)(std::int16_t, engine::TextBuffer))
{
    constexpr std::size_t kNameLength = 128;
    std::vector<std::string> names;
    const auto save = EngineAs<ITWSave>();
    for (std::int16_t index = 0;; ++index) {
        std::string buffer(kNameLength, ' ');
        check((save.get()->*nameAt)(index, buffer));
        const std::string name = trimmed(buffer);
        if (name.empty()) {
            return names;
        }
        names.push_back(name);
    }
}

void checkCompressor(const std::string& name, const std::vector<std::string>& known)
{
    if (name != "Uncompressed" && std::ranges::find(known, name) == known.end()) {
        throw RenderFailed("There is no compressor \"" + name + "\" here. See --list-compressors.");
    }
}

void applyWords(const RenderWords& words, const LaidInputs& laid)
{
    const auto save = EngineAs<ITWSave>();
    check(save->ResetSave());
    checkCompressor(words.videoCompressor, compressorNames(&ITWSave::GetVideoCompressorName));
    checkCompressor(words.audioCompressor, compressorNames(&ITWSave::GetAudioCompressorName));
    check(save->SetVideoCompressor(words.videoCompressor));
    check(save->SetAudioCompressor(words.audioCompressor));
    check(save->SetFrameRate(words.framesPerSecond));
    check(save->SetQuality(words.quality));
    check(save->SetKeyFrameRate(words.keyFrameRate));
    // Subsampled colour wants even sides, so an odd picture loses its last line or column.
    const int width = words.size ? words.size->first : std::max(16, laid.width & ~1);
    const int height = words.size ? words.size->second : std::max(16, laid.height & ~1);
    if (laid.width > 0) {
        check(save->SetVideoSize(width, height));
    }
    if (words.soundRate > 0 && !EngineAs<twcore::EngineOptions>()->setSoundRate(words.soundRate)) {
        throw RenderFailed("The engine does not take that sound rate. Choose one from 8000 to 192000.");
    }
    check(save->SetSaveWholeTimeline(engine::toBool16(!words.rangeMs)));
    if (words.rangeMs) {
        check(save->SetSaveRange(words.rangeMs->first, words.rangeMs->second));
    }
}

void addTracks(const Tracks& tracks)
{
    for (const auto track : tracks.all()) {
        std::int16_t count = 0;
        Bool16 ok = engine::kFalse;
        check(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count));
        if (count > 0) {
            check(EngineAs<ITWSave>()->AddSaveTrack(track, ok));
        }
    }
}

void showProgress(engine::Milliseconds positionMs, engine::Milliseconds durationMs, bool last)
{
    static const bool onTerminal = ::isatty(STDERR_FILENO) != 0;
    if (onTerminal) {
        const double percent = durationMs > 0 ? 100.0 * positionMs / durationMs : 0;
        std::fprintf(stderr, "\rSaving: %.1f of %.1f s, %3.0f %%%s", positionMs / 1000.0, durationMs / 1000.0, percent,
                     last ? "\n" : "");
        std::fflush(stderr);
    }
}

/// Polls until the movie is whole. Raises what the engine reports.
void waitForEnd(const volatile int& interrupted)
{
    const auto save = EngineAs<ITWSave>();
    engine::Milliseconds durationMs = 0;
    check(save->GetSaveDuration(durationMs));
    for (auto pause = std::chrono::milliseconds(1);; pause = std::min(pause * 2, std::chrono::milliseconds(50))) {
        engine::Milliseconds positionMs = 0;
        std::int32_t state = 0;
        check(save->GetSavePosition(positionMs));
        check(save->GetSaveState(state));
        showProgress(positionMs, durationMs, state == engine::save_state::kComplete);
        if (state == engine::save_state::kComplete) {
            return;
        }
        if (state == engine::save_state::kFailed) {
            throw RenderFailed("The movie could not be saved.");
        }
        if (interrupted != 0) {
            throw RenderFailed("Interrupted. No movie was written.");
        }
        std::this_thread::sleep_for(pause);
    }
}

} // namespace

namespace {

void saveTo(const UnfinishedMovie& movie, const RenderWords& words, const volatile int& interrupted)
{
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = engine::kFalse;
    check(save->PrepareAviFile(movie.path(), ok));
    if (ok == engine::kFalse) {
        throw RenderFailed("Nothing can be saved to \"" + words.output
                           + "\" like this: the timeline is empty, or a compressor refuses the size or the rates. "
                             "Choose another compressor or size.");
    }
    check(save->StartSave(ok));
    waitForEnd(interrupted);
    check(save->StopSave(ok));
    check(save->CloseSave());
}

} // namespace

RenderResult render(const RenderWords& words, const volatile int& interrupted)
{
    const auto begin = std::chrono::steady_clock::now();
    UnfinishedMovie movie(words.output);
    const Tracks tracks = createTracks();
    LaidInputs laid = layInputs(tracks, words.inputs);
    if (words.size && !laid.isProject && laid.width > 0) {
        // Loose files have no frame of their own to be laid out in: nothing is squeezed.
        std::tie(laid.width, laid.height) = *words.size;
    }
    if (laid.width > 0) {
        const auto clamp = [](int side) { return static_cast<std::int16_t>(std::clamp(side, 16, 8192)); };
        check(EngineAs<engine::ITWTimeline>()->SetFrameSize(clamp(laid.width), clamp(laid.height)));
    }
    applyWords(words, laid);
    addTracks(tracks);
    try {
        saveTo(movie, words, interrupted);
    } catch (const engine::RuntimeError& error) {
        // The engine speaks of the file that it writes to, people of the one that they named.
        std::string text = error.what();
        if (const auto at = text.find(movie.path()); at != std::string::npos) {
            text.replace(at, movie.path().size(), words.output);
        }
        throw RenderFailed(text);
    }
    movie.keep();
    const auto options = EngineAs<twcore::EngineOptions>();
    RenderResult result{options->framesSaved(), options->samplesSaved(), 0, 0};
    int numerator = 25;
    int denominator = 1;
    options->frameRateSaved(numerator, denominator);
    const double pictureSeconds = static_cast<double>(result.frames) * denominator / numerator;
    const double soundSeconds = static_cast<double>(result.samples) / (words.soundRate > 0 ? words.soundRate : 48000);
    result.movieSeconds = result.samples > 0 ? soundSeconds : pictureSeconds;
    result.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}

void listCompressors()
{
    std::cout << "Video:\n";
    for (const auto& name : compressorNames(&ITWSave::GetVideoCompressorName)) {
        std::cout << "  " << name << "\n";
    }
    std::cout << "  Uncompressed\nAudio:\n";
    for (const auto& name : compressorNames(&ITWSave::GetAudioCompressorName)) {
        std::cout << "  " << name << "\n";
    }
    std::cout << "  Uncompressed\n";
}

std::string asJson(const RenderWords& words, const RenderResult& result)
{
    std::string output;
    for (const char c : words.output) {
        if (c == '"' || c == '\\') {
            output += '\\';
            output += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            output += escape;
        } else {
            output += c;
        }
    }
    char numbers[192];
    std::snprintf(numbers, sizeof numbers, "\"frames\":%lld,\"samples\":%lld,\"seconds\":%.6f,\"wall_seconds\":%.3f}",
                  result.frames, result.samples, result.movieSeconds, result.wallSeconds);
    return "{\"output\":\"" + output + "\"," + numbers;
}

} // namespace app
