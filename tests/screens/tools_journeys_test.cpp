// The key colour of an overlay and the stretch mode, chosen as a person chooses them.

#include "screens/screen_harness.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <set>

namespace screens_test {
namespace {

class ToolScreen : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        opened({"mpeg4.avi"});
        key(Qt::Key_F2);
        key(Qt::Key_F4);
        ASSERT_TRUE(until([&] { return barEnd("picVideo0") > 0 && barEnd("picOverlay0") > 0; }));
    }
    /// Selects that row's first bar, opens the dialogue by its key, does that in it, and leaves it by the button.
    void work(const char* row, Qt::Key opening, std::function<void()> deeds, const char* button = "cmdOK")
    {
        click(find(row), {12, 12});
        answers.work([deeds = std::move(deeds), button] {
            expectNames(*QApplication::activeModalWidget());
            deeds();
            QTest::mouseClick(&part<QPushButton>(button), Qt::LeftButton);
        });
        key(opening, Qt::ControlModifier);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
    /// "0 255 0", as the boxes of the key colour say.
    static std::string boxes()
    {
        settle();
        std::string all;
        for (const char* const box : {"txtRed", "txtGreen", "txtBlue"}) {
            all += (all.empty() ? "" : " ") + part<QLineEdit>(box).text().toStdString();
        }
        return all;
    }
    static void tell(QWidget& widget, QEvent::Type type, QPointF at)
    {
        QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&widget, &event);
    }
};

/// Run once more with a pixel of the picture one and a half of the screen.
TEST_F(ToolScreen, TheDropperPicksWhatIsSeenBelowIt)
{
    std::string picked;
    work("picOverlay0", Qt::Key_L, [&] {
        EXPECT_EQ(boxes(), "0 0 0");
        auto& frame = part<QWidget>("imgDisplay");
        EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the dropper is not seen";
        const QImage seen = frame.grab().toImage();
        std::set<std::string> colours;
        tell(frame, QEvent::MouseButtonPress, {2, 2});
        for (double x = 8.5; x < 320; x += 22) { // between two pixels, as a fine screen tells it
            tell(frame, QEvent::MouseMove, {x, x * 0.7});
            const QColor below =
                seen.pixelColor((QPointF(x, x * 0.7) * seen.devicePixelRatio() - QPointF(0.5, 0.5)).toPoint());
            picked = boxes();
            EXPECT_EQ(picked, std::to_string(below.red()) + " " + std::to_string(below.green()) + " "
                                  + std::to_string(below.blue()))
                << x;
            colours.insert(picked);
        }
        tell(frame, QEvent::MouseButtonRelease, {2, 2});
        EXPECT_GT(colours.size(), 5U);
    });
    const auto expectKey = [&](const char* what, const std::string& colour) {
        work(
            "picOverlay0", Qt::Key_L, [&] { EXPECT_EQ(boxes(), colour) << what; }, "cmdCancel");
    };
    expectKey("OK", picked);
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Y, Qt::ControlModifier); // ahead of the next press on a row, which ends the way forward
    expectKey("redone", picked);
    key(Qt::Key_Z, Qt::ControlModifier);
    expectKey("undone", "0 0 0");
}

TEST_F(ToolScreen, TheModeStaysAndTheFourthChangesNothing)
{
    const struct {
        const char* opensOn;
        const char* chosen;
    } visits[] = {{"optStretch", "optPreserve"},
                  {"optPreserve", "optCrop"},
                  {"optCrop", "optStretchPreserve"},
                  {"optCrop", "optStretch"}};
    for (const auto& visit : visits) {
        work("picVideo0", Qt::Key_M, [&] {
            EXPECT_TRUE(part<QRadioButton>(visit.opensOn).isChecked()) << visit.opensOn;
            const qint64 picture = part<QLabel>("imgPreview").pixmap().cacheKey();
            QTest::mouseClick(&part<QRadioButton>(visit.chosen), Qt::LeftButton, {}, {8, 8});
            settle();
            EXPECT_TRUE(part<QRadioButton>(visit.chosen).isChecked());
            EXPECT_NE(part<QLabel>("imgPreview").pixmap().cacheKey(), picture);
        });
    }
}

} // namespace
} // namespace screens_test
