"""What the user can do, a line each. Names of windows' texts are without their '&'.

    tap X Y             hold X Y            double-tap X Y      drag X Y X Y
    tap-text TEXT       where it stands on the screen           double-tap-text TEXT
    key [Ctrl+][Shift+][Alt+]NAME           type TEXT           \\n in it is Enter
    menu POPUP ITEM [> ITEM]                button TEXT         ok: the one in the bar along the top
    choose NUMBER TEXT  from the combo box with that number, in the window in front
    fill NUMBER TEXT    writes that field anew
    check TEXT          taps a check box or radio button
    panel up|down       command NUMBER      wait MILLISECONDS   after MILLISECONDS STEP
    answer TEXT         types it into the field of the file dialog and confirms
    expect WHAT ...     see looking.py
    picture FILE.png    texts               quit
"""

import re

from handheld.emulator import constants as c
from handheld.emulator.dc import without_mnemonic
from handheld.emulator.looking import (
    EXPECTATIONS, Unexpected, control_by_number, controls, front_dialog, screen_text)
from handheld.emulator.menus import popup_places

PAUSE = 600
HOLD = 1000
DRAG_STEPS = 8
COMMANDS = {}
KEYS = {"Enter": c.VK_RETURN, "Tab": c.VK_TAB, "Escape": c.VK_ESCAPE, "Backspace": c.VK_BACK,
        "Delete": c.VK_DELETE, "Insert": c.VK_INSERT, "Space": c.VK_SPACE, "Home": c.VK_HOME,
        "End": c.VK_END, "PageUp": c.VK_PRIOR, "PageDown": c.VK_NEXT, "Left": c.VK_LEFT,
        "Right": c.VK_RIGHT, "Up": c.VK_UP, "Down": c.VK_DOWN,
        **{f"F{n}": c.VK_F1 + n - 1 for n in range(1, 13)}}
MODIFIERS = {"Ctrl": c.VK_CONTROL, "Shift": c.VK_SHIFT, "Alt": c.VK_MENU}


def step(name):
    """Makes the function below the step `name`: it gets the driver and the rest of the line."""
    def register(function):
        COMMANDS[name] = function
        return function
    return register


# ---- The pen ----

def press_at(system, x, y, again=False):
    for _ in range(2 if again else 1):
        system.input.pen("down", x, y)
        system.input.pen("up", x, y)


@step("tap")
def tap(driver, rest):
    yield PAUSE
    press_at(driver.system, *map(int, rest.split()))
    yield


@step("double-tap")
def double_tap(driver, rest):
    yield PAUSE
    press_at(driver.system, *map(int, rest.split()), again=True)
    yield


@step("hold")
def hold(driver, rest):
    x, y = map(int, rest.split())
    yield PAUSE
    driver.system.input.pen("down", x, y)
    yield
    yield HOLD
    driver.system.input.pen("up", x, y)
    yield


