// make-keys-page: the help's page of keys, from the tables of the menus and of the panels. The build runs it.
//
// The page in the source tree has two marks, which give way to the rows of its two tables.

#include "shell/command_help.h"
#include "shell/key_table.h"
#include "shell/menu_table.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

/// What the caption of a command does not say.
struct Addition {
    std::string_view menu;
    std::string_view text;
};

constexpr Addition kAdditions[] = {
    {"mnuFilePreview", "opens the selected file in the desktop's own program"},
    {"mnuEditStartSel", "the range begins at the slider"},
    {"mnuEditEndSel", "the range ends at the slider"},
    {"mnuToolsTrimMode", "while it is on, both ends of a bar trim"},
    {"mnuViewSelectionSliders", "shows or hides the range"},
};

std::string read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string between(const std::string& text, std::string_view from, std::string_view to)
{
    const std::size_t start = text.find(from);
    const std::size_t end = text.find(to, start);
    if (start == std::string::npos || end == std::string::npos) {
        throw std::runtime_error("no " + std::string(from));
    }
    return text.substr(start + from.size(), end - start - from.size());
}

/// "Open File" of "Open &File...".
std::string plain(std::string_view caption)
{
    std::string text;
    for (const char c : caption) {
        text += c == '&' ? "" : std::string(1, c);
    }
    return text.ends_with("...") ? text.substr(0, text.size() - 3) : text;
}

std::string keysOf(std::string_view keys)
{
    std::string text;
    while (!keys.empty()) {
        const std::string_view key = keys.substr(0, keys.find(' '));
        text += (text.empty() ? "<kbd>" : " <kbd>") + std::string(key) + "</kbd>";
        keys.remove_prefix(std::min(keys.size(), key.size() + 1));
    }
    return text;
}

std::string rowOf(std::string_view first, std::string_view second, std::string_view third)
{
    std::string row = "<tr>";
    for (const std::string_view cell : {first, second, third}) {
        row += "<td>" + std::string(cell) + "</td>";
    }
    return row + "</tr>\n";
}

std::string commands(const std::string& helpFolder)
{
    std::string rows;
    for (const shell::MenuRow& row : shell::menuBar()) {
        const std::string_view second = shell::secondKeyOf(row.name);
        if (!row.hasCommand() || (row.shortcut.empty() && second.empty())) {
            continue;
        }
        const std::string keys =
            keysOf(std::string(row.shortcut) + (row.shortcut.empty() ? "" : " ") + std::string(second));
        std::string what = plain(row.caption);
        for (const Addition& addition : kAdditions) {
            what += addition.menu == row.name ? ": " + std::string(addition.text) : "";
        }
        std::string link;
        if (const shell::CommandHelp* const help = shell::helpOf(row)) {
            const std::string page(help->topic);
            link = "<a href=\"" + page + "\">"
                   + between(read(helpFolder + "/" + page.substr(0, page.find('#'))), "<title>", "</title>") + "</a>";
        }
        rows += rowOf(keys, what, link);
    }
    return rows;
}

std::string panels()
{
    std::string rows;
    for (const shell::KeyRow& row : shell::panelKeys()) {
        rows += rowOf(row.where, keysOf(row.keys), row.what);
    }
    return rows;
}

void replace(std::string& page, std::string_view mark, const std::string& text)
{
    const std::size_t place = page.find(mark);
    if (place == std::string::npos) {
        throw std::runtime_error("the page has no " + std::string(mark));
    }
    page.replace(place, mark.size(), text);
}

} // namespace

/// The folder of the help, and the file to be written.
int main(int argc, char** argv)
{
    try {
        if (argc != 3) {
            throw std::runtime_error("make-keys-page HELP-FOLDER OUTPUT");
        }
        std::string page = read(std::string(argv[1]) + "/2_3_Keys.htm");
        replace(page, "<!-- commands -->\n", commands(argv[1]));
        replace(page, "<!-- panels -->\n", panels());
        std::ofstream(argv[2], std::ios::binary) << page;
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
