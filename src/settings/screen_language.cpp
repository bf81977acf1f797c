#include "settings/screen_language.h"

#include "core/platform.h"
#include "core/shared_state.h"

namespace ModuleSettings {

namespace {

constexpr std::string_view kSection = "View Options";
constexpr std::string_view kKey = "Language";

} // namespace

std::string screenLanguage() { return ports.settings->get(state::AppSection, kSection, kKey).value_or(std::string()); }

void keepScreenLanguage(std::string_view code)
{
    if (code != screenLanguage()) {
        ports.settings->save(state::AppSection, kSection, kKey, code);
    }
}

} // namespace ModuleSettings
