#include "media/file_preview.h"

#include "core/forms/frmMediaList.h"
#include "core/trap.h"
#include "engine/ITWFilePreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "volume/frmVolume.h"

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWFilePreview;
using engine::kFalse;

namespace {

constexpr const char* kModule = "frmMediaList";

void showAsStopped()
{
    auto& form = forms::frmMediaList;
    form.tmFilePreview.Enabled = false;
    form.FilePlaying = false;
    form.cmdPlay.Picture = "PLAY";
}

void showAsPlaying()
{
    auto& form = forms::frmMediaList;
    form.FilePlaying = true;
    form.cmdPlay.Picture = "STOP";
    form.tmFilePreview.Enabled = true;
}

/// The picture stands inside the surface's frame, which is thicker to the right than below.
void setVideoWindow(ITWFilePreview& player)
{
    const auto& form = forms::frmMediaList;
    check(player.SetVideoWindow(1, 1, form.picPreviewSmallWidth - 3, form.picPreviewSmallHeight - 2));
}

std::int32_t lengthOf(ITWFilePreview& player)
{
    std::int32_t length = 0;
    check(player.GetDuration(length));
    return length;
}

void clearPicture()
{
    auto& form = forms::frmMediaList;
    form.picPreviewSmallCleared = form.picPreviewSmallCleared + 1;
}

void takeLength(std::int32_t length)
{
    Slider& slider = forms::frmMediaList.sldFilePreview;
    if (length > slider.Min()) {
        slider.SetMax(length);
    }
    slider.SetValue(0);
}

int newestLoad = 0; // of loads and closings

/// What was loaded goes: until the next load there is nothing to play.
void showAsEmpty()
{
    ++newestLoad;
    showAsStopped();
    forms::frmMediaList.cmdPlay.Enabled = false;
}

} // namespace

namespace media {

void loadFilePreview(std::string_view mediaClass, std::string_view path)
{
    const bool isImage = mediaClass == "Image";
    const bool isSound = mediaClass == "Audio";
    if (!isImage && !isSound && mediaClass != "Video") {
        return;
    }
    auto& form = forms::frmMediaList;
    form.sldFilePreview.Visible = !isImage;
    showAsStopped();
    const int load = ++newestLoad;
    const auto player = EngineAs<ITWFilePreview>();
    Bool16 ok = kFalse;
    check(player->SetOwnerWindow(form.picPreviewSmallHandle));
    check(player->ResetPlayer(ok));
    check(player->OpenFile(path, ok));
    if (load != newestLoad) {
        return; // events were let run meanwhile: what they loaded stands
    }
    form.cmdPlay.Enabled = true;
    if (isSound) {
        clearPicture(); // the file before may have played on until now, and left one
    } else {
        setVideoWindow(*player);
    }
    takeLength(lengthOf(*player));
    if (!isSound) {
        check(player->ShowFirstFrame(ok));
    }
    if (!isImage) {
        frmVolume::SetVolume(frmVolume::GetVolume()); // a player that loads has its own
    }
}

void resetFilePreview()
{
    showAsEmpty();
    Bool16 ok = kFalse;
    check(EngineAs<ITWFilePreview>()->ResetPlayer(ok));
}

void closeFilePreview()
{
    showAsEmpty();
    const engine::Status closed = EngineAs<ITWFilePreview>()->Close();
    clearPicture();
    check(closed);
}

} // namespace media

namespace frmMediaList {

void cmdPlay_Click()
{
    Trapped(kModule, "cmdPlay_Click", [] {
        const auto player = EngineAs<ITWFilePreview>();
        // Without anything to play, the click acts as a stop.
        const bool play = lengthOf(*player) != 0 && !forms::frmMediaList.FilePlaying;
        Bool16 ok = kFalse;
        if (play) {
            showAsPlaying();
            check(player->Play(ok));
        } else {
            showAsStopped();
            check(player->Stop(ok));
        }
    });
}

void OnCmdPlayClick()
{
    if (!forms::frmMediaList.FilePlaying && forms::frmMediaList.cmdPlay.Visible) {
        cmdPlay_Click();
    }
}

void OnCmdPauseClick()
{
    if (forms::frmMediaList.FilePlaying) {
        cmdPlay_Click();
    }
}

void tmFilePreview_Timer()
{
    Trapped(kModule, "tmFilePreview_Timer*", [] {
        Slider& slider = forms::frmMediaList.sldFilePreview;
        const auto player = EngineAs<ITWFilePreview>();
        if (slider.Value() == slider.Max()) {
            showAsStopped();
            Bool16 ok = kFalse;
            check(player->Stop(ok));
            check(player->Rewind(ok));
        }
        std::int32_t position = 0;
        check(player->GetPosition(position));
        slider.SetValue(position);
    });
}

void sldFilePreview_Scroll()
{
    Trapped(kModule, "sldFilePreview_Scroll*", [] {
        Bool16 ok = kFalse;
        check(EngineAs<ITWFilePreview>()->Seek(forms::frmMediaList.sldFilePreview.Value(), ok));
    });
}

void picPreviewSmall_Resize()
{
    Trapped(kModule, "picPreviewSmall_Resize*", [] {
        const auto player = EngineAs<ITWFilePreview>();
        if (lengthOf(*player) != 0) {
            setVideoWindow(*player);
        }
    });
}

} // namespace frmMediaList
