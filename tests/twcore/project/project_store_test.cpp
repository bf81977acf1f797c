// Projects through the contract: what is saved reads back the same, and what cannot be read or written changes nothing.

#include "engine/ITWKeyTransition.h"
#include "engine/ITWProjectStore.h"
#include "support/engine_test.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace project_test {
namespace {

namespace fs = std::filesystem;
using engine::ITWKeyTransition;
using engine::ITWMediaFiles;
using engine::ITWTimeline;
using engine::kTrue;
using testmedia::bytesOf;
using testmedia::writeBytes;
using namespace testsupport;

class ProjectStoreTest : public EngineTest {
protected:
    /// Each time with the editor's tracks and two open files, in the order of the media list.
    void SetUp() override
    {
        EngineTest::SetUp();
        for (std::size_t i = 0; i < tracks.size(); ++i) {
            tracks[i] = newTrack(i < 2);
        }
        files = {openFile(medium("no-sound.mp4")), openFile(medium("h264.mp4"))};
        ASSERT_TRUE(files[0] != 0 && files[1] != 0) << "the media have not been made";
    }

    Handle stream(std::size_t file, std::int16_t index) { return openStream(files[file], index); }

    //  video    A 0-2000 (mode 2)   B 3000-4000 of 500-2500        effect 100-600, 2500-2600
    //  overlay      C 500-5500                                     transition 500-900, key 1,2,255
    //  audio 1  D 0-5000
    //  audio 2  (empty)
    void layEverything()
    {
        const std::int16_t first = 0, second = 1;
        EXPECT_TRUE(did(&ITWTimeline::AppendSource, tracks[0], stream(0, 0), -1)
                    && did(&ITWTimeline::AppendSource, tracks[0], stream(1, 0), 3000)
                    && did(&ITWTimeline::SetSourceTimes, tracks[0], second, 3000, 4000)
                    && did(&ITWTimeline::SetSourceMediaTimes, tracks[0], second, 500, 2500)
                    && did(&ITWTimeline::AddEffectAt, tracks[0], "Blur & <", 100, 600)
                    && did(&ITWTimeline::AddEffectAt, tracks[0], "Каюк", 2500, 2600)
                    && did(&ITWTimeline::AppendSource, tracks[1], stream(1, 0), 500)
                    && did(&ITWTimeline::AddTransitionAt, tracks[1], "DxtKey", 500, 900)
                    && did(&ITWTimeline::AppendSource, tracks[2], stream(1, 1), -1)
                    && did(&ITWKeyTransition::SetKeyParameter, tracks[1], first, "KeyType", 0)
                    && did(&ITWKeyTransition::SetKeyParameter, tracks[1], first, "Invert \"", -7)
                    && did(&ITWKeyTransition::SetKeyColor, tracks[1], first, std::int16_t{1}, std::int16_t{2},
                           std::int16_t{255}));
        check(EngineAs<ITWTimeline>()->SetSourceStretchMode(tracks[0], 0, 2));
        check(EngineAs<ITWTimeline>()->SetFrameSize(720, 576));
    }

    /// Everything that the contract tells of the timeline.
    std::string timelineText()
    {
        std::ostringstream text;
        for (const Handle track : tracks) {
            std::int32_t start = 0, stop = 0, mediaStart = 0, mediaStop = 0;
            std::string name(10, ' ');
            text << "\ntrack:";
            for (std::int16_t i = 0; did(&ITWTimeline::GetSourceTimes, track, i, start, stop); ++i) {
                const auto played = told<Handle>(&ITWTimeline::GetSourceStream, track, i);
                const auto file = told<Handle>(&ITWMediaFiles::GetStreamFile, played);
                EXPECT_TRUE(did(&ITWTimeline::GetSourceMediaTimes, track, i, mediaStart, mediaStop));
                text << " file " << std::ranges::find(files, file) - files.begin()
                     << (did(&ITWMediaFiles::IsVideoStream, played) ? " picture " : " sound ") << start << "-" << stop
                     << "[" << mediaStart << "-" << mediaStop << "]*"
                     << told<std::int16_t>(&ITWTimeline::GetSourceStretchMode, track, i);
            }
            for (std::int16_t i = 0; did(&ITWTimeline::GetEffectTimes, track, i, start, stop); ++i) {
                check(EngineAs<ITWTimeline>()->GetEffectName(track, i, name));
                text << " effect " << name << start << "-" << stop;
            }
            for (std::int16_t i = 0; did(&ITWTimeline::GetTransitionTimes, track, i, start, stop); ++i) {
                check(EngineAs<ITWTimeline>()->GetTransitionName(track, i, name));
                text << " transition " << name << start << "-" << stop << "#"
                     << told<std::int16_t>(&ITWKeyTransition::GetKeyRed, track, i) << ","
                     << told<std::int16_t>(&ITWKeyTransition::GetKeyGreen, track, i) << ","
                     << told<std::int16_t>(&ITWKeyTransition::GetKeyBlue, track, i);
            }
        }
        return text.str();
    }

