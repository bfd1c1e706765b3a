"""The emulator's controls and dialogs, without a program: what the user does, what the parent hears.
"""

import tempfile
import unittest

from handheld.emulator import constants as c
from handheld.emulator import dialogs, menus, screen, shell
from handheld.emulator.controls import buttons, combo_box, scroll_bar, tabs, tree_view
from handheld.emulator.device import System
from handheld.emulator.messages import Msg
from handheld.emulator.windows import window_class

CHILD = c.WS_CHILD | c.WS_VISIBLE
STOP = CHILD | c.WS_TABSTOP


@window_class("TestParent")
class Parent(dialogs.Dialog):
    """Notes what its controls tell it."""

    def ask_procedure(self, message, wparam, lparam):
        self.heard = getattr(self, "heard", [])
        if message == c.WM_SETTINGCHANGE:
            self.heard.append((message, wparam))
            return 1
        if message == c.WM_COMMAND:
            self.heard.append((wparam & 0xFFFF, wparam >> 16))
            return 1
        if message == c.WM_NOTIFY:
            return self.notified(lparam)
        return 0

    def notified(self, record):
        """Of a tree: code, how, parameters of the item before and now."""
        memory = self.system.memory
        code = memory.i32(record + 8)
        if code in (tree_view.TVN_SELCHANGEDW, tree_view.TVN_SELCHANGINGW):
            found = (code, *(memory.u32(record + at) for at in (12, 16 + 36, 56 + 36)))
            self.heard.append(found)
        else:
            self.heard.append(code)
        return 0


