"""Timing one work: rounds of ours and the others by turns, after a round that is not counted."""
from harness import Failed, installed, median_run, memory_free_gib, output_of, progress, run


def time_work(work, rounds, with_peers):
    """A row of the results."""
    row = {"work": work.name, "asked": work.asked, "notes": []}
    sides = {"ours": work.ours}
    if work.ffmpeg_gib and memory_free_gib() < work.ffmpeg_gib:
        row["notes"].append(f"ffmpeg left out: it needs {work.ffmpeg_gib} GiB of memory")
    else:
        sides["ffmpeg"] = work.ffmpeg
    for name, peer in work.peers.items() if with_peers else []:
        if installed(peer.command[0]):
            sides[name] = peer.command
        else:
            row["notes"].append(f"{name} left out: it is not installed (scripts/setup bench)")
    medians = {side: median_run(runs) for side, runs in by_turns(work, sides, rounds, row["notes"]).items()}
    for side, one in medians.items():
        row[f"{side}_s"] = round(one.wall_s, 3)
        row[f"{side}_cpu_s"] = round(one.cpu_s, 3)
        row[f"{side}_memory_mib"] = round(one.memory_mib)
    verdicts = []
    for side, asked in [("ffmpeg", work.asked)] + [(name, peer.asked) for name, peer in work.peers.items()]:
        if side in medians:
            ratio = medians["ours"].wall_s / medians[side].wall_s
            row["ratio" if side == "ffmpeg" else f"{side}_ratio"] = round(ratio, 3)
            if asked is not None:
                verdicts.append(ratio <= asked)
                row["asked" if side == "ffmpeg" else f"{side}_asked"] = asked
    row["met"] = all(verdicts) if verdicts else None
    return row


def by_turns(work, sides, rounds, notes):
    """Runs of each side. A peer that fails is left out; we and ffmpeg may not fail."""
    runs = {side: [] for side in sides}
    counted = min(rounds, work.most_rounds)
    for number in range(counted + (work.most_rounds > 2)):
        for side in list(runs):
            progress(f"{work.name}: {side}, round {number + 1}")
            try:
                one = run(sides[side])
            except Failed as failed:
                if side in ("ours", "ffmpeg"):
                    raise
                progress(str(failed))
                notes.append(f"{side} left out: it failed")
                del runs[side]
                continue
            if number > 0 or work.most_rounds <= 2:
                runs[side].append(one)
    lengths = {side: picture_count(sides[side]) for side in ("ours", "ffmpeg") if side in runs}
    if max(lengths.values()) > 1.01 * min(lengths.values()):
        notes.append(f"pictures differ: {lengths}")
    return runs


def picture_count(command):
    """Pictures in the movie that a command of ours or of ffmpeg has written."""
    movie = command[command.index("-o") + 1] if "-o" in command else command[-1]
    return int(output_of(["ffprobe", "-v", "error", "-select_streams", "v:0", "-count_packets", "-show_entries",
                          "stream=nb_read_packets", "-of", "csv=p=0", movie]).split("\n")[0].strip(","))
