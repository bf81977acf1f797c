#include "core/start_up.h"

#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"

namespace {

constexpr std::int32_t kUnloadedDuringLoad = 364;
constexpr std::int16_t kDefaultPointer = 0;
constexpr std::int16_t kHourglass = 11;

constexpr std::string_view kCannotInitialize =
    "Unable to initialize. Please install DirectX 8.0 or higher.\r\n"
    "If this does not solve your problem then you may have to re-install Quillmont.";
constexpr std::string_view kOldFramework = "Unable to initialize. Quillmont requires DirectX 8.0 or higher to run.\r\n"
                                           "You may be able to use Quillmont but it may not respond as desired.\r\n\r\n"
                                           "Do you wish to continue anyway?";

void takeSplashDown(const StartSteps& steps)
{
    steps.unloadSplash();
    ports.events->letRun();
}

/// True when the media libraries serve, or when the person goes on without.
bool frameworkAccepted()
{
    engine::Bool16 ok = engine::kFalse;
    engine::check(engine::EngineAs<engine::ITWCoreRoot>()->CheckDirectShowVersion(ok));
    return ok != engine::kFalse || askUser(kOldFramework, MessageButtons::kYesNo) == MessageAnswer::kYes;
}

/// False when the process has to end.
bool prepared(const StartSteps& steps)
{
    forms::mdiTarnwick.MousePointer = kHourglass;
    steps.showSplash();
    ports.events->letRun();
    if (!steps.init()) {
        tellUser(kCannotInitialize);
        return false;
    }
    return frameworkAccepted();
}

} // namespace

void frmSplash::Load(const StartSteps& steps)
{
    if (steps.anotherInstanceRuns()) {
        tellUser("Quillmont is already running.");
        steps.endProcess();
        return;
    }
    if (!prepared(steps)) {
        takeSplashDown(steps);
        steps.endProcess();
        return;
    }
    steps.loadMainWindow();
    takeSplashDown(steps);
    steps.showMainWindow();
    ports.events->letRun();
    forms::mdiTarnwick.MousePointer = kDefaultPointer;
}

void StartProgram(const StartSteps& steps)
{
    try {
        state::AppSection = "Quillmont 1.1";
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        frmSplash::Load(steps);
    } catch (...) {
        forms::mdiTarnwick.MousePointer = kDefaultPointer;
        if (currentError().number() == kUnloadedDuringLoad) {
            return;
        }
        try {
            steps.unloadSplash(); // the message must not lie behind it, and nothing may keep the process alive
        } catch (...) {           // NOLINT: the message says all that can be said
        }
        tellUser(kCannotInitialize);
    }
}
