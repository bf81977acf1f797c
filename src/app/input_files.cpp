#include "app/input_files.h"

#include "app/render_job.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWProjectStore.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "project/project_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace app {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;

namespace {

std::string quoted(const std::string& path) { return "\"" + path + "\""; }

/// What is wrong with a file that the engine does not take, as a sentence; `told` is what the engine has to say of it.
std::string causeOf(const std::string& path, std::uint32_t code, const std::string& told = {})
{
    namespace fs = std::filesystem;
    std::error_code error;
    const auto status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return quoted(path) + " is not there. Check the path.";
    }
    if (status.type() == fs::file_type::directory) {
        return quoted(path) + " is a folder. Name the files in it.";
    }
    if (error == std::errc::filename_too_long) {
        return quoted(path) + " is too long for a name. Check the path.";
    }
    if (error == std::errc::too_many_symbolic_link_levels) {
        return quoted(path) + " is a ring of links. Name the file itself.";
    }
    if (error || ::access(path.c_str(), R_OK) != 0) {
        return quoted(path) + " may not be read. Change its permissions, or copy it to a place of your own.";
    }
    if (status.type() != fs::file_type::regular) {
        return quoted(path) + " is no regular file. Copy its contents to a file first.";
    }
    if (fs::file_size(path, error) == 0) {
        return quoted(path) + " is empty. Copy or record it again.";
    }
    if (!told.empty()) {
        return told;
    }
    namespace media_error = engine::media_error;
    switch (code) {
    case media_error::kUnknownFormat:
        return quoted(path) + " is no video, sound or image that is known here. Name another file, or convert it.";
    case media_error::kInvalidFormat:
        return quoted(path) + " is damaged: nothing in it can be decoded. Copy it again.";
    case media_error::kNoDecoder:
        return quoted(path) + " needs a decoder that this machine does not have. Install it, or convert the file.";
    case media_error::kCannotLoad:
        return quoted(path) + " cannot be read, or its disk does not answer. Copy it to another disk.";
    default:
        return quoted(path) + " cannot be opened. Name another file.";
    }
}

std::string absolutePath(const std::string& path)
{
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.string();
}

ReadFile stampOf(const std::string& path)
{
    std::error_code error;
    ReadFile file{path, std::filesystem::last_write_time(path, error), 0};
    file.byteCount = std::filesystem::file_size(path, error);
    return file;
}

/// Opens a file and all its streams.
Handle openFile(const std::string& path, LaidInputs& laid)
{
    const bool isNew = std::ranges::find(laid.files, path, &ReadFile::path) == laid.files.end();
    laid.files.push_back(stampOf(path));
    const auto core = EngineAs<engine::ITWCoreRoot>();
    std::uint32_t code = 0;
    Handle file = 0;
    const auto tried = core->GetFileError(path, code);
    check(tried);
    check(core->OpenFile(path, file));
    if (file == 0) {
        throw RenderFailed(causeOf(path, code, tried.text()));
    }
    if (isNew && !tried.text().empty()) {
        laid.troubles.push_back(tried.text());
    }
    const auto media = EngineAs<engine::ITWMediaFiles>();
    Handle stream = -1;
    for (std::int16_t index = 0; stream != 0; ++index) {
        check(media->OpenStream(file, index, stream));
    }
    return file;
}

engine::Milliseconds longestTrack(const Tracks& tracks)
{
    engine::Milliseconds longest = 0;
    for (const Handle track : tracks.all()) {
        engine::Milliseconds duration = 0;
        check(EngineAs<engine::ITWTimeline>()->GetTrackDuration(track, duration));
        longest = std::max(longest, duration);
    }
    return longest;
}

void layFile(const Tracks& tracks, Handle file, LaidInputs& laid)
{
    const auto media = EngineAs<engine::ITWMediaFiles>();
    const engine::Milliseconds start = longestTrack(tracks);
    for (std::int16_t index = 0;; ++index) {
        Handle stream = 0;
        check(media->OpenStream(file, index, stream));
        if (stream == 0) {
            return;
        }
        Bool16 isVideo = engine::kFalse;
        Bool16 ok = engine::kFalse;
        check(media->IsVideoStream(stream, isVideo));
        const bool video = isVideo != engine::kFalse;
        const auto timeline = EngineAs<engine::ITWTimeline>();
        check(timeline->AppendSource(video ? tracks.video : tracks.audio1, stream, start, ok));
        if (ok == engine::kFalse) {
            throw RenderFailed("The timeline is full. Render fewer inputs at once.");
        }
        if (video) {
            // Whole, with bars: loose files of all shapes must not be squeezed.
            constexpr std::int16_t kPreserveAspectRatio = 2;
            std::int16_t count = 0;
            check(timeline->GetSourceCount(tracks.video, count));
            check(timeline->SetSourceStretchMode(tracks.video, static_cast<std::int16_t>(count - 1),
                                                 kPreserveAspectRatio));
        }
        if (video && laid.width == 0) {
            check(media->SelectStream(stream, ok));
            check(EngineAs<engine::ITWStreamInfo>()->GetVideoSize(laid.height, laid.width));
        }
    }
}

