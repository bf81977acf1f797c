// Windows Media profiles as the screens list them, and the user's own files, good and damaged.

#include "engine/ITWProfiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "twcore/profiles/system_profiles.h"
#include "twcore/profiles/user_profiles.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <unistd.h>

using engine::check;
using engine::EngineAs;
using engine::ITWProfiles;

namespace {

namespace fs = std::filesystem;

/// As the callers read a text: trimmed, its last character dropped.
std::string trimmed(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    if (!text.empty()) {
        EXPECT_EQ(text.back(), '\0');
        text.pop_back();
    }
    return text;
}

class ProfilesTest : public testing::Test {
protected:
    void SetUp() override
    {
        folder = fs::temp_directory_path() / ("quillmont-profiles-" + std::to_string(::getpid()));
        fs::create_directories(folder);
        ::setenv("QUILLMONT_PROFILES", folder.c_str(), 1);
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    }
    void TearDown() override
    {
        engine::Engine.reset();
        ::unsetenv("QUILLMONT_PROFILES");
        fs::remove_all(folder);
    }

    void write(const std::string& name, const std::string& text) const { std::ofstream(folder / name) << text; }

    std::vector<std::string> customNames() const
    {
        std::vector<std::string> names;
        std::string buffer(260, 'x');
        engine::Bool16 found = engine::kFalse;
        check(EngineAs<ITWProfiles>()->GetFirstCustomProfile(buffer, found));
        EXPECT_EQ(found != engine::kFalse, !trimmed(buffer).empty());
        while (!trimmed(buffer).empty()) {
            names.push_back(trimmed(buffer));
            check(EngineAs<ITWProfiles>()->GetNextCustomProfile(buffer));
        }
        check(EngineAs<ITWProfiles>()->CloseCustomProfileList());
        return names;
    }

    fs::path folder;
};

std::string profileXml(const std::string& name, const std::string& streams)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<quillmont-profile version=\"1\" name=\"" + name
           + "\" description=\"About\">" + streams + "</quillmont-profile>";
}

const std::string kVideo = "<video width=\"320\" height=\"240\" fps=\"30000/1001\" bitrate=\"250000\" quality=\"80\" "
                           "key-frame-seconds=\"5\"/>";
const std::string kAudio = "<audio rate=\"44100\" channels=\"1\" bitrate=\"48000\"/>";

} // namespace

TEST_F(ProfilesTest, TheSystemHasTheExpectedNamesAndALadderOfRates)
{
    const auto& list = twcore::systemProfiles();
    const auto find = [&](const std::string& name) { return std::ranges::find(list, name, &twcore::Profile::name); };
    for (const char* name :
         {"Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)",
          "Video for dial-up modems or LAN (28.8 to 100 Kbps)", "Video for e-mail and dual-channel ISDN (128 Kbps)"}) {
        ASSERT_NE(find(name), list.end()) << name;
        EXPECT_TRUE(find(name)->picture && find(name)->sound) << name;
    }
    for (const char* name : {"Audio for near-CD quality (64 Kbps stereo)", "Audio for CD-quality (96 Kbps stereo)",
                             "Audio for CD-quality transparency (128 Kbps stereo)"}) {
        ASSERT_NE(find(name), list.end()) << name;
        EXPECT_FALSE(find(name)->picture) << name;
    }
    std::set<std::string> names;
    int lowest = INT32_MAX;
    int highest = 0;
    for (const auto& profile : list) {
        EXPECT_TRUE(names.insert(profile.name).second) << profile.name;
        EXPECT_FALSE(profile.description.empty()) << profile.name;
        const int rate = (profile.picture ? profile.picture->bitRate : 0) + profile.sound->bitRate;
        lowest = std::min(lowest, rate);
        highest = std::max(highest, rate);
        // A name that tells one rate keeps it.
        for (const auto& [text, most] : {std::pair{"(2 Mbps)", 2000000},
                                         {"(1 Mbps)", 1000000},
                                         {"(700 Kbps)", 700000},
                                         {"to 56 Kbps)", 56000},
                                         {"to 100 Kbps)", 100000},
                                         {"(128 Kbps)", 128000}}) {
            EXPECT_TRUE(profile.name.find(text) == std::string::npos || (rate <= most && rate > most * 9 / 10))
                << profile.name << " " << rate;
        }
    }
    EXPECT_LE(lowest, 32000);
    EXPECT_GE(highest, 1900000);
}

