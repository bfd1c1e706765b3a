"""Files: one folder of the host is the device's \\My Documents, an empty one is its \\Temp.

Paths are absolute and names are the same in either case. A move never replaces a file that is
there. A file that is open cannot be deleted or moved, nor opened again against what its opener
shares. The host's write permission is the read-only attribute. Not modelled: other attributes,
other folders, storage cards, streams.
"""

import atexit
import os
import pathlib
import tempfile

from handheld.emulator.calls import export

DOCUMENTS = "\\My Documents"
TEMPORARY = "\\Temp"
DOCUMENTS_NUMBER = 5  # as SHGetSpecialFolderPath numbers it
INVALID_HANDLE = INVALID_ATTRIBUTES = 0xFFFFFFFF
GENERIC_READ, GENERIC_WRITE = 0x80000000, 0x40000000
CREATE_NEW, CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS, TRUNCATE_EXISTING = 1, 2, 3, 4, 5
READONLY, DIRECTORY, NORMAL = 1, 0x10, 0x80
(FILE_NOT_FOUND, PATH_NOT_FOUND, ACCESS_DENIED, INVALID_HANDLE_ERROR, SHARING_VIOLATION,
 FILE_EXISTS, DISK_FULL, NEGATIVE_SEEK, ALREADY_EXISTS) = 2, 3, 5, 6, 32, 80, 112, 131, 183
NO_MORE_FILES = 18
FIND_DATA = "<IQQQIII"  # attributes, three times, size, object; the name behind it
FIRST_HANDLE = 0x2C000000
WORK_A_BYTE = 4  # instructions that a device's file system needs for a byte, roughly


class FileError(Exception):
    """An operation failed; the system's number of the error."""

    def __init__(self, error):
        super().__init__(f"error {error}")
        self.error = error


class OpenFile:
    """A file that the program has open."""

    def __init__(self, handle, path, descriptor, access, share):
        self.handle = handle
        self.path = path
        self.descriptor = descriptor
        self.access = access
        self.share = share


