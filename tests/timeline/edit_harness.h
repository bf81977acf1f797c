#pragma once

// The timeline's harness for commands: a layout laid from a line of text and read back as one.
//
//     V 0-1000 2000-3000=5-705* E 500-900 O 0-900#30 A 0-500 B
//
// Rows Video, Effects, Overlays, Audio 1, Audio 2; timeline times in ms, "=" the media times where they are not 0 to
// the length, "m" the stretch mode, "#" the blue of an overlay's key, "!" the times of its transition where they are
// not the overlay's, "*" selected.

#include "history/history_harness.h"
#include "shell/track_menu.h"

#include <sstream>

namespace timeline_test {

class EditTest : public history_test::HistoryTest {
protected:
    /// In place of what lies on the tracks; the history is emptied.
    void lay(const std::string& layout)
    {
        ModuleHistory::EmptyTimeline();
        ModuleHistory::EmptyHistory();
        std::istringstream words(layout);
        char row = 0;
        for (std::string word; words >> word;) {
            if (std::isupper(static_cast<unsigned char>(word[0])) != 0) {
                row = word[0];
            } else {
                put(row, word);
            }
        }
        UpdateTreeView();
        moduleScaleRenderer::AdjustScroll();
        state::ProjectModified = false;
        ASSERT_EQ(text(), layout);
    }

    std::string text()
    {
        std::string all;
        for (const char row : {'V', 'E', 'O', 'A', 'B'}) {
            all += (all.empty() ? "" : " ") + std::string(1, row);
            for (std::int16_t seq = 0;; ++seq) {
                const std::string item = row == 'E' ? effect(seq) : source(row, seq);
                if (item.empty()) {
                    break;
                }
                all += " " + item;
            }
        }
        return all;
    }

    struct Case {
        const char* what;
        const char* before;
        std::function<void()> operation;
        const char* after;
    };
    /// Before, after, undone and redone, which leaves nothing selected.
    void run(const Case& c)
    {
        SCOPED_TRACE(c.what);
        lay(c.before);
        c.operation();
        EXPECT_EQ(text(), c.after);
        if (std::string_view(c.before) == c.after) {
            return;
        }
        EXPECT_TRUE(state::ProjectModified);
        EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
        ModuleHistory::OnEditUndoClick();
        EXPECT_EQ(text(), unselected(c.before)) << "undone";
        ModuleHistory::OnEditRedoClick();
        EXPECT_EQ(text(), unselected(c.after)) << "redone";
    }

    static std::string unselected(std::string layout)
    {
        std::erase(layout, '*');
        return layout;
    }
    Handle trackOf(char row) const
    {
        return row == 'O' ? state::OverlayTrack : row == 'A' ? audio(1) : row == 'B' ? audio(2) : video();
    }
    static void lock(CheckBox& box, bool isLocked = true) { box.Value = static_cast<std::int16_t>(isLocked ? 1 : 0); }

private:
    using Ms = Milliseconds;

    static std::string range(Ms start, Ms stop) { return std::to_string(start) + "-" + std::to_string(stop); }

    void put(char row, const std::string& word)
    {
        Ms start = 0, stop = 0, mediaStart = 0, mediaStop = 0;
        std::sscanf(word.c_str(), "%d-%d", &start, &stop);
        const auto mark = [&](char which) { return word.find(which) == word.npos ? nullptr : &word[word.find(which)]; };
        const bool hasMedia = mark('=') != nullptr && std::sscanf(mark('='), "=%d-%d", &mediaStart, &mediaStop) == 2;
        const Handle track = trackOf(row);
        const engine::Bool16 selected = engine::toBool16(mark('*') != nullptr);
        std::int16_t seq = 0;
        engine::Bool16 ok = engine::kFalse;
        if (row == 'E') {
            check(timelineCalls->GetEffectCount(track, seq));
            check(timelineCalls->InsertEffect(track, "Blur", seq, start, stop, 0, ok));
            check(timelineCalls->SetEffectSelected(track, seq, selected));
            return;
        }
        check(timelineCalls->GetSourceCount(track, seq));
        check(timelineCalls->InsertSource(track, row == 'A' || row == 'B' ? sound : still, seq, start, stop, ok));
        check(timelineCalls->SetSourceMediaTimes(track, seq, mediaStart, hasMedia ? mediaStop : stop - start, ok));
        if (mark('m') != nullptr) {
            check(timelineCalls->SetSourceStretchMode(track, seq, static_cast<std::int16_t>(mark('m')[1] - '0')));
        }
        check(timelineCalls->SetSourceSelected(track, seq, selected));
        if (row == 'O') {
            int blue = 0;
            std::sscanf(mark('#'), "#%d", &blue);
            check(timelineCalls->AddTransitionAt(track, "DxtKey", start, stop, ok));
            check(keyCalls->SetKeyColor(track, seq, 10, 20, static_cast<std::int16_t>(blue), ok));
            check(timelineCalls->SetTransitionSelected(track, seq, selected));
        }
    }

    std::string source(char row, std::int16_t seq)
    {
        const Handle track = trackOf(row);
        Ms start = 0, stop = 0, mediaStart = 0, mediaStop = 0;
        engine::Bool16 ok = engine::kFalse, selected = engine::kFalse;
        check(timelineCalls->GetSourceTimes(track, seq, start, stop, ok));
        if (ok == engine::kFalse) {
            return {};
        }
        check(timelineCalls->GetSourceMediaTimes(track, seq, mediaStart, mediaStop, ok));
        check(timelineCalls->IsSourceSelected(track, seq, selected));
        std::int16_t mode = 0;
        check(timelineCalls->GetSourceStretchMode(track, seq, mode));
        std::string all = range(start, stop);
        all += mediaStart == 0 && mediaStop == stop - start ? "" : "=" + range(mediaStart, mediaStop);
        all += mode == 0 ? "" : "m" + std::to_string(mode);
        return all + (row == 'O' ? key(seq, start, stop) : "") + (selected != engine::kFalse ? "*" : "");
    }

    std::string key(std::int16_t seq, Ms start, Ms stop)
    {
        Ms from = 0, to = 0;
        engine::Bool16 ok = engine::kFalse;
        std::int16_t red = 0, green = 0, blue = 0;
        check(timelineCalls->GetTransitionTimes(state::OverlayTrack, seq, from, to, ok));
        check(keyCalls->GetKeyRed(state::OverlayTrack, seq, red));
        check(keyCalls->GetKeyGreen(state::OverlayTrack, seq, green));
        check(keyCalls->GetKeyBlue(state::OverlayTrack, seq, blue));
        EXPECT_EQ(red + green, ok != engine::kFalse ? 30 : 0);
        return "#" + std::to_string(blue) + (from == start && to == stop ? "" : "!" + range(from, to));
    }

    std::string effect(std::int16_t seq)
    {
        Ms start = 0, stop = 0;
        engine::Bool16 ok = engine::kFalse, selected = engine::kFalse;
        check(timelineCalls->GetEffectTimes(video(), seq, start, stop, ok));
        check(timelineCalls->IsEffectItemSelected(video(), seq, selected));
        return ok == engine::kFalse ? std::string() : range(start, stop) + (selected != engine::kFalse ? "*" : "");
    }
};

} // namespace timeline_test
