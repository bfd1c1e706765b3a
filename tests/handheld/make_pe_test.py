"""handheld/make_pe.py over small programs: what it refuses, and what it makes of a DLL."""

import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest

import pefile

ROOT = pathlib.Path(__file__).resolve().parents[2]
HANDHELD = ROOT / "handheld"
TOOLS = "arm-linux-gnueabi-"

START = """
    .syntax unified
    .arm
    .text
    .global start
    .type start, %function
start:
"""
# Addresses in code and in data, of code, of data and of zeros.
ADDRESSES = START + """
    ldr r0, =value
    ldr r1, =zeros + 4
    b Beep
    .ltorg
    .data
value: .word 7, start, value
    .bss
zeros: .space 5000
"""


class MakePe(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "core.def").write_text(
            "LIBRARY COREDLL\nEXPORTS\n    Beep\n    Unused\n    Nameless @9 NONAME\n")

    def link(self, source, base=0x10000, lists=("core.def",)):
        """Assembles and links a program; the path of the ELF file."""
        thunks, elf = self.folder / "thunks.s", self.folder / "program.elf"
        self.run_tool(sys.executable, HANDHELD / "make_imports.py", thunks,
                      *(self.folder / name for name in lists))
        objects = []
        for name, text in ("thunks", thunks.read_text()), ("program", source):
            path = self.folder / f"{name}.s"
            path.write_text(text)
            objects.append(path.with_suffix(".o"))
            self.run_tool(TOOLS + "as", "-march=armv4", "-meabi=gnu", path, "-o", objects[-1])
        self.run_tool(TOOLS + "ld", "--no-warn-mismatch", "--gc-sections", "--emit-relocs",
                      "-z", "max-page-size=4096", "-T", HANDHELD / "image.ld",
                      f"--defsym=IMAGE_BASE={base:#x}", "-e", "start", *objects, "-o", elf)
        return elf

    def run_tool(self, *command):
        subprocess.run([str(word) for word in command], check=True, capture_output=True)

    def make(self, elf, *options, output="program.exe"):
        """Returns (what it said, the file it made)."""
        path = self.folder / output
        path.unlink(missing_ok=True)
        done = subprocess.run([sys.executable, HANDHELD / "make_pe.py", elf, "--output", path,
                               "--imports", self.folder / "core.def", *options],
                              capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode == 0, path.exists(), done.stderr)
        return done.stderr, path

    def assert_refused(self, source, reason, *options):
        said, path = self.make(self.link(START + source), *options)
        self.assertIn(reason, said)
        self.assertFalse(path.exists())

    def test_refuses_what_the_processor_does_not_know(self):
        for word, reason in ((0xE12FFF1E, "bx or blx"), (0xE12FFF33, "bx or blx"),
                             (0xFA000000, "an instruction without a condition"),
                             (0xF5D0F000, "an instruction without a condition"),
                             (0xE16F0F11, "clz"), (0xE1C200D0, "ldrd or strd"),
                             (0xE1600281, "a multiplication of half words"),
                             (0xE1020051, "a saturating addition"), (0xE0410392, "umaal or mls"),
                             (0xE1932F9F, "ldrex or strex"),
                             (0xE6BF0F31, "an instruction on media"), (0xE3000001, "movw"), (0xE320F000, "a hint")):
            with self.subTest(word=hex(word)):
                self.assert_refused(f"    .inst {word:#x}\n", f"start at 0x11000: {reason} (")

    # Instructions close to those above, and all that a compiler makes for armv4.
    def test_takes_what_the_processor_knows(self):
        said, _ = self.make(self.link(START + """
            ldrh r0, [r1, #2]
            strh r0, [r1], #2
            ldrsb r0, [r1]
            ldrsh r0, [r1, r2]
            umull r0, r1, r2, r3
            smlal r0, r1, r2, r3
            mla r0, r1, r2, r3
            swp r0, r1, [r2]
            tst r0, r1, lsl #3
            teq r0, r1, ror r2
            cmp r0, r1, lsr r2
            cmn r0, #1
            mrs r0, cpsr
            ldr r0, [r1, r2, lsl #2]
            mov pc, lr
            .word 0xE12FFF1E
        """))
        self.assertEqual(said, "")

    def test_refuses_files_that_could_not_run(self):
        self.assert_refused("    .section .init_array, \"aw\"\n    .word start\n",
                            "a global needs a constructor, which nobody calls (start)")
        self.assert_refused("    .space 5000\n", "over 4096", "--limit", "4096")
        (self.folder / "other.def").write_text("LIBRARY COREDLL\nEXPORTS\n    Desktop\n")
        said, _ = self.make(self.link(START + "    b Desktop\n", lists=("core.def", "other.def")))
        self.assertIn("no list of imports holds Desktop", said)

    # By name or by ordinal, and nothing that is not called.
    def test_imports(self):
        _, path = self.make(self.link(START + "    bl Beep\n    bl Nameless\n"))
        library, = pefile.PE(str(path)).DIRECTORY_ENTRY_IMPORT
        self.assertEqual(library.dll, b"COREDLL.dll")
        self.assertEqual([one.name or one.ordinal for one in library.imports], [b"Beep", 9])

    # A DLL that the loader moves is byte for byte the one that was linked for that place.
    def test_a_moved_dll_is_as_if_linked_there(self):
        images = []
        for base in 0x10000000, 0x23450000:
            _, path = self.make(self.link(ADDRESSES, base), "--dll", "--export", "start",
                                output="program.dll")
            images.append(pefile.PE(str(path)))
        moved, linked = images
        self.assertEqual([one.name for one in moved.DIRECTORY_ENTRY_EXPORT.symbols], [b"start"])
        moved.relocate_image(linked.OPTIONAL_HEADER.ImageBase)
        for one, other in zip(moved.sections, linked.sections):
            at, size = one.VirtualAddress, one.Misc_VirtualSize
            self.assertEqual(moved.get_data(at, size), linked.get_data(at, size), one.Name)
            self.assertEqual(at, other.VirtualAddress)
        start = 0x23450000 + linked.DIRECTORY_ENTRY_EXPORT.symbols[0].address
        data = linked.sections[1].VirtualAddress + 16  # behind the addresses of the imports
        self.assertEqual(struct.unpack("<3I", linked.get_data(data, 12)),
                         (7, start, 0x23450000 + data))


if __name__ == "__main__":
    unittest.main()
