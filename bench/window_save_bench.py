#!/usr/bin/env python3
"""Saving from the window against quillmont-render of the same project, in processor time, by turns.

usage: bench/window_save_bench.py PROJECT [--ending avi|wmv] [--rounds N]

The project's frame is 320 x 240, and its movies must be alike to the byte.

The window's part is the save itself, from Save to its end; the other one's is the whole run. Needs
build/bin/quillmont-save-bench and build/bin/quillmont-render.
"""
import argparse
import filecmp
import os
import re
import statistics
import subprocess
import sys
import tempfile

from harness import ROOT, progress, run

ASKED = 1.05
USUAL = {  # what the window begins with
    "avi": ["--fps", "15", "--size", "320x240", "--video-compressor", "Uncompressed"],
    "wmv": ["--profile", "Video for dial-up modems or LAN (28.8 to 100 Kbps)", "--size", "320x240"],
}


def window_cpu_s(project, movie):
    command = [os.path.join(ROOT, "build", "bin", "quillmont-save-bench"), project, movie]
    text = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    found = re.search(r"processor for the save: (\d+) ms   Save Complete", text)
    if not found:
        sys.exit("the window did not save: " + text)
    return int(found[1]) / 1000


def render_cpu_s(project, movie):
    command = [os.path.join(ROOT, "build", "bin", "quillmont-render"), project, "-o", movie]
    return run(command + USUAL[movie[-3:]]).cpu_s


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("project")
    parser.add_argument("--ending", choices=["avi", "wmv"], default="avi")
    parser.add_argument("--rounds", type=int, default=7)
    words = parser.parse_args()
    ratios = []
    with tempfile.TemporaryDirectory() as folder:
        for number in range(words.rounds):
            ours = window_cpu_s(words.project, os.path.join(folder, "window." + words.ending))
            other = render_cpu_s(words.project, os.path.join(folder, "render." + words.ending))
            if not filecmp.cmp(os.path.join(folder, "window." + words.ending),
                               os.path.join(folder, "render." + words.ending), shallow=False):
                sys.exit("the two movies differ: other options?")
            ratios.append(ours / other)
            progress(f"round {number + 1}: window {ours:.2f} s, render {other:.2f} s, {ratios[-1]:.3f}")
            for name in os.listdir(folder):
                os.remove(os.path.join(folder, name))
    median = statistics.median(ratios)
    print(f"window / render, median of {len(ratios)}: {median:.3f}, asked {ASKED}: {'yes' if median <= ASKED else 'NO'}")


if __name__ == "__main__":
    main()