TEST_F(ProfilesTest, OneProfileIsOpenAndInItOneStream)
{
    write("own.xml", profileXml("Own ü", kAudio + kVideo));
    const auto profiles = EngineAs<ITWProfiles>();
    engine::Bool16 ok = engine::kFalse;
    check(profiles->InitProfileManager(ok));
    EXPECT_EQ(ok, engine::kTrue);
    std::int16_t small = -1;
    std::int32_t large = -1;
    check(profiles->GetStreamCount(small));
    EXPECT_EQ(small, 0) << "none is open";

    check(profiles->OpenProfile("Own ü", ok));
    ASSERT_EQ(ok, engine::kTrue);
    check(profiles->GetStreamCount(small));
    EXPECT_EQ(small, 2);
    std::string text(5000, 'x');
    check(profiles->GetProfileDescription(text));
    EXPECT_EQ(trimmed(text), "About");
    check(profiles->GetVideoWidth(small));
    EXPECT_EQ(small, 0) << "no stream is selected";

    check(profiles->SelectStream(0, ok));
    check(profiles->GetStreamType(small));
    EXPECT_EQ(small, 0);
    check(profiles->GetVideoWidth(small));
    EXPECT_EQ(small, 320);
    check(profiles->GetVideoHeight(small));
    EXPECT_EQ(small, 240);
    check(profiles->GetVideoFps(small));
    EXPECT_EQ(small, 30);
    check(profiles->GetKeyFrameInterval(large));
    EXPECT_EQ(large, 5);
    check(profiles->GetVideoQuality(large));
    EXPECT_EQ(large, 80);
    check(profiles->GetStreamBitRate(large));
    EXPECT_EQ(large, 250000);
    check(profiles->GetAudioSampleRate(large));
    EXPECT_EQ(large, 0) << "of another stream";

    check(profiles->SelectStream(1, ok));
    check(profiles->GetStreamType(small));
    EXPECT_NE(small, 0);
    check(profiles->GetAudioSampleRate(large));
    EXPECT_EQ(large, 44100);
    check(profiles->GetAudioChannels(small));
    EXPECT_EQ(small, 1);
    check(profiles->GetStreamBitRate(large));
    EXPECT_EQ(large, 48000);

    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{2}}) {
        check(profiles->SelectStream(index, ok));
        EXPECT_EQ(ok, engine::kFalse);
    }
    check(profiles->OpenSystemProfile(static_cast<std::int16_t>(twcore::systemProfiles().size()), ok));
    EXPECT_EQ(ok, engine::kFalse);
    check(profiles->OpenProfile("No such profile", ok));
    EXPECT_EQ(ok, engine::kFalse);
    check(profiles->GetStreamCount(small));
    EXPECT_EQ(small, 0) << "what failed to open is not the one before";
    check(profiles->OpenProfile("Audio for CD-quality (96 Kbps stereo)", ok));
    EXPECT_EQ(ok, engine::kTrue) << "a system profile by name";
    check(profiles->SelectStream(0, ok));
    check(profiles->GetStreamType(small));
    EXPECT_NE(small, 0);
    check(profiles->ReleaseProfileManager());
}

TEST_F(ProfilesTest, TheUsersFilesCountAndDamagedOnesAreSkipped)
{
    EXPECT_EQ(customNames(), std::vector<std::string>{});
    write("b.xml", profileXml("Second", kVideo));
    write("a.xml", profileXml("First", kAudio));
    write("c.xml", profileXml("First", kVideo + kAudio)); // a name may come twice
    write("d.txt", profileXml("Not XML by name", kAudio));
    const std::string damaged[] = {
        "",
        "no XML",
        profileXml("Cut off", kVideo).substr(0, 90),
        profileXml("", kAudio),
        profileXml("  ", kAudio),
        profileXml(std::string(300, 'n'), kAudio),
        profileXml("No streams", ""),
        profileXml("Two pictures", kVideo + kVideo),
        profileXml("Another element", kAudio + "<script/>"),
        profileXml("No rate", "<audio bitrate=\"64000\"/>"),
        profileXml("Half a size", "<video width=\"320\"/>"),
        profileXml("Letters", "<audio rate=\"44100Hz\" bitrate=\"64000\"/>"),
        profileXml("Too much", "<audio rate=\"99999999999\" bitrate=\"64000\"/>"),
        profileXml("Three channels", "<audio rate=\"44100\" channels=\"3\" bitrate=\"64000\"/>"),
        profileXml("No rate of frames", "<video fps=\"25/0\"/>"),
        profileXml("Twice", "<audio rate=\"44100\" rate=\"48000\" bitrate=\"64000\"/>"),
        profileXml("Unknown", "<audio rate=\"44100\" bitrate=\"64000\" codec=\"mp3\"/>"),
        "<other version=\"1\" name=\"Root\">" + kAudio + "</other>",
        "<quillmont-profile version=\"2\" name=\"Later\">" + kAudio + "</quillmont-profile>",
    };
    int number = 0;
    for (const auto& text : damaged) {
        write("damaged" + std::to_string(number) + ".xml", text);
        EXPECT_FALSE(twcore::readProfile(folder / ("damaged" + std::to_string(number++) + ".xml"))) << text;
    }
    fs::create_directory(folder / "folder.xml");
    EXPECT_EQ(customNames(), (std::vector<std::string>{"First", "Second", "First"})) << "in the order of the files";
    EXPECT_FALSE(twcore::findProfile("First")->picture) << "the first of a name";

    ::unsetenv("QUILLMONT_PROFILES");
    ::setenv("XDG_DATA_HOME", folder.c_str(), 1);
    EXPECT_EQ(twcore::profileFolder(), folder / "quillmont/profiles");
    ::unsetenv("XDG_DATA_HOME");
    ::setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(twcore::profileFolder(), "/home/somebody/.local/share/quillmont/profiles");
    EXPECT_EQ(customNames(), std::vector<std::string>{}) << "no such folder";
}
