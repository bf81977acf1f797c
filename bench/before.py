"""Each save against an older build of ours: pairs by turns, and the medians of their ratios, which drift of the machine
leaves alone."""
import os
import statistics

from harness import Failed, progress, run

ASKED_CPU = 1.05
ASKED_WALL = 1.1


def time_against(work, rounds, folder):
    """A row of the results. `folder` holds the older quillmont-render."""
    older = os.path.join(folder, os.path.basename(work.ours[0]))
    if not os.path.exists(older):
        raise Failed(f"{older} is not there: name the folder of programs of an older build")
    place = work.ours.index("-o") + 1
    head, extension = os.path.splitext(work.ours[place])
    before = [older] + work.ours[1:place] + [head + "-before" + extension] + work.ours[place + 1:]
    pairs = []
    for number in range(min(rounds, max(3, work.most_rounds)) + 1):
        progress(f"{work.name}: against the older build, round {number}")
        # Who begins changes with every round, so that a warm disk helps both alike.
        sides = {"now": work.ours, "before": before}
        runs = {side: run(sides[side]) for side in (list(sides) if number % 2 else reversed(list(sides)))}
        if number > 0:
            pairs.append((runs["now"], runs["before"]))
    cpu = statistics.median(now.cpu_s / then.cpu_s for now, then in pairs)
    wall = statistics.median(now.wall_s / then.wall_s for now, then in pairs)
    memory = [max(one[side].memory_mib for one in pairs) for side in (0, 1)]
    text = (f"CPU {cpu:.3f}, wall {wall:.3f} of the older build's; "
            f"{statistics.median(now.cpu_s for now, _ in pairs):.2f} CPU s, {memory[0]:.0f} against {memory[1]:.0f} MiB")
    return {"work": work.name, "text": text, "asked": f"{ASKED_CPU}, {ASKED_WALL}", "cpu_ratio": round(cpu, 3),
            "wall_ratio": round(wall, 3), "met": cpu <= ASKED_CPU and wall <= ASKED_WALL}
