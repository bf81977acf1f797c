// The volume of both players, as it is heard; its setting, and its popup.

#include "core/trap.h"
#include "engine/ITWFilePreview.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWPreview.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "preview/frmPreview_events.h"
#include "report/error_log.h"
#include "support/manifest.h"
#include "support/scripted_platform.h"
#include "twcore/tarnwick_timeline.h"
#include "volume/frmVolume.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <thread>

namespace {

using engine::check;
using engine::EngineAs;
using namespace frmVolume;

class VolumeTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        std::destroy_at(&forms::frmVolume);
        std::construct_at(&forms::frmVolume);
    }
    void TearDown() override { engine::Engine.reset(); }

    testsupport::ScriptedPlatform platform;
    std::string& stored = platform.settings["Quillmont 1.1/Save Options/Volume"];
};

TEST_F(VolumeTest, Setting)
{
    const struct {
        const char* text;
        int level;
        const char* after;
    } cases[] = {{"", 100, "100"},    {" ", 100, "100"}, {"0", 0, "0"},         {"37", 37, "37"},
                 {"101", 100, "101"}, {"-1", 100, "-1"}, {"loud", 100, "loud"}, {"99999", 100, "99999"}};
    for (const auto& [text, level, after] : cases) {
        stored = text;
        forms::frmVolume.iVolume = 5;
        LoadVolume();
        EXPECT_EQ(GetVolume(), level) << text;
        EXPECT_EQ(stored, after);
    }
    stored = "60";
    SaveVolume(101);
    SaveVolume(-1);
    EXPECT_EQ(stored, "60");
    SaveVolume(0);
    EXPECT_EQ(stored, "0");
    EXPECT_EQ(error_log::read(), "");
}

/// A sound device that writes what is heard to a file, for the player that opens it next.
class Recording {
public:
    explicit Recording(std::string path) : path_(std::move(path))
    {
        ::setenv("SDL_AUDIODRIVER", "disk", 1);
        ::setenv("SDL_DISKAUDIOFILE", path_.c_str(), 1);
    }
    /// How loud it is from now on, gaps left out; 0 when it is silent for most of a second.
    double loudness() const
    {
        constexpr std::size_t kUnderWay = 16384; // the device's block, and the file's buffer
        constexpr std::size_t kEnough = 9600;
        constexpr int kPatience = 80'000;
        std::vector<float> heard;
        auto at = static_cast<std::streamoff>(size() / sizeof(float) * sizeof(float) + kUnderWay);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        for (int count = 0; heard.size() < kEnough && count < kPatience;) {
            float sample = 0;
            std::ifstream file(path_, std::ios::binary); // not there before the player opens its device
            file.seekg(at);
            while (heard.size() < kEnough && file.read(reinterpret_cast<char*>(&sample), sizeof sample)) {
                at += sizeof sample;
                ++count;
                if (sample != 0) {
                    heard.push_back(sample);
                }
            }
            if (std::chrono::steady_clock::now() > deadline) {
                ADD_FAILURE() << "the device stands";
                break;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        const double power = std::inner_product(heard.begin(), heard.end(), heard.begin(), 0.0);
        return heard.empty() ? 0 : std::sqrt(power / static_cast<double>(heard.size()));
    }

private:
    std::size_t size() const
    {
        std::error_code error; // before it is opened
        const auto bytes = std::filesystem::file_size(path_, error);
        return error ? 0 : static_cast<std::size_t>(bytes);
    }

    std::string path_;
};

TEST_F(VolumeTest, BothPlayersAreHeardAtIt)
{
    const std::string sound = (testmedia::mediaFolder() / "stereo-48k.wav").string();
    engine::Bool16 ok = engine::kFalse;
    engine::Handle file = 0;
    engine::Handle stream = 0;
    engine::Handle track = 0;
    check(engine::Engine->OpenFile(sound, file));
    check(EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, stream));
    check(EngineAs<engine::ITWTimeline>()->CreateTrack(engine::kFalse, track));
    check(EngineAs<engine::ITWTimeline>()->AppendSource(track, stream, 0, ok));
    const std::function<void()> starts[] = {[&] {
                                                check(EngineAs<engine::ITWFilePreview>()->OpenFile(sound, ok));
                                                check(EngineAs<engine::ITWFilePreview>()->Play(ok));
                                            },
                                            [&] {
                                                check(EngineAs<engine::ITWPreview>()->BuildPreview(ok));
                                                check(EngineAs<engine::ITWPreview>()->Play(ok));
                                            }};
    for (const auto& start : starts) {
        forms::frmVolume.sldVolume.changed = nullptr;
        SetVolume(100);
        const Recording heard(platform.folder + "/" + std::to_string(&start - starts));
        start();
        double full = 0;
        for (int tries = 0; full == 0 && tries < 3; ++tries) {
            full = heard.loudness();
        }
        EXPECT_GT(full, 0.05);
        stored = "60";
        frmPreview::Load(); // takes the volume of the last time
        EXPECT_NEAR(heard.loudness() / full, 0.216, 0.1);
        Form_Load();
        EXPECT_EQ(forms::frmVolume.sldVolume.Value(), 60);
        for (const auto& [slider, share] : {std::pair{0, 0.0}, std::pair{80, 0.512}, std::pair{100, 1.0}}) {
            forms::frmVolume.sldVolume.SetValue(slider);
            EXPECT_NEAR(heard.loudness() / full, share, 0.1) << slider;
        }
    }
    EXPECT_EQ(error_log::read(), "");
}

} // namespace
