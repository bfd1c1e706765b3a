"""What the program calls about windows: classes, making and moving them, asking for their place,
text and data, finding them in the tree.
"""

from handheld.emulator import constants as c
from handheld.emulator import default_procedure
from handheld.emulator.calls import export
from handheld.emulator.windows import WindowClass

WNDCLASS = "<10I"
GWL_WNDPROC, GWL_HINSTANCE, GWL_ID, GWL_STYLE, GWL_EXSTYLE, GWL_USERDATA = -4, -6, -12, -16, -20, -21
GW_HWNDFIRST, GW_HWNDLAST, GW_HWNDNEXT, GW_HWNDPREV, GW_OWNER, GW_CHILD = range(6)
SW_HIDE, SW_SHOWNOACTIVATE, SW_SHOWNA = 0, 4, 8
THE_PROCESS, THE_THREAD = 0x42, 0x46
STYLE_KEPT = c.WS_VISIBLE | c.WS_CHILD


# ---- Classes and life ----

@export("COREDLL", "RegisterClassW", "record")
def register_class(system, record):
    style, procedure, _, extra, _, _, _, brush, _, name = system.memory.struct(record, WNDCLASS)
    system.windows.register_class(
        WindowClass(system.memory.text(name), style, procedure, extra, brush))
    return 0xC000


@export("COREDLL", "UnregisterClassW", "text instance")
def unregister_class(_system, _name, _instance):
    return True


@export("COREDLL", "CreateWindowExW",
        "ex_style text text style x y width height window id instance param", cost=5000)
def create_window(system, ex_style, name, text, style, x, y, width, height, parent, id_, instance,
                  param):
    return system.windows.create(name, text, style, ex_style, x, y, width, height, parent, id_,
                                 instance, param)


@export("COREDLL", "DestroyWindow", "window", cost=2000)
def destroy_window(system, window):
    if window is not None:
        system.windows.destroy(window)
    return window is not None


@export("COREDLL", "DefWindowProcW", "window message wparam lparam", cost=100)
def def_window_proc(system, window, message, wparam, lparam):
    if window is None:
        return 0
    return default_procedure.run(window, message, wparam, lparam)


@export("COREDLL", "CallWindowProcW", "procedure window message wparam lparam", cost=50)
def call_window_proc(system, procedure, window, message, wparam, lparam):
    if window is None:
        return 0
    return system.windows.call_procedure(procedure, window, message, wparam, lparam)


# ---- Place and visibility ----

@export("COREDLL", "ShowWindow", "window how", cost=500)
def show_window(system, window, how):
    if window is None:
        return False
    before = window.visible
    activate = False if how in (SW_SHOWNOACTIVATE, SW_SHOWNA) else None
    system.window_life.show(window, how != SW_HIDE, activate)
    return before


@export("COREDLL", "MoveWindow", "window x y width height repaint", cost=500)
def move_window(system, window, x, y, width, height, _repaint):
    if window is None:
        return False
    system.windows.move(window, x, y, width, height)
    return True


@export("COREDLL", "SetWindowPos", "window after x y width height flags", cost=500)
def set_window_pos(system, window, after, x, y, width, height, flags):
    if window is None:
        return False
    if not flags & c.SWP_NOZORDER:
        reorder(system, window, after)
    left, top, right, bottom = window.rect
    if not flags & c.SWP_NOMOVE:
        origin = (0, 0) if window.parent is None else window.parent.client_rect()[:2]
        width_now, height_now = right - left, bottom - top
        left, top = origin[0] + x, origin[1] + y
        right, bottom = left + width_now, top + height_now
    if not flags & c.SWP_NOSIZE:
        right, bottom = left + max(0, width), top + max(0, height)
    system.window_life.set_rect(window, left, top, right, bottom)
    if flags & c.SWP_FRAMECHANGED:
        system.windows.frame_changed(window)
    if flags & (c.SWP_SHOWWINDOW | c.SWP_HIDEWINDOW):
        activate = False if flags & c.SWP_NOACTIVATE else None
        system.window_life.show(window, bool(flags & c.SWP_SHOWWINDOW), activate)
    return True


def reorder(system, window, after):
    """Puts the window behind `after`, or to the front or the back."""
    windows = system.windows
    before = windows.visible_region(window, whole=True)
    behind = windows.find(after) if after > 1 else None
    if after == c.HWND_BOTTOM:
        windows.lower_window(window)
    elif behind is not None and behind is not window:
        siblings = windows.siblings(window)
        siblings.remove(window)
        siblings.insert(siblings.index(behind) + 1, window)
        windows.changed()
    else:
        windows.raise_window(window)
    now = windows.visible_region(window, whole=True)
    system.painting.uncover(now.subtract(before).union(before.subtract(now)))


@export("COREDLL", "BringWindowToTop", "window")
def bring_window_to_top(system, window):
    reorder(system, window, c.HWND_TOP)
    return True


def put_rect(system, address, rect):
    system.memory.put(address, "<iiii", *rect)
    return True


@export("COREDLL", "GetClientRect", "window rect", cost=60)
def get_client_rect(system, window, address):
    if window is None:
        return False
    left, top, right, bottom = window.client_rect()
    return put_rect(system, address, (0, 0, right - left, bottom - top))


@export("COREDLL", "GetWindowRect", "window rect", cost=60)
def get_window_rect(system, window, address):
    return window is not None and put_rect(system, address, window.rect)


