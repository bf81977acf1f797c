#include "media/opening.h"

#include "core/file_text.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWMediaFiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/waiting.h"
#include "media/closing.h"
#include "media/frmMediaList_events.h"
#include "media/media_files.h"
#include "media/open_dialogue.h"
#include "media/rows.h"
#include "settings/recent_lists.h"

#include <cstdio>
#include <functional>
#include <utility>

using engine::check;
using engine::Handle;

media::Opened media::openWithRow(const std::string& path)
{
    state::LastOpenedExtension = lastPiece(path.substr(path.find_last_of("/\\") + 1));
    Handle file = 0;
    check(engine::Engine->OpenFile(path, file));
    if (file == 0) {
        return Opened::kNotThere;
    }
    const ListView& list = forms::frmMediaList.lvwMediaList;
    const std::int32_t rowsBefore = list.Count();
    moduleTarnwick::OpenStreams(file);
    if (list.Count() == rowsBefore) {
        moduleTarnwick::CloseStreams(file);
        engine::Bool16 ok = engine::kFalse;
        check(engine::Engine->CloseFile(file, ok));
        return Opened::kNoStream;
    }
    moduleTarnwick::AppendToTWListView(file);
    state::MediaListDirty = true;
    return Opened::kOpened;
}

void media::lookAhead(const std::vector<std::string>& paths, std::size_t place)
{
    constexpr std::size_t kAhead = 2;
    const auto files = engine::EngineAs<engine::ITWMediaFiles>();
    for (std::size_t next = place + 1; next < paths.size() && next <= place + kAhead; ++next) {
        check(files->LookAhead(paths[next]));
    }
}