class Files:
    """The folder and what is open."""

    def __init__(self, system, folder):
        self.system = system
        self.folder = pathlib.Path(folder)
        self._temporary = tempfile.TemporaryDirectory()
        atexit.register(self._temporary.cleanup)
        self._roots = {DOCUMENTS[1:].lower(): self.folder,
                       TEMPORARY[1:].lower(): pathlib.Path(self._temporary.name)}
        self.room = None  # bytes that may still be written; None: as many as you like
        self._open = {}
        self._searches = {}
        self._next = FIRST_HANDLE

    # ---- Paths ----

    def host_path(self, path):
        """Where the host has it. The last part need not be there, the others must."""
        parts = [part for part in path.replace("/", "\\").split("\\") if part]
        found = self._roots.get(parts[0].lower()) if path.startswith("\\") and parts else None
        if found is None:
            raise FileError(PATH_NOT_FOUND)
        for index, part in enumerate(parts[1:]):
            if not found.is_dir():
                raise FileError(PATH_NOT_FOUND)
            same = [name for name in os.listdir(found) if name.lower() == part.lower()]
            if not same and index < len(parts) - 2:
                raise FileError(PATH_NOT_FOUND)
            found = found / (same[0] if same else part)
        return found

    def existing(self, path):
        found = self.host_path(path)
        if not found.exists():
            raise FileError(FILE_NOT_FOUND)
        return found

    def device_path(self, name):
        """The device's path of a file in the folder."""
        return f"{DOCUMENTS}\\{name}"

    @staticmethod
    def attributes(found):
        if found.is_dir():
            return DIRECTORY
        return NORMAL if found.stat().st_mode & 0o200 else READONLY

    # ---- Handles ----

    def new_handle(self):
        handle, self._next = self._next, self._next + 4
        return handle

    def open(self, path, access, share, disposition):
        """An OpenFile; whether it was there is its attribute `existed`."""
        found = self.host_path(path)
        existed = found.exists()
        self._check_open(found, existed, access, share, disposition)
        flags = os.O_RDWR if access & GENERIC_WRITE else os.O_RDONLY
        if disposition in (CREATE_NEW, CREATE_ALWAYS, OPEN_ALWAYS):
            flags |= os.O_CREAT
        if disposition in (CREATE_ALWAYS, TRUNCATE_EXISTING):
            flags |= os.O_TRUNC
        opened = OpenFile(self.new_handle(), found, os.open(found, flags, 0o644), access, share)
        opened.existed = existed
        self._open[opened.handle] = opened
        return opened

    def _check_open(self, found, existed, access, share, disposition):
        if existed and disposition == CREATE_NEW:
            raise FileError(FILE_EXISTS)
        if not existed and disposition in (OPEN_EXISTING, TRUNCATE_EXISTING):
            raise FileError(FILE_NOT_FOUND)
        if existed and (found.is_dir() or access & GENERIC_WRITE
                        and self.attributes(found) & READONLY):
            raise FileError(ACCESS_DENIED)
        for other in self._open.values():
            if other.path == found and not (shares(other.share, access)
                                            and shares(share, other.access)):
                raise FileError(SHARING_VIOLATION)

    def get(self, handle):
        if handle not in self._open:
            raise FileError(INVALID_HANDLE_ERROR)
        return self._open[handle]

    def close(self, handle):
        os.close(self.get(handle).descriptor)
        del self._open[handle]

    def is_open(self, found):
        return any(other.path == found for other in self._open.values())

    def read(self, handle, size):
        data = os.read(self.get(handle).descriptor, size)
        self.system.machine.charge(WORK_A_BYTE * len(data))
        return data

    def write(self, handle, data):
        """How many bytes found room."""
        if self.room is not None:
            data = data[:self.room]
            self.room -= len(data)
        self.system.machine.charge(WORK_A_BYTE * len(data))
        return os.write(self.get(handle).descriptor, data)

    def seek(self, handle, offset, whence):
        descriptor = self.get(handle).descriptor
        try:
            return os.lseek(descriptor, offset, whence)
        except OSError:
            raise FileError(NEGATIVE_SEEK) from None

    # ---- Names ----

    def delete(self, path):
        found = self.existing(path)
        if found.is_dir() or self.attributes(found) & READONLY:
            raise FileError(ACCESS_DENIED)
        if self.is_open(found):
            raise FileError(SHARING_VIOLATION)
        found.unlink()

    def move(self, path, new_path):
        found, new = self.existing(path), self.host_path(new_path)
        if new.exists() and new != found:
            raise FileError(ALREADY_EXISTS)
        if self.is_open(found):
            raise FileError(SHARING_VIOLATION)
        found.rename(new)

    def listed(self):
        """The names in \\My Documents."""
        return sorted(os.listdir(self.folder), key=str.lower)

    # ---- Searches ----

    def search(self, pattern):
        """A handle and the first name found."""
        folder = self.host_path(pattern).parent
        wanted = pattern.rsplit("\\", 1)[-1].lower()
        names = [name for name in sorted(os.listdir(folder))
                 if pathlib.PurePath(name.lower()).match("*" if wanted == "*.*" else wanted)]
        if not names:
            raise FileError(FILE_NOT_FOUND)
        handle = self.new_handle()
        self._searches[handle] = [folder / name for name in names]
        return handle

    def next_found(self, handle):
        """The next file of a search, or None."""
        waiting = self._searches.get(handle)
        return waiting.pop(0) if waiting else None

    def end_search(self, handle):
        return self._searches.pop(handle, None) is not None


def shares(share, access):
    """Whether what is shared (1 reading, 2 writing) lets another open the file so."""
    return not (access & GENERIC_READ and not share & 1 or access & GENERIC_WRITE
                and not share & 2)


# ---- The program's calls ----

def attempt(system, failed, work):
    """The result of `work()`, or `failed` with the error kept for GetLastError."""
    try:
        return work()
    except FileError as error:
        return system.kernel.fail(error.error, failed)


@export("COREDLL", "CreateFileW", "text access share security disposition flags template",
        cost=5000)
def create_file(system, path, access, share, _security, disposition, _flags, _template):
    def work():
        opened = system.files.open(path or "", access, share, disposition)
        replaced = opened.existed and disposition in (CREATE_ALWAYS, OPEN_ALWAYS)
        system.kernel.last_error = ALREADY_EXISTS if replaced else 0
        return opened.handle
    return attempt(system, INVALID_HANDLE, work)


@export("COREDLL", "CloseHandle", "handle", cost=500)
def close_handle(system, handle):
    return attempt(system, False, lambda: system.files.close(handle) is None)


@export("COREDLL", "ReadFile", "handle buffer size done overlapped", cost=500)
def read_file(system, handle, buffer, size, done, _overlapped):
    def work():
        data = system.files.read(handle, size)
        system.memory.put_bytes(buffer, data)
        system.memory.set_u32(done, len(data))
        return True
    return attempt(system, False, work)


