// Keys in every panel: playing from everywhere, the slider's places, the whole screen, and what a key must not do
// where a field, a button or a list has the keyboard.

#include "screens/screen_harness.h"
#include "windowing/picture_widget.h"

#include <QMenu>
#include <QScreen>
#include <QSlider>
#include <QToolButton>
#include <QTreeView>

namespace screens_test {
namespace {

class KeyScreen : public TwoFilmScreen {
protected:
    bool plays()
    {
        const int before = bar().value();
        return QTest::qWaitFor([&] { return bar().value() != before; }, 400);
    }
    QSlider& bar() { return find<QSlider>("sldSeekBar"); }
    QWidget* whole() { return find("frmPreview").findChild<QWidget*>("wholeScreen"); }
    QAction& entry(const char* name) { return find<QAction>(name); }
};

TEST_F(KeyScreen, SpacePlaysFromEveryPlaceOfTheTimeline)
{
    for (const char* const place : {"picScale", "picTimelineBase", "tvwTimeline", "picVideo0"}) {
        SCOPED_TRACE(place);
        find(place).setFocus();
        const std::string before = status();
        key(Qt::Key_Space);
        EXPECT_EQ(status(), place == std::string("picVideo0")
                                ? "Use the 'Shift' key to nudge source(s) with the direction keys"
                                : before);
        EXPECT_TRUE(plays());
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, " ", true);
        QCoreApplication::sendEvent(&find(place), &held);
        EXPECT_TRUE(plays()) << "a key that is held is one key";
        key(Qt::Key_Space);
        EXPECT_FALSE(plays());
    }
}

TEST_F(KeyScreen, AKeyStaysWithWhatHasTheKeyboard)
{
    QToolButton& lock = find<QToolButton>("picVideo0_lock");
    lock.setFocus();
    const bool wasLocked = lock.isChecked();
    key(Qt::Key_Space);
    EXPECT_NE(lock.isChecked(), wasLocked);
    EXPECT_FALSE(plays());

    auto& tree = find<QTreeView>("tvwTimeline");
    tree.setFocus();
    tree.setCurrentIndex(tree.model()->index(0, 0));
    key(Qt::Key_N); // the name of a file
    EXPECT_EQ(tree.currentIndex().data().toString(), "no-sound.mp4");
    key(Qt::Key_Space);
    key(Qt::Key_L);
    key(Qt::Key_F);
    EXPECT_FALSE(plays() || whole() != nullptr);

    bar().setFocus();
    const int step = bar().singleStep();
    bar().setValue(1000);
    key(Qt::Key_Right);
    EXPECT_EQ(bar().value(), 1000 + step) << "a slider's own key";
    find("lvwMediaList").setFocus();
    key(Qt::Key_L);
    EXPECT_FALSE(plays());
    press(video(), {100, video().height() / 2});
    key(Qt::Key_L);
    EXPECT_FALSE(plays()) << "in the middle of a drag";
    release(video(), {100, video().height() / 2});
}

TEST_F(KeyScreen, ThePreviewStepsByFramesAndTakesTheWholeScreen)
{
    click(find("picDisplay"));
    key(Qt::Key_Right);
    EXPECT_EQ(status(2), "0:00:00.040");
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(status(2), "0:00:00.440");
    key(Qt::Key_Left);
    EXPECT_EQ(status(2), "0:00:00.400");
    find("picScale").setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(status(2), "0:00:05.000");
    key(Qt::Key_Home);

    const QRect panel = find("picDisplay").geometry();
    const auto isWhole = [&] { return whole() != nullptr && whole()->isVisible(); };
    key(Qt::Key_F); // from the timeline
    ASSERT_TRUE(isWhole());
    EXPECT_EQ(whole()->size(), whole()->screen()->size());
    QWidget* const picture = whole()->findChild<QWidget*>("picDisplay");
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->height(), whole()->height()) << "4 : 3 on a screen that is not higher";
    QTest::keyClick(whole(), Qt::Key_Space);
    EXPECT_TRUE(plays());
    EXPECT_TRUE(until([&] { return brightShare("picDisplay") > 0.05; }));
    QTest::keyClick(whole(), Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !isWhole(); }));
    settle();
    EXPECT_EQ(find("picDisplay").geometry(), panel);
    key(Qt::Key_K);
    EXPECT_FALSE(plays());

    QTest::mouseDClick(&find("picDisplay"), Qt::LeftButton);
    settle();
    ASSERT_TRUE(isWhole());
    QTest::mouseDClick(whole()->findChild<QWidget*>("picDisplay"), Qt::LeftButton);
    settle();
    EXPECT_FALSE(isWhole());
    EXPECT_EQ(find("picDisplay").geometry(), panel);
}

