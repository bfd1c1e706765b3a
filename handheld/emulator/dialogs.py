"""Dialogs, and the keys that move in them. Making them is in dialog_making.py.

A dialog's own procedure sees each message first; what it leaves goes to what every dialog does:
background, focus, the default button, closing by Escape.
"""

from handheld.emulator.constants import (
    VK_DOWN, VK_ESCAPE, VK_LEFT, VK_RETURN, VK_RIGHT, VK_SHIFT, VK_TAB, VK_UP, WM_ACTIVATE, WM_CHAR,
    WM_CLOSE, WM_COMMAND, WM_CTLCOLORDLG, WM_CTLCOLORMSGBOX, WM_CTLCOLORSTATIC, WM_ERASEBKGND,
    WM_GETDLGCODE, WM_INITDIALOG, WM_KEYDOWN, WM_NCDESTROY, WM_NEXTDLGCTL, WM_SETFOCUS, WM_SYSCHAR,
    WM_USER, WS_DISABLED, WS_GROUP, WS_TABSTOP)
from handheld.emulator.fonts import make_font
from handheld.emulator.gdi_objects import COLOR_BTNFACE, FontObject, system_colour
from handheld.emulator.windows import Window, window_class

IDOK, IDCANCEL = 1, 2
DM_GETDEFID, DM_SETDEFID, DC_HASDEFID = WM_USER, WM_USER + 1, 0x534B
DLGC_WANTARROWS, DLGC_WANTTAB, DLGC_WANTALLKEYS, DLGC_HASSETSEL = 1, 2, 4, 8
DLGC_DEFPUSHBUTTON, DLGC_UNDEFPUSHBUTTON, DLGC_RADIOBUTTON = 0x10, 0x20, 0x40
DLGC_WANTCHARS, DLGC_STATIC, DLGC_BUTTON = 0x80, 0x100, 0x2000
BM_SETSTYLE, BM_CLICK, EM_SETSEL = 0xF4, 0xF5, 0xB1
BS_PUSHBUTTON, BS_DEFPUSHBUTTON = 0, 1
ANSWERED_BY_RESULT = {WM_INITDIALOG, *range(WM_CTLCOLORMSGBOX, WM_CTLCOLORSTATIC + 1)}
EXTRA_BYTES = 12  # the answer to a message, the dialog procedure, the program's own word


