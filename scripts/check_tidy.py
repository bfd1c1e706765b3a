#!/usr/bin/env python3
"""Runs clang-tidy over the engine, desktop/ and the shell, each file once for what it reads.

    check_tidy.py STAMPS    STAMPS: the folder that remembers which bytes were clean

A file is looked at again when it, a header that it includes or the settings have changed. Needs the
compile commands of both builds.
"""

import concurrent.futures
import hashlib
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
NATIVE = ("core", "web", "report", "file")
WINDOWS = ("desktop", "shell")
COMPILER = "x86_64-w64-mingw32-g++-posix"

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def windows_options():
    """What makes clang read a source as the cross compiler does: its target and its headers."""
    told = subprocess.run([COMPILER, "-E", "-x", "c++", "-v", os.devnull], capture_output=True,
                          text=True, check=True).stderr
    folders = re.findall(r"^ (/\S*c\+\+\S*)$", told, re.MULTILINE)
    return ["-p", "build/windows", "--extra-arg=--target=x86_64-w64-windows-gnu",
            *(f"--extra-arg=-isystem{folder}" for folder in folders)]


def files_read(path, found):
    """Adds the file and every header of ours that it includes."""
    if path not in found and path.is_file():
        found.add(path)
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            files_read(ROOT / name, found)
    return found


def stamp_of(stamps, path, options):
    digest = hashlib.sha256(repr(options).encode())
    for one in (ROOT / ".clang-tidy", *sorted(files_read(path, set()))):
        digest.update(one.read_bytes())
    return stamps / f"tidy-{path.stem}-{digest.hexdigest()[:24]}"


def tidy(stamps, path, options):
    """Returns what clang-tidy has against the file, "" when nothing."""
    stamp = stamp_of(stamps, path, options)
    if stamp.exists():
        return ""
    # The build is g++'s: clang-tidy need not know each of its options.
    options = [*options, "--extra-arg=-Wno-ignored-optimization-argument"]
    result = subprocess.run(["clang-tidy", "--quiet", *options, path.relative_to(ROOT)], cwd=ROOT,
                            capture_output=True, text=True, check=False)
    if result.returncode == 0:
        stamp.touch()
        return ""
    return result.stdout or result.stderr or f"{path}: clang-tidy failed\n"


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    stamps = pathlib.Path(arguments[0])
    jobs = [(path, ["-p", "build/native"]) for folder in NATIVE
            for path in sorted((ROOT / folder).rglob("*.cpp"))]
    options = windows_options()
    jobs += [(path, options) for folder in WINDOWS for path in sorted((ROOT / folder).rglob("*.cpp"))]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = list(pool.map(lambda job: tidy(stamps, *job), jobs))
    print("".join(faults), end="")
    sys.exit(1 if any(faults) else 0)


main(sys.argv[1:])
