#include "app/edit_platform.h"

#include "engine/runtime_error.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <ostream>
#include <utility>

namespace app {

namespace fs = std::filesystem;

namespace {

std::string keyOf(std::string_view application, std::string_view section, std::string_view key)
{
    return std::string(application) + "/" + std::string(section) + "/" + std::string(key);
}

/// The answer that waits for a dialogue. Raises error 32755 when there is none.
std::string taken(std::string& answer)
{
    constexpr std::int32_t kCancelled = 32755;
    if (answer.empty()) {
        throw engine::RuntimeError(kCancelled, "Cancel was selected.");
    }
    return std::exchange(answer, {});
}

} // namespace

EditPlatform::EditPlatform(std::ostream& told, std::string folder)
    : told_(told), folder_(std::move(folder)),
      before_(std::exchange(ports, {this, this, this, this, this, this, this, &letters_}))
{}

EditPlatform::~EditPlatform() { ports = before_; }

MessageAnswer EditPlatform::show(std::string_view text, MessageIcon, MessageButtons buttons, std::string_view)
{
    std::string line(text);
    std::erase(line, '\r');
    std::ranges::replace(line, '\n', ' ');
    told_ << line << "\n";
    return buttons == MessageButtons::kOk ? MessageAnswer::kOk : MessageAnswer::kYes;
}

std::string EditPlatform::openFiles(const OpenFileRequest&) { return taken(chosenFile); }

std::string EditPlatform::saveFile(const SaveFileRequest&) { return taken(savedFile); }

std::uint32_t EditPlatform::ticks()
{
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
}

std::optional<std::string> EditPlatform::get(std::string_view application, std::string_view section,
                                             std::string_view key)
{
    const auto found = settings_.find(keyOf(application, section, key));
    return found == settings_.end() ? std::nullopt : std::optional(found->second);
}

void EditPlatform::save(std::string_view application, std::string_view section, std::string_view key,
                        std::string_view value)
{
    settings_[keyOf(application, section, key)] = value;
}

void EditPlatform::deleteSection(std::string_view application, std::string_view section)
{
    const std::string prefix = keyOf(application, section, "");
    std::erase_if(settings_, [&](const auto& entry) { return entry.first.starts_with(prefix); });
}

VolumeNews EditPlatform::askVolume(std::string_view path, std::int32_t)
{
    std::error_code error;
    const fs::path file(path);
    fs::space_info space = fs::space(file, error);
    if (error) {
        space = fs::space(file.has_parent_path() ? file.parent_path() : ".", error);
    }
    VolumeNews news;
    news.hasAnswered = true;
    if (!error) {
        news.freeBytes = static_cast<std::int64_t>(space.available);
    }
    return news;
}

std::int64_t EditPlatform::fileLength(std::string_view path)
{
    constexpr std::int32_t kFileNotFound = 53;
    std::error_code error;
    const auto length = fs::file_size(fs::path(path), error);
    if (error) {
        throw engine::RuntimeError(kFileNotFound, "File not found");
    }
    return static_cast<std::int64_t>(length);
}

DateTime EditPlatform::fileTime(std::string_view path)
{
    (void)fileLength(path);
    return {};
}

void EditPlatform::copyWithRename(std::string_view from, std::string_view to)
{
    fs::copy_file(fs::path(from), fs::path(to));
}

} // namespace app
