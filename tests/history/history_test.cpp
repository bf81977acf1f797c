// The history: entries, rows, steps.

#include "support/logic_harness.h"

namespace logic_test {
namespace {

using namespace ModuleHistory;

class StepsTest : public LogicTest {
protected:
    /// Three commands that each add a second to the video track.
    void fill()
    {
        for (const char* const word : {"Cut", "Paste", "Pack"}) {
            command(word, [this] { addSecond(); });
        }
        UpdateTreeView();
        state::ProjectModified = false;
    }
    void addSecond() { put("V " + std::to_string(seconds() * 1000) + "-" + std::to_string(seconds() * 1000 + 1000)); }
    int seconds()
    {
        std::int16_t count = 0;
        check(timelineCalls->GetSourceCount(video(), count));
        return count;
    }
    std::string all() { return history() + " : " + std::to_string(seconds()); }
};

TEST_F(StepsTest, MenusAndList)
{
    fill();
    struct Case {
        const char* what;
        std::function<void()> step;
        const char* after; // rows | index/entries : seconds
    };
    const auto row = [](std::int32_t place) { return [place] { click(place); }; };
    // Each row goes on from the one before it.
    const Case cases[] = {
        {"redo at the newest", OnEditRedoClick, "Cut Paste Pack Timeline Tracks | 3/3 : 3"},
        {"undo removes its row", OnEditUndoClick, "Cut Paste | 2/3 : 2"},
        {"redo of the newest", OnEditRedoClick, "Cut Paste Pack Timeline Tracks | 3/3 : 3"},
        {"the last row", row(3), "Cut Paste (Pack Timeline Tracks) | 2/3 : 2"},
        {"undo now colours", OnEditUndoClick, "Cut (Paste) (Pack Timeline Tracks) | 1/3 : 1"},
        {"redo of a coloured row", OnEditRedoClick, "Cut Paste (Pack Timeline Tracks) | 2/3 : 2"},
        {"the first row", row(1), "(Cut) (Paste) (Pack Timeline Tracks) | 0/3 : 0"},
        {"undo at the start", OnEditUndoClick, "(Cut) (Paste) (Pack Timeline Tracks) | 0/3 : 0"},
        {"over two rows", row(2), "Cut Paste (Pack Timeline Tracks) | 2/3 : 2"},
        {"all of them", row(1), "(Cut) (Paste) (Pack Timeline Tracks) | 0/3 : 0"},
        {"and again", row(3), "Cut Paste Pack Timeline Tracks | 3/3 : 3"},
        {"no such row", row(4), "Cut Paste Pack Timeline Tracks | 3/3 : 3"},
        {"undo", OnEditUndoClick, "Cut Paste | 2/3 : 2"},
        {"undo", OnEditUndoClick, "Cut | 1/3 : 1"},
        {"undo of the first", OnEditUndoClick, " | 0/3 : 0"},
        {"redo without rows shows the first image", OnEditRedoClick, "Cut | 1/3 : 0"},
        {"the next one is right again", OnEditRedoClick, "Cut Paste | 2/3 : 2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const std::string before = all();
        state::ProjectModified = false;
        c.step();
        ASSERT_EQ(all(), c.after);
        EXPECT_EQ(state::ProjectModified, all() != before);
        EXPECT_EQ(CanUndo(), HistoryIndex != 0);
        EXPECT_FALSE(UndoInProgress || RedoInProgress || RowRestored || state::InSelectionUpdate);
        const auto& tracks = form.tvwTimeline.Root().Children;
        EXPECT_EQ(tracks.empty() ? 0U : tracks[0].Children.size(), static_cast<std::size_t>(seconds()));
    }
    // Another command drops what is undone.
    command("Copy", [] {});
    EXPECT_EQ(all(), "Cut Paste Copy | 3/3 : 2");
    EXPECT_FALSE(CanRedo());
    state::InSelectionUpdate = true; // a command is running
    OnEditUndoClick();
    click(1);
    EXPECT_EQ(all(), "Cut Paste Copy | 3/3 : 2");
    state::InSelectionUpdate = false;
}

TEST_F(StepsTest, OperationsThatCameToNothing)
{
    fill();
    command(
        "Repeat", [] {}, false);
    EXPECT_EQ(all(), "Cut Paste Pack Timeline Tracks Repeat Audio | 3/4 : 3");
    command("Copy", [] {});
    EXPECT_EQ(all(), "Cut Paste Pack Timeline Tracks Copy | 4/4 : 3");
    // A press on a row raises the index, and the release takes it back.
    RemoveDisabledEntries();
    AddOperationToHistory("Move");
    ++HistoryIndex;
    DeleteLastEntry();
    EXPECT_EQ(all(), "Cut Paste Pack Timeline Tracks Copy | 4/4 : 3");
    AddOperationToHistory("no such word");
    EXPECT_EQ(all(), "Cut Paste Pack Timeline Tracks Copy | 4/5 : 3");
    EXPECT_EQ(HistoryCollection.Item(5).GetOperationType(), "");
    for (int i = 0; i < 23; ++i) {
        command("Copy", [] {});
    }
    EXPECT_TRUE(history().starts_with("Paste Pack") && history().ends_with(" | 26/26")) << "the oldest row leaves";
    EmptyHistory();
    EXPECT_EQ(all(), " | 0/0 : 3");
    AddOperationToHistory("Cut"); // of the next project: the last image is not one of its own
    EmptyTimeline();
    Redo();
    EXPECT_EQ(all(), "Cut | 0/1 : 0");
}

TEST_F(StepsTest, WordsThatChangeOnRedo)
{
    struct Case {
        const char* word;
        const char* type;
        const char* row;
        const char* redone;
    };
    const Case cases[] = {
        {"AddToTimeline", "Add To Timeline", "Add to Timeline/ADD_TO_TIMELINE", "Add to Timeline/ADD_TO_TIMELINE"},
        {"Effect", "Effect", "Add Effect to Timeline/ADD_EFFECT", "Add Effect to Timeline/ADD_EFFECT"},
        {"Delete", "Delete", "Delete/CLEAR", "Delete/DELETE"},
        {"Clear Effects", "Clear Effect", "Clear Effect Track/CLEAR_EFFECT", ""},
        {"Clear Overlays", "Clear Overlay", "Clear Overlay Track/CLEAR_OVERLAY", ""},
        {"SetKeyColor", "SetKeyColor", "Set Overlay Key Color/OVERLAY_TRANSPARENCY",
         "Set Key Color/OVERLAY_TRANSPARENCY"},
        {"cut", "", "", ""},
    };
    const auto rowText = [] {
        const auto& rows = forms::frmTools.lvwHistory.get();
        return rows.empty() ? std::string() : rows.back().Text + "/" + rows.back().Picture;
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.word);
        EmptyHistory();
        command(c.word, [] {});
        EXPECT_EQ(HistoryCollection.Item(1).GetOperationType(), c.type);
        EXPECT_EQ(rowText(), c.row);
        OnEditUndoClick();
        OnEditRedoClick();
        EXPECT_EQ(rowText(), c.redone);
        EXPECT_EQ(HistoryIndex, 1);
    }
}

TEST_F(StepsTest, ARedoScrollsNoFilmThatNeedsNoBar)
{
    put("V 0-20000");
    moduleScaleRenderer::AdjustScroll();
    form.hsb.SetValue(60);
    command("Delete", [this] { remove(video(), 0); });
    OnEditUndoClick();
    EXPECT_EQ(form.hsb.Value(), 60);
    OnEditRedoClick();
    EXPECT_FALSE(form.hsb.Enabled);
    EXPECT_EQ(form.hsb.Value(), 0);
}

TEST_F(StepsTest, TheViewGoesBackToo)
{
    put("V 0-20000");
    const auto scrolled = [this](int ticks) {
        form.hsb.SetValue(ticks);
        command("Copy", [] {});
    };
    scrolled(40);
    scrolled(60);
    form.hsb.SetValue(5);
    OnEditUndoClick();
    EXPECT_EQ(form.hsb.Value(), 60);
    OnEditUndoClick();
    EXPECT_EQ(form.hsb.Value(), 40);
    OnEditRedoClick();
    EXPECT_EQ(form.hsb.Value(), 40);
    OnEditRedoClick();
    EXPECT_EQ(form.hsb.Value(), 60);
    click(2);
    EXPECT_EQ(form.hsb.Value(), 60);
    OnEditRedoClick();
    EXPECT_EQ(form.hsb.Value(), 0) << "through a row that stayed";
}

} // namespace
} // namespace logic_test
