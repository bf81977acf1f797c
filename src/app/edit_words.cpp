#include "app/edit_words.h"

#include "app/edit_dump.h"
#include "app/edit_hand.h"
#include "app/edit_media.h"
#include "app/edit_movie.h"
#include "app/edit_operands.h"
#include "app/edit_tools.h"
#include "history/ModuleHistory.h"
#include "journal/journal.h"
#include "shell/edit_commands.h"
#include "shell/track_menu.h"

#include <algorithm>
#include <istream>
#include <ostream>
#include <sstream>

namespace app {

using engine::Milliseconds;
using items::ItemTimes;

namespace {

struct Word {
    std::string_view name;
    std::string_view takes; // as the help shows it: a word an operand
    void (*run)(EditSession& session, Operands& operands);
    std::string_view does;
};

/// A command without operands.
template <void (*Command)()>
void plain(EditSession&, Operands&)
{
    Command();
}

/// One that can be a file's.
const std::string& plainName(Operands& operands)
{
    const std::string& name = operands.word();
    const auto isPlain = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_' || c == '-'; };
    if (!std::ranges::all_of(name, isPlain)) {
        throw WrongWords("a name is made of letters, digits, \"_\" and \"-\"");
    }
    return name;
}

void openMedia(EditSession& session, Operands& operands)
{
    const std::string& name = plainName(operands);
    const std::int32_t lengthMs = operands.number(1, kLongestMediaMs);
    const std::string& kinds = operands.word();
    if (kinds != "v" && kinds != "a" && kinds != "va") {
        throw WrongWords("\"" + kinds + "\" is not v, a or va");
    }
    session.openMedia(name, lengthMs, kinds.starts_with('v'), kinds.ends_with('a'));
}

void addTitle(EditSession& session, Operands& operands) { session.addTitle(plainName(operands)); }

void put(EditSession& session, Operands& operands)
{
    const EditTrack track = operands.track();
    const std::string& name = operands.word();
    const ItemTimes times = operands.range();
    const Milliseconds mediaStart = operands.number();
    session.put(track, name, times, {mediaStart, operands.number()});
}

void putEffect(EditSession& session, Operands& operands)
{
    const std::string& name = operands.word();
    session.putEffect(name, operands.range());
}

void select(EditSession& session, Operands& operands)
{
    const EditTrack track = operands.track();
    session.select(track, operands.seq());
}

void lockTrack(EditSession& session, Operands& operands)
{
    const EditTrack track = operands.track();
    session.lock(track, operands.isOn());
}

void linkTrack(EditSession& session, Operands& operands)
{
    const EditTrack track = operands.track();
    session.link(track, operands.isOn());
}

void showRange(EditSession& session, Operands& operands)
{
    if (operands.count() == 1 && operands.isNext("off")) {
        session.showRange(std::nullopt);
    } else {
        session.showRange(operands.range());
    }
}

void dragItem(EditSession&, Operands& operands)
{
    const EditTrack track = operands.track();
    const std::int16_t seq = operands.seq();
    drag(track, seq, operands.number());
}

void resizeItem(EditSession&, Operands& operands)
{
    const EditTrack track = operands.track();
    const std::int16_t seq = operands.seq();
    resize(track, seq, operands.number());
}

/// Without operands to the slider, else by the hand.
template <void (*ToSlider)(), editing::ItemEnd End>
void trimItem(EditSession&, Operands& operands)
{
    if (operands.count() == 0) {
        ToSlider();
        return;
    }
    const EditTrack track = operands.track();
    const std::int16_t seq = operands.seq();
    trim(track, seq, End, operands.number());
}

void insertFile(EditSession& session, Operands& operands)
{
    const EditTrack track = operands.track();
    const std::string& name = operands.word();
    session.insert(track, name, operands.time());
}

void nudgeSelected(EditSession&, Operands& operands)
{
    const std::int32_t pixels = operands.number();
    if (pixels != -5 && pixels != -1 && pixels != 1 && pixels != 5) {
        throw WrongWords("a direction key moves by 5 pixels, or 1");
    }
    nudge(pixels);
}

void shuffleItems(EditSession&, Operands& operands)
{
    const EditTrack track = operands.track();
    const std::int32_t from = operands.number();
    shuffle(track, from, operands.number());
}

void changeTrackOf(EditSession&, Operands& operands)
{
    const EditTrack fromTrack = operands.track();
    const std::int32_t from = operands.number();
    const EditTrack toTrack = operands.track();
    changeTrack(fromTrack, from, toTrack, operands.number());
}

void keyColour(EditSession& session, Operands& operands)
{
    const std::int16_t seq = operands.seq();
    std::array<std::string, 3> colour;
    for (std::string& part : colour) {
        part = std::to_string(operands.number(0, 255));
    }
    setKeyColour(session, seq, colour);
}

void stretchMode(EditSession& session, Operands& operands)
{
    std::optional<OneItem> item;
    const bool isTracks = operands.isNext("tracks");
    if (isTracks || operands.isNext("selected")) {
        operands.word();
    } else {
        const EditTrack track = operands.track();
        item = OneItem{track, operands.seq()};
    }
    setStretchMode(session, item, isTracks, operands.number(0, 3));
}

void dump(EditSession& session, Operands& operands)
{
    operands.printed() << asText(readTimeline(session)) << historyText() << "." << std::endl;
}

// clang-format off
constexpr Word kWords[] = {
    {"media", "NAME MS KINDS", openMedia, "opens a generated file of that length; KINDS is v, a or va"},
    {"put", "TRACK NAME START STOP MEDIASTART MEDIASTOP", put, "lays a source, without history"},
    {"effect", "NAME START STOP", putEffect, "lays an effect, without history"},
    {"select", "TRACK SEQ", select, "adds an item to the selected ones"},
    {"deselect", "", [](EditSession& s, Operands&) { s.deselect(); }, "selects nothing"},
    {"lock", "TRACK on|off", lockTrack, "the track's lock box"},
    {"link", "TRACK on|off", linkTrack, "the track's link box"},
    {"slider", "MS", [](EditSession& s, Operands& o) { s.moveSlider(o.time()); }, "moves the position slider"},
    {"range", "START STOP|off", showRange, "shows the selection sliders, or hides them"},
    {"add", "NAME", [](EditSession& s, Operands& o) { s.addToTimeline(o.word()); }, "adds a file to the timeline"},
    {"overlay", "NAME", [](EditSession& s, Operands& o) { s.addToOverlay(o.word()); }, "adds a file as an overlay"},
    {"title", "NAME", addTitle, "writes the name as a title, and adds it as an overlay"},
    {"add-effect", "NAME", [](EditSession& s, Operands& o) { s.addEffect(o.word()); }, "adds an effect"},
    {"cut", "", plain<mdiTarnwick::mnuEditCut_Click>, "the commands of the menus:"},
    {"copy", "", plain<mdiTarnwick::mnuEditCopy_Click>, ""},
    {"paste", "", plain<mdiTarnwick::mnuEditPaste_Click>, ""},
    {"delete", "", plain<mdiTarnwick::mnuEditClear_Click>, ""},
    {"crop", "", plain<mdiTarnwick::mnuEditCrop_Click>, ""},
    {"crop-sources", "", plain<mdiTarnwick::mnuEditCropSources_Click>, ""},
    {"pack", "", plain<mdiTarnwick::mnuToolsPackTimelineBars_Click>, ""},
    {"restore", "", plain<mdiTarnwick::mnuEditRestoreSize_Click>, ""},
    {"repeat", "", plain<mdiTarnwick::mnuToolsRepeatAudio_Click>, ""},
    {"split", "", plain<mdiTarnwick::mnuToolsSplitTimeline_Click>, ""},
    {"clear", "", plain<mdiTarnwick::mnuEditClearTimeline_Click>, ""},
    {"clear-effects", "", plain<mdiTarnwick::mnuEditClearEffect_Click>, ""},
    {"clear-overlays", "", plain<mdiTarnwick::mnuEditClearOverlay_Click>, ""},
    {"key-color", "SEQ RED GREEN BLUE", keyColour, "gives an overlay its key colour, 0 to 255 each"},
    {"stretch", "TRACK SEQ|selected|tracks MODE", stretchMode, "stretch mode: of one source, the selected, or all of their tracks"},
    {"drag", "TRACK SEQ MS", dragItem, "drags an item by its middle"},
    {"resize", "TRACK SEQ MS", resizeItem, "drags an item by its right end"},
    {"nudge", "PIXELS", nudgeSelected, "a direction key: -5, -1, 1 or 5"},
    {"trim-start", "TRACK SEQ MS", trimItem<mdiTarnwick::mnuEditTrimStart_Click, editing::ItemEnd::kStart>, "drags an item's start at its own speed; alone: to the slider"},
    {"trim-end", "TRACK SEQ MS", trimItem<mdiTarnwick::mnuEditTrimEnd_Click, editing::ItemEnd::kStop>, "the same of its end"},
    {"ripple-delete", "", plain<mdiTarnwick::mnuEditCloseGap_Click>, "deletes, and closes the gap"},
    {"insert", "TRACK NAME MS", insertFile, "puts a file in at that time; what follows moves on"},
    {"select-with-sound", "", plain<mdiTarnwick::mnuEditSelectWithSound_Click>, "selects what belongs to the selected ones"},
    {"shuffle", "TRACK FROM TO", shuffleItems, "drops an item of the list on another one; from 1"},
    {"change-track", "FROMTRACK SEQ TOTRACK PLACE", changeTrackOf, "drops an item on another track; from 1"},
    {"undo", "", plain<ModuleHistory::OnEditUndoClick>, "one step back"},
    {"redo", "", plain<ModuleHistory::OnEditRedoClick>, "one step forward"},
    {"jump", "ROW", [](EditSession&, Operands& o) { clickHistory(o.number()); }, "clicks on a row of the history, from 1"},
    {"say", "TEXT", [](EditSession&, Operands& o) { o.printed() << o.word() << std::endl; }, "prints a word"},
    {"save", "PATH", [](EditSession& s, Operands& o) { s.saveProject(o.word()); }, "saves the project under that name"},
    {"open", "PATH", [](EditSession& s, Operands& o) { s.openProject(o.word()); }, "opens a project, unsaved work goes"},
    {"movie", "PATH", [](EditSession&, Operands& o) { saveMovie(o.word()); }, "saves the timeline as a movie, by its ending"},
    {"dump", "", dump, "prints the timeline and the history"},
};
// clang-format on

std::vector<std::string> wordsOf(std::string_view line)
{
    std::istringstream stream{std::string(line.substr(0, line.find('#')))};
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(std::move(word));
    }
    return words;
}

bool takesThatMany(const Word& word, std::size_t count)
{
    const auto most = word.takes.empty() ? 0 : std::ranges::count(word.takes, ' ') + 1;
    return static_cast<std::ptrdiff_t>(count) == most || (word.name == "range" && count == 1)
           || (word.name == "stretch" && count == 2) || (word.name.starts_with("trim-") && count == 0);
}

std::string usageOf(const Word& word)
{
    return std::string(word.name) + (word.takes.empty() ? "" : " ") + std::string(word.takes);
}

} // namespace

