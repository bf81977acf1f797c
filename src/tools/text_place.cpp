#include "tools/text_place.h"

#include "core/forms/frmAddText.h"
#include "tools/text_file.h"

#include <array>

namespace frmAddText {

namespace {

forms::FrmAddText& form = forms::frmAddText;

std::int32_t width() { return form.picWorkspace.canvas.width(); }
std::int32_t height() { return form.picWorkspace.canvas.height(); }

void moveTo(std::int32_t left, std::int32_t top)
{
    form.TextLeft = left;
    form.TextTop = top;
    OnTextChange();
}

struct NamedPosition {
    const char* image;
    const char* toolTip;
};
constexpr std::array kPositions = {
    NamedPosition{"TOP_LEFT", "Position Text - Top Left"},
    NamedPosition{"TOP_RIGHT", "Position Text - Top Right"},
    NamedPosition{"BOTTOM_LEFT", "Position Text - Bottom Left"},
    NamedPosition{"BOTTOM_RIGHT", "Position Text - Bottom Right"},
    NamedPosition{"CENTER_LEFT", "Position Text - Center Left"},
    NamedPosition{"CENTER_RIGHT", "Position Text - Center Right"},
};

std::int32_t middle(std::int32_t whole, std::int32_t part) { return whole / 2 - part / 2; }

} // namespace

void showPosition(Position position)
{
    const NamedPosition& named = kPositions.at(static_cast<std::size_t>(position));
    form.TextPosition = position;
    form.tbrPosition.Picture = std::string(named.image);
    form.tbrPosition.ToolTipText = std::string(named.toolTip);
}

void PlaceText(Position position)
{
    LeaveTyping();
    const tools::TextSize size = tools::measure(lookOf());
    const bool isRight = position == kTopRight || position == kBottomRight || position == kCenterRight;
    const bool isBottom = position == kBottomLeft || position == kBottomRight;
    const bool isCenter = position == kCenterLeft || position == kCenterRight;
    showPosition(position);
    moveTo(isRight ? width() - 1 - size.width : 0, isBottom   ? height() - 1 - size.height
                                                   : isCenter ? middle(height(), form.imgDragHeight)
                                                              : 0);
}

void tbrPosition_Click() { PlaceText(static_cast<Position>(form.TextPosition)); }

void mnuFormatCenterHorizontally_Click()
{
    LeaveTyping();
    moveTo(middle(width(), form.imgDragWidth), form.TextTop);
}

void mnuFormatCenterVertically_Click()
{
    LeaveTyping();
    moveTo(form.TextLeft, middle(height(), form.imgDragHeight));
}

void picWorkspace_KeyDown(Key key, bool isShift)
{
    say(isShift ? "Ready" : "Use the 'Shift' key with the direction keys to nudge text");
    const std::int32_t step = isShift ? 1 : 5;
    if (key == Key::kLeft && form.TextLeft > 0) {
        moveTo(form.TextLeft - step, form.TextTop);
    } else if (key == Key::kUp && form.TextTop > 0) {
        moveTo(form.TextLeft, form.TextTop - step);
    } else if (key == Key::kRight && form.imgDragWidth + form.TextLeft < width()) {
        moveTo(form.TextLeft + step, form.TextTop);
    } else if (key == Key::kDown && form.imgDragHeight + form.TextTop < height()) {
        moveTo(form.TextLeft, form.TextTop + step);
    }
}

void picWorkspace_MouseMove() { say("Click to move text using the direction keys"); }

void picWorkspace_DragDrop(std::int32_t x, std::int32_t y) { moveTo(x - form.DragOffsetX, y - form.DragOffsetY); }

void imgDrag_MouseMove(std::int32_t x, std::int32_t y)
{
    form.DragOffsetX = x;
    form.DragOffsetY = y;
    say("Click to type your text");
}

void imgDrag_DragDrop(std::int32_t x, std::int32_t y)
{
    if (x == form.DragOffsetX && y == form.DragOffsetY) {
        OnFormatText();
        return;
    }
    moveTo(form.TextLeft + x - form.DragOffsetX, form.TextTop + y - form.DragOffsetY);
}

void Form_MouseMove() { say("Ready"); }

} // namespace frmAddText
