"""Windows: their classes, the tree that they make, and sending them messages.

A window belongs to a class of the program, whose procedure is emulated code, or to a class of the
system, which is a Python class here:

    @window_class("BUTTON")
    class Button(Window):
        def message(self, message, wparam, lparam):
            ...
            return super().message(message, wparam, lparam)

A system class has an address as its procedure too, so that the program can put its own before it
and call the old one. Every window clips its children and its siblings in front of it, as on the
device. Coordinates are the screen's. What a window does with a message that nobody wants is in
default_procedure.py, painting in painting.py, focus in focus.py, the queue in messages.py.
"""

from handheld.emulator import constants as c
from handheld.emulator import default_procedure, frame
from handheld.emulator.memory import Fault
from handheld.emulator.region import Region

SYSTEM_CLASSES = {}
FIRST_HANDLE = 0x7C000100
HANDLE_STEP = 0x10
MOST_NESTED = 60  # calls from the system into window procedures


def window_class(name):
    """Makes the Python class below the system's window class `name`."""
    def register(cls):
        SYSTEM_CLASSES[name.upper()] = cls
        cls.system_class_name = name
        return cls
    return register


class WindowClass:
    """A class that the program registered."""

    def __init__(self, name, style, procedure, extra, brush):
        self.name = name
        self.style = style
        self.procedure = procedure
        self.extra = extra
        self.brush = brush


class Window:
    """One window. Of a class of the program it is this very type."""

    transparent = False  # a system class that neither hides what lies behind it nor is tapped
    class_style = 0
    class_brush = 0

    def __init__(self, system, handle, class_name):
        self.system = system
        self.handle = handle
        self.class_name = class_name
        self.parent = None
        self.owner = None
        self.children = []
        self.id = 0
        self.style = self.ex_style = 0
        self.left = self.top = self.right = self.bottom = 0
        self.corner = (0, 0)     # of the client area, as what lies in it was placed by
        self.text = ""
        self.font = 0
        self.instance = 0
        self.user_data = 0
        self.sized_by_shell = False  # its title is in the bar along the top, whatever its width
        self.extra = bytearray()
        self.procedure = 0
        self.update = Region()   # of the client area, in screen coordinates
        self.must_erase = False
        self.destroyed = False

    # ---- What it is ----

    @property
    def visible(self):
        return bool(self.style & c.WS_VISIBLE)

    @property
    def enabled(self):
        return not self.style & c.WS_DISABLED

    @property
    def is_child(self):
        return self.parent is not None

    @property
    def rect(self):
        return (self.left, self.top, self.right, self.bottom)

    def client_rect(self):
        """The client area on the screen."""
        left, top, right, bottom = frame.insets(self)
        left, top = self.left + left, self.top + top
        return (left, top, max(left, self.right - right), max(top, self.bottom - bottom))

    def top_level(self):
        return self if self.parent is None else self.parent.top_level()

    def is_visible(self):
        """It and all that it lies in are."""
        return self.visible and (self.parent is None or self.parent.is_visible())

    def is_within(self, other):
        """It is `other` or lies in it."""
        return self is other or (self.parent is not None and self.parent.is_within(other))

    # ---- What it does ----

    def message(self, message, wparam, lparam):
        """The window procedure of a system class; here what DefWindowProcW does."""
        return default_procedure.run(self, message, wparam, lparam)

    def paint(self, dc):
        """Draws the client area of a system class."""

    def invalidate(self, rect=None, erase=True):
        self.system.windows.invalidate(self, rect, erase)

    def notify_command(self, code):
        """Tells the parent what happened, as controls do."""
        if self.parent is not None:
            self.system.windows.send(self.parent, c.WM_COMMAND, code << 16 | self.id & 0xFFFF,
                                     self.handle)


