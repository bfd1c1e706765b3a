"""The message queue: posted messages, input, timers, and the end of the program.

What waits is taken in the system's order: posted messages, then input, WM_QUIT, WM_PAINT, and
timers last. When nothing waits, it is the user's turn: the driver does its next step, or time goes
by until the next timer. A program that looks at the empty queue again and again without doing
anything else is waiting too, as one is that calls GetMessageW.
"""

import collections
from dataclasses import dataclass

from handheld.emulator import constants as c
from handheld.emulator.calls import export

MSG = "<IIIIIii"
PM_REMOVE = 1
POLL_INSTRUCTIONS = 10_000  # less between looks at an empty queue: nothing else is being done
POLL_LOOKS = 4
TIMER_LEAST = 10            # milliseconds
WAIT_TIMEOUT = 258
FOREVER = 0xFFFFFFFF


@dataclass
class Msg:
    """A message on its way."""

    window: object
    message: int
    wparam: int
    lparam: int
    time: int = 0
    x: int = 0
    y: int = 0


@dataclass
class Timer:
    """One timer: of a window, or of a procedure."""

    window: object
    number: int
    period: int
    due: int
    procedure: int = 0


def anything(_window, _message):
    """The filter that lets every message through."""
    return True


class Messages:
    """The queue of the one thread."""

    def __init__(self, system):
        self.system = system
        self.posted = collections.deque()
        self.timers = []
        self.quit_code = None
        self.pen = (0, 0)
        self._looks = 0      # at the empty queue, in a row
        self._looked_at = 0  # instructions at the last one

    # ---- Into the queue ----

    def post(self, window, message, wparam=0, lparam=0):
        self.posted.append(Msg(window, message, wparam & 0xFFFFFFFF, lparam & 0xFFFFFFFF,
                               self.system.clock.now, *self.pen))

    def window_gone(self, window):
        self.posted = collections.deque(m for m in self.posted if m.window is not window)
        self.timers = [timer for timer in self.timers if timer.window is not window]

    def set_timer(self, window, number, milliseconds, procedure=0):
        self.kill_timer(window, number)
        period = max(TIMER_LEAST, milliseconds)
        self.timers.append(
            Timer(window, number, period, self.system.clock.now + period, procedure))
        return number or 1

    def kill_timer(self, window, number):
        before = len(self.timers)
        self.timers = [timer for timer in self.timers
                       if (timer.window, timer.number) != (window, number)]
        return len(self.timers) < before

    # ---- Out of the queue ----

    def take(self, wanted=anything, remove=True):
        """The next message that `wanted(window, message)` lets through, or None."""
        self.system.driver.look()
        found = self._posted(wanted, remove) or self._input(wanted, remove)
        if found is None and self.quit_code is not None and not self.posted:
            found = Msg(None, c.WM_QUIT, self.quit_code, 0, self.system.clock.now)
            if remove:
                self.quit_code = None
        return found or self._paint(wanted) or self._timer(wanted, remove)

    def _posted(self, wanted, remove):
        for message in self.posted:
            if wanted(message.window, message.message):
                if remove:
                    self.posted.remove(message)
                return message
        return None

    def _input(self, wanted, remove):
        """Input becomes a message when it is taken; what is only looked at is posted then."""
        found = self.system.input.take(wanted)
        if found is not None and not remove:
            self.posted.appendleft(found)
        return found

    def _paint(self, wanted):
        if not wanted(None, c.WM_PAINT):
            return None
        window = self.system.painting.waiting()
        return window and Msg(window, c.WM_PAINT, 0, 0, self.system.clock.now)

    def _timer(self, wanted, remove):
        now = self.system.clock.now
        for timer in sorted(self.timers, key=lambda timer: timer.due):
            if timer.due <= now and wanted(timer.window, c.WM_TIMER):
                if remove:
                    timer.due = now + timer.period
                return Msg(timer.window, c.WM_TIMER, timer.number, timer.procedure, now)
        return None

    # ---- Waiting ----

    def get(self, wanted=anything):
        """Waits for a message."""
        while True:
            found = self.take(wanted)
            if found is not None:
                return found
            self.wait()

    def peek(self, wanted=anything, remove=True):
        """A message, or None at once; who asks over and over is made to wait."""
        found = self.take(wanted, remove)
        if found is None and self._asks_over_and_over():
            self.wait()
            found = self.take(wanted, remove)
        if found is not None:
            self._looks = 0
        return found

    def _asks_over_and_over(self):
        executed = self.system.machine.instructions
        soon = executed - self._looked_at < POLL_INSTRUCTIONS
        self._looks, self._looked_at = self._looks + 1 if soon else 1, executed
        return self._looks >= POLL_LOOKS

    def wait(self, until=None):
        """The driver's turn: it makes input, or time goes by, to `until` at most."""
        clock = self.system.clock
        wanted = self.system.driver.idle()
        if wanted is None:
            return
        dues = [timer.due for timer in self.timers] + [wanted]
        clock.wait_until(min(dues + ([] if until is None else [until])))

    # ---- Out to the windows ----

    def dispatch(self, message):
        """Hands it to the window's procedure, or a timer to its own."""
        if message.message == c.WM_TIMER and message.lparam:
            return self.system.machine.call(message.lparam, handle(message.window), c.WM_TIMER,
                                            message.wparam, message.time)
        return self.system.windows.send(message.window, message.message, message.wparam,
                                        message.lparam)

    def translate(self, message):
        return self.system.input.translate(message)

    def loop(self, until, dialog=None, keys=None):
        """Runs until `until()`; `keys(msg)` gets keys and characters first, then a dialog does."""
        while not until():
            message = self.get()
            if message.message == c.WM_QUIT:
                self.quit_code = message.wparam
                return
            if keys is not None and c.WM_KEYDOWN <= message.message <= c.WM_SYSCHAR \
                    and keys(message):
                continue
            if dialog is not None and self.system.dialogs.is_dialog_message(dialog, message):
                continue
            self.translate(message)
            self.dispatch(message)


