"""What saves of cuts would take if nothing but the libraries worked: decoding alone and encoding alone, on all cores."""
import os
import statistics

from harness import ROOT, output_of, progress, run
from timelines import cuts
from works import works

FLOOR = os.path.join(ROOT, "build", "bin", "quillmont-floor-bench")
# Name of the work: compressor, size, rate.
SAVES = {"cuts-mixed-mjpeg": ["Motion JPEG", "640x480", "0"],
         "cuts-mixed-mpeg4-mp3": ["MPEG-4", "640x480", "0"],
         "cuts-mixed-wmv": ["wmv", "640x480", "1000000"],
         "cuts-mixed-720p-h264": ["H.264", "1280x720", "0"]}


def floors(clips, rounds):
    """A row for each save: the floor and ours, as ratios to ffmpeg's time, by turns in the same rounds."""
    pieces = [f"{piece.start_ms}:{piece.length_ms}:{piece.path}" for piece in cuts(clips.mixed)]
    saves = works(clips)
    rows = []
    for name, words in SAVES.items():
        seen = []
        for number in range(rounds + 1):
            progress(f"floor of {name}, round {number + 1}")
            decoding, encoding, wall = map(float, output_of([FLOOR] + words + pieces).split())
            seen.append((decoding, encoding, wall, run(saves[name].ours).wall_s, run(saves[name].ffmpeg).wall_s))
        decoding, encoding, wall, ours, ffmpeg = map(statistics.median, zip(*seen[1:]))
        rows.append({"work": f"floor of {name}", "decoding_cpu_s": round(decoding, 2),
                     "encoding_cpu_s": round(encoding, 2), "floor_s": round(wall, 2), "ours_s": round(ours, 2),
                     "ffmpeg_s": round(ffmpeg, 2), "asked": "", "met": None,
                     "text": f"{wall / ffmpeg:.2f} of ffmpeg's time; ours {ours / ffmpeg:.2f}"})
    return rows
