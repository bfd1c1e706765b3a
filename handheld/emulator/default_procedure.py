"""What DefWindowProcW does with the messages that a window procedure leaves to it, and what every
window of the system's own classes does with those that its class says nothing about.
"""

from handheld.emulator import constants as c
from handheld.emulator.gdi_objects import system_colour

CONTROL_COLOURS = {c.WM_CTLCOLOREDIT: 5, c.WM_CTLCOLORLISTBOX: 5, c.WM_CTLCOLORBTN: 15,
                   c.WM_CTLCOLORDLG: 15, c.WM_CTLCOLORSTATIC: 15, c.WM_CTLCOLORSCROLLBAR: 0,
                   c.WM_CTLCOLORMSGBOX: 15}  # system colours


def run(window, message, wparam, lparam):
    """The result of the message's row, or 0."""
    handler = HANDLERS.get(message)
    return handler(window, wparam, lparam) if handler is not None else 0


def set_text(window, _wparam, text):
    window.text = window.system.memory.text(text) if text else ""
    window.system.painting.text_changed(window)
    return 1


def get_text(window, count, buffer):
    return window.system.memory.put_text(buffer, window.text, count)


def get_text_length(window, _wparam, _lparam):
    return len(window.text.encode("utf-16-le", "surrogatepass")) // 2


def close(window, _wparam, _lparam):
    window.system.windows.destroy(window)
    return 0


def paint(window, _wparam, _lparam):
    painting = window.system.painting
    dc = painting.begin(window)
    window.paint(dc)
    painting.end(window, dc)
    return 0


def erase_background(window, dc, _lparam):
    """Fills what the context lets through with the class's brush."""
    system = window.system
    if not window.class_brush:
        return 0
    context = system.gdi.dc(dc)
    left, top, right, bottom = window.client_rect()
    colour = system.gdi.brush_colour(window.class_brush)
    context.fill((0, 0, right - left, bottom - top), colour)
    return 1


def activate(window, wparam, _lparam):
    if wparam & 0xFFFF:
        focus = window.system.focus
        if focus.focus is None or not focus.focus.is_within(window):
            focus.set_focus(window)
    return 0


def set_font(window, font, redraw):
    window.font = font
    if redraw:
        window.invalidate()
    return 0


def get_font(window, _wparam, _lparam):
    return window.font


def window_pos_changed(window, _wparam, _lparam):
    """Tells the window its new place and size in the older way."""
    left, top, right, bottom = window.client_rect()
    origin = (0, 0) if window.parent is None else window.parent.client_rect()[:2]
    send = window.system.windows.send
    send(window, c.WM_MOVE, 0, pair(left - origin[0], top - origin[1]))
    send(window, c.WM_SIZE, 0, pair(right - left, bottom - top))
    return 0


def control_colour(message):
    """A control's background: the class's brush of the parent says nothing about it."""
    def handler(window, dc, _lparam):
        system = window.system
        context = system.gdi.dc(dc)
        number = CONTROL_COLOURS[message]
        context.back_colour = system_colour(number)
        return system.gdi.table.stock[("colour", number)]
    return handler


def pair(low, high):
    """Two signed halves as a message parameter."""
    return (high & 0xFFFF) << 16 | low & 0xFFFF


HANDLERS = {
    c.WM_NCCREATE: lambda window, wparam, lparam: 1,
    c.WM_SETTEXT: set_text,
    c.WM_GETTEXT: get_text,
    c.WM_GETTEXTLENGTH: get_text_length,
    c.WM_CLOSE: close,
    c.WM_PAINT: paint,
    c.WM_ERASEBKGND: erase_background,
    c.WM_ACTIVATE: activate,
    c.WM_SETFONT: set_font,
    c.WM_GETFONT: get_font,
    c.WM_WINDOWPOSCHANGED: window_pos_changed,
    **{message: control_colour(message) for message in CONTROL_COLOURS},
}
