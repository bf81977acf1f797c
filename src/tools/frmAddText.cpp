#include "tools/frmAddText.h"

#include "core/forms/frmAddText.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/wait_cursor.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "timeline/moduleTimeline.h"
#include "timeline/sliders.h"
#include "tools/text_file.h"
#include "tools/text_place.h"

#include <array>
#include <charconv>

namespace frmAddText {

using engine::check;
using engine::EngineAs;

namespace {

constexpr const char* kModule = "frmAddText";
constexpr std::int32_t kCancelled = 32755;

forms::FrmAddText& form = forms::frmAddText;

std::int32_t width() { return form.picWorkspace.canvas.width(); }
std::int32_t height() { return form.picWorkspace.canvas.height(); }

/// The key takes the letters away, or what is behind them, or leaves the ground that it should take.
std::string warning()
{
    const KeyChoice choice = chooseKey();
    const std::int32_t key = choice.ground;
    if (!tools::isKeyedOut(key, choice.red | choice.green << 8 | choice.blue << 16)) {
        // Black with white sets the blue of the key alone: red that an earlier save has left stays in it.
        return "The video will not be seen: with these colors now, close the window and open it again";
    }
    if (tools::isKeyedOut(form.picColorDisplay, key)) {
        return "The letters will not be seen over the video: their color is too near to the key color";
    }
    const bool hasGround = !form.mnuFormatTransparentBackground.Checked;
    return hasGround && tools::isKeyedOut(form.picBackColorDisplay, key)
               ? "The background will not be seen over the video: its color is too near to the key color"
               : std::string();
}

void showPlaces()
{
    const auto pair = [](std::int32_t one, std::int32_t other) {
        return std::to_string(one) + " x " + std::to_string(other);
    };
    form.sbr.Panel("TEXT_POSITION") = pair(form.TextLeft, form.TextTop);
    form.sbr.Panel("IMAGE_DIMENSION") = pair(width(), height());
}

/// The frame, and the text on it: while somebody types, the edit box has it.
void draw()
{
    engine::PixelCanvas& canvas = form.picWorkspace.canvas;
    canvas = form.Picture;
    if (!form.txtTextVisible) {
        tools::paintOver(canvas, lookOf());
    }
    form.picWorkspace.Refresh();
}

/// A source of the first video row under the main slider: the frame of its stream at the slider's time, whatever part
/// of the stream the source shows.
void drawFrame()
{
    const engine::Handle track = state::TrackCollection.Item(1);
    const engine::Milliseconds now = moduleTimeline::GetSliderPosition();
    const std::int16_t seq = moduleTimeline::GetSequenceNumberFromPos(track, now);
    if (seq < 0) {
        return;
    }
    engine::Handle stream = 0;
    check(EngineAs<engine::ITWTimeline>()->GetSourceStream(track, seq, stream));
    constexpr double kPerSecond = 1000;
    check(EngineAs<engine::ITWPreview>()->DrawKeyFrame(stream, now / kPerSecond, form.picWorkspaceBack.hDC(), width(),
                                                       height()));
    form.Picture = form.picWorkspaceBack.canvas;
}

void fillLists()
{
    constexpr int kSmallest = 7;
    constexpr int kLargest = 72;
    form.cboFonts.List = ports.lettering->names();
    std::vector<std::string> sizes;
    for (int size = kSmallest; size <= kLargest; ++size) {
        sizes.push_back(std::to_string(size));
    }
    form.cboSize.List = sizes;
    form.cboSize.Text = std::string("8");
}

void setFont(const TextFont& font)
{
    form.Font = font;
    form.cboFonts.Text = font.Name;
    std::array<char, 32> size{}; // with a point, whatever the desktop's language is
    const auto end = std::to_chars(size.data(), size.data() + size.size(), font.Size).ptr;
    form.cboSize.Text = std::string(size.data(), end);
    form.mnuFormatFontStyleBold.Checked = font.Bold;
    form.mnuFormatFontStyleItalic.Checked = font.Italic;
    form.mnuFormatFontStyleUnderline.Checked = font.Underline;
    form.mnuFormatFontStyleStrikethrough.Checked = font.Strikethrough;
}

void toggle(Menu& menu, bool TextFont::*style)
{
    LeaveTyping();
    form.Font.*style = !(form.Font.*style);
    menu.Checked = form.Font.*style;
    OnTextChange();
}

/// A colour out of the platform's dialogue; one that is cancelled changes nothing.
void chooseColour(const char* routine, Shown<std::int32_t>& colour)
{
    LeaveTyping();
    Trapped(kModule, routine,
            [&] {
                colour = ports.dialogs->chooseColour(colour);
                OnTextChange();
            },
            {{kCancelled, [] {}}});
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

void say(const std::string& text)
{
    form.Told = text;
    const std::string warned = warning();
    form.sbr.Panel("STATUS") = warned.empty() ? text : warned;
}

void ShowModal()
{
    Form_Load();
    ShowDialogue(kModule, showDialogue);
}

void Form_Load()
{
    Trapped(kModule, "Form_Load", [] {
        const WaitCursor wait;
        form.TextLeft = form.TextTop = 0;
        form.TextFile.clear();
        form.KeyRed = form.KeyGreen = form.KeyBlue = 0;
        form.TwinBackColor = 0; // so that the key of an overlay without any choice takes it away
        form.Caption = std::string("Add Text");
        form.txtTextVisible = false;
        form.txtText.Text.changed = OnTextChange;
        fillLists();
        form.picWorkspace.canvas.resize(state::ProjectWidth, state::ProjectHeight);
        form.picWorkspaceBack.canvas.resize(state::ProjectWidth, state::ProjectHeight);
        form.Picture = form.picWorkspaceBack.canvas;
        Trapped(kModule, "drawFrame*", drawFrame); // without it, there is still a text to write
        mnuFileNew_Click();
        say("Ready");
    });
}

void mnuFileNew_Click()
{
    form.txtTextVisible = false;
    setFont({.Name = "Arial", .Size = 16});
    form.picBackColorDisplay = 0xFFFFFF;
    form.picColorDisplay = 0;
    form.mnuFormatTransparentBackground.Checked = false;
    showPosition(kTopLeft);
    form.txtText.Text = std::string();
    form.Told = "Ready";
    OnTextChange(); // measures what is placed now
    mnuFormatCenterHorizontally_Click();
    mnuFormatCenterVertically_Click();
}

void mnuFileSave_Click()
{
    LeaveTyping();
    OnFileSaveClick();
}

void mnuFileSaveas_Click()
{
    LeaveTyping();
    SaveAs();
}

void mnuFileSaveAndClose_Click()
{
    LeaveTyping();
    if (OnFileSaveClick()) {
        mnuFileClose_Click();
    }
}

void mnuFileSaveAndAdd_Click()
{
    LeaveTyping();
    if (OnFileSaveClick()) {
        AddBitmapToMediaList(form.TextFile);
    }
}

void mnuFileSaveAddAndClose_Click()
{
    LeaveTyping();
    if (OnFileSaveClick()) {
        AddBitmapToMediaList(form.TextFile);
        mnuFileClose_Click();
    }
}

void mnuFileClose_Click()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

void OnFormatText()
{
    if (trimmed(form.txtText.Text).empty()) {
        form.txtText.Text = std::string("Sample Text");
    }
    OnTextChange();
    form.txtTextVisible = true;
    draw();
    if (form.txtText.SetFocus) {
        form.txtText.SetFocus();
    }
}

void mnuFormatBackgroundColor_Click() { chooseColour("mnuFormatBackgroundColor_Click", form.picBackColorDisplay); }

void mnuFormatFontColor_Click() { chooseColour("mnuFormatFontColor_Click", form.picColorDisplay); }

void mnuFormatTransparentBackground_Click()
{
    LeaveTyping();
    form.mnuFormatTransparentBackground.Checked = !form.mnuFormatTransparentBackground.Checked;
    OnTextChange();
}

void mnuFormatFont_Click()
{
    LeaveTyping();
    Trapped(kModule, "mnuFormatFont_Click",
            [] {
                TextFont font = form.Font;
                std::int32_t colour = form.picColorDisplay;
                ports.dialogs->chooseFont(font, colour);
                setFont(font);
                form.picColorDisplay = colour;
                OnTextChange();
            },
            {{kCancelled, [] {}}});
}

void mnuFormatFontStyleBold_Click() { toggle(form.mnuFormatFontStyleBold, &TextFont::Bold); }
void mnuFormatFontStyleItalic_Click() { toggle(form.mnuFormatFontStyleItalic, &TextFont::Italic); }
void mnuFormatFontStyleUnderline_Click() { toggle(form.mnuFormatFontStyleUnderline, &TextFont::Underline); }
void mnuFormatFontStyleStrikethrough_Click() { toggle(form.mnuFormatFontStyleStrikethrough, &TextFont::Strikethrough); }

void ChooseFont(const std::string& name)
{
    form.cboFonts.Text = name;
    form.Font.Name = name;
    OnTextChange();
}

void ChooseSize(const std::string& size)
{
    constexpr double kLargest = 1000;
    double points = 0;
    Trapped(kModule, "ChooseSize", [&] { points = numbers::fromText(size); },
            {{engine::error_number::kTypeMismatch, [] {}}});
    if (!(points >= 1) || points > kLargest) {
        setFont(form.Font); // the text says again what holds
        return;
    }
    form.cboSize.Text = size;
    form.Font.Size = points;
    OnTextChange();
}

void OnTextChange()
{
    const tools::TextSize size = tools::measure(lookOf());
    form.imgDragLeft = form.TextLeft;
    form.imgDragTop = form.TextTop;
    form.imgDragWidth = size.width + 1;
    form.imgDragHeight = size.height + 1;
    if (!form.txtTextVisible) {
        draw();
    }
    showPlaces();
    say(form.Told);
}

void LeaveTyping()
{
    if (form.txtTextVisible) {
        form.txtTextVisible = false;
        OnTextChange();
    }
}

} // namespace frmAddText
