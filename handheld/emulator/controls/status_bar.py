"""msctls_statusbar32: the status bar, one text in one part.

Modelled: the text (WM_SETTEXT, SB_SETTEXTW of the first part). Not modelled: parts, the grip.

Nor is InitCommonControlsEx: this module's controls and the tree, the tabs and the tool bar exist
from the start, so that nobody notices here when one is made before its class is asked for.
"""

from handheld.emulator.calls import export
from handheld.emulator.constants import WM_ERASEBKGND, WM_SETTEXT
from handheld.emulator.controls.look import font_of, size_of
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_BTNTEXT, system_colour)
from handheld.emulator.windows import Window, window_class

CLASS_NAME = "msctls_statusbar32"
SB_SETTEXTW = 0x40B


@window_class(CLASS_NAME)
class StatusBar(Window):
    """The bar."""

    def message(self, message, wparam, lparam):
        if message == WM_ERASEBKGND:
            return 1  # paint fills all of it
        if message == SB_SETTEXTW:
            message, wparam = WM_SETTEXT, 0
        return Window.message(self, message, wparam, lparam)

    def paint(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), system_colour(COLOR_BTNFACE))
        dc.edge((0, 0, width, 1), system_colour(COLOR_BTNSHADOW))
        dc.label((4, 1, width - 2, height), self.text.replace("&", "&&"), font_of(self),
                 system_colour(COLOR_BTNTEXT))


@export("COMMCTRL", "CreateStatusWindowW", "style text window number")
def create_status_window(system, style, text, parent, number):
    return system.windows.create(CLASS_NAME, text or "", style, 0, 0, 0, 0, 0, parent, number)


@export("COMMCTRL", "InitCommonControlsEx", "classes")
def init_common_controls(_system, _classes):
    return True
