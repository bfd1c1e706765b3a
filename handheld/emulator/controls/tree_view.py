"""SysTreeView32: a tree of texts.

Modelled: items below the root or each other, sorting, selection by pen, keys and program with its
notifications, opening and closing, scrolling. Not modelled: images, editing of labels, dragging,
lines between items.
"""

from handheld.emulator.constants import (
    VK_DOWN, VK_END, VK_HOME, VK_LEFT, VK_NEXT, VK_PRIOR, VK_RIGHT, VK_UP, WM_ERASEBKGND,
    WM_GETDLGCODE, WM_KEYDOWN, WM_KILLFOCUS, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN, WM_SETFOCUS,
    WM_SETFONT, WM_SETREDRAW, WM_SIZE, WM_VSCROLL, WS_VSCROLL)
from handheld.emulator.controls import scroll_bar
from handheld.emulator.controls.look import BLACK, WHITE, font_of, notify, point_of, size_of
from handheld.emulator.dialogs import DLGC_WANTARROWS, DLGC_WANTCHARS
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, system_colour)
from handheld.emulator.windows import Window, window_class

CLASS_NAME = "SysTreeView32"
TVS_SHOWSELALWAYS = 0x20
TVM_FIRST = 0x1100
TVM_DELETEITEM, TVM_EXPAND, TVM_GETCOUNT = (TVM_FIRST + n for n in (1, 2, 5))
TVM_GETNEXTITEM, TVM_SELECTITEM = TVM_FIRST + 10, TVM_FIRST + 11
TVM_SORTCHILDREN, TVM_ENSUREVISIBLE = TVM_FIRST + 19, TVM_FIRST + 20
TVM_INSERTITEMW, TVM_GETITEMW = TVM_FIRST + 50, TVM_FIRST + 62
TVI_ROOT, TVI_FIRST, TVI_SORT = 0xFFFF0000, 0xFFFF0001, 0xFFFF0003
TVIF_TEXT, TVIF_PARAM, TVIF_STATE = 1, 4, 8
TVIS_SELECTED = 2
TVGN_ROOT, TVGN_NEXT, TVGN_PARENT, TVGN_CHILD, TVGN_CARET = 0, 1, 3, 4, 9
TVE_EXPAND, TVE_TOGGLE = 2, 3
TVC_UNKNOWN, TVC_BYMOUSE, TVC_BYKEYBOARD = 0, 1, 2
TVN_SELCHANGINGW, TVN_SELCHANGEDW = -450, -451
TVITEM = "<IIIIIiiiii"  # mask, item, state, state mask, text, size, image, image, children, param
INDENT = 16
FIRST_ITEM = 0x2A000010


class Node:
    """An item. The root, which is not shown, is one too."""

    def __init__(self, handle, parent, text, parameter):
        self.handle, self.parent = handle, parent
        self.text, self.parameter = text, parameter
        self.children, self.open = [], False

    @property
    def level(self):
        """0 for what lies below the root."""
        return -1 if self.parent is None else self.parent.level + 1


