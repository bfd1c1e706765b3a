"""The handheld's program on the emulator, used as its user does.

A row is what a session does and what there is to see; what it saves is held, byte for byte, against
what qvx makes of the same changes.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from handheld.emulator.device import Device

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILT = pathlib.Path(os.environ.get("QUORVANE_HANDHELD", ROOT / "build" / "handheld"))
QVX = ROOT / "build" / "native" / "cli" / "qvx"
PROGRAM, LIBRARY = BUILT / "Quorvane.exe", BUILT / "SciLexer.dll"

CELLNAME_BOX, NEW_CELLNAME, SEARCH_TEXT, REPLACE_TEXT, OUTPUT_NAME = 82, 1000, 1105, 1099, 1213
REPORT = 19
LOW_BLOCKS = 100  # of the arena, from which on the program offers to save and exit
BOX_APPEARS = 600 + 550  # milliseconds: the user's pause, and what the program lets go by first


def qvx(*arguments):
    """Runs qvx; what it printed."""
    return subprocess.run([QVX, *arguments], check=True, capture_output=True).stdout


class ProgramTest(unittest.TestCase):
    """Each test has a folder of its own, which is the device's \\My Documents."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def guide(self):
        return pathlib.Path(shutil.copy(ROOT / "samples" / "guide.qvx", self.folder / "guide.qvx"))

    def device(self, arguments="guide.qvx", library=LIBRARY):
        device = Device(PROGRAM, library, self.folder, arguments)
        self.addCleanup(device.close)
        return device

    def expected(self, name, *edits):
        """A copy of a web outside the folder after qvx's `edits`; its bytes."""
        with tempfile.TemporaryDirectory() as folder:
            copy = shutil.copy(self.folder / name, folder)
            for command, *arguments in edits:
                qvx(command, copy, *arguments)
            return pathlib.Path(copy).read_bytes()

    def text_of(self, cell):
        """With the file's line ends, which qvx shows as LF."""
        return qvx("show", self.folder / "guide.qvx", cell).decode().replace("\n", "\r\n")

    # ---- Cells ----

    def test_a_session_of_writing(self):
        web = self.guide()
        text = self.text_of("first_steps")
        expected = self.expected(
            "guide.qvx",
            ("set", "first_steps", "--text", "Zwei " + text.replace("garden", "yard")),
            ("set", "tomatoes", "--text", "red & round\r\nÄpfel"), ("set", "basil"),
            ("rm", "zoom"))
        expected = expected.replace(b"<starg></starg>\n<srpl></srpl>",
                                    b"<starg>garden</starg>\n<srpl>yard</srpl>")
        device = self.device()
        device.do("expect caption Quorvane - guide", "expect status Ready",
                  "tap-text follow", f"expect field {CELLNAME_BOX} follow",   # by the list
                  f"fill {CELLNAME_BOX} home", "key Enter",                   # by the box
                  "tap-text text", "tap-text first_steps",                    # by a link
                  f"expect field {CELLNAME_BOX} first_steps",
                  "key Ctrl+Home", "type Zwei ", "expect text Zwei 1. Choose",
                  "key Ctrl+Home", "type Neu\\n", "expect text Neu",
                  "key Ctrl+Z", "expect no-text Neu", "expect text Zwei 1. Choose",
                  "double-tap-text tomatoes", "expect dialog No such cell. Create it?",
                  "button Yes", "type red & round\\nÄpfel", "key Alt+Left")
        device.do("key Ctrl+Home", "menu Edit Find/Repl", f"fill {SEARCH_TEXT} garden",
                  f"fill {REPLACE_TEXT} yard", "ok", "button repl", "button cancel")
        device.do("key Ctrl+Home", "menu Cell New", f"fill {NEW_CELLNAME} basil", "ok",
                  f"fill {CELLNAME_BOX} zoom", "key Enter",
                  "menu Cell Delete", "expect dialog Delete current cell?", "button OK",
                  "menu File Save")
        self.assertEqual(expected, web.read_bytes())
        self.assertEqual(["guide.qvx"], os.listdir(self.folder))

    def test_files_by_their_dialogs(self):
        """Another name, another web, and one whose name has a blank; a change is dropped."""
        before = self.guide().read_bytes()
        shutil.copy(self.folder / "guide.qvx", self.folder / "a web.qvx")
        device = self.device('"\\My Documents\\a web.qvx"')
        device.do("expect caption Quorvane - a web", "menu File Save As", "answer second",
                  "expect caption Quorvane - second", "expect file second.qvx",
                  "menu File Save As", "answer GUIDE.qvx", "expect dialog already exists",
                  "button No", "key Escape", "expect caption Quorvane - second",
                  "menu Cell New", f"fill {NEW_CELLNAME} basil", "ok", "key Ctrl+S",
                  "menu File Open...", "tap-text guide.qvx", "ok",
                  "expect caption Quorvane - guide",
                  "menu Cell New", f"fill {NEW_CELLNAME} thyme", "ok", "key Ctrl+Q",
                  "expect dialog Save current changes in guide?", "button No")
        self.assertEqual(0, device.ended)
        self.assertEqual(self.expected("guide.qvx", ("set", "basil")),
                         (self.folder / "second.qvx").read_bytes())
        for name in ("guide.qvx", "a web.qvx"):
            self.assertEqual(before, (self.folder / name).read_bytes(), name)
        self.assertEqual(3, len(os.listdir(self.folder)))

    # ---- Reports and settings ----

    def test_reports(self):
        web = self.guide()
        inptr = qvx("report", web, "--type", "inptr", "--all")
        device = self.device()
        device.do("menu Edit Settings", "check In pointers", "tap-text Output", "check a file",
                  f"fill {OUTPUT_NAME} links", "ok", "tap-text text", f"command {REPORT}",
                  "expect status Ready")
        self.assertEqual(inptr, (self.folder / "links.txt").read_bytes())
        device.do("menu Edit Settings", "tap-text Output", "check the console", "ok",
                  f"command {REPORT}", "tap-text console", "expect text     <zoom")
        device.do("key Ctrl+Q", "expect dialog Save current changes in guide?", "button Yes")
        self.assertEqual(0, device.ended)
        changed = (ROOT / "samples" / "guide.qvx").read_bytes()
        changed = changed.replace(b"<rtype>fmt<", b"<rtype>inptr<").replace(
            b"<oname>OUTPUT<", b"<oname>links<")
        self.assertEqual(changed, web.read_bytes())

    def test_a_report_is_cancelled(self):
        web = self.folder / "many.qvx"
        qvx("new", web)
        cells = "".join(f"<cell>\n<cname>cell_{n}</cname>\n<text>{'words ' * 60}</text></cell>\n"
                        for n in range(600)).encode()
        web.write_bytes(web.read_bytes().replace(b"<cell>", cells + b"<cell>")
                        .replace(rb"<rfmt>", b"<rfmt>" + rb"\T" * 12)
                        .replace(b"<odest>screen", b"<odest>file"))
        whole = qvx("report", web, "--newline", "lf")
        device = self.device("many.qvx")
        device.do(f"after {BOX_APPEARS} button Cancel", f"command {REPORT}", "expect no-dialog",
                  "expect status OUTPUT ABORTED")
        written = (self.folder / "OUTPUT.txt").read_bytes()
        self.assertTrue(whole.startswith(written))
        self.assertLess(len(written), len(whole))

    # ---- Limits and faults ----

    def full_web(self):
        """A web with little room for more, in which the user clones the big cell."""
        web = self.folder / "full.qvx"
        (self.folder / "text").write_text("word " * 38_000, encoding="ascii")
        qvx("new", web)
        qvx("set", web, "big", "--file", self.folder / "text")
        before = web.read_bytes()
        device = self.device("full.qvx")
        device.do("tap-text big", "menu Cell Clone", f"fill {NEW_CELLNAME} copy", "ok",
                  "expect dialog Short On Memory--Save And")
        return web, before, device

    def test_out_of_blocks(self):
        web, before, device = self.full_web()
        device.do("button OK")
        self.assertEqual(0, device.ended)
        self.assertEqual(before, web.read_bytes())

    def test_going_on_until_no_block_is_left(self):
        """The offer comes with each of the last blocks; then the clone is given up, not the web."""
        web, _, device = self.full_web()
        expected = self.expected("full.qvx", ("set", "home", "--text", "still here"))
        for _ in range(LOW_BLOCKS):
            device.do("expect dialog Short On Memory", "button Cancel")
        device.do("expect no-dialog", "expect status OUT OF MEMORY", "expect no-text copy",
                  "tap-text home", "tap-text text", "key Ctrl+A", "type still here", "key Ctrl+S",
                  "expect no-dialog", "key Ctrl+Q")
        self.assertEqual(0, device.ended)
        self.assertEqual(expected, web.read_bytes())

    def test_a_full_disk(self):
        web = self.guide()
        before = web.read_bytes()
        expected = self.expected("guide.qvx", ("set", "first_steps", "--text",
                                               "Zwei " + self.text_of("first_steps")))
        device = self.device()
        device.do("tap-text first_steps", "tap-text text", "key Ctrl+Home", "type Zwei ")
        for room in (0, 1000, len(before) - 1):
            device.system.files.room = room
            device.do("key Ctrl+S", "expect no-dialog", "expect status UNABLE TO WRITE TO WEB FILE")
            self.assertEqual((before, ["guide.qvx"]), (web.read_bytes(), os.listdir(self.folder)))
        device.system.files.room = None
        device.do("key Ctrl+S", "key Ctrl+Q")
        self.assertEqual(0, device.ended)
        self.assertEqual(expected, web.read_bytes())

    def test_files_that_cannot_be_opened(self):
        (self.folder / "bad.qvx").write_bytes(b"no web at all\n<cell><cname>x")
        (self.folder / "locked.qvx").write_bytes(self.guide().read_bytes())
        (self.folder / "locked.qvx").chmod(0o444)
        for name, caption, steps in (
                ("missing", "Quorvane - (Untitled)", ["expect status UNABLE TO OPEN WEB FILE"]),
                ("bad", "Quorvane - bad", ["expect dialog Saving will keep the old file beside it.",
                                           "button OK",
                                           "expect status The end of this file is missing"]),
                ("locked", "Quorvane - (Untitled)", ["expect status UNABLE TO OPEN WEB FILE"])):
            with self.subTest(name):
                self.device(f"{name}.qvx").do(f"expect caption {caption}", *steps)

    def test_without_the_component(self):
        self.guide()
        device = self.device(library=None)
        device.do("expect dialog SciLexer DLL could not be loaded",
                  "expect dialog Error Loading Scintilla", "button OK", "expect status Ready",
                  "tap-text follow", f"expect field {CELLNAME_BOX} follow", "key Ctrl+Q")
        self.assertEqual(0, device.ended)


if __name__ == "__main__":
    unittest.main()
