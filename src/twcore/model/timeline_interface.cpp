#include "twcore/model/timeline_interface.h"

#include "twcore/guard.h"
#include "twcore/model/names.h"

namespace twcore {

using engine::Bool16;
using engine::Handle;
using engine::kFalse;
using engine::Milliseconds;
using engine::Status;
using engine::Text;
using engine::TextBuffer;
using engine::toBool16;
using Seq = TimelineInterface::Seq;

template <class Body>
Status TimelineInterface::onTrack(OnTrack track, Body&& body) noexcept
{
    const auto run = [&] {
        Track* found = timeline_.find(track.track);
        if (found == nullptr) {
            return engine::kInvalidArgument;
        }
        body(*found);
        return engine::kDone;
    };
    return guarded(run, track.operation);
}

template <class Item, class Body>
Status TimelineInterface::onItem(OnTrack track, Seq seq, Bool16& ok, Body&& body) noexcept
{
    return answerOk(track, ok, [&](Track& found) {
        Item* item = found.item<Item>(seq);
        if (item != nullptr) {
            body(*item);
        }
        return item != nullptr;
    });
}

template <class Item, class Body>
Status TimelineInterface::onItem(OnTrack track, Seq seq, Body&& body) noexcept
{
    Bool16 ok = kFalse;
    return onItem<Item>(track, seq, ok, body);
}

template <class Body>
Status TimelineInterface::answerOk(OnTrack track, Bool16& ok, Body&& body) noexcept
{
    ok = kFalse;
    return onTrack(track, [&](Track& found) { ok = toBool16(body(found)); });
}

template <class Item>
Status TimelineInterface::readRange(OnTrack track, Seq seq, TimeRange Placement::*range, Milliseconds& start,
                                    Milliseconds& stop, Bool16& ok) noexcept
{
    start = stop = 0;
    return answerOk(track, ok, [&](Track& found) {
        const Item* item = found.settledItem<Item>(seq);
        if (item != nullptr) {
            start = static_cast<Milliseconds>((item->*range).startMs);
            stop = static_cast<Milliseconds>((item->*range).stopMs);
        }
        return item != nullptr;
    });
}

template <class Item>
Status TimelineInterface::readCount(OnTrack track, std::int16_t& count) noexcept
{
    count = 0;
    return onTrack(track, [&](Track& found) { count = static_cast<std::int16_t>(found.count<Item>()); });
}

template <class Item>
Status TimelineInterface::readName(OnTrack track, Seq seq, TextBuffer buffer) noexcept
{
    fillBuffer(buffer, {});
    return onItem<Item>(track, seq, [&](const Item& item) { fillBuffer(buffer, item.name); });
}

template <class Item>
Status TimelineInterface::readSelected(OnTrack track, Seq seq, Bool16& selected) noexcept
{
    selected = kFalse;
    return onItem<Item>(track, seq, [&](const Item& item) { selected = toBool16(item.selected); });
}

template <class Item>
Status TimelineInterface::select(OnTrack track, Seq seq, Bool16 selected) noexcept
{
    return onItem<Item>(track, seq, [&](Item& item) { item.selected = selected != kFalse; });
}

Status TimelineInterface::readKey(OnTrack track, Seq seq, std::int16_t KeyColor::*part, std::int16_t& value) noexcept
{
    value = 0;
    return onItem<Transition>(track, seq, [&](const Transition& transition) { value = transition.color.*part; });
}

void TimelineInterface::showLook()
{
    if (lookChanged_) {
        lookChanged_();
    }
}

// Tracks and the frame.

Status TimelineInterface::CreateTrack(Bool16 isVideo, Handle& track)
{
    track = 0;
    return guarded([&] {
        track = timeline_.createTrack(isVideo != kFalse);
        return engine::kDone;
    });
}

Status TimelineInterface::IsVideoTrack(Handle track, Bool16& isVideo)
{
    return answerOk(track, isVideo, [](Track& found) { return found.isVideo(); });
}

Status TimelineInterface::GetTrackDuration(Handle track, Milliseconds& duration)
{
    duration = 0;
    return onTrack(track, [&](Track& found) { duration = static_cast<Milliseconds>(found.durationMs()); });
}

Status TimelineInterface::GetTrackLink(Handle track, Bool16& linked)
{
    return answerOk(track, linked, [](Track& found) { return found.linked(); });
}

Status TimelineInterface::SetTrackLink(Handle track, Bool16 linked)
{
    return onTrack(track, [&](Track& found) { found.setLinked(linked != kFalse); });
}

Status TimelineInterface::SetTrackDisabled(Handle track, Bool16 disabled)
{
    return onTrack(track, [&](Track& found) {
        found.setDisabled(disabled != kFalse);
        showLook();
    });
}

Status TimelineInterface::SetEffectsEnabled(Bool16 enabled)
{
    return guarded([&] {
        timeline_.setEffectsEnabled(enabled != kFalse);
        showLook();
        return engine::kDone;
    });
}

Status TimelineInterface::SetFrameSize(std::int16_t width, std::int16_t height)
{
    return guarded([&] { timeline_.setFrameSize(width, height); });
}

// Additions.

Status TimelineInterface::AppendSource(Handle track, Handle stream, Milliseconds start, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) {
        StreamCatalogue& streams = timeline_.streams();
        return streams.acquire(stream) && found.appendSource(stream, streams.durationMs(stream), start);
    });
}

