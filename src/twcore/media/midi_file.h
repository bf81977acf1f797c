#pragma once

// Standard MIDI files: recognised and measured by reading their events.

#include <cstdint>
#include <optional>
#include <string>

namespace twcore {

/// Samples a second that MIDI is rendered with.
inline constexpr int kMidiRate = 48000;

/// Whether the file begins as a MIDI file, also one wrapped in RIFF.
bool isMidiFile(const std::string& path);

/// Length from the tempo map to the last event; nullopt when the file is damaged ahead of its first note.
std::optional<std::int32_t> midiLengthMs(const std::string& path);

/// Path of a General MIDI sound font: the environment's QUILLMONT_SOUNDFONT, else one of the system's. Empty: none.
std::string findSoundFont();

} // namespace twcore
