#!/usr/bin/env python3
"""Measures of saving, against the ffmpeg command line doing the same work with the same encoder and settings.

usage: bench/bench.py [--rounds N] [--work FOLDER] [--only NAME[,NAME]] [--list]

Each work is run in pairs, ours and theirs by turns, after one pair that is not counted; what is printed are medians and
their ratio. Clips are made once in the folder (build/bench by default) from a real video: the one that Debian's
python3-imageio brings, or any that BENCH_VIDEO names. Needs build/bin/quillmont-render and ffmpeg.
"""
import argparse
import json
import os
import re
import statistics
import subprocess
import sys
import time
from xml.sax.saxutils import quoteattr

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
RENDER = os.path.join(ROOT, "build", "bin", "quillmont-render")
MEASURE = os.path.join(ROOT, "build", "bin", "quillmont-measure")
IMAGEIO = "/usr/lib/python3/dist-packages/imageio/resources/images/cockatoo.mp4"


def run(command):
    """Runs a command; wall seconds, CPU seconds and peak memory in MiB."""
    begin = time.monotonic()
    child = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    peak = 0
    while child.poll() is None:
        try:
            with open(f"/proc/{child.pid}/status", encoding="ascii") as status:
                found = re.search(r"VmHWM:\s+(\d+)", status.read())
                peak = max(peak, int(found.group(1)) if found else 0)
        except OSError:
            pass
        time.sleep(0.02)
    wall = time.monotonic() - begin
    error = child.stderr.read().decode(errors="replace")
    if child.returncode != 0:
        sys.exit(f"{' '.join(command)[:300]}...\nfailed with {child.returncode}:\n{error[-2000:]}")
    return wall, peak / 1024


class Clips:
    """The media to work on, made once."""

    def __init__(self, folder):
        self.folder = folder
        os.makedirs(folder, exist_ok=True)
        source = os.environ.get("BENCH_VIDEO", IMAGEIO)
        if not os.path.exists(source):
            sys.exit(f"{source} is not there: install python3-imageio, or name a video in BENCH_VIDEO.")
        base = ["-stream_loop", "6", "-i", source, "-f", "lavfi", "-i", "sine=f=330:r=48000,tremolo=f=3:d=0.6",
                "-t", "66", "-map", "0:v", "-map", "1:a", "-r", "25"]
        h264 = ["-c:v", "libx264", "-preset", "medium", "-crf", "21", "-pix_fmt", "yuv420p", "-c:a", "aac"]
        self.long_gop = self.make("long-gop.mp4", base + ["-vf", "scale=1280:720"] + h264 + ["-g", "250"])
        self.short_gop = self.make("short-gop.mp4", base + ["-vf", "scale=1280:720"] + h264 + ["-g", "12"])
        self.mpeg4 = self.make("mpeg4.avi", base + ["-vf", "scale=768:576", "-c:v", "mpeg4", "-q:v", "4",
                                                    "-c:a", "libmp3lame"])

    def make(self, name, arguments):
        path = os.path.join(self.folder, name)
        if not os.path.exists(path):
            part = os.path.join(self.folder, "part-" + name)
            subprocess.run(["ffmpeg", "-v", "error", "-y"] + arguments + [part], check=True)
            os.rename(part, path)
        return path

    def hour(self):
        path = os.path.join(self.folder, "hour.mp4")
        if not os.path.exists(path):
            part = os.path.join(self.folder, "part-hour.mp4")
            subprocess.run(["ffmpeg", "-v", "error", "-y", "-stream_loop", "54", "-i", self.short_gop, "-t", "3600",
                            "-c", "copy", part], check=True)
            os.rename(part, path)
        return path


def cuts(paths, count=20, length_ms=3000):
    """Cuts that jump about in the clips, none at a key frame but by chance: (path, media start in ms, length)."""
    return [(paths[i % len(paths)], (i * 17713 + 1340) % 60000, length_ms) for i in range(count)]


def write_project(path, parts, width=640, height=480, speed=1.0):
    files = sorted({part[0] for part in parts})
    lines = []
    for kind, stream in (("Video", "Video"), ("Video", None), ("Audio", "Audio"), ("Audio", None)):
        lines.append(f'<Track Kind="{kind}">')
        at = 0
        for source, start, length in parts if stream else []:
            lines.append(f'<Source File="{files.index(source)}" Stream="{stream}" Start="{at}" Stop="{at + length}" '
                         f'MediaStart="{start}" MediaStop="{start + int(length * speed)}" StretchMode="2"/>')
            at += length
        lines.append("</Track>")
    media = "".join(f"<File Src={quoteattr(name)}/>" for name in files)
    with open(path, "w", encoding="utf-8") as project:
        project.write(f'<QuillmontProject><Timeline FrameWidth="{width}" FrameHeight="{height}">{"".join(lines)}'
                      f'</Timeline><MediaList>{media}</MediaList>'
                      f'<PreviewDimension Width="{width}" Height="{height}"/></QuillmontProject>\n')


