// make-help-pictures: the pictures of the help, taken from the program while a small film is made in it.
//
// scripts/help-pictures runs it. Each picture goes to the folder that QUILLMONT_PICTURES names; marked places get a
// ring. It is a journey over the harness of the screens, and fails where the program does not do what the help shows.

#include "screens/screen_harness.h"

#include "core/shared_state.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/sample_files_form.h"

#include <QAction>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeView>

namespace screens_test {
namespace {

constexpr int kAround = 4; // between what is marked and its ring

class HelpPictures : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        window->resize(1024, 700);
        settle();
        state::WorkingFolder = sample::folder().toStdString();
    }

    static void keep(const QPixmap& picture, const char* name)
    {
        const QString path = qEnvironmentVariable("QUILLMONT_PICTURES") + "/" + name + ".png";
        ASSERT_TRUE(picture.save(path)) << path.toStdString();
    }
    static QRect placeIn(const QWidget& ground, const QWidget& part)
    {
        return {part.mapTo(&ground, QPoint()), part.size()};
    }
    /// Paths as on a computer of somebody's, for as long as it lives.
    class Home {
    public:
        explicit Home(const QWidget& ground)
        {
            for (QLineEdit* const box : ground.findChildren<QLineEdit*>()) {
                show(*box, box->text().replace(QDir::homePath(), "/home/ann"));
            }
            for (QLabel* const label : ground.findChildren<QLabel*>()) {
                static const QRegularExpression start("^/tmp/q");
                show(*label, label->text().replace(start, "/home/")); // it is cut
            }
        }
        ~Home()
        {
            for (const auto& [part, text] : before_) {
                part->setProperty("text", text);
                part->blockSignals(false);
            }
        }
        Home(const Home&) = delete;
        Home& operator=(const Home&) = delete;

    private:
        void show(QWidget& part, const QString& text)
        {
            if (const QString now = part.property("text").toString(); now != text) {
                part.blockSignals(true);
                before_.emplace_back(&part, now);
                part.setProperty("text", text);
            }
        }
        std::vector<std::pair<QWidget*, QString>> before_;
    };

    /// Rings round the marks, in the widget's own pixels; only `clip` of it.
    static void take(QWidget& widget, const char* name, const QList<QRect>& marks = {}, QRect clip = {})
    {
        settle();
        const Home home(widget);
        QPixmap picture = widget.grab();
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0xD9, 0x70, 0x2F), 3));
        for (const QRect& mark : marks) {
            painter.drawRoundedRect(mark.adjusted(-kAround, -kAround, kAround, kAround), 8, 8);
        }
        painter.end();
        keep(clip.isNull() ? picture : picture.copy(clip.intersected(picture.rect())), name);
    }
    /// A panel with its caption.
    QWidget& panel(const char* form) const { return *find(form).parentWidget(); }
    void takePanel(const char* form, const char* name, const QList<QWidget*>& marked = {})
    {
        QWidget& whole = panel(form);
        QList<QRect> marks;
        for (const QWidget* const part : marked) {
            marks.push_back(placeIn(whole, *part));
        }
        take(whole, name, marks);
    }
    /// From the scale down to the last row, as wide as the film.
    void takeRows(const char* name)
    {
        constexpr int kHeads = 162;
        QWidget& form = find("frmTimeline");
        const QRect scale = placeIn(form, find("picScale"));
        const QRect last = placeIn(form, find("picAudio1"));
        take(form, name, {},
             QRect(scale.left() - kHeads, scale.top() - 2, kHeads + width_ + 24, last.bottom() - scale.top() + 6));
    }
    /// Zooms until the film is so wide, and the moment's place.
    void showWholeFilm()
    {
        constexpr int kWidest = 430;
        find<QAction>("mnuViewWholeFilm").trigger();
        settle();
        while (barEnd("picVideo0") > kWidest) {
            key(Qt::Key_F7);
        }
        width_ = barEnd("picVideo0");
    }
    int placeOf(int ms) const
    {
        constexpr int kLengthMs = 12000;
        return width_ * ms / kLengthMs;
    }
    void takeMenu(const char* menu, const char* entry, const char* name)
    {
        QMenuBar& bar = *window->menuBar();
        for (QAction* const top : bar.actions()) {
            if (top->text() == menu) {
                QMenu& opened = *top->menu();
                QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(top).center());
                ASSERT_TRUE(until([&] { return opened.isVisible(); }));
                QList<QRect> marks;
                for (QAction* const action : opened.actions()) {
                    if (action->text() == entry) {
                        marks.push_back(opened.actionGeometry(action));
                    }
                }
                ASSERT_FALSE(marks.isEmpty()) << entry;
                take(opened, name, {marks.front().adjusted(kAround + 2, kAround, -kAround - 2, -kAround)});
                opened.close();
            }
        }
    }
    static void pressButton(const char* name) { QTest::mouseClick(&part<QPushButton>(name), Qt::LeftButton); }
    /// The dialogue that the command opens.
    void takeDialogue(const char* name, const char* button, const std::function<void()>& open)
    {
        answers.work([name, button] {
            take(*front(), name);
            pressButton(button);
        });
        open();
        settle();
    }
    void showTab(int place)
    {
        QTabBar& tabs = *find("frmTools").findChild<QTabBar*>();
        click(tabs, tabs.tabRect(place).center());
    }
    QRect tabPlace(int place) const
    {
        const QTabBar& tabs = *find("frmTools").findChild<QTabBar*>();
        return tabs.tabRect(place).translated(tabs.mapTo(&panel("frmTools"), QPoint()));
    }
    void goTo(int ms) { click(find("picScale"), {placeOf(ms), 12}); }

    void openClips();
    void layThem();
    void cutAPiece();
    void addEffects();
    void writeATitle();
    void saveMovie();
    void showTheRest();
    void showCapture();

    int width_ = 0; // of the whole film on the rows, pixels
};

