#!/usr/bin/env python3
"""From the start of the program to its main window, painted, on a display of its own; and the memory that it takes then.

usage: bench/start_bench.py [--rounds N] [--peers] [--program FILE]

The window is watched from outside, on the X server: it is up when it can be seen and what stands at its top has been
painted. Medians of ten starts, after one that fills the disk's cache. With --peers other editors of Debian are started
by turns with it (those that are installed: scripts/setup bench), each with a home of its own that it keeps, and the
quickest of them is what is compared with. Memory is read three seconds after the painting, over the process and its
children: PSS, in which what programs share is divided among them, and RSS, in which it is counted whole.
Needs build/bin/quillmont, Xvfb and openbox.
"""
import argparse
import ctypes
import ctypes.util
import os
import statistics
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass

from harness import ROOT, Failed, installed, progress

PROGRAM = os.path.join(ROOT, "build", "bin", "quillmont")
ASKED_S = 0.6
# Of the quickest peer's.
ASKED_TIME = 0.3
ASKED_MEMORY = 0.35
LIMIT_S = 30
POLL_S = 0.001
SETTLED_S = 3  # until the memory is read


@dataclass
class Program:
    """An editor, and how its main window is known: by the end of its title and a least width."""

    command: str
    title: str
    width: int = 700


# Of other makes and other toolkits: MLT with Qt 5, GStreamer with GTK and Python.
PEERS = [Program("shotcut", "Shotcut"), Program("pitivi", "Pitivi")]


class Attributes(ctypes.Structure):
    """XWindowAttributes, as far as the map state; the rest is room."""

    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int), ("height", ctypes.c_int),
                ("border_width", ctypes.c_int), ("depth", ctypes.c_int), ("visual", ctypes.c_void_p),
                ("root", ctypes.c_ulong), ("window_class", ctypes.c_int), ("bit_gravity", ctypes.c_int),
                ("win_gravity", ctypes.c_int), ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong),
                ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int), ("colormap", ctypes.c_ulong),
                ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int), ("room", ctypes.c_char * 256)]


class Display:
    """What can be seen on an X server."""

    VIEWABLE = 2
    Z_PIXMAP = 2

    def __init__(self, name):
        self.x11 = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
        for call in ("XOpenDisplay", "XGetImage"):
            getattr(self.x11, call).restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XGetPixel.restype = ctypes.c_ulong
        # A window may go between two calls; that is no fault.
        self.ignore = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, error: 0)
        self.x11.XSetErrorHandler(self.ignore)
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(name.encode()))
        if not self.display:
            raise Failed(f"the display {name} cannot be opened")
        self.root = self.x11.XDefaultRootWindow(self.display)

    def close(self):
        self.x11.XCloseDisplay(self.display)

    def children(self, window):
        root, parent = ctypes.c_ulong(), ctypes.c_ulong()
        found, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
        if not self.x11.XQueryTree(self.display, ctypes.c_ulong(window), ctypes.byref(root), ctypes.byref(parent),
                                   ctypes.byref(found), ctypes.byref(count)):
            return []
        windows = [found[i] for i in range(count.value)]
        if count.value:
            self.x11.XFree(found)
        return windows

    def name(self, window):
        text = ctypes.c_char_p()
        if not self.x11.XFetchName(self.display, ctypes.c_ulong(window), ctypes.byref(text)):
            return ""
        name = text.value.decode(errors="replace")
        self.x11.XFree(text)
        return name

    def find(self, name, least_width):
        """The window whose name ends so, of at least that width, that can be seen; None."""
        waiting = [self.root]
        while waiting:
            window = waiting.pop()
            waiting += self.children(window)
            if not self.name(window).endswith(name):
                continue
            facts = Attributes()
            if (self.x11.XGetWindowAttributes(self.display, ctypes.c_ulong(window), ctypes.byref(facts))
                    and facts.map_state == self.VIEWABLE and facts.width >= least_width):
                return window
        return None

    def is_painted(self, window, width, height):
        """Whether the strip at the window's top left holds more than one colour."""
        image = self.x11.XGetImage(self.display, ctypes.c_ulong(window), 0, 0, width, height,
                                   ctypes.c_ulong(0xFFFFFFFF), self.Z_PIXMAP)
        if not image:
            return False
        image = ctypes.c_void_p(image)
        colours = {self.x11.XGetPixel(image, x, y) for x in range(width) for y in range(0, height, 3)}
        self.x11.XDestroyImage(image)
        return len(colours) > 1


def until(condition, what):
    """What the condition gives, once it gives something."""
    limit = time.monotonic() + LIMIT_S
    while time.monotonic() < limit:
        found = condition()
        if found:
            return found
        time.sleep(POLL_S)
    raise Failed(f"{what} did not come within {LIMIT_S} s")


def family(process):
    """The process and all that it has started."""
    found = [process]
    try:
        with open(f"/proc/{process}/task/{process}/children", encoding="ascii") as children:
            for child in children.read().split():
                found += family(int(child))
    except OSError:
        pass  # it has ended
    return found


