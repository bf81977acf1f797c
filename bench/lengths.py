"""What length costs: a second of movie in a long movie and in a short one (the same twenty cuts, once and ten times
over), and the first picture of a very large file."""
import os
import statistics

from harness import MEASURE, median_run, output_of, progress, run
from timelines import cuts, write_cuts
from works import MJPEG, save

ASKED = 1.1
ASKED_MIB = 300

FIRST_MS = 200
FIRST_MIB = 16


def first_picture(clips):
    """Medians of five, at the beginning and in the middle; the bytes are the most."""
    path = clips.path("first-picture.avi")
    run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "testsrc2=s=1280x720:r=25", "-f", "lavfi", "-i",
         "sine=r=48000", "-t", "43", "-c:v", "rawvideo", "-pix_fmt", "bgr24", "-c:a", "pcm_s16le", path])
    places = {}
    try:
        for at_ms in (0, 20000):
            progress(f"first-picture: at {at_ms} ms")
            said = [output_of([MEASURE, "first-picture", path, str(at_ms)]).split() for _ in range(5)]
            places[at_ms] = (statistics.median(float(one[1]) for one in said), max(int(one[3]) for one in said) / 2**20)
    finally:
        os.remove(path)
    text = ", ".join(f"at {at_ms / 1000:.0f} s: {ms:.0f} ms, {mib:.1f} MiB read" for at_ms, (ms, mib) in places.items())
    return {"work": "first-picture", "text": text, "asked": f"{FIRST_MS} ms, {FIRST_MIB} MB", "places": places,
            "met": all(ms <= FIRST_MS and mib * 2**20 < FIRST_MIB * 1e6 for ms, mib in places.values())}


def cost_per_length(clips, rounds):
    minute = cuts(clips.mixed)
    runs = {"minute": [], "ten": []}
    commands = {}
    for name, pieces in (("minute", minute), ("ten", minute * 10)):
        project = clips.path(f"length-{name}.qpj")
        write_cuts(project, pieces)
        commands[name] = save(project, clips.path(f"length-{name}.avi"), MJPEG)
    run(commands["minute"])
    for number in range(rounds):
        for name, command in commands.items():
            progress(f"cost-per-length: {name}, round {number + 1}")
            runs[name].append(run(command))
    short, long = median_run(runs["minute"]), median_run(runs["ten"])
    ratio = (long.cpu_s / 600) / (short.cpu_s / 60)
    text = (f"{long.cpu_s / 600:.4f} against {short.cpu_s / 60:.4f} CPU s a second, ratio {ratio:.3f}; "
            f"{long.memory_mib:.0f} against {short.memory_mib:.0f} MiB")
    return {"work": "cost-per-length", "text": text, "asked": f"{ASKED}, {ASKED_MIB} MiB", "ratio": round(ratio, 3),
            "memory_mib": [round(short.memory_mib), round(long.memory_mib)],
            "met": ratio <= ASKED and max(short.memory_mib, long.memory_mib) < ASKED_MIB}
