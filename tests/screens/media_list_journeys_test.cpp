// The media list: opening by dialogue and by drop, looking at files, playing them, closing them.

#include "editing/clipboard.h"
#include "report/error_log.h"
#include "screens/screen_harness.h"
#include "windowing/list_model.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QProgressBar>
#include <QSlider>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>

namespace screens_test {
namespace {

class MediaListScreen : public ScreenTest {
protected:
    QWidget& list() { return *find<QTreeView>("lvwMediaList").viewport(); }
    QSlider& slider() { return find<QSlider>("sldFilePreview"); }
    QToolButton& play() { return find<QToolButton>("cmdPlay"); }
    void clickRow(int place, Qt::KeyboardModifiers keys = {}) { click(list(), rowRect(place).center(), keys); }

    double brightShare() { return ScreenTest::brightShare("picPreviewSmall"); }
    QPoint handle() // 16 pixels wide, or nearly so
    {
        const int way = slider().width() - 16;
        return {8 + QStyle::sliderPositionFromValue(0, slider().maximum(), slider().value(), way),
                slider().height() / 2};
    }
    std::string fact(const char* name) { return find<QLabel>(name).toolTip().toStdString(); }
};

TEST_F(MediaListScreen, OneFileIsOpenedLookedAtAndPlayed)
{
    answers.open({media("mpeg4.avi")});
    key(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(says("Selected file: \"mpeg4.avi\". Total Files in Media List: 1."));
    EXPECT_EQ(row(0), "mpeg4.avi|Video|0:00:05.040|320 x 240, 25fps|48000 Hz");
    EXPECT_EQ(fact("lblFileDisplay"), "mpeg4.avi");
    EXPECT_EQ(fact("lblInfoDisplay0"), media("mpeg4.avi"));
    EXPECT_EQ(fact("lblInfoDisplay3"), "AVI");
    EXPECT_EQ(fact("lblInfoDisplay4"), "2");
    EXPECT_TRUE(until([&] { return brightShare() > 0.05; })) << brightShare();

    const QImage firstFrame = find("picPreviewSmall").grab().toImage();
    const QImage toPlay = play().grab().toImage();
    EXPECT_EQ(play().accessibleName(), "Play");
    click(play());
    EXPECT_EQ(play().accessibleName(), "Stop");
    EXPECT_NE(play().grab().toImage(), toPlay);
    EXPECT_TRUE(until([&] { return slider().value() > 300; })) << slider().value();
    EXPECT_TRUE(until([&] { return find("picPreviewSmall").grab().toImage() != firstFrame; }));

    key(Qt::Key_Space);
    EXPECT_EQ(play().accessibleName(), "Play");
    key(Qt::Key_Return);
    EXPECT_EQ(play().accessibleName(), "Stop");
    click(play());
    EXPECT_EQ(play().accessibleName(), "Play");
    drag(slider(), handle(), slider().width() / 2);
    EXPECT_GT(slider().value(), 2000);
    EXPECT_LT(slider().value(), 4500);
    EXPECT_TRUE(until([&] { return brightShare() > 0.05; }));
    click(slider(), {slider().width() / 4, slider().height() / 2}); // to the place that was pressed
    EXPECT_NEAR(slider().value(), slider().maximum() / 4, slider().maximum() / 20);
    slider().setFocus();
    const int before = slider().value();
    key(Qt::Key_Left); // a step of the keys is a part of the file, not a millisecond
    EXPECT_NEAR(before - slider().value(), 50, 5);
}

TEST_F(MediaListScreen, ADamagedFileIsToldOverTheProgressAndTheOthersOpen)
{
    answers.click("OK");
    answers.meanwhile = [&] {
        EXPECT_TRUE(until([&] { return find("pbarMain").isVisible(); }));
        EXPECT_EQ(find<QProgressBar>("pbarMain").value(), 2);
        EXPECT_EQ(find<QProgressBar>("pbarMain").maximum(), 3);
        EXPECT_TRUE(says("Opening file 02 of 03 (text.avi)"));
        EXPECT_EQ(rowCount(), 1);
    };
    ASSERT_TRUE(drop({media("mpeg4.avi"), media("bad/text.avi"), media("still.bmp")}));
    EXPECT_TRUE(says("Selected file: \"still.bmp\". Total Files in Media List: 2."));
    EXPECT_EQ(answers.boxes, std::vector{"i: Unable to open file - \"" + media("bad/text.avi")
                                         + "\".|The media type of this file is not recognized."});
    EXPECT_EQ(rowCount(), 2);
    EXPECT_FALSE(find("pbarMain").isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MediaListScreen, SelectingByPointerAndByKeys)
{
    opened({"still.png", "still.bmp", "h264.mp4"});
    clickRow(0);
    EXPECT_TRUE(says("Selected file: \"still.png\". Total Files in Media List: 3."));
    find("lvwMediaList").setFocus();
    key(Qt::Key_Down);
    EXPECT_TRUE(says("Selected file: \"still.bmp\". Total Files in Media List: 3."));
    key(Qt::Key_End);
    EXPECT_TRUE(says("Selected file: \"h264.mp4\". Total Files in Media List: 3."));
    EXPECT_EQ(fact("lblFileDisplay"), "h264.mp4");
    moveTo(list(), rowRect(2).center() + QPoint(3, 0));
    EXPECT_TRUE(says("Lists all the media files with their information"));
    clickRow(2); // selected as it is
    EXPECT_TRUE(says("Selected file: \"h264.mp4\". Total Files in Media List: 3."));
    const auto selected = [&] { return find<QTreeView>("lvwMediaList").selectionModel()->selectedRows().size(); };
    clickRow(0, Qt::ShiftModifier);
    EXPECT_EQ(selected(), 3);
    clickRow(1, Qt::ControlModifier);
    EXPECT_EQ(selected(), 2);
    clickRow(1);
    EXPECT_EQ(selected(), 1);
}

TEST_F(MediaListScreen, AFilterShowsTheFilesThatAreLookedFor)
{
    opened({"still.png", "h264.mp4", "still.bmp"});
    const auto shown = [&] {
        std::string all;
        for (int place = 0; place < rowCount(); ++place) {
            const bool isHidden = find<QTreeView>("lvwMediaList").isRowHidden(place, {});
            EXPECT_EQ(find<QListView>("lvwMediaListIcons").isRowHidden(place), isHidden);
            all += isHidden ? "" : row(place).substr(0, row(place).find('|')) + " ";
        }
        return all;
    };
    auto& filter = find<QLineEdit>("txtFilter");
    const auto typed = [&](const char* text) {
        click(filter);
        QTest::keyClicks(&filter, text);
        settle();
    };
    typed("H264");
    EXPECT_EQ(shown(), "h264.mp4 ");
    EXPECT_EQ(rowCount(), 3);
    EXPECT_EQ(status(), "Selected file: \"\". Total Files in Media List: 3.");
    EXPECT_EQ(fact("lblFileDisplay"), "");
    key(Qt::Key_Escape);
    EXPECT_EQ(shown(), "still.png h264.mp4 still.bmp ");

    typed("L st");
    EXPECT_EQ(shown(), "still.png still.bmp ");
    key(Qt::Key_Down); // to the rows, of which a range passes over the hidden one
    clickRow(0);
    clickRow(2, Qt::ShiftModifier);
    key(Qt::Key_F2);
    EXPECT_EQ(tree(), "Video[still.png still.bmp] Effects[] Overlays[] Audio 1[] Audio 2[]");
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_F2);
    EXPECT_EQ(tree(), "Video[still.png still.bmp still.png still.bmp] Effects[] Overlays[] Audio 1[] Audio 2[]");

    typed("x");
    EXPECT_EQ(shown(), "");
    ASSERT_TRUE(drop({media("still.tga")}));
    EXPECT_TRUE(says("Selected file: \"still.tga\". Total Files in Media List: 4."));
    EXPECT_EQ(filter.text().toStdString(), "");
    EXPECT_EQ(shown(), "still.png h264.mp4 still.bmp still.tga ");

    QWidget& panel = find("frmMediaList"); // squeezed by its divider
    panel.resize(250, panel.height());
    EXPECT_GE(find("lvwMediaList").width(), 120);
}

TEST_F(MediaListScreen, ADragOfARowThatTakesTheReleaseLeavesTheListAtWork)
{
    opened({"still.png", "still.bmp", "h264.mp4"});
    press(list(), rowRect(0).center());
    moveTo(list(), rowRect(0).center() + QPoint(30, 0));
    moveTo(list(), rowRect(0).center() + QPoint(60, 0)); // this platform ends every drag at once
    EXPECT_TRUE(says("Selected file: \"still.png\". Total Files in Media List: 3."));
    const QModelIndexList selected = find<QTreeView>("lvwMediaList").selectionModel()->selectedRows();
    ASSERT_EQ(selected.size(), 1); // a row was dragged, not a selection drawn
    const std::unique_ptr<QMimeData> mark(find<QTreeView>("lvwMediaList").model()->mimeData(selected));
    EXPECT_TRUE(mark->hasFormat(kRowsMimeType));
    find("lvwMediaList").setFocus();
    key(Qt::Key_End);
    EXPECT_EQ(fact("lblFileDisplay"), "h264.mp4");
    release(list(), rowRect(0).center());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MediaListScreen, KeysThatEditTheTimelineAskForAClickThereUnlessTheRangeIsShown)
{
    moduleEdit::ClearSourceClips(); // the clipboard outlives a test
    moduleEdit::ClearEffectClips();
    moduleEdit::ClearTransitionClips();
    opened({"mpeg4.avi", "still.bmp"});
    onTheTracks();
    const std::string whole = tree();
    click(find("picVideo0"), {100, find("picVideo0").height() / 2}); // the first bar is selected
    for (const char* const view : {"&Detail", "&List"}) {
        choose("&View", view);
        window->activateWindow(); // this platform leaves it to the menu, and only in an active one do keys run commands
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        QWidget& rows =
            *find(view[1] == 'D' ? "lvwMediaList" : "lvwMediaListIcons").findChild<QWidget*>("qt_scrollarea_viewport");
        click(rows, {40, 30});
        for (const QKeyCombination edit :
             {QKeyCombination(Qt::Key_Delete), Qt::SHIFT | Qt::Key_Delete, Qt::CTRL | Qt::Key_Delete,
              Qt::CTRL | Qt::Key_X, Qt::CTRL | Qt::Key_C, Qt::CTRL | Qt::Key_U, Qt::KeypadModifier | Qt::Key_Delete}) {
            moveTo(rows, {40, 31});
            moveTo(rows, {41, 30});
            key(edit.key(), edit.keyboardModifiers());
            EXPECT_TRUE(says("Click the timeline first to edit it."));
            EXPECT_EQ(tree(), whole) << edit.toCombined();
            EXPECT_FALSE(find<QAction>("mnuEditPaste").isEnabled()) << edit.toCombined();
        }
    }
    auto& tools = find<QToolBar>("tbr"); // from there it is meant
    click(*tools.widgetForAction(&find<QAction>("tbr_CLEAR")));
    EXPECT_EQ(tree(), "Video[still.bmp] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]");
    key(Qt::Key_F5); // what the range holds can be seen
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(find<QAction>("mnuEditPaste").isEnabled());
    EXPECT_TRUE(find<QAction>("mnuEditUndo").isEnabled());
}

TEST_F(MediaListScreen, ColumnsKeepTheWidthThatThePersonGaveThem)
{
    opened({"mpeg4.avi", "still.bmp"});
    QHeaderView& header = *find<QTreeView>("lvwMediaList").header();
    const int before = header.sectionSize(2);
    drag(*header.viewport(), {header.sectionViewportPosition(2) + before - 2, header.height() / 2}, 37);
    EXPECT_EQ(header.sectionSize(2), before + 37);
    clickRow(0);
    EXPECT_EQ(header.sectionSize(2), before + 37);
    ASSERT_TRUE(drop({media("still.png")}));
    EXPECT_TRUE(until([&] { return rowCount() == 3; }));
    settle();
    EXPECT_EQ(header.sectionSize(2), before + 37);
}

TEST_F(MediaListScreen, TheSelectionIsLiftedAndWithItWhatItShowed)
{
    opened({"mpeg4.avi", "still.bmp"});
    const auto ways = {std::function<void()>([&] {
                           click(list(), {20, list().height() - 5});
                       }),
                       std::function<void()>([&] { clickRow(0, Qt::ControlModifier); }),
                       std::function<void()>([&] { key(Qt::Key_Space, Qt::ControlModifier); })};
    for (const auto& lift : ways) {
        clickRow(0);
        EXPECT_TRUE(until([&] { return brightShare() > 0.05; }));
        EXPECT_EQ(fact("lblInfoDisplay3"), "AVI");
        EXPECT_TRUE(play().isEnabled());
        lift();
        EXPECT_TRUE(says("Selected file: \"\". Total Files in Media List: 2."));
        for (const char* const label : {"lblFileDisplay", "lblInfoDisplay0", "lblInfoDisplay1", "lblInfoDisplay2",
                                        "lblInfoDisplay3", "lblInfoDisplay4"}) {
            EXPECT_EQ(fact(label), "") << label;
        }
        EXPECT_TRUE(until([&] { return brightShare() == 0; }));
        EXPECT_FALSE(play().isEnabled()) << "there is nothing to play";
        EXPECT_TRUE(std::ranges::any_of(find("frmMediaList").findChildren<QLabel*>(),
                                        [](const QLabel* label) { return label->text() == "Path"; }));
    }
}

TEST_F(MediaListScreen, AFileThatTheTimelineUsesIsClosedOnlyWhenThePersonSaysSo)
{
    opened({"mpeg4.avi", "still.bmp"});
    onTheTracks();
    const std::string both = "Video[mpeg4.avi still.bmp] Effects[] Overlays[] Audio 1[mpeg4.avi] Audio 2[]";
    EXPECT_EQ(tree(), both);
    clickRow(0);
    answers.click("&No");
    choose("&File", "&Close File");
    EXPECT_EQ(rowCount(), 2);
    EXPECT_EQ(tree(), both);

    answers.click("&Yes");
    choose("&File", "&Close File");
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(row(0).substr(0, 9), "still.bmp");
    EXPECT_EQ(tree(), "Video[still.bmp] Effects[] Overlays[] Audio 1[] Audio 2[]");
    EXPECT_EQ(barEnd("picAudio0"), -1);
    EXPECT_EQ(fact("lblFileDisplay"), "");
    EXPECT_TRUE(until([&] { return brightShare() == 0; }));
}

} // namespace
} // namespace screens_test
