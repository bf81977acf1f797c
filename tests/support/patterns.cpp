#include "patterns.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>
#include <vector>

namespace testmedia {
namespace {

constexpr int kColumns = 8;
constexpr int kRows = 5;
constexpr double kCodeLeft = 0.10, kCodeTop = 0.20, kCodeWidth = 0.80, kCodeHeight = 0.60;
constexpr double kFrameMargin = 0.04; // bright rim around the code, in fractions of the picture
constexpr std::uint8_t kDark = 20, kBright = 235;
constexpr int kBarLuma = 40;              // brighter than any black bar, darker than any texture
constexpr std::uint8_t kReference = 0xAC; // as many dark as bright, and not the same mirrored

std::uint16_t checkOf(int number)
{
    auto crc = static_cast<std::uint32_t>(0xFFFF);
    for (int bit = 15; bit >= 0; --bit) {
        const bool carry = (((crc >> 15) ^ (static_cast<unsigned>(number) >> bit)) & 1U) != 0;
        crc = (crc << 1) & 0xFFFFU;
        if (carry)
            crc ^= 0x1021U;
    }
    return static_cast<std::uint16_t>(crc);
}

std::array<bool, kColumns * kRows> cellsOf(int number)
{
    const std::uint64_t bits =
        (static_cast<std::uint64_t>(kReference) << 32) | (static_cast<std::uint64_t>(number) << 16) | checkOf(number);
    std::array<bool, kColumns * kRows> cells{};
    for (std::size_t i = 0; i < cells.size(); ++i)
        cells[i] = ((bits >> (cells.size() - 1 - i)) & 1U) != 0;
    return cells;
}

int scaled(double fraction, int size) { return static_cast<int>(std::lround(fraction * size)); }

PixelRect cellRect(int column, int row, int widthPx, int heightPx)
{
    const double left = kCodeLeft + kCodeWidth * column / kColumns;
    const double top = kCodeTop + kCodeHeight * row / kRows;
    return {scaled(left, widthPx), scaled(top, heightPx), scaled(left + kCodeWidth / kColumns, widthPx),
            scaled(top + kCodeHeight / kRows, heightPx)};
}

void setPixel(const Canvas& canvas, int x, int y, const Rgb& colour)
{
    std::uint8_t* const line = canvas.data + static_cast<std::size_t>(y) * canvas.strideBytes;
    if (canvas.layout == PixelLayout::gray8) {
        line[x] = static_cast<std::uint8_t>((colour[0] * 77 + colour[1] * 150 + colour[2] * 29) >> 8);
    } else {
        std::copy(colour.begin(), colour.end(), line + 3 * x);
    }
}

void fill(const Canvas& canvas, const PixelRect& rect, const Rgb& colour)
{
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            setPixel(canvas, x, y, colour);
}

// Slow crossing waves of three hues: luma stays between about 75 and 205, so that it is never taken for a black bar.
void drawTexture(const Canvas& canvas, double moment)
{
    constexpr int kSteps = 1024;
    static const auto wave = [] {
        std::array<int, kSteps> table{};
        for (int i = 0; i < kSteps; ++i)
            table[static_cast<std::size_t>(i)] =
                static_cast<int>(std::lround(32 * std::sin(2 * std::numbers::pi * i / kSteps)));
        return table;
    }();
    const auto at = [](int phase) { return wave[static_cast<std::size_t>(phase & (kSteps - 1))]; };
    const int turn = static_cast<int>(std::lround(moment * kSteps / 50));
    for (int y = 0; y < canvas.heightPx; ++y) {
        const int v = y * kSteps / canvas.heightPx;
        for (int x = 0; x < canvas.widthPx; ++x) {
            const int u = x * kSteps / canvas.widthPx;
            const int shared = at(2 * u + v + turn);
            const int grain =
                static_cast<int>(((static_cast<unsigned>(x) * 73U) ^ (static_cast<unsigned>(y) * 151U)) & 7U);
            const auto hue = [&](int phase) {
                return static_cast<std::uint8_t>(136 + shared + at(3 * v - u - turn / 2 + phase) + grain);
            };
            setPixel(canvas, x, y, {hue(0), hue(kSteps / 3), hue(2 * kSteps / 3)});
        }
    }
}

// Mean of the middle of a cell: the outer part may have bled into its neighbours.
double cellLevel(const GrayView& picture, const PixelRect& area, int column, int row)
{
    const PixelRect cell = cellRect(column, row, area.right - area.left, area.bottom - area.top);
    const int insetX = (cell.right - cell.left) * 3 / 10, insetY = (cell.bottom - cell.top) * 3 / 10;
    double sum = 0;
    int count = 0;
    for (int y = area.top + cell.top + insetY; y < area.top + cell.bottom - insetY; ++y)
        for (int x = area.left + cell.left + insetX; x < area.left + cell.right - insetX; ++x, ++count)
            sum += picture.data[static_cast<std::size_t>(y) * picture.strideBytes + static_cast<std::size_t>(x)];
    return count > 0 ? sum / count : 0;
}

} // namespace

void drawBarcode(const Canvas& canvas, int number, double moment)
{
    assert(number >= 0 && number <= 0xFFFF && canvas.widthPx >= 160 && canvas.heightPx >= 120);
    drawTexture(canvas, moment);
    const int w = canvas.widthPx, h = canvas.heightPx;
    fill(canvas,
         {scaled(kCodeLeft - kFrameMargin, w), scaled(kCodeTop - kFrameMargin, h),
          scaled(kCodeLeft + kCodeWidth + kFrameMargin, w), scaled(kCodeTop + kCodeHeight + kFrameMargin, h)},
         {kBright, kBright, kBright});
    const auto cells = cellsOf(number);
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column) {
            const std::uint8_t level = cells[static_cast<std::size_t>(row * kColumns + column)] ? kBright : kDark;
            fill(canvas, cellRect(column, row, w, h), {level, level, level});
        }
}

