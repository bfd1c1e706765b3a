"""What the user's waits cost on the handheld: instructions of the program and its component.

    python3 -m handheld.emulator.costs WEBS    WEBS: the folder that bench/make_webs has filled

Prints a table: instructions, and the milliseconds that they are at 206 million a second. Work of
the system is counted where its calls say so (calls.py), which is roughly: drawing and what system
controls do is not.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from handheld.emulator.clock import INSTRUCTIONS_PER_MS
from handheld.emulator.device import Device

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILT = ROOT / "build" / "handheld"
QVX = ROOT / "build" / "native" / "cli" / "qvx"
REPORT = 19
LIMIT_OF_A_WAIT, LIMIT_OF_A_KEY = 60_000_000, 2_000_000
PARAGRAPH = "a word of text " * 20 + "\n"


def qvx(*arguments):
    subprocess.run([QVX, *arguments], check=True, capture_output=True)


class Costs:
    """One measurement a method, each on a device of its own."""

    def __init__(self, webs, folder):
        self.webs, self.folder = pathlib.Path(webs), pathlib.Path(folder)
        shutil.copy(ROOT / "samples" / "guide.qvx", self.folder)
        for name in ("many.qvx", "long.qvx"):
            shutil.copy(self.webs / name, self.folder)

    def device(self, web=""):
        return Device(BUILT / "Quorvane.exe", BUILT / "SciLexer.dll", self.folder, web)

    def step(self, web, *steps):
        """What the last of the steps costs."""
        with self.device(web) as device:
            device.do(*steps)
            return device.step_instructions

    def start(self, web):
        with self.device(web) as device:
            return device.instructions

    def opening(self, name):
        return self.start(name) - self.start("")

    def web_of_one_text(self, size):
        """A web whose cell `body` has so many bytes, in paragraphs of 300."""
        (self.folder / "text").write_text(
            (PARAGRAPH * (size // len(PARAGRAPH) + 1))[:size], encoding="ascii")
        web = self.folder / "one.qvx"
        web.unlink(missing_ok=True)
        qvx("new", web)
        qvx("set", web, "body", "--file", self.folder / "text")
        return web.name

    def key(self, size):
        """One character typed into the text."""
        return self.step(self.web_of_one_text(size), "tap-text body", "tap-text text",
                         "tap 60 100", "type b", "wait 3000", "expect text b", "type a")

    def in_pointers(self):
        web = self.folder / "long.qvx"
        web.write_bytes(re.sub(rb"<rtype>.*</rtype>", b"<rtype>inptr</rtype>", web.read_bytes()))
        return self.step(web.name, f"command {REPORT}")

    def table(self):
        """(what, instructions, limit)"""
        yield "start with the guide, to \"Ready\"", self.start("guide.qvx"), LIMIT_OF_A_WAIT
        yield "open *many*", self.opening("many.qvx"), 15_000_000
        yield "open *long*", self.opening("long.qvx"), LIMIT_OF_A_WAIT
        yield "the second's work with 2,400 cells", \
            self.step("many.qvx", "tap-text text", "wait 1100"), LIMIT_OF_A_KEY
        yield "a key in a text of 4 KB", self.key(4_000), LIMIT_OF_A_KEY
        yield "a key in a text of 300 KB", self.key(300_000), LIMIT_OF_A_KEY
        yield "follow a link of the guide", \
            self.step("guide.qvx", "tap-text text", "tap-text first_steps"), LIMIT_OF_A_WAIT
        yield "show a text of 300 KB", \
            self.step(self.web_of_one_text(300_000), "tap-text text", "key Alt+Up",
                      "expect field 82 body"), LIMIT_OF_A_WAIT
        yield "report on all in pointers of *long*", self.in_pointers(), LIMIT_OF_A_WAIT
        yield "save *many*", self.step("many.qvx", "menu Cell New", "fill 1000 one_more", "ok",
                                       "key Ctrl+S"), LIMIT_OF_A_WAIT


def main():
    with tempfile.TemporaryDirectory() as folder:
        print("| what | instructions | ms at 206 MHz | at most |\n|---|---:|---:|---:|")
        for what, instructions, limit in Costs(sys.argv[1], folder).table():
            print(f"| {what} | {instructions:,} | {instructions / INSTRUCTIONS_PER_MS:.1f} "
                  f"| {limit:,} |", flush=True)


if __name__ == "__main__":
    main()
