// Editing by hand: clips are dragged, resized and nudged on their rows, and shuffled in the list.

#include "screens/screen_harness.h"

#include "history/ModuleHistory.h"

#include <QListWidget>
#include <QMouseEvent>
#include <QTabBar>
#include <QTreeView>
#include <QWindow>

namespace screens_test {
namespace {

class EditScreen : public TwoFilmScreen {
protected:
    QRect nodeRect(int track, int item) const
    {
        const auto& list = find<QTreeView>("tvwTimeline");
        const QAbstractItemModel& nodes = *list.model();
        const QModelIndex trackNode = nodes.index(track, 0, nodes.index(0, 0));
        return list.visualRect(item < 0 ? trackNode : nodes.index(item, 0, trackNode));
    }
    /// Drags one node of the list over another; true when the pointer says that it may be dropped there.
    bool holdNode(QRect from, QRect over)
    {
        QWidget& list = *find<QTreeView>("tvwTimeline").viewport();
        press(list, from.center());
        moveTo(list, (from.center() + over.center()) / 2 + QPoint(12, 0));
        moveTo(list, over.center());
        return list.cursor().shape() == Qt::DragMoveCursor;
    }
    bool dragNode(QRect from, QRect to)
    {
        const bool isAllowed = holdNode(from, to);
        release(*find<QTreeView>("tvwTimeline").viewport(), to.center());
        return isAllowed;
    }
};

TEST_F(EditScreen, AClipIsDraggedOutAndIntoTheGapAgain)
{
    drag(video(), {600, middle()}, 150);
    EXPECT_EQ(barEnd("picVideo0"), 850);
    EXPECT_EQ(status(4), "0:00:06.500 - 0:00:08.500");
    drag(video(), {750, middle()}, -400); // as far as the other one
    EXPECT_EQ(barEnd("picVideo0"), 700);
    EXPECT_EQ(barEnd("picAudio0"), 504);
}

TEST_F(EditScreen, AHandThatShakesMovesNothingAndEscapePutsBack)
{
    drag(video(), {600, middle()}, 2);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
    press(video(), {600, middle()});
    moveTo(video(), {700, middle()});
    EXPECT_EQ(barEnd("picVideo0"), 800);
    key(Qt::Key_Z, Qt::ControlModifier); // no command in the middle of it
    EXPECT_EQ(barEnd("picVideo0"), 800);
    key(Qt::Key_Escape);
    EXPECT_EQ(barEnd("picVideo0"), 700);
    moveTo(video(), {720, middle()});
    release(video(), {720, middle()});
    EXPECT_EQ(barEnd("picVideo0"), 700);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
}

TEST_F(EditScreen, AVeryShortClickLeavesNothingStanding)
{
    drag(video(), {600, middle()}, 100);
    ASSERT_EQ(ModuleHistory::HistoryIndex, 1);
    const struct {
        const char* widget;
        QPoint at;
    } clicks[] = {{"picVideo0", {790, middle()}}, {"picVideo0", {100, middle()}}, {"picVideo0", {797, 3}},
                  {"picAudio0", {100, middle()}}, {"picScale", {650, 5}},         {"picVideo0", {100, middle()}},
                  {"imgSliderHandle", {5, 5}},    {"picVideo0", {797, 3}},        {"picVideo0", {100, middle()}},
                  {"imgSliderHandle", {5, 5}}};
    for (const auto& [name, at] : clicks) {
        SCOPED_TRACE(name + std::string(" at ") + std::to_string(at.x()));
        tap(find(name), at);
        EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
        const int slider = find("imgSliderHandle").x();
        moveTo(video(), {300, middle()}); // nothing hangs on the pointer
        EXPECT_EQ(barEnd("picVideo0"), 800);
        EXPECT_EQ(find("imgSliderHandle").x(), slider);
    }
    tap(*find<QTreeView>("tvwTimeline").viewport(), nodeRect(0, 1).center());
    EXPECT_EQ(status(4), "0:00:06.000 - 0:00:08.000");
    EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 700) << "the step before the clicks is the newest";
}

TEST_F(EditScreen, ACommandInTheTurnOfAClickRunsBehindIt)
{
    drag(video(), {600, middle()}, 100);
    click(find("picScale"), {100, 5}); // the click on the clip brings the slider to it
    tap(video(), {700, middle()}, [this] { QTest::keyClick(&video(), Qt::Key_Z, Qt::ControlModifier); });
    EXPECT_EQ(barEnd("picVideo0"), 700);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 800);
}