    static engine::Status saveTo(const fs::path& target)
    {
        Bool16 ok = 7;
        const auto status = EngineAs<engine::ITWProjectStore>()->SaveProject(target.string(), ok);
        EXPECT_EQ(ok, status.failed() ? engine::kFalse : kTrue);
        return status;
    }

    static engine::Status loadFrom(const fs::path& source)
    {
        return EngineAs<engine::ITWProjectStore>()->LoadProject(source.string());
    }

    /// A save that fails with this status, names the path, and leaves the folder's files and bytes.
    void expectNotSaved(const fs::path& target, std::uint32_t code)
    {
        const auto before = listing();
        const auto status = saveTo(target);
        EXPECT_EQ(status.code(), code) << status.text();
        EXPECT_NE(status.text().find(target.string()), std::string::npos) << status.text();
        EXPECT_EQ(listing(), before);
    }

    std::map<fs::path, std::string> listing() const
    {
        std::map<fs::path, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            found[entry.path()] = entry.is_regular_file() ? bytesOf(entry.path()) : "";
        }
        return found;
    }

    std::array<Handle, 4> tracks{};
    std::array<Handle, 2> files{};
    fs::path path = folder / "my & \"project\".qpj";
};

TEST_F(ProjectStoreTest, WhatIsSavedReadsBack)
{
    layEverything();
    const std::string laid = timelineText();
    ASSERT_EQ(saveTo(path), engine::kDone);
    const std::string bytes = bytesOf(path);
    EXPECT_TRUE(bytes.starts_with("<QuillmontProject")) << bytes.substr(0, 60);
    EXPECT_EQ(fs::status(path).permissions() & fs::perms::others_write, fs::perms::none);

    SetUp();
    check(loadFrom(path));
    EXPECT_EQ(timelineText(), laid);
    // What the contract cannot ask for, parameters and the frame size, shows in the second file.
    ASSERT_EQ(saveTo(folder / "again.qpj"), engine::kDone);
    EXPECT_EQ(bytesOf(folder / "again.qpj"), bytes);
    for (const char* part : {"Invert &quot;", "\"-7\"", "\"720\"", "\"576\""}) {
        EXPECT_NE(bytes.find(part), std::string::npos) << part;
    }
    // Loading replaces; saving over an old file keeps its mode.
    EXPECT_TRUE(did(&ITWTimeline::AppendSource, tracks[3], stream(1, 1), -1));
    check(loadFrom(path));
    EXPECT_EQ(timelineText(), laid);
    fs::permissions(path, fs::perms(0640));
    ASSERT_EQ(saveTo(path), engine::kDone);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
    EXPECT_EQ(bytesOf(path), bytes);
}

TEST_F(ProjectStoreTest, LinksAndDisabledTracksAreLeftToTheBoxes)
{
    layEverything();
    ASSERT_EQ(saveTo(path), engine::kDone);
    const std::string plain = bytesOf(path);
    check(EngineAs<ITWTimeline>()->SetTrackLink(tracks[0], kTrue));
    check(EngineAs<ITWTimeline>()->SetTrackLink(tracks[1], engine::kFalse));
    check(EngineAs<ITWTimeline>()->SetTrackDisabled(tracks[1], kTrue));
    ASSERT_EQ(saveTo(path), engine::kDone);
    EXPECT_EQ(bytesOf(path), plain);
    writeBytes(path,
               "<QuillmontProject><Timeline><Track Kind=\"Video\" Linked=\"0\"/><Track Kind=\"Video\" Linked=\"1\"/>"
               "</Timeline></QuillmontProject>");
    EXPECT_EQ(loadFrom(path), engine::kDone);
    EXPECT_TRUE(did(&ITWTimeline::GetTrackLink, tracks[0]) && !did(&ITWTimeline::GetTrackLink, tracks[1]))
        << "behind the boxes' back";
}

