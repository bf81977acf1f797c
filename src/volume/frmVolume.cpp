#include "volume/frmVolume.h"

#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWFilePreview.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <string>

namespace frmVolume {

namespace {

forms::FrmVolume& form = forms::frmVolume;

constexpr const char* kModule = "frmVolume";
constexpr std::string_view kSection = "Save Options";
constexpr std::string_view kKey = "Volume";
constexpr std::int16_t kFull = 100;

bool isLevel(std::int16_t level) { return level >= 0 && level <= kFull; }

/// Full for a text that is no volume.
std::int16_t levelOf(const std::string& text)
{
    try {
        const auto level = numbers::rounded<std::int16_t>(numbers::fromText(text));
        return isLevel(level) ? level : kFull;
    } catch (const engine::RuntimeError&) { // NOLINT: somebody else wrote it
        return kFull;
    }
}

std::int16_t RetrieveVolume()
{
    std::int16_t level = kFull;
    Trapped(kModule, "RetrieveVolume", [&] {
        const std::string text = ports.settings->get(state::AppSection, kSection, kKey).value_or(std::string());
        if (text.find_first_not_of(' ') == std::string::npos) {
            SaveVolume(kFull);
        } else {
            level = levelOf(text);
        }
    });
    return level;
}

void sldVolume_Change() { SetVolume(static_cast<std::int16_t>(form.sldVolume.Value())); }

} // namespace

void LoadVolume() { form.iVolume = RetrieveVolume(); }

void SaveVolume(std::int16_t level)
{
    Trapped(kModule, "SaveVolume", [&] {
        if (isLevel(level)) {
            ports.settings->save(state::AppSection, kSection, kKey, std::to_string(level));
        }
    });
}

std::int16_t GetVolume() { return form.iVolume; }

void SetVolume(std::int16_t level)
{
    Trapped(kModule, "SetVolume", [&] {
        const std::int32_t engineLevel = level - kFull;
        engine::check(engine::EngineAs<engine::ITWPreview>()->SetVolume(engineLevel));
        engine::check(engine::EngineAs<engine::ITWFilePreview>()->SetVolume(engineLevel));
        form.iVolume = level;
    });
}

void Form_Load()
{
    form.sldVolume.changed = nullptr;
    form.sldVolume.SetMin(0);
    form.sldVolume.SetMax(kFull);
    form.sldVolume.SetValue(GetVolume());
    sldVolume_Change();
    form.sldVolume.changed = sldVolume_Change;
    form.Visible = true;
}

// Any key puts the popup away, the arrow keys too, though they could move the slider: kept, people close it so.
void Form_KeyDown() { form.Visible = false; }

void Form_Deactivate() { form.Visible = false; }

} // namespace frmVolume
