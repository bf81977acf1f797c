#include "export/compression_lists.h"

#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWSave.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/text_buffer.h"
#include "export/moduleProfiles.h"

#include <array>

namespace frmAdvancedSaveOptions {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWSave;
using engine::kFalse;

namespace {

constexpr const char* kModule = "frmAdvancedSaveOptions";

/// The operations over one of the two lists of compressors.
struct CompressorList {
    engine::Status (ITWSave::*open)(Bool16&);
    engine::Status (ITWSave::*nameAt)(std::int16_t, engine::TextBuffer);
    engine::Status (ITWSave::*close)();
};

void fillCompressors(ComboBox& box, const CompressorList& list)
{
    constexpr std::size_t kLongestName = 128;
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = kFalse;
    check((save.get()->*list.open)(ok));
    std::vector<std::string> names;
    for (std::int16_t index = 0;; ++index) {
        const std::string name =
            engine::textFrom(kLongestName, [&](auto buffer) { return (save.get()->*list.nameAt)(index, buffer); });
        if (name.empty()) {
            break;
        }
        names.push_back(name);
    }
    check((save.get()->*list.close)());
    names.emplace_back(kUncompressed);
    box.List = std::move(names);
    chooseText(box, kUncompressed);
}

constexpr std::array<std::array<const char*, 2>, 3> kProfilesOfSettings{
    {{"Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)",
      "Audio for near-CD quality (64 Kbps stereo)"},
     {"Video for dial-up modems or LAN (28.8 to 100 Kbps)", "Audio for CD-quality (96 Kbps stereo)"},
     {"Video for e-mail and dual-channel ISDN (128 Kbps)", "Audio for CD-quality transparency (128 Kbps stereo)"}}};

void addUnlessPresent(std::vector<std::string>& list, std::string text)
{
    if (std::ranges::find(list, text) == list.end()) {
        list.push_back(std::move(text));
    }
}

void addSizesOfClips(std::vector<std::string>& list)
{
    const auto timeline = EngineAs<engine::ITWTimeline>();
    const engine::Handle track = state::TrackCollection.Item(1);
    std::int16_t count = 0;
    check(timeline->GetSourceCount(track, count));
    for (std::int16_t seq = 0; seq < count; ++seq) {
        engine::Handle stream = 0;
        Bool16 ok = kFalse;
        std::int32_t width = 0;
        std::int32_t height = 0;
        check(timeline->GetSourceStream(track, seq, stream));
        check(EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok));
        if (ok != kFalse) {
            check(EngineAs<engine::ITWStreamInfo>()->GetVideoSize(height, width));
            addUnlessPresent(list, dimension::textOf(width, height));
        }
    }
}

} // namespace

void FillVideoCompressors(ComboBox& box)
{
    Trapped(kModule, "FillVideoCompressors", [&] {
        fillCompressors(box, {&ITWSave::OpenVideoCompressorList, &ITWSave::GetVideoCompressorName,
                              &ITWSave::CloseVideoCompressorList});
    });
}

void FillAudioCompressors(ComboBox& box)
{
    Trapped(kModule, "FillAudioCompressors", [&] {
        fillCompressors(box, {&ITWSave::OpenAudioCompressorList, &ITWSave::GetAudioCompressorName,
                              &ITWSave::CloseAudioCompressorList});
    });
}

std::vector<std::string> videoDimensions()
{
    std::vector<std::string> list;
    Trapped(kModule, "FillVideoDimensions", [&] { addSizesOfClips(list); });
    for (const char* usual : {"320 x 240", "160 x 120", "640 x 480", "720 x 480", "800 x 600", "1024 x 768"}) {
        addUnlessPresent(list, usual);
    }
    list.emplace_back(dimension::kCustom);
    return list;
}

void FillVideoDimensions(DimensionBoxes& boxes)
{
    constexpr std::int32_t kTooLong = 2000; // pixels
    dimension::reset(boxes, videoDimensions(), kTooLong);
    dimension::choose(boxes, "320 x 240");
}

