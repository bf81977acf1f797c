#include "tools/text_picture.h"

#include "core/platform.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace tools {

namespace {

using Pixel = std::uint32_t; // 0xAARRGGBB

constexpr Pixel kOpaque = 0xFF000000u;
// What the engine's key does: a colour up to the tolerance away is clear, and this part of the farthest colour nearby
// is opaque already.
constexpr int kTolerance = 20;
constexpr double kOpaquePart = 240.0 / 256;
constexpr int kAround = 2; // pixels to either side in which it looks for the farthest colour

/// From red in the low byte to blue there.
Pixel pixelOf(std::int32_t colour)
{
    const auto value = static_cast<Pixel>(colour);
    return kOpaque | (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
}

std::array<int, 3> partsOf(Pixel pixel)
{
    return {static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF), static_cast<int>(pixel & 0xFF)};
}

/// The largest difference of a part of the colour, as the engine measures it.
int distance(Pixel one, Pixel other)
{
    const auto a = partsOf(one);
    const auto b = partsOf(other);
    return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
}

/// share: of the upper one, 0 to 1.
Pixel mixed(Pixel below, Pixel above, double share)
{
    const auto a = partsOf(below);
    const auto b = partsOf(above);
    Pixel pixel = 0xFF;
    for (std::size_t i = 0; i < a.size(); ++i) {
        pixel = pixel << 8 | static_cast<Pixel>(a[i] + (b[i] - a[i]) * share + 0.5);
    }
    return pixel;
}

double coverOf(Pixel pixel) { return static_cast<double>(pixel >> 24) / 255; }

std::vector<std::string_view> linesOf(std::string_view text)
{
    constexpr std::string_view kEnd = "\r\n";
    std::vector<std::string_view> lines;
    for (std::size_t from = 0;;) {
        const std::size_t end = text.find(kEnd, from);
        lines.push_back(text.substr(from, end == std::string_view::npos ? end : end - from));
        if (end == std::string_view::npos) {
            return lines;
        }
        from = end + kEnd.size();
    }
}

struct Box {
    int left = 0;
    int top = 0;
    int right = 0; // behind the last pixel
    int bottom = 0;
    bool holds(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
    bool holdsWell(int x, int y, int margin) const
    {
        return holds(x - margin, y - margin) && holds(x + margin, y + margin);
    }
};

/// What the text covers with its own ground; nothing when it has none.
Box groundOf(const TextLook& look)
{
    if (look.isTransparent) {
        return {};
    }
    const TextSize size = measure(look);
    return {look.left, look.top, look.left + size.width, look.top + size.height};
}

void fill(engine::PixelCanvas& picture, const Box& box, Pixel pixel)
{
    const int left = std::clamp(box.left, 0, picture.width());
    const int right = std::clamp(box.right, left, picture.width());
    for (int y = std::max(box.top, 0); y < std::min(box.bottom, picture.height()); ++y) {
        std::fill(picture.line(y) + left, picture.line(y) + right, pixel);
    }
}

/// Every pixel of the letters that lies within the picture: take(x, y, pixel).
template <class Take>
void forLetters(const engine::PixelCanvas& picture, const TextLook& look, const Take& take)
{
    const int height = ports.lettering->lineHeight(look.font);
    int top = look.top - height;
    for (const std::string_view line : linesOf(look.text)) {
        top += height;
        if (top + 2 * height < 0 || top - height > picture.height()) {
            continue; // letters reach no farther out of their line than that
        }
        const Letters letters = ports.lettering->line(look.font, line, look.fontColour);
        const int left = look.left + letters.left;
        const int from = std::max(-left, 0);
        const int to = std::min(letters.pixels.width(), picture.width() - left);
        for (int y = 0; y < letters.pixels.height(); ++y) {
            const int row = top + letters.top + y;
            for (int x = from; row >= 0 && row < picture.height() && x < to; ++x) {
                if (const Pixel pixel = letters.pixels.line(y)[x]; pixel >> 24 != 0) {
                    take(left + x, row, pixel);
                }
            }
        }
    }
}

/// The mixture of a colour and the key of which the engine shows exactly the colour's share, and nothing of the key.
Pixel mixtureOf(Pixel colour, Pixel key)
{
    const int far = distance(colour, key);
    const double share = kTolerance / (far * (1 - kOpaquePart) + kTolerance);
    return mixed(key, colour, share);
}

/// Letters on the key's ground.
class KeyedLetters {
public:
    KeyedLetters(int width, int height)
        : width_(width), height_(height), pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {}

