#pragma once

// What stands behind a script's command, word by word. For the language of `edit_words.h` alone.

#include "app/edit_session.h"

#include <algorithm>
#include <charconv>
#include <iosfwd>
#include <limits>

namespace app {

/// The words behind the first one, taken one after the other. Each raises `WrongWords` for what it does not take.
class Operands {
public:
    Operands(std::vector<std::string> words, std::ostream& printed) : words_(std::move(words)), printed_(printed) {}

    std::size_t count() const { return words_.size(); }
    bool isNext(std::string_view word) const { return at_ < words_.size() && words_[at_] == word; }
    std::ostream& printed() const { return printed_; }

    const std::string& word()
    {
        if (at_ >= words_.size()) {
            throw WrongWords("words are missing");
        }
        return words_[at_++];
    }

    std::int32_t number(std::int32_t least = std::numeric_limits<std::int32_t>::min(),
                        std::int32_t most = std::numeric_limits<std::int32_t>::max())
    {
        const std::string& text = word();
        std::int32_t value = 0;
        const char* const begin = text.data() + (text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
        const auto [end, error] = std::from_chars(begin, text.data() + text.size(), value);
        if (error != std::errc{} || end != text.data() + text.size()) {
            throw WrongWords("\"" + text + "\" is no whole number");
        }
        if (value < least || value > most) {
            throw WrongWords(text + " is out of range");
        }
        return value;
    }

    /// An item's number, or a place: one that is too large for any item is none that exists.
    std::int16_t seq()
    {
        const std::int32_t value = number();
        return value > std::numeric_limits<std::int16_t>::max() ? std::int16_t{-1}
                                                                : static_cast<std::int16_t>(std::max(value, -1));
    }
    engine::Milliseconds time() { return number(0); }
    items::ItemTimes range()
    {
        const engine::Milliseconds start = time();
        const engine::Milliseconds stop = time();
        if (stop <= start) {
            throw WrongWords(std::to_string(stop) + " is not behind " + std::to_string(start));
        }
        return {start, stop};
    }
    EditTrack track()
    {
        const std::string& text = word();
        const auto found = trackNamed(text);
        if (!found) {
            throw WrongWords("there is no track called " + text);
        }
        return *found;
    }
    bool isOn()
    {
        const std::string& text = word();
        if (text != "on" && text != "off") {
            throw WrongWords("\"" + text + "\" is neither on nor off");
        }
        return text == "on";
    }

private:
    std::vector<std::string> words_;
    std::size_t at_ = 0;
    std::ostream& printed_;
};

} // namespace app