TEST_F(EditScreen, WhatADragOfTheRangeHasSaidGoesWithTheRange)
{
    key(Qt::Key_F5);
    drag(find("imgEndSelHandle"), {5, 5}, 30);
    EXPECT_EQ(status(), "Reposition the end selection slider");
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 570);
    EXPECT_EQ(status(), "Ready");
}

TEST_F(EditScreen, APictureIsTrimmedAndDeletedWithItsSound)
{
    click(video(), {100, middle()});
    key(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    click(find("picScale"), {300, 5});
    choose("&Edit", "Trim End to S&lider");
    EXPECT_EQ(barEnd("picAudio0"), 300);
    EXPECT_EQ(barEnd("picVideo0"), 700) << "nothing else has moved";
    window->activateWindow(); // this platform leaves it to the menu, and only in an active one do keys run commands
    ASSERT_TRUE(until([&] { return window->isActiveWindow(); }));
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picAudio0"), -1);
    EXPECT_EQ(barEnd("picVideo0"), 400) << "and the gap of the trim is still there";
    find<QTabBar>("tbsTools").setCurrentIndex(2);
    settle();
    const auto& history = find<QListWidget>("lvwHistory");
    ASSERT_EQ(history.count(), 2);
    for (const int row : {0, 1}) {
        EXPECT_EQ(history.item(row)->text(), row == 0 ? "Trim" : "Close Gap");
        const QImage picture = history.item(row)->icon().pixmap(16).toImage();
        QImage blank(picture.size(), picture.format());
        blank.fill(Qt::transparent);
        EXPECT_FALSE(picture == blank);
    }
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picAudio0"), 504);
    EXPECT_EQ(barEnd("picVideo0"), 700);
    choose("&Edit", "Trim End to S&lider"); // nothing is selected any more
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
}

TEST_F(EditScreen, AClipIsResizedByItsCorner)
{
    moveTo(video(), {695, 4});
    EXPECT_EQ(video().cursor().shape(), Qt::SizeHorCursor);
    drag(video(), {695, 4}, 100);
    EXPECT_EQ(barEnd("picVideo0"), 800);
    EXPECT_EQ(status(4), "0:00:05.000 - 0:00:08.000");
    key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 700);
}

TEST_F(EditScreen, ArrowKeysNudgeWhatIsSelected)
{
    click(video(), {600, middle()});
    EXPECT_TRUE(video().hasFocus());
    const int slider = find("picSlider").x();
    key(Qt::Key_Right);
    EXPECT_EQ(barEnd("picVideo0"), 705);
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(barEnd("picVideo0"), 704);
    EXPECT_EQ(find("picSlider").x(), slider);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
}

TEST_F(EditScreen, NodesAreShuffledInTheList)
{
    const std::string before = tree();
    EXPECT_TRUE(holdNode(nodeRect(0, 1), nodeRect(0, 0)));
    EXPECT_EQ(status(4), "0:00:05.000 - 0:00:07.000") << "what is dragged is selected";
    key(Qt::Key_Escape);
    release(*find<QTreeView>("tvwTimeline").viewport(), nodeRect(0, 0).center());
    EXPECT_EQ(tree(), before);

    EXPECT_TRUE(dragNode(nodeRect(0, 1), nodeRect(0, 0)));
    EXPECT_EQ(tree(), "Video[no-sound.mp4 mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_EQ(barEnd("picVideo0"), 700);
    EXPECT_FALSE(dragNode(nodeRect(3, 0), nodeRect(0, 0))); // sound does not become picture
    EXPECT_TRUE(dragNode(nodeRect(3, 0), nodeRect(4, -1)));
    EXPECT_EQ(tree(), "Video[no-sound.mp4 mpeg4.avi] Effects[] Overlays[] Audio 1[] Audio 2[mpeg4.avi]");
    EXPECT_EQ(barEnd("picAudio0"), -1);
    EXPECT_EQ(barEnd("picAudio1"), 504);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 2);
}

} // namespace
} // namespace screens_test
