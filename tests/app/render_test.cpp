// quillmont-render from outside: words, movies, messages, and what it leaves on the disk when it fails.

#include "app/child_process.h"
#include "support/files.h"
#include "support/manifest.h"
#include "support/movie_reader.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/stat.h>

namespace app_test {
namespace {

namespace fs = std::filesystem;
using testmedia::bigEndian;
using testmedia::bytesOf;
using testmedia::medium;
using testmedia::patched;
using testmedia::TempFolder;
using testmedia::writeBytes;
using Words = std::vector<std::string>;

class RenderTest : public testing::Test {
protected:
    Words command(const Words& words) const
    {
        Words all{QUILLMONT_RENDER};
        all.insert(all.end(), words.begin(), words.end());
        return all;
    }

    Outcome run(const Words& words, const Limits& limits = {}) const
    {
        return Child(command(words), folder.path(), limits).end();
    }

    /// Runs into a failure that names its cause and leaves the folder, old movie included, as it was.
    Outcome runFailing(const Words& words, const std::vector<std::string>& saying, const Limits& limits = {})
    {
        writeBytes(movie, "the old movie");
        const auto before = folder.names();
        Outcome outcome = run(words, limits);
        expectFailure(outcome, saying);
        EXPECT_EQ(folder.names(), before) << "left beside the output";
        EXPECT_TRUE(bytesOf(movie) == "the old movie");
        return outcome;
    }

    static void expectFailure(const Outcome& outcome, const std::vector<std::string>& saying)
    {
        EXPECT_EQ(outcome.status, 1) << "signal " << outcome.signal << " " << outcome.err;
        EXPECT_TRUE(outcome.out.empty()) << outcome.out;
        for (const auto& part : saying) {
            EXPECT_NE(outcome.err.find(part), std::string::npos) << part << " is not told in: " << outcome.err;
        }
    }

    testmedia::Movie rendered(Words words, const Limits& limits = {})
    {
        words.insert(words.end(), {"-o", movie.string(), "--json"});
        last = run(words, limits);
        EXPECT_EQ(last.status, 0) << "signal " << last.signal << " " << last.err;
        EXPECT_TRUE(last.err.empty()) << last.err;
        return last.status == 0 ? testmedia::readMovie(movie) : testmedia::Movie{};
    }

    /// A number of the JSON line of the last run.
    double told(const std::string& name) const
    {
        const std::string key = "\"" + name + "\":";
        const auto at = last.out.find(key);
        EXPECT_NE(at, std::string::npos) << name << " is not told in: " << last.out;
        return at != std::string::npos ? std::strtod(last.out.c_str() + at + key.size(), nullptr) : -1;
    }

    /// Enough to be in the middle of for as long as a test likes: a clip, then black.
    Words tenHours() const { return command({medium("h264.mp4"), "--range", "0-36000000", "-o", movie.string()}); }

    /// Of the movie that it is writing, which has no name, or a hidden one.
    std::uintmax_t unfinishedBytes(const Child& child) const
    {
        std::error_code error;
        for (const auto& open : fs::directory_iterator("/proc/" + std::to_string(child.pid()) + "/fd", error)) {
            const auto name = fs::read_symlink(open.path(), error).string();
            if (name.starts_with(folder.path().string()) && (name.ends_with(".part") || name.ends_with(" (deleted)"))) {
                return fs::file_size(open.path(), error);
            }
        }
        return 0;
    }

    TempFolder folder;
    fs::path movie = folder / "movie.avi";
    Outcome last;
};

TEST_F(RenderTest, WrongWordsExitWith2AndTouchNothing)
{
    const std::string clip = medium("h264.mp4");
    const Words cases[] = {{},
                           {clip},
                           {"-o", "movie.avi"},
                           {clip, "-o", ""},
                           {clip, "-o"},
                           {clip, "-o", "movie.avi", "--nonsense"},
                           {clip, "-o", "movie.avi", "--fps", "0"},
                           {clip, "-o", "movie.avi", "--fps", "25.5x"},
                           {clip, "-o", "movie.avi", "--size", "640"},
                           {clip, "-o", "movie.avi", "--size", "8x8"},
                           {clip, "-o", "movie.avi", "--size", "99999x16"},
                           {clip, "-o", "movie.avi", "--audio-rate", "7999"},
                           {clip, "-o", "movie.avi", "--quality", "101"},
                           {clip, "-o", "movie.avi", "--range", "5000-1000"},
                           {clip, "-o", "movie.avi", "--range", "1000-"},
                           {clip, "-o", "movie.avi", "--range", "0-99999999999"}};
    for (const auto& words : cases) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << (words.empty() ? "" : words.back()) << outcome.err;
        EXPECT_NE(outcome.err.find("--help"), std::string::npos) << outcome.err;
        EXPECT_TRUE(folder.names().empty());
    }
}

TEST_F(RenderTest, AnswersOnStandardOutput)
{
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"--help", {"INPUT", "--output", "--range", "Exit status"}},
        {"--version", {"quillmont-render ", "."}},
        {"--list-compressors", {"Video:", "  Motion JPEG\n", "  Uncompressed\n", "Audio:", "  PCM\n"}}};
    for (const auto& [word, parts] : cases) {
        const Outcome outcome = run({word});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(outcome.err.empty()) << outcome.err;
        for (const auto& part : parts) {
            EXPECT_NE(outcome.out.find(part), std::string::npos) << part;
        }
    }
}

