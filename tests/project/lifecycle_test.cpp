// New, open, recent, close and the end of the program: no work goes unasked, and no way out leaves a lock behind.

#include "project/project_harness.h"

#include "hand/bookmark_events.h"
#include "preview/frame_offer.h"

namespace logic_test {
namespace {

using enum MessageAnswer;

class LifecycleTest : public ProjectTest {
protected:
    void SetUp() override
    {
        ProjectTest::SetUp();
        writeBytes(path("empty.qpj"), R"(<QuillmontProject><Timeline/><PreviewDimension Width="320" Height="240"/>)"
                                      "</QuillmontProject>");
        writeBytes(path("bad.qpj"), "bad");
    }
    /// Unsaved work, in a project that has a file or none.
    void work(bool isNamed)
    {
        makeFilm("V x0-1000");
        if (isNamed) {
            saved("film.qpj");
            state::markModified();
        }
        platform.messages.clear();
    }
    bool hasWork() { return text() == "V x0-1000"; }
};

/// Each command that ends the present project, with each answer: it goes on only over work that was saved or given up.
TEST_F(LifecycleTest, OnlyASaveThatWroteOrANoLetsWorkGo)
{
    const auto open = [&] { openByDialogue(path("empty.qpj")); };
    const auto close = [] { mdiTarnwick::mnuFileCloseProject_Click(); };
    bool mayClose = false;
    const auto quit = [&] { mayClose = mdiTarnwick::QueryUnload(); };
    const auto renew = [] {
        forms::mdiTarnwick.ProjectStarted = true;
        mdiTarnwick::mnuFileNewProject_Click();
    };
    const struct {
        const char* what;
        std::function<void()> command;
        std::deque<MessageAnswer> answers;
        std::deque<std::string> names; // for the save dialogue, in the test's folder
        bool goesOn;
    } cases[] = {
        {"open, saved", open, {kYes}, {"new.qpj"}, true},
        {"open, save cancelled", open, {kYes}, {}, false},
        {"open, save failed", open, {kYes}, {"nowhere/new.qpj"}, false},
        {"open, given up", open, {kNo}, {}, true},
        {"open, cancelled", open, {kCancel}, {}, false},
        {"close, kept", close, {kNo}, {}, false},
        {"close, saved", close, {kYes, kYes}, {"new.qpj"}, true},
        {"close, save cancelled", close, {kYes, kYes}, {}, false},
        {"close, save failed", close, {kYes, kYes}, {"nowhere/new.qpj"}, false},
        {"close, given up", close, {kYes, kNo}, {}, true},
        {"new, kept", renew, {kNo}, {}, false},
        {"new, save cancelled", renew, {kYes, kYes}, {}, false},
        {"new, given up", renew, {kYes, kNo}, {}, true},
        {"quit, saved", quit, {kYes}, {"new.qpj"}, true},
        {"quit, save cancelled", quit, {kYes}, {}, false},
        {"quit, save failed", quit, {kYes}, {"nowhere/new.qpj"}, false},
        {"quit, given up", quit, {kNo}, {}, true},
        {"quit, cancelled", quit, {kCancel}, {}, false},
    };
    expectsErrors = true; // a folder that is not there is logged
    for (const auto& [what, command, answers, names, goesOn] : cases) {
        SCOPED_TRACE(what);
        ModuleProject::EmptyProject();
        state::ProjectSaved = false;
        state::ProjectFilePath.clear();
        state::ProjectOpenFailed = false;
        work(false);
        platform.answers = answers;
        platform.savedFiles.clear();
        for (const std::string& name : names) {
            platform.savedFiles.push_back(path(name));
        }
        command();
        const bool isQuit = std::string_view(what).starts_with("quit");
        EXPECT_EQ(isQuit ? mayClose : !hasWork(), goesOn);
        EXPECT_EQ(state::ProjectModified || state::MediaListDirty, !goesOn);
        EXPECT_FALSE(state::BusyOpening || state::ProjectLoadLock);
        EXPECT_TRUE(platform.answers.empty()) << "a question was not asked";
    }
}

/// Every way out of opening, and behind each another project can be opened and the program closed.
TEST_F(LifecycleTest, NoWayOutLeavesALock)
{
    const auto dialogue = [&](const std::string& name) { return [this, name] { openByDialogue(path(name)); }; };
    const auto recent = [&](const std::string& name) {
        return [this, name] {
            forms::mdiTarnwick.mnuFileRP[0].Caption = path(name);
            forms::mdiTarnwick.mnuFileRP[0].Enabled = true;
            mdiTarnwick::mnuFileRP_Click(0);
        };
    };
    const auto line = [&](const std::string& name) {
        return [this, name] { mdiTarnwick::OpenCommandLine(name.empty() ? name : "\"" + path(name) + "\""); };
    };
    const struct {
        const char* what;
        std::function<void()> opening;
        std::deque<std::int32_t> errors;
        MessageAnswer answer;
        std::string flags;
        const char* failing; // a call of the engine
    } cases[] = {
        {"dialogue", dialogue("empty.qpj"), {}, kNo, "saved started", ""},
        {"dialogue, cancelled", dialogue("empty.qpj"), {32755}, kNo, "modified dirty", ""},
        {"dialogue, too long", dialogue("empty.qpj"), {20476}, kNo, "modified dirty", ""},
        {"dialogue, trap", dialogue("empty.qpj"), {5}, kNo, "modified dirty", ""},
        {"dialogue, cancel", dialogue("empty.qpj"), {}, kCancel, "modified dirty", ""},
        {"dialogue, ending", dialogue("empty.Qpj"), {}, kNo, "modified dirty", ""},
        {"dialogue, bad", dialogue("bad.qpj"), {}, kNo, "failed", ""},
        {"dialogue, missing", dialogue("gone.qpj"), {}, kNo, "failed", ""},
        {"dialogue, engine", dialogue("empty.qpj"), {}, kNo, "failed", "LoadProject"},
        {"dialogue, size", dialogue("empty.qpj"), {}, kNo, "failed", "SetFrameSize"},
        {"recent", recent("empty.qpj"), {}, kNo, "saved started", ""},
        {"recent, missing", recent("gone.qpj"), {}, kNo, "failed", ""},
        {"recent, bad", recent("bad.qpj"), {}, kNo, "failed", ""},
        {"recent, engine", recent("empty.qpj"), {}, kNo, "failed", "LoadProject"},
        {"line", line("empty.qpj"), {}, kNo, "saved started", ""},
        {"line, none", line(""), {}, kNo, "modified dirty", ""},
        {"line, missing", line("gone.qpj"), {}, kNo, "failed", ""},
        {"line, trap", line("empty.qpj"), {}, kNo, "failed", "LoadProject"},
    };
    expectsErrors = true;
    for (const auto& [what, opening, errors, answer, flags, failing] : cases) {
        SCOPED_TRACE(what);
        ModuleProject::EmptyProject();
        state::ProjectSaved = state::ProjectOpenFailed = forms::mdiTarnwick.ProjectStarted = false;
        state::ProjectFilePath.clear();
        work(false);
        platform.answers = {answer};
        platform.dialogErrors = errors;
        engineCalls.failCall({failing});
        const auto recentsBefore = state::RecentProjectPaths;
        opening();
        engineCalls.failCall({});
        platform.dialogErrors.clear();
        platform.answers.clear();
        EXPECT_EQ(flagsOfProject(), flags);
        EXPECT_EQ(forms::mdiTarnwick.MousePointer.get(), 0);
        EXPECT_FALSE(forms::mdiTarnwick.pbarMain.Visible);
        if (flags == "failed") {
            EXPECT_EQ(state::RecentProjectPaths, recentsBefore);
            EXPECT_EQ(view(), "zoom 0 size 320x240");
        }
        platform.answers = {kNo};
        openByDialogue(path("empty.qpj"));
        EXPECT_EQ(flagsOfProject(), "saved started");
        EXPECT_TRUE(mdiTarnwick::QueryUnload());
    }
}

/// What is asked while files are being opened comes from events that were let run.
TEST_F(LifecycleTest, NothingElseRunsDuringALoad)
{
    makeFilm("V x0-1000");
    const std::string project = saved("film.qpj");
    int asked = 0;
    platform.whileEventsRun = [&] {
        ++asked;
        platform.chosenFiles = {path("empty.qpj")};
        for (const auto command : {mdiTarnwick::mnuFileOpenProject_Click, mdiTarnwick::mnuFileNewProject_Click,
                                   mdiTarnwick::mnuFileCloseProject_Click, mdiTarnwick::mnuFileSaveProject_Click,
                                   mdiTarnwick::mnuFileSaveProjectAs_Click}) {
            command();
        }
        mdiTarnwick::mnuFileRP_Click(0);
        EXPECT_FALSE(mdiTarnwick::QueryUnload());
    };
    openByDialogue(project);
    platform.whileEventsRun = nullptr;
    EXPECT_GT(asked, 0);
    EXPECT_EQ(text(), "V x0-1000");
    EXPECT_EQ(files(), "bad.qpj empty.qpj film.qpj");

    // The person's own Cancel ends it, and nothing is left half open.
    platform.whileEventsRun = [] { state::OpeningCancelled = true; };
    openByDialogue(project);
    platform.whileEventsRun = nullptr;
    EXPECT_EQ(flagsOfProject(), "failed started");
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 0);
    EXPECT_EQ(std::string(forms::mdiTarnwick.sbr.Panel(1)), "Opening film.qpj was cancelled.");
}

TEST_F(LifecycleTest, AClosedProjectLeavesNothing)
{
    frmPreview::SetFrameSize(640, 360);
    makeFilm("V x0-1000 E 100-200");
    showSelection(100, 300);
    frmTimeline::cmdAddBookmark_Click();
    fill("V ~500 1000");
    form.chkLockVideo[0].Value = std::int16_t{1};
    saved("film.qpj");
    platform.answers = {kYes};
    platform.messages.clear();
    mdiTarnwick::mnuFileCloseProject_Click();
    EXPECT_EQ(platform.messages.size(), 1u) << "nothing was unsaved";
    EXPECT_EQ(text(), "");
    EXPECT_EQ(clipboard(), "");
    EXPECT_EQ(view(), "zoom 0 size 320x240");
    EXPECT_EQ(form.chkLockVideo[0].Value.get(), 0);
    EXPECT_EQ(history(), " | 0/0");
    EXPECT_EQ(flagsOfProject(), "failed started");
    EXPECT_EQ(forms::frmMediaList.Caption.get(), "Media List - Project: Untitled");
    EXPECT_EQ(forms::mdiTarnwick.sbr.Panel(1).get(), "Ready");
    EXPECT_FALSE(forms::mdiTarnwick.mnuFileSaveProject.Enabled);
}

} // namespace
} // namespace logic_test