@step("drag")
def drag(driver, rest):
    x, y, to_x, to_y = map(int, rest.split())
    yield PAUSE
    driver.system.input.pen("down", x, y)
    for part in range(1, DRAG_STEPS + 1):
        driver.system.input.pen("move", x + (to_x - x) * part // DRAG_STEPS,
                                y + (to_y - y) * part // DRAG_STEPS)
        yield
    driver.system.input.pen("up", to_x, to_y)
    yield


def middle(rect):
    return (rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2


def place_of_text(system, text):
    """The middle of the first place where the text stands alone, or as a word, or at all."""
    lines = system.screen.surface.lines()
    for pattern in (f"^{re.escape(text)}$", f"(?<!\\w){re.escape(text)}(?!\\w)", re.escape(text)):
        for line in lines:
            found = re.search(pattern, "".join(run.text for run in line))
            if found:
                return middle(part_of_line(line, found.start(), found.end()))
    raise Unexpected(f"{text!r} is not on the screen:\n{screen_text(system)}")


def part_of_line(line, start, end):
    """Where the characters from `start` to `end` of a line of runs stand."""
    first, last = None, None
    for run in line:
        if first is None and start < len(run.text):
            first = run.part(start, start)
        if end <= len(run.text):
            last = run.part(end, end)
            break
        start, end = start - len(run.text), end - len(run.text)
    return (first[0], first[1], last[0], last[3])


@step("tap-text")
def tap_text(driver, text):
    yield PAUSE
    press_at(driver.system, *place_of_text(driver.system, text))
    yield


@step("double-tap-text")
def double_tap_text(driver, text):
    yield PAUSE
    press_at(driver.system, *place_of_text(driver.system, text), again=True)
    yield


# ---- Keys ----

def key_number(name):
    if name in KEYS:
        return KEYS[name]
    if len(name) == 1 and name.isalnum():
        return ord(name.upper())
    raise Unexpected(f"no such key: {name}")


@step("key")
def key(driver, rest):
    *held, name = rest.split("+") if rest != "+" else [rest]
    yield PAUSE
    for modifier in held:
        driver.system.input.key(MODIFIERS[modifier], True)
    driver.system.input.key(key_number(name))
    for modifier in reversed(held):
        driver.system.input.key(MODIFIERS[modifier], False)
    yield


@step("type")
def type_text(driver, text):
    yield PAUSE
    for character in text.replace("\\n", "\r"):
        driver.system.input.character(character)
    yield


# ---- Menus, buttons, lists ----

@step("menu")
def menu(driver, rest):
    """The pop-up's button, then an item's text; further items behind ">"."""
    system = driver.system
    name, _, items = rest.partition(" ")
    yield PAUSE
    press_at(system, *place_of_bar_button(system, name))
    yield
    for item in items.split(">"):
        press_at(system, *place_of_item(system, item.strip()))
        yield


def place_of_bar_button(system, name):
    for window in system.windows.top_levels:
        if window.class_name == "MenuBar" and window.visible:
            for found in window.buttons:
                if found.text == name:
                    return (window.left + (found.left + found.right) // 2, window.top + 12)
    raise Unexpected(f"the bar has no pop-up {name!r}")


def place_of_item(system, text):
    if not system.menus.open:
        raise Unexpected("no menu is open")
    window = system.menus.open[-1]
    for item, place in zip(window.menu.items, popup_places(window.menu)):
        if item.label.strip() == text:
            return window.left + 30, window.top + (place[1] + place[3]) // 2
    raise Unexpected(f"no item {text!r}, but {[item.label for item in window.menu.items]}")


def find_button(system, text):
    window = front_dialog(system)
    texts = []
    for button in controls(window, "BUTTON"):
        label = without_mnemonic(button.text)
        if label == text:
            return button
        texts.append(label)
    raise Unexpected(f"no button {text!r} in {window.text!r}, but {texts}")


@step("button")
def button_step(driver, text):
    yield PAUSE
    found = find_button(driver.system, text)
    if not found.enabled:
        raise Unexpected(f"the button {text!r} is grey")
    press_at(driver.system, *middle(found.rect))
    yield


@step("check")
def check(driver, text):
    yield PAUSE
    found = find_button(driver.system, text)
    press_at(driver.system, found.left + 6, (found.top + found.bottom) // 2)
    yield


@step("ok")
def ok(driver, _rest):
    yield PAUSE
    press_at(driver.system, *middle(driver.system.screen.caption.BUTTON))
    yield


@step("choose")
def choose(driver, rest):
    """Opens the combo box at its arrow and taps the line; keys go to it first where it scrolls."""
    number, _, text = rest.partition(" ")
    system = driver.system
    yield PAUSE
    box = control_by_number(system, int(number))
    press_at(system, box.right - 5, box.top + 8)
    yield
    press_at(system, *place_of_text(system, text))
    yield


@step("fill")
def fill(driver, rest):
    number, _, text = rest.partition(" ")
    system = driver.system
    yield PAUSE
    press_at(system, *middle(control_by_number(system, int(number)).rect))
    yield
    write_anew(system, text)
    yield


def write_anew(system, text):
    """Replaces the line that has the focus."""
    system.input.key(c.VK_END)
    system.input.key(c.VK_SHIFT, True)
    system.input.key(c.VK_HOME)
    system.input.key(c.VK_SHIFT, False)
    system.input.key(c.VK_DELETE)
    for character in text:
        system.input.character(character)


@step("panel")
def panel(driver, where):
    yield PAUSE
    if (where == "up") != driver.system.screen.panel_up:
        press_at(driver.system, *middle(driver.system.screen.button.rect))
    yield


@step("command")
def command(driver, number):
    yield PAUSE
    system = driver.system
    system.windows.post(system.screen.front(), c.WM_COMMAND, int(number), 0)
    yield 1


@step("answer")
def answer(driver, text):
    system = driver.system
    yield PAUSE
    fields = list(controls(front_dialog(system), "EDIT"))
    if not fields:
        raise Unexpected("there is no field to answer in")
    press_at(system, *middle(fields[0].rect))
    yield
    write_anew(system, text)
    yield
    press_at(system, *middle(system.screen.caption.BUTTON))
    yield


# ---- Time ----

@step("wait")
def wait(_driver, milliseconds):
    yield int(milliseconds)


@step("after")
def after(driver, rest):
    milliseconds, _, text = rest.partition(" ")
    driver.later(int(milliseconds), text)


@step("quit")
def quit_step(driver, _rest):
    driver.stop()


# ---- Looking ----

@step("texts")
def texts(driver, _rest):
    driver.say(screen_text(driver.system))


@step("picture")
def picture(driver, path):
    driver.system.screen.picture(path)


@step("expect")
def expect(driver, rest):
    """Fails the run when it is not so."""
    name, _, wanted = rest.partition(" ")
    if name not in EXPECTATIONS:
        raise Unexpected(f"nobody knows what to expect of {name!r}")
    problem = EXPECTATIONS[name](driver.system, wanted)
    if problem:
        raise Unexpected(f"expected {rest!r}, but {problem}")