TEST_F(RenderTest, BadInputsAreNamedWithTheirCause)
{
    for (const char* name : {"pipe.mp4", "pipe.mid", "pipe.qpj"}) {
        ASSERT_EQ(::mkfifo((folder / name).c_str(), 0666), 0);
    }
    fs::create_symlink("loop.mp4", folder / "loop.mp4");
    const std::string unknown = "no video, sound or image";
    writeBytes(folder / "words.srt", "1\n00:00:01,000 --> 00:00:02,000\nHello\n\n");
    writeBytes(folder / "moving.webp",
               std::string("RIFF\x64\0\0\0WEBPVP8X\x0A\0\0\0\x02\0\0\0", 24) + std::string(84, '\0'));
    writeBytes(folder / "long.mid",
               bytesOf(medium("tune.mid")).substr(0, 18) + "\x7F" + std::string((16 << 20) + 1, '\x40'));
    const std::pair<std::string, std::string> cases[] = {{"", "Check the path"},
                                                         {"missing.mp4", "is not there"},
                                                         {folder.path().string(), "is a folder"},
                                                         {"pipe.mp4", "no regular file"},
                                                         {"pipe.mid", "no regular file"},
                                                         {"pipe.qpj", "no regular file"},
                                                         {"/dev/zero", "no regular file"},
                                                         {"loop.mp4", "links"},
                                                         {std::string(300, 'n'), "too long"},
                                                         {medium("bad/empty.avi"), "is empty"},
                                                         {medium("bad/random.mp4"), unknown},
                                                         {medium("bad/text.avi"), unknown},
                                                         {medium("bad/no-moov.mp4"), "damaged"},
                                                         {medium("bad/huge.png"), "60000 x 60000"},
                                                         {medium("bad/network.m3u8"), "is a play list"},
                                                         {medium("bad/network.mp4"), "is a play list"},
                                                         {medium("bad/network.m3u"), "is a play list"},
                                                         {medium("bad/network.pls"), "is a play list"},
                                                         {medium("bad/local.m3u8"), "is a play list"},
                                                         {medium("bad/concat.avi"), "is a play list"},
                                                         {"words.srt", "holds subtitles"},
                                                         {"moving.webp", "animated"},
                                                         {"long.mid", "16 MB"}};
    for (const auto& [input, cause] : cases) {
        SCOPED_TRACE(input);
        runFailing({input, "-o", movie.string()}, {cause, fs::path(input).filename().string().substr(0, 20)});
    }
    // A good input does not hide a bad one.
    runFailing({medium("still.png"), "missing.mp4", "-o", movie.string()}, {"missing.mp4"});
}

TEST_F(RenderTest, DamagedInputsPlayWhatTheyHold)
{
    for (const auto& entry : testmedia::readManifest()) {
        if (entry.kind == "bad" && entry.has("readable-in-part")) {
            SCOPED_TRACE(entry.name);
            const auto read = rendered({medium(entry.name)});
            EXPECT_TRUE(!read.frames.empty() || read.soundCount() > 0);
        }
    }
}

TEST_F(RenderTest, OddPathsOnBothSides)
{
    for (const auto& entry : testmedia::readManifest()) {
        if (entry.has("alias")) {
            const fs::path name = fs::path(entry.name).filename();
            EXPECT_EQ(rendered({medium(entry.name), "--range", "0-200"}).numbers().size(), 5u) << name;
            const Outcome beside = run({medium(entry.name), "--range", "0-40", "-o", name.string() + ".avi"});
            EXPECT_EQ(beside.status, 0) << name << beside.err;
            EXPECT_EQ(folder.names().count(name.string() + ".avi"), 1u) << name;
        }
    }
    for (const std::string name : {"-dash.png", "[a,b]", "[take 1]", "back\\slash", "new\nline", "bytes\xff.png"}) {
        fs::copy_file(medium("still.png"), folder / name);
        const Outcome bare = run({"-o", movie.string(), "--json", "--range", "0-40", "--", name});
        EXPECT_EQ(bare.status, 0) << name << bare.err;
    }
    // Deeper than 300 characters, and a name as long as the disk takes it.
    fs::path deep = folder.path();
    for (int i = 0; i < 7; ++i) {
        deep /= std::string(50, static_cast<char>('a' + i));
    }
    fs::create_directories(deep);
    for (const auto& output : {deep / "movie.avi", folder / (std::string(251, 'm') + ".avi")}) {
        EXPECT_EQ(run({medium("still.png"), "--range", "0-40", "-o", output.string()}).status, 0);
        EXPECT_EQ(testmedia::readMovie(output).frames.size(), 1u);
    }
}

TEST_F(RenderTest, OutputsThatCannotBe)
{
    const std::string clip = medium("still.png");
    fs::create_directory(folder / "in");
    const std::pair<std::string, std::string> cases[] = {{"none/movie.avi", "\"none\""},
                                                         {"in", "\"in\" is a folder"},
                                                         {"movie.avi/movie.avi", "\"movie.avi\""},
                                                         {std::string(252, 'm') + ".avi", "mmm"},
                                                         {"/proc/movie.avi", "\"/proc"}};
    for (const auto& [output, cause] : cases) {
        runFailing({clip, "-o", output}, {cause});
    }
    EXPECT_TRUE(fs::is_empty(folder / "in"));
    // Neither a pipe nor a device gives way to a movie, nor does what is being read.
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0666), 0);
    runFailing({clip, "-o", "pipe"}, {"pipe"});
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    fs::copy_file(clip, folder / "own.png");
    fs::create_symlink("own.png", folder / "link.png");
    for (const std::string output : {"own.png", "in/../own.png", "link.png"}) {
        runFailing({"own.png", "-o", output}, {"\"" + output + "\""});
        EXPECT_TRUE(bytesOf(folder / "own.png") == bytesOf(clip)) << "the input was overwritten";
    }
}

