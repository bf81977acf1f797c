#pragma once

// The timeline's harness with the history over it: the whole timeline as text, commands, the list's rows.

#include "core/forms/frmTools.h"
#include "core/upcalls.h"
#include "engine/ITWKeyTransition.h"
#include "history/ModuleHistory.h"
#include "timeline/timeline_harness.h"

#include <functional>

namespace history_test {

using engine::check;
using engine::Handle;
using engine::Milliseconds;

class HistoryTest : public timeline_test::TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        ModuleHistory::EmptyHistory();
        still = stream("still.bmp");
        sound = stream("stereo-48k.wav");
    }
    void TearDown() override
    {
        ModuleHistory::EmptyHistory();
        TimelineTest::TearDown();
    }

    /// Behind what lies on the track; an overlay gets its key.
    void add(Handle track, Milliseconds start, Milliseconds stop, Milliseconds mediaStart = 0, int mode = 0)
    {
        engine::Bool16 ok = engine::kFalse;
        std::int16_t seq = 0;
        const bool isSound = track == audio(1) || track == audio(2);
        check(timelineCalls->GetSourceCount(track, seq));
        check(timelineCalls->InsertSource(track, isSound ? sound : still, seq, start, stop, ok));
        ASSERT_NE(ok, engine::kFalse);
        check(timelineCalls->SetSourceMediaTimes(track, seq, mediaStart, mediaStart + 700, ok));
        check(timelineCalls->SetSourceStretchMode(track, seq, static_cast<std::int16_t>(mode)));
        if (track == state::OverlayTrack) {
            check(timelineCalls->AddTransitionAt(track, "DxtKey", start, stop, ok));
            check(keyCalls->SetKeyParameter(track, seq, "KeyType", 0, ok));
            check(keyCalls->SetKeyColor(track, seq, 10, 20, static_cast<std::int16_t>(seq + 30), ok));
        }
    }

    /// All that an image holds, a word an item: "V 0-1000=0-700s3 E 500-900Blur O ... K 0-900DxtKey#10,20,30".
    std::string timeline()
    {
        return "V" + sources(video()) + " E" + effects() + " O" + sources(state::OverlayTrack) + " K" + keys() + " A"
               + sources(audio(1)) + " B" + sources(audio(2));
    }

    /// Captions of the rows with what is undone in brackets: "Cut (Paste)".
    static std::string rows()
    {
        std::string all;
        for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
            const bool isUndone = row.ForeColor == static_cast<std::int32_t>(0x8000000F);
            EXPECT_TRUE(isUndone || row.ForeColor == static_cast<std::int32_t>(0x80000008));
            all += (all.empty() ? "" : " ") + (isUndone ? "(" + row.Text + ")" : row.Text);
        }
        return all;
    }
    /// "rows | index/entries".
    static std::string history()
    {
        return rows() + " | " + std::to_string(ModuleHistory::HistoryIndex) + "/"
               + std::to_string(ModuleHistory::HistoryCollection.Count());
    }

    /// A command as all commands run; one that comes to nothing does not raise the index.
    static void command(std::string_view word, const std::function<void()>& operation, bool takesEffect = true)
    {
        ModuleHistory::RemoveDisabledEntries();
        ModuleHistory::AddOperationToHistory(word);
        operation();
        if (takesEffect) {
            ++ModuleHistory::HistoryIndex;
            ModuleHistory::RearrangeHistoryCollection();
        }
        ModuleHistory::StoreCurrentTLImage();
    }
    static void click(std::int32_t row)
    {
        forms::frmTools.lvwHistorySelected = row;
        ModuleHistory::OnHistoryListClick();
    }

    Handle still = 0;
    Handle sound = 0;

private:
    static std::string range(Milliseconds start, Milliseconds stop)
    {
        return std::to_string(start) + "-" + std::to_string(stop);
    }
    std::string sources(Handle track)
    {
        std::string all;
        engine::Bool16 ok = engine::kTrue;
        for (std::int16_t seq = 0;; ++seq) {
            Milliseconds a = 0, b = 0, c = 0, d = 0;
            check(timelineCalls->GetSourceTimes(track, seq, a, b, ok));
            if (ok == engine::kFalse) {
                return all;
            }
            check(timelineCalls->GetSourceMediaTimes(track, seq, c, d, ok));
            Handle stream = 0;
            std::int16_t mode = 0;
            engine::Bool16 selected = engine::kFalse;
            check(timelineCalls->GetSourceStream(track, seq, stream));
            check(timelineCalls->GetSourceStretchMode(track, seq, mode));
            check(timelineCalls->IsSourceSelected(track, seq, selected));
            all += " " + range(a, b) + "=" + range(c, d)
                   + (stream == still   ? "p"
                      : stream == sound ? "s"
                                        : "?")
                   + std::to_string(mode) + (selected != engine::kFalse ? "*" : "");
        }
    }
    std::string effects()
    {
        std::string all;
        for (std::int16_t seq = 0;; ++seq) {
            Milliseconds a = 0, b = 0;
            engine::Bool16 ok = engine::kFalse;
            check(timelineCalls->GetEffectTimes(video(), seq, a, b, ok));
            if (ok == engine::kFalse) {
                return all;
            }
            std::string name(10, ' ');
            check(timelineCalls->GetEffectName(video(), seq, name));
            all += " " + range(a, b) + name.substr(0, name.find_last_not_of(' ') + 1);
        }
    }
    std::string keys()
    {
        std::string all;
        const Handle track = state::OverlayTrack;
        for (std::int16_t seq = 0;; ++seq) {
            Milliseconds a = 0, b = 0;
            engine::Bool16 ok = engine::kFalse;
            check(timelineCalls->GetTransitionTimes(track, seq, a, b, ok));
            if (ok == engine::kFalse) {
                return all;
            }
            std::string name(10, ' ');
            std::int16_t red = 0, green = 0, blue = 0;
            check(timelineCalls->GetTransitionName(track, seq, name));
            check(keyCalls->GetKeyRed(track, seq, red));
            check(keyCalls->GetKeyGreen(track, seq, green));
            check(keyCalls->GetKeyBlue(track, seq, blue));
            all += " " + range(a, b) + name.substr(0, name.find_last_not_of(' ') + 1) + "#" + std::to_string(red) + ","
                   + std::to_string(green) + "," + std::to_string(blue);
        }
    }
};

} // namespace history_test
