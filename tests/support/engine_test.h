// A fresh engine for every test, and short words for its operations.
#pragma once

#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "support/files.h"
#include "support/manifest.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>

#include <string>

namespace testsupport {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using testmedia::medium;

/// Whether an operation that answers ok last says so. It has to answer.
template <class Interface, class... Parameters, class... Arguments>
bool did(engine::Status (Interface::*operation)(Parameters...), Arguments&&... arguments)
{
    Bool16 ok = 7;
    check((EngineAs<Interface>().get()->*operation)(arguments..., ok));
    EXPECT_NE(ok, 7);
    return ok != engine::kFalse;
}

/// What an operation tells last.
template <class Value, class Interface, class... Parameters, class... Arguments>
Value told(engine::Status (Interface::*operation)(Parameters...), Arguments&&... arguments)
{
    auto value = static_cast<Value>(-7);
    check((EngineAs<Interface>().get()->*operation)(arguments..., value));
    return value;
}

/// The handle of a file, 0 for none.
inline Handle openFile(const std::string& path) { return told<Handle>(&engine::ITWCoreRoot::OpenFile, path); }

inline Handle openStream(Handle file, std::int16_t index)
{
    return told<Handle>(&engine::ITWMediaFiles::OpenStream, file, index);
}

inline Handle newTrack(bool isVideo)
{
    return told<Handle>(&engine::ITWTimeline::CreateTrack, engine::toBool16(isVideo));
}

/// Of the screens' texts: without the blanks behind it and the terminator.
inline std::string trimmed(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    if (!text.empty()) {
        EXPECT_EQ(text.back(), '\0');
        text.pop_back();
    }
    return text;
}

class EngineTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline();
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    }
    void TearDown() override { engine::Engine.reset(); }

    testmedia::TempFolder folder;
};

} // namespace testsupport
