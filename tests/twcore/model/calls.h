#pragma once

// The contract as tests call it: statuses checked, out values returned, and a track as text:
//
//     "A 0-5000[0-5000] B 15000-20000[5000-10000]*2 | Blur 0-2000 | DxtKey 0-5000#1,2,3"
//
// sources with their media ranges and stretch modes (streams 1, 2, ... are A, B, ...), effects, transitions with keys.

#include "twcore/model/timeline_interface.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

namespace model_test {

using engine::Bool16;
using engine::Handle;
using engine::ITWTimeline;
using engine::Status;
using Ms32 = engine::Milliseconds;
using Seq = std::int16_t;

enum Kind { kSource, kEffect, kTransition };
inline constexpr Kind kKinds[] = {kSource, kEffect, kTransition};

struct Range {
    std::int32_t start = 0;
    std::int32_t stop = 0;
    bool ok = false;
};

struct Key {
    std::int16_t red = 0, green = 0, blue = 0;
};

struct Streams final : twcore::StreamCatalogue {
    std::map<Handle, std::int32_t> durations;
    bool acquire(Handle stream) override { return durations.count(stream) != 0; }
    std::int32_t durationMs(Handle stream) const override
    {
        const auto found = durations.find(stream);
        return found == durations.end() ? 0 : found->second;
    }
};

inline void check(engine::Status status) { EXPECT_EQ(status, engine::kDone); }

inline constexpr std::array<Status (ITWTimeline::*)(Handle, Seq&), 3> kGetCount{
    &ITWTimeline::GetSourceCount, &ITWTimeline::GetEffectCount, &ITWTimeline::GetTransitionCount};
inline constexpr std::array<Status (ITWTimeline::*)(Handle, Seq, Ms32&, Ms32&, Bool16&), 3> kGetTimes{
    &ITWTimeline::GetSourceTimes, &ITWTimeline::GetEffectTimes, &ITWTimeline::GetTransitionTimes};
inline constexpr std::array<Status (ITWTimeline::*)(Handle, Seq, Ms32, Ms32, Bool16&), 3> kSetTimes{
    &ITWTimeline::SetSourceTimes, &ITWTimeline::SetEffectTimes, &ITWTimeline::SetTransitionTimes};
inline constexpr std::array<Status (ITWTimeline::*)(Handle, Seq, Ms32, Bool16&), 3> kShift{
    &ITWTimeline::ShiftSources, &ITWTimeline::ShiftEffects, &ITWTimeline::ShiftTransitions};
inline constexpr std::array<Status (ITWTimeline::*)(Handle, Seq, Bool16&), 3> kRemove{
    &ITWTimeline::RemoveSource, &ITWTimeline::RemoveEffect, &ITWTimeline::RemoveTransition};
inline constexpr std::array<Status (ITWTimeline::*)(Handle, Seq, Bool16), 3> kSelect{
    &ITWTimeline::SetSourceSelected, &ITWTimeline::SetEffectSelected, &ITWTimeline::SetTransitionSelected};

inline Seq seq16(int seq) { return static_cast<Seq>(seq); }

inline std::string rangeText(const Range& range)
{
    return std::to_string(range.start) + "-" + std::to_string(range.stop);
}

/// What a call answers through its last argument, which it must have written.
template <class Call>
bool answered(Call call)
{
    Bool16 ok = 1;
    check(call(ok));
    EXPECT_NE(ok, 1);
    return ok != engine::kFalse;
}

struct Calls {
    Streams streams;
    twcore::HandleCounter handles;
    twcore::Timeline timeline{streams, handles};
    twcore::TimelineInterface engine{timeline};

    Handle newTrack(bool isVideo)
    {
        Handle track = 0;
        check(engine.CreateTrack(engine::toBool16(isVideo), track));
        return track;
    }

    int count(Kind kind, Handle track)
    {
        Seq count = -7;
        check((engine.*kGetCount[kind])(track, count));
        return count;
    }

    Range times(Kind kind, Handle track, int seq)
    {
        Range range{-7, -7};
        range.ok = answered(
            [&](Bool16& ok) { return (engine.*kGetTimes[kind])(track, seq16(seq), range.start, range.stop, ok); });
        return range;
    }

    Range media(Handle track, int seq)
    {
        Range range{-7, -7};
        range.ok = answered(
            [&](Bool16& ok) { return engine.GetSourceMediaTimes(track, seq16(seq), range.start, range.stop, ok); });
        return range;
    }

    bool setTimes(Kind kind, Handle track, int seq, std::int32_t start, std::int32_t stop)
    {
        return answered([&](Bool16& ok) { return (engine.*kSetTimes[kind])(track, seq16(seq), start, stop, ok); });
    }

    bool setMedia(Handle track, int seq, std::int32_t start, std::int32_t stop)
    {
        return answered([&](Bool16& ok) { return engine.SetSourceMediaTimes(track, seq16(seq), start, stop, ok); });
    }

    bool shift(Kind kind, Handle track, int fromSeq, std::int32_t delta)
    {
        return answered([&](Bool16& ok) { return (engine.*kShift[kind])(track, seq16(fromSeq), delta, ok); });
    }

