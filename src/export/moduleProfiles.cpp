#include "export/moduleProfiles.h"

#include "core/trap.h"
#include "engine/ITWProfiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/text_buffer.h"

#include <algorithm>
#include <cstdio>

namespace moduleProfiles {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWProfiles;
using engine::kFalse;

namespace {

constexpr const char* kModule = "moduleProfiles";
constexpr std::int16_t kVideo = 0; // a type of streams

std::vector<ProfileData> list;

/// Visits each stream of the open profile that can be selected, until `visit` answers true.
bool anyStream(const auto& visit)
{
    const auto profiles = EngineAs<ITWProfiles>();
    std::int16_t count = 0;
    check(profiles->GetStreamCount(count));
    bool isFound = false;
    for (std::int16_t index = 0; index < count && !isFound; ++index) {
        Bool16 ok = kFalse;
        check(profiles->SelectStream(index, ok));
        if (ok != kFalse) {
            std::int16_t type = kVideo;
            check(profiles->GetStreamType(type));
            isFound = visit(type == kVideo);
            check(profiles->CloseStream());
        }
    }
    return isFound;
}

void EnumSystemProfiles()
{
    const auto profiles = EngineAs<ITWProfiles>();
    std::int16_t count = 0;
    check(profiles->GetSystemProfileCount(count));
    for (std::int16_t index = 0; index < count; ++index) {
        Bool16 ok = kFalse;
        check(profiles->OpenSystemProfile(index, ok));
        if (ok == kFalse) {
            continue;
        }
        constexpr std::size_t kLongestName = 500;
        ProfileData profile;
        profile.bSystem = engine::kTrue;
        profile.iSystemIndex = index;
        profile.sName = engine::textFrom(kLongestName, [&](auto buffer) { return profiles->GetProfileName(buffer); });
        if (!profile.sName.empty()) {
            profile.bVideoPresent = engine::toBool16(IsVideoStreamPresent());
            list.push_back(std::move(profile));
        }
        check(profiles->CloseProfile());
    }
}

void EnumCustomProfiles()
{
    constexpr std::size_t kLongestName = 260;
    const auto profiles = EngineAs<ITWProfiles>();
    Bool16 found = kFalse;
    std::string name =
        engine::textFrom(kLongestName, [&](auto buffer) { return profiles->GetFirstCustomProfile(buffer, found); });
    while (!name.empty()) {
        Bool16 ok = kFalse;
        check(profiles->OpenProfile(name, ok));
        if (ok != kFalse) {
            list.push_back({name, engine::toBool16(IsVideoStreamPresent())});
            check(profiles->CloseProfile());
        }
        name = engine::textFrom(kLongestName, [&](auto buffer) { return profiles->GetNextCustomProfile(buffer); });
    }
    check(profiles->CloseCustomProfileList());
}

const ProfileData* find(std::string_view name)
{
    const auto found = std::ranges::find(list, name, &ProfileData::sName);
    return found == list.end() ? nullptr : &*found;
}

} // namespace

void InitProfiles()
{
    Trapped(kModule, "InitProfiles", [] {
        list.clear();
        Bool16 ok = kFalse;
        check(EngineAs<ITWProfiles>()->InitProfileManager(ok));
    });
}

void EnumProfiles()
{
    Trapped(kModule, "EnumSystemProfiles", EnumSystemProfiles);
    Trapped(kModule, "EnumCustomProfiles", EnumCustomProfiles);
}

void UnInitProfiles()
{
    Trapped(kModule, "UnInitProfiles", [] {
        list.clear();
        check(EngineAs<ITWProfiles>()->ReleaseProfileManager());
    });
}

const std::vector<ProfileData>& Profiles() { return list; }

std::int32_t GetIndex(std::string_view name)
{
    const ProfileData* const found = find(name);
    return found == nullptr ? 0 : static_cast<std::int32_t>(found - list.data());
}

bool IsSystemProfile(std::string_view name)
{
    const ProfileData* const found = find(name);
    return found != nullptr && found->bSystem != kFalse;
}

std::int16_t GetSysProfileIndex(std::string_view name)
{
    const ProfileData* const found = find(name);
    return found == nullptr ? std::int16_t{0} : found->iSystemIndex;
}

bool HasVideo(std::string_view name)
{
    return !list.empty() && list[static_cast<std::size_t>(GetIndex(name))].bVideoPresent != kFalse;
}

bool IsVideoStreamPresent()
{
    bool isPresent = false;
    Trapped(kModule, "IsVideoStreamPresent", [&] { isPresent = anyStream([](bool isVideo) { return isVideo; }); });
    return isPresent;
}

bool OpenProfile(std::string_view name)
{
    const auto profiles = EngineAs<ITWProfiles>();
    Bool16 ok = kFalse;
    check(IsSystemProfile(name) ? profiles->OpenSystemProfile(GetSysProfileIndex(name), ok)
                                : profiles->OpenProfile(name, ok));
    return ok != kFalse;
}

ProfileFacts FactsOf(std::string_view name)
{
    ProfileFacts facts;
    Trapped(kModule, "FactsOf", [&] {
        const auto profiles = EngineAs<ITWProfiles>();
        if (!OpenProfile(name)) {
            return;
        }
        anyStream([&](bool isVideo) {
            if (isVideo) {
                check(profiles->GetVideoFps(facts.fps));
                check(profiles->GetVideoWidth(facts.width));
                check(profiles->GetVideoHeight(facts.height));
            } else {
                check(profiles->GetAudioSampleRate(facts.hertz));
            }
            return false;
        });
        check(profiles->CloseProfile());
    });
    return facts;
}

std::string inThousands(std::int32_t number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", number / 1000.0);
    return text;
}

} // namespace moduleProfiles
