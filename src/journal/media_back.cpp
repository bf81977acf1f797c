#include "journal/media_back.h"

#include "core/file_text.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "engine/ITWMediaFiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "journal/bring_back.h"
#include "media/media_files.h"
#include "media/moduleTarnwick.h"

#include <unordered_set>

namespace journal {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::kFalse;

namespace {

/// Without a search: a file that is not there is left to the caller's list.
bool openIfThere(const std::string& path)
{
    Bool16 exists = kFalse;
    check(engine::Engine->FileExists(path, exists));
    if (exists == kFalse) {
        return false;
    }
    const std::int32_t filesBefore = state::FileCollection.Count();
    moduleTarnwick::OpenResentFile(path);
    return state::FileCollection.Count() > filesBefore;
}

/// The file's streams of this process, opened where they are not.
MediaFile readStreams(Handle file, const std::string& path)
{
    const auto files = engine::EngineAs<engine::ITWMediaFiles>();
    MediaFile media{.path = path};
    for (std::int16_t index = 0; index < 2; ++index) {
        Handle stream = 0;
        check(files->OpenStream(file, index, stream));
        if (stream != 0) {
            Bool16 isPicture = kFalse;
            check(files->IsVideoStream(stream, isPicture));
            (isPicture != kFalse ? media.picture : media.sound) = stream;
        }
    }
    return media;
}

/// Opens it without a row, and closes it: its handles stay good. Nothing when it cannot be opened.
bool makeKnown(const std::string& path, MediaFile& media, Capture& capture)
{
    Handle file = 0;
    check(engine::Engine->OpenFile(path, file));
    if (file == 0) {
        return false;
    }
    media = readStreams(file, path);
    capture.remember(file, media);
    Bool16 ok = kFalse;
    check(engine::Engine->CloseFile(file, ok));
    for (const Handle stream : {media.picture, media.sound}) {
        if (stream != 0) {
            check(engine::EngineAs<engine::ITWMediaFiles>()->CloseStream(stream, ok));
        }
    }
    return true;
}

/// Every stream that an image names.
std::unordered_set<Handle> usedStreams(const StateImage& image)
{
    std::unordered_set<Handle> used;
    const auto look = [&](const Records& records) {
        for (const auto* const sources : {&records->Sources, &records->OverlaySources}) {
            for (const auto& source : *sources) {
                used.insert(source.Stream);
            }
        }
    };
    look(image.timeline);
    look(image.newest);
    for (const EntryImage& entry : image.entries) {
        look(entry.records);
    }
    return used;
}

void map(StreamMap& streams, const MediaFile& was, const MediaFile& is)
{
    if (was.picture != 0) {
        streams[was.picture] = is.picture;
    }
    if (was.sound != 0) {
        streams[was.sound] = is.sound;
    }
}

void showProgress(std::size_t number, std::size_t total, const std::string& path)
{
    media::say("Bringing back file " + std::to_string(number) + " of " + std::to_string(total) + " ("
               + file_text::ExtractFileName(path) + ")");
    forms::mdiTarnwick.pbarMain.SetValue(static_cast<std::int32_t>(number));
    ports.events->letRun();
}

void openListed(const MediaTable& table, MediaBack& back)
{
    const media::OpeningSpan span;
    ProgressBar& progress = forms::mdiTarnwick.pbarMain;
    progress.SetMin(0);
    progress.SetMax(static_cast<std::int32_t>(table.listed));
    progress.Visible = table.listed > 1;
    for (std::size_t i = 0; i < table.listed; ++i) {
        const MediaFile& file = table.files[i];
        showProgress(i + 1, table.listed, file.path);
        if (openIfThere(file.path)) {
            map(back.streams, file, readStreams(state::FileCollection.Item(state::FileCollection.Count()), file.path));
        } else {
            back.missing.push_back(file.path);
        }
    }
    progress.Visible = false;
    media::say("Done");
}

} // namespace

MediaBack bringMediaBack(const StateImage& image, Capture& capture)
{
    MediaBack back;
    openListed(*image.media, back);
    const std::unordered_set<Handle> used = usedStreams(image);
    for (std::size_t i = image.media->listed; i < image.media->files.size(); ++i) {
        const MediaFile& file = image.media->files[i];
        MediaFile media;
        if (!used.contains(file.picture) && !used.contains(file.sound)) {
            continue;
        }
        if (makeKnown(file.path, media, capture)) {
            map(back.streams, file, media);
        } else {
            back.missing.push_back(file.path);
        }
    }
    return back;
}

} // namespace journal