void runLine(EditSession& session, std::string_view line, std::ostream& printed)
{
    std::vector<std::string> words = wordsOf(line);
    if (words.empty()) {
        return;
    }
    const auto* const word = std::ranges::find(kWords, words.front(), &Word::name);
    if (word == std::end(kWords)) {
        throw WrongWords("there is no command called " + words.front());
    }
    words.erase(words.begin());
    if (!takesThatMany(*word, words.size())) {
        throw WrongWords("this is used as: " + usageOf(*word));
    }
    Operands operands(std::move(words), printed);
    word->run(session, operands);
    journal::noteTurn();
}

void runScript(EditSession& session, std::istream& script, std::ostream& printed, const volatile int& interrupted)
{
    int number = 0;
    for (std::string line; interrupted == 0 && std::getline(script, line);) {
        ++number;
        try {
            runLine(session, line, printed);
        } catch (const WrongWords& wrong) {
            throw WrongWords("line " + std::to_string(number) + ": " + wrong.what());
        }
    }
}

std::string wordsHelp()
{
    constexpr std::size_t kColumn = 48;
    std::string help;
    for (const Word& word : kWords) {
        std::string line = "  " + usageOf(word);
        if (!word.does.empty()) {
            line.resize(std::max(line.size() + 2, kColumn), ' ');
            line += word.does;
        }
        help += line + "\n";
    }
    return help;
}

} // namespace app
