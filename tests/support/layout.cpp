#include "support/layout.h"

#include "core/shared_state.h"
#include "editing/clipboard.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "support/manifest.h"

#include <charconv>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace testsupport {

using engine::check;
using engine::Handle;
using engine::kFalse;
using Ms = engine::Milliseconds;

namespace {

auto timeline() { return engine::EngineAs<engine::ITWTimeline>(); }
auto keys() { return engine::EngineAs<engine::ITWKeyTransition>(); }

/// A word of a layout, read from its beginning.
struct Word {
    std::string_view rest;

    bool takes(char sign)
    {
        const bool isThere = rest.starts_with(sign);
        rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }
    int number()
    {
        int value = 0;
        const auto end = std::from_chars(rest.data(), rest.data() + rest.size(), value).ptr;
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        return value;
    }
    /// "5-705"; without a range both are as they were.
    void range(Ms& start, Ms& stop)
    {
        start = number();
        takes('-');
        stop = number();
    }
    std::string letters()
    {
        const std::string all(rest.substr(0, rest.find_first_of("-0123456789~")));
        rest.remove_prefix(all.size());
        return all;
    }
};

std::string range(Ms start, Ms stop) { return std::to_string(start) + "-" + std::to_string(stop); }
std::string sourceFacts(Ms length, Ms mediaStart, Ms mediaStop, std::int16_t mode)
{
    return (mediaStart == 0 && mediaStop == length ? "" : "=" + range(mediaStart, mediaStop))
           + (mode == 0 ? "" : "m" + std::to_string(mode));
}
std::string keyText(int red, int green, int blue)
{
    return "#" + std::to_string(blue)
           + (red == 10 && green == 20 ? "" : "," + std::to_string(red) + "," + std::to_string(green));
}
std::string trimmed(const std::string& name) { return name.substr(0, name.find_last_not_of(' ') + 1); }

std::string effect(std::int16_t seq)
{
    const Handle track = Layout::trackOf('E');
    Ms start = 0, stop = 0;
    engine::Bool16 ok = kFalse, selected = kFalse;
    check(timeline()->GetEffectTimes(track, seq, start, stop, ok));
    if (ok == kFalse) {
        return {};
    }
    std::string name(10, ' ');
    check(timeline()->GetEffectName(track, seq, name));
    check(timeline()->IsEffectItemSelected(track, seq, selected));
    return (trimmed(name) == "Blur" ? "" : trimmed(name)) + range(start, stop) + (selected != kFalse ? "*" : "");
}

/// The transition of an overlay at these times; nothing where there is none.
std::string transition(std::int16_t seq, Ms start, Ms stop)
{
    const Handle track = state::OverlayTrack;
    Ms from = 0, to = 0;
    engine::Bool16 ok = kFalse;
    check(timeline()->GetTransitionTimes(track, seq, from, to, ok));
    if (ok == kFalse) {
        return {};
    }
    std::int16_t red = 0, green = 0, blue = 0;
    std::string name(10, ' ');
    check(timeline()->GetTransitionName(track, seq, name));
    check(keys()->GetKeyRed(track, seq, red));
    check(keys()->GetKeyGreen(track, seq, green));
    check(keys()->GetKeyBlue(track, seq, blue));
    return keyText(red, green, blue) + (trimmed(name) == "DxtKey" ? "" : trimmed(name))
           + (from == start && to == stop ? "" : "!" + range(from, to));
}

char own(char row) { return row == 'A' || row == 'B' ? 's' : 'a'; }

/// Calls take(row, place in the row, word) for each item.
void eachItem(const std::string& text, const auto& take)
{
    std::istringstream words(text);
    std::map<char, std::int16_t> places;
    char row = 0;
    for (std::string word; words >> word;) {
        if (word.size() == 1 && word[0] >= 'A') {
            row = word[0];
        } else {
            take(row, places[row]++, word);
        }
    }
}

} // namespace

