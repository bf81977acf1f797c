#pragma once

// The timeline of the real engine and the clipboard as a line of text, written and read alike.
//
//     V 0-1000m3 b2000-3000=5-705* E 500-900 Wave900-950 O 0-900#30 A 0-500 B t0-500
//
// Rows with items only: Video, Effects, Overlays, Audio 1, Audio 2; times in ms. Ahead of a source the letter of its
// stream where it is not "a" (sounds: "s"), ahead of an effect its name where it is not Blur. "=" the media times where
// they are not 0 to the length, "m" the stretch mode, "#" the blue of an overlay's key (with red and green where they
// are not 10 and 20), "!" the times of its transition where they are not the overlay's, "*" selected.
//
//     V ~500 1000=200-1200m2 O b1000 E 300 ~20 Wave40 K 1000#7
//
// The clipboard: pieces with their lengths and "~" gaps; K the transitions, without "#" where an overlay had none. "@"
// the place in the run where it is not the next one.

#include "engine/types.h"

#include <map>
#include <string>

namespace testsupport {

class Layout {
public:
    /// The streams by their letters; a to d are stills of four kinds, s and t sounds, opened when they are asked for.
    std::map<char, engine::Handle> streams;
    engine::Handle stream(char letter);

    /// V, O, A or B; of the effects the track that bears them.
    static engine::Handle trackOf(char row);
    /// Lays these items behind what lies on their rows. Throws when the engine does not take one.
    void put(const std::string& text);
    std::string text() const;

    void addClips(const std::string& text);
    std::string clips() const;

private:
    void putSource(char row, const std::string& word);
    std::string source(char row, std::int16_t seq) const;
    void addClip(char row, std::int16_t seq, const std::string& word);
    std::string nameOf(engine::Handle stream, char own) const;
};

} // namespace testsupport