TEST_F(KeyScreen, PiecesChangePlacesInTheList)
{
    auto& list = find<QTreeView>("tvwTimeline");
    const auto name = [&] { return list.currentIndex().data().toString(); };
    const auto select = [&](int place) { // of the row Video
        const QModelIndex row = list.model()->index(0, 0, list.model()->index(0, 0));
        click(*list.viewport(), list.visualRect(list.model()->index(place, 0, row)).center());
    };
    select(0);
    const std::string before = tree();
    const std::string after = "Video[no-sound.mp4 mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]";
    key(Qt::Key_Up, Qt::AltModifier); // it is the first one
    EXPECT_EQ(tree(), before);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(tree(), after);
    EXPECT_EQ(barEnd("picVideo0"), 700) << "no gap is left";
    EXPECT_EQ(name(), "mpeg4.avi");
    key(Qt::Key_Down, Qt::AltModifier); // now the last one
    EXPECT_EQ(tree(), after);
    EXPECT_EQ(QApplication::focusWidget(), &list);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(tree(), before) << "one step";

    click(find("picVideo0_lock"));
    select(1);
    key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(tree(), before) << "locked";
    click(find("picVideo0_lock"));
    list.setFocus();
    key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(tree(), after);
    EXPECT_EQ(name(), "no-sound.mp4");
}

TEST_F(KeyScreen, EndsOfBarsGoByAPicture)
{
    const auto state = [&] { return status() + ", " + std::to_string(barEnd("picVideo0")); };
    const auto pressed = [&](Qt::Key which, Qt::KeyboardModifiers keys, int times = 1) {
        for (int i = 0; i < times; ++i) {
            key(which, keys);
        }
        return state();
    };
    click(video(), {600, middle()}); // no-sound.mp4 at 25 pictures a second, from 5 s to 7 s
    EXPECT_EQ(pressed(Qt::Key_Period, {}), "Ends at 0:00:07.040, 704");
    EXPECT_EQ(pressed(Qt::Key_Period, {}, 4), "Ends at 0:00:07.200, 720");
    EXPECT_EQ(pressed(Qt::Key_Comma, {}, 15), "Ends at 0:00:06.600, 660");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 700) << "presses in a row are one step";
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 660);
    key(Qt::Key_Z, Qt::ControlModifier);

    click(video(), {600, middle()});
    EXPECT_EQ(pressed(Qt::Key_Comma, Qt::AltModifier, 5), "Ends at 0:00:06.800, 680");
    EXPECT_EQ(pressed(Qt::Key_Period, Qt::AltModifier, 9), "Ends at 0:00:07.000, 700") << "its medium ends there";
    EXPECT_EQ(pressed(Qt::Key_Comma, Qt::ControlModifier), "Begins at 0:00:05.000, 700") << "and begins here";
    EXPECT_EQ(pressed(Qt::Key_Period, Qt::ControlModifier, 3), "Begins at 0:00:05.120, 700");
    key(Qt::Key_Z, Qt::ControlModifier); // the start
    click(video(), {508, middle()});
    EXPECT_EQ(pressed(Qt::Key_Comma, {}), "Ends at 0:00:06.960, 696") << "the trims' step is another one";
    key(Qt::Key_Z, Qt::ControlModifier);

    click(find("picVideo0_lock"));
    video().setFocus();
    EXPECT_EQ(pressed(Qt::Key_Comma, {}), "Use the 'Shift' key to nudge source(s) with the direction keys, 700");
    click(find("picVideo0_lock"));
    click(video(), {600, middle()});
    key(Qt::Key_T);
    EXPECT_EQ(pressed(Qt::Key_Comma, {}), "Ends at 0:00:06.960, 696");
    key(Qt::Key_T);
    EXPECT_EQ(pressed(Qt::Key_Period, Qt::AltModifier, 2), "Ends at 0:00:07.000, 700") << "it was a trim";
}

