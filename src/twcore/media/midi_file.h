#pragma once

// Standard MIDI files: recognised and measured by reading their events.

#include "twcore/media/input_file.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

/// Samples a second that MIDI is rendered with.
inline constexpr int kMidiRate = 48000;

/// A longer song is not played: each of its events takes many times its bytes in memory.
inline constexpr std::size_t kMostMidiBytes = 16u << 20;

/// Whether the file begins as a MIDI file, also one wrapped in RIFF.
bool isMidiFile(const std::string& path, const Patience& patience);

/// The beginning of a file, as far as `most` bytes; nothing when it cannot be read, which `patience` is told.
std::vector<std::uint8_t> readBeginning(const std::string& path, std::size_t most, const Patience& patience);

/// The song from its signature on; empty when there is none, when it is longer than `kMostMidiBytes`, or when it cannot
/// be read.
std::vector<std::uint8_t> readMidi(const std::string& path, const Patience& patience);

/// Length from the tempo map to the last event; nullopt when the song is damaged ahead of its first note.
std::optional<std::int32_t> midiLengthMs(const std::vector<std::uint8_t>& song);

/// Path of a General MIDI sound font: the environment's QUILLMONT_SOUNDFONT, else one of the system's. Empty: none.
std::string findSoundFont();

} // namespace twcore