bool isProject(const std::string& path)
{
    const std::filesystem::path name(path);
    if (name.extension() == ".qpj" || name.extension() == ".QPJ") {
        return true;
    }
    char head[64] = {};
    std::error_code error;
    if (std::filesystem::is_regular_file(name, error)) {
        std::ifstream(name, std::ios::binary).read(head, sizeof head - 1);
    }
    return std::string_view(head).starts_with("<QuillmontProject");
}

void stopIf(const volatile int& interrupted)
{
    if (interrupted != 0) {
        throw RenderFailed("Interrupted. No movie was written.");
    }
}

/// Links and locks are for those who edit; what is disabled is neither seen nor heard.
void applyRows(const Tracks& tracks, const project::AllRowOptions& rows)
{
    const auto timeline = EngineAs<engine::ITWTimeline>();
    for (const auto& [track, row] : {std::pair{tracks.video, project::kVideoRow},
                                     {tracks.overlay, project::kOverlayRow},
                                     {tracks.audio1, project::kAudio1Row},
                                     {tracks.audio2, project::kAudio2Row}}) {
        check(timeline->SetTrackDisabled(track, engine::toBool16(rows[row].isDisabled)));
    }
    check(timeline->SetEffectsEnabled(engine::toBool16(!rows[project::kEffectRow].isDisabled)));
}

LaidInputs layProject(const Tracks& tracks, const std::string& path, const volatile int& interrupted)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) || ::access(path.c_str(), R_OK) != 0) {
        throw RenderFailed(causeOf(path, 0));
    }
    const auto project = project::readProjectFile(path);
    LaidInputs laid{{stampOf(path)}, project.previewWidth, project.previewHeight, true, {}};
    const auto folder = std::filesystem::path(path).parent_path();
    for (const auto& mediaPath : project.mediaPaths) {
        stopIf(interrupted);
        // Projects name full paths; one that was written by hand may name them from its own folder.
        openFile(absolutePath((folder / mediaPath).string()), laid);
    }
    check(EngineAs<engine::ITWProjectStore>()->LoadProject(path));
    const auto keys = EngineAs<engine::ITWKeyTransition>();
    for (std::size_t i = 0; i < project.overlayKeys.size(); ++i) {
        const auto& key = project.overlayKeys[i];
        const auto seq = static_cast<std::int16_t>(i);
        Bool16 ok = engine::kFalse;
        check(keys->ClearKeyParameters(tracks.overlay, seq));
        check(keys->SetKeyParameter(tracks.overlay, seq, "KeyType", 0, ok));
        check(keys->SetKeyColor(tracks.overlay, seq, key.red, key.green, key.blue, ok));
    }
    applyRows(tracks, project.rows);
    return laid;
}

} // namespace

Tracks createTracks()
{
    const auto timeline = EngineAs<engine::ITWTimeline>();
    Tracks tracks;
    check(timeline->CreateTrack(engine::kTrue, tracks.video));
    check(timeline->CreateTrack(engine::kTrue, tracks.overlay));
    check(timeline->CreateTrack(engine::kFalse, tracks.audio1));
    check(timeline->CreateTrack(engine::kFalse, tracks.audio2));
    return tracks;
}

LaidInputs layInputs(const Tracks& tracks, const std::vector<std::string>& inputs, const volatile int& interrupted)
{
    if (std::ranges::any_of(inputs, isProject)) {
        if (inputs.size() > 1) {
            throw RenderFailed("A project is rendered alone. Leave out the other inputs, or add them to the project.");
        }
        return layProject(tracks, inputs.front(), interrupted);
    }
    LaidInputs laid;
    for (const auto& input : inputs) {
        stopIf(interrupted);
        layFile(tracks, openFile(absolutePath(input), laid), laid);
    }
    return laid;
}

void checkUnchanged(const LaidInputs& laid)
{
    for (const auto& file : laid.files) {
        const ReadFile now = stampOf(file.path);
        if (now.changed != file.changed || now.byteCount != file.byteCount) {
            throw RenderFailed(
                quoted(file.path)
                + " changed or vanished while it was read, so that the movie is not whole. Leave it alone "
                  "and start again.");
        }
    }
}

} // namespace app
