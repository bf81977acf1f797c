#!/usr/bin/env python3
"""From the start of the program to its main window, painted, on a display of its own.

usage: bench/start_bench.py [--rounds N]

The window is watched from outside, on the X server: it is up when it can be seen and its menu bar has been painted.
Median of ten starts, after one that fills the disk's cache. Needs build/bin/quillmont, Xvfb and openbox.
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

from harness import ROOT, Failed, installed, progress

PROGRAM = os.path.join(ROOT, "build", "bin", "quillmont")
ASKED_S = 0.6
LIMIT_S = 30
POLL_S = 0.001


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
        """The window of that name and at least that width that can be seen; None."""
        waiting = [self.root]
        while waiting:
            window = waiting.pop()
            waiting += self.children(window)
            if self.name(window) != name:
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


def one_start(display, name):
    """Seconds from the start of the process."""
    with tempfile.TemporaryDirectory() as home:
        folders = {kind: home for kind in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR")}
        environment = dict(os.environ, DISPLAY=name, QT_QPA_PLATFORM="xcb", SDL_AUDIODRIVER="dummy", **folders)
        begin = time.monotonic()
        program = subprocess.Popen([PROGRAM], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        try:
            window = until(lambda: display.find("Quillmont", 700), "the main window")
            until(lambda: display.is_painted(window, 200, 20), "its first painting")
            return time.monotonic() - begin
        finally:
            program.terminate()
            program.wait()


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


def start(rounds=10):
    """A row for the table of bench.py."""
    def measure(display, name):
        seconds = []
        for number in range(rounds + 1):
            progress(f"start: round {number}")
            seconds.append(one_start(display, name))
        return seconds[1:]

    seconds = with_display(measure)
    median = statistics.median(seconds)
    return {"work": "start", "text": f"{median:.3f} s to the painted window ({min(seconds):.3f} to {max(seconds):.3f})",
            "asked": f"{ASKED_S} s", "seconds": [round(one, 3) for one in seconds], "met": median < ASKED_S}


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("--rounds", type=int, default=10)
    try:
        row = start(words.parse_args().rounds)
    except Failed as failed:
        sys.exit(str(failed))
    print(f"{row['work']:10} {row['text']}   (asked: {row['asked']})   {'yes' if row['met'] else 'NO'}")


if __name__ == "__main__":
    main()
