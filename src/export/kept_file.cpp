#include "export/kept_file.h"

#include "core/file_text.h"
#include "core/platform.h"
#include "disk/set_aside.h"
#include "disk/whole_file.h"
#include "media/media_files.h"

#include <filesystem>
#include <utility>

namespace exporting {

namespace {

std::string keptAs(const std::string& aside)
{
    return "The old file of that name is kept as " + file_text::ExtractFileName(aside) + ".";
}

} // namespace

void askForPlace(const std::string& path) { const disk::WholeFile asked(path); }

KeptFile::KeptFile(const std::string& path)
{
    // A link stays one: the movie is written where it leads, so the file there makes room.
    std::error_code error;
    path_ = std::filesystem::canonical(path, error).string();
    if (!error) {
        aside_ = disk::setAside(path_);
    }
}

KeptFile::~KeptFile()
{
    if (!aside_.empty() && !disk::putBack(aside_, path_)) {
        media::say(keptAs(aside_));
    }
}

void KeptFile::letGo()
{
    const std::string aside = std::exchange(aside_, {});
    if (!aside.empty()) {
        const bool isInTrash = ports.machine->moveToTrash(aside);
        media::say(isInTrash ? "The old file of that name is in the trash: " + file_text::ExtractFileName(aside) + "."
                             : keptAs(aside));
    }
}

} // namespace exporting
