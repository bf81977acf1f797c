#pragma once

// The timeline as the program calls it: handles, sequence numbers and statuses over a `Timeline`.
//
// Each operation is one short call into a track. What they share stands in one place: an unknown track is
// kInvalidArgument, an unknown item ok false with every other out value 0, and no exception leaves an operation (no
// memory is kOutOfMemory, all else kUnexpected). Interface thread only; the timeline outlives this.
//
// Three operations take effect at once, on what is being played: `SetEffectsEnabled`, `SetTrackDisabled` and
// `SetSourceStretchMode` run the hook that the owner gives. `SetSourceStretchMode` also comes in the middle of an edit,
// when the track may be half done, so the hook reads with `Timeline::peek`, which settles nothing.

#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "twcore/guard.h"
#include "twcore/model/timeline.h"

#include <functional>
#include <utility>

namespace twcore {

class TimelineInterface final : public engine::ITWTimeline, public engine::ITWKeyTransition {
public:
    explicit TimelineInterface(Timeline& timeline, std::function<void()> lookChanged = {})
        : timeline_(timeline), lookChanged_(std::move(lookChanged))
    {}

    using Handle = engine::Handle;
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Milliseconds = engine::Milliseconds;
    using Text = engine::Text;
    using TextBuffer = engine::TextBuffer;
    using Seq = std::int16_t;

    Status CreateTrack(Bool16 isVideo, Handle& track) override;
    Status AppendSource(Handle track, Handle stream, Milliseconds start, Bool16& ok) override;
    Status AddEffectAt(Handle track, Text name, Milliseconds start, Milliseconds stop, Bool16& ok) override;
    Status AddTransitionAt(Handle track, Text name, Milliseconds start, Milliseconds stop, Bool16& ok) override;
    Status InsertSource(Handle track, Handle stream, Seq seq, Milliseconds start, Milliseconds stop,
                        Bool16& ok) override;
    Status InsertEffect(Handle track, Text name, Seq seq, Milliseconds start, Milliseconds stop, std::int32_t reserved,
                        Bool16& ok) override;
    Status InsertTransition(Handle track, Text name, Seq seq, Milliseconds start, Milliseconds stop,
                            std::int32_t reserved, Bool16& ok) override;
    Status RemoveSource(Handle track, Seq seq, Bool16& ok) override;
    Status RemoveEffect(Handle track, Seq seq, Bool16& ok) override;
    Status RemoveTransition(Handle track, Seq seq, Bool16& ok) override;
    Status IsVideoTrack(Handle track, Bool16& isVideo) override;
    Status GetSourceTimes(Handle track, Seq seq, Milliseconds& start, Milliseconds& stop, Bool16& ok) override;
    Status GetEffectTimes(Handle track, Seq seq, Milliseconds& start, Milliseconds& stop, Bool16& ok) override;
    Status GetTransitionTimes(Handle track, Seq seq, Milliseconds& start, Milliseconds& stop, Bool16& ok) override;
    Status SetSourceTimes(Handle track, Seq seq, Milliseconds start, Milliseconds stop, Bool16& ok) override;
    Status SetEffectTimes(Handle track, Seq seq, Milliseconds start, Milliseconds stop, Bool16& ok) override;
    Status SetTransitionTimes(Handle track, Seq seq, Milliseconds start, Milliseconds stop, Bool16& ok) override;
    Status GetSourceMediaTimes(Handle track, Seq seq, Milliseconds& mediaStart, Milliseconds& mediaStop,
                               Bool16& ok) override;
    Status SetSourceMediaTimes(Handle track, Seq seq, Milliseconds mediaStart, Milliseconds mediaStop,
                               Bool16& ok) override;
    Status GetSourceCount(Handle track, std::int16_t& count) override;
    Status GetEffectCount(Handle track, std::int16_t& count) override;
    Status GetTransitionCount(Handle track, std::int16_t& count) override;
    Status GetSourceStream(Handle track, Seq seq, Handle& stream) override;
    Status GetEffectName(Handle track, Seq seq, TextBuffer buffer) override;
    Status GetTransitionName(Handle track, Seq seq, TextBuffer buffer) override;
    Status GetTrackDuration(Handle track, Milliseconds& duration) override;
    Status GetTrackLink(Handle track, Bool16& linked) override;
    Status IsSourceSelected(Handle track, Seq seq, Bool16& selected) override;
    Status IsEffectItemSelected(Handle track, Seq seq, Bool16& selected) override;
    Status SetSourceSelected(Handle track, Seq seq, Bool16 selected) override;
    Status SetEffectSelected(Handle track, Seq seq, Bool16 selected) override;
    Status SetTransitionSelected(Handle track, Seq seq, Bool16 selected) override;
    Status SetTrackLink(Handle track, Bool16 linked) override;
    Status ShiftSources(Handle track, Seq fromSeq, Milliseconds delta, Bool16& ok) override;
    Status ShiftEffects(Handle track, Seq fromSeq, Milliseconds delta, Bool16& ok) override;
    Status ShiftTransitions(Handle track, Seq fromSeq, Milliseconds delta, Bool16& ok) override;
    Status SetEffectsEnabled(Bool16 enabled) override;
    Status SetTrackDisabled(Handle track, Bool16 disabled) override;
    Status SetFrameSize(std::int16_t width, std::int16_t height) override;
    Status SetSourceStretchMode(Handle track, Seq seq, std::int16_t mode) override;
    Status GetSourceStretchMode(Handle track, Seq seq, std::int16_t& mode) override;