void FillWMFSetting(ComboBox& box)
{
    Trapped(kModule, "FillWMFSetting", [&] {
        box.List = std::vector<std::string>{"Low Quality", "Medium Quality (Recommended)", "High Quality", "Other..."};
    });
}

std::string presentProfile(bool bVideo)
{
    constexpr std::size_t kLongestName = 260;
    const auto save = EngineAs<ITWSave>();
    return engine::textFrom(kLongestName, [&](auto buffer) {
        return bVideo ? save->GetVideoProfile(buffer) : save->GetAudioProfile(buffer);
    });
}

std::string profileOfSetting(std::int32_t setting, bool bVideo)
{
    const auto place = static_cast<std::size_t>(setting);
    return place < kProfilesOfSettings.size() ? kProfilesOfSettings[place][bVideo ? 0 : 1] : "";
}

void FillWMFProfiles(ComboBox& profiles, ComboBox& setting, bool bVideo)
{
    Trapped(kModule, "FillWMFProfiles", [&] {
        std::vector<std::string> names;
        for (const ProfileData& profile : moduleProfiles::Profiles()) {
            if ((profile.bVideoPresent != kFalse) == bVideo) {
                names.push_back(profile.sName);
            }
        }
        profiles.List = std::move(names);
        profiles.ListIndex = profiles.List.get().empty() ? -1 : 0;
        const std::string present = presentProfile(bVideo);
        chooseText(profiles, present);
        constexpr std::int32_t kOther = static_cast<std::int32_t>(kProfilesOfSettings.size());
        std::int32_t chosen = 0;
        while (chosen < kOther && profileOfSetting(chosen, bVideo) != present) {
            ++chosen;
        }
        setting.ListIndex = chosen;
    });
}

// --- The four numbers ----------------------------------------------------------------------------------------------

void startValues(forms::CompressionValues& values, const std::function<void()>& changed)
{
    const auto start = [&](forms::CompressionValue& value, std::int32_t least, std::int32_t most, std::int32_t begin) {
        value.sld.changed = nullptr;
        value.sld.SetMax(most);
        value.sld.SetMin(least);
        value.sld.SetValue(begin);
        value.lbl = std::to_string(begin);
        value.chk.Enabled = true;
        value.sld.changed = [&value, changed] {
            value.lbl = std::to_string(value.sld.Value());
            changed();
        };
        value.chk.Value.changed = [&value, changed] {
            enableValue(value);
            changed();
        };
    };
    constexpr std::int32_t kMostFrames = 30;
    constexpr std::int32_t kUsualFrames = 15;
    for (auto* const value : {&values.FrameRate, &values.KeyFrameRate, &values.PFrameFrequency}) {
        start(*value, 1, kMostFrames, kUsualFrames);
    }
    constexpr std::int32_t kUsualQuality = 75;
    start(values.Quality, 0, 100, kUsualQuality);
}

void enableValue(forms::CompressionValue& value)
{
    const bool isOn = value.chk.Enabled && value.chk.Value != 0;
    value.sld.Enabled = isOn;
    value.lblEnabled = isOn;
}

void enableByCompressor(forms::CompressionValues& values)
{
    const auto save = EngineAs<ITWSave>();
    std::int32_t index = 0;
    check(save->GetVideoCompressorIndex(index));
    const auto enable = [&](forms::CompressionValue& value, Bool16 can) {
        const bool isOn = can != kFalse;
        value.chk.Enabled = isOn;
        value.sld.Enabled = isOn;
        value.lblEnabled = isOn;
    };
    Bool16 can = kFalse;
    check(save->CanSetKeyFrameRate(index, can));
    enable(values.KeyFrameRate, can);
    check(save->CanSetPFrameFrequency(index, can));
    enable(values.PFrameFrequency, can);
    check(save->CanSetQuality(index, can));
    enable(values.Quality, can);
}

} // namespace frmAdvancedSaveOptions