void HelpPictures::openClips()
{
    takeMenu("&File", "Open &File...", "menu_file");
    sample::run("clips");
    ASSERT_TRUE(until([&] { return rowCount() == 2 && !state::BusyOpening; }));
    QTest::qWait(700); // the small player has its picture
    takePanel("frmMediaList", "media_list", {find("frmMediaList").findChild<QWidget*>("cmdPlay")});
}

void HelpPictures::layThem()
{
    auto& list = find<QTreeView>("lvwMediaList");
    click(*list.viewport(), rowRect(0).center());
    click(*list.viewport(), rowRect(1).center(), Qt::ControlModifier);
    key(Qt::Key_F2);
    ASSERT_TRUE(until([&] { return barEnd("picVideo0") > 0; }));
    find<QAction>("mnuViewTimelineList").trigger();
    showWholeFilm();
    QTest::qWait(700);
    takeRows("rows_added");
    QWidget& offer = find("fmeFrameOffer");
    ASSERT_TRUE(offer.isVisible());
    takePanel("frmPreview", "frame_offer", {offer.findChild<QPushButton*>()});
    QTest::mouseClick(offer.findChild<QPushButton*>(), Qt::LeftButton);
    goTo(4000);
    QTest::qWait(900);
    takePanel("frmPreview", "preview", {find("frmPreview").findChild<QWidget*>("cmdPlay")});
}

void HelpPictures::cutAPiece()
{
    goTo(2000);
    key(Qt::Key_F5);
    QWidget& end = find("imgEndSelHandle");
    drag(end, end.rect().center(),
         placeOf(4000) - find("picScale").mapFromGlobal(end.mapToGlobal(end.rect().center())).x());
    takeRows("range");
    key(Qt::Key_Delete, Qt::ControlModifier);
    takeRows("gap_closed");
}

void HelpPictures::addEffects()
{
    goTo(1000);
    key(Qt::Key_Home);
    showTab(1);
    auto& list = *find("frmTools").findChild<QAbstractItemView*>("lvwEffects");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(0, 0)).center());
    settle();
    window->resize(1024, 560); // no room between the list and the button
    settle();
    take(panel("frmTools"), "effects",
         {tabPlace(1), placeIn(panel("frmTools"), *find("frmTools").findChild<QWidget*>("cmdAdd"))});
    window->resize(1024, 700);
    QTest::mouseClick(find("frmTools").findChild<QPushButton*>("cmdAdd"), Qt::LeftButton);
    settle();
    takeRows("fade");
}

