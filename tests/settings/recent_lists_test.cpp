// The recent lists: their menus and what the store holds, over several runs of the program.

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "settings/recent_lists.h"
#include "support/manifest.h"
#include "support/scripted_platform.h"
#include "twcore/tarnwick_timeline.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace recent_lists_test {
namespace {

using namespace ModuleSettings;

std::string inWords(const std::vector<Menu>& menu)
{
    std::string words;
    for (const Menu& item : menu) {
        words += item.Caption.get() + (item.Enabled ? " " : "(off) ");
    }
    return words;
}

class RecentListsTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    }
    void TearDown() override { engine::Engine.reset(); }

    /// The program ends and starts again over the same store.
    void restart()
    {
        state::reset();
        forms::mdiTarnwick.mnuFileRF = std::vector<Menu>(1);
        forms::mdiTarnwick.mnuFileRP = std::vector<Menu>(1);
        GetResentFilesFromReg();
        GetResentProjectFilesFromReg();
    }
    static void openProject(const std::string& path)
    {
        state::NewRecentProject = path;
        UpdateResentProjectMenu();
    }
    /// The entries of a section, in order.
    std::string stored(const std::string& section) const
    {
        std::string found;
        const std::string prefix = "Quillmont 1.1/" + section + "/";
        for (const auto& [key, value] : platform.settings) {
            if (key.starts_with(prefix)) {
                found += key.substr(prefix.size()) + "=" + value + " ";
            }
        }
        return found;
    }

    testsupport::ScriptedPlatform platform;
    const std::vector<Menu>& files = forms::mdiTarnwick.mnuFileRF;
    const std::vector<Menu>& projects = forms::mdiTarnwick.mnuFileRP;
};

TEST_F(RecentListsTest, AFreshStoreShowsEmpty)
{
    restart();
    EXPECT_EQ(inWords(files), "Empty(off) ");
    EXPECT_EQ(inWords(projects), "Empty(off) ");
    EXPECT_EQ(stored("Recent Files"), "File= ");
    EXPECT_EQ(stored("Recent Projects"), "Project= ");
}

TEST_F(RecentListsTest, FourShowTheNewestFirst)
{
    restart();
    std::string trace;
    for (const char* const path : {"A", "B", "C", "D", "E"}) {
        openProject(path);
        trace += inWords(projects) + "| ";
    }
    EXPECT_EQ(trace, "A | B A | C B A | D C B A | E D C B | ");
    EXPECT_EQ(stored("Recent Projects"), "Project0=E Project1=D Project2=C Project3=B ");
    EXPECT_EQ(state::RecentProjectPaths.size(), 5u) << "the list grows for the whole run";

    // Only the newest comes back; the next one overwrites the others.
    restart();
    EXPECT_EQ(inWords(projects), "E ");
    openProject("F");
    EXPECT_EQ(stored("Recent Projects"), "Project0=F Project1=E ");

    openProject("");
    EXPECT_EQ(inWords(projects), "F E ");
    EXPECT_TRUE(std::filesystem::exists(platform.folder + "/ErrLog.asr")) << "logged, and nothing is shown";
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(RecentListsTest, FilesComeFromTheEndOfTheMediaList)
{
    platform.settings = {{"Quillmont 1.1/Recent Files/File0", "A"},
                         {"Quillmont 1.1/Recent Files/File1", "B"},
                         {"Quillmont 1.1/Recent Files/File3", "D"}};
    restart();
    EXPECT_EQ(inWords(files), "A B ") << "a gap ends the list";

    // A path longer than the first buffer comes whole.
    std::filesystem::path folder = platform.folder;
    for (int i = 0; i < 3; ++i) {
        folder /= std::string(200, static_cast<char>('x' + i));
    }
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "ü & \"b\".wav").string();
    std::filesystem::copy_file(testmedia::mediaFolder() / "mono-8k-u8.wav", path);
    engine::Handle file = 0;
    EXPECT_FALSE(engine::Engine->OpenFile(path, file).failed());
    state::FileCollection.Add(file);
    UpdateResentFileMenu();
    EXPECT_EQ(inWords(files), path + " B A ") << "the list is read backwards, also what came from the store";
    EXPECT_EQ(stored("Recent Files"), "File0=" + path + " File1=B File2=A ");
}

TEST_F(RecentListsTest, WithoutAFileThePersonIsToldOnce)
{
    restart();
    UpdateResentFileMenu();
    ASSERT_EQ(platform.messages.size(), 1u);
    EXPECT_EQ(platform.messages[0].text, "File not found.");
    state::FileNotFoundShown = true;
    UpdateResentFileMenu();
    EXPECT_EQ(platform.messages.size(), 1u);
    EXPECT_EQ(inWords(files), "Empty(off) ");
    EXPECT_FALSE(std::filesystem::exists(platform.folder + "/ErrLog.asr"));
}

} // namespace
} // namespace recent_lists_test
