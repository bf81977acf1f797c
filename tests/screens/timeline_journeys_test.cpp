// The timeline: the selection, zooming, the sliders, bars and the list, the options of rows, the divider.

#include "screens/screen_harness.h"
#include "windowing/painter_canvas.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "shell/view_switches.h"
#include "timeline/moduleBookmarks.h"

#include <QRegularExpression>
#include <QScrollBar>
#include <QSlider>
#include <QToolButton>
#include <QTreeView>

namespace screens_test {
namespace {

class TimelineScreen : public TwoFilmScreen {
protected:
    /// The widget of the tinted shape on a row.
    QWidget& shape(const char* picture)
    {
        auto* const found = find(picture).findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        if (found == nullptr) {
            throw std::runtime_error("the row has no shape");
        }
        return *found;
    }
    QToolButton& option(const char* name) { return find<QToolButton>(name); }
    bool isShown(const char* name) { return find(name).isVisible(); }
};

TEST_F(TimelineScreen, TheSelectionIsShownDraggedAndHidden)
{
    EXPECT_FALSE(isShown("imgEndSelHandle"));
    key(Qt::Key_F5);
    EXPECT_TRUE(isShown("imgStartSelHandle"));
    EXPECT_TRUE(isShown("imgEndSelHandle"));
    EXPECT_TRUE(shape("picVideo0").isVisible());
    EXPECT_TRUE(shape("picAudio0").isVisible());
    EXPECT_FALSE(shape("picAudio1").isVisible()); // an empty track
    const QRect before = shape("picVideo0").geometry();
    EXPECT_EQ(before.width(), 99);

    drag(find("imgEndSelHandle"), {5, 5}, 60);
    EXPECT_EQ(shape("picVideo0").geometry(), before.adjusted(0, 0, 60, 0));
    EXPECT_EQ(shape("picAudio0").width(), before.width() + 60);
    drag(find("imgStartSelHandle"), {2, 5}, 20); // it lies on the main handle's left half
    EXPECT_EQ(shape("picVideo0").geometry(), before.adjusted(20, 0, 60, 0));
    EXPECT_EQ(status(), "Reposition the start selection slider");
    click(option("cmdSelSliders"));
    EXPECT_FALSE(isShown("imgEndSelHandle"));
    EXPECT_FALSE(shape("picVideo0").isVisible());
}

TEST_F(TimelineScreen, AHandleOfTheRangeGoesOnToACutWithCtrl)
{
    click(find("picScale"), {400, 10});
    key(Qt::Key_F5); // from 400 to 500, where the first picture ends
    QWidget& end = find("imgEndSelHandle");
    const auto dragBy = [&](int pixels, Qt::KeyboardModifiers keys) {
        press(end, {5, 5});
        moveTo(end, {5 + pixels, 5});
        release(end, {5, 5}, keys);
        return shape("picVideo0").width() + 1;
    };
    EXPECT_EQ(dragBy(-3, {}), 97);
    EXPECT_EQ(dragBy(-2, Qt::ControlModifier), 100);
    EXPECT_EQ(find<QSlider>("sldSeekBar").maximum(), 5000);
    EXPECT_EQ(dragBy(-20, Qt::ControlModifier), 80) << "too far";
}

TEST_F(TimelineScreen, ZoomingByKeysButtonsAndWheel)
{
    key(Qt::Key_F7);
    EXPECT_EQ(barEnd("picAudio0"), 252);
    key(Qt::Key_F6);
    EXPECT_EQ(barEnd("picAudio0"), 504);
    click(option("cmdZoomOut"));
    EXPECT_EQ(barEnd("picAudio0"), 252);
    click(option("cmdZoomIn"));
    EXPECT_EQ(barEnd("picAudio0"), 504);

    // What lies under the pointer stays there, to a tick of 10 pixels.
    wheel(find("picVideo0"), {480, 10}, 1, Qt::ControlModifier);
    EXPECT_NEAR(barEnd("picAudio0"), 528, 10);
    wheel(find("picScale"), {480, 10}, -1, Qt::ControlModifier);
    EXPECT_NEAR(barEnd("picAudio0"), 504, 10);
    wheel(find("picScale"), {480, 10}, 1, Qt::ControlModifier);
    const int before = find<QScrollBar>("hsb").value();
    wheel(find("picAudio1"), {480, 10}, -1);
    EXPECT_EQ(find<QScrollBar>("hsb").value(), before + 5);
    EXPECT_NEAR(barEnd("picAudio0"), 478, 10);
}

TEST_F(TimelineScreen, TheWheelLeavesATimelineThatNeedsNoBar)
{
    ASSERT_FALSE(find("hsb").isEnabled());
    for (const Qt::KeyboardModifier keys : {Qt::NoModifier, Qt::ControlModifier}) {
        wheel(find("picVideo0"), {480, 10}, -2, keys);
        EXPECT_EQ(find<QScrollBar>("hsb").value(), 0);
    }
    EXPECT_EQ(barEnd("picVideo0"), 350);
}

TEST_F(TimelineScreen, TheListGoesAndComes)
{
    const QRect rows = find("picTimelineBase").geometry();
    choose("&View", "Timeline &List");
    EXPECT_FALSE(isShown("tvwTimeline") || isShown("picVerticalResize"));
    EXPECT_EQ(find("picTimelineBase").geometry(), rows.adjusted(-rows.left(), 0, 0, 0));
    EXPECT_EQ(find("picVideo0").width(), find("picScale").width());
    EXPECT_EQ(barEnd("picVideo0"), 700);
    choose("&View", "Timeline &List");
    EXPECT_TRUE(isShown("tvwTimeline") && isShown("picVerticalResize"));
    EXPECT_EQ(find("picTimelineBase").geometry(), rows);
}

TEST_F(TimelineScreen, AMarkerIsSetAndRemovedAndNoneStandsUncalled)
{
    const auto flags = [this] {
        std::string all;
        for (const QWidget* const flag : find("picScale").findChildren<QWidget*>(QRegularExpression("imgBookmark"))) {
            all += flag->isVisible() ? std::to_string(flag->x() + 4) + " " : "";
        }
        return all;
    };
    EXPECT_EQ(flags(), "");
    click(find("picScale"), {300, 10});
    key(Qt::Key_F8);
    EXPECT_EQ(flags(), "300 ");
    click(find("picScale"), {500, 10}); // its handle lies over the flag
    click(find("imgBookmark1"), {4, 3});
    key(Qt::Key_F9);
    EXPECT_EQ(flags(), "");
    key(Qt::Key_F8);
    choose("&Tools", "Remove All &Markers");
    EXPECT_EQ(flags(), "");
}

TEST_F(TimelineScreen, TheFirstMarkerOfAProjectIsSeenAsSelected)
{
    const auto inner = [this](const char* flag) { return find(flag).grab().toImage().pixelColor(4, 8); };
    moduleBookmarks::takeBookmarks({2000, 4000});
    settle();
    const QColor plain = inner("imgBookmark0");
    EXPECT_EQ(plain, inner("imgBookmark1"));
    click(find("imgBookmark1"), {4, 3});
    const QColor marked = inner("imgBookmark1");
    EXPECT_NE(marked, plain);
    key(Qt::Key_F9);
    EXPECT_FALSE(isShown("imgBookmark1"));
    EXPECT_EQ(inner("imgBookmark0"), marked) << "the one below";
    key(Qt::Key_F9);
    EXPECT_FALSE(isShown("imgBookmark0"));
}

TEST_F(TimelineScreen, TheMainSliderIsDragged)
{
    QWidget& handle = find("imgSliderHandle");
    const int before = find("picSlider").x();
    drag(handle, {5, 5}, 120);
    EXPECT_EQ(status(2), "0:00:01.200");
    EXPECT_EQ(find("picSlider").x(), before + 120);
    EXPECT_EQ(handle.x() - find("picScale").x(), 115);
    EXPECT_EQ(find("imgScaleSlider").x(), 120);
    EXPECT_EQ(status(), "Reposition the slider");
    EXPECT_EQ(find<QLabel>("lblCurrentTime").text().toStdString(), status(2));

    drag(handle, {5, 5}, -60);
    EXPECT_EQ(status(2), "0:00:00.600");
}

TEST_F(TimelineScreen, ADragEndsWhereItsReleaseIsLost)
{
    const auto& form = forms::frmTimeline;
    press(find("imgSliderHandle"), {5, 5});
    EXPECT_TRUE(form.DraggingSlider);
    answers.open({});
    key(Qt::Key_O, Qt::ControlModifier); // the dialogue takes the pointer
    EXPECT_FALSE(form.DraggingSlider || form.Dragging);
    release(find("imgSliderHandle"), {5, 5});

    key(Qt::Key_F8);
    click(find("picScale"), {500, 10});
    press(find("imgBookmark1"), {4, 3});
    EXPECT_TRUE(form.DraggingBookmark);
    key(Qt::Key_F9); // goes from under the pointer
    settle();
    EXPECT_FALSE(form.DraggingBookmark);
    release(find("picScale"), {4, 3});
}

TEST_F(TimelineScreen, APressOnABarAndAClickInTheListSelectTheSameItem)
{
    const auto& nodes = find<QTreeView>("tvwTimeline");
    const QImage plain = find("picVideo0").grab().toImage();
    click(find("picVideo0"), {100, 10});
    EXPECT_EQ(status(4), "0:00:00.000 - 0:00:05.000");
    EXPECT_EQ(nodes.currentIndex().data().toString(), "mpeg4.avi");
    EXPECT_NE(find("picVideo0").grab().toImage(), plain);

    const QModelIndex video = nodes.model()->index(0, 0, nodes.model()->index(0, 0));
    const QModelIndex second = nodes.model()->index(1, 0, video);
    click(*nodes.viewport(), nodes.visualRect(second).center());
    EXPECT_EQ(status(4), "0:00:05.000 - 0:00:07.000");
    find("tvwTimeline").setFocus();
    key(Qt::Key_Up); // the keys select as well
    EXPECT_EQ(status(4), "0:00:00.000 - 0:00:05.000");
    settle();
    EXPECT_EQ(nodes.currentIndex().data().toString(), "mpeg4.avi");
}

TEST_F(TimelineScreen, BarsShowWhatLiesInThemOnceThatIsAskedFor)
{
    const auto inItsTime = [](const std::function<bool()>& condition) { // they are made when nobody else works
        return until(condition) || until(condition) || until(condition) || until(condition);
    };
    const QRgb film = pixel("picVideo0", 600, 6);
    const int middle = find("picAudio0").height() / 2;
    const QRgb sound = pixel("picAudio0", 300, middle);
    choose("&View", "&Pictures on Bars");
    EXPECT_TRUE(inItsTime([&] { return pixel("picVideo0", 600, 6) != film; }));
    EXPECT_TRUE(inItsTime([&] { return !find("barsSign").isVisible(); })) << "all are made";
    EXPECT_EQ(pixel("picAudio0", 300, middle), sound);
    choose("&View", "&Waves on Bars");
    EXPECT_TRUE(inItsTime([&] { return pixel("picAudio0", 300, middle) == qRgb(0xC0, 0xC0, 0); }));
    choose("&View", "&Pictures on Bars");
    EXPECT_EQ(pixel("picVideo0", 600, 6), film);
    mdiTarnwick::LoadViewSwitches(); // as the next run does
    EXPECT_FALSE(forms::mdiTarnwick.mnuViewPicturesOnBars.Checked);
    EXPECT_TRUE(forms::mdiTarnwick.mnuViewWavesOnBars.Checked);
    choose("&View", "&Waves on Bars");
    EXPECT_EQ(pixel("picAudio0", 300, middle), sound);
}

TEST_F(TimelineScreen, OptionsOfARow)
{
    key(Qt::Key_F5);
    const QImage linked = option("picVideo0_link").grab().toImage();
    click(option("picVideo0_link"));
    EXPECT_FALSE(shape("picVideo0").isVisible());
    EXPECT_TRUE(shape("picAudio0").isVisible());
    EXPECT_NE(option("picVideo0_link").grab().toImage(), linked);
    click(option("picVideo0_link"));
    EXPECT_TRUE(shape("picVideo0").isVisible());
    key(Qt::Key_F5);
    EXPECT_FALSE(option("picVideo0_link").isVisible());

    const QImage unlocked = option("picVideo0_lock").grab().toImage();
    click(option("picVideo0_lock"));
    EXPECT_EQ(pixel("picVideo0", 300, 3), qRgb(0xE0, 0xE0, 0xDC)); // grey
    EXPECT_NE(option("picVideo0_lock").grab().toImage(), unlocked);
    const QImage enabled = option("picAudio0_disable").grab().toImage();
    click(option("picAudio0_disable"));
    EXPECT_NE(option("picAudio0_disable").grab().toImage(), enabled);
}

TEST_F(TimelineScreen, TheMarkerOnTheScaleFollowsThePointerAndGoesWithIt)
{
    moveTo(find("picAudio1"), {222, 8});
    EXPECT_TRUE(isShown("imgScaleMarker"));
    EXPECT_EQ(find("imgScaleMarker").x(), 222);
    moveTo(find("tvwTimeline"), {20, 150});
    EXPECT_FALSE(isShown("imgScaleMarker"));
}

TEST(PainterCanvas, PicturesMeetAtEveryScale)
{
    const std::vector<std::uint32_t> white(200 * 60, 0xFFFFFFFF);
    const engine::SurfacePicture picture{
        200, 60, 800,
        std::shared_ptr<const std::uint8_t>(std::shared_ptr<void>(),
                                            reinterpret_cast<const std::uint8_t*>(white.data()))};
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        QImage image(200, 40, QImage::Format_RGB32);
        image.fill(Qt::black);
        image.setDevicePixelRatio(scale);
        QPainter painter(&image);
        PainterCanvas canvas(painter, {100, 20}, 0, 100);
        for (const int left : {1, 24, 47}) {
            canvas.picture(left, 1, left + 22, 15, picture);
        }
        painter.end();
        for (int x = static_cast<int>(std::lround(scale)); x < static_cast<int>(70 * scale); ++x) {
            ASSERT_EQ(image.pixel(x, 10), white[0]) << x << " at " << scale;
        }
    }
}

} // namespace
} // namespace screens_test
