#include "app/edit_session.h"

#include "app/edit_errors.h"
#include "app/edit_media.h"
#include "app/edit_start.h"
#include "core/forms/frmAddText.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmTools.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/insert.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/transition_key.h"
#include "journal/journal.h"
#include "media/media_files.h"
#include "project/ModuleProject.h"
#include "shell/file_commands.h"
#include "shell/frmTools_events.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/project_commands.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "tools/frmAddText.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace app {

namespace fs = std::filesystem;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using items::ItemKind;
using items::Items;
using items::ItemTimes;

namespace {

Items itemsOf(ITWTimeline& engine, EditTrack track)
{
    return {engine, track == EditTrack::kEffects ? ItemKind::kEffect : ItemKind::kSource, handleOf(track)};
}

/// Ahead of the first item that does not begin before it.
std::int16_t placeFor(const Items& items, Milliseconds start)
{
    std::int16_t seq = 0;
    for (auto item = items.times(seq); item && item->start < start; item = items.times(seq)) {
        ++seq;
    }
    return seq;
}

void putSource(EditTrack track, Handle stream, const ItemTimes& times, const ItemTimes& media)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Handle handle = handleOf(track);
    const std::int16_t seq = placeFor(itemsOf(*engine, track), times.start);
    Bool16 ok = kFalse;
    check(engine->InsertSource(handle, stream, seq, times.start, times.stop, ok));
    if (ok == kFalse) {
        throw WrongWords("the track is full");
    }
    check(engine->SetSourceMediaTimes(handle, seq, media.start, media.stop, ok));
    if (track == EditTrack::kOverlay) {
        check(engine->InsertTransition(handle, "DxtKey", seq, times.start, times.stop, 0, ok));
        moduleEdit::ApplyTransitionKey(handle, seq, 0, 0, 0);
    }
}

OpenedMedia openedAs(const std::string& name, Handle file)
{
    OpenedMedia opened{name, file};
    const auto files = EngineAs<engine::ITWMediaFiles>();
    for (const Handle stream : state::StreamCollection) {
        Handle owner = 0;
        Bool16 isPicture = kFalse;
        check(files->GetStreamFile(stream, owner));
        check(files->IsVideoStream(stream, isPicture));
        if (owner == file) {
            (isPicture != kFalse ? opened.picture : opened.sound) = stream;
        }
    }
    return opened;
}

/// What the program shows of its tracks, after they were changed behind its back.
void showChanged()
{
    state::markModified();
    RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
    UpdateTreeView();
    UpdatePreview();
    EnableOrDisableMenuItems();
}

} // namespace

EditSession::EditSession(std::ostream& told)
    : folder_(fs::temp_directory_path().string(), "quillmont-edit-"), platform_(told, folder_.path())
{
    startEditing();
    tellReportedErrors(told);
}

void EditSession::openJournal(const std::string& folder)
{
    const fs::path whole = fs::absolute(folder); // it is told to other runs
    platform_.useStateFolder(whole);
    mediaFolder_ = (whole / "media").string();
    fs::create_directories(mediaFolder_);
    journal::start();
    if (journal::offer()) {
        nameListedMedia();
    }
}

EditSession::~EditSession()
{
    journal::stop();
    forgetReportedErrors();
    endEditing();
}

void EditSession::openMedia(const std::string& name, std::int32_t lengthMs, bool hasPicture, bool hasSound)
{
    const MediaKinds kinds{hasPicture, hasSound};
    if (std::ranges::find(media_, name, &OpenedMedia::name) != media_.end()) {
        throw WrongWords("there is a file called " + name + " already");
    }
    const fs::path path = fs::path(mediaFolder_) / (name + mediaEnding(kinds));
    writeMedia(path, lengthMs, kinds);
    platform_.chosenFile = path.string();
    const std::int32_t filesBefore = state::FileCollection.Count();
    mdiTarnwick::mnuFileOpen_Click();
    if (state::FileCollection.Count() == filesBefore) {
        throw std::runtime_error("cannot open " + path.string());
    }
    media_.push_back(openedAs(name, state::FileCollection.Item(state::FileCollection.Count())));
}

void EditSession::saveProject(const std::string& path)
{
    platform_.savedFile = fs::absolute(path).string();
    mdiTarnwick::mnuFileSaveProjectAs_Click();
    if (state::SaveCancelled) {
        throw std::runtime_error("cannot save " + path);
    }
}

void EditSession::openProject(const std::string& path)
{
    ModuleProject::EmptyProject();
    mdiTarnwick::OpenCommandLine(fs::absolute(path).string());
    if (state::ProjectOpenFailed) {
        throw std::runtime_error("cannot open " + path);
    }
    nameListedMedia();
}

void EditSession::nameListedMedia()
{
    media_.clear();
    for (const Handle file : state::FileCollection) {
        media_.push_back(openedAs(fs::path(media::pathOf(file)).stem().string(), file));
    }
}

