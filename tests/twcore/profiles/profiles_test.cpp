// Windows Media profiles as the screens list them, and the user's own files, good and damaged.

#include "engine/ITWProfiles.h"
#include "support/engine_test.h"
#include "twcore/profiles/system_profiles.h"
#include "twcore/profiles/user_profiles.h"

#include <algorithm>
#include <cstdlib>
#include <set>

using engine::ITWProfiles;
using namespace testsupport;

namespace {

namespace fs = std::filesystem;

class ProfilesTest : public EngineTest {
protected:
    void SetUp() override
    {
        EngineTest::SetUp();
        ::setenv("QUILLMONT_PROFILES", folder.path().c_str(), 1);
    }
    void TearDown() override
    {
        ::unsetenv("QUILLMONT_PROFILES");
        EngineTest::TearDown();
    }

    void write(const std::string& name, const std::string& text) const { testmedia::writeBytes(folder / name, text); }

    static std::vector<std::string> customNames()
    {
        std::vector<std::string> names;
        std::string buffer(260, 'x');
        const bool isFound = did(&ITWProfiles::GetFirstCustomProfile, buffer);
        EXPECT_EQ(isFound, !trimmed(buffer).empty());
        while (!trimmed(buffer).empty()) {
            names.push_back(trimmed(buffer));
            check(EngineAs<ITWProfiles>()->GetNextCustomProfile(buffer));
        }
        check(EngineAs<ITWProfiles>()->CloseCustomProfileList());
        return names;
    }
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
    for (const auto& [name, hasPicture] :
         {std::pair{"Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)", true},
          {"Video for dial-up modems or LAN (28.8 to 100 Kbps)", true},
          {"Video for e-mail and dual-channel ISDN (128 Kbps)", true},
          {"Audio for near-CD quality (64 Kbps stereo)", false},
          {"Audio for CD-quality (96 Kbps stereo)", false},
          {"Audio for CD-quality transparency (128 Kbps stereo)", false}}) {
        const auto found = std::ranges::find(list, name, &twcore::Profile::name);
        ASSERT_NE(found, list.end()) << name;
        EXPECT_TRUE(found->sound && found->picture.has_value() == hasPicture) << name;
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
    EXPECT_TRUE(did(&ITWProfiles::InitProfileManager));
    const auto count = [] { return told<std::int16_t>(&ITWProfiles::GetStreamCount); };
    using Numbers = std::vector<int>;
    const auto numbers = [] {
        return Numbers{
            told<std::int16_t>(&ITWProfiles::GetVideoWidth),    told<std::int16_t>(&ITWProfiles::GetVideoHeight),
            told<std::int16_t>(&ITWProfiles::GetVideoFps),      told<std::int32_t>(&ITWProfiles::GetKeyFrameInterval),
            told<std::int32_t>(&ITWProfiles::GetVideoQuality),  told<std::int32_t>(&ITWProfiles::GetAudioSampleRate),
            told<std::int16_t>(&ITWProfiles::GetAudioChannels), told<std::int32_t>(&ITWProfiles::GetStreamBitRate)};
    };
    const auto isSound = [] { return told<std::int16_t>(&ITWProfiles::GetStreamType) != 0; };
    const auto select = [](std::int16_t index) { return did(&ITWProfiles::SelectStream, index); };
    EXPECT_EQ(count(), 0) << "none is open";
    ASSERT_TRUE(did(&ITWProfiles::OpenProfile, "Own ü"));
    EXPECT_EQ(count(), 2);
    std::string text(5000, 'x');
    check(EngineAs<ITWProfiles>()->GetProfileDescription(text));
    EXPECT_EQ(trimmed(text), "About");
    EXPECT_EQ(numbers(), Numbers(8, 0)) << "no stream is selected";
    EXPECT_TRUE(select(0));
    EXPECT_FALSE(isSound());
    EXPECT_EQ(numbers(), (Numbers{320, 240, 30, 5, 80, 0, 0, 250000}));
    EXPECT_TRUE(select(1));
    EXPECT_TRUE(isSound());
    EXPECT_EQ(numbers(), (Numbers{0, 0, 0, 0, 0, 44100, 1, 48000}));

    EXPECT_FALSE(select(-1) || select(2));
    EXPECT_FALSE(did(&ITWProfiles::OpenSystemProfile, static_cast<std::int16_t>(twcore::systemProfiles().size())));
    EXPECT_FALSE(did(&ITWProfiles::OpenProfile, "No such profile"));
    EXPECT_EQ(count(), 0) << "what failed to open is not the one before";
    EXPECT_TRUE(did(&ITWProfiles::OpenProfile, "Audio for CD-quality (96 Kbps stereo)")) << "a system profile by name";
    EXPECT_TRUE(select(0));
    EXPECT_TRUE(isSound());
    check(EngineAs<ITWProfiles>()->ReleaseProfileManager());
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
    for (std::size_t i = 0; i < std::size(damaged); ++i) {
        const std::string name = "damaged" + std::to_string(i) + ".xml";
        write(name, damaged[i]);
        EXPECT_FALSE(twcore::readProfile(folder / name)) << damaged[i];
    }
    fs::create_directory(folder / "folder.xml");
    EXPECT_EQ(customNames(), (std::vector<std::string>{"First", "Second", "First"})) << "in the order of the files";
    EXPECT_FALSE(twcore::findProfile("First")->picture) << "the first of a name";

    ::unsetenv("QUILLMONT_PROFILES");
    ::setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    EXPECT_EQ(twcore::profileFolder(), folder / "quillmont/profiles");
    ::unsetenv("XDG_DATA_HOME");
    ::setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(twcore::profileFolder(), "/home/somebody/.local/share/quillmont/profiles");
    EXPECT_EQ(customNames(), std::vector<std::string>{}) << "no such folder";
}
