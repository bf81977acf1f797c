#!/usr/bin/env python3
"""A hand on the slider, ours and mpv's by turns: a wish every 16 ms for 3 s over a minute of a clip with a key frame
every 250 pictures, at 1080 and 720 lines; forwards, backwards, back and forth. Counted are the pictures shown and the
longest time that one stood.

Ours are told by the numbers in the pictures (quillmont-scrub-bench, which also steps and rests); mpv's by the changes
of time-pos over its socket at the end of each seek, paused and without a window, seeking to key frames and exactly.

usage: bench/scrub.py [--rounds N] [--work FOLDER]
"""
import argparse
import json
import os
import statistics
import subprocess
import sys
import time

sys.dont_write_bytecode = True

from harness import ROOT, Failed, installed, output_of
from media import Clips
from seeks import Mpv

SCRUB = os.path.join(ROOT, "build", "bin", "quillmont-scrub-bench")
CELLS = 11
SWEEPS = {
    "forwards": lambda share: share,
    "backwards": lambda share: 1 - share,
    "back and forth": lambda share: 2 * share if share < 0.5 else 2 - 2 * share,
}


def numbered(clips, height):
    """A minute of the real video, with the number of each picture in cells along the top."""
    cells = "".join(f",drawbox=x=iw*{bit + 1}/16:y=ih/48:w=iw/16:h=ih/24:color=white:t=fill:"
                    f"enable='mod(floor((n+0.0001)/pow(2\\,{bit}))\\,2)'" for bit in range(CELLS))
    picture = f"scale=-2:{height},fps=25,drawbox=x=0:y=0:w=iw:h=ih/12:color=black:t=fill" + cells
    return clips.make(f"numbered-{height}.mp4",
                      ["-stream_loop", "6", "-i", clips.long_gop, "-vf", picture, "-t", "60", "-an", "-c:v", "libx264",
                       "-preset", "medium", "-crf", "21", "-pix_fmt", "yuv420p", "-g", "250", "-keyint_min", "250",
                       "-sc_threshold", "0"])


def mpv_sweep(path, place, how):
    """Pictures, and the longest gap between two in ms."""
    player = Mpv(path, False)
    try:
        player.say("observe_property", 7, "time-pos")
        player.socket.setblocking(False)
        begin, seen, wish, unread, place_now = time.monotonic(), [], 0, b"", None
        while (now := time.monotonic() - begin) < 3:
            if now >= wish * 0.016:
                wish += 1
                words = {"command": ["seek", place(now / 3) * 59.8, "absolute+" + how], "async": True}
                player.socket.setblocking(True)
                player.socket.sendall(json.dumps(words).encode() + b"\n")
                player.socket.setblocking(False)
            try:
                unread += player.socket.recv(65536)
            except BlockingIOError:
                time.sleep(0.001)
            *lines, unread = unread.split(b"\n")
            for line in lines:
                said = json.loads(line)
                place_now = said["data"] if said.get("name") == "time-pos" else place_now
                # A seek tells the place it is meant for at once, and that of its picture when it stands.
                if said.get("event") == "playback-restart" and (not seen or seen[-1][1] != place_now):
                    seen.append((time.monotonic() - begin, place_now))
        times = [0] + [at for at, _ in seen] + [3]
        return len(seen), max(b - a for a, b in zip(times, times[1:])) * 1000
    finally:
        player.close()


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("--rounds", type=int, default=3)
    words.add_argument("--work", default=os.path.join(ROOT, "build", "bench"))
    words = words.parse_args()
    clips = Clips(words.work)
    for height in (1080, 720):
        path = numbered(clips, height)
        rivals = {}
        for number in range(words.rounds):
            print(f"{height} lines, round {number + 1}\n{output_of([SCRUB, path])}", end="", flush=True)
            for name, place in SWEEPS.items():
                for how in ("keyframes", "exact") if installed("mpv") else ():
                    rivals.setdefault((name, how), []).append(mpv_sweep(path, place, how))
        for (name, how), runs in rivals.items():
            counts, gaps = zip(*runs)
            print(f"mpv, {name}, {how}: {statistics.median(counts):.0f} pictures, longest gap {statistics.median(gaps):.0f} ms")


if __name__ == "__main__":
    try:
        main()
    except (Failed, subprocess.CalledProcessError) as failure:
        sys.exit(f"scrub.py: {failure}")
