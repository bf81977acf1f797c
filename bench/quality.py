"""Whether the pictures and the sound are right: our save of the cuts against ffmpeg's own timeline, not encoded.

Pictures: luma PSNR of each frame against the same frame, the one before and the one behind. A frame that is closer
to a neighbour has slipped. Sound: each piece is shifted against the same stretch of its file, decoded from the
beginning, by the sample until both differ least.

The reference is read from a second ahead of each cut and trimmed: a clip may hold a frame across the cut (mpeg4.avi
has a gap in every fifth place), and a seek to the cut itself would miss it and begin with the next.
"""
import array
import os
import re
import statistics
import subprocess

from harness import progress, run
from rivals import ffmpeg_inputs, fitted, frames
from timelines import Piece, cuts, write_cuts
from works import MJPEG, save

ASKED_DB = 41
ASKED_MS = 1
NOISE_DB = 0.25  # where the picture stands still, chance decides between neighbours by a few hundredths
RATE = 48000
REACH = 576  # samples to either side that shifts are tried: 12 ms


def quality(clips):
    pieces = cuts(clips.mixed)
    project, ours = clips.path("quality.qpj"), clips.path("quality-ours.avi")
    write_cuts(project, pieces)
    progress("quality: our save")
    run(save(project, ours, MJPEG))
    pictures = clips.path("quality.y4m")
    progress("quality: the reference")
    run(reference(pieces, pictures))
    progress("quality: pictures")
    same, before, behind = compare(clips, ours, pictures)
    os.remove(pictures)
    slipped = [n for n in range(1, len(same) - 1) if max(before[n - 1], behind[n]) > same[n] + NOISE_DB]
    progress("quality: sound")
    shifts = sound_shifts(samples(ours), pieces)
    worst_ms = max(map(abs, shifts)) * 1000 / RATE
    mean = statistics.mean(same)
    right = sum(frames(piece.length_ms) for piece in pieces)
    text = (f"{mean:.2f} dB (lowest frame {min(same):.2f}), {len(same)} of {right} frames, {len(slipped)} slipped, "
            f"sound within {worst_ms:.2f} ms")
    return {"work": "quality", "text": text, "asked": f"{ASKED_DB} dB, none slipped, {ASKED_MS} ms",
            "mean_db": round(mean, 3), "lowest_db": round(min(same), 3), "frames": len(same), "slipped": slipped,
            "sound_shifts": shifts,
            "met": mean >= ASKED_DB and not slipped and len(same) == right and worst_ms <= ASKED_MS}


def reference(pieces, output):
    """The command that writes the timeline of the pieces frame by frame."""
    words, graph = [], ""
    for i, piece in enumerate(pieces):
        ahead_ms = min(piece.start_ms, 1000)
        words += ffmpeg_inputs([Piece(piece.path, piece.start_ms - ahead_ms, piece.length_ms + ahead_ms)])
        graph += (f"[{i}:v]{fitted(640, 480)},trim=start={ahead_ms / 1000 - 0.001}:"
                  f"end={(ahead_ms + piece.length_ms) / 1000 - 0.001},setpts=PTS-STARTPTS[v{i}];")
    graph += "".join(f"[v{i}]" for i in range(len(pieces))) + f"concat=n={len(pieces)}[v]"
    return (["ffmpeg", "-v", "error", "-y"] + words
            + ["-filter_complex", graph, "-map", "[v]", "-vsync", "passthrough", "-pix_fmt", "yuv420p", output])


def compare(clips, ours, theirs):
    """Luma PSNR of our frame n against their n, of our n + 1 against their n, and of our n against their n + 1."""
    stats = [clips.path(f"quality-{name}.log") for name in ("same", "before", "behind")]
    late = "trim=start_frame=1,setpts=PTS-STARTPTS"
    graph = ("[0:v]scale=in_range=full:out_range=limited:flags=bicubic,format=yuv420p,setpts=N,split=3[a][b][c];"
             "[1:v]setpts=N,split=3[x][y][z];"
             f"[b]{late}[b];[z]{late}[z];"
             f"[a][x]psnr=stats_file={stats[0]}:shortest=1,nullsink;"
             f"[b][y]psnr=stats_file={stats[1]}:shortest=1,nullsink;"
             f"[c][z]psnr=stats_file={stats[2]}:shortest=1")
    run(["ffmpeg", "-v", "error", "-y", "-i", ours, "-i", theirs, "-filter_complex", graph, "-f", "null", "-"])
    return [frame_values(path) for path in stats]


def frame_values(path):
    """The same picture, which has no noise at all, counts as 100 dB."""
    with open(path, encoding="ascii") as log:
        return [min(float(value), 100.0) for value in re.findall(r"psnr_y:(\S+)", log.read())]


def samples(path):
    """The first channel of a file's sound."""
    raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-map", "0:a:0", "-af", "pan=mono|c0=c0", "-ar",
                          str(RATE), "-f", "s16le", "-"], check=True, capture_output=True).stdout
    return array.array("h", raw)


def sound_shifts(ours, pieces):
    """By how many samples each piece of ours comes late."""
    files = {piece.path: samples(piece.path) for piece in pieces}
    shifts, at = [], 0
    for piece in pieces:
        begin = piece.start_ms * RATE // 1000
        within = files[piece.path][begin + REACH:begin + REACH + RATE * 2 // 5]
        shifts.append(best_shift(ours, within, at + REACH))
        at += piece.length_ms * RATE // 1000
    return shifts


def best_shift(ours, theirs, begin):
    def difference(shift, step):
        mine = ours[begin + shift:begin + shift + len(theirs):step]
        return sum((a - b) ** 2 for a, b in zip(mine, theirs[::step]))

    coarse = min(range(-REACH, REACH + 1, 8), key=lambda shift: difference(shift, 5))
    return min(range(coarse - 8, coarse + 9), key=lambda shift: difference(shift, 1))
