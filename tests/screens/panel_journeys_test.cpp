// The panels: hints over what lies between them, the tools by keyboard, what the timeline's list and buttons show.

#include "screens/screen_harness.h"

#include <QActionGroup>
#include <QMenuBar>
#include <QScrollBar>
#include <QTabBar>
#include <QToolButton>
#include <QTreeView>

namespace screens_test {
namespace {

using PanelScreen = ScreenTest;

TEST_F(PanelScreen, TheHintGoesWhenThePointerLeavesAPanel)
{
    opened({"still.png"});
    const QWidget& tools = find("frmTools");
    const std::pair<QWidget*, QPoint> places[] = {
        {window->menuBar(), {20, 8}},
        {window->menuBar(), {window->menuBar()->width() - 4, 8}},
        {find("tbr").findChild<QToolButton*>(), {6, 6}},
        {&find("tbr"), {find("tbr").width() - 4, 8}},
        {find("frmTimeline").parentWidget(), {60, 8}},                               // the strip with the caption
        {window->centralWidget(), {1, window->centralWidget()->height() / 2}},       // between the panels
        {find("cmdPlay").parentWidget(), {2, find("picPreviewSmall").height() + 1}}, // between picture and facts
        {&find("tbsTools"), {20, 10}},
        {tools.parentWidget(), {60, 8}}};
    for (const auto& [widget, at] : places) {
        moveTo(find("picVideo0"), {222, 8});
        EXPECT_EQ(status(), "Represents video sources over time");
        moveTo(*widget, at);
        EXPECT_EQ(status(), "Ready") << widget->objectName().toStdString() << at.x();
    }
    const std::pair<const char*, const char*> parts[] = {
        {"lvwMediaList", "Lists all the media files with their information"},
        {"lblInfoDisplay0", "File information of the currently selected media file"},
        {"picPreviewSmall", "Instant preview of the currently selected media file"}};
    for (const auto& [part, hint] : parts) {
        moveTo(find(part), find(part).rect().center());
        EXPECT_EQ(status(), hint);
    }
}

TEST_F(PanelScreen, EnterAndSpaceRunActions)
{
    opened({"mpeg4.avi"});
    auto& actions = find<QTreeView>("tvwActions");
    actions.setFocus();
    key(Qt::Key_Home);
    key(Qt::Key_Down);
    EXPECT_EQ(actions.currentIndex().data().toString(), "Add media file to the timeline");
    key(Qt::Key_Return);
    EXPECT_EQ(tree(), "Video[mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    EXPECT_EQ(actions.currentIndex().data().toString(), "Add media file to the timeline"); // the list is another one
    key(Qt::Key_Space);
    const std::string twice = tree();
    EXPECT_EQ(twice, "Video[mpeg4.avi mpeg4.avi] Effects[] Overlays[] Audio 1[mpeg4.avi mpeg4.avi] Audio 2[]");

    // Delete makes itself impossible: what has come to its place is not what a second Enter asks for.
    click(find("picVideo0"), {100, 10});
    actions.setFocus();
    key(Qt::Key_End);
    while (actions.currentIndex().data().toString() != "Delete selection" && actions.currentIndex().row() > 0) {
        key(Qt::Key_Up);
    }
    key(Qt::Key_Return);
    const std::string once = tree();
    EXPECT_NE(once, twice);
    EXPECT_FALSE(actions.currentIndex().isValid());
    key(Qt::Key_Return);
    EXPECT_EQ(tree(), once);
}

TEST_F(PanelScreen, AStripBringsItsPanelToTheFront)
{
    opened({"mpeg4.avi"});
    onTheTracks();
    const auto first = [&] {
        const auto& actions = find<QTreeView>("tvwActions");
        return actions.model()->index(0, 0, actions.rootIndex()).data().toString().toStdString();
    };
    click(find("picScale"));
    EXPECT_EQ(first(), "Show/Hide selection sliders");
    click(*find("frmMediaList").parentWidget(), {60, 8});
    EXPECT_EQ(first(), "Open media file...");
    click(*find("frmTimeline").parentWidget(), {60, 8});
    EXPECT_EQ(first(), "Show/Hide selection sliders");
}

TEST_F(PanelScreen, WhatTheListSelectsIsSeenAndWhatGoesIsNotNamed)
{
    opened({"mpeg4.avi"});
    for (int clip = 0; clip < 6; ++clip) {
        onTheTracks();
    }
    const auto& nodes = find<QTreeView>("tvwTimeline");
    const QModelIndex video = nodes.model()->index(0, 0, nodes.model()->index(0, 0));
    const auto chooseClip = [&](int place) {
        const QModelIndex node = nodes.model()->index(place, 0, video);
        find<QTreeView>("tvwTimeline").scrollTo(node);
        click(*nodes.viewport(), nodes.visualRect(node).center());
    };
    chooseClip(0);
    EXPECT_EQ(find<QScrollBar>("hsb").value(), 0);
    chooseClip(5); // from 25 s to 30 s, 10 ticks a second
    EXPECT_EQ(status(4), "0:00:25.000 - 0:00:30.000");
    EXPECT_GT(find<QScrollBar>("hsb").value(), 200);
    key(Qt::Key_Delete);
    EXPECT_EQ(status(4), "");
}

TEST_F(PanelScreen, ButtonsOfTheRowsAndViewsSayWhatIsOn)
{
    auto& lock = find<QToolButton>("picVideo0_lock");
    EXPECT_EQ(lock.accessibleName(), "Lock Video");
    EXPECT_FALSE(lock.isChecked());
    click(lock);
    EXPECT_TRUE(lock.isCheckable() && lock.isChecked());
    click(lock);
    EXPECT_FALSE(lock.isChecked());

    const auto view = [&](const char* name) { return window->findChild<QAction*>(name); };
    choose("&View", "&List");
    EXPECT_TRUE(view("mnuViewML_List")->isChecked());
    EXPECT_FALSE(view("mnuViewML_Detail")->isChecked());
    choose("&View", "&List"); // the chosen one stays chosen
    EXPECT_TRUE(view("mnuViewML_List")->isChecked());
    ASSERT_NE(view("mnuViewML_List")->actionGroup(), nullptr);
    EXPECT_EQ(view("mnuViewML_List")->actionGroup()->actions().size(), 4);
}

TEST_F(PanelScreen, TheDividerGoesBackInANarrowWindow)
{
    window->resize(800, 560);
    settle();
    const int began = find("tvwTimeline").width();
    const QRect rows = find("picTimelineBase").geometry();
    drag(find("picVerticalResize"), {2, 60}, -120);
    EXPECT_EQ(find("tvwTimeline").width(), began - 120);
    EXPECT_EQ(find("picTimelineBase").geometry(), rows.adjusted(-120, 0, 0, 0));
    drag(find("picVerticalResize"), {2, 60}, 120);
    EXPECT_EQ(find("tvwTimeline").width(), began);
}

TEST_F(PanelScreen, ASmallWindowLeavesThePreviewAPicture)
{
    window->resize(800, 480); // 1600 x 1000 at scale 2
    settle();
    EXPECT_GT(find("picDisplay").height(), 60);
    EXPECT_GE(find("picEffect0").height(), 16) << "the pictures of the buttons beside it";
}

TEST_F(PanelScreen, DividersGiveRoomAndGoBack)
{
    const auto list = [&] { return find("frmMediaList").parentWidget()->width(); };
    const auto timeline = [&] { return find("frmTimeline").parentWidget()->height(); };
    QWidget& ground = *window;
    const int ownList = list();
    const int ownTimeline = timeline();
    drag(find("dividerList"), {3, 90}, -80);
    EXPECT_EQ(list(), ownList - 80);
    QWidget& above = find("dividerTimeline");
    const QPoint from = above.mapTo(window.get(), QPoint(200, 3));
    press(ground, from);
    moveTo(ground, from + QPoint(0, -30));
    moveTo(ground, from + QPoint(9, -60));
    release(ground, from + QPoint(9, -60));
    EXPECT_EQ(timeline(), ownTimeline + 60);
    moveTo(find("picVideo0"), {222, 8});
    moveTo(above, {200, 3});
    EXPECT_EQ(status(), "Ready");

    find("frmPreview").parentWidget()->findChild<QToolButton*>({}, Qt::FindDirectChildrenOnly)->click();
    settle();
    EXPECT_FALSE(find("dividerList").isVisible());
    choose("&Window", "&Preview");
    EXPECT_EQ(list(), ownList - 80);
    QTest::mouseDClick(&above, Qt::LeftButton);
    settle();
    EXPECT_EQ(timeline(), ownTimeline);
    choose("&Window", "&Arrange All");
    EXPECT_EQ(list(), ownList);
}

} // namespace
} // namespace screens_test
