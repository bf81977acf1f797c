#include "media/rows.h"

#include "core/file_text.h"
#include "core/forms/frmMediaList.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/media_files.h"

#include <algorithm>
#include <initializer_list>

namespace moduleTarnwick {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::kFalse;

namespace {

constexpr const char* kNothing = "     --"; // stands where a file has no picture, or no sound

/// The row that later streams of the file being opened fill in; from 1, 0 none.
std::int32_t CurrentListItem = 0;

enum Column : std::size_t { kMediaType, kDuration, kVideoInfo, kAudioInfo };

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words)
{
    return std::ranges::find(words, word) != words.end();
}

std::string trimmedSmall(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    std::string small(first == std::string_view::npos ? ""
                                                      : text.substr(first, text.find_last_not_of(' ') - first + 1));
    std::ranges::transform(small, small.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return small;
}

std::int16_t iconOf(std::string_view mediaClass) { return mediaClass == "Audio" ? 1 : mediaClass == "Video" ? 2 : 3; }

std::string durationText(engine::ITWStreamInfo& info)
{
    double seconds = 0;
    check(info.GetDuration(seconds));
    return time_text::MilliSecondsToTimetypeAsString(numbers::rounded<std::int32_t>(seconds * 1000));
}

std::string pictureText(engine::ITWStreamInfo& info)
{
    std::int32_t height = 0;
    std::int32_t width = 0;
    double fps = 0;
    check(info.GetVideoSize(height, width));
    check(info.GetFrameRate(fps));
    const std::string size = std::to_string(width) + " x " + std::to_string(height);
    return fps == 0 ? size : size + ", " + std::to_string(numbers::rounded<std::int16_t>(fps)) + "fps";
}

std::string soundText(engine::ITWStreamInfo& info)
{
    std::int32_t hertz = 0;
    check(info.GetAudioSampleRate(hertz));
    return std::to_string(hertz) + " Hz";
}

/// Facts of one stream, then a placeholder in the other kind's column while that is empty.
void describe(ListItem& row, Column own, std::string facts, std::string duration)
{
    const Column other = own == kVideoInfo ? kAudioInfo : kVideoInfo;
    row.SubItems[kMediaType] = GetMediaClass();
    row.SubItems[kDuration] = std::move(duration);
    row.SubItems[own] = std::move(facts);
    if (row.SubItems[other].empty()) {
        row.SubItems[other] = kNothing;
    }
}

} // namespace

bool Init()
{
    return Trapped("moduleTarnwick", "Init", [] {
        state::FileCollection.Clear();
        state::StreamCollection.Clear();
        state::TrackCollection.Clear();
    });
}

std::string GetMediaClass()
{
    state::LastOpenedExtension = trimmedSmall(state::LastOpenedExtension);
    const std::string_view extension = state::LastOpenedExtension;
    // "aiff" counts as video on purpose: the dialogue's filter places it there too.
    if (isOneOf(extension, {"asf", "aiff", "avi", "mpeg", "mpg", "wmv"})) {
        return "Video";
    }
    // Behind the line's break in both: newer kinds, classed by what they are.
    if (isOneOf(extension, {"midi", "au", "mid", "mp3", "wav", "wma", //
                            "flac", "ogg", "opus", "m4a", "aac"})) {
        return "Audio";
    }
    if (isOneOf(extension, {"gif", "bmp", "jpeg", "jpg", "tga", //
                            "png", "webp", "tif", "tiff"})) {
        return "Image";
    }
    return "Video";
}

void FillTWListView(Handle stream)
{
    Trapped("moduleTarnwick", "FillTWListView", [&] {
        Bool16 ok = kFalse;
        Bool16 isVideo = kFalse;
        Bool16 isAudio = kFalse;
        check(engine::EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok));
        const auto info = engine::EngineAs<engine::ITWStreamInfo>();
        check(info->IsVideo(isVideo));
        check(info->IsAudio(isAudio));
        ListView& list = forms::frmMediaList.lvwMediaList;
        if (state::FirstStreamOfFile) {
            list.Add({.Text = {}, .SubItems = {}, .Icon = iconOf(GetMediaClass()), .Selected = false});
            CurrentListItem = list.Count();
            state::FirstStreamOfFile = false;
        }
        if (isVideo != kFalse) {
            describe(list.Change(CurrentListItem), kVideoInfo, pictureText(*info), durationText(*info));
        } else if (isAudio != kFalse) {
            describe(list.Change(CurrentListItem), kAudioInfo, soundText(*info), durationText(*info));
        }
    });
}

void AppendToTWListView(Handle file)
{
    Trapped("moduleTarnwick", "AppendToTWListView", [&] {
        state::FileCollection.Add(file);
        forms::frmMediaList.lvwMediaList.Change(state::FileCollection.Count()).Text =
            file_text::ExtractFileName(media::pathOf(file));
    });
}

void RemoveFromTWListView(Handle file)
{
    Trapped("moduleTarnwick", "RemoveFromTWListView", [&] {
        const std::int32_t place = state::FileCollection.PlaceOf(file);
        if (place == 0) {
            return;
        }
        ListView& list = forms::frmMediaList.lvwMediaList;
        // The focus stays on its row while rows above it go.
        const std::int32_t focus = list.SelectedItem;
        state::FileCollection.Remove(place);
        list.Remove(place);
        if (place < focus) {
            list.SelectedItem = focus - 1;
        }
    });
}

} // namespace moduleTarnwick
