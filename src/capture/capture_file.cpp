#include "capture/capture_file.h"

#include "core/file_text.h"
#include "core/forms/frmCapture.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "disk/whole_file.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/frmProgressBar.h"
#include "export/kept_file.h"
#include "media/media_files.h"
#include "media/working_folder.h"

#include <filesystem>

namespace capture {

using engine::Bool16;
using engine::check;
using engine::kFalse;

namespace {

/// To the trash where there is one. False, and the person knows why, when it stays.
bool isRemoved(const std::string& path)
{
    try {
        exporting::askForPlace(path); // what cannot be replaced is not thrown away either
    } catch (const disk::Refused& refused) {
        tellUser(refused.what(), MessageIcon::kCritical);
        return false;
    }
    std::error_code error;
    if (ports.machine->moveToTrash(path)) {
        return true;
    }
    std::filesystem::remove(path, error);
    if (!error) {
        return true;
    }
    tellUser("Unable to delete \"" + path + "\": " + error.message()
                 + ". Please specify a different capture file name.",
             MessageIcon::kCritical);
    return false;
}

/// What is open in the program is no place for a recording: its media, and the project itself.
bool isInUse(const std::string& path)
{
    std::error_code ignored;
    return media::isListed(path) || path == state::ProjectFilePath
           || std::filesystem::equivalent(path, state::ProjectFilePath, ignored);
}

} // namespace

std::string fileToCapture()
{
    std::string name = file_text::Trimmed(forms::frmCapture.CaptureFile);
    if (name.empty()) {
        name = "Capture1";
    }
    if (!std::filesystem::path(name).has_extension()) { // the dialogues that open media would not list it
        name += forms::frmCapture.CaptureFormat == 1 ? ".asf" : ".avi";
    }
    return media::inWorkingFolder(name);
}

bool isPlaceFree(const std::string& path)
{
    if (!frmProgressBar::DoesDiskAnswer(path)) {
        return false;
    }
    if (isInUse(path)) {
        tellUser("The specified file is being used by Quillmont. Please specify a different capture file name.");
        return false;
    }
    Bool16 exists = kFalse;
    check(engine::Engine->FileExists(path, exists));
    return exists == kFalse
           || (askUser("Overwrite Exisiting File " + path + "?", MessageButtons::kYesNo) == MessageAnswer::kYes
               && isRemoved(path));
}

} // namespace capture