@window_class(CLASS_NAME)
class TreeView(Window):
    """The tree; `first` is the first of the rows that is shown."""

    class_style = 8  # double clicks

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.root = Node(0, None, "", 0)
        self.root.open = True
        self.nodes, self.next = {}, FIRST_ITEM
        self.selected, self.first, self.redraw = None, 0, True
        self.kept_rows = None

    def message(self, message, wparam, lparam):
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, wparam, lparam)
        result = Window.message(self, message, wparam, lparam)
        if message in (WM_SIZE, WM_SETFONT):
            self.changed()
        return result

    def find(self, handle):
        return self.root if handle in (0, TVI_ROOT) else self.nodes.get(handle)

    def changed(self):
        """What is shown is to be worked out again."""
        self.kept_rows = None
        if self.redraw:
            self.update_bar()
            self.invalidate()

    # ---- Items ----

    def insert(self, _wparam, lparam):
        memory = self.system.memory
        parent, after = memory.struct(lparam, "<II")
        mask, _, _, _, text, _, _, _, _, parameter = memory.struct(lparam + 8, TVITEM)
        owner = self.find(parent)
        if owner is None:
            return 0
        node = Node(self.next, owner, memory.text(text) if mask & TVIF_TEXT else "",
                    parameter & 0xFFFFFFFF if mask & TVIF_PARAM else 0)
        self.next += 0x10
        self.nodes[node.handle] = node
        owner.children.insert(self.place_after(owner, after, node), node)
        self.changed()
        return node.handle

    def place_after(self, owner, after, node):
        if after == TVI_FIRST:
            return 0
        if after == TVI_SORT:
            return sum(1 for other in owner.children if sort_key(other) <= sort_key(node))
        before = self.nodes.get(after)
        return owner.children.index(before) + 1 if before in owner.children else len(owner.children)

    def delete(self, _wparam, lparam):
        """One item with what lies below it, or all. A selected one passes the selection on to the
        next, or the one before."""
        if lparam in (0, TVI_ROOT):
            self.nodes.clear()
            self.root.children, self.selected, self.first = [], None, 0
            self.changed()
            return 1
        node = self.nodes.get(lparam)
        if node is None:
            return 0
        heir = self.heir_of(node)
        self.forget(node)
        node.parent.children.remove(node)
        self.changed()
        if self.selected is not None and self.selected.handle not in self.nodes:
            self.selected = None
            self.select(heir, TVC_UNKNOWN)
        return 1

    @staticmethod
    def heir_of(node):
        siblings = node.parent.children
        index = siblings.index(node)
        if index + 1 < len(siblings):
            return siblings[index + 1]
        return siblings[index - 1] if index else node.parent if node.parent.parent else None

    def forget(self, node):
        for child in node.children:
            self.forget(child)
        self.nodes.pop(node.handle, None)

    def sort(self, _wparam, lparam):
        owner = self.find(lparam)
        if owner is not None:
            owner.children.sort(key=sort_key)
            self.changed()
        return 1

    def get_item(self, _wparam, lparam):
        memory = self.system.memory
        mask, handle, _, _, text, size, _, _, _, _ = memory.struct(lparam, TVITEM)
        node = self.nodes.get(handle)
        if node is None:
            return 0
        if mask & TVIF_TEXT:
            memory.put_text(text, node.text, size)
        if mask & TVIF_PARAM:
            memory.set_u32(lparam + 36, node.parameter)
        if mask & TVIF_STATE:
            memory.set_u32(lparam + 8, TVIS_SELECTED if node is self.selected else 0)
        return 1

    def next_item(self, wparam, lparam):
        node = self.find(lparam)
        if wparam == TVGN_CARET:
            return self.selected.handle if self.selected else 0
        if wparam in (TVGN_ROOT, TVGN_CHILD):
            owner = self.root if wparam == TVGN_ROOT else node
            return owner.children[0].handle if owner and owner.children else 0
        if node is None or node.parent is None:
            return 0
        if wparam == TVGN_PARENT:
            return node.parent.handle
        siblings = node.parent.children
        index = siblings.index(node) + (1 if wparam == TVGN_NEXT else -1)
        return siblings[index].handle if 0 <= index < len(siblings) else 0

    # ---- Selection ----

    def select(self, node, how):
        """Tells the parent before, which may refuse, and after."""
        if node is self.selected:
            return True
        if self.tell(TVN_SELCHANGINGW, node, how):
            return False
        before, self.selected = self.selected, node
        if node is not None:
            self.show_node(node)
        self.invalidate()
        self.tell(TVN_SELCHANGEDW, node, how, before)
        return True

    def tell(self, code, node, how, before=None):
        """NMTREEVIEW: how, the item before, the item now, and where the pen is."""
        extra = bytearray(how.to_bytes(4, "little"))
        for item in (before if code == TVN_SELCHANGEDW else self.selected, node):
            words = (0, item.handle if item else 0, 0, 0, 0, 0, 0, 0, 0,
                     item.parameter if item else 0)
            extra += b"".join(word.to_bytes(4, "little") for word in words)
        return notify(self, code, bytes(extra + bytes(8)))

    def select_item(self, wparam, lparam):
        if wparam == TVGN_CARET:
            self.select(self.nodes.get(lparam), TVC_UNKNOWN)
        return 1

    def key_down(self, wparam, _lparam):
        rows = self.rows()
        if not rows:
            return 0
        at = rows.index(self.selected) if self.selected in rows else -1
        steps = {VK_UP: -1, VK_DOWN: 1, VK_PRIOR: -self.shown(), VK_NEXT: self.shown()}
        if wparam in steps:
            target = min(max(at + steps[wparam], 0), len(rows) - 1)
            self.select(rows[target], TVC_BYKEYBOARD)
        elif wparam in (VK_HOME, VK_END):
            self.select(rows[0 if wparam == VK_HOME else -1], TVC_BYKEYBOARD)
        elif wparam in (VK_LEFT, VK_RIGHT) and self.selected is not None:
            self.open_node(self.selected, wparam == VK_RIGHT)
        return 0

    def open_node(self, node, opened):
        if node.children and node.open != opened:
            node.open = opened
            self.changed()

    def expand(self, wparam, lparam):
        node = self.nodes.get(lparam)
        if node is None or not node.children:
            return 0
        how = wparam & 3
        self.open_node(node, not node.open if how == TVE_TOGGLE else how == TVE_EXPAND)
        return 1

    def pen_down(self, _wparam, lparam):
        self.system.windows.set_focus(self)
        node = self.node_at(*point_of(lparam))
        if node is not None:
            self.select(node, TVC_BYMOUSE)
        return 0

    def double_tap(self, _wparam, lparam):
        node = self.node_at(*point_of(lparam))
        if node is not None:
            self.open_node(node, not node.open)
        return 0

    # ---- Places ----

    def rows(self):
        """The items that are shown, from the top down."""
        if self.kept_rows is None:
            self.kept_rows = []
            self.add_rows(self.root)
        return self.kept_rows

    def add_rows(self, owner):
        for child in owner.children:
            self.kept_rows.append(child)
            if child.open:
                self.add_rows(child)

    def row_height(self):
        return font_of(self).height + 1

    def shown(self):
        return max(1, size_of(self)[1] // self.row_height())

    def node_at(self, x, y):
        index = self.first + y // self.row_height()
        rows = self.rows()
        return rows[index] if 0 <= index < len(rows) and x >= 0 and y >= 0 else None

    def show_node(self, node):
        """Opens what it lies in and scrolls to it."""
        parent = node.parent
        while parent is not None:
            if not parent.open:
                parent.open, self.kept_rows = True, None
            parent = parent.parent
        index = self.rows().index(node)
        self.scroll_to(min(max(self.first, index - self.shown() + 1), index))

    def ensure_visible(self, _wparam, lparam):
        node = self.nodes.get(lparam)
        if node is not None:
            self.show_node(node)
        return 0

    def scroll_to(self, top):
        top = max(0, min(top, len(self.rows()) - self.shown()))
        if top != self.first:
            self.first = top
            self.invalidate()
        self.update_bar()

    def update_bar(self):
        if self.style & WS_VSCROLL:
            self.first = max(0, min(self.first, len(self.rows()) - self.shown()))
            scroll_bar.update(self, scroll_bar.SB_VERT, 0, max(0, len(self.rows()) - 1),
                              self.shown(), self.first)

    def scrolled(self, wparam, _lparam):
        steps = {scroll_bar.SB_LINEUP: -1, scroll_bar.SB_LINEDOWN: 1,
                 scroll_bar.SB_PAGEUP: -self.shown(), scroll_bar.SB_PAGEDOWN: self.shown()}
        code = wparam & 0xFFFF
        if code in steps:
            self.scroll_to(self.first + steps[code])
        elif code in (scroll_bar.SB_THUMBTRACK, scroll_bar.SB_THUMBPOSITION):
            self.scroll_to(wparam >> 16 & 0xFFFF)
        return 0

    def set_redraw(self, wparam, _lparam):
        self.redraw = bool(wparam)
        if self.redraw:
            self.changed()
        return 0

    # ---- How it looks ----

    def focus_changed(self, _wparam, _lparam):
        self.invalidate()
        return 0

    def paint(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), WHITE)
        row, rows = self.row_height(), self.rows()
        for index in range(self.first, min(len(rows), self.first + height // row + 1)):
            y = (index - self.first) * row
            self.paint_node(dc, rows[index], (0, y, width, y + row))

    def paint_node(self, dc, node, place):
        font = font_of(self)
        left = 3 + INDENT * node.level
        text = (left, place[1], left + font.width(node.text) + 4, place[3])
        colour, focused = BLACK, self.system.windows.focus is self
        if node is self.selected and (focused or self.style & TVS_SHOWSELALWAYS):
            dc.fill(text, system_colour(COLOR_HIGHLIGHT if focused else COLOR_BTNFACE))
            colour = system_colour(COLOR_HIGHLIGHTTEXT) if focused else BLACK
        dc.label((left + 2, place[1], place[2], place[3]), node.text.replace("&", "&&"), font,
                 colour)


def sort_key(node):
    """The order of texts regardless of case: signs before digits before letters."""
    return [(character.isalpha(), character.isdigit(), character)
            for character in node.text.casefold()]


HANDLERS = {
    TVM_INSERTITEMW: TreeView.insert,
    TVM_DELETEITEM: TreeView.delete,
    TVM_SELECTITEM: TreeView.select_item,
    TVM_ENSUREVISIBLE: TreeView.ensure_visible,
    TVM_SORTCHILDREN: TreeView.sort,
    TVM_GETITEMW: TreeView.get_item,
    TVM_GETNEXTITEM: TreeView.next_item,
    TVM_GETCOUNT: lambda tree, wparam, lparam: len(tree.nodes),
    TVM_EXPAND: TreeView.expand,
    WM_SETREDRAW: TreeView.set_redraw,
    WM_GETDLGCODE: lambda tree, wparam, lparam: DLGC_WANTARROWS | DLGC_WANTCHARS,
    WM_KEYDOWN: TreeView.key_down,
    WM_LBUTTONDOWN: TreeView.pen_down,
    WM_LBUTTONDBLCLK: TreeView.double_tap,
    WM_VSCROLL: TreeView.scrolled,
    WM_SETFOCUS: TreeView.focus_changed,
    WM_KILLFOCUS: TreeView.focus_changed,
    WM_ERASEBKGND: lambda tree, wparam, lparam: 1,
}
