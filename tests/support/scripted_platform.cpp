#include "support/scripted_platform.h"

#include "core/forms/frmAddText.h"
#include "core/forms/frmAdvancedSaveOptions.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmCaptureOptions.h"
#include "core/forms/frmCaptureValues.h"
#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmNewProject.h"
#include "core/forms/frmPreferences.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmProfileProperties.h"
#include "core/forms/frmProgressBar.h"
#include "core/forms/frmTakeSnap.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "volume/frmVolume.h"

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace testsupport {

namespace fs = std::filesystem;

namespace {

template <class Form>
void renew(Form& form)
{
    std::destroy_at(&form);
    std::construct_at(&form);
}

} // namespace

ScriptedPlatform::ScriptedPlatform() : before_(ports)
{
    ports = {this, this, this, this, this, this, this, &letters_, this};
    state::reset();
    renew(forms::frmTimeline);
    renew(forms::frmMediaList);
    renew(forms::frmNewProject);
    renew(forms::frmAddText);
    renew(forms::frmTakeSnap);
    renew(forms::frmExportTimeline);
    renew(forms::frmAdvancedSaveOptions);
    renew(forms::frmProgressBar);
    renew(forms::frmCapture);
    renew(forms::frmCaptureValues);
    renew(forms::frmCaptureOptions);
    renew(forms::frmProfileProperties);
    renew(forms::frmPreferences);
    renew(forms::frmPreview);
    renew(forms::frmTools);
    renew(forms::mdiTarnwick);
    renew(forms::frmVolume);
    show::marked = false;
    std::string pattern = (fs::temp_directory_path() / "quillmont-test-XXXXXX").string();
    folder = mkdtemp(pattern.data()) != nullptr ? pattern : "";
}

ScriptedPlatform::~ScriptedPlatform()
{
    ports = before_;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

MessageAnswer ScriptedPlatform::show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                                     std::string_view title)
{
    messages.push_back({std::string(text), icon, buttons, std::string(title)});
    if (buttons == MessageButtons::kOk) {
        return MessageAnswer::kOk;
    }
    if (answers.empty()) {
        return MessageAnswer::kNo;
    }
    const MessageAnswer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::string ScriptedPlatform::nextPath(std::deque<std::string>& paths)
{
    if (!dialogErrors.empty()) {
        const std::int32_t number = dialogErrors.front();
        dialogErrors.pop_front();
        throw engine::RuntimeError(number, "Dialogue error");
    }
    if (paths.empty()) {
        throw engine::RuntimeError(32755, "Cancel was selected.");
    }
    std::string chosen = paths.front();
    paths.pop_front();
    return chosen;
}

std::string ScriptedPlatform::openFiles(const OpenFileRequest& request)
{
    requests.push_back(request);
    return nextPath(chosenFiles);
}

std::string ScriptedPlatform::saveFile(const SaveFileRequest& request)
{
    saveRequests.push_back(request);
    return nextPath(savedFiles);
}

std::string ScriptedPlatform::pickFolder(std::string_view, std::string_view)
{
    std::string picked = pickedFolders.empty() ? std::string() : pickedFolders.front();
    if (!pickedFolders.empty()) {
        pickedFolders.pop_front();
    }
    return picked;
}

std::int32_t ScriptedPlatform::chooseColour(std::int32_t present)
{
    colourRequests.push_back(present);
    return static_cast<std::int32_t>(std::stol(nextPath(chosenColours), nullptr, 16));
}

void ScriptedPlatform::chooseFont(TextFont& font, std::int32_t& colour)
{
    colour = static_cast<std::int32_t>(std::stol(nextPath(chosenColours), nullptr, 16));
    font = chosenFont;
}

VolumeNews ScriptedPlatform::askVolume(std::string_view path, std::int32_t)
{
    std::error_code none;
    const auto length = fs::file_size(fs::path(path), none);
    return isVolumeSilent ? VolumeNews() : VolumeNews{true, freeBytes, none ? 0 : static_cast<std::int64_t>(length)};
}

bool ScriptedPlatform::moveToTrash(std::string_view path)
{
    trashed.emplace_back(fs::path(path).filename().string());
    return hasTrash && fs::remove(fs::path(path));
}

std::shared_ptr<void> ScriptedPlatform::keepAwake(std::string_view)
{
    auto held = std::make_shared<int>(0);
    awake = held;
    return held;
}

void ScriptedPlatform::letRun()
{
    ++eventsRun;
    if (whileEventsRun) {
        whileEventsRun();
    }
}

namespace {

std::string keyOf(std::string_view application, std::string_view section, std::string_view key)
{
    return std::string(application) + "/" + std::string(section) + "/" + std::string(key);
}

} // namespace

std::optional<std::string> ScriptedPlatform::get(std::string_view application, std::string_view section,
                                                 std::string_view key)
{
    const auto found = settings.find(keyOf(application, section, key));
    return found == settings.end() ? std::nullopt : std::optional(found->second);
}

void ScriptedPlatform::save(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value)
{
    settings[keyOf(application, section, key)] = value;
}

void ScriptedPlatform::deleteSection(std::string_view application, std::string_view section)
{
    const std::string prefix = keyOf(application, section, "");
    std::erase_if(settings, [&](const auto& entry) { return entry.first.starts_with(prefix); });
}

bool ScriptedPlatform::openWithDesktop(std::string_view path)
{
    openedWithDesktop.emplace_back(path);
    return opensWithDesktop;
}

void ScriptedPlatform::setString(std::string_view key, std::string_view name, std::string_view text)
{
    classRows += std::string(key) + (name.empty() ? "" : " ") + std::string(name) + ": " + std::string(text) + "\n";
}

void ScriptedPlatform::setNumber(std::string_view key, std::string_view name, std::uint32_t number)
{
    setString(key, name, "(" + std::to_string(number) + ")");
}

std::int64_t ScriptedPlatform::fileLength(std::string_view path)
{
    std::error_code error;
    const auto length = fs::file_size(fs::path(path), error);
    if (error) {
        throw engine::RuntimeError(53, "File not found");
    }
    return static_cast<std::int64_t>(length);
}

DateTime ScriptedPlatform::fileTime(std::string_view path)
{
    (void)fileLength(path);
    return moment;
}

std::string ScriptedPlatform::asText(const DateTime& when)
{
    char text[64];
    std::snprintf(text, sizeof text, "%d/%d/%d %02d:%02d:%02d", when.month, when.day, when.year, when.hour, when.minute,
                  when.second);
    return text;
}

void ScriptedPlatform::copyWithRename(std::string_view from, std::string_view to)
{
    if (!fs::exists(fs::path(from))) {
        throw engine::RuntimeError(53, "File not found");
    }
    fs::copy_file(fs::path(from), fs::path(to));
}

} // namespace testsupport
