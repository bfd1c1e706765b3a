"""The device: all parts of the system, one program on it, and its user.

    device = Device(exe, dll, folder, arguments="\\\\My Documents\\\\guide.qvx")
    device.do("tap-text cells")
    device.do("expect caption guide")
    device.ended    # the exit code once the program has ended, or None

The program runs in a thread of its own, which stands still whenever it waits for its user: `do`
lets it go on by one step and returns when it waits again. What goes wrong there is raised here.
"""

import pathlib
import queue
import sys
import threading

from handheld.emulator import (
    c_format, c_runtime, c_streams, kernel, modules, user_interface, window_calls)
from handheld.emulator.calls import Log
from handheld.emulator.caret import Caret
from handheld.emulator.clipboard import Clipboard
from handheld.emulator.clock import Clock
from handheld.emulator.dialogs import Dialogs
from handheld.emulator.driver import Driver, Stop
from handheld.emulator.files import Files
from handheld.emulator.focus import Focus
from handheld.emulator.gdi import Gdi
from handheld.emulator.input import Input
from handheld.emulator.looking import Unexpected, screen_text
from handheld.emulator.machine import Machine
from handheld.emulator.menus import Menus
from handheld.emulator.messages import Messages
from handheld.emulator.modules import Modules
from handheld.emulator.painting import Painting
from handheld.emulator.screen import Screen
from handheld.emulator.window_life import WindowLife
from handheld.emulator.windows import Windows

CALLS = (c_format, c_runtime, c_streams, kernel, modules, user_interface, window_calls)
SHOW_NORMAL = 5
DEEPEST = 30_000        # Python calls: each window procedure within another takes a dozen
THREAD_STACK = 512 << 20


class System:
    """Everything that the program finds: one attribute a part."""

    def __init__(self, folder, next_step, log_file=None, say=print):
        self.log = Log(log_file)
        self.machine = Machine()
        self.memory = self.machine.memory
        self.clock = Clock(self.machine)
        self.kernel = kernel.Kernel(self)
        self.modules = Modules(self)
        self.files = Files(self, folder)
        self.streams = {}
        self.driver = Driver(self, next_step, say)
        self._make_windows()

    def _make_windows(self):
        self.windows = Windows(self)
        self.window_life = WindowLife(self)
        self.painting = Painting(self)
        self.focus = Focus(self)
        self.messages = Messages(self)
        self.input = Input(self)
        self.caret = Caret(self)
        self.screen = Screen(self)
        self.gdi = Gdi(self)
        self.menus = Menus(self)
        self.dialogs = Dialogs(self)
        self.clipboard = Clipboard(self)
        self.screen.start()

    def run(self, program, library, arguments):
        """Runs a program until it ends; its exit code, or None when the run was over before."""
        if library is not None and library.exists():
            self.modules.folder[library.name.upper()] = library
        module = self.modules.load_program(program)
        self.machine.set_stack(module.image.OPTIONAL_HEADER.SizeOfStackReserve)
        line = self.memory.alloc(2 * len(arguments) + 2)
        self.memory.put_text(line, arguments, len(arguments) + 1)
        try:
            self.machine.call(module.entry, module.handle, 0, line, SHOW_NORMAL)
        except kernel.ProgramEnd as end:
            return end.code
        except Stop:
            return None
        return 0


class Device:
    """A device with one program, driven step by step."""

    def __init__(self, program, library, folder, arguments="", log_file=None):
        self.ended = None
        self.said = []
        self._steps = queue.Queue()
        self._waiting = queue.Queue()
        self._program, self._library = pathlib.Path(program), library and pathlib.Path(library)
        self._arguments = arguments
        self.system = System(folder, self._next_step, log_file, self.said.append)
        self._start()

    def _start(self):
        sys.setrecursionlimit(DEEPEST)
        before = threading.stack_size(THREAD_STACK)
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()
        threading.stack_size(before)
        self._wait()

    # ---- In the program's thread ----

    def _next_step(self):
        driver = self.system.driver
        self._waiting.put(driver.problem)
        driver.problem = None
        return self._steps.get()

    def _run(self):
        try:
            self.ended = self.system.run(self._program, self._library, self._arguments)
            self._waiting.put(None)
        except BaseException as error:  # whatever it is, the other thread is waiting for it
            self._waiting.put(error)

    # ---- In the user's thread ----

    def _wait(self):
        error = self._waiting.get()
        if error is not None:
            raise error

    def do(self, *steps):
        """Does these steps, until the program waits again or has ended."""
        for step in steps:
            if not self._thread.is_alive():
                raise Unexpected(f"the program has ended, and then: {step}")
            self._steps.put(step)
            try:
                self._wait()
            except Unexpected as error:
                raise Unexpected(f"{step}: {error}") from None

    def close(self):
        """Switches the device off."""
        if self._thread.is_alive():
            self._steps.put(None)
            self._thread.join(10)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    # ---- What can be seen ----

    @property
    def instructions(self):
        """Executed so far."""
        return self.system.machine.instructions

    @property
    def step_instructions(self):
        """Executed for the last step, from its input until the program waited again."""
        return self.system.driver.step_instructions

    def texts(self):
        """The lines on the screen."""
        return screen_text(self.system).split("\n")

    def picture(self, path):
        self.system.screen.picture(path)
