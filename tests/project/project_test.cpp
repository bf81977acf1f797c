// Projects saved and opened again.

#include "project/project_harness.h"

#include "hand/bookmark_events.h"
#include "project/staging.h"
#include "report/frmbug.h"

#include <sstream>
#include <sys/stat.h>

namespace logic_test {
namespace {

using std::filesystem::permissions;
using std::filesystem::perms;

/// The names of the root's children, in their order.
std::string children(const std::string& text)
{
    std::string all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  <") && !line.starts_with("  </")) {
            all += (all.empty() ? "" : " ") + line.substr(3, line.find_first_of(" >/", 3) - 3);
        }
    }
    return all;
}

class ProjectFileTest : public ProjectTest {};

TEST_F(ProjectFileTest, EveryKindOfContentComesBack)
{
    makeFilm("V x0-1000 1500-2500m2 E 200-900 Wave1000-1400 O 0-500#30 x600-900=100-700#7 A 0-1000 B z0-500");
    const std::string film = text();
    state::ProjectWidth = 640;
    state::ProjectHeight = 360;
    check(timelineCalls->SetFrameSize(640, 360));
    moduleScaleRenderer::ZoomOut();
    showSelection(400, 1200);
    for (const Milliseconds at : {200, 700}) {
        moduleTimeline::SetSliderPosition(at, false);
        frmTimeline::cmdAddBookmark_Click();
    }
    const std::string seen = view();
    const std::string project = saved("film.qpj");
    EXPECT_EQ(children(bytesOf(project)), "Timeline MediaList PropertySettings ZoomFactor SelectionSliders Bookmarks "
                                          "PreviewDimension Rows");
    EXPECT_EQ(flagsOfProject(), "saved started");
    EXPECT_EQ(forms::frmMediaList.Caption.get(), "Media List - Project: film.qpj");

    state::markModified();
    mdiTarnwick::mnuFileSaveProject_Click();
    EXPECT_EQ(children(bytesOf(project)), "Timeline MediaList PropertySettings Bookmarks PreviewDimension ZoomFactor "
                                          "SelectionSliders Rows");
    const std::string second = bytesOf(project);

    state::SelStartPosition = 1;
    openByDialogue(project);
    EXPECT_EQ(text(), film);
    EXPECT_EQ(view(), seen);
    EXPECT_EQ(flagsOfProject(), "saved started");
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 3);
    EXPECT_EQ(bytesOf(project), second) << "opening changes nothing";
    EXPECT_EQ(files(), "film.qpj");

    const auto savedAgain = [&] {
        state::markModified();
        mdiTarnwick::mnuFileSaveProject_Click();
        return bytesOf(project);
    };
    const std::string third = savedAgain();
    openByDialogue(project);
    EXPECT_EQ(savedAgain(), third) << "what was opened is what is saved";
}

TEST_F(ProjectFileTest, TheRangeOfTheFilmBeforeDoesNotComeBack)
{
    makeFilm("V x0-20000");
    showSelection(400, 1200);
    const std::string project = saved("film.qpj");
    const std::string first = bytesOf(project);
    showSelection(3000, 4000);
    openByDialogue(project);
    moduleScaleRenderer::ScrollTo(5);
    ASSERT_EQ(form.hsb.Value(), 5);
    EXPECT_EQ(view(), "zoom 10 size 320x240 selection 400-1200");
    state::markModified();
    mdiTarnwick::mnuFileSaveProject_Click();
    const std::string range = R"(<SelectionSliders Visible="1" Start="400" End="1200" />)";
    EXPECT_NE(first.find(range), std::string::npos) << first;
    EXPECT_NE(bytesOf(project).find(range), std::string::npos) << bytesOf(project);
}

