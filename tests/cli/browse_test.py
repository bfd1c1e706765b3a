#!/usr/bin/python3
"""qvx browse, as a user at a terminal sees it. Usage: browse_test.py QVX [unittest arguments]"""

import os
import pathlib
import signal
import stat
import subprocess
import sys
import tempfile
import unittest

import terminal
from terminal import ALT_LEFT, ALT_RIGHT, BACKSPACE, DOWN, ENTER, ESCAPE, F3, SHIFT_TAB, TAB, UP

QVX = os.path.abspath(sys.argv[1])

WEB = {
    "home": "Go to Apple, or to pear_tree.\nNothing is at nowhere.",
    "apple": "An apple. See home and pear_tree.\nRIPE.",
    "pear tree": "Pears are ripe.",
}


def run(*arguments, text=b"", check=True):
    return subprocess.run([QVX, *arguments], input=text, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=check)


def show(file, cell):
    return run("show", file, cell).stdout.decode()


class BrowseTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        os.chdir(self.folder.name)
        self.make_web(WEB)
        self.terminals = []

    def tearDown(self):
        for one in self.terminals:
            one.close()
        os.chdir("/")
        self.folder.cleanup()

    @staticmethod
    def make_web(cells, file="w.qvx"):
        run("new", "--force", file)
        for name, text in cells.items():
            run("set", file, name, "--file", "-",
                text=text if isinstance(text, bytes) else text.encode())

    def start(self, *arguments, **circumstances):
        one = terminal.Terminal([QVX, *arguments], **circumstances)
        self.terminals.append(one)
        return one

    def browse(self, **circumstances):
        one = self.start("browse", "w.qvx", **circumstances)
        one.wait_for("? help" if circumstances.get("columns", 80) >= 30 else "1/1")
        return one

    def editor(self, commands):
        """A script that gets the text's file as $1."""
        path = pathlib.Path("editor.sh")
        path.write_text("#!/bin/sh\n" + commands)
        path.chmod(0o755)
        return str(path.absolute())

    # ---- Seeing -------------------------------------------------------------------------------

    def test_text_links_list_and_state_are_shown(self):
        one = self.browse()
        self.assertEqual(one.place_of("Go to Apple")[0], 0)
        for word, is_link in (("Apple,", True), ("pear_tree.", True), ("nowhere", False),
                              ("Go to", False)):
            self.assertEqual(one.look_of(word).underscore, is_link, word)
        listed = [line.partition("\u2502")[0].strip() for line in one.lines()[:3]]
        self.assertEqual(listed, ["apple", "home", "pear tree"])
        self.assertTrue(one.screen.buffer[1][0].reverse)
        self.assertEqual(one.lines()[-1].split(), ["home", "(w)", "1/1", "?", "help"])

    def test_what_a_text_holds_is_no_order_to_the_terminal(self):
        self.make_web({"home": b"A\x1b[6n\x07B \xff\xc3 \xe2\x80\xaeC\x9b \tD\n\xcc\x81E\x7f"})
        one = self.browse(columns=50)
        self.assertIn("A\\x1b[6n\\x07B \\xff\\xc3 \\xe2\\x80\\xaeC\\x9b", one.text())
        self.assertIn("\\xcc\\x81E\\x7f", one.text())
        for order in (b"\x1b[6n", b"\xe2\x80\xae", b"\xff"):
            self.assertNotIn(order, one.output)

    def test_wide_and_combining_characters_take_their_columns(self):
        self.make_web({"home": "\u6f22\u5b57 e\u0301 apple " + "\u6f22" * 30, "apple": "x"})
        one = self.browse(rows=12, columns=40)
        self.assertEqual(one.lines()[0].rstrip(), "\u6f22\u5b57 \u00e9 apple")
        self.assertEqual(one.screen.buffer[0][7].data, "a")
        # A character of two columns does not stand half beyond the edge.
        self.assertEqual(one.lines()[1].count("\u6f22"), 20)
        one.resize(12, 39)
        self.assertEqual(one.lines()[1].count("\u6f22"), 19)
        one.type(TAB, ENTER)
        self.assertTrue(one.lines()[-1].startswith("apple"))

    def test_sizes_down_to_the_smallest(self):
        one = self.browse()
        one.type("b")
        for rows, columns in ((12, 40), (5, 20), (2, 4), (1, 1), (40, 200)):
            one.resize(rows, columns)
            one.type(TAB, "l", DOWN, ESCAPE)
        one.resize(12, 40)
        self.assertEqual(one.lines()[0].rstrip(), "Go to Apple, or to pear_tree.")
        one.resize(5, 20)
        self.assertEqual([line.rstrip() for line in one.lines()][:3],
                         ["Go to Apple, or to", "pear_tree.", "Nothing is at"])
        one.type("n", "pear tree", ENTER)
        self.assertEqual([line.rstrip() for line in one.lines()][-2:],
                         ["Cell already exists,", "go there? (Y/n)"])

    def test_only_what_changes_is_written(self):
        one = self.browse()
        one.type(TAB)
        before = len(one.output)
        one.type(TAB)
        self.assertLess(len(one.output) - before, 200)

    # ---- Walking ------------------------------------------------------------------------------

    def test_links_are_walked_and_the_trail_goes_back(self):
        one = self.browse()
        one.type(TAB)
        self.assertTrue(one.look_of("Apple,").reverse)
        one.type(TAB, SHIFT_TAB, SHIFT_TAB)
        self.assertTrue(one.look_of("pear_tree.").reverse)
        for keys, state in (((TAB, ENTER), ["apple", "(w)", "2/2"]),
                            ((TAB, TAB, TAB, ENTER), ["pear", "tree", "(w)", "3/3"]),
                            ((ALT_LEFT,), ["apple", "(w)", "2/3"]),
                            ((BACKSPACE,), ["home", "(w)", "1/3"]),
                            ((ALT_RIGHT, ALT_RIGHT), ["pear", "tree", "(w)", "3/3"])):
            one.type(*keys)
            self.assertEqual(one.lines()[-1].split()[:-2], state)
        one.type("q")
        self.assertEqual(one.end(), 0)
        self.assertFalse(one.is_raw())

    def test_the_selected_link_is_there_again_after_going_back(self):
        one = self.browse()
        one.type(TAB, TAB, ENTER, BACKSPACE)
        self.assertTrue(one.look_of("pear_tree.").reverse)

    def test_a_click_follows(self):
        one = self.browse()
        one.type(terminal.click(*one.place_of("pear_tree.")))
        self.assertIn("Pears are ripe", one.text())
        one.type(terminal.click(*one.place_of("apple")))  # in the list
        self.assertIn("An apple.", one.text())
        one.type(terminal.click(20, 60))  # nothing
        self.assertIn("An apple.", one.text())

    def test_the_list_filters_and_opens(self):
        for columns in (80, 40):
            one = self.browse(columns=columns)
            one.type("l", "EAR_")
            one.wait_for("Cell: EAR_")
            self.assertIn("pear tree", one.text())
            self.assertNotIn("apple\n", one.text())
            one.type(ENTER)
            self.assertIn("Pears are ripe.", one.text())
            one.type("l", UP, ENTER)
            self.assertIn("Go to Apple", one.text())
            one.type("l", "zzz", ENTER, ESCAPE)
            self.assertIn("Go to Apple", one.text())

    def test_names_and_neighbours(self):
        one = self.browse()
        for keys, shown in (("gPEAR_TREE\r", "Pears"), ("h", "Go to"), ("]", "Pears"),
                            ("]", "An apple"), ("[", "Pears"), ("<", "An apple"), (">", "Pears")):
            one.type(*keys)
            self.assertIn(shown, one.text(), keys)
        one.type(*"gplum\r")
        one.wait_for("No such cell. Create it?")
        one.type("n")
        self.assertIn("Pears", one.text())

    def test_finding_goes_through_all_texts(self):
        one = self.browse()
        one.type(*"/ripe\r")
        self.assertTrue(one.look_of("ripe.").bold)
        self.assertTrue(one.lines()[-1].startswith("pear tree"))
        one.type(F3)
        self.assertTrue(one.look_of("RIPE").bold)
        one.type("/", ENTER)
        self.assertTrue(one.lines()[-1].startswith("pear tree"))
        one.type(*"/unripe\r")
        self.assertEqual(one.lines()[-1].strip(), "Not found: unripe")
        self.assertIn("Pears", one.text())

    def test_in_pointers_are_listed_and_followed(self):
        for columns in (80, 40):
            one = self.browse(rows=14, columns=columns)
            one.type(*"gpear tree\r", "b")
            one.wait_for("<home")
            self.assertIn("<apple", one.text())
            one.type(ENTER)
            self.assertIn("An apple", one.text())
            one.type(ESCAPE)
            self.assertNotIn("<home", one.text())
        # A name with a blank is a link there, too.
        one.type("o", TAB, ENTER)
        self.assertIn("Pears are ripe", one.text())
        one.type("q")  # a report changes nothing that would be saved
        self.assertEqual(one.end(), 0)

    def test_help_names_every_key(self):
        one = self.browse(rows=80, columns=100)
        one.type("?")
        for key in ("Tab, Shift+Tab", "Backspace, Alt+Left", "\ne: edit", "w, Ctrl+S"):
            self.assertIn(key.strip(), one.text())

    # ---- Changing -----------------------------------------------------------------------------

    def test_a_text_is_edited_and_saved(self):
        one = self.browse(EDITOR=self.editor("sed -i 's/Nothing/Plenty of apple/' \"$1\""))
        one.type("e")
        one.wait_for("Plenty")
        self.assertTrue(one.look_of("apple is").underscore)
        self.assertTrue(one.lines()[-1].startswith("* home"))
        self.assertIn("Nothing", show("w.qvx", "home"))
        one.type("w")
        one.wait_for("Saved")
        one.type("q")
        self.assertEqual(one.end(), 0)
        self.assertEqual(show("w.qvx", "home"), WEB["home"].replace("Nothing", "Plenty of apple"))

    def test_an_edit_that_changes_nothing_changes_nothing(self):
        for script in ("true", "cat \"$1\" > x; cat x > \"$1\""):
            one = self.browse(VISUAL=self.editor(script), EDITOR="false")
            one.type("e")
            one.wait_for("Go to Apple")
            one.type("q")
            self.assertEqual(one.end(), 0, script)

    def test_an_editor_that_fails_loses_nothing(self):
        one = self.browse(EDITOR=self.editor("echo more >> \"$1\"; exit 3"), TMPDIR=os.getcwd())
        one.type("e")
        one.wait_for("the editor failed (status 3), nothing was written: the edited text is kept")
        self.assertNotIn("more", one.lines()[2])
        [left] = pathlib.Path().glob("qvx-*.txt")
        self.assertEqual(left.read_text(), WEB["home"] + "\nmore\n")
        self.assertEqual(stat.S_IMODE(left.stat().st_mode), 0o600)

    def test_what_happens_at_the_terminal_while_the_editor_runs_is_the_editors(self):
        one = self.browse(EDITOR=self.editor("echo new > \"$1\"; echo ready; read line"))
        one.type("e")
        one.wait_for("ready")
        one.resize(12, 40)
        one.type(ENTER)
        one.wait_for("* home")
        self.assertEqual(one.lines()[0].rstrip(), "new")
        one.type("e")
        one.wait_for("ready")
        one.type("\x03")
        one.wait_for("the editor failed")
        one.type(ESCAPE)
        self.assertTrue(one.lines()[-1].startswith("* home"))

    def test_bytes_that_are_no_key_do_nothing(self):
        one = self.browse()
        one.type(b"\xff\xc3(", "\x1b[99;99z", "\x00", "\u6f22", TAB, ENTER)
        self.assertIn("An apple.", one.text())

    def test_cells_are_made_and_deleted(self):
        one = self.browse()
        one.type("n", "1 fig tree", ENTER)
        self.assertTrue(one.lines()[-1].startswith("* fig tree"))
        one.type("n", "123", ENTER)
        self.assertEqual(one.lines()[-1].strip(), "Bad cell name supplied")
        one.type("n", "apple", ENTER)
        one.wait_for("Cell already exists, go there?")
        one.type(ENTER, "d")
        one.wait_for("Delete current cell?")
        one.type("n")
        self.assertIn("An apple.", one.text())
        one.type("d", "y")
        self.assertNotIn("An apple.", one.text())
        one.type("h")
        self.assertFalse(one.look_of("Apple,").underscore)
        one.type("d")
        self.assertEqual(one.lines()[-1].strip(), "Can't Delete Home")
        one.type("\x13")
        one.wait_for("Saved")
        self.assertEqual(run("list", "w.qvx").stdout, b"fig tree\nhome\npear tree\n")

    def test_leaving_with_changes_asks(self):
        before = pathlib.Path("w.qvx").read_bytes()
        for answer in ("n", "y"):
            one = self.browse()
            one.type("n", "fig", ENTER, "q")
            one.wait_for("Save current changes in w?")
            one.type("c")
            one.wait_for("* fig")
            self.assertEqual(pathlib.Path("w.qvx").read_bytes(), before)
            one.type("q", answer)
            self.assertEqual(one.end(), 0)
            self.assertEqual(b"fig" in run("list", "w.qvx").stdout, answer == "y")

    def test_what_another_program_wrote_is_not_written_over(self):
        one = self.browse()
        run("set", "w.qvx", "other", "--text", "theirs")
        one.type("n", "fig", ENTER, "w")
        one.wait_for("changed by another program meanwhile")
        one.type("q", "y")
        one.wait_for("Put the changes into a file beside it?")
        one.type("y")
        self.assertEqual(one.end(), 0)
        self.assertIn(b"qvx: w.qvx: unsaved changes are in w.qvx.unsaved", one.output)
        self.assertEqual(show("w.qvx", "other").strip(), "theirs")
        self.assertIn(b"fig", run("list", "w.qvx.unsaved").stdout)

    def test_the_file_is_locked_only_while_it_is_saved(self):
        one = self.browse()
        for name, mine in (("theirs", "fig"), ("more of theirs", "plum")):
            run("set", "w.qvx", name)
            one.type("n", mine, ENTER, "w")
            one.wait_for("changed by another program meanwhile")
        self.assertIn(b"more of theirs", run("list", "w.qvx").stdout)

    def test_a_web_that_is_damaged_is_only_looked_at(self):
        web = pathlib.Path("w.qvx")
        whole = web.read_bytes()
        web.write_bytes(whole[:whole.rindex(b"<cell>") + 20])
        one = self.browse_damaged()
        for key in "nedw":
            one.type(key)
            one.wait_for("cannot be read whole")
        one.type("q")
        self.assertEqual(one.end(), 0)
        one = self.browse_damaged("--force")
        for name in ("fig", "plum"):
            one.type("n", name, ENTER, "w")
            one.wait_for("Saved")
            one.type("h")
        self.assertEqual(len(list(pathlib.Path().glob("w.qvx.bad*"))), 1)

    def browse_damaged(self, *options):
        one = self.start("browse", "w.qvx", *options)
        one.wait_for("home")
        return one

    def test_a_text_that_does_not_fit_is_kept(self):
        self.make_web({"home": "x" * 60_000, **{f"c{i}": "y" * 60_000 for i in range(4)}})
        one = self.browse(EDITOR=self.editor("yes 'long line' | head -c 150000 > \"$1\""),
                          TMPDIR=os.getcwd())
        one.type("e")
        one.wait_for("the edited text is kept in")
        [left] = pathlib.Path().glob("qvx-*.txt")
        self.assertEqual(left.stat().st_size, 150_000)
        one.type(*"gc1\r")
        self.assertTrue(one.lines()[-1].startswith("c1"))

    # ---- Ending otherwise ---------------------------------------------------------------------

    def test_unsaved_work_outlives_the_terminal(self):
        before = pathlib.Path("w.qvx").read_bytes()
        for number, how in (("", "SIGTERM"), ("2", "SIGHUP"), ("3", "closed")):
            one = self.browse() if not number else self.start("browse", "w.qvx")
            if number:
                one.wait_for("changes that were not saved are in")
            one.type("n", "fig", ENTER)
            if how == "closed":
                one.hang_up()
                self.assertEqual(os.waitstatus_to_exitcode(os.waitpid(one.process, 0)[1]),
                                 -signal.SIGHUP)
                one.process = 0
            else:
                os.kill(one.process, getattr(signal, how))
                self.assertEqual(one.end(), -getattr(signal, how))
                self.assertFalse(one.is_raw())
                self.assertIn(b"unsaved changes are in", one.output)
            kept = "w.qvx.unsaved" + number
            self.assertIn(b"fig", run("list", kept).stdout, how)
            self.assertEqual(stat.S_IMODE(os.stat(kept).st_mode), 0o600)
        self.assertEqual(pathlib.Path("w.qvx").read_bytes(), before)

    def test_an_end_while_the_editor_runs_keeps_what_it_has_written(self):
        one = self.browse(EDITOR=self.editor("echo new > \"$1\"; echo ready; exec sleep 60"),
                          TMPDIR=os.getcwd())
        one.type("e")
        one.wait_for("ready")
        os.kill(one.process, signal.SIGTERM)
        self.assertEqual(one.end(), -signal.SIGTERM)
        [left] = pathlib.Path().glob("qvx-*.txt")
        self.assertEqual(left.read_text(), "new\n")
        self.assertIn(f"the edited text is kept in {left.resolve()}".encode(), one.output)

    def test_a_text_that_no_cell_can_hold_is_kept(self):
        one = self.browse(EDITOR=self.editor("printf 'a\\0b' > \"$1\""), TMPDIR=os.getcwd())
        one.type("e")
        one.wait_for("no text to store")
        self.assertIn("Go to Apple", one.text())
        [left] = pathlib.Path().glob("qvx-*.txt")
        self.assertEqual(left.read_bytes(), b"a\0b")

    def test_without_a_terminal_or_a_web_it_says_so(self):
        for arguments, message in ((("w.qvx",), b"no terminal"), (("-",), b"from a file")):
            outcome = run("browse", *arguments, check=False)
            self.assertEqual(outcome.returncode, 2)
            self.assertIn(message, outcome.stderr)
        # Curses leaves behind what it had taken for a terminal that it does not know.
        unknown = {"TERM": "none-such", "ASAN_OPTIONS": "detect_leaks=0"}
        for file, environment, message in (("w.qvx", unknown, "see TERM"),
                                           ("w.qvx", {"TERM": "dumb"}, "see TERM"),
                                           ("missing.qvx", {}, "UNABLE TO OPEN WEB FILE")):
            one = self.start("browse", file, columns=120, **environment)
            self.assertEqual(one.end(), 2)
            self.assertIn(message, one.text())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]])
