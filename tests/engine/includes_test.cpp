// What a file may include: the rings, and the floors of the rooms inside the logic.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace includes_test {
namespace {

namespace fs = std::filesystem;

const fs::path root = QUILLMONT_SOURCE;

bool startsWithAny(std::string_view text, std::initializer_list<std::string_view> starts)
{
    return std::ranges::any_of(starts, [&](auto start) { return text.starts_with(start); });
}

/// All sources, by their paths below the root.
std::vector<std::string> sources()
{
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file() && (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")) {
            files.push_back(fs::relative(entry.path(), root).generic_string());
        }
    }
    return files;
}

/// The names in the #include lines of a file.
std::vector<std::string> includesOf(const std::string& file)
{
    std::vector<std::string> names;
    std::ifstream source(root / file);
    for (std::string line; std::getline(source, line);) {
        std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
        if (startsWithAny(line, {"#include<", "#include\""})) {
            constexpr std::size_t kNameAt = 9;
            names.push_back(line.substr(kNameAt, line.find_first_of(">\"", kNameAt) - kNameAt));
        }
    }
    return names;
}

bool isQt(const std::string& name)
{
    const std::string last = name.substr(name.rfind('/') + 1);
    return name.starts_with("Qt") || (last.size() > 1 && last[0] == 'Q' && last[1] >= 'A' && last[1] <= 'Z');
}

bool isMedia(const std::string& name)
{
    return startsWithAny(name, {"libav", "libsw", "libpostproc", "SDL", "fluidsynth"});
}

/// <vector>: what has a dot or a slash is somebody's header.
bool isStandard(const std::string& name) { return name.find_first_of("./") == std::string::npos; }

bool mayShowQt(const std::string& file)
{
    return startsWithAny(file, {"windowing/", "app/"}) || file.find("_form.") != std::string::npos;
}

TEST(Includes, StayInTheirRings)
{
    std::size_t count = 0;
    for (const std::string& file : sources()) {
        const bool isContract = file.starts_with("engine/");
        const bool isEngine = file.starts_with("twcore/");
        for (const std::string& name : includesOf(file)) {
            const std::string line = file + " includes " + name;
            const bool isOurs = fs::exists(root / name) || fs::exists((root / file).parent_path() / name);
            ++count;
            EXPECT_TRUE(mayShowQt(file) || !isQt(name)) << line;
            EXPECT_TRUE(mayShowQt(file) || !mayShowQt(name)) << line;
            EXPECT_TRUE(isEngine || !isMedia(name)) << line;
            EXPECT_TRUE(!isContract || name.starts_with("engine/") || (isStandard(name) && !isQt(name))) << line;
            EXPECT_TRUE(!isEngine || !isOurs || name.starts_with("engine/") || name.starts_with("twcore/")
                        || name.starts_with("core/"))
                << line;
            EXPECT_TRUE(isEngine || file.starts_with("app/") || !name.starts_with("twcore/")) << line;
            EXPECT_TRUE(file.starts_with("app/") || !name.starts_with("app/")) << line;
        }
    }
    EXPECT_GT(count, 200u) << "the sources were not found in " << root;
}

/// A room of the logic, and the rooms below it that it may include besides `core` and `engine`.
struct Floor {
    std::string_view room;
    std::vector<std::string_view> below;
};

/// From the ground up: nobody names a room that stands further down this table, so no two rooms hold each other.
const std::vector<Floor> kFloors = {
    {"core", {}},
    {"disk", {}},
    {"settings", {}},
    {"report", {}},
    {"volume", {"settings"}},
    {"items", {}},
    {"timeline", {"items", "settings"}},
    {"history", {"items", "timeline"}},
    {"preview", {"items", "timeline", "volume"}},
    {"editing", {"items", "timeline", "history", "preview", "volume"}},
    {"hand", {"items", "timeline", "history", "preview", "editing"}},
    {"media", {"items", "timeline", "preview", "editing", "volume", "settings"}},
    {"export", {"items", "timeline", "preview", "editing", "media", "settings", "disk"}},
    {"capture", {"media", "settings", "export", "disk"}},
    {"tools", {"items", "timeline", "history", "preview", "editing", "media", "settings", "disk"}},
    {"project", {"items", "timeline", "history", "preview", "editing", "media", "settings", "disk"}},
    {"journal", {"items", "timeline", "history", "preview", "editing", "media", "settings", "project", "disk"}},
    {"shell",
     {"items", "timeline", "history", "preview", "editing", "hand", "media", "report", "settings", "project", "journal",
      "export", "capture", "tools", "disk"}},
};

TEST(Includes, RoomsStandOnTheirFloors)
{
    std::map<std::string_view, std::vector<std::string_view>> below;
    for (const Floor& floor : kFloors) {
        for (const std::string_view room : floor.below) {
            EXPECT_TRUE(below.contains(room)) << floor.room << " stands below " << room;
        }
        below[floor.room] = floor.below;
    }
    std::size_t count = 0;
    for (const std::string& file : sources()) {
        const std::string room = file.substr(0, file.find('/'));
        // The screens stand beside: a form includes whatever room it shows.
        if (mayShowQt(file) || startsWithAny(file, {"engine/", "twcore/"})) {
            continue;
        }
        ASSERT_TRUE(below.contains(room)) << file << " stands on no floor";
        for (const std::string& name : includesOf(file)) {
            const std::string other = name.substr(0, name.find('/'));
            if (fs::exists(root / name) && other != room && other != "core" && other != "engine") {
                ++count;
                EXPECT_TRUE(std::ranges::count(below[room], other) > 0) << file << " includes " << name;
            }
        }
    }
    EXPECT_GT(count, 100u) << "the rooms were not found in " << root;
}

} // namespace
} // namespace includes_test
