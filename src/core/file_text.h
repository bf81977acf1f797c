#pragma once

// File names, sizes and dates as texts, and copying through the desktop. Paths are UTF-8; both "/" and "\" stand
// between folders. Each routine has its trap: an error is reported, and the routine answers what it had found so far.
// Interface thread only.

#include "core/controls.h"
#include "core/platform.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace file_text {

/// How `CopyFileWithShell` copies. It puts them to their start values itself, so that they tell how it copied last.
inline bool FileOpNoConfirmation = false;
inline bool FileOpNoConfirmMkDir = false;
inline bool FileOpRenameOnCollision = true;
inline bool FileOpSilent = false;
inline bool FileOpSimpleProgress = false;

/// "1.50 KB". Sizes of a gigabyte (2^30 bytes) and more have no text; a size of 0 reads ".00 Bytes".
std::string FileSizeUnitConversion(std::int64_t bytes);

/// What stands behind the last separator, without the NULs of an engine's buffer. A path without any separator is
/// reported as error 5 and answered whole.
std::string ExtractFileName(std::string_view path);

/// What stands behind the last dot of the name becomes `ext`. A name without a dot stays as it is, whatever its folder
/// is called.
std::string ChangeExtension(std::string_view name, std::string_view ext);

/// Without the blanks around it.
std::string Trimmed(std::string_view text);

/// A folder without separators at its end; the root stays one.
std::string WithoutSeparator(std::string folder);

/// Whether the box lists exactly this text; capitals count.
bool IsInCombo(const ComboBox& box, std::string_view text);

/// The system's temporary folder without the separator at its end.
std::string GetTempFolder();

/// The day of a text of month, day and year: "12/31/2003", at midnight. A year below 30 belongs to this century, one
/// from 30 to 99 to the last. What is no such day is reported as error 13 and answered as all zeros.
DateTime GetDateLocalFormat(std::string_view date);

/// Copies a file, showing its progress. Where `to` stands already, the copy gets a name of its own.
void CopyFileWithShell(std::string_view from, std::string_view to);

} // namespace file_text
