#pragma once

// The keys that belong to panels and not to the menu: what each does where, in one table. The help's page of keys is
// made from it, and from the keys of the menus.
//
// A key goes first to the part that has the keyboard: a text field, a slider, a button, a list (its moving keys and its
// search) or the panel itself, which knows those rows of the table that have no command. What none of them takes comes
// to `takeKey`. So a bare letter, Space, an arrow, Home or End is never a shortcut of the menu: a row of the menu that
// shows such a key ("T") runs by it wherever no part wants it.
//
// Interface thread only.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace shell {

/// Where the keyboard is. Buttons of the timeline's form stand on its ground.
enum class KeyPlace : std::uint8_t { kRow, kScale, kGround, kTimelineList, kMediaList, kPreview, kTools };

/// A key by the program's number, and the sum of 1 Shift, 2 Ctrl, 4 Alt.
struct Key {
    int code = 0;
    int shift = 0;

    bool operator==(const Key&) const = default;
};

/// "Ctrl+Shift+Z", "Left", "T", "F2"; nothing for a text that names none.
std::optional<Key> keyNamed(std::string_view text);
/// A key that a person who types needs: not one of the menu's.
bool isPanelKey(std::string_view text);

struct KeyRow {
    unsigned places;             // a bit for each `KeyPlace`
    std::string_view where;      // in words
    std::string_view keys;       // one, or several with blanks between them
    std::string_view what;       // it does
    void (*command)() = nullptr; // nullptr: the part that has the keyboard handles it
    bool repeats = false;        // while it is held

    bool isAt(KeyPlace place) const { return (places >> static_cast<unsigned>(place) & 1U) != 0; }
};

/// Those that the panels handle themselves first.
std::span<const KeyRow> panelKeys();

/// Runs what a key does there; false when it does nothing. None does while the hand holds something.
bool takeKey(KeyPlace place, Key key, bool isRepeat);
/// The same of the menu's panel keys alone, for where the keyboard is in none of these places.
bool takeMenuKey(Key key, bool isRepeat);

/// A second key of an entry of the menu.
struct SecondKey {
    std::string_view menu; // its name
    std::string_view key;
};
std::span<const SecondKey> secondKeys();
/// Empty for an entry that has none.
std::string_view secondKeyOf(std::string_view menu);

} // namespace shell
