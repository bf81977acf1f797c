#include "edit/checked_run.h"

#include "app/edit_dump.h"
#include "app/edit_errors.h"
#include "app/edit_words.h"
#include "core/colours.h"
#include "core/forms/frmTools.h"
#include "editing/clipboard.h"
#include "edit/invariants.h"
#include "history/ModuleHistory.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <chrono>

namespace edit_test {

namespace {

std::vector<std::string> wordsOf(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

Row rowNamed(const std::string& name) { return static_cast<Row>(app::trackNamed(name).value()); }

/// History as the program has it, in the model's text.
std::string historyNow()
{
    std::string all =
        std::to_string(ModuleHistory::HistoryIndex) + " of " + std::to_string(ModuleHistory::HistoryCollection.Count()) + ":";
    for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
        const std::string face = row.Text + "/" + row.Picture;
        all += row.ForeColor == colours::kButtonFace ? " (" + face + ")" : " " + face;
    }
    return all;
}

/// The records of the run that a paste would take.
template <class Record, class ToItem>
std::vector<Clip> runOf(const std::vector<Record>& records, std::int32_t last, ToItem toItem)
{
    std::vector<Clip> run;
    for (std::int32_t i = last == -1 ? 0 : last - records[static_cast<std::size_t>(last)].Seq; i <= last; ++i) {
        const Record& record = records[static_cast<std::size_t>(i)];
        run.push_back({toItem(record), record.Seq, record.isGap()});
    }
    return run;
}

/// Whether the transitions lie on the clipboard as their overlays do; gaps may differ, which is meant.
bool areKeysPastedInStep()
{
    const auto lengthsOf = [](const auto& records, std::int32_t last) {
        std::vector<std::int64_t> lengths;
        for (std::int32_t i = last == -1 ? 0 : last - records[static_cast<std::size_t>(last)].Seq; i <= last; ++i) {
            const auto& record = records[static_cast<std::size_t>(i)];
            lengths.push_back(record.isGap() ? -record.gap() : record.Length);
        }
        return lengths;
    };
    const engine::Handle track = app::handleOf(app::EditTrack::kOverlay);
    return lengthsOf(moduleEdit::SourceClips, moduleEdit::LastSourceClip(track))
           == lengthsOf(moduleEdit::TransitionClips, moduleEdit::LastTransitionClip(track));
}

} // namespace

CheckedRun::CheckedRun() : session_(messages_) { readNow(); }

std::string CheckedRun::run(const std::string& line)
{
    const std::vector<std::string> words = wordsOf(line);
    if (words.empty()) {
        return {};
    }
    PlainTimeline told = now_;
    historyWord_.clear();
    isStored_ = false;
    image_.reset();
    tell(words, told);
    const bool mayLose = mayLoseStep(words.front());
    app::runLine(session_, line, messages_);
    readNow();
    if (isStored_) {
        history_.store(text_);
    }
    std::string wrong = wrongNow(words, told);
    const bool inStep = wrongInKeys(app::readTimeline(session_)).empty();
    if (keysInStep_ && !inStep && !mayLose) {
        wrong += "an overlay and its transition are out of step\n";
    }
    keysInStep_ = inStep;
    return wrong;
}

void CheckedRun::tell(const std::vector<std::string>& words, PlainTimeline& told)
{
    const std::string& word = words.front();
    const auto number = [&](std::size_t at) { return std::stoi(words.at(at)); };
    const auto name = [&](std::size_t at) { return *std::ranges::find(media_, words.at(at), &Media::name); };
    const auto command = [&](const char* history, Outcome outcome) { tellCommand(history, told, outcome); };
    if (word == "media") {
        media_.push_back({words[1], number(2), words[3].starts_with('v'), words[3].ends_with('a')});
    } else if (word == "put") {
        put(told, rowNamed(words[1]), {number(3), number(4), number(5), number(6), words[2]});
    } else if (word == "effect") {
        putEffect(told, {number(2), number(3), 0, 0, words[1]});
    } else if (word == "add") {
        command("AddToTimeline", add(told, name(1)));
    } else if (word == "overlay") {
        command("Overlay", addOverlay(told, name(1)));
    } else if (word == "add-effect") {
        command("Effect", addEffect(told, words[1]));
    } else if (word == "cut") {
        command("Cut", edit(told, Edit::kCut));
    } else if (word == "copy") {
        command("Copy", edit(told, Edit::kCopy));
    } else if (word == "delete") {
        command("Delete", edit(told, Edit::kDelete));
    } else if (word == "crop") {
        command("Crop", edit(told, Edit::kCrop));
    } else if (word == "crop-sources") {
        command("CropSources", edit(told, Edit::kCropSources));
    } else if (word == "paste") {
        command("Paste", paste(told));
    } else if (word == "pack") {
        command("Pack", pack(told));
    } else if (word == "restore") {
        command("Restore", restoreSize(told));
    } else if (word == "repeat") {
        const Outcome outcome = repeatAudio(told);
        history_.begin("Repeat", text_);
        if (outcome == Outcome::kDone) {
            history_.bringIntoForce();
        }
        isStored_ = true;
    } else if (word == "split") {
        command("Split", split(told));
    } else if (word == "clear") {
        command("Clear", clearAll(told));
    } else if (word == "clear-effects") {
        command("Clear Effects", clearRow(told, kEffects));
    } else if (word == "clear-overlays") {
        command("Clear Overlays", clearRow(told, kOverlay));
    } else if (word == "drag") {
        drag(told, rowNamed(words[1]), number(2), number(3));
        historyWord_ = "Move";
    } else if (word == "resize") {
        resize(told, rowNamed(words[1]), number(2), number(3));
        historyWord_ = "Resize";
    } else if (word == "nudge") {
        nudge(told, number(1));
    } else if (word == "shuffle") {
        command("Shuffle", shuffle(told, rowNamed(words[1]), number(2), number(3)));
    } else if (word == "change-track") {
        command("Shuffle", changeTrack(told, rowNamed(words[1]), number(2), rowNamed(words[3]), number(4)));
    } else if (word == "undo") {
        tellStep(history_.undoFromMenu());
    } else if (word == "redo") {
        tellStep(history_.redoFromMenu());
    } else if (word == "jump") {
        tellStep(history_.click(number(1)));
    }
}

void CheckedRun::tellCommand(const std::string& word, PlainTimeline&, Outcome outcome)
{
    if (outcome == Outcome::kNothing) {
        return;
    }
    history_.begin(word, text_);
    if (outcome == Outcome::kDone) {
        history_.bringIntoForce();
    } else {
        history_.takeBack();
    }
    isStored_ = true;
}

void CheckedRun::tellStep(std::optional<std::string> image) { image_ = image.value_or(text_); }

std::string CheckedRun::wrongNow(const std::vector<std::string>& words, const PlainTimeline& told)
{
    std::string wrong;
    const app::LaidTimeline laid = app::readTimeline(session_);
    if (image_) {
        wrong += *image_ == text_ ? "" : "it brought back\n" + text_ + "  instead of\n" + *image_;
    } else {
        wrong += wrongInItems(now_, told);
    }
    wrong += wrongInClipboard(now_, told) + wrongInOrder(laid) + wrongInList(laid) + wrongInLinks()
             + wrongInErrors(app::takeLoggedErrors());
    if (const std::string history = historyNow(); history != history_.text()) {
        wrong += "the history holds " + history + "\n  instead of " + history_.text() + "\n";
    }
    return wrong;
}

} // namespace edit_test
