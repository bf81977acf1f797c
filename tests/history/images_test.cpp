// Images of the timeline: there and back, through failing calls, with files that were closed meanwhile.

#include "history/history_harness.h"

#include "core/forms/frmMediaList.h"
#include "media/moduleTarnwick.h"

#include <chrono>
#include <iostream>
#include <malloc.h>

namespace history_test {
namespace {

using namespace ModuleHistory;

/// Every call that an image is read, removed or rebuilt by.
const std::set<std::string> kCalls = {
    "GetSourceCount",   "GetEffectCount",  "GetSourceTimes",       "GetSourceMediaTimes", "GetSourceStream",
    "GetEffectTimes",   "GetEffectName",   "GetSourceStretchMode", "GetTransitionTimes",  "GetTransitionName",
    "GetKeyRed",        "GetKeyGreen",     "GetKeyBlue",           "RemoveSource",        "RemoveEffect",
    "RemoveTransition", "AppendSource",    "SetSourceTimes",       "SetSourceMediaTimes", "SetSourceStretchMode",
    "AddEffectAt",      "AddTransitionAt", "ClearKeyParameters",   "SetKeyParameter",     "SetKeyColor",
};

class ImagesTest : public HistoryTest {
protected:
    /// All kinds of items, with gaps, stretched, trimmed, with modes, out of their medium.
    void fill()
    {
        add(video(), 0, 1000, 0, 2);
        add(video(), 1000, 4500, 300);
        add(video(), 6000, 6011, -500, 3);
        putEffect(500, 1500, "Blur");
        putEffect(1500, 2500, "Wave");
        putEffect(4000, 5000, "ElevenChars");
        add(state::OverlayTrack, 200, 900, 100, 1);
        add(state::OverlayTrack, 2000, 2300);
        add(audio(1), 0, 500, 4000);
        add(audio(1), 700, 9000);
        add(audio(2), 100, 800, 10);
    }
    static inline const std::string kFull =
        "V 0-1000=0-700p2 1000-4500=300-1000p0 6000-6011=-500-200p3"
        " E 500-1500Blur 1500-2500Wave 4000-5000ElevenChar O 200-900=100-800p1 2000-2300=0-700p0"
        " K 200-900DxtKey#10,20,30 2000-2300DxtKey#10,20,31 A 0-500=4000-4700s0 700-9000=0-700s0 B 100-800=10-710s0";
};

TEST_F(ImagesTest, ThereAndBack)
{
    StoreCurrentTLImage();
    fill();
    ASSERT_EQ(timeline(), kFull);
    check(timelineCalls->SetSourceSelected(video(), 1, engine::kTrue));
    form.chkLockAudio[1].Value = std::int16_t{1};
    RestoreLastTLImage();
    EXPECT_EQ(timeline().find('*'), timeline().rfind('*')) << "an image of nothing adds nothing";

    StoreCurrentTLImage();
    EXPECT_EQ(LastImage.SourceCount, 6);
    EXPECT_EQ(LastImage.EffectCount, 3);
    EXPECT_EQ(LastImage.TransitionCount, 2);
    EmptyTimeline();
    EXPECT_EQ(timeline(), "V E O K A B");
    RestoreLastTLImage();
    EXPECT_EQ(timeline(), kFull) << "and no selected flag";
    EXPECT_EQ(form.chkLockAudio[1].Value, 1);

    command("Clear", [] { EmptyTimeline(); });
    Undo();
    EXPECT_EQ(timeline(), kFull);
    Redo();
    EXPECT_EQ(timeline(), "V E O K A B");
}

TEST_F(ImagesTest, OverlayWithoutTransition)
{
    add(state::OverlayTrack, 0, 100);
    add(state::OverlayTrack, 100, 200);
    engine::Bool16 ok = engine::kFalse;
    check(timelineCalls->RemoveTransition(state::OverlayTrack, 1, ok));
    const std::string before = timeline();
    command("Clear", [] { EmptyTimeline(); });
    Undo();
    EXPECT_EQ(timeline(), before);
}

TEST_F(ImagesTest, ACallThatFailsOnceLosesNothing)
{
    expectsErrors = true;
    fill();
    command("Paste", [this] { add(audio(2), 1000, 2000); });
    const std::string after = timeline();
    for (const bool isUndo : {true, false}) {
        for (int nth = 1;; ++nth) {
            engineCalls.failCall(kCalls, nth);
            (isUndo ? OnEditUndoClick : OnEditRedoClick)();
            const bool hasFailed = !engineCalls.failsLater();
            engineCalls.failCall({}, 0);
            ASSERT_EQ(timeline(), isUndo ? kFull : after) << "call " << nth;
            if (!hasFailed) {
                EXPECT_GT(nth, 100);
                break;
            }
            (isUndo ? OnEditRedoClick : OnEditUndoClick)();
        }
    }
    OnEditUndoClick();

    // The same while images are taken.
    EmptyHistory();
    for (int nth = 1;; ++nth) {
        engineCalls.failCall(kCalls, nth);
        command("Clear", [] {});
        if (engineCalls.failsLater()) {
            break;
        }
        EmptyTimeline();
        Undo();
        ASSERT_EQ(timeline(), kFull) << "call " << nth;
        Redo();
        ASSERT_EQ(timeline(), kFull) << "call " << nth;
        Undo();
    }
}

TEST_F(ImagesTest, WithoutAWholeImageNothingHappens)
{
    fill();
    command("Cut", [] {});
    command("Paste", [this] { add(audio(2), 1000, 2000); });
    const std::string full = timeline();
    HistoryCollection.Item(2).SetWhole(false);
    OnEditUndoClick();
    click(2);
    EXPECT_EQ(timeline(), full);
    EXPECT_EQ(history(), "Cut Paste | 2/2");
    click(1); // leads past it
    EXPECT_EQ(timeline(), kFull);
    EXPECT_EQ(history(), "(Cut) (Paste) | 0/2");
    OnEditRedoClick();
    click(1);
    EXPECT_EQ(history(), "(Cut) (Paste) | 0/2");
    LastImage.IsWhole = false;
    click(2);
    EXPECT_EQ(history(), "(Cut) (Paste) | 0/2");
    HistoryIndex = 7; // entries are missing
    OnEditUndoClick();
    OnEditRedoClick();
    EXPECT_EQ(timeline(), kFull);
}

/// A file of the media list with both streams, on the timeline by its picture alone.
TEST_F(ImagesTest, FilesComeBackToTheMediaList)
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    const auto path = [](const char* name) { return (testmedia::mediaFolder() / name).string(); };
    moduleTarnwick::OpenDroppedFiles({path("mpeg4.avi"), path("h264.mp4")});
    const Handle file = state::FileCollection.Item(1);
    const Handle picture = state::StreamCollection.Item(1);
    const auto rowText = [&](std::int32_t place) {
        const ListItem& row = list.Row(place);
        return row.Text + " " + std::to_string(row.Icon) + " " + row.SubItems[2] + row.SubItems[3];
    };
    const std::string row = rowText(1);
    engine::Bool16 ok = engine::kFalse;
    command("AddToTimeline", [&] { check(timelineCalls->AppendSource(video(), picture, 0, ok)); });
    const std::string before = timeline();
    command("Delete", [&] { check(timelineCalls->RemoveSource(video(), 0, ok)); });
    list.Change(1).Selected = true;
    list.Change(2).Selected = false;
    moduleTarnwick::OnFileCloseClick();
    ASSERT_EQ(list.Count(), 1);

