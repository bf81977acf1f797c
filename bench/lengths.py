"""What a second of movie costs in a long movie and in a short one: the same twenty cuts, once and ten times over."""
from harness import median_run, progress, run
from timelines import cuts, write_cuts
from works import MJPEG, save

ASKED = 1.1
ASKED_MIB = 300


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
