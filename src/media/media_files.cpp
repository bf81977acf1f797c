#include "media/media_files.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <algorithm>
#include <filesystem>

namespace media {

std::string pathOf(engine::Handle file)
{
    // A path is never cut: the engine says no to a short buffer, and to a file that does not exist as well.
    constexpr std::size_t kUsualPath = 260;
    constexpr std::size_t kLongestPath = 1 << 17;
    for (std::size_t length = kUsualPath; length <= kLongestPath; length *= 4) {
        std::string path(length, ' ');
        engine::Bool16 ok = engine::kFalse;
        engine::check(engine::Engine->GetFileName(file, path, ok));
        if (ok != engine::kFalse) {
            path.erase(path.find_last_not_of(std::string_view(" \0", 2)) + 1);
            return path;
        }
    }
    return {};
}

bool isListed(const std::string& path)
{
    std::error_code ignored;
    const bool isThere = std::filesystem::exists(path, ignored); // else no listed file can be the same
    return std::ranges::any_of(state::FileCollection, [&](engine::Handle file) {
        const std::string listed = pathOf(file);
        return listed == path || (isThere && std::filesystem::equivalent(listed, path, ignored));
    });
}

std::string lastPiece(const std::string& name) { return name.substr(name.rfind('.') + 1); }

bool isAnyRowSelected()
{
    const ListView& list = forms::frmMediaList.lvwMediaList;
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        if (list.Row(place).Selected) {
            return true;
        }
    }
    return false;
}

void say(std::string text) { forms::mdiTarnwick.sbr.Panel(1) = std::move(text); }

OpeningSpan::OpeningSpan()
{
    state::BusyOpening = true;
    state::OpeningCancelled = false;
}

OpeningSpan::~OpeningSpan() { state::BusyOpening = false; }

} // namespace media
