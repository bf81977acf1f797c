#pragma once

// An engine around the real one, for faults and for the small player without a sound device.
//
// It forwards every call of the four interfaces that the logic works with, counts each by its operation's name, and
// lets chosen ones fail or answer otherwise. Interfaces that it does not know are the real engine's own.

#include "engine/ITWCoreRoot.h"
#include "engine/ITWFilePreview.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWPreview.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace testsupport {

/// A player that notes what it is told, one line a call: "OpenFile /a/b.avi", "SetVideoWindow 1 1 317 238".
class ScriptedFilePreview final : public engine::ITWFilePreview {
public:
    using Status = engine::Status;
    using Bool16 = engine::Bool16;

    std::int32_t duration = 5000; // of whatever is loaded
    std::int32_t position = 0;
    Status status;                  // of every call
    std::vector<std::string> calls; // all but GetDuration and GetPosition

    /// What was called since the last time, joined by "; ".
    std::string takeCalls();

    Status SetOwnerWindow(std::int32_t windowHandle) override;
    Status ResetPlayer(Bool16& ok) override;
    Status OpenFile(engine::Text path, Bool16& ok) override;
    Status Close() override;
    Status Play(Bool16& ok) override;
    Status Stop(Bool16& ok) override;
    Status SetVideoWindow(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) override;
    Status Seek(std::int32_t position, Bool16& ok) override;
    Status Rewind(Bool16& ok) override;
    Status GetDuration(std::int32_t& length) override;
    Status GetPosition(std::int32_t& position) override;
    Status ShowFirstFrame(Bool16& ok) override;
    Status SetVolume(std::int32_t level) override;

private:
    Status noted(std::string call);
    Status noted(std::string call, Bool16& ok);

    bool isLoaded_ = false;
};

