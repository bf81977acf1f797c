// Closing files, also those that lie on the timeline.

#include "media/media_list_harness.h"

namespace logic_test {
namespace {

// The timeline of these tests, of three files: A and B with picture and sound, S with sound alone.
//
//     Video    A B A     effects over the first A and over B
//     Overlay  B A       each with its key
//     Audio 1  S A       Audio 2 is empty
constexpr const char* kWhole = "V m0-5000 b5000-10000 m10000-15000 E 1000-2000 Gray6000-7000 O b0-5000#1 m5000-10000#2 "
                               "A 0-5000 n5000-10000";

class ClosingTest : public MediaListTest {
protected:
    void SetUp() override
    {
        MediaListTest::SetUp();
        open({"mpeg4.avi", "h264.mp4", "stereo-48k.wav"});
        laid.streams = {{'m', state::StreamCollection.Item(1)}, // A with its sound
                        {'n', state::StreamCollection.Item(2)},
                        {'b', state::StreamCollection.Item(3)},
                        {'s', state::StreamCollection.Item(5)}};
        put(kWhole);
        state::ProjectModified = false;
    }
};

constexpr const char* kQuestionOfA =
    "[The file - \"mpeg4.avi\" is being used by the timeline. If you delete this file, all references to it in the "
    "timeline will be permanently removed. Do you wish to proceed with the deletion?]";

TEST_F(ClosingTest, AnsweredNoTheFileStaysAndTheNextRowFollows)
{
    ASSERT_EQ(text(), kWhole);
    open({"still.bmp"});
    select({1, 4});
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_EQ(platform.messages.at(0).buttons, MessageButtons::kYesNo);
    EXPECT_EQ(takeMessages(), kQuestionOfA);
    EXPECT_EQ(rows(), "mpeg4.avi* h264.mp4 stereo-48k.wav<");
    EXPECT_EQ(state::StreamCollection.Count(), 5);
    EXPECT_EQ(text(), kWhole);
    EXPECT_TRUE(state::ProjectModified);
}

TEST_F(ClosingTest, AnsweredYesItsSourcesGoWithTheirKeys)
{
    select({1});
    frmMediaList::lvwMediaList_Click();
    frmMediaList::cmdPlay_Click();
    platform.answers = {MessageAnswer::kYes};
    const std::int32_t cleared = forms::frmMediaList.picPreviewSmallCleared;
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_EQ(takeMessages(), kQuestionOfA);
    EXPECT_EQ(rows(), "h264.mp4< stereo-48k.wav");
    EXPECT_EQ(state::StreamCollection.Count(), 3);
    EXPECT_EQ(text(), "V b5000-10000 E 1000-2000 Gray6000-7000 O b0-5000#1 A 0-5000") << "nothing moves up";

    EXPECT_EQ(loadedMs(), 0);
    EXPECT_FALSE(forms::frmMediaList.tmFilePreview.Enabled);
    EXPECT_FALSE(forms::frmMediaList.FilePlaying);
    EXPECT_EQ(forms::frmMediaList.picPreviewSmallCleared, cleared + 1);
    EXPECT_EQ(forms::frmMediaList.lblFile.Caption.get() + forms::frmMediaList.lblInfoDisplay[0].Caption.get(), "");

    // The other one leaves the video track bare: its effects go too.
    select({1});
    platform.answers = {MessageAnswer::kYes};
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_EQ(text(), "A 0-5000");
}

TEST_F(ClosingTest, AllAtOnceAndNone)
{
    mdiTarnwick::mnuFileClose_Click(); // the last one is selected, and lies on the timeline
    EXPECT_EQ(rows(), "mpeg4.avi h264.mp4 stereo-48k.wav*<");
    select({3});
    frmMediaList::lvwMediaList_Click();
    select({});
    state::ProjectModified = false;
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_TRUE(state::ProjectModified) << "also when nothing was closed";
    EXPECT_EQ(loadedMs(), 5000);

    select({1, 2, 3});
    platform.answers = {MessageAnswer::kYes, MessageAnswer::kYes, MessageAnswer::kYes};
    engineCalls.answer = [](const std::string& operation) {
        return operation == "CoreRoot::CloseFile" ? std::optional(engine::kDone) : std::nullopt;
    };
    platform.messages.clear();
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(state::StreamCollection.Count(), 0);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(platform.messages.size(), 6u);
    EXPECT_EQ(platform.messages.at(5).text, "Unable to close file.");
}

TEST_F(ClosingTest, AFileWhoseUseIsNotKnownStays)
{
    expectsErrors = true;
    select({1});
    platform.answers = {MessageAnswer::kYes};
    for (const char* const call : {"GetStreamFile", "GetSourceCount", "GetSourceStream", "GetFileName"}) {
        engineCalls.failCall({call});
        moduleTarnwick::OnFileCloseClick();
        EXPECT_FALSE(engineCalls.failsLater());
        EXPECT_EQ(rows(), "mpeg4.avi*< h264.mp4 stereo-48k.wav") << call;
        EXPECT_EQ(text(), kWhole) << call;
    }
}

TEST_F(ClosingTest, RowsThatWentMeanwhileEndTheWalk)
{
    select({1, 2});
    platform.answers = {MessageAnswer::kYes};
    engineCalls.failCall({"GetSourceCount"}, 1, engine::Status(engine::kNumberedFailure + 35600));
    moduleTarnwick::OnFileCloseClick();
    EXPECT_EQ(rows(), "mpeg4.avi* h264.mp4*< stereo-48k.wav");
    EXPECT_TRUE(state::ProjectModified);
}

TEST_F(ClosingTest, EverythingWithoutAWord)
{
    expectsErrors = true;
    engineCalls.failCall({"CloseFile"});
    moduleTarnwick::CloseAllMediaFiles();
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(list().SelectedItem, 0);
    EXPECT_EQ(state::StreamCollection.Count(), 0);
    EXPECT_EQ(takeMessages(), "");
    EXPECT_EQ(text(), kWhole) << "emptying the timeline is another matter";
}

} // namespace
} // namespace logic_test
