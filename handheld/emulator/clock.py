"""Time on the device: it passes with the instructions that are executed, 206 million in a second,
and by waiting. What happens is the same in every run.
"""

from handheld.emulator.calls import export

INSTRUCTIONS_PER_MS = 206_000
STARTED_AT = 60_000  # ms since the device was switched on


class Clock:
    """Milliseconds since the device was switched on."""

    def __init__(self, machine):
        self._machine = machine
        self.waited = 0

    @property
    def now(self):
        return STARTED_AT + self.waited + self._machine.instructions // INSTRUCTIONS_PER_MS

    def wait_until(self, time):
        """Nothing happens until then; a time that has gone by is no wait."""
        self.waited += max(0, time - self.now)


@export("COREDLL", "GetTickCount", cost=20)
def get_tick_count(system):
    return system.clock.now


@export("COREDLL", "Sleep", "milliseconds")
def sleep(system, milliseconds):
    system.clock.wait_until(system.clock.now + milliseconds)
