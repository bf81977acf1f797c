#include "twcore/model/commands.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace model_test {

namespace {

/// Timeline milliseconds for one of the medium. No length is a division error, which ends the routine where it stands.
double rateOf(Range time, Range media)
{
    if (media.length() <= 0) {
        throw std::domain_error("division by zero");
    }
    return time.length() / static_cast<double>(media.length());
}

Ms32 nearest(double value) { return static_cast<Ms32>(std::lrint(value)); }

} // namespace

std::string Commands::everything()
{
    std::string text;
    for (Handle track : allTracks) {
        text += this->text(track) + "\n";
    }
    return text;
}

// Adding.

void Commands::addToTimeline(Handle picture, Handle sound)
{
    Ms32 start = 0;
    for (Handle track : allTracks) {
        start = std::max(start, duration(track));
    }
    if (picture != 0) {
        append(video, picture, start);
    }
    if (sound != 0) {
        append(audio1, sound, start);
    }
    alignTransitions(false);
}

void Commands::addToOverlay(Handle picture)
{
    if (!append(overlay, picture)) {
        return;
    }
    const Range at = times(kSource, overlay, count(kSource, overlay) - 1);
    addNamed(kTransition, overlay, "DxtKey", at.start, at.stop);
    applyKey(overlay, count(kTransition, overlay) - 1, {});
}

void Commands::addEffect(const std::string& name, Ms32 start, Ms32 stop)
{
    if (times(kEffect, video, count(kEffect, video) - 1).stop
        != times(kSource, video, count(kSource, video) - 1).stop) {
        addNamed(kEffect, video, name, start, stop);
    }
}

// Cut, copy, delete, crop.

void Commands::editRange(Edit edit, Ms32 a, Ms32 b)
{
    if (edit == Edit::kCut || edit == Edit::kCopy) {
        for (auto& clips : clips_) {
            clips.clear();
        }
    }
    for (Kind kind : {kSource, kEffect}) {
        for (Handle track : allTracks) {
            walkRange(edit, kind, track, a, b);
        }
    }
    if (edit != Edit::kCopy && count(kSource, video) == 0) {
        while (remove(kEffect, video, 0)) {
        }
    }
}

void Commands::walkRange(Edit edit, Kind kind, Handle track, Ms32 a, Ms32 b)
{
    for (walkSeq_ = 0;; ++walkSeq_) {
        const Range at = times(kind, track, walkSeq_);
        if (!at.ok) {
            return;
        }
        // A delete or crop of a source behind the range gets past this test, and is told a start far to the left.
        const bool careful = kind == kEffect || track == overlay || edit == Edit::kCut || edit == Edit::kCopy;
        if (at.stop > a && (careful ? at.start < b : at.start != b)) {
            kind == kEffect ? editEffect(edit, track, at, a, b) : editSource(edit, track, at, a, b);
        }
        if (a > at.start && b < at.stop) {
            return;
        }
    }
}

void Commands::editSource(Edit edit, Handle track, Range at, Ms32 a, Ms32 b)
{
    const auto [s, e, found] = at;
    const int seq = walkSeq_;
    const Range media = this->media(track, seq);
    const double rate = rateOf(at, media);
    const Ms32 mediaAtB = nearest(media.stop - (e - b) / rate);
    const Ms32 mediaAtA = nearest((a - s) / rate + media.start);
    const Range kept{std::max(a, s), std::min(b, e)};
    const Range keptMedia{a > s ? mediaAtA : media.start, b < e ? mediaAtB : media.stop};
    const Range left{s, a}, leftMedia{media.start, mediaAtA}, right{b, e}, rightMedia{mediaAtB, media.stop};
    const Clip clip{track,          stream(track, seq), keptMedia,
                    kept.length(),  mode(track, seq),   name(kTransition, track, seq, 20),
                    key(track, seq)};
    if (edit == Edit::kCut || edit == Edit::kCopy) {
        clips_[kSource].push_back(clip);
        if (track == overlay) {
            clips_[kTransition].push_back(clip);
        }
    }
    if (edit == Edit::kCopy) {
        return;
    }
    if (edit == Edit::kCrop) {
        if (a > s || b < e) {
            setBoth(track, seq, kept, &keptMedia);
        }
    } else if (a <= s && b >= e) {
        removeItem(kSource, track, seq);
        --walkSeq_;
    } else if (a <= s) {
        setBoth(track, seq, right, &rightMedia);
    } else if (b >= e) {
        setBoth(track, seq, left, &leftMedia);
    } else {
        putPiece(track, clip.stream, seq, right, rightMedia, clip.mode);
        putPiece(track, clip.stream, seq, left, leftMedia, clip.mode);
        if (track == overlay) {
            putTransition(clip.name, seq, right, clip.key);
            putTransition(clip.name, seq, left, clip.key);
        }
        removeItem(kSource, track, seq + 2);
    }
}

void Commands::editEffect(Edit edit, Handle track, Range at, Ms32 a, Ms32 b)
{
    const auto [s, e, found] = at;
    const int seq = walkSeq_;
    const std::string name = this->name(kEffect, track, seq, 10);
    const Range kept{std::max(a, s), std::min(b, e)};
    if (edit == Edit::kCut || edit == Edit::kCopy) {
        clips_[kEffect].push_back({track, 0, {}, kept.length(), 0, name, {}});
    }
    if (edit == Edit::kCopy) {
        return;
    }
    if (edit == Edit::kCrop) {
        if (a > s || b < e) {
            setTimes(kEffect, track, seq, kept.start, kept.stop);
        }
    } else if (a <= s && b >= e) {
        remove(kEffect, track, seq);
        --walkSeq_;
    } else if (a <= s) {
        setTimes(kEffect, track, seq, b, e);
    } else if (b >= e) {
        setTimes(kEffect, track, seq, s, a);
    } else {
        remove(kEffect, track, seq);
        insertNamed(kEffect, track, name, seq, b, e);
        insertNamed(kEffect, track, name, seq, s, a);
    }
}

