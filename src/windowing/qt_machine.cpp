#include "windowing/qt_machine.h"

#include "windowing/language.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <sys/statvfs.h>
#include <thread>

/// A question that a thread of its own has taken to the disk. Shared with that thread, which may outlive the program's
/// interest in it.
struct QtMachine::Asked {
    std::mutex lock;
    std::condition_variable answered;
    VolumeNews news;
};

namespace {

namespace fs = std::filesystem;

/// May hang with the disk.
VolumeNews newsOf(const std::string& path)
{
    VolumeNews news;
    news.hasAnswered = true;
    struct statvfs volume {};
    if (::statvfs(path.c_str(), &volume) == 0 || ::statvfs(fs::path(path).parent_path().c_str(), &volume) == 0) {
        news.freeBytes = static_cast<std::int64_t>(volume.f_bavail) * static_cast<std::int64_t>(volume.f_frsize);
    }
    std::error_code none;
    const auto length = fs::file_size(path, none);
    news.fileBytes = none ? 0 : static_cast<std::int64_t>(length);
    return news;
}

} // namespace

VolumeNews QtMachine::askVolume(std::string_view path, std::int32_t longestMs)
{
    using namespace std::chrono;
    constexpr milliseconds kMoment{20};
    const auto known = asked_.find(path);
    const auto question = known != asked_.end() ? known->second : std::make_shared<Asked>();
    if (known == asked_.end()) {
        asked_.emplace(path, question);
        std::thread([question, name = std::string(path)] {
            const VolumeNews news = newsOf(name);
            const std::scoped_lock held(question->lock);
            question->news = news;
            question->answered.notify_all();
        }).detach();
    }
    const auto deadline = steady_clock::now() + milliseconds(longestMs);
    for (;;) {
        {
            std::unique_lock held(question->lock);
            const auto wait = std::min(kMoment, ceil<milliseconds>(deadline - steady_clock::now()));
            question->answered.wait_for(held, wait, [&] { return question->news.hasAnswered; });
            if (question->news.hasAnswered) {
                asked_.erase(std::string(path));
                return question->news;
            }
        }
        if (steady_clock::now() >= deadline) {
            return {};
        }
        const ShowPass::Calm calm;
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

bool QtMachine::moveToTrash(std::string_view path)
{
    QString there;
    const QString here = fromProgram(path);
    if (!QFile::moveToTrash(here, &there)) {
        return false;
    }
    const QFileInfo trashed(there);
    if (there.isEmpty() || trashed.isAbsolute() || !QFile::rename(there, here)) {
        return true;
    }
    // Where the person's trash cannot be made, the toolkit makes one of the folder that the program stands in.
    QFile::remove("info/" + trashed.fileName() + ".trashinfo");
    QDir().rmdir("info");
    QDir().rmdir("files");
    return false;
}

std::shared_ptr<void> QtMachine::keepAwake(std::string_view why)
{
    // The descriptor in the answer is what keeps it awake; it is closed with the reply, also one that comes late.
    auto call = QDBusMessage::createMethodCall("org.freedesktop.login1", "/org/freedesktop/login1",
                                               "org.freedesktop.login1.Manager", "Inhibit");
    call << "sleep:idle"
         << "Quillmont" << translated(why) << "block";
    return std::make_shared<QDBusPendingReply<QDBusUnixFileDescriptor>>(QDBusConnection::systemBus().asyncCall(call));
}
