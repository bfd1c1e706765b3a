"""What the user's waits cost on the handheld, in instructions.

    python3 -m handheld.emulator.costs WEBS    WEBS: the folder that bench/make_webs has filled

Prints a table: the instructions that the program and its component execute, which are exact; what
the system's calls are counted as, which is a guess (calls.py) and leaves out drawing and what the
system's controls do; and the milliseconds that both are at 206 million a second.
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
SENTENCE = "a word of text " * 20
PARAGRAPH = SENTENCE + "\n"


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

    def step(self, web, *steps, check="expect status Ready"):
        """What the last of the steps costs, which has led where `check` says."""
        with self.device(web) as device:
            device.do(*steps)
            driver = device.system.driver
            found = (driver.step_instructions - driver.step_charged, driver.step_charged)
            device.do(check)
            return found

    def start(self, web):
        with self.device(web) as device:
            charged = device.system.machine.charged
            return (device.instructions - charged, charged)

    def opening(self, name):
        with_web, without = self.start(name), self.start("")
        return (with_web[0] - without[0], with_web[1] - without[1])

    def web_of_one_text(self, size, paragraph=PARAGRAPH):
        """A web whose cell `body` has so many bytes, in paragraphs of 300 unless others are said."""
        (self.folder / "text").write_text(
            (paragraph * (size // len(paragraph) + 1))[:size], encoding="ascii")
        web = self.folder / "one.qvx"
        web.unlink(missing_ok=True)
        qvx("new", web)
        qvx("set", web, "body", "--file", self.folder / "text")
        return web.name

    def key(self, size, paragraph=PARAGRAPH):
        """One character typed into the text."""
        return self.step(self.web_of_one_text(size, paragraph), "tap-text body", "tap-text text",
                         "tap 60 100", "type b", "wait 3000", "type a", check="expect text ba")

    def in_pointers(self):
        web = self.folder / "long.qvx"
        web.write_bytes(re.sub(rb"<rtype>.*</rtype>", b"<rtype>inptr</rtype>", web.read_bytes()))
        return self.step(web.name, f"command {REPORT}")

    def table(self):
        """(what, (executed, charged), the limit for both)"""
        yield "start with the guide, to \"Ready\"", self.start("guide.qvx"), LIMIT_OF_A_WAIT
        yield "open *many*", self.opening("many.qvx"), 15_000_000
        yield "open *long*", self.opening("long.qvx"), LIMIT_OF_A_WAIT
        yield "the second's work with 2,400 cells", \
            self.step("many.qvx", "tap-text text", "wait 1100"), LIMIT_OF_A_KEY
        yield "a key in a text of 4 KB", self.key(4_000), LIMIT_OF_A_KEY
        yield "a key in a text of 300 KB", self.key(300_000), LIMIT_OF_A_KEY
        yield "a key in 300 KB without a line end", self.key(300_000, SENTENCE), LIMIT_OF_A_KEY
        yield "follow a link of the guide", \
            self.step("guide.qvx", "tap-text text", "tap-text first_steps"), LIMIT_OF_A_WAIT
        yield "show a text of 300 KB", \
            self.step(self.web_of_one_text(300_000), "tap-text text", "key Alt+Up",
                      check="expect text a word of text"), LIMIT_OF_A_WAIT
        yield "report on all in pointers of *long*", self.in_pointers(), LIMIT_OF_A_WAIT
        yield "save *many*", self.step("many.qvx", "menu Cell New", "fill 1000 one_more", "ok",
                                       "key Ctrl+S"), LIMIT_OF_A_WAIT


def main():
    with tempfile.TemporaryDirectory() as folder:
        print("| what | executed | calls | ms at 206 MHz | at most |\n|---|---:|---:|---:|---:|")
        for what, (executed, charged), limit in Costs(sys.argv[1], folder).table():
            milliseconds = (executed + charged) / INSTRUCTIONS_PER_MS
            print(f"| {what} | {executed:,} | {charged:,} | {milliseconds:.1f} "
                  f"| {limit / INSTRUCTIONS_PER_MS:.0f} |", flush=True)


if __name__ == "__main__":
    main()
