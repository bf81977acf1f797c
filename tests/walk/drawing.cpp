#include "walk/drawing.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <span>
#include <sstream>
#include <string_view>

namespace walk_test {

namespace {

/// Lines with how often they come, and the words to choose from. Drawn are a row, an item of the row ahead of it (SEQ
/// from 0, PLACE from 1), an OVERLAY, a TIME, a RANGE between two, a SPAN from one, its MEDIA, milliseconds to go BY.
constexpr std::string_view kLines[] = {
    "16 add|overlay clip|pic|song|tiny|long",
    "1 title one|two",
    "4 put video|overlay clip|pic|tiny|long SPAN MEDIA",
    "4 put audio1|audio2 clip|song|tiny|long SPAN MEDIA",
    "4 add-effect Fade|Pixelate|Blur|Wave|Emboss|Engrave",
    "2 effect Fade|Pixelate|Blur|Wave|Emboss|Engrave SPAN",
    "14 select ROW SEQ",
    "2 deselect",
    "8 lock ROW on|on|off|off|off",
    "3 link ROW on|on|off",
    "8 range RANGE",
    "4 range off",
    "7 slider TIME",
    "36 cut|cut|cut|copy|copy|paste|paste|paste|paste|delete|delete|delete|crop-sources|crop",
    "17 pack|pack|pack|restore|restore|repeat|repeat|split|split|split|split|clear-effects|clear-overlays",
    "22 drag|resize ROW SEQ BY",
    "12 trim-start|trim-end ROW SEQ BY",
    "6 trim-start|trim-end",
    "8 ripple-delete",
    "6 insert ROW clip|pic|song|tiny|long TIME",
    "5 select-with-sound",
    "6 shuffle ROW PLACE PLACE",
    "7 change-track audio1|audio2 PLACE audio1|audio2 PLACE",
    "4 nudge -5|-1|1|5",
    "6 key-color OVERLAY 0|255 0|128|255 0|7",
    "5 stretch video|overlay SEQ 0|1|2|3",
    "4 stretch selected|tracks 0|1|2|3",
    "10 undo|undo|undo|redo|redo",
    "3 jump PLACE",
};
constexpr std::size_t kAddingLines = 6; // at the head

} // namespace

std::string Drawing::line()
{
    constexpr int kFew = 15;
    const bool isFilling = timeline_.count() < kFew && pick(2) == 0;
    const std::span lines(kLines, isFilling ? kAddingLines : std::size(kLines));
    const auto weightOf = [](std::string_view line) { return std::stoi(std::string(line)); };
    int left = pick(std::transform_reduce(lines.begin(), lines.end(), 0, std::plus(), weightOf));
    auto drawn = lines.begin();
    for (; left >= weightOf(*drawn); ++drawn) {
        left -= weightOf(*drawn);
    }
    std::istringstream words{std::string(drawn->substr(drawn->find(' ')))};
    std::string text;
    for (std::string word; words >> word;) {
        text += (text.empty() ? "" : " ") + this->word(word);
    }
    return text == "repeat" && !mayRepeat() ? "split" : text;
}

int Drawing::pick(std::int64_t choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }

std::string Drawing::word(const std::string& choices)
{
    std::istringstream stream(choices == "ROW" ? "video|audio1|audio2|overlay|effects" : choices);
    std::vector<std::string> words;
    for (std::string word; std::getline(stream, word, '|');) {
        words.push_back(word);
    }
    const std::string word = words[static_cast<std::size_t>(pick(std::ssize(words)))];
    if (const auto track = app::trackNamed(word)) {
        row_ = static_cast<Row>(*track);
    }
    row_ = word == "OVERLAY" ? kOverlay : row_;
    return word == "SEQ" || word == "OVERLAY" ? std::to_string(seq())
           : word == "PLACE"                  ? std::to_string(seq() + 1)
           : word == "TIME"                   ? std::to_string(time())
           : word == "BY"                     ? std::to_string(pick(3) == 0 ? pick(41) - 20 : pick(6000) - 3000)
           : word == "RANGE"                  ? range()
           : word == "SPAN"                   ? span()
           : word == "MEDIA"                  ? media()
                                              : word;
}

const Piece& Drawing::any(const Pieces& lane) { return lane[static_cast<std::size_t>(pick(std::ssize(lane)))]; }
const Pieces& Drawing::anyLane() { return timeline_.on(kRows[static_cast<std::size_t>(pick(std::ssize(kRows)))]); }
/// Mostly one that exists.
int Drawing::seq()
{
    const Pieces& lane = timeline_.on(row_);
    return pick(std::ssize(lane) + (pick(10) == 0 || lane.empty() ? 1 : 0));
}

/// Often at the edge of an item, or close to one.
std::int64_t Drawing::time()
{
    const Pieces& lane = anyLane();
    if (lane.empty() || pick(3) == 0) {
        return pick(timeline_.duration() + 2000);
    }
    const Range& times = any(lane).times;
    constexpr std::array kNear{0, 0, 0, 0, 1, -1, 9, -10, 11, -11, 200, -200};
    const int by = kNear[static_cast<std::size_t>(pick(std::ssize(kNear)))];
    return std::max((pick(2) == 0 ? times.start : times.stop) + by, 0);
}

std::string Drawing::range()
{
    std::int64_t a = time();
    std::int64_t b = time();
    if (const Pieces& lane = anyLane(); !lane.empty() && pick(3) == 0) { // of whole items
        a = any(lane).times.start;
        b = any(lane).times.stop;
    }
    return std::to_string(std::min(a, b)) + " " + std::to_string(a == b ? a + 1 + pick(3000) : std::max(a, b));
}

std::string Drawing::span()
{
    const std::int64_t start = time();
    length_ = 1 + (pick(4) == 0 ? pick(20) : pick(2000));
    return std::to_string(start) + " " + std::to_string(start + length_);
}

/// Sometimes at another speed, seldom without any.
std::string Drawing::media()
{
    const int start = pick(2) == 0 ? 0 : pick(500);
    const int length = pick(2) == 0 ? length_ : pick(12) == 0 ? -pick(20) : 1 + pick(3000);
    return std::to_string(start) + " " + std::to_string(start + length);
}

/// Not for thousands of times.
bool Drawing::mayRepeat() const
{
    return std::ranges::none_of(std::array{kAudio1, kAudio2}, [&](Row row) {
        const Pieces& lane = timeline_.on(row);
        const int length = lane.empty() ? 0 : lane.back().media.stop - lane.back().media.start;
        return length > 0 && length < 100;
    });
}

} // namespace walk_test
