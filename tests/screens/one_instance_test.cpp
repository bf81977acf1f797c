// The program itself: one instance a person, also after one that was killed; and what its words open.

#include "app/child_process.h"

#include <QDir>
#include <QImage>
#include <QLockFile>
#include <QTemporaryDir>
#include <fstream>
#include <gtest/gtest.h>
#include <signal.h>

namespace screens_test {
namespace {

namespace fs = std::filesystem;

/// Programs that share one runtime folder. The platform has no screen and writes what its windows show into pictures
/// in the folder that a program stands in.
class OneInstance : public testing::Test {
protected:
    struct Started {
        std::unique_ptr<app_test::Child> child;
        fs::path folder;

        /// Width times height of the largest picture that its windows have shown.
        int largestPicture() const
        {
            int largest = 0;
            for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
                QFile file(QString::fromStdString(entry.path().string()));
                const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
                // The end mark: it may still be being written.
                const QImage image = bytes.contains("IEND") ? QImage::fromData(bytes) : QImage();
                largest = std::max(largest, image.width() * image.height());
            }
            return largest;
        }
    };

    void SetUp() override
    {
        ASSERT_TRUE(home_.isValid());
        run_ = home_.path() + "/run";
        ASSERT_TRUE(QDir().mkpath(run_));
        QFile::setPermissions(run_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    Started start(const std::vector<std::string>& words = {})
    {
        const fs::path folder = home() / std::to_string(++count_);
        fs::create_directory(folder);
        std::vector<std::string> all{"/usr/bin/env",
                                     "QT_QPA_PLATFORM=minimal",
                                     "QT_DEBUG_BACKINGSTORE=1",
                                     "XDG_RUNTIME_DIR=" + run_.toStdString(),
                                     "XDG_CONFIG_HOME=" + home().string(),
                                     "XDG_DATA_HOME=" + (home() / "data").string(),
                                     "XDG_STATE_HOME=" + (home() / "state").string(),
                                     QUILLMONT_PROGRAM};
        all.insert(all.end(), words.begin(), words.end());
        return {std::make_unique<app_test::Child>(all, folder), folder};
    }
    fs::path home() const { return home_.path().toStdString(); }
    /// The process that holds the lock; 0 when nobody does.
    qint64 holder() const
    {
        const QLockFile lock(run_ + "/quillmont.lock");
        qint64 pid = 0;
        QString host;
        QString name;
        return lock.getLockInfo(&pid, &host, &name) ? pid : 0;
    }

    static constexpr int kMainWindow = 640 * 400; // pixels, at the very least
    static constexpr int kBox = 420 * 200;        // at most

private:
    QTemporaryDir home_;
    QString run_;
    int count_ = 0;
};

TEST_F(OneInstance, ASecondOneOnlyShowsABoxAndAKilledOneLeavesNoLock)
{
    const Started first = start();
    ASSERT_TRUE(first.child->runsUntil([&] { return first.largestPicture() >= kMainWindow; }));
    EXPECT_EQ(holder(), first.child->pid());

    const Started second = start();
    ASSERT_TRUE(second.child->runsUntil([&] { return second.largestPicture() > 0; }));
    EXPECT_LT(second.largestPicture(), kBox);
    EXPECT_EQ(holder(), first.child->pid());
    second.child->kill(SIGKILL);
    second.child->end();

    first.child->kill(SIGKILL);
    EXPECT_EQ(first.child->end().signal, SIGKILL);
    const Started third = start();
    ASSERT_TRUE(third.child->runsUntil([&] { return third.largestPicture() >= kMainWindow; }));
    EXPECT_EQ(holder(), third.child->pid());
}

TEST_F(OneInstance, ItsWordsArePathsOfOneProject)
{
    std::ofstream(home() / "my holiday film.qpj")
        << R"(<QuillmontProject><Timeline/><PreviewDimension Width="320" Height="240"/></QuillmontProject>)";
    const std::string path = (home() / "my holiday film.qpj").string();
    using Words = std::vector<std::string>;
    for (const Words& words : {Words{"../my", "holiday", "film.qpj"}, Words{path}, Words{"\"" + path + "\""}}) {
        SCOPED_TRACE(words.front());
        fs::remove_all(home() / "quillmont");
        const Started program = start(words);
        EXPECT_TRUE(program.child->runsUntil([&] { // the recent projects are kept once it is open
            QFile kept(QString::fromStdString((home() / "quillmont/Quillmont 1.1.ini").string()));
            return kept.open(QIODevice::ReadOnly) && QString(kept.readAll()).contains(QString::fromStdString(path));
        }));
    }
}

TEST_F(OneInstance, WordsThatOpenNothingAreAnswered)
{
    const struct {
        std::vector<std::string> words;
        int status;
        std::string said;
    } cases[] = {{{"--version"}, 0, "quillmont "},
                 {{"-style", "fusion", "--help"}, 0, "usage: quillmont"},
                 {{"--hlep"}, 2, "quillmont: there is no option --hlep."},
                 {{"-style", "fusion", "-x"}, 2, "quillmont: there is no option -x."}};
    for (const auto& [words, status, said] : cases) {
        const app_test::Outcome outcome = start(words).child->end();
        EXPECT_EQ(outcome.status, status) << said;
        EXPECT_NE((status == 0 ? outcome.out : outcome.err).find(said), std::string::npos) << outcome.err;
    }
    const std::pair<std::string, std::string> blind[] = {
        {"NONE=", "quillmont: there is no display to open a window on."},
        {"DISPLAY=:4095", "quillmont: no window can be opened (DISPLAY=:4095)."},
        {"QT_QPA_PLATFORM=fog", "quillmont: no window can be opened (QT_QPA_PLATFORM=fog)."},
        {"WAYLAND_DISPLAY=gone", "quillmont: no window can be opened (WAYLAND_DISPLAY=gone)."}};
    for (const auto& [place, said] : blind) {
        const app_test::Outcome outcome = app_test::Child({"/usr/bin/env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY",
                                                           "-u", "QT_QPA_PLATFORM", place, QUILLMONT_PROGRAM},
                                                          home())
                                              .end();
        EXPECT_EQ(outcome.status, 1) << place;
        EXPECT_TRUE(outcome.err.starts_with(said)) << outcome.err;
    }
}

} // namespace
} // namespace screens_test
