#include "walk/oracle.h"

#include <ranges>
#include <set>
#include <tuple>

namespace walk_test {

namespace {

/// Pieces without their places: the name, how it is fitted to the movie, and an overlay's key.
using Looks = std::multiset<std::tuple<std::string, std::int16_t, std::array<std::int16_t, 3>>>;
Looks looksOf(const Timeline& timeline)
{
    Looks looks;
    for (const Piece& piece : timeline.laid.rows | std::views::join) {
        looks.emplace(piece.name, piece.mode, piece.key);
    }
    return looks;
}

/// Where it goes is left open.
void rearrange(Command& c) { c.t.laid = looksOf(c.now) == looksOf(c.before) ? c.now.laid : c.t.laid; }

/// What the others leave is left open: the rooms' own tests and the scripts hold them to it.
constexpr std::pair<std::string_view, void (*)(Command&)> kRules[] = {
    {"cut", edit},        {"copy", edit},           {"delete", edit},
    {"crop", edit},       {"crop-sources", edit},   {"paste", paste},
    {"split", split},     {"pack", pack},           {"restore", restore},
    {"drag", drag},       {"resize", resize},       {"nudge", nudge},
    {"trim-start", trim}, {"trim-end", trim},       {"ripple-delete", closeGap},
    {"insert", insert},   {"shuffle", rearrange},   {"change-track", rearrange},
    {"title", title},     {"key-color", keyColour}, {"stretch", stretchMode},
};

bool isAsTold(const Piece& is, const Piece& told)
{
    const bool hasMedia =
        std::abs(is.media.start - told.media.start) <= 1 && std::abs(is.media.stop - told.media.stop) <= 1;
    return is.name == told.name && is.times == told.times && is.mode == told.mode && is.key == told.key
           && (hasMedia || told.stream == kAnyMedia);
}

/// What there is has been there before, or is new and plain.
bool keepsLooks(const Timeline& before, const Timeline& now)
{
    Looks had = looksOf(before);
    return std::ranges::all_of(looksOf(now), [&](const auto& look) {
        const auto found = had.find(look);
        const bool isOld = found != had.end();
        isOld ? void(had.erase(found)) : void();
        return isOld || (std::get<1>(look) == 0 && std::get<2>(look) == std::array<std::int16_t, 3>{});
    });
}

} // namespace

std::string Oracle::wrongBehind(const Words& words, const Timeline& before, const Timeline& now)
{
    const auto* const rule = std::ranges::find(kRules, words.front(), [](const auto& each) { return each.first; });
    if (rule == std::end(kRules)) {
        return keepsLooks(before, now) ? "" : "a stretch mode or a key is another one:\n" + app::asText(now.laid);
    }
    Command command{words, before, now, clips_};
    rule->second(command);
    for (const Row row : kRows) {
        if (!std::ranges::equal(now.on(row), command.t.on(row), isAsTold)) {
            return nameOf(row) + " does not hold what it must:\n" + app::asText(now.laid) + "  instead of\n"
                   + app::asText(command.t.laid);
        }
    }
    return {};
}

} // namespace walk_test