TEST_F(ProjectStoreTest, SourcesOfAClosedFileAreKept)
{
    layEverything();
    const std::string laid = timelineText();
    did(&engine::ITWCoreRoot::CloseFile, files[0]); // its streams are still open, and on the tracks
    ASSERT_EQ(saveTo(path), engine::kDone);
    EXPECT_EQ(loadFrom(path), engine::kDone) << loadFrom(path).text();
    EXPECT_EQ(timelineText(), laid);
}

TEST_F(ProjectStoreTest, OtherPartsOfTheFileAreLeftAlone)
{
    layEverything();
    ASSERT_EQ(saveTo(path), engine::kDone);
    std::string text = bytesOf(path);
    text.insert(text.rfind("</"), "<MediaList><a b=\"c\"/></MediaList><Odd>text</Odd>");
    writeBytes(path, "\xEF\xBB\xBF<?xml version=\"1.0\"?><!-- by hand -->\n" + text);
    const std::string laid = timelineText();
    SetUp();
    EXPECT_EQ(loadFrom(path), engine::kDone);
    EXPECT_EQ(timelineText(), laid);
}

TEST_F(ProjectStoreTest, DamagedProjectsChangeNothing)
{
    layEverything();
    const std::string laid = timelineText();
    ASSERT_EQ(saveTo(path), engine::kDone);
    const std::string whole = bytesOf(path);
    const auto with = [&](const std::string& part, const std::string& instead) {
        std::string changed = whole;
        const auto at = changed.find(part);
        EXPECT_NE(at, std::string::npos) << part;
        return at != std::string::npos ? changed.replace(at, part.size(), instead) : changed;
    };
    std::string deep = "<QuillmontProject><Timeline><Track Kind=\"Video\">";
    for (int i = 0; i < 1'000'000; ++i) {
        deep += "<Source>";
    }
    const std::string cases[] = {"",
                                 "no XML",
                                 std::string(100'000, '\0'),
                                 whole.substr(0, whole.size() / 2),
                                 whole.substr(0, whole.size() - 5),
                                 "<QuillmontProject/>",
                                 "<Other><Timeline/></Other>",
                                 deep,
                                 with("Kind=\"Video\"", "Kind=\"Smell\""),
                                 with("Kind=\"Audio\"", "Kind=\"Video\""), // a third track of pictures
                                 with("Stream=\"Video\"", "Stream=\"\""),
                                 with("Stream=\"Video\"", "Stream=\"Audio\""), // of a file without sound
                                 with("File=\"1\"", ""),
                                 with("File=\"1\"", "File=\"2\""),
                                 with("File=\"1\"", "File=\"-1\""),
                                 with("File=\"1\"", "File=\"4294967296\""),
                                 with("Start=\"3000\"", "Start=\"1999\""), // over the one ahead of it
                                 with("Start=\"3000\"", "Start=\"4000\""),
                                 with("Start=\"0\"", "Start=\"-1\""),
                                 with("Stop=\"4000\"", "Stop=\"2147483648\""),
                                 with("Stop=\"4000\"", "Stop=\"4e3\""),
                                 with("StretchMode=\"2\"", "StretchMode=\"40000\""),
                                 with("Red=\"1\"", "Red=\"red\""),
                                 with("FrameWidth=\"720\"", "FrameWidth=\"0\""),
                                 with("FrameWidth=\"720\"", "FrameWidth=\"65536\"")};
    for (const std::string& text : cases) {
        SCOPED_TRACE(text.substr(0, 900));
        writeBytes(path, text);
        const auto status = loadFrom(path);
        EXPECT_TRUE(status.failed());
        EXPECT_NE(status.text().find(path.string()), std::string::npos) << status.text();
        EXPECT_EQ(timelineText(), laid);
    }
    ASSERT_EQ(::mkfifo((folder / "pipe.qpj").c_str(), 0666), 0);
    ::alarm(60); // a pipe that nobody writes to must not hold the program
    for (const fs::path& other :
         {folder / "missing.qpj", folder.path(), fs::path("/dev/zero"), fs::path(), folder / "pipe.qpj"}) {
        EXPECT_TRUE(loadFrom(other).failed()) << other;
        EXPECT_EQ(timelineText(), laid);
    }
    ::alarm(0);
}

TEST_F(ProjectStoreTest, OddButReadableProjects)
{
    const std::string head = "<QuillmontProject><Timeline><Track Kind=\"Video\">";
    const std::string tail = "</Track></Timeline></QuillmontProject>";
    const std::string item = "<Source File=\"0\" Stream=\"Video\" Start=\"0\" Stop=\"400\" ";
    const std::pair<std::string, std::string> cases[] = {
        {item + "/>", "0-400[0-400]*0"},
        {item + "MediaStart=\"2147483647\" MediaStop=\"5\"/>", "0-400[2147483647-5]*0"},
        {item + "MediaStart=\"-2147483648\" MediaStop=\"2147483647\"/>", "0-400[-2147483648-2147483647]*0"},
        {"<Unknown/>" + item + "Odd=\"1\"><Deep/></Source>", "0-400[0-400]*0"}};
    for (const auto& [source, expected] : cases) {
        writeBytes(path, head + source + tail);
        EXPECT_EQ(loadFrom(path), engine::kDone) << source << loadFrom(path).text();
        EXPECT_NE(timelineText().find(expected), std::string::npos) << timelineText();
    }
    // A media range that would end behind the last number.
    writeBytes(path, head + item + "MediaStart=\"2147483647\"/>" + tail);
    EXPECT_TRUE(loadFrom(path).failed());
    // As many items as there are numbers for them.
    std::string many = head;
    for (int i = 0; i < 40'000; ++i) {
        many += "<Source File=\"0\" Stream=\"Video\" Start=\"" + std::to_string(i) + "\" Stop=\""
                + std::to_string(i + 1) + "\"/>";
    }
    writeBytes(path, many + tail);
    EXPECT_TRUE(loadFrom(path).failed()) << "sources were dropped in silence";
}

TEST_F(ProjectStoreTest, FilesThatCannotBeWrittenStay)
{
    layEverything();
    writeBytes(path, "the old project");
    fs::permissions(path, fs::perms(0444));
    expectNotSaved(path, 0x80070005); // also for those whom permissions do not bind
    fs::permissions(path, fs::perms(0644));

    fs::create_directory(folder / "in");
    expectNotSaved(folder / "in", 0x800A004B);
    expectNotSaved(folder / "none" / "p.qpj", 0x800A004B);
    expectNotSaved(path / "p.qpj", 0x800A004B);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0666), 0);
    expectNotSaved(folder / "pipe", 0x800A004B);

    fs::permissions(folder, fs::perms(0555));
    const bool isRoot = ::geteuid() == 0;
    if (!isRoot || ::seteuid(65534) == 0) {
        expectNotSaved(folder / "new.qpj", 0x80070005);
        EXPECT_TRUE(!isRoot || ::seteuid(0) == 0);
    }
    fs::permissions(folder, fs::perms(0755));

    {
        const testmedia::FullDisk full(100);
        expectNotSaved(path, 0x80070070);
    }
    EXPECT_EQ(saveTo(path), engine::kDone);
}

TEST_F(ProjectStoreTest, LinksAndLongNames)
{
    layEverything();
    writeBytes(path, "the old project");
    fs::create_symlink(path.filename(), folder / "link.qpj");
    fs::create_symlink("new.qpj", folder / "dangling.qpj");
    for (const auto& [link, target] :
         {std::pair{folder / "link.qpj", path}, {folder / "dangling.qpj", folder / "new.qpj"}}) {
        EXPECT_EQ(saveTo(link), engine::kDone);
        EXPECT_TRUE(fs::is_symlink(link)) << link;
        EXPECT_TRUE(bytesOf(target).starts_with("<QuillmontProject")) << target;
    }
    fs::path deep = folder;
    for (int i = 0; i < 7; ++i) {
        deep /= std::string(50, static_cast<char>('a' + i));
    }
    fs::create_directories(deep);
    for (const auto& target : {deep / "p.qpj", folder / (std::string(251, 'p') + ".qpj"), folder / "日本 %s 'x'.qpj"}) {
        EXPECT_EQ(saveTo(target), engine::kDone) << target;
        EXPECT_EQ(loadFrom(target), engine::kDone) << target;
    }
}

} // namespace
} // namespace project_test
