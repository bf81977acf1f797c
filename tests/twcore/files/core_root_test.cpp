// Files and streams through the contract: handles, buffers, errors, and what a stream tells of itself.

#include "engine/ITWStreamInfo.h"
#include "support/engine_test.h"

#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace files_test {
namespace {

namespace fs = std::filesystem;
namespace media_error = engine::media_error;
using engine::ITWCoreRoot;
using engine::ITWMediaFiles;
using engine::ITWStreamInfo;
using engine::ITWTimeline;
using testmedia::bytesOf;
using testmedia::writeBytes;
using namespace testsupport;

class CoreRootTest : public EngineTest {
protected:
    static Handle firstStream(Handle file) { return told<Handle>(&ITWCoreRoot::GetFirstStream, file); }
    static Handle fileOf(Handle stream) { return told<Handle>(&ITWMediaFiles::GetStreamFile, stream); }
    static bool closeFile(Handle file) { return did(&ITWCoreRoot::CloseFile, file); }
    static bool closeStream(Handle stream) { return did(&ITWMediaFiles::CloseStream, stream); }
    static bool select(Handle stream) { return did(&ITWMediaFiles::SelectStream, stream); }
    static bool isVideo(Handle stream) { return did(&ITWMediaFiles::IsVideoStream, stream); }
    static std::uint32_t errorOf(const std::string& path)
    {
        return told<std::uint32_t>(&ITWCoreRoot::GetFileError, path);
    }
};

TEST_F(CoreRootTest, FilesAndTheirStreams)
{
    const Handle file = openFile(medium("h264.mp4"));
    EXPECT_EQ(firstStream(file), 0) << "nothing was opened yet";
    const Handle picture = openStream(file, 0);
    const Handle sound = openStream(file, 1);
    EXPECT_TRUE(file > 0 && picture > 0 && sound > 0 && picture != sound && picture != file && sound != file);
    EXPECT_EQ(openStream(file, 2), 0);
    EXPECT_EQ(openStream(file, -1), 0);
    EXPECT_EQ(openStream(file, 0), picture) << "an open stream answers its handle again";
    EXPECT_EQ(fileOf(sound), file);
    EXPECT_EQ(firstStream(file), picture);
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
    EXPECT_EQ(openStream(file, 0), 0);
    std::string name(300, '?');
    EXPECT_FALSE(did(&ITWCoreRoot::GetFileName, file, name));
    EXPECT_EQ(name, std::string(300, ' '));

    // What a track names again opens under its old handles.
    const Handle track = newTrack(true);
    const std::int16_t first = 0;
    EXPECT_TRUE(did(&ITWTimeline::InsertSource, track, picture, first, 0, 2000));
    EXPECT_EQ(fileOf(picture), file);
    EXPECT_EQ(firstStream(file), picture);
    EXPECT_EQ(openStream(file, 0), picture);
    EXPECT_EQ(openStream(file, 1), sound);
    EXPECT_TRUE(select(picture));
    EXPECT_TRUE(closeFile(file));
    EXPECT_FALSE(did(&ITWTimeline::InsertSource, track, 9999, first, 0, 2000));
}

TEST_F(CoreRootTest, HandlesNameOneThingForEver)
{
    std::set<Handle> seen;
    std::size_t count = 0;
    for (int round = 0; round < 3; ++round) {
        for (const bool closes : {true, false}) {
            const Handle file = openFile(medium("h264.mp4"));
            const Handle streams[] = {openStream(file, 0), openStream(file, 1)};
            seen.insert({file, newTrack(false), streams[0], streams[1]});
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
        deep = entry.name.find("/deep.mp4") != std::string::npos ? medium(entry.name) : deep;
    }
    ASSERT_GT(deep.size(), 300u);
    const Handle file = openFile(deep);
    ASSERT_NE(file, 0);
    for (const auto& [length, fits] : {std::pair{260u, false}, {0u, false}, {4000u, true}}) {
        std::string buffer(length, '?');
        EXPECT_EQ(did(&ITWCoreRoot::GetFileName, file, buffer), fits);
        EXPECT_EQ(buffer, fits ? deep + std::string(length - deep.size(), ' ') : std::string(length, ' '));
    }
    std::string exact(deep.size(), '?');
    EXPECT_TRUE(did(&ITWCoreRoot::GetFileName, file, exact));
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
    // Formats of streams that nobody decodes: picture, sound, both.
    const std::string whole = bytesOf(medium("h264.mp4"));
    const auto without = [&](const std::string& name, std::initializer_list<const char*> codes) {
        std::string changed = whole;
        for (const char* code : codes) {
            const auto at = changed.find(code, changed.find("stsd"));
            EXPECT_NE(at, std::string::npos);
            changed.replace(at, 4, "zzzz");
        }
        writeBytes(folder / name, changed);
        return (folder / name).string();
    };
    struct Case {
        std::string path;
        std::uint32_t code;
        bool opens;
    };
    // What else is damaged or no file at all, quillmont-render tells by name, a cause for each code.
    for (const auto& [path, code, opens] :
         {Case{medium("h264.mp4"), media_error::kNone, true},
          {medium("bad/half.avi"), media_error::kNone, true},
          {without("sound.mp4", {"avc1"}), media_error::kPictureNotRendered, true},
          {without("picture.mp4", {"mp4a", "esds"}), media_error::kSoundNotRendered, true},
          {without("none.mp4", {"avc1", "mp4a", "esds"}), media_error::kNoDecoder, false},
          {"", media_error::kInvalidArgument, false},
          {medium("h264.mp4") + "/x", media_error::kNotFound, false},
          {medium(""), media_error::kIsFolder, false},
          {(folder / "pipe.avi").string(), media_error::kCannotLoad, false},
          {medium("bad/no-moov.mp4"), media_error::kInvalidFormat, false},
          {medium("bad/text.avi"), media_error::kUnknownFormat, false}}) {
        EXPECT_EQ(errorOf(path), code) << path << std::hex << " " << errorOf(path);
        EXPECT_EQ(openFile(path) != 0, opens) << path;
    }
    EXPECT_EQ(openStream(openFile((folder / "sound.mp4").string()), 1), 0) << "one stream can be played";
    // What was found is forgotten as soon as the file is another one.
    const fs::path changing = folder / "changing.mp4";
    writeBytes(changing, "text");
    EXPECT_EQ(errorOf(changing), media_error::kUnknownFormat);
    writeBytes(changing, whole);
    EXPECT_EQ(errorOf(changing), media_error::kNone);
    fs::remove(changing);
    EXPECT_EQ(errorOf(changing), media_error::kNotFound);
    EXPECT_EQ(openFile(changing), 0);
}

TEST_F(CoreRootTest, WhatWasSeenAheadIsOldNews)
{
    const auto lookAhead = [](const fs::path& path) {
        check(EngineAs<engine::ITWMediaFiles>()->LookAhead(path.string()));
        ::usleep(50000);
    };
    const fs::path late = folder / "late.png";
    lookAhead(late);
    fs::copy_file(medium("still.png"), late); // it came behind the look
    EXPECT_NE(openFile(late), 0);
    const fs::path changed = folder / "changed.png";
    fs::copy_file(medium("still.png"), changed);
    lookAhead(changed);
    writeBytes(changed, "no picture any more");
    EXPECT_EQ(openFile(changed), 0);
    const fs::path gone = folder / "gone.png";
    fs::copy_file(medium("still.png"), gone);
    lookAhead(gone);
    fs::remove(gone);
    EXPECT_EQ(openFile(gone), 0);
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
                          {"rotated-270.mp4", 0, true, 320, 240, 2, 25, 0},
                          {"dv-pal.avi", 0, true, 768, 576, 2, 25, 0},
                          {"large.jpg", 0, true, 3000, 2000, 5, 0, 0},
                          {"turned.jpg", 0, true, 320, 240, 5, 0, 0},
                          {"video-later.mkv", 0, true, 320, 240, 5.5, 25, 0},
                          {"video-later.mkv", 1, false, 0, 0, 5, 0, 48000},
                          {"mono-8k-u8.wav", 0, false, 0, 0, 5, 0, 8000},
                          {"animated.gif", 0, true, 320, 240, 3, 10, 0}};
    const auto expect = [&](const Case& c) {
        SCOPED_TRACE(c.name);
        std::int32_t width = 7, height = 7;
        check(EngineAs<ITWStreamInfo>()->GetVideoSize(height, width));
        EXPECT_EQ(width, c.width);
        EXPECT_EQ(height, c.height);
        EXPECT_EQ(did(&ITWStreamInfo::IsVideo), c.isVideo);
        EXPECT_EQ(did(&ITWStreamInfo::IsAudio), c.hertz != 0);
        EXPECT_EQ(told<std::int32_t>(&ITWStreamInfo::GetAudioSampleRate), c.hertz);
        EXPECT_NEAR(told<double>(&ITWStreamInfo::GetDuration), c.seconds, 0.03);
        EXPECT_NEAR(told<double>(&ITWStreamInfo::GetFrameRate), c.fps, 0.001);
    };
    const Case nothing{"nothing", 0, false, 0, 0, 0, 0, 0};
    expect(nothing);
    for (const auto& c : cases) {
        const Handle chosen = openStream(openFile(medium(c.name)), c.index);
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
        check(EngineAs<ITWStreamInfo>()->OpenFileInfo(*name != '\0' ? medium(name) : "", 0));
        EXPECT_EQ(told<std::int32_t>(&ITWStreamInfo::GetStreamCount), expected) << name;
    }
}

TEST_F(CoreRootTest, FilesOfTheDisk)
{
    writeBytes(folder / "a b.bmp", "x");
    writeBytes(folder / "kept", "x");
    fs::create_symlink("kept", folder / "link");
    fs::create_directory(folder / "in");
    const auto exists = [&](const std::string& path) { return did(&ITWCoreRoot::FileExists, path); };
    const auto removed = [&](const std::string& path) { return did(&ITWCoreRoot::DeleteFile, path); };
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
