// The dialogue for a new project: sizes, the locked proportions, the folder, and what OK refuses.

#include "core/forms/frmNewProject.h"
#include "project/frmNewProject.h"
#include "support/logic_harness.h"

#include <filesystem>

namespace logic_test {
namespace {

namespace fs = std::filesystem;

class NewProject : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        state::WorkingFolder = platform.folder;
        frmNewProject::closeDialogue = [this] { ++closed; };
    }
    void TearDown() override
    {
        frmNewProject::showDialogue = nullptr;
        frmNewProject::closeDialogue = nullptr;
        LogicTest::TearDown();
    }
    /// Runs the dialogue with what the person does in it.
    bool with(const std::function<void()>& deeds)
    {
        frmNewProject::showDialogue = deeds;
        closed = 0;
        return frmNewProject::ShowModal();
    }
    void choose(const std::string& text)
    {
        const auto& list = dialogue.PreviewDimension.cboDimension.List.get();
        dialogue.PreviewDimension.cboDimension.ListIndex =
            static_cast<std::int32_t>(std::ranges::find(list, text) - list.begin());
    }
    /// The boxes, and whether they are the person's.
    std::string size()
    {
        const bool isOn = dialogue.PreviewDimension.txtWidth.Enabled;
        EXPECT_EQ(dialogue.PreviewDimension.txtHeight.Enabled.get(), isOn);
        EXPECT_EQ(dialogue.PreviewDimension.chkLockAspectRatio.Enabled.get(), isOn);
        EXPECT_EQ(dialogue.PreviewDimension.fmeCustomPreviewEnabled.get(), isOn);
        return dialogue.PreviewDimension.txtWidth.Text.get() + " x " + dialogue.PreviewDimension.txtHeight.Text.get()
               + (isOn ? " custom" : "");
    }
    static std::string project()
    {
        return std::to_string(state::ProjectWidth) + "x" + std::to_string(state::ProjectHeight) + " "
               + state::WorkingFolder;
    }

    forms::FrmNewProject& dialogue = forms::frmNewProject;
    int closed = 0;
};

TEST_F(NewProject, OffersSizesAndKeepsTheProportionsOfOnesOwn)
{
    with([&] {
        const auto& list = dialogue.PreviewDimension.cboDimension.List.get();
        const std::vector<std::string> first(list.begin(), list.begin() + 6);
        EXPECT_EQ(first, (std::vector<std::string>{"160 x 120", "320 x 240", "640 x 480", "720 x 480", "800 x 600",
                                                   "1024 x 768"}));
        EXPECT_EQ(list.back(), "Custom");
        EXPECT_EQ(size(), "320 x 240");
        for (const std::string& entry : list) { // the lock is on, and most are not 4:3
            choose(entry);
            EXPECT_EQ(size(), entry == "Custom" ? size() : entry);
        }
        EXPECT_EQ(size(), "1080 x 1080 custom");
        dialogue.PreviewDimension.txtWidth.Text = std::string("101");
        EXPECT_EQ(size(), "101 x 75.75 custom");
        dialogue.PreviewDimension.txtHeight.Text = std::string("30");
        EXPECT_EQ(size(), "40 x 30 custom");
        dialogue.PreviewDimension.txtWidth.Text = std::string("4o");
        EXPECT_EQ(size(), "4o x 30 custom");
        dialogue.PreviewDimension.chkLockAspectRatio.Value = std::int16_t{0};
        dialogue.PreviewDimension.txtWidth.Text = std::string("50");
        EXPECT_EQ(size(), "50 x 30 custom");
        dialogue.txtPath.Text = std::string("/nowhere");
        frmNewProject::cmdDefault_Click();
        EXPECT_EQ(size(), "320 x 240");
        EXPECT_EQ(dialogue.PreviewDimension.chkLockAspectRatio.Value, 1);
        EXPECT_EQ(dialogue.txtPath.Text.get(), platform.folder);
    });
}

