// The preview: a file on the timeline is watched, paused, sought in and stopped; the volume pops up.

#include "screens/screen_harness.h"

#include <QAbstractButton>
#include <QSlider>
#include <QTreeView>

namespace screens_test {
namespace {

class PreviewScreen : public ScreenTest {
protected:
    QWidget& inPreview(const char* name) const { return *find("frmPreview").findChild<QWidget*>(name); }
    QImage picture() const { return inPreview("picDisplay").grab().toImage(); }
    QSlider& bar() const { return find<QSlider>("sldSeekBar"); }
    std::string time(const char* label) const { return find<QLabel>(label).text().toStdString(); }
};

TEST_F(PreviewScreen, AFileIsAddedAndWatched)
{
    opened({"mpeg4.avi"});
    key(Qt::Key_F2);
    EXPECT_TRUE(until([&] { return brightShare("picDisplay") > 0.05; }));
    EXPECT_EQ(time("lblDuration"), "0:00:05.040");
    EXPECT_EQ(status(3), "0:00:05.040");

    moveTo(inPreview("cmdRewind"), {9, 9});
    EXPECT_EQ(status(), "Rewind");
    moveTo(bar(), {9, 9});
    EXPECT_EQ(status(), "Seek to the desired position of the video");
    const QImage first = picture();
    click(inPreview("cmdPlay"));
    EXPECT_TRUE(until([&] { return bar().value() > 200 && picture() != first; })) << bar().value();
    EXPECT_GT(brightShare("picDisplay"), 0.05);
    EXPECT_NE(time("lblCurrentTime"), "0:00:00.000");
    EXPECT_EQ(time("lblCurrentTime"), status(2));
    const auto& actions = *find<QTreeView>("tvwActions").model();
    EXPECT_EQ(actions.index(0, 0, actions.index(0, 0)).data().toString(), "Play");

    key(Qt::Key_Space);
    const int paused = bar().value();
    EXPECT_FALSE(QTest::qWaitFor([&] { return bar().value() != paused; }, 300));
    click(bar(), {bar().width() / 2, bar().height() / 2}); // to the place that was pressed
    EXPECT_NEAR(bar().value(), 2520, 60);
    EXPECT_EQ(time("lblCurrentTime"), status(2));
    tap(bar(), {bar().width() / 4, bar().height() / 2});
    EXPECT_FALSE(bar().isSliderDown());
    wheel(bar(), bar().rect().center(), 1);
    settle();
    EXPECT_EQ(time("lblCurrentTime"), status(2));
    click(bar(), {bar().width() / 2, bar().height() / 2});
    key(Qt::Key_Return);
    EXPECT_TRUE(until([&] { return bar().value() > 2800; }));
    click(inPreview("cmdStop"));
    EXPECT_EQ(bar().value(), 0);
    EXPECT_TRUE(until([&] { return picture() == first; }));
}

TEST_F(PreviewScreen, AHandOnTheSeekBarSeesPicturesPassAndThenTheRightOne)
{
    opened({"long-gop.mp4"});
    key(Qt::Key_F2);
    ASSERT_TRUE(until([&] { return brightShare("picDisplay") > 0.05; }));
    const QPoint left(8, bar().height() / 2);
    const auto across = [&](int step) { return left + QPoint((bar().width() - 16) * step / 50, 0); };
    click(bar(), across(45));
    QTest::mousePress(&bar(), Qt::LeftButton, {}, across(45));
    int changes = 0;
    QImage last = picture();
    for (int step = 45; step >= 5; --step) {
        QTest::mouseMove(&bar(), across(step));
        QTest::qWait(12);
        const QImage now = picture();
        changes += now != last ? 1 : 0;
        last = now;
    }
    QTest::mouseRelease(&bar(), Qt::LeftButton, {}, across(5));
    EXPECT_GT(changes, 6);
    QTest::qWait(1000);
    const QImage rested = picture();
    const int place = bar().value();
    click(inPreview("cmdStop"));
    EXPECT_TRUE(until([&] { return picture() != rested; }));
    click(bar(), across(5));
    ASSERT_EQ(bar().value(), place);
    EXPECT_TRUE(until([&] { return picture() == rested; }));
}

TEST_F(PreviewScreen, TheVolumePopsUpAndAnyKeyClosesIt)
{
    QWidget& popup = find("frmVolume");
    QWidget& button = inPreview("cmdMute");
    for (const Qt::Key closing : {Qt::Key_Left, Qt::Key_Escape, Qt::Key_A}) {
        click(button);
        ASSERT_TRUE(until([&] { return popup.isVisible(); }));
        EXPECT_EQ(popup.y(), button.mapToGlobal(QPoint(0, button.height())).y() + 7);
        QTest::keyClick(popup.focusWidget(), closing);
        EXPECT_TRUE(until([&] { return !popup.isVisible(); })) << closing;
    }
    click(button);
    ASSERT_TRUE(until([&] { return popup.isVisible(); }));
    window->activateWindow();
    popup.hide(); // as the system takes a popup away when something else is pressed
    settle();
    EXPECT_FALSE(popup.isVisible());
    click(button);
    EXPECT_TRUE(until([&] { return popup.isVisible(); }));
}

} // namespace
} // namespace screens_test
