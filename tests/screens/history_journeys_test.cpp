// A small film from an empty window, and back: every step stands in the history, and is undone and redone from the keys
// and the list.

#include "screens/screen_harness.h"

#include <QListWidget>
#include <QScrollBar>
#include <QTabBar>
#include <QToolButton>
#include <QTreeView>
#include <vector>

namespace screens_test {
namespace {

class HistoryScreen : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        window->resize(1560, 900);
    }

    QTabBar& tools() { return find<QTabBar>("tbsTools"); }
    void selectFile(int row) { click(*find<QTreeView>("lvwMediaList").viewport(), rowRect(row).center()); }
    QListWidget& history()
    {
        tools().setCurrentIndex(2);
        settle();
        return find<QListWidget>("lvwHistory");
    }
    void clickHistory(int row)
    {
        QListWidget& list = history();
        click(*list.viewport(), list.visualItemRect(list.item(row)).center());
    }
    void addEffect(const QString& name)
    {
        tools().setCurrentIndex(1);
        settle();
        auto& effects = find<QAbstractItemView>("lvwEffects");
        for (int i = 0; i < effects.model()->rowCount(); ++i) {
            const QModelIndex effect = effects.model()->index(i, 0);
            if (effect.data().toString() == name) {
                effects.scrollTo(effect);
                click(*effects.viewport(), effects.visualRect(effect).center());
            }
        }
        click(find("cmdAdd"));
    }
};

TEST_F(HistoryScreen, AFilmIsMadeTakenBackAndMadeAgain)
{
    opened({"mpeg4.avi", "no-sound.mp4"});
    std::vector<std::string> states{tree()};
    const auto note = [&] { states.push_back(tree()); };
    selectFile(0);
    key(Qt::Key_F2);
    note();
    selectFile(1);
    key(Qt::Key_F2);
    note();
    key(Qt::Key_F4);
    note();
    addEffect("Wave");
    note();
    EXPECT_EQ(states.back(), "Video[mpeg4.avi no-sound.mp4] Effects[Wave] Overlays[no-sound.mp4] Audio 1[mpeg4.avi] "
                             "Audio 2[]");
    EXPECT_EQ(history().count(), 4);

    for (std::size_t left = 4; left-- > 2;) {
        key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(tree(), states[left]) << left << " steps are left";
    }
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(tree(), states[3]);
    EXPECT_EQ(history().count(), 3);
    clickHistory(1); // that one and all behind it are taken back, and stand there to be done again
    EXPECT_EQ(tree(), states[1]);
    EXPECT_EQ(history().count(), 3);
    clickHistory(2);
    EXPECT_EQ(tree(), states[3]);

    // Something new takes the place of what was undone.
    clickHistory(2);
    EXPECT_EQ(tree(), states[2]);
    addEffect("Blur");
    EXPECT_EQ(tree(), "Video[mpeg4.avi no-sound.mp4] Effects[Blur] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_EQ(history().count(), 3);
}

TEST_F(HistoryScreen, OnlyAClickOrAKeyInTheListGoesBack)
{
    opened({"mpeg4.avi"});
    for (int step = 0; step < 3; ++step) {
        selectFile(0);
        key(Qt::Key_F2);
    }
    const std::string film = tree();
    QListWidget& list = history();
    list.setFocus(Qt::TabFocusReason);
    settle();
    EXPECT_EQ(tree(), film) << "by the focus alone";
    key(Qt::Key_Down);
    EXPECT_EQ(tree(), film) << "there is nothing below the present step";
    key(Qt::Key_Up);
    EXPECT_EQ(tree(), "Video[mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    key(Qt::Key_Down);
    EXPECT_EQ(tree(), film);
    const QPoint first = list.visualItemRect(list.item(0)).center();
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        click(*list.viewport(), first, {}, button);
        EXPECT_EQ(tree(), film) << button;
    }
    click(*list.viewport(), {20, list.viewport()->height() - 4}); // below the last row
    find("picScale").setFocus();
    list.setFocus(Qt::ActiveWindowFocusReason); // as when another window was in front meanwhile
    settle();
    EXPECT_EQ(tree(), film);

    // A row that was clicked stays the current one; what comes after must not choose it again.
    clickHistory(2);
    EXPECT_EQ(tree(), "Video[mpeg4.avi mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi mpeg4.avi] Audio 2[]");
    key(Qt::Key_F2);
    list.setFocus(Qt::PopupFocusReason);
    settle();
    EXPECT_EQ(tree(), film);
}

TEST_F(HistoryScreen, EachOfTwoKeysInOneTurnTakesAStep)
{
    opened({"mpeg4.avi"});
    selectFile(0);
    for (int step = 0; step < 4; ++step) {
        key(Qt::Key_F2);
    }
    QListWidget& list = history();
    list.setFocus(Qt::TabFocusReason);
    settle();
    for (int press = 0; press < 2; ++press) {
        QCoreApplication::postEvent(&list, new QKeyEvent(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier));
    }
    settle();
    EXPECT_EQ(tree(), "Video[mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_EQ(list.currentRow(), 1);
}

TEST_F(HistoryScreen, TheListShowsThePresentStepAndWhatWasUndone)
{
    opened({"still.bmp"});
    selectFile(0);
    key(Qt::Key_F2);
    addEffect("Wave");
    window->resize(1560, 560); // the list holds fewer rows than there will be
    for (int step = 0; step < 24; ++step) {
        key(Qt::Key_F12);
    }
    QListWidget& list = history();
    const auto isSeen = [&](int row) { return list.viewport()->rect().contains(list.visualItemRect(list.item(row))); };
    const auto bold = [&] {
        std::string rows;
        for (int row = 0; row < list.count(); ++row) {
            rows += list.item(row)->font().bold() ? std::to_string(row) + " " : "";
        }
        return rows;
    };
    EXPECT_EQ(bold(), "25 ");
    EXPECT_TRUE(isSeen(25) && !isSeen(0));
    clickHistory(25);
    list.verticalScrollBar()->setValue(0);
    clickHistory(1);
    EXPECT_EQ(bold(), "0 ");
    EXPECT_TRUE(isSeen(0));
    const QListWidgetItem& undone = *list.item(1);
    EXPECT_TRUE(undone.text().endsWith("(undone)"));
    for (const QString& line : undone.text().split('\n')) {
        EXPECT_LT(QFontMetrics(list.font()).horizontalAdvance(line) + 24, list.viewport()->width())
            << line.toStdString();
    }
}

TEST_F(HistoryScreen, APartIsCutOutAndPastedElsewhere)
{
    opened({"mpeg4.avi"});
    selectFile(0);
    key(Qt::Key_F2);
    EXPECT_EQ(barEnd("picVideo0"), 500);
    // The first second, and all that is linked.
    key(Qt::Key_F5);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), 500) << "a cut leaves a gap";
    const QRgb gap = pixel("picVideo0", 50, 20);
    EXPECT_NE(gap, pixel("picVideo0", 250, 20));
    EXPECT_EQ(pixel("picAudio0", 50, 20), gap) << "the sound went with it";
    EXPECT_FALSE(find("imgEndSelHandle").isVisible());

    click(find("picScale"), {400, 6});
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(tree(), "Video[mpeg4.avi mpeg4.avi mpeg4.avi] Effects[] Overlays[] "
                      "Audio 1[mpeg4.avi mpeg4.avi mpeg4.avi] Audio 2[]");
    EXPECT_EQ(barEnd("picVideo0"), 600) << "what follows has moved on";
    EXPECT_EQ(barEnd("picAudio0"), 604);
}

} // namespace
} // namespace screens_test