TEST_F(NewProject, SetsSizeAndFolderOnOKAlone)
{
    const std::string before = project();
    const std::string folder = platform.folder + "/new ü";
    fs::create_directory(folder);
    platform.pickedFolders = {folder, ""};
    forms::frmMediaList.Caption = std::string("Media List - Project: old.qpj");
    const auto fill = [&] {
        choose("1280 x 720");
        frmNewProject::cmdBrowse_Click();
        frmNewProject::cmdBrowse_Click(); // cancelled: stays
        EXPECT_EQ(dialogue.txtPath.Text.get(), folder);
    };
    EXPECT_FALSE(with([&] {
        fill();
        frmNewProject::cmdCancel_Click();
    }));
    EXPECT_EQ(project(), before);
    EXPECT_EQ(engineCalls.counts["SetFrameSize"], 0);
    EXPECT_FALSE(state::FrameSizeChosen);

    platform.pickedFolders = {folder, ""};
    EXPECT_TRUE(with([&] {
        fill();
        frmNewProject::cmdOK_Click();
    }));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(project(), "1280x720 " + folder);
    EXPECT_EQ(engineCalls.counts["SetFrameSize"], 1);
    EXPECT_TRUE(state::FrameSizeChosen);
    EXPECT_EQ(forms::frmMediaList.Caption.get(), "Media List - Project: Untitled");
    EXPECT_TRUE(fs::is_empty(folder)) << "the trial leaves nothing";
}

TEST_F(NewProject, SaysWhatIsWrongAndStaysOpen)
{
    const std::string closedFolder = platform.folder + "/closed";
    fs::create_directory(closedFolder);
    fs::permissions(closedFolder, fs::perms::owner_read | fs::perms::owner_exec);
    const std::string kSides = "The width and the height must be numbers from 16 to 4096.";
    const std::string kOther = "\r\nPlease choose another working folder.";
    const struct {
        const char* width;
        const char* height;
        std::string folder;
        std::string message;
        TextBox* focus;
        std::string result;
    } kCases[] = {
        {"15.4", "100", {}, kSides, &dialogue.PreviewDimension.txtWidth, {}},
        {"4096.6", "100", {}, kSides, &dialogue.PreviewDimension.txtWidth, {}},
        {"1e300", "100", {}, kSides, &dialogue.PreviewDimension.txtWidth, {}},
        {"100", "", {}, kSides, &dialogue.PreviewDimension.txtHeight, {}},
        {"100", "-100", {}, kSides, &dialogue.PreviewDimension.txtHeight, {}},
        {"100", "12a", {}, kSides, &dialogue.PreviewDimension.txtHeight, {}},
        {"16",
         "16",
         platform.folder + "/no",
         "There is no folder \"" + platform.folder + "/no\"." + kOther,
         &dialogue.txtPath,
         {}},
        {"16", "16", ".", "There is no folder \".\"." + kOther, &dialogue.txtPath, {}},
        {"16",
         "16",
         closedFolder,
         "No files can be made in the folder \"" + closedFolder + "\"." + kOther,
         &dialogue.txtPath,
         {}},
        {"15.6", "75.75", platform.folder + "//", {}, nullptr, "16x76 " + platform.folder},
        {" 4096", "4096.5", platform.folder, {}, nullptr, "4096x4096 " + platform.folder},
    };
    for (const auto& test : kCases) {
        SCOPED_TRACE(std::string(test.width) + " x " + test.height + " " + test.folder);
        const std::string before = project();
        const TextBox* focus = nullptr;
        platform.messages.clear();
        const bool isAccepted = with([&] {
            for (TextBox* const box :
                 {&dialogue.PreviewDimension.txtWidth, &dialogue.PreviewDimension.txtHeight, &dialogue.txtPath}) {
                box->SetFocus = [&focus, box] { focus = box; };
            }
            choose("Custom");
            dialogue.PreviewDimension.chkLockAspectRatio.Value = std::int16_t{0};
            dialogue.PreviewDimension.txtWidth.Text = std::string(test.width);
            dialogue.PreviewDimension.txtHeight.Text = std::string(test.height);
            dialogue.txtPath.Text = test.folder.empty() ? platform.folder : test.folder;
            frmNewProject::cmdOK_Click();
        });
        EXPECT_EQ(isAccepted, test.message.empty());
        EXPECT_EQ(closed, isAccepted ? 1 : 0);
        EXPECT_EQ(project(), isAccepted ? test.result : before);
        EXPECT_EQ(focus, test.focus);
        ASSERT_EQ(platform.messages.size(), isAccepted ? 0U : 1U);
        if (!isAccepted) {
            EXPECT_EQ(platform.messages[0].text, test.message);
            EXPECT_EQ(platform.messages[0].icon, MessageIcon::kInformation);
        }
    }
}

} // namespace
} // namespace logic_test
