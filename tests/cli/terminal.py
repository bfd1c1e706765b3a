"""qvx on a pseudo terminal, whose screen pyte keeps: keys in, screen out."""

import fcntl
import os
import pathlib
import select
import signal
import struct
import termios
import time

import pyte

# A terminal whose orders pyte knows, all of them.
TERM = "screen-256color"

ALT_LEFT, ALT_RIGHT, F3, SHIFT_TAB = "\x1b[1;3D", "\x1b[1;3C", "\x1bOR", "\x1b[Z"
ESCAPE, ENTER, BACKSPACE, TAB, UP, DOWN = "\x1b", "\r", "\x7f", "\t", "\x1bOA", "\x1bOB"

SECONDS = 20


def click(row, column):
    place = bytes([33 + column, 33 + row])
    return b"\x1b[M " + place + b"\x1b[M#" + place


class Terminal:
    """A program on a terminal of its own."""

    def __init__(self, arguments, rows=24, columns=80, **environment):
        self.screen = pyte.Screen(columns, rows)
        self.stream = pyte.ByteStream(self.screen)
        self.output = b""
        self.master, self.slave = os.openpty()
        self._resize(self.master, rows, columns)
        self.process = os.fork()
        if self.process == 0:
            os.close(self.master)
            os.login_tty(self.slave)
            base = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "TERM": TERM,
                    "HOME": os.getcwd()}
            os.execve(arguments[0], arguments, {**base, **environment})
        self._read_while_busy()

    @staticmethod
    def _resize(terminal, rows, columns):
        fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))

    def _read_for(self, seconds):
        """Takes what the program writes until it has been silent for so long."""
        while select.select([self.master], [], [], seconds)[0]:
            try:
                data = os.read(self.master, 65536)
            except OSError:  # the program has ended
                return
            if not data:
                return
            self.output += data
            self.stream.feed(data)

    def _is_busy(self):
        """Keys wait to be read, or the program is at work."""
        waiting = struct.unpack("i", fcntl.ioctl(self.slave, termios.FIONREAD, bytes(4)))[0]
        try:
            status = pathlib.Path(f"/proc/{self.process}/stat").read_text(encoding="ascii")
        except OSError:
            return False
        return waiting > 0 or status.rpartition(")")[2].split()[0] in "RD"

    def _read_while_busy(self):
        """Until the program waits for keys. Escape alone is one when nothing has followed."""
        end = time.monotonic() + SECONDS
        quiet = 0
        while quiet < 3 and time.monotonic() < end:
            quiet = 0 if self._is_busy() else quiet + 1
            self._read_for(0.02)

    def type(self, *keys):
        for key in keys:
            os.write(self.master, key if isinstance(key, bytes) else key.encode())
            self._read_while_busy()

    def resize(self, rows, columns):
        self.screen.resize(rows, columns)
        self._resize(self.master, rows, columns)
        self._read_while_busy()

    def lines(self):
        return self.screen.display

    def text(self):
        return "\n".join(line.rstrip() for line in self.lines())

    def wait_for(self, text):
        """Until it stands on the screen; AssertionError when it does not come."""
        end = time.monotonic() + SECONDS
        while text not in self.text():
            assert time.monotonic() < end, f"no {text!r} in\n{self.text()}"
            self._read_for(0.05)

    def wait_without(self, text):
        end = time.monotonic() + SECONDS
        while text in self.text():
            assert time.monotonic() < end, f"still {text!r} in\n{self.text()}"
            self._read_for(0.05)

    def place_of(self, text):
        """The row and column where it begins."""
        for row, line in enumerate(self.lines()):
            if text in line:
                return row, line.index(text)
        raise AssertionError(f"no {text!r} in\n{self.text()}")

    def look_of(self, text):
        """The character with which it begins, with what curses made of it."""
        row, column = self.place_of(text)
        return self.screen.buffer[row][column]

    def is_raw(self):
        return not termios.tcgetattr(self.master)[3] & termios.ICANON

    def end(self):
        """Waits for the program's end; its exit status, or minus the signal that ended it."""
        finish = time.monotonic() + SECONDS
        while time.monotonic() < finish:
            self._read_for(0.02)
            process, status = os.waitpid(self.process, os.WNOHANG)
            if process != 0:
                self.process = 0
                return os.waitstatus_to_exitcode(status)
            time.sleep(0.02)
        raise AssertionError("it has not ended")

    def hang_up(self):
        os.close(self.slave)
        os.close(self.master)
        self.master = -1

    def close(self):
        if self.process != 0:
            os.kill(self.process, signal.SIGKILL)
            os.waitpid(self.process, 0)
        if self.master >= 0:
            self.hang_up()