void Commands::removeItems(bool selectedOnes)
{
    for (Kind kind : {kSource, kEffect}) {
        for (Handle track : allTracks) {
            for (int seq = 0; seq < count(kind, track); ++seq) {
                if (selected(kind, track, seq) == selectedOnes) {
                    removeItem(kind, track, seq--);
                }
            }
        }
    }
}

// Pasting.

void Commands::paste(Ms32 position, bool shifted)
{
    for (Kind kind : {kSource, kEffect}) {
        for (Handle track : allTracks) {
            pasteKind(kind, track, position, shifted);
        }
    }
}

void Commands::pasteOver(Ms32 a, Ms32 b)
{
    editRange(Edit::kDelete, a, b);
    paste(a, true);
}

void Commands::pasteKind(Kind kind, Handle track, Ms32 position, bool shifted)
{
    const bool paired = track == overlay && kind == kSource;
    int seq = 0;
    Range at;
    while (count(kind, track) > 0) {
        if (shifted) {
            closeGapBehind(kind, track, position);
            if (paired) {
                closeGapBehind(kTransition, track, position);
            }
        }
        at = times(kind, track, seq);
        if (seq >= count(kind, track) - 1 || position < times(kind, track, seq + 1).start) {
            break;
        }
        ++seq;
    }
    if (at.start < position && position < at.stop) {
        const auto ofTrack = [&](const Clip& clip) { return clip.track == track; };
        if (std::none_of(clips_[kind].begin(), clips_[kind].end(), ofTrack)) {
            return;
        }
        kind == kEffect ? splitEffect(track, seq, position) : splitSource(track, seq, position);
    }
    const bool here = count(kind, track) == 0 || position == at.start || (position < at.start && seq == 0);
    pasteBefore(kind, track, here ? seq : seq + 1, position);
    if (paired) {
        pasteBefore(kTransition, track, here ? seq : seq + 1, position);
    }
}

void Commands::pasteBefore(Kind kind, Handle track, int seq, Ms32 position)
{
    for (auto clip = clips_[kind].rbegin(); clip != clips_[kind].rend(); ++clip) {
        if (clip->track != track) {
            continue;
        }
        const Range time{position, position + clip->length};
        if (kind == kSource) {
            putPiece(track, clip->stream, seq, time, clip->media, clip->mode);
        } else if (kind == kEffect) {
            insertNamed(kEffect, track, clip->name, seq, time.start, time.stop);
        } else {
            putTransition(clip->name, seq, time, clip->key);
        }
        shift(kind, track, seq + 1, clip->length);
    }
}

void Commands::closeGapBehind(Kind kind, Handle track, Ms32 position)
{
    for (int seq = 0; seq <= count(kind, track) - 2; ++seq) {
        if (times(kind, track, seq).stop == position) {
            shift(kind, track, seq + 1, position - times(kind, track, seq + 1).start);
            return;
        }
    }
}

void Commands::splitSource(Handle track, int seq, Ms32 position)
{
    const Range at = times(kSource, track, seq);
    const Range media = this->media(track, seq);
    const double rate = rateOf(at, media);
    const Handle stream = this->stream(track, seq);
    const std::int16_t mode = this->mode(track, seq);
    // The whole sum is divided by the rate: for a stretched source that is not the same as in a cut.
    const Range right{nearest((media.stop - (at.stop - position)) / rate), media.stop};
    const Range left{media.start, nearest(((position - at.start) + media.start) / rate)};
    putPiece(track, stream, seq, {position, at.stop}, right, mode);
    putPiece(track, stream, seq, {at.start, position}, left, mode);
    remove(kSource, track, seq + 2);
    if (track == overlay) {
        const std::string name = this->name(kTransition, track, seq, 20);
        const Key key = this->key(track, seq);
        remove(kTransition, track, seq);
        putTransition(name, seq, {position, at.stop}, key);
        putTransition(name, seq, {at.start, position}, key);
    }
}

void Commands::splitEffect(Handle track, int seq, Ms32 position)
{
    const Range at = times(kEffect, track, seq);
    const std::string name = this->name(kEffect, track, seq, 10);
    remove(kEffect, track, seq);
    insertNamed(kEffect, track, name, seq, position, at.stop);
    insertNamed(kEffect, track, name, seq, at.start, position);
}

void Commands::putPiece(Handle track, Handle stream, int seq, Range time, Range media, std::int16_t mode)
{
    insert(track, stream, seq, time.start, 0);
    setTimes(kSource, track, seq, time.start, time.stop);
    setMedia(track, seq, media.start, media.stop);
    setMode(track, seq, mode);
}

void Commands::putTransition(const std::string& name, int seq, Range time, Key key)
{
    insertNamed(kTransition, overlay, name, seq, time.start, time.stop);
    applyKey(overlay, seq, key);
}

void Commands::removeItem(Kind kind, Handle track, int seq)
{
    remove(kind, track, seq);
    if (kind == kSource && track == overlay) {
        remove(kTransition, track, seq);
    }
}

void Commands::setBoth(Handle track, int seq, Range time, const Range* media)
{
    setTimes(kSource, track, seq, time.start, time.stop);
    if (media != nullptr) {
        setMedia(track, seq, media->start, media->stop);
    }
    if (track == overlay) {
        setTimes(kTransition, track, seq, time.start, time.stop);
    }
}

} // namespace model_test