    bool remove(Kind kind, Handle track, int seq)
    {
        return answered([&](Bool16& ok) { return (engine.*kRemove[kind])(track, seq16(seq), ok); });
    }

    bool append(Handle track, Handle stream, std::int32_t start = -1)
    {
        return answered([&](Bool16& ok) { return engine.AppendSource(track, stream, start, ok); });
    }

    bool insert(Handle track, Handle stream, int seq, std::int32_t start, std::int32_t stop)
    {
        return answered([&](Bool16& ok) { return engine.InsertSource(track, stream, seq16(seq), start, stop, ok); });
    }

    bool insertNamed(Kind kind, Handle track, const std::string& name, int seq, std::int32_t start, std::int32_t stop)
    {
        return answered([&](Bool16& ok) {
            return kind == kEffect ? engine.InsertEffect(track, name, seq16(seq), start, stop, 0, ok)
                                   : engine.InsertTransition(track, name, seq16(seq), start, stop, 0, ok);
        });
    }

    bool addNamed(Kind kind, Handle track, const std::string& name, std::int32_t start, std::int32_t stop)
    {
        return answered([&](Bool16& ok) {
            return kind == kEffect ? engine.AddEffectAt(track, name, start, stop, ok)
                                   : engine.AddTransitionAt(track, name, start, stop, ok);
        });
    }

    std::string name(Kind kind, Handle track, int seq, std::size_t bufferLength)
    {
        std::string buffer(bufferLength, '?');
        check(kind == kEffect ? engine.GetEffectName(track, seq16(seq), buffer)
                              : engine.GetTransitionName(track, seq16(seq), buffer));
        return buffer.substr(0, buffer.find_last_not_of(' ') + 1);
    }

    Handle stream(Handle track, int seq)
    {
        Handle stream = -7;
        check(engine.GetSourceStream(track, seq16(seq), stream));
        return stream;
    }

    std::int16_t mode(Handle track, int seq)
    {
        std::int16_t mode = -7;
        check(engine.GetSourceStretchMode(track, seq16(seq), mode));
        return mode;
    }

    void setMode(Handle track, int seq, std::int16_t mode)
    {
        check(engine.SetSourceStretchMode(track, seq16(seq), mode));
    }

    Key key(Handle track, int seq)
    {
        Key key{-7, -7, -7};
        check(engine.GetKeyRed(track, seq16(seq), key.red));
        check(engine.GetKeyGreen(track, seq16(seq), key.green));
        check(engine.GetKeyBlue(track, seq16(seq), key.blue));
        return key;
    }

    void applyKey(Handle track, int seq, Key key)
    {
        Bool16 ok = 1;
        check(engine.ClearKeyParameters(track, seq16(seq)));
        check(engine.SetKeyParameter(track, seq16(seq), "KeyType", 0, ok));
        check(engine.SetKeyColor(track, seq16(seq), key.red, key.green, key.blue, ok));
    }

    bool selected(Kind kind, Handle track, int seq)
    {
        Bool16 selected = 1;
        check(kind == kEffect ? engine.IsEffectItemSelected(track, seq16(seq), selected)
                              : engine.IsSourceSelected(track, seq16(seq), selected));
        return selected != engine::kFalse;
    }

    void select(Kind kind, Handle track, int seq, bool selected = true)
    {
        check((engine.*kSelect[kind])(track, seq16(seq), engine::toBool16(selected)));
    }

    std::int32_t duration(Handle track)
    {
        std::int32_t duration = -7;
        check(engine.GetTrackDuration(track, duration));
        return duration;
    }

    std::string text(Handle track)
    {
        std::string text;
        for (int seq = 0; times(kSource, track, seq).ok; ++seq) {
            text += text.empty() ? "" : " ";
            text += static_cast<char>('A' + stream(track, seq) - 1);
            text += " " + rangeText(times(kSource, track, seq)) + "[" + rangeText(media(track, seq)) + "]";
            text += mode(track, seq) == 0 ? "" : "*" + std::to_string(mode(track, seq));
        }
        for (Kind kind : {kEffect, kTransition}) {
            for (int seq = 0; times(kind, track, seq).ok; ++seq) {
                text +=
                    (seq == 0 ? " | " : ", ") + name(kind, track, seq, 10) + " " + rangeText(times(kind, track, seq));
                if (kind == kTransition) {
                    const Key has = key(track, seq);
                    text += "#" + std::to_string(has.red) + "," + std::to_string(has.green) + ","
                            + std::to_string(has.blue);
                }
            }
        }
        return text;
    }
};

/// The four tracks of the program.
struct Tracks : Calls {
    Handle video = newTrack(true), audio1 = newTrack(false), audio2 = newTrack(false), overlay = newTrack(true);
    std::vector<Handle> allTracks{video, audio1, audio2, overlay};

    std::string everything()
    {
        std::string all;
        for (Handle track : allTracks) {
            all += text(track) + "\n";
        }
        return all;
    }
    /// A source with a transition over it.
    void appendKeyed(Handle track, Handle stream)
    {
        const int seq = count(kSource, track);
        append(track, stream);
        const Range at = times(kSource, track, seq);
        addNamed(kTransition, track, "DxtKey", at.start, at.stop);
        applyKey(track, seq, {});
    }
};

} // namespace model_test
