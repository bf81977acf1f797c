// A small film from an empty window, and back: every step stands in the history, and is undone and redone from the keys
// and the list.

#include "screens/screen_harness.h"

#include <QListWidget>
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
    click(find("picScale"), {400, 6});
    addEffect("Emboss");
    note();
    selectFile(0);
    key(Qt::Key_F4);
    note();
    EXPECT_EQ(states.back(), "Video[mpeg4.avi no-sound.mp4] Effects[Wave Emboss] Overlays[no-sound.mp4 mpeg4.avi] "
                             "Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_EQ(history().count(), 6);

    for (std::size_t left = 6; left-- > 1;) {
        key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(tree(), states[left]) << left << " steps are left";
    }
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(tree(), states[2]);
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
    const std::string pasted = tree();
    EXPECT_EQ(pasted, "Video[mpeg4.avi mpeg4.avi mpeg4.avi] Effects[] Overlays[] "
                      "Audio 1[mpeg4.avi mpeg4.avi mpeg4.avi] Audio 2[]");
    EXPECT_EQ(barEnd("picVideo0"), 600) << "what follows has moved on";
    EXPECT_EQ(barEnd("picAudio0"), 604);

    clickHistory(1);
    EXPECT_EQ(tree(), "Video[mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_NE(pixel("picVideo0", 50, 20), gap);
    clickHistory(2);
    EXPECT_EQ(tree(), pasted);
    EXPECT_EQ(barEnd("picVideo0"), 600);
}

} // namespace
} // namespace screens_test
