#include "settings/ModuleSettings.h"

#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <limits>

namespace ModuleSettings {

namespace {

constexpr std::string_view kModule = "ModuleSettings";
constexpr std::string_view kColorSettings = "Color Settings";
constexpr std::string_view kWorkingDir = "Working DIR";
constexpr std::string_view kSaveOptions = "Save Options";

/// Empty when it is missing.
std::string stored(std::string_view section, std::string_view key)
{
    return ports.settings->get(state::AppSection, section, key).value_or(std::string());
}

void save(std::string_view section, std::string_view key, std::string_view value)
{
    ports.settings->save(state::AppSection, section, key, value);
}

void save(std::string_view section, std::string_view key, std::int32_t value)
{
    save(section, key, std::to_string(value));
}

void read(std::string_view section, std::string_view key, std::string& value, std::string_view otherwise)
{
    value = stored(section, key);
    if (value.empty()) {
        value = otherwise;
    }
}

template <std::signed_integral Number>
void read(std::string_view section, std::string_view key, Number& value, Number otherwise,
          Number most = std::numeric_limits<Number>::max(), Number least = std::numeric_limits<Number>::min())
{
    value = otherwise;
    try {
        const auto found = numbers::rounded<Number>(numbers::fromText(stored(section, key)));
        value = found >= least && found <= most ? found : otherwise;
    } catch (const engine::RuntimeError&) { // NOLINT: what is no number, or too large, stays the default
    }
}

/// Runs `visit(key, value, default)` for each of the bars' colours.
template <class Visit>
void forEachColour(Visit visit)
{
    visit("VideoBarColor", state::VideoBarFill, 0xFFFF80);
    visit("AudioBarColor", state::AudioBarFill, 0x80FFFF);
    visit("EffectBarColor", state::EffectBarFill, 0x80FF80);
    visit("OverlayBarColor", state::OverlayBarFill, 0xC0E0FF);
}

/// The same for the save options.
template <class Visit>
void forEachSaveOption(Visit visit)
{
    visit("Video Compressor", VideoCompressorName, "Uncompressed");
    visit("Audio Compressor", AudioCompressorName, "Uncompressed");
    visit("Video Dimension", VideoDimensionText, "320 x 240");
    visit("FPS", SaveFrameRate, 15);
    visit("Quality", SaveQuality, 75);
    visit("Key Frame Rate", SaveKeyFrameRate, 15);
    visit("Frame Frequency", SaveFrameFrequency, 15);
    visit("Preview", PreviewAfterSave, std::int16_t{1});
    visit("Tutorial", HideTutorial, std::int16_t{0});
    visit("Video Profile", VideoProfileName, "Video for dial-up modems or LAN (28.8 to 100 Kbps)");
    visit("Audio Profile", AudioProfileName, "Audio for CD-quality (96 Kbps stereo)");
}

void readColours()
{
    constexpr std::int32_t kWhite = 0xFFFFFF;
    forEachColour([](std::string_view key, std::int32_t& value, std::int32_t otherwise) {
        read(kColorSettings, key, value, otherwise, kWhite, 0);
    });
}

/// The engine's folder for new files, empty when it has none.
std::string engineWorkingFolder()
{
    constexpr std::int32_t kLongest = 32000;
    for (const std::int32_t size : {500, kLongest}) { // a folder that does not fit comes back empty
        std::string folder(static_cast<std::size_t>(size), ' ');
        engine::check(engine::EngineAs<engine::ITWCoreRoot>()->GetWorkingFolder(size, folder));
        folder.resize(std::min(folder.find('\0'), folder.size())); // some engines end it with a terminator
        folder.resize(folder.find_last_not_of(' ') + 1);
        if (!folder.empty()) {
            return folder;
        }
    }
    return {};
}

} // namespace

std::string workingFolderDefault()
{
    std::string folder = engineWorkingFolder();
    return folder.empty() ? ports.shell->programFolder() : folder;
}

void SetApplicationName(std::string_view name) { state::AppSection = name; }

void StoreGeneralSettingsInReg()
{
    Trapped(kModule, "StoreGeneralSettingsInReg", [] {
        SetColorValues();
        forEachColour([](std::string_view key, std::int32_t value, std::int32_t) { save(kColorSettings, key, value); });
        save(kWorkingDir, "Path", state::WorkingFolder);
    });
}

void GetGeneralSettingsFromReg()
{
    Trapped(kModule, "GetGeneralSettingsFromReg", [] {
        readColours();
        const std::string folder = stored(kWorkingDir, "Path");
        state::WorkingFolder = folder.empty() ? workingFolderDefault() : folder;
    });
}

void StoreSaveOptionsToReg()
{
    Trapped(kModule, "StoreSaveOptionsToReg", [] {
        SetSaveOptionValues();
        forEachSaveOption([](std::string_view key, const auto& value, const auto&) { save(kSaveOptions, key, value); });
    });
}

void GetSaveOptionsFromReg()
{
    Trapped(kModule, "GetSaveOptionsFromReg", [] {
        forEachSaveOption([](std::string_view key, auto& value, const auto& otherwise) {
            read(kSaveOptions, key, value, otherwise);
        });
    });
}

void LoadRegistrySettings()
{
    // The bars and the rest of the program use the variables themselves, so that reading is all there is to it.
    Trapped(kModule, "LoadRegistrySettings", [] { GetGeneralSettingsFromReg(); });
}

void AddColorToBars()
{
    Trapped(kModule, "AddColorToBars", [] {
        readColours();
        RenderAllBars();
    });
}

} // namespace ModuleSettings
