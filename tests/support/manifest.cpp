#include "manifest.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace testmedia {
namespace {

std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

} // namespace

double MediaEntry::framesPerSecond() const
{
    const auto slash = fps.find('/');
    const double upper = std::stod(fps);
    return slash == std::string::npos ? upper : upper / std::stod(fps.substr(slash + 1));
}

bool MediaEntry::has(const std::string& word) const
{
    for (const std::string& found : wordsOf(notes))
        if (found == word)
            return true;
    return false;
}

std::string MediaEntry::note(const std::string& key, const std::string& otherwise) const
{
    for (const std::string& word : wordsOf(notes))
        if (word.starts_with(key + "="))
            return word.substr(key.size() + 1);
    return otherwise;
}

double MediaEntry::noteNumber(const std::string& key, double otherwise) const
{
    const std::string value = note(key);
    return value.empty() ? otherwise : std::stod(value);
}

std::string manifestLine(const MediaEntry& entry)
{
    std::ostringstream line;
    line << entry.name << '|' << entry.kind << '|' << entry.fps << '|' << entry.frames << '|' << entry.firstNumber
         << '|' << entry.durationSeconds << '|' << entry.rateHz << '|' << entry.channels << '|' << entry.notes;
    return line.str();
}

std::filesystem::path mediaFolder()
{
    const char* told = std::getenv("TEST_MEDIA_DIR");
    return told != nullptr ? told : QUILLMONT_TEST_MEDIA_DIR;
}

std::vector<MediaEntry> readManifest(const std::filesystem::path& folder)
{
    std::ifstream in(folder / "manifest.txt");
    if (!in || !std::filesystem::exists(folder / "stamp"))
        throw std::runtime_error("no test media in " + folder.string() + ": run make-test-media");
    std::vector<MediaEntry> entries;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        std::vector<std::string> parts;
        for (std::string part; parts.size() < 8 && std::getline(fields, part, '|');)
            parts.push_back(part);
        std::string notes;
        std::getline(fields, notes);
        if (parts.size() == 8)
            entries.push_back({parts[0], parts[1], parts[2], std::stoi(parts[3]), std::stoi(parts[4]),
                               std::stod(parts[5]), std::stoi(parts[6]), std::stoi(parts[7]), notes});
    }
    return entries;
}

MediaEntry mediaEntry(const std::string& name)
{
    for (MediaEntry& entry : readManifest())
        if (entry.name == name)
            return entry;
    throw std::runtime_error("no such test medium: " + name);
}

} // namespace testmedia
