// The program itself: one instance a person, also after one that was killed.

#include "app/child_process.h"

#include <QDir>
#include <QImage>
#include <QLockFile>
#include <QTemporaryDir>
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

    Started start()
    {
        const fs::path folder = fs::path(home_.path().toStdString()) / std::to_string(++count_);
        fs::create_directory(folder);
        auto child = std::make_unique<app_test::Child>(
            std::vector<std::string>{"/usr/bin/env", "QT_QPA_PLATFORM=minimal", "QT_DEBUG_BACKINGSTORE=1",
                                     "XDG_RUNTIME_DIR=" + run_.toStdString(), QUILLMONT_PROGRAM},
            folder);
        return {std::move(child), folder};
    }
    /// The process that holds the lock; 0 when nobody does.
    qint64 holder() const
    {
        const QLockFile lock(run_ + "/quillmont.lock");
        qint64 pid = 0;
        QString host;
        QString name;
        return lock.getLockInfo(&pid, &host, &name) ? pid : 0;
    }

    static constexpr int kMainWindow = 760 * 520; // pixels, at the very least
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

} // namespace
} // namespace screens_test