TEST_F(KeyScreen, TheSelectedMarkerGoesByAPicture)
{
    click(find("picScale"), {300, 10});
    key(Qt::Key_F8);
    const auto flag = [&] { return find("imgBookmark1").toolTip(); };
    key(Qt::Key_Period);
    EXPECT_EQ(flag(), "0:00:03.000") << "none is selected";
    key(Qt::Key_Home);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Period);
    key(Qt::Key_Period);
    EXPECT_EQ(flag(), "0:00:03.080");
    EXPECT_EQ(find("imgBookmark1").x() + 4, 308);
    key(Qt::Key_Comma);
    EXPECT_EQ(flag(), "0:00:03.040");
    EXPECT_EQ(status(), "Marker at 0:00:03.040");
    EXPECT_EQ(status(2), "0:00:03.000") << "the slider stays";
    for (int i = 0; i < 80; ++i) {
        key(Qt::Key_Comma);
    }
    EXPECT_EQ(flag(), "0:00:00.000");
}

TEST_F(KeyScreen, BareKeysOfTheMenuActEverywhereButInWhatWantsThem)
{
    click(video(), {100, middle()});
    const bool isOn = entry("mnuToolsTrimMode").isChecked();
    const auto turns = [&] {
        const bool before = entry("mnuToolsTrimMode").isChecked();
        key(Qt::Key_T);
        return entry("mnuToolsTrimMode").isChecked() != before;
    };
    for (const char* const place :
         {"picVideo0", "frmPreview", "sldSeekBar", "cmdZoomIn", "lvwMediaList", "tvwTimeline"}) {
        SCOPED_TRACE(place);
        QWidget& widget = find(place);
        (widget.focusPolicy() != Qt::NoFocus ? widget : find("cmdPlay")).setFocus();
        key(Qt::Key_F7);
        const int small = barEnd("picVideo0");
        key(Qt::Key_Z, Qt::ShiftModifier);
        EXPECT_GT(barEnd("picVideo0"), small) << "the whole film";
        EXPECT_EQ(turns(), qobject_cast<QAbstractItemView*>(&widget) == nullptr) << "lists search by letters";
    }
    if (entry("mnuToolsTrimMode").isChecked() != isOn) {
        find("picScale").setFocus();
        key(Qt::Key_T);
    }
}

TEST_F(KeyScreen, KeysStandBesideTheirEntriesAndAct)
{
    EXPECT_EQ(entry("mnuEC_Cut").shortcut().toString(), "Ctrl+X");
    EXPECT_EQ(entry("mnuMLC_AddToTimeline").shortcut().toString(), "F2");
    EXPECT_EQ(entry("mnuEditRedo").shortcuts().size(), 2);
    find("lvwMediaList").setFocus();
    key(Qt::Key_F2);
    const int end = barEnd("picVideo0");
    click(video(), {end - 50, video().height() / 2});
    key(Qt::Key_X, Qt::ControlModifier); // the entry of the pop-up menu has the same key
    EXPECT_LT(barEnd("picVideo0"), end);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), end);

    QAction& undo = entry("mnuEditUndo");
    QMenu& edit = *qobject_cast<QMenu*>(undo.associatedObjects().constFirst());
    const std::string before = status();
    edit.popup({300, 300});
    edit.setActiveAction(&undo);
    settle();
    EXPECT_EQ(status(), "Undo: Add to Timeline");
    edit.close();
    settle();
    EXPECT_EQ(status(), before);

    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_LT(barEnd("picVideo0"), end) << "cut once more";
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(barEnd("picVideo0"), -1);
    EXPECT_EQ(barEnd("picAudio0"), -1);

    moveTo(find("picScale"), {300, 10});
    EXPECT_EQ(find("picScale").toolTip().toStdString(), "0:00:03.000");
    answers.click("&No"); // the project has changed
    key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
}

} // namespace
} // namespace screens_test
