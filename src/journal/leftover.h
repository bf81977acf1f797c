#pragma once

// Journals that lie in the folder: what a killed run left, and the last five that were set aside. Interface thread
// only.

#include "journal/objects.h"
#include "journal/state_coding.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace journal {

/// Work that can be brought back.
struct Leftover {
    std::string path; // of the file that was set aside
    StateImage image;
    Origin origin;
    std::int64_t time = 0; // of its last change; seconds since 1970
    std::string note;      // why it was set aside
};

/// Nothing when there is no work in it that is not saved, or it cannot be read.
std::optional<Leftover> leftoverOf(const Objects& objects);

/// Newest first.
std::vector<Leftover> readSetAside(const std::string& folder);
/// A name for one more, whose coming drops the oldest of more than five.
std::string makeRoomForSetAside(const std::string& folder);

/// "“film.qpj”, 11/22/2026 4:07 AM, 26 steps"; the project's file as it stands now is told where it is another.
std::string describe(const Leftover& work);

/// The question about the work of a killed run.
bool isWanted(const Leftover& work, const std::vector<Leftover>& older);

/// Lets the person choose one of several descriptions; nothing for none. Set by the screens.
inline std::function<std::optional<std::size_t>(const std::vector<std::string>& descriptions)> chooseLeftover;

} // namespace journal
