"""window.py PROGRAM SMALL WEB ROUNDS: how soon the window is on the screen, and its memory.

Starts Quorvane with a web, as it is and beside the small editing component (SMALL), and Wine's own
notepad without a file, in turn, on the display at hand.
The time runs from starting the process to the MapNotify of its window. Prints a table in Markdown.
"""

import re
import statistics
import subprocess
import sys
import time
from pathlib import Path

K_LEAST_WIDTH = 100  # pixels: smaller windows are helpers of the system's
K_SETTLE = 1.0  # seconds until the peak of memory is read


def map_events():
    """A process that prints the root window's events."""
    return subprocess.Popen(["xev", "-root", "-event", "substructure"], stdout=subprocess.PIPE,
                            text=True, bufsize=1)


def wait_for_map(events, widths):
    """Returns when a window of some size was mapped."""
    for line in events.stdout:
        if match := re.search(r"window (0x\w+).*width (\d+)", line):
            widths[match[1]] = int(match[2])
        if "MapNotify" in line:
            line = next(events.stdout)
            window = re.search(r"window (0x\w+)", line)[1]
            if widths.get(window, 0) >= K_LEAST_WIDTH:
                return
    sys.exit("no window came")


def peak_memory(name):
    """Peak resident set of the process of this name, in KiB."""
    for status in Path("/proc").glob("[0-9]*/status"):
        try:
            text = status.read_text()
        except OSError:
            continue
        if re.search(rf"^Name:\s+{re.escape(name)}$", text, re.M):
            return int(re.search(r"VmHWM:\s+(\d+)", text)[1])
    sys.exit(f"{name} is gone")


def one_start(command, name, folder):
    events = map_events()
    time.sleep(0.3)  # xev must have asked for its events
    start = time.perf_counter()
    program = subprocess.Popen(command, cwd=folder, stderr=subprocess.DEVNULL)
    wait_for_map(events, {})
    mapped = time.perf_counter() - start
    time.sleep(K_SETTLE)
    memory = peak_memory(name)
    subprocess.run(["wine", "taskkill", "/f", "/im", name], stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, check=False)
    program.wait()
    events.kill()
    return mapped, memory


def main():
    program, small, web = (Path(argument).resolve() for argument in sys.argv[1:4])
    rounds = int(sys.argv[4])
    opened = f"Quorvane, {web.stat().st_size:,} bytes"
    ways = {
        opened: (["wine", program, web.name], "Quorvane.exe"),
        f"{opened}, small component": (["wine", small, web.name], "Quorvane.exe"),
        "notepad, no file": (["wine", "notepad"], "notepad.exe"),
    }
    found = {way: [] for way in ways}
    for number in range(rounds + 1):
        for way, (command, name) in ways.items():
            result = one_start(command, name, web.parent)
            if number > 0:  # the first round brings the files into memory
                found[way].append(result)
    print("|program|mapped, least ms|mapped, median ms|peak memory, KiB|")
    print("|---|---:|---:|---:|")
    for way, results in found.items():
        times = [mapped * 1000 for mapped, _ in results]
        memory = statistics.median(memory for _, memory in results)
        print(f"|{way}|{min(times):.0f}|{statistics.median(times):.0f}|{memory:,.0f}|")


main()