    Status SetKeyColor(Handle track, Seq seq, std::int16_t red, std::int16_t green, std::int16_t blue,
                       Bool16& ok) override;
    Status GetKeyRed(Handle track, Seq seq, std::int16_t& value) override;
    Status GetKeyGreen(Handle track, Seq seq, std::int16_t& value) override;
    Status GetKeyBlue(Handle track, Seq seq, std::int16_t& value) override;
    Status SetKeyParameter(Handle track, Seq seq, Text name, std::int32_t value, Bool16& ok) override;
    Status ClearKeyParameters(Handle track, Seq seq) override;

private:
    /// The track of an operation, and with it which operation it is: a helper takes it from the operation itself.
    struct OnTrack {
        Handle track;
        OperationPlace operation;
        OnTrack(Handle of, OperationPlace calling = OperationPlace::current()) noexcept : track(of), operation(calling)
        {}
    };

    /// Runs body(Track&) under the rules above.
    template <class Body>
    Status onTrack(OnTrack track, Body&& body) noexcept;
    /// Runs body(Item&) when there is such an item.
    template <class Item, class Body>
    Status onItem(OnTrack track, Seq seq, Body&& body) noexcept;
    /// The same, and tells whether there is.
    template <class Item, class Body>
    Status onItem(OnTrack track, Seq seq, Bool16& ok, Body&& body) noexcept;
    /// Runs body(Track&), which tells whether it is ok.
    template <class Body>
    Status answerOk(OnTrack track, Bool16& ok, Body&& body) noexcept;
    template <class Item>
    Status readRange(OnTrack track, Seq seq, TimeRange Placement::*range, Milliseconds& start, Milliseconds& stop,
                     Bool16& ok) noexcept;
    template <class Item>
    Status readCount(OnTrack track, std::int16_t& count) noexcept;
    template <class Item>
    Status readName(OnTrack track, Seq seq, TextBuffer buffer) noexcept;
    template <class Item>
    Status readSelected(OnTrack track, Seq seq, Bool16& selected) noexcept;
    template <class Item>
    Status select(OnTrack track, Seq seq, Bool16 selected) noexcept;
    void showLook();
    Status readKey(OnTrack track, Seq seq, std::int16_t KeyColor::*part, std::int16_t& value) noexcept;

    Timeline& timeline_;
    std::function<void()> lookChanged_;
};

} // namespace twcore