class Windows:
    """All windows. `top_levels` are the ones without a parent, front first."""

    def __init__(self, system):
        self.system = system
        self.top_levels = []
        self.tracker = None  # takes the pen until it is lifted: see frame.py
        self._by_handle = {}
        self._next = FIRST_HANDLE
        self._classes = {}
        self._procedures = {}  # address: Python class
        self._visible = {}

    # ---- Classes and procedures ----

    def register_class(self, found):
        self._classes[found.name.upper()] = found

    def class_of(self, name):
        """The program's class, the system's, or None."""
        return self._classes.get(name.upper()) or SYSTEM_CLASSES.get(name.upper())

    def procedure_of(self, cls):
        """The address that stands for a system class's procedure."""
        for address, known in self._procedures.items():
            if known is cls:
                return address
        address = self.system.machine.trap(self._enter_system_class)
        self._procedures[address] = cls
        return address

    def _enter_system_class(self, registers):
        window = self.find(registers[0])
        result = 0 if window is None else window.message(*registers[1:4])
        return (result or 0) & 0xFFFFFFFF, 0

    def call_procedure(self, procedure, window, message, wparam, lparam):
        """Runs a window procedure, emulated or not."""
        if procedure == 0 or procedure in self._procedures:
            return int(window.message(message, wparam, lparam) or 0) & 0xFFFFFFFF
        machine = self.system.machine
        if len(machine.levels) > MOST_NESTED:
            raise Fault(f"window procedures nest without end: {window.class_name} {message:#x}")
        return machine.call(procedure, window.handle, message, wparam, lparam)

    def send(self, window, message, wparam=0, lparam=0):
        """The window procedure's answer; 0 when there is no window (any more)."""
        if window is None or window.destroyed:
            return 0
        wparam, lparam = wparam & 0xFFFFFFFF, lparam & 0xFFFFFFFF
        if self.system.log.wanted:
            self.system.log.message(
                f"[{window.class_name} {window.handle:x}: {message:#x} {wparam:#x} {lparam:#x}]")
        return self.call_procedure(window.procedure, window, message, wparam, lparam)

    def post(self, window, message, wparam=0, lparam=0):
        self.system.messages.post(window, message, wparam, lparam)

    # ---- The tree ----

    def find(self, handle):
        return self._by_handle.get(handle & ~1)

    def all(self):
        """Every window, each before its children, the front ones first."""
        waiting = list(reversed(self.top_levels))
        while waiting:
            window = waiting.pop()
            yield window
            waiting.extend(reversed(window.children))

    def siblings(self, window):
        return self.top_levels if window.parent is None else window.parent.children

    def at(self, x, y, within=None):
        """The window whose pixel this is, or None."""
        for window in self.top_levels if within is None else within.children:
            if not window.visible or window.transparent or not inside(window.rect, x, y):
                continue
            if inside(window.client_rect(), x, y):
                return self.at(x, y, window) or window
            return window
        return None

    def add(self, window):
        """Puts a new window in front of its siblings, or, a child, behind them as the system does."""
        siblings = self.siblings(window)
        place = len(siblings) if window.is_child else self._front_of(window, siblings)
        siblings.insert(place, window)
        self.changed()

    @staticmethod
    def _front_of(window, siblings):
        """The first place that the window may have: behind topmost ones unless it is one."""
        if window.ex_style & c.WS_EX_TOPMOST:
            return 0
        return sum(1 for other in siblings if other.ex_style & c.WS_EX_TOPMOST)

    def raise_window(self, window):
        """In front of its siblings, and what it owns in front of it."""
        siblings = self.siblings(window)
        siblings.remove(window)
        siblings.insert(self._front_of(window, siblings), window)
        for owned in [other for other in reversed(siblings) if other.owner is window]:
            self.raise_window(owned)
        self.changed()

    def lower_window(self, window):
        siblings = self.siblings(window)
        siblings.remove(window)
        siblings.append(window)
        self.changed()

    def new_window(self, class_name, parent):
        """A window of that class in the tree, without place or style; None: no such class."""
        found = self.class_of(class_name)
        if found is None:
            return None
        handle, self._next = self._next, self._next + HANDLE_STEP
        if isinstance(found, WindowClass):
            window = Window(self.system, handle, found.name)
            window.procedure = found.procedure
            window.extra = bytearray(found.extra)
            window.class_style, window.class_brush = found.style, found.brush
        else:
            window = found(self.system, handle, found.system_class_name)
            window.procedure = self.procedure_of(found)
        window.parent = parent
        self._by_handle[handle] = window
        return window

    def forget(self, window):
        """Takes a destroyed window out of the tree."""
        window.destroyed = True
        self._by_handle.pop(window.handle, None)
        if window in self.siblings(window):
            self.siblings(window).remove(window)
        self.changed()

    # ---- What can be seen ----

    def changed(self):
        """Places, order or visibility did."""
        self._visible.clear()

    def visible_region(self, window, whole=False):
        """The pixels that show the window's client area, or anything of it."""
        key = (window.handle, whole)
        if key not in self._visible:
            self._visible[key] = self._compute_visible(window, whole)
        return self._visible[key]

    def _compute_visible(self, window, whole):
        if not window.is_visible() or window.destroyed:
            return Region()
        region = Region.of(*(window.rect if whole else window.client_rect()))
        if not whole:
            region = self._minus(region, window.children)
        while window is not None:
            siblings = self.siblings(window)
            region = self._minus(region, siblings[:siblings.index(window)])
            window = window.parent
            if window is not None:
                region = region.intersect_rect(window.client_rect())
        return region.intersect_rect((0, 0, self.system.screen.WIDTH, self.system.screen.HEIGHT))

    @staticmethod
    def _minus(region, windows):
        for other in windows:
            if other.visible and not other.transparent:
                region = region.subtract(Region.of(*other.rect))
        return region

    # ---- By the other modules ----

    def create(self, *arguments, **named):
        return self.system.window_life.create(*arguments, **named)

    def destroy(self, window):
        self.system.window_life.destroy(window)

    def show(self, window, shown):
        self.system.window_life.show(window, shown)

    def move(self, window, x, y, width, height):
        self.system.window_life.move(window, x, y, width, height)

    def frame_changed(self, window):
        self.system.window_life.frame_changed(window)

    def redraw_frame(self, window):
        if window.is_visible():
            frame.draw(self.system, window)

    def invalidate(self, window, rect=None, erase=True):
        self.system.painting.invalidate(window, rect, erase)

    def update(self, window):
        self.system.painting.update(window)

    @property
    def focus(self):
        return self.system.focus.focus

    @property
    def active(self):
        return self.system.focus.active

    @property
    def capture(self):
        return self.system.focus.capture

    def set_focus(self, window):
        return self.system.focus.set_focus(window)

    def set_capture(self, window):
        return self.system.focus.set_capture(window)

    def activate(self, window):
        self.system.focus.activate(window)

    def enable(self, window, enabled):
        return self.system.focus.enable(window, enabled)

    def key_state(self, key):
        return self.system.input.is_down(key)

    def set_timer(self, window, number, milliseconds):
        return self.system.messages.set_timer(window, number, milliseconds)

    def kill_timer(self, window, number):
        return self.system.messages.kill_timer(window, number)

    def loop(self, until, dialog=None, keys=None):
        self.system.messages.loop(until, dialog, keys)


def inside(rect, x, y):
    return rect[0] <= x < rect[2] and rect[1] <= y < rect[3]