def ffmpeg_cuts(parts, output, encoding, width=640, height=480, speed=1.0):
    command = ["ffmpeg", "-v", "error", "-y"]
    for source, start, length in parts:
        command += ["-ss", f"{start / 1000}", "-t", f"{length * speed / 1000}", "-i", source]
    tempo = "" if speed == 1 else f"setpts=PTS/{speed},"
    fit = f"{tempo}scale={width}:{height}:force_original_aspect_ratio=decrease,pad={width}:{height}:-1:-1,setsar=1,fps=25"
    graph = "".join(f"[{i}:v]{fit}[v{i}];" for i in range(len(parts)))
    if speed != 1:
        graph += "".join(f"[{i}:a]atempo={speed}[a{i}];" for i in range(len(parts)))
    sound = "{}:a" if speed == 1 else "a{}"
    graph += "".join(f"[v{i}][{sound.format(i)}]" for i in range(len(parts))) + f"concat=n={len(parts)}:v=1:a=1[v][a]"
    return command + ["-filter_complex", graph, "-map", "[v]", "-map", "[a]"] + encoding + [output]


def works(clips):
    """Name: (ours, theirs, the ratio that is asked for)."""
    mjpeg = (["--video-compressor", "Motion JPEG", "--audio-compressor", "PCM"],
             ["-c:v", "mjpeg", "-q:v", "3", "-c:a", "pcm_s16le", "-ar", "48000", "-ac", "2"])
    table = {}

    mpeg4 = (["--video-compressor", "MPEG-4", "--audio-compressor", "MP3"],
             ["-c:v", "mpeg4", "-q:v", "4", "-c:a", "libmp3lame", "-b:a", "192k", "-ar", "48000", "-ac", "2"])

    def add(name, parts, encoding, asked, size=(640, 480), speed=1.0):
        project = os.path.join(clips.folder, name + ".qpj")
        write_project(project, parts, *size, speed)
        ours = [RENDER, project, "-o", os.path.join(clips.folder, name + "-ours.avi"), "--fps", "25"] + encoding[0]
        theirs = ffmpeg_cuts(parts, os.path.join(clips.folder, name + "-theirs.avi"), encoding[1], *size, speed)
        table[name] = (ours, theirs, asked)

    add("cuts-mixed-mjpeg", cuts([clips.long_gop, clips.short_gop, clips.mpeg4]), mjpeg, 1.1)
    add("cuts-long-gop-mjpeg", cuts([clips.long_gop]), mjpeg, 1.1)
    add("cuts-short-gop-mjpeg", cuts([clips.short_gop]), mjpeg, 1.1)
    add("cuts-mpeg4avi-mjpeg", cuts([clips.mpeg4]), mjpeg, 1.1)
    add("whole-short-gop-mjpeg", [(clips.short_gop, 0, 60000)], mjpeg, 1.1)
    mixed = [clips.long_gop, clips.short_gop, clips.mpeg4]
    add("cuts-mixed-mpeg4-mp3", cuts(mixed), mpeg4, 0.75)
    add("cuts-mixed-720p-mjpeg", cuts(mixed), mjpeg, 0.8, (1280, 720))
    add("half-speed", cuts([clips.short_gop], 5, 6000), mjpeg, 0.7, speed=0.5)
    add("double-speed", cuts([clips.short_gop], 5, 6000), mjpeg, 0.7, speed=2.0)
    return table


def measured(*words):
    """Median of five runs of quillmont-measure's one number, after one that is not counted."""
    runs = [float(subprocess.run([MEASURE, *words], check=True, capture_output=True).stdout.split()[1])
            for _ in range(6)]
    return statistics.median(runs[1:])


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("--rounds", type=int, default=5)
    words.add_argument("--work", default=os.path.join(ROOT, "build", "bench"))
    words.add_argument("--only", default="")
    words.add_argument("--list", action="store_true")
    words = words.parse_args()
    clips = Clips(words.work)
    table = works(clips)
    if words.list:
        print("\n".join(list(table) + ["open-hour", "walk-10000"]))
        return
    wanted = [name for name in words.only.split(",") if name]
    results = []
    for name, (ours, theirs, asked) in table.items():
        if wanted and name not in wanted:
            continue
        run(ours), run(theirs)
        pairs = [(run(ours), run(theirs)) for _ in range(words.rounds)]
        mine = statistics.median(pair[0][0] for pair in pairs)
        other = statistics.median(pair[1][0] for pair in pairs)
        memory = max(pair[0][1] for pair in pairs)
        results.append({"work": name, "ours_s": round(mine, 3), "ffmpeg_s": round(other, 3),
                        "ratio": round(mine / other, 3), "asked": asked, "memory_mib": round(memory)})
        print(f"{name:24} ours {mine:6.2f} s   ffmpeg {other:6.2f} s   ratio {mine / other:5.2f} (asked {asked})   "
              f"memory {memory:4.0f} MiB", flush=True)
    for name, what, path in (("open-hour", "open", clips.hour), ("walk-10000", "walk", lambda: clips.short_gop)):
        if not wanted or name in wanted:
            value = measured(what, path())
            results.append({"work": name, "ms": round(value, 2)})
            print(f"{name:24} {value:.1f} ms", flush=True)
    with open(os.path.join(words.work, "results.json"), "w", encoding="utf-8") as out:
        json.dump(results, out, indent=1)


if __name__ == "__main__":
    main()