@export("COREDLL", "WriteFile", "handle buffer size done overlapped", cost=500)
def write_file(system, handle, buffer, size, done, _overlapped):
    def work():
        written = system.files.write(handle, system.memory.bytes(buffer, size))
        system.memory.set_u32(done, written)
        if written < size:
            raise FileError(DISK_FULL)
        return True
    return attempt(system, False, work)


@export("COREDLL", "SetFilePointer", "handle int high whence", cost=100)
def set_file_pointer(system, handle, offset, _high, whence):
    return attempt(system, INVALID_HANDLE, lambda: system.files.seek(handle, offset, whence))


@export("COREDLL", "SetEndOfFile", "handle", cost=500)
def set_end_of_file(system, handle):
    def work():
        opened = system.files.get(handle)
        os.ftruncate(opened.descriptor, os.lseek(opened.descriptor, 0, os.SEEK_CUR))
        return True
    return attempt(system, False, work)


@export("COREDLL", "GetFileSize", "handle high", cost=100)
def get_file_size(system, handle, _high):
    return attempt(system, INVALID_HANDLE,
                   lambda: os.fstat(system.files.get(handle).descriptor).st_size)


@export("COREDLL", "FlushFileBuffers", "handle", cost=1000)
def flush_file_buffers(system, handle):
    return attempt(system, False, lambda: system.files.get(handle) is not None)


@export("COREDLL", "GetFileAttributesW", "text", cost=2000)
def get_file_attributes(system, path):
    return attempt(system, INVALID_ATTRIBUTES,
                   lambda: system.files.attributes(system.files.existing(path)))


@export("COREDLL", "SetFileAttributesW", "text attributes", cost=2000)
def set_file_attributes(system, path, attributes):
    def work():
        system.files.existing(path).chmod(0o444 if attributes & READONLY else 0o644)
        return True
    return attempt(system, False, work)


@export("COREDLL", "DeleteFileW", "text", cost=5000)
def delete_file(system, path):
    return attempt(system, False, lambda: system.files.delete(path) is None)


@export("COREDLL", "MoveFileW", "text text", cost=5000)
def move_file(system, path, new_path):
    return attempt(system, False, lambda: system.files.move(path, new_path) is None)


@export("COREDLL", "GetTempPathW", "count buffer")
def get_temp_path(system, count, buffer):
    return system.memory.put_text(buffer, TEMPORARY + "\\", count)


@export("COREDLL", "GetTempFileNameW", "text text number buffer", cost=5000)
def get_temp_file_name(system, folder, prefix, number, buffer):
    """A name that no file has; the file is made at once where the number was left to the system."""
    def name_of(tried):
        return f"{folder.rstrip(chr(92))}\\{prefix[:3]}{tried:x}.tmp"

    def work():
        tried = number or 1
        while number == 0 and system.files.host_path(name_of(tried)).exists():
            tried += 1
        if number == 0:
            system.files.host_path(name_of(tried)).touch()
        system.memory.put_text(buffer, name_of(tried), 260)
        return tried
    return attempt(system, 0, work)


def put_found(system, handle, address):
    """Writes the next file of a search; False when there is none."""
    found = system.files.next_found(handle)
    if found is None:
        return system.kernel.fail(NO_MORE_FILES, False)
    system.memory.put(address, FIND_DATA, system.files.attributes(found), 0, 0, 0, 0,
                      found.stat().st_size, 0)
    system.memory.put_text(address + 40, found.name, 260)
    return True


@export("COREDLL", "FindFirstFileW", "text data", cost=5000)
def find_first_file(system, pattern, address):
    def work():
        handle = system.files.search(pattern)
        put_found(system, handle, address)
        return handle
    return attempt(system, INVALID_HANDLE, work)


@export("COREDLL", "FindNextFileW", "search data", cost=1000)
def find_next_file(system, handle, address):
    return put_found(system, handle, address)


@export("COREDLL", "FindClose", "search")
def find_close(system, handle):
    return system.files.end_search(handle)


@export("COREDLL", "SHGetSpecialFolderPath", "window buffer number create")
def special_folder_path(system, _window, buffer, number, _create):
    if number != DOCUMENTS_NUMBER:
        return False
    system.memory.put_text(buffer, DOCUMENTS, 260)
    return True
