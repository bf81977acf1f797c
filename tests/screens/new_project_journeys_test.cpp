// A new project by keys and clicks, and the line that offers the first picture's size for the movie.

#include "project/frmNewProject.h"
#include "screens/screen_harness.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace screens_test {
namespace {

class NewProjectScreen : public ScreenTest {
protected:
    static QWidget& dialogue() { return *QApplication::activeModalWidget(); }
    /// A key where the dialogue's focus is.
    static void press(Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        QTest::keyClick(dialogue().focusWidget(), key, keys);
        settle();
    }
    static void type(const char* text)
    {
        QTest::keyClicks(dialogue().focusWidget(), text);
        settle();
    }
    static std::string focus() { return dialogue().focusWidget()->objectName().toStdString(); }
    static std::string size()
    {
        return (part<QLineEdit>("txtWidth").text() + " x " + part<QLineEdit>("txtHeight").text()).toStdString();
    }
    double pictureShape() const
    {
        const QWidget& picture = find("picDisplay");
        return double(picture.width()) / picture.height();
    }
};

TEST_F(NewProjectScreen, IsMadeByKeysAlone)
{
    answers.meanwhile = [&] {
        EXPECT_EQ(dialogue().windowTitle(), "New Project");
        EXPECT_EQ(focus(), "cboPreviewDimension");
        EXPECT_FALSE(part<QLineEdit>("txtWidth").isEnabled());
        press(Qt::Key_Down);
        EXPECT_EQ(size(), "640 x 480");
        press(Qt::Key_End);
        EXPECT_EQ(part<QComboBox>("cboPreviewDimension").currentText(), "Custom");
        press(Qt::Key_C, Qt::AltModifier);
        EXPECT_EQ(focus(), "txtWidth");
        part<QLineEdit>("txtWidth").selectAll();
        type("9");
        EXPECT_EQ(size(), "9 x 6.75");
        press(Qt::Key_Return);
        EXPECT_EQ(answers.boxes,
                  (std::vector<std::string>{"i: The width and the height must be numbers from 16 to 4096."}));
        dialogue().activateWindow(); // as the desktop does when the box has gone
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialogue()));
        EXPECT_EQ(focus(), "txtWidth");
        type("960"); // over what is selected
        EXPECT_EQ(size(), "960 x 720");
        press(Qt::Key_L, Qt::AltModifier);
        EXPECT_TRUE(until([] { return !part<QCheckBox>("chkLockAspectRatio").isChecked(); }));
        press(Qt::Key_Backtab);
        EXPECT_EQ(focus(), "txtHeight");
        type("480");
        EXPECT_EQ(size(), "960 x 480");
    };
    answers.click("OK");
    answers.click("OK"); // of the box that comes first
    EXPECT_TRUE(frmNewProject::ShowModal());
    settle();
    EXPECT_NEAR(pictureShape(), 2.0, 0.02);
}

TEST_F(NewProjectScreen, EscapeLeavesAllAndHelpStandsBesideIt)
{
    const double before = pictureShape();
    answers.meanwhile = [&] {
        part<QComboBox>("cboPreviewDimension").setCurrentText("1920 x 1080");
        QTest::mouseClick(&part<QPushButton>("cmdHelp"), Qt::LeftButton);
        settle();
        QWidget* const help = dialogue().findChild<QWidget*>("helpWindow");
        ASSERT_NE(help, nullptr);
        EXPECT_EQ(help->windowTitle(), "New project - Help");
        help->close();
        QTest::keyClick(&dialogue(), Qt::Key_Escape);
    };
    answers.click("Cancel"); // it is closed already
    EXPECT_FALSE(frmNewProject::ShowModal());
    settle();
    EXPECT_EQ(pictureShape(), before);
}

TEST_F(NewProjectScreen, TheFirstPictureOffersItsSizeBesideThePicture)
{
    QWidget& line = find("fmeFrameOffer");
    const auto& words = find<QLabel>("lblFrameOffer");
    opened({"large.jpg"});
    EXPECT_FALSE(line.isVisible());
    key(Qt::Key_F2);
    ASSERT_TRUE(until([&] { return line.isVisible(); }));
    EXPECT_EQ(words.text().replace(QChar::Nbsp, ' '), "The movie is 320 x 240, large.jpg is 3000 x 2000.");
    QPushButton& use = find<QPushButton>("cmdUseFrame");
    EXPECT_EQ(use.text(), "Use 3000 x 2000");
    const QWidget& panel = find("frmPreview");
    for (const QSize size : {QSize(1600, 900), QSize(1024, 768), QSize(760, 520)}) {
        window->resize(size);
        settle();
        EXPECT_TRUE(panel.rect().contains(line.geometry())) << size.width();
        EXPECT_FALSE(line.geometry().intersects(find("fmeDisplay").geometry())) << size.width();
        const QRect buttons = use.geometry() | find("cmdKeepFrame").geometry();
        EXPECT_TRUE(line.rect().contains(words.geometry() | buttons)) << size.width();
        EXPECT_GE(use.width(), use.fontMetrics().horizontalAdvance(use.text())) << size.width();
        EXPECT_FALSE(words.geometry().intersects(use.geometry())) << size.width();
        EXPECT_GE(words.height(), words.heightForWidth(words.width())) << size.width() << " no word is cut off";
    }
    click(use);
    EXPECT_FALSE(line.isVisible());
    EXPECT_NEAR(pictureShape(), 1.5, 0.03);
}

} // namespace
} // namespace screens_test
