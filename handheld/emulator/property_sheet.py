"""Property sheets: dialogs as pages behind tabs, on the whole screen.

As on the device there are no buttons: OK is the one in the bar along the top, Cancel is Escape. A
page is made when it is first shown. It is asked (PSN_KILLACTIVE) before another is shown or OK
closes the sheet, and told to bring its entries into force (PSN_APPLY), or that they are dropped
(PSN_RESET). Not modelled: wizards, Apply, help.
"""

from handheld.emulator import dialog_making, dialogs
from handheld.emulator.calls import export
from handheld.emulator.constants import (
    WM_COMMAND, WM_DESTROY, WM_NOTIFY, WM_SETFONT, WM_SIZE, WS_BORDER, WS_CAPTION, WS_CHILD,
    WS_DISABLED, WS_POPUP, WS_TABSTOP, WS_VISIBLE)
from handheld.emulator.controls import tabs
from handheld.emulator.controls.look import NMHDR, NMHDR_SIZE, size_of
from handheld.emulator.dialogs import IDCANCEL, IDOK, Dialog
from handheld.emulator.fonts import make_font
from handheld.emulator.templates import Template
from handheld.emulator.windows import window_class

RT_DIALOG = 5
PAGE_SIZE = 40
PSP_USETITLE, PSH_USECALLBACK = 8, 0x100
PSCB_INITIALIZED = 1
PSN_SETACTIVE, PSN_KILLACTIVE, PSN_APPLY, PSN_RESET, PSN_QUERYCANCEL = -200, -201, -202, -203, -209
TABS_ID = 0x3020


class Page:
    """A page before and after its dialog is made; `record` is the program's PROPSHEETPAGE."""

    def __init__(self, system, record):
        self.record, self.window = record, None
        (_, flags, self.instance, name, _, title, self.procedure, _, _,
         _) = system.memory.struct(record, "<10I")
        key = name if name < 0x10000 else system.memory.text(name)
        self.template = system.modules.resource(self.instance, RT_DIALOG, key)[0]
        self.title = system.memory.text(title) if flags & PSP_USETITLE \
            else Template(system.memory, self.template).title


@window_class("PropertySheet")
class PropertySheet(Dialog):
    """The sheet."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.pages, self.shown, self.tabs = [], None, None

    def ask_procedure(self, message, wparam, lparam):
        if message == WM_COMMAND and self.answer is None:
            if wparam & 0xFFFF == IDOK:
                self.accept()
            elif wparam & 0xFFFF == IDCANCEL:
                self.cancel()
            return 1
        if message == WM_NOTIFY:
            return self.heard(lparam)
        if message == WM_SIZE:
            self.lay_out()
        if message == WM_DESTROY:
            for page in self.pages:
                self.system.memory.free(page.record)
        return 0

    def heard(self, record):
        """The tabs: may the page be left, and which is shown then?"""
        sender, _, code = self.system.memory.struct(record, NMHDR)
        if self.tabs is None or sender != self.tabs.handle:
            return 0
        if code == tabs.TCN_SELCHANGING:
            refused = self.tell(self.shown, PSN_KILLACTIVE) != 0
            self.extra[0:4] = int(refused).to_bytes(4, "little")
        elif code == tabs.TCN_SELCHANGE:
            self.show_page(self.pages[self.tabs.selected])
        return 1

    # ---- Pages ----

    def tell(self, page, code):
        """A page's answer to one of the sheet's notifications."""
        with self.system.memory.scratch(NMHDR_SIZE + 4) as record:
            self.system.memory.put(record, NMHDR, self.handle, 0, code)
            return self.system.windows.send(page.window, WM_NOTIFY, 0, record)

    def show_page(self, page):
        before, self.shown = self.shown, page
        if page.window is None:
            page.window = self.make_page(page)
        self.lay_out()
        self.tell(page, PSN_SETACTIVE)
        self.system.windows.show(page.window, True)
        if before is not None and before is not page:
            self.system.windows.show(before.window, False)
        first = dialogs.first_stop(page.window)
        if before is None and first is not None:
            dialogs.give_focus(page.window, first)

    def make_page(self, page):
        """The page's dialog, a child of the sheet whatever its style says."""
        template = Template(self.system.memory, page.template)
        template.style &= ~(WS_POPUP | WS_CAPTION | WS_BORDER | WS_DISABLED | WS_VISIBLE)
        template.style |= WS_CHILD
        return dialog_making.create_from(self.system, page.instance, template, self,
                                         page.procedure, page.record, visible=False)

    def lay_out(self):
        """The tabs have the whole sheet, the page what they leave."""
        if self.tabs is None:
            return
        width, height = size_of(self)
        self.system.windows.move(self.tabs, 0, 0, width, height)
        if self.shown is not None and self.shown.window is not None:
            top = self.tabs.row_height() + 1
            self.system.windows.raise_window(self.shown.window)
            self.system.windows.move(self.shown.window, 0, top, width, height - top)

    # ---- The end ----

    def made_pages(self):
        return [page for page in self.pages if page.window is not None]

    def accept(self):
        if self.tell(self.shown, PSN_KILLACTIVE):
            return
        for page in self.made_pages():
            if self.tell(page, PSN_APPLY):
                return
        self.end(1)

    def cancel(self):
        if self.tell(self.shown, PSN_QUERYCANCEL):
            return
        for page in self.made_pages():
            self.tell(page, PSN_RESET)
        self.end(0)


@export("COMMCTRL", "CreatePropertySheetPageW", "page")
def create_page(system, page):
    """A copy of the record, whose address is the page's handle."""
    size = min(system.memory.u32(page), PAGE_SIZE)
    copy = system.memory.alloc(PAGE_SIZE)
    system.memory.put_bytes(copy, system.memory.bytes(page, size))
    return copy


@export("COMMCTRL", "PropertySheetW", "header")
def property_sheet(system, header):
    (_, flags, parent, instance, _, caption, count, start, pages,
     callback) = system.memory.struct(header, "<10I")
    owner = system.windows.find(parent)
    title = system.memory.text(caption) if caption else ""
    area = system.screen.visible_area
    sheet = system.windows.create("PropertySheet", title, WS_POPUP | WS_CAPTION, 0, area[0],
                                  area[1], area[2] - area[0], area[3] - area[1], owner, 0, instance)
    sheet.has_done_button = True
    handles = system.memory.struct(pages, f"<{count}I")
    sheet.pages = [Page(system, record) for record in handles]
    add_tabs(system, sheet)
    if owner is not None:
        system.windows.enable(owner, False)
    if flags & PSH_USECALLBACK:
        system.machine.call(callback, sheet.handle, PSCB_INITIALIZED, 0)
    system.windows.show(sheet, True)
    sheet.tabs.select(start)
    sheet.show_page(sheet.pages[start])
    return dialog_making.run_modal(system, sheet)


def add_tabs(system, sheet):
    width, height = size_of(sheet)
    sheet.tabs = system.windows.create(
        tabs.CLASS_NAME, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, width, height, sheet,
        TABS_ID)
    sheet.set_control_font(make_font())
    system.windows.send(sheet.tabs, WM_SETFONT, sheet.control_font, 0)
    sheet.tabs.labels = [page.title for page in sheet.pages]
    sheet.tabs.selected, sheet.tabs.padding = 0, 3
