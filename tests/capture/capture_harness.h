#pragma once

// The capture window over an engine whose devices a test scripts: it notes the calls in their order and answers as it
// is told. Everything else is the real engine's.

#include "capture/frmCapture.h"
#include "capture/frmCaptureOptions.h"
#include "capture/frmCaptureValues.h"
#include "capture/moduleCaptureSnap.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmCaptureOptions.h"
#include "core/forms/frmCaptureValues.h"
#include "engine/ITWCapture.h"
#include "support/files.h"
#include "support/logic_harness.h"

#include <filesystem>

namespace logic_test {

using engine::Bool16;
using engine::Status;
using engine::Text;

class ScriptedDevices final : public engine::ITWCoreRoot, public engine::ITWCapture {
public:
    std::string calls;                      // "InitCapture BuildGraph SetVideoDevice(Cam)"; without those that only ask
    std::set<std::string> refused;          // these answer no
    std::map<std::string, Status> statuses; // these answer so
    std::function<void(const std::string&)> onCall;
    std::vector<std::string> cameras{"Cam", "Screen"}, microphones{"Mic", "Line"};
    std::int16_t videoStatus = 0, audioStatus = 0, settingsResult = 1;
    std::int32_t captured = 0, dropped = 0, width = 640, height = 480;
    std::shared_ptr<engine::ITWCoreRoot> real;

    void* interfaceOf(const std::type_info& type) noexcept override
    {
        return type == typeid(ITWCapture) ? static_cast<ITWCapture*>(this) : real->interfaceOf(type);
    }
    Status OpenFile(Text path, Handle& file) override { return real->OpenFile(path, file); }
    Status CloseFile(Handle file, Bool16& ok) override { return real->CloseFile(file, ok); }
    Status GetFileName(Handle file, engine::TextBuffer buffer, Bool16& ok) override
    {
        return real->GetFileName(file, buffer, ok);
    }
    Status GetFirstStream(Handle file, Handle& stream) override { return real->GetFirstStream(file, stream); }
    Status FileExists(Text path, Bool16& exists) override { return real->FileExists(path, exists); }
    Status ReleaseStillSource(Handle handle, Bool16& ok) override { return real->ReleaseStillSource(handle, ok); }
    Status GetWorkingFolder(std::int32_t size, engine::TextBuffer buffer) override
    {
        return real->GetWorkingFolder(size, buffer);
    }
    Status GetFileVersionInfo(Text, std::int32_t&, std::int32_t&, std::int32_t&, std::int32_t&) override
    {
        return engine::kNotImplemented;
    }
    Status GetMemoryStatus(std::int32_t&, std::int32_t&, std::int32_t&, std::int32_t&) override
    {
        return engine::kNotImplemented;
    }
    Status GetSystemVersion(engine::TextBuffer) override { return engine::kNotImplemented; }
    Status CheckDirectShowVersion(Bool16& ok) override { return real->CheckDirectShowVersion(ok); }
    Status GetFileError(Text path, std::uint32_t& code) override { return real->GetFileError(path, code); }
    Status DeleteFile(Text path, Bool16& ok) override { return real->DeleteFile(path, ok); }

    Status InitCapture(Bool16& ok) override { return told("InitCapture", ok); }
    Status ReleaseCapture() override { return told("ReleaseCapture"); }
    Status GetVideoDeviceStatus(std::int16_t& status) override { return asked(status, videoStatus); }
    Status GetAudioDeviceStatus(std::int16_t& status) override { return asked(status, audioStatus); }
    Status TearDownCapture() override { return told("TearDownCapture"); }
    Status TearDownPreview() override { return told("TearDownPreview"); }
    Status SetVideoDevice(Text name) override { return told("SetVideoDevice", name); }
    Status SetAudioDevice(Text name) override { return told("SetAudioDevice", name); }
    Status SetCaptureAudioCompressor(Text name) override { return told("SetCaptureAudioCompressor", name); }
    Status SetCaptureVideoCompressor(Text name) override { return told("SetCaptureVideoCompressor", name); }
    Status GetVideoDeviceName(std::int16_t index, engine::TextBuffer buffer) override
    {
        return named(cameras, index, buffer);
    }
    Status GetAudioDeviceName(std::int16_t index, engine::TextBuffer buffer) override
    {
        return named(microphones, index, buffer);
    }
    Status StartCaptureToFile(Text path, std::int16_t format, std::int16_t syncMaster, Bool16& ok) override
    {
        return told("StartCaptureToFile", ok,
                    std::filesystem::path(path).filename().string() + "," + std::to_string(format) + ","
                        + std::to_string(syncMaster));
    }
    Status GetFramesCaptured(std::int32_t& count) override
    {
        const auto scripted = statuses.find("GetFramesCaptured");
        return scripted != statuses.end() ? scripted->second : asked(count, captured);
    }
    Status GetFramesDropped(std::int32_t& count) override { return asked(count, dropped); }
    Status SetVideoPosition(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h) override
    {
        position = {x, y, w, h};
        return engine::kDone;
    }
    Status GetCaptureSize(std::int32_t& w, std::int32_t& h) override
    {
        h = height;
        return asked(w, width);
    }
    Status ShowCameraSettings(std::int32_t) override { return told("ShowCameraSettings"); }
    Status ShowVideoSettings(std::int32_t, std::int16_t& result) override
    {
        result = settingsResult;
        return told("ShowVideoSettings");
    }
    Status ShowAudioSettings(std::int32_t) override { return told("ShowAudioSettings"); }
    Status ShowAudioFormats(std::int32_t) override { return told("ShowAudioFormats"); }
    Status SetPreviewing(Bool16& on) override { return told("SetPreviewing", on != engine::kFalse ? "1" : "0"); }
    Status BuildGraph(Bool16& ok) override { return told("BuildGraph", ok); }
    Status SetVideoWindow(std::int32_t, Bool16& ok) override { return told("SetVideoWindow", ok); }
    Status RunGraph(Bool16& ok) override { return told("RunGraph", ok); }
    Status StopCapture() override { return told("StopCapture"); }
    Status TakeSnap(Text path, std::int16_t w, std::int16_t h) override
    {
        return told("TakeSnap", std::filesystem::path(path).filename().string() + "," + std::to_string(w) + ","
                                    + std::to_string(h));
    }