Status TimelineInterface::InsertSource(Handle track, Handle stream, Seq seq, Milliseconds start, Milliseconds stop,
                                       Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) {
        StreamCatalogue& streams = timeline_.streams();
        return streams.acquire(stream) && found.insertSource(stream, streams.durationMs(stream), seq, {start, stop});
    });
}

Status TimelineInterface::AddEffectAt(Handle track, Text name, Milliseconds start, Milliseconds stop, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.addEffectAt(name, start, stop); });
}

Status TimelineInterface::InsertEffect(Handle track, Text name, Seq seq, Milliseconds start, Milliseconds stop,
                                       std::int32_t, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.insertEffect(name, seq, {start, stop}); });
}

Status TimelineInterface::AddTransitionAt(Handle track, Text name, Milliseconds start, Milliseconds stop, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.appendTransition(name, {start, stop}); });
}

Status TimelineInterface::InsertTransition(Handle track, Text name, Seq seq, Milliseconds start, Milliseconds stop,
                                           std::int32_t, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.insertTransition(name, seq, {start, stop}); });
}

// Places of all items.

Status TimelineInterface::RemoveSource(Handle track, Seq seq, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.remove<Source>(seq); });
}

Status TimelineInterface::RemoveEffect(Handle track, Seq seq, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.remove<Effect>(seq); });
}

Status TimelineInterface::RemoveTransition(Handle track, Seq seq, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.remove<Transition>(seq); });
}

Status TimelineInterface::GetSourceTimes(Handle track, Seq seq, Milliseconds& start, Milliseconds& stop, Bool16& ok)
{
    return readRange<Source>(track, seq, &Placement::time, start, stop, ok);
}

Status TimelineInterface::GetEffectTimes(Handle track, Seq seq, Milliseconds& start, Milliseconds& stop, Bool16& ok)
{
    return readRange<Effect>(track, seq, &Placement::time, start, stop, ok);
}

Status TimelineInterface::GetTransitionTimes(Handle track, Seq seq, Milliseconds& start, Milliseconds& stop, Bool16& ok)
{
    return readRange<Transition>(track, seq, &Placement::time, start, stop, ok);
}

Status TimelineInterface::SetSourceTimes(Handle track, Seq seq, Milliseconds start, Milliseconds stop, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.setTimes<Source>(seq, {start, stop}); });
}

Status TimelineInterface::SetEffectTimes(Handle track, Seq seq, Milliseconds start, Milliseconds stop, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.setTimes<Effect>(seq, {start, stop}); });
}

Status TimelineInterface::SetTransitionTimes(Handle track, Seq seq, Milliseconds start, Milliseconds stop, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.setTimes<Transition>(seq, {start, stop}); });
}

Status TimelineInterface::ShiftSources(Handle track, Seq fromSeq, Milliseconds delta, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.shift<Source>(fromSeq, delta); });
}

Status TimelineInterface::ShiftEffects(Handle track, Seq fromSeq, Milliseconds delta, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.shift<Effect>(fromSeq, delta); });
}

