// A movie saved as a person saves it: the dialogues clicked and typed into, the file read back.

#include "screens/screen_harness.h"

#include "core/forms/frmProgressBar.h"
#include "support/files.h"
#include "support/movie_reader.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <filesystem>
#include <set>

namespace screens_test {
namespace {

class SaveScreen : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        opened({"mpeg4.avi"});
        key(Qt::Key_F2);
        ASSERT_TRUE(until([&] { return barEnd("picVideo0") > 0; }));
    }

    std::string path(const std::string& name) const { return folder_.path().toStdString() + "/" + name; }

    /// Opens Save Timeline; runs `deeds` in it as soon as it stands.
    void inDialogue(std::function<void()> deeds)
    {
        answers.work([deeds = std::move(deeds)] {
            deeds();
            if (QWidget* const left = front()) {
                left->close();
            }
        });
        choose("&File", "Save &Timeline...");
    }
    /// Clicks a button that opens a dialogue; `deeds` runs in that one.
    void into(const char* button, std::function<void()> deeds)
    {
        answers.work(std::move(deeds));
        press(button);
    }
    static void press(const char* button) { QTest::mouseClick(&part<QPushButton>(button), Qt::LeftButton); }
    static void type(const char* box, const std::string& text)
    {
        auto& edit = part<QLineEdit>(box);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, QString::fromStdString(text));
        settle();
    }
    static void pick(const char* list, const char* entry)
    {
        auto& box = part<QComboBox>(list);
        box.setFocus();
        const int place = box.findText(entry);
        ASSERT_GE(place, 0) << entry;
        box.setCurrentIndex(place);
        settle();
    }
    /// Tab goes from control to control as one reads: to the right in a row, then down.
    static void expectReadingOrder()
    {
        const QWidget* before = nullptr;
        QRect last;
        for (const QWidget* next = front()->nextInFocusChain(); next != front(); next = next->nextInFocusChain()) {
            if (!next->isVisible() || (next->focusPolicy() & Qt::TabFocus) == 0 || next->focusProxy() != nullptr) {
                continue;
            }
            const QRect place(next->mapTo(front(), QPoint()), next->size());
            const bool isInRow = place.top() <= last.bottom() && last.top() <= place.bottom();
            EXPECT_TRUE(before == nullptr || (isInRow ? place.left() > last.left() : place.top() > last.top()))
                << before->objectName().toStdString() << " is ahead of " << next->objectName().toStdString();
            before = next;
            last = place;
        }
    }
    /// Every control that is seen has a name, Tab goes down the window, and no two parts answer the same key.
    static void expectReached()
    {
        expectNames(*front());
        expectReadingOrder();
        std::multiset<QString> keys;
        const auto note = [&](const QString& text) {
            if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty()) {
                keys.insert(key.toString());
                EXPECT_TRUE(keys.count(key.toString()) == 1 || text == "&Apply") << text.toStdString(); // told so
            }
        };
        for (const QWidget* const part : front()->findChildren<QWidget*>()) {
            const auto* const tabs = qobject_cast<const QTabWidget*>(part);
            for (int tab = 0; tabs != nullptr && tab < tabs->count(); ++tab) {
                note(tabs->tabText(tab));
            }
            const auto* const label = qobject_cast<const QLabel*>(part);
            if (const QWidget* to = label != nullptr ? label->buddy() : nullptr; to != nullptr) {
                to = to->focusProxy() != nullptr ? to->focusProxy() : to;
                EXPECT_NE(to->focusPolicy(), Qt::NoFocus) << label->text().toStdString() << " leads nowhere";
            }
            if (part->isVisible() && tabs == nullptr) {
                note(part->property("text").toString());
                note(part->property("title").toString());
            }
        }
    }
    /// Codec, size and rate of each stream; format, bytes and title.
    static std::string probed(const std::string& movie)
    {
        QProcess probe;
        probe.start(
            "ffprobe",
            {"-v", "error", "-of", "csv=p=0", "-show_entries",
             "stream=codec_name,width,height,sample_rate,r_frame_rate:format=format_name,size:format_tags=title",
             QString::fromStdString(movie)});
        probe.waitForFinished();
        return probe.readAllStandardOutput().toStdString();
    }
    static std::string text(const char* label) { return part<QLabel>(label).text().toStdString(); }
    /// Saves to the end, in the window that follows.
    void save()
    {
        into("cmdOK", [] {
            EXPECT_TRUE(until([] { return part<QPushButton>("cmdCancel").text() == "&Done"; }));
            EXPECT_EQ(text("lblFramesSaved"), "Save Complete");
            EXPECT_EQ(part<QProgressBar>("pbr").value(), 100);
            press("cmdCancel");
        });
    }