    std::array<std::int32_t, 4> position{};

private:
    Status told(const std::string& call, Text argument = {})
    {
        calls += (calls.empty() ? "" : " ") + call + (argument.empty() ? "" : "(" + std::string(argument) + ")");
        if (onCall) {
            onCall(call);
        }
        return statuses.contains(call) ? statuses.at(call) : engine::kDone;
    }
    Status told(const std::string& call, Bool16& ok, Text argument = {})
    {
        ok = refused.contains(call) ? engine::kFalse : Bool16{1};
        return told(call, argument);
    }
    template <class Number>
    static Status asked(Number& out, Number value)
    {
        out = value;
        return engine::kDone;
    }
    static Status named(const std::vector<std::string>& names, std::int16_t index, engine::TextBuffer buffer)
    {
        const auto place = static_cast<std::size_t>(index);
        std::ranges::fill(buffer, ' ');
        std::ranges::copy(place < names.size() ? names[place] : std::string(), buffer.begin());
        return engine::kDone;
    }
};

class CaptureTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        devices->real = engine::Engine;
        engine::Engine = devices;
        state::WorkingFolder = platform.folder;
        moduleCaptureSnap::SnapFolder.clear();
        moduleCaptureSnap::SnapWidth = 320;
        moduleCaptureSnap::SnapHeight = 240;
        moduleCaptureSnap::SnapUseCaptureDimension = true;
        moduleCaptureSnap::SnapCounter = 0;
        frmCapture::closeDialogue = [this] { ++closed; };
        frmCaptureOptions::closeDialogue = frmCaptureValues::closeDialogue = [] {};
    }
    void TearDown() override
    {
        frmCapture::showDialogue = frmCapture::closeDialogue = frmCapture::fitWindow = nullptr;
        frmCaptureOptions::showDialogue = frmCaptureOptions::closeDialogue = nullptr;
        frmCaptureValues::showDialogue = frmCaptureValues::closeDialogue = nullptr;
        LogicTest::TearDown();
    }

    std::string path(const std::string& name) const { return platform.folder + "/" + name; }
    /// Opens the window, does that in it, and closes it.
    static void inWindow(const std::function<void()>& deeds)
    {
        frmCapture::showDialogue = [&] {
            frmCapture::Form_Load();
            deeds();
        };
        frmCapture::ShowModal();
    }
    /// The calls since the last look.
    std::string calls() { return std::exchange(devices->calls, {}); }
    /// The texts of the boxes since the last look.
    std::string told()
    {
        std::string all;
        for (const auto& message : platform.messages) {
            all += (all.empty() ? "" : "|") + message.text;
        }
        platform.messages.clear();
        return all;
    }
    /// Starts without asking, in the program's own file.
    void start()
    {
        window.ShowStartDialog = 0;
        frmCapture::mnuCaptureStart_Click();
    }
    void tickAt(std::uint32_t ms)
    {
        platform.tickCount = ms;
        window.tm.tick();
    }
    /// Start, stop and snap as in the menus, behind them the same buttons: "010 010".
    std::string states() const
    {
        std::string all;
        for (const Menu* const entry : {&window.mnuCaptureStart, &window.mnuCaptureStop, &window.mnuToolsTakeSnap}) {
            all += entry->Enabled ? '1' : '0';
        }
        all += ' ';
        for (const char* const key : {"START_CAPTURE", "STOP_CAPTURE", "TAKE_SNAP"}) {
            all += window.tbr.at(key).Enabled ? '1' : '0';
        }
        return all;
    }

    std::shared_ptr<ScriptedDevices> devices = std::make_shared<ScriptedDevices>();
    forms::FrmCapture& window = forms::frmCapture;
    int closed = 0;
};

} // namespace logic_test
