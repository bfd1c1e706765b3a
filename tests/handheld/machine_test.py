"""The emulator's processor and memory: what a device would stop at is seen and named, and code of
both sides calls each other as deep as it likes.
"""

import struct
import unittest

from handheld.emulator.machine import Machine
from handheld.emulator.memory import Fault
from handheld.emulator.symbols import Symbols

CODE = 0x11000
RETURN = 0xE1A0F00E  # mov pc, lr
PUSH, POP = 0xE92D4010, 0xE8BD8010  # push {r4, lr}; pop {r4, pc}
CALL_R3 = (0xE1A0E00F, 0xE1A0F003)  # mov lr, pc; mov pc, r3


class MachineTest(unittest.TestCase):
    def setUp(self):
        self.machine = Machine()
        self.machine.memory.map(CODE, 0x1000)
        self.machine.set_stack(0x10000)

    def run_code(self, *words, arguments=()):
        self.machine.memory.put_bytes(CODE, struct.pack(f"<{len(words)}I", *words))
        return self.machine.call(CODE, *arguments)

    def test_faults(self):
        for name, words, wanted in (
                ("half a word off", (0xE3A03A11, 0xE2833002, 0xE5934000), "not aligned"),
                ("half-word at an odd place", (0xE3A03A11, 0xE1D340B1), "not aligned"),
                ("read from nothing", (0xE3A03000, 0xE5930000), "read from 00000000"),
                ("write to nothing", (0xE3A03010, 0xE5830000), "write to 00000010"),
                ("jump to nothing", (0xE3A0F000,), "jump to 00000000"),
                ("stack overflow", (0xE92D43FF, 0xEAFFFFFD), "stack overflow"),
                ("a frame past the guard page", (0xE24DDA02, 0xE58D4000), "skips a page"),
                ("no BX before architecture 4T", (0xE12FFF1E,), "does not have"),
                ("a loop without end", (0xEAFFFFFE,), "for too long")):
            with self.subTest(name):
                self.setUp()
                self.machine.symbols = Symbols()
                self.machine.symbols._functions = [(CODE, 0x100, "culprit()")]
                self.machine.allow(1_000_000)
                with self.assertRaisesRegex(Fault, wanted) as caught:
                    self.run_code(*words)
                if not name.startswith("jump"):
                    self.assertIn("culprit()+", str(caught.exception))

    def test_calls_within_calls(self):
        """count(n, system): n + what the system makes of n - 1 by calling count again."""
        trap = self.machine.trap(
            lambda registers: (self.machine.call(CODE, registers[0] - 1, trap)
                               if registers[0] > 1 else 0, 0))
        result = self.run_code(PUSH, 0xE1A04000, 0xE1A03001, *CALL_R3, 0xE0800004, POP,
                               arguments=(30, trap))
        self.assertEqual(sum(range(1, 31)), result)
        self.assertEqual([], self.machine.levels)

    def test_instructions_do_not_vary(self):
        words = (0xE2500001, 0x1AFFFFFD, RETURN)  # subs r0, r0, #1; bne; mov pc, lr
        counts = []
        for _ in range(2):
            before = self.machine.instructions
            self.run_code(*words, arguments=(1000,))
            counts.append(self.machine.instructions - before)
        self.assertEqual(counts[0], counts[1])
        self.assertIn(counts[0], range(2001, 2005))

    def test_the_heap_knows_its_blocks(self):
        memory = self.machine.memory
        block = memory.alloc(10)
        memory.put_bytes(block, b"0123456789")
        grown = memory.realloc(block, 1 << 20)
        self.assertEqual(b"0123456789", memory.bytes(grown, 10))
        self.assertEqual(0, memory.alloc(1 << 25))
        for wrong in (block, grown + 8):
            with self.assertRaisesRegex(Fault, "no block"):
                memory.free(wrong)
        memory.free(grown)
        self.assertEqual(0, memory.in_use)


if __name__ == "__main__":
    unittest.main()
