#pragma once

// The lists of compressors, sizes and profiles, filled from the engine into whichever dialogue shows them.
//
// Each routine traps its errors. Interface thread only.

#include "core/dimension_boxes.h"
#include "core/forms/compression.h"

#include <string>
#include <vector>

namespace frmAdvancedSaveOptions {

inline constexpr const char* kUncompressed = "Uncompressed";

/// The engine's compressors, and behind them "Uncompressed", which is chosen.
void FillVideoCompressors(ComboBox& box);
void FillAudioCompressors(ComboBox& box);

/// The sizes of the clips on the video track, the usual ones behind them, and "Custom".
std::vector<std::string> videoDimensions();
/// These in the boxes, "320 x 240" chosen.
void FillVideoDimensions(DimensionBoxes& boxes);

void FillWMFSetting(ComboBox& box);
/// The profiles with pictures, or those of sound alone; the engine's present one is in the box, and the setting that
/// names it is chosen.
void FillWMFProfiles(ComboBox& profiles, ComboBox& setting, bool bVideo);

/// The name that a setting stands for: 0 low to 2 high quality; empty for any other.
std::string profileOfSetting(std::int32_t setting, bool bVideo);

/// By `GetVideoProfile` or `GetAudioProfile`. Raises the engine's failures.
std::string presentProfile(bool bVideo);

/// Starts the four numbers: ranges 1 to 30, and 0 to 100 for the quality, each label its slider's value. changed:
/// behind each of them.
void startValues(forms::CompressionValues& values, const std::function<void()>& changed);
/// A slider and its label follow its box.
void enableValue(forms::CompressionValue& value);
/// What the engine's compressor takes: box, slider and label of each, but for the frame rate, which all take. Raises
/// the engine's failures.
void enableByCompressor(forms::CompressionValues& values);

} // namespace frmAdvancedSaveOptions
