#include "app/edit_dump.h"

#include "core/forms/frmTools.h"
#include "history/ModuleHistory.h"
#include "items/whole_item.h"

namespace app {

using engine::Handle;
using engine::ITWTimeline;
using items::ItemKind;
using items::Items;

namespace {

constexpr std::size_t kNameBytes = 128;

std::vector<LaidItem> readSources(const EditSession& session, ITWTimeline& engine, Handle track)
{
    const Items items(engine, ItemKind::kSource, track);
    std::vector<LaidItem> read;
    std::int16_t seq = 0;
    for (auto source = items::readSource({engine, track, seq}); source;
         source = items::readSource({engine, track, ++seq})) {
        read.push_back({source->times.onTimeline(),
                        {source->times.mediaStart, source->times.mediaStop},
                        std::string(session.nameOfStream(source->stream)),
                        source->stream,
                        items.isSelected(seq),
                        source->mode});
    }
    return read;
}

void readKeys(std::vector<LaidItem>& overlays, Handle track)
{
    const auto keys = engine::EngineAs<engine::ITWKeyTransition>();
    for (std::int16_t seq = 0; LaidItem & overlay : overlays) {
        engine::check(keys->GetKeyRed(track, seq, overlay.key[0]));
        engine::check(keys->GetKeyGreen(track, seq, overlay.key[1]));
        engine::check(keys->GetKeyBlue(track, seq, overlay.key[2]));
        ++seq;
    }
}

std::vector<LaidItem> readEffects(ITWTimeline& engine, Handle track)
{
    const Items items(engine, ItemKind::kEffect, track);
    std::vector<LaidItem> read;
    std::int16_t seq = 0;
    for (auto effect = items::readEffect({engine, track, seq}, kNameBytes); effect;
         effect = items::readEffect({engine, track, ++seq}, kNameBytes)) {
        read.push_back({effect->times, {}, std::move(effect->name), 0, items.isSelected(seq)});
    }
    return read;
}

std::vector<LaidItem> readTransitions(ITWTimeline& engine, Handle track)
{
    const Items items(engine, ItemKind::kTransition, track);
    std::vector<LaidItem> read;
    std::int16_t seq = 0;
    for (auto times = items.times(seq); times; times = items.times(++seq)) {
        const auto nameInto = [&](auto buffer) { return engine.GetTransitionName(track, seq, buffer); };
        read.push_back({*times, {}, items::readName(kNameBytes, nameInto), 0, false});
    }
    return read;
}

void append(std::string& text, std::string_view track, std::size_t seq, const LaidItem& item, bool withMedia)
{
    const auto range = [](const items::ItemTimes& times) {
        return " " + std::to_string(times.start) + " " + std::to_string(times.stop);
    };
    text.append(track).append(" ").append(std::to_string(seq)).append(range(item.times));
    text.append(withMedia ? range(item.media) : "").append(" ").append(item.name);
    text.append(item.mode == 0 ? "" : " stretch " + std::to_string(item.mode));
    if (item.key != std::array<std::int16_t, 3>{}) {
        text += " key";
        for (const std::int16_t part : item.key) {
            text += " " + std::to_string(part);
        }
    }
    text += "\n";
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
    readKeys(timeline.row(EditTrack::kOverlay), handleOf(EditTrack::kOverlay));
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
