"""The emulator's files and streams, without a program: what fails is the system's error."""

import os
import pathlib
import tempfile
import unittest

from handheld.emulator import c_streams, files
from handheld.emulator.device import System

NEGATIVE_SEEK = 131


class FilesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.system = System(folder.name, lambda: None)

    def test_seeking_before_the_start(self):
        (self.folder / "short").write_bytes(b"abc")
        file = c_streams.open_stream(self.system, "\\My Documents\\short", "rb")
        handle = c_streams.fileno(self.system, file)
        self.assertEqual(c_streams.fseek(self.system, file, 1, os.SEEK_SET), 0)
        self.assertEqual(c_streams.fseek(self.system, file, -6, os.SEEK_END), -1)
        self.assertEqual(files.set_file_pointer(self.system, handle, -1, 0, os.SEEK_SET),
                         files.INVALID_HANDLE)
        self.assertEqual(self.system.kernel.last_error, NEGATIVE_SEEK)
        self.assertEqual(c_streams.ftell(self.system, file), 1)
        self.assertEqual(c_streams.fgetc(self.system, file), ord("b"))


if __name__ == "__main__":
    unittest.main()
