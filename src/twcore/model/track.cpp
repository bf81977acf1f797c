#include "twcore/model/track.h"

#include "twcore/model/names.h"

#include <algorithm>
#include <utility>

namespace twcore {

namespace {

/// No item is shorter, so that a walk over a track always gets on.
constexpr Ms kShortestMs = 1;
/// How long an effect is that is added without a stop.
constexpr Ms kDefaultEffectMs = 2000;

Source makeSource(engine::Handle stream, Ms streamMs, TimeRange range)
{
    Source source;
    source.stream = stream;
    source.media = {0, streamMs};
    source.setTimes(range);
    // A stop of 0 is no range at all: the caller tells it next, and the media range with it.
    source.mediaBarred = range.empty() && range.stopMs != 0;
    source.timesSet = false; // an addition sets nothing that was there
    if (range.empty()) {
        source.time = {range.startMs, range.startMs + std::max(streamMs, kShortestMs)};
    }
    return source;
}

Effect makeEffect(std::string_view name, TimeRange range)
{
    Effect effect;
    effect.name = cutAtCharacter(name, kMaxNameLength);
    effect.time = range;
    return effect;
}

Transition makeTransition(std::string_view name, TimeRange range)
{
    Transition transition;
    transition.name = cutAtCharacter(name, kMaxNameLength);
    transition.ranged = !range.empty();
    transition.time = transition.ranged ? range : TimeRange{range.startMs, range.startMs + kShortestMs};
    return transition;
}

std::int32_t told(Ms settledMs) noexcept { return static_cast<std::int32_t>(settledMs); }

TimeRange rangeOf(const auto& item) noexcept { return {item.startMs, item.stopMs}; }

} // namespace

bool Track::appendSource(engine::Handle stream, Ms streamMs, Ms startMs)
{
    aboutTrack();
    if (startMs == -1) {
        startMs = sources_.endMs();
    }
    if (startMs >= kLastMs) {
        return false;
    }
    const Ms stopMs = std::min(startMs + std::max(streamMs, kShortestMs), kLastMs);
    return sources_.append(makeSource(stream, streamMs, {startMs, stopMs}));
}

bool Track::insertSource(engine::Handle stream, Ms streamMs, int seq, TimeRange range)
{
    return listFor<Source>().insert(seq, makeSource(stream, streamMs, range));
}

Ms Track::durationMs()
{
    aboutTrack().settle();
    return sources_.endMs();
}

bool Track::addEffectAt(std::string_view name, Ms startMs, Ms stopMs)
{
    aboutTrack();
    effects_.settle();
    if (stopMs != -1 && stopMs <= startMs) {
        return true;
    }
    const Ms shiftMs = std::max(-startMs, Ms{0});
    TimeRange range{startMs + shiftMs, stopMs == -1 ? startMs + shiftMs + kDefaultEffectMs : stopMs + shiftMs};

    const auto& effects = effects_.items();
    const auto next = std::partition_point(effects.begin(), effects.end(),
                                           [&](const Effect& effect) { return effect.time.stopMs <= range.startMs; });
    const Ms nextStartMs = next == effects.end() ? kLastMs : next->time.startMs;
    if (stopMs == -1) {
        range.stopMs = std::min({range.stopMs, nextStartMs, durationMs()});
    }
    if (range.empty() || range.stopMs > nextStartMs) {
        return false;
    }
    return effects_.insert(static_cast<int>(next - effects.begin()), makeEffect(name, range));
}

bool Track::insertEffect(std::string_view name, int seq, TimeRange range)
{
    ItemList<Effect>& effects = listFor<Effect>();
    return range.empty() || effects.insert(seq, makeEffect(name, range));
}

bool Track::appendTransition(std::string_view name, TimeRange range)
{
    return listFor<Transition>().append(makeTransition(name, range));
}

bool Track::insertTransition(std::string_view name, int seq, TimeRange range)
{
    return listFor<Transition>().insert(seq, makeTransition(name, range));
}

void Track::settle()
{
    sources_.settle();
    effects_.settle();
    transitions_.settle([this](std::size_t number) {
        return number < sources_.count() ? sources_.items()[number].time.lengthMs() : kDefaultEffectMs;
    });
}

TrackSnapshot Track::snapshot(engine::Handle handle)
{
    settle();
    TrackSnapshot copy;
    copy.handle = handle;
    copy.isVideo = isVideo_;
    copy.disabled = disabled_;
    copy.linked = linked_;
    copy.sources.reserve(sources_.count());
    for (const Source& source : sources_.items()) {
        copy.sources.push_back({source.stream, told(source.time.startMs), told(source.time.stopMs),
                                told(source.media.startMs), told(source.media.stopMs), source.stretchMode,
                                source.selected});
    }
    for (const Effect& effect : effects_.items()) {
        copy.effects.push_back({effect.name, told(effect.time.startMs), told(effect.time.stopMs), effect.selected});
    }
    for (const Transition& transition : transitions_.items()) {
        copy.transitions.push_back({transition.name, told(transition.time.startMs), told(transition.time.stopMs),
                                    transition.selected, transition.color.red, transition.color.green,
                                    transition.color.blue, transition.parameters});
    }
    return copy;
}

void Track::restore(const TrackContents& contents)
{
    Track fresh(isVideo_);
    for (const SourceItem& item : contents.sources) {
        const Ms mediaMs = Ms{item.mediaStopMs} - item.mediaStartMs;
        Source source = makeSource(item.stream, mediaMs, rangeOf(item));
        source.media = {item.mediaStartMs, item.mediaStopMs};
        source.mediaBarred = false;
        source.stretchMode = item.stretchMode;
        source.selected = item.selected;
        fresh.sources_.insert(static_cast<int>(fresh.sources_.count()), source);
    }
    for (const EffectItem& item : contents.effects) {
        Effect effect = makeEffect(item.name, rangeOf(item));
        effect.selected = item.selected;
        if (!effect.time.empty()) {
            fresh.effects_.insert(static_cast<int>(fresh.effects_.count()), std::move(effect));
        }
    }
    for (const TransitionItem& item : contents.transitions) {
        Transition transition = makeTransition(item.name, rangeOf(item));
        transition.selected = item.selected;
        transition.color = keyColor(item.red, item.green, item.blue);
        transition.parameters = item.parameters;
        fresh.transitions_.insert(static_cast<int>(fresh.transitions_.count()), std::move(transition));
    }
    sources_ = std::move(fresh.sources_);
    effects_ = std::move(fresh.effects_);
    transitions_ = std::move(fresh.transitions_);
}

} // namespace twcore