class Controls(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.system = System(self.folder.name, lambda: None)
        self.windows = self.system.windows
        self.parent = self.windows.create("TestParent", "", c.WS_POPUP | c.WS_VISIBLE, 0, 0, 26,
                                          240, 200)

    def tearDown(self):
        self.folder.cleanup()

    def make(self, class_name, text="", style=STOP, number=7, place=(5, 5, 100, 60)):
        return self.windows.create(class_name, text, style, 0, *place, self.parent, number)

    def send(self, window, message, wparam=0, lparam=0):
        result = self.windows.send(window, message, wparam, lparam)
        return result - (1 << 32) if result & 1 << 31 else result

    def send_text(self, window, message, text, wparam=0):
        with self.system.memory.scratch_text(text) as address:
            return self.send(window, message, wparam, address)

    def heard(self):
        found, self.parent.heard = getattr(self.parent, "heard", []), []
        return found

    def handle_waiting(self):
        """Runs what is in the queue, as a dialog's loop does."""
        while (found := self.system.messages.take()) is not None:
            if not dialogs.is_dialog_message(self.system, self.parent, found):
                self.system.messages.dispatch(found)

    def tap(self, window, x, y):
        left, top = window.client_rect()[:2]
        self.system.input.pen("down", left + x, top + y)
        self.system.input.pen("up", left + x, top + y)
        self.handle_waiting()

    def key(self, key, shift=False):
        if shift:
            self.system.input.key(c.VK_SHIFT, True)
        self.system.input.key(key)
        if shift:
            self.system.input.key(c.VK_SHIFT, False)
        self.handle_waiting()

    # ---- Buttons and dialogs ----

    def test_buttons_answer_where_they_are_left(self):
        push = self.make("BUTTON", "Go", place=(5, 5, 50, 20))
        self.tap(push, 10, 10)
        self.assertEqual(self.heard(), [(7, buttons.BN_CLICKED)])
        self.system.input.pen("down", 10, 40)
        self.system.input.pen("up", 200, 200)
        self.handle_waiting()
        self.assertEqual(self.heard(), [])
        self.windows.enable(push, False)
        self.tap(push, 10, 10)
        self.assertEqual(self.heard(), [])

    def radio_buttons(self):
        kind = CHILD | buttons.BS_AUTORADIOBUTTON
        return [self.make("BUTTON", name, kind | group, n, (5, 20 * n, 60, 15))
                for n, (name, group) in enumerate((
                    ("a", c.WS_GROUP | c.WS_TABSTOP), ("b", 0), ("c", 0),
                    ("d", c.WS_GROUP | c.WS_TABSTOP), ("e", 0)))]

    def test_radio_buttons_are_one_of_their_group(self):
        radios = self.radio_buttons()
        for tapped, checked in ((1, "b"), (3, "bd"), (2, "cd"), (4, "ce")):
            self.tap(radios[tapped], 5, 7)
            self.assertEqual("".join(r.text for r in radios if r.checked), checked)
        self.windows.set_focus(radios[2])
        self.key(c.VK_DOWN)
        self.assertEqual("".join(r.text for r in radios if r.checked), "ae")
        self.assertIs(self.windows.focus, radios[0])

    def test_keys_in_a_dialog(self):
        field = self.make("EDIT", "abc", STOP, 1, (5, 5, 80, 20))
        check = self.make("BUTTON", "&Case", STOP | buttons.BS_AUTOCHECKBOX, 4, (5, 30, 80, 20))
        push = self.make("BUTTON", "Go", STOP | buttons.BS_DEFPUSHBUTTON, 9, (5, 60, 80, 20))
        self.parent.default_id = 9
        dialogs.give_focus(self.parent, field)
        self.heard()
        for key, shift, focus in ((c.VK_TAB, False, check), (c.VK_TAB, False, push),
                                  (c.VK_TAB, False, field), (c.VK_TAB, True, push),
                                  (c.VK_TAB, True, check)):
            self.key(key, shift)
            self.assertIs(self.windows.focus, focus)
        self.key(c.VK_SPACE)
        self.assertTrue(check.checked)
        self.heard()
        self.key(c.VK_RETURN)
        self.key(c.VK_ESCAPE)
        self.assertEqual(self.heard(), [(9, 0), (dialogs.IDCANCEL, 0)])
        self.key(c.VK_TAB, True)
        self.assertEqual(field.content.selected, "abc")
        self.system.input.character("x")
        self.handle_waiting()
        self.assertEqual(field.text, "x")

    # ---- The shell ----

    def test_every_window_hears_of_the_panel(self):
        other = self.windows.create("TestParent", "", c.WS_POPUP, 0, 0, 26, 100, 100)
        self.system.screen.show_panel(True)
        wanted = [(c.WM_SETTINGCHANGE, screen.SPI_SETSIPINFO)]
        self.assertEqual((self.heard(), other.heard), (wanted, wanted))

    def test_how_the_shell_sizes_dialogs(self):
        """DONEBUTTON puts OK into the bar along the top, whatever the size."""
        self.make("BUTTON", "Go", place=(7, 9, 50, 20))
        self.make("BUTTON", "Stop", place=(70, 30, 60, 25))
        for flags, right, bottom in ((1, 240, 226), (2, 137, 90), (3, 137, 90), (4, 240, 320),
                                     (5, 240, 320)):
            self.windows.move(self.parent, 0, 26, 240, 200)
            with self.system.memory.scratch(12) as info:
                self.system.memory.put(info, "<III", 1, self.parent.handle, flags)
                shell.init_dialog(self.system, info)
            self.assertEqual(self.parent.rect, (0, 26, right, bottom), flags)
            self.assertEqual(self.system.screen.caption.shows_ok(), bool(flags & 1), flags)

    # ---- Lists ----

    def combo(self, kind):
        box = self.make("COMBOBOX", "", STOP | kind | c.WS_VSCROLL, 5, (5, 5, 100, 90))
        for text in ("home", "alpha", "beta", "home page"):
            self.send_text(box, combo_box.CB_ADDSTRING, text)
        self.heard()
        return box

    def test_combo_box_in_the_system_s_order(self):
        box = self.combo(combo_box.CBS_DROPDOWN)
        self.assertEqual(self.send_text(box, combo_box.CB_FINDSTRINGEXACT, "HOME", -1), 0)
        self.assertEqual(self.send_text(box, combo_box.CB_FINDSTRINGEXACT, "hom", -1), -1)
        self.tap(box, 95, 10)
        self.assertTrue(box.is_open)
        self.assertEqual([code for _, code in self.heard()],
                         [combo_box.CBN_SETFOCUS, combo_box.CBN_DROPDOWN])
        self.tap(box.list, 10, 2 * box.list.row_height() + 3)
        self.assertFalse(box.is_open)
        codes = [code for _, code in self.heard()]
        self.assertLess(codes.index(combo_box.CBN_CLOSEUP), codes.index(combo_box.CBN_SELCHANGE))
        self.assertEqual((box.edit.text, box.list.selected), ("beta", 2))
        self.tap(box, 95, 10)
        self.tap(self.parent, 200, 150)
        self.assertEqual((box.is_open, box.list.selected), (False, 2))
        self.assertNotIn(combo_box.CBN_SELCHANGE, [code for _, code in self.heard()])

    def test_combo_box_by_keys_and_size(self):
        box = self.combo(combo_box.CBS_DROPDOWNLIST)
        self.windows.set_focus(box)
        self.key(c.VK_DOWN)
        self.key(c.VK_DOWN)
        self.assertEqual(box.list.selected, 1)
        self.assertEqual([code for _, code in self.heard()].count(combo_box.CBN_SELCHANGE), 2)
        field = box.bottom - box.top
        self.windows.move(box, 5, 5, 120, 60)
        self.assertEqual((box.bottom - box.top, box.drop_height), (field, 60))

    def tree(self, names):
        tree = self.make("SysTreeView32", "", STOP | c.WS_VSCROLL, 3, (5, 5, 100, 60))
        self.items = {}
        for n, name in enumerate(names):
            with self.system.memory.scratch_text(name) as text, \
                    self.system.memory.scratch(48) as record:
                self.system.memory.put(record, "<II" + "IIIIIiiiii", 0, tree_view.TVI_SORT,
                                       tree_view.TVIF_TEXT | tree_view.TVIF_PARAM, 0, 0, 0, text, 0,
                                       0, 0, 0, n + 1)
                self.items[name] = self.send(tree, tree_view.TVM_INSERTITEMW, 0, record)
        return tree

    def test_tree_sorts_selects_and_scrolls(self):
        tree = self.tree(("home", "b_2", "B10", "b", "a", "z", "y", "x"))
        self.assertEqual([node.text for node in tree.rows()],
                         ["a", "b", "b_2", "B10", "home", "x", "y", "z"])
        changed, changing = tree_view.TVN_SELCHANGEDW, tree_view.TVN_SELCHANGINGW
        self.tap(tree, 10, tree.row_height() + 3)
        self.key(c.VK_END)
        self.send(tree, tree_view.TVM_SELECTITEM, tree_view.TVGN_CARET, self.items["home"])
        self.assertEqual([heard for heard in self.heard() if heard[0] in (changed, changing)],
                         [(changing, 1, 0, 4), (changed, 1, 0, 4), (changing, 2, 4, 6),
                          (changed, 2, 4, 6), (changing, 0, 6, 1), (changed, 0, 6, 1)])
        self.send(tree, tree_view.TVM_DELETEITEM, 0, self.items["home"])
        self.assertEqual(tree.selected.text, "x")
        self.assertTrue(tree.first <= tree.rows().index(tree.selected) < tree.first + tree.shown())

    def test_scroll_bar_thumb(self):
        tree = self.tree([f"cell{n:02}" for n in range(40)])
        bar, rect = scroll_bar.state(tree, scroll_bar.SB_VERT), (87, 0, 100, 60)
        self.assertEqual((bar.high, bar.page), (39, tree.shown()))
        start, end = scroll_bar.thumb(rect, bar, scroll_bar.SB_VERT)
        x = tree.right - 6
        self.system.input.pen("down", x, tree.top + (start + end) // 2)
        self.system.input.pen("move", x, tree.top + 200)
        self.system.input.pen("up", x, tree.top + 200)
        self.handle_waiting()
        self.assertEqual(tree.first, 40 - tree.shown())
        self.system.input.pen("down", x, tree.top + 3)
        self.system.input.pen("up", x, tree.top + 3)
        self.handle_waiting()
        self.assertEqual(tree.first, 39 - tree.shown())

    # ---- Tabs and menus ----

    def test_tabs_tell_of_the_user_alone(self):
        row = self.make("SysTabControl32", place=(0, 0, 240, 30))
        row.labels, row.selected = ["list", "text"], 0
        self.send(row, tabs.TCM_SETCURSEL, 1)
        self.assertEqual(self.heard(), [])
        self.tap(row, 5, 5)
        self.assertEqual((self.heard(), row.selected),
                         ([tabs.TCN_SELCHANGING, tabs.TCN_SELCHANGE], 0))

    def test_menu_keys_and_grey_items(self):
        menu, popup = self.system.menus.make(), self.system.menus.make()
        popup.items = [menus.Item(0, 21, "&Inner")]
        menu.items = [menus.Item(menus.MF_GRAYED, 11, "&Grey"), menus.Item(0, 12, "&Plain"),
                      menus.Item(menus.MF_POPUP, 0, "&More", popup)]
        self.system.menus.owner = self.parent
        for keys, chosen in (("g", None), ("p", 12), ("mi", 21), ([c.VK_ESCAPE], None),
                             ([c.VK_DOWN] * 2 + [c.VK_RETURN], 12),
                             ([c.VK_UP, c.VK_RIGHT, c.VK_DOWN, c.VK_RETURN], 21)):
            self.system.menus.chosen = None
            self.system.menus.show(menu, 10, 100)
            for key in keys:
                message = c.WM_CHAR if isinstance(key, str) else c.WM_KEYDOWN
                code = ord(key) if isinstance(key, str) else key
                self.system.menus.take_key(Msg(self.parent, message, code, 0))
            self.assertEqual(self.system.menus.chosen, chosen, keys)
            self.system.menus.close()
        change = menus.change_flags
        self.assertEqual(change(self.system, menu.handle, 21, menus.MF_GRAYED, menus.DEAD), 0)
        self.assertFalse(popup.items[0].can_be_chosen)
        self.assertEqual(change(self.system, menu.handle, 99, 0, menus.DEAD), -1)


if __name__ == "__main__":
    unittest.main()
