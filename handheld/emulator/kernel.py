"""The process: its end, errors, memory by handles, critical sections, sounds.

One process with one thread: what waits for another thread waits for nobody. Ending the process ends
everything at once, as on the device: no window is destroyed, no file completed.
"""

from handheld.emulator.calls import export
from handheld.emulator.window_calls import THE_PROCESS, THE_THREAD

CURRENT_PROCESS = 66
CURRENT_THREAD = 65
LMEM_ZEROINIT = 0x40
NORM_IGNORECASE = 1


class ProgramEnd(Exception):
    """The process has ended; its exit code."""

    def __init__(self, code):
        super().__init__(f"ended with {code}")
        self.code = code


class Kernel:
    """What the thread has: its last error; and how often the device beeped."""

    def __init__(self, system):
        self.system = system
        self.last_error = 0
        self.beeps = 0

    def fail(self, error, result=0):
        """The result of a call that fails with this error."""
        self.last_error = error
        return result


@export("COREDLL", "TerminateProcess", "process code")
def terminate_process(_system, process, code):
    if process not in (CURRENT_PROCESS, THE_PROCESS):
        return False
    raise ProgramEnd(code - 0x100000000 if code & 0x80000000 else code)


@export("COREDLL", "ExitThread", "code")
def exit_thread(_system, code):
    raise ProgramEnd(code)


@export("COREDLL", "OpenProcess", "access inherit process")
def open_process(_system, _access, _inherit, process):
    return THE_PROCESS if process == THE_PROCESS else 0


@export("COREDLL", "GetCurrentProcessId")
def get_current_process_id(_system):
    return THE_PROCESS


@export("COREDLL", "GetCurrentThreadId")
def get_current_thread_id(_system):
    return THE_THREAD


@export("COREDLL", "GetLastError", cost=10)
def get_last_error(system):
    return system.kernel.last_error


@export("COREDLL", "SetLastError", "error", cost=10)
def set_last_error(system, error):
    system.kernel.last_error = error


@export("COREDLL", "MessageBeep", "kind")
def message_beep(system, _kind):
    system.kernel.beeps += 1
    return True


# ---- Memory by handle ----

@export("COREDLL", "LocalAlloc", "flags size", cost=300)
def local_alloc(system, flags, size):
    return system.memory.alloc(size, bool(flags & LMEM_ZEROINIT))


@export("COREDLL", "LocalFree", "address", cost=200)
def local_free(system, address):
    system.memory.free(address)
    return 0


@export("COREDLL", "LocalReAlloc", "address size flags", cost=400)
def local_realloc(system, address, size, _flags):
    return system.memory.realloc(address, size)


@export("COREDLL", "LocalSize", "address", cost=50)
def local_size(system, address):
    return system.memory.size_of(address)


# ---- Threads that are not there ----

@export("COREDLL", "InitializeCriticalSection", "section", cost=30)
def initialize_critical_section(_system, _section):
    return None


@export("COREDLL", "EnterCriticalSection", "section", cost=30)
def enter_critical_section(_system, _section):
    return None


@export("COREDLL", "LeaveCriticalSection", "section", cost=30)
def leave_critical_section(_system, _section):
    return None


@export("COREDLL", "DeleteCriticalSection", "section", cost=30)
def delete_critical_section(_system, _section):
    return None


# ---- Text in other codings ----

def codec_of(page):
    """65001 is UTF-8; the others are the device's own, western."""
    return "utf-8" if page == 65001 else "cp1252"


@export("COREDLL", "MultiByteToWideChar", "page flags bytes count buffer index",
        cost=lambda system, page, flags, source, count, buffer, room: 20 + 8 * max(0, count))
def multi_byte_to_wide_char(system, page, _flags, source, count, buffer, room):
    data = system.memory.text8(source) + b"\0" if count < 0 else system.memory.bytes(source, count)
    units = data.decode(codec_of(page), "replace").encode("utf-16-le")
    return converted(system, units, 2, buffer, room)


@export("COREDLL", "WideCharToMultiByte", "page flags units count buffer index default used",
        cost=lambda system, page, flags, source, count, *rest: 20 + 8 * max(0, count))
def wide_char_to_multi_byte(system, page, _flags, source, count, buffer, room, _default, _used):
    text = system.memory.text(source) + "\0" if count < 0 else \
        system.memory.bytes(source, 2 * count).decode("utf-16-le", "replace")
    return converted(system, text.encode(codec_of(page), "replace"), 1, buffer, room)


def converted(system, data, size, buffer, room):
    """Writes it when there is room for all of it; how many units it has."""
    if room == 0:
        return len(data) // size
    if len(data) > room * size:
        return system.kernel.fail(122)
    system.memory.put_bytes(buffer, data)
    return len(data) // size


@export("COREDLL", "GetACP")
def get_acp(_system):
    return 1252
