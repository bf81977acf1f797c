#include "core/platform.h"

namespace {

/// The title of nearly all message boxes.
constexpr std::string_view kProductTitle = "Quillmont";

} // namespace

void tellUser(std::string_view text, MessageIcon icon)
{
    ports.messages->show(text, icon, MessageButtons::kOk, kProductTitle);
}

MessageAnswer askUser(std::string_view text, MessageButtons buttons, MessageIcon icon)
{
    return ports.messages->show(text, icon, buttons, kProductTitle);
}