def memory_mib(process):
    """PSS and RSS of a process with its children."""
    sums = {"Pss": 0, "Rss": 0}
    for member in family(process):
        try:
            with open(f"/proc/{member}/smaps_rollup", encoding="ascii") as lines:
                for line in lines:
                    words = line.replace(":", " ").split()
                    if words[0] in sums:
                        sums[words[0]] += int(words[1]) / 1024
        except OSError:
            pass
    return sums["Pss"], sums["Rss"]


@dataclass
class Start:
    """What one start took."""

    seconds: float
    pss_mib: float = 0
    rss_mib: float = 0


def one_start(display, name, program, home, reads_memory=False):
    """From the start of the process."""
    folders = {f"XDG_{kind}": home for kind in ("CONFIG_HOME", "DATA_HOME", "STATE_HOME", "CACHE_HOME", "RUNTIME_DIR")}
    environment = dict(os.environ, DISPLAY=name, QT_QPA_PLATFORM="xcb", SDL_AUDIODRIVER="dummy", HOME=home, **folders)
    begin = time.monotonic()
    process = subprocess.Popen([program.command], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        window = until(lambda: display.find(program.title, program.width), f"the main window of {program.command}")
        until(lambda: display.is_painted(window, 200, 20), "its first painting")
        took = Start(time.monotonic() - begin)
        if reads_memory:
            time.sleep(SETTLED_S)
            took.pss_mib, took.rss_mib = memory_mib(process.pid)
        return took
    finally:
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def with_display(measure):
    """Runs `measure(display, name)` on a server of its own with a window manager."""
    for needed in ("Xvfb", "openbox"):
        if not installed(needed):
            raise Failed(f"{needed} is missing; scripts/setup bench installs it")
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1600x1000x24", "-nolisten", "tcp"],
                              pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write)
    children = [server]
    try:
        with os.fdopen(read) as number:
            name = ":" + number.readline().strip()
        if name == ":":
            raise Failed("Xvfb did not start")
        children.append(subprocess.Popen(["openbox"], env=dict(os.environ, DISPLAY=name), stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL))
        display = Display(name)
        until(lambda: display.children(display.root), "the window manager")
        result = measure(display, name)
        display.close()
        return result
    finally:
        for child in reversed(children):
            child.terminate()
            child.wait()


def by_turns(programs, rounds, reads_memory):
    """The starts of each, but for the first round."""
    def measure(display, name):
        with tempfile.TemporaryDirectory() as homes:
            starts = {program.command: [] for program in programs}
            for number in range(rounds + 1):
                for program in programs:
                    progress(f"start: round {number} {program.command}")
                    home = os.path.join(homes, program.title)
                    os.makedirs(home, mode=0o700, exist_ok=True)
                    starts[program.command].append(one_start(display, name, program, home, reads_memory))
            return {command: all_[1:] for command, all_ in starts.items()}

    return with_display(measure)


def median_of(starts, what):
    return statistics.median(getattr(one, what) for one in starts)


def start(rounds=10, program=PROGRAM):
    """A row for the table of bench.py."""
    seconds = [one.seconds for one in by_turns([Program(program, "Quillmont")], rounds, False)[program]]
    median = statistics.median(seconds)
    return {"work": "start", "text": f"{median:.3f} s to the painted window ({min(seconds):.3f} to {max(seconds):.3f})",
            "asked": f"{ASKED_S} s", "seconds": [round(one, 3) for one in seconds], "met": median < ASKED_S}


def against_peers(rounds, program):
    """A table: medians of each, and the shares of the quickest peer."""
    peers = [peer for peer in PEERS if installed(peer.command)]
    if not peers:
        raise Failed("no other editor is installed; scripts/setup bench installs some")
    starts = by_turns([Program(program, "Quillmont")] + peers, rounds, True)
    quickest = min(peers, key=lambda peer: median_of(starts[peer.command], "seconds")).command
    print(f"{'':12}{'s':>8}{'PSS MiB':>10}{'RSS MiB':>10}")
    for command, all_ in starts.items():
        print(f"{os.path.basename(command):12}{median_of(all_, 'seconds'):8.3f}{median_of(all_, 'pss_mib'):10.1f}"
              f"{median_of(all_, 'rss_mib'):10.1f}")
    shares = [median_of(starts[program], what) / median_of(starts[quickest], what)
              for what in ("seconds", "pss_mib", "rss_mib")]
    print(f"of {quickest:9}{shares[0]:8.2f}{shares[1]:10.2f}{shares[2]:10.2f}   (asked: at most {ASKED_TIME} and "
          f"{ASKED_MEMORY})   {'yes' if shares[0] <= ASKED_TIME and shares[1] <= ASKED_MEMORY else 'NO'}")


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("--rounds", type=int, default=10)
    words.add_argument("--peers", action="store_true")
    words.add_argument("--program", default=PROGRAM)
    asked = words.parse_args()
    try:
        if asked.peers:
            against_peers(asked.rounds, asked.program)
            return
        row = start(asked.rounds, asked.program)
    except Failed as failed:
        sys.exit(str(failed))
    print(f"{row['work']:10} {row['text']}   (asked: {row['asked']})   {'yes' if row['met'] else 'NO'}")


if __name__ == "__main__":
    main()
