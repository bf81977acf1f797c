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

/// Ticks as the window's timer does, until the save has come to an end of one kind or another.
void watch()
{
    while (run.tmSave.Enabled && run.lblFailure.get().empty()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(run.tmSave.Interval));
        run.tmSave.tick();
    }
    frmProgressBar::cmdCancel_Click();
}

void pressSave(const std::string& path)
{
    const std::string ending = std::filesystem::path(path).extension().string();
    if (ending == ".wmv" || ending == ".wma") {
        frmExportTimeline::optWMF_Click();
    }
    forms::frmExportTimeline.txtSaveFileName.Text = path;
    if (!forms::frmExportTimeline.cmdOK.Enabled) {
        throw WrongWords("there is nothing to save");
    }
    frmProgressBar::showDialogue = [] {
        run.chkPreviewWhenDone.Value = std::int16_t{0};
        watch();
    };
    forms::frmExportTimeline.SaveCancelled = true; // a save that never begins
    frmExportTimeline::cmdOK_Click();
}

} // namespace

void saveMovie(const std::string& path)
{
    const OpenDialogue dialogue;
    pressSave(std::filesystem::absolute(path).string());
    if (forms::frmExportTimeline.SaveCancelled) {
        throw std::runtime_error("no movie was saved: " + run.lblFailure.get());
    }
}

} // namespace app