private:
    QTemporaryDir folder_;
};

TEST_F(SaveScreen, AnAviWithACompressorASizeAndATitle)
{
    inDialogue([&] {
        EXPECT_EQ(part<QListWidget>("lstSaveStreams").count(), 2);
        type("txtSaveFileName", path("film.avi"));
        into("cmdAdvanced", [] {
            pick("cboVideoCompressor", "H.264");
            pick("cboAudioCompressor", "MP3");
            pick("cboVideoDimension", "Custom");
            type("txtHeight", "120");
            EXPECT_EQ(part<QLineEdit>("txtWidth").text(), "160");
            part<QTabWidget>("tbs").setCurrentIndex(2);
            type("txtTitle", "By the sea");
            press("cmdOK");
        });
        settle();
        EXPECT_EQ(text("lblVideoDim"), "160 x 120 pixels");
        save();
    });
    const std::string facts = probed(path("film.avi"));
    EXPECT_TRUE(facts.starts_with("h264,160,120,15/1\nmp3,48000,0/0\navi,")) << facts;
    EXPECT_TRUE(facts.ends_with(",By the sea\n")) << facts;
    EXPECT_EQ(testmedia::readMovie(path("film.avi")).frames.size(), 76u) << "of five seconds";
    EXPECT_EQ(shell.opened, std::vector<std::string>{path("film.avi")});
}

TEST_F(SaveScreen, AWindowsMediaFileOfOneTrack)
{
    inDialogue([&] {
        QTest::mouseClick(&part<QRadioButton>("optWMF"), Qt::LeftButton);
        settle();
        EXPECT_EQ(text("lblFPS"), "15");
        auto& tracks = part<QListWidget>("lstSaveStreams");
        tracks.setFocus();
        tracks.setCurrentRow(1);
        QTest::keyClick(&tracks, Qt::Key_Space); // without its sound
        type("txtSaveFileName", path("film.wmv"));
        into("cmdAdvanced", [] {
            part<QTabWidget>("tbs").setCurrentIndex(2);
            type("txtTitle", "In the hills");
            press("cmdOK");
        });
        settle();
        into("cmdOK", [] {
            QTest::mouseClick(&part<QCheckBox>("chkPreviewWhenDone"), Qt::LeftButton, {}, {8, 8});
            EXPECT_TRUE(until([] { return part<QPushButton>("cmdCancel").text() == "&Done"; }));
            press("cmdCancel");
        });
    });
    const std::string facts = probed(path("film.wmv"));
    EXPECT_TRUE(facts.starts_with("wmv2,320,240,15/1\nasf,")) << facts;
    EXPECT_TRUE(facts.ends_with(",In the hills\n")) << facts;
    EXPECT_FALSE(testmedia::readMovie(path("film.wmv")).frames.empty());
    EXPECT_TRUE(shell.opened.empty());
}

TEST_F(SaveScreen, WhyItFailsCanBeReadToItsEnd)
{
    const std::string name(150, 'x'); // no blank to break it at
    inDialogue([&] {
        type("txtSaveFileName", path(name));
        into("cmdOK", [&] {
            const QSize before = front()->size();
            forms::FrmProgressBar& run = forms::frmProgressBar;
            run.tmSave.Enabled = false;
            run.lblTimeLeft = std::string("10:59:59 left");
            run.lblSpeed = std::string("100 times as fast as it plays");
            run.lblSize = std::string("about 100 MB in the end");
            run.lblFramesCopied = std::string("1,234,567 of 1,234,567 frames copied unchanged");
            settle();
            EXPECT_EQ(front()->size(), before) << "the window jumps as the labels fill";
            run.lblFailure = "Cannot write \"" + path(name) + "\". Choose another disk.";
            settle();
            auto& failure = part<QPlainTextEdit>("lblFailure");
            EXPECT_TRUE(failure.isVisible() && front()->rect().contains(failure.geometry()));
            EXPECT_EQ(failure.verticalScrollBar()->maximum(), 0);
            QTest::keyClick(front(), Qt::Key_Escape);
        });
    });
}