Handle Layout::stream(char letter)
{
    static const std::map<char, const char*> kNames = {{'a', "still.bmp"},      {'b', "still.gif"},
                                                       {'c', "still.jpg"},      {'d', "still.png"},
                                                       {'s', "stereo-48k.wav"}, {'t', "stereo-44k.wav"}};
    if (!streams.contains(letter)) {
        Handle file = 0;
        check(engine::Engine->OpenFile((testmedia::mediaFolder() / kNames.at(letter)).string(), file));
        check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, streams[letter]));
    }
    return streams[letter];
}

Handle Layout::trackOf(char row)
{
    return row == 'O' || row == 'K' ? state::OverlayTrack
                                    : state::TrackCollection.Item(row == 'A'   ? 2
                                                                  : row == 'B' ? 3
                                                                               : 1);
}

void Layout::put(const std::string& text)
{
    eachItem(text, [this](char row, std::int16_t, const std::string& item) {
        if (row != 'E') {
            putSource(row, item);
            return;
        }
        Word word{item};
        const std::string name = word.letters();
        Ms start = 0, stop = 0;
        std::int16_t seq = 0;
        engine::Bool16 ok = kFalse;
        word.range(start, stop);
        check(timeline()->GetEffectCount(trackOf(row), seq));
        check(timeline()->InsertEffect(trackOf(row), name.empty() ? "Blur" : name, seq, start, stop, 0, ok));
        check(timeline()->SetEffectSelected(trackOf(row), seq, engine::toBool16(word.takes('*'))));
    });
}

void Layout::putSource(char row, const std::string& item)
{
    Word word{item};
    const Handle track = trackOf(row);
    const std::string letter = word.letters();
    Ms start = 0, stop = 0, mediaStart = 0;
    std::int16_t seq = 0;
    engine::Bool16 ok = kFalse;
    word.range(start, stop);
    Ms mediaStop = stop - start;
    if (word.takes('=')) {
        word.range(mediaStart, mediaStop);
    }
    check(timeline()->GetSourceCount(track, seq));
    check(timeline()->InsertSource(track, stream(letter.empty() ? own(row) : letter[0]), seq, start, stop, ok));
    if (ok == kFalse) {
        throw std::invalid_argument("not taken: " + item);
    }
    check(timeline()->SetSourceMediaTimes(track, seq, mediaStart, mediaStop, ok));
    if (word.takes('m')) {
        check(timeline()->SetSourceStretchMode(track, seq, static_cast<std::int16_t>(word.number())));
    }
    if (word.takes('#')) {
        check(timeline()->AddTransitionAt(track, "DxtKey", start, stop, ok));
        check(keys()->SetKeyColor(track, seq, 10, 20, static_cast<std::int16_t>(word.number()), ok));
    }
    const engine::Bool16 selected = engine::toBool16(word.takes('*'));
    check(timeline()->SetSourceSelected(track, seq, selected));
    check(timeline()->SetTransitionSelected(track, seq, selected));
}

std::string Layout::text() const
{
    std::string all;
    for (const char row : {'V', 'E', 'O', 'A', 'B'}) {
        std::string items, item;
        for (std::int16_t seq = 0; item = row == 'E' ? effect(seq) : source(row, seq), !item.empty(); ++seq) {
            items += " " + item;
        }
        all += items.empty() ? "" : (all.empty() ? "" : " ") + (row + items);
    }
    return all;
}