PixelRect findActiveArea(const GrayView& picture)
{
    const auto w = static_cast<std::size_t>(picture.widthPx), h = static_cast<std::size_t>(picture.heightPx);
    std::vector<int> inRow(h), inColumn(w);
    for (std::size_t y = 0; y < h; ++y)
        for (std::size_t x = 0; x < w; ++x)
            if (picture.data[y * picture.strideBytes + x] > kBarLuma) {
                ++inRow[y];
                ++inColumn[x];
            }
    const auto ends = [](const std::vector<int>& counts, int needed) {
        const auto lit = [needed](int count) { return count >= needed; };
        const auto first = std::find_if(counts.begin(), counts.end(), lit);
        const auto last = std::find_if(counts.rbegin(), counts.rend(), lit);
        return std::pair(static_cast<int>(first - counts.begin()), static_cast<int>(last.base() - counts.begin()));
    };
    const auto [top, bottom] = ends(inRow, std::max(1, picture.widthPx / 10));
    const auto [left, right] = ends(inColumn, std::max(1, picture.heightPx / 10));
    if (top >= bottom || left >= right)
        return {};
    return {left, top, right, bottom};
}

bool isBlack(const GrayView& picture)
{
    long bright = 0;
    for (int y = 0; y < picture.heightPx; ++y) {
        const std::uint8_t* row = picture.data + static_cast<std::size_t>(y) * picture.strideBytes;
        bright += std::count_if(row, row + picture.widthPx, [](std::uint8_t luma) { return luma > kBarLuma; });
    }
    return bright * 1000 < static_cast<long>(picture.widthPx) * picture.heightPx;
}

std::optional<int> readBarcode(const GrayView& picture)
{
    const PixelRect area = findActiveArea(picture);
    if (area.right - area.left < 64 || area.bottom - area.top < 48)
        return std::nullopt;
    std::array<double, kColumns * kRows> levels{};
    for (int i = 0; i < kColumns * kRows; ++i)
        levels[static_cast<std::size_t>(i)] = cellLevel(picture, area, i % kColumns, i / kColumns);

    double dark = 0, bright = 0;
    for (std::size_t i = 0; i < kColumns; ++i)
        (((kReference >> (kColumns - 1 - i)) & 1) != 0 ? bright : dark) += levels[i] / (kColumns / 2.0);
    if (bright - dark < 30)
        return std::nullopt;
    std::uint64_t bits = 0;
    for (const double level : levels) {
        const double share = (level - dark) / (bright - dark);
        if (share > 0.3 && share < 0.7)
            return std::nullopt;
        bits = (bits << 1) | (share >= 0.5 ? 1U : 0U);
    }
    const auto number = static_cast<int>((bits >> 16) & 0xFFFFU);
    if ((bits >> 32) != kReference || (bits & 0xFFFFU) != checkOf(number))
        return std::nullopt;
    return number;
}

PixelRect patchRect(int index, int widthPx, int heightPx)
{
    const double share = 1.0 / static_cast<double>(kPatchColours.size());
    return {scaled((index + 0.25) * share, widthPx), scaled(0.88, heightPx), scaled((index + 0.75) * share, widthPx),
            scaled(0.96, heightPx)};
}

void drawPatches(const Canvas& canvas)
{
    const int count = static_cast<int>(kPatchColours.size());
    for (int i = 0; i < count; ++i)
        fill(canvas,
             {i * canvas.widthPx / count, scaled(0.85, canvas.heightPx), (i + 1) * canvas.widthPx / count,
              canvas.heightPx},
             kPatchColours[static_cast<std::size_t>(i)]);
}

} // namespace testmedia
