"""Everything of the system that is seen: importing this makes it known."""

from handheld.emulator import (
    bitmaps, clipboard, common_dialogs, dialog_items, dialog_making, dialogs, gdi, gdi_objects,
    input_methods, menus, message_box, property_sheet, rectangles, screen, scrolling, shell,
    templates, text_out)
from handheld.emulator.controls import (
    buttons, combo_box, edit, list_box, scroll_bar, statics, status_bar, tabs, tool_bar, tree_view)

MODULES = (bitmaps, clipboard, common_dialogs, dialog_items, dialog_making, dialogs, gdi,
           gdi_objects, input_methods, menus, message_box, property_sheet, rectangles, screen,
           scrolling, shell, templates, text_out, buttons, combo_box, edit, list_box, scroll_bar, statics, status_bar,
           tabs, tool_bar, tree_view)
