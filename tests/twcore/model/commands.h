#pragma once

// The program's commands over one video track, two audio tracks and the overlay track, call by call as the program
// makes them: what the timeline must bear. Only what calls the engine is here; no locks, links, screens, and no gaps
// in the clipboard, which only move pieces further.

#include "twcore/model/calls.h"

#include <vector>

namespace model_test {

enum class Edit { kCut, kCopy, kDelete, kCrop };

struct SourceImage {
    Handle track, stream;
    Range time, media;
    int seq;
    std::int16_t mode;
};
struct NamedImage {
    Handle track;
    Range time;
    std::string name;
    Key key;
};
struct Image {
    std::vector<SourceImage> sources, overlays;
    std::vector<NamedImage> effects, transitions;
};

struct Commands : Calls {
    Handle video = newTrack(true), audio1 = newTrack(false), audio2 = newTrack(false), overlay = newTrack(true);
    std::vector<Handle> tracks{video, audio1, audio2};
    std::vector<Handle> allTracks{video, audio1, audio2, overlay};

    std::string everything();

    void addToTimeline(Handle picture, Handle sound);
    void addToOverlay(Handle picture);
    void addEffect(const std::string& name, Ms32 start, Ms32 stop);
    void editRange(Edit edit, Ms32 a, Ms32 b);
    void removeItems(bool selectedOnes);
    void paste(Ms32 position, bool shifted = false);
    void pasteOver(Ms32 a, Ms32 b);
    void splitAt(Ms32 position);
    void pack();
    void restoreSize();
    void repeatAudio();
    void shuffle(Kind kind, Handle track, int fromSeq, int ontoSeq);
    void moveToTrack(Handle source, Handle target, int targetPlace);
    void nudge(Ms32 delta);
    void resize(Ms32 delta);
    void emptyTimeline();
    Image image();
    void restore(const Image& image);

private:
    struct Clip {
        Handle track, stream;
        Range media;
        Ms32 length;
        std::int16_t mode;
        std::string name;
        Key key;
    };

    void walkRange(Edit edit, Kind kind, Handle track, Ms32 a, Ms32 b);
    void editSource(Edit edit, Handle track, Range at, Ms32 a, Ms32 b);
    void editEffect(Edit edit, Handle track, Range at, Ms32 a, Ms32 b);
    void pasteKind(Kind kind, Handle track, Ms32 position, bool shifted);
    void pasteBefore(Kind kind, Handle track, int seq, Ms32 position);
    void putTransition(const std::string& name, int seq, Range time, Key key);
    void closeGapBehind(Kind kind, Handle track, Ms32 position);
    void splitSource(Handle track, int seq, Ms32 position);
    void splitEffect(Handle track, int seq, Ms32 position);
    void putPiece(Handle track, Handle stream, int seq, Range time, Range media, std::int16_t mode);
    void removeItem(Kind kind, Handle track, int seq);
    void setBoth(Handle track, int seq, Range time, const Range* media = nullptr);
    int seqAt(Kind kind, Handle track, Ms32 position);
    int firstSelected(Kind kind, Handle track);
    std::vector<SourceImage> sourcesOf(Handle track);
    void restoreSource(const SourceImage& source);
    void alignTransitions(bool eitherDiffers);

    std::vector<Clip> clips_[3];
    int walkSeq_ = 0;
};

} // namespace model_test
