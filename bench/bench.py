#!/usr/bin/env python3
"""Measures of Quillmont, most of them against other programs doing the same work on the same machine in the same run.

usage: bench/bench.py [--rounds N] [--peers] [--quality] [--same-bytes] [--only NAME[,NAME]] [--before FOLDER]
                      [--work FOLDER] [--list]

Saves are timed against the ffmpeg command line with the same encoder and settings, by turns, after a round that is
not counted; figures are medians. With --peers melt and ges-launch-1.0 save some of them too. Without --only, --quality
or --same-bytes everything is measured. With --before the saves are timed against quillmont-render of an older build, whose
programs lie in that folder, and nothing else is measured. The other measures are:

  open-hour, walk-10000   opening a file of an hour; walking a track of 10,000 sources
  first-picture           time and bytes until the first picture of an AVI of 2.9 GB that is not in memory (the file is
                          made for it and removed behind it)
  cost-per-length         CPU time for a second of movie and memory, 10 minutes against one
  seeks                   exact seeks against mpv's, and whether each frame is the right one
  quality                 luma PSNR of the saved cuts against a timeline that was not encoded, slipped frames, sound
  floors                  what saves of cuts would take if only decoders and encoders worked, beside what they take
  same-bytes              whether saving twice gives the same bytes, with every compressor

Clips are made once in the folder (build/bench by default) from a real video: the one that Debian's python3-imageio
brings, or any that BENCH_VIDEO names. results.json there holds all figures. Needs build/bin/quillmont-render,
quillmont-measure and quillmont-floor-bench beside it, and ffmpeg; scripts/setup bench installs the rest.
"""
import argparse
import json
import os
import statistics
import sys

sys.dont_write_bytecode = True  # the modules beside this one leave nothing in the source tree

import before
import floors
import lengths
import quality
import same_bytes
import seeks
from harness import MEASURE, ROOT, Failed, output_of, progress
from media import Clips
from timing import time_work
from works import works


def measured(name, what, path):
    """Median of five runs of quillmont-measure's one number, after one that is not counted."""
    progress(name)
    runs = [float(output_of([MEASURE, what, path]).split()[1]) for _ in range(6)]
    value = statistics.median(runs[1:])
    return {"work": name, "ms": round(value, 2), "text": f"{value:.1f} ms", "asked": "", "met": None}


def measures(clips, words):
    """Name: what gives its rows."""
    table = {}
    if words.before:
        return {work.name: lambda work=work: [before.time_against(work, words.rounds, words.before)]
                for work in works(clips).values()}
    for work in works(clips).values():
        table[work.name] = lambda work=work: [time_work(work, words.rounds, words.peers)]
    table["open-hour"] = lambda: [measured("open-hour", "open", clips.hour())]
    table["walk-10000"] = lambda: [measured("walk-10000", "walk", clips.short_gop)]
    table["first-picture"] = lambda: [lengths.first_picture(clips)]
    table["cost-per-length"] = lambda: [lengths.cost_per_length(clips, words.rounds)]
    table["seeks"] = lambda: seeks.seeks(clips, words.rounds)
    table["floors"] = lambda: floors.floors(clips, words.rounds)
    table["quality"] = lambda: [quality.quality(clips)]
    table["same-bytes"] = lambda: [same_bytes.same_bytes(clips)]
    return table


def parsed():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("--rounds", type=int, default=5)
    words.add_argument("--work", default=os.path.join(ROOT, "build", "bench"))
    words.add_argument("--only", default="")
    words.add_argument("--peers", action="store_true")
    words.add_argument("--before", default="")
    words.add_argument("--quality", action="store_true")
    words.add_argument("--same-bytes", action="store_true")
    words.add_argument("--list", action="store_true")
    words = words.parse_args()
    words.only = [name for name in words.only.split(",") if name]
    words.only += ["quality"] * words.quality + ["same-bytes"] * words.same_bytes
    return words


def shown(row):
    """A row as columns."""
    met = {True: "yes", False: "NO", None: ""}[row["met"]]
    if "text" in row:
        return f"{row['work']:23} {row['text']}   (asked: {row['asked']})   {met}" if row["asked"] else \
            f"{row['work']:23} {row['text']}"

    def column(key, form, width):
        value = row.get(key)
        return f"{'-' if value is None else format(value, form):>{width}}"

    line = (f"{row['work']:23} {column('ours_s', '.2f', 8)} {column('ffmpeg_s', '.2f', 8)} {column('ratio', '.2f', 6)} "
            f"{column('asked', '.2f', 6)} {met:>4} {column('ours_cpu_s', '.1f', 7)} {column('ffmpeg_cpu_s', '.1f', 7)} "
            f"{column('ours_memory_mib', 'd', 6)} {column('melt_s', '.2f', 8)} {column('ges_s', '.2f', 8)}")
    line += f"   ges ratio {row['ges_ratio']:.2f}, asked {row['ges_asked']}" if "ges_asked" in row else ""
    return line + "".join(f"\n{'':24}{note}" for note in row["notes"])


def print_table(rows):
    timed = [row for row in rows if "text" not in row]
    if timed:
        print(f"{'work, in seconds':23} {'ours':>8} {'ffmpeg':>8} {'ratio':>6} {'asked':>6} {'met':>4} {'our CPU':>7} "
              f"{'its CPU':>7} {'MiB':>6} {'melt':>8} {'ges':>8}")
    for row in timed + [row for row in rows if "text" in row]:
        print(shown(row))


def main():
    words = parsed()
    clips = Clips(words.work)
    table = measures(clips, words)
    if words.list:
        print("\n".join(table))
        return
    unknown = [name for name in words.only if name not in table]
    if unknown:
        sys.exit(f"there is no measure {', '.join(unknown)}; see --list")
    results = []
    try:
        for name in words.only or table:
            for row in table[name]():
                results.append(row)
                progress(shown(row))
    except Failed as failed:
        sys.exit(str(failed))
    finally:
        with open(os.path.join(words.work, "results.json"), "w", encoding="utf-8") as out:
            json.dump(results, out, indent=1)
    print_table(results)


if __name__ == "__main__":
    main()
