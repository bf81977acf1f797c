// The start: which steps run in which order, what is asked, and where it ends.

#include "core/start_up.h"

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "support/engine_calls.h"
#include "support/scripted_platform.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>
#include <optional>

namespace start_up_test {
namespace {

constexpr const char* kTellsInstall =
    "tells[Unable to initialize. Please install DirectX 8.0 or higher.\r\n"
    "If this does not solve your problem then you may have to re-install Quillmont.] ";
constexpr const char* kAsks = "asks[Unable to initialize. Quillmont requires DirectX 8.0 or higher to run.\r\n"
                              "You may be able to use Quillmont but it may not respond as desired.\r\n\r\n"
                              "Do you wish to continue anyway?] ";

/// Writes down what happens, message boxes included.
class Start final : public MessageBoxes {
public:
    Start()
    {
        ports.messages = this;
        platform.whileEventsRun = [this] { note("events"); };
    }
    ~Start() override
    {
        engine::Engine.reset();
        engine::engineClasses().clear();
    }

    MessageAnswer show(std::string_view text, MessageIcon icon, MessageButtons buttons, std::string_view title) override
    {
        const bool asks = buttons == MessageButtons::kYesNo;
        EXPECT_EQ(title, "Quillmont");
        EXPECT_EQ(icon, asks ? MessageIcon::kQuestion : MessageIcon::kInformation);
        note((asks ? "asks[" : "tells[") + std::string(text) + "]");
        return asks ? answer : MessageAnswer::kOk;
    }

    /// A hook that writes down its name, or raises.
    std::function<void()> step(const std::string& name)
    {
        return [this, name] {
            note(name + "@" + std::to_string(forms::mdiTarnwick.MousePointer));
            if (name == failingStep) {
                throw engine::RuntimeError(errorNumber, "It fails.");
            }
        };
    }

    std::string run()
    {
        if (frameworkIsGood) {
            twcore::registerTarnwickTimeline();
            engineCalls.failCall({"CheckDirectShowVersion"}, *frameworkIsGood ? 0 : 1, engine::kDone);
        }
        StartProgram({[this] { return anotherRuns; }, step("splash"),
                      [this] {
                          note("init");
                          return initAnswer;
                      },
                      step("load"), step("show"), step("unload"), step("end")});
        return trace;
    }

    bool anotherRuns = false;
    bool initAnswer = true;
    std::optional<bool> frameworkIsGood = true; // none: there is no such engine
    MessageAnswer answer = MessageAnswer::kYes;
    std::string failingStep;
    std::int32_t errorNumber = 7;

private:
    void note(const std::string& what) { trace += what + " "; }

    testsupport::EngineCalls engineCalls;
    testsupport::ScriptedPlatform platform;
    std::string trace;
};

TEST(StartUp, RunsItsStepsInOrder)
{
    struct Case {
        const char* name;
        std::function<void(Start&)> change;
        std::string trace;
    };
    const std::string splash = "splash@11 events init ";
    const std::string window = "load@11 unload@11 events show@11 events ";
    const std::string ends = "unload@11 events end@11 ";
    const Case cases[] = {
        {"as usual", [](Start&) {}, splash + window},
        {"a second instance", [](Start& s) { s.anotherRuns = true; }, "tells[Quillmont is already running.] end@0 "},
        {"no engine", [](Start& s) { s.frameworkIsGood.reset(); }, std::string("unload@0 ") + kTellsInstall},
        {"no collections", [](Start& s) { s.initAnswer = false; }, splash + kTellsInstall + ends},
        {"an old framework, declined",
         [](Start& s) {
             s.frameworkIsGood = false;
             s.answer = MessageAnswer::kNo;
         },
         splash + kAsks + ends},
        {"an old framework, accepted", [](Start& s) { s.frameworkIsGood = false; }, splash + kAsks + window},
        {"the main window fails", [](Start& s) { s.failingStep = "load"; },
         splash + "load@11 unload@0 " + kTellsInstall},
        {"a form unloaded during its load",
         [](Start& s) {
             s.failingStep = "load";
             s.errorNumber = 364;
         },
         splash + "load@11 "},
        {"the splash cannot be taken down", [](Start& s) { s.failingStep = "unload"; },
         splash + "load@11 unload@11 unload@0 " + kTellsInstall}};
    for (const Case& c : cases) {
        Start start;
        state::AppSection = "something else";
        c.change(start);
        EXPECT_EQ(start.run(), c.trace) << c.name;
        EXPECT_EQ(forms::mdiTarnwick.MousePointer, c.trace.ends_with("end@11 ") ? 11 : 0) << c.name;
        EXPECT_EQ(state::AppSection, "Quillmont 1.1") << c.name;
        EXPECT_EQ(engine::Engine != nullptr, start.frameworkIsGood.has_value()) << c.name;
    }
}

} // namespace
} // namespace start_up_test
