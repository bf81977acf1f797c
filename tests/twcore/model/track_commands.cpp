#include "twcore/model/commands.h"

#include <algorithm>
#include <limits>

namespace model_test {

int Commands::seqAt(Kind kind, Handle track, Ms32 position)
{
    for (int seq = 0;; ++seq) {
        const Range at = times(kind, track, seq);
        if (!at.ok) {
            return -1;
        }
        if (at.start <= position && position <= at.stop) {
            return seq;
        }
    }
}

int Commands::firstSelected(Kind kind, Handle track)
{
    for (int seq = 0; seq < count(kind, track); ++seq) {
        if (selected(kind, track, seq)) {
            return seq;
        }
    }
    return -1;
}

void Commands::splitAt(Ms32 position)
{
    for (Handle track : allTracks) {
        const int seq = seqAt(kSource, track, position);
        const Range at = times(kSource, track, seq);
        if (seq >= 0 && at.stop - position >= 11 && position - at.start > 10) {
            splitSource(track, seq, position);
        }
        if (const int effect = seqAt(kEffect, track, position); effect >= 0) {
            splitEffect(track, effect, position);
        }
    }
}

void Commands::pack()
{
    for (Kind kind : {kSource, kEffect}) {
        for (Handle track : allTracks) {
            for (int seq = 0; seq < count(kind, track); ++seq) {
                const Ms32 start = times(kind, track, seq).start;
                const Ms32 delta = seq == 0 ? -start : times(kind, track, seq - 1).stop - start;
                shift(kind, track, seq, delta);
                if (track == overlay && kind == kSource) {
                    shift(kTransition, track, seq, delta);
                }
            }
        }
    }
}

void Commands::restoreSize()
{
    for (Handle track : allTracks) {
        for (int seq = 0; seq < count(kSource, track); ++seq) {
            if (selected(kSource, track, seq)) {
                const Range at = times(kSource, track, seq);
                setBoth(track, seq, {at.start, at.start + media(track, seq).length()});
            }
        }
    }
}

void Commands::repeatAudio()
{
    const Ms32 videoEnd = times(kSource, video, count(kSource, video) - 1).stop;
    const Handle track = firstSelected(kSource, audio1) >= 0 ? audio1 : audio2;
    if (videoEnd == 0 || firstSelected(kSource, track) < 0) {
        return;
    }
    int seq = count(kSource, track) - 1;
    Range at = times(kSource, track, seq);
    Range media = this->media(track, seq);
    const Handle stream = this->stream(track, seq);
    if (media.length() > 0 && (videoEnd - at.stop) / media.length() > 500) {
        return; // thousands of splinters would come, which shows nothing new
    }
    for (int repeats = 0; at.stop < videoEnd; ++repeats) {
        if (repeats > 10'000) {
            ADD_FAILURE() << "the repeating does not end";
            return;
        }
        append(track, stream, at.stop);
        ++seq;
        if (videoEnd - at.stop >= media.length()) {
            setTimes(kSource, track, seq, at.stop, at.stop + media.length());
            setMedia(track, seq, media.start, media.stop);
        } else {
            setTimes(kSource, track, seq, at.stop, videoEnd);
            setMedia(track, seq, media.start, videoEnd - at.stop);
        }
        at = times(kSource, track, seq);
        media = this->media(track, seq);
    }
}

void Commands::shuffle(Kind kind, Handle track, int fromSeq, int ontoSeq)
{
    const Range media = kind == kEffect ? times(kEffect, track, fromSeq) : this->media(track, fromSeq);
    const Handle stream = this->stream(track, fromSeq);
    const std::int16_t mode = this->mode(track, fromSeq);
    const Key key = this->key(track, fromSeq);
    const std::string name = this->name(kEffect, track, fromSeq, 10);
    removeItem(kind, track, fromSeq);
    const int seq = fromSeq < ontoSeq ? ontoSeq - 1 : ontoSeq;
    const Ms32 start = times(kind, track, seq).start;
    const Ms32 length = media.length();
    if (kind == kEffect) {
        insertNamed(kEffect, track, name, seq, start, length);
        shift(kEffect, track, seq + 2, length);
        setTimes(kEffect, track, seq, start, start + length);
        return;
    }
    insert(track, stream, seq, start, length);
    if (seq == 0) {
        shift(kSource, track, 2, length);
    }
    setTimes(kSource, track, seq, start, start + length);
    setMedia(track, seq, media.start, media.stop);
    setMode(track, seq, mode);
    if (track == overlay) {
        putTransition("DxtKey", seq, {start, start + length}, key);
        shift(kTransition, track, seq + 2, length);
        setTimes(kTransition, track, seq, start, start + length);
    }
    alignTransitions(true);
}

void Commands::moveToTrack(Handle source, Handle target, int targetPlace)
{
    const int seq = firstSelected(kSource, source);
    if (seq < 0) {
        return;
    }
    const Range at = times(kSource, source, seq);
    const Range media = this->media(source, seq);
    const Handle stream = this->stream(source, seq);
    remove(kSource, source, seq);
    const Ms32 position = targetPlace == 0 ? 0 : times(kSource, target, targetPlace - 1).stop;
    append(target, stream);
    const int last = count(kSource, target) - 1;
    setTimes(kSource, target, last, position, position + at.length());
    setMedia(target, last, media.start, media.stop);
    shift(kSource, target, targetPlace, media.length());
}

void Commands::nudge(Ms32 delta)
{
    for (Handle track : allTracks) {
        for (Kind kind : {kSource, kEffect}) {
            if (const int seq = firstSelected(kind, track); seq >= 0) {
                shift(kind, track, seq, delta);
                if (track == overlay && kind == kSource) {
                    shift(kTransition, track, seq, delta);
                }
            }
        }
    }
}

void Commands::resize(Ms32 delta)
{
    for (Handle track : allTracks) {
        for (Kind kind : {kSource, kEffect}) {
            for (int seq = 0; seq < count(kind, track); ++seq) {
                const Range at = times(kind, track, seq);
                if (!selected(kind, track, seq) || at.length() + delta <= 10) {
                    continue;
                }
                for (Kind moved : {kind, kTransition}) {
                    if (moved == kind || (kind == kSource && track == overlay)) {
                        setTimes(moved, track, seq, at.start, at.stop + delta);
                        shift(moved, track, seq + 1, delta);
                    }
                }
            }
        }
    }
}

void Commands::alignTransitions(bool eitherDiffers)
{
    for (int seq = 0; seq < count(kSource, overlay); ++seq) {
        const Range source = times(kSource, overlay, seq);
        const Range transition = times(kTransition, overlay, seq);
        const bool starts = source.start != transition.start;
        const bool stops = source.stop != transition.stop;
        if (eitherDiffers ? starts || stops : starts && stops) {
            setTimes(kTransition, overlay, seq, source.start, source.stop);
        }
    }
}

// Undo: the timeline is emptied and built again from an image.

void Commands::emptyTimeline()
{
    for (Kind kind : {kEffect, kTransition, kSource}) {
        for (Handle track : allTracks) {
            while (remove(kind, track, 0)) {
            }
        }
    }
}

std::vector<SourceImage> Commands::sourcesOf(Handle track)
{
    std::vector<SourceImage> sources;
    for (int seq = 0; seq < count(kSource, track); ++seq) {
        sources.push_back(
            {track, stream(track, seq), times(kSource, track, seq), media(track, seq), seq, mode(track, seq)});
    }
    return sources;
}

Image Commands::image()
{
    Image image;
    for (Handle track : tracks) {
        const std::vector<SourceImage> sources = sourcesOf(track);
        image.sources.insert(image.sources.end(), sources.begin(), sources.end());
    }
    for (int seq = 0; seq < count(kEffect, video); ++seq) {
        image.effects.push_back({video, times(kEffect, video, seq), name(kEffect, video, seq, 10), {}});
    }
    image.overlays = sourcesOf(overlay);
    for (const SourceImage& source : image.overlays) {
        image.transitions.push_back({overlay, times(kTransition, overlay, source.seq),
                                     name(kTransition, overlay, source.seq, 10), key(overlay, source.seq)});
    }
    return image;
}

void Commands::restoreSource(const SourceImage& source)
{
    append(source.track, source.stream, source.time.start);
    setTimes(kSource, source.track, source.seq, source.time.start, source.time.stop);
    setMedia(source.track, source.seq, source.media.start, source.media.stop);
    setMode(source.track, source.seq, source.mode);
}

void Commands::restore(const Image& image)
{
    emptyTimeline();
    for (const SourceImage& source : image.sources) {
        restoreSource(source);
    }
    for (const NamedImage& effect : image.effects) {
        addNamed(kEffect, effect.track, effect.name, effect.time.start, effect.time.stop);
    }
    for (std::size_t i = 0; i < image.overlays.size(); ++i) {
        const NamedImage& transition = image.transitions[i];
        restoreSource(image.overlays[i]);
        addNamed(kTransition, transition.track, transition.name, transition.time.start, transition.time.stop);
        applyKey(transition.track, static_cast<int>(i), transition.key);
    }
}

} // namespace model_test