class WrappedEngine final : public engine::ITWCoreRoot,
                            public engine::ITWTimeline,
                            public engine::ITWKeyTransition,
                            public engine::ITWMediaFiles,
                            public engine::ITWStreamInfo {
public:
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Handle = engine::Handle;
    using Text = engine::Text;
    using TextBuffer = engine::TextBuffer;
    using Ms = engine::Milliseconds;
    using Seq = std::int16_t;

    explicit WrappedEngine(std::shared_ptr<engine::ITWCoreRoot> real);

    /// From now on the nth call (1 is the next) of any of these operations fails once with this status, undone.
    void failCall(std::set<std::string> operations, int nth = 1, Status status = engine::kFailed);
    /// Whether that failure is still to come.
    bool failsLater() const { return callsUntilFailure_ > 0; }
    /// How often each operation was called, failed calls too.
    std::map<std::string, int> callCounts;

    std::map<std::string, std::uint32_t> fileErrors; // answered by GetFileError instead of trying the path
    std::set<std::string> unopenable;                // paths for which OpenFile answers 0
    bool refusesToClose = false;                     // CloseFile closes, and answers ok false all the same
    ScriptedFilePreview preview;
    engine::ITWPreview* timelinePreview = nullptr; // answered instead of the real one; the test's own

    void* interfaceOf(const std::type_info& type) noexcept override;

    Status OpenFile(Text path, Handle& file) override;
    Status CloseFile(Handle file, Bool16& ok) override;
    Status GetFileName(Handle file, TextBuffer buffer, Bool16& ok) override;
    Status GetFirstStream(Handle file, Handle& stream) override;
    Status FileExists(Text path, Bool16& exists) override;
    Status ReleaseStillSource(Handle handle, Bool16& ok) override;
    Status GetWorkingFolder(std::int32_t size, TextBuffer buffer) override;
    Status GetFileVersionInfo(Text fileName, std::int32_t& v1, std::int32_t& v2, std::int32_t& v3,
                              std::int32_t& v4) override;
    Status GetMemoryStatus(std::int32_t& physical, std::int32_t& physicalFree, std::int32_t& swap,
                           std::int32_t& swapFree) override;
    Status GetSystemVersion(TextBuffer buffer) override;
    Status CheckDirectShowVersion(Bool16& ok) override;
    Status GetFileError(Text path, std::uint32_t& code) override;
    Status DeleteFile(Text path, Bool16& ok) override;

    Status CreateTrack(Bool16 isVideo, Handle& track) override;
    Status AppendSource(Handle track, Handle stream, Ms start, Bool16& ok) override;
    Status AddEffectAt(Handle track, Text name, Ms start, Ms stop, Bool16& ok) override;
    Status AddTransitionAt(Handle track, Text name, Ms start, Ms stop, Bool16& ok) override;
    Status InsertSource(Handle track, Handle stream, Seq seq, Ms start, Ms stop, Bool16& ok) override;
    Status InsertEffect(Handle track, Text name, Seq seq, Ms start, Ms stop, std::int32_t reserved,
                        Bool16& ok) override;
    Status InsertTransition(Handle track, Text name, Seq seq, Ms start, Ms stop, std::int32_t reserved,
                            Bool16& ok) override;
    Status RemoveSource(Handle track, Seq seq, Bool16& ok) override;
    Status RemoveEffect(Handle track, Seq seq, Bool16& ok) override;
    Status RemoveTransition(Handle track, Seq seq, Bool16& ok) override;
    Status IsVideoTrack(Handle track, Bool16& isVideo) override;
    Status GetSourceTimes(Handle track, Seq seq, Ms& start, Ms& stop, Bool16& ok) override;
    Status GetEffectTimes(Handle track, Seq seq, Ms& start, Ms& stop, Bool16& ok) override;
    Status GetTransitionTimes(Handle track, Seq seq, Ms& start, Ms& stop, Bool16& ok) override;
    Status SetSourceTimes(Handle track, Seq seq, Ms start, Ms stop, Bool16& ok) override;
    Status SetEffectTimes(Handle track, Seq seq, Ms start, Ms stop, Bool16& ok) override;
    Status SetTransitionTimes(Handle track, Seq seq, Ms start, Ms stop, Bool16& ok) override;
    Status GetSourceMediaTimes(Handle track, Seq seq, Ms& mediaStart, Ms& mediaStop, Bool16& ok) override;
    Status SetSourceMediaTimes(Handle track, Seq seq, Ms mediaStart, Ms mediaStop, Bool16& ok) override;
    Status GetSourceCount(Handle track, Seq& count) override;
    Status GetEffectCount(Handle track, Seq& count) override;
    Status GetTransitionCount(Handle track, Seq& count) override;
    Status GetSourceStream(Handle track, Seq seq, Handle& stream) override;
    Status GetEffectName(Handle track, Seq seq, TextBuffer buffer) override;
    Status GetTransitionName(Handle track, Seq seq, TextBuffer buffer) override;
    Status GetTrackDuration(Handle track, Ms& duration) override;
    Status GetTrackLink(Handle track, Bool16& linked) override;
    Status IsSourceSelected(Handle track, Seq seq, Bool16& selected) override;
    Status IsEffectItemSelected(Handle track, Seq seq, Bool16& selected) override;
    Status SetSourceSelected(Handle track, Seq seq, Bool16 selected) override;
    Status SetEffectSelected(Handle track, Seq seq, Bool16 selected) override;
    Status SetTransitionSelected(Handle track, Seq seq, Bool16 selected) override;
    Status SetTrackLink(Handle track, Bool16 linked) override;
    Status ShiftSources(Handle track, Seq fromSeq, Ms delta, Bool16& ok) override;
    Status ShiftEffects(Handle track, Seq fromSeq, Ms delta, Bool16& ok) override;
    Status ShiftTransitions(Handle track, Seq fromSeq, Ms delta, Bool16& ok) override;
    Status SetEffectsEnabled(Bool16 enabled) override;
    Status SetTrackDisabled(Handle track, Bool16 disabled) override;
    Status SetFrameSize(Seq width, Seq height) override;
    Status SetSourceStretchMode(Handle track, Seq seq, Seq mode) override;
    Status GetSourceStretchMode(Handle track, Seq seq, Seq& mode) override;

    Status SetKeyColor(Handle track, Seq seq, Seq red, Seq green, Seq blue, Bool16& ok) override;
    Status GetKeyRed(Handle track, Seq seq, Seq& value) override;
    Status GetKeyGreen(Handle track, Seq seq, Seq& value) override;
    Status GetKeyBlue(Handle track, Seq seq, Seq& value) override;
    Status SetKeyParameter(Handle track, Seq seq, Text name, std::int32_t value, Bool16& ok) override;
    Status ClearKeyParameters(Handle track, Seq seq) override;

    Status OpenStream(Handle file, std::int16_t index, Handle& stream) override;
    Status CloseStream(Handle stream, Bool16& ok) override;
    Status SelectStream(Handle stream, Bool16& ok) override;
    Status GetStreamFile(Handle stream, Handle& file) override;
    Status IsVideoStream(Handle stream, Bool16& isVideo) override;
    Status LookForFiles() override;

    Status IsVideo(Bool16& isVideo) override;
    Status IsAudio(Bool16& isAudio) override;
    Status GetVideoSize(std::int32_t& height, std::int32_t& width) override;
    Status GetAudioSampleRate(std::int32_t& hertz) override;
    Status GetDuration(double& seconds) override;
    Status GetFrameRate(double& fps) override;
    Status OpenFileInfo(Text path, std::int32_t flags) override;
    Status GetStreamCount(std::int32_t& count) override;

private:
    template <class Interface, class... Parameters, class... Arguments>
    Status pass(const char* operation, Interface& real, Status (Interface::*call)(Parameters...),
                Arguments&&... arguments);

    std::shared_ptr<engine::ITWCoreRoot> real_;
    engine::ITWTimeline& timeline_;
    engine::ITWKeyTransition& keys_;
    engine::ITWMediaFiles& files_;
    engine::ITWStreamInfo& info_;
    std::set<std::string> failing_;
    int callsUntilFailure_ = 0;
    Status failure_;
};

} // namespace testsupport
