"""The dialogs for choosing a file: a list of what is in \\My Documents, and a field for the name.

A tap on a file puts its name into the field; OK in the bar, Enter or a second tap takes it, Escape
takes none. Modelled: the pattern of the filter in force, the extension that is added, the question
before a file is replaced, the refusal of a file that is not there. Not modelled: folders, storage
cards, templates and hooks of the program.
"""

import fnmatch

from handheld.emulator import message_box
from handheld.emulator.calls import export
from handheld.emulator.constants import (
    WM_COMMAND, WM_SETTEXT, WS_BORDER, WS_CAPTION, WS_CHILD, WS_POPUP, WS_TABSTOP, WS_VISIBLE,
    WS_VSCROLL)
from handheld.emulator.controls.list_box import LBN_DBLCLK, LBN_SELCHANGE, LBS_NOTIFY
from handheld.emulator.dialog_making import run_modal
from handheld.emulator.dialogs import IDCANCEL, IDOK, Dialog, find_item, give_focus
from handheld.emulator.windows import window_class

OPENFILENAME_SIZE = 76
OFN_OVERWRITEPROMPT, OFN_FILEMUSTEXIST = 2, 0x1000
LIST_ID, NAME_ID, LABEL_ID = 0x460, 0x47C, 0x442
MB_YESNO_WARNING, MB_OK_WARNING = 0x34, 0x30
IDYES = 6
MARGIN, FIELD_HEIGHT = 6, 20


@window_class("FileDialog")
class FileDialog(Dialog):
    """The dialog; its answer is 1 with `chosen` as the path, or 0."""

    saving, flags, extension, chosen = False, 0, "", ""

    def ask_procedure(self, message, wparam, _lparam):
        if message != WM_COMMAND or self.answer is not None:
            return 0
        number, code = wparam & 0xFFFF, wparam >> 16 & 0xFFFF
        if number == IDOK:
            self.take()
        elif number == IDCANCEL:
            self.end(0)
        elif number == LIST_ID and code in (LBN_SELCHANGE, LBN_DBLCLK):
            self.show_name(self.selected())
            if code == LBN_DBLCLK:
                self.take()
        return 1

    def selected(self):
        found = find_item(self, LIST_ID)
        return found.items.texts[found.selected]

    def show_name(self, name):
        with self.system.memory.scratch_text(name) as address:
            self.system.windows.send(find_item(self, NAME_ID), WM_SETTEXT, 0, address)

    def take(self):
        """Ends with the name in the field, when it may."""
        name = find_item(self, NAME_ID).content.text.strip()
        if not name:
            return
        path = self.whole_path(name)
        exists = self.exists(path)
        if self.saving and exists and self.flags & OFN_OVERWRITEPROMPT:
            question = f"{name} already exists. Do you want to replace it?"
            if message_box.show(self.system, self, question, self.text, MB_YESNO_WARNING) != IDYES:
                return
        if not self.saving and not exists and self.flags & OFN_FILEMUSTEXIST:
            message_box.show(self.system, self, f"{name} cannot be found.", self.text,
                             MB_OK_WARNING)
            return
        self.chosen = path
        self.end(1)

    def whole_path(self, name):
        if self.extension and "." not in name.rsplit("\\", 1)[-1]:
            name = f"{name}.{self.extension}"
        return name if name.startswith("\\") else self.system.files.device_path(name)

    def exists(self, path):
        name = path.rsplit("\\", 1)[-1].lower()
        return any(name == other.lower() for other in self.system.files.listed())


def ask(system, record, saving):
    """Reads OPENFILENAME, asks, writes the answer back."""
    memory = system.memory
    if memory.u32(record) != OPENFILENAME_SIZE:
        return False
    fields = memory.struct(record, "<14I2H")
    owner = system.windows.find(fields[1])
    dialog = make(system, owner, fields, saving)
    dialog.extension = memory.text(memory.u32(record + 60)) if memory.u32(record + 60) else ""
    pattern = filter_of(memory, fields[3], fields[6])
    fill(system, dialog, pattern, memory.text(fields[7]) if fields[7] else "")
    if owner is not None:
        system.windows.enable(owner, False)
    system.windows.show(dialog, True)
    give_focus(dialog, find_item(dialog, NAME_ID if saving else LIST_ID))
    if run_modal(system, dialog) != 1:
        return False
    return answer(memory, record, fields, dialog.chosen)


def answer(memory, record, fields, path):
    """The path, its title, and where name and extension begin."""
    if len(path) >= fields[8]:
        return False
    name = path.rsplit("\\", 1)[-1]
    memory.put_text(fields[7], path, fields[8])
    if fields[9]:
        memory.put_text(fields[9], name, fields[10])
    dot = path.rfind(".")
    memory.put(record + 56, "<HH", len(path) - len(name), dot + 1 if dot > 0 else 0)
    return True


def filter_of(memory, address, index):
    """The patterns of the filter in force: pairs of texts, ended by an empty one."""
    patterns = []
    while address and memory.text(address):
        address += 2 * len(memory.text(address)) + 2
        patterns.append(memory.text(address))
        address += 2 * len(patterns[-1]) + 2
    if not patterns:
        return ["*"]
    found = patterns[min(max(index, 1), len(patterns)) - 1]
    return ["*" if part == "*.*" else part for part in found.lower().split(";")]


def make(system, owner, fields, saving):
    """The dialog on the whole screen, with its controls."""
    left, top, right, bottom = system.screen.visible_area
    title = system.memory.text(fields[12]) if fields[12] else "Save As" if saving else "Open"
    windows, width, height = system.windows, right - left, bottom - top
    dialog = windows.create("FileDialog", title, WS_POPUP | WS_CAPTION, 0, left, top, width, height,
                            owner)
    dialog.saving, dialog.flags, dialog.has_done_button = saving, fields[13], True
    child = WS_CHILD | WS_VISIBLE
    windows.create("STATIC", "Name:", child, 0, MARGIN, MARGIN + 3, 38, 16, dialog, LABEL_ID)
    windows.create("EDIT", "", child | WS_BORDER | WS_TABSTOP | 0x80, 0, MARGIN + 42, MARGIN,
                   width - 48 - MARGIN, FIELD_HEIGHT, dialog, NAME_ID)
    top = 2 * MARGIN + FIELD_HEIGHT
    windows.create("LISTBOX", "", child | WS_BORDER | WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY, 0,
                   MARGIN, top, width - 2 * MARGIN, height - top - 32, dialog, LIST_ID)
    return dialog


def fill(system, dialog, patterns, path):
    found = find_item(dialog, LIST_ID)
    for name in system.files.listed():
        if any(fnmatch.fnmatchcase(name.lower(), pattern) for pattern in patterns):
            found.items.add(name)
    found.update_bar()
    if dialog.saving and path:
        dialog.show_name(path.rsplit("\\", 1)[-1])


@export("COREDLL", "GetOpenFileNameW", "record")
def get_open_file_name(system, record):
    return ask(system, record, False)


@export("COREDLL", "GetSaveFileNameW", "record")
def get_save_file_name(system, record):
    return ask(system, record, True)