namespace moduleTarnwick {

namespace {

constexpr const char* kModule = "moduleTarnwick";
constexpr std::int16_t kDefaultPointer = 0;
constexpr std::int16_t kHourglass = 11;

bool openedWithRow(const std::string& path) { return media::openWithRow(path) == media::Opened::kOpened; }

/// Walks the recent files up to a hit or to "Empty".
bool isInRecentFiles(const std::function<bool(const std::string&)>& isHit)
{
    for (const Menu& item : forms::mdiTarnwick.mnuFileRF) {
        const std::string& caption = item.Caption;
        if (caption == "Empty") {
            return false;
        }
        if (isHit(caption)) {
            return true;
        }
    }
    return false;
}

/// One of several files. What cannot be opened is told, and the next one follows.
void openOneOfSeveral(const std::string& path)
{
    const std::string name = file_text::ExtractFileName(path);
    if (!CheckMediaFile(path)) {
        return;
    }
    if (!openedWithRow(path)) {
        tellUser("Unable to open " + path + ".");
        return;
    }
    // Meant: a file of the same name in another folder counts as present.
    if (!isInRecentFiles([&](const std::string& caption) { return file_text::ExtractFileName(caption) == name; })) {
        ModuleSettings::UpdateResentFileMenu();
    }
}

void openSeveral(const std::vector<std::string>& paths)
{
    ProgressBar& progress = forms::mdiTarnwick.pbarMain;
    const auto total = static_cast<std::int32_t>(paths.size());
    progress.SetMin(0);
    progress.SetMax(total);
    progress.SetValue(0);
    progress.Visible = true;
    for (std::int32_t number = 1; number <= total; ++number) {
        const auto place = static_cast<std::size_t>(number) - 1;
        const std::string& path = paths[place];
        media::lookAhead(paths, place);
        char count[48];
        std::snprintf(count, sizeof count, "Opening file %02d of %02d (", number, total);
        media::say(count + file_text::ExtractFileName(path) + ")");
        progress.SetValue(number);
        ports.events->letRun();
        if (state::OpeningCancelled) {
            return;
        }
        openOneOfSeveral(path);
    }
}

/// False when the file could not be opened: then the status text stays as it is.
bool openSingle(const std::string& path)
{
    if (!CheckMediaFile(path)) {
        return false;
    }
    if (!openedWithRow(path)) {
        tellUser("Unable to open file.");
        return false;
    }
    // Meant: here only the same path is a hit.
    if (!isInRecentFiles([&](const std::string& caption) { return caption == path; })) {
        ModuleSettings::UpdateResentFileMenu();
    }
    return true;
}

void showThatOpeningEnded()
{
    media::say("Done");
    forms::mdiTarnwick.MousePointer = kDefaultPointer;
    forms::mdiTarnwick.pbarMain.Visible = false;
}

void selectLastRow()
{
    frmMediaList::ClearMediaListSelections();
    ListView& list = forms::frmMediaList.lvwMediaList;
    if (list.Count() > 0) {
        forms::frmMediaList.txtFilter.Text = std::string(); // it may hide the row
        list.Change(list.Count()).Selected = true;
        list.SelectedItem = list.Count();
        frmMediaList::OnLvwMediaListClick();
    }
}

/// After a cancel the status text tells the end of the opening rather than the row that is selected.
void sayDoneWhenCancelled()
{
    if (state::OpeningCancelled) {
        media::say("Done");
    }
}

/// Runs an opening with the errors that it meets, whatever it was called by.
void trappedOpening(const char* function, const std::function<void()>& opening)
{
    const auto body = [&] {
        try {
            opening();
        } catch (...) {
            showThatOpeningEnded();
            throw;
        }
    };
    constexpr std::int32_t kInvalidProperty = 380;
    constexpr std::int32_t kNamesTooLong = 20476;
    constexpr std::int32_t kCancelled = 32755;
    const std::string silently = std::string(function) + "*";
    Trapped(
        kModule, function, body,
        {{kInvalidProperty, [&] { ReportError(kModule, silently, currentError()); }},
         {engine::error_number::kObjectNotSet, [] {}},
         {kCancelled, [] {}},
         {kNamesTooLong, [] { tellUser("You have selected too many files to open. Please select fewer files."); }}});
}

std::string_view textOfMediaError(std::uint32_t code)
{
    switch (code) {
    case 0x80040217u:
        return "No combination of intermediate filters could be found to make the connection.";
    case 0x80040218u:
        return "No combination of filters could be found to render the stream of this media file.";
    case 0x8004022Fu:
        return "The file format is invalid.";
    case 0x80040240u:
        return "The media type of this file is not recognized.";
    case 0x80040241u:
        return "The source filter for this media file could not be loaded.";
    case 0x80040265u:
        return "Cannot play back the file: the format is not supported.";
    case 0x00040242u:
        return "Some of the streams in this media file are in an unsupported format.";
    case 0x00040257u:
        return "The video in this media file cannot be rendered.";
    case 0x00040258u:
        return "The audio in this media file cannot be rendered.";
    case engine::media_error::kIsFolder:
        return "This is a folder. Open or drop the files that are in it.";
    default:
        return "Unexpected error.";
    }
}

} // namespace

void OnFileOpenClick()
{
    trappedOpening("OnFileOpenClick", [] {
        media::say("Opening file...");
        forms::mdiTarnwick.MousePointer = kHourglass;
        const media::ChosenFiles chosen = media::chosenFiles(ports.dialogs->openFiles(media::openMediaRequest()));
        if (chosen.severally) {
            openSeveral(chosen.paths);
        } else if (chosen.paths.empty() || !openSingle(chosen.paths.front())) {
            forms::mdiTarnwick.MousePointer = kDefaultPointer;
            return;
        }
        showThatOpeningEnded();
        selectLastRow();
        sayDoneWhenCancelled();
    });
}

void OpenDroppedFiles(const std::vector<std::string>& paths)
{
    if (state::BusyOpening || paths.empty()) {
        return;
    }
    const media::OpeningSpan span;
    trappedOpening("OpenDroppedFiles", [&] {
        forms::mdiTarnwick.MousePointer = kHourglass;
        openSeveral(paths);
        showThatOpeningEnded();
        selectLastRow();
        sayDoneWhenCancelled();
    });
    state::markModified();
    EnableOrDisableMenuItems();
}

void OpenResentFile(std::string_view path)
{
    const auto body = [&] {
        state::FileNotFoundShown = false; // each opening tells it once
        media::say("Opening files...");
        forms::mdiTarnwick.MousePointer = kHourglass;
        if (!CheckMediaFile(path)) {
            forms::mdiTarnwick.MousePointer = kDefaultPointer;
            return;
        }
        if (!openedWithRow(std::string(path))) {
            forms::mdiTarnwick.MousePointer = kDefaultPointer;
            tellUser("File not found.");
            state::FileNotFoundShown = true;
            return;
        }
        media::say("Done");
        forms::mdiTarnwick.MousePointer = kDefaultPointer;
    };
    Trapped(kModule, "OpenResentFile", [&] {
        try {
            body();
        } catch (...) {
            forms::mdiTarnwick.MousePointer = kDefaultPointer;
            throw;
        }
    });
}

bool CheckMediaFile(std::string_view path)
{
    bool passes = false;
    // A disk that is slow to answer does not stop the window.
    const auto before = std::exchange(engine::whileWaiting, [] {
        ports.events->letRun();
        return !state::OpeningCancelled;
    });
    Trapped(kModule, "CheckMediaFile", [&] {
        std::uint32_t code = 0;
        check(engine::Engine->GetFileError(path, code));
        if (state::OpeningCancelled) {
            return; // the person knows
        }
        passes = code == engine::media_error::kNone || code == engine::media_error::kNotFound
                 || code == engine::media_error::kInvalidArgument;
        if (!passes) {
            // A file of which only a part can be rendered is refused as well, on purpose.
            tellUser("Unable to open file - \"" + std::string(path) + "\".\r\n" + std::string(textOfMediaError(code)));
        }
    });
    engine::whileWaiting = before;
    return passes;
}

void OpenStreams(Handle file)
{
    Trapped(kModule, "OpenStreams", [&] {
        const auto files = engine::EngineAs<engine::ITWMediaFiles>();
        state::FirstStreamOfFile = true;
        for (std::int16_t index = 0;; ++index) {
            Handle stream = 0;
            check(files->OpenStream(file, index, stream));
            if (stream == 0) {
                return;
            }
            state::StreamCollection.Add(stream);
            FillTWListView(stream);
        }
    });
}

} // namespace moduleTarnwick