@window_class("Dialog")
class Dialog(Window):
    """A dialog. Its `answer` is what EndDialog gave, None until then."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.extra = bytearray(EXTRA_BYTES)
        self.dialog_font, self.control_font = make_font(), 0
        self.answer, self.default_id, self.last_focus = None, 0, None
        self.has_done_button = False

    @property
    def dialog_procedure(self):
        return int.from_bytes(self.extra[4:8], "little")

    @dialog_procedure.setter
    def dialog_procedure(self, address):
        self.extra[4:8] = address.to_bytes(4, "little")

    def message(self, message, wparam, lparam):
        result = self.ask_procedure(message, wparam, lparam)
        if result:
            if message in ANSWERED_BY_RESULT:
                return result
            return int.from_bytes(self.extra[0:4], "little")
        if self.destroyed:
            return 0
        return self.default_message(message, wparam, lparam)

    def ask_procedure(self, message, wparam, lparam):
        """The dialog procedure's result: 0 leaves the message to the dialog. Dialogs of the system
        have their own here."""
        if not self.dialog_procedure:
            return 0
        self.extra[0:4] = bytes(4)
        return self.system.machine.call(self.dialog_procedure, self.handle, message, wparam, lparam)

    def default_message(self, message, wparam, lparam):
        if message == WM_ERASEBKGND:
            return self.erase(wparam)
        if message == WM_ACTIVATE:
            return self.activated(bool(wparam & 0xFFFF))
        if message == WM_SETFOCUS:
            self.focus_again()
            return 0
        if message == WM_NEXTDLGCTL:
            return self.go_to_control(wparam, lparam)
        if message == WM_NCDESTROY:
            self.system.gdi.table.remove(self.control_font)
            return 0
        if message == WM_CLOSE:
            self.system.windows.post(self, WM_COMMAND, IDCANCEL, 0)
            return 0
        if message == DM_GETDEFID:
            return DC_HASDEFID << 16 | self.default_id if self.default_id else 0
        if message == DM_SETDEFID:
            self.set_default(wparam)
            return 1
        return Window.message(self, message, wparam, lparam)

    def set_control_font(self, font):
        """The font of its units and its controls, which goes with the dialog."""
        self.dialog_font = font
        self.control_font = self.system.gdi.table.add(FontObject(font))

    def erase(self, dc):
        brush = self.system.windows.send(self, WM_CTLCOLORDLG, dc, self.handle)
        colour = self.system.gdi.brush_colour(brush) if brush else system_colour(COLOR_BTNFACE)
        left, top, right, bottom = self.client_rect()
        self.system.gdi.dc(dc).fill((0, 0, right - left, bottom - top), colour)
        return 1

    def activated(self, active):
        """The focus stays where it was while another window is active."""
        held = self.system.windows.focus
        if active:
            self.focus_again()
        elif held is not None and held.is_within(self):
            self.last_focus = held
        return 0

    def focus_again(self):
        last = self.last_focus
        if last is None or last.destroyed or not last.is_visible() or not last.enabled:
            last = first_stop(self)
        if last is not None:
            self.system.windows.set_focus(last)

    def go_to_control(self, wparam, lparam):
        if lparam & 0xFFFF:
            target = self.system.windows.find(wparam)
        else:
            target = next_stop(self, self.system.windows.focus, backwards=bool(wparam))
        give_focus(self, target)
        return 0

    def set_default(self, number):
        """Another default button, with the thick edge."""
        for child in self.children:
            if child.id == self.default_id and is_push_button(child):
                self.system.windows.send(child, BM_SETSTYLE, BS_PUSHBUTTON, 1)
        self.default_id = number
        for child in self.children:
            if child.id == number and is_push_button(child):
                self.system.windows.send(child, BM_SETSTYLE, BS_DEFPUSHBUTTON, 1)

    def end(self, answer):
        """Closes a modal dialog; its loop then ends."""
        self.answer = answer
        if self.owner is not None:
            self.system.windows.enable(self.owner, True)
        self.system.windows.show(self, False)


def is_push_button(window):
    return dialog_code(window) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON) != 0


def dialog_code(window):
    return window.system.windows.send(window, WM_GETDLGCODE, 0, 0) if window is not None else 0


# ---- Moving with keys ----

def can_stop(window):
    return window.visible and not window.style & WS_DISABLED and window.style & WS_TABSTOP


def in_order(dialog):
    """The controls as the template has them: the last made is the one in front."""
    return sorted(dialog.children, key=lambda child: child.handle)


def first_stop(dialog):
    return next((child for child in in_order(dialog) if can_stop(child)), None)


def control_of(dialog, window):
    """The dialog's control that a window is or lies in."""
    while window is not None and window.parent is not dialog:
        window = window.parent
    return window


def next_stop(dialog, window, backwards=False):
    """The control that Tab goes to. Of a group of radio buttons it is the one that is checked."""
    controls = in_order(dialog)
    current = control_of(dialog, window)
    start = controls.index(current) if current in controls else -1
    for step in range(1, len(controls) + 1):
        found = controls[(start + (-step if backwards else step)) % len(controls)]
        if can_stop(found):
            return checked_of_group(dialog, found)
    return current


def group_of(dialog, window):
    """The controls from one with WS_GROUP to the next such one, around `window`."""
    controls = in_order(dialog)
    index = controls.index(window)
    start = index
    while start > 0 and not controls[start].style & WS_GROUP:
        start -= 1
    end = index + 1
    while end < len(controls) and not controls[end].style & WS_GROUP:
        end += 1
    return controls[start:end]