TEST_F(ProjectFileTest, FilesByHandInBothOrders)
{
    const std::string list = "<MediaList><File Src=\"" + media("still.png") + "\"/></MediaList>";
    const std::string timeline = "<Timeline><Track Kind=\"Video\"><Source File=\"0\" Stream=\"Video\" Start=\"0\" "
                                 "Stop=\"5000\"/></Track></Timeline>";
    const std::string zoom = "<ZoomFactor Value=\"20\"/>";
    const std::string sliders = "<SelectionSliders Visible=\"1\" Start=\"200\" End=\"600\"/>";
    const std::string markers = "<Bookmarks><Bookmark_0 Position=\"100\"/><Bookmark_1 Position=\"900\"/></Bookmarks>";
    const std::string size = "<PreviewDimension Width=\"160\" Height=\"120\"/>";
    const std::string seen = "zoom 20 size 160x120 selection 200-600 marker 100 marker 900";
    const struct {
        std::string body;
        std::string view;
    } cases[] = {
        {timeline + list + zoom + sliders + markers + size, seen},
        {timeline + list + markers + size + zoom + sliders, seen},
        {list + size + timeline, "zoom 10 size 160x120"},
        {timeline + list + size + "<SelectionSliders Visible=\"0\" Start=\"200\" End=\"600\"/>",
         "zoom 10 size 160x120"},
        {timeline + list + size + "<ZoomFactor Value=\"-3\"/><Bookmarks/>", "zoom 10 size 160x120"},
    };
    for (const auto& [body, view] : cases) {
        SCOPED_TRACE(body);
        writeBytes(path("hand.qpj"), "<QuillmontProject>" + body + "</QuillmontProject>");
        openByDialogue(path("hand.qpj"));
        EXPECT_EQ(this->view(), view);
        EXPECT_EQ(moduleTimeline::GetTimelineDuration(), 5000);
        EXPECT_EQ(flagsOfProject(), "saved started");
    }
}

TEST_F(ProjectFileTest, WhatIsNoProjectIsRefusedAndLeavesNoName)
{
    const std::string list = "<MediaList><File Src=\"" + media("still.png") + "\"/></MediaList>";
    const auto whole = [&](const std::string& body) { return "<QuillmontProject>" + body + "</QuillmontProject>"; };
    const std::string size = "<PreviewDimension Width=\"160\" Height=\"120\"/>";
    constexpr const char* kFormat = "Invalid file format.";
    std::string markers; // more than can be counted
    for (int i = 0; i < 40'000; ++i) {
        markers += "<B a=\"1\"/>";
    }
    const struct {
        std::string bytes;
        const char* message;
    } cases[] = {
        {"", kFormat},
        {"no XML", kFormat},
        {whole("<Timeline/>"), kFormat},
        {whole("<Timeline/><PreviewDimension Width=\"15\" Height=\"120\"/>"), kFormat},
        {whole("<Timeline/><PreviewDimension Width=\"160\" Height=\"4097\"/>"), kFormat},
        {whole("<Timeline/><PreviewDimension Width=\"x\"/>"), kFormat},
        {whole("<Timeline/>" + size + "<ZoomFactor Value=\"99999\"/>"), kFormat},
        {whole("<Timeline><Track Kind=\"Smell\"/></Timeline>" + size), kFormat},
        {whole("<Timeline/>" + size + "<Bookmarks>" + markers + "</Bookmarks>"), kFormat},
        {whole("<Timeline/>" + size + "<MediaList><File Src=\"" + path("bad.qpj") + "\"/></MediaList>"),
         "Unable to open project."},
    };
    for (const auto& [text, message] : cases) {
        SCOPED_TRACE(text.substr(0, 200));
        makeFilm("V x0-1000 A 0-1000");
        saved("before.qpj");
        moduleTimeline::SetSliderPosition(200, false);
        frmTimeline::cmdAddBookmark_Click();
        writeBytes(path("bad.qpj"), text);
        platform.answers = {MessageAnswer::kNo};
        openByDialogue(path("bad.qpj"));
        EXPECT_EQ(lastMessage(), message);
        EXPECT_EQ(flagsOfProject(), "failed started");
        EXPECT_EQ(state::ProjectFilePath, "");
        EXPECT_EQ(this->text(), "");
        EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 0);
        EXPECT_EQ(view(), "zoom 0 size 320x240");
        EXPECT_FALSE(state::FrameSizeChosen);
        EXPECT_EQ(bytesOf(path("bad.qpj")), text);
    }
}

TEST_F(ProjectFileTest, MediaStandBesideTheProjectAndNotWhereTheProgramRuns)
{
    writeBytes(path("hand.qpj"), "<QuillmontProject><Timeline/><MediaList><File Src=\"still.png\"/></MediaList>"
                                 "<PreviewDimension Width=\"160\" Height=\"120\"/></QuillmontProject>");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(testmedia::mediaFolder());
    platform.answers = {MessageAnswer::kNo};
    openByDialogue(path("hand.qpj"));
    std::filesystem::current_path(before);
    EXPECT_EQ(lastMessage(), "File \"still.png\" missing. Unable to open project.");
    std::filesystem::copy_file(media("still.png"), path("still.png"));
    openByDialogue(path("hand.qpj"));
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 1);
}

