// The tutorial followed step by step, from two clips to a movie; and what the controls answer when they are asked.

#include "core/shared_state.h"
#include "screens/screen_harness.h"
#include "shell/sample_files_form.h"
#include "support/movie_reader.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTime>
#include <QTreeView>
#include <QWhatsThis>

namespace screens_test {
namespace {

class TutorialScreen : public ScreenTest {
protected:
    static QTextBrowser& page()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const found = widget->findChild<QTextBrowser*>("helpPage")) {
                return *found;
            }
        }
        throw std::runtime_error("there is no help");
    }
};

TEST_F(TutorialScreen, EveryControlOfTheWindowAnswersWhatItIs)
{
    key(Qt::Key_F1, Qt::ShiftModifier);
    QWhatsThis::leaveWhatsThisMode();
    int asked = 0;
    for (const QWidget* const widget : window->findChildren<QWidget*>()) {
        const QWidget* answering = widget; // a click asks what it is on, then what that stands in
        while (answering != window.get() && answering->whatsThis().isEmpty()) {
            answering = answering->parentWidget();
        }
        const bool isBar = qobject_cast<const QScrollBar*>(widget) != nullptr; // of a list
        const bool isControl = qobject_cast<const QAbstractButton*>(widget) != nullptr
                               || (qobject_cast<const QAbstractSlider*>(widget) != nullptr && !isBar)
                               || qobject_cast<const QAbstractItemView*>(widget) != nullptr;
        if (widget->isVisible() && widget->focusPolicy() != Qt::NoFocus) {
            EXPECT_TRUE(answering == widget || (!isControl && answering != window.get()))
                << widget->metaObject()->className() << " " << widget->objectName().toStdString() << " in "
                << widget->parentWidget()->objectName().toStdString();
            ++asked;
        }
    }
    EXPECT_GT(asked, 40);
    for (const QMenu* const menu : window->findChildren<QMenu*>()) {
        for (const QAction* const action : menu->actions()) {
            EXPECT_TRUE(action->isSeparator() || action->menu() != nullptr || !action->whatsThis().isEmpty())
                << action->text().toStdString();
        }
    }
    key(Qt::Key_F1, Qt::ShiftModifier);
    choose("&File", "&Close File"); // grey
    QWidget* const answer = QApplication::activePopupWidget();
    ASSERT_TRUE(answer != nullptr && answer->inherits("QWhatsThat"));
    answer->close();
    QWhatsThisClickedEvent link("3_3_Playing.htm#search"); // of the answer at the bar under the preview
    EXPECT_TRUE(find("sldSeekBar").whatsThis().contains(link.href()));
    QCoreApplication::sendEvent(&find("sldSeekBar"), &link);
    settle();
    EXPECT_EQ(page().documentTitle().toStdString(), "Playing");
}

