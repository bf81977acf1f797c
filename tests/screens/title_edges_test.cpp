// Titles over video, seen in the saved movie: no trace of the key's colour around the letters.

#include "screens/screen_harness.h"

#include "core/forms/frmAddText.h"
#include "core/shared_state.h"
#include "editing/adding.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWPreview.h"
#include "engine/ITWSave.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "tools/frmAddText.h"
#include "tools/text_file.h"

#include <QImage>
#include <QTemporaryDir>

namespace screens_test {
namespace {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;

struct Colours {
    const char* name;
    std::int32_t letters; // red in the low byte
    std::int32_t behind;
    bool isTransparent;
};

class TitleEdges : public ScreenTest {
protected:
    static constexpr int kStepMs = 80; // two pictures of a movie with 25 a second
    static constexpr std::uint32_t kGround = 0xFF808080u;

    std::string path(const std::string& name) const { return folder_.path().toStdString() + "/" + name; }

    static Handle streamOf(const std::string& file)
    {
        Handle handle = 0;
        Handle stream = 0;
        check(engine::Engine->OpenFile(file, handle));
        check(EngineAs<engine::ITWMediaFiles>()->OpenStream(handle, 0, stream));
        return stream;
    }

    /// Behind the last one, for a step or for `steps`.
    static void append(Handle track, Handle stream, int place, int steps = 1)
    {
        const auto timeline = EngineAs<ITWTimeline>();
        Bool16 ok = 0;
        check(timeline->AppendSource(track, stream, place * kStepMs, ok));
        check(timeline->SetSourceTimes(track, static_cast<std::int16_t>(place), place * kStepMs,
                                       (place + steps) * kStepMs, ok));
    }

    /// A grey picture, and a title over it every step; saved without loss.
    void makeMovie(const std::vector<std::function<void()>>& titles)
    {
        PixelPicture ground;
        ground.canvas.resize(320, 240);
        for (int y = 0; y < 240; ++y) {
            std::fill_n(ground.canvas.line(y), 320, kGround);
        }
        Bool16 ok = 0;
        check(EngineAs<engine::ITWPreview>()->SaveSnapFrame(ground.hDC(), path("ground.bmp"), 320, 240, ok));
        append(state::TrackCollection.Item(1), streamOf(path("ground.bmp")), 0, static_cast<int>(titles.size()));
        int place = 0;
        forms::FrmAddText& form = forms::frmAddText;
        for (const auto& title : titles) {
            frmAddText::Form_Load();
            title();
            form.TextFile = path("title" + std::to_string(place) + ".bmp");
            ASSERT_TRUE(frmAddText::OnFileSaveClick());
            append(state::OverlayTrack, streamOf(form.TextFile), place++);
            moduleTimeline::AddNewKeyTransition(state::OverlayTrack, form.KeyRed, form.KeyGreen, form.KeyBlue);
        }
        const auto save = EngineAs<engine::ITWSave>();
        check(save->ResetSave());
        check(save->AddSaveTrack(state::TrackCollection.Item(1), ok));
        check(save->AddSaveTrack(state::OverlayTrack, ok));
        check(save->SetSaveWholeTimeline(engine::kTrue));
        check(save->SetVideoSize(320, 240));
        check(save->PrepareAviFile(path("movie.avi"), ok));
        ASSERT_NE(ok, engine::kFalse);
        check(save->RunSaveToEnd());
        check(save->StopSave(ok));
        check(save->CloseSave());
    }

    void frame(int place)
    {
        check(EngineAs<engine::ITWPreview>()->DrawSnapFrame(path("movie.avi"), (place + 0.25) * kStepMs / 1000,
                                                            frame_.hDC(), 320, 240));
        if (const QByteArray shown = qgetenv("QUILLMONT_TITLES"); !shown.isEmpty()) {
            QImage(reinterpret_cast<const uchar*>(frame_.canvas.line(0)), 320, 240, QImage::Format_RGB32)
                .save(QString::fromLocal8Bit(shown) + QString("/title%1.png").arg(place));
        }
    }

    /// The largest amount by which any pixel is told so.
    template <class Amount>
    int worst(const Amount& amount)
    {
        int most = 0;
        for (int y = 0; y < 240; ++y) {
            for (int x = 0; x < 320; ++x) {
                const QRgb pixel = frame_.canvas.at(x, y);
                most = std::max(most, amount(qRed(pixel), qGreen(pixel), qBlue(pixel)));
            }
        }
        return most;
    }

    QTemporaryDir folder_;
    PixelPicture frame_;
};

TEST_F(TitleEdges, NothingOfTheKeyIsLeftAtAnySize)
{
    constexpr std::int32_t kWhite = 0xFFFFFF;
    const std::vector<Colours> all = {
        {"black, key blue", 0, kWhite, true},       {"white, key blue", kWhite, 0, true},
        {"white, key black", kWhite, kWhite, true}, {"black on white", 0, kWhite, false},
        {"white on black", kWhite, 0, false},       {"red, key black", 0xFF, kWhite, true},
        {"blue, key red", 0xFF0000, kWhite, true},  {"grey on dark grey", 0xA0A0A0, 0x404040, false}};
    std::vector<std::function<void()>> titles;
    std::vector<std::string> names;
    for (const Colours& colours : all) {
        for (int size = 7; size <= 72; size += size < 16 ? 1 : 8) {
            for (const bool isSlanted : {false, true}) {
                titles.emplace_back([=] {
                    forms::FrmAddText& form = forms::frmAddText;
                    form.txtText.Text = std::string(size > 40 ? "Wg\r\nij" : "Winter, gjf\r\n& Illi 1/2");
                    form.Font = {"DejaVu Sans", static_cast<double>(size), isSlanted, isSlanted};
                    form.picColorDisplay = colours.letters;
                    form.picBackColorDisplay = colours.behind;
                    form.mnuFormatTransparentBackground.Checked = colours.isTransparent;
                    frmAddText::OnTextChange();
                    frmAddText::mnuFormatCenterHorizontally_Click();
                    frmAddText::mnuFormatCenterVertically_Click();
                });
                names.push_back(colours.name + std::string(", ") + std::to_string(size)
                                + (isSlanted ? " slanted" : ""));
            }
        }
    }
    makeMovie(titles);
    for (std::size_t i = 0; i < titles.size(); ++i) {
        frame(static_cast<int>(i));
        const int hue = worst([](int r, int g, int b) { return std::max({r, g, b}) - std::min({r, g, b}); });
        const int dark = worst([](int r, int g, int b) { return 128 - std::min({r, g, b}); });
        const int light = worst([](int r, int g, int b) { return std::max({r, g, b}) - 128; });
        if (names[i].starts_with("red")) {
            EXPECT_LE(worst([](int r, int, int) { return 128 - r; }), 12) << names[i];
        } else if (names[i].starts_with("blue")) {
            EXPECT_LE(worst([](int r, int, int) { return r - 128; }), 12) << names[i];
        } else {
            EXPECT_LE(hue, 12) << names[i];
        }
        if (names[i].starts_with("white, key")) {
            EXPECT_LE(dark, 12) << names[i];
        } else if (names[i].starts_with("black, key")) {
            EXPECT_LE(light, 12) << names[i];
        } else if (names[i].starts_with("grey")) {
            EXPECT_LE(worst([](int r, int, int) { return r >= 124 && r <= 132 ? 0 : std::max(r - 0xA0, 0x40 - r); }),
                      12)
                << names[i];
        }
        EXPECT_GT(dark + light, 60) << names[i] << ": nothing is seen";
    }
}

} // namespace
} // namespace screens_test
