// What a hand does with keys held: trims, clicks and drops with Alt and Ctrl; drags that leave the view.

#include "screens/screen_harness.h"

#include "core/shared_state.h"
#include "history/ModuleHistory.h"

#include <QMimeData>
#include <QScrollBar>
#include <QSlider>
#include <QTreeView>
#include <QUrl>

namespace screens_test {
namespace {

class GestureScreen : public TwoFilmScreen {
protected:
    void dragWith(Qt::KeyboardModifiers keys, QPoint from, int byX)
    {
        press(video(), from, keys);
        for (const int x : {byX / 2, byX}) {
            moveTo(video(), from + QPoint(x, 0));
        }
        release(video(), from + QPoint(byX, 0), keys);
    }
    /// A file comes over the row and is dropped there; the mark on the way.
    QRect dropOn(const char* name, QPoint at, Qt::KeyboardModifiers keys)
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(QString::fromStdString(media(name)))});
        QDragEnterEvent enter(at - QPoint(50, 0), Qt::MoveAction | Qt::CopyAction, &files, Qt::LeftButton, keys);
        QCoreApplication::sendEvent(&video(), &enter);
        QDragMoveEvent over(at, Qt::MoveAction | Qt::CopyAction, &files, Qt::LeftButton, keys);
        QCoreApplication::sendEvent(&video(), &over);
        settle();
        const QWidget* const mark = video().findChild<QWidget*>("dropMark");
        const QRect place = mark->isVisible() ? mark->geometry() : QRect();
        QDropEvent dropped(at, Qt::MoveAction | Qt::CopyAction, &files, Qt::LeftButton, keys);
        QCoreApplication::sendEvent(&video(), &dropped);
        EXPECT_EQ(dropped.dropAction(), Qt::CopyAction) << "the file stays where it is";
        const int before = rowCount();
        EXPECT_TRUE(until([&] { return rowCount() > before && !state::BusyOpening; }));
        settle();
        EXPECT_FALSE(mark->isVisible());
        return place;
    }
};

TEST_F(GestureScreen, EndsAreTrimmedWithAltOrInTheMode)
{
    dragWith(Qt::AltModifier, {695, middle()}, -50);
    EXPECT_EQ(barEnd("picVideo0"), 650);
    EXPECT_EQ(status(), "Ends at 0:00:06.500");
    dragWith({}, {645, middle()}, 50);
    EXPECT_EQ(barEnd("picVideo0"), 700) << "without Alt it moves";
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 700);

    QAction& mode = find<QAction>("mnuToolsTrimMode");
    mode.trigger();
    settle();
    EXPECT_TRUE(mode.isChecked() && find("trimSign").isVisible());
    moveTo(video(), {690, middle()});
    EXPECT_EQ(video().cursor().shape(), Qt::SizeHorCursor);
    press(video(), {695, 3});
    moveTo(video(), {640, 3});
    EXPECT_EQ(barEnd("picVideo0"), 645) << "shown live";
    key(Qt::Key_Escape);
    release(video(), {640, 3});
    EXPECT_EQ(barEnd("picVideo0"), 700);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
    mode.trigger();
    settle();
    EXPECT_FALSE(find("trimSign").isVisible());
}

TEST_F(GestureScreen, APictureAndItsSoundGoTogether)
{
    click(video(), {250, middle()}, Qt::AltModifier);
    drag(video(), {250, middle()}, 60);
    EXPECT_EQ(barEnd("picVideo0"), 760);
    EXPECT_EQ(barEnd("picAudio0"), 564);
}

TEST_F(GestureScreen, TheSliderGoesOnToACut)
{
    for (const Qt::KeyboardModifiers keys : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
        QWidget& handle = find("imgSliderHandle");
        QWidget& scale = find("picScale");
        press(handle, {5, 5});
        moveTo(scale, {400, 30});
        moveTo(scale, {508, 30});
        release(scale, {508, 30}, keys);
        EXPECT_EQ(status(2), keys ? "0:00:05.040" : "0:00:05.080");
    }
}

TEST_F(GestureScreen, FilesAreDroppedOnARow)
{
    EXPECT_EQ(dropOn("still.bmp", {200, middle()}, {}), QRect());
    EXPECT_EQ(tree(), "Video[mpeg4.avi no-sound.mp4 still.bmp] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_EQ(dropOn("still.gif", {200, middle()}, Qt::ControlModifier).left(), 200);
    EXPECT_EQ(tree(), "Video[mpeg4.avi still.gif mpeg4.avi no-sound.mp4 still.bmp] Effects[] Overlays[] "
                      "Audio 1[mpeg4.avi mpeg4.avi] Audio 2[]");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(dropOn("still.png", {497, middle()}, Qt::ControlModifier).left(), 500) << "drawn to the cut";
    EXPECT_EQ(tree(),
              "Video[mpeg4.avi still.png no-sound.mp4 still.bmp] Effects[] Overlays[] Audio 1[mpeg4.avi mpeg4.avi] "
              "Audio 2[]");
}

TEST_F(GestureScreen, ADoubleClickShowsTheFile)
{
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, video().mapTo(window.get(), QPoint(300, middle())));
    settle();
    EXPECT_TRUE(find<QTreeView>("lvwMediaList").selectionModel()->isRowSelected(0));
    EXPECT_TRUE(status().starts_with("Selected file: \"mpeg4.avi\"")) << status();
    EXPECT_EQ(find<QSlider>("sldFilePreview").value(), 3000);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
}

TEST_F(GestureScreen, ADragGoesOnOutsideTheView)
{
    QWidget& row = video();
    press(row, {600, middle()});
    moveTo(row, {row.width() - 50, middle()});
    auto& bar = find<QScrollBar>("hsb");
    EXPECT_EQ(bar.value(), 0);
    moveTo(row, {row.width() + 5, middle()});
    EXPECT_TRUE(until([&] { return bar.value() > 20; }));
    moveTo(row, {row.width() - 50, middle()});
    settle();
    const int stood = bar.value();
    EXPECT_NEAR(barEnd("picVideo0"), row.width() - 2, 50) << "its middle is under the pointer";
    QTest::qWait(60);
    EXPECT_EQ(bar.value(), stood);
    key(Qt::Key_Escape);
    release(row, {row.width() - 50, middle()});
    EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
}

} // namespace
} // namespace screens_test
