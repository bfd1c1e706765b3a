"""What there is to see: the windows in front, the texts on the screen, and what a step may expect
of them.

    expect text TEXT        on the screen       expect no-text TEXT
    expect status TEXT      in the status line  expect caption TEXT     in the bar along the top
    expect dialog TEXT      in the window in front, its title included; expect no-dialog
    expect field NUMBER TEXT                    what the control of that number holds
    expect file NAME        in the folder       expect no-file NAME
"""

from handheld.emulator import constants as c
from handheld.emulator.region import intersect_rects

EXPECTATIONS = {}


class Unexpected(Exception):
    """What a step expected was not there; the message says what was."""


def expectation(name):
    def register(function):
        EXPECTATIONS[name] = function
        return function
    return register


def screen_text(system):
    """The lines on the screen, from the top down."""
    return "\n".join("".join(run.text for run in line) for line in system.screen.surface.lines())


def status_text(system):
    for window in system.windows.all():
        if window.class_name.lower() == "msctls_statusbar32":
            return window.text
    return ""


def front_dialog(system):
    """The window in front that the user can use."""
    for window in system.windows.top_levels:
        if window.visible and window.enabled and not window.ex_style & c.WS_EX_NOACTIVATE:
            return window
    raise Unexpected("there is no window")


def controls(window, class_name=None):
    """What lies in a window and can be seen."""
    for child in window.children:
        if child.visible:
            if class_name is None or child.class_name.upper() == class_name:
                yield child
            yield from controls(child, class_name)


def control_by_number(system, number):
    window = front_dialog(system)
    for child in controls(window):
        if child.id & 0xFFFF == number:
            return child
    raise Unexpected(f"no control {number} in {window.text!r}")


@expectation("text")
def expect_text(system, wanted):
    shown = screen_text(system)
    return None if wanted in shown else f"the screen has\n{shown}"


@expectation("no-text")
def expect_no_text(system, wanted):
    shown = screen_text(system)
    return f"the screen has\n{shown}" if wanted in shown else None


@expectation("status")
def expect_status(system, wanted):
    found = status_text(system)
    return None if wanted in found else f"the status is {found!r}"


@expectation("caption")
def expect_caption(system, wanted):
    front = system.screen.front()
    found = front.text if front is not None else ""
    return None if wanted == found else f"the caption is {found!r}"


@expectation("dialog")
def expect_dialog(system, wanted):
    """The title of the window in front, or what stands in it; a line end there is a blank."""
    window = front_dialog(system)
    inside = " ".join("".join(run.text for run in line).strip()
                      for line in system.screen.surface.lines()
                      if intersect_rects(line[0].rect, window.rect))
    found = f"{window.text} {inside}"
    return None if wanted in found else f"the window in front has {found!r}"


@expectation("no-dialog")
def expect_no_dialog(system, _wanted):
    window = front_dialog(system)
    return None if window.owner is None else f"{window.text!r} is there"


@expectation("field")
def expect_field(system, wanted):
    """NUMBER TEXT: what a control of the window in front holds."""
    number, _, text = wanted.partition(" ")
    found = control_by_number(system, int(number)).text
    return None if found == text else f"it holds {found!r}"


@expectation("file")
def expect_file(system, wanted):
    there = system.files.listed()
    return None if wanted in there else f"the folder has {there}"


@expectation("no-file")
def expect_no_file(system, unwanted):
    return f"{unwanted} is there" if unwanted in system.files.listed() else None
