#pragma once

// Which language the person wants the screens in: a code such as "de", or nothing, as the desktop has it. It is read
// before any window stands, and a change is seen from the next start on. Raises nothing. Interface thread only.

#include <string>
#include <string_view>

namespace ModuleSettings {

std::string screenLanguage();
/// Writes nothing when it is so already.
void keepScreenLanguage(std::string_view code);

} // namespace ModuleSettings
