#include "core/draw_list.h"

#include "core/platform.h"
#include "core/show.h"

#include <cstdio>
#include <unordered_map>

namespace {

/// Widths of texts that were asked before; emptied when the font changes or it grows large.
class WidthCache {
public:
    double width(std::string_view text)
    {
        constexpr std::size_t kMaxTexts = 20000;
        if (generation_ != ports.fonts->generation() || widths_.size() > kMaxTexts) {
            widths_.clear();
            generation_ = ports.fonts->generation();
        }
        const auto [known, isNew] = widths_.try_emplace(std::string(text), 0);
        if (isNew) {
            known->second = ports.fonts->textWidth(text);
        }
        return known->second;
    }

private:
    std::unordered_map<std::string, double> widths_;
    int generation_ = 0;
};

} // namespace

DrawList::Stroke& DrawList::add(Kind kind, std::int32_t colour, double x1, double y1, double x2, double y2,
                                std::string_view text)
{
    show::mark();
    return strokes_.emplace_back(Stroke{kind, colour, x1, y1, x2, y2, std::string(text)});
}

void DrawList::clear()
{
    strokes_.clear();
    show::mark();
}

void DrawList::line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    add(Kind::kLine, colour, x1, y1, x2, y2);
}

void DrawList::box(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    add(Kind::kBox, colour, x1, y1, x2, y2);
}

void DrawList::dottedBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    add(Kind::kDottedBox, colour, x1, y1, x2, y2);
}

void DrawList::filledBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    add(Kind::kFilledBox, colour, x1, y1, x2, y2);
}

void DrawList::text(double x, double y, std::string_view text, std::int32_t colour)
{
    add(Kind::kText, colour, x, y, 0, 0, text);
}

void DrawList::veil(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    add(Kind::kVeil, colour, x1, y1, x2, y2);
}

void DrawList::picture(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
                       const engine::SurfacePicture& picture)
{
    add(Kind::kPicture, 0, x1, y1, x2, y2).picture = picture;
}

void DrawList::wave(std::int32_t x1, std::int32_t y1, std::int32_t y2, std::span<const engine::Peak> peaks,
                    std::int32_t colour)
{
    const auto count = static_cast<std::int32_t>(peaks.size());
    add(Kind::kWave, colour, x1, y1, x1 + count - 1, y2).peaks.assign(peaks.begin(), peaks.end());
}

double DrawList::textWidth(std::string_view text)
{
    static WidthCache cache;
    return cache.width(text);
}

double DrawList::textHeight() { return ports.fonts->textHeight(); }

void DrawList::replay(Canvas& target) const
{
    target.clear();
    for (const Stroke& s : strokes_) {
        const auto x1 = static_cast<std::int32_t>(s.x1);
        const auto y1 = static_cast<std::int32_t>(s.y1);
        const auto x2 = static_cast<std::int32_t>(s.x2);
        const auto y2 = static_cast<std::int32_t>(s.y2);
        switch (s.kind) {
        case Kind::kLine:
            target.line(x1, y1, x2, y2, s.colour);
            break;
        case Kind::kBox:
            target.box(x1, y1, x2, y2, s.colour);
            break;
        case Kind::kDottedBox:
            target.dottedBox(x1, y1, x2, y2, s.colour);
            break;
        case Kind::kFilledBox:
            target.filledBox(x1, y1, x2, y2, s.colour);
            break;
        case Kind::kText:
            target.text(s.x1, s.y1, s.text, s.colour);
            break;
        case Kind::kVeil:
            target.veil(x1, y1, x2, y2, s.colour);
            break;
        case Kind::kPicture:
            target.picture(x1, y1, x2, y2, s.picture);
            break;
        case Kind::kWave:
            target.wave(x1, y1, y2, s.peaks, s.colour);
            break;
        }
    }
}

std::string DrawList::inWords() const
{
    static constexpr const char* kNames[] = {"line", "box", "dotted", "filled", "text", "veil", "picture", "wave"};
    std::string words;
    for (const Stroke& s : strokes_) {
        char line[160];
        if (s.kind == Kind::kText) {
            std::snprintf(line, sizeof line, "text %g %g ", s.x1, s.y1);
            words += line + s.text;
        } else {
            std::snprintf(line, sizeof line, "%s %g %g %g %g", kNames[static_cast<int>(s.kind)], s.x1, s.y1, s.x2,
                          s.y2);
            words += line;
        }
        std::snprintf(line, sizeof line, " %06X\n", static_cast<unsigned>(s.colour));
        words += line;
    }
    return words;
}
