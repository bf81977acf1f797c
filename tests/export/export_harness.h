#pragma once

// The dialogue that saves the timeline, over the harness of the main window.

#include "core/forms/frmAdvancedSaveOptions.h"
#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmProgressBar.h"
#include "export/frmAdvancedSaveOptions.h"
#include "export/frmExportTimeline.h"
#include "export/frmProgressBar.h"
#include "shell/shell_harness.h"
#include "support/files.h"

#include <filesystem>
#include <thread>

namespace logic_test {

using testmedia::bytesOf;
using testmedia::writeBytes;

class ExportTest : public ShellTest {
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        state::WorkingFolder = platform.folder;
    }
    void TearDown() override
    {
        frmExportTimeline::showDialogue = frmAdvancedSaveOptions::showDialogue = frmProgressBar::showDialogue = nullptr;
        ShellTest::TearDown();
    }

    static constexpr int kEnoughTicks = 6000;

    std::string path(const std::string& name) const { return platform.folder + "/" + name; }
    /// Opens the dialogue, does that in it, and closes it.
    static void inDialogue(const std::function<void()>& deeds)
    {
        frmExportTimeline::showDialogue = deeds;
        frmExportTimeline::ShowModal();
    }
    /// The chosen rows bear a star: "Video* Effect Audio 1*".
    std::string rows() const
    {
        std::string all;
        for (const forms::StreamRow& row : dialogue.lstSaveStreams.get()) {
            all += (all.empty() ? "" : " ") + row.Text + (row.Selected ? "*" : "");
        }
        return all;
    }
    void choose(const std::set<std::string>& names)
    {
        std::vector<forms::StreamRow> rows = dialogue.lstSaveStreams.get();
        for (forms::StreamRow& row : rows) {
            row.Selected = names.contains(row.Text);
        }
        dialogue.lstSaveStreams = rows;
        frmExportTimeline::lstSaveStreams_Click();
    }
    /// Presses Save; the run goes on to "Done", a while behind a failure, or for so many ticks, and then its button is
    /// pressed.
    void save(int ticks = kEnoughTicks)
    {
        frmProgressBar::showDialogue = [this, ticks] {
            constexpr int kWhile = 20;
            int behind = 0;
            for (int i = 0; i < ticks && behind < kWhile && run.cmdCancel.get() != "&Done"; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                run.tmSave.tick();
                behind += run.lblFailure.get().empty() ? 0 : 1;
            }
            outcome = run.cmdCancel.get() + " " + run.lblFramesSaved.get();
            frmProgressBar::cmdCancel_Click();
        };
        outcome.clear();
        frmExportTimeline::cmdOK_Click();
    }
    std::string lastMessage() const { return platform.messages.empty() ? "" : platform.messages.back().text; }

    forms::FrmExportTimeline& dialogue = forms::frmExportTimeline;
    forms::FrmAdvancedSaveOptions& options = forms::frmAdvancedSaveOptions;
    forms::FrmProgressBar& run = forms::frmProgressBar;
    std::string outcome; // of the last save: its button and label at the end; empty: it never ran
};

} // namespace logic_test
