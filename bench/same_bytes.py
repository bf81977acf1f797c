"""Whether the same project saved twice gives the same bytes, with every compressor of this machine."""
import hashlib

from harness import RENDER, Failed, output_of, progress, run
from timelines import cuts, write_cuts


def same_bytes(clips):
    project = clips.path("same.qpj")
    write_cuts(project, cuts([clips.short_gop, clips.mpeg4], 4, 600), 320, 240)
    differ, failed, count = [], [], 0
    for name, words, extension in saves():
        progress(f"same-bytes: {name}")
        count += 1
        try:
            sums = [saved(project, clips.path(f"same-{turn}.{extension}"), words) for turn in (1, 2)]
        except Failed as why:
            progress(str(why))
            failed.append(name)
            continue
        if sums[0] != sums[1]:
            differ.append(name)
    text = f"{count - len(differ) - len(failed)} of {count} ways of saving give the same bytes"
    text += f"; differ: {', '.join(differ)}" if differ else ""
    text += f"; failed: {', '.join(failed)}" if failed else ""
    return {"work": "same-bytes", "text": text, "asked": "all", "differ": differ, "failed": failed,
            "met": not differ and not failed}


def saves():
    """(name, words, extension) of each way."""
    kind = None
    for line in output_of([RENDER, "--list-compressors"]).splitlines():
        if not line.startswith(" "):
            kind = line.rstrip(":").lower()
            continue
        name = line.strip()
        size = ["--size", "720x576"] if name == "DV" else []
        yield f"{kind} {name}", [f"--{kind}-compressor", name] + size, "avi"
    yield "Windows Media", [], "wmv"


def saved(project, output, words):
    run([RENDER, project, "-o", output, "--fps", "25"] + words)
    with open(output, "rb") as movie:
        return hashlib.sha256(movie.read()).hexdigest()