TEST_F(SaveScreen, TheQualityAndTheFormatDecideAboutTheBoxForCopying)
{
    inDialogue([&] {
        into("cmdAdvanced", [] {
            pick("cboVideoCompressor", "H.264");
            auto& box = part<QCheckBox>("chkCopyUnchanged");
            EXPECT_TRUE(box.isEnabled() && box.isChecked());
            QTest::keyClick(&part<QSlider>("sldQuality"), Qt::Key_Left);
            settle();
            EXPECT_FALSE(box.isChecked());
            QTest::mouseClick(&box, Qt::LeftButton, {}, {8, box.height() / 2});
            EXPECT_TRUE(box.isChecked());
            press("cmdOK");
        });
        QTest::mouseClick(&part<QRadioButton>("optWMF"), Qt::LeftButton);
        into("cmdAdvanced", [] {
            part<QTabWidget>("tbs").setCurrentIndex(0);
            EXPECT_FALSE(part<QCheckBox>("chkCopyUnchanged").isEnabled());
            press("cmdCancel");
        });
    });
}

TEST_F(SaveScreen, AnOpenerThatFindsNoProgramIsHeard)
{
    const std::string opener = path("xdg-open");
    testmedia::writeBytes(opener, "#!/bin/sh\n[ \"$1\" = file:///film.avi ]\n");
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(path("")) + ":" + before);
    std::string said;
    QtShell desktop;
    desktop.openFailedLater = [&](const std::string& name) { said += name; };
    EXPECT_TRUE(desktop.openWithDesktop("/film.avi") && desktop.openWithDesktop("/other.avi"));
    qputenv("PATH", before);
    EXPECT_TRUE(until([&] { return said == "/other.avi"; })) << said;
}

TEST_F(SaveScreen, EscapeCancelsTheRunAndThenTheDialogue)
{
    inDialogue([&] {
        type("txtSaveFileName", path("film.avi"));
        into("cmdOK", [] {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // one too many
            EXPECT_EQ(front()->objectName().toStdString(), "frmProgressBar");
            QTest::keyClick(front(), Qt::Key_Escape);
        });
        ASSERT_NE(front(), nullptr);
        EXPECT_EQ(front()->objectName().toStdString(), "frmExportTimeline");
        EXPECT_EQ(part<QLineEdit>("txtSaveFileName").text().toStdString(), path("film.avi"));
        QTest::keyClick(front(), Qt::Key_Escape);
    });
    EXPECT_EQ(front(), nullptr);
    EXPECT_TRUE(shell.opened.empty());
}

TEST_F(SaveScreen, EveryControlOfTheDialoguesIsReachedByKeysAndHasAName)
{
    inDialogue([&] {
        expectReached();
        into("cmdAdvanced", [&] {
            for (int tab = 0; tab < 3; ++tab) {
                part<QTabWidget>("tbs").setCurrentIndex(tab);
                settle();
                expectReached();
            }
            part<QTabWidget>("tbs").setCurrentIndex(1);
            into("cmdProperties", [] {
                expectReached();
                part<QTabWidget>("tbs").setCurrentIndex(1);
                settle();
                EXPECT_EQ(part<QTreeWidget>("lvwStreamDetails").horizontalScrollBar()->maximum(), 0);
                press("cmdCancel");
            });
            press("cmdCancel");
        });
    });
    answers.work([] {
        for (int tab = 0; tab < 3; ++tab) {
            part<QTabWidget>("tbSettings").setCurrentIndex(tab);
            settle();
            expectReached();
        }
        press("cmdCancel");
    });
    choose("&Tools", "Optio&ns...");
}

} // namespace
} // namespace screens_test
