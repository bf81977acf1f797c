#include "core/block_letters.h"

#include <algorithm>
#include <cmath>

namespace {

int cellWidth(const TextFont& font) { return std::max(static_cast<int>(std::lround(font.Size * 0.8)), 2); }

} // namespace

int BlockLetters::lineWidth(const TextFont& font, std::string_view line)
{
    return cellWidth(font) * static_cast<int>(line.size());
}

int BlockLetters::lineHeight(const TextFont& font)
{
    return std::max(static_cast<int>(std::lround(font.Size * 1.5)), 3);
}

Letters BlockLetters::line(const TextFont& font, std::string_view line, std::int32_t colour)
{
    const auto value = static_cast<std::uint32_t>(colour);
    const std::uint32_t ink = 0xFF000000u | (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
    Letters letters;
    letters.pixels.resize(lineWidth(font, line), lineHeight(font));
    const int cell = cellWidth(font);
    for (int y = 0; y < letters.pixels.height(); ++y) {
        const bool isBetween = y == 0 || y == letters.pixels.height() - 1;
        for (int x = 0; x < letters.pixels.width(); ++x) {
            const bool isBlank = line[static_cast<std::size_t>(x / cell)] == ' ' || x % cell == cell - 1;
            letters.pixels.line(y)[x] = isBetween || isBlank ? 0 : ink;
        }
    }
    return letters;
}
