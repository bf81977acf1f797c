// A title is written over the film, and a still is taken, as a person does it.

#include "screens/screen_harness.h"

#include "core/forms/frmAddText.h"
#include "core/forms/frmTakeSnap.h"
#include "core/shared_state.h"
#include "tools/frmAddText.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>

namespace screens_test {
namespace {

class TitleScreen : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        opened({"mpeg4.avi"});
        key(Qt::Key_F2);
        ASSERT_TRUE(until([&] { return barEnd("picVideo0") > 0; }));
    }

    std::string path(const std::string& name) const { return folder_.path().toStdString() + "/" + name; }
    void inDialogue(Qt::Key command, std::function<void()> deeds)
    {
        answers.work([deeds = std::move(deeds)] {
            settle();
            deeds();
            if (QWidget* const left = front()) {
                left->close();
            }
        });
        key(command, Qt::ControlModifier);
    }
    static std::string text(const char* label) { return part<QLabel>(label).text().toStdString(); }
    static void type(const QString& words)
    {
        QTest::keyClicks(QApplication::focusWidget(), words);
        settle();
    }

    QTemporaryDir folder_;
};

TEST_F(TitleScreen, WrittenMovedAndPutOverTheFilm)
{
    inDialogue(Qt::Key_F5, [&] {
        auto& view = part<QWidget>("picWorkspace");
        auto& edit = part<QPlainTextEdit>("txtText");
        EXPECT_EQ(view.size(), QSize(320, 240));
        EXPECT_GT(expectNames(*front()), 5);
        QTest::mouseClick(&view, Qt::LeftButton, {}, {160, 120});
        settle();
        ASSERT_TRUE(edit.isVisible() && edit.hasFocus());
        type("Winter");
        QTest::keyClick(&edit, Qt::Key_Return);
        type("in the hills");
        EXPECT_LE(edit.document()->size().height(), 2);
        EXPECT_EQ(edit.horizontalScrollBar()->value(), 0) << "the first letters are cut";
        const forms::FrmAddText& form = forms::frmAddText;
        EXPECT_NE(form.picWorkspace.canvas.at(form.imgDragLeft, form.imgDragTop), 0xFFFFFFFFu)
            << "the text stands under the box, too";
        QTest::keyClick(&edit, Qt::Key_Escape);
        settle();
        EXPECT_FALSE(edit.isVisible());
        const QImage seen = view.grab({form.imgDragLeft, form.imgDragTop, form.imgDragWidth, 20}).toImage();
        EXPECT_EQ(seen.pixel(seen.width() - 4, 4) & 0xFFFFFF, 0xFFFFFFu) << "the ground behind a short line";
        const QPoint at(form.imgDragLeft + 5, form.imgDragTop + 5);
        QTest::mousePress(&view, Qt::LeftButton, {}, at);
        QTest::mouseMove(&view, at - QPoint(50, 30));
        QTest::mouseRelease(&view, Qt::LeftButton, {}, at - QPoint(50, 30));
        settle();
        EXPECT_EQ(text("TEXT_POSITION"), std::to_string(at.x() - 55) + " x " + std::to_string(at.y() - 35));
        QTest::mousePress(&view, Qt::LeftButton, {}, at - QPoint(50, 30));
        QTest::mouseRelease(&view, Qt::LeftButton, {}, {-400, -1});
        settle();
        EXPECT_EQ(text("TEXT_POSITION"), "-5 x -5") << "where it can be taken again";
        QTest::mousePress(&view, Qt::LeftButton, {}, {1, 1});
        QTest::mouseRelease(&view, Qt::LeftButton, {}, at - QPoint(49, 29));
        QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
        settle();
        EXPECT_EQ(text("TEXT_POSITION"), std::to_string(at.x() - 54) + " x " + std::to_string(at.y() - 35));
        QTest::keyClick(&view, Qt::Key_B, Qt::ControlModifier);
        settle();
        EXPECT_TRUE(part<QAction>("mnuFormatFontStyleBold").isChecked());
        auto& size = part<QComboBox>("cboSize");
        size.setFocus();
        size.lineEdit()->selectAll();
        type("large");
        QTest::keyClick(size.lineEdit(), Qt::Key_Return);
        settle();
        EXPECT_EQ(size.currentText(), "16");
        type("2");
        QTest::keyClick(size.lineEdit(), Qt::Key_Escape);
        settle();
        EXPECT_EQ(size.currentText(), "16");
        QTest::mouseClick(&view, Qt::LeftButton, {}, at - QPoint(50, 30)); // a press and a release at once
        settle();
        EXPECT_TRUE(edit.isVisible());
        QTest::keyClick(front(), Qt::Key_Escape);
        EXPECT_TRUE(front()->isVisible()) << "no key gives a title up";
        answers.open({path("title")});
        part<QAction>("mnuFileSaveAddAndClose").trigger();
    });
    EXPECT_EQ(rowCount(), 2);
    EXPECT_GT(barEnd("picOverlay0"), 0);
    EXPECT_NE(tree().find("Overlays[title.bmp]"), std::string::npos) << tree();
    EXPECT_EQ(QImage(QString::fromStdString(path("title.bmp"))).size(), QSize(320, 240));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picOverlay0"), -1);
}

