#pragma once

// The edit commands over the real engine: the whole timeline and the clipboard as text, read and written alike.
//
//     "V A0-1000 B3000-4000[500-1500]x2! | E Blur500-900 | O C0-900#7 | 1 S0-700 | 2 T0-700"
//
// Rows with items only: Video, Effects, Overlay, Audio 1 and 2. Of a source: stream, timeline ms, media ms when they
// are not 0 to its length, stretch mode, the blue of its key (with the transition's times when they differ), "!"
// selected.
//
//     "V/0 ~500, V/1 A1000[200-1200]x2, E/0 Blur300, K/0 1000#7"
//
// The clipboard: row (K: the transitions) and place in the run, then the piece with its length, or "~" and a gap's.

#include "core/forms/frmTools.h"
#include "core/upcalls.h"
#include "editing/clipboard.h"
#include "editing/moduleEdit.h"
#include "engine/ITWKeyTransition.h"
#include "history/ModuleHistory.h"
#include "shell/edit_commands.h"
#include "timeline/timeline_harness.h"

#include <map>
#include <sstream>

// GCC 12 takes the library's own code for uninitialized when sanitizers are in it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <regex>
#pragma GCC diagnostic pop

namespace editing_test {

using engine::check;
using engine::Handle;
using engine::Milliseconds;

class EditTest : public timeline_test::TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        ModuleHistory::EmptyHistory();
        clear();
        for (const auto& [letter, name] : {std::pair{'A', "still.bmp"},
                                           {'B', "still.gif"},
                                           {'C', "still.jpg"},
                                           {'D', "still.png"},
                                           {'S', "stereo-44k.wav"},
                                           {'T', "stereo-48k.wav"}}) {
            streams[letter] = stream(name);
        }
    }
    void TearDown() override
    {
        ModuleHistory::EmptyHistory();
        clear();
        TimelineTest::TearDown();
    }
    static void clear()
    {
        moduleEdit::ClearSourceClips();
        moduleEdit::ClearEffectClips();
        moduleEdit::ClearTransitionClips();
    }

    static Handle trackOf(char row)
    {
        return row == 'O' || row == 'K' ? state::OverlayTrack : row == '1' ? audio(1) : row == '2' ? audio(2) : video();
    }

    /// In place of whatever lies on the tracks; the history is empty then.
    void lay(const std::string& text)
    {
        ModuleHistory::EmptyTimeline();
        ModuleHistory::EmptyHistory();
        const std::regex item(R"(([A-Za-z]+)(\d+)-(\d+)(?:\[(-?\d+)-(-?\d+)\])?(?:x(\d))?(?:#(\d+))?(!)?)");
        std::istringstream words(text);
        char row = ' ';
        for (std::string word; words >> word;) {
            std::smatch m;
            if (std::regex_match(word, m, item)) {
                put(row, m);
            } else {
                row = word[0];
            }
        }
        ASSERT_EQ(this->text(), text);
    }
    std::string text()
    {
        std::string all;
        for (const char row : {'V', 'E', 'O', '1', '2'}) {
            const std::string items = row == 'E' ? effects() : sources(row);
            all += items.empty() ? "" : (all.empty() ? "" : " | ") + (row + items);
        }
        return all;
    }

    void fill(const std::string& text)
    {
        clear();
        const std::regex piece(R"((.)/(\d+) (~?)([A-Za-z]*)(\d+)(?:\[(-?\d+)-(-?\d+)\])?(?:x(\d))?(?:#(\d+))?)");
        for (std::sregex_iterator it(text.begin(), text.end(), piece), end; it != end; ++it) {
            addClip(*it);
        }
        ASSERT_EQ(clipboard(), text);
    }
    std::string clipboard() const
    {
        std::string all;
        const auto add = [&](char row, std::int16_t seq, bool isGap, const std::string& name, Milliseconds length) {
            all += (all.empty() ? "" : ", ") + std::string(1, row) + "/" + std::to_string(seq) + " "
                   + (isGap ? "~" : name) + std::to_string(length);
        };
        for (const moduleEdit::SourceClip& clip : moduleEdit::SourceClips) {
            EXPECT_TRUE(!clip.isGap() || (clip.MediaStart == 0 && clip.Length == -1 && clip.StretchMode == 0));
            add(rowOf(clip.Track), clip.Seq, clip.isGap(), letterOf(clip.Stream),
                clip.isGap() ? clip.gap() : clip.Length);
            if (!clip.isGap()) {
                all += media(clip.MediaStart, clip.MediaStop, clip.Length) + mode(clip.StretchMode);
            }
        }
        for (const moduleEdit::EffectClip& clip : moduleEdit::EffectClips) {
            add('E', clip.Seq, clip.isGap(), clip.Name, clip.Length);
        }
        for (const moduleEdit::TransitionClip& clip : moduleEdit::TransitionClips) {
            add('K', clip.Seq, clip.isGap(), "", clip.Length);
            all += clip.isGap() ? "" : "#" + std::to_string(clip.KeyBlue);
        }
        return all;
    }

    /// Words: Lv Le Lo L1 L2 lock, -v -e -o -1 -2 unlink. All other rows are unlocked and linked.
    void setRows(const std::string& text)
    {
        moduleTimeline::ReInitLinkLockDisable();
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            const auto box = [&](CheckBox& v, CheckBox& e, CheckBox& o, CheckBox& a1, CheckBox& a2) -> CheckBox& {
                const std::map<char, CheckBox*> boxes{{'v', &v}, {'e', &e}, {'o', &o}, {'1', &a1}, {'2', &a2}};
                return *boxes.at(word[1]);
            };
            if (word[0] == 'L') {
                box(form.chkLockVideo[0], form.chkLockEffect[0], form.chkLockOverlay[0], form.chkLockAudio[0],
                    form.chkLockAudio[1])
                    .Value = std::int16_t{1};
            } else {
                box(form.chkLinkVideo[0], form.chkLinkEffect[0], form.chkLinkOverlay[0], form.chkLinkAudio[0],
                    form.chkLinkAudio[1])
                    .Value = std::int16_t{0};
            }
        }
    }
    /// A selection between two times, in steps of 10 ms.
    void select(Milliseconds from, Milliseconds to) { showSelection(from / 10 - 5, to / 10 - 5); }

    static std::string bare(std::string text)
    {
        std::erase(text, '!');
        return text;
    }
    /// The present timeline is `after`; an undo gives `before`, a redo this again. Selected flags are lost on the way.
    void expectStep(const std::string& before, const std::string& after)
    {
        EXPECT_EQ(text(), after);
        ModuleHistory::OnEditUndoClick();
        EXPECT_EQ(text(), bare(before)) << "undone";
        ModuleHistory::OnEditRedoClick();
        EXPECT_EQ(text(), bare(after)) << "redone";
    }

    std::map<char, Handle> streams;

