#include "support/wrapped_engine.h"

#include <utility>

namespace testsupport {

using engine::Status;
using Root = engine::ITWCoreRoot;
using Line = engine::ITWTimeline;
using Keys = engine::ITWKeyTransition;
using Files = engine::ITWMediaFiles;
using Info = engine::ITWStreamInfo;

namespace {

template <class Interface>
Interface& interfaceOf(engine::ITWCoreRoot& root)
{
    return *static_cast<Interface*>(root.interfaceOf(typeid(Interface)));
}

} // namespace

// --- The small player ----------------------------------------------------------------------------------------------

std::string ScriptedFilePreview::takeCalls()
{
    std::string joined;
    for (const std::string& call : std::exchange(calls, {})) {
        joined += (joined.empty() ? "" : "; ") + call;
    }
    return joined;
}

Status ScriptedFilePreview::noted(std::string call)
{
    calls.push_back(std::move(call));
    return status;
}

Status ScriptedFilePreview::noted(std::string call, Bool16& ok)
{
    ok = engine::toBool16(isLoaded_);
    return noted(std::move(call));
}

Status ScriptedFilePreview::SetOwnerWindow(std::int32_t windowHandle)
{
    return noted("SetOwnerWindow " + std::to_string(windowHandle));
}

Status ScriptedFilePreview::ResetPlayer(Bool16& ok)
{
    isLoaded_ = false;
    return noted("ResetPlayer", ok);
}

Status ScriptedFilePreview::OpenFile(engine::Text path, Bool16& ok)
{
    isLoaded_ = true;
    position = 0;
    return noted("OpenFile " + std::string(path), ok);
}

Status ScriptedFilePreview::Close()
{
    isLoaded_ = false;
    return noted("Close");
}

Status ScriptedFilePreview::Play(Bool16& ok) { return noted("Play", ok); }

Status ScriptedFilePreview::Stop(Bool16& ok) { return noted("Stop", ok); }

Status ScriptedFilePreview::SetVideoWindow(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height)
{
    return noted("SetVideoWindow " + std::to_string(left) + " " + std::to_string(top) + " " + std::to_string(width)
                 + " " + std::to_string(height));
}

Status ScriptedFilePreview::Seek(std::int32_t to, Bool16& ok)
{
    position = to;
    return noted("Seek " + std::to_string(to), ok);
}

Status ScriptedFilePreview::Rewind(Bool16& ok)
{
    position = 0;
    return noted("Rewind", ok);
}

Status ScriptedFilePreview::GetDuration(std::int32_t& length)
{
    length = isLoaded_ ? duration : 0;
    return status;
}

Status ScriptedFilePreview::GetPosition(std::int32_t& now)
{
    now = isLoaded_ ? position : 0;
    return status;
}

Status ScriptedFilePreview::ShowFirstFrame(Bool16& ok) { return noted("ShowFirstFrame", ok); }

Status ScriptedFilePreview::SetVolume(std::int32_t level) { return noted("SetVolume " + std::to_string(level)); }

// --- The engine ----------------------------------------------------------------------------------------------------

WrappedEngine::WrappedEngine(std::shared_ptr<engine::ITWCoreRoot> real)
    : real_(std::move(real)), timeline_(testsupport::interfaceOf<engine::ITWTimeline>(*real_)),
      keys_(testsupport::interfaceOf<engine::ITWKeyTransition>(*real_)),
      files_(testsupport::interfaceOf<engine::ITWMediaFiles>(*real_)),
      info_(testsupport::interfaceOf<engine::ITWStreamInfo>(*real_))
{}

void WrappedEngine::failCall(std::set<std::string> operations, int nth, Status status)
{
    failing_ = std::move(operations);
    callsUntilFailure_ = nth;
    failure_ = std::move(status);
}

void* WrappedEngine::interfaceOf(const std::type_info& type) noexcept
{
    if (type == typeid(engine::ITWCoreRoot)) {
        return static_cast<engine::ITWCoreRoot*>(this);
    }
    if (type == typeid(engine::ITWTimeline)) {
        return static_cast<engine::ITWTimeline*>(this);
    }
    if (type == typeid(engine::ITWKeyTransition)) {
        return static_cast<engine::ITWKeyTransition*>(this);
    }
    if (type == typeid(engine::ITWMediaFiles)) {
        return static_cast<engine::ITWMediaFiles*>(this);
    }
    if (type == typeid(engine::ITWStreamInfo)) {
        return static_cast<engine::ITWStreamInfo*>(this);
    }
    if (type == typeid(engine::ITWFilePreview)) {
        return static_cast<engine::ITWFilePreview*>(&preview);
    }
    if (type == typeid(engine::ITWPreview) && timelinePreview != nullptr) {
        return timelinePreview;
    }
    return real_->interfaceOf(type);
}

template <class Interface, class... Parameters, class... Arguments>
Status WrappedEngine::pass(const char* operation, Interface& real, Status (Interface::*call)(Parameters...),
                           Arguments&&... arguments)
{
    ++callCounts[operation];
    if (callsUntilFailure_ > 0 && failing_.contains(operation) && --callsUntilFailure_ == 0) {
        return failure_;
    }
    return (real.*call)(std::forward<Arguments>(arguments)...);
}

Status WrappedEngine::OpenFile(Text path, Handle& file)
{
    if (unopenable.contains(std::string(path))) {
        file = 0;
        return engine::kDone;
    }
    return pass("OpenFile", *real_, &Root::OpenFile, path, file);
}

Status WrappedEngine::CloseFile(Handle file, Bool16& ok)
{
    const Status status = pass("CloseFile", *real_, &Root::CloseFile, file, ok);
    ok = refusesToClose ? engine::kFalse : ok;
    return status;
}

Status WrappedEngine::GetFileError(Text path, std::uint32_t& code)
{
    if (const auto told = fileErrors.find(std::string(path)); told != fileErrors.end()) {
        code = told->second;
        return engine::kDone;
    }
    return pass("GetFileError", *real_, &Root::GetFileError, path, code);
}

Status WrappedEngine::GetFileName(Handle file, TextBuffer buffer, Bool16& ok)
{
    return pass("GetFileName", *real_, &Root::GetFileName, file, buffer, ok);
}
Status WrappedEngine::GetFirstStream(Handle file, Handle& stream)
{
    return pass("GetFirstStream", *real_, &Root::GetFirstStream, file, stream);
}
Status WrappedEngine::FileExists(Text path, Bool16& exists)
{
    return pass("FileExists", *real_, &Root::FileExists, path, exists);
}
Status WrappedEngine::ReleaseStillSource(Handle handle, Bool16& ok)
{
    return pass("ReleaseStillSource", *real_, &Root::ReleaseStillSource, handle, ok);
}
Status WrappedEngine::GetWorkingFolder(std::int32_t size, TextBuffer buffer)
{
    return pass("GetWorkingFolder", *real_, &Root::GetWorkingFolder, size, buffer);
}
Status WrappedEngine::GetFileVersionInfo(Text fileName, std::int32_t& v1, std::int32_t& v2, std::int32_t& v3,
                                         std::int32_t& v4)
{
    return pass("GetFileVersionInfo", *real_, &Root::GetFileVersionInfo, fileName, v1, v2, v3, v4);
}
Status WrappedEngine::GetMemoryStatus(std::int32_t& physical, std::int32_t& physicalFree, std::int32_t& swap,
                                      std::int32_t& swapFree)
{
    return pass("GetMemoryStatus", *real_, &Root::GetMemoryStatus, physical, physicalFree, swap, swapFree);
}
Status WrappedEngine::GetSystemVersion(TextBuffer buffer)
{
    return pass("GetSystemVersion", *real_, &Root::GetSystemVersion, buffer);
}
Status WrappedEngine::CheckDirectShowVersion(Bool16& ok)
{
    return pass("CheckDirectShowVersion", *real_, &Root::CheckDirectShowVersion, ok);
}
Status WrappedEngine::DeleteFile(Text path, Bool16& ok)
{
    return pass("DeleteFile", *real_, &Root::DeleteFile, path, ok);
}
Status WrappedEngine::CreateTrack(Bool16 isVideo, Handle& track)
{
    return pass("CreateTrack", timeline_, &Line::CreateTrack, isVideo, track);
}
Status WrappedEngine::AppendSource(Handle track, Handle stream, Ms start, Bool16& ok)
{
    return pass("AppendSource", timeline_, &Line::AppendSource, track, stream, start, ok);
}
Status WrappedEngine::AddEffectAt(Handle track, Text name, Ms start, Ms stop, Bool16& ok)
{
    return pass("AddEffectAt", timeline_, &Line::AddEffectAt, track, name, start, stop, ok);
}
Status WrappedEngine::AddTransitionAt(Handle track, Text name, Ms start, Ms stop, Bool16& ok)
{
    return pass("AddTransitionAt", timeline_, &Line::AddTransitionAt, track, name, start, stop, ok);
}
Status WrappedEngine::InsertSource(Handle track, Handle stream, Seq seq, Ms start, Ms stop, Bool16& ok)
{
    return pass("InsertSource", timeline_, &Line::InsertSource, track, stream, seq, start, stop, ok);
}
Status WrappedEngine::InsertEffect(Handle track, Text name, Seq seq, Ms start, Ms stop, std::int32_t reserved,
                                   Bool16& ok)
{
    return pass("InsertEffect", timeline_, &Line::InsertEffect, track, name, seq, start, stop, reserved, ok);
}
Status WrappedEngine::InsertTransition(Handle track, Text name, Seq seq, Ms start, Ms stop, std::int32_t reserved,
                                       Bool16& ok)
{
    return pass("InsertTransition", timeline_, &Line::InsertTransition, track, name, seq, start, stop, reserved, ok);
}
Status WrappedEngine::RemoveSource(Handle track, Seq seq, Bool16& ok)
{
    return pass("RemoveSource", timeline_, &Line::RemoveSource, track, seq, ok);
}
Status WrappedEngine::RemoveEffect(Handle track, Seq seq, Bool16& ok)
{
    return pass("RemoveEffect", timeline_, &Line::RemoveEffect, track, seq, ok);
}
Status WrappedEngine::RemoveTransition(Handle track, Seq seq, Bool16& ok)
{
    return pass("RemoveTransition", timeline_, &Line::RemoveTransition, track, seq, ok);
}
Status WrappedEngine::IsVideoTrack(Handle track, Bool16& isVideo)
{
    return pass("IsVideoTrack", timeline_, &Line::IsVideoTrack, track, isVideo);
}
Status WrappedEngine::GetSourceTimes(Handle track, Seq seq, Ms& start, Ms& stop, Bool16& ok)
{
    return pass("GetSourceTimes", timeline_, &Line::GetSourceTimes, track, seq, start, stop, ok);
}
Status WrappedEngine::GetEffectTimes(Handle track, Seq seq, Ms& start, Ms& stop, Bool16& ok)
{
    return pass("GetEffectTimes", timeline_, &Line::GetEffectTimes, track, seq, start, stop, ok);
}
Status WrappedEngine::GetTransitionTimes(Handle track, Seq seq, Ms& start, Ms& stop, Bool16& ok)
{
    return pass("GetTransitionTimes", timeline_, &Line::GetTransitionTimes, track, seq, start, stop, ok);
}
Status WrappedEngine::SetSourceTimes(Handle track, Seq seq, Ms start, Ms stop, Bool16& ok)
{
    return pass("SetSourceTimes", timeline_, &Line::SetSourceTimes, track, seq, start, stop, ok);
}
Status WrappedEngine::SetEffectTimes(Handle track, Seq seq, Ms start, Ms stop, Bool16& ok)
{
    return pass("SetEffectTimes", timeline_, &Line::SetEffectTimes, track, seq, start, stop, ok);
}
Status WrappedEngine::SetTransitionTimes(Handle track, Seq seq, Ms start, Ms stop, Bool16& ok)
{
    return pass("SetTransitionTimes", timeline_, &Line::SetTransitionTimes, track, seq, start, stop, ok);
}
Status WrappedEngine::GetSourceMediaTimes(Handle track, Seq seq, Ms& mediaStart, Ms& mediaStop, Bool16& ok)
{
    return pass("GetSourceMediaTimes", timeline_, &Line::GetSourceMediaTimes, track, seq, mediaStart, mediaStop, ok);
}
Status WrappedEngine::SetSourceMediaTimes(Handle track, Seq seq, Ms mediaStart, Ms mediaStop, Bool16& ok)
{
    return pass("SetSourceMediaTimes", timeline_, &Line::SetSourceMediaTimes, track, seq, mediaStart, mediaStop, ok);
}
Status WrappedEngine::GetSourceCount(Handle track, Seq& count)
{
    return pass("GetSourceCount", timeline_, &Line::GetSourceCount, track, count);
}
Status WrappedEngine::GetEffectCount(Handle track, Seq& count)
{
    return pass("GetEffectCount", timeline_, &Line::GetEffectCount, track, count);
}
Status WrappedEngine::GetTransitionCount(Handle track, Seq& count)
{
    return pass("GetTransitionCount", timeline_, &Line::GetTransitionCount, track, count);
}
Status WrappedEngine::GetSourceStream(Handle track, Seq seq, Handle& stream)
{
    return pass("GetSourceStream", timeline_, &Line::GetSourceStream, track, seq, stream);
}
Status WrappedEngine::GetEffectName(Handle track, Seq seq, TextBuffer buffer)
{
    return pass("GetEffectName", timeline_, &Line::GetEffectName, track, seq, buffer);
}
Status WrappedEngine::GetTransitionName(Handle track, Seq seq, TextBuffer buffer)
{
    return pass("GetTransitionName", timeline_, &Line::GetTransitionName, track, seq, buffer);
}
Status WrappedEngine::GetTrackDuration(Handle track, Ms& duration)
{
    return pass("GetTrackDuration", timeline_, &Line::GetTrackDuration, track, duration);
}
Status WrappedEngine::GetTrackLink(Handle track, Bool16& linked)
{
    return pass("GetTrackLink", timeline_, &Line::GetTrackLink, track, linked);
}
Status WrappedEngine::IsSourceSelected(Handle track, Seq seq, Bool16& selected)
{
    return pass("IsSourceSelected", timeline_, &Line::IsSourceSelected, track, seq, selected);
}
Status WrappedEngine::IsEffectItemSelected(Handle track, Seq seq, Bool16& selected)
{
    return pass("IsEffectItemSelected", timeline_, &Line::IsEffectItemSelected, track, seq, selected);
}
Status WrappedEngine::SetSourceSelected(Handle track, Seq seq, Bool16 selected)
{
    return pass("SetSourceSelected", timeline_, &Line::SetSourceSelected, track, seq, selected);
}
Status WrappedEngine::SetEffectSelected(Handle track, Seq seq, Bool16 selected)
{
    return pass("SetEffectSelected", timeline_, &Line::SetEffectSelected, track, seq, selected);
}
Status WrappedEngine::SetTransitionSelected(Handle track, Seq seq, Bool16 selected)
{
    return pass("SetTransitionSelected", timeline_, &Line::SetTransitionSelected, track, seq, selected);
}
Status WrappedEngine::SetTrackLink(Handle track, Bool16 linked)
{
    return pass("SetTrackLink", timeline_, &Line::SetTrackLink, track, linked);
}
Status WrappedEngine::ShiftSources(Handle track, Seq fromSeq, Ms delta, Bool16& ok)
{
    return pass("ShiftSources", timeline_, &Line::ShiftSources, track, fromSeq, delta, ok);
}
Status WrappedEngine::ShiftEffects(Handle track, Seq fromSeq, Ms delta, Bool16& ok)
{
    return pass("ShiftEffects", timeline_, &Line::ShiftEffects, track, fromSeq, delta, ok);
}
Status WrappedEngine::ShiftTransitions(Handle track, Seq fromSeq, Ms delta, Bool16& ok)
{
    return pass("ShiftTransitions", timeline_, &Line::ShiftTransitions, track, fromSeq, delta, ok);
}
Status WrappedEngine::SetEffectsEnabled(Bool16 enabled)
{
    return pass("SetEffectsEnabled", timeline_, &Line::SetEffectsEnabled, enabled);
}
Status WrappedEngine::SetTrackDisabled(Handle track, Bool16 disabled)
{
    return pass("SetTrackDisabled", timeline_, &Line::SetTrackDisabled, track, disabled);
}
Status WrappedEngine::SetFrameSize(Seq width, Seq height)
{
    return pass("SetFrameSize", timeline_, &Line::SetFrameSize, width, height);
}
Status WrappedEngine::SetSourceStretchMode(Handle track, Seq seq, Seq mode)
{
    return pass("SetSourceStretchMode", timeline_, &Line::SetSourceStretchMode, track, seq, mode);
}
Status WrappedEngine::GetSourceStretchMode(Handle track, Seq seq, Seq& mode)
{
    return pass("GetSourceStretchMode", timeline_, &Line::GetSourceStretchMode, track, seq, mode);
}
Status WrappedEngine::SetKeyColor(Handle track, Seq seq, Seq red, Seq green, Seq blue, Bool16& ok)
{
    return pass("SetKeyColor", keys_, &Keys::SetKeyColor, track, seq, red, green, blue, ok);
}
Status WrappedEngine::GetKeyRed(Handle track, Seq seq, Seq& value)
{
    return pass("GetKeyRed", keys_, &Keys::GetKeyRed, track, seq, value);
}
Status WrappedEngine::GetKeyGreen(Handle track, Seq seq, Seq& value)
{
    return pass("GetKeyGreen", keys_, &Keys::GetKeyGreen, track, seq, value);
}
Status WrappedEngine::GetKeyBlue(Handle track, Seq seq, Seq& value)
{
    return pass("GetKeyBlue", keys_, &Keys::GetKeyBlue, track, seq, value);
}
Status WrappedEngine::SetKeyParameter(Handle track, Seq seq, Text name, std::int32_t value, Bool16& ok)
{
    return pass("SetKeyParameter", keys_, &Keys::SetKeyParameter, track, seq, name, value, ok);
}
Status WrappedEngine::ClearKeyParameters(Handle track, Seq seq)
{
    return pass("ClearKeyParameters", keys_, &Keys::ClearKeyParameters, track, seq);
}
Status WrappedEngine::OpenStream(Handle file, std::int16_t index, Handle& stream)
{
    return pass("OpenStream", files_, &Files::OpenStream, file, index, stream);
}
Status WrappedEngine::CloseStream(Handle stream, Bool16& ok)
{
    return pass("CloseStream", files_, &Files::CloseStream, stream, ok);
}
Status WrappedEngine::SelectStream(Handle stream, Bool16& ok)
{
    return pass("SelectStream", files_, &Files::SelectStream, stream, ok);
}
Status WrappedEngine::GetStreamFile(Handle stream, Handle& file)
{
    return pass("GetStreamFile", files_, &Files::GetStreamFile, stream, file);
}
Status WrappedEngine::IsVideoStream(Handle stream, Bool16& isVideo)
{
    return pass("IsVideoStream", files_, &Files::IsVideoStream, stream, isVideo);
}
Status WrappedEngine::LookForFiles() { return pass("LookForFiles", files_, &Files::LookForFiles); }
Status WrappedEngine::IsVideo(Bool16& isVideo) { return pass("IsVideo", info_, &Info::IsVideo, isVideo); }
Status WrappedEngine::IsAudio(Bool16& isAudio) { return pass("IsAudio", info_, &Info::IsAudio, isAudio); }
Status WrappedEngine::GetVideoSize(std::int32_t& height, std::int32_t& width)
{
    return pass("GetVideoSize", info_, &Info::GetVideoSize, height, width);
}
Status WrappedEngine::GetAudioSampleRate(std::int32_t& hertz)
{
    return pass("GetAudioSampleRate", info_, &Info::GetAudioSampleRate, hertz);
}
Status WrappedEngine::GetDuration(double& seconds) { return pass("GetDuration", info_, &Info::GetDuration, seconds); }
Status WrappedEngine::GetFrameRate(double& fps) { return pass("GetFrameRate", info_, &Info::GetFrameRate, fps); }
Status WrappedEngine::OpenFileInfo(Text path, std::int32_t flags)
{
    return pass("OpenFileInfo", info_, &Info::OpenFileInfo, path, flags);
}
Status WrappedEngine::GetStreamCount(std::int32_t& count)
{
    return pass("GetStreamCount", info_, &Info::GetStreamCount, count);
}

} // namespace testsupport
