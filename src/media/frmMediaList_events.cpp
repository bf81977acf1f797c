#include "media/frmMediaList_events.h"

#include "core/file_text.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/file_presence.h"
#include "media/file_preview.h"
#include "media/media_files.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace frmMediaList {

namespace {

constexpr const char* kModule = "frmMediaList";
constexpr std::int32_t kBadFileName = 52;

/// The row with the focus; 0 when there is none.
std::int32_t selectedPlace()
{
    const ListView& list = forms::frmMediaList.lvwMediaList;
    const std::int32_t place = list.SelectedItem;
    return place <= list.Count() ? place : 0;
}

std::string inCapitals(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

void SetFileInformationCaptions()
{
    constexpr const char* kCaptions[] = {"Path", "Size", "Created On", "File type", "Streams"};
    auto& form = forms::frmMediaList;
    form.lblFile.Caption = "File name";
    for (std::size_t i = 0; i < form.lblInfo.size(); ++i) {
        form.lblInfo[i].Caption = kCaptions[i];
    }
}

/// Raises the shell's errors: a file that has gone from the disk is noticed here.
void showFacts(const std::string& path)
{
    auto& facts = forms::frmMediaList.lblInfoDisplay;
    for (Label& fact : facts) {
        fact.Caption = "";
    }
    const auto info = engine::EngineAs<engine::ITWStreamInfo>();
    engine::check(info->OpenFileInfo(path, 0));
    facts[0].Caption = path;
    facts[1].Caption = file_text::FileSizeUnitConversion(ports.shell->fileLength(path));
    facts[2].Caption = ports.shell->asText(ports.shell->fileTime(path));
    facts[3].Caption = inCapitals(media::lastPiece(file_text::ExtractFileName(path)));
    std::int32_t streams = 0;
    engine::check(info->GetStreamCount(streams));
    facts[4].Caption = std::to_string(streams);
}

/// True when the row's sign has changed.
bool markMissing(std::int32_t place, bool isMissing)
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    if (list.Row(place).Missing == isMissing) {
        return false;
    }
    list.Change(place).Missing = isMissing;
    return true;
}

void showSelectedFile(std::int32_t place)
{
    auto& form = forms::frmMediaList;
    const ListItem row = form.lvwMediaList.Row(place);
    form.picPreviewSmallCleared = form.picPreviewSmallCleared + 1;
    SetFileInformationCaptions();
    form.lblFileDisplay.Caption = row.Text;
    const std::string path = media::pathOf(state::FileCollection.Item(place));
    showFacts(path);
    if (markMissing(place, false)) {
        UpdatePreview(); // the player gave the file up
    }
    media::loadFilePreview(row.SubItems[0], path);
}

void sayWhatIsSelected(const std::string& name)
{
    media::say("Selected file: \"" + name
               + "\". Total Files in Media List: " + std::to_string(forms::frmMediaList.lvwMediaList.Count()) + ".");
}

/// The captions of the facts stay, what stood beside them goes with the file.
void showThatNothingIsSelected()
{
    auto& form = forms::frmMediaList;
    Trapped(kModule, "lvwMediaList_Click", [&] {
        sayWhatIsSelected({});
        form.lblFileDisplay.Caption = "";
        for (Label& fact : form.lblInfoDisplay) {
            fact.Caption = "";
        }
        media::resetFilePreview();
        form.picPreviewSmallCleared = form.picPreviewSmallCleared + 1;
        form.sldFilePreview.SetValue(0);
    });
}

/// A file that cannot be shown is told, and the one that was loaded before does not stay in the player.
HandledError toldError(std::int32_t number, const char* text)
{
    return {number, [text, hasGone = number != kBadFileName] {
                markMissing(selectedPlace(), hasGone);
                tellUser(text);
                media::resetFilePreview();
            }};
}

/// Progress of an opening is not written over by a pointer that passes.
void hint(const char* text)
{
    if (!state::BusyOpening) {
        media::say(text);
    }
}

} // namespace

void Load()
{
    auto& form = forms::frmMediaList;
    SetFileInformationCaptions();
    form.tmFilePreview.Interval = 100;
    form.tmFilePreview.tick = tmFilePreview_Timer;
}

void Unload()
{
    Trapped(kModule, "Form_Unload", [] { media::closeFilePreview(); });
}

void CloseFromWindowMenu()
{
    forms::frmMediaList.Visible = false;
    forms::mdiTarnwick.mnuViewMediaList.Checked = false;
}

void Form_Activate()
{
    constexpr std::int16_t kMediaList = 0;
    SetActiveContext(kMediaList);
    RefreshActions();
}

void lvwMediaList_MouseDown(int button)
{
    constexpr int kRightButton = 2;
    forms::frmMediaList.RightClickPending = button == kRightButton;
}