TEST_F(ProjectFileTest, MissingMediaAreSearchedFor)
{
    std::filesystem::create_directories(path("old"));
    std::filesystem::create_directories(path("new"));
    for (const char* const name : {"still.png", "still.bmp", "still.gif"}) {
        std::filesystem::copy_file(media(name), path("old/") + name);
    }
    moduleTarnwick::OpenDroppedFiles({path("old/still.png"), path("old/still.bmp"), path("old/still.gif")});
    const std::string project = saved("film.qpj");
    const std::string before = bytesOf(project);
    std::filesystem::rename(path("old/still.png"), path("new/still.png"));
    std::filesystem::rename(path("old/still.gif"), path("new/still.gif"));

    platform.answers = {MessageAnswer::kNo}; // declined
    openByDialogue(project);
    EXPECT_EQ(lastMessage(), "File \"" + path("old/still.png") + "\" missing. Unable to open project.");
    EXPECT_EQ(flagsOfProject(), "failed started");
    EXPECT_EQ(std::string(forms::mdiTarnwick.sbr.Panel(1)), "Error");

    platform.answers = {MessageAnswer::kYes}; // the dialogue is cancelled
    openByDialogue(project);
    EXPECT_EQ(lastMessage(), "Unable to open project. One or more files in the project were not found.");
    EXPECT_EQ(flagsOfProject(), "failed started");

    platform.messages.clear();
    platform.requests.clear();
    platform.answers = {MessageAnswer::kYes, MessageAnswer::kYes};
    platform.chosenFiles = {project, path("new/still.gif"), path("new/still.png"), path("new/still.gif")};
    mdiTarnwick::mnuFileOpenProject_Click();
    ASSERT_EQ(platform.messages.size(), 3u);
    EXPECT_EQ(platform.messages[0].text,
              "File \"" + path("old/still.png") + "\" not found. Do you want to search for this file yourself?");
    EXPECT_EQ(platform.messages[1].text, "Please select the required file.");
    EXPECT_EQ(platform.requests.back().folder, path("new")) << "the search goes on where the last one was found";
    EXPECT_EQ(platform.requests.back().filters.size(), 2u);
    EXPECT_EQ(flagsOfProject(), "modified saved started") << "the file names the old places";
    EXPECT_EQ(bytesOf(project), before);
}

TEST_F(ProjectFileTest, FilesAddedAfterASaveAreSaved)
{
    open({"still.png"});
    const std::string project = saved("film.qpj");
    forms::mdiTarnwick.mnuFileRF[0].Caption = media("still.bmp");
    forms::mdiTarnwick.mnuFileRF[0].Enabled = true;
    mdiTarnwick::mnuFileRF_Click(0);
    mdiTarnwick::mnuFileSaveProject_Click();
    openByDialogue(project);
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 2);

    // Only the list grew: its new rows are added to the file that is there.
    moduleTarnwick::OpenResentFile(media("still.gif"));
    state::ProjectModified = false;
    state::SavedFileCount = 2;
    mdiTarnwick::mnuFileSaveProject_Click();
    EXPECT_EQ(flagsOfProject(), "saved started");
    std::filesystem::remove(project); // somebody's doing: what is not there is written again, changed or not
    mdiTarnwick::mnuFileSaveProject_Click();
    openByDialogue(project);
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 3);
}

TEST_F(ProjectFileTest, WhatTheDiskDoesIsToldAndNotReported)
{
    std::filesystem::create_directories(path("folder.qpj"));
    ASSERT_EQ(::mkfifo(path("pipe.qpj").c_str(), 0600), 0);
    int reports = 0;
    frmbug::showDialogue = [&] { ++reports; };
    expectsErrors = true;
    for (const auto& [name, cause] : {std::pair{"unplugged/film.qpj", "film.qpj\" is not there"},
                                      {"folder.qpj", "is no file"},
                                      {"pipe.qpj", "is no file"}}) {
        platform.answers = {MessageAnswer::kNo};
        openByDialogue(path(name));
        EXPECT_TRUE(lastMessage().starts_with("Unable to open project.")) << lastMessage();
        EXPECT_NE(lastMessage().find(cause), std::string::npos) << lastMessage();
    }
    makeFilm("V x0-1000");
    platform.savedFiles = {path("unplugged/film.qpj")};
    mdiTarnwick::mnuFileSaveProject_Click();
    EXPECT_NE(lastMessage().find("is not there"), std::string::npos) << lastMessage();
    frmbug::showDialogue = nullptr;
    EXPECT_EQ(reports, 0);
}