def checked_of_group(dialog, window):
    if not dialog_code(window) & DLGC_RADIOBUTTON:
        return window
    for other in group_of(dialog, window):
        if getattr(other, "checked", False) and dialog_code(other) & DLGC_RADIOBUTTON:
            return other
    return window


def next_in_group(dialog, window, backwards):
    group = [other for other in group_of(dialog, window)
             if other.visible and other.enabled and not dialog_code(other) & DLGC_STATIC]
    return group[(group.index(window) + (-1 if backwards else 1)) % len(group)]


def give_focus(dialog, window):
    """Focus by a key: a field's text is selected, and a push button becomes the default one."""
    if window is None:
        return
    dialog.system.windows.set_focus(window)
    if dialog_code(window) & DLGC_HASSETSEL:
        dialog.system.windows.send(window, EM_SETSEL, 0, -1)


class Dialogs:
    """What the message loop asks of dialogs."""

    def __init__(self, system):
        self.system = system

    def is_dialog_message(self, dialog, message):
        return is_dialog_message(self.system, dialog, message)


def is_dialog_message(system, dialog, message):
    """Handles a message for a dialog or its controls, also by passing it on; False: it is for
    another window."""
    window = message.window
    if window is None or window.destroyed or not window.is_within(dialog):
        return False
    if message.message == WM_KEYDOWN and take_key(system, dialog, message):
        return True
    if message.message in (WM_CHAR, WM_SYSCHAR) and take_letter(system, dialog, message):
        return True
    system.messages.translate(message)
    system.messages.dispatch(message)
    return True


def innermost(dialog, window):
    """The dialog whose control a window is: a page of a sheet is a dialog within another."""
    while window is not dialog and not isinstance(window.parent, Dialog):
        window = window.parent
    return dialog if window is dialog else window.parent


def take_key(system, dialog, message):
    code, key = dialog_code(message.window), message.wparam
    home = innermost(dialog, message.window)
    control = control_of(home, message.window)
    if code & DLGC_WANTALLKEYS:
        return False
    if key == VK_TAB and not code & DLGC_WANTTAB:
        give_focus(home, next_stop(home, control, bool(system.windows.key_state(VK_SHIFT))))
    elif key in (VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN) and not code & DLGC_WANTARROWS and control:
        target = next_in_group(home, control, key in (VK_LEFT, VK_UP)) \
            if not code & DLGC_STATIC else control
        system.windows.set_focus(target)
        if dialog_code(target) & DLGC_RADIOBUTTON:
            system.windows.send(target, BM_CLICK, 0, 0)
    elif key == VK_ESCAPE:
        press_button(system, dialog, IDCANCEL)
    elif key == VK_RETURN:
        default = control.id if control and code & DLGC_DEFPUSHBUTTON else dialog.default_id
        press_button(system, dialog, default or IDOK)
    else:
        return False
    return True


def press_button(system, dialog, number):
    """What the button would say; one that is greyed says nothing."""
    button = find_item(dialog, number)
    if button is not None and not button.enabled:
        return
    handle = button.handle if button is not None else 0
    system.windows.send(dialog, WM_COMMAND, number, handle)


def take_letter(system, dialog, message):
    """A letter behind an '&' chooses its control. Tab, Enter and Escape were done by the key."""
    if dialog_code(message.window) & (DLGC_WANTCHARS | DLGC_WANTALLKEYS):
        return message.message == WM_CHAR and chr(message.wparam) in "\t\r\x1b" \
            and not dialog_code(message.window) & DLGC_WANTALLKEYS
    wanted = f"&{chr(message.wparam)}".lower()
    dialog = innermost(dialog, message.window)
    for control in in_order(dialog):
        if wanted in control.text.lower() and control.visible and control.enabled:
            give_focus(dialog, control)
            if dialog_code(control) & DLGC_BUTTON:
                system.windows.send(control, BM_CLICK, 0, 0)
            return True
    return chr(message.wparam) in "\t\r\x1b"


# ---- Controls by number ----

def find_item(dialog, number):
    for child in dialog.children:
        if child.id & 0xFFFF == number & 0xFFFF:
            return child
    return None
