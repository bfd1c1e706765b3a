"""What stays on the screen and in the system after each step of a session.

The screen must be what drawing all of it anew makes of it, on whatever was there before: a control
that leaves pixels undrawn, or a window that is not told what changed, is found by that.
"""

import os
import pathlib
import random
import shutil
import tempfile
import unittest

from PIL import ImageChops

from handheld.emulator.commands import COMMANDS
from handheld.emulator.device import Device
from handheld.emulator.region import Region

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILT = pathlib.Path(os.environ.get("QUORVANE_HANDHELD", ROOT / "build" / "handheld"))
SPOILT = (255, 0, 255)
RANDOM_STEPS = int(os.environ.get("QUORVANE_RANDOM_STEPS", "100"))  # more find more
RANDOM_SEED = int(os.environ.get("QUORVANE_RANDOM_SEED", "1"))

WRITING = """tap-text text
tap 100 120
type some words that are long enough to wrap the line
key Enter
key Backspace
key Ctrl+Z
drag 20 88 120 150
key Delete
key PageDown
key Up
tap 234 240
drag 234 60 234 180
tap-text list
key PageDown
tap 60 100
tap-text text
key Alt+Left
tap 175 36
tap-text home
menu Help Help Topics > Overview
tap 148 306
tap-text text
panel up
type q
panel down"""

DIALOGS = """tap 20 305
key Escape
menu Edit Find/Repl
type cell
ok
button next
check case
button cancel
menu Edit Settings
tap-text Links
check Blue
tap-text Pane
choose 1242 14
check Bold
tap-text Numbers
ok
menu Cell New
type zork
ok
menu Cell Delete
button OK
menu Edit Zoom
choose 1121 165%
ok
menu File Save As
key Escape
menu Help About Quorvane
ok"""

AND_BACK = """menu Edit Settings
tap-text Links
tap-text Pane
key Escape
tap-text text
tap 175 36
tap 60 200
menu Cell New
key Escape
tap-text list"""


KEYS = ("Enter", "Tab", "Escape", "Backspace", "Delete", "Home", "PageUp", "PageDown", "Left", "Up",
        "Down", "Shift+Down", "Ctrl+A", "Ctrl+C", "Ctrl+V", "Ctrl+X", "Ctrl+Z", "Ctrl+Y",
        "Ctrl+End", "Alt+Left", "Alt+Right", "Alt+Up", "Alt+N", "Ctrl+F", "Ctrl+T", "F4", "Shift+Tab")
BAR_BUTTONS = (18, 50, 82, 115, 148, 170, 222)


def random_step(source):
    """What a user without a plan does."""
    x, y = source.randrange(240), source.randrange(320)
    return source.choice((
        f"tap {x} {y}", f"tap {x} {y}", f"tap {x} {y}", f"double-tap {x} {y}", f"hold {x} {y}",
        f"drag {x} {y} {source.randrange(240)} {source.randrange(320)}",
        f"key {source.choice(KEYS)}", f"key {source.choice(KEYS)}", f"key {source.choice(KEYS)}",
        f"tap {source.choice(BAR_BUTTONS)} 306", "type home", "type a \u00e4", "ok", "wait 1500"))


def redraw(driver, _rest):
    """Spoils the screen and has all of it drawn."""
    whole = Region.of(0, 0, 240, 320)
    driver.system.screen.surface.fill(whole, SPOILT)
    driver.system.painting.uncover(whole)
    yield


class ScreenTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        shutil.copy(ROOT / "samples" / "guide.qvx", folder.name)
        self.device = Device(BUILT / "Quorvane.exe", BUILT / "SciLexer.dll", folder.name,
                             "\\My Documents\\guide.qvx")
        self.addCleanup(self.device.close)
        COMMANDS["redraw"] = redraw
        self.addCleanup(COMMANDS.pop, "redraw")

    def shown(self):
        surface = self.device.system.screen.surface
        return surface.image.copy(), {(text.text, text.rect) for text in surface.texts}

    def check_screen(self, step):
        before, texts = self.shown()
        self.device.do("redraw")
        after, texts_after = self.shown()
        self.assertIsNone(ImageChops.difference(before, after).getbbox(), step)
        self.assertEqual(texts, texts_after, step)

    def check_steps(self, steps):
        for step in steps.splitlines():
            self.device.do(step)
            self.check_screen(step)

    def test_writing(self):
        self.check_steps(WRITING)

    def test_dialogs(self):
        self.check_steps(DIALOGS)

    def test_at_random(self):
        """No fault of the program, whatever is done."""
        source, done = random.Random(RANDOM_SEED), []
        while len(done) < RANDOM_STEPS and self.device.ended is None:
            done.append(random_step(source))
            self.device.do(done[-1])
            if len(done) % 4 == 0 and self.device.ended is None:
                self.check_screen(done[-8:])

    def in_use(self):
        """Drawing objects, windows and blocks of memory."""
        system = self.device.system
        return (len(system.gdi.table.objects), sum(1 for _ in system.windows.all()),
                system.memory.in_use)

    def test_nothing_is_left_behind(self):
        found = []
        for _ in range(3):
            self.device.do(*AND_BACK.splitlines())
            found.append(self.in_use())
        self.assertEqual(found[1], found[2])


if __name__ == "__main__":
    unittest.main()
