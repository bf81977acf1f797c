// A person looks around: through every control by Tab, through every menu, into other windows and back, with the right
// and the middle button everywhere. None of it is an edit.

#include "core/forms/frmTools.h"
#include "core/shared_state.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "items/row_items.h"
#include "screens/screen_harness.h"

#include <QMenuBar>
#include <QTabBar>
#include <QTreeView>
#include <set>

namespace screens_test {
namespace {

class SafeScreen : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        opened({"mpeg4.avi", "no-sound.mp4", "still.png"});
        auto& files = find<QTreeView>("lvwMediaList");
        for (int clip = 0; clip < 5; ++clip) {
            click(*files.viewport(), rowRect(clip % 3).center());
            key(Qt::Key_F2);
        }
        ASSERT_EQ(forms::frmTools.lvwHistory.get().size(), 5U);
    }

    /// Every item with its times, and the history.
    static std::string film()
    {
        std::string all;
        const auto timeline = engine::EngineAs<engine::ITWTimeline>();
        items::forEachRow(*timeline, [&](const items::RowItems& row) {
            all += "|";
            for (std::int16_t seq = 0; seq < row.items.count(); ++seq) {
                const auto times = row.items.times(seq);
                all += std::to_string(times->start) + "-" + std::to_string(times->stop) + " ";
            }
        });
        for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
            all += row.Text + (row.ForeColor < 0 ? std::to_string(row.ForeColor) : "") + ",";
        }
        return all + std::to_string(ModuleHistory::HistoryIndex) + " of "
               + std::to_string(ModuleHistory::HistoryCollection.Count());
    }
    void closePopUps()
    {
        settle();
        for (int depth = 0; depth < 4 && QApplication::activePopupWidget() != nullptr; ++depth) {
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
            settle();
        }
        ASSERT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    void leaveAndComeBack()
    {
        QWidget other;
        other.show();
        other.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
        other.close();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        settle();
    }
    void showTab(int tab)
    {
        find<QTabBar>("tbsTools").setCurrentIndex(tab);
        settle();
    }
};

TEST_F(SafeScreen, TheKeyboardGoesRoundEveryControl)
{
    const std::string before = film();
    for (int tab = 0; tab < 3; ++tab) {
        showTab(tab);
        std::set<QWidget*> met;
        for (int step = 0; step < 200 && met.insert(window->focusWidget()).second; ++step) {
            leaveAndComeBack();
            key(Qt::Key_Menu);
            closePopUps();
            key(Qt::Key_Tab);
            ASSERT_EQ(film(), before) << window->focusWidget()->objectName().toStdString();
        }
        EXPECT_GT(met.size(), 20U);
        EXPECT_EQ(met.count(&find(tab == 0 ? "tvwActions" : tab == 1 ? "lvwEffects" : "lvwHistory")), 1U);
    }
}

TEST_F(SafeScreen, MenusAreOpenedAndClosed)
{
    const std::string before = film();
    showTab(2);
    for (QWidget* const panel : {&find("lvwHistory"), &find("lvwMediaList"), &find("picVideo0")}) {
        panel->setFocus();
        for (QAction* const top : window->menuBar()->actions()) {
            QTest::mouseClick(window->menuBar(), Qt::LeftButton, {}, window->menuBar()->actionGeometry(top).center());
            EXPECT_TRUE(until([&] { return top->menu()->isVisible(); }));
            QTest::keyClick(top->menu(), Qt::Key_Down);
            closePopUps();
            ASSERT_EQ(film(), before) << top->text().toStdString();
        }
    }
}

TEST_F(SafeScreen, OtherButtonsEditNothing)
{
    const std::string before = film();
    QTimer closer; // the toolkit's own menus wait inside the press
    QObject::connect(&closer, &QTimer::timeout, [] {
        if (QWidget* const menu = QApplication::activePopupWidget()) {
            menu->close();
        }
    });
    closer.start(1);
    for (int tab = 0; tab < 3; ++tab) {
        showTab(tab);
        for (QWidget* const widget : window->findChildren<QWidget*>()) {
            if (!widget->isVisible() || qobject_cast<QMenu*>(widget) != nullptr) {
                continue;
            }
            for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
                for (const QPoint at : {widget->rect().center(), QPoint(12, std::min(10, widget->height() / 2))}) {
                    click(*widget, at, {}, button);
                    closePopUps();
                    ASSERT_EQ(film(), before) << widget->objectName().toStdString() << " of "
                                              << widget->parentWidget()->objectName().toStdString() << " " << button;
                }
            }
        }
    }
}

TEST_F(SafeScreen, TheMenuOfAPartOpensByKey)
{
    const auto opens = [&](const char* control, Qt::Key menuKey, Qt::KeyboardModifiers keys) {
        QWidget& part = find(control);
        part.setFocus();
        key(menuKey, keys);
        const auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        std::string shown;
        if (menu != nullptr) {
            EXPECT_TRUE(QRect(part.mapToGlobal(QPoint()), part.size()).contains(menu->pos())) << control;
            for (const QAction* const action : menu->actions()) {
                shown += action->isVisible() && !action->isSeparator() ? action->text().toStdString() + "|" : "";
            }
        }
        closePopUps();
        return shown;
    };
    for (const auto& [menuKey, keys] :
         {std::pair{Qt::Key_Menu, Qt::KeyboardModifiers{}}, {Qt::Key_F10, Qt::ShiftModifier}}) {
        EXPECT_EQ(opens("lvwMediaList", menuKey, keys), "Add to &Timeline|&Add to Overlay|&Preview|&Close|");
        EXPECT_EQ(opens("picScale", menuKey, keys).substr(0, 19), "Zoom &In|Zoo&m Out|");
        EXPECT_EQ(opens("picVideo0", menuKey, keys).substr(0, 20), "Cu&t|&Copy|&Paste|&D");
        EXPECT_EQ(opens("tvwActions", menuKey, keys), "");
    }
    click(find("picVideo0_lock"));
    EXPECT_EQ(opens("picVideo0", Qt::Key_Menu, {}), "");
}

} // namespace
} // namespace screens_test
