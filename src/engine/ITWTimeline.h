#pragma once

// The tracks and what lies on them: the only store of the timeline.
//
// An item is named by its track and its sequence number, from 0 in timeline order, which is good until the next
// insertion or removal on that track. Times are milliseconds. All operations come from the interface thread and
// return at once. A track that does not exist is a failure status (0x80070057); an item that does not exist is ok
// false, with every other out value 0, and nothing changed.
//
// How a track keeps its items in order and apart:
//
//  1. Taken as given. A call changes what it says; ok is false only when the item does not exist (an addition: when
//     there is no room). A timeline range whose stop is not behind its start is not taken, nor the media range set
//     next on that item, unless a timeline range is taken in between; ok stays true. An insertion's stop of 0 that is
//     not behind its start is no range. A source left without range lasts as long as its stream, a transition as long
//     as its source. An effect inserted with a stop not behind its start is not inserted; ok stays true.
//  2. Settling. The first reading of times (`Get...Times`, `GetTrackDuration`, the compiling of a plan) settles the
//     track, for good. Counts, streams, names, modes and keys read without settling.
//  3. Order. An appended item that is then set to start at or before its predecessor's start takes its place by its
//     start, ahead of an equal one, before the next call on that track that is not about it. An inserted item keeps
//     its number. Items that stood before never change their order.
//  4. Overlap, from left to right. A standing item whose own times were set to begin before the end of the item ahead
//     of it, and which reaches past that end, loses that head at its own rate (and back at its old start and stop it
//     has exactly its old media range). Any other item that overlaps moves whole to that end. Nothing is ever hidden.
//  5. Shifts. A shift to the left stops where its first item meets the one ahead of it, or 0, and all its items stop
//     with it: no time is ever below 0.
//  6. Media. A media range never changes timeline times, but one: a standing item whose start alone was set further
//     left loses the head that would lie before media 0, and at most back to its old start (within 1 ms it is the old
//     start). What else lies outside the stream, and a range that is empty or reversed, is black and silent.
//
//     A 0-10, B 10-20, C 20-30 s, delete 5-15      ->  A 0-5, B 15-20, C 20-30 with its old media
//     A 0-5 (media 8 s long), B 5-10, A set to 0-8 ->  A 0-8, B 8-13
//     A 0-10, B 12-20, B shifted by -5             ->  A 0-10, B 10-18

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWTimeline {
public:
    virtual ~ITWTimeline() = default;

    /// Makes an empty track, of picture or of sound for good; 0 on failure.
    virtual Status CreateTrack(Bool16 isVideo, Handle& track) = 0;
    /// Adds the whole stream as a new source, directly behind the last one when start is -1.
    virtual Status AppendSource(Handle track, Handle stream, Milliseconds start, Bool16& ok) = 0;
    /// Adds an effect at the place its time belongs. stop -1 is the default length: 2,000 ms, shortened to the next
    /// effect and to the last source's stop. ok is false where it would meet an effect; with -1 also on an empty
    /// track or behind the last source.
    virtual Status AddEffectAt(Handle track, Text name, Milliseconds start, Milliseconds stop, Bool16& ok) = 0;
    /// Adds a transition behind the last one. Never refused.
    virtual Status AddTransitionAt(Handle track, Text name, Milliseconds start, Milliseconds stop, Bool16& ok) = 0;
    /// Inserts at sequence number seq. stop 0: the times follow at once by `SetSourceTimes`, `SetSourceMediaTimes`.
    virtual Status InsertSource(Handle track, Handle stream, std::int16_t seq, Milliseconds start, Milliseconds stop,
                                Bool16& ok) = 0;
    virtual Status InsertEffect(Handle track, Text name, std::int16_t seq, Milliseconds start, Milliseconds stop,
                                std::int32_t reserved, Bool16& ok) = 0;
    virtual Status InsertTransition(Handle track, Text name, std::int16_t seq, Milliseconds start, Milliseconds stop,
                                    std::int32_t reserved, Bool16& ok) = 0;
    virtual Status RemoveSource(Handle track, std::int16_t seq, Bool16& ok) = 0;
    virtual Status RemoveEffect(Handle track, std::int16_t seq, Bool16& ok) = 0;
    virtual Status RemoveTransition(Handle track, std::int16_t seq, Bool16& ok) = 0;
    virtual Status IsVideoTrack(Handle track, Bool16& isVideo) = 0;
    virtual Status GetSourceTimes(Handle track, std::int16_t seq, Milliseconds& start, Milliseconds& stop,
                                  Bool16& ok) = 0;
    virtual Status GetEffectTimes(Handle track, std::int16_t seq, Milliseconds& start, Milliseconds& stop,
                                  Bool16& ok) = 0;
    virtual Status GetTransitionTimes(Handle track, std::int16_t seq, Milliseconds& start, Milliseconds& stop,
                                      Bool16& ok) = 0;
    virtual Status SetSourceTimes(Handle track, std::int16_t seq, Milliseconds start, Milliseconds stop,
                                  Bool16& ok) = 0;
    virtual Status SetEffectTimes(Handle track, std::int16_t seq, Milliseconds start, Milliseconds stop,
                                  Bool16& ok) = 0;
    virtual Status SetTransitionTimes(Handle track, std::int16_t seq, Milliseconds start, Milliseconds stop,
                                      Bool16& ok) = 0;
    virtual Status GetSourceMediaTimes(Handle track, std::int16_t seq, Milliseconds& mediaStart,
                                       Milliseconds& mediaStop, Bool16& ok) = 0;
    virtual Status SetSourceMediaTimes(Handle track, std::int16_t seq, Milliseconds mediaStart, Milliseconds mediaStop,
                                       Bool16& ok) = 0;
    virtual Status GetSourceCount(Handle track, std::int16_t& count) = 0;
    virtual Status GetEffectCount(Handle track, std::int16_t& count) = 0;
    virtual Status GetTransitionCount(Handle track, std::int16_t& count) = 0;
    /// 0 when there is no such source.
    virtual Status GetSourceStream(Handle track, std::int16_t seq, Handle& stream) = 0;
    /// All blanks when there is no such item. A name is at most 10 characters long.
    virtual Status GetEffectName(Handle track, std::int16_t seq, TextBuffer buffer) = 0;
    virtual Status GetTransitionName(Handle track, std::int16_t seq, TextBuffer buffer) = 0;
    /// The stop of the track's last source; 0 when the track is empty.
    virtual Status GetTrackDuration(Handle track, Milliseconds& duration) = 0;
    virtual Status GetTrackLink(Handle track, Bool16& linked) = 0;
    virtual Status IsSourceSelected(Handle track, std::int16_t seq, Bool16& selected) = 0;
    virtual Status IsEffectItemSelected(Handle track, std::int16_t seq, Bool16& selected) = 0;
    virtual Status SetSourceSelected(Handle track, std::int16_t seq, Bool16 selected) = 0;
    virtual Status SetEffectSelected(Handle track, std::int16_t seq, Bool16 selected) = 0;
    virtual Status SetTransitionSelected(Handle track, std::int16_t seq, Bool16 selected) = 0;
    virtual Status SetTrackLink(Handle track, Bool16 linked) = 0;
    /// Adds delta to the times of item fromSeq and of all behind it.
    virtual Status ShiftSources(Handle track, std::int16_t fromSeq, Milliseconds delta, Bool16& ok) = 0;
    virtual Status ShiftEffects(Handle track, std::int16_t fromSeq, Milliseconds delta, Bool16& ok) = 0;
    virtual Status ShiftTransitions(Handle track, std::int16_t fromSeq, Milliseconds delta, Bool16& ok) = 0;
    /// Turns all effects on or off for playing and saving, at once.
    virtual Status SetEffectsEnabled(Bool16 enabled) = 0;
    /// A disabled track takes no part in playing and saving. Takes effect at once.
    virtual Status SetTrackDisabled(Handle track, Bool16 disabled) = 0;
    /// The project's frame in pixels, which pictures are laid out in. Below 1: not taken.
    virtual Status SetFrameSize(std::int16_t width, std::int16_t height) = 0;
    /// How a picture is fitted to the frame: 0 stretched, 1 cropped at its own size, 2 whole with bars,
    /// 3 filling the frame with its proportions kept. Takes effect at once.
    virtual Status SetSourceStretchMode(Handle track, std::int16_t seq, std::int16_t mode) = 0;
    virtual Status GetSourceStretchMode(Handle track, std::int16_t seq, std::int16_t& mode) = 0;
};

} // namespace engine
