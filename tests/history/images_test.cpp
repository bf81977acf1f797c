// Images of the timeline: there and back, through failing calls, with files that were closed meanwhile.

#include "support/logic_harness.h"

#include "core/forms/frmMediaList.h"
#include "media/moduleTarnwick.h"

#include <malloc.h>

namespace logic_test {
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

class ImagesTest : public LogicTest {
protected:
    /// All kinds of items, with gaps, stretched, trimmed, with modes, out of their medium.
    void fill() { put(kFull); }
    static inline const std::string kFull =
        "V 0-1000=0-700m2 1000-4500=300-1000 b6000-6011=-500-200m3 E 500-1500 Wave1500-2500 TenLetters4000-5000"
        " O 200-900=100-800m1#30 2000-2300=0-700#31 A 0-500=4000-4700 t700-9000=0-700 B 100-800=10-710";
};

TEST_F(ImagesTest, OverlayWithoutTransition)
{
    put("O 0-100#1 100-200");
    const std::string before = text();
    command("Clear", [] { EmptyTimeline(); });
    Undo();
    EXPECT_EQ(text(), before);
}

TEST_F(ImagesTest, ACallThatFailsOnceLosesNothing)
{
    expectsErrors = true;
    fill();
    command("Paste", [this] { put("B 1000-2000"); });
    const std::string after = text();
    for (const bool isUndo : {true, false}) {
        for (int nth = 1;; ++nth) {
            engineCalls.failCall(kCalls, nth);
            (isUndo ? OnEditUndoClick : OnEditRedoClick)();
            const bool hasFailed = !engineCalls.failsLater();
            engineCalls.failCall({}, 0);
            ASSERT_EQ(text(), isUndo ? kFull : after) << "call " << nth;
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
        ASSERT_EQ(text(), kFull) << "call " << nth;
        Redo();
        ASSERT_EQ(text(), kFull) << "call " << nth;
        Undo();
    }
}

TEST_F(ImagesTest, WithoutAWholeImageNothingHappens)
{
    fill();
    command("Cut", [] {});
    command("Paste", [this] { put("B 1000-2000"); });
    const std::string full = text();
    HistoryCollection.Item(2).SetWhole(false);
    OnEditUndoClick();
    click(2);
    EXPECT_EQ(text(), full);
    EXPECT_EQ(history(), "Cut Paste | 2/2");
    click(1); // leads past it
    EXPECT_EQ(text(), kFull);
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
    EXPECT_EQ(text(), kFull);
}

/// A file of the media list with both streams, on the timeline by its picture alone.
TEST_F(ImagesTest, FilesComeBackToTheMediaList)
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    open({"mpeg4.avi", "h264.mp4"});
    const Handle file = state::FileCollection.Item(1);
    const Handle picture = state::StreamCollection.Item(1);
    const auto rowText = [&](std::int32_t place) {
        const ListItem& row = list.Row(place);
        return row.Text + " " + std::to_string(row.Icon) + " " + row.SubItems[2] + row.SubItems[3];
    };
    const std::string row = rowText(1);
    engine::Bool16 ok = engine::kFalse;
    command("AddToTimeline", [&] { check(timelineCalls->AppendSource(video(), picture, 0, ok)); });
    const std::string before = text();
    command("Delete", [&] { check(timelineCalls->RemoveSource(video(), 0, ok)); });
    list.Change(1).Selected = true;
    list.Change(2).Selected = false;
    moduleTarnwick::OnFileCloseClick();
    ASSERT_EQ(list.Count(), 1);

    OnEditUndoClick();
    EXPECT_EQ(text(), before);
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

TEST_F(ImagesTest, TwentySixStepsOverTwoThousandItemsTakeLittleMemory)
{
    for (int i = 0; i < 500; ++i) {
        const std::string item = std::to_string(i * 100) + "-" + std::to_string(i * 100 + 90);
        put("V " + item + "=5-95m" + std::to_string(i % 3) + " E Pixelate" + item + " O " + item + "#1 A " + item);
    }
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 26; ++i) {
        command("Move", [] {});
    }
    EXPECT_LT(mallinfo2().uordblks - before, std::size_t{20'000'000}) << "bytes";
}

} // namespace
} // namespace logic_test
