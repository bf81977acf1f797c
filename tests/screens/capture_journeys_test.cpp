// A recording as a person makes it: the live picture, the file, the stills, the devices' settings, and what goes wrong.

#include "screens/screen_harness.h"

#include "core/forms/frmCapture.h"
#include "core/shared_state.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <filesystem>

namespace screens_test {
namespace {

class CaptureScreen : public ScreenTest {
protected:
    void TearDown() override
    {
        qunsetenv("QUILLMONT_TEST_DEVICES");
        ScreenTest::TearDown();
    }

    std::string path(const char* name) const { return folder_.path().toStdString() + "/" + name; }
    /// Opens the window over these test devices, does that in it, and closes it.
    void inWindow(const char* devices, const std::function<void()>& deeds)
    {
        qputenv("QUILLMONT_TEST_DEVICES", devices);
        state::WorkingFolder = folder_.path().toStdString();
        answers.work([this, deeds] {
            capture_ = front();
            ASSERT_EQ(capture_->objectName(), "frmCapture");
            settle();
            deeds();
            capture_->close();
        });
        key(Qt::Key_F3);
    }
    QAction& entry(const char* name) const { return *capture_->findChild<QAction*>(name); }
    /// Picks the entry, as a click in its menu does: one that is switched off does nothing.
    void pick(const char* name) const
    {
        entry(name).trigger();
        settle();
    }
    std::string says() const { return capture_->findChild<QLabel*>("sbr_1")->text().toStdString(); }
    QWidget& view() const { return *capture_->findChild<QWidget*>("picMainWorkspace"); }
    /// Until another picture is there.
    bool isLive() const
    {
        const QImage now = view().grab().toImage();
        return until([&] { return view().grab().toImage() != now; });
    }
    /// Starts, with that file. isRefused: a box says so.
    void record(const std::string& file, bool isRefused = false)
    {
        answers.work([file] {
            EXPECT_GT(expectNames(*front()), 5);
            part<QLineEdit>("txtCaptureFile").setText(QString::fromStdString(file));
            QTest::mouseClick(&part<QPushButton>("cmdOK"), Qt::LeftButton);
        });
        if (isRefused) {
            answers.click("OK");
        }
        pick("mnuCaptureStart");
    }

