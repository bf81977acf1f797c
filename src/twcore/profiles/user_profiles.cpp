#include "twcore/profiles/user_profiles.h"

#include "twcore/profiles/system_profiles.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <pugixml.hpp>
#include <set>
#include <stdexcept>
#include <string_view>

namespace twcore {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMaxFileBytes = 1 << 20;
constexpr std::size_t kMaxFiles = 1000;
constexpr std::size_t kMaxNameBytes = 255; // what the callers' buffers hold
constexpr std::size_t kMaxDescriptionBytes = 4900;

struct Damaged : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Range {
    int least;
    int most;
};

/// The attributes of an element: all are known, and each stands once.
class Attributes {
public:
    Attributes(const pugi::xml_node& element, const std::set<std::string_view>& known) : element_(element)
    {
        std::set<std::string_view> seen;
        for (const auto& attribute : element.attributes()) {
            if (!known.contains(attribute.name()) || !seen.insert(attribute.name()).second) {
                throw Damaged("attribute");
            }
        }
    }

    std::string_view text(const char* name) const { return element_.attribute(name).value(); }

    int number(const char* name, Range range, int otherwise) const
    {
        return element_.attribute(name) ? whole(text(name), range) : otherwise;
    }

    int needed(const char* name, Range range) const { return whole(text(name), range); }

    static int whole(std::string_view text, Range range)
    {
        int value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc{} || end != text.data() + text.size() || value < range.least || value > range.most) {
            throw Damaged("number");
        }
        return value;
    }

private:
    pugi::xml_node element_;
};

ProfilePicture readPicture(const pugi::xml_node& element)
{
    const Attributes given(element, {"width", "height", "fps", "bitrate", "quality", "key-frame-seconds"});
    ProfilePicture picture;
    picture.width = given.number("width", {16, 8192}, 0);
    picture.height = given.number("height", {16, 8192}, 0);
    picture.bitRate = given.number("bitrate", {8000, 100'000'000}, 0);
    picture.quality = given.number("quality", {0, 100}, 75);
    picture.keyFrameSeconds = given.number("key-frame-seconds", {1, 60}, 8);
    if ((picture.width == 0) != (picture.height == 0)) {
        throw Damaged("size");
    }
    if (const auto fps = given.text("fps"); !fps.empty()) {
        const auto line = fps.find('/');
        picture.fpsNumerator = Attributes::whole(fps.substr(0, line), {1, 240'000});
        picture.fpsDenominator =
            line == std::string_view::npos ? 1 : Attributes::whole(fps.substr(line + 1), {1, 1001});
        if (picture.fpsNumerator > 240 * picture.fpsDenominator || picture.fpsNumerator < picture.fpsDenominator) {
            throw Damaged("fps");
        }
    }
    return picture;
}

ProfileSound readSound(const pugi::xml_node& element)
{
    const Attributes given(element, {"rate", "channels", "bitrate"});
    return {given.needed("rate", {8000, 48000}), given.number("channels", {1, 2}, 2),
            given.needed("bitrate", {24000, 384'000})};
}

Profile readProfileElement(const pugi::xml_node& root)
{
    if (std::string_view(root.name()) != "quillmont-profile") {
        throw Damaged("root");
    }
    const Attributes given(root, {"version", "name", "description"});
    given.needed("version", {1, 1});
    Profile profile;
    profile.name = given.text("name");
    profile.description = given.text("description");
    const bool isBlank = profile.name.find_first_not_of(" \t\r\n") == std::string::npos;
    if (isBlank || profile.name.front() == ' ' || profile.name.back() == ' ' || profile.name.size() > kMaxNameBytes
        || profile.description.size() > kMaxDescriptionBytes) {
        throw Damaged("name");
    }
    for (const auto& element : root.children()) {
        const std::string_view name = element.name();
        if (name == "video" && !profile.picture) {
            profile.picture = readPicture(element);
        } else if (name == "audio" && !profile.sound) {
            profile.sound = readSound(element);
        } else {
            throw Damaged("element");
        }
    }
    if (!profile.picture && !profile.sound) {
        throw Damaged("empty");
    }
    return profile;
}

} // namespace

fs::path profileFolder()
{
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string_view(value != nullptr ? value : "");
    };
    if (const auto told = variable("QUILLMONT_PROFILES"); !told.empty()) {
        return told;
    }
    const fs::path data = variable("XDG_DATA_HOME");
    const fs::path home = variable("HOME");
    if (!data.is_absolute() && home.empty()) {
        return {};
    }
    return (data.is_absolute() ? data : home / ".local/share") / "quillmont/profiles";
}

std::optional<Profile> readProfile(const fs::path& file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > kMaxFileBytes || error) {
        return std::nullopt;
    }
    pugi::xml_document document;
    if (!document.load_file(file.c_str())) {
        return std::nullopt;
    }
    try {
        return readProfileElement(document.document_element());
    } catch (const Damaged&) {
        return std::nullopt;
    }
}

std::vector<Profile> userProfiles(const fs::path& folder)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        if (at->path().extension() == ".xml" && files.size() < kMaxFiles) {
            files.push_back(at->path());
        }
    }
    std::ranges::sort(files);
    std::vector<Profile> profiles;
    for (const auto& file : files) {
        if (auto profile = readProfile(file)) {
            profiles.push_back(std::move(*profile));
        }
    }
    return profiles;
}

std::optional<Profile> findProfile(const std::string& name)
{
    const auto in = [&](const std::vector<Profile>& list) -> std::optional<Profile> {
        const auto found = std::ranges::find(list, name, &Profile::name);
        return found == list.end() ? std::nullopt : std::optional(*found);
    };
    const auto system = in(systemProfiles());
    return system ? system : in(userProfiles());
}

} // namespace twcore
