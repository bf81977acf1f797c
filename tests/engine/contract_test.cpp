// The contract's own pieces: classes by name, casts, statuses as errors.

#include "engine/ITWCapture.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWProjectStore.h"
#include "engine/ITWSave.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "twcore/tarnwick_timeline.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace contract_test {
namespace {

using engine::EngineAs;

template <class Call>
std::int32_t errorOf(Call call, std::string* text = nullptr)
{
    try {
        call();
    } catch (const engine::RuntimeError& error) {
        if (text != nullptr) {
            *text = error.what();
        }
        return error.number();
    }
    return 0;
}

struct Unknown {};

TEST(Contract, EnginesByNameAndTheirInterfaces)
{
    engine::Engine.reset();
    EXPECT_EQ(errorOf([] { (void)EngineAs<engine::ITWTimeline>(); }), 91);
    EXPECT_EQ(errorOf([] { (void)engine::createEngine("TWCore.Nothing"); }), 429);
    engine::registerEngineClass("TWCore.Empty", [] { return nullptr; });
    EXPECT_EQ(errorOf([] { (void)engine::createEngine("TWCore.Empty"); }), 429);

    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine("TWCore.TarnwickTimeline");
    EXPECT_EQ(errorOf([] { (void)EngineAs<Unknown>(); }), 430);
    EXPECT_EQ(EngineAs<engine::ITWCoreRoot>().get(), engine::Engine.get());
    EXPECT_EQ(errorOf([] {
                  (void)EngineAs<engine::ITWTimeline>();
                  (void)EngineAs<engine::ITWKeyTransition>();
                  (void)EngineAs<engine::ITWMediaFiles>();
                  (void)EngineAs<engine::ITWStreamInfo>();
                  (void)EngineAs<engine::ITWProjectStore>();
                  (void)EngineAs<engine::ITWSave>();
              }),
              0);
    // A cast that is still held keeps its object, and two engines share nothing.
    const std::weak_ptr<engine::ITWCoreRoot> first = engine::Engine;
    auto held = EngineAs<engine::ITWTimeline>();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    EXPECT_FALSE(first.expired());
    engine::Handle track = 0;
    engine::check(held->CreateTrack(engine::kTrue, track));
    std::int16_t count = 0;
    EXPECT_EQ(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count), engine::kInvalidArgument);
    held.reset();
    EXPECT_TRUE(first.expired());
    engine::Engine.reset();
}

TEST(Contract, StatusesAsErrors)
{
    struct Case {
        std::uint32_t code;
        std::string text;
        std::int32_t number; // 0: no error
        std::string told;
    };
    const Case cases[] = {{0, "", 0, ""},
                          {1, "", 0, ""},
                          {0x00040257, "half", 0, ""},
                          {0x80070005, "", static_cast<std::int32_t>(0x80070005), "0x80070005"},
                          {0x8007000E, "No memory.", static_cast<std::int32_t>(0x8007000E), "No memory."},
                          {0x800A004B, "Cannot write.", 75, "Cannot write."},
                          {0x800AFFFF, "", 65535, "0x800AFFFF"},
                          {0x800B004B, "", static_cast<std::int32_t>(0x800B004B), "0x800B004B"},
                          {0xFFFFFFFF, "", -1, "0xFFFFFFFF"}};
    for (const auto& c : cases) {
        std::string told;
        EXPECT_EQ(errorOf([&] { engine::check(engine::Status(c.code, c.text)); }, &told), c.number) << c.code;
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
    }
}

} // namespace
} // namespace contract_test