    QTemporaryDir folder_;
    QDialog* capture_ = nullptr;
};

TEST_F(CaptureScreen, ARecordingAndAStillGoToTheMediaList)
{
    inWindow("camera,microphone", [&] {
        EXPECT_TRUE(isLive());
        EXPECT_GT(expectNames(*capture_), 5);
        EXPECT_EQ(view().size(), QSize(640, 480)) << "as the camera sends it";
        answers.work([&] {
            EXPECT_GT(expectNames(*front()), 8);
            EXPECT_FALSE(part<QPushButton>("cmdOK").isEnabled());
            part<QComboBox>("cmbVideoCompressors").setCurrentText("Motion JPEG");
            settle();
            QTest::mouseClick(&part<QPushButton>("cmdOK"), Qt::LeftButton);
        });
        pick("mnuCaptureOptions");
        EXPECT_TRUE(isLive());
        record(path("film.avi"));
        EXPECT_FALSE(entry("mnuCaptureOptions").isEnabled() || entry("tbr_TAKE_SNAP").isEnabled());
        EXPECT_TRUE(until([&] { return says().starts_with("3") && says().ends_with(", 1 Seconds Captured"); }))
            << says();
        EXPECT_TRUE(isLive()) << "while it is recorded";
        QTest::keyClick(capture_, Qt::Key_Escape);
        EXPECT_TRUE(capture_->isVisible());
        pick("tbr_STOP_CAPTURE");
        EXPECT_TRUE(isLive());
        pick("mnuToolsTakeSnap");
        EXPECT_EQ(says(), "Snap0000.bmp (" + folder_.path().toStdString() + ")");
        pick("mnuCaptureLCFtoML");
        EXPECT_EQ(says(), "film.avi is in the media list.");
        pick("mnuCaptureLStoML");
        record(path("second.avi")); // and the window is closed meanwhile
        EXPECT_TRUE(until([&] { return says().find(" 1 Seconds") != std::string::npos; }));
    });
    EXPECT_EQ(row(0).substr(0, 15), "film.avi|Video|");
    EXPECT_NE(row(0).find("640"), std::string::npos) << row(0);
    EXPECT_EQ(row(1).substr(0, 12), "Snap0000.bmp");
    EXPECT_TRUE(drop({path("second.avi")}));
    EXPECT_TRUE(until([&] { return rowCount() == 3; }));
}

TEST_F(CaptureScreen, TheEndsThatNobodyChose)
{
    inWindow("camera,microphone,leaves=60", [&] {
        record(path("cut.avi"));
        answers.click("OK");
        EXPECT_TRUE(until([&] { return !answers.boxes.empty(); }));
        settle();
        EXPECT_FALSE(entry("mnuCaptureStop").isEnabled());
        EXPECT_TRUE(entry("mnuCaptureLCFtoML").isEnabled());
        pick("mnuCaptureLCFtoML");
        EXPECT_EQ(rowCount(), 1) << "it plays up to there";
    });
    EXPECT_EQ(answers.boxes.back(),
              "i: The capture device has been removed. The movie holds what was captured up to there.");
    inWindow("camera,microphone", [&] {
        answers.work([&] {
            part<QRadioButton>("optDurationStop").click();
            auto& seconds = part<QLineEdit>("txtDuration");
            EXPECT_TRUE(seconds.hasFocus());
            QTest::keyClicks(&seconds, "a1x");
            EXPECT_EQ(seconds.text(), "1");
            QTest::keyClick(&seconds, Qt::Key_Return);
        });
        pick("mnuCaptureStart");
        EXPECT_TRUE(until([&] { return entry("mnuCaptureStart").isEnabled(); })) << says();
        EXPECT_TRUE(std::filesystem::exists(path("Capture.avi")));
    });
    expectsErrors = true; // the engine's words are in the log
    inWindow("camera,microphone", [&] {
        record("/proc/film.avi", true);
        EXPECT_EQ(answers.boxes.back().substr(0, 3), "x: ");
        EXPECT_NE(answers.boxes.back().find("/proc"), std::string::npos) << answers.boxes.back();
        EXPECT_TRUE(isLive());
    });
}

TEST_F(CaptureScreen, ADevicesOwnSettings)
{
    inWindow("camera,microphone", [&] {
        const auto inPanel = [&](const char* name, std::function<void()> deeds) {
            answers.work([deeds = std::move(deeds)] {
                EXPECT_GT(expectNames(*front()), 2);
                deeds();
            });
            pick(name);
        };
        const auto leave = [](const char* button) { QTest::mouseClick(&part<QPushButton>(button), Qt::LeftButton); };
        inPanel("tbr_CAPTURE_SETTINGS", [&] {
            auto* const number = front()->findChild<QSpinBox*>();
            front()->findChild<QSlider*>()->setValue(90);
            EXPECT_EQ(number->value(), 90);
            leave("cmdOK");
        });
        inPanel("mnuCaptureCameraSettings", [&] {
            auto* const number = front()->findChild<QSpinBox*>();
            EXPECT_EQ(number->value(), 90);
            leave("cmdDefault");
            EXPECT_EQ(number->value(), 50);
            leave("cmdCancel");
        });
        inPanel("mnuCaptureCameraSettings", [&] {
            EXPECT_EQ(front()->findChild<QSpinBox*>()->value(), 90) << "cancelled";
            leave("cmdCancel");
        });
        inPanel("mnuToolsVideoSettings", [&] {
            front()->findChild<QComboBox*>()->setCurrentIndex(0);
            leave("cmdOK");
        });
        const auto& form = forms::frmCapture;
        EXPECT_EQ(view().size(), QSize(form.CaptureWidth, form.CaptureHeight)) << "the window follows";
        EXPECT_TRUE(isLive());
        pick("mnuCapturePreview");
        EXPECT_FALSE(view().findChild<QLabel*>("lblHint")->text().isEmpty());
        pick("mnuCapturePreview");
        EXPECT_TRUE(isLive());
        capture_->activateWindow();
        settle();
        QTest::keyClick(&view(), Qt::Key_F1);
        settle();
        const auto windows = QApplication::topLevelWidgets();
        const auto help = std::ranges::find(windows, QString("helpWindow"), &QWidget::objectName);
        ASSERT_NE(help, windows.end());
        EXPECT_EQ((*help)->findChild<QTextBrowser*>("helpPage")->documentTitle(), "Capturing");
        (*help)->close();
    });
}

} // namespace
} // namespace screens_test
