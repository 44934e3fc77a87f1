#!/usr/bin/env python3
"""Fails where a source file reaches into a ring that it must not know, or where a procedure's name breaks the rule.

What is under src/platform/qt may use Qt, what is under src/platform/mime may use the library that reads MIME, all else
is standard C++. Each folder of the features keeps its decisions in a folder of that name: they never include a
procedure, and know only their own feature and the features before it. Each ring is a library of src/CMakeLists.txt.
"""
import pathlib
import re
import sys

FOLDERS = ["platform", "options", "accounts", "messages", "rules", "checking", "app"]
DECISIONS, PROCEDURES = "velmora_decisions", "velmora_procedures"
NETWORK = "velmora_network"  # connections, the part of the desktop that needs no screen

root = pathlib.Path(sys.argv[1]) / "src"
libraries = {
    name: set(re.findall(r"^\s+(\S+\.(?:cpp|h))$", body, re.M))
    for name, body in re.findall(r"add_(?:library|executable)\((\S+)([^)]*)\)", (root / "CMakeLists.txt").read_text())
}
library_of = {file: name for name, files in libraries.items() for file in files}
faults = []


def ring_of(file):
    """The library that a file's place makes it part of."""
    if file == "main.cpp":
        return "Velmora"
    if file.startswith("platform/qt/") and library_of.get(file) == NETWORK:
        return NETWORK
    for folder, library in {"platform/qt/": "velmora_desktop", "platform/mime/": "velmora_mime"}.items():
        if file.startswith(folder):
            return library
    if file.startswith("platform/"):
        return "velmora_platform"
    return DECISIONS if "/decisions/" in file else PROCEDURES


def is_standard(header):
    return re.fullmatch(r"[a-z_]+", header) is not None


def check(file, included, angled):
    ring = "/".join(file.split("/")[:2])
    if angled:
        if ring not in ("platform/qt", "platform/mime") and file != "main.cpp" and not is_standard(included):
            faults.append(f"{file}: <{included}> is not of the standard library")
        return
    if not (root / included).exists():
        faults.append(f'{file}: "{included}" is no file of src')
        return
    here, there = library_of.get(file), library_of.get(included)
    if here == DECISIONS:
        if there == PROCEDURES:
            faults.append(f"{file}: a decision includes the procedures of {included}")
        if FOLDERS.index(included.split("/")[0]) > FOLDERS.index(file.split("/")[0]):
            faults.append(f"{file}: {included} lies in a folder that comes later")
    if here == "velmora_platform" and there != "velmora_platform":
        faults.append(f"{file}: {included} is not the platform's")
    if file.startswith("platform/mime/") and there not in ("velmora_platform", "velmora_mime"):
        faults.append(f"{file}: {included} is not for the reader of messages")
    if here == NETWORK and there not in ("velmora_platform", NETWORK):
        faults.append(f"{file}: {included} is not for connections")
    if here in (DECISIONS, PROCEDURES) and there in ("velmora_desktop", NETWORK, "velmora_mime"):
        faults.append(f"{file}: {included} belongs to the desktop")


files = sorted(str(path.relative_to(root)) for path in root.rglob("*") if path.suffix in (".cpp", ".h"))
for file in files:
    if library_of.get(file) != ring_of(file):
        faults.append(f"{file} belongs to {library_of.get(file, 'no library')} instead of {ring_of(file)}")
    for angle, quote in re.findall(r'^\s*#\s*include\s*(?:<([^>]+)>|"([^"]+)")', (root / file).read_text(), re.M):
        check(file, angle or quote, bool(angle))

    if file.endswith(".h") and ring_of(file) == PROCEDURES:
        for name in re.findall(r"^void (\w+)\(Program&", (root / file).read_text(), re.M):
            if not re.match(r"[A-Z]|\w+_[A-Z]", name):
                faults.append(f"{file}: {name} is a procedure, and should begin with a capital")

print("\n".join(faults) or f"{len(files)} files keep to the structure")
sys.exit(1 if faults or len(files) < 50 else 0)
