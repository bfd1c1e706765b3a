"""The clipboard: data by format. The system's own controls use put_text and get_text; the program
hands over blocks of memory, which belong to the clipboard from then on.
"""

from handheld.emulator.calls import export

CF_UNICODETEXT = 13
FIRST_REGISTERED = 0xC000


class Clipboard:
    """{format: block of memory}."""

    def __init__(self, system):
        self.system = system
        self.data, self.names = {}, {}
        self.opened = False
        self.owner = None

    def empty(self):
        for block in self.data.values():
            self.system.memory.free(block)
        self.data = {}

    def put_text(self, text):
        """Replaces everything."""
        self.empty()
        size = len(text.encode("utf-16-le", "surrogatepass")) + 2
        block = self.system.memory.alloc(size)
        self.system.memory.put_text(block, text, size // 2)
        self.data[CF_UNICODETEXT] = block

    def get_text(self):
        """The text, "" without one."""
        block = self.data.get(CF_UNICODETEXT)
        return self.system.memory.text(block) if block else ""


@export("COREDLL", "OpenClipboard", "window")
def open_clipboard(system, window):
    if system.clipboard.opened:
        return False
    system.clipboard.opened, system.clipboard.owner = True, window
    return True


@export("COREDLL", "CloseClipboard")
def close_clipboard(system):
    before, system.clipboard.opened = system.clipboard.opened, False
    return before


@export("COREDLL", "EmptyClipboard")
def empty_clipboard(system):
    if system.clipboard.opened:
        system.clipboard.empty()
    return system.clipboard.opened


@export("COREDLL", "SetClipboardData", "format block")
def set_clipboard_data(system, number, block):
    clipboard = system.clipboard
    if not clipboard.opened:
        return 0
    if number in clipboard.data:
        system.memory.free(clipboard.data[number])
    clipboard.data[number] = block
    return block


@export("COREDLL", "GetClipboardData", "format")
def get_clipboard_data(system, number):
    return system.clipboard.data.get(number, 0) if system.clipboard.opened else 0


@export("COREDLL", "IsClipboardFormatAvailable", "format")
def is_format_available(system, number):
    return number in system.clipboard.data


@export("COREDLL", "CountClipboardFormats")
def count_formats(system):
    return len(system.clipboard.data)


@export("COREDLL", "RegisterClipboardFormatW", "text")
def register_format(system, name):
    names = system.clipboard.names
    return names.setdefault(name, FIRST_REGISTERED + len(names))
