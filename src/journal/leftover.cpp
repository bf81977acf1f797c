#include "journal/leftover.h"

#include "core/file_text.h"
#include "core/platform.h"
#include "journal/bytes.h"
#include "journal/journal_file.h"
#include "journal/object_numbers.h"
#include "journal/writer.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <limits>
#include <sys/stat.h>

namespace journal {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSetAside = "set-aside-";
constexpr std::string_view kEnding = ".journal";
constexpr std::size_t kMostSetAside = 5;

/// Oldest first: the names hold the moment.
std::vector<std::string> setAsidePaths(const std::string& folder)
{
    std::vector<std::string> paths;
    std::error_code none;
    for (fs::directory_iterator entry(folder, none), end; !none && entry != end; entry.increment(none)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(kSetAside) && name.ends_with(kEnding)) {
            paths.push_back(entry->path().string());
        }
    }
    std::ranges::sort(paths);
    return paths;
}

/// Of a file that was set aside; microseconds since 1970, 0 for a name that holds none.
std::int64_t momentIn(const std::string& path)
{
    const std::string digits = fs::path(path).filename().string().substr(kSetAside.size());
    std::int64_t moment = 0;
    const bool isNumber = std::from_chars(digits.data(), digits.data() + digits.size(), moment).ec == std::errc{};
    return isNumber && moment < std::numeric_limits<std::int64_t>::max() ? moment : 0;
}

std::string asText(std::int64_t seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm local{};
    if (::localtime_r(&time, &local) == nullptr) {
        return "?";
    }
    return ports.shell->asText(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

/// How the project's file differs from what the work was begun over; empty when it does not.
std::string changeOfProject(const Leftover& work)
{
    const Desk& desk = work.image.desk;
    if (!desk.isSaved) {
        return {};
    }
    const Origin now = originOf(desk.projectPath);
    if (now == work.origin) {
        return {};
    }
    struct stat facts {};
    const bool isNewer = ::stat(desk.projectPath.c_str(), &facts) == 0 && facts.st_mtime >= work.time;
    return !now.isThere ? "the project's file is no longer there"
           : isNewer    ? "the project's file is newer than this work"
                        : "the project's file was changed since this work began";
}

} // namespace

std::optional<Leftover> leftoverOf(const Objects& objects)
{
    try {
        Leftover work;
        work.image = readState(objects, work.origin);
        work.time = objects.time();
        if (const std::string* const note = objects.find(kNote)) {
            work.note = *note;
        }
        return work.image.hasUnsavedWork() ? std::optional(std::move(work)) : std::nullopt;
    } catch (const Broken&) {
        return std::nullopt;
    }
}

std::vector<Leftover> readSetAside(const std::string& folder)
{
    std::vector<Leftover> works;
    for (const std::string& path : setAsidePaths(folder)) {
        Objects objects;
        if (auto work = readJournal(path, objects) ? leftoverOf(objects) : std::nullopt) {
            work->path = path;
            works.push_back(std::move(*work));
        }
    }
    std::ranges::reverse(works);
    return works;
}

std::string makeRoomForSetAside(const std::string& folder)
{
    const std::vector<std::string> paths = setAsidePaths(folder);
    std::error_code ignored;
    for (std::size_t i = 0; i + kMostSetAside <= paths.size(); ++i) {
        fs::remove(paths[i], ignored);
    }
    const auto moment = std::chrono::system_clock::now().time_since_epoch();
    const std::int64_t now = std::chrono::duration_cast<std::chrono::microseconds>(moment).count();
    // Newer than all of them even when the clock was set back.
    const std::int64_t number = paths.empty() ? now : std::max(now, momentIn(paths.back()) + 1);
    std::string digits = std::to_string(number);
    digits.insert(0, 20 - std::min<std::size_t>(digits.size(), 20), '0'); // so that names sort as moments
    return (fs::path(folder) / (std::string(kSetAside) + digits + std::string(kEnding))).string();
}

std::string describe(const Leftover& work)
{
    const Desk& desk = work.image.desk;
    const std::string name = desk.projectPath.empty() ? "Untitled" : file_text::ExtractFileName(desk.projectPath);
    const std::string steps = desk.historyIndex == 1 ? " step" : " steps";
    std::string text =
        "\"" + name + "\", " + asText(work.time) + ", " + std::to_string(desk.historyIndex) + steps + " to undo";
    for (const std::string& more : {work.note, changeOfProject(work)}) {
        text += more.empty() ? "" : ", " + more;
    }
    return text;
}

bool isWanted(const Leftover& work, const std::vector<Leftover>& older)
{
    std::string text = "Quillmont ended before this work was saved:\r\n\r\n" + describe(work)
                       + ".\r\n\r\nDo you want to bring it back? The saved project stays as it is until you save.";
    if (!older.empty()) {
        text += "\r\n\r\nWork that was set aside earlier can be chosen when you answer No:";
        for (const Leftover& one : older) {
            text += "\r\n" + describe(one);
        }
    }
    return askUser(text, MessageButtons::kYesNo) == MessageAnswer::kYes;
}

} // namespace journal
