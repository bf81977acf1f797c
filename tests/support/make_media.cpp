// make-test-media OUTDIR: draws the pictures and the sound, has the ffmpeg command line encode them in every way that
// a person's files come in, adds what is broken, and tells it all in OUTDIR/manifest.txt. OUTDIR/stamp, written last,
// says that a run came to its end; with it there, a second run does nothing.
//
// A file whose encoder is not installed is left out with a word in OUTDIR/missing.txt.

#include "media_recipes.h"
#include "odd_files.h"
#include "patterns.h"
#include "support/files.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace fs = std::filesystem;
using namespace testmedia;

namespace {

constexpr const char* kVersion = "4\n"; // in the stamp: raise it when the media change

std::string pictureFile(Pictures pictures)
{
    switch (pictures) {
    case Pictures::interlaced:
        return "work/interlaced.rgb";
    case Pictures::patches:
        return "work/patches.rgb";
    default:
        return "work/progressive.rgb";
    }
}

std::string soundFile(int rateHz, int channels)
{
    return "work/sound-" + std::to_string(rateHz) + "-" + std::to_string(channels) + ".f32";
}

void drawPictures(const fs::path& file, Pictures pictures, int frames)
{
    constexpr auto kLine = static_cast<std::size_t>(kBaseWidthPx) * 3;
    std::vector<std::uint8_t> picture(kLine * kBaseHeightPx), later(picture.size());
    const Canvas canvas{picture.data(), kLine, kBaseWidthPx, kBaseHeightPx, PixelLayout::rgb24};
    const Canvas laterCanvas{later.data(), kLine, kBaseWidthPx, kBaseHeightPx, PixelLayout::rgb24};
    std::ofstream out(file, std::ios::binary);
    for (int n = 0; n < frames; ++n) {
        drawBarcode(canvas, n);
        if (pictures == Pictures::patches)
            drawPatches(canvas);
        if (pictures == Pictures::interlaced) {
            drawBarcode(laterCanvas, n, n + 0.5);
            for (std::size_t y = 1; y < kBaseHeightPx; y += 2)
                std::copy_n(later.data() + y * kLine, kLine, picture.data() + y * kLine);
        }
        out.write(reinterpret_cast<const char*>(picture.data()), static_cast<std::streamsize>(picture.size()));
    }
    if (!out.flush())
        throw std::runtime_error("cannot be written: " + file.string());
}

void drawSound(const fs::path& file, int rateHz, int channels, int seconds)
{
    std::vector<float> sound;
    for (int i = 0; i < rateHz * seconds; ++i)
        for (int channel = 0; channel < channels; ++channel)
            sound.push_back(soundAt(i, rateHz, channel));
    writeBytes(file, {reinterpret_cast<const char*>(sound.data()), sound.size() * sizeof(float)});
}

void addWords(std::vector<std::string>& command, const std::string& words)
{
    std::istringstream in(words);
    std::copy(std::istream_iterator<std::string>(in), {}, std::back_inserter(command));
}

std::vector<std::string> commandOf(const fs::path& folder, const Recipe& recipe)
{
    const MediaEntry& entry = recipe.entry;
    std::vector<std::string> command;
    addWords(command, "ffmpeg -nostdin -v error -y");
    if (!recipe.from.empty()) {
        addWords(command, recipe.inputArguments + " -i");
        command.push_back(folder / recipe.from);
    } else if (recipe.pictures != Pictures::none) {
        const double last = entry.firstNumber + entry.frames - 0.5;
        addWords(command, "-f rawvideo -pix_fmt rgb24 -s " + std::to_string(kBaseWidthPx) + "x"
                              + std::to_string(kBaseHeightPx) + " -r " + entry.fps + " -t "
                              + std::to_string(last / entry.framesPerSecond()) + " " + recipe.inputArguments + " -i");
        command.push_back(folder / pictureFile(recipe.pictures));
    }
    if (recipe.from.empty() && entry.rateHz > 0) {
        const double seconds =
            entry.durationSeconds - entry.noteNumber("video-start") - entry.noteNumber("sound-start");
        addWords(command, "-f f32le -ar " + std::to_string(entry.rateHz) + " -ac " + std::to_string(entry.channels)
                              + (entry.channels == 6 ? " -channel_layout 5.1" : "") + " -t " + std::to_string(seconds)
                              + " " + recipe.soundArguments + " -i");
        command.push_back(folder / soundFile(entry.rateHz, entry.channels));
    }
    addWords(command, "-threads 1 -bitexact " + recipe.arguments);
    if (recipe.muxer.empty()) {
        command.push_back(folder / entry.name);
    } else {
        addWords(command, "-f " + recipe.muxer + " pipe:1");
    }
    return command;
}

// Runs a command without a shell; what it prints goes to `output`, what it complains of to `complaints`.
bool run(const std::vector<std::string>& command, const fs::path& output, const fs::path& complaints)
{
    std::vector<char*> words;
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&files, 2, complaints.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t child = 0;
    const bool started = posix_spawnp(&child, words[0], &files, nullptr, words.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&files);
    int status = 0;
    return started && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Makes all of them, two or more at a time; tells those that failed.
std::set<std::string> make(const fs::path& folder, const std::vector<Recipe>& recipes)
{
    std::vector<char> failed(recipes.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < recipes.size(); i = next++) {
            const Recipe& recipe = recipes[i];
            const fs::path complaints = folder / ("work/complaints-" + std::to_string(i));
            const fs::path output = recipe.muxer.empty() ? fs::path("/dev/null") : folder / recipe.entry.name;
            failed[i] = !run(commandOf(folder, recipe), output, complaints);
            if (failed[i] != 0) {
                std::cerr << recipe.entry.name + " could not be made: " + bytesOf(complaints) << std::endl;
                fs::remove(folder / recipe.entry.name);
            }
        }
    };
    std::vector<std::jthread> workers;
    for (unsigned i = 0; i < std::max(2U, std::thread::hardware_concurrency()); ++i)
        workers.emplace_back(work);
    workers.clear();
    std::set<std::string> names;
    for (std::size_t i = 0; i < recipes.size(); ++i)
        if (failed[i] != 0)
            names.insert(recipes[i].entry.name);
    return names;
}

void makeAll(const fs::path& folder)
{
    fs::remove_all(folder);
    for (const char* sub : {"work", "bad", "names"})
        fs::create_directories(folder / sub);

    std::vector<Recipe> recipes = movieRecipes();
    for (const auto& more : {soundRecipes(), stillRecipes()})
        recipes.insert(recipes.end(), more.begin(), more.end());
    std::vector<Recipe> derived = derivedRecipes();

    std::vector<std::jthread> drawing;
    for (const auto& [pictures, count] :
         {std::pair{Pictures::progressive, kBaseFrames}, {Pictures::interlaced, 75}, {Pictures::patches, 50}})
        drawing.emplace_back([&folder, pictures = pictures, count = count] {
            drawPictures(folder / pictureFile(pictures), pictures, count);
        });
    std::set<std::pair<int, int>> sounds;
    for (const Recipe& recipe : recipes)
        if (recipe.entry.rateHz > 0 && sounds.emplace(recipe.entry.rateHz, recipe.entry.channels).second)
            drawSound(folder / soundFile(recipe.entry.rateHz, recipe.entry.channels), recipe.entry.rateHz,
                      recipe.entry.channels, recipe.entry.channels == 2 ? 12 : 5);
    drawing.clear();

    std::set<std::string> missing = make(folder, recipes);
    missing.merge(make(folder, derived));
    recipes.insert(recipes.end(), derived.begin(), derived.end());

    std::ofstream manifest(folder / "manifest.txt"), absent(folder / "missing.txt");
    for (const Recipe& recipe : recipes) {
        if (missing.contains(recipe.entry.name))
            absent << recipe.entry.name << '\n';
        else if (recipe.entry.kind != "work")
            manifest << manifestLine(recipe.entry) << '\n';
    }
    for (const MediaEntry& entry : writeOddFiles(folder))
        manifest << manifestLine(entry) << '\n';
    fs::remove_all(folder / "work");
    if (!manifest.flush() || !absent.flush())
        throw std::runtime_error("the manifest cannot be written");
}

bool upToDate(const fs::path& folder) { return fs::exists(folder / "stamp") && bytesOf(folder / "stamp") == kVersion; }

} // namespace

int main(int argc, char** argv)
try {
    if (argc != 2) {
        std::cerr << "usage: make-test-media OUTDIR\n";
        return 2;
    }
    const fs::path folder = fs::absolute(argv[1]);
    if (upToDate(folder))
        return 0;
    if (fs::exists(folder) && !fs::is_empty(folder) && !fs::exists(folder / "work") && !fs::exists(folder / "stamp"))
        throw std::runtime_error("not a folder of test media, left alone: " + folder.string());
    makeAll(folder);
    std::ofstream(folder / "stamp") << kVersion;
    return 0;
} catch (const std::exception& fault) {
    std::cerr << "make-test-media: " << fault.what() << '\n';
    return 1;
}
