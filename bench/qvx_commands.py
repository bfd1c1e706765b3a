"""qvx_commands.py QVX WEB [ROUNDS]: times commands of qvx on a web, each as a whole process, and
grep and rg over the same texts as files. Prints a table in Markdown.

All take turns, so that a machine that is busy meanwhile is busy for all. Beside the time on the
clock stands the processor's, which says more then.
"""

import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

K_SUBJECTS = (("dutkaki", False), ("ka", False), ("[bd]u[a-z]*ki", True))


def said(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


def write_texts(qvx, web, folder):
    """One file a cell."""
    for name in said(qvx, "list", "-0", web).decode().split("\0")[:-1]:
        (folder / name).write_bytes(said(qvx, "show", web, name))


def most_linked(qvx, web):
    return re.search(r"most_linked: (.*)", said(qvx, "stats", web).decode())[1]


def write_versions(web, folder):
    """Two versions of the web that differ from it, and from each other, in some lines each; and one
    that is cut off."""
    bytes_of_web = Path(web).read_bytes()
    versions = [folder / name for name in ("ours.qvx", "theirs.qvx", "cut.qvx")]
    lines = bytes_of_web.split(b"\n")
    for version, first in zip(versions, (20, 30)):
        version.write_bytes(b"\n".join(b"More " + line if number % 40 == first and line and
                                       not line.startswith(b"<") else line
                                       for number, line in enumerate(lines)))
    versions[2].write_bytes(bytes_of_web[:-100])
    return [str(version) for version in versions]


def commands(qvx, web, texts):
    most = most_linked(qvx, web)
    scratch = texts.parent / "renamed.qvx"
    ours, theirs, cut = write_versions(web, texts.parent)
    out = str(texts.parent / "out.qvx")
    rows = {"`true`, a process that does nothing": ["true"], "`qvx --version`": [qvx, "--version"]}
    for words in ("list", f"links -l {most}", "links", f"backlinks {most}", "orphans", "deadends",
                  "wanted", f"path home {most}", "stats", "graph", f"graph --cell {most}"):
        words = words.split()
        rows["`qvx " + " ".join(words) + "`"] = [qvx, words[0], web, *words[1:]]
    for subject, expression in K_SUBJECTS:
        e = ["-E"] if expression else []
        rows[f"`qvx find {' '.join(e + [subject])}`"] = [qvx, "find", "--case", *e, subject, web]
        rows[f"`grep -rn {' '.join(e + [subject])}`"] = ["grep", "-rn", *e, subject, str(texts)]
        rows[f"`rg -n {subject}`"] = ["rg", "-n", "--no-heading", subject, str(texts)]
    rows[f"`qvx rename {most} New_name --links`"] = [qvx, "rename", str(scratch), most, "New_name",
                                                     "--links"]
    rows["`qvx export --html OUT`"] = [qvx, "export", web, "--html", out + ".html"]
    rows["`qvx export --html -`"] = [qvx, "export", web, "--html", "-"]
    rows["`qvx diff`"] = [qvx, "diff", ours, theirs]
    rows["`qvx merge -o OUT`"] = [qvx, "merge", web, ours, theirs, "-o", out]
    rows["`qvx repair -o OUT`"] = [qvx, "repair", cut, "-o", out, "--force"]
    return rows, scratch


def timed(command):
    """Seconds on the clock and of the processor."""
    quiet = [(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)]
    start = time.perf_counter()
    child = os.posix_spawnp(command[0], command, os.environ, file_actions=quiet)
    _, status, used = os.wait4(child, 0)
    seconds = time.perf_counter() - start
    if os.waitstatus_to_exitcode(status) > 1:  # 1 is: nothing found
        sys.exit(f"{command} failed")
    return seconds, used.ru_utime + used.ru_stime


def same_hits(qvx, web, texts):
    """qvx and grep must find the same lines."""
    for subject, expression in K_SUBJECTS:
        e = ["-E"] if expression else []
        ours = said(qvx, "find", "--case", *e, subject, web).decode().splitlines()
        theirs = said("grep", "-rn", *e, subject, str(texts)).decode().splitlines()
        theirs = [line.removeprefix(f"{texts}/") for line in theirs]
        if sorted(ours) != sorted(theirs):
            sys.exit(f"qvx and grep differ about {subject}")


def measure(rows, scratch, web, rounds):
    times = {row: [] for row in rows}
    for _ in range(rounds):
        for row, command in rows.items():
            shutil.copy(web, scratch)
            times[row].append(timed(command))
    print("|whole process|least, ms|median, ms|processor, least, ms|\n|---|---:|---:|---:|")
    for row, pairs in times.items():
        clock, processor = zip(*pairs)
        print(f"|{row}|{min(clock) * 1000:.1f}|{statistics.median(clock) * 1000:.1f}|"
              f"{min(processor) * 1000:.1f}|")


def main():
    qvx, web = sys.argv[1:3]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 40
    with tempfile.TemporaryDirectory() as folder:
        texts = Path(folder) / "texts"
        texts.mkdir()
        write_texts(qvx, web, texts)
        same_hits(qvx, web, texts)
        rows, scratch = commands(qvx, web, texts)
        measure(rows, scratch, web, rounds)


main()
