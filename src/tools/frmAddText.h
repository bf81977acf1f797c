#pragma once

// The window in which a title is written over a frame of the movie, given its looks and its place, and saved as a
// bitmap, which may go straight onto the overlay row with a key colour.
//
// Errors are trapped inside. Interface thread only. State: `core/forms/frmAddText.h`.

#include <cstdint>
#include <functional>
#include <string>

namespace frmAddText {

enum Position : std::int16_t { kTopLeft, kTopRight, kBottomLeft, kBottomRight, kCenterLeft, kCenterRight };

/// What the dialogue's frame of the screens does.
inline std::function<void()> showDialogue;
inline std::function<void()> closeDialogue;

/// In the status, unless a warning about the colours stands there.
void say(const std::string& text);

/// Opens the window and comes back when it is closed.
void ShowModal();
void Form_Load();

void mnuFileNew_Click();
void mnuFileSave_Click();
void mnuFileSaveas_Click();
void mnuFileSaveAndClose_Click();
void mnuFileSaveAndAdd_Click();
void mnuFileSaveAddAndClose_Click();
void mnuFileClose_Click();

void OnFormatText();
void mnuFormatBackgroundColor_Click();
void mnuFormatFontColor_Click();
void mnuFormatTransparentBackground_Click();
void mnuFormatFont_Click();
void mnuFormatFontStyleBold_Click();
void mnuFormatFontStyleItalic_Click();
void mnuFormatFontStyleUnderline_Click();
void mnuFormatFontStyleStrikethrough_Click();
void PlaceText(Position position);
/// The button repeats the last named position.
void tbrPosition_Click();
void mnuFormatCenterHorizontally_Click();
void mnuFormatCenterVertically_Click();

/// A choice in the lists of fonts and sizes, or Enter in their texts.
void ChooseFont(const std::string& name);
void ChooseSize(const std::string& size);

void OnTextChange();
/// The edit box lost the focus, or another command begins: the text is drawn again.
void LeaveTyping();

enum class Key : std::uint8_t { kLeft, kRight, kUp, kDown };
void picWorkspace_KeyDown(Key key, bool isShift);
/// Places of the pointer: pixels of the workspace, or of the handle.
void picWorkspace_MouseMove();
void picWorkspace_DragDrop(std::int32_t x, std::int32_t y);
void imgDrag_MouseMove(std::int32_t x, std::int32_t y);
void imgDrag_DragDrop(std::int32_t x, std::int32_t y);
void Form_MouseMove();

} // namespace frmAddText
