// A fresh engine with the editor's tracks, short words to lay sources, and a save that is read back.
#pragma once

#include "engine/ITWMediaFiles.h"
#include "engine/ITWSave.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "support/manifest.h"
#include "support/movie_reader.h"
#include "twcore/engine_options.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace savetest {

using engine::check;
using engine::EngineAs;
using engine::Handle;

/// Where a source stands and what of its stream it plays, all in milliseconds.
struct Place {
    int start;
    int stop;
    int mediaStart;
    int mediaStop;
};

struct SaveWords {
    std::string video = "Motion JPEG";
    std::string audio = "PCM";
    int fps = 25;
    int width = 320;
    int height = 240;
    int rangeStart = -1; // -1: all
    int rangeStop = -1;
    int soundRate = 48000;
};

class SaveTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        for (Handle* track : {&video, &overlay}) {
            check(EngineAs<engine::ITWTimeline>()->CreateTrack(engine::kTrue, *track));
        }
        for (Handle* track : {&audio1, &audio2}) {
            check(EngineAs<engine::ITWTimeline>()->CreateTrack(engine::kFalse, *track));
        }
        const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
        folder = std::filesystem::temp_directory_path() / ("quillmont-save-" + name + std::to_string(::getpid()));
        std::filesystem::create_directories(folder);
    }
    void TearDown() override
    {
        engine::Engine.reset();
        std::filesystem::remove_all(folder);
    }

    /// The picture or the sound of a generated file; 0 when it has none.
    Handle stream(const std::string& name, bool picture)
    {
        Handle file = 0;
        check(EngineAs<engine::ITWCoreRoot>()->OpenFile((testmedia::mediaFolder() / name).string(), file));
        EXPECT_NE(file, 0) << name;
        for (std::int16_t index = 0;; ++index) {
            Handle found = 0;
            engine::Bool16 isVideo = engine::kFalse;
            check(EngineAs<engine::ITWMediaFiles>()->OpenStream(file, index, found));
            check(EngineAs<engine::ITWMediaFiles>()->IsVideoStream(found, isVideo));
            if (found == 0 || (isVideo != engine::kFalse) == picture) {
                return found;
            }
        }
    }

    void lay(Handle track, Handle stream, const Place& place)
    {
        const auto timeline = EngineAs<engine::ITWTimeline>();
        std::int16_t count = 0;
        engine::Bool16 ok = engine::kFalse;
        check(timeline->AppendSource(track, stream, -1, ok));
        EXPECT_EQ(ok, engine::kTrue);
        check(timeline->GetSourceCount(track, count));
        const auto seq = static_cast<std::int16_t>(count - 1);
        check(timeline->SetSourceTimes(track, seq, place.start, place.stop, ok));
        check(timeline->SetSourceMediaTimes(track, seq, place.mediaStart, place.mediaStop, ok));
    }

    void layBoth(const std::string& name, const Place& place)
    {
        lay(video, stream(name, true), place);
        lay(audio1, stream(name, false), place);
    }

    bool prepare(const SaveWords& words, const std::filesystem::path& path)
    {
        const auto save = EngineAs<engine::ITWSave>();
        check(save->ResetSave());
        check(save->SetVideoCompressor(words.video));
        check(save->SetAudioCompressor(words.audio));
        check(save->SetFrameRate(words.fps));
        check(save->SetVideoSize(words.width, words.height));
        EXPECT_TRUE(EngineAs<twcore::EngineOptions>()->setSoundRate(words.soundRate));
        engine::Bool16 ok = engine::kFalse;
        for (const Handle track : {video, overlay, audio1, audio2}) {
            std::int16_t count = 0;
            check(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count));
            if (count > 0) {
                check(save->AddSaveTrack(track, ok));
            }
        }
        check(save->SetSaveWholeTimeline(engine::toBool16(words.rangeStop < 0)));
        check(save->SetSaveRange(words.rangeStart, words.rangeStop));
        check(save->PrepareAviFile(path.string(), ok));
        return ok != engine::kFalse;
    }

    /// Saves the timeline and reads the movie back.
    testmedia::Movie saved(const SaveWords& words, const std::string& name = "movie.avi")
    {
        const auto save = EngineAs<engine::ITWSave>();
        EXPECT_TRUE(prepare(words, folder / name)) << words.video << ", " << words.audio;
        check(save->RunSaveToEnd());
        std::int32_t state = 0;
        check(save->GetSaveState(state));
        EXPECT_EQ(state, engine::save_state::kComplete);
        check(save->CloseSave());
        return testmedia::readMovie(folder / name);
    }

    Handle video = 0;
    Handle overlay = 0;
    Handle audio1 = 0;
    Handle audio2 = 0;
    std::filesystem::path folder;
};

} // namespace savetest
