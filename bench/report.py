"""The page of results."""

import os
import pathlib
import platform
import re
import subprocess

HEAD = """# Measurements

Made by `bench/run`; [CONTRIBUTING.md](../CONTRIBUTING.md) tells how to make them anew. Each figure is the median of
{runs} runs, with the least and the most of them behind it. What is held against each other ran in turns, so that a busy
moment met all of it alike.

{machine}
"""


def said(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()


def of_system(file, pattern):
    """What stands there, where it does: another system says it elsewhere."""
    try:
        found = re.search(pattern, pathlib.Path(file).read_text(), re.M)
    except OSError:
        return "unknown"
    return found[1] if found else "unknown"


def cached(build, name):
    return of_system(build / "CMakeCache.txt", rf"^{name}(?::\w+)?=(.*)$")


def machine(build):
    compiler = cached(build, "CMAKE_CXX_COMPILER")
    memory = of_system("/proc/meminfo", r"^MemTotal:\s+(\d+)")
    facts = {
        "Processor": of_system("/proc/cpuinfo", r"^model name\s*: (.*)$"),
        "Processors online": len(os.sched_getaffinity(0)),
        "Memory": f"{int(memory) / 2**20:.1f} GiB" if memory.isdigit() else memory,
        "Kernel": platform.release(),
        "Distribution": of_system("/etc/os-release", r'^PRETTY_NAME="?([^"\n]*)'),
        "Qt": said("pkg-config", "--modversion", "Qt6Core"),
        "Compiler": said(compiler, "--version").splitlines()[0],
        "Build": cached(build, "CMAKE_BUILD_TYPE"),
    }
    return table(["Machine", ""], [[name, str(value)] for name, value in facts.items()])


def table(heads, lines):
    return "\n".join(f"| {' | '.join(line)} |" for line in (heads, ["---"] * len(heads), *lines))


def section(title, text, heads, rows):
    """A row without a goal is only told."""
    judged = any(row.goal for row in rows)
    heads = [*heads, "Goal", "Met"] if judged else heads
    lines = [[row.what, *row.cells] + ([row.goal, "yes" if row.met else "**no**"] if judged else []) for row in rows]
    return f"\n## {title}\n\n{text}\n\n{table(heads, lines)}\n"


def page(build, runs, sections):
    return HEAD.format(runs=runs, machine=machine(build)) + "".join(section(*each) for each in sections)
