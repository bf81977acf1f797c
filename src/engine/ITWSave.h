#pragma once

// Saving the timeline as a movie.
//
// Order of calls: settings; `AddSaveTrack` for each track, range, effects; `PrepareAviFile` or
// `PrepareWindowsMediaFile`; `StartSave` and polls, or `RunSaveToEnd`; `StopSave`; `CloseSave`.
//
// Threads: operations come from the interface thread; the movie is rendered and written on engine threads over an
// immutable plan that is compiled when the save starts. Preparing, `RunSaveToEnd` and `SaveMetadata` take the time that
// they need, `WaitForStopped` as long as it is told, all else returns at once.
//
// The engine writes to the path that it is given and leaves a partial file there when the save is stopped; an old file
// is truncated only when the encoders are open. Texts that this interface fills end in NUL ahead of their blanks.
// A value of -1 of a rate, quality or size means the encoder's, or the timeline's, own.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

/// What `ITWSave::GetSaveState` answers.
namespace save_state {
inline constexpr std::int32_t kIdle = 0;     // nothing is being saved, or the save runs
inline constexpr std::int32_t kComplete = 1; // every frame, sample and packet that was meant is in the file
inline constexpr std::int32_t kFailed = 2;   // it ended early; the cause was told once as a failure status
} // namespace save_state

class ITWSave {
public:
    virtual ~ITWSave() = default;

    virtual Status AddSaveTrack(Handle track, Bool16& ok) = 0;
    /// ok false: a compressor or profile refuses, or there is nothing to save. A file that cannot be made is a failure
    /// status with its cause.
    virtual Status PrepareAviFile(Text path, Bool16& ok) = 0;
    virtual Status PrepareWindowsMediaFile(Text path, Bool16& ok) = 0;
    /// Releases the save: drops tracks, range and the effects flag, and keeps the settings. Stops a running one.
    virtual Status CloseSave() = 0;
    virtual Status StartSave(Bool16& ok) = 0;
    /// Does nothing when nothing has been prepared.
    virtual Status RunSaveToEnd() = 0;
    /// Stops the save. The index is written behind the picture that is in hand, so that what is there plays: until then
    /// the file belongs to that save, and preparing another at its path takes the name from it first. A second one does
    /// nothing and is ok.
    virtual Status StopSave(Bool16& ok) = 0;
    virtual Status GetSaveDuration(Milliseconds& duration) = 0;
    virtual Status GetSavePosition(Milliseconds& position) = 0;
    /// One of `save_state`. A save that fails answers its cause as this call's failure status once, then state 2.
    virtual Status GetSaveState(std::int32_t& state) = 0;
    virtual Status OpenVideoCompressorList(Bool16& ok) = 0;
    virtual Status OpenAudioCompressorList(Bool16& ok) = 0;
    /// Name at index from 0, buffer of 128; blank behind the last. Indexes stay good after the list is closed.
    virtual Status GetVideoCompressorName(std::int16_t index, TextBuffer buffer) = 0;
    virtual Status GetAudioCompressorName(std::int16_t index, TextBuffer buffer) = 0;
    virtual Status CloseVideoCompressorList() = 0;
    virtual Status CloseAudioCompressorList() = 0;
    /// A name of the list or "Uncompressed".
    virtual Status SetVideoCompressor(Text name) = 0;
    virtual Status SetAudioCompressor(Text name) = 0;
    /// Index of the video compressor set last; -1 for "Uncompressed" and for a name that is not in the list.
    virtual Status GetVideoCompressorIndex(std::int32_t& index) = 0;
    virtual Status CanSetKeyFrameRate(std::int32_t index, Bool16& can) = 0;
    virtual Status CanSetPFrameFrequency(std::int32_t index, Bool16& can) = 0;
    virtual Status CanSetQuality(std::int32_t index, Bool16& can) = 0;
    /// Frames a second; -1 is the first video source's rate, else 25.
    virtual Status SetFrameRate(std::int32_t value) = 0;
    /// Frames from key frame to key frame.
    virtual Status SetKeyFrameRate(std::int32_t value) = 0;
    /// Predicted frames between key frames' neighbours, where the encoder takes such a number.
    virtual Status SetPFrameFrequency(std::int32_t value) = 0;
    /// 0 worst to 100 best; docs/quality.md maps it to each encoder's own scale.
    virtual Status SetQuality(std::int32_t value) = 0;
    virtual Status GetFrameRate(std::int16_t& value) = 0;
    virtual Status GetKeyFrameRate(std::int16_t& value) = 0;
    virtual Status GetPFrameFrequency(std::int16_t& value) = 0;
    virtual Status GetQuality(std::int16_t& value) = 0;
    /// Back to "Uncompressed" and -1, and `SetCopyUnchanged` to on.
    virtual Status ResetSave() = 0;
    /// Half open, on the timeline.
    virtual Status SetSaveRange(Milliseconds start, Milliseconds stop) = 0;
    virtual Status SetSaveWholeTimeline(Bool16 whole) = 0;
    virtual Status SetSaveEffects(Bool16 include) = 0;
    virtual Status GetVideoWidth(std::int16_t& width) = 0;
    virtual Status GetVideoHeight(std::int16_t& height) = 0;
    /// Pixels of an AVI movie; -1 is the project's frame size.
    virtual Status SetVideoSize(std::int32_t width, std::int32_t height) = 0;
    virtual Status SetWindowsMediaVideoSize(std::int16_t width, std::int16_t height) = 0;
    virtual Status SetVideoProfile(Text name) = 0;
    virtual Status GetVideoProfile(TextBuffer buffer) = 0;
    virtual Status SetAudioProfile(Text name) = 0;
    virtual Status GetAudioProfile(TextBuffer buffer) = 0;
    /// ok is false for a file that cannot carry descriptive fields.
    virtual Status OpenMetadata(Text path, Bool16& ok) = 0;
    virtual Status SetTitle(Text text) = 0;
    virtual Status SetAuthor(Text text) = 0;
    virtual Status SetRating(Text text) = 0;
    virtual Status SetCopyright(Text text) = 0;
    virtual Status SetDescription(Text text) = 0;
    /// Writes the fields in place and closes.
    virtual Status SaveMetadata() = 0;
    /// Waits until the saves that were stopped have closed their files, not longer than told. ok false: one has not.
    virtual Status WaitForStopped(Milliseconds longest, Bool16& ok) = 0;
    /// Whether what is prepared from now on takes pictures over as they are that nothing is done to, where their medium
    /// has them as the movie is to have them. On in a new object and after `ResetSave`.
    virtual Status SetCopyUnchanged(Bool16 on) = 0;
    /// Pictures of the movie saved last that were taken over so; good until the next preparing.
    virtual Status GetFramesCopied(std::int32_t& count) = 0;
};

} // namespace engine
