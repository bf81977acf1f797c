#pragma once

// The main window's state over the timeline's harness: every panel loaded, the history empty, no hooks.

#include "core/forms/frmMediaList.h"
#include "core/forms/frmTools.h"
#include "core/upcalls.h"
#include "history/ModuleHistory.h"
#include "media/moduleTarnwick.h"
#include "shell/frmTools_events.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/menu_table.h"
#include "shell/panel_places.h"
#include "shell/tutorial.h"
#include "timeline/timeline_harness.h"

namespace shell_test {

class ShellTest : public timeline_test::TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        ModuleHistory::EmptyHistory();
        frmTools::Form_Load();
        mdiTarnwick::Form_Load();
    }
    void TearDown() override
    {
        ModuleHistory::EmptyHistory();
        mdiTarnwick::unload = nullptr;
        mdiTarnwick::showHelp = nullptr;
        mdiTarnwick::enterWhatsThis = nullptr;
        mdiTarnwick::showAbout = nullptr;
        TimelineTest::TearDown();
    }

    static void open(std::initializer_list<const char*> names)
    {
        std::vector<std::string> paths;
        for (const char* const name : names) {
            paths.push_back((testmedia::mediaFolder() / name).string());
        }
        moduleTarnwick::OpenDroppedFiles(paths); // the last one is selected
    }
    static std::string texts(const TreeView& tree)
    {
        std::string all;
        for (const TreeNode& node : tree.Root().Children) {
            all += (all.empty() ? "" : "|") + node.Text;
        }
        return all;
    }

    forms::MdiTarnwick& window = forms::mdiTarnwick;
    forms::FrmTools& tools = forms::frmTools;
};

} // namespace shell_test
