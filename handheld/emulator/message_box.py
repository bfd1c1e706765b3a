"""Message boxes: a text, perhaps a sign, and buttons, over the middle of the screen."""

from handheld.emulator import frame
from handheld.emulator.calls import export
from handheld.emulator.constants import (
    WM_COMMAND, WS_CAPTION, WS_CHILD, WS_POPUP, WS_TABSTOP, WS_VISIBLE)
from handheld.emulator.dialog_making import run_modal
from handheld.emulator.dialogs import IDCANCEL, IDOK, Dialog, find_item
from handheld.emulator.fonts import make_font, wrap
from handheld.emulator.windows import window_class

IDABORT, IDRETRY, IDIGNORE, IDYES, IDNO = 3, 4, 5, 6, 7
BUTTONS = {  # by the kind of box: number and label
    0: [(IDOK, "OK")],
    1: [(IDOK, "OK"), (IDCANCEL, "Cancel")],
    2: [(IDABORT, "Abort"), (IDRETRY, "Retry"), (IDIGNORE, "Ignore")],
    3: [(IDYES, "&Yes"), (IDNO, "&No"), (IDCANCEL, "Cancel")],
    4: [(IDYES, "&Yes"), (IDNO, "&No")],
    5: [(IDRETRY, "Retry"), (IDCANCEL, "Cancel")],
}
SIGNS = {0x10: ("X", (190, 30, 30)), 0x20: ("?", (30, 70, 160)), 0x30: ("!", (200, 140, 0)),
         0x40: ("i", (30, 70, 160))}
MARGIN, WIDTH, SIGN, BUTTON_WIDTH, BUTTON_HEIGHT, GAP = 8, 222, 28, 58, 21, 6


@window_class("MessageBox")
class MessageBox(Dialog):
    """The box. Its lines and sign are painted, its buttons are controls."""

    lines, sign, closes_with = (), None, IDCANCEL

    def ask_procedure(self, message, wparam, _lparam):
        if message == WM_COMMAND and self.answer is None:
            number = wparam & 0xFFFF
            if find_item(self, number) is not None:
                self.end(number)
            elif number == IDCANCEL and self.closes_with:
                self.end(self.closes_with)
            return 1
        return 0

    def paint(self, dc):
        x, y = MARGIN, MARGIN
        if self.sign is not None:
            draw_sign(dc, x, y, *self.sign)
            x += SIGN + MARGIN
        for line in self.lines:
            dc.text(x, y, line)
            y += make_font().height


def draw_sign(dc, x, y, letter, colour):
    """A round sign with a letter in it."""
    radius = SIGN // 2
    for row in range(SIGN):
        half = int((radius ** 2 - (row - radius + 0.5) ** 2) ** 0.5)
        dc.edge((x + radius - half, y + row, x + radius + half, y + row + 1), colour)
    font = make_font(height=-20, bold=True)
    left = x + radius - font.width(letter) // 2
    dc.text(left, y + radius - font.height // 2, letter, font, (255, 255, 255))


def show(system, owner, text, caption, flags):
    """Asks, and waits; the number of the button."""
    kind = BUTTONS[flags & 0xF]
    box = make(system, owner, caption, flags)
    sign_room = SIGN + MARGIN if box.sign else 0
    box.lines = wrap(text, make_font(), WIDTH - 2 * MARGIN - sign_room - 2)
    height = place(system, box)
    chosen = add_buttons(system, box, kind, height, flags >> 8 & 0xF)
    if owner is not None:
        system.windows.enable(owner, False)
    system.windows.show(box, True)
    system.windows.set_focus(chosen)
    return run_modal(system, box)


def make(system, owner, caption, flags):
    box = system.windows.create("MessageBox", caption, WS_POPUP | WS_CAPTION, 0, 0, 0, WIDTH, 40,
                                owner)
    box.sign = SIGNS.get(flags & 0xF0)
    numbers = [number for number, _ in BUTTONS[flags & 0xF]]
    box.closes_with = IDCANCEL if IDCANCEL in numbers else IDOK if numbers == [IDOK] else 0
    return box


def place(system, box):
    """Over the middle of what the bars and the panel leave; the height for text and sign."""
    height = max(len(box.lines) * make_font().height, SIGN if box.sign else 0) + 2 * MARGIN
    left, top, right, bottom = frame.insets(box)
    whole = height + BUTTON_HEIGHT + MARGIN + top + bottom
    area = system.screen.visible_area
    system.windows.move(box, (area[0] + area[2] - WIDTH) // 2,
                        max(area[1], (area[1] + area[3] - whole) // 2), WIDTH, whole)
    return height


def add_buttons(system, box, kind, y, default):
    """The buttons in a row; the one that has the focus."""
    room = len(kind) * BUTTON_WIDTH + (len(kind) - 1) * GAP
    x = (WIDTH - room) // 2
    made = []
    for index, (number, label) in enumerate(kind):
        is_default = index == min(default, len(kind) - 1)
        made.append(system.windows.create(
            "BUTTON", label, WS_CHILD | WS_VISIBLE | WS_TABSTOP | int(is_default), 0, x, y,
            BUTTON_WIDTH, BUTTON_HEIGHT, box, number))
        if is_default:
            box.default_id = number
        x += BUTTON_WIDTH + GAP
    return find_item(box, box.default_id)


@export("COREDLL", "MessageBoxW", "window text text flags")
def message_box(system, owner, text, caption, flags):
    return show(system, owner, text or "", caption or "Error", flags)