Status TimelineInterface::ShiftTransitions(Handle track, Seq fromSeq, Milliseconds delta, Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.shift<Transition>(fromSeq, delta); });
}

Status TimelineInterface::GetSourceCount(Handle track, std::int16_t& count) { return readCount<Source>(track, count); }

Status TimelineInterface::GetEffectCount(Handle track, std::int16_t& count) { return readCount<Effect>(track, count); }

Status TimelineInterface::GetTransitionCount(Handle track, std::int16_t& count)
{
    return readCount<Transition>(track, count);
}

Status TimelineInterface::GetEffectName(Handle track, Seq seq, TextBuffer buffer)
{
    return readName<Effect>(track, seq, buffer);
}

Status TimelineInterface::GetTransitionName(Handle track, Seq seq, TextBuffer buffer)
{
    return readName<Transition>(track, seq, buffer);
}

Status TimelineInterface::IsSourceSelected(Handle track, Seq seq, Bool16& selected)
{
    return readSelected<Source>(track, seq, selected);
}

Status TimelineInterface::IsEffectItemSelected(Handle track, Seq seq, Bool16& selected)
{
    return readSelected<Effect>(track, seq, selected);
}

Status TimelineInterface::SetSourceSelected(Handle track, Seq seq, Bool16 selected)
{
    return select<Source>(track, seq, selected);
}

Status TimelineInterface::SetEffectSelected(Handle track, Seq seq, Bool16 selected)
{
    return select<Effect>(track, seq, selected);
}

Status TimelineInterface::SetTransitionSelected(Handle track, Seq seq, Bool16 selected)
{
    return select<Transition>(track, seq, selected);
}

// What is of sources only.

Status TimelineInterface::GetSourceMediaTimes(Handle track, Seq seq, Milliseconds& mediaStart, Milliseconds& mediaStop,
                                              Bool16& ok)
{
    return readRange<Source>(track, seq, &Placement::media, mediaStart, mediaStop, ok);
}

Status TimelineInterface::SetSourceMediaTimes(Handle track, Seq seq, Milliseconds mediaStart, Milliseconds mediaStop,
                                              Bool16& ok)
{
    return answerOk(track, ok, [&](Track& found) { return found.setMediaTimes(seq, {mediaStart, mediaStop}); });
}

Status TimelineInterface::GetSourceStream(Handle track, Seq seq, Handle& stream)
{
    stream = 0;
    return onItem<Source>(track, seq, [&](const Source& source) { stream = source.stream; });
}

Status TimelineInterface::SetSourceStretchMode(Handle track, Seq seq, std::int16_t mode)
{
    return onItem<Source>(track, seq, [&](Source& source) {
        source.stretchMode = mode;
        showLook();
    });
}

Status TimelineInterface::GetSourceStretchMode(Handle track, Seq seq, std::int16_t& mode)
{
    mode = 0;
    return onItem<Source>(track, seq, [&](const Source& source) { mode = source.stretchMode; });
}

// Keys.

Status TimelineInterface::SetKeyColor(Handle track, Seq seq, std::int16_t red, std::int16_t green, std::int16_t blue,
                                      Bool16& ok)
{
    return onItem<Transition>(track, seq, ok,
                              [&](Transition& transition) { transition.color = keyColor(red, green, blue); });
}

Status TimelineInterface::GetKeyRed(Handle track, Seq seq, std::int16_t& value)
{
    return readKey(track, seq, &KeyColor::red, value);
}

Status TimelineInterface::GetKeyGreen(Handle track, Seq seq, std::int16_t& value)
{
    return readKey(track, seq, &KeyColor::green, value);
}

Status TimelineInterface::GetKeyBlue(Handle track, Seq seq, std::int16_t& value)
{
    return readKey(track, seq, &KeyColor::blue, value);
}

Status TimelineInterface::SetKeyParameter(Handle track, Seq seq, Text name, std::int32_t value, Bool16& ok)
{
    return onItem<Transition>(track, seq, ok,
                              [&](Transition& transition) { setParameter(transition.parameters, name, value); });
}

Status TimelineInterface::ClearKeyParameters(Handle track, Seq seq)
{
    return onItem<Transition>(track, seq, [](Transition& transition) {
        transition.parameters.clear();
        transition.color = {};
    });
}

} // namespace twcore
