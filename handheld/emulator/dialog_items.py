"""A dialog's controls by their numbers, as the program calls them."""

from handheld.emulator.calls import export
from handheld.emulator.constants import WM_GETTEXT, WM_SETTEXT
from handheld.emulator.dialogs import find_item, is_dialog_message, next_stop
from handheld.emulator.messages import from_memory


def send_item(system, dialog, number, message, wparam, lparam):
    item = find_item(dialog, number) if dialog is not None else None
    return system.windows.send(item, message, wparam, lparam) if item is not None else 0


@export("COREDLL", "GetDlgItem", "window number")
def get_dialog_item(_system, dialog, number):
    return find_item(dialog, number) if dialog is not None else 0


@export("COREDLL", "GetDlgCtrlID", "window")
def get_control_id(_system, window):
    return window.id if window is not None else 0


@export("COREDLL", "SendDlgItemMessageW", "window number message wparam lparam")
def send_dialog_item_message(system, dialog, number, message, wparam, lparam):
    return send_item(system, dialog, number, message, wparam, lparam)


@export("COREDLL", "SetDlgItemTextW", "window number string")
def set_dialog_item_text(system, dialog, number, string):
    return send_item(system, dialog, number, WM_SETTEXT, 0, string)


@export("COREDLL", "GetDlgItemTextW", "window number buffer size")
def get_dialog_item_text(system, dialog, number, buffer, size):
    return send_item(system, dialog, number, WM_GETTEXT, size, buffer)


@export("COREDLL", "GetNextDlgTabItem", "window window backwards")
def get_next_tab_item(_system, dialog, control, backwards):
    return next_stop(dialog, control, bool(backwards))


@export("COREDLL", "IsDialogMessageW", "window message")
def is_dialog_message_call(system, dialog, message):
    if dialog is None:
        return False
    return is_dialog_message(system, dialog, from_memory(system, message))