void HelpPictures::writeATitle()
{
    goTo(3000);
    QTest::qWait(600);
    answers.work([this] {
        auto& view = part<QWidget>("picWorkspace");
        QTest::mouseClick(&view, Qt::LeftButton, {}, view.rect().center());
        settle();
        QTest::keyClicks(QApplication::focusWidget(), "A day by the sea");
        QTest::keyClick(&part<QPlainTextEdit>("txtText"), Qt::Key_Escape);
        settle();
        QLineEdit& size = *part<QComboBox>("cboSize").lineEdit();
        size.setFocus();
        size.selectAll();
        QTest::keyClicks(&size, "60");
        QTest::keyClick(&size, Qt::Key_Return);
        answers.work([] {
            auto* const colours = qobject_cast<QColorDialog*>(front());
            colours->setCurrentColor(Qt::white);
            colours->accept();
        });
        front()->findChild<QAction*>("mnuFormatFontColor")->trigger();
        for (const char* const choice : {"mnuFormatTransparentBackground", "mnuFormatCenterHorizontally"}) {
            if (auto* const action = front()->findChild<QAction*>(choice)) {
                action->trigger();
            }
        }
        settle();
        take(*front(), "add_text");
        answers.open({(sample::folder() + "/first title.bmp").toStdString()});
        front()->findChild<QAction*>("mnuFileSaveAddAndClose")->trigger();
    });
    key(Qt::Key_F5, Qt::ControlModifier);
    ASSERT_TRUE(until([&] { return barEnd("picOverlay0") > 0; }));
    QTest::qWait(700);
    find<QAction>("mnuViewTimelineList").trigger();
    settle();
    take(*window, "window");
    showTab(2);
    take(panel("frmTools"), "history", {}, {0, 0, 400, 220});
    goTo(3000);
    showTab(0);
    take(panel("frmTools"), "actions", {}, {0, 0, 400, 250});
    takePanel("frmTimeline", "timeline");
}

void HelpPictures::saveMovie()
{
    answers.work([this] {
        answers.work([] {
            part<QComboBox>("cboVideoCompressor").setCurrentText("H.264");
            part<QComboBox>("cboVideoDimension").setCurrentText("640 x 360");
            settle();
            QTest::mouseClick(&part<QCheckBox>("chkFrameRate"), Qt::LeftButton, {}, {8, 8});
            settle();
            take(*front(), "advanced_avi");
            pressButton("cmdOK");
        });
        pressButton("cmdAdvanced");
        take(*front(), "save_timeline");
        answers.work([] {
            QPushButton& done = part<QPushButton>("cmdCancel");
            ASSERT_TRUE(QTest::qWaitFor([&] { return done.text().contains("Done"); }, 60000));
            take(*front(), "saving");
            done.click();
        });
        pressButton("cmdOK");
    });
    choose("&File", "Save &Timeline...");
    settle();
}

void HelpPictures::showTheRest()
{
    takeDialogue("options", "cmdCancel", [&] { choose("&Tools", "Optio&ns..."); });
    click(find("picVideo0"), {20, 12});
    takeDialogue("stretch_mode", "cmdCancel", [&] { key(Qt::Key_M, Qt::ControlModifier); });
    click(find("picOverlay0"), {20, 12});
    takeDialogue("key_color", "cmdCancel", [&] { key(Qt::Key_L, Qt::ControlModifier); });
    takeDialogue("take_snap", "cmdCancel", [&] { key(Qt::Key_F2, Qt::ControlModifier); });
    goTo(5000);
    key(Qt::Key_F8);
    find<QAction>("mnuViewPicturesOnBars").trigger();
    find<QAction>("mnuViewWavesOnBars").trigger();
    goTo(1000);
    const QImage plain = find("picVideo0").grab().toImage();
    for (int wait = 0; wait < 12 && find("picVideo0").grab().toImage() == plain; ++wait) {
        QTest::qWait(5000); // they are made when nothing else is to do
    }
    QTest::qWait(5000);
    takeRows("markers");
}

void HelpPictures::showCapture()
{
    qputenv("QUILLMONT_TEST_DEVICES", "camera,microphone");
    answers.work([this] {
        QDialog* const capture = front();
        QTest::qWait(600);
        take(*capture, "capture");
        answers.work([] {
            take(*front(), "capture_options");
            pressButton("cmdCancel");
        });
        capture->findChild<QAction*>("mnuCaptureOptions")->trigger();
        settle();
        answers.work([] {
            take(*front(), "capture_file");
            pressButton("cmdCancel");
        });
        capture->findChild<QAction*>("mnuFileSetCapFile")->trigger();
        settle();
        capture->close();
    });
    key(Qt::Key_F3);
    qunsetenv("QUILLMONT_TEST_DEVICES");
}

TEST_F(HelpPictures, AreTakenWhileAFilmIsMade)
{
    ASSERT_FALSE(qEnvironmentVariable("QUILLMONT_PICTURES").isEmpty());
    openClips();
    layThem();
    cutAPiece();
    addEffects();
    writeATitle();
    saveMovie();
    showTheRest();
    showCapture();
    takeDialogue("new_project", "cmdCancel", [&] { key(Qt::Key_N, Qt::ControlModifier); });
}

} // namespace
} // namespace screens_test
