#!/usr/bin/env python3
"""Runs what the documents show: tour_test.py QVX DOCUMENT...

In each block of a document that is fenced as `console`, a line "$ COMMAND" is run by bash, in a folder
that the document's blocks share, and what it prints must be the lines below it, up to the next
command. "[exit status N]" as the last of them is the status where it is not 0. One line for each fault,
exit status 1 if any.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def steps_of(text):
    """Yields (line number, command, what it prints)."""
    for block in BLOCK.finditer(text):
        line = text.count("\n", 0, block.start(1)) + 1
        for step in re.split(r"^(?=\$ )", block[1], flags=re.MULTILINE):
            if step:
                command, rest = step.split("\n", 1)
                while command.endswith("\\"):
                    more, rest = rest.split("\n", 1)
                    command += "\n" + more.removeprefix("> ")
                yield line, command.removeprefix("$ "), rest
            line += step.count("\n")


def run(command, folder, programs):
    environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}", LC_ALL="C.UTF-8")
    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, timeout=60,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    text = done.stdout.decode(errors="replace")
    text += "" if text.endswith("\n") or not text else "\n"
    return text + (f"[exit status {done.returncode}]\n" if done.returncode else "")


def faults_of(document, programs):
    steps = list(steps_of(document.read_text(encoding="utf-8")))
    if not steps:
        yield f"{document}: no command in it"
    with tempfile.TemporaryDirectory() as folder:
        for line, command, expected in steps:
            printed = run(command, folder, programs)
            if printed != expected:
                yield f"{document}:{line}: {command}\nprints\n{printed}and not\n{expected}"


def main(qvx, *documents):
    with tempfile.TemporaryDirectory() as programs:
        (pathlib.Path(programs) / "qvx").symlink_to(pathlib.Path(qvx).resolve())
        faults = [fault for name in documents for fault in faults_of(pathlib.Path(name), programs)]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
