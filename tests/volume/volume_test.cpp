// The volume of both players, its setting, and its popup.

#include "core/trap.h"
#include "engine/ITWFilePreview.h"
#include "engine/ITWPreview.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "report/error_log.h"
#include "support/scripted_platform.h"
#include "support/wrapped_engine.h"
#include "volume/frmVolume.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>

namespace {

using namespace frmVolume;

class VolumeTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        wrapped = std::make_shared<testsupport::WrappedEngine>(engine::createEngine(engine::kTimelineEngineClass));
        engine::Engine = wrapped;
        std::destroy_at(&forms::frmVolume);
        std::construct_at(&forms::frmVolume);
    }
    void TearDown() override { engine::Engine.reset(); }

    testsupport::ScriptedPlatform platform;
    std::shared_ptr<testsupport::WrappedEngine> wrapped;
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

TEST_F(VolumeTest, PopupSetsBothPlayers)
{
    forms::frmVolume.iVolume = 40;
    Form_Load();
    EXPECT_TRUE(forms::frmVolume.Visible);
    EXPECT_EQ(wrapped->preview.takeCalls(), "SetVolume -60");
    for (const auto& [slider, engineLevel] : {std::pair{0, -100}, std::pair{100, 0}, std::pair{73, -27}}) {
        forms::frmVolume.sldVolume.SetValue(slider);
        EXPECT_EQ(wrapped->preview.takeCalls(), "SetVolume " + std::to_string(engineLevel));
        EXPECT_EQ(GetVolume(), slider);
    }
    Form_KeyDown(); // an arrow key too
    EXPECT_FALSE(forms::frmVolume.Visible);
    Form_Load();
    EXPECT_EQ(forms::frmVolume.sldVolume.Value(), 73);
    Form_Deactivate();
    EXPECT_FALSE(forms::frmVolume.Visible);
    EXPECT_EQ(error_log::read(), "");
}

} // namespace
