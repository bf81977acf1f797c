#pragma once

// The Windows Media profiles in one list: the system's by their index, behind them the person's own as the engine hands
// them out.
//
// The list stands from `EnumProfiles` to `UnInitProfiles`. Nothing of it is open in the engine between two calls. A
// name may stand in it twice; every search by name finds the first. Each routine traps its errors. Interface thread
// only.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct ProfileData {
    std::string sName;
    engine::Bool16 bVideoPresent = engine::kFalse; // it has a stream of pictures
    engine::Bool16 bSystem = engine::kFalse;       // the system's, not the person's own
    std::int16_t iSystemIndex = 0;                 // of the system's list
};

namespace moduleProfiles {

/// Empties the list, and makes the engine's manager.
void InitProfiles();
/// Fills it. A profile that does not open, or has no name, is passed over.
void EnumProfiles();
void UnInitProfiles();

const std::vector<ProfileData>& Profiles();

// By name. One that is not in the list counts as the first entry, as none of the system's, as index 0.
std::int32_t GetIndex(std::string_view name);
bool IsSystemProfile(std::string_view name);
std::int16_t GetSysProfileIndex(std::string_view name);
/// Whether that entry has pictures; false when the list is empty.
bool HasVideo(std::string_view name);

/// Opens it in the engine, which holds one; false when it does not open. Raises the engine's failures.
bool OpenProfile(std::string_view name);
/// Of the profile that is open.
bool IsVideoStreamPresent();

/// What people are told of a profile's streams; 0 where there is none.
struct ProfileFacts {
    std::int16_t fps = 0;
    std::int16_t width = 0; // pixels
    std::int16_t height = 0;
    std::int32_t hertz = 0;
};
/// Of its last stream of each kind.
ProfileFacts FactsOf(std::string_view name);

/// A thousandth, in as many digits as it takes: "44.1" of 44100.
std::string inThousands(std::int32_t number);

} // namespace moduleProfiles
