"""Times of whole processes, from their start to their end, as a shell sees them."""

import dataclasses
import os
import statistics
import subprocess
import time


class Failed(Exception):
    pass


@dataclasses.dataclass
class Spread:
    """What several runs have measured."""

    values: list[float]

    @property
    def median(self):
        return statistics.median(self.values)

    def text(self, digits):
        """The median, and the least and the most."""
        one = f"{self.median:.{digits}f}"
        return one if len(self.values) == 1 else f"{one} ({min(self.values):.{digits}f}..{max(self.values):.{digits}f})"


@dataclasses.dataclass
class Row:
    """A line of the results: the texts of its columns, and whether its goal is met."""

    what: str
    cells: list[str]
    goal: str = ""
    met: bool = True


def start(command, **options):
    return subprocess.Popen([str(each) for each in command], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                            **options)


def output(command, **options):
    """What a command says. Fails where the command does."""
    process = start(command, **options)
    said, complaint = process.communicate()
    if process.returncode != 0:
        name = os.path.basename(command[0])
        raise Failed(f"{name} ended with {process.returncode}: {(complaint or said).strip()}")
    return said


def time_once(command):
    """Seconds, and what the command said."""
    begin = time.perf_counter()
    said = output(command)
    return time.perf_counter() - begin, said


def take_turns(commands, runs, check):
    """Runs each of the commands in turn, and all of them so many times. `commands` has a name for each. What a command
    says is handed to `check`. Returns the times by the names."""
    times = {name: [] for name in commands}
    for _ in range(runs):
        for name, command in commands.items():
            seconds, said = time_once(command)
            check(name, said)
            times[name].append(seconds)
    return {name: Spread(values) for name, values in times.items()}