def map_points(system, from_window, to_window, points, count):
    """Moves points from one window's client coordinates to another's; None is the screen."""
    start = (0, 0) if from_window is None else from_window.client_rect()[:2]
    end = (0, 0) if to_window is None else to_window.client_rect()[:2]
    dx, dy = start[0] - end[0], start[1] - end[1]
    for at in range(points, points + 8 * count, 8):
        x, y = system.memory.struct(at, "<ii")
        system.memory.put(at, "<ii", x + dx, y + dy)
    return (dy & 0xFFFF) << 16 | dx & 0xFFFF


@export("COREDLL", "ClientToScreen", "window point")
def client_to_screen(system, window, point):
    map_points(system, window, None, point, 1)
    return True


@export("COREDLL", "ScreenToClient", "window point")
def screen_to_client(system, window, point):
    map_points(system, None, window, point, 1)
    return True


@export("COREDLL", "MapWindowPoints", "window window points count")
def map_window_points(system, from_window, to_window, points, count):
    return map_points(system, from_window, to_window, points, count)


# ---- Text and data ----

@export("COREDLL", "SetWindowTextW", "window string", cost=200)
def set_window_text(system, window, text):
    return system.windows.send(window, c.WM_SETTEXT, 0, text)


@export("COREDLL", "GetWindowTextW", "window buffer count", cost=200)
def get_window_text(system, window, buffer, count):
    return system.windows.send(window, c.WM_GETTEXT, count, buffer)


@export("COREDLL", "GetWindowTextLengthW", "window", cost=200)
def get_window_text_length(system, window):
    return system.windows.send(window, c.WM_GETTEXTLENGTH)


@export("COREDLL", "GetClassNameW", "window buffer count", cost=100)
def get_class_name(system, window, buffer, count):
    return 0 if window is None else system.memory.put_text(buffer, window.class_name, count)


FIELDS = {GWL_WNDPROC: "procedure", GWL_HINSTANCE: "instance", GWL_ID: "id", GWL_STYLE: "style",
          GWL_EXSTYLE: "ex_style", GWL_USERDATA: "user_data"}


@export("COREDLL", "GetWindowLongW", "window index", cost=40)
def get_window_long(_system, window, index):
    if window is None:
        return 0
    if index >= 0:
        return int.from_bytes(window.extra[index:index + 4], "little")
    return getattr(window, FIELDS[index]) & 0xFFFFFFFF


@export("COREDLL", "SetWindowLongW", "window index value", cost=60)
def set_window_long(system, window, index, value):
    before = get_window_long(system, window, index)
    if window is None:
        return 0
    if index >= 0:
        window.extra[index:index + 4] = value.to_bytes(4, "little")
    elif index == GWL_STYLE:
        window.style = value & ~STYLE_KEPT | window.style & STYLE_KEPT
        system.windows.send(window, c.WM_STYLECHANGED, index & 0xFFFFFFFF, 0)
    else:
        setattr(window, FIELDS[index], value)
    return before


# ---- The tree ----

@export("COREDLL", "IsWindow", "window", cost=40)
def is_window(_system, window):
    return window is not None


@export("COREDLL", "IsWindowVisible", "window", cost=60)
def is_window_visible(_system, window):
    return window is not None and window.is_visible()


@export("COREDLL", "GetParent", "window", cost=40)
def get_parent(_system, window):
    return None if window is None else window.parent or window.owner


@export("COREDLL", "SetParent", "window window")
def set_parent(system, window, parent):
    before = window.parent
    system.windows.siblings(window).remove(window)
    window.parent = parent
    system.windows.add(window)
    system.painting.uncover(system.windows.visible_region(window, whole=True))
    return before


@export("COREDLL", "IsChild", "window window", cost=60)
def is_child(_system, parent, window):
    return window is not None and window is not parent and parent is not None \
        and window.is_within(parent)


@export("COREDLL", "GetWindow", "window which", cost=60)
def get_window(system, window, which):
    if window is None:
        return None
    if which == GW_OWNER:
        return window.owner
    siblings = window.children if which == GW_CHILD else system.windows.siblings(window)
    place = {GW_HWNDFIRST: 0, GW_HWNDLAST: len(siblings) - 1, GW_CHILD: 0}.get(which)
    if place is None:
        place = siblings.index(window) + (1 if which == GW_HWNDNEXT else -1)
    return siblings[place] if 0 <= place < len(siblings) else None


@export("COREDLL", "FindWindowW", "text text", cost=500)
def find_window(system, class_name, text):
    for window in system.windows.top_levels:
        if class_name is not None and window.class_name.upper() != class_name.upper():
            continue
        if text is None or window.text == text:
            return window
    return None


@export("COREDLL", "WindowFromPoint", "x y", cost=200)
def window_from_point(system, x, y):
    return system.windows.at(x, y)


@export("COREDLL", "ChildWindowFromPoint", "window x y", cost=200)
def child_window_from_point(_system, window, x, y):
    """The front child there, hidden ones too; the window itself where there is none."""
    left, top = window.client_rect()[:2]
    for child in window.children:
        if child.left <= left + x < child.right and child.top <= top + y < child.bottom:
            return child
    return window


@export("COREDLL", "GetDesktopWindow")
def get_desktop_window(_system):
    return None


@export("COREDLL", "GetWindowThreadProcessId", "window process")
def get_window_thread_process_id(system, window, process):
    if process:
        system.memory.set_u32(process, THE_PROCESS if window is not None else 0)
    return THE_THREAD if window is not None else 0
