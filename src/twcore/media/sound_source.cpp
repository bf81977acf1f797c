#include "twcore/media/sound_source.h"

#include "twcore/media/midi_reader.h"
#include "twcore/media/sound_reader.h"

#include <utility>

namespace twcore {

std::unique_ptr<SoundSource> openSound(MediaFilePtr media, int rate, const Patience& patience)
{
    if (media->isMidi) {
        return std::make_unique<MidiReader>(media->path, rate, patience);
    }
    return std::make_unique<SoundReader>(std::move(media), rate, patience);
}

} // namespace twcore
