#pragma once

// The main window's state over the logic's harness: every panel loaded, no hooks.

#include "shell/frmTools_events.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/menu_table.h"
#include "shell/panel_places.h"
#include "shell/tutorial.h"
#include "support/logic_harness.h"

namespace logic_test {

class ShellTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        frmTools::Form_Load();
        mdiTarnwick::Form_Load();
    }
    void TearDown() override
    {
        mdiTarnwick::unload = nullptr;
        mdiTarnwick::showHelp = nullptr;
        mdiTarnwick::enterWhatsThis = nullptr;
        mdiTarnwick::showAbout = nullptr;
        LogicTest::TearDown();
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

} // namespace logic_test
