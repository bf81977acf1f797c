#pragma once

// What stands on the window in which a title is written, as state. Behaviour: `tools/`.

#include "core/controls.h"
#include "core/lettering.h"
#include "core/pixel_picture.h"

#include <cstdint>
#include <string>

namespace forms {

/// A list into which a text may be typed too.
struct EditableList {
    Shown<std::vector<std::string>> List;
    Shown<std::string> Text;
};

struct FrmAddText {
    Shown<std::string> Caption{"Add Text"};

    PixelPicture picWorkspace;     // what people see
    PixelPicture picWorkspaceBack; // what is saved; never seen
    engine::PixelCanvas Picture;   // of the workspace: the frame behind the text
    std::int32_t TwinBackColor = 0;
    TextFont Font; // of the workspace

    // The handle by which the text is drawn about: its place and size, pixels of the workspace.
    Shown<std::int32_t> imgDragLeft{0}, imgDragTop{0}, imgDragWidth{0}, imgDragHeight{0};

    TextBox txtText; // lines end in CR LF; stands over the handle
    Shown<bool> txtTextVisible{false};

    EditableList cboFonts, cboSize;
    Shown<std::int32_t> picColorDisplay{0};            // of the letters; red in the low byte, as the next
    Shown<std::int32_t> picBackColorDisplay{0xFFFFFF}; // behind them
    Menu mnuFormatFontStyleBold, mnuFormatFontStyleItalic, mnuFormatFontStyleUnderline, mnuFormatFontStyleStrikethrough;
    Menu mnuFormatTransparentBackground;
    Button tbrPosition; // its picture and tool tip say which position it repeats
    StatusBar sbr{"STATUS", "IMAGE_DIMENSION", "TEXT_POSITION"};

    std::int32_t DragOffsetX = 0; // where the pointer took the handle, pixels
    std::int32_t DragOffsetY = 0;
    std::int32_t TextLeft = 0; // pixels of the workspace
    std::int32_t TextTop = 0;
    std::int16_t TextPosition = 0; // the last that was named, as in `frmAddText::Position`
    std::string TextFile;          // the bitmap; empty until it is saved
    std::int16_t KeyRed = 0;       // of the bitmap, 0 to 255
    std::int16_t KeyGreen = 0;
    std::int16_t KeyBlue = 0;
    std::string Told; // the status, where no warning stands in its place
};
inline FrmAddText frmAddText;

} // namespace forms