TEST_F(RenderTest, WhatMayNotBeReadOrWritten)
{
    const bool isRoot = ::geteuid() == 0;
    if (isRoot && run({"--version"}, {.asNobody = true}).status != 0) {
        GTEST_SKIP() << "nobody may not run the program from here";
    }
    const Limits others{.asNobody = isRoot};
    fs::copy_file(medium("still.png"), folder / "closed.png");
    fs::permissions(folder / "closed.png", fs::perms::none);
    fs::create_directory(folder / "shut");
    fs::permissions(folder / "shut", fs::perms::owner_exec | fs::perms::others_exec | fs::perms::others_read);
    runFailing({"closed.png", "-o", "other.avi"}, {"may not be read", "closed.png"}, others);
    fs::copy_file(medium("still.png"), folder / "open.png");
    fs::permissions(folder / "open.png", fs::perms::others_read | fs::perms::owner_read);
    runFailing({"open.png", "-o", "shut/movie.avi"}, {"may not be written", "shut"}, others);
    if (isRoot) {
        runFailing({"open.png", "-o", "movie.avi"}, {"\"movie.avi\" is read-only"}, others);
    }
}

TEST_F(RenderTest, KeepsWhatTheOldMovieWas)
{
    writeBytes(movie, "the old movie");
    fs::permissions(movie, fs::perms(0640));
    const bool isRoot = ::geteuid() == 0;
    EXPECT_TRUE(!isRoot || ::chown(movie.c_str(), 65534, 65533) == 0);
    fs::create_symlink("movie.avi", folder / "link.avi");
    fs::create_symlink("new.avi", folder / "dangling.avi");
    for (const std::string name : {"movie.avi", "link.avi", "dangling.avi"}) {
        EXPECT_EQ(run({medium("still.png"), "--range", name == "link.avi" ? "0-80" : "0-40", "-o", name}).status, 0);
    }
    EXPECT_EQ(folder.names(), (std::set<std::string>{"movie.avi", "new.avi", "link.avi", "dangling.avi"}));
    EXPECT_TRUE(fs::is_symlink(folder / "link.avi") && fs::is_symlink(folder / "dangling.avi"));
    EXPECT_EQ(testmedia::readMovie(movie).frames.size(), 2u) << "a link stays a link to the movie";
    struct stat facts {};
    ASSERT_EQ(::stat(movie.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0640u);
    EXPECT_TRUE(!isRoot || (facts.st_uid == 65534 && facts.st_gid == 65533));
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ASSERT_EQ(::stat((folder / "new.avi").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0666u & ~mask);
    // Asked before the inputs are, root too.
    fs::permissions(movie, fs::perms(0444));
    const auto before = folder.names();
    expectFailure(run({"missing.mp4", "-o", "movie.avi"}), {"\"movie.avi\" is read-only"});
    EXPECT_EQ(folder.names(), before);
}

TEST_F(RenderTest, FolderThatMovesMeanwhileKeepsTheMovie)
{
    fs::create_directory(folder / "here");
    Words words = command(Words(16, medium("mjpeg.avi")));
    words.insert(words.end(), {"-o", "here/movie.avi"});
    Child child(words, folder.path());
    ASSERT_TRUE(child.runsUntil([&] { return unfinishedBytes(child) > 10'000; }));
    fs::rename(folder / "here", folder / "there");
    expectFailure(child.end(), {"\"here\" was moved", "/there/movie.avi"});
    EXPECT_EQ(testmedia::readMovie(folder / "there" / "movie.avi").frames.size(), 16 * 125u);
}

/// A disk that knows no files without names.
const NoCall kNoNameless{SYS_openat, O_TMPFILE, EOPNOTSUPP};

TEST_F(RenderTest, RunsOfOneProcessNumberKeepApart)
{
    Words first{"/usr/bin/unshare", "--pid", "--fork"};
    if (::geteuid() != 0) {
        first.insert(first.end(), {"--user", "--map-root-user"});
    }
    const auto numberOne = [&](const Words& words) {
        Words all = first;
        const Words rest = command(words);
        all.insert(all.end(), rest.begin(), rest.end());
        return all;
    };
    if (Child(numberOne({"--version"}), folder.path()).end().status != 0) {
        GTEST_SKIP() << "no process numbers of one's own here";
    }
    writeBytes(folder / "somebody's", "work");
    fs::create_symlink("somebody's", folder / ".quillmont-1.part.avi");
    for (const Limits& limits : {Limits{}, Limits{.calls = {kNoNameless}}}) {
        Child one(numberOne({medium("h264.mp4"), "-o", "one.avi"}), folder.path(), limits);
        Child two(numberOne({medium("still.png"), "-o", "two.avi"}), folder.path(), limits);
        EXPECT_EQ(one.end().status, 0);
        EXPECT_EQ(two.end().status, 0);
        EXPECT_EQ(testmedia::readMovie(folder / "one.avi").soundCount(), 240000u);
        EXPECT_EQ(testmedia::readMovie(folder / "two.avi").soundCount(), 0u);
        EXPECT_EQ(bytesOf(folder / "somebody's"), "work");
        EXPECT_EQ(folder.names(), (std::set<std::string>{".quillmont-1.part.avi", "one.avi", "two.avi", "somebody's"}));
    }
}

TEST_F(RenderTest, KillsLeaveTheOldMovieAndNothingHidden)
{
    writeBytes(movie, "the old movie");
    const Words next{medium("still.png"), "--range", "0-40", "-o", "next.avi"};
    const auto expectTheOldAlone = [&] {
        EXPECT_TRUE(bytesOf(movie) == "the old movie");
        EXPECT_EQ(run(next).status, 0);
        EXPECT_EQ(folder.names(), (std::set<std::string>{"movie.avi", "next.avi"}));
    };
    for (std::uintmax_t moment = 0; moment < 20; ++moment) {
        SCOPED_TRACE(moment);
        const bool isHidden = moment % 2 == 1;
        Child child(tenHours(), folder.path(), {.calls = isHidden ? std::vector{kNoNameless} : std::vector<NoCall>{}});
        ASSERT_TRUE(child.runsUntil([&] { return unfinishedBytes(child) > moment * 40'000; }));
        if (moment < 2) {
            EXPECT_EQ(run(next).status, 0);
            EXPECT_EQ(folder.names().size(), isHidden ? 3u : 2u) << "what somebody writes stays";
        }
        child.kill(SIGKILL);
        EXPECT_EQ(child.end().signal, SIGKILL);
        expectTheOldAlone();
    }
    for (const long number : {SYS_flock, SYS_fsync, SYS_linkat, SYS_fchown, SYS_fchmod, SYS_renameat}) {
        SCOPED_TRACE(number);
        EXPECT_EQ(run({medium("still.png"), "-o", "movie.avi"}, {.calls = {{number}}}).signal, SIGSYS);
        expectTheOldAlone();
    }
    // A disk that fails at the very end fails the run.
    runFailing({medium("still.png"), "-o", "movie.avi"}, {"\"movie.avi\"", "Input/output"},
               {.calls = {{SYS_fsync, 0, EIO}}});
}

struct Case {
    Words words;
    std::size_t frames;
    std::size_t samples;
    int width = 320;
    int height = 240;
    double fps = 25;
    int rate = 48000;
    std::map<std::size_t, int> numbers = {}; // frame of the movie: its bar code
};

TEST_F(RenderTest, OptionsAndTheNumbersTold)
{
    const std::string clip = medium("h264.mp4");
    const Case cases[] = {
        {{clip}, 125, 240000, 320, 240, 25, 48000, {{0, 0}, {124, 124}}},
        {{clip, clip}, 250, 480000, 320, 240, 25, 48000, {{124, 124}, {125, 0}, {249, 124}}},
        {{clip, "--range", "1000-2000"}, 25, 48000, 320, 240, 25, 48000, {{0, 25}, {24, 49}}},
        {{clip, "--range", "990-1001"}, 1, 528, 320, 240, 25, 48000, {{0, 24}}},
        {{clip, "--range", "4960-6000"}, 26, 49920, 320, 240, 25, 48000, {{0, 124}, {1, -1}, {25, -1}}},
        {{clip, "--fps", "10"}, 50, 240000, 320, 240, 10, 48000, {{1, 2}, {2, 5}, {49, 122}}},
        {{clip, "--size", "176x144", "--range", "0-80"}, 2, 3840, 176, 144},
        {{clip, "--audio-rate", "44100"}, 125, 220500, 320, 240, 25, 44100},
        {{clip, "--audio-rate", "8000", "--range", "0-1001"}, 26, 8008, 320, 240, 25, 8000},
        {{medium("24p.mp4"), "--range", "0-1000"}, 24, 48000, 320, 240, 24000.0 / 1001},
        {{medium("30p.mp4")}, 150, 240240, 320, 240, 30000.0 / 1001},
        {{medium("anamorphic.mp4"), "--range", "0-40"}, 1, 1920, 464, 240},
        {{medium("turned.jpg"), "--range", "0-40"}, 1, 0},
        {{medium("still.png")}, 125, 0, 320, 240, 25, 0},
        {{medium("tone.flac")}, 0, 240000, 0, 0, 0},
        {{medium("no-sound.mp4"), medium("tone.flac")}, 175, 336000, 320, 240, 25, 48000, {{49, 49}, {50, -1}}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.words.front() + (c.words.size() > 2 ? " " + c.words[1] + " " + c.words[2] : ""));
        const auto made = rendered(c.words);
        const double seconds =
            c.samples > 0 ? static_cast<double>(c.samples) / c.rate : static_cast<double>(c.frames) / c.fps;
        EXPECT_EQ(made.frames.size(), c.frames);
        EXPECT_EQ(made.soundCount(), c.samples);
        EXPECT_EQ(told("frames"), static_cast<double>(c.frames));
        EXPECT_EQ(told("samples"), static_cast<double>(c.samples));
        EXPECT_NEAR(told("seconds"), seconds, 1e-6);
        EXPECT_EQ(made.codedWidthPx, c.width);
        EXPECT_EQ(made.codedHeightPx, c.height);
        EXPECT_EQ(made.rateHz, c.samples > 0 ? c.rate : 0);
        EXPECT_NEAR(made.frameRate, c.fps, 1e-3);
        const auto numbers = made.numbers();
        for (const auto& [frame, number] : c.numbers) {
            EXPECT_EQ(frame < numbers.size() ? numbers[frame] : -3, number) << "frame " << frame;
        }
    }
}

TEST_F(RenderTest, RangeBehindTheEndIsRefused)
{
    const std::string clip = medium("h264.mp4");
    for (const std::string range : {"5000-6000", "2147483000-2147483647"}) {
        runFailing({clip, "--range", range, "-o", movie.string()}, {range, "behind the end", "5000 ms"});
    }
    // The end of what is chosen counts.
    const Words longer{medium("no-sound.mp4"), medium("tone.flac"), "--range", "3000-4000", "-o", movie.string()};
    EXPECT_EQ(run(longer).status, 0);
    Words pictures = longer;
    pictures.insert(pictures.end(), {"--tracks", "video"});
    runFailing(pictures, {"3000-4000", "2000 ms"});
}

TEST_F(RenderTest, CompressorsByTheirNames)
{
    const std::string clip = medium("h264.mp4");
    const auto made = rendered({clip, "--range", "0-600", "--video-compressor", "FFV1", "--audio-compressor", "AC-3"});
    EXPECT_EQ(made.videoCodec + " " + made.soundCodec, "ffv1 ac3");
    EXPECT_EQ(told("samples"), 28800) << "not as many as fill its last packet";
    EXPECT_GT(made.soundCount(), 28800u);
    runFailing({clip, "-o", movie.string(), "--video-compressor", "Nothing"}, {"\"Nothing\"", "--list"});
    runFailing({clip, "-o", movie.string(), "--audio-compressor", "Mp3"}, {"\"Mp3\"", "--list"});
}

TEST_F(RenderTest, FullDiskLeavesTheOldMovie)
{
    rendered({medium("h264.mp4")});
    const auto whole = fs::file_size(movie);
    // In the header, in the middle, in the index, and in the last byte.
    for (const auto limit : {std::uintmax_t{1000}, whole / 2, whole - 1500, whole - 1}) {
        SCOPED_TRACE(limit);
        runFailing({medium("h264.mp4"), "-o", movie.string()}, {"\"" + movie.string() + "\"", "space"}, {limit});
    }
    const Outcome unheard = run({medium("still.png"), "-o", movie.string(), "--json"}, {.stdoutPath = "/dev/full"});
    EXPECT_EQ(unheard.status, 1);
    EXPECT_FALSE(unheard.err.empty()) << "a result that nobody got has a cause to tell";
}

TEST_F(RenderTest, SignalsEndALongRender)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        writeBytes(movie, "the old movie");
        Child child(tenHours(), folder.path());
        ASSERT_TRUE(child.runsUntil([&] { return unfinishedBytes(child) > 100'000; }));
        child.kill(signal);
        expectFailure(child.end(10), {"Interrupted"});
        EXPECT_EQ(folder.names(), std::set<std::string>{"movie.avi"});
        EXPECT_TRUE(bytesOf(movie) == "the old movie");
    }
    // Started to outlive its terminal, it does.
    Child child(tenHours(), folder.path(), {.ignoredSignals = {SIGHUP}});
    ASSERT_TRUE(child.runsUntil([&] { return unfinishedBytes(child) > 100'000; }));
    child.kill(SIGHUP);
    const auto then = unfinishedBytes(child);
    EXPECT_TRUE(child.runsUntil([&] { return unfinishedBytes(child) > then + 500'000; })) << "a hangup ended it";
    child.kill(SIGTERM);
    expectFailure(child.end(10), {"Interrupted"});
}

TEST_F(RenderTest, InputsThatShrinkOrVanishMeanwhile)
{
    const fs::path input = folder / "input.avi";
    for (const std::string name : {"mjpeg.avi", "h264.mp4", "mpeg2.ts", "stereo-48k.wav"}) {
        for (const bool vanishes : {false, true}) {
            SCOPED_TRACE(name + (vanishes ? " vanishes" : " shrinks"));
            fs::copy_file(medium(name), input, fs::copy_options::overwrite_existing);
            const Words many(40, input.string());
            Words words = command(many);
            words.insert(words.end(), {"--video-compressor", "MPEG-4", "-o", movie.string(), "--json"});
            Child child(words, folder.path());
            ASSERT_TRUE(child.runsUntil([&] { return unfinishedBytes(child) > 10'000; }));
            if (vanishes) {
                fs::remove(input);
            } else {
                fs::resize_file(input, fs::file_size(input) / 2);
            }
            last = child.end(60);
            EXPECT_EQ(last.signal, 0);
            EXPECT_NE(last.err.find("input.avi"), std::string::npos) << "nothing is told of it";
            if (last.status == 0) {
                const auto made = testmedia::readMovie(movie);
                EXPECT_EQ(static_cast<double>(made.frames.size()), told("frames"));
                EXPECT_EQ(static_cast<double>(made.soundCount()), told("samples"));
                EXPECT_GE(told("seconds"), 40 * 5.0);
            } else {
                EXPECT_EQ(last.status, 1);
                EXPECT_EQ(folder.names().count("movie.avi"), 0u);
            }
            fs::remove(movie);
            EXPECT_LE(folder.names().size(), 1u);
        }
    }
}

// --- Projects ---

std::string escaped(const std::string& text)
{
    std::string safe;
    for (const char c : text) {
        safe += c == '&' ? "&amp;" : c == '"' ? "&quot;" : c == '<' ? "&lt;" : std::string(1, c);
    }
    return safe;
}

std::string project(const std::vector<std::string>& paths, const std::string& tracks)
{
    std::string list;
    for (const auto& path : paths) {
        list += "<File Path=\"" + escaped(path) + "\"/>";
    }
    return "<QuillmontProject><Timeline FrameWidth=\"160\" FrameHeight=\"120\">" + tracks + "</Timeline><MediaList>"
           + list
           + "</MediaList><PropertySettings/><PreviewDimension Width=\"160\" Height=\"120\"/></QuillmontProject>";
}

std::string source(const std::string& stream, const std::string& range, int file = 0)
{
    return "<Source File=\"" + std::to_string(file) + "\" Stream=\"" + stream + "\" " + range + "/>";
}

TEST_F(RenderTest, TraceTellsTheWorkOfEveryFrame)
{
    const auto trace = folder / "trace.json";
    rendered({medium("mjpeg.avi"), "--size", "160x120", "--trace", trace.string()});
    const std::string text = bytesOf(trace);
    const auto countOf = [&](const std::string& part) {
        int count = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    };
    EXPECT_TRUE(text.starts_with("{") && text.ends_with("]}\n"));
    for (const char* name : {"decode", "fit", "encode"}) {
        EXPECT_EQ(countOf(std::string("\"name\":\"") + name + "\""), 125) << name;
    }
    EXPECT_GT(countOf("\"name\":\"mix\""), 10);
}

TEST_F(RenderTest, TraceIsWrittenOverNothingOfThisRun)
{
    for (const std::string name : {"clip.png", "again.png"}) {
        fs::copy_file(medium("still.png"), folder / name);
    }
    fs::create_symlink("clip.png", folder / "link");
    fs::create_hard_link(folder / "clip.png", folder / "hard");
    writeBytes(
        folder / "p.qpj",
        project({"again.png"}, "<Track Kind=\"Video\">" + source("Video", "Start=\"0\" Stop=\"400\"") + "</Track>"));
    writeBytes(movie, "");
    fs::create_hard_link(movie, folder / "twin.avi");
    writeBytes(folder / "old", "{}");
    fs::permissions(folder / "old", fs::perms(0444));
    const Words cases[] = {{"clip.png", "clip.png", "read"},
                           {"clip.png", "link", "read"},
                           {"clip.png", "hard", "read"},
                           {"p.qpj", "p.qpj", "read"},
                           {"p.qpj", "again.png", "read"},
                           {"clip.png", "./movie.avi", "itself"},
                           {"clip.png", "twin.avi", "itself"},
                           {"clip.png", "old", "read-only"},
                           {"clip.png", "none/trace.json", "\"none\""}};
    for (const auto& words : cases) {
        SCOPED_TRACE(words[0] + " " + words[1]);
        std::map<std::string, std::string> before;
        for (const auto& name : folder.names()) {
            before[name] = bytesOf(folder / name);
        }
        runFailing({words[0], "-o", "movie.avi", "--trace", words[1]}, {words[2]});
        writeBytes(movie, "");
        for (const auto& [name, text] : before) {
            EXPECT_TRUE(bytesOf(folder / name) == text) << name;
        }
    }
    // Neither is there yet.
    fs::remove(movie);
    expectFailure(run({"clip.png", "-o", "movie.avi", "--trace", folder.path() / "movie.avi"}), {"itself"});
    EXPECT_EQ(folder.names().count("movie.avi"), 0u);
}

TEST_F(RenderTest, TextsThatFindNoRoomCostNoMovie)
{
    const std::string title(30'000, 't');
    for (const std::string name : {"movie.avi", "movie.wmv"}) {
        SCOPED_TRACE(name);
        const Words words{medium("h264.mp4"), "-o", name};
        EXPECT_EQ(run(words).status, 0);
        const std::string plain = bytesOf(folder / name);
        Words described = words;
        described.insert(described.end(), {"--title", title});
        writeBytes(folder / name, "the old movie");
        // The movie fits, a larger header does not.
        expectFailure(run(described, {plain.size() + 1000}), {"\"" + name + "\"", "title", "whole", "kept"});
        EXPECT_TRUE(bytesOf(folder / name) == plain);
        EXPECT_EQ(run(described).status, 0);
        EXPECT_GT(bytesOf(folder / name).size(), plain.size() + title.size());
        EXPECT_EQ(testmedia::readMovie(folder / name).numbers().at(124), 124);
    }
    EXPECT_EQ(folder.names(), (std::set<std::string>{"movie.avi", "movie.wmv"}));
}

TEST_F(RenderTest, Projects)
{
    const fs::path path = folder / "my & \"project\".qpj";
    fs::copy_file(medium("h264.mp4"), folder / "clip & %03d.mp4");
    const std::string tracks = "<Track Kind=\"Video\">"
                               + source("Video", "Start=\"0\" Stop=\"400\" MediaStart=\"2000\"")
                               + source("Video", "Start=\"800\" Stop=\"1000\" MediaStart=\"1000\"", 1)
                               + "</Track><Track Kind=\"Video\"/><Track Kind=\"Audio\">"
                               + source("Audio", "Start=\"200\" Stop=\"1200\" MediaStart=\"0\"") + "</Track>";
    // By full path, and from the project's own folder.
    writeBytes(path, project({medium("h264.mp4"), "clip & %03d.mp4"}, tracks));
    const auto made = rendered({path.string()});
    const auto numbers = made.numbers();
    ASSERT_EQ(numbers.size(), 30u);
    const std::map<std::size_t, int> expected{{0, 50}, {9, 59}, {10, -1}, {19, -1}, {20, 25}, {24, 29}, {25, -1}};
    for (const auto& [frame, number] : expected) {
        EXPECT_EQ(numbers[frame], number) << frame;
    }
    EXPECT_EQ(made.codedWidthPx, 160);
    EXPECT_EQ(made.soundCount(), 57600u);
    EXPECT_NEAR(made.soundShift(0, 0.6, 0.5).value_or(9), -0.2, 0.0005);
    EXPECT_EQ(rendered({path.string(), "--size", "320x240"}).codedWidthPx, 320);
    for (const std::string range : {"MediaStart=\"-2147483648\" MediaStop=\"2147483647\"",
                                    "MediaStart=\"9\" MediaStop=\"5\"", "MediaStart=\"2147483647\" MediaStop=\"-5\""}) {
        const std::string times = "Start=\"0\" Stop=\"400\" " + range;
        writeBytes(folder / "wild.qpj", project({medium("h264.mp4")}, "<Track Kind=\"Video\">" + source("Video", times)
                                                                          + "</Track><Track Kind=\"Audio\">"
                                                                          + source("Audio", times) + "</Track>"));
        EXPECT_EQ(rendered({"wild.qpj"}).frames.size(), 10u) << range;
    }

    runFailing({path.string(), medium("h264.mp4"), "-o", movie.string()}, {"alone"});
    const std::string whole = bytesOf(path);
    runFailing({path.string(), "-o", path.string()}, {"project"});
    EXPECT_TRUE(bytesOf(path) == whole) << "the project was overwritten";
}

TEST_F(RenderTest, ProjectsByThemselves)
{
    const std::string row = "<Row Name=\"\" Link=\"0\" Lock=\"1\" Disable=\"0\"/>";
    const std::string off = "<Row Name=\"\" Link=\"1\" Lock=\"0\" Disable=\"1\"/>";
    const auto heldBy = [](const std::string& disabled) {
        return "<Track Kind=\"Video\" " + disabled + ">" + source("Video", "Start=\"0\" Stop=\"400\"")
               + "<Effect Name=\"Engrave\" Start=\"200\" Stop=\"400\"/></Track><Track Kind=\"Audio\">"
               + source("Audio", "Start=\"0\" Stop=\"800\"") + "</Track>";
    };
    const struct {
        const char* what;
        std::string disabled; // attribute of the video track
        std::string rows;
        const char* seen; // f a frame of the clip, x one under the effect, . black; silence behind the bar
    } cases[] = {{"plain", "", "", "fffffxxxxx.......... |s"},
                 {"all on", "", "<Rows>" + row + row + row + row + row + "</Rows>", "fffffxxxxx.......... |s"},
                 {"no video", "", "<Rows>" + off + row + "</Rows>", ".................... |s"},
                 {"no effects", "", "<Rows>" + row + off + row + "</Rows>", "ffffffffff.......... |s"},
                 {"no sound", "", "<Rows>" + row + row + row + off + "</Rows>", "fffffxxxxx.......... |-"},
                 {"an old file", "Disabled=\"1\"", "", ".................... |s"},
                 {"both", "Disabled=\"1\"", "<Rows>" + row + "</Rows>", "fffffxxxxx.......... |s"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::string text = project({medium("h264.mp4")}, heldBy(c.disabled));
        text.replace(text.rfind("160"), 3, "320");
        text.replace(text.rfind("120"), 3, "240");
        text.insert(text.rfind("</"), "<SelectionSliders Visible=\"1\" Start=\"100\" End=\"200\"/>" + c.rows);
        writeBytes(folder / "p.qpj", text);
        const auto made = rendered({"p.qpj"});
        EXPECT_TRUE(made.codedWidthPx == 320 && made.codedHeightPx == 240) << "the project's frame";
        std::string seen;
        for (int frame = 0; const int number : made.numbers()) {
            seen += number == frame++ ? 'f' : number == -1 ? '.' : 'x';
        }
        EXPECT_EQ(seen + (made.soundShift(0, 0.3) ? " |s" : " |-"), c.seen);
    }
}

TEST_F(RenderTest, BrokenProjects)
{
    const std::string clip = medium("no-sound.mp4");
    const std::string start = "<Track Kind=\"Video\">";
    const std::string whole = project({clip}, start + source("Video", "Start=\"0\" Stop=\"400\"") + "</Track>");
    const auto holding = [&](const std::string& item) { return project({clip}, start + item + "</Track>"); };
    std::string wide = whole;
    wide.replace(wide.rfind("160"), 3, "99999");
    std::string large = whole;
    large.replace(large.rfind("160"), 3, "32767");
    large.replace(large.rfind("120"), 3, "32767");
    std::string nested = "<QuillmontProject>";
    for (int i = 0; i < 1'000'000; ++i) {
        nested += "<a>";
    }
    const std::pair<std::string, std::string> cases[] = {
        {"", "p.qpj"},
        {"hello", "p.qpj"},
        {std::string(5000, '\0'), "p.qpj"},
        {"<Other/>", "p.qpj"},
        {whole.substr(0, whole.size() / 2), "p.qpj"},
        {nested, "p.qpj"},
        {project({"/nowhere/clip.mp4"}, ""), "/nowhere/clip.mp4"},
        {project({medium("bad/text.avi")}, ""), "text.avi"},
        {project({clip}, ""), "empty"},
        {holding(source("Video", "Start=\"0\" Stop=\"400\"", 1)), "file 1"},
        {holding(source("Video", "Start=\"400\" Stop=\"400\"")), "stop"},
        {wide, "p.qpj"},
        {large, "32766 x 32766"},
        {start, "p.qpj"}};
    for (const auto& [text, cause] : cases) {
        SCOPED_TRACE(text.substr(0, 300));
        writeBytes(folder / "p.qpj", text);
        runFailing({"p.qpj", "-o", movie.string()}, {cause});
    }
    EXPECT_EQ(run({medium("still.png"), "-o", "p.avi", "--range", "0-40"}).status, 0);
}

TEST_F(RenderTest, ForeignTextGivesTheTerminalNoOrders)
{
    const std::pair<std::string, std::string> cases[] = {{"/\x1b]0;mine\x07\xc2\x9b"
                                                          "2J",
                                                          "\"/\\x1b]0;mine\\x07\\xc2\\x9b2J\""},
                                                         {"/\xe2\x80\xaetxt.\x7f", "\"/\\xe2\\x80\\xaetxt.\\x7f\""},
                                                         {"/cut \xe4\xf6 \xc3", "\"/cut \\xe4\\xf6 \\xc3\""},
                                                         {"/gr\xc3\xb6\xc3\x9f"
                                                          "e \xe6\x98\xa0.mp4",
                                                          "\"/gr\xc3\xb6\xc3\x9f"
                                                          "e \xe6\x98\xa0.mp4\""},
                                                         {"/" + std::string(3'000'000, 'n'), "too long"}};
    for (const auto& [path, shown] : cases) {
        writeBytes(folder / "p.qpj", project({path}, ""));
        const Outcome outcome = runFailing({"p.qpj", "-o", movie.string()}, {shown});
        EXPECT_LT(outcome.err.size(), 6000u);
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1);
    }
    runFailing({"all\nis well", "-o", movie.string()}, {"all\\x0ais well\" is not there"});
}

TEST_F(RenderTest, DamagedStampsAreToldOnceForEachFile)
{
    writeBytes(folder / "slow.avi", // eleven hours a picture
               patched(bytesOf(medium("mpeg4.avi")), "vids", 16, std::string("\x40\x9C\0\0\1\0\0\0", 8)));
    last = run({"slow.avi", "slow.avi", medium("mpeg2.ts"), "-o", movie.string(), "--json", "--range", "0-200"});
    EXPECT_EQ(last.status, 0);
    EXPECT_NE(last.err.find("slow.avi\" has damaged time stamps: its picture ends at "), std::string::npos) << last.err;
    EXPECT_EQ(std::ranges::count(last.err, '\n'), 1) << last.err;
    EXPECT_TRUE(last.out.starts_with("{") && std::ranges::count(last.out, '\n') == 1) << last.out;
}

/// A film that claims so many samples, all in its first chunk.
std::string withSamples(const std::string& film, std::uint64_t count)
{
    return patched(patched(film, "stsz", 8, bigEndian(count)), "stsc", 12, bigEndian(count));
}

TEST_F(RenderTest, FilmsAreCountedByWhatTheyTakeInMemory)
{
    constexpr std::uintmax_t kGb = std::uintmax_t{1} << 30;
    const auto runWith = [&](const std::string& bytes, std::uintmax_t length) {
        writeBytes(folder / "film.mov", bytes);
        fs::resize_file(folder / "film.mov", length);
        return run({"film.mov", "-o", "made.avi", "--range", "0-1000"});
    };
    const std::string sound = bytesOf(medium("plain-sound.mov"));
    for (const std::uint32_t seconds : {200u, 8 * 3660u}) { // the second: as much as eight tracks of an hour
        EXPECT_EQ(runWith(withSamples(sound, seconds * 48000), 3 * kGb).status, 0) << seconds;
    }
    for (const auto& [samples, status] : {std::pair{9'230'000u, 0}, {40'000'000u, 1}}) { // the first: a day of film
        // Not one after the other, so that each has its entry.
        const std::string single = patched(withSamples(sound, samples), "stts", 12, bigEndian(2));
        EXPECT_EQ(runWith(single, kGb).status, status) << samples;
    }
    for (const std::string table : {"stsc", "stts", "ctts", "stss", "stco", "stsz"}) {
        std::string claims = bigEndian(20) + "ftypqt  " + bigEndian(512) + "qt  ";
        for (const std::string& name : {std::string("moov"), std::string("trak"), std::string("mdia"),
                                        std::string("minf"), std::string("stbl"), table}) {
            claims += bigEndian(0xB0000000) + name;
        }
        claims += std::string(table == "stsz" ? 8 : 4, '\0') + bigEndian(0x0E000000);
        const Outcome outcome = runWith(claims, 3 * kGb);
        EXPECT_EQ(outcome.status, 1) << table;
        EXPECT_LT(outcome.peakKib, 300 << 10) << table;
    }
}

TEST_F(RenderTest, TakesNoMemoryForWhatFilesClaim)
{
    constexpr std::uintmax_t kThreeGb = std::uintmax_t{3} << 30;
    std::string slow = bytesOf(medium("stereo-48k.wav")).substr(0, 40000);
    slow.replace(24, 4, testmedia::littleEndian(1)); // samples a second
    writeBytes(folder / "slow.wav", slow);
    writeBytes(folder / "claims.mp4", // of one byte each
               patched(withSamples(bytesOf(medium("no-sound.mp4")), 20'000'000), "stsz", 4, bigEndian(1)));
    fs::copy_file(medium("tune.mid"), folder / "large.mid");
    fs::resize_file(folder / "large.mid", kThreeGb);
    writeBytes(folder / "large.qpj", "<QuillmontProject>");
    fs::resize_file(folder / "large.qpj", kThreeGb);
#ifdef __SANITIZE_ADDRESS__
    constexpr long kMostKib = 1200 << 10; // with what the sanitizer keeps of freed memory, and its shadow
#else
    constexpr long kMostKib = 300 << 10;
#endif
    for (const auto& [name, status] :
         {std::pair{"slow.wav", 0}, {"large.mid", 0}, {"claims.mp4", 1}, {"large.qpj", 1}}) {
        const Outcome outcome = run({name, "-o", "claimed.avi", "--range", "0-1000"});
        EXPECT_EQ(outcome.status, status) << name << outcome.err;
        EXPECT_LT(outcome.peakKib, kMostKib) << name;
    }
    // Pictures that are ready long before they are written.
    writeBytes(folder / "endless.qpj",
               project({medium("still.png")},
                       "<Track Kind=\"Video\">" + source("Video", "Start=\"0\" Stop=\"2147483647\"") + "</Track>"));
    Child endless(command({"endless.qpj", "-o", movie.string()}), folder.path());
    EXPECT_TRUE(endless.runsUntil([&] { return unfinishedBytes(endless) > 200'000'000; }));
    endless.kill(SIGTERM);
    EXPECT_LT(endless.end().peakKib, kMostKib / 2);
}

} // namespace
} // namespace app_test
