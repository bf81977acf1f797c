#pragma once

// What a project file of any bytes may do to its readers: nothing but be refused.

#include <cstddef>
#include <cstdint>

/// As the fuzzers call it. 0; what is not a refusal ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