void EditSession::put(EditTrack track, std::string_view name, ItemTimes times, ItemTimes media)
{
    const OpenedMedia& file = mediaNamed(name);
    if (!takesPictures(track) && !takesSound(track)) {
        throw WrongWords("no file goes on " + std::string(nameOf(track)));
    }
    const Handle stream = takesPictures(track) ? file.picture : file.sound;
    if (stream == 0) {
        throw WrongWords(file.name + (takesPictures(track) ? " has no picture" : " has no sound"));
    }
    putSource(track, stream, times, media);
    showChanged();
}

void EditSession::putEffect(std::string_view name, ItemTimes times)
{
    Bool16 ok = kFalse;
    check(EngineAs<ITWTimeline>()->AddEffectAt(handleOf(EditTrack::kEffects), name, times.start, times.stop, ok));
    showChanged();
}

void EditSession::select(EditTrack track, std::int16_t seq)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Items items = itemsOf(*engine, track);
    if (seq < 0 || seq >= items.count()) {
        return;
    }
    items.select(seq, true);
    if (track == EditTrack::kOverlay) {
        check(engine->SetTransitionSelected(handleOf(track), seq, engine::kTrue));
    }
    RenderAllBars();
    EnableOrDisableMenuItems();
}

void EditSession::deselect()
{
    moduleTimeline::ClearMFSTSubSelections();
    RenderAllBars();
    EnableOrDisableMenuItems();
}

void EditSession::lock(EditTrack track, bool isOn)
{
    rowOf(track).chkLock.Value = static_cast<std::int16_t>(isOn ? 1 : 0);
    EnableOrDisableMenuItems();
}

void EditSession::link(EditTrack track, bool isOn)
{
    rowOf(track).chkLink.Value = static_cast<std::int16_t>(isOn ? 1 : 0);
    EnableOrDisableMenuItems();
}

void EditSession::moveSlider(Milliseconds pos) { moduleTimeline::SetSliderPosition(pos, false); }

void EditSession::showRange(std::optional<ItemTimes> range)
{
    if (range) {
        state::SelStartPosition = range->start;
        state::SelEndPosition = range->stop;
        moduleTimeline::SetSelSliderPosition(range->start, true);
        moduleTimeline::SetSelSliderPosition(range->stop, false);
    }
    moduleTimeline::ShowSelSliders(range.has_value());
}

void EditSession::addToTimeline(std::string_view name)
{
    chooseRow(mediaNamed(name));
    mdiTarnwick::mnuEditAddToTimeline_Click();
}

void EditSession::addToOverlay(std::string_view name)
{
    chooseRow(mediaNamed(name));
    mdiTarnwick::mnuEditAddToOverlay_Click();
}

void EditSession::insert(EditTrack track, std::string_view name, Milliseconds pos)
{
    chooseRow(mediaNamed(name));
    moduleTimeline::InsertSelectedFiles(rowOf(track), pos);
}

void EditSession::addTitle(const std::string& name)
{
    const std::int32_t filesBefore = state::FileCollection.Count();
    frmAddText::Form_Load();
    forms::frmAddText.txtText.Text = name;
    platform_.savedFile = (fs::path(mediaFolder_) / (name + ".bmp")).string();
    frmAddText::mnuFileSaveAddAndClose_Click();
    if (state::FileCollection.Count() == filesBefore) {
        throw std::runtime_error("cannot add the title " + name);
    }
    media_.push_back(openedAs(name, state::FileCollection.Item(state::FileCollection.Count())));
}

void EditSession::addEffect(std::string_view name)
{
    const ListView& effects = forms::frmTools.lvwEffects;
    frmTools::SelectEffect(name);
    const std::int32_t place = effects.SelectedItem;
    if (place < 1 || effects.Row(place).Text != name) {
        throw WrongWords("there is no effect called " + std::string(name));
    }
    frmTools::OnAddClick();
}

std::string_view EditSession::nameOfStream(Handle stream) const
{
    const auto found = std::ranges::find_if(
        media_, [&](const OpenedMedia& media) { return media.picture == stream || media.sound == stream; });
    return found == media_.end() ? std::string_view("?") : std::string_view(found->name);
}

const OpenedMedia& EditSession::mediaNamed(std::string_view name) const
{
    const auto found = std::ranges::find(media_, name, &OpenedMedia::name);
    if (found == media_.end()) {
        throw WrongWords("there is no file called " + std::string(name));
    }
    return *found;
}

/// Its row of the media list alone is selected.
void EditSession::chooseRow(const OpenedMedia& media)
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        const bool isChosen = state::FileCollection.Item(place) == media.file;
        list.Change(place).Selected = isChosen;
        if (isChosen) {
            list.SelectedItem = place;
        }
    }
}

} // namespace app
