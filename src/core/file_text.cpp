#include "core/file_text.h"

#include "core/trap.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

namespace file_text {

namespace {

bool isSeparator(char c) { return c == '/' || c == '\\'; }

/// `bytes` in units of `unit` bytes with two digits behind the point, halves away from zero; nothing stands ahead of
/// the point where the whole part is 0.
std::string inUnits(std::int64_t bytes, std::int64_t unit)
{
    const std::int64_t size = bytes < 0 ? -bytes : bytes;
    const std::int64_t whole = size / unit;
    const std::int64_t hundredths = whole * 100 + (size % unit * 100 + unit / 2) / unit;
    std::string text = std::to_string(hundredths % 100 + 100);
    text[0] = '.';
    if (hundredths >= 100) {
        text.insert(0, std::to_string(hundredths / 100));
    }
    return bytes < 0 ? "-" + text : text;
}

[[noreturn]] void raiseTypeMismatch()
{
    throw engine::RuntimeError(engine::error_number::kTypeMismatch, "Type mismatch");
}

int wholeNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) {
        raiseTypeMismatch();
    }
    return number;
}

/// The three numbers between the slashes, blanks around them allowed.
std::array<int, 3> partsOf(std::string_view date)
{
    const std::size_t first = date.find('/');
    const std::size_t last = date.rfind('/');
    if (first == last) {
        raiseTypeMismatch();
    }
    return {wholeNumber(date.substr(0, first)), wholeNumber(date.substr(first + 1, last - first - 1)),
            wholeNumber(date.substr(last + 1))};
}

int fullYear(int year)
{
    constexpr int kFirstOfLastCentury = 30;
    if (year < 0 || year > 99) {
        return year;
    }
    return year < kFirstOfLastCentury ? 2000 + year : 1900 + year;
}

/// Renaming on a collision is on, all else off.
void ResetFileOpFlags()
{
    FileOpRenameOnCollision = true;
    FileOpNoConfirmation = false;
    FileOpNoConfirmMkDir = false;
    FileOpSilent = false;
    FileOpSimpleProgress = false;
}

} // namespace

std::string FileSizeUnitConversion(std::int64_t bytes)
{
    constexpr std::int64_t kKilo = 1024;
    constexpr std::int64_t kMega = kKilo * 1024;
    constexpr std::int64_t kGiga = kMega * 1024;
    std::string text;
    Trapped("file_text", "FileSizeUnitConversion", [&] {
        if (bytes < kKilo) {
            text = inUnits(bytes, 1) + " Bytes";
        } else if (bytes < kMega) {
            text = inUnits(bytes, kKilo) + " KB";
        } else if (bytes < kGiga) {
            text = inUnits(bytes, kMega) + " MB";
        } // From a gigabyte on there is no text: kept, the facts beside the media list leave it out.
    });
    return text;
}

std::string ExtractFileName(std::string_view path)
{
    std::string name;
    Trapped("file_text", "ExtractFileName", [&] {
        const auto separator = std::find_if(path.rbegin(), path.rend(), isSeparator);
        std::remove_copy(separator.base(), path.end(), std::back_inserter(name), '\0');
        if (separator == path.rend() && !path.empty()) {
            throw engine::RuntimeError(engine::error_number::kInvalidCall, "Invalid procedure call or argument");
        }
    });
    return name;
}

std::string ChangeExtension(std::string_view name, std::string_view ext)
{
    std::string changed(name);
    Trapped("file_text", "ChangeExtension", [&] {
        const std::size_t dot = name.rfind('.');
        if (dot != std::string_view::npos && name.find_first_of("/\\", dot) == std::string_view::npos) {
            changed.replace(dot + 1, std::string::npos, ext);
        }
    });
    return changed;
}

std::string Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    return std::string(first == std::string_view::npos ? std::string_view()
                                                       : text.substr(first, text.find_last_not_of(' ') + 1 - first));
}

std::string WithoutSeparator(std::string folder)
{
    while (folder.size() > 1 && isSeparator(folder.back())) {
        folder.pop_back();
    }
    return folder;
}

bool IsInCombo(const ComboBox& box, std::string_view text)
{
    const std::vector<std::string>& items = box.List;
    return std::ranges::find(items, text) != items.end();
}

std::string GetTempFolder()
{
    std::string folder;
    Trapped("file_text", "GetTempFolder", [&] {
        folder = ports.shell->temporaryFolder();
        if (!folder.empty() && isSeparator(folder.back())) {
            folder.pop_back();
        }
    });
    return folder;
}

DateTime GetDateLocalFormat(std::string_view date)
{
    DateTime day;
    Trapped("file_text", "GetDateLocalFormat", [&] {
        const auto [month, dayOfMonth, shortYear] = partsOf(date);
        const int year = fullYear(shortYear);
        const bool fits =
            month >= 1 && month <= 12 && dayOfMonth >= 1 && dayOfMonth <= 31 && year >= 100 && year <= 9999;
        if (!fits || !(std::chrono::year{year} / month / dayOfMonth).ok()) {
            raiseTypeMismatch();
        }
        day.year = year;
        day.month = month;
        day.day = dayOfMonth;
    });
    return day;
}

void CopyFileWithShell(std::string_view from, std::string_view to)
{
    const auto tell = [&](const char* why) {
        tellUser("Unable to copy \"" + std::string(from) + "\" to \"" + std::string(to) + "\": " + why,
                 MessageIcon::kCritical);
    };
    const auto copy = [&] {
        // With the flags put back there is one way to copy: a new name on a collision, with the progress shown.
        ResetFileOpFlags();
        ports.shell->copyWithRename(from, to);
    };
    Trapped("file_text", "CopyFileWithShell", copy,
            {{53, [&] { tell("the file is not there any more."); }},
             {70, [&] { tell("it cannot be written there. Choose another folder."); }},
             {76, [&] { tell("there is no such folder."); }}});
}

} // namespace file_text