    OnEditUndoClick();
    EXPECT_EQ(timeline(), before);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(rowText(2), row);
    EXPECT_EQ(state::FileCollection.Item(2), file);
    EXPECT_EQ(state::StreamCollection.Count(), 4);
    EXPECT_NE(state::StreamCollection.PlaceOf(picture), 0) << "under its old handle";
    EXPECT_TRUE(moduleTarnwick::IsFileHandleReferenced(file));
    OnEditRedoClick();
    OnEditUndoClick();
    EXPECT_EQ(list.Count(), 2) << "once";
}

/// Figures for whoever looks; the bound is that of the house.
TEST_F(ImagesTest, TwoThousandItems)
{
    using Clock = std::chrono::steady_clock;
    const auto bytesInUse = [] { return mallinfo2().uordblks; };
    for (int i = 0; i < 500; ++i) {
        add(video(), i * 100, i * 100 + 90, i, i % 3);
        add(audio(1), i * 100, i * 100 + 90);
        putEffect(i * 100, i * 100 + 50, "Pixelate");
        add(state::OverlayTrack, i * 100, i * 100 + 90);
    }
    form.hsb.SetValue(3);
    const std::string full = timeline();
    const std::size_t before = bytesInUse();
    const auto started = Clock::now();
    constexpr int kEntries = 26;
    for (int i = 0; i < kEntries; ++i) {
        command("Move", [] {});
    }
    const auto stored = Clock::now();
    const std::size_t bytes = bytesInUse() - before;
    OnEditUndoClick();
    const auto undone = Clock::now();
    OnEditRedoClick();
    const auto redone = Clock::now();
    EXPECT_TRUE(timeline() == full); // too long to be printed
    const auto ms = [](Clock::duration time) { return std::chrono::duration<double, std::milli>(time).count(); };
    std::cout << "2,000 items: " << ms(stored - started) / kEntries << " ms a command's two images, undo "
              << ms(undone - stored) << " ms, redo " << ms(redone - undone) << " ms; " << kEntries << " entries take "
              << static_cast<double>(bytes) / 1e6 << " MB\n";
    EXPECT_LT(bytes, std::size_t{20'000'000});
}

} // namespace
} // namespace history_test