    void add(int x, int y, Pixel pixel)
    {
        Pixel& there = at(x, y);
        there = std::max(pixel >> 24, there >> 24) == pixel >> 24 ? pixel : there;
    }

    void paint(engine::PixelCanvas& picture, Pixel key)
    {
        strengthen();
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                const Pixel colour = at(x, y) | kOpaque;
                if (const double cover = coverOf(at(x, y)); cover >= kWhole) {
                    picture.line(y)[x] = colour;
                } else if (cover >= kPart) {
                    picture.line(y)[x] = mixtureOf(colour, key);
                }
            }
        }
    }

private:
    static constexpr double kWhole = 0.78; // what covers more counts as whole
    static constexpr double kPart = 0.25;  // and less as nothing
    static constexpr double kThin = 0.45;  // the same between the two, where a stroke is thinner than a pixel

    Pixel& at(int x, int y)
    {
        return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
    }

    template <class Test>
    bool hasAround(int x, int y, const Test& test)
    {
        for (int row = std::max(y - kAround, 0); row <= std::min(y + kAround, height_ - 1); ++row) {
            for (int column = std::max(x - kAround, 0); column <= std::min(x + kAround, width_ - 1); ++column) {
                if (test(coverOf(at(column, row)))) {
                    return true;
                }
            }
        }
        return false;
    }

    /// A mixture is found out by the whole colour beside it; a stroke without any becomes whole itself. And inside the
    /// letters, where the key is out of reach, nothing is taken for a mixture.
    void strengthen()
    {
        turnPart([&](int x, int y) { return !hasAround(x, y, [](double cover) { return cover >= kWhole; }); },
                 [](double cover) { return cover >= kThin; });
        turnPart([&](int x, int y) { return !hasAround(x, y, [](double cover) { return cover < kPart; }); },
                 [](double) { return true; });
    }

    /// What covers in part and is `chosen` becomes whole or nothing.
    template <class Chosen, class IsWhole>
    void turnPart(const Chosen& chosen, const IsWhole& isWhole)
    {
        std::vector<Pixel*> turned;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                const double cover = coverOf(at(x, y));
                if (cover >= kPart && cover < kWhole && chosen(x, y)) {
                    turned.push_back(&at(x, y));
                }
            }
        }
        for (Pixel* const pixel : turned) {
            *pixel = isWhole(coverOf(*pixel)) ? *pixel | kOpaque : 0;
        }
    }

    int width_;
    int height_;
    std::vector<Pixel> pixels_;
};

} // namespace

TextSize measure(const TextLook& look)
{
    TextSize size;
    const auto lines = linesOf(look.text);
    for (const std::string_view line : lines) {
        size.width = std::max(size.width, ports.lettering->lineWidth(look.font, line));
    }
    size.height = static_cast<std::int32_t>(lines.size()) * ports.lettering->lineHeight(look.font);
    return size;
}

void paintOver(engine::PixelCanvas& picture, const TextLook& look)
{
    fill(picture, groundOf(look), pixelOf(look.backColour));
    forLetters(picture, look, [&](int x, int y, Pixel pixel) {
        Pixel& there = picture.line(y)[x];
        there = mixed(there, pixel, coverOf(pixel));
    });
}

void paintKeyed(engine::PixelCanvas& picture, const TextLook& look, std::int32_t key)
{
    const Pixel ground = pixelOf(key);
    const Box box = groundOf(look);
    fill(picture, {0, 0, picture.width(), picture.height()}, ground);
    fill(picture, box, pixelOf(look.backColour));
    KeyedLetters outside(picture.width(), picture.height());
    forLetters(picture, look, [&](int x, int y, Pixel pixel) {
        if (!box.holds(x, y)) {
            outside.add(x, y, pixel);
            return;
        }
        Pixel& there = picture.line(y)[x];
        const Pixel smooth = mixed(there, pixel, coverOf(pixel));
        // At the edge, and where one colour comes by the key on its way to the other, a mixture would be taken for one
        // with the key.
        const bool isSafe = box.holdsWell(x, y, kAround) && distance(smooth, ground) > 2 * kTolerance;
        there = isSafe ? smooth : coverOf(pixel) >= 0.5 ? pixel | kOpaque : there;
    });
    outside.paint(picture, ground);
}

bool isKeyedOut(std::int32_t colour, std::int32_t key) { return distance(pixelOf(colour), pixelOf(key)) <= kTolerance; }

} // namespace tools
