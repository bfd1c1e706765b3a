"""Streams of the C run-time library, over the files of files.py.

A FILE is a block in memory that only this module looks into by its address. What is written waits
in the stream until it is flushed, closed or 4 KB long; _fileno is the system's own handle. Not
modelled: text mode's line ends, ungetc, standard streams.
"""

import os

from handheld.emulator.calls import export
from handheld.emulator.files import (
    CREATE_ALWAYS, GENERIC_READ, GENERIC_WRITE, OPEN_ALWAYS, OPEN_EXISTING, FileError, attempt)

EOF = -1
BUFFER_SIZE = 4096
SHARE_ALL = 3
MODES = {"r": (GENERIC_READ, OPEN_EXISTING), "r+": (GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING),
         "w": (GENERIC_WRITE, CREATE_ALWAYS), "w+": (GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS),
         "a": (GENERIC_WRITE, OPEN_ALWAYS), "a+": (GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS)}


class Stream:
    """One open FILE."""

    def __init__(self, system, handle):
        self.system = system
        self.handle = handle
        self.unread = b""
        self.unwritten = bytearray()
        self.at_end = self.failed = False

    def read(self, size):
        self.flush()
        parts, left = [], size
        while left > 0:
            if not self.unread:
                self.unread = self._fill(max(left, BUFFER_SIZE))
                if not self.unread:
                    break
            part, self.unread = self.unread[:left], self.unread[left:]
            parts.append(part)
            left -= len(part)
        return b"".join(parts)

    def _fill(self, size):
        try:
            data = self.system.files.read(self.handle, size)
        except (OSError, FileError):
            self.failed = True
            return b""
        self.at_end = not data
        return data

    def write(self, data):
        """False when it could not be passed on."""
        self._drop_unread()
        self.unwritten += data
        return len(self.unwritten) < BUFFER_SIZE or self.flush()

    def flush(self):
        data, self.unwritten = bytes(self.unwritten), bytearray()
        if data and self.system.files.write(self.handle, data) < len(data):
            self.failed = True
            return False
        return True

    def _drop_unread(self):
        if self.unread:
            self.system.files.seek(self.handle, -len(self.unread), os.SEEK_CUR)
            self.unread = b""

    def seek(self, offset, whence):
        self.flush()
        self._drop_unread()
        self.at_end = False
        return self.system.files.seek(self.handle, offset, whence)


def stream(system, address):
    """The stream of a FILE of the program."""
    return system.streams[address]


def open_stream(system, path, mode):
    plain = mode.replace("b", "").replace("t", "")
    access, disposition = MODES[plain]
    try:
        opened = system.files.open(path, access, SHARE_ALL, disposition)
    except FileError as error:
        return system.kernel.fail(error.error)
    if plain.startswith("a"):
        system.files.seek(opened.handle, 0, os.SEEK_END)
    address = system.memory.alloc(16)
    system.streams[address] = Stream(system, opened.handle)
    return address


@export("COREDLL", "_wfopen", "text text", cost=5000)
def wfopen(system, path, mode):
    return open_stream(system, path, mode)


@export("COREDLL", "fopen", "text8 text8", cost=5000)
def fopen(system, path, mode):
    return open_stream(system, path.decode("cp1252"), mode.decode())


@export("COREDLL", "fclose", "file", cost=1000)
def fclose(system, file):
    closing = stream(system, file)
    done = closing.flush()
    system.files.close(closing.handle)
    del system.streams[file]
    system.memory.free(file)
    return 0 if done else EOF


@export("COREDLL", "fread", "buffer size number file", cost=100)
def fread(system, buffer, size, number, file):
    data = stream(system, file).read(size * number)
    system.memory.put_bytes(buffer, data)
    return len(data) // size if size else 0


@export("COREDLL", "fwrite", "buffer size number file", cost=100)
def fwrite(system, buffer, size, number, file):
    written = stream(system, file).write(system.memory.bytes(buffer, size * number))
    return number if written else 0


@export("COREDLL", "fgetc", "file", cost=20)
def fgetc(system, file):
    data = stream(system, file).read(1)
    return data[0] if data else EOF


@export("COREDLL", "fputc", "value file", cost=20)
def fputc(system, value, file):
    return value & 0xFF if stream(system, file).write(bytes([value & 0xFF])) else EOF


@export("COREDLL", "fflush", "file", cost=100)
def fflush(system, file):
    return 0 if stream(system, file).flush() else EOF


@export("COREDLL", "fseek", "file int whence", cost=100)
def fseek(system, file, offset, whence):
    return attempt(system, EOF, lambda: stream(system, file).seek(offset, whence) and 0)


@export("COREDLL", "ftell", "file", cost=50)
def ftell(system, file):
    found = stream(system, file)
    at = system.files.seek(found.handle, 0, os.SEEK_CUR)
    return at - len(found.unread) + len(found.unwritten)


@export("COREDLL", "feof", "file", cost=10)
def feof(system, file):
    return stream(system, file).at_end


@export("COREDLL", "ferror", "file", cost=10)
def ferror(system, file):
    return stream(system, file).failed


@export("COREDLL", "clearerr", "file", cost=10)
def clearerr(system, file):
    found = stream(system, file)
    found.at_end = found.failed = False


@export("COREDLL", "setvbuf", "file buffer mode size")
def setvbuf(_system, _file, _buffer, _mode, _size):
    return 0


@export("COREDLL", "_fileno", "file", cost=10)
def fileno(system, file):
    return stream(system, file).handle
