#include "core/dimension_boxes.h"

#include "core/numbers.h"
#include "core/trap.h"

#include <cstdio>

namespace dimension {

namespace {

std::optional<double> numberIn(const std::string& text)
{
    try {
        return numbers::fromText(text);
    } catch (const engine::RuntimeError&) { // NOLINT: the person is still typing
        return std::nullopt;
    }
}

/// Up to fifteen digits, as many as it takes.
std::string written(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", number);
    return text;
}

void enableCustom(DimensionBoxes& boxes, bool isCustom)
{
    boxes.fmeCustomPreviewEnabled = isCustom;
    boxes.txtWidth.Enabled = isCustom;
    boxes.txtHeight.Enabled = isCustom;
    boxes.chkLockAspectRatio.Enabled = isCustom;
    boxes.lblIntoEnabled = isCustom;
}

void fill(DimensionBoxes& boxes, std::string_view size)
{
    boxes.txtWidth.Text = std::string(size.substr(0, size.find(' ')));
    boxes.txtHeight.Text = std::string(size.substr(size.rfind(' ') + 1));
}

void listClicked(DimensionBoxes& boxes)
{
    const std::string size = chosenText(boxes.cboDimension);
    if (size.empty()) {
        return;
    }
    enableCustom(boxes, size == kCustom); // first: a box that is off does not answer
    if (size != kCustom) {
        fill(boxes, size);
    }
}

/// Whether the boxes would not take it.
bool isTooLarge(const DimensionBoxes& boxes, std::string_view size)
{
    const auto isOver = [&](std::string_view side) {
        const auto number = numberIn(std::string(side));
        return boxes.Limit > 0 && number && *number >= boxes.Limit;
    };
    return isOver(size.substr(0, size.find(' '))) || isOver(size.substr(size.rfind(' ') + 1));
}

/// A side was typed. `ratio`: of the other side to it.
void sideChanged(DimensionBoxes& boxes, TextBox& box, std::int32_t& accepted, TextBox& other, double ratio)
{
    if (!box.Enabled) {
        return;
    }
    const auto number = numberIn(box.Text);
    if (boxes.Limit > 0) {
        if (!number || *number < 0 || *number >= boxes.Limit) {
            box.Text = std::to_string(accepted);
            return;
        }
        accepted = numbers::rounded<std::int32_t>(*number);
    }
    if (number && boxes.DimensionGuard && boxes.chkLockAspectRatio.Value != 0) {
        boxes.DimensionGuard = false;
        other.Text = written(*number * ratio);
        boxes.DimensionGuard = true;
    }
}

} // namespace

void reset(DimensionBoxes& boxes, std::vector<std::string> list, std::int32_t limit, std::function<void()> changed)
{
    const auto answering = [](std::function<void()> answer, std::function<void()> behind) {
        return [answer = std::move(answer), behind = std::move(behind)] {
            Trapped("dimension", "changed", answer);
            if (behind) {
                behind();
            }
        };
    };
    boxes.cboDimension.ListIndex.changed = nullptr;
    boxes.cboDimension.ListIndex = -1;
    boxes.cboDimension.List = std::move(list);
    boxes.DimensionGuard = true;
    boxes.AspectRatio = 320.0 / 240;
    boxes.CustomWidth = 320;
    boxes.CustomHeight = 240;
    boxes.Limit = limit;
    boxes.cboDimension.ListIndex.changed = answering([&boxes] { listClicked(boxes); }, changed);
    boxes.txtWidth.Text.changed = answering(
        [&boxes] { sideChanged(boxes, boxes.txtWidth, boxes.CustomWidth, boxes.txtHeight, 1 / boxes.AspectRatio); },
        changed);
    boxes.txtHeight.Text.changed = answering(
        [&boxes] { sideChanged(boxes, boxes.txtHeight, boxes.CustomHeight, boxes.txtWidth, boxes.AspectRatio); },
        std::move(changed));
}

void choose(DimensionBoxes& boxes, std::string_view text)
{
    if (isTooLarge(boxes, text)) { // as of a clip that is not on the timeline now
        std::vector<std::string> list = boxes.cboDimension.List;
        if (std::ranges::find(list, text) == list.end()) {
            list.insert(std::ranges::find(list, kCustom), std::string(text));
            boxes.cboDimension.ListIndex = -1; // the places move
            boxes.cboDimension.List = std::move(list);
        }
    }
    if (!chooseText(boxes.cboDimension, text)) {
        chooseText(boxes.cboDimension, kCustom);
        const bool guard = std::exchange(boxes.DimensionGuard, false);
        fill(boxes, text);
        boxes.DimensionGuard = guard;
    }
}

std::optional<std::int16_t> sideIn(const TextBox& box)
{
    try {
        return numbers::rounded<std::int16_t>(numbers::fromText(box.Text.get()));
    } catch (const engine::RuntimeError&) { // NOLINT: no number, or none of 16 bits
        return std::nullopt;
    }
}

std::optional<std::pair<std::int16_t, std::int16_t>> sizeIn(const DimensionBoxes& boxes)
{
    const auto width = sideIn(boxes.txtWidth);
    const auto height = sideIn(boxes.txtHeight);
    return width && height ? std::optional(std::pair(*width, *height)) : std::nullopt;
}

std::string textOf(std::int32_t width, std::int32_t height)
{
    return std::to_string(width) + " x " + std::to_string(height);
}

} // namespace dimension
