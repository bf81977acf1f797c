"""Exact seeks: ours and mpv's over the same random times, by turns.

Ours is timed from the call to the decoded frame as BGRA; mpv's, which is driven through its socket while paused and
without sound, from the seek command to the event that playback stands again. That is done twice: with the frame as it
was decoded, which is what counts, and converted to BGRA by a filter, through which mpv sends every frame on the way
there as well. The frames that ours gives are held against ffprobe's list of presentation times.
"""
import bisect
import json
import os
import random
import socket
import subprocess
import tempfile
import time

from harness import MEASURE, Failed, installed, output_of, percentile, progress

COUNT = 100
SEED = 20031
WAIT_S = 20


class Mpv:
    """An mpv that stands paused on a file."""

    def __init__(self, path, bgra):
        self.folder = tempfile.TemporaryDirectory()
        address = os.path.join(self.folder.name, "socket")
        self.child = subprocess.Popen(
            ["mpv", "--no-config", "--no-terminal", f"--input-ipc-server={address}", "--pause", "--hr-seek=yes",
             "--vo=null", "--no-audio", "--hwdec=no", "--keep-open=always"]
            + ["--vf=format=bgra"] * bgra + [path],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(WAIT_S)
        self.unread = b""
        try:
            self.connect(address)
            self.until(lambda said: said.get("event") == "playback-restart")
            shown = self.asked("video-out-params/pixelformat")
            if shown.startswith("bgr") != bgra:
                raise Failed(f"mpv shows {shown}")
        except (OSError, Failed):
            self.close()
            raise

    def connect(self, address):
        deadline = time.monotonic() + WAIT_S
        while True:
            try:
                return self.socket.connect(address)
            except OSError:
                if time.monotonic() > deadline or self.child.poll() is not None:
                    raise
                time.sleep(0.005)

    def say(self, *words):
        self.socket.sendall(json.dumps({"command": words, "request_id": 1}).encode() + b"\n")

    def until(self, found):
        """Reads on to the message that is looked for."""
        while True:
            while b"\n" in self.unread:
                line, self.unread = self.unread.split(b"\n", 1)
                said = json.loads(line)
                if found(said):
                    return said
            more = self.socket.recv(65536)
            if not more:
                raise Failed("mpv has gone")
            self.unread += more

    def asked(self, name):
        self.say("get_property", name)
        return self.until(lambda said: said.get("request_id") == 1 and "error" in said).get("data") or ""

    def seek_ms(self, seconds):
        begin = time.monotonic()
        self.say("seek", seconds, "absolute+exact")
        self.until(lambda said: said.get("event") == "playback-restart")
        return (time.monotonic() - begin) * 1000

    def close(self):
        self.socket.close()
        self.child.kill()
        self.child.wait()
        self.folder.cleanup()


def mpv_latencies(path, times_ms, bgra):
    player = Mpv(path, bgra)
    try:
        return [player.seek_ms(asked / 1000) for asked in times_ms]
    finally:
        player.close()


def our_seeks(path, times_ms):
    """(asked, begin of the frame, latency), all in ms."""
    said = output_of([MEASURE, "seek", path], "".join(f"{asked}\n" for asked in times_ms))
    return [tuple(map(float, line.split())) for line in said.splitlines()]


def presentation_times(path):
    """Of all frames, in ms from the file's beginning, in the order in which they are shown."""
    said = output_of(["ffprobe", "-v", "error", "-select_streams", "v:0", "-show_entries",
                      "frame=best_effort_timestamp_time:format=start_time", "-of", "csv", path])
    values = [line.split(",")[:2] for line in said.split()]
    start = next(float(value) for kind, value in values if kind == "format")
    return sorted((float(value) - start) * 1000 for kind, value in values if kind == "frame")


def wrong_frames(path, seeks):
    """Those whose frame is not the one that stands at the time asked for."""
    times = presentation_times(path)
    wrong = []
    for asked, begin, _ in seeks:
        right = times[max(0, bisect.bisect_right(times, asked + 0.001) - 1)]
        if abs(right - begin) > 0.5:
            wrong.append({"asked_ms": asked, "got_ms": begin, "right_ms": round(right, 3)})
    return wrong


def seeks(clips, rounds):
    """A row for each of the three clips."""
    chance = random.Random(SEED)
    for path in clips.mixed:
        name = "seek-" + os.path.basename(path).split(".")[0]
        times_ms = [chance.randrange(0, 65900) for _ in range(COUNT)]
        ours, plain, bgra, wrong = [], [], [], []
        with_mpv = installed("mpv")
        for number in range(rounds):
            progress(f"{name}: round {number + 1}")
            found = our_seeks(path, times_ms)
            ours += [latency for _, _, latency in found]
            wrong = wrong_frames(path, found) if number == 0 else wrong
            if with_mpv:
                plain += mpv_latencies(path, times_ms, False)
                bgra += mpv_latencies(path, times_ms, True)
        yield row(name, ours, {"mpv": plain, "mpv to BGRA": bgra} if with_mpv else {}, wrong)


def middle_and_slow(latencies):
    return [round(percentile(latencies, part), 2) for part in (0.5, 0.95)]


def row(name, ours, theirs, wrong):
    mine = middle_and_slow(ours)
    text = f"{mine[0]:.1f} ms, 95th {mine[1]:.1f}; {len(wrong)} wrong frames"
    result = {"work": name, "asked": "no slower than mpv, none wrong", "ours_ms": mine, "wrong": wrong}
    for program, latencies in theirs.items():
        other = middle_and_slow(latencies)
        result[program.replace(" ", "_") + "_ms"] = other
        text += (f"; {program} {other[0]:.1f}, 95th {other[1]:.1f}, ratios {mine[0] / other[0]:.2f} and "
                 f"{mine[1] / other[1]:.2f}")
    is_right = not wrong and len(ours) % COUNT == 0
    result["met"] = is_right and all(a <= b for a, b in zip(mine, result["mpv_ms"])) if theirs else None
    result["text"] = text if theirs else text + "; mpv is not installed (scripts/setup bench)"
    return result
