#include "tools/frmKeyColor.h"

#include "core/forms/frmKeyColor.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/transition_key.h"

#include <algorithm>
#include <array>
#include <string>

namespace frmKeyColor {

using forms::FrmKeyColor;

namespace {

constexpr const char* kModule = "frmKeyColor";
constexpr std::int16_t kMost = 255;
constexpr std::int32_t kFrameWidth = 320; // pixels
constexpr std::int32_t kFrameHeight = 240;

FrmKeyColor& form = forms::frmKeyColor;

/// A part of the colour and its controls.
struct Channel {
    std::int16_t FrmKeyColor::*value;
    TextBox FrmKeyColor::*box;
    Slider FrmKeyColor::*slider;
};
constexpr std::array kChannels{
    Channel{&FrmKeyColor::KeyColorRed, &FrmKeyColor::txtRed, &FrmKeyColor::sldRed},
    Channel{&FrmKeyColor::KeyColorGreen, &FrmKeyColor::txtGreen, &FrmKeyColor::sldGreen},
    Channel{&FrmKeyColor::KeyColorBlue, &FrmKeyColor::txtBlue, &FrmKeyColor::sldBlue},
};

std::int32_t chosenColour()
{
    return std::int32_t{form.KeyColorRed} | form.KeyColorGreen << 8 | form.KeyColorBlue << 16;
}

/// The box and the slider set each other until both show the same number.
void boxChanged(const Channel& channel)
{
    Trapped(kModule, "txtColor_Change",
            [&] {
                TextBox& box = form.*channel.box;
                const auto typed = numbers::rounded<std::int16_t>(numbers::fromText(box.Text.get()));
                const std::int16_t value = std::clamp<std::int16_t>(typed, 0, kMost);
                form.*channel.value = value;
                (form.*channel.slider).SetValue(value);
                form.picColorDisplay = chosenColour();
                if (value != typed) {
                    box.Text = std::to_string(value);
                }
            },
            // Somebody is still typing.
            {{engine::error_number::kTypeMismatch, [] {}}, {engine::error_number::kOverflow, [] {}}});
}

void sliderChanged(const Channel& channel)
{
    const std::int32_t value = (form.*channel.slider).Value();
    form.*channel.value = static_cast<std::int16_t>(value);
    (form.*channel.box).Text = std::to_string(value);
    form.picColorDisplay = chosenColour();
}

/// A box that shows the number already does not answer, so that it is asked.
void putIntoBoxes(const std::array<std::int32_t, 3>& colour)
{
    for (std::size_t i = 0; i < kChannels.size(); ++i) {
        (form.*kChannels[i].box).Text = std::to_string(colour[i]);
        boxChanged(kChannels[i]);
    }
}

void bindControls()
{
    for (const Channel& channel : kChannels) {
        Slider& slider = form.*channel.slider;
        slider.changed = nullptr;
        slider.SetMin(0);
        slider.SetMax(kMost);
        slider.changed = [&channel] { sliderChanged(channel); };
        (form.*channel.box).Text.changed = [&channel] { boxChanged(channel); };
    }
}

void drawFrame()
{
    form.picDisplay.canvas.resize(kFrameWidth, kFrameHeight);
    form.picDisplay.Refresh();
    engine::check(engine::EngineAs<engine::ITWPreview>()->DrawKeyFrame(form.StreamHandle, 0, form.picDisplay.hDC(),
                                                                       kFrameWidth, kFrameHeight));
    form.picDisplay.Refresh();
}

history::Outcome applyColour()
{
    const bool isKeyed = moduleEdit::ApplyTransitionKey(state::OverlayTrack, form.SequenceNumber, form.KeyColorRed,
                                                        form.KeyColorGreen, form.KeyColorBlue);
    return isKeyed ? history::Outcome::kChanged : history::Outcome::kNothing;
}

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

} // namespace

void SetRed(std::int16_t red) { form.KeyColorRed = red; }

void SetGreen(std::int16_t green) { form.KeyColorGreen = green; }

void SetBlue(std::int16_t blue) { form.KeyColorBlue = blue; }

void SetRGB(std::int16_t red, std::int16_t green, std::int16_t blue)
{
    SetRed(red);
    SetGreen(green);
    SetBlue(blue);
}

void SetSequenceNumber(std::int16_t seq) { form.SequenceNumber = seq; }

void SetStreamHandle(engine::Handle stream) { form.StreamHandle = stream; }

void ShowModal()
{
    Form_Load();
    ShowDialogue(kModule, showDialogue);
}

void Form_Load()
{
    const WaitCursor wait;
    Trapped(kModule, "Form_Load", [] {
        form.Picking = false;
        form.PickedRed = form.KeyColorRed; // nothing is picked yet
        form.PickedGreen = form.KeyColorGreen;
        form.PickedBlue = form.KeyColorBlue;
        const std::array<std::int32_t, 3> present{form.KeyColorRed, form.KeyColorGreen, form.KeyColorBlue};
        bindControls();
        putIntoBoxes(present);
        form.picCurrentColor = form.picColorDisplay = chosenColour();
        drawFrame();
    });
}

void lblPrimaryColors_Click(std::int16_t index)
{
    static constexpr std::array<std::array<std::int32_t, 3>, 8> kPrimaries{{{0, 0, 0},
                                                                            {kMost, kMost, kMost},
                                                                            {kMost, 0, 0},
                                                                            {0, kMost, 0},
                                                                            {0, 0, kMost},
                                                                            {kMost, 0, kMost},
                                                                            {0, kMost, kMost},
                                                                            {kMost, kMost, 0}}};
    Trapped(kModule, "lblPrimaryColors_Click", [&] { putIntoBoxes(kPrimaries.at(static_cast<std::size_t>(index))); });
}

void imgDisplay_MouseDown(std::int32_t x, std::int32_t y)
{
    form.KeyColorRed = static_cast<std::int16_t>(form.PickedRed);
    form.KeyColorGreen = static_cast<std::int16_t>(form.PickedGreen);
    form.KeyColorBlue = static_cast<std::int16_t>(form.PickedBlue);
    form.Picking = true;
    imgDisplay_MouseMove(x, y);
}

void imgDisplay_MouseMove(std::int32_t x, std::int32_t y)
{
    if (!form.Picking) {
        return;
    }
    Trapped(kModule, "imgDisplay_MouseMove", [&] {
        const engine::PixelCanvas& frame = form.picDisplay.canvas;
        engine::check(engine::EngineAs<engine::ITWPreview>()->GetFramePixel(
            form.picDisplay.hDC(), std::clamp(x, 0, frame.width() - 1), std::clamp(y, 0, frame.height() - 1),
            form.PickedRed, form.PickedGreen, form.PickedBlue));
        putIntoBoxes({form.PickedRed, form.PickedGreen, form.PickedBlue});
    });
}

void imgDisplay_MouseUp() { form.Picking = false; }

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", [] { // one that failed leaves the dialogue, and what is chosen in it
        history::run("SetKeyColor", applyColour, UpdatePreview);
        close();
    });
}

void cmdCancel_Click() { close(); }

} // namespace frmKeyColor
