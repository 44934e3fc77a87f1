"""How long the program takes to show its window, what it does when nothing happens, and how its list answers."""

import collections
import contextlib
import os
import pathlib
import time

from private_desktop import keep_all_in, make_folder, open_screen
from timing import Failed, Row, Spread, output, start

FRAME = 16  # milliseconds
STARTING = 5  # seconds, more than a start takes


def list_rows(programs, count, runs):
    """The longest turn of the event loop for each thing that is done to a list of so many messages."""
    longest = collections.defaultdict(list)
    for _ in range(runs):
        for line in output([programs / "list", count], env=os.environ | {"QT_QPA_PLATFORM": "offscreen"}).splitlines():
            step, milliseconds = line.split("\t")
            longest[step].append(float(milliseconds))
    if not longest:
        raise Failed("list said nothing")
    for step, values in longest.items():
        yield Row(step, [Spread(values).text(1)], f"{FRAME} ms", max(values) <= FRAME)


def start_row(programs, program, runs):
    """An empty home each time, and one start before those that count, which reads the program from the disk."""
    times = [appear(programs, program) for _ in range(runs + 1)][1:]
    return Row("Start to window", [f"{Spread(times).text(0)} ms"], "75 to 116 ms", Spread(times).median <= 116)


def appear(programs, program):
    with contextlib.ExitStack() as stack:
        keep_all_in(make_folder(stack))
        said = output([programs / "appear", program])
        if not said:
            raise Failed("Velmora showed no window")
        return float(said)


def idle_row(stack, program, seconds):
    keep_all_in(make_folder(stack))
    process = start([program])
    stack.callback(process.communicate)
    stack.callback(process.terminate)
    time.sleep(STARTING)
    before = ticks(process)
    time.sleep(seconds)
    spent = ticks(process) - before
    return Row(f"At rest, {seconds} s", [f"{spent} ticks of 10 ms"], "1 tick", spent <= 1)


def ticks(process):
    """Of processor time, by the program and for it."""
    if process.poll() is not None:
        raise Failed(f"Velmora has ended with {process.returncode}")
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def start_and_rest(stack, programs, program, runs, seconds):
    open_screen(stack)
    yield start_row(programs, program, runs)
    yield idle_row(stack, program, seconds)
