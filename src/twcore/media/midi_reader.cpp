#include "twcore/media/midi_reader.h"

#include "twcore/media/midi_file.h"

#include <algorithm>
#include <cerrno>
#include <fluidsynth.h>

namespace twcore {

namespace {

constexpr int kBlockSamples = 4096;
constexpr double kGain = 0.2; // louder ones clip where many voices meet

struct Free {
    void operator()(fluid_settings_t* settings) const noexcept { delete_fluid_settings(settings); }
    void operator()(fluid_synth_t* synth) const noexcept { delete_fluid_synth(synth); }
    void operator()(fluid_player_t* player) const noexcept { delete_fluid_player(player); }
};

void silenceMessages()
{
    static const bool done = [] {
        for (const int level : {FLUID_PANIC, FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG}) {
            fluid_set_log_function(level, nullptr, nullptr);
        }
        return true;
    }();
    (void)done;
}

} // namespace

struct MidiReader::Synth {
    std::unique_ptr<fluid_settings_t, Free> settings;
    std::unique_ptr<fluid_synth_t, Free> synth;
    std::unique_ptr<fluid_player_t, Free> player;
};

MidiReader::MidiReader(std::string path, int rate, Patience patience)
    : path_(std::move(path)), rate_(rate), patience_(patience)
{}

MidiReader::~MidiReader() = default;

bool MidiReader::open()
{
    silenceMessages();
    const auto song = readMidi(path_, patience_);
    const auto lengthMs = midiLengthMs(song);
    const std::string soundFont = findSoundFont();
    if (!lengthMs || soundFont.empty()) {
        return false;
    }
    totalCount_ = std::int64_t{*lengthMs} * rate_ / 1000;
    auto synth = std::make_unique<Synth>();
    synth->settings.reset(new_fluid_settings());
    fluid_settings_setstr(synth->settings.get(), "player.timing-source", "sample");
    fluid_settings_setint(synth->settings.get(), "synth.lock-memory", 0);
    fluid_settings_setnum(synth->settings.get(), "synth.sample-rate", rate_);
    fluid_settings_setnum(synth->settings.get(), "synth.gain", kGain);
    synth->synth.reset(new_fluid_synth(synth->settings.get()));
    if (!synth->synth || fluid_synth_sfload(synth->synth.get(), soundFont.c_str(), 1) == FLUID_FAILED) {
        constexpr std::size_t kLargestFont = 1u << 30;
        (void)readBeginning(soundFont, kLargestFont, patience_); // tells the cause, when that is its disk
        return false;
    }
    synth->player.reset(new_fluid_player(synth->synth.get()));
    if (!synth->player || fluid_player_add_mem(synth->player.get(), song.data(), song.size()) != FLUID_OK
        || fluid_player_play(synth->player.get()) != FLUID_OK) {
        return false;
    }
    played_.reset(std::tmpfile());
    synth_ = std::move(synth);
    return played_ != nullptr || failTemporary();
}

/// The temporary folder is full, or gives no file.
bool MidiReader::failTemporary()
{
    if (patience_.faults != nullptr) {
        patience_.faults->note(path_, errno != 0 ? errno : EIO);
    }
    broken_ = true;
    return false;
}

bool MidiReader::playTo(std::int64_t end)
{
    while (playedCount_ < end) {
        const auto count = std::min<std::int64_t>(kBlockSamples, totalCount_ - playedCount_);
        if (count <= 0 || patience_.over()) {
            return false;
        }
        block_.resize(static_cast<std::size_t>(count) * 2);
        fluid_synth_write_float(synth_->synth.get(), static_cast<int>(count), block_.data(), 0, 2, block_.data(), 1, 2);
        if (::fseeko(played_.get(), playedCount_ * 2 * static_cast<off_t>(sizeof(float)), SEEK_SET) != 0
            || std::fwrite(block_.data(), sizeof(float) * 2, block_.size() / 2, played_.get()) != block_.size() / 2) {
            return failTemporary();
        }
        playedCount_ += count;
    }
    return true;
}

void MidiReader::read(std::int64_t first, std::span<float> out)
{
    std::ranges::fill(out, 0.0f);
    if (broken_ || (!synth_ && !open())) {
        broken_ = true;
        return;
    }
    const auto count = static_cast<std::int64_t>(out.size() / 2);
    playTo(std::min(first + count, totalCount_));
    const std::int64_t begin = std::max<std::int64_t>(first, 0);
    const std::int64_t end = std::min(first + count, playedCount_);
    if (begin >= end) {
        return;
    }
    const auto wanted = static_cast<std::size_t>(end - begin);
    if (::fseeko(played_.get(), begin * 2 * static_cast<off_t>(sizeof(float)), SEEK_SET) != 0
        || std::fread(out.data() + (begin - first) * 2, sizeof(float) * 2, wanted, played_.get()) != wanted) {
        failTemporary();
    }
}

} // namespace twcore
