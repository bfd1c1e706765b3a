"""measure.py BUILD ROUNDS: runs the benchmarks that stand in BUILD and prints tables in Markdown."""

import json
import re
import statistics
import subprocess
import sys
import time
from pathlib import Path

K_WEBS = ("many", "long", "guide")
K_COUNTED = ("read", "save")  # the engine's jobs whose instructions are counted

# What people would use instead to find which cells each text names: the words that are names, with
# the lines they stand on, put together with the cells that the lines belong to.
K_PIPELINE = (
    "grep -nowFf long.names long.texts |"
    " awk -F: 'NR == FNR { cell[FNR] = $0; next } { print $2, cell[$1] }' long.cells - | sort -u"
)


def table(head, rows):
    print("|" + "|".join(head) + "|")
    print("|---|" + "---:|" * (len(head) - 1))
    for row in rows:
        print("|" + "|".join(str(cell) for cell in row) + "|")
    print()


def instructions(folder, task, web):
    """Instructions of one round, without what happens but once in a process."""
    command = ["valgrind", "--tool=callgrind", "--collect-atstart=no",
               "--toggle-collect=measured_round", f"--callgrind-out-file={folder}/callgrind.out",
               folder / "bench/one_round", task, web]
    said = subprocess.run(command, check=True, capture_output=True, text=True).stderr
    return int(re.search(r"Collected : (\d+)", said)[1])


def count_instructions(folder):
    rows = []
    for name in K_WEBS:
        web = folder / f"webs/{name}.qvx"
        size = web.stat().st_size
        counts = [instructions(folder, task, web) for task in K_COUNTED]
        rows.append([name, f"{size:,}"] + [f"{count / size:.2f}" for count in counts])
    table(["web", "bytes"] + [f"{task}, instructions a byte" for task in K_COUNTED], rows)


def time_rounds(folder, rounds):
    """All jobs on all webs, taking turns."""
    command = [folder / "bench/rounds", f"--benchmark_repetitions={rounds}",
               "--benchmark_enable_random_interleaving=true", "--benchmark_format=json",
               folder / "webs", folder / "webs/guide.qvx"]
    said = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    times = {}
    for run in json.loads(said)["benchmarks"]:
        if run["run_type"] == "iteration":
            web, task = run["name"].split("/")[:2]
            times.setdefault(task, {}).setdefault(web, []).append(run["real_time"])
    rows = []
    for task, by_web in times.items():
        row = [task]
        for web in K_WEBS:
            found = by_web.get(web)
            row.append(f"{min(found):.0f} / {statistics.median(found):.0f}" if found else "")
        rows.append(row)
    table(["job"] + [f"{web}, µs (least / median)" for web in K_WEBS], rows)


def timed(command, folder):
    start = time.perf_counter()
    done = subprocess.run(command, cwd=folder, check=True, capture_output=True, shell=True, text=True)
    return time.perf_counter() - start, done.stdout


def pairs_of_report(text):
    """Cell and cell that names it, out of a report of in pointers."""
    pairs, cell = set(), None
    for line in text.splitlines():
        if line.startswith("    <"):
            pairs.add(f"{cell} {line[5:]}")
        elif line:
            cell = line
    return pairs


def time_links(folder, rounds):
    ways = {
        "qvx report --type inptr --all": f"{folder.resolve()}/cli/qvx report long.qvx --type inptr --all",
        "grep, awk, sort": f"LC_ALL=C; export LC_ALL; {K_PIPELINE}",
    }
    times = {way: [] for way in ways}
    for _ in range(rounds):
        said = {}
        for way, command in ways.items():
            seconds, said[way] = timed(command, folder / "webs")
            times[way].append(seconds)
    report, found = said.values()
    if pairs_of_report(report) != set(found.splitlines()):
        sys.exit("qvx and grep do not find the same links")
    rows = [[f"`{way}`", f"{min(found) * 1000:.1f}", f"{statistics.median(found) * 1000:.1f}"]
            for way, found in times.items()]
    table(["whole process", "least, ms", "median, ms"], rows)


def main():
    folder, rounds = Path(sys.argv[1]), int(sys.argv[2])
    count_instructions(folder)
    time_rounds(folder, rounds)
    time_links(folder, rounds)


main()
