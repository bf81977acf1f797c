// Opening: one file, several, from the recent list, dropped; what the person reads meanwhile, and what goes wrong.

#include "media/media_list_harness.h"

#include "core/platform.h"
#include "media/open_dialogue.h"

namespace logic_test {
namespace {

using namespace std::string_literals;

class OpeningTest : public MediaListTest {
protected:
    /// The dialogue's answer for several names of one folder.
    void choose(const std::string& folder, std::initializer_list<std::string> names)
    {
        std::string answer = folder;
        for (const std::string& name : names) {
            answer += '\0' + name;
        }
        platform.chosenFiles.push_back(answer);
    }
    static void expectIdle(const char* status)
    {
        EXPECT_EQ(statusText(), status);
        EXPECT_EQ(forms::mdiTarnwick.MousePointer, 0);
        EXPECT_FALSE(forms::mdiTarnwick.pbarMain.Visible);
        EXPECT_FALSE(state::BusyOpening);
    }
};

TEST_F(OpeningTest, OneFile)
{
    open({"still.bmp"});
    platform.chosenFiles = {media("mpeg4.avi"), media("mpeg4.avi")};
    state::ProjectModified = false;
    mdiTarnwick::mnuFileOpen_Click();
    EXPECT_EQ(rows(), "still.bmp mpeg4.avi*<");
    expectIdle("Selected file: \"mpeg4.avi\". Total Files in Media List: 2.");
    EXPECT_EQ(recentFiles(), "mpeg4.avi still.bmp");
    EXPECT_TRUE(state::ProjectModified);
    EXPECT_EQ(takeMessages(), "");

    // Opened twice it has two rows, and stands once in the recent list.
    mdiTarnwick::mnuFileOpen_Click();
    EXPECT_EQ(rows(), "still.bmp mpeg4.avi mpeg4.avi*<");
    EXPECT_EQ(recentFiles(), "mpeg4.avi still.bmp");

    const OpenFileRequest& asked = platform.requests.at(0);
    EXPECT_EQ(asked.filters.size(), 6u);
    EXPECT_EQ(asked.filters[3].name, "All supported Media Files");
    EXPECT_EQ(asked.filterIndex, 4);
    EXPECT_TRUE(asked.multiple);
    EXPECT_EQ(asked.bufferLength, 3000u);

    const OpenFileRequest searched = ::media::searchMediaRequest("/where the last one was");
    ASSERT_EQ(searched.filters.size(), 2u);
    EXPECT_EQ(searched.filters[0].name + ", " + searched.filters[1].name, "All supported Media Files, All Files (*.*)");
    EXPECT_EQ(searched.filters[0].patterns, asked.filters[3].patterns);
    EXPECT_EQ(searched.filterIndex, 1);
    EXPECT_EQ(searched.folder, "/where the last one was");
    EXPECT_FALSE(searched.multiple);
}

TEST_F(OpeningTest, WhatStopsASingleFile)
{
    const std::string gone = platform.folder + "/gone.avi";
    struct Case {
        const char* what;
        std::string chosen; // empty: the dialogue raises the error
        std::int32_t error; // of the dialogue
        const char* status;
        const char* messages;
        const char* logged; // under this name
    };
    const Case cases[] = {
        {"refused", media("bad/no-moov.mp4"), 0, "Opening file...",
         "[Unable to open file - \"bad/no-moov.mp4\".|The file format is invalid.]", nullptr},
        {"missing", gone, 0, "Opening file...", "[Unable to open file.]", nullptr},
        {"cancelled", "", 32755, "Done", "", nullptr},
        {"no object", "", 91, "Done", "", nullptr},
        {"too many names", "", 20476, "Done", "[You have selected too many files to open. Please select fewer files.]",
         nullptr},
        {"a property out of range", "", 380, "Done", "", "OnFileOpenClick*"},
        {"anything else", "", 7, "Done", "", "OnFileOpenClick"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        platform.chosenFiles = {c.chosen};
        if (c.error != 0) {
            platform.dialogErrors = {c.error};
        }
        mdiTarnwick::mnuFileOpen_Click();
        expectIdle(c.status);
        EXPECT_EQ(takeMessages(), c.messages);
        EXPECT_EQ(rows(), "");
        EXPECT_EQ(error_log::read().empty(), c.logged == nullptr);
        EXPECT_NE(error_log::read().find(c.logged != nullptr ? c.logged : ""), std::string::npos);
        error_log::remove();
    }
}

TEST_F(OpeningTest, SeveralFiles)
{
    open({"names/UPPER.MP4", "cbr.mp3"});
    choose(testmedia::mediaFolder().string(), {"mpeg4.avi", "bad/text.avi", "gone.avi", "cbr.mp3", "still.gif"});
    std::vector<std::int32_t> steps;
    platform.whileEventsRun = [&] {
        // On a slow disk events run while a file is tried as well.
        if (seen.empty() || seen.back() != statusText()) {
            seen.push_back(statusText());
            steps.push_back(forms::mdiTarnwick.pbarMain.Value());
        }
        EXPECT_TRUE(forms::mdiTarnwick.pbarMain.Visible);
        EXPECT_EQ(forms::mdiTarnwick.pbarMain.Max(), 5);
        EXPECT_EQ(forms::mdiTarnwick.MousePointer, 11);
        // A second opening is refused without a word.
        mdiTarnwick::mnuFileOpen_Click();
        mdiTarnwick::mnuFileClose_Click();
        mdiTarnwick::mnuFileRF_Click(0);
        moduleTarnwick::OpenDroppedFiles({media("still.bmp")});
        frmMediaList::lvwMediaList_MouseMove();
    };
    mdiTarnwick::mnuFileOpen_Click();
    EXPECT_EQ(platform.requests.size(), 1u);
    EXPECT_EQ(seen, (std::vector{"Opening file 01 of 05 (mpeg4.avi)"s, "Opening file 02 of 05 (text.avi)"s,
                                 "Opening file 03 of 05 (gone.avi)"s, "Opening file 04 of 05 (cbr.mp3)"s,
                                 "Opening file 05 of 05 (still.gif)"s}));
    EXPECT_EQ(steps, (std::vector{1, 2, 3, 4, 5}));
    EXPECT_EQ(takeMessages(), "[Unable to open file - \"bad/text.avi\".|The media type of this file is not recognized.]"
                              "[Unable to open gone.avi.]");
    EXPECT_EQ(rows(), "UPPER.MP4 cbr.mp3 mpeg4.avi cbr.mp3 still.gif*<");
    EXPECT_EQ(recentFiles(), "still.gif mpeg4.avi cbr.mp3 names/UPPER.MP4");
    expectIdle("Selected file: \"still.gif\". Total Files in Media List: 5.");
}

TEST_F(OpeningTest, ANameInAnotherFolderCountsAsRecentOnlyAmongSeveral)
{
    const std::string other = copied("cbr.mp3", "other/cbr.mp3");
    open({"cbr.mp3"});
    moduleTarnwick::OpenDroppedFiles({other});
    EXPECT_EQ(recentFiles(), "cbr.mp3");
    platform.chosenFiles = {other};
    mdiTarnwick::mnuFileOpen_Click();
    EXPECT_EQ(recentFiles(), "other/cbr.mp3 cbr.mp3");
    EXPECT_EQ(rows(), "cbr.mp3 cbr.mp3 cbr.mp3*<");
}

TEST_F(OpeningTest, ACancelKeepsWhatIsOpen)
{
    state::OpeningCancelled = true; // of an opening long past
    choose(testmedia::mediaFolder().string(), {"still.bmp", "still.gif", "still.jpg"});
    platform.whileEventsRun = [&] {
        state::OpeningCancelled = state::OpeningCancelled || forms::mdiTarnwick.pbarMain.Value() == 3;
    };
    mdiTarnwick::mnuFileOpen_Click();
    EXPECT_EQ(rows(), "still.bmp still.gif*<");
    expectIdle("Done");

    moduleTarnwick::CloseAllMediaFiles();
    platform.whileEventsRun = [] { state::OpeningCancelled = true; };
    moduleTarnwick::OpenDroppedFiles({media("still.bmp")});
    EXPECT_EQ(rows(), "");
    expectIdle("Done");
}

TEST_F(OpeningTest, DropsFromManyFoldersInAnyNumber)
{
    std::vector<std::string> paths;
    std::size_t length = 0;
    for (int i = 0; length < 4000; ++i) {
        paths.push_back(copied("still.gif", "folder" + std::to_string(i) + "/" + std::string(90, 'x') + ".gif"));
        length += paths.back().size();
    }
    paths.push_back(media(testmedia::readManifest().back().name)); // a path longer than any fixed buffer
    ASSERT_GT(paths.back().size(), 260u);
    state::ProjectModified = false;
    moduleTarnwick::OpenDroppedFiles(paths);
    EXPECT_EQ(list().Count(), static_cast<std::int32_t>(paths.size()));
    EXPECT_EQ(list().Row(list().Count()).Text, "deep.mp4");
    EXPECT_EQ(forms::frmMediaList.lblInfoDisplay[0].Caption.get(), paths.back());
    EXPECT_TRUE(state::ProjectModified);
    EXPECT_FALSE(state::BusyOpening);
    EXPECT_EQ(takeMessages(), "");
    const auto steps = [&] { // events run more often while a disk is slow
        auto texts = seen;
        return static_cast<std::size_t>(std::ranges::unique(texts).begin() - texts.begin());
    };
    EXPECT_EQ(steps(), paths.size());

    moduleTarnwick::OpenDroppedFiles({});
    EXPECT_EQ(steps(), paths.size());
}

TEST_F(OpeningTest, FromTheRecentList)
{
    const std::string sound = copied("cbr.mp3", "cbr.mp3");
    const std::string still = copied("still.bmp", "still.bmp");
    moduleTarnwick::OpenDroppedFiles({sound, still});
    moduleTarnwick::CloseAllMediaFiles();
    state::ProjectModified = false;
    mdiTarnwick::mnuFileRF_Click(1);
    EXPECT_EQ(rows(), "cbr.mp3");
    EXPECT_EQ(recentFiles(), "still.bmp cbr.mp3");
    EXPECT_TRUE(state::ProjectModified);
    expectIdle("Done");

    fs::copy_file(media("bad/text.avi"), sound, fs::copy_options::overwrite_existing);
    mdiTarnwick::mnuFileRF_Click(1);
    expectIdle("Opening files...");
    EXPECT_EQ(takeMessages(), "[Unable to open file - \"cbr.mp3\".|The media type of this file is not recognized.]");
    fs::remove(still);
    mdiTarnwick::mnuFileRF_Click(0);
    expectIdle("Opening files...");
    EXPECT_EQ(takeMessages(), "[File not found.]");
    EXPECT_TRUE(state::FileNotFoundShown);
    mdiTarnwick::mnuFileRF_Click(7);
    EXPECT_EQ(rows(), "cbr.mp3");
}

TEST_F(OpeningTest, AnEngineThatFailsLeavesRowsAndFilesInStep)
{
    expectsErrors = true;
    open({"still.bmp"});
    for (const char* const call : {"GetFileError", "OpenFile", "OpenStream", "SelectStream", "IsAudio", "GetDuration",
                                   "GetFileName", "OpenFileInfo"}) {
        for (int nth = 1; nth <= 3; ++nth) {
            SCOPED_TRACE(call + std::to_string(nth));
            engineCalls.failCall({call}, nth);
            moduleTarnwick::OpenDroppedFiles({media("mpeg4.avi"), media("cbr.mp3")});
            engineCalls.failCall({}, 0);
            rows();
            EXPECT_FALSE(state::BusyOpening);
            EXPECT_EQ(forms::mdiTarnwick.MousePointer, 0);
            EXPECT_FALSE(forms::mdiTarnwick.pbarMain.Visible);
        }
    }
    moduleTarnwick::CloseAllMediaFiles();
    EXPECT_EQ(state::StreamCollection.Count(), 0);
}

} // namespace
} // namespace logic_test