TEST_F(ProjectFileTest, WhatAKilledRunLeftGoesWithTheNextSave)
{
    const project::Staging other; // of a process that saves at the same time
    std::filesystem::create_directories(path(".quillmont-staging-killed"));
    writeBytes(path(".quillmont-staging-killed/project.qpj"), "half of it");
    makeFilm("V x0-1000");
    saved("film.qpj");
    EXPECT_EQ(files(), std::filesystem::path(other.path()).parent_path().filename().string() + " film.qpj");
}

TEST_F(ProjectFileTest, SavesThatCannotBe)
{
    makeFilm("V x0-1000");
    writeBytes(path("taken.xml"), "somebody's");
    writeBytes(path("readonly.qpj"), "old");
    permissions(path("readonly.qpj"), perms::owner_read);
    std::filesystem::create_directories(path("folder.qpj"));
    std::filesystem::create_directories(path("my qpj"));
    const struct {
        std::string name;
        const char* message;
    } cases[] = {
        {"taken.qpj", "A temporary support file by that name already exists. Please specify another filename."},
        {"CAPITALS.QPJ", "A temporary support file by that name already exists. Please specify another filename."},
        {"readonly.qpj", "Unable to save project. The project file is Read Only."},
        {"folder.qpj", "Path/File access error."},
        {"nowhere/film.qpj", "Unexpected error saving project.\r\n\r\nThe folder"},
        {"my qpj/film.qpj", "Unexpected error saving project.\r\n\r\nA project cannot lie in a folder with \"qpj\""},
    };
    expectsErrors = true;
    const std::string before = files();
    for (const auto& [name, message] : cases) {
        SCOPED_TRACE(name);
        platform.savedFiles = {path(name)};
        mdiTarnwick::mnuFileSaveProject_Click();
        EXPECT_EQ(lastMessage().substr(0, std::string(message).size()), message);
        EXPECT_TRUE(state::SaveCancelled);
        EXPECT_EQ(flagsOfProject(), "modified dirty");
        EXPECT_EQ(state::ProjectFilePath, "");
    }
    EXPECT_EQ(files().find(".quillmont"), std::string::npos);
    EXPECT_EQ(bytesOf(path("readonly.qpj")), "old");

    // A name that is taken is asked for again by Save As alone, and a save that wrote nothing leaves all as it was.
    const std::string project = saved("film.qpj");
    state::markModified();
    platform.savedFiles = {path("taken.qpj"), path("taken.qpj")};
    platform.saveRequests.clear();
    mdiTarnwick::mnuFileSaveProjectAs_Click();
    EXPECT_EQ(platform.saveRequests.size(), 3u);
    EXPECT_EQ(lastMessage(), "Invalid Project Name. Please specify a different name.");
    EXPECT_EQ(flagsOfProject(), "modified saved started");
    EXPECT_EQ(state::ProjectFilePath, project);
    EXPECT_TRUE(state::SaveCancelled);
}

/// Every call of the engine that a save makes fails in turn: the old project or the new one, whole.
TEST_F(ProjectFileTest, AFailureAtAnyCallKeepsTheOldProject)
{
    makeFilm("V x0-1000 O 0-500#30 A 0-1000");
    const std::string project = saved("film.qpj");
    const std::string old = bytesOf(project);
    int failures = 0;
    expectsErrors = true;
    for (int step = 1, calls = step; calls >= step; ++step) {
        SCOPED_TRACE(step);
        ASSERT_LT(step, 200);
        writeBytes(project, old);
        calls = 0;
        engineCalls.answer = [&](const std::string&) {
            return ++calls == step ? std::optional(engine::Status(engine::kFailed)) : std::nullopt;
        };
        state::markModified();
        state::ProjectWidth = 400;
        ModuleProject::SaveProject();
        engineCalls.answer = nullptr;
        failures += state::SaveCancelled ? 1 : 0;
        EXPECT_EQ(bytesOf(project) == old, state::SaveCancelled);
        EXPECT_EQ(state::ProjectModified, state::SaveCancelled);
    }
    EXPECT_GT(failures, 5);
}

} // namespace
} // namespace logic_test