TEST_F(TitleScreen, AKeyShowsAtOnce)
{
    state::ProjectWidth = 1280;
    state::ProjectHeight = 720;
    inDialogue(Qt::Key_F5, [&] {
        auto& view = part<QWidget>("picWorkspace");
        const auto isSeen = [&](QPoint place) { return view.visibleRegion().contains(place); };
        front()->resize(640, 420); // less than the picture
        settle();
        ASSERT_FALSE(isSeen(view.rect().center() + QPoint(80, 0)));
        QTest::mouseClick(&view, Qt::LeftButton, {}, view.rect().center());
        type("Winter in the hills");
        auto& edit = part<QPlainTextEdit>("txtText");
        EXPECT_TRUE(edit.viewport()->visibleRegion().contains(edit.cursorRect().center()));
        forms::frmAddText.Font.Size = 72;
        QTest::keyClick(&part<QPlainTextEdit>("txtText"), Qt::Key_Escape);
        frmAddText::PlaceText(frmAddText::kTopLeft);
        settle();
        QElapsedTimer clock;
        clock.start();
        constexpr int kSteps = 20;
        for (int i = 0; i < kSteps; ++i) {
            QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
            settle();
        }
        EXPECT_EQ(text("TEXT_POSITION"), "20 x 0");
        EXPECT_TRUE(isSeen({20, 0}));
        const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6 / kSteps;
        RecordProperty("msForAKey", std::to_string(ms));
        EXPECT_LT(ms, 48) << "a busy machine; asked are 16";
    });
}

TEST_F(TitleScreen, AStillOfTheFilm)
{
    inDialogue(Qt::Key_F2, [&] {
        auto& save = part<QLineEdit>("txtSaveTo");
        EXPECT_TRUE(save.text().endsWith("/mpeg4.bmp"));
        EXPECT_GT(expectNames(*front()), 5);
        auto& width = part<QLineEdit>("txtWidth");
        width.setFocus();
        width.selectAll();
        type("200");
        EXPECT_EQ(part<QWidget>("picWorkspace").width(), 200);
        save.setFocus();
        save.selectAll();
        type(QString::fromStdString(path("still.bmp")));
        QTest::mouseClick(&part<QPushButton>("cmdOK"), Qt::LeftButton);
        settle();
    });
    EXPECT_EQ(QImage(QString::fromStdString(path("still.bmp"))).size(), QSize(200, 240));
    EXPECT_EQ(status(), "Saved still.bmp.");
}

} // namespace
} // namespace screens_test
