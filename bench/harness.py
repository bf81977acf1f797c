"""Running and timing programs: what every measure here is made with."""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import threading
import time
from dataclasses import dataclass

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
RENDER = os.path.join(ROOT, "build", "bin", "quillmont-render")
MEASURE = os.path.join(ROOT, "build", "bin", "quillmont-measure")


class Failed(Exception):
    """A program that did not end well, with the end of what it said."""


@dataclass
class Run:
    """What one run took."""

    wall_s: float
    cpu_s: float
    memory_mib: float


def run(command, limit_s=1800):
    """Runs a command to its end. CPU time and memory are the kernel's own account of the child."""
    with tempfile.TemporaryFile() as said:
        begin = time.monotonic()
        child = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=said, stderr=said)
        limit = threading.Timer(limit_s, child.kill)
        limit.start()
        _, status, used = os.wait4(child.pid, 0)
        wall = time.monotonic() - begin
        limit.cancel()
        child.returncode = os.waitstatus_to_exitcode(status)
        if child.returncode != 0:
            said.seek(0)
            tail = said.read().decode(errors="replace")[-2000:]
            raise Failed(f"{' '.join(command)[:300]}...\nfailed with {child.returncode}:\n{tail}")
    return Run(wall, used.ru_utime + used.ru_stime, used.ru_maxrss / 1024)


def median_run(runs):
    """Medians of time, the largest memory."""
    return Run(statistics.median(one.wall_s for one in runs), statistics.median(one.cpu_s for one in runs),
               max(one.memory_mib for one in runs))


def output_of(command, text=None):
    """What a command writes to standard output."""
    done = subprocess.run(command, input=text, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise Failed(f"{' '.join(command)[:300]}...\nfailed with {done.returncode}:\n{done.stderr[-2000:]}")
    return done.stdout


def installed(program):
    return shutil.which(program) is not None


def memory_free_gib():
    with open("/proc/meminfo", encoding="ascii") as lines:
        return next(int(line.split()[1]) for line in lines if line.startswith("MemAvailable")) / 2**20


def percentile(values, part):
    """The value that `part` of them (0 to 1) do not exceed."""
    values = sorted(values)
    return values[min(len(values) - 1, max(0, round(part * len(values) + 0.5) - 1))]


def progress(text):
    print(text, file=sys.stderr, flush=True)
