// Link, lock and disable.

#include "items/track_rows.h"
#include "project/row_options.h"
#include "support/logic_harness.h"

#include <pugixml.hpp>

namespace logic_test {
namespace {

using namespace frmTimeline;

class OptionsTest : public LogicTest {
protected:
    /// A row's boxes and pictures: "110 LINK LOCK DISABLE".
    static std::string row(const CheckBox& link, const CheckBox& lock, const CheckBox& disable, const ImageBox& imgLink,
                           const ImageBox& imgLock, const ImageBox& imgDisable)
    {
        return std::to_string(link.Value) + std::to_string(lock.Value) + std::to_string(disable.Value) + " "
               + imgLink.Picture.get() + " " + imgLock.Picture.get() + " " + imgDisable.Picture.get()
               + (link.Enabled ? "" : " fixed");
    }
    std::string videoRow() const
    {
        return row(form.chkLinkVideo[0], form.chkLockVideo[0], form.chkDisableVideo[0], form.imgLinkVideo[0],
                   form.imgLockVideo[0], form.imgDisableVideo[0]);
    }
    std::string effectRow() const
    {
        return row(form.chkLinkEffect[0], form.chkLockEffect[0], form.chkDisableEffect[0], form.imgLinkEffect[0],
                   form.imgLockEffect[0], form.imgDisableEffect[0]);
    }
    std::string audioRow() const
    {
        return row(form.chkLinkAudio[1], form.chkLockAudio[1], form.chkDisableAudio[1], form.imgLinkAudio[1],
                   form.imgLockAudio[1], form.imgDisableAudio[1]);
    }
    /// Link, lock and disable of every row, with a tick where the engine has its track linked: "100' 101 000 ...".
    static std::string boxes()
    {
        std::string all;
        for (const items::TrackRow& row : items::rows()) {
            engine::Bool16 linked = 0;
            check(engine::EngineAs<engine::ITWTimeline>()->GetTrackLink(items::trackOf(row), linked));
            all += (all.empty() ? "" : " ") + std::to_string(row.chkLink.Value) + std::to_string(row.chkLock.Value)
                   + std::to_string(row.chkDisable.Value) + (linked != 0 ? "'" : "");
        }
        return all;
    }
    /// The engine's calls that change an option, since the last time.
    std::string takeCalls()
    {
        std::string all;
        for (const char* const name : {"SetTrackLink", "SetTrackDisabled", "SetEffectsEnabled"}) {
            const int count = engineCalls.counts[name];
            all += count == 0 ? "" : std::string(all.empty() ? "" : " ") + name + "x" + std::to_string(count);
        }
        engineCalls.counts.clear();
        return all;
    }
};

TEST_F(OptionsTest, EachChangeDoesItsOwn)
{
    takeCalls();
    struct Case {
        const char* what;
        void (*click)(std::int16_t);
        const char* calls;
    };
    const Case cases[] = {
        {"link video", imgLinkVideo_Click, "SetTrackLinkx1"},
        {"link audio", imgLinkAudio_Click, "SetTrackLinkx1"},
        {"link overlay", imgLinkOverlay_Click, "SetTrackLinkx1"},
        {"link effect", imgLinkEffect_Click, ""},
        {"lock video", imgLockVideo_Click, ""},
        {"lock overlay", imgLockOverlay_Click, ""},
        {"lock effect", imgLockEffect_Click, ""},
        {"disable video", imgDisableVideo_Click, "SetTrackDisabledx1"},
        {"disable overlay", imgDisableOverlay_Click, "SetTrackDisabledx1"},
        {"disable effect", imgDisableEffect_Click, "SetEffectsEnabledx1"},
    };
    for (const Case& c : cases) {
        c.click(0);
        EXPECT_EQ(takeCalls(), c.calls) << c.what;
        EXPECT_TRUE(std::exchange(state::ProjectModified, false)) << c.what;
    }
    EXPECT_EQ(videoRow(), "011 BLANK LOCK BLANK fixed");
    EXPECT_EQ(effectRow(), "011 BLANK LOCK BLANK");
    EXPECT_EQ(audioRow(), "100 LINK BLANK DISABLE_AUDIO");
    imgLinkVideo_Click(0);
    EXPECT_EQ(videoRow(), "011 BLANK LOCK BLANK fixed") << "a locked row keeps its link";
    EXPECT_FALSE(state::ProjectModified);
    EXPECT_TRUE(moduleTWState::IsTrackLocked(video()) && moduleTWState::IsTrackLocked(state::OverlayTrack));
    EXPECT_FALSE(moduleTWState::IsTrackLocked(audio(1)) || moduleTWState::IsTrackLocked(0)
                 || moduleTWState::IsTrackLocked(999999));

    moduleTimeline::EnableLinkOption(true);
    EXPECT_TRUE(form.chkLinkAudio[1].Visible && form.imgLinkOverlay[0].Visible);
    moduleTimeline::ReInitLinkLockDisable();
    EXPECT_EQ(videoRow(), "100 BLANK BLANK DISABLE") << "linked, and yet without its picture";
    EXPECT_EQ(effectRow(), "100 BLANK BLANK DISABLE");
    EXPECT_EQ(audioRow(), "100 BLANK BLANK DISABLE_AUDIO");
    moduleTimeline::EnableLinkOption(true);
    EXPECT_EQ(audioRow(), "100 LINK BLANK DISABLE_AUDIO");
}

TEST_F(OptionsTest, AreKeptByTheProject)
{
    imgLinkAudio_Click(1);
    imgLockOverlay_Click(0);
    imgDisableEffect_Click(0);
    imgDisableVideo_Click(0);
    pugi::xml_document kept;
    project::storeRowOptions(kept.append_child("QuillmontProject"));
    std::ostringstream written;
    kept.child("QuillmontProject").child("Rows").print(written, "", pugi::format_raw);
    EXPECT_EQ(written.str(), "<Rows><Row Name=\"Video\" Link=\"1\" Lock=\"0\" Disable=\"1\"/>"
                             "<Row Name=\"Effect\" Link=\"1\" Lock=\"0\" Disable=\"1\"/>"
                             "<Row Name=\"Overlay\" Link=\"1\" Lock=\"1\" Disable=\"0\"/>"
                             "<Row Name=\"Audio 1\" Link=\"1\" Lock=\"0\" Disable=\"0\"/>"
                             "<Row Name=\"Audio 2\" Link=\"0\" Lock=\"0\" Disable=\"0\"/></Rows>");

    const std::string tracks = "<Timeline><Track Kind=\"Video\" Disabled=\"1\"/><Track Kind=\"Audio\"/>"
                               "<Track Kind=\"Video\" Linked=\"0\"/><Track Kind=\"Audio\" Disabled=\"1\"/></Timeline>";
    const struct {
        std::string file;
        const char* boxes;
        const char* calls; // on the way there from all at their start
    } cases[] = {{written.str(), "101' 101' 110' 100' 000", "SetTrackLinkx1 SetTrackDisabledx1 SetEffectsEnabledx1"},
                 {"<Timeline/><ZoomFactor Value=\"5\"/>", "100' 100' 100' 100' 100'", ""},
                 {tracks, "101' 100' 000 100' 101'", "SetTrackLinkx1 SetTrackDisabledx2"},
                 {tracks + "<Rows><Row a=\"\" b=\"0\"/><Row/></Rows>", "000 100 100' 100' 100'", "SetTrackLinkx1"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        moduleTimeline::ReInitLinkLockDisable();
        EXPECT_EQ(boxes(), "100' 100' 100' 100' 100'");
        takeCalls();
        pugi::xml_document file;
        file.load_string(("<QuillmontProject>" + c.file + "</QuillmontProject>").c_str());
        project::bringRowOptions(project::readRowOptions(file));
        EXPECT_EQ(boxes(), c.boxes);
        EXPECT_EQ(takeCalls(), c.calls);
    }
    EXPECT_EQ(videoRow(), "000 BLANK BLANK DISABLE");
    pugi::xml_document wrong;
    wrong.load_string("<Rows><Row a=\"\" b=\"1\"/><Row a=\"\" b=\"much\"/></Rows>");
    EXPECT_THROW(project::bringRowOptions(project::readRowOptions(wrong)), engine::RuntimeError);
    EXPECT_EQ(videoRow(), "000 BLANK BLANK DISABLE") << "half of a file that cannot be read";
}

TEST_F(OptionsTest, ARowDownToOneItem)
{
    const auto disableAll = [&] {
        for (CheckBox* const box : {&form.chkDisableVideo[0], &form.chkDisableEffect[0], &form.chkDisableAudio[1]}) {
            box->Value = std::int16_t{1};
        }
        form.chkLinkAudio[1].Value = std::int16_t{0};
    };
    disableAll();
    put("V 0-1000 1000-2000 E 0-500 B 0-1000");
    moduleTimeline::UpdateTrackOptions();
    EXPECT_EQ(videoRow().substr(0, 3), "101") << "two items";
    EXPECT_EQ(effectRow(), "100 LINK BLANK DISABLE");
    EXPECT_EQ(audioRow(), "100 LINK BLANK DISABLE_AUDIO");

    engine::Bool16 ok = 0;
    disableAll();
    check(timelineCalls->RemoveSource(video(), 1, ok));
    put("B 1000-2000");
    moduleTimeline::UpdateTrackOptions();
    EXPECT_EQ(videoRow().substr(0, 3), "100") << "the choice of the person is undone";
    EXPECT_EQ(audioRow().substr(0, 3), "001");
}

} // namespace
} // namespace logic_test
