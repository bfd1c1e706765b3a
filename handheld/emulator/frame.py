"""What surrounds a window's client area: borders, the scroll bars of a window, and the caption of a
dialog that does not fill the screen.

The system draws these itself and sends no messages about them. Windows that fill the screen have
their title in the bar along its top (screen.py) and no border: whether a main window keeps that of
its WS_BORDER on a device is not known. A dialog that the shell sizes by its content has a border,
and its title in the bar.
"""

from handheld.emulator.controls import scroll_bar
from handheld.emulator.gdi_objects import (
    COLOR_ACTIVECAPTION, COLOR_BTNFACE, COLOR_CAPTIONTEXT, system_colour)
from handheld.emulator.fonts import make_font

WS_CHILD, WS_POPUP, WS_BORDER, WS_DLGFRAME = 0x40000000, 0x80000000, 0x800000, 0x400000
WS_CAPTION = WS_BORDER | WS_DLGFRAME
WS_VSCROLL, WS_HSCROLL = 0x200000, 0x100000
WS_EX_CLIENTEDGE = 0x200
CAPTION_HEIGHT = 20
SCROLL_BAR_WIDTH = 13
BLACK = (0, 0, 0)


def fills_screen(window):
    """A top-level window that the shell of the device shows without a frame."""
    if window.style & WS_CHILD:
        return False
    width = window.system.screen.WIDTH
    return not window.style & WS_POPUP or window.right - window.left >= width


def has_caption(window):
    return window.style & WS_CAPTION == WS_CAPTION and not window.style & WS_CHILD \
        and not window.sized_by_shell and not fills_screen(window)


def border_width(window):
    if fills_screen(window):
        return 0
    if has_caption(window) or window.ex_style & WS_EX_CLIENTEDGE or window.style & WS_BORDER \
            and window.style & WS_CAPTION != WS_CAPTION:
        return 1
    return 1 if window.style & WS_POPUP and window.style & WS_DLGFRAME else 0


def insets(window):
    """How much of each side (left, top, right, bottom) is not client area."""
    border = border_width(window)
    top = border + (CAPTION_HEIGHT if has_caption(window) else 0)
    right = border + (SCROLL_BAR_WIDTH if shows_bar(window, scroll_bar.SB_VERT) else 0)
    bottom = border + (SCROLL_BAR_WIDTH if shows_bar(window, scroll_bar.SB_HORZ) else 0)
    return (border, top, right, bottom)


def shows_bar(window, which):
    """A window has the bars of its style as long as there is something to scroll."""
    style = WS_VSCROLL if which == scroll_bar.SB_VERT else WS_HSCROLL
    return bool(window.style & style) and scroll_bar.state(window, which).shown


def bar_rect(window, which):
    """A scroll bar's place, counted from the window's own corner."""
    left, top, right, bottom = insets(window)
    width, height = window.right - window.left, window.bottom - window.top
    if which == scroll_bar.SB_VERT:
        return (width - right, top, width - right + SCROLL_BAR_WIDTH, height - bottom)
    return (left, height - bottom, width - right, height - bottom + SCROLL_BAR_WIDTH)


def draw(system, window):
    """Draws all of it; the client area stays."""
    left, top, right, bottom = insets(window)
    if not any((left, top, right, bottom)):
        return
    dc = system.gdi.window_dc(window, client=False)
    whole = (0, 0, window.right - window.left, window.bottom - window.top)
    if border_width(window):
        dc.frame(whole, BLACK)
    if has_caption(window):
        draw_caption(dc, window, whole)
    for which in (scroll_bar.SB_VERT, scroll_bar.SB_HORZ):
        if shows_bar(window, which):
            scroll_bar.draw(dc, bar_rect(window, which), scroll_bar.state(window, which), which)
    if shows_bar(window, scroll_bar.SB_VERT) and shows_bar(window, scroll_bar.SB_HORZ):
        dc.fill((whole[2] - right, whole[3] - bottom, whole[2] - 1, whole[3] - 1),
                system_colour(COLOR_BTNFACE))
    system.gdi.release(dc)


def draw_caption(dc, window, whole):
    bar = (1, 1, whole[2] - 1, 1 + CAPTION_HEIGHT)
    dc.fill(bar, system_colour(COLOR_ACTIVECAPTION))
    label = (bar[0] + 4, bar[1], bar[2] - 2, bar[3])
    dc.label(label, window.text, make_font(bold=True), system_colour(COLOR_CAPTIONTEXT))


def press(system, window, x, y):
    """The pen on the frame, in screen coordinates: only scroll bars do anything."""
    for which in (scroll_bar.SB_VERT, scroll_bar.SB_HORZ):
        if shows_bar(window, which):
            rect = bar_rect(window, which)
            at = (x - window.left, y - window.top)
            if rect[0] <= at[0] < rect[2] and rect[1] <= at[1] < rect[3]:
                scroll_bar.Tracker(system, window, which, rect).begin(*at)
                return
