#pragma once

// The dialogue that tells one Windows Media profile: its description, its streams.
//
// State: `forms::frmProfileProperties`. Each routine traps its errors. Interface thread only.

#include <cstdint>
#include <functional>
#include <string_view>

namespace frmProfileProperties {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

/// Of a profile of the list, by its name.
void ShowModal(std::string_view profile);

/// What `Form_Load` opens: one of the system's by its index with an empty name, one of the person's own by its name.
void SetProfileDetails(std::int16_t systemIndex, std::string_view name, bool isSystem);
void Form_Load();

} // namespace frmProfileProperties
