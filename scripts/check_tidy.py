#!/usr/bin/env python3
"""Runs clang-tidy over the engine, qvx, platform/, desktop/, handheld/ and the shell, each file once for
what it reads.

    check_tidy.py STAMPS    STAMPS: the folder that remembers which bytes were clean

A file is looked at again when it, a header that it includes or the settings have changed. Needs the
compile commands of the three builds.
"""

import concurrent.futures
import hashlib
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
NATIVE = ("core", "web", "report", "file", "program", "cli", "platform")
WINDOWS = ("desktop", "shell", "platform/windows", "pane")
HANDHELD = ("handheld", "pane/handheld")
HANDHELD_TARGET = ["--extra-arg=--target=armv4-unknown-linux-gnueabi", "--extra-arg=-fms-extensions"]
COMPILER = "x86_64-w64-mingw32-g++-posix"

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def windows_options():
    """What makes clang read a source as the cross compiler does: its target and its headers."""
    told = subprocess.run([COMPILER, "-E", "-x", "c++", "-v", os.devnull], capture_output=True,
                          text=True, check=True).stderr
    folders = re.findall(r"^ (/\S*c\+\+\S*)$", told, re.MULTILINE)
    return ["--extra-arg=--target=x86_64-w64-windows-gnu", *(f"--extra-arg=-isystem{folder}" for folder in folders)]


def compile_commands(stamps, preset):
    """Copies a build's compile commands without what clang does not know, and without precompiled
    headers, so that each source is seen to include what it needs; returns their folder."""
    folder = stamps / preset
    folder.mkdir(exist_ok=True)
    commands = (ROOT / "build" / preset / "compile_commands.json").read_text(encoding="utf-8")
    commands = re.sub(r" -f(lto|fat-lto-objects|no-use-linker-plugin|whole-program)[^ \"]*", "", commands)
    commands = re.sub(r" -m(no-thumb-interwork|structure-size-boundary=\d+)", "", commands)
    commands = re.sub(r" -Winvalid-pch -include [^ ]*/cmake_pch\.hxx", "", commands)
    (folder / "compile_commands.json").write_text(commands, encoding="utf-8")
    return str(folder)


def jobs(stamps):
    """Yields (source, what clang-tidy needs to find its compile command)."""
    native = ["-p", compile_commands(stamps, "native")]
    windows = ["-p", compile_commands(stamps, "windows"), *windows_options()]
    for folder in NATIVE:
        for path in sorted((ROOT / folder).rglob("*.cpp")):
            if not path.is_relative_to(ROOT / "platform/windows"):
                yield path, native
    for folder in WINDOWS:
        for path in sorted((ROOT / folder).rglob("*.cpp")):
            if not path.is_relative_to(ROOT / "pane/handheld"):
                yield path, windows
    handheld = ["-p", compile_commands(stamps, "handheld"), *HANDHELD_TARGET]
    for folder in HANDHELD:
        for path in sorted((ROOT / folder).rglob("*.cpp")):
            yield path, handheld


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
    # The build is g++'s: clang-tidy need not know each of its options and attributes, and g++ says
    # itself what is deprecated, without what its own library uses inside of stable sorts.
    options = [*options, "--extra-arg=-Wno-ignored-optimization-argument",
               "--extra-arg=-Wno-unknown-attributes", "--extra-arg=-Wno-deprecated-declarations"]
    result = subprocess.run(["clang-tidy-19", "--quiet", *options, path.relative_to(ROOT)], cwd=ROOT,
                            capture_output=True, text=True, check=False)
    if result.returncode == 0:
        stamp.touch()
        return ""
    return result.stdout or result.stderr or f"{path}: clang-tidy failed\n"


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    stamps = pathlib.Path(arguments[0])
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = list(pool.map(lambda job: tidy(stamps, *job), jobs(stamps)))
    print("".join(faults), end="")
    sys.exit(1 if any(faults) else 0)


main(sys.argv[1:])
