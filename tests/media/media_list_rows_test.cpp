// The rows of real media, the classes of extensions, and how the engine's verdicts read.

#include "media/media_list_harness.h"

#include <fstream>

namespace logic_test {
namespace {

class RowsTest : public MediaListTest {};

TEST_F(RowsTest, RowsOfRealMedia)
{
    fs::create_directories(platform.folder + "/odd");
    const std::string odd = copied("still.gif", "odd/picture.xyz");
    const std::string bare = copied("stereo-44k.wav", "odd/mp3");
    struct Case {
        std::string path;
        const char* row; // name, icon, media type, duration, video info, audio info
    };
    const Case cases[] = {
        {media("mjpeg.avi"), "mjpeg.avi 2 Video 0:00:05.000 320 x 240, 25fps 48000 Hz"},
        {media("no-sound.mp4"), "no-sound.mp4 2 Video 0:00:02.000 320 x 240, 25fps      --"},
        {media("sound-later.mkv"), "sound-later.mkv 2 Video 0:00:05.700 320 x 240, 25fps 48000 Hz"}, // of the sound
        {media("24p.mp4"), "24p.mp4 2 Video 0:00:05.005 320 x 240, 24fps 48000 Hz"},
        {media("stereo-44k.wav"), "stereo-44k.wav 1 Audio 0:00:05.000      -- 44100 Hz"},
        {media("tone.aiff"), "tone.aiff 2 Video 0:00:05.000      -- 44100 Hz"},
        {media("tone.flac"), "tone.flac 1 Audio 0:00:05.000      -- 44100 Hz"},
        {media("still.jpg"), "still.jpg 3 Image 0:00:05.000 320 x 240      --"},
        {media("still.png"), "still.png 3 Image 0:00:05.000 320 x 240      --"},
        {media("animated.gif"), "animated.gif 3 Image 0:00:03.000 320 x 240, 10fps      --"},
        {media("names/UPPER.MP4"), "UPPER.MP4 2 Video 0:00:05.000 320 x 240, 25fps 48000 Hz"},
        {odd, "picture.xyz 2 Video 0:00:05.000 320 x 240      --"},
        {bare, "mp3 1 Audio 0:00:05.000      -- 44100 Hz"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        moduleTarnwick::OpenResentFile(c.path);
        ASSERT_EQ(takeMessages(), "");
        const ListItem& row = list().Row(list().Count());
        std::string text = row.Text + " " + std::to_string(row.Icon);
        for (const std::string& column : row.SubItems) {
            text += " " + column;
        }
        EXPECT_EQ(text, c.row);
    }
    rows();
}

TEST_F(RowsTest, ClassesOfExtensions)
{
    const std::pair<const char*, const char*> cases[] = {
        {"asf aiff avi mpeg mpg wmv", "Video"}, {"midi au mid mp3 wav wma", "Audio"}, {"gif bmp jpeg jpg tga", "Image"},
        {"flac ogg opus m4a aac", "Audio"},     {"png webp tif tiff", "Image"},       {"mp4 mov mkv aif xyz", "Video"},
    };
    for (const auto& [extensions, mediaClass] : cases) {
        std::istringstream words(extensions);
        for (std::string extension; words >> extension;) {
            state::LastOpenedExtension = extension;
            EXPECT_EQ(moduleTarnwick::GetMediaClass(), mediaClass) << extension;
        }
    }
    state::LastOpenedExtension = "  MP3 ";
    EXPECT_EQ(moduleTarnwick::GetMediaClass(), "Audio");
    EXPECT_EQ(state::LastOpenedExtension, "mp3");
    state::LastOpenedExtension = "";
    EXPECT_EQ(moduleTarnwick::GetMediaClass(), "Video");
}

TEST_F(RowsTest, WhatTheEngineSaysOfAFile)
{
    // Its sound plays, its picture is of a kind that nobody knows.
    const std::string strange = copied("mpeg4.avi", "strange \"film\".avi");
    std::fstream film(strange, std::ios::in | std::ios::out | std::ios::binary);
    std::string head(4096, '\0');
    film.read(head.data(), 4096);
    for (std::size_t at = 0; (at = head.find("FMP4", at)) != std::string::npos;) {
        film.seekp(static_cast<std::streamoff>(at)).write("Q?x7", 4);
        head[at] = 'Q';
    }
    film.close();
    const std::pair<std::string, const char*> cases[] = {
        {media("mpeg4.avi"), nullptr},
        {"", nullptr},
        {platform.folder + "/gone.avi", nullptr}, // opening it tells that
        {media("bad/text.avi"), "The media type of this file is not recognized."},
        {media("bad/no-moov.mp4"), "The file format is invalid."},
        {strange, "The video in this media file cannot be rendered."},
        {testmedia::mediaFolder().string(), "This is a folder. Open or drop the files that are in it."},
    };
    for (const auto& [path, text] : cases) {
        EXPECT_EQ(moduleTarnwick::CheckMediaFile(path), text == nullptr) << path;
        EXPECT_EQ(takeMessages(),
                  text == nullptr ? "" : "[Unable to open file - \"" + plain(path) + "\".|" + std::string(text) + "]");
    }
    expectsErrors = true;
    engineCalls.failCall({"GetFileError"});
    EXPECT_FALSE(moduleTarnwick::CheckMediaFile("/a/b.avi"));
}

} // namespace
} // namespace logic_test