void lvwMediaList_Click()
{
    if (state::InSelectionUpdate) {
        return;
    }
    state::InSelectionUpdate = true;
    forms::frmMediaList.tmFilePreview.Enabled = false;
    if (media::isAnyRowSelected() || forms::frmMediaList.lvwMediaList.Count() == 0) {
        OnLvwMediaListClick();
    } else {
        showThatNothingIsSelected();
    }
    EnableOrDisableMenuItems();
    if (std::exchange(forms::frmMediaList.RightClickPending, false) && forms::mdiTarnwick.PopupMenu) {
        forms::mdiTarnwick.PopupMenu(forms::PopUp::kMediaListContext);
    }
    state::InSelectionUpdate = false;
}

void lvwMediaList_KeyDown(int key)
{
    constexpr int kUp = 38;
    constexpr int kDown = 40;
    if (key == kUp || key == kDown) {
        lvwMediaList_Click();
    }
}

bool lvwMediaList_EditKey()
{
    if (timeline::isSelectionShown()) {
        return false;
    }
    hint("Click the timeline first to edit it.");
    return true;
}

void OnLvwMediaListDblClick()
{
    Trapped(kModule, "OnLvwMediaListDblClick", [] {
        const std::int32_t place = selectedPlace();
        if (place == 0) {
            return;
        }
        const std::string path = media::pathOf(state::FileCollection.Item(place));
        if (!ports.shell->openWithDesktop(path)) {
            media::say("Unable to open " + path + ".");
        }
    });
}

void OnLvwMediaListClick()
{
    auto& form = forms::frmMediaList;
    Trapped(kModule, "OnLvwMediaListClick",
            [&] {
                const std::int32_t place = selectedPlace();
                sayWhatIsSelected(place > 0 ? form.lvwMediaList.Row(place).Text : std::string());
                if (place > 0) {
                    showSelectedFile(place);
                }
                form.cmdPlay.Visible = form.sldFilePreview.Visible.get();
            },
            {toldError(53, "The selected file is missing."), toldError(kBadFileName, "Invalid file name."),
             toldError(76, "Path not found.")});
}

void ClearMediaListSelections()
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        if (list.Row(place).Selected) {
            list.Change(place).Selected = false;
        }
    }
}

void txtFilter_Change(const std::vector<std::int32_t>& hidden)
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    bool hasOneLostIt = false;
    for (const std::int32_t place : hidden) {
        if (list.Row(place).Selected) {
            list.Change(place).Selected = false;
            hasOneLostIt = true;
        }
    }
    if (std::ranges::find(hidden, list.SelectedItem.get()) != hidden.end()) {
        std::int32_t left = 1;
        while (left <= list.Count() && !list.Row(left).Selected) {
            ++left;
        }
        list.SelectedItem = left <= list.Count() ? left : 0;
    }
    if (hasOneLostIt) {
        lvwMediaList_Click();
    }
}

void lvwMediaList_OLEStartDrag()
{
    constexpr std::int16_t kOwnPointer = 99;
    forms::mdiTarnwick.MousePointer = kOwnPointer;
}

void lvwMediaList_OLECompleteDrag() { forms::mdiTarnwick.MousePointer = std::int16_t{0}; }

void lvwMediaList_Showing()
{
    Trapped(kModule, "lvwMediaList_Showing*",
            [] { engine::check(engine::EngineAs<engine::ITWMediaFiles>()->LookForFiles()); });
}

void FilesWereLookedFor()
{
    Trapped(kModule, "FilesWereLookedFor*", [] {
        const auto news = engine::filePresence().take();
        std::vector<std::string> gone;
        bool isOneBack = false;
        const ListView& list = forms::frmMediaList.lvwMediaList;
        for (std::int32_t place = 1; place <= list.Count() && !news.empty(); ++place) {
            const auto word = news.find(media::pathOf(state::FileCollection.Item(place)));
            if (word == news.end() || !markMissing(place, !word->second)) {
                continue;
            }
            isOneBack |= word->second;
            if (!word->second) {
                gone.push_back(list.Row(place).Text);
            }
        }
        if (isOneBack) {
            UpdatePreview();
        }
        if (!gone.empty()) {
            media::say((gone.size() == 1 ? "The file \"" + gone.front() + "\" is missing from the disk."
                                         : std::to_string(gone.size()) + " files are missing from the disk.")
                       + " What lies of it on the timeline is black and silent.");
        }
    });
}

void ClearFileInformation()
{
    auto& form = forms::frmMediaList;
    form.lblFile.Caption = "";
    form.lblFileDisplay.Caption = "";
    for (std::size_t i = 0; i < form.lblInfo.size(); ++i) {
        form.lblInfo[i].Caption = "";
        form.lblInfoDisplay[i].Caption = "";
    }
}

void Form_KeyDown(int key)
{
    constexpr int kEnter = 13;
    constexpr int kSpace = 32;
    if (key == kEnter || (key == kSpace && !forms::frmMediaList.FilePlaying)) {
        OnCmdPlayClick();
    } else if (key == kSpace) {
        OnCmdPauseClick();
    }
}

void lvwMediaList_MouseMove() { hint("Lists all the media files with their information"); }

void fmeMediaInfo_MouseMove() { hint("File information of the currently selected media file"); }

void picPreviewSmall_MouseMove() { hint("Instant preview of the currently selected media file"); }

void Form_MouseMove() { hint("Ready"); }

} // namespace frmMediaList
