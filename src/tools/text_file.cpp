#include "tools/text_file.h"

#include "core/file_text.h"
#include "core/forms/frmAddText.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/opening.h"
#include "tools/frmAddText.h"

namespace frmAddText {

using engine::Bool16;
using engine::check;
using engine::kFalse;

namespace {

constexpr const char* kModule = "frmAddText";
constexpr std::int32_t kBlack = 0;
constexpr std::int32_t kWhite = 0xFFFFFF;
constexpr std::int32_t kBlue = 0xFF0000;
constexpr std::int32_t kRed = 0xFF;

forms::FrmAddText& form = forms::frmAddText;

bool SaveBitmapToFile(const std::string& file)
{
    const KeyChoice key = chooseKey();
    form.TwinBackColor = key.ground;
    form.KeyRed = key.red;
    form.KeyGreen = key.green;
    form.KeyBlue = key.blue;
    engine::PixelCanvas& twin = form.picWorkspaceBack.canvas;
    tools::paintKeyed(twin, lookOf(), key.ground);
    Bool16 ok = kFalse;
    check(engine::EngineAs<engine::ITWPreview>()->SaveSnapFrame(form.picWorkspaceBack.hDC(), file, twin.width(),
                                                                twin.height(), ok));
    if (ok == kFalse) {
        tellUser("Unable to save \"" + file + "\". Please choose another folder or name.");
        return false;
    }
    UpdatePreview(); // the file may stand on the timeline already
    say("Saved " + file_text::ExtractFileName(file) + ".");
    return true;
}

/// Asks for the file and writes it. Raises error 32755 when it is cancelled.
bool saveAsked(const std::string& name)
{
    const std::string file = ports.dialogs->saveFile(
        {.filters = {{"Bitmap File", {"*.bmp"}}}, .folder = {}, .defaultExtension = "bmp", .name = name});
    if (!SaveBitmapToFile(file)) {
        return false;
    }
    form.TextFile = file;
    form.Caption = file_text::ExtractFileName(file) + " - Add Text";
    return true;
}

/// True when the body came to its end and answered so. A cancelled dialogue is no error.
bool saved(const char* routine, const std::function<bool()>& body)
{
    constexpr std::int32_t kCancelled = 32755;
    bool isWritten = false;
    Trapped(kModule, routine, [&] { isWritten = body(); }, {{kCancelled, [] {}}});
    return isWritten;
}

} // namespace

tools::TextLook lookOf()
{
    return {form.txtText.Text,
            form.Font,
            form.picColorDisplay,
            form.picBackColorDisplay,
            form.mnuFormatTransparentBackground.Checked,
            form.TextLeft,
            form.TextTop};
}

KeyChoice chooseKey()
{
    const std::int32_t letters = form.picColorDisplay;
    const std::int32_t behind = form.picBackColorDisplay;
    KeyChoice key{form.TwinBackColor, form.KeyRed, form.KeyGreen, form.KeyBlue};
    if ((letters == kBlack && behind == kWhite) || (behind == kBlack && letters == kWhite)) {
        key.ground = kBlue;
        key.blue = 255;
    }
    if (letters == kBlue || behind == kBlue) {
        key = {kRed, 255, 0, 0};
    }
    if (letters == kRed || behind == kRed) {
        key = {kBlack, 0, 0, 0};
    }
    return key;
}

bool OnFileSaveClick()
{
    return saved("OnFileSaveClick", [] {
        if (form.TextFile.empty()) {
            return saveAsked("Untitled");
        }
        return SaveBitmapToFile(form.TextFile);
    });
}

bool SaveAs()
{
    return saved("mnuFileSaveas_Click", [] {
        return saveAsked(form.TextFile.empty() ? "Untitled" : file_text::ExtractFileName(form.TextFile));
    });
}

void AddBitmapToMediaList(const std::string& file)
{
    Trapped(kModule, "AddBitmapToMediaList", [&] {
        if (media::openWithRow(file) != media::Opened::kOpened) {
            tellUser("Unable to open file.");
            return;
        }
        moduleTimeline::AddOverlaysOfFile(state::FileCollection.Item(state::FileCollection.Count()), form.KeyRed,
                                          form.KeyGreen, form.KeyBlue);
        say("Saved " + file_text::ExtractFileName(file) + ", and added it to the overlays.");
    });
}

} // namespace frmAddText
