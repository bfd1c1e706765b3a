#!/usr/bin/env python3
"""Types at real shells and presses Tab: completion_test.py QVX PAGES

QVX is the built program and PAGES the folder with what completes its command lines. Each case is
typed at an interactive shell on a terminal of its own, which then prints the words of the line that
it has made. One line for each fault, exit status 1 if any.
"""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

CELLS = ["apples", "Aunt_May", "back\\slash", "co:lon x", "dollar $HOME", "it's \"quoted\"",
         "leere Fl\u00e4che", "pear=tree", "semi; rm & |", "tick`s", "zwei  blanks"]

# What is typed, a Tab behind it, and the words of the line then. None: nothing was to be found.
CASES = [
    ("qvx sho", ["qvx", "show"]),
    ("qvx show not", ["qvx", "show", "notes.qvx"]),
    ("qvx show notes.qvx app", ["qvx", "show", "notes.qvx", "apples"]),
    ("qvx show notes.qvx le", ["qvx", "show", "notes.qvx", CELLS[6]]),
    ("qvx show notes.qvx leere\\ F", ["qvx", "show", "notes.qvx", CELLS[6]]),
    ("qvx show notes.qvx 'leere F", ["qvx", "show", "notes.qvx", CELLS[6]]),
    ("qvx show notes.qvx \"leere F", ["qvx", "show", "notes.qvx", CELLS[6]]),
    ("qvx show notes.qvx it", ["qvx", "show", "notes.qvx", CELLS[5]]),
    ("qvx show notes.qvx \"it's", ["qvx", "show", "notes.qvx", CELLS[5]]),
    ("qvx show notes.qvx back", ["qvx", "show", "notes.qvx", CELLS[2]]),
    ("qvx show notes.qvx dol", ["qvx", "show", "notes.qvx", CELLS[4]]),
    ("qvx show notes.qvx \"dol", ["qvx", "show", "notes.qvx", CELLS[4]]),
    ("qvx show notes.qvx sem", ["qvx", "show", "notes.qvx", CELLS[8]]),
    ("qvx show notes.qvx ti", ["qvx", "show", "notes.qvx", CELLS[9]]),
    ("qvx show notes.qvx zw", ["qvx", "show", "notes.qvx", CELLS[10]]),
    ("qvx show notes.qvx co", ["qvx", "show", "notes.qvx", CELLS[3]]),
    ("qvx show notes.qvx co:l", ["qvx", "show", "notes.qvx", CELLS[3]]),
    ("qvx show notes.qvx pear=", ["qvx", "show", "notes.qvx", CELLS[7]]),
    ("qvx show notes.qvx aunt", ["qvx", "show", "notes.qvx", "Aunt_May"]),
    ("qvx show notes.qvx xyz", ["qvx", "show", "notes.qvx", "xyz"]),
    ("qvx show --newline lf notes.qvx app", ["qvx", "show", "--newline", "lf", "notes.qvx", "apples"]),
    ("qvx show my\\ we", ["qvx", "show", "my web.qvx"]),
    ("qvx show my\\ web.qvx pl", ["qvx", "show", "my web.qvx", "plan"]),
    ("qvx show 'my web.qvx' pl", ["qvx", "show", "my web.qvx", "plan"]),
    ("qvx show ~/notes.qvx app", ["qvx", "show", "@HOME/notes.qvx", "apples"]),
    ("qvx show deep/in", ["qvx", "show", "deep/inner.qvx"]),
    ("qvx report notes.qvx --ty", ["qvx", "report", "notes.qvx", "--type"]),
    ("qvx report notes.qvx --type inp", ["qvx", "report", "notes.qvx", "--type", "inptr"]),
    ("qvx report notes.qvx --cell app", ["qvx", "report", "notes.qvx", "--cell", "apples"]),
    ("qvx report notes.qvx --cell=app", ["qvx", "report", "notes.qvx", "--cell=apples"]),
    ("qvx report notes.qvx --type=inp", ["qvx", "report", "notes.qvx", "--type=inptr"]),
    ("qvx show - app", ["qvx", "show", "-", "app"]),
    ("qvx report notes.qvx --output oth", ["qvx", "report", "notes.qvx", "--output", "other.txt"]),
    ("qvx set notes.qvx app --text xy", ["qvx", "set", "notes.qvx", "app", "--text", "xy"]),
    ("qvx check notes.qvx my", ["qvx", "check", "notes.qvx", "my web.qvx"]),
]

