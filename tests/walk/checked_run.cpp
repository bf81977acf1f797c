#include "walk/checked_run.h"

#include "app/edit_errors.h"
#include "app/edit_words.h"
#include "history/ModuleHistory.h"
#include "walk/invariants.h"
#include "walk/program_state.h"

#include <algorithm>
#include <chrono>

namespace walk_test {

namespace {

using Words = std::vector<std::string>;

/// A line as it is told.
struct Line {
    const Words& words;
    const std::vector<Media>& media;

    int number(std::size_t at) const { return std::stoi(words.at(at)); }
    Row row(std::size_t at) const { return static_cast<Row>(app::trackNamed(words.at(at)).value()); }
    const Media& file() const
    {
        const auto found = std::ranges::find(media, words.at(1), &Media::name);
        return found != media.end() ? *found : throw app::WrongWords("there is no file called " + words.at(1));
    }
};

struct Told {
    std::string_view word;
    std::string_view history;
    Outcome (*tell)(PlainTimeline& timeline, const Line& line);
};

using P = PlainTimeline;
using L = Line;

// clang-format off
constexpr Told kTold[] = {
    {"put", "", [](P& t, const L& l) { return put(t, l.row(1), {l.number(3), l.number(4), l.number(5), l.number(6), l.words[2]}); }},
    {"effect", "", [](P& t, const L& l) { return putEffect(t, {l.number(2), l.number(3), 0, 0, l.words[1]}); }},
    {"add", "AddToTimeline", [](P& t, const L& l) { return add(t, l.file()); }},
    {"overlay", "Overlay", [](P& t, const L& l) { return addOverlay(t, l.file()); }},
    {"add-effect", "Effect", [](P& t, const L& l) { return addEffect(t, l.words[1]); }},
    {"cut", "Cut", [](P& t, const L&) { return edit(t, Edit::kCut); }},
    {"copy", "Copy", [](P& t, const L&) { return edit(t, Edit::kCopy); }},
    {"delete", "Delete", [](P& t, const L&) { return edit(t, Edit::kDelete); }},
    {"crop", "Crop", [](P& t, const L&) { return edit(t, Edit::kCrop); }},
    {"crop-sources", "CropSources", [](P& t, const L&) { return edit(t, Edit::kCropSources); }},
    {"paste", "Paste", [](P& t, const L&) { return paste(t); }},
    {"pack", "Pack", [](P& t, const L&) { return pack(t); }},
    {"restore", "Restore", [](P& t, const L&) { return restoreSize(t); }},
    {"repeat", "Repeat", [](P& t, const L&) { return repeatAudio(t); }},
    {"split", "Split", [](P& t, const L&) { return split(t); }},
    {"clear", "Clear", [](P& t, const L&) { return clearAll(t); }},
    {"clear-effects", "Clear Effects", [](P& t, const L&) { return clearRow(t, kEffects); }},
    {"clear-overlays", "Clear Overlays", [](P& t, const L&) { return clearRow(t, kOverlay); }},
    {"drag", "Move", [](P& t, const L& l) { return drag(t, l.row(1), l.number(2), l.number(3)); }},
    {"resize", "Resize", [](P& t, const L& l) { return resize(t, l.row(1), l.number(2), l.number(3)); }},
    {"nudge", "", [](P& t, const L& l) { return nudge(t, l.number(1)); }},
    {"shuffle", "Shuffle", [](P& t, const L& l) { return shuffle(t, l.row(1), l.number(2), l.number(3)); }},
    {"change-track", "Shuffle", [](P& t, const L& l) { return changeTrack(t, l.row(1), l.number(2), l.row(3), l.number(4)); }},
};
// clang-format on

/// Times of transitions may part from their overlays': a paste leaves out other gaps between them, which is meant, and
/// a step in the history brings that back.
bool mayLoseStep(const std::string& word)
{
    return word == "undo" || word == "redo" || word == "jump" || (word == "paste" && !areKeysClippedAlike());
}

} // namespace

CheckedRun::CheckedRun() : session_(messages_) { readNow(); }

std::string CheckedRun::run(const std::string& line)
{
    Words words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    if (words.empty()) {
        return {};
    }
    PlainTimeline told = now_;
    const auto image = tell(words, told);
    const std::string textBefore = text_;
    const bool mustKeepStep = wrongInKeys(laid_).empty() && !mayLoseStep(words.front());
    app::runLine(session_, line, messages_);
    readNow();
    tellHistory(textBefore);
    markAdded(words.front());
    return wrongNow(told, image) + (mustKeepStep ? wrongInKeys(laid_) : "");
}

std::optional<std::string> CheckedRun::tell(const Words& words, PlainTimeline& told)
{
    const std::string& word = words.front();
    outcome_ = Outcome::kNothing;
    if (word == "undo" || word == "redo" || word == "jump") {
        const auto image = word == "undo"   ? history_.undoFromMenu()
                           : word == "redo" ? history_.redoFromMenu()
                                            : history_.click(std::stoi(words.at(1)));
        return image.value_or(text_);
    }
    const Line line{words, media_};
    if (word == "media") {
        media_.push_back({words.at(1), line.number(2), words.at(3).starts_with('v'), words.at(3).ends_with('a')});
    } else if (const auto* found = std::ranges::find(kTold, word, &Told::word); found != std::end(kTold)) {
        historyWord_ = found->history;
        outcome_ = found->tell(told, line);
    }
    return std::nullopt;
}

void CheckedRun::tellHistory(const std::string& textBefore)
{
    if (outcome_ == Outcome::kNothing) {
        return;
    }
    history_.begin(historyWord_, textBefore);
    if (outcome_ == Outcome::kIfChanged && text_ == textBefore) {
        history_.takeBack();
        return;
    }
    if (outcome_ != Outcome::kTakenBack && outcome_ != Outcome::kEntryOnly) {
        history_.bringIntoForce();
    }
    history_.store(text_);
}

/// What is new is told apart from now on, also by a redo of its adding.
void CheckedRun::markAdded(const std::string& word)
{
    if (word == "put" || word == "add" || word == "overlay") {
        markSources(laid_, session_.media());
    }
    if (outcome_ == Outcome::kDone && (word == "add" || word == "overlay")) {
        ModuleHistory::StoreCurrentTLImage();
    }
}

void CheckedRun::readNow()
{
    laid_ = app::readTimeline(session_);
    text_ = app::asText(laid_);
    now_ = plainNow(laid_, session_);
}

std::string CheckedRun::wrongNow(const PlainTimeline& told, const std::optional<std::string>& image) const
{
    std::string wrong;
    if (!image) {
        wrong += wrongInItems(now_, told);
    } else if (*image != text_) {
        wrong += "there is now\n" + text_ + "  instead of\n" + *image;
    }
    if (const std::string history = historyNow(); history != history_.text()) {
        wrong += "the history is " + history + "\n  instead of " + history_.text() + "\n";
    }
    return wrong + wrongInClipboard(now_, told) + wrongInOrder(laid_) + wrongInMarks(laid_, session_.media())
           + wrongInList(laid_) + wrongInLinks() + wrongInErrors(app::takeLoggedErrors());
}

std::optional<Failure> failureOf(const Script& script)
{
    CheckedRun run;
    for (std::size_t i = 0; i < script.size(); ++i) {
        if (const std::string wrong = run.run(script[i]); !wrong.empty()) {
            return Failure{i, wrong};
        }
    }
    return {};
}

Script shrunk(Script script, int seconds)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    for (std::size_t size = script.size() / 2; size > 0; size /= 2) {
        for (std::size_t at = 0; at < script.size() && std::chrono::steady_clock::now() < deadline;) {
            Script shorter = script;
            const auto from = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.erase(from, from + static_cast<std::ptrdiff_t>(std::min(size, script.size() - at)));
            std::optional<Failure> failure;
            try {
                failure = failureOf(shorter);
            } catch (const app::WrongWords&) { // a file that is not opened any more
            } catch (const std::exception& error) {
                failure = Failure{shorter.size() - 1, error.what()};
            }
            if (failure) {
                shorter.resize(failure->line + 1);
                script = shorter;
            } else {
                at += size;
            }
        }
    }
    return script;
}

std::string asText(const Script& script)
{
    std::string text;
    for (const std::string& line : script) {
        text += line + "\n";
    }
    return text;
}

} // namespace walk_test
