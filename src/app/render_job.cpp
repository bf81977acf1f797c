#include "app/render_job.h"

#include "app/engine_lists.h"
#include "app/input_files.h"
#include "app/terminal_text.h"
#include "disk/whole_file.h"
#include "engine/ITWProfiles.h"
#include "engine/ITWSave.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "twcore/engine_options.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <optional>
#include <thread>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace app {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWSave;

namespace {

// What Windows Media files are saved with when nothing else is said.
const std::string kVideoProfile = "Video for local area networks (1 Mbps)";
const std::string kAudioProfile = "Audio for CD-quality transparency (128 Kbps stereo)";

/// What is read is not written over.
void checkIsNoInput(const disk::WholeFile& file, const std::string& name, const std::vector<ReadFile>& read)
{
    if (std::ranges::any_of(read, [&](const ReadFile& one) { return file.isFor(one.path); })) {
        throw RenderFailed("\"" + name
                           + "\" is read for this movie: an input, a project or a clip of it. Choose another name.");
    }
}

void checkCompressor(const std::string& name, const std::vector<std::string>& known)
{
    if (name != "Uncompressed" && std::ranges::find(known, name) == known.end()) {
        throw RenderFailed("There is no compressor \"" + name + "\" here. See --list-compressors.");
    }
}

void applyAviWords(const RenderWords& words, const LaidInputs& laid)
{
    const auto save = EngineAs<ITWSave>();
    checkCompressor(words.videoCompressor, videoCompressorNames());
    checkCompressor(words.audioCompressor, audioCompressorNames());
    check(save->SetVideoCompressor(words.videoCompressor));
    check(save->SetAudioCompressor(words.audioCompressor));
    check(save->SetFrameRate(words.framesPerSecond));
    check(save->SetQuality(words.quality));
    check(save->SetKeyFrameRate(words.keyFrameRate));
    EngineAs<twcore::EngineOptions>()->setVideoBitRate(words.videoRate);
    // Subsampled colour wants even sides, so an odd picture loses its last line or column.
    const int width = words.size ? words.size->first : std::max(16, laid.width & ~1);
    const int height = words.size ? words.size->second : std::max(16, laid.height & ~1);
    if (laid.width > 0) {
        check(save->SetVideoSize(width, height));
    }
}

void applyProfileWords(const RenderWords& words)
{
    const auto save = EngineAs<ITWSave>();
    if (!words.profile.empty()) {
        Bool16 ok = engine::kFalse;
        const auto profiles = EngineAs<engine::ITWProfiles>();
        check(profiles->OpenProfile(words.profile, ok));
        check(profiles->CloseProfile());
        if (ok == engine::kFalse) {
            throw RenderFailed("There is no profile \"" + words.profile + "\" here. See --list-profiles.");
        }
    }
    check(save->SetVideoProfile(words.profile.empty() ? kVideoProfile : words.profile));
    check(save->SetAudioProfile(words.profile.empty() ? kAudioProfile : words.profile));
    if (words.size) {
        check(save->SetWindowsMediaVideoSize(static_cast<std::int16_t>(words.size->first),
                                             static_cast<std::int16_t>(words.size->second)));
    }
    if (words.framesPerSecond > 0) {
        EngineAs<twcore::EngineOptions>()->setProfileFrameRate(words.framesPerSecond);
    }
}

void applyWords(const RenderWords& words, const LaidInputs& laid)
{
    const auto save = EngineAs<ITWSave>();
    check(save->ResetSave());
    if (words.isWindowsMedia()) {
        applyProfileWords(words);
    } else {
        applyAviWords(words, laid);
    }
    const bool isTold = words.quality >= 0 || words.videoRate > 0;
    check(save->SetCopyUnchanged(engine::toBool16(words.copiesUnchanged && !isTold)));
    check(save->SetSaveEffects(engine::toBool16(words.withEffects)));
    if (words.soundRate > 0 && !EngineAs<twcore::EngineOptions>()->setSoundRate(words.soundRate)) {
        throw RenderFailed("The engine does not take that sound rate. Choose one from 8000 to 192000.");
    }
    check(save->SetSaveWholeTimeline(engine::toBool16(!words.rangeMs)));
    if (words.rangeMs) {
        check(save->SetSaveRange(words.rangeMs->first, words.rangeMs->second));
    }
}

/// Answers the length of the movie's whole timeline.
engine::Milliseconds addTracks(const Tracks& tracks, const ChosenTracks& chosen)
{
    engine::Milliseconds longest = 0;
    const std::pair<engine::Handle, bool> all[] = {{tracks.video, chosen.video},
                                                   {tracks.overlay, chosen.overlay},
                                                   {tracks.audio1, chosen.audio1},
                                                   {tracks.audio2, chosen.audio2}};
    for (const auto& [track, isChosen] : all) {
        std::int16_t count = 0;
        Bool16 ok = engine::kFalse;
        check(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count));
        if (count > 0 && isChosen) {
            engine::Milliseconds duration = 0;
            check(EngineAs<engine::ITWTimeline>()->GetTrackDuration(track, duration));
            check(EngineAs<ITWSave>()->AddSaveTrack(track, ok));
            longest = std::max(longest, duration);
        }
    }
    return longest;
}

