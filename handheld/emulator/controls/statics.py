"""STATIC: texts, icons, frames. They take no input.

Modelled: texts to the left, in the middle, to the right, broken or not, and icons of the program's
resources. Not modelled: bitmaps, texts that tell of taps (SS_NOTIFY).
"""

from handheld.emulator.bitmaps import load_icon
from handheld.emulator.constants import (
    WM_CTLCOLORSTATIC, WM_ENABLE, WM_ERASEBKGND, WM_GETDLGCODE, WM_SETTEXT)
from handheld.emulator.controls.look import BLACK, background, font_of, ink, size_of
from handheld.emulator.dialogs import DLGC_STATIC
from handheld.emulator.text_out import (
    DT_CENTER, DT_EXPANDTABS, DT_RIGHT, DT_SINGLELINE, DT_WORDBREAK, draw_lines, text_lines)
from handheld.emulator.windows import Window, window_class

SS_LEFT, SS_CENTER, SS_RIGHT, SS_ICON = 0, 1, 2, 3
SS_SIMPLE, SS_LEFTNOWORDWRAP, SS_KINDS = 0xB, 0xC, 0x1F
SS_BLACKFRAME, SS_ETCHEDFRAME = 7, 0x12
FLAGS = {SS_LEFT: DT_WORDBREAK, SS_CENTER: DT_WORDBREAK | DT_CENTER,
         SS_RIGHT: DT_WORDBREAK | DT_RIGHT, SS_SIMPLE: DT_SINGLELINE, SS_LEFTNOWORDWRAP: 0}


@window_class("STATIC")
class Static(Window):
    """One of them; `picture` is an icon's (picture, mask)."""

    picture = None

    def set_picture(self, name):
        """A static with an icon is as large as the icon."""
        if self.style & SS_KINDS != SS_ICON or not name:
            return
        self.picture = load_icon(self.system, self.instance, name)
        if self.picture is not None:
            left, top = self.parent.client_rect()[:2]
            self.system.windows.move(self, self.left - left, self.top - top,
                                     *self.picture[0].size)

    def message(self, message, wparam, lparam):
        if message == WM_GETDLGCODE:
            return DLGC_STATIC
        if message == WM_ERASEBKGND:
            return 1  # paint fills all of it
        result = Window.message(self, message, wparam, lparam)
        if message in (WM_ENABLE, WM_SETTEXT):
            self.invalidate()
        return result

    def paint(self, dc):
        width, height = size_of(self)
        kind = self.style & SS_KINDS
        if kind in (SS_BLACKFRAME, SS_ETCHEDFRAME):
            dc.frame((0, 0, width, height), BLACK)
            return
        dc.fill((0, 0, width, height), background(self, dc, WM_CTLCOLORSTATIC))
        if kind == SS_ICON:
            if self.picture is not None:
                dc.image(0, 0, *self.picture)
            return
        flags = FLAGS.get(kind, DT_WORDBREAK) | DT_EXPANDTABS
        lines = text_lines(self.text, font_of(self), width, flags)
        draw_lines(dc, lines, (0, 0, width, height), flags, ink(self, dc), font_of(self))