/// Its ten steps, each done as it says.
TEST_F(TutorialScreen, TheTutorialLeadsFromTwoClipsToAMovie)
{
    const std::string folder = sample::folder().toStdString();
    state::WorkingFolder = folder;
    key(Qt::Key_F1, Qt::ControlModifier);
    const auto follow = [](const char* link) { page().setSource(QUrl(link)); };
    follow("quillmont:clips");
    ASSERT_TRUE(until([&] { return rowCount() == 2 && !state::BusyOpening; }));
    follow("quillmont:clips");
    EXPECT_EQ(rowCount(), 2) << "they are there";

    window->activateWindow(); // as the click that follows does on a desktop
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto& list = *find<QTreeView>("lvwMediaList").viewport();
    click(list, rowRect(0).center());
    click(list, rowRect(1).center(), Qt::ControlModifier);
    key(Qt::Key_F2);
    ASSERT_TRUE(until([&] { return barEnd("picVideo0") > 0; }));
    find<QAction>("mnuViewWholeFilm").trigger();
    settle();
    const int all = barEnd("picVideo0");
    EXPECT_EQ(tree(), "Video[sunrise.mp4 sea.mp4] Effects[] Overlays[] Audio 1[sunrise.mp4 sea.mp4] Audio 2[]");
    QTest::mouseClick(find("fmeFrameOffer").findChild<QPushButton*>(), Qt::LeftButton);

    click(find("picScale"), {all * 2 / 12, 12});
    key(Qt::Key_F5);
    QWidget& end = find("imgEndSelHandle");
    drag(end, end.rect().center(),
         all * 4 / 12 - find("picScale").mapFromGlobal(end.mapToGlobal(end.rect().center())).x());
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_NEAR(barEnd("picVideo0"), all * 10 / 12, 8);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(barEnd("picVideo0"), all);
    key(Qt::Key_Y, Qt::ControlModifier);

    click(find("picScale"), {all / 4, 12});
    key(Qt::Key_Home);
    find<QAction>("mnuAddEffectFade").trigger();
    settle();
    EXPECT_NE(tree().find("Effects[Fade]"), std::string::npos) << tree();

    answers.work([&] {
        auto& view = ScreenTest::part<QWidget>("picWorkspace");
        QTest::mouseClick(&view, Qt::LeftButton, {}, view.rect().center());
        settle();
        QTest::keyClicks(QApplication::focusWidget(), "By the sea");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        answers.open({folder + "/words.bmp"});
        front()->findChild<QAction*>("mnuFileSaveAddAndClose")->trigger();
    });
    key(Qt::Key_F5, Qt::ControlModifier);
    EXPECT_NE(tree().find("Overlays[words.bmp]"), std::string::npos) << tree();

    answers.open({folder + "/mine.qpj"});
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(folder) + "/mine.qpj"));

    answers.work([&] {
        answers.work([] {
            ScreenTest::part<QComboBox>("cboVideoCompressor").setCurrentText("H.264");
            ScreenTest::part<QComboBox>("cboVideoDimension").setCurrentText("640 x 360");
            settle();
            QTest::mouseClick(&ScreenTest::part<QCheckBox>("chkFrameRate"), Qt::LeftButton, {}, {8, 8});
            QTest::mouseClick(&ScreenTest::part<QPushButton>("cmdOK"), Qt::LeftButton);
        });
        QTest::mouseClick(&ScreenTest::part<QPushButton>("cmdAdvanced"), Qt::LeftButton);
        answers.work([] {
            auto& done = ScreenTest::part<QPushButton>("cmdCancel");
            ASSERT_TRUE(QTest::qWaitFor([&] { return done.text() == "&Done"; }, 60000));
            done.click();
        });
        QTest::mouseClick(&ScreenTest::part<QPushButton>("cmdOK"), Qt::LeftButton);
    });
    choose("&File", "Save &Timeline...");
    ASSERT_EQ(shell.opened, std::vector<std::string>{folder + "/MyMovie.avi"});
    const testmedia::Movie movie = testmedia::readMovie(shell.opened.front());
    const QTime length = QTime::fromString(QString::fromStdString(status(3)), "h:mm:ss.zzz");
    EXPECT_NEAR(movie.durationSeconds, length.msecsSinceStartOfDay() / 1000.0, 0.05);
    EXPECT_EQ(movie.frameRate, 25);
    EXPECT_EQ(movie.codedWidthPx, 640);

    QFile kept(QString::fromStdString(folder) + "/sea.mp4"); // what a person has made of it stays
    ASSERT_TRUE(kept.open(QIODevice::Append) && kept.write("mine") == 4);
    const qint64 bytes = kept.size();
    kept.close();
    follow("quillmont:film");
    ASSERT_TRUE(until([&] { return tree().starts_with("Video[sunrise.mp4 sea.mp4] Effects[Fade Fade]"); })) << tree();
    EXPECT_EQ(kept.size(), bytes);
}

} // namespace
} // namespace screens_test
