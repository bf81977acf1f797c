#include "export/kept_file.h"

#include "core/file_text.h"
#include "core/platform.h"
#include "disk/set_aside.h"
#include "disk/whole_file.h"
#include "media/media_files.h"

#include <filesystem>
#include <utility>

namespace exporting {

void askForPlace(const std::string& path) { const disk::WholeFile asked(path); }

KeptFile::KeptFile(const std::string& path) : path_(path)
{
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored)) {
        aside_ = disk::setAside(path);
    }
}

KeptFile::~KeptFile()
{
    if (!aside_.empty()) {
        disk::putBack(aside_, path_);
    }
}

void KeptFile::letGo()
{
    const std::string aside = std::exchange(aside_, {});
    if (!aside.empty()) {
        const std::string name = file_text::ExtractFileName(aside);
        media::say(ports.machine->moveToTrash(aside) ? "The old file of that name is in the trash: " + name + "."
                                                     : "The old file of that name is kept as " + name + ".");
    }
}

} // namespace exporting
