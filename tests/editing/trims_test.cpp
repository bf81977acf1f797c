// Trims, the delete that closes its gap, files put into the film, and a picture with its sound.

#include "support/logic_harness.h"

#include "editing/insert.h"
#include "editing/sound_mates.h"
#include "editing/trim.h"
#include "shell/edit_commands.h"

namespace logic_test {
namespace {

using namespace mdiTarnwick;
using editing::ItemEnd;
using editing::Trim;
using items::RowKind;
constexpr ItemEnd kStart = ItemEnd::kStart;
constexpr ItemEnd kStop = ItemEnd::kStop;
constexpr int kMovie = 1; // rows of the media list, all of five seconds; the movie's sound is 40 ms longer
constexpr int kSound = 2;

class TrimsTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        open({"mpeg4.avi", "stereo-48k.wav", "still.bmp"});
        laid.streams = {{'m', state::StreamCollection.Item(1)}, // the film's picture and sound
                        {'n', state::StreamCollection.Item(2)},
                        {'s', state::StreamCollection.Item(3)},
                        {'a', state::StreamCollection.Item(4)}};
    }
    static auto trim(RowKind row, std::int16_t seq, ItemEnd end, std::vector<Milliseconds> by)
    {
        return [=] {
            auto trim = Trim::begin(items::row(row, 0), seq, end);
            for (const Milliseconds delta : by) {
                trim->moveTo(trim->origin() + delta);
            }
            trim->finish();
        };
    }
    static auto at(Milliseconds pos, void (*command)())
    {
        return [=] {
            moduleTimeline::SetSliderPosition(pos, false);
            command();
        };
    }
    static auto insert(std::set<int> files, RowKind row, Milliseconds pos)
    {
        return [=] {
            for (int place = 1; place <= 3; ++place) {
                forms::frmMediaList.lvwMediaList.Change(place).Selected = files.contains(place);
            }
            moduleTimeline::InsertSelectedFiles(items::row(row, 0), pos);
        };
    }
    static auto overRange(Milliseconds start, Milliseconds stop, void (*command)())
    {
        return [=] {
            showSelection(start, stop);
            command();
        };
    }
};