std::string Layout::source(char row, std::int16_t seq) const
{
    const Handle track = trackOf(row);
    Ms start = -1, stop = -1, mediaStart = 0, mediaStop = 0;
    engine::Bool16 ok = kFalse, selected = kFalse;
    check(timeline()->GetSourceTimes(track, seq, start, stop, ok));
    if (ok == kFalse) {
        return row == 'O' ? transition(seq, -1, -1) : ""; // one too many is seen
    }
    Handle stream = 0;
    std::int16_t mode = 0;
    check(timeline()->GetSourceMediaTimes(track, seq, mediaStart, mediaStop, ok));
    check(timeline()->IsSourceSelected(track, seq, selected));
    check(timeline()->GetSourceStretchMode(track, seq, mode));
    check(timeline()->GetSourceStream(track, seq, stream));
    return nameOf(stream, own(row)) + range(start, stop) + sourceFacts(stop - start, mediaStart, mediaStop, mode)
           + (row == 'O' ? transition(seq, start, stop) : "") + (selected != kFalse ? "*" : "");
}

std::string Layout::nameOf(Handle stream, char own) const
{
    for (const auto& [letter, handle] : streams) {
        if (handle == stream) {
            return letter == own ? "" : std::string(1, letter);
        }
    }
    return "?";
}

void Layout::addClips(const std::string& text)
{
    eachItem(text, [this](char row, std::int16_t seq, const std::string& word) { addClip(row, seq, word); });
}

void Layout::addClip(char row, std::int16_t seq, const std::string& item)
{
    Word word{item};
    const std::string name = word.letters();
    const bool isGap = word.takes('~');
    const Ms length = word.number();
    if (row == 'E') {
        moduleEdit::AddEffectClip({trackOf(row), isGap ? "0" : name.empty() ? "Blur" : name, length, seq});
    } else if (row == 'K') {
        const bool hasKey = word.takes('#');
        moduleEdit::AddTransitionClip({trackOf(row), isGap ? "0" : "DxtKey", length, 10, 20,
                                       static_cast<std::int16_t>(hasKey ? word.number() : 0), seq});
    } else if (isGap) {
        moduleEdit::AddSourceClip({trackOf(row), 0, 0, length, seq, -1, 0});
    } else {
        Ms mediaStart = 0, mediaStop = length;
        if (word.takes('=')) {
            word.range(mediaStart, mediaStop);
        }
        const int mode = word.takes('m') ? word.number() : 0;
        moduleEdit::AddSourceClip({trackOf(row), stream(name.empty() ? own(row) : name[0]), mediaStart, mediaStop, seq,
                                   length, static_cast<std::int16_t>(mode)});
    }
}

std::string Layout::clips() const
{
    std::string all;
    std::map<char, std::int16_t> places;
    char last = 0;
    const auto add = [&](char row, const auto& clip, const std::string& piece) {
        all += (all.empty() ? "" : " ") + (row == std::exchange(last, row) ? "" : std::string{row, ' '})
               + (clip.isGap() ? "~" + std::to_string(clip.gap()) : piece)
               + (clip.Seq == places[row] ? "" : "@" + std::to_string(clip.Seq));
        ++places[row];
    };
    for (const moduleEdit::SourceClip& clip : moduleEdit::SourceClips) {
        char row = 'V';
        for (const char other : {'O', 'A', 'B'}) {
            row = trackOf(other) == clip.Track ? other : row;
        }
        const bool isOddGap = clip.isGap() && (clip.MediaStart != 0 || clip.Length != -1 || clip.StretchMode != 0);
        add(row, clip,
            nameOf(clip.Stream, own(row)) + std::to_string(clip.Length)
                + sourceFacts(clip.Length, clip.MediaStart, clip.MediaStop, clip.StretchMode));
        all += isOddGap ? "?" : "";
    }
    for (const moduleEdit::EffectClip& clip : moduleEdit::EffectClips) {
        add('E', clip, (clip.Name == "Blur" ? "" : clip.Name) + std::to_string(clip.Length));
    }
    for (const moduleEdit::TransitionClip& clip : moduleEdit::TransitionClips) {
        add('K', clip,
            std::to_string(clip.Length) + (clip.Name.empty() ? "" : keyText(clip.KeyRed, clip.KeyGreen, clip.KeyBlue)));
    }
    return all;
}

} // namespace testsupport