/// A range that only reaches behind the end is black there; one that lies behind it was meant for something else.
void checkRange(const RenderWords& words, engine::Milliseconds length)
{
    if (words.rangeMs && length > 0 && words.rangeMs->first >= length) {
        throw RenderFailed("The range " + std::to_string(words.rangeMs->first) + "-"
                           + std::to_string(words.rangeMs->second) + " lies wholly behind the end: the movie is "
                           + std::to_string(length) + " ms long. Choose an earlier one.");
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

/// Polls until the movie is whole, the more rarely the longer it takes. Raises what the engine reports.
void waitForEnd(const volatile int& interrupted)
{
    const auto begin = std::chrono::steady_clock::now();
    const auto save = EngineAs<ITWSave>();
    engine::Milliseconds durationMs = 0;
    check(save->GetSaveDuration(durationMs));
    while (true) {
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
        const auto passed =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
        std::this_thread::sleep_for(
            std::clamp(passed / 16, std::chrono::milliseconds(1), std::chrono::milliseconds(50)));
    }
}

/// The engine speaks of the file that it writes to, people of the one that they named.
std::string inTheirWords(std::string text, const disk::WholeFile& movie, const std::string& output)
{
    if (const auto at = text.find(movie.path()); at != std::string::npos) {
        text.replace(at, movie.path().size(), output);
    }
    return text;
}

void describe(const std::string& path, const DescribingWords& texts)
{
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = engine::kFalse;
    check(save->OpenMetadata(path, ok));
    if (ok == engine::kFalse) {
        throw RenderFailed("The title and the other texts cannot be written to \"" + path + "\".");
    }
    check(save->SetTitle(texts.title));
    check(save->SetAuthor(texts.author));
    check(save->SetRating(texts.rating));
    check(save->SetDescription(texts.description));
    check(save->SetCopyright(texts.copyright));
    check(save->SaveMetadata());
}

/// A movie without its texts is a movie: it is kept, and then the failure told.
void keepDescribed(disk::WholeFile& movie, const RenderWords& words)
{
    std::string failure;
    try {
        if (!words.describing.isBlank()) {
            describe(movie.path(), words.describing);
        }
    } catch (const std::exception& error) {
        failure = inTheirWords(error.what(), movie, words.output) + " It is kept without them.";
    }
    movie.takeName();
    if (!failure.empty()) {
        throw RenderFailed(failure);
    }
}

void keepTrace(disk::WholeFile& trace, const std::string& name)
{
    const std::string movieIsWhole = "The movie is whole, but the trace \"" + name + "\" cannot be written";
    if (!EngineAs<twcore::EngineOptions>()->finishTrace(trace.path())) {
        throw RenderFailed(movieIsWhole + ". Choose another place for it.");
    }
    try {
        trace.takeName();
    } catch (const disk::Refused& refused) {
        throw RenderFailed(movieIsWhole + ": " + refused.what());
    }
}

void checkIsNoMovie(const std::string& trace, const disk::WholeFile& movie)
{
    if (movie.isFor(trace)) {
        throw RenderFailed("The trace \"" + trace + "\" is the movie itself. Choose another name for one of them.");
    }
}

RenderResult resultSince(std::chrono::steady_clock::time_point begin)
{
    const auto options = EngineAs<twcore::EngineOptions>();
    std::int32_t copied = 0;
    check(EngineAs<ITWSave>()->GetFramesCopied(copied));
    RenderResult result{options->framesSaved(), copied, options->samplesSaved(), 0, 0};
    int numerator = 25;
    int denominator = 1;
    options->frameRateSaved(numerator, denominator);
    const double pictureSeconds = static_cast<double>(result.frames) * denominator / numerator;
    const double soundSeconds = static_cast<double>(result.samples) / options->soundRateSaved();
    result.movieSeconds = result.samples > 0 ? soundSeconds : pictureSeconds;
    result.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}

void saveTo(const disk::WholeFile& movie, const RenderWords& words, const volatile int& interrupted)
{
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = engine::kFalse;
    const bool isProfiled = words.isWindowsMedia();
    const auto prepared =
        isProfiled ? save->PrepareWindowsMediaFile(movie.path(), ok) : save->PrepareAviFile(movie.path(), ok);
    check(prepared);
    if (ok == engine::kFalse) {
        const std::string kind = isProfiled ? "profile" : "compressor";
        if (!prepared.text().empty()) {
            throw RenderFailed("Nothing can be saved to \"" + words.output + "\" like this: " + prepared.text()
                               + " Choose another " + kind + " or size.");
        }
        throw RenderFailed("Nothing can be saved to \"" + words.output + "\" like this: the timeline is empty, or a "
                           + kind + " refuses the size or the rates. Choose another " + kind + " or size.");
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
    disk::WholeFile movie(words.output);
    std::optional<disk::WholeFile> trace;
    if (!words.trace.empty()) {
        checkIsNoMovie(words.trace, movie);
        trace.emplace(words.trace);
    }
    const Tracks tracks = createTracks();
    LaidInputs laid = layInputs(tracks, words.inputs, interrupted);
    for (const auto& trouble : laid.troubles) {
        std::cerr << "quillmont-render: " << forTerminal(trouble) << "\n";
    }
    checkIsNoInput(movie, words.output, laid.files);
    if (trace) {
        checkIsNoInput(*trace, words.trace, laid.files);
    }
    if (words.size && !laid.isProject && laid.width > 0) {
        // Loose files have no frame of their own to be laid out in: nothing is squeezed.
        std::tie(laid.width, laid.height) = *words.size;
    }
    if (laid.width > 0) {
        const auto clamp = [](int side) { return static_cast<std::int16_t>(std::clamp(side, 16, 8192)); };
        check(EngineAs<engine::ITWTimeline>()->SetFrameSize(clamp(laid.width), clamp(laid.height)));
    }
    applyWords(words, laid);
    checkRange(words, addTracks(tracks, words.tracks));
    if (trace) {
        EngineAs<twcore::EngineOptions>()->startTrace();
    }
    try {
        saveTo(movie, words, interrupted);
    } catch (const engine::RuntimeError& error) {
        throw RenderFailed(inTheirWords(error.what(), movie, words.output));
    }
    checkUnchanged(laid);
    keepDescribed(movie, words);
    if (trace) {
        checkIsNoMovie(words.trace, movie); // on a disk that makes no difference between A and a, too
        keepTrace(*trace, words.trace);
    }
    return resultSince(begin);
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
    char numbers[224];
    std::snprintf(numbers, sizeof numbers,
                  "\"frames\":%lld,\"frames_copied\":%lld,\"samples\":%lld,\"seconds\":%.6f,\"wall_seconds\":%.3f}",
                  result.frames, result.framesCopied, result.samples, result.movieSeconds, result.wallSeconds);
    return "{\"output\":\"" + output + "\"," + numbers;
}

} // namespace app