TEST_F(TrimsTest, AnEndMovesWithWhatItShows)
{
    const Edit cases[] = {
        {"start", "V m0-1000 m1000-3000=1000-3000", trim(RowKind::kVideo, 1, kStart, {9, 500}),
         "V m0-1000 m1500-3000=1500-3000"},
        {"to the item ahead", "V m0-1000 m1500-3000=2000-3500", trim(RowKind::kVideo, 1, kStart, {-2000}),
         "V m0-1000 m1000-3000=1500-3500"},
        {"to the start of its medium", "V m2000-3000=500-1500", trim(RowKind::kVideo, 0, kStart, {-2000}),
         "V m1500-3000"},
        {"to the end of its medium", "V m0-1000=3500-4500 m9000-9500", trim(RowKind::kVideo, 0, kStop, {5000}),
         "V m0-1500=3500-5000 m9000-9500"},
        {"to the item behind", "V m0-1000 m1200-1300", trim(RowKind::kVideo, 0, kStop, {5000}), "V m0-1200 m1200-1300"},
        {"not below 11 ms", "V m0-1000", trim(RowKind::kVideo, 0, kStop, {-5000}), "V m0-11"},
        {"one beyond its medium goes back alone", "A n0-1000=4500-5500", trim(RowKind::kAudio, 0, kStop, {900, -100}),
         "A n0-900=4500-5400"},
        {"at half the speed", "V m0-2000=0-1000", trim(RowKind::kVideo, 0, kStart, {500}), "V m500-2000=250-1000"},
        {"a still keeps its media", "V 0-1000 m8000-9000", trim(RowKind::kVideo, 0, kStop, {9000}),
         "V 0-8000=0-1000 m8000-9000"},
        {"an effect, to the film's end", "V m0-2000 E 500-1000", trim(RowKind::kEffect, 0, kStop, {5000}),
         "V m0-2000 E 500-2000"},
        {"an overlay with its key", "V m0-4000 O m0-1000#30", trim(RowKind::kOverlay, 0, kStart, {100}),
         "V m0-4000 O m100-1000=100-1000#30"},
        {"a picture with its sound", "V m0-1000=1000-2000* A n0-1020=1000-2020* B 0-1000",
         trim(RowKind::kVideo, 0, kStop, {-100}), "V m0-900=1000-1900* A n0-920=1000-1920* B 0-1000"},
        {"as far as both go", "V m0-1000=1000-2000* A n0-1000=1000-2000* n1100-1200",
         trim(RowKind::kVideo, 0, kStop, {500}), "V m0-1100=1000-2100* A n0-1100=1000-2100* n1100-1200"},
        {"ends that are not level", "V m0-1000* A n0-1200*", trim(RowKind::kVideo, 0, kStop, {-100}),
         "V m0-900* A n0-1200*"},
        {"black ahead of the medium stays where it was", "V m0-1000=-500-500 m3000-3500",
         trim(RowKind::kVideo, 0, kStart, {400, 0}), "V m0-1000=-500-500 m3000-3500"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
    setRows("Lv La");
    lay("V m0-1000* A n0-1000*");
    EXPECT_FALSE(Trim::begin(items::row(RowKind::kVideo, 0), 0, kStop));
    setRows("La");
    trim(RowKind::kVideo, 0, kStop, {-100})();
    EXPECT_EQ(text(), "V m0-900* A n0-1000*");
}

TEST_F(TrimsTest, TheEntryIsMadeWithTheFirstChange)
{
    const char* const before = "V m500-1000=500-1000* A n500-1000=500-1000*";
    lay(before);
    command("Move", [&] { check(timelineCalls->SetTrackLink(video(), engine::kTrue)); });
    ModuleHistory::OnEditUndoClick();
    select(video(), 0);
    select(audio(1), 0);
    state::ProjectModified = false;
    for (const int how : {0, 1, 2, 3}) { // not moved; there and back; taken back; a call that fails
        SCOPED_TRACE(how);
        const auto isUntouched = [&] {
            return text() == before && ModuleHistory::CanRedo() && !state::ProjectModified;
        };
        auto held = Trim::begin(items::row(RowKind::kVideo, 0), 0, kStart);
        EXPECT_TRUE(isUntouched());
        if (how == 3) {
            expectsErrors = true;
            engineCalls.failCall({"SetSourceMediaTimes"}, 2);
            EXPECT_FALSE(held->moveTo(700));
        } else if (how != 0) {
            EXPECT_TRUE(held->moveTo(700));
            EXPECT_EQ(history(), "Trim | 1/1");
            EXPECT_EQ(text(), "V m700-1000=700-1000* A n700-1000=700-1000*");
            how == 1 ? void(held->moveTo(500)) : held->takeBack();
        }
        EXPECT_FALSE(held->finish());
        EXPECT_TRUE(isUntouched()) << text() << history();
    }
    auto held = Trim::begin(items::row(RowKind::kVideo, 0), 0, kStart);
    held->moveTo(700);
    ModuleHistory::OnEditUndoClick();
    EXPECT_FALSE(held->moveTo(800)) << "the items are not its any more";
    held->takeBack();
    EXPECT_EQ(unselected(text()), unselected(before));
    held = Trim::begin(items::row(RowKind::kVideo, 0), 0, kStart);
    held->moveTo(700);
    command("Move", [] {});
    held->takeBack();
    EXPECT_EQ(history(), "Trim Move | 2/2") << "and another's step is not its to take back";
}

TEST_F(TrimsTest, ToTheSlider)
{
    const char* const pair = "V m0-1000* m1000-2000* A n0-1000* B 0-1000";
    const Edit cases[] = {
        {"start", pair, at(400, mnuEditTrimStart_Click),
         "V m400-1000=400-1000* m1000-2000* A n400-1000=400-1000* B 0-1000"},
        {"end", pair, at(400, mnuEditTrimEnd_Click), "V m0-400* m1000-2000* A n0-400* B 0-1000"},
        {"at a joint", "V m0-1000* m1000-2000*", at(1000, mnuEditTrimEnd_Click), "V m0-1000* m1000-2000*"},
        {"into a gap", "V m0-1000* m3000-4000=900-1900*", at(2000, mnuEditTrimEnd_Click),
         "V m0-2000* m3000-4000=900-1900*"},
        {"as far as there is", "V m0-1000* m3000-4000=900-1900*", at(2000, mnuEditTrimStart_Click),
         "V m0-1000* m2100-4000*"},
        {"not beyond the neighbour", "V m0-1000* m1000-2000", at(1500, mnuEditTrimEnd_Click), "V m0-1000* m1000-2000"},
        {"behind all", "V m0-1000*", at(2000, mnuEditTrimStart_Click), "V m0-1000*"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
    EXPECT_EQ(history(), " | 0/0");
    EXPECT_TRUE(forms::mdiTarnwick.sbr.Panel(1).get().starts_with("Nothing is trimmed"));
}

TEST_F(TrimsTest, DeleteClosesTheGapThatItMakesAndNoOther)
{
    const char* const full = "V 0-1000 2000-3000 E 0-400 O 700-2000#30 A 0-3000 B 0-3000";
    const Edit cases[] = {
        {"items", "V 0-1000 1000-2000* 2500-3000 E 0-500* 600-700 O 0-100#30* 100-300#31 A 0-500* 700-900",
         mnuEditCloseGap_Click, "V 0-1000 1500-2000 E 100-200 O 0-200#31 A 200-400"},
        {"sound a little longer than its picture", "V m0-500* m540-1000 A n0-540* n540-1000", mnuEditCloseGap_Click,
         "V m0-460 A n0-460"},
        {"as far as there is room", "V m0-500* m520-1000 A n0-540* n540-1000", mnuEditCloseGap_Click,
         "V m0-480 A n0-460"},
        {"not of another file", "V m0-500* m540-1000 A 0-540* n540-1000", mnuEditCloseGap_Click, "V m40-500 A n0-460"},
        {"several of a row", "V 100-200* 300-500* 500-600 700-800*", mnuEditCloseGap_Click, "V 200-300"},
        {"a range", full, overRange(500, 1500, mnuEditCloseGap_Click),
         "V 0-500 1000-2000 E 0-400 O 500-1000=800-1300#30 A 0-500 500-2000=1500-3000 B 0-500 500-2000=1500-3000"},
        {"of slow motion", "V 0-4000=0-1000", overRange(1000, 2000, mnuEditCloseGap_Click),
         "V 0-1000=0-250 1000-3000=500-1000"},
        {"nothing but space", "V 0-500 2500-3000", overRange(1000, 2000, mnuEditCloseGap_Click), "V 0-500 1500-2000"},
        {"nothing", "V 0-500", overRange(1000, 2000, mnuEditCloseGap_Click), "V 0-500"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
    setRows("Lo -b");
    run({"locked and unlinked rows", full, overRange(500, 1500, mnuEditCloseGap_Click),
         "V 0-500 1000-2000 E 0-400 O 700-2000#30 A 0-500 500-2000=1500-3000 B 0-3000"});
    run({"their items", "V 0-500* O 700-900#30* B 0-100* 200-300", mnuEditCloseGap_Click, "O 700-900#30* B 100-200"});
}

TEST_F(TrimsTest, FilesGoInWhereTheHandPoints)
{
    const Edit cases[] = {
        {"picture and sound", "V 0-1000 E 300-600 A 0-1000 B 0-2000", insert({kMovie}, RowKind::kVideo, 400),
         "V 0-400 m400-5400 5440-6040=400-1000 E 300-400 5440-5640 A 0-400 n400-5440 5440-6040=400-1000 "
         "B 0-400 5440-7040=400-2000"},
        {"at a joint", "V 0-1000 1000-2000", insert({kSound}, RowKind::kAudio, 1000), "V 0-1000 6000-7000 A 1000-6000"},
        {"one behind the other", "A 0-1000", insert({kMovie, kSound}, RowKind::kAudio, 0),
         "V m0-5000 A n0-5040 5040-10040 10040-11040"},
        {"in a gap", "V 0-100 900-1000", insert({kMovie}, RowKind::kVideo, 500),
         "V 0-100 m500-5500 5940-6040 A n500-5540"},
        {"an overlay", "V 0-1000 O 0-500#30", insert({kMovie}, RowKind::kOverlay, 200),
         "V 0-200 5200-6000=200-1000 O 0-200#30 m200-5200#0,0,0 5200-5500=200-500#30"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
    lay("V 0-1000 O 0-500#30");
    engine::Bool16 ok = engine::kFalse;
    check(timelineCalls->SetTransitionTimes(state::OverlayTrack, 0, 700, 900, ok));
    insert({kSound}, RowKind::kAudio, 0)(); // an adding brings keys to their overlays
    expectStep("V 0-1000 O 0-500#30!700-900", "V 5000-6000 O 5000-5500#30 A 0-5000");
    setRows("-b -v Le");
    run({"what is not linked, but where it lies", "V 0-1000 E 0-900 B 0-900", insert({kMovie}, RowKind::kVideo, 500),
         "V 0-500 m500-5500 5540-6040=500-1000 E 0-900 A n500-5540 B 0-900"});
    const struct {
        const char* rows;
        RowKind row;
        std::set<int> files;
        const char* message;
    } refusals[] = {
        {"La",
         RowKind::kVideo,
         {kMovie},
         "Please unlock the audio and / or video track(s) before attempting to add this file to the timeline."},
        {"Lv", RowKind::kAudio, {kMovie}, "Track is locked"},
        {"Lo", RowKind::kOverlay, {kMovie}, "Track is locked"},
        {"", RowKind::kOverlay, {kMovie}, "Unable to add to overlay as the video track is empty."},
        {"",
         RowKind::kVideo,
         {},
         "Unable to add to the timeline because no file is selected. Please select a file from the media list."},
        {"", RowKind::kEffect, {kMovie}, ""},
    };
    for (const auto& [rows, row, files, message] : refusals) {
        lay("A 0-100");
        setRows(rows);
        platform.messages.clear();
        insert(files, row, 50)();
        EXPECT_EQ(platform.messages.empty() ? "" : platform.messages.back().text, message);
        EXPECT_EQ(text() + history(), "A 0-100 | 0/0");
    }
}

TEST_F(TrimsTest, WhatFailsHalfWayLeavesNoTrace)
{
    const struct {
        std::function<void()> command;
        const char* call;
        int nth;
    } failures[] = {
        {mnuEditCloseGap_Click, "ShiftSources", 2},
        {overRange(600, 800, mnuEditCloseGap_Click), "InsertTransition", 1},
        {insert({kMovie}, RowKind::kVideo, 700), "InsertSource", 5},
        {at(700, mnuEditTrimEnd_Click), "SetTransitionTimes", 1},
    };
    expectsErrors = true;
    const char* const full = "V 500-1000* 1200-2000 E 200-900 O 100-900#30* A 300-500 600-900*";
    for (const auto& [deed, call, nth] : failures) {
        SCOPED_TRACE(call);
        lay(full);
        moduleTimeline::ShowSelSliders(false);
        engineCalls.failCall({call}, nth);
        deed();
        EXPECT_FALSE(engineCalls.failsLater());
        EXPECT_EQ(unselected(text()), unselected(full));
        EXPECT_EQ(history(), " | 0/0");
        EXPECT_FALSE(state::ProjectModified);
    }
}

TEST_F(TrimsTest, APictureAndItsSound)
{
    const struct {
        const char* before;
        const char* after;
    } cases[] = {
        {"V m0-1000* m1000-2000=1000-2000 A n0-1000 n1000-2000=1000-2000 B 0-1000", "V 10 A 10 B 0"},
        {"V m0-1000 A n0-1000* B n0-1000", "V 1 A 1 B 1"},
        {"V m0-3000* A n0-1000 n1000-2020=1000-2020 n2500-3000", "V 1 A 110"}, // cut, and one moved away
        {"V m0-1000=1000-2000* A n500-1500=1510-2510", "V 1 A 1"},
        {"V m0-1000* A n500-1500", "V 1 A 0"},
        {"V m0-1000* A n0-1000=3000-4000", "V 1 A 1"}, // at the same times, whatever it plays
        {"V m0-2000=0-1000* A n0-2000=0-1000 n2000-3000=1000-2000", "V 1 A 10"},
        {"V m0-1000* E 0-1000 O m0-1000#30 A 0-1000", "V 1 E 0 O 1 A 0"},
    };
    for (const auto& [before, after] : cases) {
        lay(before);
        mnuEditSelectWithSound_Click();
        EXPECT_EQ(flags(), after) << before;
        EXPECT_EQ(history(), " | 0/0");
    }
    lay("V m0-1000 m1000-2000=1000-2000* A n0-1000 n1000-2000=1000-2000* B 0-100*");
    moduleEdit::SelectAloneWithSound(items::row(RowKind::kAudio, 0), 0);
    EXPECT_EQ(flags(), "V 10 A 10 B 0");
    mnuEditSelectWithSound_Click();
    EXPECT_TRUE(forms::mdiTarnwick.sbr.Panel(1).get().starts_with("Nothing more is selected"));
}

} // namespace
} // namespace logic_test
