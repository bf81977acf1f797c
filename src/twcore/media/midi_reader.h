#pragma once

// A MIDI file as sound, played by a software synthesiser with a General MIDI sound font.
//
// What has been played is kept in a nameless temporary file, so that going back costs a read and memory stays small
// however long the song is.

#include "twcore/media/sound_source.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace twcore {

class MidiReader final : public SoundSource {
public:
    MidiReader(std::string path, int rate, Patience patience);
    ~MidiReader() override;

    void read(std::int64_t first, std::span<float> out) override;
    bool isBroken() const noexcept override { return broken_; }

private:
    struct Synth;

    bool open();
    bool playTo(std::int64_t end);
    bool failTemporary();

    struct CloseFile {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };

    std::string path_;
    int rate_;
    Patience patience_;
    bool broken_ = false;
    std::unique_ptr<Synth> synth_;
    std::unique_ptr<std::FILE, CloseFile> played_;
    std::int64_t playedCount_ = 0;
    std::int64_t totalCount_ = 0;
    std::vector<float> block_;
};

} // namespace twcore
