"""Time on the device: it passes with the instructions that are executed, 206 million in a second,
and by waiting. What happens is the same in every run.
"""

from handheld.emulator.calls import export
from handheld.emulator.memory import PAGE

CLOCK_PAGE = 0x1F0000
# ldr r0, =CLOCK_PAGE; ldr r0, [r0]; mov pc, lr
READ_CLOCK = (0xE59F0004, 0xE5900000, 0xE1A0F00E, CLOCK_PAGE)
INSTRUCTIONS_PER_MS = 206_000
STARTED_AT = 60_000  # ms since the device was switched on


class Clock:
    """Milliseconds since the device was switched on.

    They stand in a word that the program could read itself; GetTickCount is three instructions that
    do, because programs ask for the time more often than for anything else.
    """

    def __init__(self, machine):
        self._machine = machine
        self._memory = machine.memory
        self._memory.map(CLOCK_PAGE, PAGE)
        self._memory.set_u32(CLOCK_PAGE, STARTED_AT)
        machine.set_clock(CLOCK_PAGE, INSTRUCTIONS_PER_MS)
        machine.system_code["GetTickCount"] = machine.place_code(*READ_CLOCK)

    @property
    def now(self):
        self._machine.pass_ticks()
        return self._memory.u32(CLOCK_PAGE)

    def wait_until(self, time):
        """Nothing happens until then; a time that has gone by is no wait."""
        self._memory.set_u32(CLOCK_PAGE, max(self.now, time))


@export("COREDLL", "Sleep", "milliseconds")
def sleep(system, milliseconds):
    system.clock.wait_until(system.clock.now + milliseconds)
