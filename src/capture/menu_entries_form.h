#pragma once

// The entries of the capture window's menus: what they are called, and what they run.

#include "core/controls.h"

#include <cstdint>
#include <vector>

namespace frmCapture {

enum class Kind : std::uint8_t { kEntry, kTick, kChoice, kRule, kSnapRule };

struct Entry {
    const char* name;
    const char* caption;
    Menu* state;
    void (*run)();
    Kind kind = Kind::kEntry;
    const char* keys = "";
};
using Entries = std::vector<Entry>;

// In their order; the two lists of the streams and the clocks stand between the first and the last of the captures'.
extern const Entries kFile;
extern const Entries kCapture;
extern const Entries kStreams;
extern const Entries kSynchronize;
extern const Entries kCaptureRest;
extern const Entries kTools;
extern const Entries kHelp;

} // namespace frmCapture
