"""The user: steps that a script, a test or a person at the keyboard gives, done one after the other.

A step is done when the program waits, and the next one when it waits again. Before input a while
goes by, so that two taps are no double tap and the program's own clock gets its turn. What a step
may be is in commands.py; a step is a generator, which yields when the program shall go on: the
milliseconds that go by first, or nothing.
"""

from handheld.emulator.commands import COMMANDS, PAUSE
from handheld.emulator.looking import Unexpected

STEP_INSTRUCTIONS = 6_000_000_000  # more between two calls into the system is no work but a fault


class Stop(Exception):
    """The run is over, though the program is not."""


def no_such_step(_driver, _rest):
    raise Unexpected("there is no such step")


class Driver:
    """Does the steps that `next_step()` returns until it returns None."""

    def __init__(self, system, next_step, say=print):
        self.system = system
        self.next_step = next_step
        self.say = say
        self.step_instructions = 0   # of the last step, from its input on
        self.step_charged = 0        # of these, what the system was charged with
        self.problem = None          # what the last step did not find
        self._step = None
        self._until = None
        self._began_at = (0, 0)
        self._later = []             # (time, text)

    # ---- Called by the message queue ----

    def idle(self):
        """The program waits. None when there is input now, or the time to wait until."""
        clock = self.system.clock
        self.system.machine.allow(STEP_INSTRUCTIONS)
        if self._until is not None and clock.now < self._until:
            return self._until
        self._until = None
        while True:
            try:
                if self._step is None:
                    self._begin()
                pause = next(self._step)
            except Unexpected as error:
                self.problem, self._step = error, None
                continue
            except StopIteration:
                self._step = None
                self._count()
                continue
            if pause == PAUSE:
                self._mark()
            if pause is None:
                return None if self.system.input.waiting else clock.now
            self._until = clock.now + pause
            return self._until

    def _begin(self):
        text = self.next_step()
        if text is None:
            raise Stop
        self._mark()
        self._step = self.make(text)

    def _mark(self):
        """The step's work begins here."""
        machine = self.system.machine
        self._began_at = (machine.instructions, machine.charged)

    def _count(self):
        machine = self.system.machine
        self.step_instructions = machine.instructions - self._began_at[0]
        self.step_charged = machine.charged - self._began_at[1]

    def make(self, text):
        """The generator of one step."""
        name, _, rest = text.lstrip().partition(" ")
        if not name or name.startswith("#"):
            return iter(())
        function = COMMANDS.get(name, no_such_step)
        return function(self, rest) or iter(())

    def look(self):
        """The program takes a message, perhaps while it is busy: what was to be done by now?"""
        while self._later and self._later[0][0] <= self.system.clock.now:
            _, text = self._later.pop(0)
            for _ in self.make(text):
                pass

    def later(self, milliseconds, text):
        """Does a step at that time from now, whether the program is waiting or not."""
        self._later.append((self.system.clock.now + milliseconds, text))
        self._later.sort()

    @staticmethod
    def stop():
        """Ends the run here."""
        raise Stop