STARTS = {
    "bash": (["bash", "--norc", "--noprofile", "-i"],
             "PS1='READY> '; bind 'set bell-style none' 'set enable-bracketed-paste off';"
             " . @PAGES/qvx.bash"),
    "zsh": (["zsh", "-f", "-i"],
            "fpath=(@PAGES $fpath); autoload -Uz compinit; compinit -D -u; unsetopt prompt_sp;"
            " unset zle_bracketed_paste; bindkey -e; unsetopt beep; PS1='READY> '"),
    "fish": (["fish", "--no-config", "-i"],
             "source @PAGES/qvx.fish; function fish_prompt; echo -n 'READY> '; end;"
             " function fish_right_prompt; end; set -g fish_autosuggestion_enabled 0"),
}

ESCAPES = re.compile(rb"\x1b(\[[0-?]*[ -/]*[@-~]|\][^\x07\x1b]*(\x07|\x1b\\)|[()].|[=>78])")


class Shell:
    """An interactive shell on a terminal of its own."""

    def __init__(self, name, folder, pages):
        command, start = STARTS[name]
        environment = dict(os.environ, HOME=str(folder), TERM="dumb" if name == "zsh" else "xterm",
                           PATH=f"{folder}/bin:{os.environ['PATH']}", LC_ALL="C.UTF-8", COLUMNS="250",
                           LINES="40")
        environment.pop("PROMPT_COMMAND", None)
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.chdir(folder)
            os.execvpe(command[0], command, environment)
        self.seen = b""
        self.send("stty rows 40 columns 250; " + start.replace("@PAGES", str(pages)) + "\r")
        self.send("printf '%s%s\\n' STAR TED\r")
        self.wait_for(b"STARTED")

    def send(self, text):
        os.write(self.terminal, text.encode())

    def wait_for(self, what, seconds=20):
        end = time.monotonic() + seconds
        while what not in self.seen:
            left = end - time.monotonic()
            if left <= 0 or not select.select([self.terminal], [], [], left)[0]:
                raise TimeoutError(ESCAPES.sub(b"", self.seen)[-2000:].decode(errors="replace"))
            self.seen += os.read(self.terminal, 65536)

    def words_after(self, typed, number):
        """The words of the line after a Tab. A small program prints them, into a file."""
        self.send(typed + "\t")
        self.send("\x01words " + f"{number} " + "\x05\r")
        self.wait_for(b"END-%d-END" % number)

    def end(self):
        os.close(self.terminal)
        os.waitpid(self.pid, 0)


def make_folder(folder, qvx):
    (folder / "bin").mkdir()
    (folder / "deep").mkdir()
    (folder / "other.txt").touch()
    (folder / "notes.txt").touch()
    (folder / "bin/qvx").symlink_to(qvx)
    words = folder / "bin/words"
    words.write_text('#!/bin/sh\nprintf "%s\\0" "$@" >"$HOME/words"\nprintf "END-%s-END\\n" "$1"\n')
    words.chmod(0o755)
    for web, cells in (("notes.qvx", CELLS), ("my web.qvx", ["plan"]), ("deep/inner.qvx", [])):
        subprocess.run([qvx, "new", folder / web], check=True)
        for cell in cells:
            subprocess.run([qvx, "set", folder / web, cell], check=True)


def faults_of(name, folder, pages):
    shell = Shell(name, folder, pages)
    for number, (typed, expected) in enumerate(CASES):
        expected = [word.replace("@HOME", str(folder)) for word in expected]
        shell.words_after(typed, number)
        words = (folder / "words").read_bytes().decode(errors="replace").split("\0")[1:-1]
        if words != expected:
            yield f"{name}: {typed!r} became {words}, not {expected}"
    shell.end()


def main(qvx, pages):
    faults = []
    for name in STARTS:
        folder = pathlib.Path(tempfile.mkdtemp(prefix="completion-"))
        make_folder(folder, str(pathlib.Path(qvx).resolve()))
        try:
            faults += faults_of(name, folder, pathlib.Path(pages).resolve())
        except TimeoutError as error:
            faults.append(f"{name}: does not answer: {error}")
        shutil.rmtree(folder)
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
