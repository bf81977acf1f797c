#include "app/edit_dump.h"

#include "core/forms/frmTools.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"

namespace app {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using items::ItemKind;
using items::Items;

namespace {

constexpr std::size_t kNameBytes = 128;

std::string trimmed(std::string text)
{
    text.erase(text.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return text;
}

std::vector<LaidItem> readSources(const EditSession& session, ITWTimeline& engine, Handle track)
{
    const Items items(engine, ItemKind::kSource, track);
    std::vector<LaidItem> read;
    std::int16_t seq = 0;
    for (auto times = items.times(seq); times; times = items.times(++seq)) {
        LaidItem item{*times, {}, {}, 0, items.isSelected(seq)};
        Bool16 ok = kFalse;
        check(engine.GetSourceMediaTimes(track, seq, item.media.start, item.media.stop, ok));
        check(engine.GetSourceStream(track, seq, item.stream));
        item.name = session.nameOfStream(item.stream);
        read.push_back(std::move(item));
    }
    return read;
}

std::vector<LaidItem> readEffects(ITWTimeline& engine, Handle track)
{
    const Items items(engine, ItemKind::kEffect, track);
    std::vector<LaidItem> read;
    std::int16_t seq = 0;
    for (auto times = items.times(seq); times; times = items.times(++seq)) {
        std::string name(kNameBytes, ' ');
        check(engine.GetEffectName(track, seq, name));
        read.push_back({*times, {}, trimmed(std::move(name)), 0, items.isSelected(seq)});
    }
    return read;
}

std::vector<LaidItem> readTransitions(ITWTimeline& engine, Handle track)
{
    std::vector<LaidItem> read;
    Bool16 ok = kFalse;
    for (std::int16_t seq = 0;; ++seq) {
        LaidItem item;
        check(engine.GetTransitionTimes(track, seq, item.times.start, item.times.stop, ok));
        if (ok == kFalse) {
            return read;
        }
        std::string name(kNameBytes, ' ');
        check(engine.GetTransitionName(track, seq, name));
        item.name = trimmed(std::move(name));
        read.push_back(std::move(item));
    }
}

void append(std::string& text, std::string_view track, std::size_t seq, const LaidItem& item, bool withMedia)
{
    const auto range = [](const items::ItemTimes& times) {
        return " " + std::to_string(times.start) + " " + std::to_string(times.stop);
    };
    text.append(track).append(" ").append(std::to_string(seq)).append(range(item.times));
    text.append(withMedia ? range(item.media) : "").append(" ").append(item.name).append("\n");
}

} // namespace

LaidTimeline readTimeline(const EditSession& session)
{
    const auto engine = engine::EngineAs<ITWTimeline>();
    LaidTimeline timeline;
    for (const EditTrack track : kEditTracks) {
        const Handle handle = handleOf(track);
        timeline.row(track) =
            track == EditTrack::kEffects ? readEffects(*engine, handle) : readSources(session, *engine, handle);
    }
    timeline.transitions = readTransitions(*engine, handleOf(EditTrack::kOverlay));
    return timeline;
}

std::string asText(const LaidTimeline& timeline)
{
    std::string text;
    for (const EditTrack track : kEditTracks) {
        const auto& items = timeline.row(track);
        for (std::size_t seq = 0; seq < items.size(); ++seq) {
            append(text, nameOf(track), seq, items[seq], track != EditTrack::kEffects);
        }
    }
    for (std::size_t seq = 0; seq < timeline.transitions.size(); ++seq) {
        append(text, "transitions", seq, timeline.transitions[seq], false);
    }
    return text;
}

std::string historyText()
{
    return "history " + std::to_string(ModuleHistory::HistoryIndex) + " "
           + std::to_string(ModuleHistory::HistoryCollection.Count()) + " "
           + std::to_string(forms::frmTools.lvwHistory.get().size()) + "\n";
}

} // namespace app
