// Files and streams through the contract: handles, buffers, errors, and what a stream tells of itself.

#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "support/manifest.h"
#include "twcore/tarnwick_timeline.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/stat.h>

namespace files_test {
namespace {

namespace fs = std::filesystem;
namespace media_error = engine::media_error;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::kFalse;
using engine::kTrue;

std::string media(const std::string& name) { return (testmedia::mediaFolder() / name).string(); }

std::string read(const fs::path& path)
{
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

void write(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

class CoreRootTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        std::string name = (fs::temp_directory_path() / "quillmont-files-XXXXXX").string();
        folder = ::mkdtemp(name.data());
    }
    void TearDown() override
    {
        engine::Engine.reset();
        fs::remove_all(folder);
    }

    static Handle open(const std::string& path)
    {
        Handle file = -7;
        check(engine::Engine->OpenFile(path, file));
        return file;
    }
    static Handle stream(Handle file, std::int16_t index)
    {
        Handle stream = -7;
        check(EngineAs<engine::ITWMediaFiles>()->OpenStream(file, index, stream));
        return stream;
    }
    static Handle firstStream(Handle file)
    {
        Handle stream = -7;
        check(engine::Engine->GetFirstStream(file, stream));
        return stream;
    }
    static Handle fileOf(Handle stream)
    {
        Handle file = -7;
        check(EngineAs<engine::ITWMediaFiles>()->GetStreamFile(stream, file));
        return file;
    }
    template <class Call>
    static bool said(Call call)
    {
        Bool16 ok = 7;
        check(call(ok));
        EXPECT_NE(ok, 7);
        return ok != kFalse;
    }
    static bool closeFile(Handle file)
    {
        return said([&](Bool16& ok) { return engine::Engine->CloseFile(file, ok); });
    }
    static bool closeStream(Handle stream)
    {
        return said([&](Bool16& ok) { return EngineAs<engine::ITWMediaFiles>()->CloseStream(stream, ok); });
    }
    static bool select(Handle stream)
    {
        return said([&](Bool16& ok) { return EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok); });
    }
    static std::uint32_t errorOf(const std::string& path)
    {
        std::uint32_t code = 7;
        check(engine::Engine->GetFileError(path, code));
        return code;
    }