private:
    static Milliseconds number(const std::ssub_match& digits) { return digits.matched ? std::stoi(digits) : 0; }

    void put(char row, const std::smatch& m)
    {
        engine::Bool16 ok = engine::kFalse;
        const Handle track = trackOf(row);
        const Milliseconds start = number(m[2]);
        const Milliseconds stop = number(m[3]);
        std::int16_t seq = 0;
        if (row == 'E') {
            check(timelineCalls->GetEffectCount(track, seq));
            putEffect(start, stop, m[1].str().c_str());
            check(timelineCalls->SetEffectSelected(track, seq, engine::toBool16(m[8].matched)));
            return;
        }
        check(timelineCalls->GetSourceCount(track, seq));
        check(timelineCalls->InsertSource(track, streams.at(m[1].str()[0]), seq, start, stop, ok));
        check(timelineCalls->SetSourceMediaTimes(track, seq, number(m[4]), m[5].matched ? number(m[5]) : stop - start,
                                                 ok));
        check(timelineCalls->SetSourceStretchMode(track, seq, static_cast<std::int16_t>(number(m[6]))));
        check(timelineCalls->SetSourceSelected(track, seq, engine::toBool16(m[8].matched)));
        if (m[7].matched) {
            check(timelineCalls->AddTransitionAt(track, "DxtKey", start, stop, ok));
            check(keyCalls->SetKeyColor(track, seq, 1, 2, static_cast<std::int16_t>(number(m[7])), ok));
        }
    }

    static std::string media(Milliseconds start, Milliseconds stop, Milliseconds length)
    {
        return start == 0 && stop == length ? "" : "[" + std::to_string(start) + "-" + std::to_string(stop) + "]";
    }
    static std::string mode(std::int16_t mode) { return mode == 0 ? "" : "x" + std::to_string(mode); }
    std::string letterOf(Handle stream) const
    {
        for (const auto& [letter, handle] : streams) {
            if (handle == stream) {
                return {letter};
            }
        }
        return "?";
    }
    static char rowOf(Handle track)
    {
        return track == video() ? 'V' : track == state::OverlayTrack ? 'O' : track == audio(1) ? '1' : '2';
    }

    std::string sources(char row)
    {
        const Handle track = trackOf(row);
        std::string all;
        Milliseconds a = 0, b = 0, c = 0, d = 0;
        engine::Bool16 ok = engine::kFalse;
        for (std::int16_t seq = 0; check(timelineCalls->GetSourceTimes(track, seq, a, b, ok)), ok != 0; ++seq) {
            Handle stream = 0;
            std::int16_t stretch = 0;
            engine::Bool16 selected = engine::kFalse;
            check(timelineCalls->GetSourceMediaTimes(track, seq, c, d, ok));
            check(timelineCalls->GetSourceStream(track, seq, stream));
            check(timelineCalls->GetSourceStretchMode(track, seq, stretch));
            check(timelineCalls->IsSourceSelected(track, seq, selected));
            all += " " + letterOf(stream) + std::to_string(a) + "-" + std::to_string(b) + media(c, d, b - a)
                   + mode(stretch) + key(track, seq, a, b) + (selected != 0 ? "!" : "");
        }
        return all;
    }
    std::string key(Handle track, std::int16_t seq, Milliseconds start, Milliseconds stop)
    {
        Milliseconds a = 0, b = 0;
        engine::Bool16 ok = engine::kFalse;
        std::int16_t blue = 0;
        check(timelineCalls->GetTransitionTimes(track, seq, a, b, ok));
        check(keyCalls->GetKeyBlue(track, seq, blue));
        const bool isLevel = a == start && b == stop;
        return ok == 0
                   ? ""
                   : "#" + std::to_string(blue) + (isLevel ? "" : "@" + std::to_string(a) + "-" + std::to_string(b));
    }
    std::string effects()
    {
        std::string all;
        Milliseconds a = 0, b = 0;
        engine::Bool16 ok = engine::kFalse;
        for (std::int16_t seq = 0; check(timelineCalls->GetEffectTimes(video(), seq, a, b, ok)), ok != 0; ++seq) {
            std::string name(10, ' ');
            engine::Bool16 selected = engine::kFalse;
            check(timelineCalls->GetEffectName(video(), seq, name));
            check(timelineCalls->IsEffectItemSelected(video(), seq, selected));
            all += " " + name.substr(0, name.find(' ')) + std::to_string(a) + "-" + std::to_string(b)
                   + (selected != 0 ? "!" : "");
        }
        return all;
    }

    void addClip(const std::smatch& m)
    {
        const char row = m[1].str()[0];
        const auto seq = static_cast<std::int16_t>(number(m[2]));
        const bool isGap = m[3].length() > 0;
        const Milliseconds length = number(m[5]);
        if (row == 'E') {
            moduleEdit::AddEffectClip({video(), isGap ? "0" : m[4].str(), length, seq});
        } else if (row == 'K') {
            const auto blue = static_cast<std::int16_t>(number(m[9]));
            moduleEdit::AddTransitionClip({trackOf(row), isGap ? "0" : "DxtKey", length, 0, 0, blue, seq});
        } else if (isGap) {
            moduleEdit::AddSourceClip({trackOf(row), 0, 0, length, seq, -1, 0});
        } else {
            moduleEdit::AddSourceClip({trackOf(row), streams.at(m[4].str()[0]), number(m[6]),
                                       m[7].matched ? number(m[7]) : length, seq, length,
                                       static_cast<std::int16_t>(number(m[8]))});
        }
    }
};

} // namespace editing_test
