// The error log to the byte, the two ways of a trap, and the report that is sent.

#include "core/platform.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "report/error_record.h"
#include "report/frmbug.h"
#include "support/manifest.h"
#include "support/scripted_platform.h"
#include "twcore/tarnwick_timeline.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace report_test {
namespace {

namespace fs = std::filesystem;

std::string contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class ReportTest : public testing::Test {
protected:
    ReportTest()
    {
        platform.programPart = "/program";
        platform.statePart = "/state";
        platform.temporaryPart = "/tmp";
        for (const std::string& part : {platform.programPart, platform.statePart, platform.temporaryPart}) {
            fs::create_directory(platform.folder + part);
        }
    }
    ~ReportTest() override
    {
        frmbug::showDialogue = nullptr;
        frmbug::closeDialogue = nullptr;
        engine::Engine.reset();
    }

    void report(const char* function, std::int32_t number = 9)
    {
        ReportError("moduleTest", function, engine::RuntimeError(number, "Subscript out of range"));
    }
    /// "number function" of each record.
    std::string logged() const
    {
        std::string found;
        std::ifstream log(logPath);
        for (std::string line; std::getline(log, line);) {
            if (line.starts_with("Number") || line.starts_with("Function")) {
                found += line.substr(15, line.size() - 16) + (line.starts_with("Number") ? " " : ", ");
            }
        }
        return found;
    }

    testsupport::ScriptedPlatform platform;
    const std::string logPath = platform.folder + "/program/ErrLog.asr";
    const std::string statePath = platform.folder + "/state/ErrLog.asr";
    const std::string pagePath = platform.folder + "/tmp/ErrLog.htm";
};

TEST_F(ReportTest, ARecordToTheByteWithoutAnEngine)
{
    state::ZoomFactor = 20;
    state::SliderPosition = 61250;
    state::TrackCollection.Add(1);
    ReportError("moduleTest", "OnFileOpenClick*", engine::RuntimeError(-2147024809, "Broken\r\nin \"two\""));
    EXPECT_EQ(contents(logPath), "Date         : 3/4/2026 05:06:07\r\n"
                                 "Ver          : 1.8 Release 1\r\n"
                                 "OS           : Test system\r\n"
                                 "Number       : -2147024809\r\n"
                                 "Description  : Broken  in \"two\"\r\n"
                                 "Module       : moduleTest\r\n"
                                 "Function     : OnFileOpenClick*\r\n"
                                 "Zoom Factor  : 20\r\n"
                                 "Slider Pos   : 61250\r\n"
                                 "Duration     : 0\r\n"
                                 "File Vers    : 0.0.0.0, 0.0.0.0, 0.0.0.0\r\n"
                                 "Mem Status   : 0, 0, 0, 0\r\n"
                                 "Lang ID      : \r\n"
                                 " \r\n");
}

TEST_F(ReportTest, TheEngineTellsItsPart)
{
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    engine::Handle file = 0;
    engine::Handle stream = 0;
    engine::check(engine::Engine->OpenFile((testmedia::mediaFolder() / "mono-8k-u8.wav").string(), file)); // 5 s long
    engine::check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, stream));
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    for (const engine::Milliseconds start : {1000, 3000, 2000}) {
        engine::Handle track = 0;
        engine::Bool16 ok = engine::kFalse;
        engine::check(timeline->CreateTrack(engine::kFalse, track));
        engine::check(timeline->AppendSource(track, stream, start, ok));
        state::TrackCollection.Add(track);
    }
    EXPECT_EQ(error_record::timelineDurationMs(), 8000);
    const std::string record = error_record::asText({"", "5", "m", "f"});
    EXPECT_EQ(record.find("Mem Status   : 0, 0, 0, 0"), std::string::npos);
    EXPECT_EQ(record.find("Lang ID      : \r\n"), std::string::npos);
    state::TrackCollection.Add(999); // no such track
    EXPECT_EQ(error_record::timelineDurationMs(), 0);
}

TEST_F(ReportTest, EverySilentErrorLeavesItsRecordInALogOfBoundedLength)
{
    std::string all;
    for (int i = 0; i < 300; ++i) {
        report("tmFlood_Timer*");
        all += "9 tmFlood_Timer*, ";
    }
    EXPECT_EQ(logged(), all);
    const std::string oldPath = platform.folder + "/program/ErrLog.old.asr";
    std::ofstream(oldPath) << "older";
    fs::resize_file(logPath, 15'999'000); // room for one more
    report("tmFlood_Timer*");
    EXPECT_GT(fs::file_size(logPath), 15'999'000U);
    fs::resize_file(logPath, 16'000'000);
    report("tmLast_Timer*", 12);
    EXPECT_EQ(logged(), "12 tmLast_Timer*, ");
    EXPECT_EQ(fs::file_size(oldPath), 16'000'000U);
    EXPECT_FALSE(fs::exists(statePath));
}