    fs::path folder;
};

TEST_F(CoreRootTest, FilesAndTheirStreams)
{
    const Handle file = open(media("h264.mp4"));
    EXPECT_EQ(firstStream(file), 0) << "nothing was opened yet";
    const Handle picture = stream(file, 0);
    const Handle sound = stream(file, 1);
    EXPECT_TRUE(file > 0 && picture > 0 && sound > 0 && picture != sound && picture != file && sound != file);
    EXPECT_EQ(stream(file, 2), 0);
    EXPECT_EQ(stream(file, -1), 0);
    EXPECT_EQ(stream(file, 0), picture) << "an open stream answers its handle again";
    EXPECT_EQ(fileOf(sound), file);
    EXPECT_EQ(firstStream(file), picture);
    const auto isVideo = [](Handle handle) {
        return said([&](Bool16& is) { return EngineAs<engine::ITWMediaFiles>()->IsVideoStream(handle, is); });
    };
    EXPECT_TRUE(isVideo(picture));
    EXPECT_FALSE(isVideo(sound));
    EXPECT_FALSE(isVideo(file));

    // The streams outlive their file, until each is closed.
    EXPECT_TRUE(closeFile(file));
    EXPECT_FALSE(closeFile(file));
    EXPECT_EQ(fileOf(picture), file);
    EXPECT_TRUE(closeStream(picture));
    EXPECT_FALSE(closeStream(picture));
    EXPECT_EQ(fileOf(picture), 0);
    EXPECT_EQ(firstStream(file), sound);
    EXPECT_TRUE(closeStream(sound));
    EXPECT_EQ(firstStream(file), 0);
    EXPECT_EQ(stream(file, 0), 0);
    std::string name(300, '?');
    EXPECT_FALSE(said([&](Bool16& ok) { return engine::Engine->GetFileName(file, name, ok); }));
    EXPECT_EQ(name, std::string(300, ' '));

    // What a track names again opens under its old handles.
    Handle track = 0;
    check(EngineAs<engine::ITWTimeline>()->CreateTrack(kTrue, track));
    EXPECT_TRUE(said(
        [&](Bool16& ok) { return EngineAs<engine::ITWTimeline>()->InsertSource(track, picture, 0, 0, 2000, ok); }));
    EXPECT_EQ(fileOf(picture), file);
    EXPECT_EQ(firstStream(file), picture);
    EXPECT_EQ(stream(file, 0), picture);
    EXPECT_EQ(stream(file, 1), sound);
    EXPECT_TRUE(select(picture));
    EXPECT_TRUE(closeFile(file));
    EXPECT_FALSE(
        said([&](Bool16& ok) { return EngineAs<engine::ITWTimeline>()->InsertSource(track, 9999, 0, 0, 2000, ok); }));
}

TEST_F(CoreRootTest, HandlesNameOneThingForEver)
{
    std::set<Handle> seen;
    std::size_t count = 0;
    for (int round = 0; round < 3; ++round) {
        for (const bool closes : {true, false}) {
            const Handle file = open(media("h264.mp4"));
            Handle track = 0;
            check(EngineAs<engine::ITWTimeline>()->CreateTrack(kFalse, track));
            const Handle streams[] = {stream(file, 0), stream(file, 1)};
            seen.insert({file, track, streams[0], streams[1]});
            count += 4;
            if (closes) {
                EXPECT_TRUE(closeStream(streams[0]) && closeStream(streams[1]) && closeFile(file));
            }
        }
    }
    EXPECT_EQ(seen.size(), count);
    EXPECT_EQ(seen.count(0), 0u);
}

TEST_F(CoreRootTest, NamesFillTheirBuffers)
{
    std::string deep;
    for (const auto& entry : testmedia::readManifest()) {
        deep = entry.name.find("/deep.mp4") != std::string::npos ? media(entry.name) : deep;
    }
    ASSERT_GT(deep.size(), 300u);
    const Handle file = open(deep);
    ASSERT_NE(file, 0);
    for (const auto& [length, fits] : {std::pair{260u, false}, {0u, false}, {4000u, true}}) {
        std::string buffer(length, '?');
        EXPECT_EQ(said([&](Bool16& ok) { return engine::Engine->GetFileName(file, buffer, ok); }), fits);
        EXPECT_EQ(buffer, fits ? deep + std::string(length - deep.size(), ' ') : std::string(length, ' '));
    }
    std::string exact(deep.size(), '?');
    EXPECT_TRUE(said([&](Bool16& ok) { return engine::Engine->GetFileName(file, exact, ok); }));
    EXPECT_EQ(exact, deep);

    std::string version(10, '\0');
    check(engine::Engine->GetSystemVersion(version));
    EXPECT_EQ(version.find('\0'), std::string::npos);
    EXPECT_NE(version.find_first_not_of(' '), std::string::npos);
    std::string working(500, '\0');
    check(engine::Engine->GetWorkingFolder(500, working));
    EXPECT_TRUE(fs::is_directory(working.substr(0, working.find_last_not_of(' ') + 1))) << working;
    check(engine::Engine->GetWorkingFolder(1, working));
    EXPECT_EQ(working.find_first_not_of(" /"), std::string::npos) << "a path is never cut";
    std::int32_t numbers[4] = {7, 7, 7, 7};
    check(engine::Engine->GetFileVersionInfo("avcodec", numbers[0], numbers[1], numbers[2], numbers[3]));
    EXPECT_GE(numbers[0], 59);
    check(engine::Engine->GetFileVersionInfo("nothing", numbers[0], numbers[1], numbers[2], numbers[3]));
    EXPECT_EQ(numbers[0] | numbers[1] | numbers[2] | numbers[3], 0);
    check(engine::Engine->GetMemoryStatus(numbers[0], numbers[1], numbers[2], numbers[3]));
    EXPECT_TRUE(numbers[0] > 0 && numbers[1] >= 0 && numbers[1] <= numbers[0] && numbers[3] <= numbers[2]);
}

TEST_F(CoreRootTest, ErrorsOfFiles)
{
    ASSERT_EQ(::mkfifo((folder / "pipe.avi").c_str(), 0666), 0);
    ASSERT_EQ(::mkfifo((folder / "pipe.mid").c_str(), 0666), 0);
    // Formats of streams that nobody decodes: picture, sound, both.
    const std::string whole = read(media("h264.mp4"));
    const auto without = [&](const std::string& name, std::initializer_list<const char*> codes) {
        std::string changed = whole;
        for (const char* code : codes) {
            const auto at = changed.find(code, changed.find("stsd"));
            EXPECT_NE(at, std::string::npos);
            changed.replace(at, 4, "zzzz");
        }
        write(folder / name, changed);
        return (folder / name).string();
    };
    struct Case {
        std::string path;
        std::uint32_t code;
        bool opens;
    };
    const Case cases[] = {{media("h264.mp4"), media_error::kNone, true},
                          {media("still.png"), media_error::kNone, true},
                          {media("tone.flac"), media_error::kNone, true},
                          {media("tune.mid"), media_error::kNone, true},
                          {media("bad/half.mp4"), media_error::kNone, true},
                          {media("bad/half.avi"), media_error::kNone, true},
                          {without("sound.mp4", {"avc1"}), media_error::kPictureNotRendered, true},
                          {without("picture.mp4", {"mp4a", "esds"}), media_error::kSoundNotRendered, true},
                          {without("none.mp4", {"avc1", "mp4a", "esds"}), media_error::kNoDecoder, false},
                          {"", media_error::kInvalidArgument, false},
                          {media("nothing.mp4"), media_error::kNotFound, false},
                          {media("h264.mp4") + "/x", media_error::kNotFound, false},
                          {media(""), media_error::kIsFolder, false},
                          {"/dev/zero", media_error::kCannotLoad, false},
                          {(folder / "pipe.avi").string(), media_error::kCannotLoad, false},
                          {(folder / "pipe.mid").string(), media_error::kCannotLoad, false},
                          {media("bad/no-moov.mp4"), media_error::kInvalidFormat, false},
                          {media("bad/huge.png"), media_error::kInvalidFormat, false},
                          {media("bad/empty.avi"), media_error::kUnknownFormat, false},
                          {media("bad/random.mp4"), media_error::kUnknownFormat, false},
                          {media("bad/text.avi"), media_error::kUnknownFormat, false},
                          {media("bad/network.m3u8"), media_error::kUnknownFormat, false},
                          {media("bad/network.mp4"), media_error::kUnknownFormat, false},
                          {media("bad/concat.avi"), media_error::kUnknownFormat, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(errorOf(c.path), c.code) << c.path << std::hex << " " << errorOf(c.path);
        EXPECT_EQ(open(c.path) != 0, c.opens) << c.path;
    }
    EXPECT_EQ(stream(open((folder / "sound.mp4").string()), 1), 0) << "one stream can be played";
    // What was found is forgotten as soon as the file is another one.
    const fs::path changing = folder / "changing.mp4";
    write(changing, "text");
    EXPECT_EQ(errorOf(changing), media_error::kUnknownFormat);
    write(changing, whole);
    EXPECT_EQ(errorOf(changing), media_error::kNone);
    fs::remove(changing);
    EXPECT_EQ(errorOf(changing), media_error::kNotFound);
    EXPECT_EQ(open(changing), 0);
}

TEST_F(CoreRootTest, WhatStreamsTell)
{
    struct Case {
        std::string name;
        std::int16_t index;
        bool isVideo;
        std::int32_t width, height;
        double seconds, fps;
        std::int32_t hertz;
    };
    const Case cases[] = {{"h264.mp4", 0, true, 320, 240, 5, 25, 0},
                          {"h264.mp4", 1, false, 0, 0, 5, 0, 48000},
                          {"30p.mp4", 0, true, 320, 240, 5.005, 30000.0 / 1001, 0},
                          {"anamorphic.mp4", 0, true, 465, 240, 3, 25, 0},
                          {"rotated-90.mp4", 0, true, 320, 240, 2, 25, 0},
                          {"turned.jpg", 0, true, 320, 240, 5, 0, 0},
                          {"video-later.mkv", 0, true, 320, 240, 5.5, 25, 0},
                          {"video-later.mkv", 1, false, 0, 0, 5, 0, 48000},
                          {"mono-8k-u8.wav", 0, false, 0, 0, 5, 0, 8000},
                          {"animated.gif", 0, true, 320, 240, 3, 10, 0}};
    const auto info = EngineAs<engine::ITWStreamInfo>();
    const auto expect = [&](const Case& c) {
        std::int32_t width = 7, height = 7, hertz = 7;
        double seconds = 7, fps = 7;
        check(info->GetVideoSize(height, width));
        check(info->GetAudioSampleRate(hertz));
        check(info->GetDuration(seconds));
        check(info->GetFrameRate(fps));
        const bool isVideo = said([&](Bool16& is) { return info->IsVideo(is); });
        const bool isAudio = said([&](Bool16& is) { return info->IsAudio(is); });
        EXPECT_TRUE(isVideo == c.isVideo && isAudio == (c.hertz != 0)) << c.name;
        EXPECT_TRUE(width == c.width && height == c.height) << c.name << " " << width << "x" << height;
        EXPECT_NEAR(seconds, c.seconds, 0.03) << c.name;
        EXPECT_NEAR(fps, c.fps, 0.001) << c.name;
        EXPECT_EQ(hertz, c.hertz) << c.name;
    };
    const Case nothing{"nothing", 0, false, 0, 0, 0, 0, 0};
    expect(nothing);
    for (const auto& c : cases) {
        const Handle chosen = stream(open(media(c.name)), c.index);
        EXPECT_TRUE(select(chosen));
        expect(c);
        EXPECT_TRUE(closeStream(chosen));
        expect(nothing);
    }
    EXPECT_FALSE(select(0));

    for (const auto& [name, expected] : {std::pair{"h264.mp4", 2},
                                         {"no-sound.mp4", 1},
                                         {"tune.mid", 1},
                                         {"bad/text.avi", 0},
                                         {"nothing", 0},
                                         {"", 0}}) {
        std::int32_t count = 7;
        check(info->OpenFileInfo(*name != '\0' ? media(name) : "", 0));
        check(info->GetStreamCount(count));
        EXPECT_EQ(count, expected) << name;
    }
}

TEST_F(CoreRootTest, FilesOfTheDisk)
{
    write(folder / "a b.bmp", "x");
    write(folder / "kept", "x");
    fs::create_symlink("kept", folder / "link");
    fs::create_directory(folder / "in");
    const auto exists = [&](const std::string& path) {
        return said([&](Bool16& is) { return engine::Engine->FileExists(path, is); });
    };
    const auto removed = [&](const std::string& path) {
        return said([&](Bool16& ok) { return engine::Engine->DeleteFile(path, ok); });
    };
    const std::string path = (folder / "a b.bmp").string();
    EXPECT_TRUE(exists(path));
    EXPECT_FALSE(exists(path + std::string("\0x", 2)));
    EXPECT_FALSE(exists(""));
    EXPECT_FALSE(removed(path + std::string("\0x", 2)));
    EXPECT_TRUE(removed(path));
    EXPECT_FALSE(exists(path));
    EXPECT_FALSE(removed(path));
    EXPECT_FALSE(removed(""));
    EXPECT_FALSE(removed((folder / "in").string()));
    EXPECT_TRUE(fs::exists(folder / "in"));
    EXPECT_TRUE(removed((folder / "link").string()));
    EXPECT_TRUE(fs::exists(folder / "kept"));
}

} // namespace
} // namespace files_test