def handle(window):
    return 0 if window is None else window.handle


def from_memory(system, address):
    """The MSG of the program as a Msg."""
    window, message, wparam, lparam, time, x, y = system.memory.struct(address, MSG)
    return Msg(system.windows.find(window), message, wparam, lparam, time, x, y)


def write_msg(system, address, found):
    system.memory.put(address, MSG, handle(found.window), found.message, found.wparam, found.lparam,
                      found.time & 0xFFFFFFFF, found.x, found.y)


def make_filter(window, lowest, highest):
    """What GetMessageW's arguments let through; 0 and 0 is every message."""
    if window is None and highest == 0:
        return anything
    return lambda to, message: (window is None or to is None or to.is_within(window)) and (
        highest == 0 or lowest <= message <= highest)


# ---- The program's calls ----

@export("COREDLL", "GetMessageW", "message window lowest highest", cost=400)
def get_message(system, address, window, lowest, highest):
    found = system.messages.get(make_filter(window, lowest, highest))
    write_msg(system, address, found)
    return found.message != c.WM_QUIT


@export("COREDLL", "PeekMessageW", "message window lowest highest flags", cost=400)
def peek_message(system, address, window, lowest, highest, flags):
    found = system.messages.peek(make_filter(window, lowest, highest), bool(flags & PM_REMOVE))
    if found is not None:
        write_msg(system, address, found)
    return found is not None


@export("COREDLL", "MsgWaitForMultipleObjectsEx", "count handles milliseconds mask flags")
def msg_wait(system, count, _handles, milliseconds, _mask, _flags):
    """Waits for input alone: whoever waits for objects besides is told that none came."""
    end = None if milliseconds == FOREVER else system.clock.now + milliseconds
    while system.messages.take(remove=False) is None:
        if end is not None and system.clock.now >= end:
            return WAIT_TIMEOUT
        system.messages.wait(end)
    return count


@export("COREDLL", "DispatchMessageW", "message", cost=100)
def dispatch_message(system, address):
    return system.messages.dispatch(from_memory(system, address))


@export("COREDLL", "TranslateMessage", "message", cost=50)
def translate_message(system, address):
    return system.input.translate(from_memory(system, address))


@export("COREDLL", "PostMessageW", "window message wparam lparam", cost=200)
def post_message(system, window, message, wparam, lparam):
    system.messages.post(window, message, wparam, lparam)
    return True


@export("COREDLL", "PostQuitMessage", "code")
def post_quit_message(system, code):
    system.messages.quit_code = code


@export("COREDLL", "SendMessageW", "window message wparam lparam", cost=100)
def send_message(system, window, message, wparam, lparam):
    return system.windows.send(window, message, wparam, lparam)


@export("COREDLL", "SetTimer", "window number milliseconds procedure")
def set_timer(system, window, number, milliseconds, procedure):
    return system.messages.set_timer(window, number, milliseconds, procedure)


@export("COREDLL", "KillTimer", "window number")
def kill_timer(system, window, number):
    return system.messages.kill_timer(window, number)


@export("COREDLL", "GetMessagePos")
def get_message_pos(system):
    return system.messages.pen[1] << 16 | system.messages.pen[0]


@export("COREDLL", "InSendMessage")
def in_send_message(_system):
    return False
