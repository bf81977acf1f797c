#pragma once

// A title as a file, and on the overlay row. State: `core/forms/frmAddText.h`. Interface thread only.

#include "tools/text_picture.h"

#include <string>

namespace frmAddText {

/// How the text looks now.
tools::TextLook lookOf();

/// The ground that the next save draws the letters on, and the key that the overlay gets.
struct KeyChoice {
    std::int32_t ground = 0; // red in the low byte
    std::int16_t red = 0;
    std::int16_t green = 0;
    std::int16_t blue = 0;
};
KeyChoice chooseKey();

/// Writes the bitmap to `TextFile`, asking for it first where there is none. True when it was written.
bool OnFileSaveClick();
/// Always asks.
bool SaveAs();
/// Opens the file in the media list and puts it on the overlay row with the key of the last save. Errors are trapped.
void AddBitmapToMediaList(const std::string& file);

} // namespace frmAddText