TEST_F(ReportTest, AReportedErrorShowsTheDialogueOnce)
{
    report("Undo"); // no screens yet
    EXPECT_EQ(logged(), "9 Undo, ");

    int shown = 0;
    frmbug::showDialogue = [&] {
        ++shown;
        report("BeforeLoad", 1);
        frmbug::Load();
        report("Meanwhile", 2);
        report("MeanwhileSilent*", 3);
    };
    report("Redo");
    EXPECT_EQ(shown, 1);
    const std::string first = "9 Undo, 1 BeforeLoad*, 9 Redo, 2 Meanwhile*, 3 MeanwhileSilent*, ";
    EXPECT_EQ(logged(), first);

    frmbug::showDialogue = [&] {
        ++shown;
        throw std::bad_alloc();
    };
    report("Redo");
    report("Redo");
    EXPECT_EQ(shown, 3);
    EXPECT_EQ(logged(), first + "9 Redo, 9 Redo, ") << "the record is written though the dialogue failed";
}

TEST_F(ReportTest, TheLogGoesWhereItCanBeWritten)
{
    fs::create_directory(logPath); // nothing can be written under that name
    report("Undo");
    EXPECT_NE(contents(statePath), "");
    EXPECT_EQ(frmbug::WriteReportPage(), "");
    EXPECT_FALSE(fs::exists(statePath));

    fs::create_directory(statePath); // nowhere at all: nothing is sent, nothing is reported
    report("Undo");
    EXPECT_NE(frmbug::WriteReportPage(), "");
    EXPECT_EQ(platform.openedWithDesktop.size(), 1u);
}

TEST_F(ReportTest, SendingTakesAllRecordsAndDeletesTheLog)
{
    int closed = 0;
    frmbug::closeDialogue = [&] { ++closed; };
    std::ofstream(logPath, std::ios::binary) << "one 'a' & \"b\"\r\n<two>\r\n";
    frmbug::frmdontsend_Click();
    std::ofstream(logPath, std::ios::binary | std::ios::app) << "three";
    std::ofstream(platform.folder + "/mine") << "kept";
    fs::create_symlink(platform.folder + "/mine", pagePath);
    frmbug::cmdsendreport_Click();
    EXPECT_EQ(contents(pagePath),
              "<html>\r\n<HEAD>\r\n<SCRIPT LANGUAGE='javascript'>\r\nfunction justSubmit()\r\n{\r\n"
              "document.frmlogin.submit()\r\n}\r\n</SCRIPT>\r\n</HEAD>\r\n<BODY ONLOAD='justSubmit()'>\r\n"
              "<FORM name=\"frmlogin\" method=\"post\" accept-charset=\"utf-8\" "
              "action=\"https://quillmont.example/Quillmont/err_mail_qmt.aspx\">\r\n"
              "<INPUT type=\"hidden\" name=\"bodytext\" "
              "value=\"one &#39;a&#39; &amp; &quot;b&quot; <br>&lt;two&gt; <br>three <br>\">\r\n"
              "</FORM>\r\n</BODY>\r\n</HTML>\r\n");
    EXPECT_EQ(contents(platform.folder + "/mine"), "kept");
    EXPECT_EQ(platform.openedWithDesktop, std::vector<std::string>{pagePath});
    EXPECT_FALSE(fs::exists(logPath));
    EXPECT_EQ(closed, 2);
}

TEST_F(ReportTest, AReportThatCannotBeSentSaysSoAndStays)
{
    int closed = 0;
    frmbug::closeDialogue = [&] { ++closed; };
    report("Undo");
    platform.opensWithDesktop = false;
    frmbug::cmdsendreport_Click();
    fs::remove(pagePath);
    fs::create_directories(pagePath + "/full");
    frmbug::cmdsendreport_Click();
    ASSERT_EQ(platform.messages.size(), 2U);
    for (const auto& [message, icon, buttons, title] : platform.messages) {
        EXPECT_NE(message.find(pagePath), std::string::npos) << message;
        EXPECT_NE(message.find(logPath), std::string::npos) << message;
    }
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(logged(), "9 Undo, ");
}

} // namespace
} // namespace report_test
