#include "app/edit_movie.h"

#include "app/edit_session.h"
#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmProgressBar.h"
#include "export/frmExportTimeline.h"
#include "export/frmProgressBar.h"

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace app {

namespace {

forms::FrmProgressBar& run = forms::frmProgressBar;

struct OpenDialogue {
    OpenDialogue() { frmExportTimeline::Form_Load(); }
    ~OpenDialogue() { frmExportTimeline::Form_Unload(); }
    OpenDialogue(const OpenDialogue&) = delete;
    OpenDialogue& operator=(const OpenDialogue&) = delete;
};

/// Ticks as the window's timer does, until the save has come to an end of one kind or another. Whether the movie is
/// whole: the button is called the same after a full disk.
bool watch()
{
    while (run.tmSave.Enabled && run.lblFailure.get().empty()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(run.tmSave.Interval));
        run.tmSave.tick();
    }
    const bool isWhole = run.lblFramesSaved.get() == "Save Complete";
    frmProgressBar::cmdCancel_Click();
    return isWhole;
}

/// Whether the movie was saved.
bool pressSave(const std::string& path)
{
    const std::string ending = std::filesystem::path(path).extension().string();
    if (ending == ".wmv" || ending == ".wma") {
        frmExportTimeline::optWMF_Click();
    }
    forms::frmExportTimeline.txtSaveFileName.Text = path;
    if (!forms::frmExportTimeline.cmdOK.Enabled) {
        throw WrongWords("there is nothing to save");
    }
    bool isWhole = false; // a save that never begins
    frmProgressBar::showDialogue = [&] {
        run.chkPreviewWhenDone.Value = std::int16_t{0};
        isWhole = watch();
    };
    frmExportTimeline::cmdOK_Click();
    frmProgressBar::showDialogue = nullptr;
    return isWhole;
}

} // namespace

void saveMovie(const std::string& path)
{
    const OpenDialogue dialogue;
    if (!pressSave(std::filesystem::absolute(path).string())) {
        const std::string cause = run.lblFailure.get(); // else a message has told it
        throw std::runtime_error("no movie was saved" + (cause.empty() ? "" : ": " + cause));
    }
}

} // namespace app
