#include "export/frmProfileProperties.h"

#include "core/dimension_boxes.h"
#include "core/forms/frmProfileProperties.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "engine/ITWProfiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/text_buffer.h"
#include "export/moduleProfiles.h"

namespace frmProfileProperties {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWProfiles;
using engine::kFalse;

namespace {

constexpr const char* kModule = "frmProfileProperties";
constexpr const char* kNothing = "-";

forms::FrmProfileProperties& form = forms::frmProfileProperties;

void SetGeneralProperties(ITWProfiles& profiles)
{
    constexpr std::size_t kLongestName = 500;
    constexpr std::size_t kLongestDescription = 5000;
    form.txtProfileName = engine::textFrom(kLongestName, [&](auto buffer) { return profiles.GetProfileName(buffer); });
    form.txtDescription =
        engine::textFrom(kLongestDescription, [&](auto buffer) { return profiles.GetProfileDescription(buffer); });
    std::int16_t count = 0;
    check(profiles.GetStreamCount(count));
    const std::string streams = std::to_string(count);
    form.txtTotalStreams =
        count > 1 ? streams + " (" + std::to_string(count - 1) + " Video and 1 Audio Stream)" : streams;
}

forms::StreamDetails detailsOf(ITWProfiles& profiles, std::size_t number)
{
    constexpr std::size_t kLongestName = 128;
    std::int32_t bitRate = 0;
    std::int16_t fps = 0;
    std::int32_t keyFrames = 0;
    std::int32_t quality = 0;
    check(profiles.GetStreamBitRate(bitRate));
    check(profiles.GetVideoFps(fps));
    check(profiles.GetKeyFrameInterval(keyFrames));
    check(profiles.GetVideoQuality(quality));
    return {std::to_string(number),
            engine::textFrom(kLongestName, [&](auto buffer) { return profiles.GetStreamName(buffer); }),
            moduleProfiles::inThousands(bitRate) + " Kbps",
            std::to_string(fps) + " fps",
            std::to_string(keyFrames) + " seconds",
            std::to_string(quality)};
}

void SetVideoAudioProperties(ITWProfiles& profiles)
{
    std::int16_t count = 0;
    std::int16_t width = 0;
    std::int16_t height = 0;
    std::int16_t channels = 0;
    std::int32_t hertz = 0;
    std::vector<forms::StreamDetails> rows;
    check(profiles.GetStreamCount(count));
    for (std::int16_t index = 0; index < count; ++index) {
        Bool16 ok = kFalse;
        std::int16_t type = 0;
        check(profiles.SelectStream(index, ok));
        if (ok == kFalse) {
            continue;
        }
        check(profiles.GetStreamType(type));
        if (type != 0) {
            check(profiles.GetAudioChannels(channels));
            check(profiles.GetAudioSampleRate(hertz));
        } else {
            check(profiles.GetVideoWidth(width));
            check(profiles.GetVideoHeight(height));
            rows.push_back(detailsOf(profiles, rows.size() + 1));
        }
        check(profiles.CloseStream());
    }
    form.lvwStreamDetails = std::move(rows);
    form.txtVideoDimension = width < 1 ? kNothing : dimension::textOf(width, height) + " pixels";
    form.txtAudioFormat = moduleProfiles::inThousands(hertz) + " KHz" + (channels == 1 ? ", Mono" : ", Stereo");
}

/// Nothing of the profile that was shown last.
void clear()
{
    for (auto* const text : {&form.txtProfileName, &form.txtDescription, &form.txtTotalStreams, &form.txtVideoDimension,
                             &form.txtAudioFormat}) {
        *text = std::string(kNothing);
    }
    form.lvwStreamDetails = std::vector<forms::StreamDetails>();
}

} // namespace

void ShowModal(std::string_view profile)
{
    const bool isSystem = moduleProfiles::IsSystemProfile(profile);
    SetProfileDetails(moduleProfiles::GetSysProfileIndex(profile), isSystem ? "" : profile, isSystem);
    Form_Load();
    ShowDialogue(kModule, showDialogue);
}

void SetProfileDetails(std::int16_t systemIndex, std::string_view name, bool isSystem)
{
    form.iSystemIndex = systemIndex;
    form.sName = name;
    form.bSystemProfileSet = isSystem;
}

void Form_Load()
{
    clear();
    Trapped(kModule, "Form_Load", [] {
        const auto profiles = EngineAs<ITWProfiles>();
        Bool16 ok = kFalse;
        check(form.bSystemProfileSet ? profiles->OpenSystemProfile(form.iSystemIndex, ok)
                                     : profiles->OpenProfile(form.sName, ok));
        if (ok == kFalse) { // its file has gone since the list was made
            return;
        }
        SetGeneralProperties(*profiles);
        SetVideoAudioProperties(*profiles);
        check(profiles->CloseProfile());
    });
}

} // namespace frmProfileProperties
