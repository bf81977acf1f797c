#pragma once

// Saving as the program calls it: the settings, and one save at a time.

#include "engine/ITWSave.h"
#include "twcore/engine_options.h"
#include "twcore/files/file_registry.h"
#include "twcore/model/timeline.h"
#include "twcore/profiles/system_profiles.h"
#include "twcore/save/movie_fields.h"
#include "twcore/save/save_run.h"
#include "twcore/trace.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

class SaveInterface final : public engine::ITWSave, public EngineOptions {
public:
    using Handle = engine::Handle;
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Milliseconds = engine::Milliseconds;
    using Text = engine::Text;
    using TextBuffer = engine::TextBuffer;

    SaveInterface(Timeline& timeline, FileRegistry& files) : timeline_(timeline), files_(files) {}
    /// Stops a running save. Waits a little for what is stopped, and leaves behind what does not come through.
    ~SaveInterface() override;
    SaveInterface(const SaveInterface&) = delete;
    SaveInterface& operator=(const SaveInterface&) = delete;

    Status AddSaveTrack(Handle track, Bool16& ok) override;
    Status PrepareAviFile(Text path, Bool16& ok) override;
    Status PrepareWindowsMediaFile(Text path, Bool16& ok) override;
    Status CloseSave() override;
    Status StartSave(Bool16& ok) override;
    Status RunSaveToEnd() override;
    Status StopSave(Bool16& ok) override;
    Status GetSaveDuration(Milliseconds& duration) override;
    Status GetSavePosition(Milliseconds& position) override;
    Status GetSaveState(std::int32_t& state) override;
    Status OpenVideoCompressorList(Bool16& ok) override;
    Status OpenAudioCompressorList(Bool16& ok) override;
    Status GetVideoCompressorName(std::int16_t index, TextBuffer buffer) override;
    Status GetAudioCompressorName(std::int16_t index, TextBuffer buffer) override;
    Status CloseVideoCompressorList() override;
    Status CloseAudioCompressorList() override;
    Status SetVideoCompressor(Text name) override;
    Status SetAudioCompressor(Text name) override;
    Status GetVideoCompressorIndex(std::int32_t& index) override;
    Status CanSetKeyFrameRate(std::int32_t index, Bool16& can) override;
    Status CanSetPFrameFrequency(std::int32_t index, Bool16& can) override;
    Status CanSetQuality(std::int32_t index, Bool16& can) override;
    Status SetFrameRate(std::int32_t value) override;
    Status SetKeyFrameRate(std::int32_t value) override;
    Status SetPFrameFrequency(std::int32_t value) override;
    Status SetQuality(std::int32_t value) override;
    Status GetFrameRate(std::int16_t& value) override;
    Status GetKeyFrameRate(std::int16_t& value) override;
    Status GetPFrameFrequency(std::int16_t& value) override;
    Status GetQuality(std::int16_t& value) override;
    Status ResetSave() override;
    Status SetSaveRange(Milliseconds start, Milliseconds stop) override;
    Status SetSaveWholeTimeline(Bool16 whole) override;
    Status SetSaveEffects(Bool16 include) override;
    Status GetVideoWidth(std::int16_t& width) override;
    Status GetVideoHeight(std::int16_t& height) override;
    Status SetVideoSize(std::int32_t width, std::int32_t height) override;
    Status SetWindowsMediaVideoSize(std::int16_t width, std::int16_t height) override;
    Status SetVideoProfile(Text name) override;
    Status GetVideoProfile(TextBuffer buffer) override;
    Status SetAudioProfile(Text name) override;
    Status GetAudioProfile(TextBuffer buffer) override;
    Status OpenMetadata(Text path, Bool16& ok) override;
    Status SetTitle(Text text) override;
    Status SetAuthor(Text text) override;
    Status SetRating(Text text) override;
    Status SetCopyright(Text text) override;
    Status SetDescription(Text text) override;
    Status SaveMetadata() override;
    Status WaitForStopped(Milliseconds longest, Bool16& ok) override;
    Status SetCopyUnchanged(Bool16 on) override;
    Status GetFramesCopied(std::int32_t& count) override;

    bool setSoundRate(int hertz) override;
    void startTrace() override { Trace::start(); }
    bool finishTrace(const std::string& path) override { return Trace::finish(path); }
    bool setProfileFrameRate(int framesPerSecond) override;
    bool setVideoBitRate(int bitsPerSecond) override;
    long long framesSaved() const override { return framesSaved_; }
    long long samplesSaved() const override { return samplesSaved_; }
    void frameRateSaved(int& numerator, int& denominator) const override;
    int soundRateSaved() const override { return soundRateSaved_; }

private:
    struct Settings {
        std::string videoCompressor{kUncompressed};
        std::string audioCompressor{kUncompressed};
        std::int32_t frameRate = -1;
        std::int32_t keyFrameRate = -1;
        std::int32_t pFrameFrequency = -1;
        std::int32_t quality = -1;
        std::int32_t width = -1;
        std::int32_t height = -1;
        std::int32_t profileWidth = -1; // of a Windows Media movie; -1: the profile's own
        std::int32_t profileHeight = -1;
        std::string videoProfile{kDefaultVideoProfile};
        std::string audioProfile{kDefaultAudioProfile};
        bool copiesUnchanged = true;
    };

    PlanPtr compile();
    /// What is to be made of the plan; nullopt when a compressor or a profile refuses.
    std::optional<SaveOrder> aviOrder(const Plan& plan) const;
    std::optional<SaveOrder> windowsMediaOrder(const Plan& plan) const;
    Status prepare(const std::string& path, std::optional<SaveOrder> (SaveInterface::*orderFor)(const Plan&) const,
                   Bool16& ok);
    bool begin();
    void leave();
    Status takeNameFromStopped(const std::string& path);
    Status failureOnce();
    void note();

    Timeline& timeline_;
    FileRegistry& files_;
    Settings settings_;
    int soundRate_ = 0;        // 0: 48,000, or what the profile says
    int profileFrameRate_ = 0; // 0: what the profile says
    int videoBitRate_ = 0;     // 0: quality decides

    std::vector<Handle> tracks_;
    bool wholeTimeline_ = true;
    bool withEffects_ = true;
    Milliseconds rangeStart_ = 0;
    Milliseconds rangeStop_ = 0;

    std::shared_ptr<SaveRun> run_;
    std::vector<std::shared_ptr<SaveRun>> stopped_; // closed while a picture was in hand
    bool started_ = false;
    bool failureTold_ = false;
    long long framesSaved_ = 0;
    std::int64_t framesCopied_ = 0;
    long long samplesSaved_ = 0;
    AVRational frameRateSaved_{25, 1};
    int soundRateSaved_ = 48000;

    std::string describedPath_; // of the file whose fields are being set; empty: none
    MovieFields fields_;
};

} // namespace twcore
