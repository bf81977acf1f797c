#include "editing/adding.h"

#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding_files.h"
#include "editing/moduleTWState.h"
#include "engine/ITWKeyTransition.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/items.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/item_names.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/view_times.h"

#include <vector>

namespace moduleTimeline {

using editing::isVideoStream;
using editing::selectedFiles;
using editing::streamsOf;
using editing::targetTrack;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using history::keepNewestState;
using items::ItemKind;
using items::Items;

namespace {

constexpr const char* kModule = "moduleTimeline";

void nameLastSource(ITWTimeline& engine, Handle track)
{
    const std::int16_t count = Items(engine, ItemKind::kSource, track).count();
    timeline::ItemNames names;
    ModuleTreeView::AddSource(names.ofSource(track, static_cast<std::int16_t>(count - 1)), "SOURCE", track);
}

/// One entry, which stands only when add() has put something on the timeline.
template <class Add>
bool addWithHistory(std::string_view word, const Add& add)
{
    bool isAdded = false; // also where no entry could be made
    const auto operation = [&] {
        isAdded = add();
        return isAdded ? history::Outcome::kChanged : history::Outcome::kNothing;
    };
    history::run(word, operation, [] {});
    return isAdded;
}

/// What an adding of files has done so far.
struct Adding {
    bool isSelected = false; // some file was
    bool isAdded = false;    // some source is on the timeline
    bool isPictureAdded = false;
    Milliseconds start = 0; // of what is added
    engine::RuntimeError failure{0, {}};
};

/// Puts a file's streams on the tracks, all from the same time on. An error after the first of them leaves that one,
/// and is kept in `done` until its entry stands.
bool addFile(ITWTimeline& engine, Handle file, Adding& done)
{
    const Milliseconds start = GetTimelineDuration();
    bool isAdded = false;
    try {
        for (const Handle stream : streamsOf(file)) {
            const bool isPicture = isVideoStream(stream);
            const Handle track = targetTrack(engine, isPicture);
            Bool16 ok = kFalse;
            check(engine.AppendSource(track, stream, start, ok));
            isAdded = isAdded || ok != kFalse;
            done.isPictureAdded = done.isPictureAdded || (isPicture && ok != kFalse);
            if (ok != kFalse) {
                nameLastSource(engine, track);
            }
        }
    } catch (...) {
        if (!isAdded) {
            throw;
        }
        done.failure = currentError();
    }
    return isAdded;
}

void addSelectedFiles(Adding& done)
{
    const std::vector<Handle> files = selectedFiles();
    done.isSelected = !files.empty();
    done.start = GetTimelineDuration();
    const auto engine = EngineAs<ITWTimeline>();
    for (const Handle file : files) {
        done.isAdded |= addWithHistory("AddToTimeline", [&] { return addFile(*engine, file, done); });
        if (done.failure.number() != 0) {
            throw done.failure;
        }
    }
}

void showAddedFiles(const Adding& done)
{
    editing::showFilmGrown(done.isPictureAdded);
    if (done.isAdded) {
        keepNewestState();
        timeline::followEdit({done.start, GetTimelineDuration()});
    }
}

/// A key's colour, each part 0 to 255.
struct KeyColour {
    std::int16_t red = 0;
    std::int16_t green = 0;
    std::int16_t blue = 0;
};

/// An overlay and its key, both or neither: the two lists are counted alike.
bool addOverlay(ITWTimeline& engine, Handle stream, const KeyColour& key)
{
    const std::int16_t place = Items(engine, ItemKind::kSource, state::OverlayTrack).count();
    Bool16 ok = kFalse;
    check(engine.AppendSource(state::OverlayTrack, stream, -1, ok));
    if (ok == kFalse) {
        return false;
    }
    try {
        AddNewKeyTransition(state::OverlayTrack, key.red, key.green, key.blue);
    } catch (...) {
        (void)engine.RemoveTransition(state::OverlayTrack, place, ok); // if it came as far as that
        (void)engine.RemoveSource(state::OverlayTrack, place, ok);
        throw;
    }
    return true;
}

void addOverlays(const std::vector<Handle>& files, const KeyColour& key, Adding& done)
{
    const auto engine = EngineAs<ITWTimeline>();
    check(engine->GetTrackDuration(state::OverlayTrack, done.start));
    for (const Handle file : files) {
        for (const Handle stream : streamsOf(file)) {
            if (isVideoStream(stream)) {
                done.isAdded |= addWithHistory("Overlay", [&] { return addOverlay(*engine, stream, key); });
                done.isPictureAdded = done.isAdded;
            }
        }
    }
}

void showAddedOverlays(const Adding& done)
{
    if (done.isAdded) {
        keepNewestState();
    }
    editing::showAllRows();
    UpdateTreeView();
    editing::keepFrameOfFirst(done.isPictureAdded);
    UpdatePreview();
    UpdateTrackOptions();
    if (done.isAdded) {
        Milliseconds stop = done.start;
        check(EngineAs<ITWTimeline>()->GetTrackDuration(state::OverlayTrack, stop));
        timeline::followEdit({done.start, stop});
    }
}

} // namespace

void OnEditAddToTimelineClick()
{
    constexpr const char* kRoutine = "OnEditAddToTimelineClick";
    constexpr std::int32_t kOverflow = 6;
    Adding done;
    const bool isWhole = Trapped(
        kModule, kRoutine, [&] { addSelectedFiles(done); },
        {{engine::error_number::kObjectNotSet, [] { tellUser("Unable to add to timeline. The media list is empty."); }},
         {kOverflow, [] { tellUser("Unable to add to timeline. Unexpected error."); }}});
    Trapped(kModule, kRoutine, [&] { showAddedFiles(done); });
    if (isWhole && !done.isSelected) {
        tellUser("Unable to add to the timeline because no file is selected. Please select a file from the media "
                 "list.");
    }
}

void OnEditAddToOverlayClick()
{
    constexpr const char* kRoutine = "OnEditAddToOverlayClick";
    if (moduleTWState::IsVideoTrackEmpty()) {
        tellUser("Unable to add to overlay as the video track is empty.");
        return;
    }
    Adding done;
    Trapped(kModule, kRoutine, [&] { addOverlays(selectedFiles(), {}, done); });
    Trapped(kModule, kRoutine, [&] { showAddedOverlays(done); });
}

void AddOverlaysOfFile(Handle file, std::int16_t red, std::int16_t green, std::int16_t blue)
{
    constexpr const char* kRoutine = "AddOverlaysOfFile";
    Adding done;
    Trapped(kModule, kRoutine, [&] { addOverlays({file}, {red, green, blue}, done); });
    Trapped(kModule, kRoutine, [&] { showAddedOverlays(done); });
}

void AddNewKeyTransition(Handle track, std::int16_t red, std::int16_t green, std::int16_t blue)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Items sources(*engine, ItemKind::kSource, track);
    const auto times = sources.times(static_cast<std::int16_t>(sources.count() - 1)).value_or(items::ItemTimes{});
    Bool16 ok = kFalse;
    check(engine->AddTransitionAt(track, "DxtKey", times.start, times.stop, ok));
    if (ok == kFalse) { // the last transition is another source's, which keeps its key
        throw engine::RuntimeError(engine::error_number::kInvalidCall, "There is no room for the key of the overlay.");
    }
    std::int16_t count = 0;
    check(engine->GetTransitionCount(track, count));
    const auto last = static_cast<std::int16_t>(count - 1);
    const auto keys = EngineAs<engine::ITWKeyTransition>();
    check(keys->SetKeyParameter(track, last, "KeyType", 0, ok));
    check(keys->SetKeyColor(track, last, red, green, blue, ok));
}

void SyncOverlayTransitions()
{
    Trapped(kModule, "SyncOverlayTransitions", [] {
        const auto engine = EngineAs<ITWTimeline>();
        const Items sources(*engine, ItemKind::kSource, state::OverlayTrack);
        for (std::int16_t seq = 0;; ++seq) {
            const auto source = sources.times(seq);
            if (!source) {
                return;
            }
            items::ItemTimes key;
            Bool16 ok = kFalse;
            check(engine->GetTransitionTimes(state::OverlayTrack, seq, key.start, key.stop, ok));
            if (source->start != key.start && source->stop != key.stop) {
                check(engine->SetTransitionTimes(state::OverlayTrack, seq, source->start, source->stop, ok));
            }
        }
    });
}

} // namespace moduleTimeline
