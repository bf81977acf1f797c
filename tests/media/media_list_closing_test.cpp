// Closing files, also those that lie on the timeline.

#include "media/media_list_harness.h"

#include "engine/ITWKeyTransition.h"

namespace media_list_test {
namespace {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::kFalse;

// The timeline of these tests, of three files: A and B with picture and sound, S with sound alone.
//
//     Video    A B A     effects over the first A and over B
//     Overlay  B A       each with its key
//     Audio 1  S A       Audio 2 is empty
class ClosingTest : public MediaListTest {
protected:
    void SetUp() override
    {
        MediaListTest::SetUp();
        open({"mpeg4.avi", "h264.mp4", "stereo-48k.wav"});
        const Handle a = state::StreamCollection.Item(1);
        const Handle aSound = state::StreamCollection.Item(2);
        const Handle b = state::StreamCollection.Item(3);
        const Handle s = state::StreamCollection.Item(5);
        names = {{a, "A"}, {aSound, "a"}, {b, "B"}, {s, "s"}};
        append(state::TrackCollection.Item(1), {a, b, a});
        append(state::TrackCollection.Item(2), {s, aSound});
        append(state::OverlayTrack, {b, a});
        Bool16 ok = kFalse;
        check(timelineCalls->AddEffectAt(state::TrackCollection.Item(1), "Blur", 1000, 2000, ok));
        check(timelineCalls->AddEffectAt(state::TrackCollection.Item(1), "Gray", 6000, 7000, ok));
        for (std::int16_t seq = 0; seq < 2; ++seq) {
            check(timelineCalls->AddTransitionAt(state::OverlayTrack, "DxtKey", seq * 5000, seq * 5000 + 5000, ok));
            check(engine::EngineAs<engine::ITWKeyTransition>()->SetKeyColor(
                state::OverlayTrack, seq, static_cast<std::int16_t>(seq + 1), 0, 0, ok));
        }
        state::ProjectModified = false;
    }
    void append(Handle track, std::initializer_list<Handle> streams)
    {
        for (const Handle stream : streams) {
            Bool16 ok = kFalse;
            check(timelineCalls->AppendSource(track, stream, -1, ok));
            ASSERT_NE(ok, kFalse);
        }
    }
    std::string trackText(Handle track)
    {
        std::string text;
        engine::Milliseconds start = 0;
        engine::Milliseconds stop = 0;
        Bool16 ok = kFalse;
        for (std::int16_t seq = 0; check(timelineCalls->GetSourceTimes(track, seq, start, stop, ok)), ok != kFalse;
             ++seq) {
            Handle stream = 0;
            check(timelineCalls->GetSourceStream(track, seq, stream));
            text += " " + names[stream] + "@" + std::to_string(start);
        }
        for (std::int16_t seq = 0; check(timelineCalls->GetEffectTimes(track, seq, start, stop, ok)), ok != kFalse;
             ++seq) {
            text += " fx@" + std::to_string(start);
        }
        for (std::int16_t seq = 0; check(timelineCalls->GetTransitionTimes(track, seq, start, stop, ok)), ok != kFalse;
             ++seq) {
            std::int16_t red = 0;
            check(engine::EngineAs<engine::ITWKeyTransition>()->GetKeyRed(track, seq, red));
            text += " key" + std::to_string(red) + "@" + std::to_string(start);
        }
        return text;
    }
    std::string timeline()
    {
        std::string text;
        for (const Handle track : state::TrackCollection) {
            text += trackText(track) + " |";
        }
        return text + trackText(state::OverlayTrack);
    }

    std::map<Handle, std::string> names;
};

constexpr const char* kWhole = " A@0 B@5000 A@10000 fx@1000 fx@6000 | s@0 a@5000 | | B@0 A@5000 key1@0 key2@5000";
constexpr const char* kQuestionOfA =
    "[The file - \"mpeg4.avi\" is being used by the timeline. If you delete this file, all references to it in the "
    "timeline will be permanently removed. Do you wish to proceed with the deletion?]";

TEST_F(ClosingTest, AnsweredNoTheFileStaysAndTheNextRowFollows)
{
    ASSERT_EQ(timeline(), kWhole);
    open({"still.bmp"});
    select({1, 4});
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_EQ(platform.messages.at(0).buttons, MessageButtons::kYesNo);
    EXPECT_EQ(takeMessages(), kQuestionOfA);
    EXPECT_EQ(rows(), "mpeg4.avi* h264.mp4 stereo-48k.wav<");
    EXPECT_EQ(state::StreamCollection.Count(), 5);
    EXPECT_EQ(timeline(), kWhole);
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
    EXPECT_EQ(timeline(), " B@5000 fx@1000 fx@6000 | s@0 | | B@0 key1@0") << "nothing moves up";

    EXPECT_EQ(loadedMs(), 0);
    EXPECT_FALSE(forms::frmMediaList.tmFilePreview.Enabled);
    EXPECT_FALSE(forms::frmMediaList.FilePlaying);
    EXPECT_EQ(forms::frmMediaList.picPreviewSmallCleared, cleared + 1);
    EXPECT_EQ(forms::frmMediaList.lblFile.Caption.get() + forms::frmMediaList.lblInfoDisplay[0].Caption.get(), "");

    // The other one leaves the video track bare: its effects go too.
    select({1});
    platform.answers = {MessageAnswer::kYes};
    mdiTarnwick::mnuFileClose_Click();
    EXPECT_EQ(timeline(), " | s@0 | |");
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
    EXPECT_EQ(timeline(), " | | |");
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
        EXPECT_EQ(timeline(), kWhole) << call;
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
    EXPECT_EQ(timeline(), kWhole) << "emptying the timeline is another matter";
}

} // namespace
} // namespace media_list_test
